#pragma once

#include <QDialog>
#include <QList>
#include <QString>
#include <initializer_list>

namespace utr {

class VistaLista;

// A key and what it does; `donde`: the menu that tells it too, or the part of the window that it belongs to; `rige`:
// whether its command can be given as the window stands.
struct Atajo {
  QString donde;
  QString que;
  QString tecla;
  bool rige = true;
};

// A key that a control takes by itself, and what it does there.
struct TeclaPropia {
  const char* que;
  const char* tecla;
};
// Has the page of the keyboard tell the keys of a control of the program's own, under the name that it has by then.
void DecirTeclas(QWidget& control, std::initializer_list<TeclaPropia> teclas);

// The keys of a window as it has them: those of its commands, those that say by themselves what they do
// (QShortcut::whatsThis), those that its controls take (DecirTeclas) and those of the kinds of controls that it has. A
// key that stands twice for the same is told once.
QList<Atajo> AtajosDe(const QWidget& ventana);

// The page of the keyboard: the keys of a window.
class frmTeclado : public QDialog {
  Q_OBJECT

 public:
  explicit frmTeclado(QWidget* ventana);
};

// Opens the page over the window in front: by Ctrl+F1 everywhere, and by F1 where no help takes it. Install it on the
// application.
class TeclaDeTeclado : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
};

}  // namespace utr
