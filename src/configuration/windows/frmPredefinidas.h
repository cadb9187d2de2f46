#pragma once

#include <QDialog>
#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "session/ModRTU.h"
#include "tables/Tabla.h"

class QLabel;
class QPushButton;

namespace utr {

class EtiquetaCopiable;
class VistaLista;

// "Parametrizaciones predefinidas": the sets of a file that fit a family of sensors, with their values; the operator
// takes one. The file in use is ModRTU::ruta_predefinida. Any way out but "Aceptar" leaves `Parametros` empty.
class frmPredefinidas : public QDialog {
  Q_OBJECT

 public:
  explicit frmPredefinidas(ModRTU& mod, QWidget* parent = nullptr);

  bool Acepto = false;
  std::string Parametros;  // the values of the accepted set, parted by "#"

  // Fills the list with the sets of that family and gives how many there are. Asks for a file when none is in use; a
  // cancel gives 0. A file that can't be read as sets is logged and told, let go of, and gives 0.
  int CargarParametrizaciones(int IdDescripcionSensores);

 protected:
  void done(int resultado) override;

 private:
  QLayout* FilaDelArchivo();
  QWidget* PanelDeFamilia(int familia);
  bool Elegir();
  bool Abrir(const std::filesystem::path& ruta);
  void Usar(const std::filesystem::path& elegido);
  void Llenar();
  void OtroArchivo();
  void MostrarElegida();

  ModRTU& mod_;
  int familia_ = 0;
  TablaPtr conjuntos_;
  std::string elegida_;  // values of the set on show
  QLabel* archivo_;
  QPushButton* otro_;
  VistaLista* lista_;
  std::array<QWidget*, 5> paneles_{};
  std::array<std::vector<EtiquetaCopiable*>, 5> datos_;
  QPushButton* aceptar_;
  QPushButton* cancelar_;
};

}  // namespace utr
