#pragma once

#include <QDialog>
#include <array>

#include "operations/Comandos.h"

class QCheckBox;
class QComboBox;
class QDateTimeEdit;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace utr {

class MarcoComando;
class PanelAviso;
class PanelLista;

// "Comandos a la UTR": each frame reads or writes one thing in the connected unit at once, and tells whether what it
// shows was read. What was done is listed in the journal below.
class frmComandos : public QDialog {
  Q_OBJECT

 public:
  explicit frmComandos(ModRTU& mod, QWidget* parent = nullptr);

 private:
  // What a button does; the control that is to have the focus behind it, or null for where it was.
  using Hacer = QWidget* (frmComandos::*)();

  QPushButton* NuevoBoton(MarcoComando& marco, const char* nombre, const char* texto, Hacer hacer);
  QPushButton* NuevaAccion(const char* nombre, const char* texto, const char* ayuda, Hacer hacer);
  MarcoComando* ArmarRTS();
  QWidget* ArmarPasos();
  MarcoComando* ArmarPuerto();
  MarcoComando* ArmarIdentificador();
  MarcoComando* ArmarEstado();
  MarcoComando* ArmarVentana();
  QWidget* ArmarAcciones();
  MarcoComando* ArmarPagina();
  MarcoComando* ArmarHora();
  void ArmarTodo();
  void HacerLugar(int mas);

  void Operar(Hacer hacer);
  void Ocupar(std::string_view detalle, const std::function<void()>& trabajo);
  void Corregir();
  void SubirDelay(int pasos);
  void ContarBytes();
  void Terminar(MarcoComando& marco, FinComando fin, const std::string& nota = {});
  Banderas Casillas() const;
  void Marcar(const Banderas& banderas);
  FechaHora Ahora() const { return mod_.reloj.Ahora(); }

  QWidget* LeerDelay();
  QWidget* GrabarDelay();
  QWidget* LeerBPS();
  QWidget* GrabarBPS();
  QWidget* LeerIdentificador();
  QWidget* GrabarIdentificador();
  QWidget* LeerCS();
  QWidget* GrabarCS();
  QWidget* LeerAgenda();
  QWidget* GrabarAgenda();
  QWidget* LeerPagina();
  QWidget* EscribirPagina();
  QWidget* ActualizarHora();
  QWidget* GrabarHora();
  QWidget* ConmutarRTS();
  template <AccionUTR accion>
  QWidget* Accion() {
    comandos_.Hacer(accion);
    return nullptr;
  }

  ModRTU& mod_;
  Comandos comandos_;
  PanelAviso* picInfo_;
  QWidget* cuerpo_;
  PanelLista* diario_;
  QPushButton* cmdCerrar_;
  QPushButton* cmdAyuda_;
  QPushButton* RTS_ = nullptr;

  QLineEdit* Delay_;
  QLineEdit* ContDelay_;
  QComboBox* CVelocidadP_;
  QLineEdit* TIdUTR_;
  std::array<QCheckBox*, kBanderas> Check1_{};
  QLineEdit* VentanaAgenda_;
  QLineEdit* NumDePagina_;
  QPlainTextEdit* DatosDePagina_;
  QLabel* lblBytes_;
  QDateTimeEdit* HoraRemota_;
  QDateTimeEdit* FechaRemota_;
  MarcoComando* fraRTS_;
  MarcoComando* fraPuerto_;
  MarcoComando* fraIdentificador_;
  MarcoComando* fraEstado_;
  MarcoComando* fraVentana_;
  MarcoComando* fraPagina_;
  MarcoComando* fraHora_;
};

}  // namespace utr
