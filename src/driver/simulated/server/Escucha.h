#pragma once

#include <poll.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "driver/simulated/server/Opciones.h"
#include "driver/simulated/station/Despachador.h"

namespace utr::simulada {

// Where the station tells its operator how it stands, and what went wrong.
struct Voces {
  std::function<void(std::string_view)> decir;
  std::function<void(std::string_view)> advertir;
};

// The unit that all listeners serve.
struct Servida {
  EstacionViva& viva;
  Despachador& unidad;
  const Voces& voces;
};

// One way into the station. None of its operations waits; moments are milliseconds of the station's clock.
class Escucha {
 public:
  virtual ~Escucha() = default;

  // What it listens to, as the operator is told: "Modbus TCP en 127.0.0.1, puerto 1502".
  virtual std::string Nombre() const = 0;

  // Adds what is to be watched for bytes.
  virtual void Vigilar(std::vector<pollfd>& descriptores) const = 0;

  // Takes in what has come and hands out what is due.
  virtual void Atender(std::int64_t ahora) = 0;

  // When it should be called next though nothing comes in.
  virtual std::optional<std::int64_t> Proximo(std::int64_t ahora) const = 0;
};

// Listens on a TCP port: eight connections at once, each until it was idle for five minutes. Raises kPuertoEnUso or
// kLlamada, with the address and the reason, when it can't.
std::unique_ptr<Escucha> EscucharRed(const Opciones::Red& red, Servida servida);

// A pseudo-terminal, linked under that name into the folder as long as it lives; with `modem` one stands behind it. It
// hears at what speed its other end was set. Raises kArchivo.
std::unique_ptr<Escucha> TenderLinea(const std::filesystem::path& carpeta, const std::string& nombre, bool modem,
                                     Servida servida);

// A serial device of the machine, at the unit's own speed. Raises as the opening of serial lines does; a device that
// goes away later is opened again when it comes back, and either is told.
std::unique_ptr<Escucha> EscucharSerie(const std::string& dispositivo, Servida servida);

}  // namespace utr::simulada
