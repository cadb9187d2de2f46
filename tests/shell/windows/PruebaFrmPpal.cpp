#include <gmock/gmock.h>

#include <QAccessible>
#include <QAccessibleInterface>
#include <QCoreApplication>
#include <QImage>
#include <QKeyEvent>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <set>

#include "ConPpal.h"
#include "base/Progreso.h"
#include "session/RelojUTR.h"
#include "shell/windows/ListaAcciones.h"
#include "widgets/Tamanos.h"
#include "widgets/Temas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kReconectar = "El puerto COM se ha desconectado.\n¿Desea reconectar el mismo?";

class Ppal : public ConPpal {};

TEST_F(Ppal, LaCargaSigueSuOrden) {
  Cargar();
  EXPECT_THAT(Ordenes(), ElementsAre("ModoConexion(si)", "PorIP(no)", "Conectar(9600,n,8,1,1)", "IdEquipo(0)",
                                     "ConfiguracionAlmacenada(si)", "LeerFechaHora()"));
  EXPECT_TRUE(ventana->Lectura().ConfiguracionLeida());
  EXPECT_EQ(ventana->Lectura().RecConfig()->RecordCount(), 2U);
  EXPECT_TRUE(Conectado());
  EXPECT_EQ(Panel("PUERTO"), " COM 1 ");
  EXPECT_EQ(Panel("Velocidad"), " Vel: 9600 bps ");
  EXPECT_EQ(Titulo(), "Administración y configuración - KV7340");
  EXPECT_EQ(mod.archivo_ayuda, carpeta.Ruta() / "Ayuda" / "AdminUTR.hlp");
  EXPECT_TRUE(Accion("View Details").isChecked());
  EXPECT_TRUE(Accion("mnuViewDetails").isChecked());
  EXPECT_TRUE(Accion("Sort Ascending").isChecked());
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(Ppal, LaListaArrancaOrdenadaConSuPrimeraAccionElegida) {
  Cargar(false);
  auto& lista = Hallar<ListaAcciones>(*ventana, "Lista");
  EXPECT_EQ(lista.Textos(), QStringList({"Agenda", "Contraseña", "Datos", "Eventos", "Leer Configuracion",
                                         "Parametrizar", "Puerto", "Puesta en marcha UTR", "Salidas Digitales"}));
  auto* arbol = lista.findChild<QTreeView*>();
  ASSERT_EQ(arbol->selectionModel()->selectedIndexes().size(), 1);
  EXPECT_EQ(arbol->selectionModel()->selectedIndexes().front().data().toString(), "Agenda");
  arbol->clearSelection();
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QCoreApplication::sendEvent(arbol, &enter);  // runs nothing
  Ejecutar("Sort Descending");
  EXPECT_EQ(lista.Textos().front(), "Salidas Digitales");
  EXPECT_EQ(lista.Indice(0), 8) << "the tag goes with its row";
  Ejecutar("mnuViewList");
  EXPECT_TRUE(Accion("View List").isChecked());
  EXPECT_FALSE(Accion("View Details").isChecked());
  EXPECT_FALSE(Accion("mnuViewDetails").isChecked());
}

TEST_F(Ppal, CadaAccionTieneSuAtajoEnElMenuYNingunoSeRepite) {
  Cargar(false);
  std::set<QString> atajos;
  const auto tomar = [&](const QString& nombre) {
    const QAction& accion = Accion(qPrintable(nombre));
    EXPECT_FALSE(accion.shortcut().isEmpty()) << nombre.toStdString();
    EXPECT_TRUE(atajos.insert(accion.shortcut().toString()).second) << nombre.toStdString();
    EXPECT_FALSE(accion.associatedObjects().isEmpty());
  };
  for (int i = 0; i < 9; ++i) tomar(QString("mnuAcciones(%1)").arg(i));
  for (int i = 0; i < 7; ++i) tomar(QString("mnuAccAvanzadas(%1)").arg(i));
  for (const char* nombre : {"Conected", "Disconected", "mnuSalir", "mnuHelpContents", "mnuHelpQue"}) tomar(nombre);
  EXPECT_EQ(Accion("mnuHelpContents").shortcut().toString(), "F1");
}

TEST_F(Ppal, LaAyudaEstaApagadaMientrasNoHayNinguna) {
  constexpr const char* kDeAyuda[] = {"mnuHelpContents", "mnuHelpSearch", "Help"};
  Cargar(false);
  for (const char* nombre : kDeAyuda) EXPECT_FALSE(Accion(nombre).isEnabled()) << nombre;
  ventana.reset();
  std::filesystem::create_directories(carpeta / "Ayuda");
  prueba::EscribirTodo(carpeta / "Ayuda" / "AdminUTR.hlp", "?");
  Cargar(false);
  for (const char* nombre : kDeAyuda) EXPECT_TRUE(Accion(nombre).isEnabled()) << nombre;
}

TEST_F(Ppal, LaFranjaSigueALaLecturaYAlEnlace) {
  RelojUTR reloj_utr;
  mod.reloj_utr = &reloj_utr;
  reloj_utr.Leer({.equipo = {2026, 3, 15, 10, 5, 0}, .computadora = {2026, 3, 15, 10, 0, 0}});
  Cargar(false);
  EXPECT_EQ(Panel("lblEstacion"), "Sin configuración");
  EXPECT_EQ(Panel("lblRelojUTR"), "5 min adelantado");
  ventanas.Espera("frmPresentacion", [](QDialog& d) { Pulsar(d, "AceptarLecturaCFG"); });
  EsperarLista([this](QDialog&) { EXPECT_THAT(Panel("lblEstacion"), testing::StartsWith("Sin identificador")); });
  Elegir(4);
  EXPECT_EQ(Panel("lblEstacionDetalle"), "De la UTR, leída el 15/03/2026 10:00:00");
  EXPECT_EQ(Panel("lblEnlace"), "Conectado");
  EXPECT_EQ(Panel("lblEnlaceDetalle"), "COM 1, Vel: 9600 bps");
  comunicador.Devuelve("EstadoPuerto", false);
  Ejecutar("Disconected");
  EXPECT_EQ(Panel("lblEnlace"), "Desconectado");
  EXPECT_EQ(Panel("PUERTO"), " Desconectado ");
}

// What a screen reader meets below an object.
void Recorrer(QAccessibleInterface* objeto, const std::function<void(QAccessibleInterface&)>& mirar) {
  if (objeto == nullptr) return;
  mirar(*objeto);
  for (int i = 0; i < objeto->childCount(); ++i) Recorrer(objeto->child(i), mirar);
}

TEST_F(Ppal, UnLectorDePantallaHallaCadaAccionUnaVezYTodoBotonConNombre) {
  Cargar();
  for (const char* vista : {"mnuViewDetails", "mnuViewLargeIcons", "mnuViewList"}) {
    Ejecutar(vista);
    QCoreApplication::processEvents();  // a tree lays out its rows when it is idle
    std::map<QString, int> filas;
    int listas = 0;
    Recorrer(QAccessible::queryAccessibleInterface(ventana.get()), [&](QAccessibleInterface& objeto) {
      const QString nombre = objeto.text(QAccessible::Name);
      const auto papel = objeto.role();
      const bool boton =
          papel == QAccessible::PushButton || papel == QAccessible::CheckBox || papel == QAccessible::ButtonMenu;
      EXPECT_FALSE(boton && nombre.isEmpty());
      if (papel == QAccessible::List || papel == QAccessible::Tree) ++listas;
      if (papel == QAccessible::ListItem || papel == QAccessible::Cell || papel == QAccessible::TreeItem) {
        ++filas[nombre];
        EXPECT_FALSE(objeto.state().disabled) << nombre.toStdString();
      }
    });
    EXPECT_EQ(listas, 1) << vista;
    EXPECT_EQ(filas.size(), 9U) << vista;
    EXPECT_EQ(filas["Datos"], 1) << vista;
  }
}

TEST_F(Ppal, CancelarAlEntrarReabreElPuertoYSigue) {
  Cargar(false);
  EXPECT_THAT(Ordenes(), ElementsAre("ModoConexion(si)", "Cancelar(no)", "Conectar(9600,n,8,1,1)"));
  EXPECT_EQ(ventana->Lectura().RecConfig(), nullptr);
  EXPECT_FALSE(ventana->Lectura().ConfiguracionLeida());
}

TEST_F(Ppal, UnaFallaAlEntrarSeDiceYLaVentanaQueda) {
  comunicador.Falla("Conectar", Error(8005, "MSComm", "El puerto ya está abierto"));
  comunicador.Devuelve("EstadoPuerto", false);
  operador.Espera(Mensaje{"La operación solicitada no puede ser completada\n[El puerto ya está abierto]",
                          "Administración y configuración - KV7340", Icono::kCritico, Botones::kAceptar});
  Cargar();
  EXPECT_NE(Errores().find("\"frmPPal\",\"Cargando Configuracion\""), std::string::npos);
  EXPECT_NE(Errores().find("\"frmPpal\",\"LeerConfiguracion\""), std::string::npos);
  EXPECT_EQ(Panel("PUERTO"), " Desconectado ");
  EXPECT_FALSE(Hallar<QLabel>(*ventana, "PUERTO").isEnabled());
  EXPECT_TRUE(ventana->isVisible());
}

TEST_F(Ppal, ElPanelSigueAUnEnlaceQueSeMueveOSePierde) {
  Cargar();
  // The port that is tried first is taken; the driver then has none open.
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (llamada.starts_with("Conectar")) comunicador.Devuelve("EstadoPuerto", false);
  };
  comunicador.Falla("Conectar", Error(8005, "MSComm", "tomado"));
  for (const char* boton : {"AceptarLecturaCFG", "CancelarLecturaCFG"}) {
    comunicador.Devuelve("EstadoPuerto", true);
    conexion.MarcarConectado(true);
    ASSERT_EQ(Panel("PUERTO").substr(0, 5), " COM ");
    ventanas.Espera("frmPresentacion", [boton](QDialog& d) { Pulsar(d, boton); });
    operador.Espera("La operación solicitada no puede ser completada\n[tomado]");
    Elegir(4);
    EXPECT_EQ(Panel("PUERTO"), " Desconectado ") << boton;
    EXPECT_FALSE(Conectado()) << boton;
  }
}

