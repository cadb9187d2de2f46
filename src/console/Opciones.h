#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Fechas.h"
#include "lists/Csv.h"
#include "retrieved/recovery/SeleccionFlash.h"
#include "session/AjustesEnlace.h"

namespace utr::consola {

// What the program is asked to do.
enum class Orden : std::uint8_t {
  kLeerDatos,
  kLeerEventos,
  kInstantaneos,
  kConfiguracion,
  kRespaldo,
  kVolcar,
  kRecuperar,
  kVerTabla,
};

// How a table goes out.
enum class Formato : std::uint8_t { kCsv, kXml, kTxt };

// How the station is reached: by a name of the book, or by what the options say.
struct PedidoEnlace {
  std::string estacion;         // name in the book; empty: `entrada` tells
  std::filesystem::path libro;  // empty: the book beside the program
  bool simulada = false;
  std::string dispositivo;  // of a serial port told by its path; empty: `entrada` has its number
  EntradaEnlace entrada;
};

struct Destino {
  std::optional<Formato> formato;  // not told: what the name of the file says, else CSV
  std::filesystem::path archivo;   // empty: the standard output
  OpcionesCsv csv;
};

// What the command line asks for.
struct Opciones {
  std::optional<Orden> orden;  // nothing: help or version alone
  bool ayuda = false;
  bool version = false;

  PedidoEnlace enlace;
  Destino destino;

  // Reads of records. `hasta` includes its last second.
  FechaHora desde;
  FechaHora hasta;
  bool pendientes = false;
  bool cartucho = false;
  bool crudos = false;
  bool con_nivel = false;
  bool cifras = false;
  std::vector<std::int16_t> canales;  // empty: all that have a history

  // Dump.
  SeleccionFlash seleccion;  // nothing chosen: all of the memory
  bool continuar = false;
  bool con_configuracion = false;

  // Files that are read, and where results go.
  std::vector<std::filesystem::path> archivos;
  std::filesystem::path configuracion;
  std::filesystem::path carpeta;
};

// Reads the arguments behind the program's name; `hoy` is the computer's time. Raises kLlamada with a Spanish sentence
// for what makes no sense: an unknown order or option, an option that isn't of the order, a value that can't be,
// options that exclude each other, and what is lacking.
Opciones LeerOpciones(std::span<const std::string_view> argumentos, const FechaHora& hoy);

// The text of --ayuda, of one order or of all.
std::string Ayuda(std::optional<Orden> orden);

// The format that the name of a file tells by its ending; nothing for another one.
std::optional<Formato> FormatoDe(const std::filesystem::path& archivo);

}  // namespace utr::consola
