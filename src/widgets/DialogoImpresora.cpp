#include "widgets/DialogoImpresora.h"

#include <QComboBox>
#include <QFormLayout>
#include <QPrinterInfo>
#include <QPushButton>
#include <QSpinBox>

#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {

constexpr int kMaximoCopias = 99;

DialogoImpresora::DialogoImpresora(const QString& titulo, const EleccionImpresora& anterior, QWidget* parent)
    : QDialog(parent), impresoras_(new QComboBox(this)), copias_(new QSpinBox(this)) {
  setWindowTitle(titulo);
  impresoras_->setMinimumContentsLength(24);
  impresoras_->addItems(QPrinterInfo::availablePrinterNames());
  const bool hay = impresoras_->count() > 0;
  if (!hay) impresoras_->addItem(QStringLiteral("No hay impresoras instaladas"));
  const QString deseada = anterior.nombre.empty() ? QPrinterInfo::defaultPrinterName() : Q(anterior.nombre);
  if (const int lugar = impresoras_->findText(deseada); lugar >= 0) impresoras_->setCurrentIndex(lugar);
  copias_->setRange(1, kMaximoCopias);
  copias_->setValue(anterior.copias);
  for (QWidget* campo : std::initializer_list<QWidget*>{impresoras_, copias_}) campo->setEnabled(hay);
  auto* caja = new QFormLayout;
  caja->addRow(Rotulo("lblImpresora", QStringLiteral("&Impresora:"), impresoras_), impresoras_);
  caja->addRow(Rotulo("lblCopias", QStringLiteral("&Copias:"), copias_), copias_);
  impresoras_->setAccessibleName(QStringLiteral("Impresora"));
  copias_->setAccessibleName(QStringLiteral("Copias"));
  QPushButton* aceptar = Boton("CmdOK", QStringLiteral("Aceptar"));
  QPushButton* cancelar = Boton("CmdCancel", QStringLiteral("Cancelar"));
  ArmarDialogo(*this, caja, {.aceptar = aceptar, .cancelar = cancelar, .por_defecto = hay}, {impresoras_, copias_});
  aceptar->setEnabled(hay);
  connect(aceptar, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
}

EleccionImpresora DialogoImpresora::Eleccion() const {
  return {U(impresoras_->currentText()), copias_->value()};
}

}  // namespace utr
