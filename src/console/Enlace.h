#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "base/Reloj.h"
#include "console/Opciones.h"
#include "driver/Bitacora.h"
#include "driver/Comunicador.h"

namespace utr::consola {

// The driver that a command line talks with, and the link that it asks for. The station of the program's own process is
// never reached but by name: --simulada, or a station of the book that says so.
class Enlace {
 public:
  // Opens nothing yet. Raises kLlamada for a station that the book doesn't have, kArchivo for a book that can't be
  // read. `carpeta`: that of the program. `de_practica` is called when a station over a wire has said that it is one to
  // practise with.
  Enlace(const PedidoEnlace& pedido, std::filesystem::path carpeta, Reloj& reloj, Atender atender, Bitacora& bitacora,
         const std::function<void()>& de_practica);
  ~Enlace();  // closes it
  Enlace(const Enlace&) = delete;
  Enlace& operator=(const Enlace&) = delete;

  Comunicador& Driver() noexcept;
  bool Simulada() const noexcept;
  std::int32_t Identificador() const;

  // Opens the port or the connection, places the call, and tells the driver the identifier. Raises kPuertoEnUso when
  // another program has the port or the simulated station, and other numbers for other failures.
  void Abrir();

 private:
  struct Partes;
  std::unique_ptr<Partes> partes_;
};

}  // namespace utr::consola
