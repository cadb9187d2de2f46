#pragma once

#include <QLabel>

namespace utr {

// A label for a path: what doesn't fit is left out in the middle, so that the name of the file is seen. Its text is the
// whole path all the same, and so is its tip.
class EtiquetaRuta : public QLabel {
  Q_OBJECT

 public:
  explicit EtiquetaRuta(const char* nombre, QWidget* parent = nullptr);

  void Poner(const QString& ruta);

 protected:
  void paintEvent(QPaintEvent* evento) override;
};

}  // namespace utr
