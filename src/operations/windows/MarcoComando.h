#pragma once

#include <QGroupBox>
#include <functional>
#include <string>

#include "operations/EstadoMarco.h"

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace utr {

// A frame of the direct commands: fields, and below them what is known of them and the frame's buttons.
class MarcoComando : public QGroupBox {
  Q_OBJECT

 public:
  // `nombre`: of its line, "lblEstado" ahead of it.
  MarcoComando(const QString& titulo, const char* nombre);

  // A field with its caption, and what stands right of it.
  void Campo(QLabel* rotulo, QWidget* campo, QWidget* detras = nullptr);
  // Whatever stands across the frame.
  void Renglon(QWidget* control);
  void Renglon(QLayout* controles);

  // What stands at the foot right of the line.
  void AgregarAlPie(QWidget* control);

  // A button at the foot, called by its frame to readers.
  QPushButton* AgregarBoton(const char* nombre, const char* texto);

  // How the fields tell what they hold. Call it once they are in place, and Refrescar whenever one changes.
  void Contenido(std::function<std::string()> contenido);
  void Refrescar();

  // What the line says once the frame was read, was written, or knows nothing any more; the fields hold it by then.
  void Leido(const FechaHora& cuando, const std::string& nota = {});
  void Grabado(const FechaHora& cuando, const std::string& nota = {});
  void NoConfirmado(const FechaHora& cuando);
  void Olvidar();

  // What the line says besides while nothing was read.
  void AdvertirSinLeer(const QString& advertencia) { advertencia_ = advertencia; }

 private:
  QGridLayout* reja_;
  QHBoxLayout* pie_;
  QLabel* linea_;
  QString advertencia_;
  std::function<std::string()> contenido_;
  EstadoMarco estado_;
};

}  // namespace utr
