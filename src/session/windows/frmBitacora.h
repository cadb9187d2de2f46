#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "session/ArchivoBitacora.h"
#include "session/DatosVisita.h"
#include "session/ModRTU.h"
#include "session/windows/InformeVisita.h"
#include "widgets/VentanaLista.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTimer;

namespace utr {

// "Bitácora de la visita": the journal of a day of a station, that of today and of the present station first, with what
// the operator says of the visit, which is kept for that day. Its print is the report of the visit.
class frmBitacora : public VentanaLista {
  Q_OBJECT

 public:
  // `figuras`: the plots last on show, for the report.
  explicit frmBitacora(ModRTU& mod, std::vector<FiguraInforme> figuras = {}, QWidget* parent = nullptr);
  ~frmBitacora() override;

  // Keeps what was typed; where that fails, it is said, and the operator may go on with the window.
  void reject() override;

 protected:
  EncabezadoLista Encabezado(bool para_imprimir) const override;

 private:
  QWidget* ArmarEncima();
  void ArmarComandos();
  bool Intentar(const char* procedimiento, const std::function<void()>& hacer);
  void LlenarEstaciones();
  void LlenarDias();
  void MostrarDia();
  void Volver();
  void MostrarAsientos();
  void MostrarDatos();
  void Leer(const std::filesystem::path& archivo);
  void AbrirOtra();
  void GuardarLoEscrito();
  bool GuardarDatos();
  DatosVisita Datos() const;
  void ImprimirInforme();
  InformeVisita Informe() const;
  std::string NombreDeEstacion() const;
  std::string DiaEnPalabras() const;
  int LugarDe(const FechaHora& dia) const;

  ModRTU& mod_;
  std::vector<FiguraInforme> figuras_;
  QComboBox* cboEstacion_;
  QComboBox* cboDia_;
  QLineEdit* txtOperador_;
  QPlainTextEdit* txtNotas_;
  QLabel* lblReparo_;
  QLabel* lblPendientes_;
  QLabel* lblSinGuardar_;
  QTimer* tmrGuardar_;
  PanelAviso* vacia_;
  std::vector<DiaDeBitacora> dias_;
  std::int32_t estacion_ = 0;
  FechaHora dia_;
  std::filesystem::path archivo_;  // another one than those of the lists; empty: none
  std::vector<Asiento> asientos_;
  std::vector<std::string> reparos_;      // what couldn't be understood of the files
  std::optional<DatosVisita> guardados_;  // what the file of the day holds; nothing where it isn't understood
};

}  // namespace utr
