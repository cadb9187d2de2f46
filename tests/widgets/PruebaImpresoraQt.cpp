#include <gtest/gtest.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <map>

#include "support/Cancelador.h"
#include "support/Carpeta.h"
#include "widgets/ImpresoraQt.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kPorPulgada = 1200;

struct Trazo {
  int pagina;
  QRectF lugar;
  std::string texto;
};

// Notes down the texts that are drawn instead of drawing them, as far as they would be seen.
class MotorAnotador : public QPaintEngine {
 public:
  MotorAnotador() : QPaintEngine(QPaintEngine::AllFeatures) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawLines(const QLineF*, int) override {}
  void drawTextItem(const QPointF& punto, const QTextItem& texto) override {
    const QRectF lugar(punto.x(), punto.y() - texto.ascent(), texto.width(), texto.ascent() + texto.descent());
    if (painter()->hasClipping() && !painter()->clipBoundingRect().contains(lugar.center())) return;
    trazos.push_back({pagina, lugar, U(texto.text())});
    puntos = texto.font().pixelSize() * 72.0 / kPorPulgada;
  }
  Type type() const override { return QPaintEngine::User; }

  std::vector<Trazo> trazos;
  int pagina = 1;
  double puntos = 0;
};

class PapelAnotador : public QPdfWriter {
 public:
  explicit PapelAnotador(QIODevice* salida) : QPdfWriter(salida) {
    setResolution(kPorPulgada);
    setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                              QPageLayout::Millimeter));
  }
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

  int Dibujar(DocumentoImpreso documento) {
    papel.motor.trazos.clear();
    papel.motor.pagina = 1;
    QPainter pintor;
    return DibujarDocumento(papel, pintor, documento, QGuiApplication::font(), progreso);
  }
  int Dibujar(const std::string& texto) { return Dibujar(DocumentoImpreso{.texto = texto}); }

  // The texts of a page from its top to its foot, those of one line from left to right.
  std::vector<std::string> Pagina(int cual) const {
    std::vector<Trazo> trazos;
    for (const Trazo& trazo : papel.motor.trazos) {
      if (trazo.pagina == cual) trazos.push_back(trazo);
    }
    std::stable_sort(trazos.begin(), trazos.end(), [](const Trazo& a, const Trazo& b) {
      return std::pair(qRound(a.lugar.bottom()), a.lugar.x()) < std::pair(qRound(b.lugar.bottom()), b.lugar.x());
    });
    std::vector<std::string> textos;
    for (const Trazo& trazo : trazos) textos.push_back(trazo.texto);
    return textos;
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

  SinProgreso progreso;
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
  EXPECT_GT(papel.motor.puntos, 6) << "ten ordinary columns are printed at a readable size";
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
  EXPECT_EQ(Pagina(1), (std::vector<std::string>{"Agenda", "Página 1 de 1"}));
}

TEST_F(PruebaImpresora, CadaPaginaLlevaTitulosDeColumnaYPie) {
  DocumentoImpreso documento{.texto = "Eventos\r\nFecha: hoy\r\nHora\tValor ",
                             .titulo = "Eventos",
                             .pie = "UTR 120  ·  Impreso: 15/03/2026 10:00:00",
                             .titulos = 2,
                             .numericas = {false, true}};
  for (int i = 0; i < 150; ++i) documento.texto += "\r\n10:00\t" + std::to_string(i % 7 == 0 ? 5 : 12345);
  const int paginas = Dibujar(documento);
  ASSERT_GE(paginas, 3);
  for (int pagina = 1; pagina <= paginas; ++pagina) {
    std::vector<std::string> textos = Pagina(pagina);
    if (pagina == 1) textos.erase(textos.begin(), textos.begin() + 2);
    EXPECT_EQ(textos[0] + "|" + textos[1], "Hora|Valor") << pagina;
    EXPECT_EQ(textos[2], "10:00") << "no line comes twice";
    EXPECT_EQ(textos[textos.size() - 2], documento.pie);
    EXPECT_EQ(textos.back(), "Página " + std::to_string(pagina) + " de " + std::to_string(paginas));
  }
  double derecha = 0;
  for (const Trazo& trazo : papel.motor.trazos) {
    if (trazo.texto != "5" && trazo.texto != "12345" && trazo.texto != "Valor") continue;
    if (derecha == 0) derecha = trazo.lugar.right();
    EXPECT_NEAR(trazo.lugar.right(), derecha, 8) << "numbers and their title end together: " << trazo.texto;
  }
}

TEST_F(PruebaImpresora, CancelarNoImprimeNada) {
  const DocumentoImpreso documento{.texto = Documento(500, "Nivel")};
  for (const int cuando : {0, 1, 3}) {  // while it is measured, counted, drawn
    prueba::Cancelador cancelador(cuando);
    QPainter pintor;
    EXPECT_EQ(DibujarDocumento(papel, pintor, documento, QGuiApplication::font(), cancelador), 0);
    EXPECT_EQ(pintor.isActive(), cuando == 3) << "what was measured only needs no device";
  }
}

TEST(PruebaImpresoraReal, EscribeUnPdfYSinDispositivoNoHayPaginas) {
  const prueba::Carpeta carpeta;
  QPrinter impresora(QPrinter::HighResolution);
  impresora.setOutputFormat(QPrinter::PdfFormat);
  impresora.setOutputFileName(Q((carpeta / "lista.pdf").string()));
  SinProgreso nadie;
  const DocumentoImpreso documento{.texto = Documento(200, "Nivel")};
  QPainter pintor;
  EXPECT_GT(DibujarDocumento(impresora, pintor, documento, QGuiApplication::font(), nadie), 1);
  EXPECT_TRUE(pintor.end());
  EXPECT_TRUE(prueba::LeerTodo(carpeta / "lista.pdf").starts_with("%PDF-"));
  impresora.setOutputFileName(Q((carpeta / "no" / "hay.pdf").string()));
  EXPECT_EQ(DibujarDocumento(impresora, pintor, documento, QGuiApplication::font(), nadie), 0);
}

// A record whose text is longer than a page, between two short ones.
TEST_F(PruebaImpresora, LoQueEsMasAltoQueUnaPaginaSigueEnLaSiguienteSinPerderNiRepetirRenglones) {
  std::string largo;
  for (int i = 0; i < 4000; ++i) largo += std::to_string(10000 + i) + ";";
  DocumentoImpreso documento{
      .texto = "Registro\r\nHora\tEscrito\r\n10:00\tantes\r\n10:01\t" + largo + "\r\n10:02\tultimo",
      .pie = "UTR 120",
      .titulos = 1};
  const int paginas = Dibujar(documento);
  EXPECT_GT(paginas, 2);
  for (const Trazo& trazo : papel.motor.trazos) EXPECT_LE(trazo.lugar.bottom(), papel.height() + 2) << trazo.texto;
  std::string leido;
  for (int pagina = 1; pagina <= paginas; ++pagina) {
    const std::vector<std::string> textos = Pagina(pagina);
    const std::string numero = "Página " + std::to_string(pagina) + " de " + std::to_string(paginas);
    EXPECT_EQ(std::count(textos.begin(), textos.end(), "Escrito"), 1) << "the titles of page " << pagina;
    EXPECT_EQ(std::count(textos.begin(), textos.end(), numero), 1);
    for (const std::string& texto : textos) {
      if (texto.find_first_not_of("0123456789;") == std::string::npos) leido += texto;
    }
  }
  EXPECT_EQ(leido, largo);
  EXPECT_EQ(Pagina(paginas)[Pagina(paginas).size() - 3], "ultimo");
}

}  // namespace
}  // namespace utr
