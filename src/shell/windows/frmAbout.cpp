#include "shell/windows/frmAbout.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QProcess>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "session/ModRTU.h"
#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

// The first information tool that this system has; empty when it has none.
QString HerramientaDelSistema() {
  for (const char* nombre :
       {"kinfocenter", "hardinfo2", "hardinfo", "mate-system-monitor", "gnome-system-monitor", "xfce4-taskmanager"}) {
    QString programa = QStandardPaths::findExecutable(nombre);
    if (!programa.isEmpty()) return programa;
  }
  return {};
}

}  // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAbout");
  setWindowTitle("Acerca de la aplicación");
  auto* figura = new QLabel;
  figura->setPixmap(IconoDe("adminutr").pixmap(64, 64));
  figura->setAccessibleName("AdminUTR");
  auto* lblTitle = new QLabel(Q(kTitulo));
  lblTitle->setObjectName("lblTitle");
  QFont letra = lblTitle->font();
  letra.setBold(true);
  lblTitle->setFont(letra);
  auto* lblVersion = new QLabel("Versión " + QCoreApplication::applicationVersion());
  lblVersion->setObjectName("lblVersion");
  auto* lblLicencia = new QLabel(QStringLiteral("Software libre: licencia GNU GPL, versión 3 o posterior"));
  lblLicencia->setObjectName("lblLicencia");
  auto* textos = new QVBoxLayout;
  textos->addWidget(lblTitle);
  textos->addWidget(lblVersion);
  textos->addWidget(lblLicencia);
  textos->addStretch(1);
  auto* arriba = new QHBoxLayout;
  arriba->setSpacing(16);
  arriba->addWidget(figura, 0, Qt::AlignTop);
  arriba->addLayout(textos, 1);

  const QString herramienta = HerramientaDelSistema();
  auto* cmdSysInfo = Boton("cmdSysInfo", "&Info. del sistema...");
  cmdSysInfo->setEnabled(!herramienta.isEmpty());
  auto* cmdOK = Boton("cmdOK", "&Aceptar");
  ArmarDialogo(*this, arriba, {.aceptar = cmdOK, .ayuda = cmdSysInfo});
  connect(cmdSysInfo, &QPushButton::clicked, this, [herramienta] { QProcess::startDetached(herramienta, {}); });
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

}  // namespace utr
