#include "plots/windows/ContenidoGrafico.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "retrieved/series/BarrasLluvia.h"
#include "retrieved/series/Momentos.h"
#include "retrieved/series/TextoSerie.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr double kAire = 0.08;           // of the extent, over and under the values
constexpr double kLluviaDelAlto = 0.45;  // bars from the top reach that far down

// Takes values in, one after the other.
struct Recogida {
  double abajo = std::numeric_limits<double>::infinity();
  double arriba = -abajo;

  void Tomar(std::span<const double> valores) {
    double menor = abajo;
    double mayor = arriba;
    for (const double valor : valores) {
      menor = valor < menor ? valor : menor;
      mayor = valor > mayor ? valor : mayor;
    }
    abajo = menor;
    arriba = mayor;
  }
  bool Nada() const { return !(abajo <= arriba); }
  double Largo() const { return arriba - abajo; }
};

Recogida ValoresEn(const Serie& serie, const VentanaTiempo& ventana) {
  Recogida recogida;
  for (const TramoSerie& tramo : TramosEn(serie, ventana)) {
    for (const auto& valores : {serie.Valores(), serie.Minimos(), serie.Maximos()}) {
      if (!valores.empty()) recogida.Tomar(valores.subspan(tramo.desde, tramo.hasta - tramo.desde));
    }
  }
  return recogida;
}

// The highest bar of several records in sight; nothing where each record has its own.
std::optional<double> MayorBarra(const Serie& serie, const VentanaTiempo& ventana) {
  const auto segundos = SegundosPorBarra(serie, ventana);
  if (!segundos) return std::nullopt;
  double mayor = 0;
  for (const BarraLluvia& barra : BarrasDe(serie, ventana, *segundos)) mayor = std::max(mayor, barra.suma);
  return mayor;
}

// A limit is worth the room if it at most doubles the extent.
void AcogerLimites(const std::vector<LimiteSerie>& limites, Recogida& recogida) {
  const double vecindad = recogida.Largo();
  const Recogida valores = recogida;
  for (const LimiteSerie& limite : limites) {
    if (limite.valor >= valores.abajo - vecindad && limite.valor <= valores.arriba + vecindad)
      recogida.Tomar({&limite.valor, 1});
  }
}

}  // namespace

std::vector<EventoGrafico> EventosDeTabla(const Tabla& eventos) {
  std::vector<EventoGrafico> banderas;
  const std::vector<std::int64_t> momentos = MomentosDe(eventos);
  const std::size_t codigo = eventos.IndiceCampo("Codigo");
  const int descripcion = eventos.BuscarCampo("Descripcion");
  for (std::size_t fila = 0; fila < momentos.size(); ++fila) {
    if (momentos[fila] == kSinMomento) continue;
    QString texto = Q(eventos.Filas().Texto(fila, codigo)).trimmed();
    const QString nombre =
        descripcion < 0 ? QString() : Q(eventos.Filas().Texto(fila, static_cast<std::size_t>(descripcion))).trimmed();
    if (!nombre.isEmpty() && nombre != QLatin1String("-")) texto = nombre + QStringLiteral(" (%1)").arg(texto);
    banderas.push_back({momentos[fila], texto});
  }
  std::stable_sort(banderas.begin(), banderas.end(),
                   [](const auto& a, const auto& b) { return a.momento < b.momento; });
  return banderas;
}

std::optional<VentanaTiempo> TiempoDeRegistros(const ContenidoGrafico& contenido) {
  std::optional<VentanaTiempo> todo;
  for (const CanalGrafico& canal : contenido.canales) {
    const CifrasSerie& cifras = canal.serie->Cifras();
    if (!cifras.primero) continue;
    const auto desde = static_cast<double>(*cifras.primero);
    const auto hasta = static_cast<double>(*cifras.ultimo);
    if (!todo) todo = {desde, hasta};
    todo = {std::min(todo->desde, desde), std::max(todo->hasta, hasta)};
  }
  return todo;
}

std::optional<VentanaTiempo> TodoElTiempo(const ContenidoGrafico& contenido) {
  const auto todo = TiempoDeRegistros(contenido);
  if (!todo || contenido.eventos.empty()) return todo;
  return VentanaTiempo{std::min(todo->desde, static_cast<double>(contenido.eventos.front().momento)),
                       std::max(todo->hasta, static_cast<double>(contenido.eventos.back().momento))};
}

Extension ExtensionDe(const CanalGrafico& canal, const VentanaTiempo& ventana) {
  if (canal.serie->EsLluvia()) {
    // The bar of the first record beyond the span reaches into it.
    const double segundos = canal.serie->Minutos().value_or(1) * 60;
    const Recogida valores = ValoresEn(*canal.serie, {ventana.desde, ventana.hasta + segundos});
    const double mayor = MayorBarra(*canal.serie, ventana).value_or(valores.arriba);
    return {0, mayor > 0 ? mayor / kLluviaDelAlto : 1};
  }
  Recogida valores = ValoresEn(*canal.serie, ventana);
  if (valores.Nada()) return {};
  AcogerLimites(canal.limites, valores);
  const double aire = valores.Largo() > 0 ? valores.Largo() * kAire : std::max(std::abs(valores.arriba) * kAire, 0.5);
  return {valores.abajo - aire, valores.arriba + aire};
}

std::vector<LimiteSerie> LimitesALaVista(const CanalGrafico& canal, const VentanaTiempo& ventana) {
  const bool sumas = canal.serie->EsLluvia() && SegundosPorBarra(*canal.serie, ventana);
  return sumas ? std::vector<LimiteSerie>{} : canal.limites;
}

QString PorQueNada(const ContenidoGrafico& contenido) {
  if (contenido.canales.empty() || !TodoElTiempo(contenido)) return QStringLiteral("Sin datos que graficar");
  const bool con_valores = std::any_of(contenido.canales.begin(), contenido.canales.end(),
                                       [](const CanalGrafico& canal) { return !canal.serie->Tramos().empty(); });
  if (con_valores) return {};
  return QStringLiteral("Ninguno de los registros tiene valor (N/D)");
}

QString TextoVentana(const VentanaTiempo& ventana) {
  return Q(TextoMomento(static_cast<std::int64_t>(ventana.desde))) + QStringLiteral(" a ") +
         Q(TextoMomento(static_cast<std::int64_t>(ventana.hasta)));
}

}  // namespace utr
