#include <QLabel>

#include "BancoCanales.h"
#include "configuration/windows/MostrarConfiguracion.h"
#include "driver/CanalesUTR.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kEscribir =
    "En esta acción se va a escribir la configuración y reiniciar la UTR\n¿Desea continuar?";
constexpr const char* kEscribirParametros = "En esta acción se va a escribir la parametrización\n¿Desea continuar?";
constexpr const char* kReleida =
    "La configuración fue modificada con éxito.\nSe ha releido la configuración desde la UTR";
constexpr const char* kSinReleer =
    "La configuración fue modificada con éxito,\npero no se ha podido releer la configuración desde la UTR.\n"
    "Aguarde unos instantes y relea la configuración";

class PruebaMostrarConfiguracion : public BancoCanales {
 protected:
  PruebaMostrarConfiguracion() {
    principal.setWindowTitle("Principal");
    flujo.Servirse({.estado = [this](auto texto) { Anotar("estado", texto); },
                    .verificacion = [this](auto texto, auto) { verificacion = texto; }});
    comunicador.al_llamar = [this](const std::string& llamada) {
      if (llamada.starts_with("Pausa") || llamada.starts_with("Configuracion")) pasos.push_back(llamada);
    };
    operador.al_preguntar = [this] { Anotar("dice", operador.mensajes.back().texto.substr(0, 43)); };
  }

  void Anotar(std::string_view que, std::string_view texto) {
    pasos.push_back(std::string(que) + ": " + std::string(texto));
  }

  // The list comes and its Aceptar is pressed, behind an edit or without one.
  void EsperarLista(const char* boton = "cmd(0)") {
    ventanas.Espera("frmParametrizacion", [boton](QDialog& d) { Hallar<QAbstractButton>(d, boton).click(); });
  }
  // A whole road: the list comes, is accepted and written.
  void Grabar(bool configuracion = true) {
    EsperarLista();
    operador.Espera(configuracion ? kEscribir : kEscribirParametros, Respuesta::kSi);
  }
  static Mensaje Dicho(const char* texto, Icono icono) { return {texto, "Principal", icono, Botones::kAceptar}; }

  QWidget principal;
  FlujoLectura flujo{mod, lectura, principal};
  std::vector<std::string> pasos;
  std::string verificacion;
};

TEST_F(PruebaMostrarConfiguracion, SinLeerPideLeer) {
  for (const auto camino : {+[](FlujoLectura& f) { MostrarConfiguracion(f); }, &MostrarParametros}) {
    operador.Espera(Dicho("Debe leer una configuración", Icono::kInformacion));
    camino(flujo);
  }
}

TEST_F(PruebaMostrarConfiguracion, SoloQuienAbreDiceQueEsParaMirar) {
  const auto abrir = [&](bool parametros, bool solo_mirar) {
    std::string visto;
    ventanas.Espera("frmParametrizacion", [&](QDialog& d) {
      const auto& lista = dynamic_cast<frmParametrizacion&>(d);
      visto = (lista.ModoConfiguracion ? "todo" : "parametros") + std::string(lista.SoloLectura ? " mira" : " escribe");
      d.close();
    });
    parametros ? MostrarParametros(flujo) : MostrarConfiguracion(flujo, solo_mirar);
    return visto;
  };
  LeerDeLaUTR();
  EXPECT_EQ(abrir(false, false), "todo escribe");
  EXPECT_EQ(abrir(false, true), "todo mira");
  EXPECT_EQ(abrir(true, false), "parametros escribe");
  leida->GuardarSobre(carpeta / "c.ucg");
  lectura.Preparar((carpeta / "c.ucg").string());
  EXPECT_EQ(abrir(false, false), "todo mira");
  EXPECT_EQ(abrir(true, false), "parametros mira");
  EXPECT_THAT(comunicador.De("Pausa"), IsEmpty());
}

// The settings point at another unit, whose read failed or was never made: what is on hand must not go there.
TEST_F(PruebaMostrarConfiguracion, LoLeidoDeUnEquipoNoSeEscribeEnOtro) {
  const std::pair<std::string_view, Propiedad> cambios[] = {{clave::kIdentificador, std::int64_t{71}},
                                                            {clave::kPuerto, std::int64_t{3}},
                                                            {clave::kPuerto, std::int64_t{1000}}};
  for (const auto& [nombre, valor] : cambios) {
    propiedades.Reponer({});
    propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{70}}, Propiedad{std::int64_t{0}});
    LeerDeLaUTR();
    propiedades.Escribir(nombre, valor, Propiedad{std::int64_t{-1}});
    comunicador.Falla("ConfiguracionAlmacenada", Error(8020, "driver", "La UTR no responde"), 1);
    EXPECT_TRUE(FallaDe([&] { lectura.Preparar(std::string(kFuenteUTR)); }));
    ventanas.Espera("frmParametrizacion", [](QDialog& d) {
      EXPECT_TRUE(dynamic_cast<frmParametrizacion&>(d).SoloLectura);
      EXPECT_THAT(U(Hallar<QLabel>(d, "lblOrigen").text()),
                  HasSubstr("de la UTR 70, como se leyeron antes; para grabar hay que volver a leerla"));
      Hallar<QAbstractButton>(d, "cmd(0)").click();
    });
    MostrarConfiguracion(flujo);
    EXPECT_EQ(comunicador.Cuantas("GrabarParametrizacion"), 0U);
  }
}

