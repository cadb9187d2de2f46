#include "driver/simulated/station/Modem.h"

#include <algorithm>
#include <array>

#include "base/Texto.h"

namespace utr::simulada {

using namespace protocolo;

namespace {

// Milliseconds.
constexpr std::int64_t kGuarda = 1000;  // of silence around "+++"
constexpr std::int64_t kDemora = 20;    // ahead of a word
constexpr std::int64_t kEntrePedazos = 40;
constexpr std::size_t kMayorComando = 200;
constexpr std::array<std::uint8_t, 3> kRuidoDeLinea{0x7E, 0xFF, 0x00};

VistaBytes BytesDeTexto(std::string_view texto) {
  return {reinterpret_cast<const std::uint8_t*>(texto.data()), texto.size()};
}

// The digits of a number as it is dialled, and what stands for more than a digit.
std::string NumeroPuro(std::string_view texto) {
  std::string numero;
  std::copy_if(texto.begin(), texto.end(), std::back_inserter(numero),
               [](char letra) { return letra != ' ' && letra != '-' && letra != '(' && letra != ')' && letra != ','; });
  return numero;
}

bool Contiene(const std::vector<std::string>& numeros, std::string_view numero) {
  return std::any_of(numeros.begin(), numeros.end(), [&](const std::string& n) { return NumeroPuro(n) == numero; });
}

}  // namespace

Modem::Modem(EstacionViva& viva, Despachador& unidad) : viva_(viva), extremo_(ClaseDeLinea::kLlamada, viva, unidad) {}

// Words come in two pieces, and what follows a word stands in one piece with its end.
void Modem::Decir(std::string_view palabra, std::int64_t ahora, VistaBytes detras) {
  const std::string texto = "\r\n" + std::string(palabra) + "\r\n";
  const VistaBytes bytes = BytesDeTexto(texto);
  const std::size_t corte = bytes.size() / 2;
  palabras_.Poner(bytes.first(corte), ahora + kDemora, 0);
  Bytes resto(bytes.begin() + static_cast<std::ptrdiff_t>(corte), bytes.end());
  resto.insert(resto.end(), detras.begin(), detras.end());
  palabras_.Poner(resto, ahora + kDemora + kEntrePedazos, 0);
}

void Modem::Recibir(VistaBytes bytes, std::int64_t ahora) {
  if (bytes.empty()) return;
  if (modo_ == Modo::kEnLinea) {
    ContarEscape(bytes, ahora);
    extremo_.Recibir(bytes, ahora);
    recibido_ = ahora;
    return;
  }
  recibido_ = ahora;
  for (const std::uint8_t byte : bytes) RecibirComando(byte, ahora);
}

void Modem::ContarEscape(VistaBytes bytes, std::int64_t ahora) {
  const bool son = std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == '+'; });
  const bool seguidos = mas_ > 0 || ahora - recibido_ >= kGuarda;
  mas_ = son && seguidos ? mas_ + static_cast<int>(bytes.size()) : 0;
}

void Modem::RecibirComando(std::uint8_t byte, std::int64_t ahora) {
  if (modo_ == Modo::kMarcando) {  // any key gives a call up
    modo_ = Modo::kComandos;
    Decir("NO CARRIER", ahora);
    return;
  }
  if (eco_) palabras_.Poner({&byte, 1}, ahora, 0);
  if (byte == '\r') {
    const std::string comando = Mayusculas(NumeroPuro(comando_));
    comando_.clear();
    if (comando.starts_with("AT")) Ejecutar(std::string_view(comando).substr(2), ahora);
  } else if (byte >= ' ' && comando_.size() < kMayorComando) {
    comando_ += static_cast<char>(byte);
  }
}

void Modem::Ejecutar(std::string_view comando, std::int64_t ahora) {
  if (comando.starts_with('D')) {
    comando.remove_prefix(comando.starts_with("DT") || comando.starts_with("DP") ? 2 : 1);
    if (viva_.escenario.lineas.exige_comandos && !iniciado_) return Decir("ERROR", ahora);
    numero_ = comando;
    modo_ = Modo::kMarcando;
    contesta_ =
        ahora + static_cast<std::int64_t>(viva_.escenario.tiempos.llamada * viva_.escenario.tiempos.factor * 1000);
    return;
  }
  if (comando.starts_with('H')) {
    Colgar();
  } else if (comando.starts_with('O')) {
    if (!llamada_) return Decir("NO CARRIER", ahora);
    modo_ = Modo::kEnLinea;
    return Decir("CONNECT", ahora);
  } else if (!comando.empty()) {
    iniciado_ = true;
    if (comando.find("E0") != std::string_view::npos) eco_ = false;
    if (comando.find("E1") != std::string_view::npos || comando.starts_with('Z')) eco_ = true;
  }
  Decir("OK", ahora);
}

void Modem::ResolverLlamada(std::int64_t ahora) {
  const Lineas& lineas = viva_.escenario.lineas;
  modo_ = Modo::kComandos;
  if (Contiene(lineas.ocupados, numero_)) return Decir("BUSY", ahora);
  const bool atiende = !numero_.empty() && (lineas.telefonos.empty() || Contiene(lineas.telefonos, numero_));
  if (!atiende) return Decir("NO CARRIER", ahora);
  llamada_ = true;
  modo_ = Modo::kEnLinea;
  mas_ = 0;
  extremo_.Reabrir();
  Decir("CONNECT 9600", ahora, kRuidoDeLinea);
}

Bytes Modem::Entregar(std::int64_t ahora) {
  if (modo_ == Modo::kMarcando && ahora >= contesta_) ResolverLlamada(contesta_);
  if (modo_ == Modo::kEnLinea && mas_ == 3 && ahora - recibido_ >= kGuarda) {
    modo_ = Modo::kComandos;
    mas_ = 0;
    Decir("OK", ahora);
  }
  if (llamada_ && extremo_.Colgado()) {
    Colgar();
    modo_ = Modo::kComandos;
    Decir("NO CARRIER", ahora);
  }
  Bytes bytes = palabras_.Tomar(ahora);
  if (modo_ != Modo::kEnLinea) return bytes;
  const Bytes tramas = extremo_.Entregar(ahora);
  bytes.insert(bytes.end(), tramas.begin(), tramas.end());
  return bytes;
}

std::optional<std::int64_t> Modem::Proximo() const {
  std::optional<std::int64_t> proximo = palabras_.Proximo();
  const auto antes = [&proximo](std::optional<std::int64_t> otro) {
    if (otro && (!proximo || *otro < *proximo)) proximo = otro;
  };
  if (modo_ == Modo::kMarcando) antes(contesta_);
  if (modo_ == Modo::kEnLinea) antes(extremo_.Proximo());
  if (modo_ == Modo::kEnLinea && mas_ == 3) antes(recibido_ + kGuarda);
  if (llamada_ && extremo_.Colgado()) antes(0);
  return proximo;
}

void Modem::Colgar() {
  llamada_ = false;
  extremo_.Reabrir();
}

void Modem::Soltar() {
  Colgar();
  modo_ = Modo::kComandos;
  palabras_.Vaciar();
  comando_.clear();
}

}  // namespace utr::simulada
