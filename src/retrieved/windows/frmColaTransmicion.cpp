#include "retrieved/windows/frmColaTransmicion.h"

#include "retrieved/ColumnasRegistros.h"
#include "widgets/Campos.h"

namespace utr {
namespace {

DescripcionLista Descripcion() {
  return {.titulo = "Cola de transmisión",
          .columna_titulo = 2,
          .palabras = {.modulo = "frmColaTransmicion",
                       .titulo_ventana = "Cola de transmisión",
                       .titulo_guardar = "Guardar como ...",
                       .procedimiento_imprimir = "ImprimirDatos",
                       .procedimiento_imp = "mnuExportar_Click"}};
}

constexpr PalabrasPorFechas kPalabras{
    .marco_fechas = "frTxPorDia",
    .titulo_fechas = "Cola de transmisión por día",
    .marco_pendientes = "frTxPend",
    .titulo_pendientes = "Cola de transmisión pendiente",
    .boton_fechas = "TraerTxPorDia",
    .texto_fechas = "Traer...",
    .boton_pendientes = "TraerTxPend",
    .texto_pendientes = "Traer...",
    .formato = "dd/MM/yyyy",
    .cartucho = "Leer del Cartucho",
    .sin_datos = "Sin datos para el canal durante las fechas seleccionada",
    .sin_cola = "Sin información en la cola de datos",
    .contador_fechas = "Cantidad de Registros Cargados: ",
    .contador_pendientes = "Cantidad de Registros Cargados: ",
    .procedimiento_fechas = "TraerTxPorDia",
    .procedimiento_pendientes = "TraerTxPend",
    .conservar_al_reves = true,
};

}  // namespace

frmColaTransmicion::frmColaTransmicion(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VistaPorFechas(mod, Descripcion(), kPalabras, ColumnasDatos(), Boton("cmd", "&Cerrar"), parent),
      configuracion_(configuracion ? configuracion->Clone() : nullptr),
      lector_(Contexto(), std::move(configuracion), mod.atender) {
  ComandosDeVista({{.nombre = "mnuDatos", .texto = "&Datos"},
                   {.nombre = "mnuTraerDatos", .texto = "&Traer Cola de Tx", .dentro_de = "mnuDatos"}},
                  {{.nombre = "mnuColaTxDia",
                    .texto = "Cola Tx por &Día",
                    .menu = "mnuTraerDatos",
                    .hacer = [this] { TraerPorFecha(); }},
                   {.nombre = "mnuColaTxPend",
                    .texto = "Cola Tx &Pendiente",
                    .menu = "mnuTraerDatos",
                    .hacer = [this] { TraerPendientes(); }}},
                  {.guardar = "mnuGuardarComo",
                   .exportar = "mnuExportar",
                   .configurar_impresora = "mnuCfgImpresora",
                   .imprimir = "mnuImprimir",
                   .salir = "mnuSalir"});
}

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
          LineasDesdeHasta()};
}

}  // namespace utr
