#include "shell/windows/MenuPpal.h"

#include <QActionGroup>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QToolBar>
#include <QToolButton>
#include <optional>
#include <utility>

#include "shell/windows/AccionesPpal.h"
#include "widgets/Apariencia.h"
#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/TextoQt.h"

namespace utr {

namespace {

struct VistaPpal {
  const char* nombre;  // of the menu entry
  const char* texto;
  const char* clave;  // of the toolbar button
  const char* ayuda;  // of the toolbar button
  const char* icono;
};
constexpr std::array<VistaPpal, 4> kVistas{{
    {"mnuViewLargeIcons", "Iconos Grandes", "View Large Icons", "Iconos grandes", "iconos-grandes"},
    {"mnuViewSmallIcons", "Iconos Pequeños", "View Small Icons", "Iconos pequeños", "iconos-pequenos"},
    {"mnuViewList", "Lista", "View List", "Lista", "lista"},
    {"mnuViewDetails", "Detalles", "View Details", "Detalles", "detalles"},
}};

struct TemaOfrecido {
  std::optional<Tema> tema;
  const char* texto;
};
constexpr std::array<TemaOfrecido, 4> kTemas{{
    {{}, "&Como el del equipo"},
    {Tema::kClaro, "C&laro"},
    {Tema::kOscuro, "&Oscuro"},
    {Tema::kExteriores, "&Exteriores (a pleno sol)"},
}};

// Who is at the other end, on a ground of its own colour.
class EtiquetaUnidad : public QLabel {
 public:
  explicit EtiquetaUnidad(QMenuBar* barra) : barra_(barra) {
    setObjectName("Unidad");
    setBackgroundRole(QPalette::Window);  // a menu bar's own would be its children's too
    setForegroundRole(QPalette::WindowText);
    setContentsMargins(kAlLado + kAfuera, kEncima, kAlLado + kAfuera, kEncima);
  }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    {
      QPainter pintor(this);
      pintor.setRenderHint(QPainter::Antialiasing);
      pintor.setPen(Qt::NoPen);
      pintor.setBrush(palette().color(QPalette::Window));
      pintor.drawRoundedRect(rect().adjusted(kAfuera, 2, -kAfuera, -2), 3, 3);
    }
    QLabel::paintEvent(evento);
  }
  // A menu bar looks at the size of its corner when it is put there.
  void changeEvent(QEvent* evento) override {
    QLabel::changeEvent(evento);
    if (evento->type() == QEvent::FontChange && barra_->cornerWidget() == this) barra_->setCornerWidget(this);
  }

 private:
  static constexpr int kAfuera = 6;
  static constexpr int kAlLado = 8;
  static constexpr int kEncima = 3;

  QMenuBar* barra_;
};

QMenu* Menu(QMenu* menu, const char* nombre) {
  menu->setObjectName(QString::fromLatin1(nombre));
  return menu;
}

QAction* Entrada(QMenu* menu, const QString& nombre, const QString& texto, const QIcon& icono = {}) {
  QAction* accion = menu->addAction(icono, texto);
  accion->setObjectName(nombre);
  return accion;
}

}  // namespace

MenuPpal::MenuPpal(QMainWindow* ventana) : QObject(ventana), unidad_(new EtiquetaUnidad(ventana->menuBar())) {
  ArmarConexion(ventana);
  ArmarAcciones(ventana);
  ArmarVer(ventana);
  ArmarVisita(ventana);
  ArmarAyuda(ventana);
  ArmarBarra(ventana);
  ventana->menuBar()->setCornerWidget(unidad_);
  MostrarUnidad(ClaseDeUnidad::kSimulada);
}

