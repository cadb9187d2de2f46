#include "driver/link/protocol/Ordenes.h"

namespace utr::protocolo {

namespace {

constexpr std::size_t kRegistrosDeControl = 2;
constexpr std::size_t kMayorPagina = 64;
constexpr std::size_t kRegistrosDeResumen = 5;
constexpr std::int64_t kLimiteComun = 10000;
constexpr struct {
  Codigo codigo;
  std::int64_t limite;
} kLimites[] = {{Codigo::kBorrarFlash, 120000},         {Codigo::kBorrarCartucho, 120000},
                {Codigo::kTomarParametrizacion, 30000}, {Codigo::kTomarConfiguracion, 30000},
                {Codigo::kTomarAgenda, 30000},          {Codigo::kReloj, 2000}};

void Agregar32(std::vector<std::uint16_t>& registros, std::uint32_t numero) {
  registros.push_back(static_cast<std::uint16_t>(numero >> 16));
  registros.push_back(static_cast<std::uint16_t>(numero & 0xFFFF));
}

std::uint32_t Tomar32(std::span<const std::uint16_t> registros, std::size_t lugar) {
  return (static_cast<std::uint32_t>(registros[lugar]) << 16) | registros[lugar + 1];
}

}  // namespace

std::int64_t LimiteDe(Codigo codigo) {
  for (const auto& l : kLimites) {
    if (l.codigo == codigo) return l.limite;
  }
  return kLimiteComun;
}

std::vector<std::uint16_t> BloqueDe(const Orden& orden) {
  std::vector<std::uint16_t> bloque{orden.identificador};
  Agregar32(bloque, orden.sesion);
  bloque.push_back(orden.secuencia);
  bloque.push_back(static_cast<std::uint16_t>(orden.codigo));
  bloque.push_back(static_cast<std::uint16_t>(orden.argumentos.size()));
  bloque.insert(bloque.end(), orden.argumentos.begin(), orden.argumentos.end());
  Agregar32(bloque, Crc32(BytesDe(bloque)));
  return bloque;
}

std::optional<Orden> LeerBloque(std::span<const std::uint16_t> registros) {
  constexpr std::size_t kSinArgumentos = kRegistrosDeOrden + kRegistrosDeControl;
  if (registros.size() < kSinArgumentos || registros.size() != kSinArgumentos + registros[5] ||
      registros[5] > kMayorArgumentos)
    return std::nullopt;
  const auto contenido = registros.first(registros.size() - kRegistrosDeControl);
  if (Crc32(BytesDe(contenido)) != Tomar32(registros, contenido.size())) return std::nullopt;
  const auto argumentos = contenido.subspan(kRegistrosDeOrden);
  return Orden{registros[0],
               Tomar32(registros, 1),
               registros[3],
               static_cast<Codigo>(registros[4]),
               {argumentos.begin(), argumentos.end()}};
}

std::vector<std::uint16_t> RegistrosDeResultados(std::span<const ResultadoDeOrden> resultados) {
  std::vector<std::uint16_t> registros;
  for (const ResultadoDeOrden& r : resultados) {
    Agregar32(registros, r.sesion);
    registros.insert(registros.end(),
                     {r.secuencia, static_cast<std::uint16_t>(r.estado), static_cast<std::uint16_t>(r.motivo)});
  }
  return registros;
}

std::vector<ResultadoDeOrden> LeerResultados(std::span<const std::uint16_t> registros) {
  std::vector<ResultadoDeOrden> resultados;
  for (std::size_t i = 0; i + kRegistrosPorResultado <= registros.size(); i += kRegistrosPorResultado) {
    resultados.push_back({Tomar32(registros, i), registros[i + 2], static_cast<EstadoDeOrden>(registros[i + 3]),
                          static_cast<Motivo>(registros[i + 4])});
  }
  return resultados;
}

std::vector<std::uint16_t> ArgumentosDe(const PaginaEscrita& pagina) {
  Bytes pares = pagina.bytes;
  pares.resize((pares.size() + 1) / 2 * 2, 0);
  std::vector<std::uint16_t> argumentos{pagina.numero, static_cast<std::uint16_t>(pagina.bytes.size())};
  const auto registros = RegistrosDe(pares);
  argumentos.insert(argumentos.end(), registros.begin(), registros.end());
  return argumentos;
}

std::optional<PaginaEscrita> LeerPaginaEscrita(std::span<const std::uint16_t> argumentos) {
  if (argumentos.size() < 2) return std::nullopt;
  const std::size_t largo = argumentos[1];
  if (largo < 1 || largo > kMayorPagina || argumentos.size() != 2 + (largo + 1) / 2) return std::nullopt;
  Bytes bytes = BytesDe(argumentos.subspan(2));
  bytes.resize(largo);
  return PaginaEscrita{argumentos[0], std::move(bytes)};
}

std::vector<std::uint16_t> ArgumentosDe(const Resumen& resumen) {
  std::vector<std::uint16_t> argumentos{resumen.filas};
  Agregar32(argumentos, resumen.largo);
  Agregar32(argumentos, resumen.control);
  return argumentos;
}

std::optional<Resumen> LeerResumen(std::span<const std::uint16_t> argumentos) {
  if (argumentos.size() != kRegistrosDeResumen) return std::nullopt;
  return Resumen{argumentos[0], Tomar32(argumentos, 1), Tomar32(argumentos, 3)};
}

}  // namespace utr::protocolo