TEST_F(Ppal, UnaEstacionPorIPLoEsDesdeElPrincipio) {
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{3000}}, Propiedad{std::int64_t{1}});
  propiedades.Escribir(clave::kVelocidad, Propiedad{std::string("10.0.0.5")}, Propiedad{std::string()});
  comunicador.Devuelve("EstadoPuerto", false);
  Cargar(false);
  EXPECT_EQ(Panel("PUERTO"), "Puerto: 3000 ");
  EXPECT_EQ(Panel("Velocidad"), " IP: 10.0.0.5 ");
  EXPECT_FALSE(Accion("Conected").isVisible());
}

TEST_F(Ppal, UnManejadorRotoNoImpideEntrar) {
  for (const char* operacion : {"ModoConexion", "EstadoPuerto", "Cancelar", "Conectar"}) {
    comunicador.Falla(operacion, Error(1, "driver", "roto"));
  }
  operador.Espera("La operación solicitada no puede ser completada\n[roto]");
  operador.Espera("La operación solicitada no puede ser completada\n[roto]");
  Cargar(false);
  EXPECT_TRUE(ventana->isVisible());
  EXPECT_EQ(Hallar<ListaAcciones>(*ventana, "Lista").Textos().size(), 9);
}

TEST_F(Ppal, ElIdentificadorVaAlTitulo) {
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{321}}, Propiedad{std::int64_t{0}});
  Cargar();
  EXPECT_EQ(Titulo(), "Administración y configuración - KV7340 : Identificador: 321");
}

