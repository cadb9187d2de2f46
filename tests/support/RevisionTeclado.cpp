#include "support/RevisionTeclado.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QImage>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QTabBar>
#include <QToolBar>
#include <QWidget>
#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace utr {
namespace {

std::string Donde(const QObject* cual) {
  if (cual == nullptr) return "?";
  const std::string nombre = cual->objectName().toStdString();
  return nombre.empty() ? Donde(cual->parent()) + "/" + cual->metaObject()->className() : nombre;
}

// Two captions that their operators know, with one letter in common: the key then walks from one to the other.
constexpr std::pair<const char*, const char*> kConocidas[] = {{"&Parametrizar", "&Puesta en marcha UTR"},
                                                              {"&Contraseña", "&Cancelar"}};

bool SonConocidas(const QString& una, const QString& otra) {
  return std::any_of(std::begin(kConocidas), std::end(kConocidas), [&](const auto& pareja) {
    return una == QString::fromUtf8(pareja.first) && otra == QString::fromUtf8(pareja.second);
  });
}

// Letters and who has them, as far as two would be at odds.
class Letras {
 public:
  explicit Letras(std::vector<std::string>& reparos) : reparos_(reparos) {}
  void Tomar(const QString& texto, const std::string& quien) {
    const QKeySequence letra = QKeySequence::mnemonic(texto);
    if (letra.isEmpty()) return;
    const auto [otro, nueva] = de_quien_.emplace(letra.toString(), std::pair{quien, texto});
    const auto& [primero, su_texto] = otro->second;
    if (!nueva && primero != quien && !SonConocidas(su_texto, texto))
      reparos_.push_back(quien + ": the letter " + letra.toString().toStdString() + " of " + primero);
  }

