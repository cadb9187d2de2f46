#include "base/CarpetaPrograma.h"

#include <cstdlib>
#include <system_error>

namespace utr {

namespace fs = std::filesystem;

namespace {

bool Hay(const fs::path& ruta) {
  std::error_code falla;
  return fs::exists(ruta, falla);
}

bool EstaInstalado(const fs::path& ejecutable) {
  return !ejecutable.empty() && Hay(ejecutable / "instalado");
}

// As long as it is a whole path: another one would depend on where the program was started.
fs::path DelEntorno(const char* variable) {
  fs::path ruta = RutaDelEntorno(variable);
  return ruta.is_absolute() ? ruta : fs::path{};
}

fs::path DatosDelUsuario() {
  fs::path datos = DelEntorno("XDG_DATA_HOME");
  if (!datos.empty()) return datos;
  const fs::path casa = DelEntorno("HOME");
  return casa.empty() ? casa : casa / ".local" / "share";
}

bool TieneDe(const fs::path& carpeta, std::string_view extension) {
  std::error_code falla;
  for (fs::directory_iterator i(carpeta, falla), fin; !falla && i != fin; i.increment(falla)) {
    if (i->path().extension() == extension) return true;
  }
  return false;
}

}  // namespace

fs::path RutaDelEntorno(const char* variable) {
  const char* valor = std::getenv(variable);
  return valor == nullptr ? "" : valor;
}

const fs::path& CarpetaDelEjecutable() {
  static const fs::path propia = [] {
    std::error_code falla;
    return fs::read_symlink("/proc/self/exe", falla).parent_path();
  }();
  return propia;
}

fs::path CarpetaDeDatos(const fs::path& ejecutable) {
  if (!EstaInstalado(ejecutable)) return ejecutable;
  const fs::path datos = DatosDelUsuario();
  if (datos.empty()) return ejecutable;
  std::error_code no_se_puede;
  fs::create_directories(datos / "AdminUTR", no_se_puede);
  return datos / "AdminUTR";
}

bool EsDeDatosOcultos(const fs::path& carpeta, const fs::path& ejecutable) {
  const fs::path datos = EstaInstalado(ejecutable) ? DatosDelUsuario() : fs::path{};
  if (datos.empty()) return false;
  const fs::path propia = (datos / "AdminUTR").lexically_normal();
  const fs::path relativa = carpeta.lexically_normal().lexically_relative(propia);
  return !relativa.empty() && *relativa.begin() != "..";
}

fs::path ArchivoDelPrograma(const fs::path& carpeta, std::string_view nombre, const fs::path& ejecutable) {
  fs::path propio = carpeta / nombre;
  if (Hay(propio) || !EstaInstalado(ejecutable)) return propio;
  fs::path entregado = ejecutable / nombre;
  return Hay(entregado) ? entregado : propio;
}

fs::path CarpetaCon(const fs::path& carpeta, std::string_view extension, const fs::path& ejecutable) {
  const bool la_entregada = !TieneDe(carpeta, extension) && EstaInstalado(ejecutable) && TieneDe(ejecutable, extension);
  return la_entregada ? ejecutable : carpeta;
}

}  // namespace utr