TEST_F(Ppal, PorIPNoHayBotonesDeConexion) {
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{3000}}, Propiedad{std::int64_t{1}});
  propiedades.Escribir(clave::kVelocidad, Propiedad{std::string("10.0.0.5")}, Propiedad{std::string()});
  Cargar();
  EXPECT_THAT(comunicador.De("PuertoIP"), ElementsAre("PuertoIP(3000)"));
  EXPECT_THAT(comunicador.De("DireccionIP"), ElementsAre("DireccionIP(10.0.0.5)"));
  EXPECT_THAT(comunicador.De("PorIP"), ElementsAre("PorIP(si)"));
  EXPECT_EQ(comunicador.Cuantas("Conectar"), 0U);
  for (const char* boton : {"Conected", "Disconected", "SeparadorConexion"}) EXPECT_FALSE(Accion(boton).isVisible());
  EXPECT_EQ(Panel("PUERTO"), "Puerto: 3000 ");
  EXPECT_EQ(Panel("Velocidad"), " IP: 10.0.0.5 ");
}

TEST_F(Ppal, LosBotonesDeConexion) {
  CargarYOlvidar();
  conexion.Llamar("1", "");
  comunicador.llamadas.clear();
  comunicador.Devuelve("EstadoPuerto", false);
  Ejecutar("Disconected");
  EXPECT_FALSE(Conectado());
  EXPECT_FALSE(conexion.EnLlamada());
  EXPECT_EQ(Panel("PUERTO"), " Desconectado ");
  comunicador.Devuelve("EstadoPuerto", true);
  Ejecutar("Conected");
  EXPECT_TRUE(Conectado());
  EXPECT_EQ(Panel("PUERTO"), " COM 1 ");
  EXPECT_THAT(Ordenes(), ElementsAre("Desconectar()", "Conectar(9600,n,8,1,1)"));
}

