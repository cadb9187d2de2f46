#include "retrieved/windows/frmVisualizador.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "plots/windows/PanelGrafico.h"
#include "retrieved/series/TextoSerie.h"
#include "retrieved/windows/EnlaceGrafico.h"
#include "retrieved/windows/GraficoDeDatos.h"
#include "retrieved/windows/LineaDeCifras.h"
#include "retrieved/windows/VistaInforme.h"
#include "widgets/Campos.h"
#include "widgets/CarpetaDelOperador.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr const char* kVisualizador = "Visualizador";
constexpr QSize kTamano(960, 720);

// By tipo_imp: what an export says at its end.
constexpr const char* kExitos[] = {"La lista de eventos ha sido exportada con éxito",
                                   "La lista de datos ha sido exportada con éxito"};

DescripcionLista Descripcion() {
  return {.titulo = kVisualizador,
          .palabras = {.modulo = "frmVisualizador",
                       .titulo_ventana = kVisualizador,
                       .titulo_guardar = "Guardar como ...",
                       .procedimiento_imprimir = "ImprimirDatos",
                       .procedimiento_imp = "mnuExport_Click",
                       .sin_resultado = "Debe seleccionar un archivo de información para exportar"}};
}

// What is seen may be of any station.
std::string OrigenDe(const std::filesystem::path& ruta) {
  return "Archivo " + ruta.filename().string();
}

}  // namespace

frmVisualizador::frmVisualizador(ModRTU& mod, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, Descripcion(), {}, parent),
      mod_(mod),
      lblFile_(new QLineEdit),
      cmdFile_(Boton("cmdFile", QStringLiteral("Se&leccionar..."))),
      cboFiltro_(new QComboBox),
      informe_(new VistaInforme),
      grafico_(new PanelGrafico(
          mod.Listas(), {.ventana = objectName(), .titulo = windowTitle(), .una_tabla = true, .vistos = mod.graficos})),
      lblCantRegistros_(Linea("lblCantRegistros")),
      lblCifras_(NuevaLineaDeCifras()) {
  AlLado(grafico_, GraficoDeDatos::ComandoVer());
  EnlazarConLista(*grafico_, Lista());
  connect(grafico_, &PanelGrafico::CanalPedido, this, [this](const QString& canal) {
    for (const auto& serie : series_) {
      if (Q(serie->Canal()) == canal) return grafico_->Agregar(canal, {serie, {}});
    }
  });
  ArmarComandos();
  BajoLaLista(lblCifras_);
  Armar(ArmarParametros(), {.cancelar = Boton("cmd", "&Cerrar"), .por_defecto = false}, kTamano, informe_, true);
  informe_->hide();
  cmdFile_->setFocus();
  connect(informe_, &VistaInforme::ImprimirPedido, this, [this] { ImprimirTexto(informe_->Texto(), Origen()); });
}

QWidget* frmVisualizador::ArmarParametros() {
  auto* marco = new QGroupBox(QStringLiteral("Archivo a visualizar"));
  marco->setObjectName("fraParametros");
  lblFile_->setObjectName("lblFile");
  lblFile_->setReadOnly(true);
  lblFile_->setAccessibleName(QStringLiteral("Archivo a visualizar"));
  lblFile_->setPlaceholderText(QStringLiteral("Ningún archivo elegido"));
  lblFile_->setWhatsThis(QStringLiteral("El archivo que se ve en la lista."));
  cmdFile_->setWhatsThis(
      QStringLiteral("Elige el archivo que se quiere ver: información procesada, o un archivo para "
                     "inserción manual."));
  cmdFile_->setDefault(true);
  connect(cmdFile_, &QPushButton::clicked, this, &frmVisualizador::ElegirArchivo);
  cboFiltro_->setObjectName("cboFiltro");
  connect(cboFiltro_, &QComboBox::activated, this,
          [this](int cual) { filtro_elegido_ = cboFiltro_->itemData(cual).toInt(); });
  QLabel* lblFiltro = Rotulo("lblFiltro", QStringLiteral("Filtro:"), cboFiltro_);
  auto* fila = new QHBoxLayout(marco);
  fila->addWidget(lblFile_, 1);
  fila->addWidget(cmdFile_);
  fila->addWidget(lblFiltro);
  fila->addWidget(cboFiltro_);
  lblFiltro->hide();
  cboFiltro_->hide();
  return marco;
}

