#pragma once

#include <memory>

#include "retrieved/download/Descarga.h"
#include "session/ModRTU.h"
#include "widgets/VentanaLista.h"

class QCheckBox;
class QDateTimeEdit;
class QLineEdit;
class QProgressBar;
class QRadioButton;

namespace utr {

class BarraPeriodos;
class CamposCsv;
class ControlesRecordados;
class EtiquetaCopiable;

// "Descargar todo": configuration, channels, events and transmission queue of a span into a folder of its own, with
// what is there and what is missing as a list. What is missing can be asked for again.
class frmDescarga : public VentanaLista {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels as it came from the unit, the window's own clone. Show it with exec().
  frmDescarga(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);
  ~frmDescarga() override;

 protected:
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  void done(int resultado) override;

 private:
  class Avance;

  void ArmarComandos();
  QWidget* ArmarPedido();
  QWidget* ArmarPeriodo();
  QWidget* ArmarQue();
  QWidget* ArmarComo();
  QWidget* ArmarPie();
  void Explicar();
  void ElegirCarpeta();
  PedidoDescarga Pedido() const;
  bool SePuede(const PedidoDescarga& pedido);
  void Descargar();
  std::filesystem::path NuevaCarpeta(const std::filesystem::path& donde) const;
  void Seguir();
  void Correr();
  bool Abandonar();
  void GuardarEnOtra();
  void Listar();
  void DecirFinal(bool con_mensaje);

  ModRTU& mod_;
  TablaPtr configuracion_;
  std::unique_ptr<Descarga> descarga_;
  QDateTimeEdit* FechaInicio_;
  QDateTimeEdit* FechaFin_;
  ControlesRecordados* recordar_;
  QList<QCheckBox*> que_;  // configuration, data, events, queue
  QCheckBox* CheckEscalados_;
  QCheckBox* chkCartucho_;
  QList<QRadioButton*> formatos_;  // in the order of FormatoDescarga
  CamposCsv* csv_;
  QLineEdit* carpeta_;
  PanelAviso* picAvance_;
  QProgressBar* barra_;
  EtiquetaCopiable* lblFinal_;
  QPushButton* cmdDescargar_;
  QPushButton* cmdSeguir_;
};

}  // namespace utr
