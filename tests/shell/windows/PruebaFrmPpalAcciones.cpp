#include <gmock/gmock.h>

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "ConPpal.h"
#include "session/AjustesEnlace.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSinLeer = "No se ha leido la configuración de la RTU\n¿Desea leerla ahora?";
constexpr const char* kSinClave = "Para acceder a la funcionalidad solicitada debe conocer la clave de acceso";
constexpr const char* kLeerPrimero =
    "Debe leer la configuración desde la UTR previamente\n¿Desea leer la configuración ahora?";
constexpr const char* kExportarAhora = "Se ha leido la configuración desde la UTR\n¿Desea exportarla ahora?";
constexpr const char* kExportada =
    "La configuración de la estación remota ha sido guardada satisfacoriamente\n"
    "Tenga en cuenta que la misma solamente debería ser utilizada\n"
    "para poner en marcha nuevamente esta misma estación remota";
constexpr const char* kTituloBase = "Administración y configuración - KV7340";

class Acciones : public ConPpal {
 protected:
  void EsperarClave(const char* clave = "Pampas") {
    ventanas.Espera("frmLogin", [clave](QDialog& d) {
      Hallar<QLineEdit>(d, "txtPassword").setText(clave);
      Pulsar(d, "CmdOK");
    });
  }
  void EsperarLectura(const char* boton = "AceptarLecturaCFG") {
    ventanas.Espera("frmPresentacion", [boton](QDialog& d) { Pulsar(d, boton); });
  }
  void Exportar() {
    EsperarClave();
    Ejecutar("mnuAccAvanzadas(6)");
  }
  void EsperarPuerto(const std::function<void(QDialog&)>& paso = [](QDialog&) {}) {
    ventanas.Espera("frmPuerto", [paso](QDialog& d) {
      paso(d);
      Pulsar(d, "CmdOK");
    });
  }
};

TEST_F(Acciones, CadaVistaSeAbreSobreLaConfiguracionDeLaUTR) {
  Cargar();
  comunicador.Devuelve("LeerInstantaneos", TablaDeTextos({"Valor"}, std::vector<Celdas>(38, Celdas{"0"})));
  for (const auto& [indice, nombre] : {std::pair{1, "frmEventos"}, std::pair{2, "frmDatos"},
                                       std::pair{6, "frmAsistRemota"}, std::pair{8, "frmSalidasDigitales"}}) {
    ventanas.Espera(nombre, [](QDialog& d) { d.close(); });
    Elegir(indice);
  }
  EsperarClave();
  ventanas.Espera("frmColaTransmicion", [](QDialog& d) { d.close(); });
  Ejecutar("mnuAccAvanzadas(5)");
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(Acciones, RecuperarDatosNoNecesitaUnaConfiguracion) {
  CargarYOlvidar(false);
  EsperarClave();
  ventanas.Espera("frmLectorFlash", [](QDialog& d) { Pulsar(d, "cmd(1)"); });
  Ejecutar("mnuAccAvanzadas(2)");
  EXPECT_THAT(Ordenes(), IsEmpty());
}

TEST_F(Acciones, SinTablaSeOfreceLeerYLaVistaNoSeAbre) {
  CargarYOlvidar(false);
  operador.Espera(Mensaje{kSinLeer, kTituloBase, Icono::kPregunta, Botones::kSiNo}, Respuesta::kNo);
  Elegir(2);
  EXPECT_THAT(Ordenes(), IsEmpty());
  operador.Espera(kSinLeer, Respuesta::kSi);
  Elegir(2);
  EXPECT_EQ(comunicador.Cuantas("ConfiguracionAlmacenada"), 1U);
  ventanas.Espera("frmDatos", [](QDialog& d) { d.close(); });
  Elegir(2);
}

TEST_F(Acciones, UnaTablaSinFilasODeArchivoTambienPregunta) {
  comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({}));
  Cargar();
  operador.Espera(kSinLeer, Respuesta::kNo);
  Elegir(1);
  comunicador.Devuelve("LeerArchivoConfiguracion", TablaDeCanales({{{"Canal", "1"}}}));
  operador.EsperaAbrir("Abrir configuración...", std::filesystem::path("x.icf"));
  ventanas.Espera("frmPresentacion", [](QDialog& d) {
    Pulsar(d, "OptionXML");
    Pulsar(d, "AceptarLecturaCFG");
  });
  EsperarLista();
  Elegir(4);
  operador.Espera(kSinLeer, Respuesta::kNo);
  Elegir(2);
}

