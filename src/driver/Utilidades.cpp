#include "driver/Utilidades.h"

#include <algorithm>
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

std::string ExtraerDirectorio(std::string_view ruta) {
  const std::size_t separador = ruta.find_last_of("/\\");
  return separador == std::string_view::npos ? std::string{} : std::string(ruta.substr(0, separador));
}

bool GrabarTexto(std::string_view texto, const std::filesystem::path& ruta) {
  try {
    EscribirEntero(
        ruta, [&](std::ostream& salida) { salida.write(texto.data(), static_cast<std::streamsize>(texto.size())); });
    return true;
  } catch (const Error&) {
    return false;
  }
}

bool ExisteArchivo(const std::filesystem::path& ruta) {
  std::error_code falla;
  return std::filesystem::exists(ruta, falla);
}

double Minimo(std::initializer_list<double> valores) {
  if (valores.size() == 0) Lanzar(error::kLlamada, "Minimo");
  return std::min(valores);
}

double Maximo(std::initializer_list<double> valores) {
  if (valores.size() == 0) Lanzar(error::kLlamada, "Maximo");
  return std::max(valores);
}

void EscribirEntero(const std::filesystem::path& ruta, const std::function<void(std::ostream&)>& escribir) {
  ArchivoEnCurso archivo(ruta);
  std::ofstream salida(archivo.Temporal(), std::ios::binary | std::ios::trunc);
  if (!salida) LanzarEscritura(ruta);
  escribir(salida);
  salida.close();
  if (salida.fail() || !archivo.PonerEnSuLugar()) LanzarEscritura(ruta);
}

}  // namespace utr
