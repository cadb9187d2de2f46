#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QTimer>
#include <QTreeView>
#include <memory>

#include "session/ArchivoBitacora.h"
#include "session/windows/InformeVisita.h"
#include "session/windows/frmBitacora.h"
#include "support/Cancelador.h"
#include "support/DispositivoLleno.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "widgets/ImpresoraDibujos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

// A printer that draws its jobs into files.
class ImpresoraAPdf : public prueba::ImpresoraFalsa, public ImpresoraDibujos {
 public:
  explicit ImpresoraAPdf(const std::filesystem::path& archivo) : archivo_(archivo) {}
  bool Dibujar(const EleccionImpresora& eleccion, std::string_view titulo, const DibujarPaginas& dibujar,
               Progreso& progreso) override {
    QPdfWriter pdf(Q(archivo_.string()));
    QPainter pintor;
    paginas.push_back(dibujar(pdf, pintor, progreso));
    trabajos.push_back(eleccion.nombre + (eleccion.apaisado ? " apaisada:" : ":") + std::string(titulo));
    return paginas.back() > 0;
  }
  std::vector<int> paginas;

 private:
  std::filesystem::path archivo_;
};

class LaBitacora : public prueba::ModPrueba, public testing::Test {
 protected:
  LaBitacora() {
    diario.AlPreguntarUnidad([this] { return unidad; });
    Identificar(70);
    reloj.Poner({2026, 3, 14, 9, 0, 0});
    Anotar("Ayer");
    reloj.Poner({2026, 3, 15, 10, 0, 0});
    Anotar("Uno");
    Anotar("Dos");
    Identificar(8);
    Anotar("De otra");
    Identificar(70);
  }
  void Identificar(std::int64_t identificador) {
    propiedades.Escribir(clave::kIdentificador, Propiedad{identificador}, Propiedad{std::int64_t{0}});
  }
  void Anotar(const char* que) { diario.Anotar({reloj.Ahora(), que, "a", "b", "hecho"}); }
  void Abrir(std::vector<FiguraInforme> figuras = {}) {
    ventana = std::make_unique<frmBitacora>(base, std::move(figuras));
    ventana->show();
  }
  std::vector<std::string> Que() {
    auto* modelo = Hallar<QTreeView>(*ventana, "Lista").model();
    std::vector<std::string> textos;
    for (int i = 0; i < modelo->rowCount(); ++i) textos.push_back(U(modelo->index(i, 2).data().toString()));
    return textos;
  }
  QLineEdit& Operador_() { return Hallar<QLineEdit>(*ventana, "txtOperador"); }
  QComboBox& Dia() { return Hallar<QComboBox>(*ventana, "cboDia"); }
  void Ordenar(const char* comando) { Hallar<QAction>(*ventana, comando).trigger(); }

  ImpresoraAPdf a_pdf{carpeta / "informe.pdf"};
  ModRTU base{.comunicador = comunicador,
              .propiedades = propiedades,
              .registro = registro,
              .operador = operador,
              .reloj = reloj,
              .catalogo = catalogo,
              .puertos = puertos,
              .impresora = a_pdf,
              .conexion = conexion,
              .diario = diario,
              .bitacora = bitacora,
              .atender = {},
              .carpeta = carpeta.Ruta()};
  std::string unidad = "real";
  GuionVentanas ventanas;
  std::unique_ptr<frmBitacora> ventana;
};

