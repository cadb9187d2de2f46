#include <QCheckBox>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

#include "retrieved/recovery/BancoFlash.h"
#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/RejaMapa.h"
#include "retrieved/windows/VistaMapa.h"
#include "retrieved/windows/frmLectorFlash.h"
#include "widgets/Ocupacion.h"

namespace utr {
namespace {

using prueba::LeerTodo;
using prueba::Volcado;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kTitulo = "Recuperación de información";
constexpr const char* kErrores = "Durante la obtención de la información se produjeron los siguientes errores\n";
constexpr const char* kCancelar = "¿Desea cancelar la lectura desde el equipo?";
constexpr const char* kSinConfiguracion =
    "No se pudo completar la lectura de la configuración \nExporte manualmente la configuración del equipo\n";
constexpr const char* kSinEnlace =
    "La operación solicitada no puede ser completada\n[No se puede establecer la conexión con el equipo\n"
    "Verifique el conexionado y la configuración del puerto]";

class PruebaFrmLectorFlash : public BancoVistas, public testing::Test {
 protected:
  PruebaFrmLectorFlash() {
    driver.Devuelve("LeerPaginaFlash", [this](const std::string& llamada) {
      int pista = 0, pagina = 0;
      std::sscanf(llamada.c_str(), "LeerPaginaFlash(%d,%d)", &pista, &pagina);
      return flash.LeerPaginaFlash(static_cast<std::int16_t>(pista), static_cast<std::int16_t>(pagina));
    });
    driver.Devuelve("ConfiguracionAlmacenada", Canales());
    flash.Llenar(27, 0, 2, 5);
    flash.Llenar(30, 0, 0, 6);
    ventana.show();
  }

  // Only these boxes are ticked.
  void Marcar(std::initializer_list<const char*> cajas) {
    for (const char* caja : {"chkDatos", "chkColaTX", "chkEventos", "chkConfiguracion", "chkFulllDownload"})
      Caja(caja).setChecked(false);
    for (const char* caja : cajas) Caja(caja).setChecked(true);
  }
  QCheckBox& Caja(const char* nombre) { return *Hijo<QCheckBox>(ventana, nombre); }
  QRadioButton& Opcion(int indice) { return *Hijo<QRadioButton>(ventana, indice == 0 ? "optPilas(0)" : "optPilas(1)"); }
  QCheckBox& Pila(int indice) { return Caja(("chkPilas(" + std::to_string(indice) + ")").c_str()); }
  void Traer() { Pulsar(ventana, "cmd(0)"); }
  std::string Archivo() const { return LeerTodo(ruta); }
  void Mensajes(const std::string& renglones) {
    operador.Espera(Mensaje{kErrores + renglones, kTitulo, Icono::kInformacion, Botones::kAceptar});
  }

