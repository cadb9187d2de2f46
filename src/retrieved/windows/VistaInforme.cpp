#include "retrieved/windows/VistaInforme.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/Campos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kRenglones = 5;  // at least

}  // namespace

VistaInforme::VistaInforme(QWidget* parent)
    : QGroupBox(parent),
      txtInforme_(new QPlainTextEdit),
      cmdImprimirInforme_(Boton("cmdImprimirInforme", QStringLiteral("Imprimir &informe"))) {
  setObjectName("fraInforme");
  txtInforme_->setObjectName("txtInforme");
  txtInforme_->setAccessibleName(QStringLiteral("Informe de la recuperación"));
  txtInforme_->setWhatsThis(
      QStringLiteral("Qué se recuperó, qué se perdió y por qué, según lo escribió la corrida que "
                     "dejó este archivo."));
  txtInforme_->setReadOnly(true);
  txtInforme_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  txtInforme_->setTabChangesFocus(true);
  txtInforme_->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtInforme_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  txtInforme_->setMinimumHeight(kRenglones * txtInforme_->fontMetrics().lineSpacing());
  connect(cmdImprimirInforme_, &QPushButton::clicked, this, &VistaInforme::ImprimirPedido);
  auto* columna = new QVBoxLayout(this);
  columna->addWidget(txtInforme_, 1);
  columna->addWidget(cmdImprimirInforme_, 0, Qt::AlignLeft);
}

void VistaInforme::Mostrar(const InformeVisto& informe) {
  setTitle(QStringLiteral("Informe de la recuperación: ") + Q(informe.ruta.filename().string()).replace('&', "&&"));
  txtInforme_->setPlainText(Q(informe.texto));
}

std::string VistaInforme::Texto() const {
  return U(txtInforme_->toPlainText());
}

}  // namespace utr
