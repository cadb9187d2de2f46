#include "support/RevisionVentana.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <QWidget>
#include <algorithm>
#include <map>

namespace utr {
namespace {

constexpr int kPisos = 30;
constexpr QSize kMarco(16, 40);  // what a desktop puts around a window

std::string Donde(const QObject* cual) {
  if (cual == nullptr) return "?";
  std::string nombre = cual->objectName().toStdString();
  if (!nombre.empty()) return nombre;
  return Donde(cual->parent()) + "/" + cual->metaObject()->className();
}

bool LlevaNombre(QAccessible::Role rol) {
  switch (rol) {
    case QAccessible::PushButton:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::Dial:
    case QAccessible::EditableText:
    case QAccessible::ProgressBar:
    case QAccessible::PageTab:
    case QAccessible::MenuItem:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::List:
    case QAccessible::Graphic:
    case QAccessible::Chart:
    case QAccessible::Dialog:
    case QAccessible::Window:
    case QAccessible::ColumnHeader:
      return true;
    default:
      return false;
  }
}

// The parts of a control stand for it, and it has the name.
bool EsParteDeOtro(const QWidget& control) {
  return control.focusProxy() != nullptr || qobject_cast<const QComboBox*>(control.parentWidget()) != nullptr ||
         control.parentWidget()->inherits("QAbstractSpinBox");
}

class Andador {
 public:
  std::vector<std::string> Reparos(QWidget& ventana) {
    Andar(QAccessible::queryAccessibleInterface(&ventana), 0);
    for (QWidget* control : ventana.findChildren<QWidget*>()) {
      if (control->window() == &ventana && control->isVisible()) ConTeclado(*control);
    }
    Teclas(ventana);
    return reparos_;
  }

 private:
  void Andar(QAccessibleInterface* cual, int piso) {
    if (cual == nullptr || !cual->isValid() || cual->state().invisible || piso > kPisos) return;
    const auto* control = qobject_cast<QWidget*>(cual->object());
    if (control != nullptr && control->isHidden()) return;
    const bool es_parte = control != nullptr && control->parentWidget() != nullptr && EsParteDeOtro(*control);
    if (LlevaNombre(cual->role()) && !es_parte && cual->text(QAccessible::Name).trimmed().isEmpty())
      Reparar(Donde(cual->object() != nullptr ? cual->object() : Madre(cual)) + ": no name, role " +
              std::to_string(cual->role()));
    if (const auto* rotulo = qobject_cast<QLabel*>(cual->object());
        rotulo != nullptr && !cual->text(QAccessible::Name).contains(rotulo->text().remove('&')))
      Reparar(Donde(rotulo) + ": its name is told in place of its text");
    if (auto* tabla = cual->tableInterface()) return Titulos(*tabla, Donde(cual->object()));
    for (int i = 0; i < cual->childCount(); ++i) Andar(cual->child(i), piso + 1);
  }

  // Cells are texts of a model: their titles are what can lack.
  void Titulos(QAccessibleTableInterface& tabla, const std::string& donde) {
    for (int columna = 0; columna < tabla.columnCount(); ++columna) {
      if (tabla.columnDescription(columna).trimmed().isEmpty())
        Reparar(donde + ": column " + std::to_string(columna) + " without a title");
    }
  }

  // What Tab reaches must tell what it is.
  void ConTeclado(QWidget& control) {
    if ((control.focusPolicy() & Qt::TabFocus) == 0 || control.focusProxy() != nullptr) return;
    QAccessibleInterface* cual = QAccessible::queryAccessibleInterface(&control);
    const QAccessible::Role rol = cual->role();
    const bool desliza = qobject_cast<QScrollArea*>(&control) != nullptr;  // a part of the window by its name
    if ((rol == QAccessible::Client || rol == QAccessible::NoRole) && !desliza)
      Reparar(Donde(&control) + ": keyboard without a role");
    if (!EsParteDeOtro(control) && cual->text(QAccessible::Name).trimmed().isEmpty())
      Reparar(Donde(&control) + ": keyboard without a name");
  }

