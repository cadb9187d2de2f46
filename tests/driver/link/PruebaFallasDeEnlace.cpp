#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <sstream>

#include "base/Error.h"
#include "driver/Dias.h"
#include "driver/TablasRegistros.h"
#include "driver/Textos.h"
#include "driver/link/BancoEnlace.h"
#include "driver/link/BancoProceso.h"
#include "support/NumeroDeError.h"

// Any operation over a line that fails in every way: it ends in the right answer or in a failure that is told, never in
// wrong data, never in an order that was carried out twice, and in the time that its requests may take.
namespace utr::prueba {
namespace {

using enlace::Medio;
using simulada::Canales;

std::vector<std::string> Filas(const TablaPtr& tabla) {
  std::vector<std::string> filas;
  for (const TablaPtr clon = tabla->Clone(); !clon->Eof(); clon->MoveNext()) {
    std::string fila;
    for (std::size_t c = 0; c < clon->FieldCount(); ++c) fila += clon->Texto(c) + "|";
    filas.push_back(std::move(fila));
  }
  return filas;
}

// A unit at the end of a bad line, and somebody who asks it this and that.
class Operador {
 public:
  Operador(Medio medio, unsigned semilla) : azar_(semilla) {
    if (medio == Medio::kTcp) {
      banco.Driver().PorIP(true);
      banco.Driver().DireccionIP(banco.direccion);
      banco.Driver().PuertoIP(banco.puerto_ip);
    } else {
      banco.Driver().Conectar(banco.enlace, medio == Medio::kSerie ? banco.puerto : banco.puerto_modem);
    }
    banco.Driver().IdEquipo(banco.identificador);
    EXPECT_TRUE(medio != Medio::kLlamada || banco.Driver().LlamarTelefono("4800", "ATZ"));
  }

  // One operation of any kind. Raises nothing but what a failing line may raise.
  void Operar() {
    static constexpr void (Operador::*kOperaciones[])() = {
        &Operador::LeerReloj,   &Operador::LeerEstado,      &Operador::LeerPagina,   &Operador::LeerFlash,
        &Operador::LeerDatos,   &Operador::LeerEventos,     &Operador::LeerCola,     &Operador::LeerCanales,
        &Operador::LeerAgenda,  &Operador::LeerTrama,       &Operador::Evento,       &Operador::Salida,
        &Operador::Pagina,      &Operador::Estado,          &Operador::Agenda,       &Operador::Parametros,
        &Operador::PonerEnHora, &Operador::ReiniciarAgenda, &Operador::LeerCartucho, &Operador::Configuracion,
        &Operador::Reiniciar,   &Operador::BorrarCartucho};
    const std::int64_t antes = banco.reloj.Milisegundos();
    const std::uint64_t pedidos = banco.Enlace().Cuenta().pedidos;
    const std::size_t cual = Hasta(std::size(kOperaciones) - 1);
    ++hechas;
    try {
      (this->*kOperaciones[cual])();
    } catch (const Error& falla) {
      ++fallidas;
      static const std::set<std::int32_t> kDichas{error::kSinRespuesta, error_enlace::kLineaPerdida,
                                                  error_enlace::kCambiante};
      EXPECT_TRUE(kDichas.contains(falla.Numero())) << cual << " " << falla.Numero() << falla.Descripcion();
    }
    const auto nuevos = static_cast<std::int64_t>(banco.Enlace().Cuenta().pedidos - pedidos);
    EXPECT_LE(banco.reloj.Milisegundos() - antes, (nuevos + 1) * mayor_pedido) << cual;
  }

  BancoEnlace banco{false};
  int hechas = 0;
  int fallidas = 0;
  std::int64_t mayor_pedido = 9000;  // milliseconds that one request may take, with the silence ahead of it

 private:
  Comunicador& Driver() { return banco.Driver(); }
  simulada::Estacion& Unidad() { return banco.Viva().Unidad(); }
  std::size_t Hasta(std::size_t mayor) { return std::uniform_int_distribution<std::size_t>(0, mayor)(azar_); }
  std::string Dia() { return TextoFecha(FechaDeDias(DiasDesde1970(banco.Ahora()) - 1 - static_cast<int>(Hasta(25)))); }
  void Contar(bool bien) { fallidas += bien ? 0 : 1; }