TEST_F(LaBitacora, MuestraHoyYSePuedenVerLasDemas) {
  Abrir();
  EXPECT_THAT(Que(), testing::ElementsAre("Uno", "Dos"));
  EXPECT_EQ(Dia().currentText(), "15/03/2026 (hoy)");
  Dia().setCurrentIndex(1);
  EXPECT_THAT(Que(), testing::ElementsAre("Ayer"));
  Hallar<QComboBox>(*ventana, "cboEstacion").setCurrentText("8");
  EXPECT_THAT(Que(), testing::ElementsAre("De otra"));
  operador.EsperaAbrir("Abrir bitácora...", carpeta / "Respaldos/70/Bitacora-2026-03-14.csv");
  Ordenar("mnuBitOtra");
  EXPECT_THAT(Que(), testing::ElementsAre("Ayer"));
  EXPECT_FALSE(Operador_().isEnabled()) << "a file by itself belongs to no day";
  Hallar<QComboBox>(*ventana, "cboEstacion").activated(1);
  EXPECT_THAT(Que(), testing::ElementsAre("De otra")) << "the day that stands there is chosen once more";
  EXPECT_TRUE(Operador_().isEnabled());
  operador.EsperaAbrir("Abrir bitácora...", carpeta / "Respaldos/70/Bitacora-2026-03-14.csv");
  Ordenar("mnuBitOtra");
  prueba::EscribirTodo(carpeta / "v9.csv", "\"N.º (bitácora 9)\"\r\n");
  operador.EsperaAbrir("Abrir bitácora...", carpeta / "v9.csv");
  operador.EsperaParte("v9.csv es de otra versión (9)");
  Ordenar("mnuBitOtra");
  EXPECT_THAT(Que(), testing::ElementsAre("Ayer")) << "what was on show stays";
}

TEST_F(LaBitacora, LoQueElDiscoNoTomoSeVeIgual) {
  std::filesystem::remove_all(carpeta / "Respaldos");
  prueba::EscribirTodo(carpeta / "Respaldos", "en el camino");
  Anotar("Pendiente");
  Abrir();
  EXPECT_THAT(Que(), testing::ElementsAre("Pendiente"));
  EXPECT_EQ(Hallar<QLabel>(*ventana, "lblPendientes").text(), "1 asiento sin guardar en el disco");
  Operador_().setText("Ana");
  operador.EsperaParte("No se puede crear la carpeta");
  operador.EsperaParte("¿Desea seguir sin guardarlos?", Respuesta::kNo);
  ventana->reject();
  EXPECT_TRUE(ventana->isVisible()) << "what was typed isn't lost";
  operador.EsperaParte("No se puede crear la carpeta");
  operador.EsperaParte("¿Desea seguir sin guardarlos?", Respuesta::kSi);
  ventana->reject();
}

TEST_F(LaBitacora, OperadorYNotasSonDeCadaDia) {
  Abrir();
  Operador_().setText("Ana Paz");
  Hallar<QPlainTextEdit>(*ventana, "txtNotas").setPlainText("Pila\nnueva");
  Dia().setCurrentIndex(1);
  EXPECT_EQ(Operador_().text(), "");
  Operador_().setText("Luis");
  ventana->reject();
  Abrir();
  EXPECT_EQ(Operador_().text(), "Ana Paz");
  EXPECT_EQ(Hallar<QPlainTextEdit>(*ventana, "txtNotas").toPlainText(), "Pila\nnueva");
  prueba::EscribirTodo(carpeta / "Respaldos/70/Visita-2026-03-14.toml", "x [");
  operador.EsperaParte("Visita-2026-03-14.toml: línea 1: no se entiende");
  Dia().setCurrentIndex(1);
  EXPECT_FALSE(Operador_().isEnabled());
  ventana->reject();
  EXPECT_EQ(prueba::LeerTodo(carpeta / "Respaldos/70/Visita-2026-03-14.toml"), "x [");
}

