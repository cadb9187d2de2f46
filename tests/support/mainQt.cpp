#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <clocale>

int main(int argc, char** argv) {
  QApplication aplicacion(argc, argv);
  // The same numbers as in the program itself, whatever the machine's settings.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale::c());
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
