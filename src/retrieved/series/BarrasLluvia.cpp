#include "retrieved/series/BarrasLluvia.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <utility>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "retrieved/series/TextoSerie.h"

namespace utr {
namespace {

constexpr std::int64_t kMinuto = 60;
constexpr std::int64_t kHora = 60 * kMinuto;
constexpr std::int64_t kDia = 24 * kHora;
constexpr std::int64_t kLapsos[] = {5 * kMinuto, 10 * kMinuto, 15 * kMinuto, 30 * kMinuto, kHora,    2 * kHora,
                                    3 * kHora,   6 * kHora,    12 * kHora,   kDia,         2 * kDia, 5 * kDia,
                                    10 * kDia,   30 * kDia,    90 * kDia,    365 * kDia};
constexpr double kBarras = 150;    // in sight, at most
constexpr double kHolgura = 1e-9;  // of a span that is moved: its length comes out a little different each time
constexpr std::int64_t kMasLargo = 4;
constexpr std::size_t kMuchos = 2;  // times as many records as bars, where they come closer than they should

// Lapses are numbered by their ends.
std::int64_t LapsoDe(double momento, std::int64_t segundos) {
  return static_cast<std::int64_t>(std::ceil(momento / static_cast<double>(segundos)));
}

std::size_t RegistrosEn(const Serie& serie, const VentanaTiempo& ventana) {
  const auto tramos = TramosEn(serie, ventana);
  return std::accumulate(tramos.begin(), tramos.end(), std::size_t{0},
                         [](std::size_t suma, const TramoSerie& tramo) { return suma + tramo.hasta - tramo.desde; });
}

// The records [i, fin) of a series in the lapse of that number.
BarraLluvia Barra(const Serie& serie, std::int64_t lapso, std::int64_t segundos, std::size_t i, std::size_t fin) {
  const auto valores = serie.Valores().subspan(i, fin - i);
  const auto validados = serie.Validados();
  return {(lapso - 1) * segundos, lapso * segundos, std::accumulate(valores.begin(), valores.end(), 0.0), fin - i,
          !validados.empty() && std::memchr(validados.data() + i, 0, fin - i) != nullptr};
}

// Where the clock went back, the records of one lapse come in several stretches.
void Juntar(std::vector<BarraLluvia>& barras) {
  std::stable_sort(barras.begin(), barras.end(),
                   [](const BarraLluvia& una, const BarraLluvia& otra) { return una.hasta < otra.hasta; });
  std::vector<BarraLluvia> unidas;
  for (const BarraLluvia& barra : barras) {
    if (unidas.empty() || unidas.back().hasta != barra.hasta) {
      unidas.push_back(barra);
      continue;
    }
    unidas.back().suma += barra.suma;
    unidas.back().registros += barra.registros;
    unidas.back().no_validados |= barra.no_validados;
  }
  barras = std::move(unidas);
}

}  // namespace

std::optional<std::int64_t> SegundosPorBarra(const Serie& serie, const VentanaTiempo& ventana) {
  if (!serie.Minutos()) return std::nullopt;
  const double cada = *serie.Minutos() * kMinuto;
  const double largo = (ventana.hasta - ventana.desde) * (1 - kHolgura);
  const bool pocos = RegistrosEn(serie, ventana) <= kMuchos * static_cast<std::size_t>(kBarras);
  if (largo <= cada * kBarras && pocos) return std::nullopt;
  const auto alcanza = [&](std::int64_t lapso) { return static_cast<double>(lapso) * kBarras >= largo; };
  const auto* primero = std::find_if(std::begin(kLapsos), std::end(kLapsos), alcanza);
  if (primero == std::end(kLapsos)) return kLapsos[std::size(kLapsos) - 1];
  // As many records in each bar, where a lapse not much longer has that.
  const auto* parejo = std::find_if(
      primero, std::end(kLapsos), [&](std::int64_t lapso) { return std::fmod(static_cast<double>(lapso), cada) == 0; });
  return parejo != std::end(kLapsos) && *parejo <= kMasLargo * *primero ? *parejo : *primero;
}

std::vector<BarraLluvia> BarrasDe(const Serie& serie, const VentanaTiempo& ventana, std::int64_t segundos) {
  const VentanaTiempo entera{static_cast<double>((LapsoDe(ventana.desde, segundos) - 1) * segundos + 1),
                             static_cast<double>(LapsoDe(ventana.hasta, segundos) * segundos)};
  const auto tiempos = serie.Tiempos();
  std::vector<BarraLluvia> barras;
  for (const TramoSerie& tramo : TramosEn(serie, entera)) {
    for (std::size_t i = tramo.desde; i < tramo.hasta;) {
      const std::int64_t lapso = LapsoDe(static_cast<double>(tiempos[i]), segundos);
      const auto suyos = tiempos.subspan(i, tramo.hasta - i);
      const auto fin =
          i + static_cast<std::size_t>(std::upper_bound(suyos.begin(), suyos.end(), lapso * segundos) - suyos.begin());
      barras.push_back(Barra(serie, lapso, segundos, i, fin));
      i = fin;
    }
  }
  Juntar(barras);
  return barras;
}

std::optional<BarraLluvia> BarraEn(const Serie& serie, double momento, std::int64_t segundos) {
  const auto barras = BarrasDe(serie, {momento, momento}, segundos);
  return barras.empty() ? std::nullopt : std::optional(barras.front());
}

std::string TextoLapsoDeBarra(std::int64_t segundos) {
  if (segundos < kHora) return std::to_string(segundos / kMinuto) + " min";
  if (segundos < kDia) return std::to_string(segundos / kHora) + " h";
  return segundos == kDia ? "1 día" : std::to_string(segundos / kDia) + " días";
}

std::string TextoBarra(const Serie& serie, const BarraLluvia& barra) {
  const std::string unidad{Recortar(serie.Unidad())};
  return TituloSerie(serie) + ": " + TextoMomento(barra.desde) + " a " + TextoMomento(barra.hasta) + ", " +
         FormatoFijo(barra.suma) + (unidad.empty() || unidad == "-" ? "" : ' ' + unidad) + " en " +
         std::to_string(barra.registros) + (barra.registros == 1 ? " registro" : " registros") +
         (barra.no_validados ? ", alguno no validado" : "");
}

}  // namespace utr
