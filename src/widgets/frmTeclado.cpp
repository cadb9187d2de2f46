#include "widgets/frmTeclado.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <memory>

#include "tables/Tabla.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr QSize kTamano(900, 560);
constexpr const char* kCampos[] = {"Donde", "Que", "Tecla"};
constexpr std::int32_t kLargo = 255;
constexpr const char* kTeclasPropias = "teclasPropias";

// What Qt itself and the parts that windows have in common answer to, where a window has a control of that class.
struct AtajoComun {
  const char* clase;
  const char* donde;
  const char* que;
  const char* tecla;
};
constexpr std::array<AtajoComun, 16> kComunes{{
    {"QWidget", "Toda ventana", "Ir al control siguiente, al anterior", "Tab, Mayús+Tab"},
    {"QWidget", "Toda ventana", "Ir al control de la letra subrayada, o apretarlo", "Alt+letra"},
    {"QMenuBar", "Toda ventana", "Ir al menú", "Alt, F10"},
    {"QWidget", "Toda ventana", "Apretar el botón que tiene el teclado; si no, el que está marcado", "Entrar"},
    {"QWidget", "Toda ventana", "Apretar el botón, o marcar la casilla, que tiene el teclado", "Espacio"},
    {"QWidget", "Toda ventana", "Cancelar, o cerrar", "Esc"},
    {"QWidget", "Toda ventana", "Decir para qué es el control que tiene el teclado", "Mayús+F1"},
    {"QWidget", "Toda ventana", "Ver esta página", "Ctrl+F1"},
    {"QTabWidget", "Hojas", "Pasar a la hoja siguiente, a la anterior", "Ctrl+Tab, Ctrl+Mayús+Tab"},
    {"QTreeView", "Listas", "Moverse por los renglones", "flechas, Inicio, Fin, Re Pág, Av Pág"},
    {"QTreeView", "Listas", "Abrir el renglón", "Entrar"},
    {"utr::VistaLista", "Listas", "Elegir más renglones", "Mayús+flechas, Ctrl+Espacio"},
    {"utr::VistaLista", "Listas", "Del filtro a la lista", "Entrar, Abajo"},
    {"utr::VistaLista", "Listas", "Vaciar el filtro", "Esc"},
    {"QAbstractSpinBox", "Fechas y números", "Aumentar, disminuir", "Arriba, Abajo"},
    {"QComboBox", "Desplegables", "Abrir la lista", "Alt+Abajo"},
}};

constexpr QLatin1String kAhoraNo(" (ahora no)");

QString SinLetra(QString texto) {
  return texto.remove('&').trimmed();
}

// The menu that an action stands in; else the part of the window, by the name that a screen reader says.
QString DondeEsta(const QAction& accion) {
  const QObjectList objetos = accion.associatedObjects();
  for (QObject* objeto : objetos) {
    if (const auto* menu = qobject_cast<const QMenu*>(objeto)) return SinLetra(menu->title());
  }
  for (QObject* objeto : objetos) {
    const auto* control = qobject_cast<const QWidget*>(objeto);
    if (control != nullptr && !control->accessibleName().isEmpty()) return control->accessibleName();
  }
  return QStringLiteral("Ventana");
}

void Agregar(QList<Atajo>& atajos, const Atajo& nuevo) {
  const bool ya = std::any_of(atajos.cbegin(), atajos.cend(),
                              [&](const Atajo& uno) { return uno.que == nuevo.que && uno.tecla == nuevo.tecla; });
  if (!ya) atajos.append(nuevo);
}

// Those that are in the window itself, not in another that belongs to it.
QList<const QWidget*> ControlesDe(const QWidget& ventana) {
  QList<const QWidget*> controles;
  for (const QWidget* control : ventana.findChildren<QWidget*>()) {
    if (control->window() == &ventana) controles.append(control);
  }
  return controles;
}

void AgregarPropias(QList<Atajo>& atajos, const QList<const QWidget*>& controles) {
  for (const QWidget* control : controles) {
    const QStringList teclas = control->property(kTeclasPropias).toStringList();
    for (qsizetype i = 0; i + 1 < teclas.size(); i += 2)
      Agregar(atajos, {control->accessibleName(), teclas[i], teclas[i + 1], control->isEnabled()});
  }
}

