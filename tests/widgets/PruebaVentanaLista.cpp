#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeView>

#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"
#include "widgets/Campos.h"
#include "widgets/TextoQt.h"
#include "widgets/VentanaLista.h"
#include "widgets/VistaLista.h"
#include "widgets/frmTeclado.h"

namespace utr {
namespace {

using testing::ElementsAre;

// A window that edits: Aceptar and Cancelar below, Enter on a row edits, its own order of one column.
class Editor : public VentanaLista {
 public:
  explicit Editor(ModRTU& mod)
      : VentanaLista(mod.Listas(), {},
                     {.titulo = "Horarios", .palabras = {.modulo = "frmHorarios", .titulo_ventana = "Horarios"}},
                     {{"Horario", "Horario"}, {"Tipo", "Tipo"}}, nullptr) {
    ComandoVentana descendente = ComandoOrdenar(false);
    descendente.hacer = [this] { Lista().RepetirOrden(); };
    Comandos({{.nombre = "mnuAgenda", .texto = "&Agenda"},
              {.nombre = "mnuNuevo", .texto = "&Nuevo", .dentro_de = "mnuAgenda"},
              {.nombre = "mnuVer", .texto = "&Ver"}},
             {{.nombre = "mnuUno",
               .texto = "&Horario",
               .menu = "mnuNuevo",
               .clave = "New",
               .ayuda = "Nuevo horario",
               .hacer = [this] { hechos.emplace_back("nuevo"); }},
              {.nombre = "mnuBorrar",
               .texto = "&Borrar",
               .si = [this] { return !Lista().FilasElegidas().empty(); },
               .hacer = [this] { hechos.emplace_back("borrar"); }},
              {.nombre = "mnuPermiso",
               .texto = "&Permiso",
               .menu = "mnuVer",
               .si = [this] { return permiso; },
               .hacer = [this] { hechos.emplace_back("permiso"); }},
              ComandoImprimir("mnuImprimir"),
              descendente},
             {"New", nullptr, "Print", "Sort Descending"});
    Armar(nullptr,
          {.aceptar = Boton("cmd(0)", "Aceptar"), .cancelar = Boton("cmd(1)", "Cancelar"), .por_defecto = false},
          QSize(500, 300), Debajo());
    Lista().Mostrar(TablaDeTextos({"Horario", "Tipo"}, {{"01:00", "a"}, {"02:00", "b"}, {"03:00", "b"}}));
    show();
  }

  using VentanaLista::Accion;
  using VentanaLista::AlTrabajar;
  using VentanaLista::Habilitar;
  using VentanaLista::Lista;
  using VentanaLista::Titular;

  std::vector<std::string> hechos;
  bool permiso = false;

 protected:
  static QWidget* Debajo() {
    auto* parte = new QWidget;
    Boton("Debajo", "Plegar", parte);
    return parte;
  }

  EncabezadoLista Encabezado(bool) const override { return {"Horarios", {}}; }
  void Activar() override { hechos.emplace_back("editar"); }
};

class PruebaVentanaLista : public testing::Test {
 protected:
  std::vector<std::string> Entradas(const char* menu) const {
    std::vector<std::string> textos;
    for (const QAction* accion : ventana.findChild<QMenu*>(menu)->actions()) {
      textos.push_back(accion->isSeparator() ? "-" : U(accion->text()));
    }
    return textos;
  }

