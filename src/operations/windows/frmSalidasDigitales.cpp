#include "operations/windows/frmSalidasDigitales.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "operations/windows/IndicadorSalida.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Ocupacion.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr const char* kModulo = "frmSalidasDigitales";
constexpr int kEntreLecturas = 10'000;  // milliseconds

// What each output is called. Those with buttons are numbered one less by the driver than they are shown, and so are
// the names of their buttons.
struct DatosSalida {
  const char* marco;
  const char* titulo;
  const char* estado;
  const char* nombre;
  const char* botones;  // null: it is only shown
  const char* nota;
};
constexpr DatosSalida kSalidas[] = {
    {"fraSD1", "Salida Digital 1 (SD1):", "lblEstadoSD1", "SD1", nullptr, "SD1:Ventana de comunicaciones"},
    {"fraSD2", "Salida Digital 2 (SD2):", "lblEstadoSD2", "SD2", "cmdSD1", nullptr},
    {"fraSD3", "Salida Digital 3 (SD3):", "lblEstadoSD3", "SD3", "cmdSD2", nullptr},
};

struct OrdenSalida {
  const char* texto;
  bool encender;
};
constexpr OrdenSalida kOrdenes[] = {{"Encender", true}, {"Apagar", false}};

IndicadorSalida::Senal SenalDe(std::string_view texto) {
  if (texto == kEncendido) return IndicadorSalida::Senal::kEncendida;
  return texto == kApagado ? IndicadorSalida::Senal::kApagada : IndicadorSalida::Senal::kDesconocida;
}

}  // namespace

frmSalidasDigitales::frmSalidasDigitales(ModRTU& mod, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      chkSolo_(new QCheckBox("Actualizar &solo")),
      lblLinea_(new QLabel),
      picInfo_(new PanelAviso("picInfo", "Esta operación demorará unos instantes. Por favor espere...", this)),
      cmdCerrar_(Boton("cmdCerrar", "&Cerrar")),
      tmrSolo_(new QTimer(this)) {
  setObjectName(kModulo);
  setWindowTitle("Salidas Digitales");
  chkSolo_->setObjectName("chkActualizarSolo");
  chkSolo_->setToolTip("Vuelve a leer los estados cada 10 segundos mientras esta ventana está abierta");
  lblLinea_->setObjectName("lblLinea");
  lblLinea_->setTextFormat(Qt::PlainText);
  lblLinea_->setWordWrap(true);
  picInfo_->Flotar();
  tmrSolo_->setObjectName("tmrActualizarSolo");
  tmrSolo_->setSingleShot(true);
  tmrSolo_->setInterval(kEntreLecturas);
  ArmarTodo();
  MostrarLinea();
  connect(chkSolo_, &QCheckBox::toggled, this, &frmSalidasDigitales::Esperar);
  connect(tmrSolo_, &QTimer::timeout, this, &frmSalidasDigitales::ActualizarSola);
  connect(cmdCerrar_, &QPushButton::clicked, this, &QDialog::reject);
  AjustarTamano(*this, QSize(460, 0));
}

void frmSalidasDigitales::ArmarTodo() {
  auto* columna = new QVBoxLayout;
  for (std::size_t salida = 0; salida < salidas_.size(); ++salida) columna->addWidget(ArmarSalida(salida));
  columna->addSpacing(4);
  columna->addWidget(chkSolo_);
  columna->addWidget(lblLinea_);
  lblLinea_->setMinimumHeight(3 * lblLinea_->fontMetrics().lineSpacing());
  lblLinea_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  ArmarDialogo(*this, columna, {.cancelar = cmdCerrar_, .por_defecto = false});
  ArmarMenu();
}

QGroupBox* frmSalidasDigitales::ArmarSalida(std::size_t salida) {
  const DatosSalida& datos = kSalidas[salida];
  Salida& una = salidas_[salida];
  una.marco = new QGroupBox(datos.titulo);
  una.marco->setObjectName(datos.marco);
  una.senal = new IndicadorSalida;
  una.estado = new QLabel;
  una.estado->setObjectName(datos.estado);
  QFont negrita = una.estado->font();
  negrita.setBold(true);
  una.estado->setFont(negrita);
  auto* renglon = new QHBoxLayout(una.marco);
  renglon->addWidget(new QLabel("Estado:"));
  renglon->addWidget(una.senal);
  renglon->addWidget(una.estado, 1);
  if (datos.nota != nullptr) renglon->addWidget(new QLabel(datos.nota));
  if (datos.botones != nullptr) AgregarBotones(*una.marco, salida);
  Mostrar(salida, kSinRespuesta);
  return una.marco;
}

void frmSalidasDigitales::AgregarBotones(QGroupBox& marco, std::size_t salida) {
  for (std::size_t indice = 0; indice < std::size(kOrdenes); ++indice) {
    const OrdenSalida& orden = kOrdenes[indice];
    QPushButton* boton =
        Boton(qPrintable(QStringLiteral("%1(%2)").arg(kSalidas[salida].botones).arg(indice)), orden.texto);
    boton->setAccessibleDescription(kSalidas[salida].titulo);
    connect(boton, &QPushButton::clicked, this, [this, salida, &orden] { Conmutar(salida, orden.encender); });
    marco.layout()->addWidget(boton);
  }
}

void frmSalidasDigitales::ArmarMenu() {
  auto* barra = new QMenuBar(this);
  QMenu* menu = barra->addMenu("S&alidas Digitales");
  menu->setObjectName("mnuSalidasDig");
  const auto entrada = [&](const char* nombre, const char* texto, auto hacer) {
    QAction* accion = menu->addAction(texto, this, hacer);
    accion->setObjectName(nombre);
    return accion;
  };
  entrada("mnuActualizar", "Actualizar Estados", [this] { Actualizar(); })->setShortcut(QKeySequence::Refresh);
  entrada("mnuSalir", "Salir", [this] { reject(); });
  layout()->setMenuBar(barra);
}

void frmSalidasDigitales::showEvent(QShowEvent* evento) {
  QDialog::showEvent(evento);
  if (!std::exchange(mostrada_, true))
    QMetaObject::invokeMethod(this, &frmSalidasDigitales::Actualizar, Qt::QueuedConnection);
}

// --- Reading and switching -------------------------------------------------------------------------------------------

std::string frmSalidasDigitales::Hora() const {
  return TextoHora(mod_.reloj.Ahora());
}

void frmSalidasDigitales::Mostrar(std::size_t salida, std::string_view texto) {
  salidas_[salida].estado->setText(Q(texto));
  salidas_[salida].senal->Mostrar(SenalDe(texto));
}

void frmSalidasDigitales::MostrarLinea() {
  std::string texto = lectura_.empty() ? "Los estados no se leyeron" : lectura_;
  for (const std::string& parte : {orden_, aviso_}) {
    if (!parte.empty()) texto += "\n" + parte;
  }
  lblLinea_->setText(Q(texto));
}

// A failure leaves the labels as they are. One that the operator asked for is shown; a read of its own ends the
// reading by itself, and the line says why.
bool frmSalidasDigitales::Leer(Lectura lectura) {
  tmrSolo_->stop();
  EstadoSalidas estado{};
  const auto leer = [&] {
    const Ocupacion ocupacion(*this,
                              {.operador = &mod_.operador, .panel = lectura == Lectura::kPedida ? picInfo_ : nullptr});
    estado = ObtenerEstadoSalidasDig(mod_.comunicador);
  };
  std::optional<Error> falla;
  if (lectura == Lectura::kSola) {
    falla = FallaDe(leer);
    if (falla) mod_.registro.RegistrarError(*falla, kModulo, "ObtenerEstadoSalidasDig");
  } else if (!RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "ObtenerEstadoSalidasDig", U(windowTitle()),
                                    Redaccion::kCompletada, leer)) {
    return false;
  }
  if (falla) {
    chkSolo_->setChecked(false);
    aviso_ = "Actualizar solo se apagó, " + Hora() + ": " + falla->Descripcion();
    return false;
  }
  for (std::size_t salida = 0; salida < estado.size(); ++salida) Mostrar(salida, TextoDeSalida(salida, estado[salida]));
  lectura_ = "Estados leídos, " + Hora();
  aviso_.clear();
  return true;
}

