#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "base/Reloj.h"
#include "driver/Comunicador.h"
#include "retrieved/recovery/CopiasDePaginas.h"
#include "retrieved/recovery/FilasCrudas.h"
#include "retrieved/recovery/InformeRecuperacion.h"
#include "retrieved/recovery/ListasPilas.h"
#include "retrieved/recovery/MapaMemoria.h"

// The walk over the lines of recovery files: which page goes to which decoder under which words, and what counts once.
// Internal to the processing of recovery files.
namespace utr {

// What became of records, as far as it is known.
struct CuentaRegistros {
  std::uint64_t decodificadas = 0;
  CuentaFilas fines{};
};

// What one of the decoders gave.
struct FlujoDecodificado {
  explicit FlujoDecodificado(ClaseFlujo la_clase, TextosCrudos& textos) : clase(la_clase), lector(la_clase, textos) {}

  ClaseFlujo clase;
  LectorDeFlujo lector;
  FilasDeFlujo filas;  // records with a date and a time, each once
  bool hubo = false;   // rows came, whatever became of them
};

class RecorridoRecuperacion {
 public:
  // `mapa` may be null.
  RecorridoRecuperacion(const ListasPilas& listas, Comunicador& comunicador, MapaMemoria* mapa);

  // Walks one file of that size. Index and buffer begin anew; what the files ahead of it held is known. Each line is
  // told as one more than those before. Raises kArchivo for a file that isn't a recovery file.
  void Recorrer(const std::filesystem::path& ruta, const TamanoRecuperacion& tamano, Progreso& progreso,
                const Atender& atender);

  const TextosCrudos& Textos() const noexcept { return textos_; }
  const FlujoDecodificado& Flujo(ClaseFlujo clase) const noexcept { return flujos_[static_cast<std::size_t>(clase)]; }

  // Of data, by channel. Of queue and events all under 0, where there were any.
  const std::map<std::int16_t, CuentaRegistros>& Cuentas(ClaseFlujo clase) const noexcept {
    return cuentas_[static_cast<std::size_t>(clase)];
  }

  // The channel of a record of data or queue; kSinNumero for one that the builders couldn't take.
  static constexpr std::int16_t kSinNumero = -32768;
  std::int16_t CanalDe(const FilaCruda& fila);

  // The records of data by channel, in their order. They are given away: the flow of data holds none afterwards.
  std::map<std::int16_t, std::vector<FilaCruda>> SepararDatos();

  const std::vector<InformeArchivo>& Archivos() const noexcept { return archivos_; }
  const std::vector<PaginasAjenas>& Ajenas() const noexcept { return ajenas_; }

 private:
  using Paginas = std::vector<bool>;  // by IndiceDePagina

  FinLinea Tomar(const LineaRecuperacion& linea, Progreso& progreso);
  FinLinea TomarPagina(const LineaRecuperacion& linea);
  FinLinea Decodificar(const LineaRecuperacion& linea);
  void Ubicar(int pista);
  TablaPtr Llamar(const LugarPagina& lugar);
  bool TomarFilas(ClaseFlujo clase, const Tabla& tabla, const LugarPagina& lugar);
  void CompararCanales(const LugarPagina& lugar);
  void NombrarAjena(const LugarPagina& lugar, std::int16_t propio);
  void Marcar(const LugarPagina& lugar, EstadoPagina estado);
  void Nombrar(std::vector<LineaNombrada>& lista, const LineaRecuperacion& linea, std::string porque);

  std::string pilas_;
  std::array<bool, kGrupoCola> configuradas_{};
  std::array<std::int16_t, kGrupoCola> indices_{};
  std::vector<std::string> descriptores_;  // by the places of the lists
  std::vector<std::int16_t> pedidos_;      // the channels of them
  Comunicador& comunicador_;
  MapaMemoria* mapa_;

  // Of the file at hand.
  std::array<std::uint8_t, 78> bufer_{};  // as a reply of the unit: the page begins behind 13 bytes of another kind
  std::size_t indice_ = 0;
  int anotada_ = -1;
  Paginas blancas_con_datos_;
  Paginas sin_canal_;
  Paginas sin_tabla_;
  Paginas tomadas_;

  std::uint64_t hechas_ = 0;
  TextosCrudos textos_;
  std::array<FlujoDecodificado, 3> flujos_;
  std::array<std::map<std::int16_t, CuentaRegistros>, 3> cuentas_;
  std::vector<std::optional<std::int16_t>> canales_;  // by the number of their text, as far as looked at
  CopiasDePaginas copias_;
  std::vector<FilaCruda> filas_;  // of the page at hand
  std::vector<InformeArchivo> archivos_;
  std::vector<PaginasAjenas> ajenas_;
};

}  // namespace utr
