#include "widgets/HojasJustas.h"

#include <QStyle>
#include <QStyleOptionTabWidgetFrame>
#include <algorithm>

namespace utr {
namespace {

int AltoDe(const QWidget& hoja, int ancho) {
  return hoja.hasHeightForWidth() ? hoja.heightForWidth(ancho) : hoja.minimumSizeHint().height();
}

}  // namespace

HojasJustas::HojasJustas(QWidget* parent) : QTabWidget(parent) {
  connect(this, &QTabWidget::currentChanged, this, &HojasJustas::updateGeometry);
}

QSize HojasJustas::sizeHint() const {
  const QSize todas = QTabWidget::sizeHint();
  return {todas.width(), todas.height() - Sobra(todas.width())};
}

QSize HojasJustas::minimumSizeHint() const {
  const QSize todas = QTabWidget::minimumSizeHint();
  int sobra = 0;
  int alta = 0;
  for (int i = 0; i < count(); ++i) alta = std::max(alta, widget(i)->minimumSizeHint().height());
  if (currentWidget() != nullptr) sobra = alta - currentWidget()->minimumSizeHint().height();
  return {todas.width(), todas.height() - sobra};
}

int HojasJustas::heightForWidth(int ancho) const {
  return QTabWidget::heightForWidth(ancho) - Sobra(ancho);
}

// How much higher than the sheet on show the highest one is where all are that wide, frame included.
int HojasJustas::Sobra(int ancho) const {
  if (currentWidget() == nullptr) return 0;
  QStyleOptionTabWidgetFrame opcion;
  initStyleOption(&opcion);
  const int sitio = ancho - style()->sizeFromContents(QStyle::CT_TabWidget, &opcion, {0, 0}, this).width();
  int alta = 0;
  for (int i = 0; i < count(); ++i) alta = std::max(alta, AltoDe(*widget(i), sitio));
  return alta - AltoDe(*currentWidget(), sitio);
}

}  // namespace utr
