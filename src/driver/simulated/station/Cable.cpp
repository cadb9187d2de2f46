#include "driver/simulated/station/Cable.h"

#include <algorithm>

namespace utr::simulada {

using namespace protocolo;

namespace {

constexpr double kBitsPorByte = 10;  // eight, and the two that begin and end it
constexpr std::size_t kMayorRuido = 8;
constexpr std::size_t kMayorBasura = 6;
constexpr std::size_t kMayorEnCamino = 64 * 1024;

}  // namespace

void Salida::Poner(VistaBytes bytes, std::int64_t desde, double bits_por_segundo) {
  if (bytes.empty() || en_camino_ >= kMayorEnCamino) return;
  en_camino_ += bytes.size();
  if (!envios_.empty()) desde = std::max(desde, envios_.back().Turno(envios_.back().bytes.size() - 1));
  const double por_byte = bits_por_segundo > 0 ? kBitsPorByte * 1000 / bits_por_segundo : 0;
  envios_.push_back({Bytes(bytes.begin(), bytes.end()), desde, por_byte});
}

Bytes Salida::Tomar(std::int64_t ahora) {
  Bytes tomados;
  while (!envios_.empty()) {
    Envio& envio = envios_.front();
    while (envio.tomados < envio.bytes.size() && envio.Turno(envio.tomados) <= ahora) {
      tomados.push_back(envio.bytes[envio.tomados++]);
    }
    if (envio.tomados < envio.bytes.size()) break;
    envios_.pop_front();
  }
  en_camino_ -= tomados.size();
  return tomados;
}

std::optional<std::int64_t> Salida::Proximo() const {
  if (envios_.empty()) return std::nullopt;
  return envios_.front().Turno(envios_.front().tomados);
}

bool Azar::Toca(double azar) {
  // Nothing is thrown for what can't happen, so that one fault meets the same frames whatever the others are.
  return azar > 0 && std::generate_canonical<double, 53>(generador_) < azar;
}

std::size_t Azar::Hasta(std::size_t mayor) {
  return generador_() % (mayor + 1);
}

void Azar::Ensuciar(Bytes& trama) {
  for (std::size_t i = 0, cuantos = 1 + Hasta(kMayorRuido - 1); i < cuantos; ++i) {
    const std::size_t bit = Hasta(trama.size() * 8 - 1);
    trama[bit / 8] = static_cast<std::uint8_t>(trama[bit / 8] ^ (1U << (bit % 8)));
  }
}

std::optional<Bytes> Azar::Pedido(Bytes trama, bool con_ruido) {
  if (Toca(fallas_.pedido_perdido)) return std::nullopt;
  if (con_ruido && Toca(fallas_.ruido)) Ensuciar(trama);
  return trama;
}

std::vector<Azar::Tramo> Azar::Respuesta(Bytes trama, bool con_ruido) {
  if (Toca(fallas_.respuesta_perdida)) return {};
  if (con_ruido && Toca(fallas_.ruido)) Ensuciar(trama);
  const bool doble = Toca(fallas_.respuesta_doble);
  int demora = fallas_.latencia + static_cast<int>(Hasta(static_cast<std::size_t>(fallas_.fluctuacion)));
  if (Toca(fallas_.respuesta_tarde)) demora += fallas_.tarde;
  std::vector<Tramo> tramos;
  if (Toca(fallas_.basura)) {
    Bytes basura(1 + Hasta(kMayorBasura - 1));
    for (auto& byte : basura) byte = static_cast<std::uint8_t>(Hasta(255));
    tramos.push_back({std::move(basura), demora});
  }
  const auto mitad = trama.begin() + static_cast<std::ptrdiff_t>(trama.size() / 2);
  const Bytes entera = trama;
  if (Toca(fallas_.media_trama)) {
    tramos.push_back({Bytes(trama.begin(), mitad), demora});
  } else if (Toca(fallas_.hueco)) {
    tramos.push_back({Bytes(trama.begin(), mitad), demora});
    tramos.push_back({Bytes(mitad, trama.end()), demora + fallas_.largo_de_hueco});
  } else {
    tramos.push_back({std::move(trama), demora});
  }
  if (doble) tramos.push_back({entera, demora});
  return tramos;
}

}  // namespace utr::simulada
