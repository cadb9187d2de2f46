#pragma once

#include <QDialog>
#include <string>

#include "session/AjustesEnlace.h"
#include "session/ModRTU.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace utr {

class ParteElegible;

// "Configuración del Puerto de comunicación": the plain choice of port and speed, or of an address. Esc and the close
// button cancel and leave the settings alone.
class frmPuerto : public QDialog {
  Q_OBJECT

 public:
  explicit frmPuerto(ModRTU& mod, QWidget* parent = nullptr);

  bool Configuro = false;

  std::string PSettings() const;                          // link settings text
  const std::string& PPuerto() const { return puerto_; }  // serial or TCP port

  // Shows that link in the fields that it belongs to; the other fields stay. Nothing else follows.
  void Tomar(const EntradaEnlace& entrada);

  void reject() override;

 private:
  void Armar();
  void Llenar();
  void ActivarDesactivarControles();
  void Aceptar();

  ModRTU& mod_;
  std::string puerto_;
  std::string velocidad_;
  QRadioButton* optSerie_;
  QComboBox* CPuerto_;
  QComboBox* CVelocidad_;
  QRadioButton* optIP_;
  QLineEdit* DireccionIP_;
  QLineEdit* PuertoIP_;
  ParteElegible* serie_ = nullptr;
  ParteElegible* ip_ = nullptr;
  QPushButton* CmdOK_;
  QPushButton* CmdCancel_;
  QPushButton* cmdAyuda_;
  QPushButton* cmdEstaciones_;
};

// Asks for a port and opens the link there. Shows its failures, under the title of `principal`.
void ConfigurarPuerto(ModRTU& mod, QWidget& principal);

}  // namespace utr
