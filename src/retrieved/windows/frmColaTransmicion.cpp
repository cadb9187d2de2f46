#include "retrieved/windows/frmColaTransmicion.h"

#include "retrieved/ColumnasRegistros.h"
#include "widgets/Campos.h"

namespace utr {
namespace {

const DescripcionVista& Descripcion() {
  using C = Comando;
  static const DescripcionVista descripcion{
      "Cola de transmisión",
      "mnuDatos",
      "&Datos",
      "mnuTraerDatos",
      "&Traer Cola de Tx",
      {{C::kMarco0, "mnuColaTxDia", "Cola Tx por &Día"},
       {C::kMarco1, "mnuColaTxPend", "Cola Tx &Pendiente"},
       {C::kGuardar, "mnuGuardarComo", "&Guardar como..."},
       {C::kExportar, "mnuExportar", "E&xportar..."},
       {C::kConfigurarImpresora, "mnuCfgImpresora", "&Configurar Impresora"},
       {C::kImprimir, "mnuImprimir", "&Imprimir"},
       {C::kSalir, "mnuSalir", "&Salir"}},
      {C::kImprimir, C::kGuardar, C::kExportar, C::kAscendente, C::kDescendente, C::kAyuda, C::kQueEsEsto},
      2,
      {"frmColaTransmicion", "Cola de transmisión", "Guardar como ...", "ImprimirDatos", "mnuExportar_Click", 1,
       "La lista de datos ha sido exportada con éxito"}};
  return descripcion;
}

constexpr PalabrasPorFechas kPalabras{
    "frTxPorDia",
    "Cola de transmisión por día",
    "frTxPend",
    "Cola de transmisión pendiente",
    "TraerTxPorDia",
    "Traer...",
    "TraerTxPend",
    "Traer...",
    "dd/MM/yyyy",
    false,
    "Leer del Cartucho",
    "Sin datos para el canal durante las fechas seleccionada",
    "Sin información en la cola de datos",
    "Cantidad de Registros Cargados: ",
    "Cantidad de Registros Cargados: ",
    "TraerTxPorDia",
    "TraerTxPend",
    nullptr,
    Icono::kInformacion,
    true,
};

}  // namespace

frmColaTransmicion::frmColaTransmicion(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VistaPorFechas(mod, Descripcion(), kPalabras, ColumnasDatos(), Boton("cmd", "&Cerrar"), parent),
      lector_(Contexto(), std::move(configuracion), mod.atender) {}

FinLectura frmColaTransmicion::LeerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) {
  return lector_.TraerPorDia(desde, hasta, cartucho);
}

FinLectura frmColaTransmicion::LeerPendientes() {
  return lector_.TraerPendientes();
}

EncabezadoLista frmColaTransmicion::Encabezado(bool para_imprimir) const {
  if (!lector_.PorDia()) return {"Datos pendientes de la cola de tx de la UTR", {LineaFecha()}};
  // Paper and file differ in their titles.
  return {para_imprimir ? "Datos de la cola de tx por dia de la UTR" : "Datos de la cola de tx de la UTR",
          LineasDesdeHasta(LasFechas())};
}

}  // namespace utr