TEST_F(Acciones, UnaLecturaQueFallaDesdeUnaVistaSeDiceEnSuForma) {
  Cargar(false);
  comunicador.Falla("ConfiguracionAlmacenada", Error(7, "driver", "sin respuesta"));
  operador.Espera(kSinLeer, Respuesta::kSi);
  operador.Espera(Mensaje{"La operación solicitada no puede completarse\n[ sin respuesta ]", kTituloBase,
                          Icono::kCritico, Botones::kAceptar});
  Elegir(1);
  EXPECT_NE(Errores().find("\"frmPpal\",\"MostrarEventos\""), std::string::npos);
  EXPECT_FALSE(Conectado());
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(Acciones, LeerDeUnArchivoSinEquipoTerminaEnErrorConLaTablaPuesta) {
  CargarYOlvidar();
  comunicador.Devuelve("LeerArchivoConfiguracion", TablaDeCanales({{{"Canal", "7"}}}));
  comunicador.Devuelve("LeerFechaHora", "");
  operador.EsperaAbrir("Abrir configuración...", std::filesystem::path("/tmp/x.icf"));
  operador.Espera("La operación solicitada no puede ser completada\n[" + DescripcionDe(error::kTipos) + "]");
  ventanas.Espera("frmPresentacion", [](QDialog& d) {
    Pulsar(d, "OptionXML");
    Pulsar(d, "AceptarLecturaCFG");
  });
  EsperarLista();
  Elegir(4);
  EXPECT_THAT(Filas(*ventana->Lectura().RecConfig()->Clone(), {"Canal"}), ElementsAre("7"));
  EXPECT_FALSE(ventana->Lectura().ConfiguracionLeida());
}

TEST_F(Acciones, CancelarUnaLecturaDejaLaTablaYReabreElPuerto) {
  CargarYOlvidar();
  EsperarLectura("CancelarLecturaCFG");
  Elegir(4);
  EXPECT_THAT(Ordenes(), ElementsAre("Cancelar(no)", "Conectar(9600,n,8,1,1)"));
  EXPECT_EQ(ventana->Lectura().RecConfig()->RecordCount(), 2U);
  EXPECT_TRUE(ventana->Lectura().ConfiguracionLeida());
}

TEST_F(Acciones, ElPanelSeVeMientrasSeLee) {
  CargarYOlvidar();
  bool visto = false;
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (!llamada.starts_with("ConfiguracionAlmacenada")) return;
    auto* dialogo = ventana->findChild<QDialog*>("frmPresentacion");
    ASSERT_NE(dialogo, nullptr);
    visto = dialogo->isVisible() && !dialogo->isModal() && Hallar<QWidget>(*dialogo, "picInfo").isVisible();
    EXPECT_FALSE(Hallar<QWidget>(*dialogo, "AceptarLecturaCFG").isEnabled());
    EXPECT_EQ(operador.ocupado, 1);
  };
  EsperarLectura();
  EsperarLista();
  Elegir(4);
  EXPECT_TRUE(visto);
  EXPECT_EQ(ventana->findChild<QDialog*>("frmPresentacion"), nullptr) << "the dialog goes with its read";
}

TEST_F(Acciones, TrasLeerSeMiranLosCanalesAntesDeCompararLasHoras) {
  CargarYOlvidar();
  EsperarLectura();
  EsperarLista([this](QDialog& d) {
    EXPECT_EQ(d.windowTitle().toStdString(), "Configuración de los canales");
    EXPECT_THAT(Hallar<QLabel>(d, "lblOrigen").text().toStdString(), testing::HasSubstr("Sólo para mirar"));
    EXPECT_EQ(comunicador.Cuantas("ConfiguracionAlmacenada"), 1U);
    EXPECT_EQ(comunicador.Cuantas("LeerFechaHora"), 0U);
  });
  Elegir(4);
  EXPECT_EQ(comunicador.Cuantas("LeerFechaHora"), 1U);
}

