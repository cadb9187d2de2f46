// Budget of the hydrograph: a million points drawn anew, band and axes included, against one bare graph of the same
// points.
#include <fmt/format.h>
#include <qcustomplot.h>

#include <QApplication>
#include <clocale>
#include <cmath>
#include <memory>

#include "base/Fechas.h"
#include "benchmarks/Presupuesto.h"
#include "plots/windows/Hidrograma.h"

namespace {

constexpr std::size_t kPuntos = 1000000;
constexpr QSize kTamano(1200, 600);

// A record a minute: a slow wave with noise on it, and its extremes.
std::shared_ptr<const utr::Serie> Muestra() {
  utr::Tabla tabla;
  for (const char* campo : {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion"})
    tabla.Append(campo, utr::TipoCampo::kVarChar, 20);
  tabla.Open();
  tabla.Reservar(kPuntos);
  for (std::size_t i = 0; i < kPuntos; ++i) {
    const utr::FechaHora fecha = utr::FechaDeSegundos(1104537600 + static_cast<std::int64_t>(i) * 60);
    const double valor =
        5 + 3 * std::sin(static_cast<double>(i) / 5000) + static_cast<double>(i * 2654435761U % 997) / 2000;
    tabla.AddNew();
    tabla.Set(0, utr::TextoFecha(fecha));
    tabla.Set(1, utr::TextoHora(fecha));
    tabla.Set(2, "EA01");
    for (std::size_t campo = 3; campo < 6; ++campo)
      tabla.Set(campo, fmt::format("{:.3f}", valor + (campo == 4 ? 0.2 : campo == 5 ? -0.2 : 0)));
    tabla.Set(6, "1");
  }
  tabla.UpdateBatch();
  return std::make_shared<const utr::Serie>(tabla);
}

std::unique_ptr<QCustomPlot> Pelado(const utr::Serie& serie) {
  auto grafico = std::make_unique<QCustomPlot>();
  grafico->resize(kTamano);
  QCPGraph* curva = grafico->addGraph();
  QVector<double> tiempos;
  QVector<double> valores;
  for (std::size_t i = 0; i < serie.Cantidad(); ++i) {
    tiempos.append(static_cast<double>(serie.Tiempos()[i]));
    valores.append(serie.Valores()[i]);
  }
  curva->setData(tiempos, valores, true);
  grafico->rescaleAxes();
  grafico->show();
  return grafico;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication aplicacion(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  const auto serie = Muestra();
  const auto pelado = Pelado(*serie);
  utr::Hidrograma nuestro;
  nuestro.resize(kTamano);
  nuestro.show();
  utr::ContenidoGrafico contenido;
  contenido.canales.push_back({serie, {}});
  nuestro.Mostrar(std::move(contenido));
  QApplication::processEvents();
  const bool bien = medida::CompararTrabajo(
      "grafico_redibujar_1000000", 1.5, [&] { nuestro.Redibujar(); },
      [&] { pelado->replot(QCustomPlot::rpImmediateRefresh); }, 15);
  return bien ? 0 : 1;
}
