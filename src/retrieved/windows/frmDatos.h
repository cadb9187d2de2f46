#pragma once

#include <QStringList>
#include <array>
#include <optional>
#include <set>
#include <string>

#include "retrieved/windows/VistaRegistros.h"

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTimer;

namespace utr {

class GraficoDeDatos;
class HojasJustas;

// "Datos de la UTR": historic records of one channel, and present values of all.
class frmDatos : public VistaRegistros {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own clone, or null. Show it with exec().
  frmDatos(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);

 protected:
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  const LectorRegistros& Lector() const override { return lector_; }
  const Tabla* Canales() const override { return configuracion_.get(); }
  void Listado() override;
  void Vaciado() override;

 private:
  void Explicar();
  void ArmarComandos();
  QWidget* ArmarMarcos();
  QWidget* ArmarHistoricos();
  QWidget* ArmarInstantaneos();
  void CargarCanales();
  void TraerDatos();
  bool MostrarInstantaneos();
  QLayout* ArmarActualizar();
  void ActualizarSeguido(bool seguido);
  void Turno();
  // What the operator looks at in the list of the present values.
  struct SitioEnLista {
    QString filtro;
    std::string actual;  // channel of the current row
    std::set<std::string> elegidos;
    int arriba = 0;
    int izquierda = 0;
  };
  SitioEnLista DondeEsta();
  void Volver(const SitioEnLista& sitio);
  std::string CanalEn(std::size_t posicion) const;
  QStringList DisposicionDe(int marco) const;
  void MarcoElegido(int cual);
  void VerMarco(int cual);

  TablaPtr configuracion_;
  LectorDatos lector_;
  PanelAviso* picSinDatos_;
  PanelAviso* PicSinDatosInst_;
  HojasJustas* hojas_;
  QComboBox* Canales_;
  QCheckBox* CheckEscalados_;
  QCheckBox* chkCartucho_;
  QPushButton* traer_;
  QRadioButton* OpEscalados_;
  QRadioButton* OpSinEscalar_;
  QCheckBox* chkNivelRef_;
  QPushButton* DatosInst_;
  QCheckBox* chkActualizar_;
  QSpinBox* ActualizarCada_;
  QTimer* turno_;
  GraficoDeDatos* grafico_;
  LectorDatos::Pedido leido_;   // of the historic records that were read last
  bool turno_listado_ = false;  // the last read of the present values brought some
  std::int64_t fin_turno_ = 0;  // when it ended, in seconds by the clock of this machine
  int marco_ = 0;               // whose list is on show
  // Where the operator was in the list of a frame; rows by their places in its table.
  struct MarcoQuedo {
    QString filtro{};
    std::optional<std::size_t> actual{};
    std::set<std::size_t> elegidas{};
  };
  MarcoQuedo ComoQuedo();
  void Dejar(const MarcoQuedo& quedo);

  std::array<MarcoQuedo, 2> quedaron_;        // while the other one is on show
  std::array<Visto, 2> vistos_;               // what each frame read last, while the other one is on show
  std::array<QStringList, 2> disposiciones_;  // and how its columns stood
};

}  // namespace utr
