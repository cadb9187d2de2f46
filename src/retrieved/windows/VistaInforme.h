#pragma once

#include <QGroupBox>

#include "retrieved/recovery/ArchivoVisto.h"

class QPlainTextEdit;
class QPushButton;

namespace utr {

// The report of a recovery, to be read and printed.
class VistaInforme : public QGroupBox {
  Q_OBJECT

 public:
  explicit VistaInforme(QWidget* parent = nullptr);

  // Shows the report with the name of its file.
  void Mostrar(const InformeVisto& informe);
  std::string Texto() const;

 signals:
  void ImprimirPedido();

 private:
  QPlainTextEdit* txtInforme_;
  QPushButton* cmdImprimirInforme_;
};

}  // namespace utr
