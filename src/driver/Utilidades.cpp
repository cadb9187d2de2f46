#include "driver/Utilidades.h"

#include <algorithm>
#include <ostream>
#include <system_error>

#include "base/Error.h"

namespace utr {

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

}  // namespace utr
