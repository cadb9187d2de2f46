#include <gtest/gtest.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPdfWriter>
#include <QPrinter>
#include <map>

#include "support/Carpeta.h"
#include "widgets/ImpresoraQt.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

struct Trazo {
  int pagina;
  QRectF lugar;
  std::string texto;
};

// Notes down the texts that are drawn instead of drawing them.
class MotorAnotador : public QPaintEngine {
 public:
  MotorAnotador() : QPaintEngine(QPaintEngine::AllFeatures) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawTextItem(const QPointF& punto, const QTextItem& texto) override {
    trazos.push_back({pagina,
                      QRectF(punto.x(), punto.y() - texto.ascent(), texto.width(), texto.ascent() + texto.descent()),
                      U(texto.text())});
    puntos = texto.font().pointSizeF();
  }
  Type type() const override { return QPaintEngine::User; }

  std::vector<Trazo> trazos;
  int pagina = 1;
  double puntos = 0;
};

class PapelAnotador : public QPdfWriter {
 public:
  explicit PapelAnotador(QIODevice* salida) : QPdfWriter(salida) { setPageSize(QPageSize(QPageSize::A4)); }
  QPaintEngine* paintEngine() const override { return &motor; }
  bool newPage() override {
    ++motor.pagina;
    return true;
  }
  mutable MotorAnotador motor;
};

class PruebaImpresora : public testing::Test {
 protected:
  PruebaImpresora() { salida.open(QIODevice::WriteOnly); }

  int Dibujar(const std::string& texto) {
    papel.motor.trazos.clear();
    return DibujarDocumento(papel, texto, QGuiApplication::font());
  }

  // The first glyph run of each cell: runs of one line from left to right.
  void ExigirSinChoques() {
    std::map<std::pair<int, int>, std::vector<QRectF>> lineas;
    for (const Trazo& trazo : papel.motor.trazos) {
      EXPECT_LE(trazo.lugar.right(), papel.width() + 2) << trazo.texto;
      EXPECT_LE(trazo.lugar.bottom(), papel.height() + 2) << trazo.texto;
      lineas[{trazo.pagina, qRound(trazo.lugar.top())}].push_back(trazo.lugar);
    }
    for (auto& [clave, lugares] : lineas) {
      std::sort(lugares.begin(), lugares.end(), [](const QRectF& a, const QRectF& b) { return a.x() < b.x(); });
      for (std::size_t i = 1; i < lugares.size(); ++i) EXPECT_LT(lugares[i - 1].right(), lugares[i].left());
    }
  }

  QBuffer salida;
  PapelAnotador papel{&salida};
};

std::string Documento(int filas, const std::string& descripcion) {
  std::string texto =
      "Datos históricos de la UTR\r\nDesde: 01/01/2026\r\nHasta: 31/01/2026\r\nFecha\tHora\tCanal\t"
      "Descripción\tValor \tUnidad\tMáximo\tMínimo\tValidación\tCola TX";
  for (int i = 0; i < filas; ++i) {
    texto += "\r\n01/01/2026\t00:10:00\tEA1\t" + descripcion + "\t" + std::to_string(i) + ".000\tm\tN/D\tN/D\tSi\tNo";
  }
  return texto;
}

TEST_F(PruebaImpresora, TodoElTextoPasaALasPaginasQueHaganFalta) {
  const int paginas = Dibujar(Documento(500, "Nivel"));
  EXPECT_GT(paginas, 5);
  EXPECT_EQ(papel.motor.trazos.back().pagina, paginas);
  int ultima = -1;
  for (const Trazo& trazo : papel.motor.trazos) {
    if (!trazo.texto.ends_with(".000")) continue;
    EXPECT_EQ(trazo.texto, std::to_string(++ultima) + ".000");
  }
  EXPECT_EQ(ultima, 499);
  ExigirSinChoques();
}

TEST_F(PruebaImpresora, LasColumnasNoChocanPorAnchasQueSean) {
  Dibujar(Documento(3, "Nivel"));
  ExigirSinChoques();
  EXPECT_GT(papel.motor.puntos, 6.5) << "ten ordinary columns are printed at a readable size";
  Dibujar(Documento(3, "Precipitación acumulada del pluviómetro de la estación meteorológica"));
  ExigirSinChoques();
  Dibujar(Documento(3, std::string(400, 'm')));
  ExigirSinChoques();
  std::string todo;
  for (const Trazo& trazo : papel.motor.trazos) todo += trazo.texto;
  EXPECT_EQ(std::count(todo.begin(), todo.end(), 'm') >= 1200, true) << "wrapped, not cut";
}

TEST_F(PruebaImpresora, UnaLineaEsUnaPagina) {
  EXPECT_EQ(Dibujar("Agenda"), 1);
  ASSERT_EQ(papel.motor.trazos.size(), 1u);
  EXPECT_EQ(papel.motor.puntos, 10);
}

TEST(PruebaImpresoraReal, EscribeUnPdfYSinDispositivoNoHayPaginas) {
  const prueba::Carpeta carpeta;
  QPrinter impresora(QPrinter::HighResolution);
  impresora.setOutputFormat(QPrinter::PdfFormat);
  impresora.setOutputFileName(Q((carpeta / "lista.pdf").string()));
  EXPECT_GT(DibujarDocumento(impresora, Documento(200, "Nivel"), QGuiApplication::font()), 1);
  EXPECT_TRUE(prueba::LeerTodo(carpeta / "lista.pdf").starts_with("%PDF-"));
  impresora.setOutputFileName(Q((carpeta / "no" / "hay.pdf").string()));
  EXPECT_EQ(DibujarDocumento(impresora, "x", QGuiApplication::font()), 0);
}

}  // namespace
}  // namespace utr
