#pragma once

#include <fmt/format.h>

#include <concepts>
#include <functional>
#include <optional>
#include <string>

#include "base/Error.h"
#include "driver/Bitacora.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "driver/simulated/driver/EnlaceSimulado.h"
#include "driver/simulated/scenario/Fallas.h"
#include "driver/simulated/unit/EstadoPersistido.h"
#include "driver/simulated/unit/TablasRegistros.h"

namespace utr {

using simulada::Contexto;
using simulada::Op;

// What every operation does around its own work: it looks whether the scenario has changed, lets time pass in the unit,
// meets its faults, writes its line to the log, and saves the unit when it changed it.
struct ComunicadorSimulado::Interior {
  Interior(std::filesystem::path donde, Reloj& un_reloj, Atender atiende);
  ~Interior();

  // The result of an operation that has none.
  struct Nada {};

  // Runs `cuerpo` as operation `op`. A fault that takes the place of the answer keeps it from running, unless only the
  // answer is lost; and a table without rows is the table that would have come.
  template <class Cuerpo>
  auto Operar(Op op, const std::string& argumentos, Contexto contexto, Cuerpo cuerpo) -> decltype(cuerpo());
  template <class Cuerpo>
  auto Operar(Op op, const std::string& argumentos, Cuerpo cuerpo) {
    return Operar(op, argumentos, Contexto{}, std::move(cuerpo));
  }

  // The beginning of an operation on pages, which come by the thousand: the scenario is looked at once in so many calls
  // of a run.
  void ComenzarPagina();

  // The unit would answer now.
  bool Llega();

  // The unit answers; when it doesn't, the time that its silence takes has passed.
  bool Responde();

  // For reads whose silence must not pass for a unit without data: raises kSinRespuesta when it doesn't answer.
  void ExigirRespuesta();

  // Waits so many seconds, times the factor of the scenario. Events run meanwhile, unless a fault blocks this call.
  void Esperar(double segundos);

  // The same while a number is dialled: false, at once, when the call is abandoned.
  bool EsperarLlamada(double segundos);

  // Waits as long as the bytes of the operation and of so many rows take at the speed of the link.
  void Transferir(Op op, std::size_t filas);

  // Orders of the unit come through these: false without an answer, when `orden` gives false, which must have changed
  // nothing then, and when the changed unit can't be saved: it is as it was before in that case.
  template <class Orden>
  bool Ordenar(Op op, const std::string& argumentos, Orden orden, Contexto contexto = {});

  // "tabla de 23 filas y 41 campos", with the name of its file where tables are kept whole; "sin tabla".
  std::string Describir(Op op, const Tabla* tabla);

  std::filesystem::path carpeta;
  Reloj& reloj;
  Atender atender;
  Bitacora bitacora;
  simulada::Escenario escenario;
  simulada::Fallas fallas;
  simulada::EnlaceSimulado enlace;
  simulada::EstadoPersistido estado;
  std::string aviso;       // what went wrong with the saved state at the beginning; empty: nothing
  FechaHora fecha;         // the computer's time at the beginning of the call
  std::int64_t ahora = 0;  // the same in seconds
  double atraso = 0;       // seconds by which a fault makes the present values of this call old

  simulada::Estacion& Unidad() { return estado.estacion; }

 private:
  void Comenzar();
  void RevisarEscenario();
  bool EstaQuieto(const simulada::Escenario& nuevo);
  void Adoptar(simulada::Escenario nuevo, std::string texto);
  void CargarUnidad();
  void RetomarEscenario();
  void Apartar(const std::string& motivo);
  bool Guardar() noexcept;
  void GuardarSiToca();
  bool Cumplir(const std::function<bool()>& orden);

  static std::size_t FilasDe(const TablaPtr& tabla) { return tabla && tabla->Abierta() ? tabla->RecordCount() : 0; }
  template <class Otro>
  static std::size_t FilasDe(const Otro&) {
    return 0;
  }
  bool Demorar(Op op, double segundos);

