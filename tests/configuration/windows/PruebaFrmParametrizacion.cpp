#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include "BancoCanales.h"
#include "configuration/windows/PanelCambios.h"
#include "configuration/windows/frmParamCfg.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kConfiguracion = "Configuración de los canales";
constexpr const char* kParametrizaciones = "Parametrizaciones de los canales";
constexpr const char* kPreguntaConfiguracion =
    "En esta acción se va a escribir la configuración y reiniciar la UTR\n¿Desea continuar?";
constexpr const char* kPreguntaParametros = "En esta acción se va a escribir la parametrización\n¿Desea continuar?";

struct Modo {
  bool configuracion = true;
  bool solo_lectura = false;
};

class PruebaParametrizacion : public BancoCanales {
 protected:
  void Abrir(Modo modo = {}) {
    if (!lectura.TieneFilas()) LeerDeLaUTR();
    ventana = std::make_unique<frmParametrizacion>(mod, lectura);
    ventana->ModoConfiguracion = modo.configuracion;
    ventana->SoloLectura = modo.solo_lectura;
    ventana->Llenar(*lectura.RecConfig());
    ventana->show();
  }

  VistaLista& Lista() { return Hallar<VistaLista>(*ventana, nullptr); }
  void Pulsar(const char* boton) { Hallar<QAbstractButton>(*ventana, boton).click(); }
  void Elegir(const char* entrada) { Hallar<QAction>(*ventana, entrada).trigger(); }
  std::string Texto(const char* etiqueta) { return U(Hallar<QLabel>(*ventana, etiqueta).text()); }
  std::string Cambios() { return U(Hallar<QToolButton>(*ventana, "Cambios").text()); }
  bool HayPanel() { return Hallar<PanelCambios>(*ventana, "PanelCambios").isVisible(); }
  bool Usable(const char* entrada) { return Hallar<QAction>(*ventana, entrada).isEnabled(); }
  void Entrar() { QTest::keyClick(&Hallar<QTreeView>(*ventana, "Lista"), Qt::Key_Return); }

  // Numbers of the channels in sight, in the order of the list; those with a mark bear "*".
  std::string Canales() {
    const QAbstractItemModel& modelo = *Hallar<QTreeView>(*ventana, "Lista").model();
    std::string canales;
    for (int fila = 0; fila < modelo.rowCount(); ++fila) {
      const QModelIndex celda = modelo.index(fila, 0);
      canales += U(celda.data().toString()) + (celda.data(Qt::DecorationRole).isValid() ? "* " : " ");
    }
    return canales;
  }
  std::string Elegido() {
    const auto fila = Lista().FilaActual();
    return fila ? Lista().Lista().Texto(*fila, 0) : "";
  }

  // The first channel is edited: its largest fall.
  void EditarNivel(const char* valor = "8") {
    if (!std::exchange(con_clave, true)) EsperarClave();
    EsperarEdicion("Validaciones(3)", valor);
    Entrar();
  }

  std::filesystem::path Exportada(const std::vector<FilaDeCanal>& canales, const char* nombre = "otra.ucg") {
    TablaDeCanales(canales)->GuardarSobre(carpeta / nombre);
    return carpeta / nombre;
  }

  std::unique_ptr<frmParametrizacion> ventana;
  bool con_clave = false;
};

