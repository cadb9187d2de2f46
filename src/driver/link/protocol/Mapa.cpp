#include "driver/link/protocol/Mapa.h"

#include <algorithm>

namespace utr::protocolo {

namespace {

constexpr std::uint16_t kLleno = 1;
constexpr std::uint16_t kAsciende = 2;
constexpr std::size_t kMayorPaginaUTR = 64;

// The events have two tracks, every other ring three.
constexpr std::uint16_t PaginasDe(std::size_t anillo) {
  return static_cast<std::uint16_t>((anillo == kAnilloDeSucesos ? 2 : 3) * kPaginasPorPista);
}

}  // namespace

std::array<std::uint16_t, kLargoDeReloj> RegistrosDeReloj(const FechaHora& fecha) {
  const auto registro = [](int numero) { return static_cast<std::uint16_t>(numero); };
  return {registro(fecha.anio), registro(fecha.mes),    registro(fecha.dia),
          registro(fecha.hora), registro(fecha.minuto), registro(fecha.segundo)};
}

std::optional<FechaHora> LeerReloj(std::span<const std::uint16_t> registros) {
  if (registros.size() != kLargoDeReloj) return std::nullopt;
  const FechaHora fecha{registros[0], registros[1], registros[2], registros[3], registros[4], registros[5]};
  return EsValida(fecha) ? std::optional(fecha) : std::nullopt;
}

std::vector<std::uint16_t> RegistrosDeCabezales(const Cabezales& cabezales) {
  std::vector<std::uint16_t> registros;
  for (const Cabezal& c : cabezales) {
    const int bits = (c.lleno ? kLleno : 0) | (c.asciende ? kAsciende : 0);
    registros.insert(registros.end(), {c.siguiente, static_cast<std::uint16_t>(bits), c.pendiente, c.paginas});
  }
  return registros;
}

std::optional<Cabezal> LeerCabezal(std::size_t anillo, std::span<const std::uint16_t> r) {
  if (r.size() != kRegistrosPorAnillo) return std::nullopt;
  const Cabezal c{r[0], (r[1] & kLleno) != 0, (r[1] & kAsciende) != 0, r[2], r[3]};
  const bool lugares = c.siguiente < c.paginas && (c.pendiente == kSinPendiente || c.pendiente < c.paginas);
  return lugares && c.paginas == PaginasDe(anillo) ? std::optional(c) : std::nullopt;
}

std::optional<Cabezales> LeerCabezales(std::span<const std::uint16_t> registros) {
  if (registros.size() != kRegistrosDeCabezales) return std::nullopt;
  Cabezales cabezales;
  for (std::size_t i = 0; i < cabezales.size(); ++i) {
    const auto cabezal = LeerCabezal(i, registros.subspan(i * kRegistrosPorAnillo, kRegistrosPorAnillo));
    if (!cabezal) return std::nullopt;
    cabezales[i] = *cabezal;
  }
  return cabezales;
}

std::vector<std::uint8_t> RecordDePaginaUTR(std::span<const std::uint8_t> bytes) {
  std::vector<std::uint8_t> record(2 * std::size_t{kRegistrosDePaginaUTR}, 0);
  record[1] = static_cast<std::uint8_t>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), record.begin() + 2);
  return record;
}

std::optional<std::vector<std::uint8_t>> LeerRecordDePaginaUTR(std::span<const std::uint8_t> record) {
  if (record.size() != 2 * std::size_t{kRegistrosDePaginaUTR} || record[0] != 0 || record[1] > kMayorPaginaUTR)
    return std::nullopt;
  const auto bytes = record.subspan(2, record[1]);
  return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

}  // namespace utr::protocolo
