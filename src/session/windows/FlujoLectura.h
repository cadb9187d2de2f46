#pragma once

#include <string>

#include "session/LecturaConfiguracion.h"
#include "session/ModRTU.h"

class QWidget;

namespace utr {

class frmPresentacion;

// What a read of the configuration is asked for.
struct PedidoConfiguracion {
  bool DesdeUTROnly = false;      // from the unit alone
  bool MostrarConfig = false;     // the list of channels follows
  bool SoloMostrarLaCFG = false;  // only to look at
  bool ShowUCG = false;           // files are exported configurations
};

// The roads to the table of channels with the operator in front: dialog, read, comparison of clocks, export. The main
// window owns it; its title follows a read, and messages bear it.
class FlujoLectura {
 public:
  FlujoLectura(ModRTU& mod, LecturaConfiguracion& lectura, QWidget& principal)
      : mod_(mod), lectura_(lectura), principal_(principal) {}

  // Asks where the configuration comes from and reads it. False after a failure, which was shown; true also after a
  // cancel.
  bool LeerConfiguracion(const PedidoConfiguracion& pedido);

  // Reads from the unit with the settings as they stand, without a question. False after a failure, which was shown.
  bool LeerConfiguracionDirectaUTR();

  // Asks whether to read the unit, and reads it. Raises what the read raises.
  void OfrecerLectura();

  // Saves the unit's configuration, which is read first when it isn't at hand. Failures are logged and raised.
  void ExportarConfiguracion();

  ModRTU& Mod() const { return mod_; }
  const LecturaConfiguracion& Lectura() const { return lectura_; }
  QWidget& Principal() const { return principal_; }
  std::string Titulo() const;

 private:
  void AceptarLectura(frmPresentacion& dialogo);
  bool LeerParaExportar();
  QWidget* Encima() const;

  ModRTU& mod_;
  LecturaConfiguracion& lectura_;
  QWidget& principal_;
};

}  // namespace utr
