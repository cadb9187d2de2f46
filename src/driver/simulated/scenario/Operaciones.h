#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace utr::simulada {

// The 49 operations of the contract, in its order.
enum class Op : std::uint8_t {
  kIdEquipo,
  kBorrarFlash,
  kReiniciarAgenda,
  kReiniciarUTR,
  kDecodificarPagina,
  kDecodificarPaginaCola,
  kLeerInstantaneos,
  kConvertirA,
  kConvertirDe,
  kEscribirLog,
  kDescribirCodigo,
  kLeerAgenda,
  kLeerPaginaFlash,
  kPausa,
  kGrabarAgenda,
  kConfiguracionAlmacenada,
  kLeerArchivoConfiguracion,
  kGrabarParametrizacion,
  kLeerEventos,
  kLeerDatos,
  kLeerColaTx,
  kLeerFechaHora,
  kLeerEstado,
  kGrabarFechaHora,
  kGrabarEstado,
  kEscribirPagina,
  kGrabarEvento,
  kGrabarPilaCanal,
  kGrabarCanalesModificar,
  kLeerPagina,
  kConectar,
  kModoConexion,
  kExportarImp,
  kCargarConfiguracion,
  kObtenerPuertos,
  kDesconectar,
  kEstadoPuerto,
  kDireccionIP,
  kPuertoIP,
  kEstadoEnlace,
  kPorIP,
  kLlamarTelefono,
  kCancelar,
  kGrabarSalidaDigital,
  kLeerDatosCartucho,
  kLeerEventosCartucho,
  kLeerColaTxCartucho,
  kBorrarCartucho,
  kGrabarConfiguracion,
};
inline constexpr std::size_t kOperaciones = 49;

// What an operation gives, which decides the faults that suit it.
enum class Da : std::uint8_t { kNada, kLogico, kTexto, kEntero, kTabla };

// What an operation sends over the line and gets back: frames of 14 bytes and what they carry, 64 bytes at most.
// Records come in the unit's own pages, one page a frame.
struct Octetos {
  int fijos = 0;
  int por_fila = 0;
};

struct Operacion {
  std::string_view nombre;
  Da da;
  Octetos octetos = {};
};
extern const std::array<Operacion, kOperaciones> kTablaDeOperaciones;

inline const Operacion& De(Op op) {
  return kTablaDeOperaciones[static_cast<std::size_t>(op)];
}
std::optional<Op> BuscarOperacion(std::string_view nombre);

}  // namespace utr::simulada