void MenuPpal::ArmarAcciones(QMainWindow* ventana) {
  QMenu* mnuAcc = Menu(ventana->menuBar()->addMenu("&Acciones"), "mnuAcc");
  for (std::size_t i = 0; i < kAcciones.size(); ++i) {
    QAction* accion =
        Entrada(mnuAcc, QString("mnuAcciones(%1)").arg(i), kAcciones[i].texto, IconoDe(kAcciones[i].icono));
    accion->setShortcut(QKeySequence(kAcciones[i].tecla));
    accion->setWhatsThis(kAcciones[i].que_hace);
    connect(accion, &QAction::triggered, this, [this, i] { emit Accion(static_cast<int>(i)); });
  }
  mnuAcc->addSeparator();
  QMenu* mnuAvanzadas = Menu(mnuAcc->addMenu("A&vanzadas"), "mnuAvanzadas");
  for (std::size_t i = 0; i < kAvanzadas.size(); ++i) {
    QAction* accion =
        Entrada(mnuAvanzadas, QString("mnuAccAvanzadas(%1)").arg(i), kAvanzadas[i].texto, IconoDe(kAvanzadas[i].icono));
    accion->setShortcut(QKeySequence(kAvanzadas[i].tecla));
    accion->setWhatsThis(kAvanzadas[i].que_hace);
    connect(accion, &QAction::triggered, this, [this, i] { emit Avanzada(static_cast<int>(i)); });
  }
  mnuAcc->addSeparator();
  mnuAcc->addActions({Boton("Conected"), Boton("Disconected")});
  mnuAcc->addSeparator();
  QAction* mnuSalir = Entrada(mnuAcc, "mnuSalir", "&Salir", IconoDe("salir"));
  mnuSalir->setShortcut(QKeySequence("Ctrl+Q"));
  connect(mnuSalir, &QAction::triggered, this, &MenuPpal::Salir);
}

// The pair of the toolbar, which stands in the menu too.
void MenuPpal::ArmarConexion(QMainWindow* ventana) {
  auto* pareja = new QActionGroup(this);
  const auto agregar = [&](const char* clave, const char* texto, const char* corto, const char* icono,
                           const char* tecla) {
    auto* accion = new QAction(IconoDe(icono), texto, ventana);
    accion->setObjectName(QString::fromLatin1(clave));
    accion->setCheckable(true);
    accion->setIconText(corto);
    accion->setShortcut(QKeySequence(tecla));
    pareja->addAction(accion);
    botones_[clave] = accion;
    return accion;
  };
  QAction* conectar = agregar("Conected", "C&onectar el puerto", "Conectar", "conectar", "Ctrl+K");
  QAction* desconectar = agregar("Disconected", "Desconec&tar el puerto", "Desconectar", "desconectar", "Ctrl+Shift+K");
  conectar->setWhatsThis("Abre el puerto serie con los ajustes vigentes. Queda apretado mientras está abierto.");
  desconectar->setWhatsThis("Cierra el puerto serie y corta la llamada telefónica, si la hay.");
  connect(conectar, &QAction::triggered, this, &MenuPpal::Conectar);
  connect(desconectar, &QAction::triggered, this, &MenuPpal::Desconectar);
}

void MenuPpal::ArmarVer(QMainWindow* ventana) {
  QMenu* mnuVer = Menu(ventana->menuBar()->addMenu("&Ver"), "mnuVer");
  ver_ = mnuVer;
  QAction* barra = Entrada(mnuVer, "mnuViewStatusBar", "Barra de &Estado");
  barra->setCheckable(true);
  barra->setChecked(true);
  connect(barra, &QAction::toggled, this, &MenuPpal::BarraDeEstado);
  mnuVer->addSeparator();
  auto* grupo = new QActionGroup(this);
  for (std::size_t i = 0; i < kVistas.size(); ++i) {
    vistas_[i] = Entrada(mnuVer, kVistas[i].nombre, kVistas[i].texto);
    vistas_[i]->setCheckable(true);
    grupo->addAction(vistas_[i]);
    connect(vistas_[i], &QAction::triggered, this, [this, i] { emit VistaPedida(static_cast<Vista>(i)); });
  }
}

// "V" belongs to "&Ver".
void MenuPpal::ArmarVisita(QMainWindow* ventana) {
  QMenu* mnuVisita = Menu(ventana->menuBar()->addMenu("V&isita"), "mnuVisita");
  for (std::size_t i = 0; i < kVisita.size(); ++i) {
    QAction* accion = Entrada(mnuVisita, QString("mnuVisita(%1)").arg(i), kVisita[i].texto, IconoDe(kVisita[i].icono));
    accion->setShortcut(QKeySequence(kVisita[i].tecla));
    accion->setWhatsThis(kVisita[i].que_hace);
    connect(accion, &QAction::triggered, this, [this, i] { emit Visita(static_cast<int>(i)); });
  }
}

