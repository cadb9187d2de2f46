#include "retrieved/series/Reduccion.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

namespace utr {
namespace {

constexpr double kNada = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinito = std::numeric_limits<double>::infinity();

// The lowest of some values (with std::less) or the highest, beginning with `antes`; what is no number is passed over.
// Four at a time, since each comparison would wait for the one before.
template <typename Antes>
double Extremo(std::span<const double> valores, double antes, Antes va_antes) {
  double los[] = {antes, antes, antes, antes};
  std::size_t i = 0;
  for (; i + 4 <= valores.size(); i += 4) {
    for (std::size_t j = 0; j < 4; ++j) los[j] = va_antes(valores[i + j], los[j]) ? valores[i + j] : los[j];
  }
  for (; i < valores.size(); ++i) los[0] = va_antes(valores[i], los[0]) ? valores[i] : los[0];
  for (std::size_t j = 1; j < 4; ++j) los[0] = va_antes(los[j], los[0]) ? los[j] : los[0];
  return los[0];
}

// The points of a stretch in the span; with `vecinos` also those to which a line leads out of it.
TramoSerie Recortar(const Serie& serie, const TramoSerie& tramo, const VentanaTiempo& ventana, bool vecinos) {
  const auto suyos = serie.Tiempos().subspan(tramo.desde, tramo.hasta - tramo.desde);
  if (static_cast<double>(suyos.front()) > ventana.hasta || static_cast<double>(suyos.back()) < ventana.desde)
    return {};
  const auto primero = std::lower_bound(suyos.begin(), suyos.end(), ventana.desde, [](std::int64_t t, double buscado) {
    return static_cast<double>(t) < buscado;
  });
  const auto fin = std::upper_bound(primero, suyos.end(), ventana.hasta,
                                    [](double buscado, std::int64_t t) { return buscado < static_cast<double>(t); });
  TramoSerie dentro{tramo.desde + static_cast<std::size_t>(primero - suyos.begin()),
                    tramo.desde + static_cast<std::size_t>(fin - suyos.begin())};
  if (vecinos && dentro.desde > tramo.desde) --dentro.desde;
  if (vecinos && dentro.hasta < tramo.hasta) ++dentro.hasta;
  return dentro;
}

class Reductor {
 public:
  Reductor(const Serie& serie, const VentanaTiempo& ventana, int columnas)
      : serie_(serie), desde_(ventana.desde), ancho_((ventana.hasta - ventana.desde) / std::max(columnas, 1)) {
    if (!(ancho_ > 0)) ancho_ = 1;
  }

  void Agregar(const TramoSerie& tramo) {
    bool sigue = false;
    for (std::size_t i = tramo.desde; i < tramo.hasta; sigue = true) {
      const double columna = ColumnaDe(i);
      const std::size_t fin = FinDe(columna, i, tramo.hasta);
      Poner(columna, Paso(columna, i, fin, sigue));
      i = fin;
    }
  }

  std::vector<PasoReducido> pasos;

 private:
  double ColumnaDe(std::size_t punto) const {
    return std::floor((static_cast<double>(serie_.Tiempos()[punto]) - desde_) / ancho_);
  }

  // The first point beyond the column.
  std::size_t FinDe(double columna, std::size_t i, std::size_t hasta) const {
    std::size_t salto = 1;
    while (i + salto < hasta && ColumnaDe(i + salto) <= columna) salto *= 2;
    std::size_t dentro = i + salto / 2;
    std::size_t fuera = std::min(i + salto, hasta);
    while (fuera - dentro > 1) {
      const std::size_t medio = dentro + (fuera - dentro) / 2;
      (ColumnaDe(medio) <= columna ? dentro : fuera) = medio;
    }
    return fuera;
  }

  PasoReducido Paso(double columna, std::size_t i, std::size_t fin, bool sigue) const {
    const std::size_t cuantos = fin - i;
    PasoReducido paso;
    paso.sigue = sigue;
    paso.momento = cuantos == 1 ? static_cast<double>(serie_.Tiempos()[i]) : desde_ + (columna + 0.5) * ancho_;
    paso.primero = serie_.Valores()[i];
    paso.ultimo = serie_.Valores()[fin - 1];
    const auto de = [&](std::span<const double> valores) { return valores.subspan(i, cuantos); };
    paso.abajo = Extremo(de(serie_.Valores()), kInfinito, std::less<>());
    paso.arriba = Extremo(de(serie_.Valores()), -kInfinito, std::greater<>());
    const bool con_extremos = !serie_.Minimos().empty() && !serie_.Maximos().empty();
    paso.banda_abajo = con_extremos ? Extremo(de(serie_.Minimos()), paso.abajo, std::less<>()) : kNada;
    paso.banda_arriba = con_extremos ? Extremo(de(serie_.Maximos()), paso.arriba, std::greater<>()) : kNada;
    paso.no_validado = NoValidado(i, cuantos);
    return paso;
  }

  double NoValidado(std::size_t i, std::size_t cuantos) const {
    const auto validados = serie_.Validados();
    if (validados.empty()) return kNada;
    const void* primero = std::memchr(validados.data() + i, 0, cuantos);
    if (primero == nullptr) return kNada;
    return serie_.Valores()[static_cast<std::size_t>(static_cast<const std::uint8_t*>(primero) - validados.data())];
  }

  // What falls on the column of the one before is taken into it: there is no room between them.
  void Poner(double columna, const PasoReducido& paso) {
    if (pasos.empty() || columna != columna_) {
      pasos.push_back(paso);
    } else {
      PasoReducido& antes = pasos.back();
      antes.momento = desde_ + (columna + 0.5) * ancho_;
      antes.ultimo = paso.ultimo;
      antes.abajo = std::min(antes.abajo, paso.abajo);
      antes.arriba = std::max(antes.arriba, paso.arriba);
      antes.banda_abajo = std::fmin(antes.banda_abajo, paso.banda_abajo);
      antes.banda_arriba = std::fmax(antes.banda_arriba, paso.banda_arriba);
      if (std::isnan(antes.no_validado)) antes.no_validado = paso.no_validado;
    }
    columna_ = columna;
  }

  const Serie& serie_;
  double desde_;
  double ancho_;
  double columna_ = 0;
};

}  // namespace

std::vector<PasoReducido> Reducir(const Serie& serie, const VentanaTiempo& ventana, int columnas) {
  Reductor reductor(serie, ventana, columnas);
  for (const TramoSerie& tramo : serie.Tramos()) reductor.Agregar(Recortar(serie, tramo, ventana, true));
  return std::move(reductor.pasos);
}

std::vector<TramoSerie> TramosEn(const Serie& serie, const VentanaTiempo& ventana) {
  std::vector<TramoSerie> dentro;
  for (const TramoSerie& tramo : serie.Tramos()) {
    const TramoSerie suyo = Recortar(serie, tramo, ventana, false);
    if (suyo.desde < suyo.hasta) dentro.push_back(suyo);
  }
  return dentro;
}

}  // namespace utr