TEST_F(Ppal, UnPuertoQueNoAbreDejaDesconectado) {
  const struct {
    std::int32_t numero;
    Mensaje mensaje;
  } casos[] = {{8005,
                {"El puerto requerido se encuentra en uso", "Administración y configuración - KV7340",
                 Icono::kInformacion, Botones::kAceptar}},
               {8002,
                {"Error en el puerto de comunicación", "Administración y configuración - KV7340", Icono::kCritico,
                 Botones::kAceptar}}};
  Cargar();
  for (const auto& caso : casos) {
    comunicador.Falla("Conectar", Error(caso.numero, "MSComm", "x"));
    comunicador.llamadas.clear();
    operador.Espera(caso.mensaje);
    Ejecutar("Conected");
    EXPECT_FALSE(Conectado());
    EXPECT_EQ(comunicador.Cuantas("Desconectar"), 1U);
  }
}

TEST_F(Ppal, TrasPerderElPuertoCadaAccionPregunta) {
  Cargar();
  Ejecutar("Disconected");
  operador.Espera(Mensaje{kReconectar, "Administración y configuración - KV7340", Icono::kPregunta, Botones::kSiNo},
                  Respuesta::kNo);
  Elegir(5);
  operador.Espera(kReconectar, Respuesta::kCerrado);
  Elegir(5);
  EXPECT_FALSE(Conectado());
  comunicador.Falla("Conectar", Error(8005, "x", "y"));
  operador.Espera(kReconectar, Respuesta::kSi);
  ventanas.Espera("frmConfirmPass", [](QDialog& d) { Pulsar(d, "CmdCancel"); });
  Elegir(5);
  EXPECT_TRUE(Conectado()) << "errors of that connection are ignored";
}

TEST_F(Ppal, PuertoEIPNoPreguntanPorLaConexion) {
  Cargar();
  Ejecutar("Disconected");
  ventanas.Espera("frmPuerto", [](QDialog& d) { Pulsar(d, "CmdCancel"); });
  Elegir(7);
  conexion.FijarPorIP(true);
  ventanas.Espera("frmConfirmPass", [](QDialog& d) { Pulsar(d, "CmdCancel"); });
  Elegir(5);
}

TEST_F(Ppal, EnterYDobleClicEjecutanLaFila) {
  Cargar();
  auto& lista = Hallar<ListaAcciones>(*ventana, "Lista");
  auto* vista = lista.findChild<QTreeView*>();
  ASSERT_NE(vista, nullptr);
  Ejecutar("Sort Descending");
  lista.Elegir(static_cast<int>(lista.Textos().indexOf("Contraseña")));
  for (const int tecla : {Qt::Key_Return, Qt::Key_Enter}) {
    ventanas.Espera("frmConfirmPass", [](QDialog& d) { Pulsar(d, "CmdCancel"); });
    QKeyEvent evento(QEvent::KeyPress, tecla, Qt::NoModifier, "\r");
    QCoreApplication::sendEvent(vista, &evento);
  }
  ventanas.Espera("frmConfirmPass", [](QDialog& d) { Pulsar(d, "CmdCancel"); });
  emit vista->doubleClicked(vista->currentIndex());
}

TEST_F(Ppal, DuranteUnaOperacionNoSeEntraNiSeCierra) {
  CargarYOlvidar();
  Hallar<ListaAcciones>(*ventana, "Lista").Elegir(4);
  int intentos = 0;
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (!llamada.starts_with("ConfiguracionAlmacenada")) return;
    ++intentos;
    Elegir(4);
    Ejecutar("mnuAccAvanzadas(5)");
    Ejecutar("Disconected");
    EXPECT_TRUE(Conectado()) << "the button stays with what it tells";
    EXPECT_FALSE(ventana->close());
    // And what an impatient operator types while the program is blocked.
    QCoreApplication::postEvent(Hallar<ListaAcciones>(*ventana, "Lista").findChild<QTreeView*>(),
                                new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r"));
  };
  ventanas.Espera("frmPresentacion", [](QDialog& d) { Pulsar(d, "AceptarLecturaCFG"); });
  EsperarLista();
  Elegir(4);
  QCoreApplication::processEvents();
  EXPECT_EQ(intentos, 1);
  EXPECT_EQ(comunicador.Cuantas("Desconectar"), 0U);
  EXPECT_EQ(comunicador.Cuantas("ConfiguracionAlmacenada"), 1U);
  EXPECT_TRUE(ventana->isVisible());
}

