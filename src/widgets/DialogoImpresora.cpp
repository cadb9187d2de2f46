#include "widgets/DialogoImpresora.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPrinterInfo>
#include <QPushButton>
#include <QSpinBox>

#include "widgets/TextoQt.h"

namespace utr {

constexpr int kMaximoCopias = 99;

DialogoImpresora::DialogoImpresora(const QString& titulo, const EleccionImpresora& anterior, QWidget* parent)
    : QDialog(parent), impresoras_(new QComboBox(this)), copias_(new QSpinBox(this)) {
  setWindowTitle(titulo);
  impresoras_->setAccessibleName(QStringLiteral("Impresora"));
  impresoras_->setMinimumContentsLength(24);
  impresoras_->addItems(QPrinterInfo::availablePrinterNames());
  const bool hay = impresoras_->count() > 0;
  if (!hay) impresoras_->addItem(QStringLiteral("No hay impresoras instaladas"));
  const QString deseada = anterior.nombre.empty() ? QPrinterInfo::defaultPrinterName() : Q(anterior.nombre);
  if (const int lugar = impresoras_->findText(deseada); lugar >= 0) impresoras_->setCurrentIndex(lugar);
  copias_->setAccessibleName(QStringLiteral("Copias"));
  copias_->setRange(1, kMaximoCopias);
  copias_->setValue(anterior.copias);
  for (QWidget* campo : std::initializer_list<QWidget*>{impresoras_, copias_}) campo->setEnabled(hay);
  auto* caja = new QFormLayout(this);
  caja->setContentsMargins(16, 16, 16, 16);
  caja->addRow(QStringLiteral("&Impresora:"), impresoras_);
  caja->addRow(QStringLiteral("&Copias:"), copias_);
  ArmarBotones(hay);
}

void DialogoImpresora::ArmarBotones(bool hay_impresoras) {
  auto* botones = new QDialogButtonBox(this);
  QPushButton* aceptar = botones->addButton(QStringLiteral("Aceptar"), QDialogButtonBox::AcceptRole);
  botones->addButton(QStringLiteral("Cancelar"), QDialogButtonBox::RejectRole);
  aceptar->setEnabled(hay_impresoras);
  aceptar->setDefault(hay_impresoras);
  connect(botones, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
  static_cast<QFormLayout*>(layout())->addRow(botones);
}

EleccionImpresora DialogoImpresora::Eleccion() const {
  return {U(impresoras_->currentText()), copias_->value()};
}

}  // namespace utr
