#include <gtest/gtest.h>

#include <map>

#include "base/Fechas.h"
#include "driver/Dias.h"
#include "driver/PaginaCero.h"
#include "driver/TablasRegistros.h"
#include "driver/simulated/unit/Estacion.h"

namespace utr::simulada {
namespace {

const std::int64_t kAhora = Segundos({2026, 3, 15, 10, 0, 0});
constexpr std::int64_t kDia = kSegundosDia;

bool MismosBytes(Memoria& a, Memoria& b) {
  return std::equal(a.Bytes().begin(), a.Bytes().end(), b.Bytes().begin());
}

std::map<int, int> SucesosPorCodigo(const Memoria& memoria) {
  std::map<int, int> cuentas;
  memoria.RecorrerSucesos([&](VistaPagina pagina, const Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.cuenta; ++i) ++cuentas[LeerSuceso(pagina, i).codigo];
  });
  return cuentas;
}

TEST(Estacion, RegistrarDeUnaVezOPorPartesDaLoMismo) {
  Estacion una, partes;
  for (Estacion* e : {&una, &partes}) e->RehacerHistoria(kAhora);
  una.Avanzar(kAhora + 2 * kDia);
  for (std::int64_t t = kAhora; t < kAhora + 2 * kDia; t += 437) partes.Avanzar(t);
  partes.Avanzar(kAhora + 2 * kDia);
  EXPECT_TRUE(MismosBytes(una.memoria, partes.memoria));
  EXPECT_TRUE(MismosBytes(una.cartucho, partes.cartucho));
}

TEST(Estacion, LaHistoriaEnsenia) {
  Estacion e;
  e.RehacerHistoria(kAhora);
  const auto sucesos = SucesosPorCodigo(e.memoria);
  for (const int codigo : {suceso::kReinicio, suceso::kAlarmaMaximo, suceso::kBateriaBaja, suceso::kPuertaAbierta,
                           suceso::kPuertaCerrada, suceso::kVariacionAscendente, suceso::kVariacionDescendente,
                           suceso::kTransmision, suceso::kTransmisionPorSubida, suceso::kTransmisionPorBajada}) {
    EXPECT_EQ(sucesos.count(codigo), 1U) << codigo;
  }
  int sin_valor = 0;
  e.memoria.RecorrerPila(e.canales.PilaDe(5), [&](VistaPagina pagina, const Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.cuenta; ++i) {
      sin_valor += (LeerMuestra(pagina, cabecera, i).marcas & marca::kSinValor) != 0 ? 1 : 0;
    }
  });
  EXPECT_GT(sin_valor, 40) << "the hygrometer fails for hours";
}

TEST(Estacion, LoPendienteComienzaDondeLaCentralDejoDeContestar) {
  Estacion e;
  e.RehacerHistoria(kAhora);
  int pendientes = 0;
  e.memoria.RecorrerSucesos([&](VistaPagina pagina, const Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.cuenta; ++i) {
      const Suceso s = LeerSuceso(pagina, i);
      const bool despues = SegundosDeDia(cabecera.dia) + s.segundo > kAhora - 30 * 3600;
      EXPECT_EQ((s.marcas & marca::kPendiente) != 0, despues);
      pendientes += despues ? 1 : 0;
    }
  });
  e.memoria.RecorrerCola([&](VistaPagina pagina, const Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.cuenta; ++i) {
      const Muestra m = LeerMuestra(pagina, cabecera, i);
      EXPECT_EQ((m.marcas & marca::kPendiente) != 0, SegundosDeDia(cabecera.dia) + m.minuto * 60 > kAhora - 30 * 3600);
    }
  });
  EXPECT_GT(pendientes, 0);
}

TEST(Estacion, QuienTransmiteNoTienePendientes) {
  Estacion e;
  Vida vida;
  vida.pendiente_horas = 48;
  vida.transmite = true;
  e.Vivir(vida);
  e.RehacerHistoria(kAhora);
  const TablaPtr t = SucesosPendientes(e.memoria, DiaDe(kAhora));
  for (; !t->Eof(); t->MoveNext()) EXPECT_GE(t->Texto("Hora"), "08:00:00") << "08:00 was the last transmission";
  e.EscribirEstado(bandera::kActualizarSucesos);
  EXPECT_EQ(SucesosPendientes(e.memoria, DiaDe(kAhora))->RecordCount(), 0U);
  EXPECT_EQ(e.banderas, 0U) << "the order isn't kept";
}

TEST(Estacion, LosPendientesTraenUnaMarcaPorMedianoche) {
  const struct {
    std::vector<int> dias;  // of the events 1, 2...: so many ahead of today
    const char* corriente;
  } casos[] = {{{-3, -1}, "1 13/03/2026 14/03/2026 2 15/03/2026 "},
               {{0}, "1 "},
               // With a clock that was put back, the first marker still follows the day of what stands ahead of it.
               {{0, -2}, "1 16/03/2026 13/03/2026 2 14/03/2026 15/03/2026 "},
               {{2}, "1 18/03/2026 "}};
  for (const auto& caso : casos) {
    Estacion e;
    std::uint8_t codigo = 0;
    for (const int dia : caso.dias) e.AnotarSuceso(kAhora + dia * kDia, ++codigo);
    std::string corriente;
    for (const TablaPtr t = SucesosPendientes(e.memoria, DiaDe(kAhora)); !t->Eof(); t->MoveNext()) {
      corriente += t->Texto("Fecha") + t->Texto("Codigo") + " ";
    }
    EXPECT_EQ(corriente, caso.corriente);
  }
}

