#include <gtest/gtest.h>

#include "driver/link/BancoEnlace.h"
#include "driver/simulated/driver/ComunicadorConFallas.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "driver/simulated/driver/FallasPorLinea.h"
#include "support/NumeroDeError.h"

// The faults of operations around a driver that knows nothing of them: the one over a wire.
namespace utr::prueba {
namespace {

using simulada::Falla;
using simulada::Op;
using simulada::TipoFalla;

class ConFallas : public testing::Test, public EntornoDeFallas {
 protected:
  simulada::Fallas& Mirar(Op) override { return fallas; }
  void Disponer(bool bloquea, double) override { bloqueado = bloquea; }
  void Esperar(double segundos) override {
    esperado += segundos;
    if (al_esperar) al_esperar();
  }

  BancoEnlace banco{false};
  ComunicadorConFallas driver{banco.Driver(), *this};
  simulada::Fallas fallas;
  bool bloqueado = false;
  double esperado = 0;
  std::function<void()> al_esperar;
};

}  // namespace

TEST_F(ConFallas, CadaClaseAlrededorDeOtroControlador) {
  const int puerto = std::stoi(banco.puerto);
  fallas.Poner({
      {.operacion = Op::kGrabarSalidaDigital, .tipo = TipoFalla::kFalso, .veces = 1},
      {.operacion = Op::kGrabarSalidaDigital, .tipo = TipoFalla::kFalso, .veces = 1, .respuesta_perdida = true},
      {.operacion = Op::kLeerFechaHora, .tipo = TipoFalla::kVacio, .despues_de = 1, .veces = 1, .puerto = puerto},
      {.operacion = Op::kLeerFechaHora, .tipo = TipoFalla::kVacio, .velocidad = 300},
      {.operacion = Op::kLeerEventos, .tipo = TipoFalla::kSinFilas},
      {.operacion = Op::kLeerPagina, .tipo = TipoFalla::kDemora, .segundos = 7, .bloquea = true},
      {.operacion = Op::kLeerPagina, .tipo = TipoFalla::kTexto, .texto = "9"},
      {.operacion = Op::kLeerEstado, .tipo = TipoFalla::kFalso},
      {.operacion = Op::kConectar, .tipo = TipoFalla::kError, .veces = 1, .numero = 31036},
  });
  EXPECT_EQ(NumeroDeError([&] { driver.Conectar(banco.enlace, banco.puerto); }), 31036);
  EXPECT_FALSE(driver.EstadoPuerto()) << "it wasn't carried out";
  driver.Conectar(banco.enlace, banco.puerto);
  EXPECT_FALSE(driver.GrabarSalidaDigital(1, true));
  EXPECT_FALSE(banco.Viva().Unidad().salidas[0]);
  EXPECT_FALSE(driver.GrabarSalidaDigital(1, true));
  EXPECT_TRUE(banco.Viva().Unidad().salidas[0]) << "only the answer was lost";
  EXPECT_TRUE(driver.GrabarSalidaDigital(1, false));
  EXPECT_NE(driver.LeerFechaHora(), "");
  EXPECT_EQ(driver.LeerFechaHora(), "") << "the second one, on this port";
  EXPECT_NE(driver.LeerFechaHora(), "");
  EXPECT_GT(banco.Driver().LeerEventos("", "")->RecordCount(), 0U);
  EXPECT_EQ(driver.LeerEventos("", "")->RecordCount(), 0U);
  EXPECT_EQ(driver.LeerPagina("35", false), "9");
  EXPECT_EQ(esperado, 7);
  EXPECT_TRUE(bloqueado);
  EXPECT_EQ(driver.LeerEstado(), -1);
  EXPECT_FALSE(bloqueado);
}

TEST_F(ConFallas, UnaLlamadaDemoradaSePuedeAbandonar) {
  fallas.Poner({{.operacion = Op::kLlamarTelefono, .tipo = TipoFalla::kDemora, .segundos = 60}});
  driver.Conectar(banco.enlace, banco.puerto_modem);
  al_esperar = [&] {
    if (esperado > 2) driver.Cancelar(false);
  };
  driver.LlamarTelefono("4800", "ATZ");
  EXPECT_LT(esperado, 3);
}

// A fault that met a real unit would be a lie about it.
TEST(FallasPorLinea, SoloAnteUnaUnidadQueDijoSerDePractica) {
  BancoEnlace banco{false};
  ComunicadorSimulado simulado(banco.carpeta.Ruta(), banco.reloj, {});
  FallasPorLinea fallas(simulado, [&] { return banco.Enlace().DePractica(); }, banco.reloj, {});
  ComunicadorConFallas driver(banco.Driver(), fallas);
  std::uint8_t de_practica = 1;
  int preguntas = 0;
  banco.en_lugar = [&](protocolo::VistaBytes pdu) -> std::optional<protocolo::Bytes> {
    const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
    const protocolo::PedidoDeArchivo quien_es{protocolo::archivo::kRegistros, 0, 3};
    if (!partes || partes->front() != quien_es) return std::nullopt;
    ++preguntas;
    const std::uint16_t eco = partes->back().record;
    return protocolo::RespuestaDeArchivos(
        std::vector<protocolo::Bytes>{{0, 120, 0, protocolo::kVersionDelMapa, 0, de_practica},
                                      {static_cast<std::uint8_t>(eco >> 8), static_cast<std::uint8_t>(eco)}});
  };
  const auto escenario = [&](bool por_linea) {
    EscribirTodo(banco.carpeta / "UTRSimulada.toml",
                 std::string("[enlace]\nfallas_por_linea = ") + (por_linea ? "true" : "false") +
                     "\n[[falla]]\noperacion = \"LeerFechaHora\"\ntipo = \"vacio\"\n"
                     "[[falla]]\noperacion = \"Conectar\"\ntipo = \"error\"\n"
                     "[[falla]]\noperacion = \"ConvertirDe\"\ntipo = \"vacio\"\n");
  };
  escenario(true);
  banco.por_ip = true;
  banco.Conectar();
  EXPECT_EQ(driver.LeerFechaHora(), "") << "the first thing that is asked already";
  EXPECT_EQ(preguntas, 1);
  EXPECT_GE(driver.LeerEstado(), 0) << "no fault is for it";
  EXPECT_EQ(driver.ConvertirDe(0), "0/0") << "nobody is asked";
  de_practica = 0;
  driver.IdEquipo(banco.identificador);  // and there may stand another one now
  EXPECT_NE(driver.LeerFechaHora(), "");
  driver.Conectar(banco.enlace, banco.puerto);
  de_practica = 1;
  driver.PorIP(true);
  EXPECT_EQ(driver.LeerFechaHora(), "");
  escenario(false);
  EXPECT_NE(driver.LeerFechaHora(), "");
  escenario(true);
  EXPECT_EQ(driver.LeerFechaHora(), "");
  banco.Enmudecer(true);
  banco.en_lugar = nullptr;
  driver.IdEquipo(banco.identificador);
  EXPECT_EQ(NumeroDeError([&] { driver.ConfiguracionAlmacenada(true); }), error::kSinRespuesta);
}

}  // namespace utr::prueba
