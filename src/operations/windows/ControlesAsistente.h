#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <array>

#include "widgets/Campos.h"
#include "widgets/PanelAviso.h"
#include "widgets/VistaLista.h"

class QVBoxLayout;

namespace utr {

class EtiquetaCopiable;

// A sentence with the icon that calls for attention; gone while it has no text.
class LineaAviso : public QFrame {
  Q_OBJECT

 public:
  explicit LineaAviso(const char* nombre);
  void Decir(const QString& texto);

 private:
  EtiquetaCopiable* texto_;
};

// The controls of the start-up wizard, laid out in it. They know nothing of what they show.
struct ControlesAsistente {
  explicit ControlesAsistente(QDialog& dialogo);

  QStackedWidget* pasos;
  std::array<QWidget*, 4> fraStep{};
  std::array<QLabel*, 4> lblStep{};  // none in step 0

  QCheckBox* chkShowIntro;

  QLabel* LabelP1;
  QRadioButton* OptionUTR;
  QRadioButton* optcfgPrevia;
  QRadioButton* OptionXML;
  LineaAviso* avisoCanales;

  LineaAviso* avisoCanalesLeidos;
  LineaAviso* avisoVeleta;
  LineaAviso* avisoRespaldo;
  LineaAviso* avisoAgenda;

  QWidget* fraOpciones;  // holds what follows, down to the time
  QCheckBox* CHKRadio;
  QLabel* LRadio;
  CampoDigitos* TxtRadio;
  LineaAviso* avisoRadio;
  QComboBox* CVel;
  QLabel* lblCambioVelocidad;
  std::array<QCheckBox*, 2> chkBorrarDatos{};
  QLabel* StatusBarFechaHora;
  VistaLista* lineas;
  QProgressBar* pgbProgreso;

  PanelAviso* picInfo;
  QWidget* pieNavegacion;                // holds the buttons
  std::array<QPushButton*, 5> cmdNav{};  // help, cancel, back, next, finish

 private:
  QVBoxLayout* Paso(std::size_t paso, const char* texto);
  void ArmarIntroduccion();
  void ArmarConfiguracion();
  void ArmarAgenda();
  void ArmarFinal();
  void ArmarOpcionesFinales();
  void ArmarNavegacion();
  void OrdenarTab();
};

}  // namespace utr
