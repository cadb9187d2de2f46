#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Progreso.h"
#include "base/Reloj.h"
#include "driver/Comunicador.h"
#include "retrieved/recovery/EscritorRecuperacion.h"
#include "retrieved/recovery/LecturaAnterior.h"
#include "retrieved/recovery/MapaMemoria.h"
#include "retrieved/recovery/SeleccionFlash.h"
#include "services/Diario.h"

namespace utr {

// How far a read is.
struct AvanceLectura {
  LugarPagina lugar{};          // at hand
  std::int64_t total = 0;       // pages of the plan
  std::int64_t pasadas = 0;     // of them done: read, taken, failed or left out by blank pages
  std::int64_t leidas = 0;      // asked of the unit, also those that failed
  std::int64_t reintentos = 0;  // tries behind the first of a page
  std::int64_t por_leer = 0;    // to be asked of the unit, at most
  std::int64_t gastado = 0;     // milliseconds on the pages that were asked of the unit
  bool como_maximo = false;     // blank pages may end groups before that

  double PorSegundo() const;                              // pages; 0 while nothing can be said
  std::optional<std::int64_t> SegundosRestantes() const;  // nothing while nothing can be said
};

// "412 de 32768 páginas, 11,1 por segundo, faltan como máximo 48 min, 2 reintentos".
std::string EnPalabras(const AvanceLectura& avance);

// What a read leans on. `progreso` gets the pages of the plan as its steps and is asked at each page whether to end.
struct ContextoLectura {
  Comunicador& comunicador;
  const Reloj& reloj;
  Progreso& progreso;
  MapaMemoria& mapa;
  Atender atender{};
  Diario* diario = nullptr;  // is told the read as a whole; null: nobody
  // The unit fell silent: whether to go on trying. Empty: no.
  std::function<bool()> seguir_sin_respuesta{};
};

// What a read is asked for.
struct OpcionesLectura {
  SeleccionFlash seleccion;
  const LecturaAnterior* anterior = nullptr;  // its pages stand in for those of the unit
  // A retry: the pages that failed, in order. Of what the earlier file holds these are read again instead of those that
  // may have changed, and blank pages end no group ahead of them.
  std::vector<LugarPagina> reintentar{};
};

// Raises the failure that the operator is told when the unit doesn't give its state.
void ProbarEnlace(Comunicador& comunicador);

// Reads the flash page by page into a recovery file. One use.
class LectorFlash {
 public:
  // So many failed pages in a row, and the unit is asked for a sign of life.
  static constexpr int kFallasSeguidas = 16;
  // What a cancelled read tells.
  static constexpr const char* kCancelada = "Lectura cancelada por usuario";
  // So many blank pages, whatever lies between them, end a group.
  static constexpr int kVaciasPorParada = 3;

  LectorFlash(const ContextoLectura& contexto, const OpcionesLectura& opciones, EscritorRecuperacion& archivo);

  // Reads all of the plan, or until it is cancelled; a cancellation that comes with the last page counts too. Raises
  // what driver and disk raise; behind a failure of the driver the file holds what was read and all that the earlier
  // one held.
  void Leer();

  const AvanceLectura& Avance() const noexcept { return avance_; }
  bool Cancelada() const noexcept { return cancelada_; }
  const std::vector<LugarPagina>& Fallidas() const noexcept { return fallidas_; }
  const std::vector<std::string>& Renglones() const noexcept {
    return renglones_;
  }  // what went wrong, for the operator

  // The file is whole as far as the read went, and lacks nothing that the earlier one held: false until Leer has ended,
  // and behind a failure of the disk.
  bool NadaPerdido() const noexcept { return nada_perdido_; }

 private:
  void Preparar();
  bool LeerPista(int pista);
  bool Seguir(const LugarPagina& lugar);
  bool ObtenerPagina(const LugarPagina& lugar);
  bool PedirPagina(const LugarPagina& lugar, const std::string* anterior);
  void Fallo(const LugarPagina& lugar, bool queda_la_anterior);
  void VigilarEnlace();
  void Cancelar();
  bool Detiene();
  bool SeTomaDelArchivo(const LugarPagina& lugar) const;
  void SaltearDesde(LugarPagina lugar);
  bool QuedaPorReintentar(const LugarPagina& lugar) const;
  void GuardarResto(LugarPagina desde, int hasta_pista, bool pista_abierta = true);

  ContextoLectura contexto_;
  OpcionesLectura opciones_;
  EscritorRecuperacion& archivo_;
  std::vector<PasoFlash> plan_;
  AvanceLectura avance_;
  std::string texto_;  // of the page at hand
  std::vector<LugarPagina> fallidas_;
  std::vector<std::string> renglones_;
  std::int64_t entregado_ = 0;  // when lines were handed over last, in milliseconds of the clock
  int vacias_ = 0;
  int fallas_seguidas_ = 0;
  bool cancelada_ = false;
  bool nada_perdido_ = false;
};

}  // namespace utr
