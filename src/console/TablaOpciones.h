#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "console/Opciones.h"

// The orders and options of the command line as tables: what reads them and what explains them is one thing.
namespace utr::consola {

// What is collected while arguments are read, beside the options themselves.
struct Lectura {
  Opciones opciones;
  FechaHora hoy;
  bool con_velocidad = false;
  bool con_identificador = false;
  bool con_puerto = false;
  bool con_fechas = false;
  bool con_desde = false;
  bool con_hasta = false;
  bool con_csv = false;
};

// The classes of options, of which each order has some.
namespace clase {
inline constexpr unsigned kEnlace = 1;
inline constexpr unsigned kSalida = 2;
inline constexpr unsigned kFechas = 4;
inline constexpr unsigned kDatos = 8;
inline constexpr unsigned kEventos = 16;
inline constexpr unsigned kInstantaneos = 32;
inline constexpr unsigned kRespaldo = 64;
inline constexpr unsigned kVolcado = 128;
inline constexpr unsigned kRecuperar = 256;
inline constexpr unsigned kArchivo = 512;
inline constexpr unsigned kCartucho = 1024;
inline constexpr unsigned kCrudos = 2048;
inline constexpr unsigned kCifras = 4096;
}  // namespace clase

struct DescripcionOrden {
  Orden orden;
  std::string_view nombre;
  std::string_view operandos;  // as the usage has them; empty: it takes none
  std::size_t mayor;           // of so many operands, at most
  unsigned clases;
  std::string_view resumen;
  std::string_view texto;  // what its help says ahead of the options, in whole lines
};
std::span<const DescripcionOrden> Ordenes();
const DescripcionOrden& De(Orden orden);

struct DescripcionOpcion {
  std::string_view nombre;  // with its hyphens
  std::string_view valor;   // what stands for it in the help; empty: it takes none
  unsigned clases;          // orders that have one of these take it
  std::string_view texto;   // lines parted by "\n"
  void (*leer)(Lectura&, std::string_view valor);
};
std::span<const DescripcionOpcion> OpcionesConocidas();

// Raises what a bad argument raises.
[[noreturn]] void Mal(const std::string& motivo);

}  // namespace utr::consola
