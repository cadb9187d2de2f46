#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/Fechas.h"
#include "tables/Tabla.h"

namespace utr {

// The driver's log: lines at the end of a file that is opened for each writing. A file that can't be written loses its
// lines and nothing else happens. Lines of calls that come by the thousand may wait in memory for the next other one,
// and for the next second at most while lines come; whoever has a timer calls Vaciar for the last ones.
class Bitacora {
 public:
  // A log that has grown beyond 32 MiB becomes Comunicador.anterior.log, and a new one begins.
  explicit Bitacora(std::filesystem::path carpeta);
  ~Bitacora();
  Bitacora(const Bitacora&) = delete;
  Bitacora& operator=(const Bitacora&) = delete;

  // A line as it is, ended by a line feed.
  void Linea(std::string_view linea) noexcept;

  // "dd/mm/yyyy HH:mm:ss " and the text.
  void Aviso(const FechaHora& ahora, std::string_view texto) noexcept;

  // One call: "dd/mm/yyyy HH:mm:ss LeerPagina("35", si) = "1,0,0"". With `espera` the line may wait in memory.
  void Llamada(const FechaHora& ahora, std::string_view operacion, std::string_view argumentos,
               std::string_view resultado, bool espera = false) noexcept;

  // The line of one page of flash that was read, with the length of its text for a result. It waits in memory.
  void PaginaFlash(const FechaHora& ahora, int pista, int pagina, std::size_t largo) noexcept;

  // Writes what waits.
  void Vaciar() noexcept;

  // Saves a table whole into the folder Comunicador.tablas, under a name of its own; gives the name, "" on failure.
  std::string GuardarTabla(std::string_view operacion, const Tabla& tabla) noexcept;

 private:
  void PonerFecha(const FechaHora& ahora);

  std::filesystem::path carpeta_;
  std::string pendiente_;
  FechaHora fecha_;
  std::string texto_fecha_;
  int numero_ = 0;
};

// A text in quotes on one line: control characters escaped, a text longer than `mayor` bytes cut short with its length
// behind. The common limit takes in every page of the unit.
std::string Citar(std::string_view texto, std::size_t mayor = 300);

}  // namespace utr