void MenuPpal::OfrecerApariencia(Apariencia& apariencia) {
  const auto opcion = [](QMenu* menu, QActionGroup* grupo, const QString& nombre, const QString& texto, bool elegida) {
    QAction* entrada = Entrada(menu, nombre, texto);
    entrada->setCheckable(true);
    entrada->setChecked(elegida);
    grupo->addAction(entrada);
    return entrada;
  };
  ver_->addSeparator();
  QMenu* mnuTema = Menu(ver_->addMenu("&Tema"), "mnuViewTheme");
  auto* temas = new QActionGroup(this);
  for (std::size_t i = 0; i < kTemas.size(); ++i) {
    const std::optional<Tema> tema = kTemas[i].tema;
    const QAction* entrada =
        opcion(mnuTema, temas, QString("mnuViewTheme(%1)").arg(i), kTemas[i].texto, apariencia.Elegido() == tema);
    connect(entrada, &QAction::triggered, this, [&apariencia, tema] { apariencia.Elegir(tema); });
  }
  QMenu* mnuTexto = Menu(ver_->addMenu("Ta&maño del texto"), "mnuViewTextSize");
  auto* tamanos = new QActionGroup(this);
  for (const int tamano : kTamanosTexto) {
    const QAction* entrada = opcion(mnuTexto, tamanos, QString("mnuViewTextSize(%1)").arg(tamano),
                                    QString("%1 %").arg(tamano), apariencia.TamanoTexto() == tamano);
    connect(entrada, &QAction::triggered, this, [&apariencia, tamano] { apariencia.FijarTamanoTexto(tamano); });
  }
}

void MenuPpal::ArmarAyuda(QMainWindow* ventana) {
  QMenu* mnuHelp = Menu(ventana->menuBar()->addMenu("A&yuda"), "mnuHelp");
  QAction* contenido = Entrada(mnuHelp, "mnuHelpContents", "&Contenido", IconoDe("ayuda"));
  QAction* buscar = Entrada(mnuHelp, "mnuHelpSearch", "&Buscar ayuda a cerca de...");
  QAction* que = Entrada(mnuHelp, "mnuHelpQue", "¿Qué es &esto ?", IconoDe("que-es-esto"));
  contenido->setShortcut(QKeySequence("F1"));
  que->setShortcut(QKeySequence("Shift+F1"));
  de_ayuda_ = {contenido, buscar};
  connect(contenido, &QAction::triggered, this, [this] { emit AyudaPedida(EntradaAyuda::kContenido); });
  connect(buscar, &QAction::triggered, this, [this] { emit AyudaPedida(EntradaAyuda::kBuscar); });
  connect(que, &QAction::triggered, this, &MenuPpal::QueEsEsto);
  QAction* teclado = Entrada(mnuHelp, "mnuHelpKeyboard", "&Teclado");
  teclado->setShortcut(QKeySequence("Ctrl+F1"));
  connect(teclado, &QAction::triggered, this, &MenuPpal::TecladoPedido);
  mnuHelp->addSeparator();
  connect(Entrada(mnuHelp, "mnuHelpAbout", "&Acerca de la aplicación"), &QAction::triggered, this, &MenuPpal::AcercaDe);
}

