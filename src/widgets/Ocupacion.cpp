#include "widgets/Ocupacion.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>

#include "widgets/PanelAviso.h"

namespace utr {
namespace {

constexpr const char* kNombre = "Ocupacion";

bool EsEntrada(QEvent::Type tipo) {
  switch (tipo) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

bool EsEscape(const QEvent& evento) {
  return evento.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(evento).key() == Qt::Key_Escape;
}

// What pops up from a window is part of it; a dialog over it isn't.
bool Pertenece(const QWidget* control, const QWidget* ventana) {
  while (control != nullptr && control != ventana) {
    if (control->isWindow() && control->windowType() != Qt::Popup) return false;
    control = control->parentWidget();
  }
  return control != nullptr;
}

}  // namespace

// Stands at the door of the window. It is the window's child, which also makes it known to whoever asks for it.
class Ocupacion::Guardia : public QObject {
 public:
  Guardia(QWidget& ventana, const OpcionesOcupacion& opciones)
      : QObject(&ventana),
        ventana_(ventana),
        panel_(opciones.panel),
        siguen_(opciones.siguen.begin(), opciones.siguen.end()),
        foco_(ventana.focusWidget()),
        al_cancelar_(opciones.al_cancelar),
        al_cambiar_(opciones.al_cambiar) {
    setObjectName(kNombre);
    qApp->installEventFilter(this);
    for (QWidget* control : opciones.apagados) Apagar(*control);
    if (!siguen_.empty()) siguen_.front()->setFocus();
    if (panel_ != nullptr) panel_->Ver(true);
    if (al_cambiar_) al_cambiar_();
    if (!ventana.isVisible()) return;
    // The work may block at once, and what has changed is to be seen.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    ventana.repaint();
  }

  void Abrir() {
    qApp->removeEventFilter(this);
    setObjectName({});
    for (const QPointer<QWidget>& control : apagados_) {
      if (control != nullptr) control->setEnabled(true);
    }
    if (panel_ != nullptr) panel_->Ver(false);
    if (al_cambiar_) al_cambiar_();
    if (foco_ != nullptr) foco_->setFocus();
  }

  bool eventFilter(QObject* objeto, QEvent* evento) override {
    const bool cierra = evento->type() == QEvent::Close && objeto == &ventana_;
    if (!cierra && !EsEntrada(evento->type())) return false;
    auto* control = qobject_cast<QWidget*>(objeto);
    if (control == nullptr || !Pertenece(control, &ventana_) || !EsLaDeAdentro()) return false;
    const bool cancela = cierra || EsEscape(*evento);
    if (!cancela && Sigue(*control)) return false;
    evento->setAccepted(!cierra);  // an accepted key goes to no parent, and an accepted close closes
    if (cancela && al_cancelar_) al_cancelar_();
    return true;
  }

 private:
  void Apagar(QWidget& control) {
    if (Sigue(control) || control.isWindow() || !control.isEnabledTo(control.parentWidget())) return;
    const bool contiene = std::any_of(siguen_.begin(), siguen_.end(),
                                      [&](const QPointer<QWidget>& uno) { return control.isAncestorOf(uno); });
    if (!contiene) {
      control.setEnabled(false);
      apagados_.emplace_back(&control);
      return;
    }
    for (QWidget* hijo : control.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) Apagar(*hijo);
  }

  bool Sigue(const QWidget& control) const {
    return std::any_of(siguen_.begin(), siguen_.end(), [&](const QPointer<QWidget>& uno) {
      return uno != nullptr && (uno == &control || uno->isAncestorOf(&control));
    });
  }

  bool EsLaDeAdentro() const {
    return ventana_.findChildren<QObject*>(kNombre, Qt::FindDirectChildrenOnly).constLast() == this;
  }

  QWidget& ventana_;
  QPointer<PanelAviso> panel_;
  std::vector<QPointer<QWidget>> siguen_;
  std::vector<QPointer<QWidget>> apagados_;
  QPointer<QWidget> foco_;
  std::function<void()> al_cancelar_;
  std::function<void()> al_cambiar_;
};

Ocupacion::Ocupacion(QWidget& ventana, const OpcionesOcupacion& opciones) {
  if (opciones.operador != nullptr) puntero_.emplace(*opciones.operador);
  guardia_ = new Guardia(ventana, opciones);
}

Ocupacion::~Ocupacion() {
  // What waits in the program's queue and what the display still holds of the time when nobody looked.
  if (guardia_ != nullptr) QGuiApplication::sync();
  puntero_.reset();
  if (guardia_ == nullptr) return;
  static_cast<Guardia*>(guardia_.data())->Abrir();
  delete guardia_.data();
}

bool Ocupacion::Ocupada(const QWidget& ventana) {
  return ventana.findChild<QObject*>(kNombre, Qt::FindDirectChildrenOnly) != nullptr;
}

}  // namespace utr
