#pragma once

#include <QDialog>
#include <memory>

#include "services/Impresora.h"

class QPrinter;
class QPushButton;
class QScrollArea;
class QSpinBox;

namespace utr {

class Compaginado;
class HojaVista;

// A document as it will stand on the chosen paper, page by page. Accepted: the operator wants it printed.
class DialogoVistaPrevia : public QDialog {
  Q_OBJECT

 public:
  // Lays the document out at once, telling `progreso`; it and `documento` are used until the dialog goes.
  DialogoVistaPrevia(const DocumentoImpreso& documento, const EleccionImpresora& eleccion, Progreso& progreso,
                     QWidget* parent = nullptr);
  ~DialogoVistaPrevia() override;

  // None: the work was cancelled.
  int Paginas() const;

 protected:
  void resizeEvent(QResizeEvent* evento) override;

 private:
  void Ir(int pagina);

  std::unique_ptr<QPrinter> papel_;
  std::unique_ptr<Compaginado> hojas_;
  HojaVista* hoja_;
  QScrollArea* marco_;
  QPushButton* anterior_;
  QPushButton* siguiente_;
  QSpinBox* numero_;
};

}  // namespace utr