  prueba::UnidadConFlash flash;
  frmLectorFlash ventana{banco.mod, nullptr};
  std::filesystem::path ruta = banco.carpeta / "15_03_2026_10_00_00_DatosFlash.bkp";
  std::filesystem::path ruta_ucg = banco.carpeta / "15_03_2026_10_00_00_DatosFlash.ucg";
};

TEST_F(PruebaFrmLectorFlash, AlAbrirSeProponenTodasLasPilas) {
  EXPECT_EQ(U(ventana.windowTitle()), kTitulo);
  EXPECT_TRUE(Caja("chkDatos").isChecked());
  EXPECT_TRUE(Opcion(0).isChecked());
  EXPECT_FALSE(Pila(0).isEnabled());
  EXPECT_FALSE(Caja("chkColaTX").isChecked());
  EXPECT_EQ(Texto(ventana, "lblPathFile"), ruta.string());
  EXPECT_FALSE(Hijo<QPushButton>(ventana, "Cancelar")->isVisible());
  EXPECT_EQ(Texto(ventana, "lblCuentaMapa"), "5120 salteadas, 27648 todavía sin leer");
}

TEST_F(PruebaFrmLectorFlash, LasPilasSiguenALasOpciones) {
  Opcion(1).click();
  EXPECT_TRUE(Pila(4).isEnabled());
  Pila(4).click();
  EXPECT_EQ(Texto(ventana, "lblCuentaMapa"), "29696 salteadas, 3072 todavía sin leer");
  Pila(4).click();
  EXPECT_FALSE(Opcion(0).isChecked() || Opcion(1).isChecked()) << "no box, no option";
  EXPECT_TRUE(Pila(4).isEnabled());
  Pila(2).click();
  EXPECT_TRUE(Opcion(1).isChecked());
  Opcion(0).click();
  EXPECT_FALSE(Pila(2).isEnabled());
  EXPECT_TRUE(Pila(2).isChecked());

  Opcion(1).click();
  Caja("chkDatos").click();
  EXPECT_FALSE(Hijo<QFrame>(ventana, "fraPilas")->isEnabled());
  EXPECT_TRUE(Opcion(0).isChecked());
  EXPECT_FALSE(Pila(2).isChecked());
  Caja("chkDatos").click();
  EXPECT_TRUE(Opcion(0).isEnabled());
  EXPECT_FALSE(Pila(2).isEnabled());
}

TEST_F(PruebaFrmLectorFlash, SinNadaElegidoNoSeEmpieza) {
  Opcion(1).click();
  for (int vez = 0; vez < 2; ++vez) {
    operador.Espera(Mensaje{"Debe seleccionar al menos una de las opciones de lectura", kTitulo, Icono::kInformacion,
                            Botones::kAceptar});
    Traer();
    EXPECT_TRUE(ventana.isVisible());
    Marcar({"chkConfiguracion"});
  }
  EXPECT_THAT(driver.llamadas, IsEmpty());
}

TEST_F(PruebaFrmLectorFlash, SinEnlaceElArchivoQueHabiaNoSeToca) {
  prueba::EscribirTodo(ruta, "anterior");
  driver.Devuelve("LeerEstado", -1);
  operador.Espera(Mensaje{kSinEnlace, kTitulo, Icono::kCritico, Botones::kAceptar});
  Traer();
  driver.Falla("LeerEstado", Error(1000, "driver", "puerto cerrado"));
  operador.Espera(kSinEnlace);
  Traer();
  EXPECT_TRUE(ventana.isVisible());
  EXPECT_TRUE(Caja("chkDatos").isEnabled());
  EXPECT_EQ(Archivo(), "anterior");
  EXPECT_THAT(banco.Errores(), HasSubstr("\"Lectura de la memoria\""));
}

TEST_F(PruebaFrmLectorFlash, UnArchivoQueNoSePuedeCrearDejaLaVentanaUsable) {
  std::filesystem::create_directory(ruta);
  operador.EsperaParte("No se puede apartar el archivo");
  Traer();
  EXPECT_TRUE(ventana.isVisible());
  EXPECT_TRUE(Caja("chkDatos").isEnabled());
  EXPECT_THAT(flash.pedidas, IsEmpty());
}

TEST_F(PruebaFrmLectorFlash, LeeGuardaLaConfiguracionYSeCierra) {
  Marcar({"chkColaTX", "chkConfiguracion"});
  flash.al_pedir = [this](const LugarPagina& lugar) {
    if (lugar != LugarPagina{27, 1}) return;
    for (const char* control : {"chkDatos", "fraPilas", "chkColaTX", "chkEventos", "cmd(0)", "cmd(1)", "cmdAyuda",
                                "chkFulllDownload", "chkConfiguracion", "cmdFile", "cmdContinuar"})
      EXPECT_FALSE(Hijo<QWidget>(ventana, control)->isEnabled()) << control;
    EXPECT_TRUE(Hijo<QPushButton>(ventana, "Cancelar")->isVisible());
    EXPECT_EQ(Texto(ventana, "LblPista"), "Pista:27");
    EXPECT_EQ(Texto(ventana, "LblInfo"), " Leyendo pagina:2");
    EXPECT_EQ(Hijo<QProgressBar>(ventana, "Progreso")->minimum(), 27);
    EXPECT_EQ(Hijo<QProgressBar>(ventana, "Progreso")->maximum(), 32);
    EXPECT_EQ(Hijo<QProgressBar>(ventana, "ProgresoPaginas")->maximum(), 1023);
    EXPECT_TRUE(Ocupacion::Ocupada(ventana));
    EXPECT_EQ(operador.ocupado, 1);
  };
  driver.al_llamar = [this](const std::string& llamada) {
    if (!llamada.starts_with("ConfiguracionAlmacenada")) return;
    EXPECT_EQ(Texto(ventana, "LblInfo"), "Exportando configuración");
    EXPECT_FALSE(Hijo<QProgressBar>(ventana, "Progreso")->isVisible());
    EXPECT_EQ(Hijo<QProgressBar>(ventana, "ProgresoPaginas")->maximum(), 2);
  };
  Traer();
  EXPECT_FALSE(ventana.isVisible());
  EXPECT_EQ(Archivo(), Volcado("27/31 5@27,0-2 255@27,3-4 EOT EOT EOT"));
  Tabla configuracion;
  configuracion.Open(ruta_ucg);
  EXPECT_EQ(configuracion.RecordCount(), 4U);
  EXPECT_THAT(driver.De("ConfiguracionAlmacenada"), ElementsAre("ConfiguracionAlmacenada(si)"));
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(PruebaFrmLectorFlash, CancelarPreguntaVengaDeDondeVenga) {
  Marcar({"chkColaTX", "chkConfiguracion"});
  flash.al_pedir = [this](const LugarPagina& lugar) {
    const Mensaje pregunta{kCancelar, kTitulo, Icono::kPregunta, Botones::kAceptarCancelar, {}, Respuesta::kCancelar};
    if (lugar.pagina == 0) {
      operador.Espera(pregunta, Respuesta::kCancelar);
      QTest::keyClick(&ventana, Qt::Key_Escape);
    } else if (lugar.pagina == 1) {
      operador.Espera(pregunta, Respuesta::kCancelar);
      ventana.close();
      Hijo<QPushButton>(ventana, "cmd(0)")->click();
    } else {
      operador.Espera(pregunta, Respuesta::kAceptar);
      Hijo<QPushButton>(ventana, "Cancelar")->click();
      EXPECT_FALSE(Hijo<QPushButton>(ventana, "Cancelar")->isVisible());
      EXPECT_TRUE(Hijo<QPushButton>(ventana, "cmd(1)")->isEnabled());
      QTest::keyClick(&ventana, Qt::Key_Escape);  // asks no second time
      EXPECT_TRUE(ventana.isVisible());
      Mensajes("Lectura cancelada por usuario\n");
    }
  };
  Traer();
  EXPECT_FALSE(ventana.isVisible());
  EXPECT_EQ(Archivo(), Volcado("27/31 5@27,0-2 EOT"));
  EXPECT_EQ(driver.Cuantas("ConfiguracionAlmacenada"), 0U);
}

TEST_F(PruebaFrmLectorFlash, UnErrorDelControladorSeDiceYCierra) {
  Marcar({"chkColaTX"});
  flash.al_pedir = [](const LugarPagina& lugar) {
    if (lugar.pagina == 2) throw Error(1000, "driver", "Se cortó");
  };
  operador.Espera(Mensaje{"La operación solicitada no puede ser completada\n[Se cortó]", kTitulo, Icono::kCritico,
                          Botones::kAceptar});
  Traer();
  EXPECT_FALSE(ventana.isVisible());
  EXPECT_EQ(Archivo(), Volcado("27/31 5@27,0-1"));
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(PruebaFrmLectorFlash, LoQueFallaConLaConfiguracionNoDejaMedioArchivo) {
  Marcar({"chkColaTX", "chkConfiguracion"});
  const std::function<void()> fallas[] = {
      [this] { driver.Devuelve("ConfiguracionAlmacenada", TablaPtr()); },
      [this] { driver.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({})); },
      [this] { driver.Falla("ConfiguracionAlmacenada", Error(1000, "driver", "Se cortó"), 1); },
      [this] {
        driver.Devuelve("ConfiguracionAlmacenada", Canales());
        std::filesystem::create_directory(ruta_ucg);
      }};
  for (const auto& falla : fallas) {
    falla();
    Mensajes(kSinConfiguracion);
    ventana.show();
    Traer();
    EXPECT_FALSE(std::filesystem::is_regular_file(ruta_ucg));
    EXPECT_EQ(Archivo(), Volcado("27/31 5@27,0-2 255@27,3-4 EOT EOT EOT"));
  }
  EXPECT_EQ(banco.carpeta.Cuantos(), 4U) << "file, folder in the way, error log and journal";
}

TEST_F(PruebaFrmLectorFlash, CancelarMientrasVieneLaConfiguracionLaDejaSinGuardar) {
  Marcar({"chkColaTX", "chkConfiguracion"});
  driver.al_llamar = [this](const std::string& llamada) {
    if (!llamada.starts_with("ConfiguracionAlmacenada")) return;
    operador.Espera(kCancelar, Respuesta::kAceptar);
    Hijo<QPushButton>(ventana, "Cancelar")->click();
    Mensajes("Lectura cancelada por usuario\n" + std::string(kSinConfiguracion));
  };
  Traer();
  EXPECT_FALSE(std::filesystem::exists(ruta_ucg));
}

TEST_F(PruebaFrmLectorFlash, LasPaginasQueFallaronSePuedenReintentar) {
  Marcar({"chkColaTX"});
  flash.fallas = {{{27, 0}, 6}, {{27, 1}, 3}};
  Mensaje caja{std::string(kErrores) + "No se puede leer la pagina: 0\nNo se puede leer la pagina: 1\n",
               kTitulo,
               Icono::kInformacion,
               Botones::kAceptarOpcion,
               {"Reintentar las 2 páginas que fallaron", {}}};
  operador.Espera(caja, Respuesta::kPrimera);
  caja.texto = std::string(kErrores) + "No se puede leer la pagina: 0\n";
  caja.opciones[0] = "Reintentar la página que falló";
  operador.Espera(caja, Respuesta::kPrimera);
  Traer();
  EXPECT_EQ(Archivo(), Volcado("27/31 5@27,0-2 255@27,3-4 EOT EOT EOT"));
  EXPECT_FALSE(ventana.isVisible());
}

TEST_F(PruebaFrmLectorFlash, UnReintentoSinEnlaceDejaElegirDeNuevo) {
  Marcar({"chkColaTX"});
  flash.fallas = {{{27, 1}, 3}};
  operador.EsperaParte("No se puede leer la pagina: 1", Respuesta::kPrimera);
  operador.al_preguntar = [this] { driver.Devuelve("LeerEstado", -1); };
  operador.Espera(kSinEnlace);
  operador.EsperaParte("No se puede leer la pagina: 1");
  Traer();
  EXPECT_EQ(Archivo(), Volcado("27/31 5@27,0 5@27,2 255@27,3-4 EOT EOT EOT"));
}

TEST_F(PruebaFrmLectorFlash, DeMuchosErroresSeVenVeinteYElRestoAparte) {
  Marcar({"chkColaTX", "chkFulllDownload"});
  std::string primeros, resto;
  for (int pagina = 0; pagina < 23; ++pagina) {
    flash.fallas[{27, 40 * pagina}] = -1;
    (pagina < 20 ? primeros : resto) += "No se puede leer la pagina: " + std::to_string(40 * pagina) + "\n";
  }
  Mensaje caja{kErrores + primeros + "... y 3 más",
               kTitulo,
               Icono::kInformacion,
               Botones::kAceptarOpcion,
               {"Reintentar las 23 páginas que fallaron", {}}};
  caja.detalle = resto;
  operador.Espera(caja);
  Traer();
  EXPECT_EQ(Texto(ventana, "lblCuentaMapa"), "2 con datos, 3047 vacías, 23 no se pudieron leer, 29696 salteadas");
}

TEST_F(PruebaFrmLectorFlash, UnEquipoQueCallaPreguntaSiSeSigue) {
  Marcar({"chkColaTX"});
  for (int pagina = 1; pagina < kPaginasPista; ++pagina) flash.fallas[{27, pagina}] = -1;
  flash.al_pedir = [this](const LugarPagina&) { driver.Devuelve("LeerEstado", -1); };
  operador.Espera(
      Mensaje{"El equipo dejó de responder\n¿Desea seguir intentando?", kTitulo, Icono::kPregunta, Botones::kSiNo},
      Respuesta::kNo);
  operador.EsperaParte("Lectura cancelada por usuario\n");
  Traer();
  EXPECT_EQ(operador.mensajes.back().botones, Botones::kAceptar) << "a cancelled read is continued, not retried";
  EXPECT_EQ(Archivo(), Volcado("27/31 5@27,0 EOT"));
}

TEST_F(PruebaFrmLectorFlash, ElArchivoSeEligeEnElDialogoComun) {
  operador.EsperaGuardar("Guardar como...", std::nullopt);
  Pulsar(ventana, "cmdFile");
  EXPECT_EQ(Texto(ventana, "lblPathFile"), ruta.string());
  operador.EsperaGuardar("Guardar como...", banco.carpeta / "otra.BKP");
  Pulsar(ventana, "cmdFile");
  EXPECT_EQ(operador.pedidos.back().filtro, "Archivos de recuperación (*.bkp)|*.bkp");
  Marcar({"chkColaTX", "chkConfiguracion"});
  Traer();
  EXPECT_EQ(LeerTodo(banco.carpeta / "otra.BKP"), Volcado("27/31 5@27,0-2 255@27,3-4 EOT EOT EOT"));
  EXPECT_TRUE(std::filesystem::exists(banco.carpeta / "otra.ucg"));
}

TEST_F(PruebaFrmLectorFlash, ContinuarRetieneLoQueElArchivoTiene) {
  const std::filesystem::path vieja = banco.carpeta / "vieja.bkp";
  prueba::EscribirTodo(vieja, Volcado("0/31 3@9,0-1 EOT 5@27,0 EOT") + std::string(60, 'x') + "\r\n");
  prueba::EscribirTodo(banco.carpeta / "vieja.bkp.continuacion", Volcado("0/31 3@9,2 EOT"));
  flash.Llenar(9, 0, 4, 3);
  operador.EsperaAbrir("Continuar una lectura...", vieja);
  operador.EsperaParte("quedó sin terminar", Respuesta::kSi);
  Pulsar(ventana, "cmdContinuar");
  EXPECT_TRUE(Pila(3).isChecked());
  EXPECT_FALSE(Pila(3).isEnabled());
  EXPECT_TRUE(Pila(4).isEnabled());
  EXPECT_FALSE(Caja("chkDatos").isEnabled());
  EXPECT_FALSE(Caja("chkColaTX").isEnabled());
  EXPECT_TRUE(Caja("chkEventos").isEnabled());
  EXPECT_EQ(Texto(ventana, "lblPathFile"), vieja.string());
  EXPECT_FALSE(Hijo<QPushButton>(ventana, "cmdFile")->isEnabled());
  EXPECT_THAT(Texto(ventana, "lblContinua"), HasSubstr("tiene 4 páginas y 1 renglón dañado"));
  EXPECT_THAT(Texto(ventana, "lblCuentaMapa"), HasSubstr("4 del archivo anterior"));

  // And lets go of it.
  Pulsar(ventana, "cmdContinuar");
  EXPECT_EQ(Texto(ventana, "lblPathFile"), ruta.string());
  EXPECT_TRUE(Pila(3).isEnabled());
  EXPECT_TRUE(Caja("chkDatos").isEnabled());

  operador.EsperaAbrir("Continuar una lectura...", vieja);
  operador.EsperaParte("quedó sin terminar", Respuesta::kSi);
  Pulsar(ventana, "cmdContinuar");
  Traer();
  EXPECT_EQ(LeerTodo(vieja), Volcado("0/31 3@9,0-4 255@9,5-6 EOT 5@27,0-2 255@27,3-4 EOT EOT EOT"));
  EXPECT_FALSE(std::filesystem::exists(banco.carpeta / "vieja.bkp.continuacion"));
  EXPECT_FALSE(ventana.isVisible());
}

TEST_F(PruebaFrmLectorFlash, LoQueNoSePuedeContinuarSeDice) {
  const std::filesystem::path vieja = banco.carpeta / "vieja.bkp";
  prueba::EscribirTodo(vieja, "<xml>");
  operador.EsperaAbrir("Continuar una lectura...", vieja);
  operador.EsperaParte("no es un archivo de recuperación");
  Pulsar(ventana, "cmdContinuar");
  EXPECT_EQ(Texto(ventana, "lblPathFile"), ruta.string());

  const std::string ajena = Volcado("27/31 8@27,0-2 EOT");
  prueba::EscribirTodo(vieja, ajena);
  operador.EsperaAbrir("Continuar una lectura...", vieja);
  Pulsar(ventana, "cmdContinuar");
  operador.EsperaParte("El archivo es de otro equipo");
  Traer();
  EXPECT_TRUE(ventana.isVisible());
  EXPECT_EQ(LeerTodo(vieja), ajena);
}

TEST(VistaMapa, SeRecorreConElTecladoYSeAcerca) {
  MapaMemoria mapa(UsoMapa::kLectura);
  VistaMapa vista(mapa);
  vista.resize(900, 500);
  vista.show();
  auto& reja = Hallar<RejaMapa>(vista, "Mapa");
  const auto lugar = [&] { return U(Hallar<QLabel>(vista, "lblLugarMapa").text()); };
  mapa.Poner({1, 17}, EstadoPagina::kFallida);
  for (const Qt::Key tecla : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Right}) QTest::keyClick(&reja, tecla);
  EXPECT_EQ(lugar(), "Pista 1, páginas 16 a 23 (Pila 0): 1 no se pudo leer, 7 todavía sin leer");
  QTest::keyClick(&reja, Qt::Key_Plus);
  QTest::keyClick(&reja, Qt::Key_Right);
  EXPECT_EQ(lugar(), "Pista 1, página 17 (Pila 0): no se pudo leer");
  EXPECT_TRUE(Hallar<QAbstractButton>(vista, "AcercarMapa").isChecked());
  QTest::keyClick(&reja, Qt::Key_End);
  QTest::keyClick(&reja, Qt::Key_PageDown);
  EXPECT_EQ(vista.Lugar(), (LugarPagina{3, 1023}));
  QTest::keyClick(&reja, Qt::Key_Minus);
  EXPECT_EQ(vista.Lugar(), (LugarPagina{3, 1016}));
  for (int i = 0; i < 40; ++i) QTest::keyClick(&reja, Qt::Key_Down);
  QTest::keyClick(&reja, Qt::Key_Right);
  EXPECT_EQ(vista.Lugar(), (LugarPagina{31, 1016}));
  vista.Actualizar();
  EXPECT_EQ(U(reja.accessibleDescription()), mapa.Cuenta());
}

TEST(VistaMapa, CadaEstadoTieneUnaFormaQueSeDistingueSinColor) {
  std::vector<QImage> formas;
  for (std::size_t estado = 0; estado < kEstadosPagina; ++estado) {
    QImage imagen(9, 9, QImage::Format_RGB32);
    const QPalette paleta;
    imagen.fill(paleta.color(QPalette::Base));
    QPainter pintor(&imagen);
    PintarEstado(pintor, QRect(1, 1, 7, 7), static_cast<EstadoPagina>(estado), paleta);
    pintor.end();
    // Drawn or not, whatever the colour.
    QImage forma(imagen.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < imagen.height(); ++y) {
      for (int x = 0; x < imagen.width(); ++x)
        forma.setPixelColor(x, y, imagen.pixelColor(x, y) == paleta.color(QPalette::Base) ? Qt::white : Qt::black);
    }
    for (const QImage& otra : formas) EXPECT_NE(forma, otra) << estado;
    formas.push_back(forma);
  }
}

}  // namespace
}  // namespace utr
