#include "session/windows/ParteElegible.h"

#include <QGridLayout>
#include <QPainter>
#include <QRadioButton>
#include <algorithm>

#include "widgets/Temas.h"

namespace utr {
namespace {

constexpr int kSangria = 18;  // of captions behind an option
constexpr int kBarra = 4;     // at the left of the chosen part
constexpr double kRedondeo = 3;

}  // namespace

QGridLayout* RejaDeParte(QWidget* marco) {
  auto* reja = new QGridLayout(marco);
  reja->setContentsMargins(14, 9, 12, 9);
  reja->setHorizontalSpacing(8);
  reja->addItem(new QSpacerItem(kSangria, 0), 0, 0);  // a column without anything would have no gap behind it
  reja->setColumnStretch(ParteElegible::kCampos, 1);
  return reja;
}

void AlinearRotulos(std::initializer_list<QGridLayout*> rejas) {
  int ancho = 0;
  for (const QGridLayout* reja : rejas) {
    for (int fila = 0; fila < reja->rowCount(); ++fila) {
      const QLayoutItem* sitio = reja->itemAtPosition(fila, ParteElegible::kRotulos);
      const bool de_un_rotulo = sitio != nullptr && sitio != reja->itemAtPosition(fila, ParteElegible::kRotulos - 1);
      if (de_un_rotulo) ancho = std::max(ancho, sitio->sizeHint().width());
    }
  }
  for (QGridLayout* reja : rejas) reja->setColumnMinimumWidth(ParteElegible::kRotulos, ancho);
}

ParteElegible::ParteElegible(const char* nombre, QRadioButton* opcion, int columnas, QWidget* parent)
    : QFrame(parent), reja_(RejaDeParte(this)) {
  setObjectName(QString::fromLatin1(nombre));
  reja_->addWidget(opcion, 0, 0, 1, columnas);
}

void ParteElegible::Elegir(bool elegida) {
  elegida_ = elegida;
  update();
}

void ParteElegible::paintEvent(QPaintEvent*) {
  if (!elegida_) return;
  QPainter pintor(this);
  pintor.setRenderHint(QPainter::Antialiasing);
  pintor.setPen(palette().color(QPalette::Active, QPalette::Mid));
  pintor.setBrush(palette().color(QPalette::Active, QPalette::Base));
  pintor.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRedondeo, kRedondeo);
  pintor.setPen(Qt::NoPen);
  pintor.setBrush(ColorDe(Matiz::kAcento, palette()));
  pintor.drawRoundedRect(QRectF(0, 0, kBarra, height()), kRedondeo / 2, kRedondeo / 2);
}

}  // namespace utr