TEST_F(LaBitacora, LoEscritoSeGuardaSinSalirDeLaVentana) {
  Abrir();
  auto& reloj_de_guardar = Hallar<QTimer>(*ventana, "tmrGuardar");
  const auto pasar_un_rato = [&] {
    EXPECT_TRUE(reloj_de_guardar.isActive());
    QTimerEvent paso(reloj_de_guardar.timerId());
    QCoreApplication::sendEvent(&reloj_de_guardar, &paso);
  };
  const auto hoy = [&] { return LeerDatosVisita(carpeta / "Respaldos/70", reloj.Ahora()); };
  Operador_().setText("Ana");
  pasar_un_rato();
  EXPECT_EQ(hoy().operador, "Ana");
  Hallar<QPlainTextEdit>(*ventana, "txtNotas").setPlainText("Pila");
  {
    const DispositivoLleno lleno(0);
    pasar_un_rato();
  }
  auto& aviso = Hallar<QLabel>(*ventana, "lblSinGuardar");
  EXPECT_EQ(aviso.text(), "El operador y las notas no se guardaron");
  EXPECT_THAT(U(aviso.toolTip()), testing::HasSubstr("Visita-2026-03-15.toml"));
  EXPECT_EQ(hoy().notas, "");
  Operador_().setText("Ana Paz");
  pasar_un_rato();
  EXPECT_EQ(hoy(), (DatosVisita{"Ana Paz", "Pila"}));
  EXPECT_TRUE(aviso.isHidden());
}

TEST_F(LaBitacora, CadaArchivoDelDiaDiceSuReparo) {
  const auto estacion = carpeta / "Respaldos/70";
  prueba::EscribirTodo(estacion / "Bitacora-2026-03-15-002.csv", "\"N.º (bitácora 9)\"\r\n");
  prueba::EscribirTodo(estacion / "Bitacora-2026-03-15-003.csv", "otra cosa");
  unidad = "simulada";
  Anotar("Tres");
  Abrir();
  const auto& reparo = Hallar<QLabel>(*ventana, "lblReparo");
  EXPECT_EQ(reparo.text(), "Bitacora-2026-03-15-002.csv es de otra versión (9) (y 1 más)");
  EXPECT_THAT(U(reparo.toolTip()), testing::EndsWith("\nBitacora-2026-03-15-003.csv no es una bitácora"));
  EXPECT_THAT(Que(), testing::ElementsAre("Uno", "Dos", "Tres"));
  EXPECT_EQ(Hallar<QTreeView>(*ventana, "Lista").model()->index(2, 1).data().toString(), "simulada");
}

TEST_F(LaBitacora, ElResultadoEstaALaVistaConAsientosLargos) {
  const std::string largo = "Nivel del río: alarma de máxima, alarma de mínima, valor de validación y comportamiento";
  prueba::EscribirTodo(carpeta / "l.csv", CabeceraBitacora() + RenglonBitacora(1, {.momento = {2026, 3, 15, 10, 0, 0},
                                                                                   .comando = largo,
                                                                                   .antes = largo,
                                                                                   .escrito = largo,
                                                                                   .resultado = "hecho",
                                                                                   .estacion = 70,
                                                                                   .unidad = "real"}));
  Abrir();
  operador.EsperaAbrir("Abrir bitácora...", carpeta / "l.csv");
  Ordenar("mnuBitOtra");
  auto& lista = Hallar<QTreeView>(*ventana, "Lista");
  const QHeaderView& titulos = *lista.header();
  EXPECT_LT(titulos.sectionPosition(5) + titulos.fontMetrics().horizontalAdvance("Resultado"), 900)
      << "of a window of 980";
}

TEST_F(LaBitacora, ElInformeSeImprimeConLasFiguras) {
  int pintadas = 0;
  const FiguraInforme figura{"Nivel", "UTR 70", [&](QPainter& pintor, const QRectF& lugar) {
                               ++pintadas;
                               EXPECT_GT(lugar.height(), lugar.width() / 4);
                               pintor.drawRect(lugar);
                             }};
  Abrir({figura, figura, figura});
  operador.EsperaParte("El informe no lleva el nombre del operador", Respuesta::kNo);
  Ordenar("mnuBitImprimir");
  EXPECT_TRUE(a_pdf.trabajos.empty());
  Operador_().setText("Ana");
  operador.EsperaImpresora("Configurar Impresora", EleccionImpresora{"Oficina", 2, Papel::kA4, true});
  Ordenar("mnuBitImprimir");
  EXPECT_THAT(a_pdf.trabajos,
              testing::ElementsAre("Oficina apaisada:Informe de la visita", "Oficina apaisada:Informe de la visita"));
  EXPECT_THAT(a_pdf.paginas, testing::ElementsAre(3, 3)) << "the entries, and two plots to a page";
  EXPECT_EQ(pintadas, 6);
  Hallar<QComboBox>(*ventana, "cboEstacion").setCurrentText("8");
  Operador_().setText("Ana");
  Ordenar("mnuBitImprimir");
  EXPECT_EQ(a_pdf.paginas.back(), 1) << "the plots are of another station";
}

