#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/Error.h"
#include "session/LibroEstaciones.h"
#include "session/SituacionDelEnlace.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/ModPrueba.h"
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

class LibroEnCarpeta : public testing::Test {
 protected:
  // The sentence with which a read ends; empty for one that goes well.
  static std::string Falla(LibroEstaciones& libro) {
    try {
      libro.Leer();
    } catch (const Error& falla) {
      EXPECT_EQ(falla.Numero(), error::kArchivo);
      return falla.Descripcion();
    }
    return {};
  }
  static std::vector<std::string> Nombres(const LibroEstaciones& libro) {
    std::vector<std::string> nombres;
    for (const Estacion& estacion : libro.Estaciones()) nombres.push_back(estacion.nombre);
    return nombres;
  }

  Carpeta carpeta;
  std::filesystem::path archivo = carpeta / "Estaciones.toml";
};

Estacion Completa() {
  return {.nombre = "Río Grande \"Alto\"",
          .lugar = "Puente, km 12",
          .identificador = 70,
          .medio = MedioEstacion::kTelefono,
          .puerto = 4,
          .velocidad = 1200,
          .telefono = "0299-491234",
          .comandos = "ATZ\\Q3",
          .direccion = "10.0.0.5",
          .puerto_ip = 4001,
          .notas = "Llave en la casilla.\nPerro."};
}

}  // namespace

TEST_F(LibroEnCarpeta, LoEscritoVuelveEntero) {
  LibroEstaciones libro(archivo);
  libro.Leer();
  EXPECT_THAT(libro.Estaciones(), IsEmpty());
  libro.Agregar(Completa());
  libro.Agregar({.nombre = "arroyo"});
  libro.Agregar({.nombre = "Ñandú", .medio = MedioEstacion::kIP, .direccion = "10.0.0.9"});
  libro.Agregar({.nombre = "Zanja", .medio = MedioEstacion::kSimulado, .puerto = 2});

  LibroEstaciones otro(archivo);
  otro.Leer();
  EXPECT_EQ(otro.Estaciones(), libro.Estaciones());
  ASSERT_NE(otro.Buscar("RÍO GRANDE \"ALTO\""), nullptr);
  EXPECT_EQ(*otro.Buscar("RÍO GRANDE \"ALTO\""), Completa());
  EXPECT_EQ(Nombres(otro).front(), "arroyo") << "in the order of names, without case";

  otro.Cambiar("ARROYO", {.nombre = "Arroyo Seco", .identificador = 9});
  otro.Borrar("zanja");
  libro.Leer();
  EXPECT_THAT(Nombres(libro), ElementsAre("Arroyo Seco", "Río Grande \"Alto\"", "Ñandú"));
}

TEST_F(LibroEnCarpeta, LoQueNoSeEntiendeDiceLaLineaYSeRespeta) {
  const std::string v = "version = 1\n";
  std::string honda;
  for (int i = 0; i < 200000; ++i) honda += "a.";
  const std::pair<std::string, const char*> casos[] = {
      {"\x01\x02 basura", "línea 1: no se entiende"},
      {v + "[[estacion]]\nnombre = \"a\n", "línea 3: no se entiende"},
      {v + "[[estacion]]\nnombre = \"\xff\"\n", "línea 3: no se entiende"},
      {"hola = 1\n", "no es un libro de estaciones"},
      {v + "\n" + honda + "b = 1\n", "línea 3: no se entiende"},
      {"version = 2\n", "línea 1: el libro es de otra versión (2)"},
      {v + "otra = 1\n", "línea 2: 'otra' está de más"},
      {v + "estacion = 5\n", "línea 2: 'estacion' debe ser una lista"},
      {v + "estacion = [5]\n", "línea 2: 'estacion' debe ser una lista"},
      {v + "[[estacion]]\nnombre = 5\n", "línea 3: 'nombre' debe ser un texto"},
      {v + "[[estacion]]\nnombre = \"a\"\npuerto = \"4\"\n", "línea 4: 'puerto' debe ser un número"},
      {v + "[[estacion]]\nnombre = \"a\"\npuerto = 4.5\n", "línea 4: 'puerto' debe ser un número"},
      {v + "[[estacion]]\nnombre = \"a\"\npuerto = 9000000000\n", "línea 4: 'puerto' debe ser un número"},
      {v + "[[estacion]]\nnombre = \"a\"\nenlace = \"usb\"\n", "línea 4: el enlace debe ser"},
      {v + "[[estacion]]\nnombre = \"a\"\nclave = \"x\"\n", "línea 4: 'clave' está de más"},
      {v + "\n[[estacion]]\npuerto = 4\n", "línea 3: Debe indicar un nombre"},
      {v + "[[estacion]]\nnombre = \"a\"\n[[estacion]]\nnombre = \"A\"\n", "línea 4: la estación 'A' está dos veces"},
  };
  for (const auto& [texto, motivo] : casos) {
    EscribirTodo(archivo, texto);
    LibroEstaciones libro(archivo);
    EXPECT_THAT(Falla(libro), HasSubstr(std::string("Estaciones.toml: ") + motivo)) << texto;
    EXPECT_EQ(NumeroDeError([&] { libro.Agregar({.nombre = "b"}); }), error::kArchivo) << texto;
    EXPECT_EQ(LeerTodo(archivo), texto);
  }
  std::filesystem::remove(archivo);
  std::filesystem::create_directory(archivo);
  LibroEstaciones libro(archivo);
  EXPECT_THAT(Falla(libro), HasSubstr("no se puede leer"));
}

