#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace utr {

// Writes a file whole or not at all: runs `escribir` on a stream over a new file beside `ruta`, whose name nobody else
// has, brings it to the disk, gives it the name `ruta` and brings the folder to the disk too. Whatever fails on the way
// (also an exception of `escribir`) leaves the former file as it was and no other file behind. A crash of the machine
// leaves the former file or the new one, whole.
//
// A symbolic link of that name stays: what it leads to is written (DestinoDe). The new file has the permissions of the
// former one. Raises kArchivo, with the system's error, when the file can't be written.
void EscribirEntero(const std::filesystem::path& ruta, const std::function<void(std::ostream&)>& escribir);

// The same for a file that mustn't be there: anything of that name, also a link that leads nowhere, is kept and raises
// kArchivo, even when it appeared while `escribir` ran.
void EscribirNuevo(const std::filesystem::path& ruta, const std::function<void(std::ostream&)>& escribir);

// The file that a write to that name is for: what a symbolic link leads to in the end, whether it is there or not; any
// other name is itself. Raises kArchivo for links that lead in a circle.
std::filesystem::path DestinoDe(const std::filesystem::path& ruta);

// A file that grows while something is read out for a long time: what was appended stays, whatever happens next, and
// the file is good as far as it goes. It grows in place, or under a name that its user gives and that Terminar
// replaces by the final one.
//
// Every operation raises kArchivo, with the system's error, when the disk refuses it.
class ArchivoCreciente {
 public:
  // Creates the file. Anything of that name is kept and raises kArchivo: whoever wants it replaced deletes it first.
  explicit ArchivoCreciente(std::filesystem::path ruta);

  // Goes on with a file that is there. One that isn't, is a link, or doesn't hold `largo` bytes raises kArchivo: it
  // isn't the file that whoever goes on with it knows.
  ArchivoCreciente(std::filesystem::path ruta, std::uint64_t largo);

  // Closes the file as it stands. Nothing is reported: who wants to know calls Terminar.
  ~ArchivoCreciente();
  ArchivoCreciente(const ArchivoCreciente&) = delete;
  ArchivoCreciente& operator=(const ArchivoCreciente&) = delete;

  // Hands the bytes to the system, all of them or none: of a piece that didn't fit nothing stays, so that the file
  // never ends in half a line. They outlive a crash of the program at once, one of the machine after Sincronizar.
  void Agregar(std::string_view bytes);

  // Brings everything appended so far to the disk. Once that has failed, Terminar fails too, since nobody knows what
  // the disk holds.
  void Sincronizar();

  // Sincronizar, and no more appending; with `definitiva` the file gets that name, in place of a former file.
  void Terminar();
  void Terminar(const std::filesystem::path& definitiva);

  const std::filesystem::path& Ruta() const noexcept { return ruta_; }
  std::uint64_t Largo() const noexcept { return largo_; }  // of the file, in bytes

 private:
  [[noreturn]] void Fallar(int error_del_sistema) const;
  void ExigirAbierto() const;

  std::filesystem::path ruta_;
  int archivo_ = -1;
  std::uint64_t largo_ = 0;
  int falla_del_disco_ = 0;
  bool carpeta_al_dia_ = false;
};

}  // namespace utr
