#include "services/ArchivosPrograma.h"

#include <cerrno>
#include <fstream>
#include <iterator>

#include "base/CarpetaPrograma.h"
#include "base/Error.h"
#include "driver/Utilidades.h"

namespace utr {

namespace {

std::string LeerEntero(const std::filesystem::path& ruta) {
  if (!ExisteArchivo(ruta)) return {};
  errno = 0;
  std::ifstream entrada(ruta, std::ios::binary);
  std::string contenido{std::istreambuf_iterator<char>(entrada), {}};
  if (!entrada.is_open() || entrada.bad() || std::filesystem::is_directory(ruta))
    throw Error(error::kArchivo, "LeerArchivoBinario", "No se puede leer el archivo " + ruta.string(), errno);
  return contenido;
}

std::string LeerRegistrando(RegistroErrores& registro, const std::filesystem::path& ruta,
                            std::string_view procedimiento) {
  std::string contenido;
  RegistrandoYRelanzando(registro, "modRTU", procedimiento, [&] { contenido = LeerEntero(ruta); });
  return contenido;
}

}  // namespace

std::string LeerArchivoPrograma(RegistroErrores& registro, const std::filesystem::path& carpeta,
                                std::string_view nombre) {
  // The log names it so, whatever the file is.
  return LeerRegistrando(registro, ArchivoDelPrograma(carpeta, nombre), "leyendo archivo de bkp");
}

std::string LeerArchivoBinario(RegistroErrores& registro, const std::filesystem::path& ruta) {
  return LeerRegistrando(registro, ruta, "LeerArchivoBinario");
}

}  // namespace utr