TEST_F(PruebaParametrizacion, CadaModoMuestraSusCanalesYDiceQueHaceAceptar) {
  struct Caso {
    Modo modo;
    bool de_archivo;
    const char* titulo;
    const char* canales;
    const char* origen;
    bool panel;
  };
  const Caso casos[] = {
      {{true, false},
       false,
       kConfiguracion,
       "1 16 4 ",
       "Canales de la UTR 70, como se leyeron de ella. Aceptar los escribe todos en la UTR y la reinicia.",
       true},
      {{false, false},
       false,
       kParametrizaciones,
       "1 16 ",
       "Canales habilitados de la UTR 70, como se leyeron de ella. Aceptar escribe su parametrización en la UTR.",
       true},
      {{true, true},
       false,
       kConfiguracion,
       "1 16 ",
       "Canales habilitados de la UTR 70, como se leyeron de ella. Sólo para mirar: Aceptar no escribe nada en la UTR.",
       false},
      {{false, true},
       true,
       kParametrizaciones,
       "1 16 ",
       "Canales habilitados del archivo otra.ucg. Sólo para mirar: Aceptar no escribe nada en la UTR.",
       false},
  };
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{70}}, Propiedad{std::int64_t{0}});
  const auto archivo = Exportada({kNivel, kDigital, kApagado});
  for (const Caso& caso : casos) {
    if (caso.de_archivo) lectura.Preparar(archivo.string());
    Abrir(caso.modo);
    EXPECT_EQ(U(ventana->windowTitle()), caso.titulo);
    EXPECT_EQ(Canales(), caso.canales);
    EXPECT_EQ(Texto("lblOrigen"), caso.origen);
    EXPECT_EQ(HayPanel(), caso.panel) << caso.origen;
  }
  LeerDeLaUTR();
  lectura.OlvidarOrigen();
  Abrir({true, true});
  EXPECT_THAT(Texto("lblOrigen"), HasSubstr("como se leyeron antes; para grabar hay que volver a leerla. Sólo para"));
  mod.eleccion_impresora.nombre = "Oficina";
  Pulsar("Print");
  EXPECT_THAT(impresora.documentos.back().pie, StartsWith("Canales de la UTR 70, como se leyeron antes  ·  Impreso: "));
}

TEST_F(PruebaParametrizacion, LosBotonesDeOrdenSiguenALaColumnaConFlecha) {
  leida = TablaDeCanales({{{"Canal", "10"}}, {{"Canal", "2"}, {"Flags", "3"}}, {{"Canal", "1"}}});
  Abrir();
  EXPECT_EQ(Canales(), "10 2 1 ") << "the order of the collection";
  Pulsar("Sort Ascending");
  EXPECT_EQ(Canales(), "1 2 10 ") << "by number";
  Lista().ClicColumna(6);
  Pulsar("Sort Descending");
  EXPECT_EQ(Canales(), "2 10 1 ") << "by the alarm";
}

TEST_F(PruebaParametrizacion, LaClaveSePideHastaDarlaUnaVezTambienParaMirar) {
  for (const Modo modo : {Modo{true, false}, Modo{true, true}}) {
    Abrir(modo);
    EsperarClave("");
    operador.Espera(Mensaje{"Para modificar los parámetros del sensor debe conocer la clave de acceso", kConfiguracion,
                            Icono::kInformacion, Botones::kAceptar});
    Entrar();
    EsperarClave();
    for (int vez = 0; vez < 2; ++vez) {
      ventanas.Espera("frmParamCfg", [&](QDialog& d) {
        EXPECT_EQ(dynamic_cast<frmParamCfg&>(d).SoloLectura, modo.solo_lectura);
        EXPECT_FALSE(dynamic_cast<frmParamCfg&>(d).SoloParametros);
        Hallar<QAbstractButton>(d, "cmd(1)").click();
      });
      Entrar();
    }
    EXPECT_EQ(Cambios(), "Cambios: ninguno");
  }
}

TEST_F(PruebaParametrizacion, UnaEdicionConservaFiltroOrdenYFilaYSeVe) {
  Abrir();
  Pulsar("Sort Descending");
  Lista().CampoFiltro()->setText("1");
  ASSERT_EQ(Canales(), "16 1 ");
  Lista().Elegir(1);
  auto& detalle = Hallar<QTreeView>(*ventana, "ListaCambios");
  EXPECT_FALSE(detalle.isVisible());
  EditarNivel("8");
  EXPECT_EQ(Canales(), "16 1* ");
  EXPECT_EQ(Elegido(), "1");
  EXPECT_EQ(Cambios(), "Cambios: 1");
  EXPECT_TRUE(detalle.isVisible());
  Pulsar("CopiarCambios");
  EXPECT_EQ(U(QGuiApplication::clipboard()->text()),
            "NroCanal\tCanal\tCampo\tEn la UTR\tNuevo\n1\tEA01\tMáxima Variación Descendente (MaxBajVal):\t2\t8");
  Pulsar("Cambios");
  EditarNivel("2");
  EXPECT_EQ(Canales(), "16 1 ") << "as it was read";
  EXPECT_EQ(Cambios(), "Cambios: ninguno");
  EXPECT_FALSE(Hallar<QAbstractButton>(*ventana, "GuardarCambios").isEnabled());
}