TEST(Estacion, LoQueRegistraUnRelojAtrasadoQuedaPendiente) {
  Estacion e;
  e.RehacerHistoria(kAhora);
  const auto pendientes = [&e] { return SucesosPendientes(e.memoria, 0)->RecordCount(); };
  const auto antes = pendientes();
  e.Desfasar(-5 * kDia);
  e.Avanzar(kAhora + kDia);
  EXPECT_GT(pendientes(), antes);
  e.EscribirEstado(bandera::kActualizarSucesos);
  EXPECT_EQ(pendientes(), 0U) << "what lies behind the new ones too";
}

TEST(Estacion, UnRelojAtrasadoEscribeSuPropiaHora) {
  Estacion e;
  e.desfase = -3 * 3600;
  e.RehacerHistoria(kAhora);
  EXPECT_EQ(e.registrado, kAhora - 3 * 3600);
  e.PonerEnHora(kAhora, kAhora);
  e.Avanzar(kAhora + 1200);
  int tarde = 0;
  e.memoria.RecorrerPila(0, [&](VistaPagina pagina, const Cabecera& cabecera) {
    if (cabecera.dia != DiaDe(kAhora)) return;
    for (unsigned i = 0; i < cabecera.cuenta; ++i) {
      const int minuto = LeerMuestra(pagina, cabecera, i).minuto;
      EXPECT_TRUE(minuto <= 420 || minuto > 600) << minuto;
      tarde += minuto > 600 ? 1 : 0;
    }
  });
  EXPECT_EQ(tarde, 2);
}

TEST(Estacion, ElReinicioRechazaUnaVelocidadQueNoHay) {
  Estacion e;
  e.EscribirPagina(0, {9});
  e.Reiniciar(kAhora);
  EXPECT_EQ(e.velocidad, 9600);
  for (int codigo = 0; codigo < 6; ++codigo) {
    e.EscribirPagina(0, {static_cast<std::uint8_t>(codigo)});
    e.Reiniciar(kAhora);
    EXPECT_EQ(pagina0::CodigoDeVelocidad(e.velocidad), codigo);
  }
}

TEST(Estacion, LaTramaTieneSusLugares) {
  Estacion e;
  Vida vida;
  vida.hidrologia.fijos = {{1, 5}, {22, 100}, {16, 1}, {21, 1}, {14, 50}};
  e.Vivir(vida);
  for (const int canal : {14, 22, 21}) e.canales.Poner(canal, "Flags", "1");
  e.canales.Poner(2, "Flags", "0");
  e.ConmutarSalida(1, true, kAhora);
  const auto trama = e.Instantaneos(kAhora);
  EXPECT_EQ(trama[0], 819 + 1639);
  EXPECT_EQ(trama[1], 0) << "a disabled channel isn't measured";
  EXPECT_EQ(trama[13], 2048);
  EXPECT_EQ(trama[14], 4095);
  EXPECT_EQ(trama[29], 1);
  EXPECT_EQ(trama[34], 1);
  EXPECT_EQ(trama[36], 1);
  EXPECT_EQ(trama[37], 0);
}

TEST(Estacion, LaSalidaUnoSigueLasVentanasInvertida) {
  Estacion e;
  const auto sd1 = [&e](int hora, int minuto) { return e.Instantaneos(Segundos({2026, 3, 15, hora, minuto, 0}))[35]; };
  EXPECT_EQ(sd1(8, 0), 0) << "on";
  EXPECT_EQ(sd1(8, 9), 0);
  EXPECT_EQ(sd1(8, 10), 1) << "off";
  EXPECT_EQ(sd1(23, 30), 1) << "an entry that isn't OK doesn't count";
  ASSERT_TRUE(e.agenda.LeerTexto("23:55 -V- OK"));
  EXPECT_EQ(sd1(23, 56), 1) << "the schedule rules from its restart on";
  e.ReiniciarAgenda();
  EXPECT_EQ(sd1(0, 4), 0) << "the window lasts into the next day";
  EXPECT_EQ(sd1(0, 5), 1);
  Vida vida;
  vida.sd1 = 1;
  e.Vivir(vida);
  EXPECT_EQ(sd1(9, 0), 0);
}

TEST(Canales, LasCuentasSiguenLaPendiente) {
  const Canales canales;
  const struct {
    int canal;
    double valor;
    int cuentas;
  } casos[] = {{1, 0, 819}, {1, 10, 4096}, {8, 5, 819}, {8, 0, 4096}, {4, -40, 0}, {4, 1e9, 65535}, {4, -1e9, 0}};
  for (const auto& caso : casos)
    EXPECT_EQ(canales.Parametros(caso.canal).Cuentas(caso.valor), caso.cuentas) << caso.canal << " " << caso.valor;
}

TEST(Agenda, SuTextoVaYVuelve) {
  const Agenda fabrica = Agenda::DeFabrica();
  Agenda otra;
  ASSERT_TRUE(otra.LeerTexto(fabrica.ComoTexto()));
  EXPECT_EQ(otra.Entradas(), fabrica.Entradas());
  for (const char* malo : {"08:00", "08:00 OVC", "25:00 OVC OK", "08:00 XVC OK", "x OVC OK", "08:00 OVC OK;"}) {
    EXPECT_FALSE(otra.LeerTexto(malo)) << malo;
  }
  EXPECT_EQ(otra.Entradas(), fabrica.Entradas());
}

}  // namespace
}  // namespace utr::simulada
