#include "shell/windows/InstanciaUnica.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>
#include <QWidget>

namespace utr {
namespace {

constexpr int kEsperaMilisegundos = 500;

// The same for every way of writing the folder, and apart for each user.
QString NombreDelSocket(const QString& carpeta) {
  const QString clave = QDir::homePath() + '\n' + QDir(carpeta).canonicalPath();
  const QByteArray huella = QCryptographicHash::hash(clave.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
  return "AdminUTR-" + QString::fromLatin1(huella);
}

// Brings the window that the operator is at to the front.
void TraerAlFrente() {
  QWidget* ventana = QApplication::activeModalWidget();
  if (ventana == nullptr) ventana = QApplication::activeWindow();
  if (ventana == nullptr) {
    for (QWidget* candidata : QApplication::topLevelWidgets()) {
      if (candidata->isVisible()) ventana = candidata;
    }
  }
  if (ventana == nullptr) return;
  if (ventana->isMinimized()) ventana->showNormal();
  ventana->raise();
  ventana->activateWindow();
}

}  // namespace

InstanciaUnica::InstanciaUnica(const QString& carpeta, QObject* parent)
    : QObject(parent), nombre_(NombreDelSocket(carpeta)) {
  servidor_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&servidor_, &QLocalServer::newConnection, this, [this] {
    while (QLocalSocket* otra = servidor_.nextPendingConnection()) otra->deleteLater();
    TraerAlFrente();
    emit OtraInstancia();
  });
}

bool InstanciaUnica::Tomar() {
  if (Avisar()) return false;
  if (servidor_.listen(nombre_)) return true;
  // A socket that nobody answers was left behind by a program that was killed.
  QLocalServer::removeServer(nombre_);
  servidor_.listen(nombre_);
  return true;
}

bool InstanciaUnica::Avisar() const {
  QLocalSocket otra;
  otra.connectToServer(nombre_);
  return otra.waitForConnected(kEsperaMilisegundos);
}

}  // namespace utr
