#include <gtest/gtest.h>

#include "base/Error.h"
#include "driver/BancoSimulado.h"
#include "driver/simulated/EstadoPersistido.h"

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
    try {
      CargarEstado(carpeta / "malo", leido);
      return false;
    } catch (const Error& error) {
      return error.Numero() == error::kArchivo;
    }
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

TEST(EstadoPersistido, DaniadoComienzaDeNuevoYLoDice) {
  RelojFalso reloj;
  const prueba::Carpeta carpeta;
  EscribirTodo(carpeta / "UTRSimulada.estado", "basura");
  ComunicadorSimulado driver(carpeta.Ruta(), reloj, {});
  driver.Conectar("9600,n,8,1", "1");
  EXPECT_EQ(driver.LeerPagina("34", false), "0,0,0");
  EXPECT_NE(LeerTodo(carpeta / "Comunicador.log").find("el archivo de estado no se reconoce"), std::string::npos);
}

TEST(EstadoPersistido, EnUnaCarpetaQueNoHayTodoAndaIgual) {
  RelojFalso reloj;
  ComunicadorSimulado driver("/no/hay/tal/carpeta", reloj, {});
  driver.Conectar("9600,n,8,1", "1");
  EXPECT_NE(driver.LeerFechaHora(), "");
  EXPECT_TRUE(driver.EscribirPagina("34", "1,1,1"));
  EXPECT_EQ(driver.LeerPagina("34", false), "1,1,1");
  driver.EscribirLog("nada");
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
