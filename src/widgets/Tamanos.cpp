#include "widgets/Tamanos.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>

#include "widgets/Recuerdos.h"

namespace utr {
namespace {

// Title bar and borders.
constexpr QSize kMarcoDelEscritorio(16, 40);

Recuerdos Guardados() {
  return Recuerdos({});
}

class Guardian : public QObject {
 public:
  explicit Guardian(QWidget* ventana) : QObject(ventana) { ventana->installEventFilter(this); }

  bool eventFilter(QObject* objeto, QEvent* evento) override {
    if (evento->type() == QEvent::Hide && !evento->spontaneous()) {
      const auto* ventana = static_cast<QWidget*>(objeto);
      Guardados().Guardar(ventana->objectName(), ventana->saveGeometry());
    }
    return false;
  }
};

}  // namespace

QSize SitioEnPantalla(const QWidget& ventana) {
  return ventana.screen()->availableSize() - kMarcoDelEscritorio;
}

void RecordarTamano(QWidget* ventana) {
  const QByteArray guardado = Guardados().Valor(ventana->objectName()).toByteArray();
  if (!guardado.isEmpty() && ventana->restoreGeometry(guardado)) {
    // The size alone: a window that is hidden before it was put in its place tells a wrong one, and a dialog belongs
    // over its parent anyway.
    ventana->setAttribute(Qt::WA_Moved, false);
    if (!ventana->isMaximized()) ventana->resize(ventana->size().boundedTo(SitioEnPantalla(*ventana)));
  }
  new Guardian(ventana);
}

}  // namespace utr
