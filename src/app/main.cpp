#include "shell/windows/Main.h"

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>
#include <clocale>

#include "PuertosSimulados.h"
#include "base/Reloj.h"
#include "shell/windows/InstanciaUnica.h"
#include "widgets/ImpresoraQt.h"
#include "widgets/OperadorQt.h"
#include "widgets/TextoQt.h"

namespace {

// Qt's own words in Spanish: the catalogues beside the executable, else the system's. The complement goes in later, so
// that it is asked first.
void CargarCatalogo(QTranslator& catalogo, const QString& nombre) {
  const QString propia = QCoreApplication::applicationDirPath() + "/translations";
  if (catalogo.load(nombre, propia) || catalogo.load(nombre, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&catalogo);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication aplicacion(argc, argv);
  QCoreApplication::setApplicationName("AdminUTR");
  QCoreApplication::setApplicationVersion(ADMINUTR_VERSION);
  QGuiApplication::setDesktopFileName("adminutr");
  // QApplication has taken over the machine's settings: numbers in files and in the driver's texts use "." whatever
  // they are.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale::c());
  QTranslator catalogo;
  CargarCatalogo(catalogo, "qtbase_es");
  QTranslator complemento;
  CargarCatalogo(complemento, "complemento_es");

  const QString carpeta = QCoreApplication::applicationDirPath();
  // Ahead of the driver, which must not touch the station of the instance that runs.
  utr::InstanciaUnica instancia(carpeta);
  if (!instancia.Tomar()) return 0;

  const utr::Atender atender = [] { QCoreApplication::processEvents(); };
  utr::RelojSistema reloj;
  utr::ComunicadorSimulado comunicador(utr::Ruta(carpeta), reloj, atender);
  QTimer cada_segundo;
  QObject::connect(&cada_segundo, &QTimer::timeout, [&comunicador] { comunicador.VaciarBitacora(); });
  cada_segundo.start(1000);
  utr::PuertosSimulados puertos(comunicador);
  utr::OperadorQt operador;
  utr::ImpresoraQt impresora;
  const QString nombre = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
  return utr::Ejecutar({comunicador, puertos, impresora, operador, reloj, atender, utr::Ruta(carpeta), utr::U(nombre),
                        comunicador.Aviso()});
}
