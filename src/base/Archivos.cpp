#include "base/Archivos.h"

#include <fstream>
#include <system_error>

#include "base/Error.h"

namespace utr {

namespace {

std::filesystem::path RutaTemporal(const std::filesystem::path& ruta) {
  std::filesystem::path temporal = ruta;
  temporal += ".tmp~";
  return temporal;
}

// The temporary file of a write in progress; it goes away unless it was put in its place.
class ArchivoEnCurso {
 public:
  explicit ArchivoEnCurso(const std::filesystem::path& destino) : destino_(destino), temporal_(RutaTemporal(destino)) {}
  ~ArchivoEnCurso() {
    std::error_code nada;
    if (!puesto_) std::filesystem::remove(temporal_, nada);
  }
  ArchivoEnCurso(const ArchivoEnCurso&) = delete;
  ArchivoEnCurso& operator=(const ArchivoEnCurso&) = delete;

  const std::filesystem::path& Temporal() const { return temporal_; }

  bool PonerEnSuLugar() {
    std::error_code falla;
    std::filesystem::rename(temporal_, destino_, falla);
    puesto_ = !falla;
    return puesto_;
  }

 private:
  std::filesystem::path destino_;
  std::filesystem::path temporal_;
  bool puesto_ = false;
};

[[noreturn]] void LanzarEscritura(const std::filesystem::path& ruta) {
  throw Error(error::kArchivo, "EscribirEntero", "No se puede escribir el archivo " + ruta.string());
}

}  // namespace

void EscribirEntero(const std::filesystem::path& ruta, const std::function<void(std::ostream&)>& escribir) {
  ArchivoEnCurso archivo(ruta);
  std::ofstream salida(archivo.Temporal(), std::ios::binary | std::ios::trunc);
  if (!salida) LanzarEscritura(ruta);
  escribir(salida);
  salida.close();
  if (salida.fail() || !archivo.PonerEnSuLugar()) LanzarEscritura(ruta);
}

}  // namespace utr
