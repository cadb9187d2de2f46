#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <clocale>
#include <memory>

namespace {

// Sizes of windows and the like are remembered per user; no case may see or leave any, not even another case's.
class UsuarioPorCaso : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override {
    usuario_ = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, usuario_->path());
  }

  std::unique_ptr<QTemporaryDir> usuario_;
};

}  // namespace

int main(int argc, char** argv) {
  // Also where the cases are only listed, while the tests are built.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication aplicacion(argc, argv);
  // The same numbers as in the program itself, whatever the machine's settings.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale::c());
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new UsuarioPorCaso);
  return RUN_ALL_TESTS();
}
