#include "operations/windows/MarcoComando.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/Campos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kAlLado = 9;
constexpr int kArribaYAbajo = 5;  // so that all frames are seen at once on a low screen

}  // namespace

MarcoComando::MarcoComando(const QString& titulo, const char* nombre)
    : QGroupBox(titulo), reja_(new QGridLayout), pie_(new QHBoxLayout), linea_(new QLabel) {
  linea_->setObjectName(QStringLiteral("lblEstado") + QString::fromLatin1(nombre));
  linea_->setTextFormat(Qt::PlainText);
  linea_->setWordWrap(true);
  linea_->setMinimumWidth(linea_->fontMetrics().horizontalAdvance(QStringLiteral("leído 00:00:00")));
  pie_->addWidget(linea_, 1);
  reja_->setColumnStretch(2, 1);
  auto* columna = new QVBoxLayout(this);
  columna->setContentsMargins(kAlLado, kArribaYAbajo, kAlLado, kArribaYAbajo);
  columna->setSpacing(kArribaYAbajo);
  columna->addLayout(reja_);
  columna->addStretch(1);
  columna->addLayout(pie_);
}

void MarcoComando::Campo(QLabel* rotulo, QWidget* campo, QWidget* detras) {
  const int renglon = reja_->rowCount();
  reja_->addWidget(rotulo, renglon, 0);
  reja_->addWidget(campo, renglon, 1);
  if (detras != nullptr) reja_->addWidget(detras, renglon, 2, Qt::AlignLeft);
}

void MarcoComando::Renglon(QWidget* control) {
  reja_->addWidget(control, reja_->rowCount(), 0, 1, -1);
}

void MarcoComando::Renglon(QLayout* controles) {
  reja_->addLayout(controles, reja_->rowCount(), 0, 1, -1);
}

void MarcoComando::AgregarAlPie(QWidget* control) {
  pie_->addWidget(control, 1);
}

QPushButton* MarcoComando::AgregarBoton(const char* nombre, const char* texto) {
  QPushButton* boton = Boton(nombre, QString::fromUtf8(texto));
  boton->setAccessibleDescription(title());
  pie_->addWidget(boton, 0, Qt::AlignBottom);
  return boton;
}

void MarcoComando::Contenido(std::function<std::string()> contenido) {
  contenido_ = std::move(contenido);
  Olvidar();
}

void MarcoComando::Refrescar() {
  if (!contenido_) return;
  const QString texto = Q(estado_.Texto(contenido_()));
  const bool sin_leer = !advertencia_.isEmpty() && texto.startsWith(QStringLiteral("sin leer"));
  linea_->setText(sin_leer ? texto + QStringLiteral(": ") + advertencia_ : texto);
}

void MarcoComando::Leido(const FechaHora& cuando, const std::string& nota) {
  estado_.Leido(cuando, contenido_(), nota);
  Refrescar();
}

void MarcoComando::Grabado(const FechaHora& cuando, const std::string& nota) {
  estado_.Grabado(cuando, contenido_(), nota);
  Refrescar();
}

void MarcoComando::NoConfirmado(const FechaHora& cuando) {
  estado_.NoConfirmado(cuando, contenido_());
  Refrescar();
}

void MarcoComando::Olvidar() {
  estado_.Olvidar(contenido_());
  Refrescar();
}

}  // namespace utr
