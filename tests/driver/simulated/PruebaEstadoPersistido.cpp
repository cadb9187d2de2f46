#include <gtest/gtest.h>

#include <functional>

#include "base/Error.h"
#include "driver/BancoSimulado.h"
#include "driver/simulated/unit/EstadoPersistido.h"
#include "support/DispositivoLleno.h"
#include "support/NumeroDeError.h"

namespace utr::simulada {
namespace {

using prueba::BancoSimulado;
using prueba::EscribirTodo;
using prueba::LeerTodo;

TEST(EstadoPersistido, GuardaElMismoArchivoQueLeyo) {
  prueba::Carpeta carpeta;
  EstadoPersistido estado;
  estado.estacion.RehacerHistoria(Segundos({2026, 3, 15, 10, 0, 0}));
  estado.estacion.EscribirPagina(77, {1, 2, 3});
  estado.aplicado = {{"equipo.velocidad", "9600"}, {"vacía", ""}};
  GuardarEstado(carpeta / "a", estado);
  EstadoPersistido otro;
  CargarEstado(carpeta / "a", otro);
  GuardarEstado(carpeta / "b", otro);
  EXPECT_EQ(LeerTodo(carpeta / "a"), LeerTodo(carpeta / "b"));
  EXPECT_EQ(carpeta.Cuantos(), 2U) << "no temporary file stays";
}

TEST(EstadoPersistido, CualquierDanioSeNota) {
  prueba::Carpeta carpeta;
  EstadoPersistido estado;
  estado.estacion.AnotarSuceso(Segundos({2026, 3, 15, 10, 0, 0}), 1);
  GuardarEstado(carpeta / "bueno", estado);
  const std::string bueno = LeerTodo(carpeta / "bueno");
  const auto falla = [&](const std::string& contenido) {
    EscribirTodo(carpeta / "malo", contenido);
    EstadoPersistido leido;
    const std::int32_t numero = prueba::NumeroDeError([&] { CargarEstado(carpeta / "malo", leido); });
    EXPECT_TRUE(numero == 0 || numero == error::kArchivo) << numero;
    return numero != 0;
  };
  EXPECT_FALSE(falla(bueno));
  EXPECT_TRUE(falla(""));
  for (std::size_t largo = 0; largo < bueno.size(); largo += 397) EXPECT_TRUE(falla(bueno.substr(0, largo))) << largo;
  for (std::size_t lugar = 0; lugar < bueno.size(); lugar += 401) {
    std::string malo = bueno;
    malo[lugar] = static_cast<char>(malo[lugar] ^ 4);
    EXPECT_TRUE(falla(malo)) << lugar;
  }
  EXPECT_TRUE(falla(bueno + "x"));
}

TEST(EstadoPersistido, LoQueLaUnidadTomaSePuedeLeerOtraVez) {
  const prueba::Carpeta carpeta;
  EstadoPersistido estado;
  estado.estacion.canales.Poner(1, "Descripcion", std::string(2 << 20, 'x'));
  for (int numero = 0; numero <= 65535; ++numero) estado.estacion.EscribirPagina(numero, {1});
  for (int i = 0; i < 70000; ++i) estado.aplicado["paginas." + std::to_string(i)] = "1";
  estado.escenario = std::string(3 << 20, '#');
  GuardarEstado(carpeta / "a", estado);
  EstadoPersistido otro;
  ASSERT_TRUE(CargarEstado(carpeta / "a", otro));
  EXPECT_EQ(otro.estacion.canales.Texto(1, "Descripcion"), estado.estacion.canales.Texto(1, "Descripcion"));
  EXPECT_EQ(otro.estacion.paginas, estado.estacion.paginas);
  EXPECT_EQ(otro.aplicado, estado.aplicado);
  EXPECT_EQ(otro.escenario, estado.escenario);
  EXPECT_FALSE(CargarEstado(carpeta / "no hay", otro));
}

TEST(EstadoPersistido, UnoQueNoSeEntiendeQuedaAparteYSeDice) {
  RelojFalso reloj;
  const prueba::Carpeta carpeta;
  const std::pair<std::string, const char*> casos[] = {{"basura", "no se reconoce"},
                                                       {"", "no se reconoce"},
                                                       {"UTRSIM01 y lo que sigue", "es de otra versión"},
                                                       {"UTRSIM02 y lo que sigue", "está dañado"}};
  int apartados = 0;
  for (const auto& [contenido, motivo] : casos) {
    EscribirTodo(carpeta / "UTRSimulada.estado", contenido);
    ComunicadorSimulado driver(carpeta.Ruta(), reloj, {});
    const std::string nombre = "UTRSimulada.estado.apartado-" + std::to_string(++apartados);
    EXPECT_EQ(driver.Aviso(), "La estación comienza de nuevo; ver " + nombre);
    EXPECT_EQ(LeerTodo(carpeta / nombre), contenido);
    const std::string linea = "el archivo de estado " + std::string(motivo) + " y quedó aparte, como " + nombre;
    EXPECT_NE(LeerTodo(carpeta / "Comunicador.log").find(linea), std::string::npos);
    driver.Conectar("9600,n,8,1", "1");
    EXPECT_TRUE(driver.EscribirPagina("34", "1,1,1"));
  }
  const ComunicadorSimulado otra_corrida(carpeta.Ruta(), reloj, {});
  EXPECT_EQ(otra_corrida.Aviso(), "");
}

TEST(EstadoPersistido, EnUnaCarpetaQueNoHaySeLeeYNoSeGraba) {
  RelojFalso reloj;
  ComunicadorSimulado driver("/no/hay/tal/carpeta", reloj, {});
  EXPECT_NE(driver.Aviso().find("no se puede guardar"), std::string::npos);
  driver.Conectar("9600,n,8,1", "1");
  EXPECT_NE(driver.LeerFechaHora(), "");
  EXPECT_FALSE(driver.EscribirPagina("34", "1,1,1"));
  EXPECT_EQ(driver.LeerPagina("34", false), "0,0,0");
  driver.EscribirLog("nada");
}

// With a disk that is full an order is answered by no, and the unit is what it was, now and in the next run.
TEST(EstadoPersistido, UnaOrdenQueNoSePudoGuardarNoSeHizo) {
  const struct {
    const char* operacion;
    std::function<bool(Comunicador&)> ordenar;
  } casos[] = {
      {"EscribirPagina", [](Comunicador& c) { return c.EscribirPagina("34", "1,1,1"); }},
      {"BorrarFlash", [](Comunicador& c) { return c.BorrarFlash(); }},
      {"GrabarFechaHora", [](Comunicador& c) { return c.GrabarFechaHora(); }},
      {"GrabarEstado", [](Comunicador& c) { return c.GrabarEstado("16/0"); }},
      {"GrabarSalidaDigital", [](Comunicador& c) { return c.GrabarSalidaDigital(1, true); }},
      {"GrabarPilaCanal", [](Comunicador& c) { return c.GrabarPilaCanal("7", "4$1"); }},
      {"ReiniciarUTR", [](Comunicador& c) { return c.ReiniciarUTR("14"); }},
  };
  for (const auto& caso : casos) {
    BancoSimulado banco;
    banco.Desfasar(-90);
    const auto leer = [&banco] {
      banco.Conectar();
      Comunicador& c = banco.Driver();
      std::string todo = c.LeerPagina("34", false) + c.LeerFechaHora() + std::to_string(c.LeerEstado()) +
                         c.LeerInstantaneos()->Filas().Texto(36, 0) + std::to_string(c.EstadoEnlace());
      for (const TablaPtr t = c.ConfiguracionAlmacenada(true); !t->Eof(); t->MoveNext()) todo += t->Texto("Pila");
      return todo + std::to_string(c.LeerEventos("", "")->RecordCount());
    };
    const std::string antes = leer();
    {
      const DispositivoLleno lleno(1000);
      EXPECT_FALSE(caso.ordenar(banco.Driver())) << caso.operacion;
    }
    EXPECT_EQ(leer(), antes) << caso.operacion;
    banco.Reiniciar();
    EXPECT_EQ(leer(), antes) << caso.operacion;
    EXPECT_TRUE(caso.ordenar(banco.Driver())) << caso.operacion;
  }
}

TEST(EstadoPersistido, LasSemanasSinProgramaTambienSeRegistran) {
  BancoSimulado banco;
  banco.Pasar(20 * 86400.0);
  banco.Reiniciar();
  banco.Conectar();
  const std::string hace_diez = TextoFecha(FechaDeDias(DiasDesde1970(banco.Ahora()) - 10));
  EXPECT_GT(banco.Driver().LeerDatos(hace_diez, hace_diez, 3)->RecordCount(), 100U);
}

}  // namespace
}  // namespace utr::simulada