TEST_F(PruebaParametrizacion, ListaYCambiosSalenConSusEncabezados) {
  leida = TablaDeCanales({kNivel});
  Abrir();
  EditarNivel();
  mod.eleccion_impresora.nombre = "Oficina";
  for (const auto& [guardar, imprimir, documento] :
       {std::tuple{"GuardarCambios", "ImprimirCambios",
                   "Cambios en los canales de la UTR\r\nNroCanal\tCanal\tCampo\tEn la UTR\tNuevo\r\n"
                   "1\tEA01\tMáxima Variación Descendente (MaxBajVal):\t2\t8"},
        std::tuple{"Guardar", "Print",
                   "Canales de la UTR\r\n"
                   "NroCanal\tCanal\tTipo de Entrada\tTipo de Sensor\tParámetro\tUnidad\tAlarma\tHabilitado\r\n"
                   "1\tEA01\tEntrada Analógica\tLimnimetro\tAnalógico\t - \tNo\tSi"}}) {
    operador.EsperaGuardar("Exportar ...", carpeta / "l.txt");
    operador.Espera(Mensaje{"La lista ha sido exportada con éxito", kConfiguracion, Icono::kInformacion});
    Pulsar(guardar);
    EXPECT_EQ(prueba::LeerTodo(carpeta / "l.txt"), documento);
    Pulsar(imprimir);
    EXPECT_EQ(impresora.trabajos.back(), std::string("Oficina:") + documento);
  }
}

TEST_F(PruebaParametrizacion, LaConfiguracionSeGuardaEnteraAunqueElFiltroTape) {
  Abrir();
  EditarNivel("8");
  Lista().CampoFiltro()->setText("no hay");
  EXPECT_FALSE(Usable("mnuParamImprimir"));
  operador.EsperaGuardar("Guardar configuración...", carpeta / "c.ucg");
  operador.Espera(
      Mensaje{"La configuración de la estación remota ha sido guardada satisfacoriamente\n"
              "Tenga en cuenta que la misma solamente debería ser utilizada\n"
              "para poner en marcha nuevamente esta misma estación remota",
              kConfiguracion, Icono::kInformacion});
  Elegir("mnuParamGuardarComo");
  Tabla guardada;
  guardada.Open(carpeta / "c.ucg");
  EXPECT_THAT(Filas(guardada, {"Canal", "MaxBajVal"}), ElementsAre("1|8", "16|", "4|"));
}

TEST_F(PruebaParametrizacion, UnaListaVaciaSoloAbreArchivos) {
  leida = TablaDeCanales({kApagado});
  Abrir({false, false});
  EXPECT_FALSE(Usable("mnuParamGuardarComo") || Usable("mnuParamImprimir"));
  EXPECT_FALSE(Hallar<QAbstractButton>(*ventana, "Guardar").isEnabled());
  Entrar();
  operador.EsperaAbrir("Abrir configuración...", Exportada({kNivel, kApagado}));
  Elegir("mnuParamAbrir");
  EXPECT_EQ(Canales(), "1 ");
}

TEST_F(PruebaParametrizacion, UnArchivoSeEditaSoloEnElModoCompleto) {
  struct Caso {
    Modo modo;
    const char* canales;
    const char* origen;
    bool edita;
  };
  const auto archivo = Exportada({{{"Canal", "4"}, {"Flags", "0"}, {"TMed", "5"}}, kNivel}).string();
  for (const Caso& caso :
       {Caso{{true, false},
             "4* 1 ",
             "Canales del archivo otra.ucg. Aceptar los escribe todos en la UTR y la reinicia.",
             true},
        Caso{{false, false},
             "1 ",
             "Canales habilitados del archivo otra.ucg. Sólo para mirar: Aceptar no escribe nada en la UTR.",
             false},
        Caso{{true, true},
             "1 ",
             "Canales habilitados del archivo otra.ucg. Sólo para mirar: Aceptar no escribe nada en la UTR.",
             false}}) {
    Abrir(caso.modo);
    comunicador.llamadas.clear();
    operador.EsperaAbrir("Abrir configuración...", archivo);
    Elegir("mnuParamAbrir");
    EXPECT_EQ(Canales(), caso.canales);
    EXPECT_EQ(Texto("lblOrigen"), caso.origen);
    EXPECT_EQ(HayPanel(), caso.edita);
    EXPECT_TRUE(lectura.LeidaDeLaUTR());
    EXPECT_EQ(lectura.RecConfig(), leida);
    if (caso.edita) operador.Espera(kPreguntaConfiguracion, Respuesta::kSi);
    Pulsar("cmd(0)");
    EXPECT_EQ(ventana->Aceptado, caso.edita);
    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(comunicador.Cuantas("GrabarParametrizacion"), caso.edita ? 1U : 0U);
  }
  EXPECT_THAT(Filas(*comunicador.Recibidas("GrabarParametrizacion").at(0), {"Canal", "TMed"}),
              ElementsAre("4|5", "1|1"));
}

