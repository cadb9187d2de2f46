#include "driver/link/protocol/Pdu.h"

#include <algorithm>

namespace utr::protocolo {

namespace {

constexpr std::uint8_t kReferencia = 6;  // of every part of a read or write of files
constexpr std::size_t kLargoDeParte = 7;
constexpr std::uint16_t kEncendida = 0xFF00;

Bytes Cabeza(std::uint8_t funcion, std::uint16_t a, std::uint16_t b) {
  Bytes pdu{funcion};
  Poner16(pdu, a);
  Poner16(pdu, b);
  return pdu;
}

void PonerBits(Bytes& pdu, const std::vector<bool>& bits) {
  const std::size_t primero = pdu.size();
  pdu.resize(primero + (bits.size() + 7) / 8, 0);
  for (std::size_t i = 0; i < bits.size(); ++i) {
    if (bits[i]) pdu[primero + i / 8] = static_cast<std::uint8_t>(pdu[primero + i / 8] | (1U << (i % 8)));
  }
}

std::vector<bool> LeerBits(VistaBytes bytes, std::size_t cuantos) {
  std::vector<bool> bits(cuantos);
  for (std::size_t i = 0; i < cuantos; ++i) bits[i] = (bytes[i / 8] >> (i % 8) & 1) != 0;
  return bits;
}

// The PDU is of that function, with a count of bytes at `lugar` that is right.
bool TieneCuenta(VistaBytes pdu, std::uint8_t funcion, std::size_t lugar) {
  return pdu.size() > lugar && pdu[0] == funcion && pdu.size() == lugar + 1 + pdu[lugar];
}

}  // namespace

void Poner16(Bytes& bytes, std::uint16_t numero) {
  bytes.push_back(static_cast<std::uint8_t>(numero >> 8));
  bytes.push_back(static_cast<std::uint8_t>(numero & 0xFF));
}

void Poner32(Bytes& bytes, std::uint32_t numero) {
  Poner16(bytes, static_cast<std::uint16_t>(numero >> 16));
  Poner16(bytes, static_cast<std::uint16_t>(numero & 0xFFFF));
}

std::uint16_t Leer16(VistaBytes bytes, std::size_t lugar) {
  return static_cast<std::uint16_t>((bytes[lugar] << 8) | bytes[lugar + 1]);
}

std::uint32_t Leer32(VistaBytes bytes, std::size_t lugar) {
  return (static_cast<std::uint32_t>(Leer16(bytes, lugar)) << 16) | Leer16(bytes, lugar + 2);
}

Bytes BytesDe(std::span<const std::uint16_t> registros) {
  Bytes bytes;
  bytes.reserve(2 * registros.size());
  for (const std::uint16_t registro : registros) Poner16(bytes, registro);
  return bytes;
}

std::vector<std::uint16_t> RegistrosDe(VistaBytes bytes) {
  std::vector<std::uint16_t> registros;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) registros.push_back(Leer16(bytes, i));
  return registros;
}

Bytes PduDeExcepcion(std::uint8_t funcion, Excepcion excepcion) {
  return {static_cast<std::uint8_t>(funcion | kBitDeExcepcion), static_cast<std::uint8_t>(excepcion)};
}

std::optional<std::uint8_t> LeerExcepcion(VistaBytes pdu, std::uint8_t funcion) {
  if (pdu.size() != 2 || pdu[0] != (funcion | kBitDeExcepcion)) return std::nullopt;
  return pdu[1];
}

Bytes PedidoDeTramo(std::uint8_t funcion, Tramo tramo) {
  return Cabeza(funcion, tramo.desde, tramo.cuantos);
}

std::optional<Tramo> LeerPedidoDeTramo(VistaBytes pdu) {
  if (pdu.size() != 5) return std::nullopt;
  return Tramo{Leer16(pdu, 1), Leer16(pdu, 3)};
}