  // A key of two commands works for none.
  void Teclas(const QWidget& ventana) {
    std::map<QKeySequence, const QAction*> puestas;
    for (const QAction* accion : ventana.findChildren<QAction*>()) {
      if (accion->shortcut().isEmpty() || accion->shortcutContext() == Qt::WidgetShortcut) continue;
      const auto [otra, nueva] = puestas.emplace(accion->shortcut(), accion);
      if (!nueva) Reparar(accion->text().toStdString() + ": the key of " + otra->second->text().toStdString());
    }
  }

  static QObject* Madre(QAccessibleInterface* cual) {
    while (cual != nullptr && cual->object() == nullptr) cual = cual->parent();
    return cual == nullptr ? nullptr : cual->object();
  }
  void Reparar(std::string reparo) {
    if (std::find(reparos_.begin(), reparos_.end(), reparo) == reparos_.end()) reparos_.push_back(std::move(reparo));
  }

  std::vector<std::string> reparos_;
};

std::string Medida(const QSize& medida) {
  return std::to_string(medida.width()) + "x" + std::to_string(medida.height());
}

// The least at which its words are whole; an invalid size where the control sees to that itself.
QSize Minimo(const QWidget& control) {
  if (const auto* rotulo = qobject_cast<const QLabel*>(&control)) {
    // A label of another class shortens its words and gives them in its tip.
    if (rotulo->text().isEmpty() || rotulo->metaObject() != &QLabel::staticMetaObject) return {};
    if (rotulo->wordWrap()) return {0, rotulo->heightForWidth(rotulo->width())};
    return rotulo->toolTip().contains(rotulo->text()) ? QSize{} : rotulo->sizeHint();
  }
  const auto* herramienta = qobject_cast<const QToolButton*>(&control);
  if (herramienta != nullptr && herramienta->toolButtonStyle() == Qt::ToolButtonIconOnly) return {};
  if (qobject_cast<const QAbstractButton*>(&control) != nullptr ||
      qobject_cast<const QComboBox*>(&control) != nullptr || control.inherits("QAbstractSpinBox"))
    return control.minimumSizeHint();
  if (const auto* campo = qobject_cast<const QLineEdit*>(&control); campo != nullptr && !EsParteDeOtro(control))
    return {0, campo->sizeHint().height()};
  if (const auto* grupo = qobject_cast<const QGroupBox*>(&control))
    return {grupo->fontMetrics().horizontalAdvance(grupo->title()), 0};
  return {};
}

// Within all that holds it, up to what scrolls.
bool SaleDeLaVentana(const QWidget& control) {
  for (const QWidget* madre = control.parentWidget(); madre != nullptr; madre = madre->parentWidget()) {
    if (qobject_cast<const QAbstractScrollArea*>(madre->parentWidget()) != nullptr) return false;
    const QRect lugar(control.mapTo(madre, QPoint(0, 0)), control.size());
    if (!madre->rect().contains(lugar)) return true;
    if (madre->isWindow()) break;
  }
  return false;
}

}  // namespace

std::vector<std::string> ReparosDeAcceso(QWidget& ventana) {
  return Andador().Reparos(ventana);
}

std::vector<std::string> ReparosDeTamano(QWidget& ventana) {
  std::vector<std::string> reparos;
  const QSize pantalla = ventana.screen()->availableSize() - kMarco;
  if (ventana.width() > pantalla.width() || ventana.height() > pantalla.height())
    reparos.push_back(Medida(ventana.size()) + " where there is room for " + Medida(pantalla));
  for (const QWidget* control : ventana.findChildren<QWidget*>()) {
    if (control->window() != &ventana || !control->isVisible()) continue;
    const QSize minimo = Minimo(*control);
    if (control->width() < minimo.width() || control->height() < minimo.height())
      reparos.push_back(Donde(control) + ": " + Medida(control->size()) + " for " + Medida(minimo));
    if (minimo.isValid() && SaleDeLaVentana(*control)) reparos.push_back(Donde(control) + ": out of the window");
  }
  return reparos;
}

}  // namespace utr
