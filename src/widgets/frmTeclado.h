#pragma once

#include <QDialog>
#include <QList>
#include <QString>

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

// The keys of a window as it has them: those of its commands, and those that say by themselves what they do
// (QShortcut::whatsThis). A key that stands twice for the same is told once.
QList<Atajo> AtajosDe(const QWidget& ventana);

// The page of the keyboard: the keys of a window, then those that hold in all of them.
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