TEST_F(PruebaParametrizacion, AbrirEmpiezaUnaVezEnLosRespaldosYPreguntaAntesDePerder) {
  Abrir();
  for (int vez = 0; vez < 2; ++vez) {
    operador.EsperaAbrir("Abrir configuración...", std::nullopt);
    Pulsar("Open");
  }
  EXPECT_EQ(operador.pedidos.at(0).carpeta, carpeta / "Respaldos" / "sin-identificador");
  EXPECT_EQ(operador.pedidos.at(1).carpeta, "");
  EXPECT_EQ(operador.pedidos.at(0).filtro,
            "Configuración exportada (*.ucg)|*.ucg|Archivos de configuración (*.icf)|*.icf");
  EditarNivel();
  const char* const pregunta =
      "Al abrir un archivo se pierden los cambios aceptados en un canal, que no se grabaron en la UTR\n"
      "¿Desea continuar?";
  operador.Espera(Mensaje{.texto = pregunta,
                          .titulo = kConfiguracion,
                          .icono = Icono::kPregunta,
                          .botones = Botones::kSiNo,
                          .defecto = Respuesta::kNo},
                  Respuesta::kNo);
  Pulsar("Open");
  operador.Espera(pregunta, Respuesta::kSi);
  operador.EsperaAbrir("Abrir configuración...", Exportada({kNivel}));
  Pulsar("Open");
  EXPECT_EQ(Cambios(), "Cambios: 2") << "the channels that the file lacks";
  operador.EsperaAbrir("Abrir configuración...", std::nullopt);
  Pulsar("Open");
}

TEST_F(PruebaParametrizacion, UnArchivoQueFallaDejaLaLista) {
  Abrir();
  EditarNivel();
  prueba::EscribirTodo(carpeta / "roto.ucg", "nada");
  TablaDeTextos({"Fecha", "Valor"}, {{"1", "2"}})->GuardarSobre(carpeta / "datos.ucg");
  comunicador.Falla("LeerArchivoConfiguracion", Error(1000, "driver", "No es una configuración"));
  const std::string vacio = Exportada({{{"Canal", "x"}}}, "vacio.ucg").string();
  for (const std::string& ruta :
       {(carpeta / "roto.ucg").string(), (carpeta / "datos.ucg").string(), std::string("x.icf"), vacio}) {
    operador.Espera(
        "Al abrir un archivo se pierden los cambios aceptados en un canal, que no se grabaron en la UTR\n"
        "¿Desea continuar?",
        Respuesta::kSi);
    operador.EsperaAbrir("Abrir configuración...", ruta);
    operador.EsperaParte("La operación solicitada no puede completarse\n[ ");
    Elegir("mnuParamAbrir");
    EXPECT_EQ(Canales(), "1* 16 4 ") << ruta;
    EXPECT_EQ(Cambios(), "Cambios: 1");
    EXPECT_EQ(operador.ocupado, 0);
  }
}

TEST_F(PruebaParametrizacion, EscribirPreguntaConNoPorDefectoYSePuedeDesistir) {
  for (const auto& [configuracion, pregunta] :
       {std::pair{true, kPreguntaConfiguracion}, std::pair{false, kPreguntaParametros}}) {
    Abrir({configuracion, false});
    comunicador.llamadas.clear();
    operador.Espera(Mensaje{.texto = pregunta,
                            .titulo = configuracion ? kConfiguracion : kParametrizaciones,
                            .icono = Icono::kPregunta,
                            .botones = Botones::kSiNo,
                            .defecto = Respuesta::kNo},
                    Respuesta::kNo);
    Pulsar("cmd(0)");
    EXPECT_TRUE(ventana->isVisible());
    EXPECT_THAT(comunicador.llamadas, IsEmpty());
  }
}