TEST_F(LibroEnCarpeta, ReparosDeUnaEstacion) {
  const struct {
    void (*cambiar)(Estacion&);
    const char* reparo;  // empty: none
  } casos[] = {
      {[](Estacion&) {}, ""},
      {[](Estacion& e) { e.nombre = "  "; }, "Debe indicar un nombre"},
      {[](Estacion& e) { e.nombre = "a\nb"; }, "El nombre debe caber"},
      {[](Estacion& e) { e.lugar = "\xff"; }, "El lugar debe caber"},
      {[](Estacion& e) { e.identificador = 65535; }, ""},
      {[](Estacion& e) { e.identificador = 65536; }, "El identificador"},
      {[](Estacion& e) { e.identificador = -1; }, "El identificador"},
      {[](Estacion& e) { e.puerto = 11; }, "entre 1 y 10"},
      {[](Estacion& e) { e.puerto = 0; }, "entre 1 y 10"},
      {[](Estacion& e) { e.velocidad = 9601; }, "La velocidad"},
      {[](Estacion& e) { e.telefono = " "; }, "número de teléfono"},
      {[](Estacion& e) { e.comandos = "AT\n"; }, "Los comandos"},
      {[](Estacion& e) { e = {.nombre = "a", .medio = MedioEstacion::kIP, .direccion = "1.2.3"}; }, "IP inválida"},
      {[](Estacion& e) { e = {.nombre = "a", .medio = MedioEstacion::kIP, .direccion = "1.2.3.4", .puerto_ip = 10}; },
       "entre 11 y 65535"},
      {[](Estacion& e) { e = {.nombre = "a", .medio = MedioEstacion::kIP, .puerto = 0, .direccion = "1.2.3.4"}; }, ""},
  };
  for (const auto& caso : casos) {
    Estacion estacion = Completa();
    caso.cambiar(estacion);
    const auto reparos = ReparosDe(estacion);
    if (*caso.reparo == '\0') {
      EXPECT_THAT(reparos, IsEmpty());
    } else {
      ASSERT_EQ(reparos.size(), 1U) << caso.reparo;
      EXPECT_THAT(reparos[0].texto, HasSubstr(caso.reparo));
    }
  }
}

TEST_F(LibroEnCarpeta, CadaMedioLlenaSusCamposDeLaConexion) {
  Estacion estacion = Completa();
  EXPECT_EQ(TextoEnlaceDe(estacion), "Teléfono 0299-491234 por COM 4, 1200 bps");
  EntradaEnlace entrada = EntradaDe(estacion);
  EXPECT_TRUE(!entrada.por_ip && entrada.telefono);
  EXPECT_EQ(entrada.puerto, 4);
  EXPECT_EQ(entrada.velocidad, 1200);
  EXPECT_EQ(entrada.numero_telefono, "0299-491234");
  EXPECT_EQ(entrada.comandos, "ATZ\\Q3");
  EXPECT_EQ(entrada.identificador, "70");

  estacion.medio = MedioEstacion::kIP;
  EXPECT_EQ(TextoEnlaceDe(estacion), "10.0.0.5, puerto 4001");
  entrada = EntradaDe(estacion);
  EXPECT_TRUE(entrada.por_ip && !entrada.telefono);
  EXPECT_EQ(entrada.direccion, "10.0.0.5");
  EXPECT_EQ(entrada.puerto_ip, "4001");

  estacion.medio = MedioEstacion::kSerie;
  EXPECT_EQ(TextoEnlaceDe(estacion), "COM 4, 1200 bps");
  entrada = EntradaDe(estacion);
  EXPECT_TRUE(!entrada.por_ip && !entrada.telefono && entrada.numero_telefono.empty());
  estacion.medio = MedioEstacion::kSimulado;
  EXPECT_EQ(TextoEnlaceDe(estacion), "COM 4 (simulado)");
}

