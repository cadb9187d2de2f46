#include "widgets/DisposicionEnFilas.h"

#include <QWidget>
#include <algorithm>

namespace utr {
namespace {

int AltoDe(const QLayoutItem& item, int ancho) {
  return item.hasHeightForWidth() ? item.heightForWidth(ancho) : item.sizeHint().height();
}

}  // namespace

DisposicionEnFilas::DisposicionEnFilas(int entre, QWidget* parent) : QLayout(parent), entre_(entre) {
  setSpacing(entre);
}

// A layout among the parts takes its leave of this one, so it must be gone from it by then.
DisposicionEnFilas::~DisposicionEnFilas() {
  while (!partes_.empty()) {
    const Parte ultima = std::move(partes_.back());
    partes_.pop_back();
  }
}

void DisposicionEnFilas::Agregar(QWidget* parte, int estirado) {
  addWidget(parte);
  partes_.back().estirado = estirado;
}

void DisposicionEnFilas::Agregar(QLayout* parte, int estirado) {
  addChildLayout(parte);
  addItem(parte);
  partes_.back().estirado = estirado;
}

void DisposicionEnFilas::AgregarFlexible(QWidget* parte) {
  Agregar(parte, 1);
  partes_.back().flexible = true;
}

void DisposicionEnFilas::AgregarFlexible(QLayout* parte) {
  Agregar(parte, 1);
  partes_.back().flexible = true;
}

void DisposicionEnFilas::Separar() {
  addItem(new QSpacerItem(0, 0));
  partes_.back().estirado = 1;
}

void DisposicionEnFilas::addItem(QLayoutItem* item) {
  partes_.push_back({.item = std::unique_ptr<QLayoutItem>(item)});
  invalidate();
}

QLayoutItem* DisposicionEnFilas::itemAt(int cual) const {
  return cual >= 0 && cual < count() ? partes_[static_cast<std::size_t>(cual)].item.get() : nullptr;
}

QLayoutItem* DisposicionEnFilas::takeAt(int cual) {
  if (itemAt(cual) == nullptr) return nullptr;
  QLayoutItem* item = partes_[static_cast<std::size_t>(cual)].item.release();
  partes_.erase(partes_.begin() + cual);
  invalidate();
  return item;
}

bool DisposicionEnFilas::Parte::Separa() const {
  return item->spacerItem() != nullptr;
}

bool DisposicionEnFilas::Parte::Ocupa() const {
  return !item->isEmpty();
}

int DisposicionEnFilas::Parte::Ancho() const {
  return item->sizeHint().width();
}

int DisposicionEnFilas::Parte::AnchoJusto() const {
  return flexible ? item->minimumSize().width() : Ancho();
}

// Each row takes as many parts as it has room for, and one at least. What is hidden takes none.
std::vector<DisposicionEnFilas::Fila> DisposicionEnFilas::Filas(int ancho) const {
  std::vector<Fila> filas{Fila{}};
  bool vacia = true;
  for (std::size_t i = 0; i < partes_.size(); ++i) {
    if (partes_[i].Ocupa()) {
      const int suyo = partes_[i].AnchoJusto();
      if (!vacia && filas.back().ancho + entre_ + suyo > ancho) {
        // What stands at the right end does so in the next row too.
        const bool tras_separar = i > 0 && partes_[i - 1].Separa();
        const std::size_t desde = tras_separar ? i - 1 : i;
        filas.back().hasta = desde;
        filas.push_back({desde, desde, suyo});
      } else {
        filas.back().ancho += suyo + (vacia ? 0 : entre_);
      }
      vacia = false;
    }
    filas.back().hasta = i + 1;
  }
  return filas;
}

std::vector<int> DisposicionEnFilas::Anchos(const Fila& fila, int ancho) const {
  const auto estirado = [](const Parte& parte) { return parte.Ocupa() || parte.Separa() ? parte.estirado : 0; };
  int estirados = 0;
  for (std::size_t i = fila.desde; i < fila.hasta; ++i) estirados += estirado(partes_[i]);
  int resto = std::max(ancho - fila.ancho, 0);
  std::vector<int> anchos;
  for (std::size_t i = fila.desde; i < fila.hasta; ++i) {
    const Parte& parte = partes_[i];
    const int de_mas = estirado(parte) > 0 ? resto * estirado(parte) / estirados : 0;
    resto -= de_mas;
    estirados -= estirado(parte);
    anchos.push_back((parte.Ocupa() ? std::min(parte.AnchoJusto(), ancho) : 0) + de_mas);
  }
  return anchos;
}

int DisposicionEnFilas::Alto(const Fila& fila, const std::vector<int>& anchos) const {
  int alto = 0;
  for (std::size_t i = fila.desde; i < fila.hasta; ++i) {
    if (partes_[i].Ocupa()) alto = std::max(alto, AltoDe(*partes_[i].item, anchos[i - fila.desde]));
  }
  return alto;
}

int DisposicionEnFilas::heightForWidth(int ancho) const {
  const QMargins margenes = contentsMargins();
  const int sitio = ancho - margenes.left() - margenes.right();
  int alto = margenes.top() + margenes.bottom();
  const std::vector<Fila> filas = Filas(sitio);
  for (const Fila& fila : filas) alto += Alto(fila, Anchos(fila, sitio));
  return alto + entre_ * static_cast<int>(filas.size() - 1);
}

QSize DisposicionEnFilas::sizeHint() const {
  const Fila todas = Filas(QLAYOUTSIZE_MAX).front();
  int ancho = todas.ancho;
  for (const Parte& parte : partes_) {
    if (parte.Ocupa()) ancho += parte.Ancho() - parte.AnchoJusto();
  }
  return QSize(ancho, Alto(todas, Anchos(todas, ancho))).grownBy(contentsMargins());
}

QSize DisposicionEnFilas::minimumSize() const {
  QSize minimo;
  for (const Parte& parte : partes_) {
    if (parte.Ocupa()) minimo = minimo.expandedTo(parte.item->minimumSize());
  }
  return minimo.grownBy(contentsMargins());
}

void DisposicionEnFilas::setGeometry(const QRect& lugar) {
  QLayout::setGeometry(lugar);
  const QRect sitio = lugar.marginsRemoved(contentsMargins());
  const std::vector<Fila> filas = Filas(sitio.width());
  int y = sitio.top();
  for (const Fila& fila : filas) {
    const std::vector<int> anchos = Anchos(fila, sitio.width());
    // A row by itself has all the height that there is.
    const int alto = filas.size() == 1 ? sitio.height() : Alto(fila, anchos);
    int x = sitio.left();
    for (std::size_t i = fila.desde; i < fila.hasta; ++i) {
      const int ancho = anchos[i - fila.desde];
      if (partes_[i].Ocupa()) partes_[i].item->setGeometry({x, y, ancho, alto});
      x += ancho + (partes_[i].Ocupa() ? entre_ : 0);
    }
    y += alto + entre_;
  }
}

}  // namespace utr
