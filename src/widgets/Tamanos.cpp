#include "widgets/Tamanos.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "widgets/Recuerdos.h"
#include "widgets/Temas.h"

namespace utr {
namespace {

// Title bar and borders.
constexpr QSize kMarcoDelEscritorio(16, 40);

constexpr double kAltoComun = 16;  // of the letters for which sizes are given

Recuerdos Guardados() {
  return Recuerdos({});
}

// The name under which a window's size is kept: what does for some letters is too little for larger ones.
QString Nombre(const QWidget& ventana) {
  const int escala = qRound(EscalaDelTexto() * 100);
  QString nombre = ventana.objectName();
  if (escala > 100) nombre += QStringLiteral("@%1").arg(escala);
  if (TemaDe(ventana.palette()) == Tema::kExteriores) nombre += QStringLiteral("@exteriores");
  return nombre;
}

class Guardian : public QObject {
 public:
  explicit Guardian(QWidget* ventana) : QObject(ventana) { ventana->installEventFilter(this); }

  bool eventFilter(QObject* objeto, QEvent* evento) override {
    if (evento->type() == QEvent::Hide && !evento->spontaneous()) {
      const auto* ventana = static_cast<QWidget*>(objeto);
      Guardados().Guardar(Nombre(*ventana), ventana->saveGeometry());
    }
    return false;
  }
};

}  // namespace

double EscalaDelTexto() {
  return std::max(1.0, QFontMetrics(QApplication::font()).height() / kAltoComun);
}

QSize SitioEnPantalla(const QWidget& ventana) {
  return ventana.screen()->availableSize() - kMarcoDelEscritorio;
}

void RecordarTamano(QWidget* ventana) {
  const QByteArray guardado = Guardados().Valor(Nombre(*ventana)).toByteArray();
  if (!guardado.isEmpty() && ventana->restoreGeometry(guardado)) {
    // The size alone: a window that is hidden before it was put in its place tells a wrong one, and a dialog belongs
    // over its parent anyway.
    ventana->setAttribute(Qt::WA_Moved, false);
    if (!ventana->isMaximized()) ventana->resize(ventana->size().boundedTo(SitioEnPantalla(*ventana)));
  }
  new Guardian(ventana);
}

}  // namespace utr
