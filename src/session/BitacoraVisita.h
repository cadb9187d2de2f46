#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/Fechas.h"
#include "services/Diario.h"
#include "services/RegistroErrores.h"

namespace utr {

// Keeps the journal on the disk, entry by entry as they come, each in the file of its day in the folder of its station:
// see ArchivoBitacora. What is in a file is never changed. A file that can't go on, because it is of another version or
// its end got lost, is left alone, and one more is begun for that day.
//
// An entry that the disk refuses stops nothing: it waits in memory, in its order, and is tried again with the next one.
class BitacoraVisita {
 public:
  // `programa`: folder of the program. It follows `diario` from now on; all must outlive it.
  BitacoraVisita(std::filesystem::path programa, Diario& diario, RegistroErrores& registro);
  ~BitacoraVisita();
  BitacoraVisita(const BitacoraVisita&) = delete;
  BitacoraVisita& operator=(const BitacoraVisita&) = delete;

  // Entries that aren't on the disk, oldest first, and why the first of them isn't; empty: all are.
  const std::vector<Asiento>& Pendientes() const noexcept { return pendientes_; }
  const std::string& Falla() const noexcept { return falla_; }

  // Who shows it; one at a time, none with an empty function. Told whenever one of both has changed.
  void AlCambiar(std::function<void()> aviso) { aviso_ = std::move(aviso); }

  // Tries again to bring to the disk what waits. Never raises.
  void Reintentar();

  // Writes what waits to a file that the operator chose, as a journal. It waits no more then. Raises kArchivo.
  void GuardarPendientes(const std::filesystem::path& archivo);

  // Where the journals of a station lie; the folder may not be there yet.
  std::filesystem::path Carpeta(std::int32_t estacion) const;
  const std::filesystem::path& Programa() const noexcept { return programa_; }

 private:
  // The file that grew last.
  struct Abierta {
    std::filesystem::path carpeta{};
    FechaHora dia{};
    std::filesystem::path archivo{};
    std::uint64_t largo = 0;
    std::size_t ultimo = 0;
  };

  void Guardar(const Asiento& asiento);
  Abierta Abrir(const std::filesystem::path& carpeta, const FechaHora& dia) const;

  std::filesystem::path programa_;
  Diario& diario_;
  RegistroErrores& registro_;
  std::function<void()> aviso_;
  std::vector<Asiento> pendientes_;
  std::string falla_;
  Abierta abierta_;
};

}  // namespace utr