  // The result of an order, where what it changes is as it was or as it was to be, and the latter where it succeeded.
  template <class Valor>
  void Cambia(bool bien, const Valor& antes, const Valor& pedido, const Valor& ahora) {
    Contar(bien);
    EXPECT_TRUE(ahora == pedido || (!bien && ahora == antes));
  }
  int Sucesos(std::uint8_t codigo, std::optional<std::uint16_t> valor = {}) {
    int cuantos = 0;
    Unidad().memoria.RecorrerSucesos([&](paginas::VistaPagina pagina, const paginas::Cabecera& cabecera) {
      for (unsigned i = 0; i < cabecera.cuenta; ++i) {
        const auto suceso = paginas::LeerSuceso(pagina, i);
        cuantos += suceso.codigo == codigo && suceso.valor1 == valor.value_or(suceso.valor1) ? 1 : 0;
      }
    });
    return cuantos;
  }

  void LeerReloj() {
    const std::string texto = Driver().LeerFechaHora();
    Contar(!texto.empty());
    if (texto.empty()) return;
    const std::int64_t atraso = Unidad().Reloj(Segundos(banco.Ahora())) - Segundos(ConvertirAFecha(texto));
    EXPECT_TRUE(atraso >= 0 && atraso <= mayor_pedido / 1000) << atraso;
  }
  void LeerEstado() {
    const std::int32_t estado = Driver().LeerEstado();
    Contar(estado >= 0);
    EXPECT_TRUE(estado == -1 || estado == Unidad().Estado());
  }
  void LeerPagina() {
    const int cual = static_cast<int>(Hasta(40));
    const std::string texto = Driver().LeerPagina(std::to_string(cual), false);
    Contar(!texto.empty());
    EXPECT_TRUE(texto.empty() || texto == TextoPagina(Unidad().LeerPagina(cual)));
  }
  // Old pages, which don't change.
  void LeerFlash() {
    const auto pista = static_cast<std::int16_t>(3 * Hasta(8));
    const auto pagina = static_cast<std::int16_t>(Hasta(200));
    for (std::int16_t i = 0; i < 5; ++i) {
      const auto otra = static_cast<std::int16_t>(pagina + i);
      const std::string texto = Driver().LeerPaginaFlash(pista, otra);
      Contar(!texto.empty());
      EXPECT_TRUE(texto.empty() || texto == Unidad().memoria.TextoDePagina(pista, otra));
    }
  }
  void LeerDatos() {
    const int canal = 1 + static_cast<int>(Hasta(22));
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerDatos(dia, dia, static_cast<std::int16_t>(canal - 1));
    paginas::FilasMuestras filas;
    const auto rango = paginas::LeerRango(dia, dia);
    const int pila = Unidad().canales.PilaDe(canal);
    if (pila < simulada::kPilas) {
      Unidad().memoria.RecorrerPila(pila, [&](auto pagina, const auto& cabecera) {
        if (cabecera.canal == canal) filas.Agregar(pagina, cabecera, rango, {});
      });
    }
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia << " " << canal;
  }
  void LeerCartucho() {
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerDatosCartucho(dia, dia, 0);
    paginas::FilasMuestras filas;
    Unidad().cartucho.RecorrerPila(Unidad().canales.PilaDe(1), [&](auto pagina, const auto& cabecera) {
      if (cabecera.canal == 1) filas.Agregar(pagina, cabecera, paginas::LeerRango(dia, dia), {});
    });
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia;
  }
  void LeerEventos() {
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerEventos(dia, dia);
    paginas::FilasSucesos filas;
    Unidad().memoria.RecorrerSucesos(
        [&](auto pagina, const auto& cabecera) { filas.Agregar(pagina, cabecera, paginas::LeerRango(dia, dia), {}); });
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia;
  }
  void LeerCola() {
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerColaTx(dia, dia);
    paginas::FilasMuestras filas;
    Unidad().memoria.RecorrerCola(
        [&](auto pagina, const auto& cabecera) { filas.Agregar(pagina, cabecera, paginas::LeerRango(dia, dia), {}); });
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia;
  }
  void LeerCanales() { EXPECT_EQ(Filas(Driver().ConfiguracionAlmacenada(true)), Filas(Unidad().canales.ComoTabla())); }
  void LeerAgenda() {
    const TablaPtr leida = Driver().LeerAgenda();
    Contar(leida != nullptr);
    EXPECT_TRUE(!leida || Filas(leida) == Filas(Unidad().agenda.ComoTabla()));
  }
  void LeerTrama() {
    const TablaPtr leida = Driver().LeerInstantaneos();
    ASSERT_EQ(leida->RecordCount(), kLugaresDeTrama);
    EXPECT_EQ(leida->Filas().Texto(36, 0), Unidad().salidas[0] ? "1" : "0");
  }