  std::string Describir(Op, Nada) { return "hecho"; }
  std::string Describir(Op, bool valor) { return valor ? "si" : "no"; }
  std::string Describir(Op, std::int32_t numero) { return std::to_string(numero); }
  std::string Describir(Op, const std::string& texto) { return Citar(texto); }
  std::string Describir(Op op, const TablaPtr& tabla) { return Describir(op, tabla.get()); }

  static void Estropear(const std::vector<simulada::Falla>& fallas, TablaPtr& tabla);
  static void Estropear(const std::vector<simulada::Falla>& fallas, std::string& texto);
  template <class Otro>
  static void Estropear(const std::vector<simulada::Falla>&, Otro&) {}

  template <class Resultado>
  static Resultado Fallido();

  // The scenario file that was read last, by what tells it from another one.
  struct Firma {
    bool leida = false;
    bool hay = false;
    std::int64_t segundos = 0, nanosegundos = 0, largo = 0, nodo = 0;
    bool operator==(const Firma&) const = default;
  };
  static Firma FirmaDe(const std::string& ruta);

  std::string ruta_escenario_;
  Firma firma_;
  int paginas_seguidas_ = 0;
  bool bloqueada_ = false;     // the call at hand lets no events run
  bool respondio_ = false;     // the unit answered this operation
  bool por_guardar_ = false;   // another scenario holds and isn't saved yet
  std::int64_t guardado_ = 0;  // when the unit was saved, in milliseconds of the clock
  bool guardable_ = true;      // nothing that isn't ours has the name of the state file
};

template <class Resultado>
Resultado ComunicadorSimulado::Interior::Fallido() {
  if constexpr (std::same_as<Resultado, std::int32_t>) return -1;
  return Resultado{};
}

template <class Cuerpo>
auto ComunicadorSimulado::Interior::Operar(Op op, const std::string& argumentos, Contexto contexto, Cuerpo cuerpo)
    -> decltype(cuerpo()) {
  using Resultado = decltype(cuerpo());
  const std::string_view nombre = De(op).nombre;
  const bool seguida = op == Op::kLeerPaginaFlash || op == Op::kDecodificarPagina || op == Op::kDecodificarPaginaCola;
  try {
    if (seguida) {
      ComenzarPagina();
    } else {
      Comenzar();
    }
    if (contexto.puerto == 0) contexto.puerto = enlace.por_ip ? enlace.puerto_ip : enlace.puerto;
    if (contexto.velocidad == 0) contexto.velocidad = enlace.velocidad;
    simulada::Fallas::Efecto efecto = fallas.Para(op, contexto);
    bloqueada_ = efecto.bloquea;
    atraso = efecto.atraso;
    if (!Demorar(op, efecto.demora)) efecto.respuesta.reset();
    if (efecto.respuesta && efecto.respuesta->respuesta_perdida) cuerpo();
    const auto falla = efecto.respuesta ? std::optional(efecto.respuesta->tipo) : std::nullopt;
    if (falla == simulada::TipoFalla::kError) {
      throw Error(efecto.respuesta->numero, efecto.respuesta->origen, efecto.respuesta->texto);
    }
    respondio_ = false;
    Resultado resultado = falla && falla != simulada::TipoFalla::kSinFilas ? Fallido<Resultado>() : cuerpo();
    if constexpr (std::same_as<Resultado, TablaPtr>) {
      if (resultado && falla == simulada::TipoFalla::kSinFilas) resultado = CopiarRecordset(*resultado, false);
    }
    if (respondio_) Transferir(op, FilasDe(resultado));
    Estropear(efecto.de_datos, resultado);
    bitacora.Llamada(fecha, nombre, argumentos, Describir(op, resultado), seguida);
    return resultado;
  } catch (...) {
    const Error falla = ErrorActual();
    bitacora.Llamada(fecha, nombre, argumentos,
                     fmt::format("error {} [{}] {}", falla.Numero(), falla.Origen(), falla.Descripcion()));
    throw falla;
  }
}

template <class Orden>
bool ComunicadorSimulado::Interior::Ordenar(Op op, const std::string& argumentos, Orden orden, Contexto contexto) {
  return Operar(op, argumentos, contexto, [&] { return Responde() && Cumplir(orden); });
}

}  // namespace utr