// "Parametrizar" starts without a predefined set in use, "Configurar" goes on with it.
TEST_F(Acciones, LosCanalesSeCambianPorDosCaminos) {
  Cargar();
  std::string titulos;
  const auto mirar = [&](QDialog& d) { titulos += d.windowTitle().toStdString() + '|' + mod.ruta_predefinida + '|'; };
  mod.ruta_predefinida = "a.ipf";
  EsperarClave();
  EsperarLista(mirar);
  Ejecutar("mnuAccAvanzadas(1)");
  EsperarLista(mirar);
  Elegir(3);
  EXPECT_EQ(titulos, "Configuración de los canales|a.ipf|Parametrizaciones de los canales||");
}

TEST_F(Acciones, UnaGrabacionVerificadaSeDiceEnSuPanelHastaLaProximaLectura) {
  Cargar();
  EXPECT_FALSE(Hallar<QLabel>(*ventana, "Verificacion").isVisible());
  ventanas.Espera("frmParametrizacion", [](QDialog& d) { Pulsar(d, "cmd(0)"); });
  operador.EsperaParte("se va a escribir la parametrización", Respuesta::kSi);
  operador.EsperaParte("modificada con éxito.");
  Elegir(3);
  EXPECT_EQ(Panel("Verificacion"), "68 valores escritos y verificados");
  EXPECT_TRUE(Hallar<QLabel>(*ventana, "Verificacion").isVisible());
  EXPECT_EQ(Panel("Panel1"), "Releyendo configuración del equipo...");
  EXPECT_TRUE(ventana->LeerConfiguracionDirectaUTR());
  EXPECT_FALSE(Hallar<QLabel>(*ventana, "Verificacion").isVisible());
}

TEST_F(Acciones, LaLecturaDirectaNoPregunta) {
  CargarYOlvidar(false);
  EXPECT_TRUE(ventana->LeerConfiguracionDirectaUTR());
  EXPECT_EQ(comunicador.Cuantas("ConfiguracionAlmacenada"), 1U);
  comunicador.Falla("ConfiguracionAlmacenada", Error(7, "driver", "nada"));
  operador.Espera("La operación solicitada no puede ser completada\n[nada]");
  EXPECT_FALSE(ventana->LeerConfiguracionDirectaUTR());
  EXPECT_NE(Errores().find("\"frmPpal\",\"LeerConfiguracionDirectaUTR\""), std::string::npos);
}

TEST_F(Acciones, LaPuertaAvanzadaPideLaClaveCadaVez) {
  Cargar();
  for (int vez = 0; vez < 2; ++vez) {
    EsperarClave();
    ventanas.Espera("frmColaTransmicion", [](QDialog& d) { d.close(); });
    Ejecutar("mnuAccAvanzadas(5)");
  }
  ventanas.Espera("frmLogin", [](QDialog& d) { Pulsar(d, "CmdCancel"); });
  operador.Espera(Mensaje{kSinClave, kTituloBase, Icono::kInformacion, Botones::kAceptar});
  Ejecutar("mnuAccAvanzadas(5)");
  EXPECT_TRUE(ventana->isVisible());
}

TEST_F(Acciones, TrasLosComandosElTituloYElPanelSonLosDeAhora) {
  Cargar();
  for (const auto& [identificador, titulo] :
       {std::pair{0, std::string(kTituloBase)}, {300, kTituloBase + std::string(" - Identificador: 300")}}) {
    EsperarClave();
    ventanas.Espera("frmComandos", [&, id = identificador](QDialog& d) {
      propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{id}}, Propiedad{std::int64_t{0}});
      comunicador.Devuelve("ObtenerPuertos", "1200,n,8,1");
      d.close();
    });
    Ejecutar("mnuAccAvanzadas(0)");
    EXPECT_EQ(Titulo(), titulo);
    EXPECT_EQ(Panel("Velocidad"), " Vel: 1200 bps ");
  }
}

