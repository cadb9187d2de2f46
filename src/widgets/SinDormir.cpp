#include "widgets/SinDormir.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

namespace utr {

// The answer holds a file; the computer may sleep again when that is closed.
struct SinDormir::Pedido {
  QDBusPendingReply<QDBusUnixFileDescriptor> respuesta;
};

SinDormir::SinDormir(const QString& porque) {
  QDBusConnection bus = QDBusConnection::systemBus();
  if (!bus.isConnected()) return;
  QDBusMessage pedido = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
      QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
  pedido << QStringLiteral("sleep:idle") << QCoreApplication::applicationName() << porque << QStringLiteral("block");
  pedido.setAutoStartService(false);
  pedido_ = std::make_unique<Pedido>(Pedido{bus.asyncCall(pedido)});
}

SinDormir::~SinDormir() = default;

}  // namespace utr