TEST_F(PruebaParametrizacion, SinRespaldoDecideElOperadorAntesDeLaPrimeraLlamada) {
  Abrir();
  std::filesystem::remove_all(carpeta / "Respaldos");
  prueba::EscribirTodo(carpeta / "Respaldos", "en el camino");
  comunicador.llamadas.clear();
  for (const Respuesta respuesta : {Respuesta::kNo, Respuesta::kSi}) {
    EXPECT_THAT(comunicador.llamadas, IsEmpty());
    operador.Espera(kPreguntaConfiguracion, Respuesta::kSi);
    operador.EsperaParte("No se pudo guardar el respaldo de la configuración leída de la UTR\n[ ", respuesta);
    Pulsar("cmd(0)");
    EXPECT_TRUE(operador.mensajes.back().texto.ends_with(" ]\n¿Desea grabar de todos modos, sin respaldo?"));
    EXPECT_EQ(operador.mensajes.back().defecto, Respuesta::kNo);
    EXPECT_EQ(ventana->isVisible(), respuesta == Respuesta::kNo);
  }
  EXPECT_EQ(comunicador.Cuantas("GrabarParametrizacion"), 1U);
}

TEST_F(PruebaParametrizacion, LoEditadoSaleTrasElRespaldoYConElPanelALaVista) {
  Abrir({false, false});
  EditarNivel("8");
  EditarNivel("7");
  Lista().CampoFiltro()->setText("no hay");
  const auto respaldos = [this] {
    const std::filesystem::directory_iterator todos(lectura.CarpetaDeRespaldos());
    return std::count_if(begin(todos), end(todos), [](const auto& uno) { return uno.path().extension() == ".ucg"; });
  };
  leida->Set("Pagina", "9");  // the table differs from the backup of its read
  comunicador.llamadas.clear();
  std::string vistos;
  comunicador.al_llamar = [&](const std::string& llamada) {
    const bool panel = Hallar<QWidget>(*ventana, "picInfo").isVisible();
    vistos += llamada.substr(0, llamada.find('(')) + (panel ? "+" : "-") + std::to_string(respaldos()) + " ";
    EXPECT_EQ(operador.ocupado, 1);
    Pulsar("cmd(1)");
    ventana->close();
  };
  operador.Espera(kPreguntaParametros, Respuesta::kSi);
  Pulsar("cmd(0)");
  EXPECT_EQ(vistos, "GrabarCanalesModificar-2 GrabarEvento-2 GrabarParametrizacion+2 GrabarFechaHora+2 ");
  EXPECT_EQ(comunicador.llamadas.at(0), "GrabarCanalesModificar(33,1#)");
  const auto& asientos = diario.Asientos();
  ASSERT_GE(asientos.size(), 2U);
  EXPECT_EQ(asientos.end()[-2].escrito, "2 canales, 1 cambio");
  EXPECT_THAT(asientos.back().comando, testing::StartsWith("EA01: "));
  EXPECT_EQ(asientos.back().escrito + ", " + asientos.back().resultado, "7, hecho");
  EXPECT_THAT(Filas(*comunicador.Recibidas("GrabarParametrizacion").at(0), {"Canal", "MaxBajVal"}),
              ElementsAre("1|7", "16|"));
  EXPECT_TRUE(ventana->Aceptado && ventana->Grabado && ventana->Resultado().Completa());
  EXPECT_EQ(operador.ocupado, 0);
}

