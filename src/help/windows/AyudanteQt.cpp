#include "help/windows/AyudanteQt.h"

#include <QAction>
#include <QApplication>
#include <QCryptographicHash>
#include <QKeyEvent>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTimer>
#include <QWhatsThis>
#include <QWindow>

#include "widgets/TextoQt.h"

namespace utr {
namespace {

// Programs in different folders don't share what is kept about their help.
QString CacheDe(const std::filesystem::path& archivo) {
  const QByteArray firma =
      QCryptographicHash::hash(QByteArray::fromStdString(archivo.string()), QCryptographicHash::Md5).toHex();
  return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/ayuda-") +
         QString::fromLatin1(firma);
}

}  // namespace

AyudanteQt::AyudanteQt(const std::filesystem::path& archivo, Operador& operador, QString cache)
    : Ayudante(qApp), archivo_(archivo), operador_(operador), cache_(std::move(cache)) {
  qApp->installEventFilter(this);
}

AyudanteQt::~AyudanteQt() {
  // Its parts send events while they go, and it isn't whole any more to look at them.
  qApp->removeEventFilter(this);
  delete ventana_;
}

// Why it can't be shown; empty where it can.
QString AyudanteQt::Preparar(const std::filesystem::path& archivo) {
  if (libro_.Abierto()) return {};
  return libro_.Abrir(archivo, cache_.isEmpty() ? CacheDe(archivo) : cache_);
}

void AyudanteQt::Mostrar(const std::filesystem::path& archivo, EntradaAyuda entrada, const QWidget& desde) {
  const QString falla = Preparar(archivo);
  if (!falla.isEmpty()) {
    operador_.Mostrar({"No se puede mostrar la ayuda.\n" + U(falla), "Ayuda", Icono::kExclamacion, Botones::kAceptar});
    return;
  }
  if (ventana_ == nullptr) ventana_ = new frmAyuda(libro_);
  if (entrada == EntradaAyuda::kBuscar) {
    ventana_->IrABuscar();
  } else {
    ventana_->IrA(entrada == EntradaAyuda::kContenido ? libro_.Portada() : PaginaPara(desde));
  }
  Alzar();
}

// The page of the window, or of the nearest one that it belongs to; of a box, that of the messages.
QUrl AyudanteQt::PaginaPara(const QWidget& desde) const {
  if (qobject_cast<const QMessageBox*>(desde.window()) != nullptr) return libro_.PaginaDeMensajes();
  for (const QWidget* control = &desde; control != nullptr; control = control->window()->parentWidget()) {
    QUrl pagina = libro_.PaginaDe(control->window()->objectName());
    if (!pagina.isEmpty()) return pagina;
  }
  return libro_.Portada();
}

// A modal dialog shuts all windows out but those that belong to it.
void AyudanteQt::Alzar() {
  ventana_->winId();
  QWindow* ventana = ventana_->windowHandle();
  ventana->installEventFilter(this);
  QWindow* modal = QGuiApplication::modalWindow();
  if (modal != ventana) ventana->setTransientParent(modal);
  ventana_->show();
  ventana_->raise();
  ventana_->activateWindow();
}

bool AyudanteQt::eventFilter(QObject* objeto, QEvent* evento) {
  const bool de_la_ayuda = ventana_ != nullptr && objeto == ventana_->windowHandle();
  if (de_la_ayuda && evento->type() == QEvent::WindowBlocked) {
    QTimer::singleShot(0, ventana_,
                       [this] { ventana_->windowHandle()->setTransientParent(QGuiApplication::modalWindow()); });
  }
  if (!objeto->isWidgetType()) return false;
  auto& control = static_cast<QWidget&>(*objeto);
  if (evento->type() == QEvent::EnterWhatsThisMode && control.isWindow()) Explicar(control);
  if (evento->type() != QEvent::KeyPress && evento->type() != QEvent::ShortcutOverride) return false;
  const auto& tecla = static_cast<const QKeyEvent&>(*evento);
  if (tecla.key() != Qt::Key_F1 || QApplication::activePopupWidget() != nullptr || !HayAyuda(archivo_)) return false;
  if (evento->type() == QEvent::KeyPress) return Tecla(control, tecla.modifiers());
  // Whoever has no mouse has no use for a pointer that asks: the key says it of the control that has the keyboard.
  if (tecla.modifiers() != Qt::ShiftModifier) return false;
  evento->accept();
  return true;
}

bool AyudanteQt::Tecla(QWidget& control, Qt::KeyboardModifiers modificadores) {
  if (modificadores == Qt::NoModifier) {
    Mostrar(archivo_, EntradaAyuda::kVentana, control);
    return true;
  }
  if (modificadores != Qt::ShiftModifier) return false;
  DecirQueEs(control);
  return true;
}

void AyudanteQt::DecirQueEs(QWidget& control) {
  Explicar(*control.window());
  QWidget* con_palabras = &control;
  while (con_palabras != nullptr && con_palabras->whatsThis().isEmpty()) con_palabras = con_palabras->parentWidget();
  if (con_palabras == nullptr) return;
  QWhatsThis::showText(control.mapToGlobal(control.rect().center()), con_palabras->whatsThis(), con_palabras);
}

void AyudanteQt::Explicar(QWidget& ventana) {
  if (!HayAyuda(archivo_) || !Preparar(archivo_).isEmpty()) return;
  const QString nombre = ventana.objectName();
  const auto explicar = [&](auto& cosa) {
    if (!cosa.whatsThis().isEmpty()) return;
    const QString palabras = libro_.QueEs(nombre, cosa.objectName());
    cosa.setWhatsThis(palabras.isEmpty() ? cosa.toolTip() : palabras);
  };
  const auto controles = ventana.findChildren<QWidget*>();
  for (QWidget* control : controles) {
    if (!control->isWindow() && !control->objectName().isEmpty()) explicar(*control);
  }
  const auto acciones = ventana.findChildren<QAction*>();
  for (QAction* accion : acciones) {
    if (!accion->objectName().isEmpty()) explicar(*accion);
  }
  if (ventana.whatsThis().isEmpty()) ventana.setWhatsThis(libro_.QueEs(nombre, {}));
}

}  // namespace utr
