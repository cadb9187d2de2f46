#pragma once

#include <QDialog>
#include <QObject>
#include <deque>
#include <functional>
#include <stdexcept>
#include <string>

namespace utr {

// Plays the part of the operator inside modal dialogs: when the next expected one is shown, its step runs in the
// dialog's own event loop. A dialog that nobody expected is closed and fails the test, and so does an expected one that
// never came. A dialog that is still open behind its step is closed and fails the test too.
class GuionVentanas : public QObject {
 public:
  GuionVentanas();
  ~GuionVentanas() override;

  // The next modal dialog has this object name; what is done in it.
  void Espera(std::string nombre, std::function<void(QDialog&)> paso);

  // Fails the test for every dialog that didn't come.
  void Comprobar();

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  struct Paso {
    std::string nombre;
    std::function<void(QDialog&)> accion;
  };

  void Jugar(QDialog& dialogo);

  std::deque<Paso> guion_;
};

// A control by its object name; aborts the test program's run of the case when the window has none.
template <class Control>
Control& Hallar(const QObject& ventana, const char* nombre) {
  auto* control = ventana.findChild<Control*>(QString::fromLatin1(nombre));
  if (control == nullptr) throw std::runtime_error(std::string("no control ") + nombre);
  return *control;
}

// A click in the middle of a control, and a key with its text, that wait in the queue of events, as they do while the
// program is blocked.
void EncolarClic(QWidget* destino);
void EncolarTecla(QWidget* destino, int tecla, const QString& texto = {});

}  // namespace utr
