#pragma once

#include <filesystem>
#include <optional>

#include "retrieved/CifrasRegistros.h"
#include "retrieved/recovery/ArchivoVisto.h"
#include "session/ModRTU.h"
#include "widgets/VentanaLista.h"

class QComboBox;
class QLineEdit;
class QPushButton;

namespace utr {

class EtiquetaCopiable;
class PanelGrafico;
class VistaInforme;

// "Visualizador": a result file of the recovery, any other saved table, or a file for manual insertion, in a list, with
// the report of the recovery that left it. No unit is needed.
class frmVisualizador : public VentanaLista {
  Q_OBJECT

 public:
  explicit frmVisualizador(ModRTU& mod, QWidget* parent = nullptr);

  // Shows that file. One that can't be opened is told in a message, and what was seen before stays. An empty path
  // changes nothing.
  void MuestraArchivo(const std::filesystem::path& Ruta);

  // Shows a report alone, for a recovery that left no result.
  void MuestraInforme(const std::filesystem::path& ruta);

 protected:
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  TablaPtr TablaDeImp() const override { return visto_.tabla; }

 private:
  void ArmarComandos();
  QWidget* ArmarParametros();
  void ElegirArchivo();
  void PrepararDatosParaLista(const std::filesystem::path& ruta);
  void Listar(ArchivoVisto visto, const std::filesystem::path& ruta);
  void VerInforme(const std::optional<InformeVisto>& informe);
  void VerGrafico(const std::filesystem::path& ruta);
  std::string Origen() const;

  ModRTU& mod_;
  ArchivoVisto visto_;  // its table is null while no file was opened
  SeriesDeTabla series_;
  std::filesystem::path ruta_;
  QLineEdit* lblFile_;
  QPushButton* cmdFile_;
  QComboBox* cboFiltro_;
  int filtro_elegido_ = 0;  // kept as the choice of cboFiltro, which nothing fills, and read by nobody
  VistaInforme* informe_;
  PanelGrafico* grafico_;
  QLabel* lblCantRegistros_;
  EtiquetaCopiable* lblCifras_;
};

}  // namespace utr