TEST_F(Ppal, AlCerrarSeGuardaYSeDesconecta) {
  CargarYOlvidar();
  const TablaPtr tabla = ventana->Lectura().RecConfig();
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{2}}, Propiedad{std::int64_t{1}});
  comunicador.Falla("Desconectar", Error(1, "x", "y"));
  EXPECT_TRUE(ventana->close());
  EXPECT_FALSE(tabla->Abierta());
  EXPECT_THAT(Ordenes(), ElementsAre("Desconectar()"));
  Propiedades guardadas(propiedades.Archivo());
  guardadas.CargarPropiedades();
  EXPECT_EQ(guardadas.LeerEntero(clave::kPuerto, 1), 2);
}

TEST_F(Ppal, ElPanel1DiceComoVaUnTrabajo) {
  Cargar();
  auto& barra = dynamic_cast<Progreso&>(Hallar<QStatusBar>(*ventana, "BarraEstado"));
  barra.Texto("Leyendo");
  EXPECT_EQ(Panel("Panel1"), "Leyendo");
  barra.Rango(300);
  barra.Posicion(100);
  EXPECT_EQ(Panel("Panel1"), "Leyendo 33 %");
  barra.Posicion(900);
  EXPECT_EQ(Panel("Panel1"), "Leyendo 100 %") << "never more than the whole";
  barra.Descartado("Página 7", "sin respuesta");
  EXPECT_EQ(Panel("Panel1"), "Página 7: sin respuesta 100 %");
  barra.Texto("");
  EXPECT_EQ(Panel("Panel1"), "");
}

TEST_F(Ppal, LaBarraDeEstadoSeMuestraYSeOculta) {
  Cargar();
  Ejecutar("mnuViewStatusBar");
  EXPECT_TRUE(ventana->statusBar()->isHidden());
  Ejecutar("mnuViewStatusBar");
  EXPECT_FALSE(ventana->statusBar()->isHidden());
}

TEST_F(Ppal, LaLlamadaQueSePerdioNoFiguraMas) {
  Cargar();
  SituacionDelEnlace situacion;
  ventana->Seguir(situacion);
  comunicador.Devuelve("LlamarTelefono", true);
  conexion.Llamar("4800", "");
  EXPECT_EQ(Panel("lblEnlace"), "En llamada");
  situacion.PonerFinDeLlamada();
  EXPECT_EQ(Panel("lblEnlace"), "Conectado");
  EXPECT_FALSE(conexion.EnLlamada()) << "what is read next has the port opened again";
  situacion.PonerAviso("No queda número de puerto para /dev/ttyUSB9");
  EXPECT_EQ(Panel("Panel1"), "No queda número de puerto para /dev/ttyUSB9");
  ventana.reset();  // it looks at the situation to its end
}

// A program that runs, in which "Tamaño del texto" is chosen.
TEST_F(Ppal, ConLetrasMayoresLaBarraSeVeEntera) {
  Cargar();
  const QFont comun = QApplication::font();
  auto& barra = Hallar<QToolBar>(*ventana, "BarraHerramientas");
  auto& resto = Hallar<QToolButton>(barra, "qt_toolbar_ext_button");
  ventana->resize(barra.sizeHint().width(), ventana->height());
  for (const int porciento : {100, 150, 200}) {
    QFont letra = comun;
    letra.setPointSizeF(letra.pointSizeF() * porciento / 100);
    QApplication::setFont(letra);
    AplicarTema(Tema::kClaro);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const bool cabe = barra.sizeHint().width() <= SitioEnPantalla(*ventana).width();
    EXPECT_EQ(resto.isVisible(), !cabe) << porciento;
    EXPECT_LE(ventana->width(), SitioEnPantalla(*ventana).width());
  }
  QApplication::setFont(comun);
}

