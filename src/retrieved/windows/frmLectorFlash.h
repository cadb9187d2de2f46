#pragma once

#include <QDialog>
#include <filesystem>
#include <optional>
#include <vector>

#include "retrieved/recovery/LecturaEnCurso.h"
#include "retrieved/recovery/MapaMemoria.h"
#include "session/ModRTU.h"

class QLabel;
class QPushButton;

namespace utr {

class EtiquetaRuta;
class PanelLectura;
class PanelSeleccion;
class VistaMapa;

// "Recuperación de información": reads the unit's flash page by page into a recovery file, and goes on with a read that
// was cut. One use: it closes behind a read. While it reads only Cancelar and the map take input, and Esc and the close
// button ask the same as Cancelar.
class frmLectorFlash : public QDialog {
  Q_OBJECT

 public:
  // `configuracion`: the channels of the unit, whose names the map shows; null where they aren't known.
  frmLectorFlash(ModRTU& mod, const Tabla* configuracion, QWidget* parent = nullptr);

 private:
  // What one reading has left to tell.
  struct Fin {
    std::vector<std::string> renglones;
    std::vector<LugarPagina> reintentables{};  // pages that couldn't be read, unless it was cancelled
  };

  void Armar();
  void Traer();
  void ElegirArchivo();
  void Continuar();
  void TomarAnterior(const std::filesystem::path& ruta);
  void DejarDeContinuar();
  void MostrarContinuacion();
  void MarcarMapa();
  void ProbarEquipo();
  Fin GuardarLecturaFlash(const std::vector<LugarPagina>& reintentar);
  bool Informar(const Fin& fin);
  void MostrarAvance(bool visto);
  void PedirCancelacion();
  bool ExportarConfiguracion();
  std::string Titulo() const;

  ModRTU& mod_;
  MapaMemoria mapa_{UsoMapa::kLectura};
  VistaMapa* vista_;
  PanelSeleccion* seleccion_;
  PanelLectura* avance_;
  EtiquetaRuta* lblPathFile_;
  QLabel* lblContinua_;
  QPushButton* cmdFile_;
  QPushButton* cmdContinuar_;
  QPushButton* traer_;
  QPushButton* cerrar_;
  QPushButton* cmdAyuda_;

  std::filesystem::path ruta_;
  std::filesystem::path ruta_propuesta_;  // while no earlier read is continued
  std::optional<LecturaAnterior> anterior_;
  std::vector<std::filesystem::path> continuaciones_;  // files among the pages of `anterior_` that go with it
  bool falta_configuracion_ = false;
  bool empezo_ = false;  // pages were read
};

}  // namespace utr