Bytes RespuestaDeRegistros(std::span<const std::uint16_t> registros) {
  const Bytes datos = BytesDe(registros);
  Bytes pdu;
  pdu.reserve(2 + datos.size());
  pdu.push_back(funcion::kLeerRegistros);
  pdu.push_back(static_cast<std::uint8_t>(datos.size()));
  pdu.insert(pdu.end(), datos.begin(), datos.end());
  return pdu;
}

std::optional<std::vector<std::uint16_t>> LeerRespuestaDeRegistros(VistaBytes pdu, std::size_t cuantos) {
  if (!TieneCuenta(pdu, funcion::kLeerRegistros, 1) || pdu[1] != 2 * cuantos) return std::nullopt;
  return RegistrosDe(pdu.subspan(2));
}

Bytes RespuestaDeBits(std::uint8_t funcion, const std::vector<bool>& bits) {
  Bytes pdu;
  pdu.reserve(kMayorPdu);
  pdu.push_back(funcion);
  pdu.push_back(static_cast<std::uint8_t>((bits.size() + 7) / 8));
  PonerBits(pdu, bits);
  return pdu;
}

std::optional<std::vector<bool>> LeerRespuestaDeBits(VistaBytes pdu, std::uint8_t funcion, std::size_t cuantos) {
  if (!TieneCuenta(pdu, funcion, 1) || pdu[1] != (cuantos + 7) / 8) return std::nullopt;
  return LeerBits(pdu.subspan(2), cuantos);
}

Bytes PedidoDeSalida(std::uint16_t salida, bool encender) {
  return Cabeza(funcion::kConmutarSalida, salida, encender ? kEncendida : 0);
}

std::optional<EscrituraDeBits> LeerPedidoDeSalidas(VistaBytes pdu) {
  if (pdu.size() < 5) return std::nullopt;
  const std::uint16_t desde = Leer16(pdu, 1);
  const std::uint16_t valor = Leer16(pdu, 3);
  if (pdu[0] == funcion::kConmutarSalida) {
    if (pdu.size() != 5 || (valor != 0 && valor != kEncendida)) return std::nullopt;
    return EscrituraDeBits{desde, {valor == kEncendida}};
  }
  if (!TieneCuenta(pdu, funcion::kConmutarSalidas, 5) || valor == 0 || pdu[5] != (valor + 7) / 8) return std::nullopt;
  return EscrituraDeBits{desde, LeerBits(pdu.subspan(6), valor)};
}

Bytes PedidoDeEscritura(std::uint16_t desde, std::span<const std::uint16_t> registros) {
  Bytes pdu = Cabeza(funcion::kEscribirRegistros, desde, static_cast<std::uint16_t>(registros.size()));
  const Bytes datos = BytesDe(registros);
  pdu.push_back(static_cast<std::uint8_t>(datos.size()));
  pdu.insert(pdu.end(), datos.begin(), datos.end());
  return pdu;
}

std::optional<EscrituraDeRegistros> LeerPedidoDeEscritura(VistaBytes pdu) {
  if (!TieneCuenta(pdu, funcion::kEscribirRegistros, 5) || pdu[5] == 0 || pdu[5] != 2 * Leer16(pdu, 3))
    return std::nullopt;
  return EscrituraDeRegistros{Leer16(pdu, 1), RegistrosDe(pdu.subspan(6))};
}

Bytes AcuseDe(VistaBytes pedido) {
  const auto acuse = pedido.first(5);
  return {acuse.begin(), acuse.end()};
}

Bytes PedidoDeArchivos(std::span<const PedidoDeArchivo> partes) {
  Bytes pdu{funcion::kLeerArchivos, static_cast<std::uint8_t>(kLargoDeParte * partes.size())};
  for (const PedidoDeArchivo& parte : partes) {
    pdu.push_back(kReferencia);
    for (const std::uint16_t numero : {parte.archivo, parte.record, parte.registros}) Poner16(pdu, numero);
  }
  return pdu;
}

