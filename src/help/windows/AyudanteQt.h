#pragma once

#include <QPointer>

#include "help/windows/LibroAyuda.h"
#include "help/windows/frmAyuda.h"
#include "services/Operador.h"
#include "widgets/Ayuda.h"

namespace utr {

// Shows the help in a window of its own, which takes input beside every dialog. F1 opens it in any window that has no
// key for it, at the window's page; Shift+F1 says what the control with the keyboard is for. The words of the pages
// about controls are what "¿Qué es esto?" answers.
class AyudanteQt : public Ayudante {
  Q_OBJECT

 public:
  // `archivo`: the help file, as it is when someone asks for it; it outlives the object, as the operator does, who is
  // told why a help file can't be shown. `cache`: where what Qt keeps about it goes; empty: in the user's cache.
  AyudanteQt(const std::filesystem::path& archivo, Operador& operador, QString cache = {});
  ~AyudanteQt() override;

  void Mostrar(const std::filesystem::path& archivo, EntradaAyuda entrada, const QWidget& desde) override;

  // Gives the window's controls and commands the words of the pages, where they have none of their own.
  void Explicar(QWidget& ventana);

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  QString Preparar(const std::filesystem::path& archivo);
  bool Tecla(QWidget& control, Qt::KeyboardModifiers modificadores);
  void DecirQueEs(QWidget& control);
  QUrl PaginaPara(const QWidget& desde) const;
  void Alzar();

  const std::filesystem::path& archivo_;
  Operador& operador_;
  QString cache_;
  LibroAyuda libro_;
  QPointer<frmAyuda> ventana_;
};

}  // namespace utr
