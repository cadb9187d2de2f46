#pragma once

#include <QDialog>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "retrieved/recovery/MapaMemoria.h"
#include "session/ModRTU.h"
#include "tables/Tabla.h"
#include "widgets/Ocupacion.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace utr {

class EtiquetaCopiable;
class VistaMapa;

// The configuration that a processing applies, told to the operator.
struct ConfiguracionAplicada {
  TablaPtr tabla;           // the dialog's own
  std::string descripcion;  // where it comes from, which unit's it is, when it was read
  bool anterior = false;    // a former one: the choice was cancelled or failed

  // For the operator and for the report.
  std::string EnPalabras() const;
};

// "Procesamiento de la información": recovery files and a configuration become result files. No unit is needed. A run
// can't be cancelled; when it has ended the dialog hides and is read by its opener.
class frmProcesar : public QDialog {
  Q_OBJECT

 public:
  frmProcesar(ModRTU& mod, ConfiguracionAplicada configuracion, QWidget* parent = nullptr);
  ~frmProcesar() override;

  // Of the last run: it has ended; the last result that it saved, empty when there is none; its report.
  bool Procesado = false;
  std::filesystem::path ArchivoResultado;
  std::filesystem::path Informe;

 private:
  class Avance;

  QWidget* ArmarArchivos();
  QWidget* ArmarConfiguracion();
  QWidget* ArmarMapa();
  QWidget* ArmarAvance();
  void ConectarControles();
  void Explicar();

  std::optional<std::filesystem::path> ElegirRecuperacion();
  void AbrirArchivo();
  void AgregarArchivo();
  void QuitarArchivo();
  void GuardarEn();
  void Habilitar();
  void VerArchivos();
  void Anticipar();
  void MostrarReparos(const QString& reparos);
  std::vector<std::filesystem::path> Archivos() const;

  void Comenzar();
  void ProcesandoDatos();
  OpcionesOcupacion AlTrabajar();

  ModRTU& mod_;
  ConfiguracionAplicada configuracion_;
  TablaPtr descripciones_;  // of events; null: they couldn't be loaded
  MapaMemoria mapa_;
  std::vector<std::filesystem::path> anticipados_;  // the files that the map shows

  QLineEdit* ArchivoAProcesar_;
  QPushButton* AbrirArchivo_;
  QPushButton* AgregarArchivo_;
  QLabel* lblArchivos_;
  QListWidget* lstArchivos_;
  QPushButton* QuitarArchivo_;
  EtiquetaCopiable* lblAnticipo_;
  EtiquetaCopiable* lblConfiguracion_;
  QLineEdit* lblResultadosEn_;
  QPushButton* GuardarEn_;
  VistaMapa* vista_mapa_;
  QWidget* picInfo_;
  QLabel* LblInfo_;
  QProgressBar* Progreso_;
  QPushButton* comenzar_;
  QPushButton* cancelar_;
  QWidget* cuerpo_;
};

}  // namespace utr
