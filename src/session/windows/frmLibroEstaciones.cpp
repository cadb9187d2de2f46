#include "session/windows/frmLibroEstaciones.h"

#include <QPushButton>

#include "base/Texto.h"
#include "session/Puertos.h"
#include "session/windows/frmEstacion.h"
#include "widgets/Campos.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr const char* kModulo = "frmLibroEstaciones";
constexpr const char* kLibro = "Libro de estaciones";
constexpr const char* kFiltro = "Libro de estaciones (*.toml)|*.toml";
constexpr QSize kTamano(860, 480);

DescripcionLista Descripcion() {
  return {.titulo = kLibro,
          .palabras = {.modulo = kModulo, .titulo_ventana = kLibro, .procedimiento_imprimir = "ImprimirLibro"}};
}

Columnas ColumnasDelLibro() {
  return {{.titulo = "Nombre", .campo = "Nombre"},
          {.titulo = "Lugar", .campo = "Lugar"},
          {.titulo = "Identificador", .campo = "Identificador", .orden = ClaseOrden::kNumero},
          {.titulo = "Enlace", .campo = "Enlace"},
          {.titulo = "Notas", .campo = "Notas"}};
}

TablaPtr TablaDelLibro(const std::vector<Estacion>& estaciones) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : {"Nombre", "Lugar", "Identificador", "Enlace", "Notas"})
    tabla->Append(campo, TipoCampo::kVarChar, 255);
  tabla->Open();
  for (const Estacion& estacion : estaciones) {
    tabla->AddNew();
    tabla->Set("Nombre", estacion.nombre);
    tabla->Set("Lugar", estacion.lugar);
    tabla->Set("Identificador", estacion.identificador == 0 ? "-" : std::to_string(estacion.identificador));
    tabla->Set("Enlace", TextoEnlaceDe(estacion));
    tabla->Set("Notas", Reemplazar(estacion.notas, "\n", " / "));
  }
  tabla->UpdateBatch();
  if (!estaciones.empty()) tabla->MoveFirst();
  return tabla;
}

std::string Cuantas(std::size_t cuantas) {
  return cuantas == 1 ? "1 estación" : std::to_string(cuantas) + " estaciones";
}

}  // namespace

frmLibroEstaciones::frmLibroEstaciones(ModRTU& mod, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, Descripcion(), ColumnasDelLibro(), parent),
      mod_(mod),
      libro_(mod.carpeta / LibroEstaciones::kArchivo),
      cmdElegir_(Boton("cmdElegir", "E&legir")),
      vacio_(Panel("picVacio", "El libro no tiene estaciones")),
      ilegible_(Panel("picIlegible", "El libro de estaciones no se pudo leer, y no se modifica")) {
  cmdElegir_->setWhatsThis("Lleva el enlace de la estación elegida al diálogo de la conexión, donde puede aceptarse.");
  connect(cmdElegir_, &QPushButton::clicked, this, &frmLibroEstaciones::Activar);
  connect(&Lista(), &VistaLista::SeleccionCambiada, this, [this] { cmdElegir_->setEnabled(Actual() != nullptr); });
  ArmarComandos();
  Armar(nullptr, {.aceptar = cmdElegir_, .cancelar = Boton("cmdCerrar", "&Cerrar"), .por_defecto = false}, kTamano);
  Leer();
}

frmLibroEstaciones::~frmLibroEstaciones() = default;

void frmLibroEstaciones::ArmarComandos() {
  const auto leido = [this] { return leido_; };
  const auto hay_actual = [this] { return leido_ && Actual() != nullptr; };
  Comandos({{.nombre = "mnuLibro", .texto = "&Estaciones"}},
           {{.nombre = "mnuLibNueva",
             .texto = "&Nueva...",
             .clave = "New",
             .icono = "agregar",
             .ayuda = "Agregar una estación",
             .tecla = QKeySequence::New,
             .si = leido,
             .hacer = [this] { Nueva(); }},
            {.nombre = "mnuLibModificar",
             .texto = "&Modificar...",
             .clave = "Open",
             .icono = "abrir",
             .ayuda = "Modificar la estación elegida",
             .tecla = Qt::Key_F2,
             .si = hay_actual,
             .hacer = [this] { Modificar(); }},
            {.nombre = "mnuLibBorrar",
             .texto = "&Borrar",
             .clave = "Delete",
             .icono = "borrar",
             .ayuda = "Borrar la estación elegida del libro",
             .tecla = QKeySequence::Delete,
             .si = hay_actual,
             .hacer = [this] { Borrar(); }},
            {.nombre = "mnuLibImportar",
             .texto = "Imp&ortar...",
             .abre_grupo = true,
             .si = leido,
             .hacer = [this] { Importar(); }},
            {.nombre = "mnuLibExportar",
             .texto = "E&xportar...",
             .si = [this] { return HayResultado(); },
             .hacer = [this] { Exportar(); }},
            ComandoGuardar("mnuLibGuardar"),
            ComandoGuardarCsv(),
            ComandoConfigurarImpresora("mnuLibConfigPrint"),
            ComandoImprimir("mnuLibImprimir"),
            ComandoVistaPrevia(),
            ComandoSalir("mnuLibSalir"),
            ComandoOrdenar(true),
            ComandoOrdenar(false),
            ComandoAyuda(),
            ComandoQueEsEsto()},
           {"New", "Open", "Delete", nullptr, "Save", "Print", nullptr, "Sort Ascending", "Sort Descending", nullptr,
            "Help", "Help What's This"});
}

bool frmLibroEstaciones::Intentar(const char* procedimiento, const std::function<void()>& hacer) {
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, procedimiento, U(windowTitle()),
                               Redaccion::kCompletada, hacer);
}

