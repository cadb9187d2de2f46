#include "widgets/DialogoImpresora.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include "widgets/Campos.h"
#include "widgets/ImpresoraQt.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {

constexpr int kMaximoCopias = 99;

DialogoImpresora::DialogoImpresora(const QString& titulo, const EleccionImpresora& anterior, QWidget* parent)
    : QDialog(parent),
      impresoras_(new QComboBox(this)),
      copias_(new QSpinBox(this)),
      papel_(new QComboBox(this)),
      vertical_(new QRadioButton(QStringLiteral("&Vertical"), this)),
      apaisado_(new QRadioButton(QStringLiteral("A&paisada"), this)) {
  setObjectName("DialogoImpresora");
  setWindowTitle(titulo);
  impresoras_->setObjectName("cboImpresora");
  copias_->setObjectName("txtCopias");
  impresoras_->setMinimumContentsLength(24);
  impresoras_->addItems(QPrinterInfo::availablePrinterNames());
  hay_ = impresoras_->count() > 0;
  if (!hay_) impresoras_->addItem(QStringLiteral("No hay impresoras instaladas"));
  // Without one the paper is still that of the preview.
  for (QWidget* campo : std::initializer_list<QWidget*>{impresoras_, copias_}) campo->setEnabled(hay_);
  const bool falta = !anterior.nombre.empty() && impresoras_->findText(Q(anterior.nombre)) < 0;
  const QString deseada = anterior.nombre.empty() || falta ? QPrinterInfo::defaultPrinterName() : Q(anterior.nombre);
  if (const int lugar = impresoras_->findText(deseada); lugar >= 0) impresoras_->setCurrentIndex(lugar);
  copias_->setRange(1, kMaximoCopias);
  copias_->setValue(anterior.copias);
  papel_->setObjectName("cboPapel");
  papel_->addItems(NombresDePapel());
  papel_->setCurrentIndex(static_cast<int>(anterior.papel));
  vertical_->setObjectName("optVertical");
  apaisado_->setObjectName("optApaisado");
  (anterior.apaisado ? apaisado_ : vertical_)->setChecked(true);
  auto* orientacion = new QHBoxLayout;
  orientacion->addWidget(vertical_);
  orientacion->addWidget(apaisado_);
  orientacion->addStretch(1);
  auto* caja = new QFormLayout;
  if (falta) {
    auto* aviso = new QLabel(QStringLiteral("La impresora \"%1\" ya no está instalada.").arg(Q(anterior.nombre)));
    aviso->setObjectName("lblFalta");
    aviso->setTextFormat(Qt::PlainText);
    aviso->setWordWrap(true);
    caja->addRow(aviso);
  }
  caja->addRow(Rotulo("lblImpresora", QStringLiteral("&Impresora:"), impresoras_), impresoras_);
  caja->addRow(Rotulo("lblCopias", QStringLiteral("&Copias:"), copias_), copias_);
  caja->addRow(Rotulo("lblPapel", QStringLiteral("Pape&l:"), papel_), papel_);
  caja->addRow(QStringLiteral("Orientación:"), orientacion);
  impresoras_->setAccessibleName(QStringLiteral("Impresora"));
  copias_->setAccessibleName(QStringLiteral("Copias"));
  QPushButton* aceptar = Boton("CmdOK", QStringLiteral("Aceptar"));
  QPushButton* cancelar = Boton("CmdCancel", QStringLiteral("Cancelar"));
  ArmarDialogo(*this, caja, {.aceptar = aceptar, .cancelar = cancelar, .por_defecto = true},
               {impresoras_, copias_, papel_, vertical_, apaisado_});
  connect(aceptar, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
}

EleccionImpresora DialogoImpresora::Eleccion() const {
  return {hay_ ? U(impresoras_->currentText()) : std::string(), copias_->value(),
          static_cast<Papel>(papel_->currentIndex()), apaisado_->isChecked()};
}

}  // namespace utr
