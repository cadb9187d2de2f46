#pragma once

#include <QCheckBox>
#include <QList>
#include <functional>
#include <map>

#include "widgets/Recuerdos.h"

namespace utr {

class VistaLista;

// The tick "Recordar": while it is on, the window is found next time as it was left, by the same user: its fields, and
// how the columns of its list stand. Off, it starts as it always does, and nothing is kept of it.
class ControlesRecordados : public QCheckBox {
  Q_OBJECT

 public:
  // `ventana`: its object name tells it from others.
  explicit ControlesRecordados(const QString& ventana, QWidget* parent = nullptr);

  // These fields (ticks and choices, lists of texts, texts, dates; each known by its object name) and that list. What
  // was kept is put back now, where it still makes sense; to be called when the fields hold what they start with.
  void Reponer(QList<QWidget*> campos, VistaLista* lista);

  // Another set of columns by that name, or the list's own ("columnas") told by someone else, for a window that shows
  // several in one list. `disposicion`: how they stand, asked when the window is left. Gives what was kept of them,
  // empty where nothing was; behind Reponer.
  QStringList Columnas(const QString& nombre, std::function<QStringList()> disposicion);

  // To be called when the window is left.
  void Guardar();

 private:
  Recuerdos recuerdos_;
  QList<QWidget*> campos_;
  std::map<QString, std::function<QStringList()>> columnas_;
};

}  // namespace utr