TEST_F(PruebaMostrarConfiguracion, UnaTablaSinUnaColumnaNoSeEscribe) {
  std::vector<const char*> campos;
  for (const ColumnaCanal& columna : kColumnasDeCanal) {
    if (columna.nombre != "AMax") campos.push_back(columna.nombre.data());
  }
  leida = TablaDeTextos(campos, {std::vector<const char*>(campos.size(), "1")});
  LeerDeLaUTR();
  operador.Espera("La operación solicitada no puede completarse\n[ La tabla de canales no tiene la columna AMax ]");
  MostrarConfiguracion(flujo);
  EsperarLista();  // to look at, it is shown
  MostrarConfiguracion(flujo, true);
}

TEST_F(PruebaMostrarConfiguracion, LoEscritoSeReleeYSeVerifica) {
  for (const bool configuracion : {true, false}) {
    LeerDeLaUTR();
    pasos.clear();
    Grabar(configuracion);
    operador.Espera(Dicho(kReleida, Icono::kInformacion));
    configuracion ? MostrarConfiguracion(flujo) : MostrarParametros(flujo);
    pasos.erase(pasos.begin());  // the question
    EXPECT_THAT(pasos, ElementsAre("estado: Aguarde...Releyendo configuración del equipo",
                                   configuracion ? "Pausa(5)" : "Pausa(7)", "ConfiguracionAlmacenada(si)",
                                   "dice: La configuración fue modificada con éxito",
                                   "estado: Releyendo configuración del equipo..."));
    EXPECT_EQ(verificacion, configuracion ? "102 valores escritos y verificados" : "68 valores escritos y verificados");
    EXPECT_TRUE(lectura.LeidaDeLaUTR());
    EXPECT_EQ(operador.ocupado, 0);
  }
}

TEST_F(PruebaMostrarConfiguracion, UnaRelecturaFallidaOVaciaDejaUnaTablaDeNadie) {
  struct Caso {
    const char* que;
    std::function<void()> falla;
  };
  for (const Caso& caso :
       {Caso{"raises", [this] { comunicador.Falla("ConfiguracionAlmacenada", Error(7, "driver", "muda"), 1); }},
        Caso{"null", [this] { comunicador.Devuelve("ConfiguracionAlmacenada", TablaPtr()); }},
        Caso{"no rows", [this] { comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({})); }}}) {
    comunicador.Devuelve("ConfiguracionAlmacenada", leida);
    LeerDeLaUTR();
    Grabar();
    operador.Espera(Dicho(kSinReleer, Icono::kExclamacion));
    comunicador.Devuelve("Pausa", true);
    comunicador.al_llamar = [&](const std::string& llamada) {
      if (llamada.starts_with("Pausa")) caso.falla();
    };
    MostrarConfiguracion(flujo);
    EXPECT_FALSE(lectura.ConfiguracionLeida()) << caso.que;
    EXPECT_EQ(verificacion, "") << caso.que;
  }
  EXPECT_THAT(Errores(), HasSubstr("\"muda\""));
}

TEST_F(PruebaMostrarConfiguracion, LoQueVuelveDistintoYLosPasosFallidosSeDicen) {
  LeerDeLaUTR();
  comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({kNivel, kApagado}));
  comunicador.Devuelve("GrabarParametrizacion", false);
  Grabar();
  operador.Espera(kReleida);
  operador.EsperaParte((carpeta / "Respaldos").string());
  MostrarConfiguracion(flujo);
  const Mensaje& aviso = operador.mensajes.back();
  EXPECT_EQ(aviso.icono, Icono::kExclamacion);
  EXPECT_EQ(aviso.titulo, "Principal");
  EXPECT_THAT(aviso.texto, HasSubstr(std::string(NombreDePaso(PasoEscritura::kParametrizacion))));
  EXPECT_THAT(aviso.texto, HasSubstr("ED1"));
  EXPECT_EQ(verificacion, "");
}

TEST_F(PruebaMostrarConfiguracion, UnaEscrituraCortadaNoSeReleeYLaTablaEsDeNadie) {
  verificacion = "102 valores escritos y verificados";
  for (const char* operacion : {"GrabarCanalesModificar", "GrabarParametrizacion"}) {
    LeerDeLaUTR();
    comunicador.Falla(operacion, Error(7, "driver", "muda"), 1);
    ventanas.Espera("frmParametrizacion", [](QDialog& d) {
      for (const char* boton : {"cmd(0)", "cmd(1)"}) Hallar<QAbstractButton>(d, boton).click();
    });
    operador.Espera(kEscribir, Respuesta::kSi);
    operador.EsperaParte("muda");
    MostrarConfiguracion(flujo);
    const bool empezada = std::string_view(operacion) == "GrabarParametrizacion";
    EXPECT_EQ(lectura.ConfiguracionLeida(), !empezada) << operacion;
    EXPECT_EQ(comunicador.Cuantas("Pausa"), 0U);
  }
  EXPECT_EQ(verificacion, "") << "what was verified before holds no more";
}

TEST_F(PruebaMostrarConfiguracion, UnRespaldoQueNoSeGuardaTrasLeerSeDiceEnLaBarra) {
  prueba::EscribirTodo(carpeta / "Respaldos", "en el camino");
  operador.Espera("No se ha leido la configuración de la RTU\n¿Desea leerla ahora?", Respuesta::kSi);
  flujo.OfrecerLectura();
  EXPECT_EQ(verificacion, "Sin respaldo de lo leído");
  std::filesystem::remove(carpeta / "Respaldos");
  EXPECT_TRUE(flujo.Releer());
  EXPECT_EQ(verificacion, "");
}

}  // namespace
}  // namespace utr