TEST_F(Acciones, ExportarGuardaUnaTablaQueSeAbreIgual) {
  Cargar();
  const std::filesystem::path ruta = carpeta / "estacion.ucg";
  prueba::EscribirTodo(ruta, "anterior");
  operador.EsperaGuardar("Guardar configuración...", ruta);
  operador.Espera(Mensaje{kExportada, kTituloBase, Icono::kInformacion, Botones::kAceptar});
  Exportar();
  EXPECT_EQ(operador.pedidos.back().filtro, "Configuración UTR (*.ucg)|*.ucg");
  EXPECT_EQ(operador.pedidos.back().carpeta, carpeta.Ruta());
  Tabla leida;
  leida.Open(ruta);
  EXPECT_THAT(Filas(leida, {"Canal"}), ElementsAre("1", "2"));
}

TEST_F(Acciones, ExportarCanceladoCalla) {
  Cargar();
  operador.EsperaGuardar("Guardar configuración...", std::nullopt);
  Exportar();
  EXPECT_TRUE(operador.mensajes.empty());
}

TEST_F(Acciones, ExportarSinLeerLeePrimero) {
  CargarYOlvidar(false);
  operador.Espera(Mensaje{kLeerPrimero, kTituloBase, Icono::kPregunta, Botones::kSiNo}, Respuesta::kSi);
  ventanas.Espera("frmLogin", [](QDialog& d) {
    Hallar<QLineEdit>(d, "txtPassword").setText("Pampas");
    Pulsar(d, "CmdOK");
  });
  ventanas.Espera("frmPresentacion", [](QDialog& d) {
    EXPECT_FALSE(Hallar<QRadioButton>(d, "OptionXML").isEnabled()) << "from the unit alone";
    Pulsar(d, "AceptarLecturaCFG");
  });
  operador.Espera(Mensaje{kExportarAhora, kTituloBase, Icono::kPregunta, Botones::kSiNo}, Respuesta::kSi);
  operador.EsperaGuardar("Guardar configuración...", carpeta / "e.ucg");
  operador.Espera(kExportada);
  Ejecutar("mnuAccAvanzadas(6)");
  EXPECT_TRUE(std::filesystem::exists(carpeta / "e.ucg"));
}

TEST_F(Acciones, ExportarTrasCancelarLaLecturaNoExportaNada) {
  Cargar(false);
  operador.Espera(kLeerPrimero, Respuesta::kSi);
  EsperarClave();
  EsperarLectura("CancelarLecturaCFG");
  Ejecutar("mnuAccAvanzadas(6)");
  operador.Espera(kLeerPrimero, Respuesta::kNo);
  Exportar();
  EXPECT_TRUE(operador.pedidos.empty());
}

TEST_F(Acciones, UnExportarQueFallaSeRegistraDosVecesYSeDiceUna) {
  Cargar();
  std::filesystem::create_directories(carpeta / "ocupada.ucg" / "adentro");
  operador.EsperaGuardar("Guardar configuración...", carpeta / "ocupada.ucg");
  operador.Espera("La operación solicitada no puede ser completada\n[No se puede escribir el archivo " +
                  (carpeta / "ocupada.ucg").string() + "]");
  Exportar();
  EXPECT_NE(Errores().find("\"frmPpal\",\"ExportarConfiguracion\""), std::string::npos);
  EXPECT_NE(Errores().find("\"frmPpal\",\"mnuAccAvanzadas_Click \""), std::string::npos);
}

TEST_F(Acciones, CambiarLaContrasena) {
  Cargar();
  const auto cambiar = [&](const char* actual, const char* nueva) {
    ventanas.Espera("frmConfirmPass", [actual, nueva](QDialog& d) {
      Hallar<QLineEdit>(d, "txtPassword(0)").setText(actual);
      Hallar<QLineEdit>(d, "txtPassword(1)").setText(nueva);
      Hallar<QLineEdit>(d, "txtPassword(2)").setText(nueva);
      Pulsar(d, "CmdOK");
    });
    Elegir(5);
  };
  cambiar("Pampas", "Ñandú 3");
  Propiedades guardadas(propiedades.Archivo());
  guardadas.CargarPropiedades();
  EXPECT_EQ(guardadas.LeerTexto(clave::kClave, "Pampas"), "Ñandú 3");
  cambiar("Ñandú 3", "Pampas");
  EXPECT_EQ(propiedades.LeerTexto(clave::kClave, "Pampas"), "Pampas");
}