TEST_F(LaBitacora, LoDeVariosDiasYEstacionesNoPasaPorLoDeUna) {
  const auto renglon = [](std::size_t numero, const FechaHora& momento, std::int32_t estacion) {
    return RenglonBitacora(numero, {.momento = momento,
                                    .comando = "Uno",
                                    .antes = "a",
                                    .escrito = "b",
                                    .resultado = "hecho",
                                    .estacion = estacion,
                                    .unidad = "real"});
  };
  prueba::EscribirTodo(carpeta / "v.csv", CabeceraBitacora() + renglon(1, {2026, 3, 15, 10, 0, 0}, 70) +
                                              renglon(2, {2026, 3, 14, 9, 0, 0}, 8));
  Abrir();
  operador.EsperaAbrir("Abrir bitácora...", carpeta / "v.csv");
  Ordenar("mnuBitOtra");
  operador.EsperaGuardar("Exportar ...", carpeta / "v.txt");
  operador.Espera("La lista ha sido exportada con éxito");
  Ordenar("mnuBitGuardar");
  EXPECT_THAT(prueba::LeerTodo(carpeta / "v.txt"),
              testing::HasSubstr("Estación: 8; 70\r\nDía: 14/03/2026 a 15/03/2026\r\n"));
}

TEST_F(LaBitacora, TieneLosServiciosDeTodaLista) {
  reloj.Adelantar(60);
  Anotar("Tres");
  Abrir();
  ventanas.Espera("DialogoCsv", [](QDialog& dialogo) { dialogo.accept(); });
  operador.EsperaGuardar("Guardar como CSV ...", carpeta / "b.csv");
  operador.Espera("La lista ha sido exportada con éxito");
  Ordenar("mnuGuardarCsv");
  EXPECT_THAT(prueba::LeerTodo(carpeta / "b.csv"),
              testing::HasSubstr("\r\n2026-03-15T10:00:00,real,Uno,a,b,hecho\r\n"));
  Hallar<QAbstractButton>(*ventana, "Sort Descending").click();
  EXPECT_THAT(Que(), testing::ElementsAre("Tres", "Uno", "Dos"));
  EXPECT_TRUE(Hallar<QAction>(*ventana, "mnuVistaPrevia").isEnabled());
}

TEST_F(LaBitacora, UnDiaLargoOcupaVariasPaginas) {
  InformeVisita informe{.estacion = "70", .dia = "15/03/2026", .impreso = "hoy"};
  SinProgreso nadie;
  QPdfWriter pdf(Q((carpeta / "a.pdf").string()));
  QPainter pintor;
  EXPECT_EQ(DibujarInforme(pdf, pintor, informe, nadie), 1) << "also without an entry";
  for (int i = 0; i < 60; ++i)
    informe.asientos.push_back({reloj.Ahora(), "Grabar página 0", std::string(300, '7'), "b", "hecho"});
  informe.asientos[30].escrito = std::string(6000, '8');  // higher than a page
  QPdfWriter otro(Q((carpeta / "b.pdf").string()));
  QPainter otro_pintor;
  EXPECT_GT(DibujarInforme(otro, otro_pintor, informe, nadie), 7);
  for (const int cuando : {0, 1, 4}) {  // ahead of anything, at the first page, between two pages
    prueba::Cancelador cancelador(cuando);
    QPdfWriter cancelado(Q((carpeta / "c.pdf").string()));
    QPainter suyo;
    EXPECT_EQ(DibujarInforme(cancelado, suyo, informe, cancelador), 0);
    EXPECT_EQ(suyo.isActive(), cuando > 0);
  }
}

}  // namespace
}  // namespace utr
