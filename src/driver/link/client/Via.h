#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Error.h"
#include "driver/link/client/Conversacion.h"

namespace utr::enlace {

// The device of a port number; nothing for a number that no device has, or whose device isn't what it was. Raises what
// keeps it from being known.
using DispositivoDe = std::function<std::optional<std::string>(int numero)>;

// The way to the unit, as the computer sees it: the serial port, the call over it, the connection over IP, and which of
// them is used.
class Via {
 public:
  Via(Tendido& tendido, DispositivoDe dispositivos, Espera& espera, const Plazos& plazos);

  // Comunicador::Conectar, Desconectar, LlamarTelefono, ModoConexion.
  void Conectar(std::string_view enlace, std::string_view puerto);
  void Desconectar();
  bool Llamar(std::string_view numero, std::string_view comandos);
  bool Rts(bool activo);

  // True: the way is another one than before.
  bool PorIP(bool activo);
  bool DireccionIP(std::string_view direccion);
  bool PuertoIP(std::string_view puerto);

  // The line on which the unit is reached, opened when need be: over IP a connection that isn't there or was closed,
  // after a lost port the same device once more. None: nobody could be reached, or no call stands on the line of a
  // modem, which only the operator places. Raises when the port can't be opened again.
  Conversacion* Abierta();

  // Nobody could be reached, but another try may do.
  bool PuedeReintentar() const { return por_ip_ && HayDireccion(); }

  // The line failed with an error; a port that is gone counts as closed from now on, and so does a call. True: another
  // try may do, since over IP a connection is opened again.
  bool Perder(const Error& falla);

  // An answer came, or the unit went silent or away.
  void Contestada(bool contestada) { caida_ = !contestada; }

  bool HayPuerto() const { return serie_ != nullptr; }
  bool EnLlamada() const { return serie_ && serie_->DeMedio() == Medio::kLlamada; }
  bool Arriba() const { return (por_ip_ ? ip_ != nullptr : serie_ != nullptr) && !caida_; }
  const std::string& Ajustes() const { return ajustes_; }
  const Trafico& Cuenta() const { return trafico_; }
  void ContarReintento() { ++trafico_.reintentos; }
  void ContarPaginas(std::size_t cuantas) { trafico_.paginas += cuantas; }

 private:
  void AbrirSerie();
  void CerrarSerie();
  bool HayModem();
  bool HayDireccion() const;
  bool AbrirIp();
  bool AbrirIpConIntentos();
  bool Colgar();

  Tendido& tendido_;
  DispositivoDe dispositivos_;
  Espera& espera_;
  const Plazos& plazos_;
  Trafico trafico_;
  std::unique_ptr<Conversacion> serie_;
  std::unique_ptr<Conversacion> ip_;
  int puerto_serie_ = 0;
  std::int32_t velocidad_ = 0;
  std::string dispositivo_;        // that was opened last
  std::int64_t callar_hasta_ = 0;  // an answer that was missed there may come until then
  bool perdida_ = false;           // the port went away without being asked to
  bool sin_llamada_ = false;       // behind the port there is a modem that takes commands: no call stands
  std::string modem_;              // device on which a number was dialled last
  bool averiguar_ = false;         // it was opened anew: the modem may be gone, or take what is sent for commands
  bool por_ip_ = false;
  std::string direccion_;
  int puerto_ip_ = 0;
  std::string ajustes_;
  bool caida_ = false;
};

}  // namespace utr::enlace