TEST_F(Ppal, PorIPDiceSiLaUnidadContesta) {
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{3000}}, Propiedad{std::int64_t{1}});
  propiedades.Escribir(clave::kVelocidad, Propiedad{std::string("10.0.0.5")}, Propiedad{std::string()});
  Cargar();
  SituacionDelEnlace situacion;
  ventana->Seguir(situacion);
  std::vector<QImage> puntos;
  const std::pair<std::optional<bool>, const char*> casos[] = {
      {true, "Por IP, conectado"}, {false, "Por IP, sin conexión"}, {{}, "Por IP, sin probar"}};
  for (const auto& [contesta, texto] : casos) {
    situacion.PonerRespuesta(contesta);
    EXPECT_EQ(Panel("lblEnlace"), texto);
    EXPECT_EQ(Panel("PUERTO"), "Puerto: 3000 ");
    EXPECT_TRUE(Hallar<QLabel>(*ventana, "PUERTO").isEnabled());
    const QImage punto = Hallar<QLabel>(*ventana, "PUERTO").grab().toImage();
    for (const QImage& otro : puntos) EXPECT_NE(punto, otro) << texto;
    puntos.push_back(punto);
  }
  situacion.PonerRespuesta(true);
  situacion.PonerConexion(ClaseDeUnidad::kDesconocida);
  EXPECT_EQ(Panel("lblEnlace"), "Por IP, sin probar");
  ventana.reset();  // it looks at the situation to its end
}

// Of what is really drawn, inside the edges.
double MayorContraste(QWidget& pieza, const QColor& fondo) {
  const QImage imagen = pieza.grab().toImage();
  double mayor = 0;
  for (int y = 4; y < imagen.height() - 4; ++y) {
    for (int x = 10; x < imagen.width() - 10; ++x) mayor = std::max(mayor, Contraste(imagen.pixelColor(x, y), fondo));
  }
  return mayor;
}

TEST_F(Ppal, DiceSiempreQuienEstaAlOtroExtremo) {
  Cargar();
  SituacionDelEnlace situacion;
  ventana->Seguir(situacion);
  EXPECT_EQ(Panel("Unidad"), "Estación simulada");
  std::set<QString> colores;
  const std::pair<ClaseDeUnidad, const char*> casos[] = {{ClaseDeUnidad::kSimulada, "Estación simulada"},
                                                         {ClaseDeUnidad::kDesconocida, "Unidad sin identificar"},
                                                         {ClaseDeUnidad::kDePractica, "Estación de práctica"},
                                                         {ClaseDeUnidad::kReal, "Unidad real"}};
  for (const auto& [clase, texto] : casos) {
    situacion.PonerClase(clase);
    EXPECT_EQ(Panel("Unidad"), texto);
    auto& panel = Hallar<QLabel>(*ventana, "Unidad");
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(Hallar<QWidget>(*ventana, "FranjaEstacion").accessibleName().startsWith(QString::fromUtf8(texto)));
    EXPECT_FALSE(panel.toolTip().isEmpty());
    colores.insert(panel.palette().color(QPalette::Window).name());
    EXPECT_GE(MayorContraste(panel, panel.palette().color(QPalette::Window)), 7) << texto;
  }
  EXPECT_EQ(colores.size(), 4U) << "a colour of its own for each";
  situacion.PonerCuenta({.enviados = 10, .recibidos = 20, .reintentos = 1});
  EXPECT_EQ(Panel("Trafico"), "30 bytes, 1 reintento");
  situacion.PonerCuenta({.enviados = 10, .recibidos = 20, .reintentos = 0, .paginas = 12});
  EXPECT_EQ(Panel("Trafico"), "30 bytes, 12 páginas, 0 reintentos");
  Ejecutar("mnuViewStatusBar");
  EXPECT_TRUE(Hallar<QLabel>(*ventana, "Unidad").isVisible()) << "without the status bar too";
  situacion.PonerClase(ClaseDeUnidad::kSimulada);
  EXPECT_EQ(Panel("Trafico"), "");
  EXPECT_EQ(Panel("PUERTO"), " COM 1 ");
  comunicador.Devuelve("EstadoPuerto", false);
  situacion.PonerPuerto(false);
  EXPECT_EQ(Panel("PUERTO"), " Desconectado ") << "a port that was lost in the middle of something";
  EXPECT_FALSE(Conectado());
  ventana.reset();  // it looks at the situation to its end
}

}  // namespace
}  // namespace utr