  void Evento() {
    const auto valor = static_cast<std::uint16_t>(++numero_);
    const bool bien = Driver().GrabarEvento("1", "200/0/" + TextoPar(valor));
    Contar(bien);
    const int cuantos = Sucesos(200, valor);
    EXPECT_TRUE(cuantos == 1 || (!bien && cuantos == 0)) << "carried out " << cuantos << " times";
  }
  void Salida() {
    const std::size_t cual = Hasta(1);
    const bool antes = Unidad().salidas[cual];
    const int sucesos = Sucesos(simulada::suceso::kSalidaConmutada, static_cast<std::uint16_t>(cual + 1));
    const bool bien = Driver().GrabarSalidaDigital(static_cast<int>(cual) + 1, !antes);
    Cambia(bien, antes, !antes, Unidad().salidas[cual]);
    EXPECT_LE(Sucesos(simulada::suceso::kSalidaConmutada, static_cast<std::uint16_t>(cual + 1)), sucesos + 1);
  }
  void Pagina() {
    const int cual = 1 + static_cast<int>(Hasta(30));
    const auto antes = Unidad().LeerPagina(cual);
    auto pedida = antes;
    for (auto& byte : pedida) byte = static_cast<std::uint8_t>(Hasta(255));
    const bool bien = Driver().EscribirPagina(std::to_string(cual), TextoPagina(pedida));
    Cambia(bien, antes, pedida, Unidad().LeerPagina(cual));
  }
  void Estado() {
    const auto bits = static_cast<std::uint16_t>(Hasta(63) << 2);
    const unsigned antes = Unidad().banderas;
    const bool bien = Driver().GrabarEstado(TextoPar(bits));
    Cambia(bien, antes & 0xBCU, bits & 0xBCU, Unidad().banderas & 0xBCU);
  }
  void Agenda() {
    Tabla tabla;
    for (const char* campo : {"HorarioInteger", "TOblig", "TWind", "TCond"})
      tabla.Append(campo, TipoCampo::kVarChar, 20);
    tabla.Open();
    const std::size_t cuantas = 1 + Hasta(60);
    for (std::size_t i = 0; i < cuantas; ++i) {
      tabla.AddNew();
      tabla.Set("HorarioInteger", std::to_string(Hasta(1439)));
      for (const char* campo : {"TOblig", "TWind", "TCond"}) tabla.Set(campo, Hasta(1) == 0 ? "Si" : "No");
    }
    tabla.UpdateBatch();
    const std::string antes = Unidad().agenda.ComoTexto();
    simulada::Agenda pedida = Unidad().agenda;
    pedida.Escribir(tabla);
    const bool bien = Driver().GrabarAgenda(tabla);
    Cambia(bien, antes, pedida.ComoTexto(), Unidad().agenda.ComoTexto());
  }
  void Parametros() { EscribirCanales(&Canales::Mezclar, &Comunicador::GrabarParametrizacion); }
  void Configuracion() { EscribirCanales(&Canales::Reemplazar, &Comunicador::GrabarConfiguracion); }
  void EscribirCanales(bool (Canales::*tomar)(Tabla&), bool (Comunicador::*grabar)(Tabla&)) {
    const TablaPtr tabla = Unidad().canales.ComoTabla();
    for (; !tabla->Eof(); tabla->MoveNext()) {
      if (Hasta(3) == 0) tabla->Set("AMax", std::to_string(Hasta(100000)) + std::string(Hasta(80), '0'));
    }
    const auto antes = Filas(Unidad().canales.ComoTabla());
    Canales pedidos = Unidad().canales;
    (pedidos.*tomar)(*tabla);
    const bool bien = (Driver().*grabar)(*tabla);
    Cambia(bien, antes, Filas(pedidos.ComoTabla()), Filas(Unidad().canales.ComoTabla()));
  }
  void PonerEnHora() {
    const bool bien = Driver().GrabarFechaHora();
    Contar(bien);
    EXPECT_TRUE(!bien || std::abs(Unidad().desfase) <= mayor_pedido / 1000);
  }
  // As many events as orders at the most, however often each was sent. An order that was told to have failed may be
  // carried out while the next one is under way.
  void UnaVez(std::uint8_t codigo, const std::function<bool()>& ordenar) {
    int& mas = ordenadas_.try_emplace(codigo, Sucesos(codigo)).first->second;
    ++mas;
    Contar(ordenar());
    EXPECT_LE(Sucesos(codigo), mas);
  }
  void Reiniciar() {
    UnaVez(simulada::suceso::kReinicio, [this] { return Driver().ReiniciarUTR("14"); });
    banco.Pasar(20);
  }
  void BorrarCartucho() {
    UnaVez(simulada::suceso::kCartuchoBorrado, [this] { return Driver().BorrarCartucho(); });
  }
  void ReiniciarAgenda() { Contar(Driver().ReiniciarAgenda("41")); }

