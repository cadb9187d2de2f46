#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "session/AjustesEnlace.h"
#include "session/LecturaConfiguracion.h"
#include "session/ModRTU.h"

class QDialog;
class QWidget;

namespace utr {

class frmPresentacion;

// What a read of the configuration is asked for.
struct PedidoConfiguracion {
  bool DesdeUTROnly = false;                // from the unit alone
  bool MostrarConfig = false;               // the list of channels follows
  bool SoloMostrarLaCFG = false;            // only to look at
  bool ShowUCG = false;                     // files are exported configurations
  std::optional<EntradaEnlace> Estacion{};  // what the dialog shows of the link, instead of the settings
};

// What the main window does for the flows that it starts. Each may be missing.
struct ServiciosPpal {
  std::function<void(std::string_view texto)> estado{};  // panel 1 of the status bar
  // The panel of what was written and kept, with what its tooltip says more.
  std::function<void(std::string_view texto, std::string_view detalle)> verificacion{};
  std::function<void()> leida{};                           // the table on hand is another one
  std::function<void(bool solo_mirar)> mostrar_canales{};  // the list of channels
};

// Asks where a configuration is to be saved, has it saved there and says so, under that title. Nothing on a cancel.
// Raises what `guardar` raises.
void GuardarConfiguracion(ModRTU& mod, const std::string& titulo,
                          const std::function<void(const std::filesystem::path& ruta)>& guardar);

// The roads to the table of channels with the operator in front: dialog, read, comparison of clocks, export. The main
// window owns it; its title follows a read, and messages bear it.
class FlujoLectura {
 public:
  FlujoLectura(ModRTU& mod, LecturaConfiguracion& lectura, QWidget& principal)
      : mod_(mod), lectura_(lectura), principal_(principal) {}

  void Servirse(ServiciosPpal servicios) { servicios_ = std::move(servicios); }

  // Asks where the configuration comes from and reads it. False after a failure, which was shown; true also after a
  // cancel.
  bool LeerConfiguracion(const PedidoConfiguracion& pedido);

  // Reads from the unit with the settings as they stand, without a question. False after a failure, which was shown.
  bool LeerConfiguracionDirectaUTR();

  // Asks whether to read the unit, and reads it. Raises what the read raises.
  void OfrecerLectura();

  // Saves the unit's configuration, which is read first when it isn't at hand. Failures are logged and raised.
  void ExportarConfiguracion();

  // Fetches the table of a source, as LecturaConfiguracion tells; the status bar says where its backup couldn't be
  // kept. Raises what the read raises.
  void Preparar(const std::string& fuente);

  // Reads the unit again behind a write. False: the read failed, which was logged, or brought no rows; the table on
  // hand then counts as none of the unit's.
  bool Releer();

  // The status bar of the main window, as ServiciosPpal tells.
  void Estado(std::string_view texto) const;
  void Verificacion(std::string_view texto, std::string_view detalle = {}) const;

  ModRTU& Mod() const { return mod_; }
  LecturaConfiguracion& Lectura() const { return lectura_; }
  QWidget& Principal() const { return principal_; }
  std::string Titulo() const;

 private:
  void AceptarLectura(frmPresentacion& dialogo, const PedidoConfiguracion& pedido);
  bool LeerParaExportar();
  QWidget* Encima() const;

  ModRTU& mod_;
  LecturaConfiguracion& lectura_;
  QWidget& principal_;
  ServiciosPpal servicios_;
};

// Makes a window that works on the unit's configuration; the table is the one on hand, to be cloned.
using CrearVentana = std::function<std::unique_ptr<QDialog>(const TablaPtr& rec_config)>;

// Shows such a window modally. Without a configuration of the unit it offers to read it, and the window isn't opened in
// that pass. Failures are logged under `procedimiento` and shown.
void MostrarConConfiguracion(FlujoLectura& flujo, const char* procedimiento, const CrearVentana& crear);

}  // namespace utr
