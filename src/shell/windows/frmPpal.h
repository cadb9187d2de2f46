#pragma once

#include <QMainWindow>
#include <functional>
#include <string>

#include "session/LecturaConfiguracion.h"
#include "session/ModRTU.h"
#include "session/OperacionesEnlace.h"
#include "session/SituacionDelEnlace.h"
#include "session/windows/FlujoLectura.h"

namespace utr {

class Apariencia;
class BarraEstado;
class FranjaEstacion;
class ListaAcciones;
class MenuPpal;
struct AccionPpal;

// The main window: list of actions, menus, toolbar and status bar. It owns the table of channels, opens every dialog
// with what it needs, and keeps the connection buttons honest. While an action runs no other one is entered and the
// window can't be closed.
class frmPpal : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmPpal(ModRTU& mod, QWidget* parent = nullptr);
  ~frmPpal() override;

  // What the window does once, before it is shown: it meets the link and reads the configuration.
  void Cargar();

  // Asks where the configuration comes from and reads it. False after a failure, which was shown; true also after a
  // cancel.
  bool LeerConfiguracion(const PedidoConfiguracion& pedido);

  // The same as the menu asks for it: the list of channels follows, only to look at.
  void LeerConfiguracion();

  // Reads from the unit with the settings as they stand, without a question. False after a failure, which was shown.
  bool LeerConfiguracionDirectaUTR();

  void InfoPanel();

  // Shows who is at the other end of the link, from now on; `situacion` must outlive the window.
  void Seguir(SituacionDelEnlace& situacion);

  // Offers theme and size of text in "&Ver"; `apariencia` must outlive the window.
  void Vestir(Apariencia& apariencia);

  // Says something in panel 1 of the status bar.
  void Avisar(const std::string& texto);
  void EstadoConeccion(bool Conected);
  void ConfigurarPuerto();
  void Contrasena();
  void ProcesarAgenda();
  void MostrarEventos();
  void MostrarDatos();
  void ColaDeTransmicion();
  void ProcesarDatos();
  void VisualizarArchivos();
  void MostrarSalidasDigitales();
  void MostrarComandos();
  void RecuperarDatos();

  // The channels of the unit, to change and write: all that they hold, or their parametrization.
  void MostrarConfiguracion();
  void MostrarParametros();

  // Commissions a unit with the start-up wizard, and reads it again.
  void AsistenteParam();

  // Saves the unit's configuration, which is read first when it isn't at hand. Failures are logged and raised.
  void ExportarConfiguracion();

  // The journal of the visit, and the book of stations: a station that is picked there fills the dialog of the
  // connection.
  void MostrarBitacora();
  void MostrarLibroEstaciones();
  void DescargarTodo();

  // Starts the sibling tool that stands beside the executable.
  void LanzarMandadero();

  const LecturaConfiguracion& Lectura() const noexcept { return lectura_; }

 protected:
  void closeEvent(QCloseEvent* evento) override;
  void changeEvent(QEvent* evento) override;

 private:
  void ArmarLista();
  void ConectarControles();
  void Operar(const char* procedimiento, const std::function<void()>& operacion);
  void mnuAcciones_Click(int indice);
  void mnuAccAvanzadas_Click(int indice);
  void mnuVisita_Click(int indice);
  void Ejecutar(const AccionPpal& accion);
  bool ReconectarSiHaceFalta();
  void BotonConected();
  void BotonDisconected();
  void CrecerConLaBarra();
  void MostrarEnlace();
  void MostrarEstacion();
  void MostrarPendientes();
  void Descargar();
  std::string Titulo() const;

  ModRTU& mod_;
  LecturaConfiguracion lectura_;
  FlujoLectura flujo_;
  MenuPpal* menu_;
  FranjaEstacion* franja_;
  ListaAcciones* lista_;
  BarraEstado* barra_estado_;
  TextosPanel panel_;  // of the link, as last shown
  SituacionDelEnlace* situacion_ = nullptr;
};

}  // namespace utr
