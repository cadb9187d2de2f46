#include "retrieved/windows/frmEventos.h"

#include "retrieved/ColumnasRegistros.h"
#include "widgets/Campos.h"

namespace utr {
namespace {

const DescripcionVista& Descripcion() {
  using C = Comando;
  static const DescripcionVista descripcion{
      "Eventos de la UTR",
      "mnuEv",
      "&Eventos",
      "mnuEvTraer",
      "&Traer",
      {{C::kMarco0, "mnuEvTraerPor(0)", "Por &Fecha"},
       {C::kMarco1, "mnuEvTraerPor(1)", "&Pendientes"},
       {C::kAbrir, "mnuEvAbrir", "&Abrir"},
       {C::kGuardar, "mnuEvGuardarComo", "&Guardar como..."},
       {C::kExportar, "mnuExportarEv", "E&xportar..."},
       {C::kConfigurarImpresora, "mnuConfigPrint", "&Configurar Impresora"},
       {C::kImprimir, "mnuEvPrint", "&Imprimir"},
       {C::kSalir, "mnuEvSalir", "&Salir"}},
      {C::kAbrir, C::kImprimir, C::kGuardar, C::kExportar, C::kAscendente, C::kDescendente, C::kAyuda, C::kQueEsEsto},
      3,
      {"frmEventos", "Eventos de la UTR", "Exportar ...", "ImprimirEventos", "mnuExportarEv_Click", 0,
       "La lista de eventos ha sido exportada con éxito"}};
  return descripcion;
}

constexpr PalabrasPorFechas kPalabras{
    "frEvFecha",
    "Eventos por Fecha",
    "frTxEvPend",
    "Eventos Pendientes",
    "cmd(0)",
    "&Traer...",
    "TraerTxEvPend",
    "Trae&r... ",
    "dd/MM/yyyy HH:mm:ss",
    true,
    "Eventos del Cartucho",
    "Sin eventos durante las fechas seleccionada",
    "Sin información en la cola de eventos",
    "Cantidad de Eventos Cargados: ",
    "Cantidad de Registros Cargados: ",
    "cmd_Click( 0 )",
    "Eventos de transmicion pendiente",
    "Atención",
    Icono::kExclamacion,
    false,
};

}  // namespace

frmEventos::frmEventos(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VistaPorFechas(mod, Descripcion(), kPalabras, ColumnasEventos(), Boton("cmd(1)", "Cerrar"), parent),
      lector_(Contexto(), std::move(configuracion), mod.atender, mod.carpeta) {}

FinLectura frmEventos::LeerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) {
  return lector_.TraerPorFecha(desde, hasta, cartucho);
}

FinLectura frmEventos::LeerPendientes() {
  return lector_.TraerPendientes();
}

// The dates of the pickers, even over a list of pending events.
EncabezadoLista frmEventos::Encabezado(bool) const {
  return {"Eventos de la UTR", LineasDesdeHasta(LasFechas())};
}

}  // namespace utr