  prueba::ModPrueba banco;
  Editor ventana{banco.mod};
};

TEST_F(PruebaVentanaLista, MenusYBarraSonLosQueLaVentanaDice) {
  EXPECT_THAT(Entradas("mnuAgenda"), ElementsAre("&Nuevo", "&Borrar", "&Imprimir"));
  EXPECT_THAT(Entradas("mnuNuevo"), ElementsAre("&Horario"));
  EXPECT_THAT(Entradas("mnuVer"), ElementsAre("&Permiso"));
  EXPECT_EQ(ventana.findChild<QMenuBar*>()->actions().size(), 2);
  std::vector<std::string> botones;
  const auto* barra = ventana.findChild<QToolBar*>("BarraHerramientas");
  for (QAction* accion : barra->actions()) {
    const QWidget* boton = barra->widgetForAction(accion);
    botones.push_back(accion->isSeparator() ? "-" : U(boton->objectName() + ":" + boton->accessibleName()));
  }
  EXPECT_THAT(botones,
              ElementsAre("New:Nuevo horario", "-", "Print:Imprimir la lista", "Sort Descending:Orden descendente"));
  ventana.findChild<QAbstractButton*>("New")->click();
  ventana.Accion("mnuUno")->trigger();
  EXPECT_THAT(ventana.hechos, ElementsAre("nuevo", "nuevo"));
}

TEST_F(PruebaVentanaLista, LosComandosSiguenALaListaLaSeleccionYLaVentana) {
  const auto estado = [this] {
    return std::vector{ventana.Accion("Print")->isEnabled(), ventana.Accion("mnuBorrar")->isEnabled(),
                       ventana.Accion("mnuPermiso")->isEnabled()};
  };
  EXPECT_THAT(estado(), ElementsAre(true, false, false));
  ventana.Lista().Elegir(1);
  EXPECT_THAT(estado(), ElementsAre(true, true, false));
  ventana.permiso = true;
  ventana.Habilitar();
  EXPECT_THAT(estado(), ElementsAre(true, true, true));
  {
    const Ocupacion ocupacion(ventana, ventana.AlTrabajar());
    ventana.Lista().CampoFiltro()->setText("b");  // nothing that changes meanwhile gives a command its use back
    EXPECT_THAT(estado(), ElementsAre(false, false, false));
    ventana.Accion("New")->setEnabled(true);
    ventana.Accion("New")->trigger();
    EXPECT_THAT(ventana.hechos, ElementsAre());
    EXPECT_FALSE(ventana.findChild<QPushButton*>("Debajo")->isEnabled());
  }
  EXPECT_THAT(estado(), ElementsAre(true, true, true));
  EXPECT_EQ(U(ventana.findChild<QLabel*>("lblFiltradas")->text()), "A la vista: 2") << "there is no export to tell of";
  ventana.Lista().Vaciar();
  EXPECT_THAT(estado(), ElementsAre(false, false, true));
}

TEST_F(PruebaVentanaLista, LaPaginaDelTecladoDiceQueComandosNoRigenAhora) {
  const auto imprimir = [this] {
    const QList<Atajo> atajos = AtajosDe(ventana);
    const auto uno = std::find_if(atajos.begin(), atajos.end(), [](const Atajo& a) { return a.que == "Imprimir"; });
    return uno != atajos.end() && uno->rige;
  };
  EXPECT_TRUE(imprimir());
  ventana.Lista().Vaciar();
  EXPECT_FALSE(imprimir());
}

TEST_F(PruebaVentanaLista, LaPaginaDelTecladoDiceLasTeclasDeLoQueHayEnLaVentana) {
  const auto donde = [this](const char* que) {
    const QList<Atajo> atajos = AtajosDe(ventana);
    const auto uno = std::find_if(atajos.begin(), atajos.end(), [&](const Atajo& a) { return U(a.que) == que; });
    return uno == atajos.end() ? std::string("nada") : U(uno->donde) + ": " + U(uno->tecla);
  };
  constexpr const char* kHojas = "Pasar a la hoja siguiente, a la anterior";
  EXPECT_EQ(donde("Elegir más renglones"), "Listas: Mayús+flechas, Ctrl+Espacio");
  EXPECT_EQ(donde(kHojas), "nada");
  EXPECT_EQ(donde("Acercar"), "nada");
  QDialog otra(&ventana);
  new QTabWidget(&otra);
  EXPECT_EQ(donde(kHojas), "nada") << "of a window that belongs to it";
  new QTabWidget(&ventana);
  EXPECT_EQ(donde(kHojas), "Hojas: Ctrl+Tab, Ctrl+Mayús+Tab");
  QWidget* dibujo = ventana.findChild<QPushButton*>("Debajo");
  dibujo->setAccessibleName("Plano");
  DecirTeclas(*dibujo, {{"Correr", "Re Pág"}, {"Acercar", "+"}});
  EXPECT_EQ(donde("Acercar"), "Plano: +");
}

TEST_F(PruebaVentanaLista, UnClicQueEsperoTrasImprimirNoImprimeOtraVez) {
  banco.mod.eleccion_impresora = {"Oficina", 1};
  auto* boton = ventana.findChild<QWidget*>("Print");
  for (int veces = 0; veces < 2; ++veces) EncolarClic(boton);
  QCoreApplication::processEvents();
  EXPECT_EQ(banco.impresora.trabajos.size(), 1u);
}

TEST_F(PruebaVentanaLista, EnterEditaLaFilaYNingunBotonEsElPredeterminado) {
  for (const QPushButton* boton : ventana.findChildren<QPushButton*>()) EXPECT_FALSE(boton->isDefault());
  ventana.Lista().Elegir(0);
  QTest::keyClick(ventana.Lista().Arbol(), Qt::Key_Return);
  EXPECT_THAT(ventana.hechos, ElementsAre("editar"));
  ventana.Lista().Ordenar(0, true);
  ventana.Accion("Sort Descending")->trigger();
  EXPECT_EQ(ventana.Lista().Lista().Texto(0, 0), "03:00") << "the window's own order";
  EXPECT_EQ(ventana.focusWidget(), ventana.Lista().Arbol());
  const char* const tab[] = {"Lista", "Debajo", "cmd(0)", "cmd(1)"};
  const QWidget* paso = ventana.Lista().Arbol();
  for (const char* nombre : tab) {
    EXPECT_EQ(U(paso->objectName()), nombre);
    do {
      paso = paso->nextInFocusChain();
    } while ((paso->focusPolicy() & Qt::TabFocus) == 0 || paso->focusProxy() != nullptr);
  }
  ventana.findChild<QPushButton*>("cmd(1)")->click();
  EXPECT_FALSE(ventana.isVisible());
}

TEST_F(PruebaVentanaLista, OtroTituloEsTambienElDeLosMensajes) {
  ventana.Titular("Feriados");
  EXPECT_EQ(U(ventana.windowTitle()), "Feriados");
  banco.mod.eleccion_impresora.nombre = "Oficina";
  banco.impresora.falla = true;
  banco.operador.Espera(Mensaje{"La operación solicitada no puede completarse\n[ Error de impresora ]", "Feriados",
                                Icono::kInformacion, Botones::kAceptar});
  ventana.Accion("Print")->trigger();
}

}  // namespace
}  // namespace utr
