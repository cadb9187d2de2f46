#include "retrieved/windows/frmEventos.h"

#include "retrieved/ColumnasRegistros.h"
#include "widgets/Campos.h"

namespace utr {
namespace {

DescripcionLista Descripcion() {
  return {.titulo = "Eventos de la UTR",
          .columna_titulo = 3,
          .palabras = {.modulo = "frmEventos",
                       .titulo_ventana = "Eventos de la UTR",
                       .titulo_guardar = "Exportar ...",
                       .procedimiento_imprimir = "ImprimirEventos",
                       .procedimiento_imp = "mnuExportarEv_Click",
                       .tipo_imp = 0,
                       .exito_imp = "La lista de eventos ha sido exportada con éxito"}};
}

constexpr PalabrasPorFechas kPalabras{
    .marco_fechas = "frEvFecha",
    .titulo_fechas = "Eventos por Fecha",
    .marco_pendientes = "frTxEvPend",
    .titulo_pendientes = "Eventos Pendientes",
    .boton_fechas = "cmd(0)",
    .texto_fechas = "&Traer...",
    .boton_pendientes = "TraerTxEvPend",
    .texto_pendientes = "Trae&r... ",
    .formato = "dd/MM/yyyy HH:mm:ss",
    .dia_entero = true,
    .cartucho = "Eventos del Cartucho",
    .sin_datos = "Sin eventos durante las fechas seleccionada",
    .sin_cola = "Sin información en la cola de eventos",
    .contador_fechas = "Cantidad de Eventos Cargados: ",
    .contador_pendientes = "Cantidad de Registros Cargados: ",
    .procedimiento_fechas = "cmd_Click( 0 )",
    .procedimiento_pendientes = "Eventos de transmicion pendiente",
    .titulo_al_reves = "Atención",
    .icono_al_reves = Icono::kExclamacion,
};

}  // namespace

frmEventos::frmEventos(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VistaPorFechas(mod, Descripcion(), kPalabras, ColumnasEventos(), Boton("cmd(1)", "Cerrar"), parent),
      configuracion_(configuracion ? configuracion->Clone() : nullptr),
      lector_(Contexto(), std::move(configuracion), mod.atender, mod.carpeta) {
  ComandosDeVista(
      {{.nombre = "mnuEv", .texto = "&Eventos"}, {.nombre = "mnuEvTraer", .texto = "&Traer", .dentro_de = "mnuEv"}},
      {{.nombre = "mnuEvTraerPor(0)",
        .texto = "Por &Fecha",
        .menu = "mnuEvTraer",
        .hacer = [this] { TraerPorFecha(); }},
       {.nombre = "mnuEvTraerPor(1)",
        .texto = "&Pendientes",
        .menu = "mnuEvTraer",
        .hacer = [this] { TraerPendientes(); }}},
      {.abrir = "mnuEvAbrir",
       .guardar = "mnuEvGuardarComo",
       .exportar = "mnuExportarEv",
       .configurar_impresora = "mnuConfigPrint",
       .imprimir = "mnuEvPrint",
       .salir = "mnuEvSalir"});
}

FinLectura frmEventos::LeerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) {
  return lector_.TraerPorFecha(desde, hasta, cartucho);
}

FinLectura frmEventos::LeerPendientes() {
  return lector_.TraerPendientes();
}

// The dates of the pickers, even over a list of pending events.
EncabezadoLista frmEventos::Encabezado(bool) const {
  return {"Eventos de la UTR", LineasDesdeHasta()};
}

}  // namespace utr