// What each failing step says, and whether the window stays open behind it.
TEST_F(PruebaParametrizacion, CadaPasoQueFallaSeDiceYLaVentanaQuedaOSeVa) {
  struct Caso {
    bool configuracion;
    const char* operacion;
    bool raises;
    const char* mensaje;
    bool queda;
    bool grabado;
  };
  for (const Caso& caso : {
           Caso{true, "GrabarCanalesModificar", false, "No se pudieron grabar los canales a modificar", true, false},
           Caso{true, "GrabarPilaCanal", false, "No se ha podido grabar la relación pila-canales", false, true},
           Caso{true, "GrabarParametrizacion", false, nullptr, false, true},
           Caso{true, "ReiniciarUTR", false, "No se ha podido reiniciar la UTR", false, true},
           Caso{false, "GrabarEvento", false, "No se pudo grabar el evento de parametrización", true, false},
           Caso{false, "GrabarFechaHora", false,
                "No se pudo grabar la hora de la PC a la UTR\nVerifique el conexionado", false, true},
           Caso{true, "GrabarCanalesModificar", true, "[ \nLa operación solicitada no puede completarsesin respuesta ]",
                true, false},
           Caso{true, "GrabarParametrizacion", true, "[ \nLa operación solicitada no puede completarsesin respuesta ]",
                true, true},
       }) {
    Abrir({caso.configuracion, false});
    caso.raises ? comunicador.Falla(caso.operacion, Error(7, "driver", "sin respuesta"), 1)
                : comunicador.Devuelve(caso.operacion, false);
    operador.Espera(caso.configuracion ? kPreguntaConfiguracion : kPreguntaParametros, Respuesta::kSi);
    if (caso.mensaje != nullptr)
      operador.Espera(Mensaje{caso.mensaje, caso.configuracion ? kConfiguracion : kParametrizaciones, Icono::kCritico,
                              Botones::kAceptar});
    Pulsar("cmd(0)");
    comunicador.Devuelve(caso.operacion, true);
    EXPECT_EQ(ventana->isVisible(), caso.queda) << caso.operacion;
    EXPECT_EQ(ventana->Aceptado, !caso.queda) << caso.operacion;
    EXPECT_EQ(ventana->Grabado, caso.grabado) << caso.operacion;
    EXPECT_FALSE(Hallar<QWidget>(*ventana, "picInfo").isVisible());
    EXPECT_EQ(operador.ocupado, 0);
    EXPECT_EQ(Texto("lblOrigen").ends_with("La última grabación no terminó: la UTR puede tener ya una parte."),
              caso.queda && caso.grabado);
  }
  EXPECT_THAT(Errores(), HasSubstr("\"frmParametrizacion\",\"cmd_Click( 0\""));
}

TEST_F(PruebaParametrizacion, SoloEscYElCierrePreguntanAntesDePerderEdiciones) {
  Abrir();
  ventana->close();
  EXPECT_FALSE(ventana->isVisible()) << "nothing is lost";
  for (const bool esc : {true, false}) {
    Abrir();
    EditarNivel();
    con_clave = false;
    const char* const pregunta =
        "Al cerrar se pierden los cambios aceptados en un canal, que no se grabaron en la UTR\n¿Desea continuar?";
    for (const Respuesta respuesta : {Respuesta::kNo, Respuesta::kSi}) {
      operador.Espera(pregunta, respuesta);
      esc ? QTest::keyClick(ventana.get(), Qt::Key_Escape) : static_cast<void>(ventana->close());
      EXPECT_EQ(ventana->isVisible(), respuesta == Respuesta::kNo);
    }
  }
  for (const char* salida : {"cmd(1)", "mnuParamSalir"}) {
    Abrir();
    EditarNivel();
    con_clave = false;
    salida[0] == 'c' ? Pulsar(salida) : Elegir(salida);
    EXPECT_FALSE(ventana->isVisible()) << salida;
    EXPECT_FALSE(ventana->Aceptado);
  }
}

TEST_F(PruebaParametrizacion, MasCanalesQuePilasSeDice) {
  std::vector<FilaDeCanal> canales;
  static const char* const kNumeros[] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"};
  for (const char* numero : kNumeros) canales.push_back({{"Canal", numero}});
  leida = TablaDeCanales(canales);
  Abrir();
  EXPECT_EQ(Texto("lblPilas"), "10 canales con registro, 9 pilas");
}

TEST_F(PruebaParametrizacion, UnaFallaDelDialogoDelSensorSeDiceEnSuForma) {
  leida = TablaDeCanales({kNivel});
  Abrir();
  ventana->ColeccionCFG.Remove(1);
  EsperarClave();
  operador.Espera("[\nLa operación seleccionada no puede ser completada" + DescripcionDe(error::kLlamada) + "]");
  Entrar();
  EXPECT_THAT(Errores(), HasSubstr("\"frmParametrizacion\",\"Editar\""));
}

}  // namespace
}  // namespace utr
