#include <gtest/gtest.h>

#include "operations/SalidasDigitales.h"
#include "support/ComunicadorFalso.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"

namespace utr {
namespace {

// A frame of present values with these texts in the places of the three outputs.
TablaPtr Trama(const char* sd1, const char* sd2, const char* sd3) {
  std::vector<Celdas> filas(35, Celdas{"7"});
  for (const char* valor : {sd1, sd2, sd3}) filas.push_back({valor});
  return TablaDeTextos({"Valor"}, filas);
}

TEST(SalidasDigitales, CadaEstadoSaleDeSuCanalYElDeSD1Invertido) {
  const struct {
    TablaPtr lectura;
    std::array<std::string_view, 3> textos;
  } kCasos[] = {{Trama("0", "0", "0"), {kEncendido, kApagado, kApagado}},
                {Trama("1", "1", "0"), {kApagado, kEncendido, kApagado}},
                {Trama("-1", "0", "4096"), {kApagado, kApagado, kEncendido}}};
  for (const auto& caso : kCasos) {
    ComunicadorFalso comunicador;
    comunicador.Devuelve("LeerInstantaneos", caso.lectura);
    const EstadoSalidas estado = ObtenerEstadoSalidasDig(comunicador);
    for (std::size_t salida = 0; salida < 3; ++salida) {
      EXPECT_EQ(TextoDeSalida(salida, estado[salida]), caso.textos[salida]) << salida;
    }
    EXPECT_EQ(comunicador.Cuantas("LeerInstantaneos"), 1U);
  }
}

TEST(SalidasDigitales, SinTablaSinFilasYConTextosHayError) {
  const struct {
    TablaPtr lectura;
    std::int32_t numero;
  } kCasos[] = {{nullptr, error::kSinRespuesta},
                {TablaDeTextos({"Valor"}), error::kSubindice},
                {TablaDeTextos({"Valor"}, {{"1"}, {"2"}}), error::kSubindice},
                {TablaDeTextos({"Otro"}, {{"1"}}), error::kCampo},
                {Trama("0", "x", "0"), error::kTipos}};
  for (const auto& caso : kCasos) {
    ComunicadorFalso comunicador;
    comunicador.Devuelve("LeerInstantaneos", caso.lectura);
    EXPECT_EQ(prueba::NumeroDeError([&] { ObtenerEstadoSalidasDig(comunicador); }), caso.numero);
  }
}

TEST(SalidasDigitales, LoQueNoSeConmutaQuedaSinRespuesta) {
  ComunicadorFalso comunicador;
  EXPECT_EQ(ConmutarSalida(comunicador, 1, true), kEncendido);
  EXPECT_EQ(ConmutarSalida(comunicador, 2, false), kApagado);
  EXPECT_EQ(comunicador.llamadas, (std::vector<std::string>{"GrabarSalidaDigital(1,si)", "GrabarSalidaDigital(2,no)"}));
  comunicador.Devuelve("GrabarSalidaDigital", false);
  EXPECT_EQ(ConmutarSalida(comunicador, 1, false), kSinRespuesta);
  comunicador.Falla("GrabarSalidaDigital", Error(8020, "driver", "sin respuesta"));
  EXPECT_EQ(ConmutarSalida(comunicador, 2, true), kSinRespuesta);
}

}  // namespace
}  // namespace utr
