#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "schedule/CargaAgenda.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using prueba::NumeroDeError;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<const char*> kColumnas = {"key", "Horario", "TOblig", "TWind", "TCond", "HorarioInteger"};
const std::vector<const char*> kColumnasUTR = {"HorarioInteger", "Descripcion", "TCond", "TOblig", "TWind"};

TEST(FDLHorarios, LaClaveQuedaLaDeLaCreacion) {
  FDLHorarios agenda;
  const FDLHoraroPtr nuevo = agenda.Add(480);
  EXPECT_EQ(*nuevo, (FDLHoraro{480, true, true, true, "480C"}));
  nuevo->Horario = 600;
  nuevo->TCond = false;
  EXPECT_EQ(agenda.Add(480), nuevo) << "as it stands";
  EXPECT_EQ(NumeroDeError([&] { agenda.Item(600); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { agenda.Remove("600C"); }), error::kLlamada);
  agenda.Add(600)->TOblig = false;  // two entries may show the same time
  EXPECT_EQ(NumeroDeError([&] { agenda.Add(1, "480C"); }), error::kLlamada);
  agenda.Add(1455);
  EXPECT_THAT(Filas(*agenda.GetRecMembers(), kColumnas),
              ElementsAre("480|10:00:00|Si|Si|No|600", "600|10:00:00|No|Si|Si|600", "1455|00:15:00|Si|Si|Si|1455"));
}

TEST(FDLHorarios, LaTablaDeUnaAgendaVaciaTieneSusColumnasYNingunOrden) {
  const TablaPtr tabla = FDLHorarios().GetRecMembers();
  EXPECT_EQ(tabla->RecordCount(), 0U);
  EXPECT_EQ(tabla->Sort(), "");
  ASSERT_EQ(tabla->FieldCount(), kColumnas.size());
  for (std::size_t i = 0; i < kColumnas.size(); ++i) EXPECT_EQ(tabla->Field(i).nombre, kColumnas[i]);
}

TEST(FDLHorarios, UnaCopiaTieneSusPropiosHorarios) {
  FDLHorarios agenda;
  agenda.DuracionVentana = 20;
  agenda.Add(480)->Horario = 600;
  FDLHorarios copia = agenda;
  copia.Item("480")->TWind = false;
  copia.Remove("480C");
  copia.DuracionVentana = 5;
  EXPECT_EQ(*agenda.Item(480), (FDLHoraro{600, true, true, true, "480C"}));
  EXPECT_EQ(agenda.DuracionVentana, 20);
  copia = agenda;
  EXPECT_NE(copia.Item(480), agenda.Item(480));
  EXPECT_EQ(copia.DuracionVentana, 20);
}

// Only "OK" and "Si" as they stand count; a minute that comes twice keeps its place and takes the later kinds.
TEST(FDLHorarios, SeLeenDeLaTablaLosQueCuentan) {
  FDLHorarios agenda;
  const TablaPtr tabla = TablaDeTextos(kColumnasUTR, {{"1200", "OK", "Si", "No", "Si"},
                                                      {"480", "OK", "si", "Si", nullptr},
                                                      {"600", "ok", "Si", "Si", "Si"},
                                                      {"", "OK", "Si", "Si", "Si"},
                                                      {nullptr, "OK", "Si", "Si", "Si"},
                                                      {"700", "Error de datos", "Si", "Si", "Si"},
                                                      {"720", nullptr, "Si", "Si", "Si"},
                                                      {"1200", "OK", "No", "Si", "No"}});
  tabla->MoveLast();
  AgregarHorarios(agenda, *tabla);
  EXPECT_THAT(Filas(*agenda.GetRecMembers(), kColumnas),
              ElementsAre("480|08:00:00|Si|No|No|480", "1200|20:00:00|Si|No|No|1200"));
  EXPECT_EQ((*agenda.begin())->Horario, 1200) << "in the order of the table";
  for (const auto& [minuto, numero] : {std::pair{"x", error::kTipos}, std::pair{"40000", error::kDesborde}}) {
    EXPECT_EQ(NumeroDeError([&] { AgregarHorarios(agenda, *TablaDeTextos(kColumnasUTR, {{minuto, "OK"}})); }), numero);
  }
  EXPECT_EQ(NumeroDeError([&] { AgregarHorarios(agenda, *TablaDeTextos({"HorarioInteger"}, {{"1"}})); }),
            error::kCampo);
}

// What a unit gives back of a schedule that was written to it.
TablaPtr ComoLaDeLaUTR(const FDLHorarios& agenda) {
  const TablaPtr escrita = agenda.GetRecMembers();
  EXPECT_EQ(escrita->Pendientes(), 0U);
  const TablaPtr leida = TablaDeTextos(kColumnasUTR);
  for (; !escrita->Eof(); escrita->MoveNext()) {
    leida->AddNew();
    leida->Set("Descripcion", "OK");
    for (const char* columna : {"HorarioInteger", "TCond", "TOblig", "TWind"})
      leida->Set(columna, escrita->Texto(columna));
  }
  leida->UpdateBatch();
  return leida;
}

// A schedule beside a plain map of key to entry, through thousands of random changes.
TEST(FDLHorarios, AlAzarLasClavesSonUnicasYLaListaEstaOrdenada) {
  std::mt19937 azar(20260315);
  const auto hasta = [&azar](int mayor) { return static_cast<int>(azar() % static_cast<unsigned>(mayor + 1)); };
  FDLHorarios agenda;
  std::map<std::string, FDLHoraro> espejo;
  for (int vuelta = 0; vuelta < 1000; ++vuelta) {
    const auto minuto = static_cast<std::int16_t>(hasta(59) * 30);  // also beyond the day
    const std::string clave = std::to_string(minuto) + 'C';
    const int que = hasta(99);
    if (que < 45) {
      const FDLHoraroPtr horario = agenda.Add(minuto);
      espejo.try_emplace(clave, FDLHoraro{minuto, true, true, true, clave});
      EXPECT_EQ(*horario, espejo[clave]);
    } else if (que < 70 && espejo.contains(clave)) {
      FDLHoraro& editado = espejo[clave];
      editado = {static_cast<std::int16_t>(hasta(kMinutosDia - 1)), hasta(1) == 1, hasta(1) == 1, hasta(1) == 1, clave};
      *agenda.Item(minuto) = editado;
    } else if (que < 97 && espejo.contains(clave)) {
      agenda.Remove(clave);
      espejo.erase(clave);
    } else if (que >= 97) {
      FDLHorarios leida;
      AgregarHorarios(leida, *ComoLaDeLaUTR(agenda));
      agenda = leida;
      std::set<int> minutos;
      for (const auto& [nada, horario] : espejo) minutos.insert(horario.Horario);
      espejo.clear();
      for (const FDLHoraroPtr& horario : agenda) espejo[horario->Key] = *horario;
      ASSERT_EQ(espejo.size(), minutos.size()) << "entries of one time become one";
    }
    ASSERT_EQ(static_cast<std::size_t>(agenda.Count()), espejo.size());
    const TablaPtr tabla = agenda.GetRecMembers();
    std::set<std::string> claves;
    for (int anterior = -1; !tabla->Eof(); tabla->MoveNext()) {
      const std::string una = tabla->Texto("key") + 'C';
      ASSERT_TRUE(claves.insert(una).second) << una;
      ASSERT_TRUE(espejo.contains(una));
      const int este = espejo[una].Horario;
      ASSERT_EQ(tabla->Texto("HorarioInteger"), std::to_string(este));
      ASSERT_LE(anterior, este);
      anterior = este;
    }
    ASSERT_EQ(claves.size(), espejo.size());
  }
}

}  // namespace
}  // namespace utr
