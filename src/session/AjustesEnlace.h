#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/ModRTU.h"

// How the unit is reached, as the settings store keeps it and as the dialogs ask for it.
namespace utr {

// A stored port number up to this one is a serial port; a larger one is a TCP port, and `Velocidad` then holds an
// address.
inline constexpr std::int32_t kUltimoPuertoSerie = 10;

inline constexpr std::int32_t kPuertoDefecto = 1;
inline constexpr std::int32_t kVelocidadDefecto = 9600;
inline constexpr std::int32_t kPuertoIPDefecto = 1000;
inline constexpr std::string_view kDireccionDefecto = "192.168.0.1";

// What the dialogs of the connection show and give back. Texts stand as typed.
struct EntradaEnlace {
  bool por_ip = false;
  std::int32_t puerto = kPuertoDefecto;        // number of the chosen serial port; 0: none is chosen
  std::int32_t velocidad = kVelocidadDefecto;  // bits per second; 0: none is chosen
  bool telefono = false;
  std::string numero_telefono;
  std::string comandos;  // for the modem
  std::string direccion;
  std::string puerto_ip = "1000";
  std::string identificador = "0";
};

// The entry that the store describes. `puerto` and `velocidad` are 0 where the keys hold none while a serial link is
// meant.
EntradaEnlace LeerEntrada(const Propiedades& propiedades);

// A complaint about an entry: its sentence and the field that is wrong.
enum class CampoEnlace { kTelefono, kDireccion, kPuertoIP, kIdentificador, kPuerto, kVelocidad };
struct Reparo {
  CampoEnlace campo;
  std::string texto;
};

// The complaints about an entry, in the order in which they are shown; none when it can be used.
std::vector<Reparo> ValidarDatos(const EntradaEnlace& entrada);

// What a serial entry lacks where nothing is chosen: a port, a speed, in this order.
inline constexpr std::string_view kFaltaPuerto = "Debe elegir un puerto de comunicaciones";
inline constexpr std::string_view kFaltaVelocidad = "Debe elegir una velocidad";

// Writes the keys of an entry that passed ValidarDatos, identifier included. Doesn't save.
void EscribirEntrada(Propiedades& propiedades, const EntradaEnlace& entrada);

// Writes port and speed (or TCP port and address) alone, both as texts. Doesn't save.
void EscribirPuerto(Propiedades& propiedades, std::string_view puerto, std::string_view velocidad);

// Saves and reloads the store. A failure is logged and shown under `titulo`; the program goes on with what is in
// memory.
void GuardarAjustes(ModRTU& mod, std::string_view modulo, std::string_view procedimiento, std::string_view titulo);

// The link settings text of a speed or address: ",n,8,1" behind it.
std::string TextoEnlace(std::string_view velocidad);

// The link settings say serial, so that there is a port to connect and disconnect.
bool HayPuertoSerie(const Propiedades& propiedades);

// The caption of the main window behind a read; nothing without an identifier (0): it then stays as it is.
std::optional<std::string> TituloTrasLectura(const Propiedades& propiedades);
// The same behind the direct commands, which may have given the unit another one: it has a hyphen there.
std::optional<std::string> TituloTrasComandos(const Propiedades& propiedades);

}  // namespace utr
