#include "configuration/windows/frmPredefinidas.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "base/CarpetaPrograma.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Predefinidas.h"
#include "session/AjustesEnlace.h"
#include "widgets/Campos.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

// The log has always named it so.
constexpr std::string_view kModulo = "frmPpal";
constexpr std::string_view kProcedimiento = "CargarParametrizaciones";

constexpr int kRenglones = 6;        // of a panel, before the next pair of columns begins
constexpr int kPares = 3;            // of columns, a caption and its value
constexpr int kColumnasDeValor = 3;  // of the grid: those two and the gap behind them
constexpr int kEntrePares = 8;
constexpr int kLetrasDeValor = 8;   // room for a value; a longer one shows whole in its tip
constexpr int kRenglonesLista = 5;  // rows that are always in sight

std::string SensorDeFamilia(std::string_view numero) {
  for (int familia = 1; familia <= kFamilias; ++familia) {
    if (Val(numero) == familia) return FamiliaDe(familia)->sensor;
  }
  return {};
}

Columnas ColumnasDe(const Tabla* conjuntos) {
  ColumnaLista sensor{.titulo = "Tipo de sensor", .campo = "IdDescripcionSensores"};
  const auto propia = conjuntos != nullptr ? CampoDelSensor(*conjuntos) : std::nullopt;
  if (propia) {
    sensor.campo = *propia;
  } else {
    sensor.presentacion = Presentacion::kFuncion;
    sensor.funcion = SensorDeFamilia;
  }
  return {{.titulo = "Nombre", .campo = "Nombre"},
          {.titulo = "Fecha de creación", .campo = "Fecha", .orden = ClaseOrden::kFecha},
          sensor};
}

EtiquetaCopiable* NuevoValor(const QString& nombre) {
  auto* valor = new EtiquetaCopiable(nombre);
  valor->setWordWrap(false);
  valor->setFrameShape(QFrame::StyledPanel);
  // A file may hold anything; it mustn't widen the window.
  valor->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  valor->setMinimumWidth(valor->fontMetrics().horizontalAdvance(QString(kLetrasDeValor, '0')));
  return valor;
}

}  // namespace

frmPredefinidas::frmPredefinidas(ModRTU& mod, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      archivo_(new QLabel),
      otro_(Boton("cmdOtro", "&Otro archivo...")),
      lista_(new VistaLista(ColumnasDe(nullptr))),
      aceptar_(Boton("cmd(0)", "Aceptar")),
      cancelar_(Boton("cmd(1)", "Cancelar")) {
  setObjectName("frmPredefinidas");
  setWindowTitle("Parametrizaciones predefinidas");
  QTreeView& arbol = *lista_->Arbol();
  arbol.setSelectionMode(QAbstractItemView::SingleSelection);
  arbol.setMinimumHeight(arbol.fontMetrics().height() * 2 * kRenglonesLista);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->addLayout(FilaDelArchivo());
  cuerpo->addWidget(lista_, 1);
  for (std::size_t i = 0; i < paneles_.size(); ++i) {
    paneles_[i] = PanelDeFamilia(static_cast<int>(i) + 1);
    cuerpo->addWidget(paneles_[i]);
    if (i > 0) paneles_[i]->hide();  // the first one, the largest, gives the size
  }
  ArmarDialogo(*this, cuerpo, {.aceptar = aceptar_, .cancelar = cancelar_},
               {otro_, lista_->CampoFiltro(), lista_->Arbol()});
  QWidget* anterior = lista_->Arbol();
  for (const auto& valores : datos_) {
    for (EtiquetaCopiable* valor : valores) setTabOrder(std::exchange(anterior, valor), valor);
  }
  connect(otro_, &QPushButton::clicked, this, &frmPredefinidas::OtroArchivo);
  connect(lista_, &VistaLista::SeleccionCambiada, this, &frmPredefinidas::MostrarElegida);
  connect(lista_, &VistaLista::Filtrada, this, &frmPredefinidas::MostrarElegida);
  connect(lista_, &VistaLista::Activada, this, &frmPredefinidas::accept);
  connect(aceptar_, &QPushButton::clicked, this, &frmPredefinidas::accept);
  connect(cancelar_, &QPushButton::clicked, this, &frmPredefinidas::reject);
  lista_->Arbol()->setFocus();
  AjustarTamano(*this);
}

QLayout* frmPredefinidas::FilaDelArchivo() {
  archivo_->setObjectName("lblArchivo");
  archivo_->setTextFormat(Qt::PlainText);
  archivo_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* fila = new QHBoxLayout;
  fila->addWidget(new QLabel("Archivo en uso:"));
  fila->addWidget(archivo_, 1);
  fila->addWidget(otro_);
  return fila;
}

QWidget* frmPredefinidas::PanelDeFamilia(int familia) {
  const FamiliaSensor& datos = *FamiliaDe(familia);
  auto& valores = datos_.at(static_cast<std::size_t>(familia - 1));
  auto* panel = new QGroupBox("Valores");
  panel->setObjectName(QString("Panel(%1)").arg(familia - 1));
  auto* reja = new QGridLayout(panel);
  for (std::size_t i = 0; i < datos.rotulos.size(); ++i) {
    const int fila = static_cast<int>(i) % kRenglones;
    const int columna = static_cast<int>(i) / kRenglones * kColumnasDeValor;
    valores.push_back(NuevoValor(QString("%1(%2)").arg(datos.arreglo).arg(i)));
    auto* rotulo = new QLabel(datos.rotulos[i]);
    rotulo->setBuddy(valores.back());  // the value is what a screen reader reads there, as labelled by its title
    reja->addWidget(rotulo, fila, columna);
    reja->addWidget(valores.back(), fila, columna + 1);
  }
  for (int par = 0; par < kPares; ++par) {
    reja->setColumnStretch(par * kColumnasDeValor + 1, 1);
    if (par > 0) reja->setColumnMinimumWidth(par * kColumnasDeValor - 1, kEntrePares);
  }
  const std::vector<std::string> sueltos = RotulosSinAplicar(familia);
  if (!sueltos.empty()) {
    reja->addWidget(new QLabel(Q("No se aplican: " + Unir(sueltos, ", "))), kRenglones, 0, 1, -1);
  }
  return panel;
}

int frmPredefinidas::CargarParametrizaciones(int IdDescripcionSensores) {
  familia_ = IdDescripcionSensores;
  Acepto = false;
  Parametros.clear();
  lista_->Vaciar();
  conjuntos_.reset();
  // A file that stopped being readable is let go of, so that the next time another can be chosen.
  if (mod_.ruta_predefinida.empty()) {
    Elegir();
  } else if (!Abrir(mod_.ruta_predefinida)) {
    mod_.ruta_predefinida.clear();
  }
  Llenar();
  return static_cast<int>(lista_->Lista().Total());
}

// False when none was chosen or it isn't one of sets; what was in use stays then.
bool frmPredefinidas::Elegir() {
  const auto elegido = mod_.operador.ElegirAbrir({.titulo = "Abrir parametrizaciones...",
                                                  .filtro = "Archivos de parametrización (*.ipf)|*.ipf",
                                                  .carpeta = CarpetaCon(mod_.carpeta, ".ipf"),
                                                  .nombre = {}});
  if (!elegido || !Abrir(*elegido)) return false;
  Usar(*elegido);
  return true;
}

bool frmPredefinidas::Abrir(const std::filesystem::path& ruta) {
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, kProcedimiento, U(windowTitle()),
                               Redaccion::kCompletarse, [&] {
                                 TablaPtr leidos = LeerPredefinidas(ruta);
                                 lista_->Vaciar();
                                 conjuntos_ = std::move(leidos);
                               });
}

