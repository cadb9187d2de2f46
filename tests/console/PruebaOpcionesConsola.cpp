#include <gtest/gtest.h>

#include <cerrno>

#include "base/Error.h"
#include "base/Texto.h"
#include "console/Codigos.h"
#include "console/Opciones.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::consola {
namespace {

const FechaHora kHoy{2026, 3, 15, 10, 30, 0};

Opciones Leer(std::string_view linea) {
  const std::vector<std::string_view> argumentos = Separar(linea, ' ');
  return LeerOpciones(argumentos, kHoy);
}

std::string Motivo(std::string_view linea) {
  try {
    Leer(linea);
  } catch (const Error& falla) {
    EXPECT_EQ(falla.Numero(), error::kLlamada);
    return falla.Descripcion();
  }
  return "";
}

std::string Periodo(std::string_view linea) {
  const Opciones opciones = Leer(linea);
  return TextoFechaHora(opciones.desde) + " - " + TextoFechaHora(opciones.hasta);
}

TEST(OpcionesConsola, LasFechasSeEntiendenYLosDosExtremosEntran) {
  const struct {
    const char* linea;
    const char* periodo;
  } kCasos[] = {
      {"leer-datos --simulada", "15/03/2026 00:00:00 - 15/03/2026 23:59:59"},
      {"leer-datos --simulada --desde ayer --hasta ayer", "14/03/2026 00:00:00 - 14/03/2026 23:59:59"},
      {"leer-datos --simulada --desde=hoy-15 --hasta=2026-03-01", "28/02/2026 00:00:00 - 01/03/2026 23:59:59"},
      {"leer-datos --simulada --desde 1/2/2005", "01/02/2005 00:00:00 - 15/03/2026 23:59:59"},
      {"leer-eventos --simulada --desde 2026-03-14T08:30 --hasta 14/03/2026T09:00:05",
       "14/03/2026 08:30:00 - 14/03/2026 09:00:05"},
      {"leer-eventos --simulada --hasta hoy", "15/03/2026 00:00:00 - 15/03/2026 23:59:59"},
  };
  for (const auto& caso : kCasos) EXPECT_EQ(Periodo(caso.linea), caso.periodo) << caso.linea;
}

TEST(OpcionesConsola, ElEnlaceSeArma) {
  const Opciones serie = Leer("instantaneos --puerto com4 --velocidad 1200 --telefono 4912345 --identificador 70");
  EXPECT_EQ(serie.enlace.entrada.puerto, 4);
  EXPECT_EQ(serie.enlace.entrada.velocidad, 1200);
  EXPECT_TRUE(serie.enlace.entrada.telefono);
  EXPECT_EQ(serie.enlace.entrada.numero_telefono, "4912345");
  EXPECT_EQ(serie.enlace.entrada.identificador, "70");
  EXPECT_EQ(Leer("instantaneos --puerto /dev/ttyUSB0").enlace.dispositivo, "/dev/ttyUSB0");
  const Opciones ip = Leer("instantaneos --ip 10.0.0.5:1502");
  EXPECT_TRUE(ip.enlace.entrada.por_ip);
  EXPECT_EQ(ip.enlace.entrada.direccion, "10.0.0.5");
  EXPECT_EQ(ip.enlace.entrada.puerto_ip, "1502");
  EXPECT_EQ(Leer("instantaneos --ip 10.0.0.5").enlace.entrada.puerto_ip, "1000");
}

TEST(OpcionesConsola, SinEleccionSeVuelcaTodoYConEllaLoElegido) {
  const SeleccionFlash todo = Leer("volcar --simulada").seleccion;
  EXPECT_TRUE(todo.datos && todo.todas_las_pilas && todo.cola && todo.eventos);
  const SeleccionFlash parte = Leer("volcar --simulada --pilas 0,8 --eventos").seleccion;
  for (const std::size_t grupo : {0U, 8U, 10U}) EXPECT_TRUE(parte.Elige(grupo)) << grupo;
  for (const std::size_t grupo : {1U, 7U, 9U}) EXPECT_FALSE(parte.Elige(grupo)) << grupo;
  const SeleccionFlash cola = Leer("volcar --simulada --cola").seleccion;
  EXPECT_EQ(cola.PrimeraPista(), 27);
}

TEST(OpcionesConsola, ElFormatoEsElDichoOElDelArchivo) {
  EXPECT_EQ(Leer("leer-datos --simulada").destino.formato, Formato::kCsv);
  EXPECT_EQ(Leer("leer-datos --simulada --archivo a.XML").destino.formato, Formato::kXml);
  EXPECT_EQ(Leer("leer-datos --simulada --archivo a.xml --salida txt").destino.formato, Formato::kTxt);
  EXPECT_EQ(Leer("leer-datos --simulada --archivo datos").destino.formato, Formato::kCsv);
  EXPECT_EQ(Leer("configuracion --simulada --archivo a.UCG").destino.formato, Formato::kXml);
  const Opciones planilla = Leer("ver-tabla a.xml --separador ; --decimal , --marca");
  EXPECT_EQ(planilla.destino.csv.separador, ';');
  EXPECT_EQ(planilla.destino.csv.decimal, ',');
  EXPECT_TRUE(planilla.destino.csv.marca);
  EXPECT_EQ(Leer("ver-tabla a.xml --separador tab").destino.csv.separador, '\t');
}

TEST(OpcionesConsola, LosCanalesSeNombranOSeNumeran) {
  EXPECT_EQ(Leer("leer-datos --simulada --canal ea01,15,PLV,22").canales, (std::vector<std::int16_t>{1, 15, 22}));
}

TEST(OpcionesConsola, LoQueNoPuedeSerSeDice) {
  const struct {
    const char* linea;
    const char* dice;
  } kCasos[] = {
      {"", "No conoce el comando"},
      {"leer", "No conoce el comando \"leer\""},
      {"borrar --simulada", "No conoce el comando \"borrar\""},
      {"leer-datos", "Falta cómo se llega a la estación"},
      {"leer-datos --simulada --nada", "No conoce la opción \"--nada\""},
      {"leer-datos --simulada --pilas 1", "leer-datos no lleva la opción --pilas"},
      {"leer-datos --simulada de-mas", "\"de-mas\" está de más"},
      {"leer-datos --simulada -", "\"-\" está de más"},
      {"leer-datos --simulada --simulada", "--simulada está dos veces"},
      {"leer-datos --simulada=si", "--simulada no lleva valor"},
      {"leer-datos --puerto", "Falta el valor de --puerto"},
      {"leer-datos --puerto=", "Falta el valor de --puerto"},
      {"leer-datos --puerto COM0", "COM1 a COM10"},
      {"leer-datos --puerto COM11", "COM1 a COM10"},
      {"leer-datos --puerto LPT1", "COM1 a COM10"},
      {"leer-datos --puerto 1 --velocidad 9601", "--velocidad quiere"},
      {"leer-datos --puerto 1 --velocidad 38400", "--velocidad quiere"},
      {"leer-datos --ip estacion:1000", "--ip quiere DIRECCIÓN:PUERTO"},
      {"leer-datos --ip 10.0.0.5:0", "--ip quiere un número de 1 a 65535"},
      {"leer-datos --ip 10.0.0.5:65536", "--ip quiere un número"},
      {"leer-datos --ip 10.0.0.5 --puerto 1", "--ip no va con --puerto"},
      {"leer-datos --simulada --identificador 65536", "--identificador quiere un número de 0 a 65535"},
      {"leer-datos --simulada --identificador -1", "--identificador quiere un número"},
      {"leer-datos --estacion A --puerto 1", "--estacion ya dice cómo se llega"},
      {"leer-datos --estacion A --identificador 7", "--estacion ya dice cómo se llega"},
      {"leer-datos --estacion A --ip 10.0.0.5", "--estacion ya dice cómo se llega"},
      {"leer-datos --estacion A --simulada", "--estacion ya dice cómo se llega"},
      {"leer-datos --estacion A --comandos ATZ", "--estacion ya dice cómo se llega"},
      {"leer-datos --libro a.toml --simulada", "--libro va con --estacion"},
      {"leer-datos --simulada --puerto /dev/ttyS0", "--simulada no va con un dispositivo"},
      {"leer-datos --puerto 1 --comandos ATZ", "--comandos va con --telefono"},
      {"leer-datos --simulada --desde mañana", "--desde quiere una fecha"},
      {"leer-datos --simulada --desde 30/02/2026", "--desde quiere una fecha"},
      {"leer-datos --simulada --desde 02/13/2026", "--desde quiere una fecha"},
      {"leer-eventos --simulada --hasta 02/13/2026T10:30", "--hasta quiere una fecha"},
      {"leer-datos --simulada --desde 2099-01-01", "Falta --hasta"},
      {"leer-datos --simulada --archivo a.ucg", "leer-datos no guarda ninguna"},
      {"configuracion --simulada --archivo a.icf --salida csv", "sólo se la vuelve a abrir si está en xml"},
      {"leer-datos --simulada --desde 10:30", "--desde quiere una fecha"},
      {"leer-datos --simulada --desde hoy-", "--desde quiere un número"},
      {"leer-datos --simulada --desde 2026-03-15T10:30", "leer-datos lee días enteros"},
      {"leer-datos --simulada --desde hoy --hasta ayer", "--hasta es anterior a --desde"},
      {"leer-datos --simulada --hasta ayer", "Falta --desde: sin ella se lee desde hoy"},
      {"leer-datos --simulada --canal EA99", "--canal no conoce el canal \"EA99\""},
      {"leer-datos --simulada --canal 27", "--canal no conoce el canal \"27\""},
      {"leer-datos --simulada --salida pdf", "--salida quiere csv, xml o txt"},
      {"leer-datos --simulada --salida xml --decimal ,", "van con --salida csv"},
      {"leer-datos --simulada --decimal x", "--decimal quiere un punto o una coma"},
      {"leer-datos --simulada --separador ab", "--separador quiere un solo signo"},
      {"leer-datos --simulada --separador 5", "--separador quiere un solo signo"},
      {"leer-eventos --simulada --pendientes --desde ayer", "--pendientes no va con fechas"},
      {"leer-eventos --simulada --pendientes --cartucho", "--pendientes no va con fechas"},
      {"volcar --simulada --pilas 9", "--pilas quiere un número de 0 a 8"},
      {"volcar --simulada --continuar", "--continuar quiere en --archivo"},
      {"volcar --simulada --archivo -", "volcar necesita un archivo de disco"},
      {"volcar --simulada --salida csv", "volcar no lleva la opción --salida"},
      {"recuperar", "Falta el archivo"},
      {"ver-tabla", "Falta el archivo"},
      {"ver-tabla a.xml b.xml", "\"b.xml\" está de más"},
      {"ver-tabla a.xml --simulada", "ver-tabla no lleva la opción --simulada"},
  };
  for (const auto& caso : kCasos) {
    const std::string motivo = Motivo(caso.linea);
    EXPECT_TRUE(motivo.starts_with(caso.dice) || motivo.find(caso.dice) != motivo.npos) << caso.linea << ": " << motivo;
  }
}

TEST(OpcionesConsola, CadaFallaTieneSuCodigo) {
  const auto codigo = [](std::int32_t numero, Fase fase) { return CodigoDe(Error(numero, "", "x"), fase); };
  EXPECT_EQ(codigo(error::kPuertoEnUso, Fase::kConversacion), Codigo::kEnlace);
  EXPECT_EQ(codigo(error_enlace::kLineaPerdida, Fase::kConversacion), Codigo::kEnlace);
  EXPECT_EQ(codigo(error::kSinRespuesta, Fase::kConversacion), Codigo::kSinRespuesta);
  EXPECT_EQ(codigo(error::kSinRespuesta, Fase::kEnlace), Codigo::kEnlace);
  EXPECT_EQ(codigo(error::kArchivo, Fase::kEnlace), Codigo::kArchivo);
  EXPECT_EQ(codigo(error::kLlamada, Fase::kArchivos), Codigo::kArgumentos);
  EXPECT_EQ(codigo(error::kLlamada, Fase::kConversacion), Codigo::kSinRespuesta);
  EXPECT_EQ(EnUnRenglon(Error(error::kArchivo, "", "No se puede\r\nescribir", ENOSPC)),
            "No se puede. escribir: no queda lugar en el disco");
}

}  // namespace
}  // namespace utr::consola
