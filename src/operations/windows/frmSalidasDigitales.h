#pragma once

#include <QDialog>
#include <array>
#include <string>

#include "operations/SalidasDigitales.h"
#include "services/Diario.h"
#include "session/ModRTU.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QTimer;

namespace utr {

class IndicadorSalida;
class PanelAviso;

// "Salidas Digitales": the states of the three outputs, of which two can be switched. The states are read when the
// window is first shown, behind each switch, by command, and every ten seconds where the operator wants it.
class frmSalidasDigitales : public QDialog {
  Q_OBJECT

 public:
  explicit frmSalidasDigitales(ModRTU& mod, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* evento) override;

 private:
  enum class Lectura { kPedida, kSola };

  struct Salida {
    QGroupBox* marco = nullptr;
    IndicadorSalida* senal = nullptr;
    QLabel* estado = nullptr;
  };

  QGroupBox* ArmarSalida(std::size_t salida);
  void AgregarBotones(QGroupBox& marco, std::size_t salida);
  void ArmarMenu();
  void ArmarTodo();
  void Actualizar();
  void ActualizarSola();
  void Conmutar(std::size_t salida, bool encender);
  void Anotar(Diario::Tarea& tarea, std::size_t salida, bool encender, const std::string& antes);
  bool Leer(Lectura lectura);
  void Esperar();  // for the next read of its own
  void Mostrar(std::size_t salida, std::string_view texto);
  void MostrarLinea();
  std::string Hora() const;

  ModRTU& mod_;
  std::array<Salida, 3> salidas_{};
  QCheckBox* chkSolo_;
  QLabel* lblLinea_;
  PanelAviso* picInfo_;
  QPushButton* cmdCerrar_;
  QTimer* tmrSolo_;
  std::string orden_;    // how the last switch ended
  std::string lectura_;  // when the states were read last
  std::string aviso_;    // why they aren't read by themselves any more
  bool mostrada_ = false;
};

}  // namespace utr
