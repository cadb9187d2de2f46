#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <array>
#include <vector>

#include "configuration/CamposSensor.h"
#include "widgets/CampoNumero.h"

class QGridLayout;
class QLayout;

namespace utr {

class EtiquetaCopiable;

// Two small arrows beside a field. They take no focus: the field's arrow keys do the same.
struct PasosSensor {
  QWidget* todo = nullptr;
  QToolButton* sube = nullptr;
  QToolButton* baja = nullptr;
};

// A field of the table, with its caption and, for times and the gauge's constant, its stepper.
struct CampoDeSensor {
  QLabel* rotulo = nullptr;
  CampoNumero* campo = nullptr;
  PasosSensor pasos{};

  void Habilitar(bool si) const;
  void Mostrar(bool si) const;
};

// The controls of the sensor dialog, made from the table of fields and laid out in it. They know nothing of channels.
struct ControlesSensor {
  explicit ControlesSensor(QDialog& dialogo);

  CampoDeSensor& De(CampoSensor campo) { return textos.at(static_cast<std::size_t>(campo)); }
  const CampoDeSensor& De(CampoSensor campo) const { return textos.at(static_cast<std::size_t>(campo)); }

  std::array<CampoDeSensor, kCamposDeTexto> textos{};

  QFrame* FramePPal;
  QLineEdit* Canal;
  QLineEdit* txtCanal;
  QLabel* lblDescEntrada;
  QLineEdit* Pila;
  QComboBox* cboTiposSensores;
  QLabel* lblParametro;

  QGroupBox* FrameCFG;
  QComboBox* cboParametros;
  QComboBox* cboUnidades;
  QComboBox* cboResol;
  QLabel* lblRangoNegativo;
  QFrame* frameNivelRef;

  QGroupBox* Frame16;
  QGroupBox* Frame7;
  QGroupBox* Frame8;
  QGroupBox* Frame2;
  QGroupBox* Frame9;

  QGroupBox* fraOpcionesFlags;
  std::array<QCheckBox*, 4> FlagsParam{};
  QCheckBox* chkFlagRegis_Dif;
  QCheckBox* CAlarmaON;
  QFrame* FrameDig;
  std::array<QRadioButton*, 2> optEstadoNormal{};

  QPushButton* LeerParam;
  QPushButton* cmdOtroArchivo;
  QLabel* lblArchivo;
  QPushButton* cmdCopiar;

  QFrame* marco_reparos;
  EtiquetaCopiable* lblReparos;
  QPushButton* cmdReparo;

  // The place of the channel in a round through several; hidden without one.
  QFrame* fraRonda;
  QLabel* lblRonda;
  QPushButton* cmdDejarRestantes;

  QPushButton* cmdAceptar;
  QPushButton* cmdCancelar;
  QPushButton* cmdAyuda;

 private:
  void HacerCampo(const DatosCampo& dato, const QString& pasos);
  void Renglon(QGridLayout& reja, CampoSensor campo);
  QGroupBox* Marco(const char* nombre, const QString& titulo, std::span<const CampoSensor> campos);
  void ArmarFramePPal();
  void ArmarFrameCFG();
  void ArmarFrame16();
  void ArmarOpciones();
  QLayout* ArmarPredefinidas();
  void ArmarReparos();
  void ArmarRonda();
  QLayout* Cuerpo(QLayout* predefinidas);
  void OrdenarTab();
};

}  // namespace utr
