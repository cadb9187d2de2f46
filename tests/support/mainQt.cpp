#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <clocale>

int main(int argc, char** argv) {
  // Also where the cases are only listed, while the tests are built.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication aplicacion(argc, argv);
  // The same numbers as in the program itself, whatever the machine's settings.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale::c());
  // Sizes of windows are remembered per user; no test may see or leave any.
  const QTemporaryDir usuario;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, usuario.path());
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
