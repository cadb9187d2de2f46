#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>

#include "configuration/ConfigColl.h"
#include "configuration/Escritura.h"
#include "configuration/FilasDeCanales.h"
#include "session/LecturaConfiguracion.h"
#include "session/ModRTU.h"
#include "widgets/VentanaLista.h"

class QLabel;

namespace utr {

class PanelCambios;

// The list of a station's channels: "Configuración de los canales", all of them and all that they hold, or
// "Parametrizaciones de los canales", times, limits and alarms of the enabled ones. A row opens in the sensor dialog;
// Aceptar writes the whole set to the unit in the fixed order of the mode.
//
// The opener sets the mode, fills the window with Llenar, runs exec(), and reads Grabado and Aceptado.
class frmParametrizacion : public VentanaLista {
  Q_OBJECT

 public:
  // `lectura`: where the channels come from; its table is what is saved as a backup ahead of a write.
  frmParametrizacion(ModRTU& mod, LecturaConfiguracion& lectura, QWidget* parent = nullptr);
  ~frmParametrizacion() override;

  ConfigColl ColeccionCFG;         // the channels on show, as edited so far
  bool Aceptado = false;           // a write sequence came to its end
  bool SoloLectura = false;        // only to look at: nothing is written
  bool Grabado = false;            // a write sequence started its last stage
  bool ModoConfiguracion = false;  // the full configuration; else the parametrization alone

  // Fills the collection from the table of channels: all rows in the full mode, the enabled ones in the other and for
  // looking. What is shown then is what later edits are compared with. Raises kCampo for a table without the columns.
  void Llenar(const Tabla& tabla);

  // Shows these channels in the order of the collection. Filter, order of the list and the row that is selected stay.
  void RecargarListaParam(const ConfigColl& coleccion);

  // How the last write sequence ended, and the backup made ahead of it.
  const ResultadoEscritura& Resultado() const noexcept { return resultado_; }
  const ResultadoRespaldo& Respaldo() const noexcept { return respaldo_; }

 protected:
  void Activar() override;
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  void closeEvent(QCloseEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void ArmarComandos();
  ComandoVentana OrdenarPorLaFlecha(bool ascendente);

  bool SoloMirar() const;
  FilasDeCanales Cuales() const;
  QString TextoOrigen() const;
  std::string DeQuienSon() const;
  bool DeAntes() const;
  void MostrarModo();
  void MostrarCambios();
  std::optional<std::int16_t> CanalDe(std::size_t fila) const;
  std::optional<std::int16_t> CanalElegido() const;
  void ElegirCanal(std::int16_t canal);

  void Editar();
  bool ClaveDada();
  bool PuedenPerderse(const char* accion);

  void Abrir();
  void AbrirArchivo(const std::filesystem::path& ruta);
  void GuardarConfiguracion();

  void Aceptar();
  bool Confirmar();
  bool Respaldar();
  void Grabar();

  std::string Titulo() const;
  bool Intentar(const char* procedimiento, Redaccion redaccion, void (frmParametrizacion::*hacer)());

  ModRTU& mod_;
  LecturaConfiguracion& lectura_;
  QLabel* lblOrigen_;
  QLabel* lblPilas_;
  PanelCambios* cambios_;
  TablaPtr filas_;      // what the list shows
  ConfigColl inicial_;  // as the window was filled, objects of its own
  std::set<std::int16_t> cambiados_;
  CanalesModificar modificar_;
  std::set<std::int16_t> editados_;  // accepted in the sensor dialog since the list was filled
  std::filesystem::path archivo_;    // opened here; empty: the channels are those of `lectura_`
  bool clave_dada_ = false;
  bool carpeta_propuesta_ = false;
  ResultadoEscritura resultado_;
  ResultadoRespaldo respaldo_;
};

}  // namespace utr
