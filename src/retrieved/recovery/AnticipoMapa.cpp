#include "retrieved/recovery/AnticipoMapa.h"

#include <algorithm>
#include <iterator>

#include "retrieved/recovery/LectorRecuperacion.h"
#include "retrieved/recovery/ListasPilas.h"
#include "services/RegistroErrores.h"

namespace utr {
namespace {

// The less a line says of its page, the further ahead.
int Peso(EstadoPagina estado) {
  constexpr EstadoPagina kOrden[] = {EstadoPagina::kPendiente, EstadoPagina::kDaniada, EstadoPagina::kVacia,
                                     EstadoPagina::kSinCanal, EstadoPagina::kDatos};
  return static_cast<int>(std::find(std::begin(kOrden), std::end(kOrden), estado) - std::begin(kOrden));
}

void Anotar(MapaMemoria& mapa, const LugarPagina& lugar, EstadoPagina estado) {
  if (Peso(estado) > Peso(mapa.Estado(lugar))) mapa.Poner(lugar, estado);
}

EstadoPagina EstadoDe(const LineaRecuperacion& linea, const std::string& pilas) {
  if (linea.clase != ClaseLinea::kPagina) return EstadoPagina::kDaniada;
  const bool de_pila = kGruposFlash[GrupoDePista(linea.pista)].clase == ClaseGrupo::kPila;
  if (linea.EsBlanca()) return EstadoPagina::kVacia;
  return de_pila && !EstaPilaConfigurada(linea.pista, pilas) ? EstadoPagina::kSinCanal : EstadoPagina::kDatos;
}

// What is wrong with the file in words.
std::string Recorrer(MapaMemoria& mapa, const std::filesystem::path& archivo, const std::string& pilas) {
  LectorRecuperacion lector(archivo);
  std::uint64_t danadas = 0;
  while (const LineaRecuperacion* linea = lector.Siguiente()) {
    if (linea->clase == ClaseLinea::kDanada || linea->clase == ClaseLinea::kCortada) ++danadas;
    const bool con_lugar = linea->clase == ClaseLinea::kPagina || linea->con_lugar;
    if (con_lugar) Anotar(mapa, {linea->pista, linea->pagina}, EstadoDe(*linea, pilas));
  }
  if (lector.Vacio()) return "está vacío";
  if (lector.EsAjeno()) return "no es un archivo de recuperación";
  if (danadas == 0) return {};
  const std::string primera = lector.PrimerDano();
  return std::to_string(danadas) + (danadas == 1 ? " línea dañada o cortada" : " líneas dañadas o cortadas") +
         (primera.empty() ? "" : " (" + primera + ")");
}

}  // namespace

std::string AnticiparMapa(MapaMemoria& mapa, const std::vector<std::filesystem::path>& archivos, Tabla* configuracion) {
  for (int pista = 0; pista < kPistas; ++pista) mapa.PonerPista(pista, EstadoPagina::kPendiente);
  const std::string pilas = configuracion != nullptr ? ArmarListasPilas(*configuracion).pilas : std::string();
  std::string reparos;
  for (const std::filesystem::path& archivo : archivos) {
    std::string reparo;
    if (const auto falla = FallaDe([&] { reparo = Recorrer(mapa, archivo, pilas); })) reparo = falla->Descripcion();
    if (reparo.empty()) continue;
    if (!reparos.empty()) reparos += '\n';
    reparos += archivo.filename().string() + ": " + reparo;
  }
  return reparos;
}

}  // namespace utr
