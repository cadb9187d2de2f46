#include "widgets/TitulosLista.h"

#include <QPainter>
#include <QScopedValueRollback>
#include <QStyleOptionHeader>
#include <algorithm>

namespace utr {
namespace {

constexpr int kAire = 10;  // pixels over and below the words together
constexpr int kFlecha = 8;
constexpr int kAntesDeFlecha = 6;

QString Sangria() {
  return QStringLiteral("  ");
}

}  // namespace

TitulosLista::TitulosLista(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setSectionsMovable(false);
  setHighlightSections(false);
  setStretchLastSection(false);
  // A section that is made wider or narrower by hand leaves more or less to the last one; that one itself is told anew.
  connect(this, &QHeaderView::sectionResized, this, [this](int seccion, int, int ancho) {
    if (repartiendo_) return;
    if (seccion == Ultima()) ultima_dicha_ = ancho;
    Repartir();
  });
  connect(this, &QHeaderView::sectionMoved, this, &TitulosLista::CambiarUltima);
}

int TitulosLista::Margen() const {
  return style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, parentWidget()) + 1;
}

int TitulosLista::AnchoNecesario(int seccion) const {
  const QString titulo = model()->headerData(seccion, Qt::Horizontal).toString();
  return fontMetrics().horizontalAdvance(titulo + Sangria()) + 2 * Margen() + kAntesDeFlecha + kFlecha;
}

void TitulosLista::Decir(const QList<int>& anchos) {
  {
    const QScopedValueRollback<bool> sin_repartir(repartiendo_, true);
    for (int seccion = 0; seccion < std::min<int>(count(), static_cast<int>(anchos.size())); ++seccion)
      resizeSection(seccion, anchos[seccion]);
    ultima_ = Ultima();
    ultima_dicha_ = count() > 0 ? sectionSize(ultima_) : 0;
  }
  Repartir();
}

void TitulosLista::DarLugar(int seccion) {
  if (seccion < count() && AnchoDicho(seccion) < AnchoNecesario(seccion))
    resizeSection(seccion, AnchoNecesario(seccion));
}

int TitulosLista::AnchoDicho(int seccion) const {
  return seccion == Ultima() ? std::min(ultima_dicha_, sectionSize(seccion)) : sectionSize(seccion);
}

int TitulosLista::Ultima() const {
  return logicalIndex(count() - 1);
}

// The one that was last goes back to its own width.
void TitulosLista::CambiarUltima() {
  if (count() == 0 || Ultima() == ultima_) return;
  {
    const QScopedValueRollback<bool> sin_repartir(repartiendo_, true);
    resizeSection(ultima_, ultima_dicha_);
  }
  ultima_ = Ultima();
  ultima_dicha_ = sectionSize(ultima_);
  Repartir();
}

void TitulosLista::Repartir() {
  if (count() == 0 || repartiendo_) return;
  const QScopedValueRollback<bool> repartiendo(repartiendo_, true);
  const int ultima = Ultima();
  const int resto = viewport()->width() - (length() - sectionSize(ultima));
  resizeSection(ultima, std::max(ultima_dicha_, resto));
}

void TitulosLista::resizeEvent(QResizeEvent* evento) {
  QHeaderView::resizeEvent(evento);
  Repartir();
}

QSize TitulosLista::sectionSizeFromContents(int seccion) const {
  return {AnchoNecesario(seccion), fontMetrics().height() + kAire};
}

void TitulosLista::paintSection(QPainter* pintor, const QRect& lugar, int seccion) const {
  QStyleOptionHeaderV2 opcion;
  initStyleOption(&opcion);
  initStyleOptionForIndex(&opcion, seccion);
  opcion.rect = lugar;
  pintor->save();
  style()->drawControl(QStyle::CE_HeaderSection, &opcion, pintor, this);
  const bool derecha = (opcion.textAlignment & Qt::AlignRight) != 0;
  const bool con_flecha = isSortIndicatorShown() && sortIndicatorSection() == seccion;
  QRect palabras = lugar;
  palabras.setWidth(AnchoDicho(seccion));
  palabras.adjust(Margen(), 0, -Margen(), 0);
  const QString titulo = model()->headerData(seccion, Qt::Horizontal).toString().trimmed();
  if (derecha) palabras.adjust(0, 0, -fontMetrics().horizontalAdvance(Sangria()), 0);
  if (con_flecha) {
    // On the far side of the words from the edge that they keep with their cells.
    const int junto = std::min(fontMetrics().horizontalAdvance(titulo) + kAntesDeFlecha, palabras.width() - kFlecha);
    const int x = derecha ? palabras.right() - junto - kFlecha : palabras.left() + junto;
    QStyleOption flecha;
    flecha.initFrom(this);
    flecha.rect = QRect(x, lugar.center().y() - kFlecha / 2, kFlecha, kFlecha);
    style()->drawPrimitive(
        sortIndicatorOrder() == Qt::AscendingOrder ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown,
        &flecha, pintor, this);
    palabras.adjust(derecha ? kFlecha + kAntesDeFlecha : 0, 0, derecha ? 0 : -kFlecha - kAntesDeFlecha, 0);
  }
  const QString entero = fontMetrics().elidedText(titulo, Qt::ElideRight, palabras.width());
  style()->drawItemText(pintor, palabras, static_cast<int>(opcion.textAlignment | Qt::AlignVCenter), opcion.palette,
                        isEnabled(), entero, QPalette::ButtonText);
  pintor->restore();
}

}  // namespace utr