std::optional<std::vector<PedidoDeArchivo>> LeerPedidoDeArchivos(VistaBytes pdu) {
  if (!TieneCuenta(pdu, funcion::kLeerArchivos, 1) || pdu[1] == 0 || pdu[1] % kLargoDeParte != 0 ||
      pdu[1] > kMayorCuentaDeArchivos)
    return std::nullopt;
  std::vector<PedidoDeArchivo> partes;
  for (std::size_t i = 2; i < pdu.size(); i += kLargoDeParte) {
    if (pdu[i] != kReferencia) return std::nullopt;
    partes.push_back({Leer16(pdu, i + 1), Leer16(pdu, i + 3), Leer16(pdu, i + 5)});
  }
  return partes;
}

std::size_t CuentaDeRespuesta(std::span<const PedidoDeArchivo> partes) {
  std::size_t cuenta = 0;
  for (const PedidoDeArchivo& parte : partes) cuenta += 2 + 2 * std::size_t{parte.registros};
  return cuenta;
}

Bytes RespuestaDeArchivos(std::span<const Bytes> partes) {
  Bytes pdu;
  pdu.reserve(kMayorPdu);
  pdu.push_back(funcion::kLeerArchivos);
  pdu.push_back(0);
  for (const Bytes& parte : partes) {
    pdu.push_back(static_cast<std::uint8_t>(parte.size() + 1));
    pdu.push_back(kReferencia);
    pdu.insert(pdu.end(), parte.begin(), parte.end());
  }
  pdu[1] = static_cast<std::uint8_t>(pdu.size() - 2);
  return pdu;
}

std::optional<std::vector<Bytes>> LeerRespuestaDeArchivos(VistaBytes pdu, std::span<const PedidoDeArchivo> partes) {
  if (!TieneCuenta(pdu, funcion::kLeerArchivos, 1) || pdu[1] != CuentaDeRespuesta(partes)) return std::nullopt;
  std::vector<Bytes> leidas;
  std::size_t lugar = 2;
  for (const PedidoDeArchivo& parte : partes) {
    const std::size_t largo = 2 * std::size_t{parte.registros};
    if (pdu[lugar] != largo + 1 || pdu[lugar + 1] != kReferencia) return std::nullopt;
    const auto datos = pdu.subspan(lugar + 2, largo);
    leidas.emplace_back(datos.begin(), datos.end());
    lugar += 2 + largo;
  }
  return leidas;
}

Bytes PedidoDeEscrituraDeArchivos(std::span<const EscrituraDeArchivo> partes) {
  Bytes pdu;
  pdu.reserve(kMayorPdu);
  pdu.push_back(funcion::kEscribirArchivos);
  pdu.push_back(0);
  for (const EscrituraDeArchivo& parte : partes) {
    pdu.push_back(kReferencia);
    Poner16(pdu, parte.archivo);
    Poner16(pdu, parte.record);
    Poner16(pdu, static_cast<std::uint16_t>(parte.datos.size() / 2));
    pdu.insert(pdu.end(), parte.datos.begin(), parte.datos.end());
  }
  pdu[1] = static_cast<std::uint8_t>(pdu.size() - 2);
  return pdu;
}

std::optional<std::vector<EscrituraDeArchivo>> LeerPedidoDeEscrituraDeArchivos(VistaBytes pdu) {
  if (!TieneCuenta(pdu, funcion::kEscribirArchivos, 1) || pdu[1] == 0) return std::nullopt;
  std::vector<EscrituraDeArchivo> partes;
  for (std::size_t i = 2; i < pdu.size();) {
    if (pdu.size() - i < kLargoDeParte || pdu[i] != kReferencia) return std::nullopt;
    const std::size_t largo = 2 * std::size_t{Leer16(pdu, i + 5)};
    if (pdu.size() - i - kLargoDeParte < largo) return std::nullopt;
    const auto datos = pdu.subspan(i + kLargoDeParte, largo);
    partes.push_back({Leer16(pdu, i + 1), Leer16(pdu, i + 3), Bytes(datos.begin(), datos.end())});
    i += kLargoDeParte + largo;
  }
  return partes;
}

}  // namespace utr::protocolo
