#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Error.h"
#include "session/NumerosDePuerto.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/NumeroDeError.h"

namespace utr {
namespace {

using prueba::Carpeta;
using prueba::EscribirTodo;
using prueba::LeerTodo;
using prueba::NumeroDeError;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class NumerosDePuertoEnCarpeta : public testing::Test {
 protected:
  // The list of a run of its own: "number=name".
  std::vector<std::string> Corrida(const std::vector<std::string>& rutas) {
    NumerosDePuerto numeros(archivo);
    std::vector<std::string> textos;
    std::vector<Dispositivo> presentes;
    for (const std::string& ruta : rutas) presentes.push_back({ruta, "d"});
    for (const PuertoSerie& puerto : numeros.Repartir(simulados, presentes)) {
      textos.push_back(std::to_string(puerto.numero) + "=" + puerto.nombre);
    }
    aviso = numeros.Aviso();
    return textos;
  }

  Carpeta carpeta;
  std::filesystem::path archivo = carpeta / "Puertos.toml";
  std::vector<PuertoSerie> simulados{{1, "s1"}, {2, "s2"}, {3, "s3"}};
  std::string aviso;
};

}  // namespace

TEST_F(NumerosDePuertoEnCarpeta, CadaDispositivoGuardaSuNumero) {
  EXPECT_THAT(Corrida({}), ElementsAre("1=s1", "2=s2", "3=s3"));
  EXPECT_FALSE(std::filesystem::exists(archivo)) << "nothing is written without a device";
  EXPECT_THAT(Corrida({"/dev/ttyS10", "/dev/ttyS2"}),
              ElementsAre("1=s1", "2=s2", "3=s3", "4=d, /dev/ttyS2", "5=d, /dev/ttyS10"));
  EXPECT_THAT(Corrida({"/dev/ttyS1", "/dev/ttyS10"}),
              ElementsAre("1=s1", "2=s2", "3=s3", "5=d, /dev/ttyS10", "6=d, /dev/ttyS1"))
      << "the number of one that is gone stays its own";
  EXPECT_THAT(Corrida({"/a/COM9", "/a/COM1", "/a/COM7x", "/dev/ttyS2"}),
              ElementsAre("1=s1", "2=s2", "3=s3", "4=d, /dev/ttyS2", "7=d, /a/COM1", "8=d, /a/COM7x", "9=d, /a/COM9"));
  const NumerosDePuerto numeros(archivo);
  EXPECT_EQ(numeros.De(6), "/dev/ttyS1") << "also of one that isn't at hand";
  EXPECT_EQ(numeros.De(1), std::nullopt);
  EXPECT_TRUE(numeros.EsDeNadie(1));
  EXPECT_FALSE(numeros.EsDeNadie(6));
}

TEST_F(NumerosDePuertoEnCarpeta, UnNumeroDeDispositivoNuncaEsSimulado) {
  Corrida({"/dev/ttyUSB0"});
  simulados.push_back({4, "s4"});
  EXPECT_THAT(Corrida({}), ElementsAre("1=s1", "2=s2", "3=s3"));
  EXPECT_THAT(Corrida({"/dev/ttyUSB0"}), ElementsAre("1=s1", "2=s2", "3=s3", "4=d, /dev/ttyUSB0"));
}

// The name that it left may lead to a terminal that was given to somebody else.
TEST_F(NumerosDePuertoEnCarpeta, LaLineaDeUnaEstacionDetenidaNoSeAbre) {
  const std::string linea = (carpeta / "estacion" / "COM4").string();
  NumerosDePuerto numeros(archivo);
  const std::vector<Dispositivo> presentes{{linea, "d"}, {"/dev/ttyS0", "d"}};
  numeros.Repartir(simulados, presentes);
  EXPECT_EQ(numeros.Abrible(4), linea);
  std::filesystem::create_directory(carpeta / "estacion");
  EscribirTodo(carpeta / "estacion" / "Estacion.candado", "");
  EXPECT_EQ(numeros.De(4), linea) << "it keeps its number";
  EXPECT_EQ(numeros.Abrible(4), std::nullopt);
  EXPECT_EQ(numeros.Abrible(5), "/dev/ttyS0");
  EXPECT_EQ(numeros.Abrible(6), std::nullopt);
}

TEST_F(NumerosDePuertoEnCarpeta, DespuesDeDiezNoHayMas) {
  std::vector<std::string> rutas;
  for (int i = 0; i < 12; ++i) rutas.push_back("/dev/ttyS" + std::to_string(i));
  EXPECT_EQ(Corrida(rutas).size(), 10U);
  EXPECT_THAT(aviso, HasSubstr("/dev/ttyS11"));
  EXPECT_EQ(Corrida({"/dev/ttyS9"}).size(), 3U) << "nobody's number is given away";
}

TEST_F(NumerosDePuertoEnCarpeta, UnArchivoQueNoSeEntiendeSeRespeta) {
  const std::pair<const char*, const char*> casos[] = {
      {"[puertos", "línea 1"},
      {"[puertos]\n4 = 5\n", "'4'"},
      {"[puertos]\nx = \"a\"\n", "'x'"},
      {"[puertos]\n11 = \"a\"\n", "'11'"},
      {"[puertos]\n0 = \"a\"\n", "'0'"},
      {"[puertos]\n4 = \"\"\n", "'4'"},
      {"[puertos]\n4 = \"a\"\n5 = \"a\"\n", "dos números"},
      {"otra = 1\n", "'otra'"},
  };
  for (const auto& [texto, motivo] : casos) {
    EscribirTodo(archivo, texto);
    EXPECT_THAT(Corrida({"/dev/ttyS0"}), IsEmpty()) << texto;
    EXPECT_THAT(aviso, HasSubstr(motivo));
    EXPECT_EQ(LeerTodo(archivo), texto);
    const NumerosDePuerto numeros(archivo);
    EXPECT_FALSE(numeros.EsDeNadie(1)) << "it may have been a device's";
    EXPECT_EQ(NumeroDeError([&] { numeros.Abrible(1); }), error::kArchivo);
  }
}

TEST_F(NumerosDePuertoEnCarpeta, SinDondeGuardarRigeHastaElFinal) {
  const DispositivoLleno lleno(0);
  NumerosDePuerto numeros(archivo);
  const std::vector<Dispositivo> uno{{"/dev/ttyS0", "d"}};
  EXPECT_EQ(numeros.Repartir(simulados, uno).back().numero, 4);
  EXPECT_NE(numeros.Aviso(), "");
  EXPECT_EQ(numeros.De(4), "/dev/ttyS0");
}

TEST_F(NumerosDePuertoEnCarpeta, LasLineasDeUnaEstacionSonLasQueLlevanAUnDispositivo) {
  const auto enlazar = [&](const char* nombre, const char* adonde) {
    std::filesystem::create_symlink(adonde, carpeta / nombre);
  };
  enlazar("COM4", "/dev/null");
  enlazar("COM5", "/no/hay");
  enlazar("OTRO", "/dev/null");
  enlazar("COM11", "/dev/null");
  EscribirTodo(carpeta / "COM6", "");
  const auto lineas = LineasDeEstacion(carpeta.Ruta());
  ASSERT_EQ(lineas.size(), 1U);
  EXPECT_EQ(lineas[0].ruta, (carpeta / "COM4").string());
  EXPECT_TRUE(LineasDeEstacion(carpeta / "no_hay").empty());
  EscribirTodo(carpeta / "Estacion.candado", "");
  EXPECT_TRUE(LineasDeEstacion(carpeta.Ruta()).empty()) << "the station that laid them has ended";
  EXPECT_EQ(NombreDuradero("/dev/null", carpeta.Ruta()).rfind(carpeta.Ruta().string(), 0), 0U);
  EXPECT_EQ(NombreDuradero("/dev/zero", carpeta.Ruta()), "/dev/zero");
}

}  // namespace utr
