#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "session/AjustesEnlace.h"
#include "session/ModRTU.h"
#include "widgets/Ocupacion.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace utr {

class PanelAviso;
class ParteElegible;

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

  // Shows that link and identifier in the fields that they belong to; the other fields stay. Nothing else follows.
  void Tomar(const EntradaEnlace& entrada);

  // kFuenteUTR or the path of a file; empty when none was chosen.
  const std::string& Fuente() const noexcept { return fuente_; }
  std::string Direccion() const;
  std::string Puerto() const;

  // Shows the dialog without blocking. While a read runs it is busy, with its panel and everything off, and can't be
  // closed: const Ocupacion ocupacion(dialogo, dialogo.AlLeer());
  void MostrarLectura();
  OpcionesOcupacion AlLeer();

  void reject() override;

 private:
  void Armar();
  QGroupBox* ArmarFuente();
  QGroupBox* ArmarEquipo();
  QGroupBox* ArmarEnlace();
  QWidget* ArmarSerie();
  QWidget* ArmarIP();
  void ConectarControles();
  void Llenar();

  void TomarDelLibro();
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
  OpcionesOcupacion AlTrabajar(PanelAviso* panel, std::vector<QWidget*> siguen = {});

  ModRTU& mod_;
  std::string fuente_;
  bool cancelado_ = false;
  bool verificando_ = false;
  std::optional<QString> telefono_de_serie_;  // the number that a choice of IP put aside

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
  QGridLayout* reja_equipo_ = nullptr;
  ParteElegible* serie_ = nullptr;
  ParteElegible* ip_ = nullptr;
  PanelAviso* picInfo_;
  QPushButton* AceptarLecturaCFG_;
  QPushButton* CancelarLecturaCFG_;
  QPushButton* cmdAyuda_;
  QPushButton* cmdEstaciones_;
  QWidget* cuerpo_;  // everything but the panel and the buttons
};

}  // namespace utr