void frmPredefinidas::Usar(const std::filesystem::path& elegido) {
  mod_.ruta_predefinida = elegido.string();
  const auto falla = FallaDe([&] { mod_.ruta_predefinida = JuntoAlPrograma(elegido, mod_.carpeta).string(); });
  if (falla) mod_.registro.RegistrarError(*falla, kModulo, kProcedimiento);
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, kProcedimiento, U(windowTitle()),
                        Redaccion::kCompletarse, [&] {
                          mod_.propiedades.Escribir(clave::kParametrizaciones, mod_.ruta_predefinida, std::string());
                          mod_.propiedades.GrabarYRecargar();
                        });
}

void frmPredefinidas::OtroArchivo() {
  if (!Elegir()) return;
  Llenar();
  if (lista_->Lista().Total() == 0)
    Informar(mod_.operador, U(windowTitle()), "No hay parametrizaciones definidas para este tipo de sensor");
}

void frmPredefinidas::Llenar() {
  lista_->Vaciar();
  lista_->Definir(ColumnasDe(conjuntos_.get()));
  if (conjuntos_ != nullptr) {
    FiltrarFamilia(*conjuntos_, familia_);
    lista_->Mostrar(conjuntos_);
  }
  for (std::size_t i = 0; i < paneles_.size(); ++i) paneles_[i]->setVisible(static_cast<int>(i) + 1 == familia_);
  const auto ruta = std::filesystem::path(mod_.ruta_predefinida);
  archivo_->setText(Q(ruta.filename().string()));
  archivo_->setToolTip(Q(ruta.string()).toHtmlEscaped());
  if (lista_->Lista().Total() > 0) lista_->Elegir(0);
  MostrarElegida();
}

void frmPredefinidas::MostrarElegida() {
  const auto actual = lista_->FilaActual();
  elegida_.clear();
  // By the row itself: keys may occur twice in a file, and other families have theirs.
  if (actual)
    elegida_ = conjuntos_->Filas().Texto(lista_->Lista().Fila(*actual), conjuntos_->IndiceCampo("Parametros"));
  aceptar_->setEnabled(actual.has_value());
  if (FamiliaDe(familia_) == nullptr) return;
  const std::vector<std::string> valores = ValoresDePredefinida(elegida_);
  const auto& datos = datos_.at(static_cast<std::size_t>(familia_ - 1));
  for (std::size_t i = 0; i < datos.size(); ++i) {
    const QString texto = i < valores.size() ? Q(valores[i]) : QString();
    datos[i]->Poner(texto);
    datos[i]->setToolTip(texto.toHtmlEscaped());
  }
}

void frmPredefinidas::done(int resultado) {
  Acepto = resultado == Accepted;
  Parametros = Acepto ? elegida_ : std::string();
  QDialog::done(resultado);
}

}  // namespace utr
