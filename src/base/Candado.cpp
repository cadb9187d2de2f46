#include "base/Candado.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace utr {

Candado::~Candado() {
  if (archivo_ >= 0) ::close(archivo_);
}

Candado::Toma Candado::Tomar(const std::filesystem::path& ruta) {
  if (archivo_ >= 0) return Toma::kTomado;
  const int archivo = ::open(ruta.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  error_ = archivo < 0 ? errno : 0;
  if (archivo < 0) return Toma::kSinArchivo;
  if (::flock(archivo, LOCK_EX | LOCK_NB) == 0) {
    archivo_ = archivo;
    return Toma::kTomado;
  }
  error_ = errno;
  ::close(archivo);
  return Toma::kAjeno;
}

}  // namespace utr
