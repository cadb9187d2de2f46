#include "driver/link/transport/Modem.h"

#include <algorithm>

#include "base/Error.h"
#include "base/Texto.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::enlace {

namespace {

// Milliseconds.
constexpr std::int64_t kParaComando = 3000;
constexpr std::int64_t kParaDespertar = 1000;
constexpr std::int64_t kSinPalabras = 100;  // and whatever it had to say is said
constexpr std::int64_t kParaLlamada = 60000;
constexpr std::int64_t kPausaDeEscape = 1100;  // the modem's own is a second
constexpr std::int64_t kSinDTR = 600;
constexpr std::int64_t kParaDesistir = 60;  // a cancel is heard within a tenth of a second
constexpr int kIntentosDeDespertar = 3;
constexpr std::size_t kMayorLinea = 200;  // more without an end is no modem's

constexpr std::string_view kSinPortadora = "NO CARRIER";

std::span<const std::uint8_t> Bytes(std::string_view texto) {
  return {reinterpret_cast<const std::uint8_t*>(texto.data()), texto.size()};
}

}  // namespace

bool DiceSinPortadora(std::string_view recibido) {
  return recibido.find(kSinPortadora) != std::string_view::npos;
}

Modem::Palabra Modem::Leer(std::string_view linea) {
  static constexpr std::pair<std::string_view, Palabra> kPalabras[] = {
      {"OK", Palabra::kBien},           {"ERROR", Palabra::kError},          {"CONNECT", Palabra::kConectado},
      {"BUSY", Palabra::kFallida},      {kSinPortadora, Palabra::kFallida},  {"NO DIALTONE", Palabra::kFallida},
      {"NO ANSWER", Palabra::kFallida}, {"NO DIAL TONE", Palabra::kFallida},
  };
  const std::string texto = Mayusculas(Recortar(linea));
  for (const auto& [palabra, que] : kPalabras) {
    const bool con_algo = que == Palabra::kConectado && texto.starts_with("CONNECT ");
    if (texto == palabra || con_algo) return que;
  }
  return Palabra::kNinguna;
}

void Modem::Decir(std::string_view texto) {
  espera_.Enviar(linea_, Bytes(texto), espera_.Ahora() + kParaComando);
}

// The next word of the modem; lines that are none (echo, noise, blank ones) are passed over.
Modem::Palabra Modem::Siguiente(std::int64_t hasta) {
  for (;;) {
    const auto fin = std::find_if(recibido_.begin(), recibido_.end(), [](auto c) { return c == '\r' || c == '\n'; });
    if (fin != recibido_.end()) {
      const Palabra palabra = Leer(std::string(recibido_.begin(), fin));
      recibido_.erase(recibido_.begin(), fin + 1);
      if (palabra != Palabra::kNinguna) return palabra;
      continue;
    }
    if (recibido_.size() > kMayorLinea) recibido_.clear();
    if (espera_.Ahora() > hasta) return Palabra::kNinguna;  // who talks without end says nothing
    if (!espera_.Recibir(linea_, recibido_, hasta)) return Palabra::kNinguna;
  }
}

// A command is done when its own word comes; what the modem still says of a call that was given up isn't it.
bool Modem::Ordenar(std::string_view comando) {
  Decir(std::string(comando) + "\r");
  for (const std::int64_t hasta = espera_.Ahora() + kParaComando;;) {
    const Palabra palabra = Siguiente(hasta);
    if (palabra == Palabra::kBien) return true;
    if (palabra == Palabra::kError || palabra == Palabra::kNinguna) return false;
  }
}

// The first command gets lost in a modem that is still giving up a call.
bool Modem::Despertar() {
  for (int intento = 0; intento < kIntentosDeDespertar; ++intento) {
    Decir("AT\r");
    const std::int64_t hasta = espera_.Ahora() + kParaDespertar;
    for (Palabra palabra = Siguiente(hasta); palabra != Palabra::kNinguna; palabra = Siguiente(hasta)) {
      if (palabra == Palabra::kBien) return true;
    }
  }
  return false;
}

bool Modem::Contesta() {
  recibido_.clear();
  espera_.EsperarSilencio(linea_, kSinPalabras, espera_.Ahora() + kParaDespertar);
  return Despertar();
}

bool Modem::Llamar(std::string_view numero, std::string_view comandos) {
  if (!Contesta()) return false;
  const std::string lineas = Reemplazar(comandos, "\r", "\n");
  for (const std::string_view comando : Separar(lineas, '\n')) {
    if (!Recortar(comando).empty() && !Ordenar(Recortar(comando))) return false;
  }
  recibido_.clear();
  Decir("ATDT" + std::string(numero) + "\r");
  try {
    const std::int64_t hasta = espera_.Ahora() + kParaLlamada;
    Palabra palabra = Siguiente(hasta);
    while (palabra == Palabra::kBien) palabra = Siguiente(hasta);  // of a command ahead of it
    if (palabra == Palabra::kNinguna) Decir("\r");  // or it would go on dialling, and stand with nobody knowing
    return palabra == Palabra::kConectado;
  } catch (const Error& falla) {
    if (falla.Numero() == error_enlace::kCancelada) Desistir();
    throw;
  }
}

// A character ends the dialling. A call that was taken at that very moment stands all the same, and is hung up.
void Modem::Desistir() {
  espera_.Obstinarse(true);
  Decir("\r");
  if (Siguiente(espera_.Ahora() + kParaDesistir) == Palabra::kConectado) Colgar();
  espera_.Obstinarse(false);
}

void Modem::Colgar() {
  if (linea_.Dtr(false)) {
    espera_.Desoir(linea_, kSinDTR);
    linea_.Dtr(true);
    return;
  }
  espera_.Desoir(linea_, kPausaDeEscape);
  Decir("+++");
  espera_.Desoir(linea_, kPausaDeEscape);
  recibido_.clear();
  Ordenar("ATH");
}

}  // namespace utr::enlace