  std::mt19937 azar_;
  int numero_ = 0;
  std::map<std::uint8_t, int> ordenadas_;  // events that there may be by now, of each code

 public:
  // Another kind of bad line from now on.
  void Estropear() {
    const auto raro = [this] { return std::to_string(static_cast<double>(Hasta(60)) / 1000); };
    std::ostringstream cable;
    cable << "[linea]\nsemilla = " << Hasta(1000000) << "\n";
    for (const char* falla : {"ruido", "pedido_perdido", "respuesta_perdida", "media_trama", "respuesta_doble",
                              "respuesta_tarde", "basura", "hueco"}) {
      if (Hasta(1) == 0) cable << falla << " = " << raro() << "\n";
    }
    cable << "latencia_ms = " << Hasta(80) << "\nfluctuacion_ms = " << Hasta(80) << "\nhueco_ms = " << Hasta(240)
          << "\ntarde_ms = " << Hasta(5000)
          << "\n[historia]\nhueco = false\n";  // a stop of the unit's own leaves events like those of a restart
    banco.Escenario(cable.str());
  }
};

void Probar(enlace::Medio medio, int operaciones, unsigned semilla) {
  Operador operador(medio, semilla);
  if (medio == enlace::Medio::kLlamada) operador.mayor_pedido = 30000;
  while (operador.hechas < operaciones && !testing::Test::HasFailure()) {
    if (operador.hechas % 100 == 0) operador.Estropear();
    operador.Operar();
  }
  // So many failures would mean that nothing was tried.
  EXPECT_LT(operador.fallidas, operaciones / 5);
  EXPECT_GT(operador.banco.Enlace().Cuenta().reintentos, static_cast<std::uint64_t>(operaciones) / 100);
}

// Over a real line what is right isn't at hand: it is read ahead of the faults, and what was written is told by what
// was answered.
void ProbarPor(Medio medio, int operaciones) {
  BancoProceso banco(medio == Medio::kTcp);
  Comunicador& driver = banco.Driver();
  if (medio == Medio::kLlamada) banco.puerto = banco.puerto_modem;
  banco.Conectar();
  ASSERT_TRUE(medio != Medio::kLlamada || driver.LlamarTelefono("4800", "ATZ"));
  const std::string dia = TextoFecha(FechaDeDias(DiasDesde1970(banco.Ahora()) - 1));
  const std::string hoy = TextoFecha(banco.Ahora());
  const auto datos = Filas(driver.LeerDatos(dia, dia, 0));
  const auto cola = Filas(driver.LeerColaTx(dia, dia));
  const auto canales = Filas(driver.ConfiguracionAlmacenada(true));
  const std::string pagina = driver.LeerPaginaFlash(0, 7);
  // Each loss on a call costs seconds, which pass for real.
  const std::string perdida = medio == Medio::kLlamada ? "0.001" : "0.003";
  banco.Escenario("[linea]\npedido_perdido = " + perdida + "\nrespuesta_perdida = " + perdida +
                  "\nmedia_trama = " + perdida + "\nbasura = " + perdida +
                  "\nrespuesta_doble = 0.02\nrespuesta_tarde = 0.002\ntarde_ms = 600\n");
  std::map<int, bool> escritos;  // value of an event, and whether it was told to be written
  std::mt19937 azar(4);
  int fallidas = 0;
  for (int i = 0; i < operaciones; ++i) {
    try {
      switch (azar() % 5) {
        case 0:
          EXPECT_EQ(Filas(driver.LeerDatos(dia, dia, 0)), datos);
          break;
        case 1:
          EXPECT_EQ(Filas(driver.LeerColaTx(dia, dia)), cola);
          break;
        case 2:
          EXPECT_EQ(Filas(driver.ConfiguracionAlmacenada(true)), canales);
          break;
        case 3: {
          const std::string leida = driver.LeerPaginaFlash(0, 7);
          EXPECT_TRUE(leida.empty() || leida == pagina);
          break;
        }
        default:
          escritos[i] = driver.GrabarEvento("1", "200/0/" + TextoPar(static_cast<std::uint16_t>(i)));
      }
    } catch (const Error&) {
      ++fallidas;
    }
  }
  banco.Escenario("");
  EXPECT_LT(fallidas, operaciones / 5);
  std::map<std::string, int> veces;
  for (const TablaPtr t = driver.LeerEventos(hoy, hoy); !t->Eof(); t->MoveNext()) {
    if (t->Texto("Codigo") == "200") ++veces[t->Texto("Valor1")];
  }
  for (const auto& [valor, dicho] : escritos) {
    const int cuantas = veces[std::to_string(valor)];
    EXPECT_TRUE(cuantas == 1 || (!dicho && cuantas == 0)) << valor << " was written " << cuantas << " times";
  }
}

}  // namespace

TEST(FallasDeEnlace, SeisMilOperacionesPorUnaLineaSerie) {
  Probar(enlace::Medio::kSerie, 6000, 1);
}

TEST(FallasDeEnlace, DosMilOperacionesPorUnaLlamada) {
  Probar(enlace::Medio::kLlamada, 2000, 2);
}

TEST(FallasDeEnlace, DosMilOperacionesPorUnaConexion) {
  Probar(enlace::Medio::kTcp, 2000, 3);
}

TEST(FallasDeEnlace, DoscientasPorTcpHastaOtroProceso) {
  ProbarPor(Medio::kTcp, 200);
}

TEST(FallasDeEnlace, DoscientasPorUnTerminalHastaOtroProceso) {
  ProbarPor(Medio::kSerie, 200);
}

TEST(FallasDeEnlace, DoscientasPorUnaLlamadaHastaOtroProceso) {
  ProbarPor(Medio::kLlamada, 200);
}

// The process is killed while an answer is on its way, over each real line, and started again.
TEST(FallasDeEnlace, ElProcesoMuertoSeDiceYVueltoAArrancarSeSigue) {
  static constexpr void (*kPedidos[])(Comunicador&) = {
      [](Comunicador& c) { c.ConfiguracionAlmacenada(true); }, [](Comunicador& c) { c.LeerDatos("", "", 0); },
      [](Comunicador& c) { c.LeerPaginaFlash(0, 0); }, [](Comunicador& c) { c.GrabarEvento("1", "200/0/7/0"); }};
  for (const Medio medio : {Medio::kTcp, Medio::kSerie, Medio::kLlamada}) {
    BancoProceso banco(medio == Medio::kTcp);
    Comunicador& driver = banco.Driver();
    if (medio == Medio::kLlamada) banco.puerto = banco.puerto_modem;
    for (const auto& pedido : kPedidos) {
      banco.Conectar();
      ASSERT_TRUE(medio != Medio::kLlamada || driver.LlamarTelefono("4800", "ATZ"));
      ASSERT_NE(driver.LeerFechaHora(), "");
      banco.Escenario("[linea]\nlatencia_ms = 50\n");
      bool murio = false;
      banco.AlEsperar([&] {
        murio = true;
        banco.MatarEstacion();
      });
      const std::int32_t falla = NumeroDeError([&] { pedido(driver); });
      ASSERT_TRUE(murio);
      EXPECT_TRUE(medio == Medio::kTcp || falla == error_enlace::kLineaPerdida) << falla;
      EXPECT_FALSE(driver.EstadoEnlace());
      EXPECT_FALSE(driver.EstadoPuerto());
      banco.RevivirEstacion();
      if (medio == Medio::kLlamada) {
        EXPECT_EQ(driver.LeerFechaHora(), "") << "nobody dials but the operator";
      } else {
        EXPECT_NE(driver.LeerFechaHora(), "");
      }
    }
  }
}

}  // namespace utr::prueba
