#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/Archivos.h"
#include "base/Fechas.h"
#include "retrieved/recovery/MemoriaFlash.h"

namespace utr {

// The proposed path of a recovery file: date and time, "_DatosFlash", in that folder.
std::filesystem::path NombreArchivoFlash(const std::filesystem::path& carpeta, const FechaHora& ahora);

// Where the configuration is exported beside a recovery file: its name with another ending.
std::filesystem::path RutaDeConfiguracion(const std::filesystem::path& archivo);

// Writes a recovery file line by line while the pages come. Lines are handed to the system by Entregar, and brought to
// the disk every kPaginasPorTanda pages and at each end of a track. Every operation may raise kArchivo when the disk
// refuses a line; those before it stay.
class EscritorRecuperacion {
 public:
  static constexpr int kPaginasPorTanda = 256;

  // Creates the file, with its header on the disk. Anything of that name is kept and raises kArchivo; a file that takes
  // no header goes away again.
  EscritorRecuperacion(const std::filesystem::path& ruta, int primera_pista);

  // Hands over what it can.
  ~EscritorRecuperacion();
  EscritorRecuperacion(const EscritorRecuperacion&) = delete;
  EscritorRecuperacion& operator=(const EscritorRecuperacion&) = delete;

  void Pagina(const LugarPagina& lugar, std::string_view texto);
  void FinDePista();

  // The lines so far outlive a crash of the program from here on.
  void Entregar();

  // No more writing, and all of it on the disk; with `definitiva` the file gets that name, in place of a former file.
  void Terminar();
  void Terminar(const std::filesystem::path& definitiva);

  const std::filesystem::path& Ruta() const noexcept { return archivo_.Ruta(); }

  // A page text that can stand in a line: not empty, and without what parts lines, texts and positions.
  static bool Admite(std::string_view texto);

 private:
  void Asegurar();

  ArchivoCreciente archivo_;
  std::string lineas_;    // not handed over yet
  int sin_asegurar_ = 0;  // pages
};

}  // namespace utr
