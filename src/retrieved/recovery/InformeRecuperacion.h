#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Fechas.h"
#include "retrieved/recovery/LectorRecuperacion.h"
#include "retrieved/recovery/MemoriaFlash.h"

// What became of every line and of every row of the recovery files that were processed together.
namespace utr {

// What a line came to. Each line is one of these.
enum class FinLinea : std::uint8_t {
  kDatos,     // its records were taken
  kBlanca,    // 60 bytes or more are erased
  kRepetida,  // a line ahead of it has the same text for the same page
  kSinCanal,  // of a stack that no channel of the configuration has
  kSinTabla,  // the driver gave nothing for it, or something that doesn't belong on its track
  kDanada,
  kCortada,
  kEncabezado,
  kFinDePista,
  kVacia,
  kCorta,
};
inline constexpr std::size_t kFinesLinea = 11;

// A decoded record came to one of these.
enum class FinFila : std::uint8_t {
  kGuardada,
  kSinFecha,    // its date is none
  kSinHora,     // its time is none
  kSinArchivo,  // of a channel that no file takes
  kRepetida,    // another text of the same page holds the same record
};
inline constexpr std::size_t kFinesFila = 5;

struct CuentaLineas : std::array<std::uint64_t, kFinesLinea> {
  std::uint64_t& operator[](FinLinea fin) { return at(static_cast<std::size_t>(fin)); }
  std::uint64_t operator[](FinLinea fin) const { return at(static_cast<std::size_t>(fin)); }
};

struct CuentaFilas : std::array<std::uint64_t, kFinesFila> {
  std::uint64_t& operator[](FinFila fin) { return at(static_cast<std::size_t>(fin)); }
  std::uint64_t operator[](FinFila fin) const { return at(static_cast<std::size_t>(fin)); }
};

// A line that the report names, and why.
struct LineaNombrada {
  std::uint64_t numero = 0;
  std::string porque;
};

// Pages of one track, one behind the other.
struct TramoPaginas {
  int pista = 0;
  int desde = 0;
  int hasta = 0;
  bool operator==(const TramoPaginas&) const = default;
};

// One of the recovery files.
struct InformeArchivo {
  std::filesystem::path ruta;
  std::uint64_t bytes = 0;
  std::uint64_t lineas = 0;  // counted apart from the classes
  CuentaLineas fines{};
  // The first of each kind, with their lines.
  std::vector<LineaNombrada> danadas;  // damaged, cut, and the short ones that are none of the known
  std::uint64_t cuantas_incompletas = 0;
  std::vector<LineaNombrada> incompletas;       // pages of less than 64 bytes: the line before them fills the rest
  std::vector<TramoPaginas> blancas_con_datos;  // blank as such count, though not all of their bytes are erased
  std::vector<TramoPaginas> sin_canal;          // of stacks that no channel has
  std::vector<TramoPaginas> sin_tabla;
  std::vector<TramoPaginas> tomadas;  // pages whose records came from this file
};

// Pages whose own channel isn't the one for which they were decoded.
struct PaginasAjenas {
  std::size_t archivo = 0;
  TramoPaginas tramo;
  std::int16_t pedido = 0;
  std::int16_t propio = 0;
};

struct HuecoRegistros {
  FechaHora desde;  // the records on both sides of the gap
  FechaHora hasta;
};

// Two records of the same moment that don't say the same.
struct Contradiccion {
  std::string momento;
  std::string una;  // value, maximum, minimum
  std::string otra;
};

// What was decoded of one channel, of the queue or of the events.
struct InformeRegistros {
  std::string nombre;      // "EA01", "Cola de transmisión", "Eventos"
  std::int16_t canal = 0;  // 0: of no channel
  CuentaFilas fines{};
  std::uint64_t decodificadas = 0;   // counted as the driver gave them
  std::uint64_t de_referencia = 0;   // saved ones under the date of pages that have none
  std::optional<FechaHora> primero;  // of the saved ones but those
  std::optional<FechaHora> ultimo;
  double minutos = 0;                  // between two records, by the configuration; 0: it doesn't say
  std::uint64_t cuantos_huecos = 0;    // times between two records that are longer than that
  std::uint64_t faltan = 0;            // records that would have stood in them
  std::vector<HuecoRegistros> huecos;  // the longest first
  std::uint64_t cuantas_contradicciones = 0;
  std::vector<Contradiccion> contradicciones;
  std::filesystem::path archivo;  // empty: nothing was saved
};

struct InformeRecuperacion {
  FechaHora momento;
  bool interrumpido = false;  // saving failed: what it tells of rows goes as far as it got
  std::string configuracion;  // which one was applied, in the words of whoever chose it
  std::vector<InformeArchivo> archivos;
  std::vector<PaginasAjenas> ajenas;
  std::vector<InformeRegistros> registros;      // channels with a file, those without one, queue, events
  std::vector<std::filesystem::path> de_antes;  // results of that name that this run didn't write

  CuentaLineas Lineas() const;  // of all files
  CuentaFilas Filas() const;    // of all records

  // Every line and every row came to one of its ends.
  bool LineasCuadran() const;
  bool FilasCuadran() const;
};

// The report as the operator reads and prints it: lines parted by "\r\n".
std::string TextoInforme(const InformeRecuperacion& informe);

// The words of what lines and rows came to, as the report has them: "con datos".
std::string_view EnPalabras(FinLinea fin);
std::string_view EnPalabras(FinFila fin);

}  // namespace utr
