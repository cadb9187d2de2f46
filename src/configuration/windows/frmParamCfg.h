#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <optional>
#include <string>

#include "configuration/CalculosSensor.h"
#include "configuration/ConfigColl.h"
#include "configuration/EdicionSensor.h"
#include "session/ModRTU.h"

class QCheckBox;
class QMenu;

namespace utr {

struct ControlesSensor;

// "Configuración del Sensor": shows one channel and edits it. Set the modes, then the channel, show it with exec() and
// read Acepto. Esc and the close button cancel.
class frmParamCfg : public QDialog {
  Q_OBJECT

 public:
  explicit frmParamCfg(ModRTU& mod, QWidget* parent = nullptr);
  ~frmParamCfg() override;

  bool SoloParametros = false;  // validation limits and alarms alone can be edited, and "Leer" used
  bool SoloLectura = false;     // nothing can be edited
  bool Acepto = false;          // closed through "Aceptar" with the values stored in the channel
  bool DejarRestantes = false;  // closed through the button that ends a round; the channel is as it was

  // Fills the dialog at once. The channel is the caller's own and takes the values when they are accepted.
  void FijarConfiguracion(ConfigPtr config);
  const ConfigPtr& Configuracion() const { return config_; }

  // The channels whose values can be copied into this one; they must outlive the dialog. Null: none.
  void FijarColeccion(const ConfigColl* coleccion);

  // The channel is one of several that are shown one after the other: a line tells its place, counted from 1, and a
  // button ends the round.
  void FijarRonda(std::size_t lugar, std::size_t cuantos);

  void reject() override;

 protected:
  void showEvent(QShowEvent* evento) override;
  void contextMenuEvent(QContextMenuEvent* evento) override;

 private:
  void Conectar();
  void LlenarListas();
  void CargarComboTiposSensores(const EdicionSensor& edicion);
  void VaciarCeldas();
  void MostrarTipo(std::int16_t tipo);
  void MostrarFlags(std::uint8_t flags);
  std::uint8_t CargarFlags() const;
  void MostrarEstadoNormal();
  QCheckBox* OpcionDiferencial(bool pluviometro) const;
  void MostrarParametro();
  void CambiarTipo();
  void CambiarDiferencial();
  void CambiarResolucion();

  void AplicarCeldas();
  ModoEdicion Modo() const;
  bool Habilitado(CampoSensor campo) const;
  std::string Texto(CampoSensor campo) const;
  ValoresSensor Valores() const;
  EdicionSensor Edicion() const;

  void PonerTexto(CampoSensor campo, const std::string& texto);
  void Poner(const std::vector<ValorForzado>& cambios);
  void Dejar(CampoSensor campo);
  void DejarTodos();
  void RecalcularBits();
  void ReponerTiempos();
  void Paso(CampoSensor campo, int hacia);

  void Revisar();
  void MostrarReparos();
  QString LineaDeReparos() const;
  std::string Remedio(CampoSensor campo) const;
  QWidget* DondeSeRemedia() const;
  void IrAlPrimero();

  void Aceptar();
  bool Guardar();
  void Advertir(const std::string& texto);
  void MostrarArchivo();
  void LeerParam();
  void ElegirPredefinida();
  void PonerPredefinida(const std::string& parametros);
  void LlenarCopiar();
  void Copiar(const Config& origen);

  ModRTU& mod_;
  ConfigPtr config_;
  const ConfigColl* coleccion_ = nullptr;
  std::unique_ptr<ControlesSensor> c_;
  QMenu* copiar_;           // the channels to copy from
  std::int16_t tipo_ = -1;  // the kind that is shown; none of the list's rows may be it
  std::int16_t canal_ = 0;
  std::array<Celda, kCamposDeSensor> celdas_{};  // what the kind makes of each field
  ValoresSensor cargados_;                       // as the channel had them
  ValoresSensor recordados_;                     // as the program last put them or the operator last left them
  ResultadoReglas vivos_;                        // what is broken now
  bool llenando_ = false;
};

}  // namespace utr
