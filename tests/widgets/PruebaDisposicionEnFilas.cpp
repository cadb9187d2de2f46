#include <gtest/gtest.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QWidget>
#include <vector>

#include "widgets/DisposicionEnFilas.h"

namespace utr {
namespace {

constexpr int kEntre = 10;
constexpr int kAlto = 20;

// Four parts, the third one stretched, the last one at the right end; the first one a layout.
struct Partes {
  Partes() {
    auto* fila = new DisposicionEnFilas(kEntre, &ventana);
    fila->setContentsMargins(0, 0, 0, 0);
    auto* dentro = new QHBoxLayout;
    dentro->setContentsMargins(0, 0, 0, 0);
    dentro->addWidget(Nueva(100));
    fila->Agregar(dentro);
    fila->Agregar(Nueva(200));
    fila->Agregar(Nueva(50), 1);
    fila->Separar();
    fila->Agregar(Nueva(80));
  }
  QWidget* Nueva(int ancho) {
    auto* parte = new QWidget;
    parte->setMinimumSize(ancho, kAlto);
    parte->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    todas.push_back(parte);
    return parte;
  }
  // The left ends, and the row of each.
  std::vector<std::pair<int, int>> Lugares(int ancho) {
    ventana.resize(ancho, ventana.layout()->heightForWidth(ancho));
    ventana.layout()->activate();
    std::vector<std::pair<int, int>> lugares;
    for (const QWidget* parte : todas) {
      if (!parte->isHidden()) lugares.emplace_back(parte->x(), parte->y() / (kAlto + kEntre));
    }
    return lugares;
  }

  QWidget ventana;
  std::vector<QWidget*> todas;
};

TEST(DisposicionEnFilas, LoQueNoCabeEnUnaFilaSigueEnOtraYNadaSePisa) {
  using Lugares = std::vector<std::pair<int, int>>;
  Partes partes;
  partes.ventana.show();
  const int todo = 100 + 200 + 50 + 80 + 3 * kEntre;
  EXPECT_EQ(partes.ventana.layout()->sizeHint(), QSize(todo, kAlto));
  EXPECT_EQ(partes.ventana.layout()->minimumSize(), QSize(200, kAlto)) << "the widest part";
  struct Caso {
    int ancho;
    Lugares lugares;
  };
  const Caso casos[] = {{todo, {{0, 0}, {110, 0}, {320, 0}, {380, 0}}},
                        {todo + 100, {{0, 0}, {110, 0}, {320, 0}, {480, 0}}},  // at the right end
                        {todo - 1, {{0, 0}, {110, 0}, {320, 0}, {todo - 81, 1}}},
                        {310, {{0, 0}, {110, 0}, {0, 1}, {230, 1}}},
                        {200, {{0, 0}, {0, 1}, {0, 2}, {120, 2}}}};
  for (const Caso& caso : casos) {
    EXPECT_EQ(partes.Lugares(caso.ancho), caso.lugares) << caso.ancho;
    const int filas = caso.lugares.back().second + 1;
    EXPECT_EQ(partes.ventana.layout()->heightForWidth(caso.ancho), filas * kAlto + (filas - 1) * kEntre) << caso.ancho;
  }
  partes.todas[1]->hide();
  EXPECT_EQ(partes.Lugares(310), (Lugares{{0, 0}, {110, 0}, {230, 0}})) << "what is hidden takes no room";
  delete partes.todas[2];
  partes.todas.erase(partes.todas.begin() + 2);
  EXPECT_EQ(partes.Lugares(310), (Lugares{{0, 0}, {230, 0}}));
}

// It stands beside the others for as long as it can be made narrow enough.
TEST(DisposicionEnFilas, LoFlexibleSeAngostaAntesDeIrAOtraFila) {
  QWidget ventana;
  auto* fila = new DisposicionEnFilas(kEntre, &ventana);
  fila->setContentsMargins(0, 0, 0, 0);
  auto* fija = new QWidget;
  fija->setMinimumSize(100, kAlto);
  auto* flexible = new QWidget;
  auto* partes = new DisposicionEnFilas(kEntre, flexible);
  partes->setContentsMargins(0, 0, 0, 0);
  for (int i = 0; i < 2; ++i) {
    auto* parte = new QWidget;
    parte->setMinimumSize(150, kAlto);
    partes->Agregar(parte);
  }
  fila->Agregar(fija);
  fila->AgregarFlexible(flexible);
  EXPECT_EQ(fila->sizeHint(), QSize(100 + kEntre + 310, kAlto));
  ventana.show();
  const std::pair<int, QRect> casos[] = {{500, {110, 0, 390, kAlto}},
                                         {420, {110, 0, 310, kAlto}},
                                         {419, {110, 0, 309, 2 * kAlto + kEntre}},
                                         {260, {110, 0, 150, 2 * kAlto + kEntre}},
                                         {259, {0, kAlto + kEntre, 259, 2 * kAlto + kEntre}}};
  for (const auto& [ancho, lugar] : casos) {
    ventana.resize(ancho, fila->heightForWidth(ancho));
    fila->activate();
    EXPECT_EQ(flexible->geometry(), lugar) << ancho;
  }
}

}  // namespace
}  // namespace utr