void frmSalidasDigitales::Esperar() {
  tmrSolo_->stop();
  if (chkSolo_->isChecked()) tmrSolo_->start();
}

void frmSalidasDigitales::Actualizar() {
  if (Ocupacion::Ocupada(*this)) return;
  Leer(Lectura::kPedida);
  MostrarLinea();
  Esperar();
}

// Behind a menu or a box over the window it waits once more.
void frmSalidasDigitales::ActualizarSola() {
  const bool libre = !Ocupacion::Ocupada(*this) && QApplication::activeModalWidget() == this &&
                     QApplication::activePopupWidget() == nullptr;
  if (libre) Leer(Lectura::kSola);
  MostrarLinea();
  Esperar();
}

// How a switch ended, for the line and the journal: both are told from what the output shows now.
void frmSalidasDigitales::Anotar(Diario::Tarea& tarea, std::size_t salida, bool encender, const std::string& antes) {
  const std::string nombre = kSalidas[salida].nombre;
  const bool aceptada = salidas_[salida].estado->text() != Q(kSinRespuesta);
  orden_ = nombre + (aceptada ? ": aceptó " : ": no aceptó ") + kOrdenes[encender ? 0 : 1].texto + ", " + Hora();
  tarea.Anotar({mod_.reloj.Ahora(), "Salida " + nombre, antes == kSinRespuesta ? asiento::kSinLeer : antes,
                std::string(encender ? kEncendido : kApagado),
                aceptada ? asiento::kHecho : std::string(kSinRespuesta) + asiento::kSinConfirmar});
}

void frmSalidasDigitales::Conmutar(std::size_t salida, bool encender) {
  if (Ocupacion::Ocupada(*this)) return;
  tmrSolo_->stop();
  {
    const Ocupacion ocupacion(*this, {.operador = &mod_.operador, .panel = picInfo_});
    const std::string antes = U(salidas_[salida].estado->text());
    Diario::Tarea tarea(mod_.diario);
    const std::string_view texto = ConmutarSalida(mod_.comunicador, salida, encender);
    Mostrar(salida, texto);
    Anotar(tarea, salida, encender, antes);
    MostrarLinea();
  }
  Leer(Lectura::kPedida);
  MostrarLinea();
  Esperar();
}

}  // namespace utr