void AgregarComunes(QList<Atajo>& atajos, const QList<const QWidget*>& controles) {
  for (const AtajoComun& comun : kComunes) {
    const auto es_de_su_clase = [&](const QWidget* control) { return control->inherits(comun.clase); };
    if (std::any_of(controles.cbegin(), controles.cend(), es_de_su_clase))
      atajos.append({comun.donde, comun.que, comun.tecla, true});
  }
}

TablaPtr TablaDe(const QList<Atajo>& atajos) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : kCampos) tabla->Append(campo, TipoCampo::kVarChar, kLargo);
  tabla->Open();
  for (const Atajo& atajo : atajos) {
    tabla->AddNew();
    tabla->Set(kCampos[0], U(atajo.donde));
    tabla->Set(kCampos[1], U(atajo.rige ? atajo.que : atajo.que + kAhoraNo));
    tabla->Set(kCampos[2], U(atajo.tecla));
  }
  return tabla;
}

}  // namespace

void DecirTeclas(QWidget& control, std::initializer_list<TeclaPropia> teclas) {
  QStringList textos;
  for (const TeclaPropia& tecla : teclas) textos << QString::fromUtf8(tecla.que) << QString::fromUtf8(tecla.tecla);
  control.setProperty(kTeclasPropias, textos);
}

QList<Atajo> AtajosDe(const QWidget& ventana) {
  QList<Atajo> atajos;
  for (const QAction* accion : ventana.findChildren<QAction*>()) {
    const QString tecla = accion->shortcut().toString(QKeySequence::NativeText);
    if (!tecla.isEmpty() && accion->isVisible())
      Agregar(atajos, {DondeEsta(*accion), SinLetra(accion->text()), tecla, accion->isEnabled()});
  }
  for (const QShortcut* atajo : ventana.findChildren<QShortcut*>()) {
    const bool de_la_ventana = qobject_cast<QWidget*>(atajo->parent())->window() == &ventana;
    if (de_la_ventana && !atajo->whatsThis().isEmpty()) {
      const QString tecla = atajo->key().toString(QKeySequence::NativeText);
      Agregar(atajos, {QStringLiteral("Ventana"), atajo->whatsThis(), tecla, atajo->isEnabled()});
    }
  }
  const QList<const QWidget*> controles = ControlesDe(ventana);
  AgregarPropias(atajos, controles);
  AgregarComunes(atajos, controles);
  return atajos;
}

frmTeclado::frmTeclado(QWidget* ventana) : QDialog(ventana) {
  setObjectName("frmTeclado");
  setWindowTitle("Teclado: " + ventana->windowTitle());
  auto* lista = new VistaLista({{.titulo = "Dónde", .campo = kCampos[0]},
                                {.titulo = "Qué hace", .campo = kCampos[1]},
                                {.titulo = "Tecla", .campo = kCampos[2]}});
  lista->Arbol()->setAccessibleName("Teclas");
  lista->Mostrar(TablaDe(AtajosDe(*ventana)));
  lista->Elegir(0);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->addWidget(lista, 1);
  QPushButton* cerrar = Boton("cmd", "&Cerrar");
  cerrar->setWhatsThis("Cierra la página.");
  connect(cerrar, &QPushButton::clicked, this, &frmTeclado::accept);
  ArmarDialogo(*this, cuerpo, {.cancelar = cerrar, .por_defecto = false}, {lista->CampoFiltro(), lista->Arbol()});
  lista->Arbol()->setFocus();
  AjustarTamano(*this, kTamano);
}

// A key that comes here was taken by no command.
bool TeclaDeTeclado::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() != QEvent::KeyPress || qobject_cast<QWidget*>(objeto) == nullptr) return false;
  const auto* tecla = static_cast<QKeyEvent*>(evento);
  const bool pedida = tecla->modifiers() == Qt::NoModifier || tecla->modifiers() == Qt::ControlModifier;
  QWidget* ventana = QApplication::activeWindow();
  if (tecla->key() != Qt::Key_F1 || !pedida || ventana == nullptr) return false;
  if (qobject_cast<frmTeclado*>(ventana) == nullptr) frmTeclado(ventana).exec();
  return true;
}

}  // namespace utr
