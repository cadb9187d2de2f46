#include "driver/simulated/Operaciones.h"

namespace utr::simulada {

const std::array<Operacion, kOperaciones> kTablaDeOperaciones = {{
    {"IdEquipo", Da::kNada},
    {"BorrarFlash", Da::kLogico},
    {"ReiniciarAgenda", Da::kLogico},
    {"ReiniciarUTR", Da::kLogico},
    {"DecodificarPagina", Da::kTabla},
    {"DecodificarPaginaCola", Da::kTabla},
    {"LeerInstantaneos", Da::kTabla},
    {"ConvertirA", Da::kTexto},
    {"ConvertirDe", Da::kTexto},
    {"EscribirLog", Da::kNada},
    {"DescribirCodigo", Da::kEntero},
    {"LeerAgenda", Da::kTabla},
    {"LeerPaginaFlash", Da::kTexto},
    {"Pausa", Da::kNada},
    {"GrabarAgenda", Da::kLogico},
    {"ConfiguracionAlmacenada", Da::kTabla},
    {"LeerArchivoConfiguracion", Da::kTabla},
    {"GrabarParametrizacion", Da::kLogico},
    {"LeerEventos", Da::kTabla},
    {"LeerDatos", Da::kTabla},
    {"LeerColaTx", Da::kTabla},
    {"LeerFechaHora", Da::kTexto},
    {"LeerEstado", Da::kEntero},
    {"GrabarFechaHora", Da::kLogico},
    {"GrabarEstado", Da::kLogico},
    {"EscribirPagina", Da::kLogico},
    {"GrabarEvento", Da::kLogico},
    {"GrabarPilaCanal", Da::kLogico},
    {"GrabarCanalesModificar", Da::kLogico},
    {"LeerPagina", Da::kTexto},
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
    {"GrabarSalidaDigital", Da::kLogico},
    {"LeerDatosCartucho", Da::kTabla},
    {"LeerEventosCartucho", Da::kTabla},
    {"LeerColaTxCartucho", Da::kTabla},
    {"BorrarCartucho", Da::kLogico},
    {"GrabarConfiguracion", Da::kLogico},
}};

std::optional<Op> BuscarOperacion(std::string_view nombre) {
  for (std::size_t i = 0; i < kOperaciones; ++i) {
    if (kTablaDeOperaciones[i].nombre == nombre) return static_cast<Op>(i);
  }
  return std::nullopt;
}

}  // namespace utr::simulada
