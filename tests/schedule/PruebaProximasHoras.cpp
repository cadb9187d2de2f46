#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "schedule/ProximasHoras.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr int kDiez = 600;  // 10:00

// Minutes of entries by window; a negative one is obligatory alone.
FDLHorarios AgendaDe(const std::vector<int>& minutos) {
  FDLHorarios agenda;
  std::int16_t clave = 2000;  // so that two may show one time
  for (const int minuto : minutos) {
    const FDLHoraroPtr horario = agenda.Add(clave++);
    horario->Horario = static_cast<std::int16_t>(std::abs(minuto));
    horario->TWind = minuto > 0;
    horario->TCond = false;
    horario->TOblig = minuto < 0;
  }
  return agenda;
}

std::vector<std::string> Barras(const ProximasHoras& proximas) {
  std::vector<std::string> barras;
  for (const BarraVentana& barra : proximas.barras)
    barras.push_back(std::to_string(barra.desde) + "-" + std::to_string(barra.hasta) + (barra.superpuesta ? "!" : ""));
  return barras;
}

TEST(ProximasHoras, LasVentanasDanLaVueltaYSeMarcanLasQueSeSuperponen) {
  const struct {
    std::vector<int> minutos;
    int duracion;
    std::vector<std::string> barras;
    std::vector<std::string> avisos;
  } casos[] = {
      {{720}, 10, {"120-130"}, {}},
      {{-720}, 10, {}, {}},
      {{720}, 0, {}, {}},
      {{720}, -5, {}, {}},
      {{595}, 10, {"0-5", "1435-1440"}, {}},  // open already
      {{600}, 1440, {"0-1440"}, {}},          // all day long, and alone
      {{720}, 1440, {"0-120", "120-1440"}, {}},
      {{720}, 9999, {"0-120", "120-1440"}, {}},
      {{720, 730}, 10, {"120-130", "130-140"}, {}},  // one ends where the other begins
      {{723, 720}, 10, {"120-130!", "123-133!"}, {"12:00 y 12:03 se superponen"}},
      {{1435, 2}, 10, {"835-845!", "842-852!"}, {"23:55 y 00:02 se superponen"}},
      {{480, 483}, 1440, {"0-1320!", "0-1323!", "1320-1440!", "1323-1440!"}, {"08:00 y 08:03 se superponen"}},
      {{720, -723}, 10, {"120-130"}, {}},  // a mark isn't a window
      {{720, 720}, 10, {"120-130", "120-130"}, {"12:00 está dos veces"}},
      {{720, -720, 2160}, 10, {"120-130", "120-130"}, {"12:00 está tres veces"}},
      {{720, 725, 732},
       8,
       {"120-128!", "125-133!", "132-140!"},
       {"12:00 y 12:05 se superponen", "12:05 y 12:12 se superponen"}},
  };
  for (const auto& caso : casos) {
    const ProximasHoras proximas = ProximasDe(AgendaDe(caso.minutos), kDiez, caso.duracion);
    EXPECT_THAT(Barras(proximas), ElementsAreArray(caso.barras)) << caso.minutos[0] << " " << caso.duracion;
    EXPECT_THAT(AvisosDe(proximas), ElementsAreArray(caso.avisos)) << caso.minutos[0] << " " << caso.duracion;
  }
}

TEST(ProximasHoras, DiceCualSigueYEnCuanto) {
  const struct {
    int minuto;
    const char* texto;
  } casos[] = {{600, "Próximo horario: 10:00 (por ventana), en este minuto"},
               {601, "Próximo horario: 10:01 (por ventana), en 1 min"},
               {-720, "Próximo horario: 12:00 (obligatoria), en 2 h"},
               {1455, "Próximo horario: 00:15 (por ventana), en 14 h 15 min"},
               {599, "Próximo horario: 09:59 (por ventana), en 23 h 59 min"},
               {0, "Próximo horario: 00:00 (sin tipo de transmisión), en 14 h"}};
  for (const auto& caso : casos) EXPECT_EQ(TextoDeProxima(ProximasDe(AgendaDe({caso.minuto}), kDiez, 5)), caso.texto);
  EXPECT_EQ(TextoDeProxima(ProximasDe({}, kDiez, 5)), "La agenda no tiene horarios");
}

TEST(ProximasHoras, LosRenglonesDicenLoMismoQueElDibujo) {
  FDLHorarios agenda = AgendaDe({599, -720, 1435});
  agenda.Item(2002)->TOblig = agenda.Item(2002)->TCond = true;
  EXPECT_THAT(RenglonesDe(ProximasDe(agenda, kDiez, 10)),
              ElementsAre("12:00 obligatoria", "23:55 obligatoria, condicional, por ventana hasta las 00:05",
                          "09:59 por ventana hasta las 10:09 (abierta ahora)"));
  EXPECT_THAT(RenglonesDe(ProximasDe(AgendaDe({590}), kDiez, 10)), ElementsAre("09:50 por ventana hasta las 10:00"))
      << "closed at this very minute";
}

}  // namespace
}  // namespace utr
