#include <gtest/gtest.h>

#include <map>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/transport/Modem.h"
#include "support/NumeroDeError.h"
#include "support/RelojFalso.h"

namespace utr::enlace {

using namespace prueba;

namespace {

// A modem that says what a script tells behind each command, echo ahead of it, a few bytes at a time.
class ModemGuion : public Linea {
 public:
  explicit ModemGuion(RelojFalso& reloj) : reloj_(reloj) {}

  std::map<std::string, std::string> dice{{"AT", "OK\r\n"}, {"ATZ", "OK\r\n"}, {"ATH", "OK\r\n"}};
  bool con_dtr = false;
  bool mudo = false;
  const char* derrama = "";  // what it says without end, if anything
  std::string recibido;      // all that was sent to it
  std::string senial;        // changes of DTR

  bool Lista(int) override { return true; }
  std::size_t Enviar(std::span<const std::uint8_t> bytes, int) override {
    for (const std::uint8_t byte : bytes) {
      recibido += static_cast<char>(byte);
      if (mudo) continue;
      if (byte != '\r') {
        orden_ += static_cast<char>(byte);
        continue;
      }
      salida_ += orden_ + "\r\r\n" + dice[orden_];
      orden_.clear();
    }
    return bytes.size();
  }
  std::size_t Recibir(std::vector<std::uint8_t>& destino, int milisegundos) override {
    if (salida_.empty()) salida_ = derrama;
    reloj_.Adelantar((salida_.empty() ? std::max(milisegundos, 1) : 1) / 1000.0);
    const std::string trozo = salida_.substr(0, 3);
    salida_.erase(0, trozo.size());
    destino.insert(destino.end(), trozo.begin(), trozo.end());
    return trozo.size();
  }
  bool Rts(bool) override { return con_dtr; }
  bool Dtr(bool activo) override {
    if (con_dtr) senial += activo ? '1' : '0';
    return con_dtr;
  }

 private:
  RelojFalso& reloj_;
  std::string orden_;
  std::string salida_;
};

struct Escena {
  RelojFalso reloj;
  Espera espera{reloj, {}};
  ModemGuion linea{reloj};
  Modem modem{linea, espera};
};

}  // namespace

TEST(Modem, LaLlamadaEsLoQueElModemDice) {
  const struct {
    const char* al_marcar;
    bool conectada;
    const char* despues = "";
  } casos[] = {{"CONNECT\r\n", true},
               {"RINGING\r\nCONNECT 9600/ARQ\r\n\x01\x03\x02", true},
               {"connect 2400\r\n", true},
               {"BUSY\r\n", false},
               {"NO CARRIER\r\n", false},
               {"NO ANSWER\r\n", false},
               {"NO DIALTONE\r\n", false},
               {"ERROR\r\n", false},
               {"", false, "\r"},  // what goes on dialling is given up
               {"CONNECTED\r\n", false, "\r"}};
  for (const auto& caso : casos) {
    Escena e;
    e.linea.dice["ATDT4800"] = caso.al_marcar;
    e.linea.dice["ATE0V1X4"] = "OK\r\n";
    EXPECT_EQ(e.modem.Llamar("4800", "ATZ\r\n\r\n ATE0V1X4"), caso.conectada) << caso.al_marcar;
    EXPECT_EQ(e.linea.recibido, std::string("AT\rATZ\rATE0V1X4\rATDT4800\r") + caso.despues);
  }
}

TEST(Modem, UnComandoRechazadoOUnModemMudoNoMarcan) {
  Escena e;
  e.linea.dice["ATX"] = "ERROR\r\n";
  EXPECT_FALSE(e.modem.Llamar("4800", "ATX\nATZ"));
  EXPECT_EQ(e.linea.recibido, "AT\rATX\r");
  e.linea.mudo = true;
  const std::int64_t antes = e.reloj.Milisegundos();
  EXPECT_FALSE(e.modem.Llamar("4800", "ATZ"));
  EXPECT_LE(e.reloj.Milisegundos() - antes, 4000);
}

TEST(Modem, UnoQueHablaSinFinTerminaEnSuPlazo) {
  for (const char* dice : {"basura", "RING\r\n", "BUSY\r\n"}) {
    Escena e;
    e.linea.mudo = true;
    e.linea.derrama = dice;
    const std::int64_t antes = e.reloj.Milisegundos();
    EXPECT_FALSE(e.modem.Llamar("4800", "ATZ")) << dice;
    EXPECT_LE(e.reloj.Milisegundos() - antes, 5000) << dice;
  }
}

// What a modem says of the call that was given up isn't the fate of the next one.
TEST(Modem, LoQueQuedabaPorDecirNoEsLaRespuesta) {
  Escena e;
  e.linea.dice["AT"] = "NO CARRIER\r\nOK\r\n";
  e.linea.dice["ATZ"] = "BUSY\r\nOK\r\n";
  e.linea.dice["ATDT4800"] = "CONNECT\r\n";
  EXPECT_TRUE(e.modem.Llamar("4800", "ATZ"));
}

TEST(Modem, UnaLlamadaAbandonadaSeCortaEnseguida) {
  Escena e;
  std::int64_t cancelada = 0;
  Espera espera(e.reloj, [&] {
    if (cancelada != 0 || e.linea.recibido.find("ATDT") == std::string::npos) return;
    espera.Cancelar();
    cancelada = e.reloj.Milisegundos();
  });
  Modem modem(e.linea, espera);
  EXPECT_EQ(NumeroDeError([&] { modem.Llamar("4800", ""); }), error_enlace::kCancelada);
  EXPECT_EQ(e.linea.recibido, "AT\rATDT4800\r\r") << "a character ends the dialling";
  EXPECT_LE(e.reloj.Milisegundos() - cancelada, 100);
}

// It was taken while the operator gave it up.
TEST(Modem, UnaLlamadaTomadaAlAbandonarlaSeCuelga) {
  Escena e;
  e.linea.con_dtr = true;
  e.linea.dice["ATDT4800"] = "";
  e.linea.dice[""] = "CONNECT\r\n";  // behind the character that gives it up
  Espera espera(e.reloj, [&] {
    if (e.linea.recibido.find("ATDT") != std::string::npos) espera.Cancelar();
  });
  Modem modem(e.linea, espera);
  EXPECT_EQ(NumeroDeError([&] { modem.Llamar("4800", ""); }), error_enlace::kCancelada);
  EXPECT_EQ(e.linea.senial, "01");
}

TEST(Modem, SeCuelgaPorDtrOPorLaPausaYAth) {
  Escena e;
  e.modem.Colgar();
  EXPECT_EQ(e.linea.recibido, "+++ATH\r");
  EXPECT_GE(e.reloj.Milisegundos() - RelojFalso().Milisegundos(), 2000) << "a pause on either side";
  Escena con_dtr;
  con_dtr.linea.con_dtr = true;
  con_dtr.modem.Colgar();
  EXPECT_EQ(con_dtr.linea.senial, "01");
  EXPECT_EQ(con_dtr.linea.recibido, "");
}

}  // namespace utr::enlace
