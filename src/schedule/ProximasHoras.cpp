#include "schedule/ProximasHoras.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "base/Texto.h"

namespace utr {
namespace {

std::vector<MarcaHorario> MarcasDe(const FDLHorarios& horarios, int desde) {
  std::vector<MarcaHorario> marcas;
  for (const FDLHoraroPtr& horario : horarios) {
    const int minuto = MinutoDelDia(horario->Horario);
    marcas.push_back({.posicion = MinutoDelDia(minuto - desde),
                      .minuto = minuto,
                      .TWind = horario->TWind,
                      .TCond = horario->TCond,
                      .TOblig = horario->TOblig});
  }
  std::stable_sort(marcas.begin(), marcas.end(),
                   [](const MarcaHorario& a, const MarcaHorario& b) { return a.posicion < b.posicion; });
  return marcas;
}

void HallarRepetidos(ProximasHoras& proximas) {
  std::map<int, int> cuantos;
  for (const MarcaHorario& marca : proximas.marcas) ++cuantos[marca.minuto];
  for (const auto& [minuto, veces] : cuantos) {
    if (veces > 1) proximas.repetidos.emplace_back(minuto, veces);
  }
  for (MarcaHorario& marca : proximas.marcas) marca.repetida = cuantos[marca.minuto] > 1;
}

// The minutes at which windows open, each once, ascending.
std::vector<int> MinutosDeVentana(const ProximasHoras& proximas) {
  std::vector<int> minutos;
  for (const MarcaHorario& marca : proximas.marcas) {
    if (marca.TWind) minutos.push_back(marca.minuto);
  }
  std::sort(minutos.begin(), minutos.end());
  minutos.erase(std::unique(minutos.begin(), minutos.end()), minutos.end());
  return minutos;
}

// The last one of a day and the first one of the next are neighbours too. Of two alone each follows the other.
void HallarSuperpuestos(ProximasHoras& proximas) {
  const std::vector<int> minutos = MinutosDeVentana(proximas);
  for (std::size_t i = 0; i < minutos.size() && minutos.size() > 1; ++i) {
    const bool ultimo = i + 1 == minutos.size();
    const int otro = minutos[ultimo ? 0 : i + 1];
    const std::pair<int, int> par{minutos[i], otro};
    if (MinutoDelDia(otro - minutos[i]) >= proximas.duracion) continue;
    if (minutos.size() == 2 && ultimo && !proximas.superpuestos.empty()) continue;
    proximas.superpuestos.push_back(par);
  }
  for (MarcaHorario& marca : proximas.marcas) {
    marca.superpuesta = marca.TWind && std::any_of(proximas.superpuestos.begin(), proximas.superpuestos.end(),
                                                   [&marca](const std::pair<int, int>& par) {
                                                     return par.first == marca.minuto || par.second == marca.minuto;
                                                   });
  }
}

void ArmarBarras(ProximasHoras& proximas) {
  if (proximas.duracion == 0) return;
  for (const MarcaHorario& marca : proximas.marcas) {
    if (!marca.TWind) continue;
    const int hasta = marca.posicion + proximas.duracion;
    proximas.barras.push_back({marca.posicion, std::min(hasta, kMinutosDia), marca.superpuesta});
    if (hasta > kMinutosDia) proximas.barras.push_back({0, hasta - kMinutosDia, marca.superpuesta});
  }
  std::stable_sort(proximas.barras.begin(), proximas.barras.end(),
                   [](const BarraVentana& a, const BarraVentana& b) { return a.desde < b.desde; });
}

std::string TextoDeTipos(const MarcaHorario& marca, const std::string& por_ventana) {
  std::vector<std::string> tipos;
  if (marca.TOblig) tipos.emplace_back("obligatoria");
  if (marca.TCond) tipos.emplace_back("condicional");
  if (marca.TWind) tipos.push_back(por_ventana);
  return tipos.empty() ? "sin tipo de transmisión" : Unir(tipos, ", ");
}

std::string TextoDeEspera(int minutos) {
  if (minutos == 0) return "en este minuto";
  if (minutos < 60) return fmt::format("en {} min", minutos);
  if (minutos % 60 == 0) return fmt::format("en {} h", minutos / 60);
  return fmt::format("en {} h {} min", minutos / 60, minutos % 60);
}

std::string TextoDeVeces(int veces) {
  constexpr const char* kPalabras[] = {"dos", "tres", "cuatro", "cinco"};
  const auto lugar = static_cast<std::size_t>(veces - 2);
  return lugar < std::size(kPalabras) ? kPalabras[lugar] : std::to_string(veces);
}

}  // namespace

ProximasHoras ProximasDe(const FDLHorarios& horarios, int desde, int duracion) {
  ProximasHoras proximas;
  proximas.desde = MinutoDelDia(desde);
  proximas.duracion = std::clamp(duracion, 0, kMinutosDia);
  proximas.marcas = MarcasDe(horarios, proximas.desde);
  HallarRepetidos(proximas);
  HallarSuperpuestos(proximas);
  ArmarBarras(proximas);
  return proximas;
}

std::string TextoDeProxima(const ProximasHoras& proximas) {
  const MarcaHorario* proxima = proximas.Proxima();
  if (proxima == nullptr) return "La agenda no tiene horarios";
  return fmt::format("Próximo horario: {} ({}), {}", TextoHorario(proxima->minuto),
                     TextoDeTipos(*proxima, "por ventana"), TextoDeEspera(proxima->posicion));
}

std::vector<std::string> AvisosDe(const ProximasHoras& proximas) {
  std::vector<std::string> avisos;
  for (const auto& [antes, despues] : proximas.superpuestos)
    avisos.push_back(fmt::format("{} y {} se superponen", TextoHorario(antes), TextoHorario(despues)));
  for (const auto& [minuto, veces] : proximas.repetidos)
    avisos.push_back(fmt::format("{} está {} veces", TextoHorario(minuto), TextoDeVeces(veces)));
  return avisos;
}

std::vector<std::string> RenglonesDe(const ProximasHoras& proximas) {
  std::vector<std::string> renglones;
  for (const MarcaHorario& marca : proximas.marcas) {
    std::string ventana = "por ventana";
    if (proximas.duracion > 0) ventana += " hasta las " + TextoHorario(marca.minuto + proximas.duracion);
    if (marca.posicion + proximas.duracion > kMinutosDia) ventana += " (abierta ahora)";
    renglones.push_back(TextoHorario(marca.minuto) + ' ' + TextoDeTipos(marca, ventana));
  }
  return renglones;
}

}  // namespace utr