TEST_F(LibroEnCarpeta, UnCambioQueNoSePuedeGuardarNoOcurre) {
  LibroEstaciones libro(archivo);
  libro.Leer();
  libro.Agregar({.nombre = "Uno"});
  const std::string antes = LeerTodo(archivo);
  EXPECT_EQ(NumeroDeError([&] { libro.Agregar({.nombre = "UNO"}); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { libro.Agregar({.nombre = ""}); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { libro.Cambiar("Dos", {.nombre = "Dos"}); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { libro.Borrar("Dos"); }), error::kLlamada);
  {
    const DispositivoLleno lleno(20);
    EXPECT_EQ(NumeroDeError([&] { libro.Agregar({.nombre = "Dos"}); }), error::kArchivo);
  }
  EXPECT_THAT(Nombres(libro), ElementsAre("Uno"));
  EXPECT_EQ(LeerTodo(archivo), antes);
  EXPECT_EQ(carpeta.Cuantos(), 1U);

  EscribirTodo(archivo, antes + "[[estacion]]\nnombre = \"De otro\"\n");
  EXPECT_EQ(NumeroDeError([&] { libro.Borrar("Uno"); }), error::kArchivo) << "somebody else's line would be lost";
  libro.Leer();
  libro.Borrar("Uno");
  EXPECT_THAT(Nombres(libro), ElementsAre("De otro"));
}

TEST_F(LibroEnCarpeta, ImportarYExportar) {
  LibroEstaciones otro(carpeta / "otro.toml");
  otro.Leer();
  otro.Agregar({.nombre = "uno", .identificador = 5});
  otro.Agregar({.nombre = "Dos"});
  otro.Agregar({.nombre = "Tres"});
  LibroEstaciones libro(archivo);
  libro.Leer();
  libro.Agregar({.nombre = "Uno", .identificador = 1});
  libro.Agregar({.nombre = "Dos"});

  const std::string antes = LeerTodo(archivo);
  const ResultadoImportacion previsto = libro.Previsto(otro.Archivo());
  EXPECT_EQ(std::tuple(previsto.nuevas, previsto.reemplazadas, previsto.iguales), std::tuple(1U, 1U, 1U));
  EXPECT_EQ(LeerTodo(archivo), antes);
  EXPECT_EQ(libro.Importar(otro.Archivo(), false).dejadas, 1U);
  EXPECT_EQ(libro.Buscar("uno")->identificador, 1);
  EXPECT_EQ(libro.Importar(otro.Archivo(), true).reemplazadas, 1U);
  EXPECT_EQ(libro.Buscar("uno")->identificador, 5);
  EXPECT_EQ(libro.Estaciones(), otro.Estaciones());

  EscribirTodo(carpeta / "mala.toml", "version = 1\n[[estacion]]\nnombre = \"Cuatro\"\n[[estacion]]\n");
  for (const char* cual : {"mala.toml", "no_esta.toml"})
    EXPECT_EQ(NumeroDeError([&] { libro.Importar(carpeta / cual, true); }), error::kArchivo) << cual;
  EXPECT_EQ(libro.Buscar("Cuatro"), nullptr) << "all or none";

  libro.Exportar(carpeta / "salida.toml");
  LibroEstaciones copia(carpeta / "salida.toml");
  copia.Leer();
  EXPECT_EQ(copia.Estaciones(), libro.Estaciones());
}

// What paper says of where it comes from.
TEST(LaEstacionAMano, LlevaSuNombreDelLibroDondeNoHayDuda) {
  prueba::ModPrueba base;
  const auto con = [&](std::int64_t identificador) {
    base.propiedades.Escribir(clave::kIdentificador, Propiedad{identificador}, Propiedad{std::int64_t{0}});
    return base.mod.EstacionAMano();
  };
  EXPECT_EQ(con(70), "UTR 70") << "without a book";
  LibroEstaciones libro(base.carpeta / LibroEstaciones::kArchivo);
  libro.Leer();
  libro.Agregar({.nombre = "Arroyo Seco", .identificador = 70});
  libro.Agregar({.nombre = "Sin número"});
  libro.Agregar({.nombre = "Una", .identificador = 8});
  libro.Agregar({.nombre = "Otra", .identificador = 8});
  EXPECT_EQ(con(70), "Estación Arroyo Seco, UTR 70");
  EXPECT_EQ(con(8), "UTR 8") << "two are called so";
  EXPECT_EQ(con(9), "UTR 9");
  EXPECT_EQ(con(0), "UTR sin identificador");

  SituacionDelEnlace situacion;
  base.mod.situacion = &situacion;
  for (const auto& [clase, dice] : {std::pair{ClaseDeUnidad::kReal, "Estación Arroyo Seco, UTR 70"},
                                    {ClaseDeUnidad::kDePractica, "Estación Arroyo Seco, UTR 70 de práctica"},
                                    {ClaseDeUnidad::kDesconocida, "Estación Arroyo Seco, UTR 70 de práctica"},
                                    {ClaseDeUnidad::kReal, "Estación Arroyo Seco, UTR 70"},
                                    {ClaseDeUnidad::kSimulada, "Estación Arroyo Seco, UTR 70 de práctica"}}) {
    situacion.PonerClase(clase);
    EXPECT_EQ(con(70), dice);
  }
  EscribirTodo(libro.Archivo(), "esto no es un libro");
  EXPECT_EQ(con(70), "UTR 70 de práctica");
  EXPECT_EQ(con(0), "UTR sin identificador, de práctica");
}

}  // namespace utr
