#include "driver/link/protocol/Tramas.h"

#include <array>

#include "driver/link/protocol/Pdu.h"

namespace utr::protocolo {

namespace {

using Clase = LargoDePdu::Clase;

constexpr LargoDePdu Sabido(std::size_t largo) {
  return largo <= kMayorPdu ? LargoDePdu{Clase::kSabido, largo} : LargoDePdu{Clase::kDesconocido};
}

// A PDU of `fijos` bytes, and of as many more as the byte at `lugar` says.
LargoDePdu ConCuenta(VistaBytes principio, std::size_t lugar) {
  if (principio.size() <= lugar) return {Clase::kFaltan};
  return Sabido(lugar + 1 + principio[lugar]);
}

// How the length of each function is told: `fijo` bytes, or by the count that stands at `cuenta`. The functions of the
// standard that a unit doesn't know are here too, so that it can say so.
struct Forma {
  std::uint8_t funcion;
  std::uint8_t fijo;
  std::uint8_t cuenta;
};
constexpr Forma kPedidos[] = {{1, 5, 0},  {2, 5, 0},  {3, 5, 0},  {4, 5, 0},  {5, 5, 0},  {6, 5, 0},  {7, 1, 0},
                              {8, 5, 0},  {11, 1, 0}, {12, 1, 0}, {15, 0, 5}, {16, 0, 5}, {17, 1, 0}, {20, 0, 1},
                              {21, 0, 1}, {22, 7, 0}, {23, 0, 9}, {24, 3, 0}, {43, 4, 0}};
constexpr Forma kRespuestas[] = {{1, 0, 1},  {2, 0, 1},  {3, 0, 1},  {4, 0, 1}, {5, 5, 0},
                                 {15, 5, 0}, {16, 5, 0}, {20, 0, 1}, {21, 0, 1}};

template <std::size_t N>
LargoDePdu MedirCon(const Forma (&formas)[N], VistaBytes principio) {
  for (const Forma& forma : formas) {
    if (forma.funcion != principio[0]) continue;
    return forma.fijo != 0 ? Sabido(forma.fijo) : ConCuenta(principio, forma.cuenta);
  }
  return {Clase::kDesconocido};
}

template <class Numero, Numero kPolinomio>
constexpr std::array<Numero, 256> TablaReflejada() {
  std::array<Numero, 256> tabla{};
  for (unsigned i = 0; i < 256; ++i) {
    auto resto = static_cast<Numero>(i);
    for (int bit = 0; bit < 8; ++bit) {
      const bool sobra = (resto & 1) != 0;
      resto = static_cast<Numero>(resto >> 1);
      if (sobra) resto = static_cast<Numero>(resto ^ kPolinomio);
    }
    tabla[i] = resto;
  }
  return tabla;
}

template <class Numero, Numero kPolinomio>
Numero Resto(VistaBytes bytes) {
  static constexpr auto kTabla = TablaReflejada<Numero, kPolinomio>();
  auto resto = static_cast<Numero>(~Numero{0});
  for (const std::uint8_t byte : bytes) {
    resto = static_cast<Numero>((resto >> 8) ^ kTabla[(resto ^ byte) & 0xFF]);
  }
  return resto;
}

// A frame of that length; nothing when its check isn't right.
std::optional<Trama> TramaEntera(VistaBytes bytes) {
  const std::size_t sin_control = bytes.size() - 2;
  const auto control = static_cast<std::uint16_t>(bytes[sin_control] | (bytes[sin_control + 1] << 8));
  if (Crc16(bytes.first(sin_control)) != control) return std::nullopt;
  return Trama{bytes[0], 0, Bytes(bytes.begin() + 1, bytes.begin() + static_cast<std::ptrdiff_t>(sin_control))};
}

}  // namespace

std::uint16_t Crc16(VistaBytes bytes) {
  return Resto<std::uint16_t, 0xA001>(bytes);
}

std::uint32_t Crc32(VistaBytes bytes) {
  return ~Resto<std::uint32_t, 0xEDB88320U>(bytes);
}

LargoDePdu MedirPdu(Sentido sentido, VistaBytes principio) {
  if (principio.empty()) return {Clase::kFaltan};
  if (sentido == Sentido::kPedido) return MedirCon(kPedidos, principio);
  if ((principio[0] & kBitDeExcepcion) != 0) return Sabido(2);
  return MedirCon(kRespuestas, principio);
}

Bytes TramaRtu(std::uint8_t direccion, VistaBytes pdu) {
  Bytes trama;
  trama.reserve(pdu.size() + 3);
  trama.push_back(direccion);
  trama.insert(trama.end(), pdu.begin(), pdu.end());
  const std::uint16_t control = Crc16(trama);
  trama.push_back(static_cast<std::uint8_t>(control & 0xFF));
  trama.push_back(static_cast<std::uint8_t>(control >> 8));
  return trama;
}

Bytes TramaTcp(std::uint16_t transaccion, std::uint8_t direccion, VistaBytes pdu) {
  Bytes trama;
  Poner16(trama, transaccion);
  Poner16(trama, 0);
  Poner16(trama, static_cast<std::uint16_t>(pdu.size() + 1));
  trama.push_back(direccion);
  trama.insert(trama.end(), pdu.begin(), pdu.end());
  return trama;
}

void ReceptorRtu::Recibir(VistaBytes bytes) {
  // Whoever calls Proxima after each Recibir never gets near this; it bounds what a flood can take.
  if (bytes_.size() + bytes.size() > 16 * kMayorTramaRtu) Descartar(bytes_.size());
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

// What is dropped ahead of the frame goes in one piece, so that a flood costs no more than its bytes.
std::optional<Trama> ReceptorRtu::Proxima() {
  std::optional<Trama> trama;
  std::size_t desde = 0;
  std::size_t largo = 0;
  for (; bytes_.size() - desde >= 2; ++desde) {
    const VistaBytes resto = VistaBytes{bytes_}.subspan(desde);
    const LargoDePdu medida = MedirPdu(sentido_, resto.subspan(1));
    if (medida.clase == Clase::kFaltan) break;
    if (medida.clase == Clase::kDesconocido) continue;
    if (resto.size() < medida.largo + 3) break;
    trama = TramaEntera(resto.first(medida.largo + 3));
    if (!trama) continue;
    largo = medida.largo + 3;
    break;
  }
  Descartar(desde);
  bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(largo));
  return trama;
}

void ReceptorRtu::Cortar() {
  if (!bytes_.empty()) Descartar(1);
}

void ReceptorRtu::Descartar(std::size_t cuantos) {
  bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(cuantos));
  descartados_ += cuantos;
}

void ReceptorTcp::Recibir(VistaBytes bytes) {
  if (!roto_) bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

std::optional<Trama> ReceptorTcp::Proxima() {
  if (roto_ || bytes_.size() < kCabeceraTcp) return std::nullopt;
  const std::uint16_t protocolo = Leer16(bytes_, 2);
  const std::size_t largo = Leer16(bytes_, 4);  // of the address and the PDU
  roto_ = protocolo != 0 || largo < 2 || largo > kMayorPdu + 1;
  if (roto_) bytes_.clear();
  if (roto_ || bytes_.size() < 6 + largo) return std::nullopt;
  const auto fin = bytes_.begin() + static_cast<std::ptrdiff_t>(6 + largo);
  Trama trama{bytes_[6], Leer16(bytes_, 0), Bytes(bytes_.begin() + kCabeceraTcp, fin)};
  bytes_.erase(bytes_.begin(), fin);
  return trama;
}

}  // namespace utr::protocolo
