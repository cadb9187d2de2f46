#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "session/AjustesEnlace.h"
#include "session/ModRTU.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace utr {

class PanelAviso;

// "Configuración": where the configuration comes from, and how the unit is reached. It is made for one read, stays on
// the screen with its panel while the read runs, and goes with it. Esc and the close button cancel.
class frmPresentacion : public QDialog {
  Q_OBJECT

 public:
  explicit frmPresentacion(ModRTU& mod, QWidget* parent = nullptr);

  bool Acepto = false;
  bool bShowUCG = false;  // a file choice offers exported configurations; set it before the dialog is shown

  // Takes the unit as the only source, or leaves the choice free.
  void FijarFuente(bool desde_utr_only);

  // Puts the controls in the state of the options.
  void ActivarDesactivarControles();

  // kFuenteUTR or the path of a file; empty when none was chosen.
  const std::string& Fuente() const noexcept { return fuente_; }
  std::string Direccion() const;
  std::string Puerto() const;

  // Shows the dialog without blocking, with its panel and everything disabled, while a read runs. It can't be closed.
  void MostrarLectura();

  void reject() override;

 private:
  void Armar();
  QGroupBox* ArmarFuente();
  QGroupBox* ArmarEquipo();
  QGroupBox* ArmarEnlace();
  QWidget* ArmarBotones();
  void Ordenar();
  void ConectarControles();
  void Llenar();

  void Aceptar();
  bool AceptarUTR();
  void ElegirArchivo();
  void VerificarVelocidad();
  void CambioTelefono();
  void CambioDeMedio(bool por_ip);
  bool Llamar(const EntradaEnlace& entrada);
  void MostrarReparos(const std::vector<Reparo>& reparos);
  QWidget* CampoDe(CampoEnlace campo) const;
  std::optional<std::int32_t> BuscarSuVelocidad();
  EntradaEnlace Entrada() const;

  // What the dialog is at. Only what can be dropped leaves Cancelar its use.
  enum class Ocupacion { kLibre, kEligiendo, kLlamando, kVerificando, kLeyendo };
  void Ocupar(Ocupacion ocupacion);

  ModRTU& mod_;
  std::string fuente_;
  bool cancelado_ = false;
  Ocupacion ocupacion_ = Ocupacion::kLibre;
  std::optional<QString> telefono_de_serie_;  // the number that a choice of IP put aside
  QWidget* foco_ = nullptr;

  QRadioButton* OptionRTU_;
  QRadioButton* OptionXML_;
  QLineEdit* txtIdentificador_;
  QLabel* lblIdentificador_;
  QRadioButton* optSerie_;
  QComboBox* cboPuertos_;
  QLabel* lblPuertos_;
  QComboBox* CVelocidad_;
  QLabel* lblVelocidad_;
  QPushButton* CVerifVelocidad_;
  QPushButton* CParar_;
  QCheckBox* chkTel_;
  QLineEdit* txtTelefono_;
  QPushButton* cmdTelefono_;
  QLineEdit* txtComandos_;
  QLabel* lblComandos_;
  QRadioButton* optIP_;
  QLineEdit* DireccionIP_;
  QLineEdit* PuertoIP_;
  QLabel* lblPuertoIP_;
  PanelAviso* picInfo_;
  QPushButton* AceptarLecturaCFG_;
  QPushButton* CancelarLecturaCFG_;
  QPushButton* cmdAyuda_;
  QWidget* cuerpo_;  // everything but the panel and the buttons
};

}  // namespace utr
