#include "driver/simulated/scenario/Operaciones.h"

namespace utr::simulada {

namespace {

constexpr int kPagina = 28 + 64;               // a page that is asked for, or sent and confirmed
constexpr int kAgenda = 5 * kPagina;           // 96 places of three bytes
constexpr int kCanalesEnteros = 23 * kPagina;  // a page for each channel
constexpr int kFila = (14 + 64) / 7;           // six records and the marker of their page
constexpr int kFilaDeCola = (14 + 64) / 5;     // without a marker

}  // namespace

const std::array<Operacion, kOperaciones> kTablaDeOperaciones = {{
    {"IdEquipo", Da::kNada},
    {"BorrarFlash", Da::kLogico, {28}},
    {"ReiniciarAgenda", Da::kLogico, {29}},
    {"ReiniciarUTR", Da::kLogico, {29}},
    {"DecodificarPagina", Da::kTabla},
    {"DecodificarPaginaCola", Da::kTabla},
    {"LeerInstantaneos", Da::kTabla, {28 + 2 * 38}},
    {"ConvertirA", Da::kTexto},
    {"ConvertirDe", Da::kTexto},
    {"EscribirLog", Da::kNada},
    {"DescribirCodigo", Da::kEntero},
    {"LeerAgenda", Da::kTabla, {kAgenda}},
    {"LeerPaginaFlash", Da::kTexto, {kPagina}},
    {"Pausa", Da::kNada},
    {"GrabarAgenda", Da::kLogico, {kAgenda}},
    {"ConfiguracionAlmacenada", Da::kTabla, {kCanalesEnteros}},
    {"LeerArchivoConfiguracion", Da::kTabla},
    {"GrabarParametrizacion", Da::kLogico, {kCanalesEnteros}},
    {"LeerEventos", Da::kTabla, {28, kFila}},
    {"LeerDatos", Da::kTabla, {28, kFila}},
    {"LeerColaTx", Da::kTabla, {28, kFilaDeCola}},
    {"LeerFechaHora", Da::kTexto, {34}},
    {"LeerEstado", Da::kEntero, {30}},
    {"GrabarFechaHora", Da::kLogico, {34}},
    {"GrabarEstado", Da::kLogico, {30}},
    {"EscribirPagina", Da::kLogico, {kPagina}},
    {"GrabarEvento", Da::kLogico, {32}},
    {"GrabarPilaCanal", Da::kLogico, {37}},
    {"GrabarCanalesModificar", Da::kLogico, {51}},
    {"LeerPagina", Da::kTexto, {kPagina}},
    {"Conectar", Da::kNada},
    {"ModoConexion", Da::kLogico},
    {"ExportarImp", Da::kLogico},
    {"CargarConfiguracion", Da::kTabla},
    {"ObtenerPuertos", Da::kTexto},
    {"Desconectar", Da::kNada},
    {"EstadoPuerto", Da::kLogico},
    {"DireccionIP", Da::kNada},
    {"PuertoIP", Da::kNada},
    {"EstadoEnlace", Da::kLogico},
    {"PorIP", Da::kNada},
    {"LlamarTelefono", Da::kLogico},
    {"Cancelar", Da::kNada},
    {"GrabarSalidaDigital", Da::kLogico, {30}},
    {"LeerDatosCartucho", Da::kTabla, {28, kFila}},
    {"LeerEventosCartucho", Da::kTabla, {28, kFila}},
    {"LeerColaTxCartucho", Da::kTabla, {28, kFilaDeCola}},
    {"BorrarCartucho", Da::kLogico, {28}},
    {"GrabarConfiguracion", Da::kLogico, {kCanalesEnteros}},
}};

std::optional<Op> BuscarOperacion(std::string_view nombre) {
  for (std::size_t i = 0; i < kOperaciones; ++i) {
    if (kTablaDeOperaciones[i].nombre == nombre) return static_cast<Op>(i);
  }
  return std::nullopt;
}

}  // namespace utr::simulada
