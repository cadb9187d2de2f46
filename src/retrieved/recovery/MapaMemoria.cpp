#include "retrieved/recovery/MapaMemoria.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/FilasDeCanales.h"
#include "driver/CanalesUTR.h"

namespace utr {
namespace {

// A state in the legend of the maps that have it, with its words for one page and for several.
struct EntradaLeyenda {
  EstadoPagina estado;
  bool al_leer;
  bool al_procesar;
  const char* una;
  const char* varias;
};
constexpr EntradaLeyenda kLeyenda[] = {
    {EstadoPagina::kDatos, true, true, "con datos", "con datos"},
    {EstadoPagina::kVacia, true, true, "vacía", "vacías"},
    {EstadoPagina::kFallida, true, false, "no se pudo leer", "no se pudieron leer"},
    {EstadoPagina::kDaniada, false, true, "dañada", "dañadas"},
    {EstadoPagina::kSinCanal, false, true, "de una pila sin canal", "de pilas sin canal"},
    {EstadoPagina::kAnterior, true, false, "del archivo anterior", "del archivo anterior"},
    {EstadoPagina::kSalteada, true, false, "salteada", "salteadas"},
    {EstadoPagina::kPendiente, true, false, "todavía sin leer", "todavía sin leer"},
    {EstadoPagina::kPendiente, false, true, "no está en el archivo", "no están en el archivo"},
};

bool EsDe(const EntradaLeyenda& entrada, UsoMapa uso) {
  return uso == UsoMapa::kLectura ? entrada.al_leer : entrada.al_procesar;
}

// The stack that a text of the column Pila names: a whole number from 0 to 8, and nothing else.
std::optional<std::size_t> LeerPila(std::string_view texto) {
  const std::optional<std::int64_t> numero = EnteroExacto(texto);
  const bool suya = numero && *numero >= 0 && *numero < static_cast<std::int64_t>(kGrupoCola);
  return suya ? std::optional(static_cast<std::size_t>(*numero)) : std::nullopt;
}

}  // namespace

MapaMemoria::MapaMemoria(UsoMapa uso) : uso_(uso), estados_(kPaginasFlash, EstadoPagina::kPendiente) {
  cuentas_[static_cast<std::size_t>(EstadoPagina::kPendiente)] = estados_.size();
}

void MapaMemoria::Poner(const LugarPagina& lugar, EstadoPagina estado) {
  EstadoPagina& suyo = estados_[IndiceDePagina(lugar)];
  if (suyo == estado) return;
  --cuentas_[static_cast<std::size_t>(suyo)];
  ++cuentas_[static_cast<std::size_t>(estado)];
  suyo = estado;
  if (aviso_) aviso_(lugar);
}

void MapaMemoria::PonerPista(int pista, EstadoPagina estado) {
  for (int pagina = 0; pagina < kPaginasPista; ++pagina) Poner({pista, pagina}, estado);
}

EstadoPagina MapaMemoria::Peor(const LugarPagina& lugar, int cuantas) const {
  const auto desde = estados_.begin() + static_cast<std::ptrdiff_t>(IndiceDePagina(lugar));
  return *std::max_element(desde, desde + cuantas);
}

void MapaMemoria::NombrarCanales(const Tabla* configuracion) {
  canales_ = {};
  if (configuracion == nullptr || configuracion->BuscarCampo("Pila") < 0) return;
  for (const TablaPtr filas = configuracion->Clone(); !filas->Eof(); filas->MoveNext()) {
    const std::optional<std::size_t> pila = LeerPila(filas->Texto("Pila"));
    const std::optional<std::int16_t> canal = NumeroDeFila(filas->Texto("Canal"));
    if (!pila || !canal || !GuardaHistoria(LeerTipo(filas->Texto("Tipo")))) continue;
    std::string& nombre = canales_[*pila];
    nombre += (nombre.empty() ? "" : ", ") + NombreCanal(*canal);
  }
}

std::vector<EstadoPagina> MapaMemoria::Leyenda() const {
  std::vector<EstadoPagina> estados;
  for (const EntradaLeyenda& entrada : kLeyenda) {
    if (EsDe(entrada, uso_)) estados.push_back(entrada.estado);
  }
  return estados;
}

std::string MapaMemoria::Palabra(EstadoPagina estado, std::size_t cuantas) const {
  for (const EntradaLeyenda& entrada : kLeyenda) {
    if (entrada.estado == estado && EsDe(entrada, uso_)) return cuantas == 1 ? entrada.una : entrada.varias;
  }
  return {};
}

std::string MapaMemoria::NombreDeGrupo(std::size_t grupo) const {
  if (grupo == kGrupoCola) return "Cola de transmisión";
  if (grupo == kGrupoEventos) return "Eventos";
  const std::string& canal = canales_[grupo];
  return canal.empty() ? fmt::format("Pila {}", grupo) : fmt::format("Pila {}: {}", grupo, canal);
}

std::string MapaMemoria::Describir(const LugarPagina& lugar, int cuantas) const {
  const std::string donde = fmt::format("Pista {}, ", lugar.pista);
  const std::string grupo = NombreDeGrupo(GrupoDePista(lugar.pista));
  if (cuantas == 1) return fmt::format("{}página {} ({}): {}", donde, lugar.pagina, grupo, Palabra(Estado(lugar), 1));
  Cuentas cuentas{};
  for (int i = 0; i < cuantas; ++i) ++cuentas[static_cast<std::size_t>(Estado({lugar.pista, lugar.pagina + i}))];
  return fmt::format("{}páginas {} a {} ({}): {}", donde, lugar.pagina, lugar.pagina + cuantas - 1, grupo,
                     EnPalabras(cuentas));
}

std::string MapaMemoria::Cuenta() const {
  return EnPalabras(cuentas_);
}

std::string MapaMemoria::EnPalabras(const Cuentas& cuentas) const {
  std::vector<std::string> partes;
  for (const EstadoPagina estado : Leyenda()) {
    const std::size_t cuantas = cuentas[static_cast<std::size_t>(estado)];
    if (cuantas > 0) partes.push_back(fmt::format("{} {}", cuantas, Palabra(estado, cuantas)));
  }
  return Unir(partes, ", ");
}

}  // namespace utr