void frmVisualizador::ArmarComandos() {
  ComandoVentana abrir = ComandoAbrir("mnuAbrir");
  abrir.texto = "&Abrir registro";
  abrir.tecla = {};  // the key opens files here
  ComandoVentana exportar = ComandoExportar("mnuExport");
  exportar.si = [this] { return !visto_.es_imp; };
  Comandos({{.nombre = "mnuArchivo", .texto = "&Archivo"}},
           {{.nombre = "mnuSeleccionar",
             .texto = "Se&leccionar archivo...",
             .tecla = QKeySequence::Open,
             .hacer = [this] { ElegirArchivo(); }},
            abrir,
            ComandoGuardar("mnuSaveAs"),
            ComandoGuardarCsv(),
            exportar,
            ComandoConfigurarImpresora("mnuPrintConfig"),
            ComandoImprimir("mnuPrint"),
            ComandoVistaPrevia(),
            {.nombre = "mnuImprimirInforme",
             .texto = "Imprimir in&forme",
             .si = [this] { return !informe_->isHidden(); },
             .hacer = [this] { ImprimirTexto(informe_->Texto(), Origen()); }},
            ComandoSalir("mnuSalir"),
            ComandoOrdenar(true),
            ComandoOrdenar(false),
            ComandoAyuda(),
            ComandoQueEsEsto()},
           {"Open", "Print", "Save", "Export", nullptr, "Sort Ascending", "Sort Descending", nullptr, "Help",
            "Help What's This"});
}

void frmVisualizador::ElegirArchivo() {
  PedidoArchivo pedido;
  pedido.titulo = "Selección de archivo...";
  pedido.filtro = "Información procesada (*.xml)|*.xml|Archivo para insercion manual (*.imp)|*.imp";
  pedido.carpeta = ruta_.empty() ? CarpetaDelOperador(mod_.carpeta) : ruta_.parent_path();
  if (const auto ruta = mod_.operador.ElegirAbrir(pedido)) PrepararDatosParaLista(*ruta);
}

void frmVisualizador::MuestraArchivo(const std::filesystem::path& Ruta) {
  PrepararDatosParaLista(Ruta);
}

void frmVisualizador::PrepararDatosParaLista(const std::filesystem::path& ruta) {
  if (ruta.empty() || Ocupacion::Ocupada(*this)) return;
  RegistrandoYMostrando(mod_.registro, mod_.operador, U(objectName()), "PrepararDatosParaLista", kVisualizador,
                        Redaccion::kCompletada, [&] {
                          const Ocupacion ocupacion(*this, AlTrabajar());
                          if (mod_.atender) mod_.atender();
                          Listar(AbrirParaVer(ruta), ruta);
                          ruta_ = ruta;
                          lblFile_->setText(Q(ruta.string()));
                          lblFile_->setToolTip(lblFile_->text());
                          VerInforme(InformeDe(ruta));
                        });
}

void frmVisualizador::Listar(ArchivoVisto visto, const std::filesystem::path& ruta) {
  Lista().Vaciar();
  grafico_->Vaciar();
  Lista().QuitarOrden(false);
  visto_ = std::move(visto);
  Lista().Definir(visto_.columnas);
  MarcarRegistros(Lista(), *visto_.tabla);
  if (visto_.tabla->RecordCount() > 0) {
    Lista().Mostrar(visto_.tabla);
    Lista().Elegir(0);
  }
  const int tipo = visto_.de_eventos ? 0 : 1;
  FijarImp(tipo, kExitos[tipo]);
  Decir(lblCantRegistros_,
        QStringLiteral("Cantidad de Registros Cargados: ") + QString::number(visto_.tabla->RecordCount()));
  series_ = SeriesDe(*visto_.tabla, nullptr, visto_.a_intervalos);
  Decir(lblCifras_, Q(TextoCifras(*visto_.tabla, series_, visto_.a_intervalos)));
  VerGrafico(ruta);
}

// The first channel of the file; the others can be added. Neither interval nor limits are known here.
void frmVisualizador::VerGrafico(const std::filesystem::path& ruta) {
  if (series_.empty()) return;
  QStringList otros;
  for (std::size_t i = 1; i < series_.size(); ++i) otros.append(Q(series_[i]->Canal()));
  ContenidoGrafico contenido;
  contenido.titulo = QStringLiteral("%1: %2").arg(QString::fromUtf8(kVisualizador), Q(TituloSerie(*series_[0])));
  contenido.estacion = Q(OrigenDe(ruta));
  contenido.de_archivo = true;
  contenido.canales.push_back({series_[0], {}});
  grafico_->Mostrar(std::move(contenido));
  grafico_->Ofrecer(otros);
  SenalarFilaActual(*grafico_, Lista());
}

void frmVisualizador::MuestraInforme(const std::filesystem::path& ruta) {
  RegistrandoYMostrando(mod_.registro, mod_.operador, U(objectName()), "MuestraInforme", kVisualizador,
                        Redaccion::kCompletada, [&] { VerInforme(LeerInforme(ruta)); });
}

void frmVisualizador::VerInforme(const std::optional<InformeVisto>& informe) {
  if (informe) informe_->Mostrar(*informe);
  informe_->setVisible(informe.has_value());
  Habilitar();
}

std::string frmVisualizador::Origen() const {
  return OrigenDe(ruta_);
}

EncabezadoLista frmVisualizador::Encabezado(bool) const {
  return {kVisualizador, {"Fecha: " + TextoFecha(mod_.reloj.Ahora())}, ruta_.stem().string(), Origen()};
}

}  // namespace utr
