#include "support/GuionVentanas.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace utr {

GuionVentanas::GuionVentanas() {
  qApp->installEventFilter(this);
}

GuionVentanas::~GuionVentanas() {
  qApp->removeEventFilter(this);
  Comprobar();
}

void GuionVentanas::Espera(std::string nombre, std::function<void(QDialog&)> paso) {
  guion_.push_back({std::move(nombre), std::move(paso)});
}

void GuionVentanas::Comprobar() {
  for (const Paso& paso : guion_) ADD_FAILURE() << "never shown: " << paso.nombre;
  guion_.clear();
}

bool GuionVentanas::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() == QEvent::Show) {
    auto* dialogo = qobject_cast<QDialog*>(objeto);
    if (dialogo != nullptr && dialogo->isModal()) {
      QMetaObject::invokeMethod(
          dialogo, [this, dialogo] { Jugar(*dialogo); }, Qt::QueuedConnection);
    }
  }
  return QObject::eventFilter(objeto, evento);
}

void GuionVentanas::Jugar(QDialog& dialogo) {
  const std::string nombre = dialogo.objectName().toStdString();
  if (guion_.empty() || guion_.front().nombre != nombre) {
    ADD_FAILURE() << "unexpected dialog: " << nombre;
    dialogo.done(QDialog::Rejected);
    return;
  }
  const Paso paso = std::move(guion_.front());
  guion_.pop_front();
  const QPointer<QDialog> viva(&dialogo);
  try {
    paso.accion(dialogo);
  } catch (const std::exception& error) {
    ADD_FAILURE() << nombre << ": " << error.what();
  }
  if (!viva || !viva->isVisible()) return;
  ADD_FAILURE() << "left open: " << nombre;
  viva->done(QDialog::Rejected);
}

void EncolarClic(QWidget* destino) {
  for (const QEvent::Type tipo : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const QPointF lugar = destino->rect().center();
    QCoreApplication::postEvent(destino, new QMouseEvent(tipo, lugar, destino->mapToGlobal(lugar), Qt::LeftButton,
                                                         Qt::LeftButton, Qt::NoModifier));
  }
}

void EncolarTecla(QWidget* destino, int tecla, const QString& texto) {
  for (const QEvent::Type tipo : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QCoreApplication::postEvent(destino, new QKeyEvent(tipo, tecla, Qt::NoModifier, texto));
  }
}

}  // namespace utr