 private:
  std::vector<std::string>& reparos_;
  std::map<QString, std::pair<std::string, QString>> de_quien_;
};

void LetrasDelMenu(const QMenu& menu, std::vector<std::string>& reparos) {
  Letras letras(reparos);
  for (const QAction* accion : menu.actions()) {
    if (accion->isVisible()) letras.Tomar(accion->text(), Donde(&menu) + "/" + accion->text().toStdString());
    if (accion->menu() != nullptr) LetrasDelMenu(*accion->menu(), reparos);
  }
}

void LetrasDeLaVentana(const QWidget& ventana, std::vector<std::string>& reparos) {
  Letras letras(reparos);
  for (const QWidget* control : ventana.findChildren<QWidget*>()) {
    if (control->window() != &ventana || !control->isVisible()) continue;
    if (const auto* barra = qobject_cast<const QMenuBar*>(control)) {
      for (const QAction* accion : barra->actions()) {
        letras.Tomar(accion->text(), "menu " + accion->text().toStdString());
        if (accion->menu() != nullptr) LetrasDelMenu(*accion->menu(), reparos);
      }
    } else if (const auto* rotulo = qobject_cast<const QLabel*>(control)) {
      if (rotulo->buddy() != nullptr) letras.Tomar(rotulo->text(), Donde(rotulo));
    } else if (const auto* boton = qobject_cast<const QAbstractButton*>(control)) {
      if (qobject_cast<QToolBar*>(boton->parentWidget()) == nullptr) letras.Tomar(boton->text(), Donde(boton));
    } else if (const auto* grupo = qobject_cast<const QGroupBox*>(control)) {
      letras.Tomar(grupo->title(), Donde(grupo));
    } else if (const auto* hojas = qobject_cast<const QTabBar*>(control)) {
      for (int hoja = 0; hoja < hojas->count(); ++hoja) letras.Tomar(hojas->tabText(hoja), Donde(hojas));
    }
  }
}

QString Palabras(QString texto) {
  texto.removeIf([](QChar letra) { return !letra.isLetterOrNumber(); });
  return texto.toLower();
}

// The buttons of a toolbar take no keyboard; a menu may have another entry with the same words.
void SoloConRaton(const QWidget& ventana, std::vector<std::string>& reparos) {
  // In the menu it stands in other words, with a key.
  std::set<QString> en_menus{Palabras(QStringLiteral("Eliminar los horarios seleccionados"))};
  for (const QAction* accion : ventana.findChildren<QAction*>()) {
    const QObjectList donde = accion->associatedObjects();
    const bool en_menu = std::any_of(donde.begin(), donde.end(), [](const QObject* uno) {
      return qobject_cast<const QMenu*>(uno) != nullptr || qobject_cast<const QMenuBar*>(uno) != nullptr;
    });
    if (en_menu) en_menus.insert(Palabras(accion->text()));
  }
  for (const QToolBar* barra : ventana.findChildren<QToolBar*>()) {
    for (const QAction* accion : barra->actions()) {
      if (accion->isEnabled() && accion->isVisible() && !accion->isSeparator() && accion->shortcut().isEmpty() &&
          !en_menus.contains(Palabras(accion->text())))
        reparos.push_back(Donde(accion) + ": by mouse only");
    }
  }
}

bool LlegaElTeclado(const QWidget& control) {
  return (control.focusPolicy() & Qt::TabFocus) != 0 && control.focusProxy() == nullptr && control.isVisible() &&
         control.isEnabled();
}

// Those that Tab walks, from the first one.
std::vector<QWidget*> Recorrido(QWidget& ventana) {
  std::vector<QWidget*> pasos;
  for (QWidget* control = ventana.nextInFocusChain(); control != &ventana; control = control->nextInFocusChain()) {
    if (control->window() == &ventana && LlegaElTeclado(*control)) pasos.push_back(control);
  }
  return pasos;
}

// What it scrolls with; places are compared within one such part.
const QWidget* QueDesplaza(const QWidget& control) {
  for (const QWidget* madre = control.parentWidget(); madre != nullptr; madre = madre->parentWidget()) {
    if (madre->isWindow() || qobject_cast<const QScrollArea*>(madre->parentWidget()) != nullptr) return madre;
  }
  return &control;
}

// Up within what stands over one another, or left within a row; a step up into the next column is none of these.
bool VuelveAtras(const QRect& desde, const QRect& hasta) {
  const bool mas_arriba = hasta.bottom() <= desde.top();
  const bool misma_fila = !mas_arriba && hasta.top() < desde.bottom();
  if (misma_fila) return hasta.right() <= desde.left();
  return mas_arriba && hasta.left() < desde.right();
}

bool VuelveAtras(const QWidget& desde, const QWidget& hasta) {
  const QWidget* parte = QueDesplaza(desde);
  if (parte != QueDesplaza(hasta)) return false;
  const auto lugar = [parte](const QWidget& control) {
    return QRect(control.mapTo(parte, QPoint(0, 0)), control.size());
  };
  return VuelveAtras(lugar(desde), lugar(hasta));
}

bool EsAyuda(const QWidget& control) {
  const auto* boton = qobject_cast<const QAbstractButton*>(&control);
  return boton != nullptr && boton->text() == QLatin1String("A&yuda");
}

// The steps are a ring, which goes back once; the help comes last wherever it stands.
void OrdenDeTab(QWidget& ventana, std::vector<std::string>& reparos) {
  std::vector<QWidget*> pasos = Recorrido(ventana);
  std::erase_if(pasos, [](const QWidget* paso) { return EsAyuda(*paso); });
  std::vector<std::string> atras;
  for (std::size_t i = 0; i < pasos.size(); ++i) {
    const QWidget* sigue = pasos[(i + 1) % pasos.size()];
    if (VuelveAtras(*pasos[i], *sigue)) atras.push_back(Donde(pasos[i]) + " to " + Donde(sigue));
  }
  if (atras.size() <= 1) return;
  for (const std::string& paso : atras) reparos.push_back("Tab goes back from " + paso);
}

void FocoALaVista(QWidget& ventana, std::vector<std::string>& reparos) {
  QApplication::setActiveWindow(&ventana);
  ventana.setAttribute(Qt::WA_KeyboardFocusChange);  // as after the first Tab
  QWidget* antes = QApplication::focusWidget();
  for (QWidget* control : Recorrido(ventana)) {
    control->setFocus(Qt::TabFocusReason);
    const QImage con = control->grab().toImage();
    control->clearFocus();
    if (con == control->grab().toImage()) reparos.push_back(Donde(control) + ": looks the same without the keyboard");
  }
  if (antes != nullptr) antes->setFocus();
}

}  // namespace

std::vector<std::string> ReparosDeTeclado(QWidget& ventana) {
  std::vector<std::string> reparos;
  LetrasDeLaVentana(ventana, reparos);
  SoloConRaton(ventana, reparos);
  OrdenDeTab(ventana, reparos);
  FocoALaVista(ventana, reparos);
  return reparos;
}

std::vector<std::string> SinExplicacion(const QWidget& ventana) {
  std::vector<std::string> reparos;
  for (const QWidget* control : ventana.findChildren<QWidget*>()) {
    if (control->window() != &ventana || !LlegaElTeclado(*control)) continue;
    const QWidget* con_palabras = control;
    while (con_palabras != &ventana && con_palabras->whatsThis().isEmpty()) con_palabras = con_palabras->parentWidget();
    if (con_palabras == &ventana) reparos.push_back(Donde(control) + ": nothing says what it is");
  }
  return reparos;
}

}  // namespace utr