void frmLibroEstaciones::Leer() {
  leido_ = Intentar("Leer", [this] { libro_.Leer(); });
  Mostrar();
}

// `elegida`: name of the one that is current then; empty: the first.
void frmLibroEstaciones::Mostrar(const std::string& elegida) {
  filas_ = TablaDelLibro(libro_.Estaciones());
  Lista().Mostrar(filas_);
  if (!leido_) {
    Zona().Mostrar({ilegible_});
  } else if (libro_.Estaciones().empty()) {
    Zona().Mostrar({vacio_});
  } else {
    Zona().Mostrar({});
  }
  for (std::size_t posicion = 0; posicion < Lista().Lista().Cantidad(); ++posicion) {
    const bool es_ella = IgualSinCaso(Lista().Lista().Texto(posicion, 0), elegida);
    if (posicion == 0 || es_ella) Lista().Elegir(posicion);
    if (es_ella) break;
  }
  cmdElegir_->setEnabled(Actual() != nullptr);
  Habilitar();
}

const Estacion* frmLibroEstaciones::Actual() const {
  const auto posicion = Lista().FilaActual();
  return posicion ? libro_.Buscar(Lista().Lista().Texto(*posicion, 0)) : nullptr;
}

EncabezadoLista frmLibroEstaciones::Encabezado(bool) const {
  return {kLibro, {"Fecha: " + TextoFecha(mod_.reloj.Ahora())}};
}

void frmLibroEstaciones::Activar() {
  const Estacion* actual = Actual();
  if (actual == nullptr || !ConfirmarPuerto(*actual)) return;
  elegida_ = *actual;
  accept();
}

// Books go from machine to machine, and a number isn't the same port on each: nobody is to practise on a unit, or to
// take what the simulated station says for the river.
bool frmLibroEstaciones::ConfirmarPuerto(const Estacion& estacion) {
  if (estacion.medio == MedioEstacion::kIP) return true;
  const bool simulada = estacion.medio == MedioEstacion::kSimulado;
  if (mod_.puertos.EsSimulado(estacion.puerto) == simulada) return true;
  const std::string puerto = "En esta máquina " + TextoPuerto(estacion.puerto);
  return Preguntar(mod_.operador, U(windowTitle()),
                   puerto +
                       (simulada ? " no es de la estación simulada: por él se llega a lo que haya en la línea"
                                 : " es de la estación simulada: lo que se lea no viene de " + estacion.nombre) +
                       "\n¿Desea elegirla de todos modos?",
                   Respuesta::kNo);
}

void frmLibroEstaciones::Nueva() {
  frmEstacion dialogo(mod_, libro_, nullptr, this);
  if (dialogo.exec() != QDialog::Accepted) return;
  if (Intentar("Nueva", [&] { libro_.Agregar(dialogo.Elegida()); })) Mostrar(dialogo.Elegida().nombre);
}

void frmLibroEstaciones::Modificar() {
  const Estacion actual = *Actual();
  frmEstacion dialogo(mod_, libro_, &actual, this);
  if (dialogo.exec() != QDialog::Accepted) return;
  if (Intentar("Modificar", [&] { libro_.Cambiar(actual.nombre, dialogo.Elegida()); }))
    Mostrar(dialogo.Elegida().nombre);
}

void frmLibroEstaciones::Borrar() {
  const std::string nombre = Actual()->nombre;
  if (!Preguntar(mod_.operador, U(windowTitle()), "Se borra del libro la estación " + nombre + "\n¿Desea continuar?",
                 Respuesta::kNo))
    return;
  if (Intentar("Borrar", [&] { libro_.Borrar(nombre); })) Mostrar();
}

// Stations whose names are here already are asked about once for all.
void frmLibroEstaciones::Importar() {
  const auto ruta =
      mod_.operador.ElegirAbrir({.titulo = "Importar estaciones...", .filtro = kFiltro, .carpeta = {}, .nombre = {}});
  if (!ruta) return;
  Intentar("Importar", [&] {
    const ResultadoImportacion previsto = libro_.Previsto(*ruta);
    const bool reemplazar =
        previsto.reemplazadas > 0 && Preguntar(mod_.operador, U(windowTitle()),
                                               "El libro ya tiene, con otros datos, " + Cuantas(previsto.reemplazadas) +
                                                   " del archivo\n¿Desea reemplazar las del libro?",
                                               Respuesta::kNo);
    const ResultadoImportacion hecho = libro_.Importar(*ruta, reemplazar);
    Mostrar();
    std::string texto = "Agregadas: " + Cuantas(hecho.nuevas);
    if (hecho.reemplazadas > 0) texto += "\nReemplazadas: " + Cuantas(hecho.reemplazadas);
    if (hecho.dejadas > 0) texto += "\nComo estaban: " + Cuantas(hecho.dejadas);
    Informar(mod_.operador, U(windowTitle()), texto);
  });
}

void frmLibroEstaciones::Exportar() {
  const auto ruta = mod_.operador.ElegirGuardar(
      {.titulo = "Exportar estaciones...", .filtro = kFiltro, .carpeta = {}, .nombre = LibroEstaciones::kArchivo});
  if (!ruta) return;
  if (Intentar("Exportar", [&] { libro_.Exportar(*ruta); }))
    Informar(mod_.operador, U(windowTitle()), "El libro de estaciones ha sido exportado con éxito");
}

std::optional<Estacion> ElegirEstacion(ModRTU& mod, QWidget* parent) {
  frmLibroEstaciones libro(mod, parent);
  libro.exec();
  return libro.Elegida();
}

}  // namespace utr