TEST_F(Acciones, UnaContrasenaQueNoSeGuardaNoRige) {
  Cargar();
  std::filesystem::remove_all(carpeta.Ruta());
  ventanas.Espera("frmConfirmPass", [](QDialog& d) {
    for (const auto& [campo, texto] :
         {std::pair{"txtPassword(0)", "Pampas"}, std::pair{"txtPassword(1)", "x"}, std::pair{"txtPassword(2)", "x"}}) {
      Hallar<QLineEdit>(d, campo).setText(texto);
    }
    Pulsar(d, "CmdOK");
  });
  operador.Espera("La operación solicitada no puede ser completada\n[No se puede escribir el archivo " +
                  propiedades.Archivo().string() + "]");
  Elegir(5);
  EXPECT_EQ(propiedades.LeerTexto(clave::kClave, "Pampas"), "Pampas");
}

TEST_F(Acciones, ConfigurarElPuerto) {
  CargarYOlvidar();
  EsperarPuerto([](QDialog& d) { Hallar<QComboBox>(d, "CPuerto").setCurrentText("COM 4"); });
  Elegir(7);
  EXPECT_THAT(Ordenes(), ElementsAre("Conectar(9600,n,8,1,4)", "ModoConexion(si)"));
  EXPECT_EQ(Panel("PUERTO"), " COM 4 ");
}

TEST_F(Acciones, ConfigurarElPuertoPorIPOcultaLosBotones) {
  Cargar();
  EsperarPuerto([](QDialog& d) {
    Pulsar(d, "optIP");
    Hallar<QLineEdit>(d, "DireccionIP").setText("10.0.0.8");
    Hallar<QLineEdit>(d, "PuertoIP").setText("1500");
  });
  comunicador.Falla("Conectar", Error(8003, "x", "y"));
  Elegir(7);
  EXPECT_EQ(comunicador.De("Conectar").back(), "Conectar(10.0.0.8,n,8,1,1500)");
  EXPECT_FALSE(Accion("Conected").isVisible());
  EXPECT_EQ(Panel("Velocidad"), " IP: 10.0.0.8 ");
  EsperarPuerto([](QDialog& d) { Pulsar(d, "optSerie"); });
  comunicador.NoFalla("Conectar");
  Elegir(7);
  EXPECT_TRUE(Accion("Conected").isVisible());
  EXPECT_EQ(Panel("PUERTO"), " COM 1 ");
}

TEST_F(Acciones, UnPuertoTomadoTerminaEnSuMensaje) {
  Cargar();
  for (const auto& [numero, texto] : {std::pair{8005, "El puerto requerido se encuentra abierto"},
                                      std::pair{8012, "Error en el puerto de comunicación"}}) {
    comunicador.Falla("Conectar", Error(numero, "MSComm", "x"));
    EsperarPuerto();
    operador.Espera(Mensaje{std::string("La operación solicitada no puede ser completada\n[") + texto + "]",
                            kTituloBase, Icono::kCritico, Botones::kAceptar});
    Elegir(7);
    EXPECT_FALSE(Conectado());
    EXPECT_NE(Errores().find(std::string("8005,\"MsCOmm\",\"") + texto), std::string::npos);
  }
  EXPECT_NE(Errores().find("\"frmPpal\",\"ConfigurarPuerto\""), std::string::npos);
}

TEST_F(Acciones, SinLaHerramientaHermanaSeDice) {
  Cargar();
  operador.Espera(
      Mensaje{"La operación solicitada no puede ser completada", kTituloBase, Icono::kCritico, Botones::kAceptar});
  ventana->LanzarMandadero();
}

}  // namespace
}  // namespace utr