void MenuPpal::ArmarBarra(QMainWindow* ventana) {
  auto* barra = new QToolBar("Barra de herramientas", ventana);
  barra->setObjectName("BarraHerramientas");
  barra->setMovable(false);
  ventana->addToolBar(barra);
  // The pairs and the views press one button alone.
  auto* orden = new QActionGroup(this);
  auto* vistas = new QActionGroup(this);
  for (const char* clave : {"Conected", "Disconected"}) {
    barra->addAction(Boton(clave));
    auto* boton = qobject_cast<QToolButton*>(barra->widgetForAction(Boton(clave)));
    boton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    boton->setAccessibleName(Boton(clave)->text().remove('&'));
  }
  separador_ = barra->addSeparator();
  separador_->setObjectName("SeparadorConexion");
  Agregar(barra, "Open", "Abrir", "abrir", nullptr)->setEnabled(false);
  barra->addSeparator();
  connect(Agregar(barra, "Sort Ascending", "Orden ascendente", "orden-ascendente", orden), &QAction::triggered, this,
          [this] { emit OrdenPedido(true); });
  connect(Agregar(barra, "Sort Descending", "Orden descendente", "orden-descendente", orden), &QAction::triggered, this,
          [this] { emit OrdenPedido(false); });
  Boton("Sort Ascending")->setShortcut(QKeySequence("F8"));
  Boton("Sort Descending")->setShortcut(QKeySequence("Shift+F8"));
  barra->addSeparator();
  for (std::size_t i = 0; i < kVistas.size(); ++i) {
    connect(Agregar(barra, kVistas[i].clave, kVistas[i].ayuda, kVistas[i].icono, vistas), &QAction::triggered, this,
            [this, i] { emit VistaPedida(static_cast<Vista>(i)); });
  }
  barra->addSeparator();
  de_ayuda_.push_back(Agregar(barra, "Help", "Ayuda", "ayuda", nullptr));
  connect(de_ayuda_.back(), &QAction::triggered, this, [this] { emit AyudaPedida(EntradaAyuda::kContenido); });
  connect(Agregar(barra, "Help What's This", "¿Qué es esto?", "que-es-esto", nullptr), &QAction::triggered, this,
          &MenuPpal::QueEsEsto);
  NombrarBotonesDeQt(*barra);
}

QAction* MenuPpal::Agregar(QToolBar* barra, const char* clave, const char* texto, const char* icono,
                           QActionGroup* grupo) {
  QAction* boton = barra->addAction(IconoDe(icono), texto);
  boton->setObjectName(QString::fromLatin1(clave));
  boton->setCheckable(grupo != nullptr);
  if (grupo != nullptr) grupo->addAction(boton);
  botones_[clave] = boton;
  return boton;
}

// A colour of its own for each, so that the one that changes a unit isn't taken for the others. Both colours are given,
// and so it can be read in any scheme.
void MenuPpal::MostrarUnidad(ClaseDeUnidad clase) {
  static constexpr std::array<std::pair<const char*, Qt::GlobalColor>, 4> kColores{
      {{"#f2c14e", Qt::black}, {"#1d4f86", Qt::white}, {"#9b2c2c", Qt::white}, {"#4d5156", Qt::white}}};
  const auto& [fondo, letras] = kColores.at(static_cast<std::size_t>(clase));
  QPalette colores;
  colores.setColor(QPalette::Window, QColor(fondo));
  colores.setColor(QPalette::WindowText, letras);
  unidad_->setPalette(colores);
  unidad_->setText(Q(TextoDe(clase)));
  unidad_->setToolTip(Q(DetalleDe(clase)));
  unidad_->setWhatsThis(Q(DetalleDe(clase)));
  // A menu bar looks at the size of its corner when it is put there.
  if (auto* barra = qobject_cast<QMenuBar*>(unidad_->parentWidget())) barra->setCornerWidget(unidad_);
}

void MenuPpal::HabilitarAyuda(bool hay) {
  for (QAction* accion : de_ayuda_) accion->setEnabled(hay);
}

void MenuPpal::FijarVista(Vista vista) {
  const auto cual = static_cast<std::size_t>(vista);
  vistas_[cual]->setChecked(true);
  Boton(kVistas[cual].clave)->setChecked(true);
}

void MenuPpal::FijarOrden(bool ascendente) {
  Boton(ascendente ? "Sort Ascending" : "Sort Descending")->setChecked(true);
}

void MenuPpal::FijarConexion(bool conectado) {
  Boton(conectado ? "Conected" : "Disconected")->setChecked(true);
}

void MenuPpal::MostrarConexion(bool visible) {
  Boton("Conected")->setVisible(visible);
  Boton("Disconected")->setVisible(visible);
  separador_->setVisible(visible);
}

}  // namespace utr
