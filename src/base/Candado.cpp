#include "base/Candado.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace utr {

namespace {

// Locks of the open file: they go with it, and one can look at them without taking them.
struct flock TodoElArchivo() {
  struct flock pedido {};
  pedido.l_type = F_WRLCK;
  pedido.l_whence = SEEK_SET;
  return pedido;
}

}  // namespace

Candado::~Candado() {
  if (archivo_ >= 0) ::close(archivo_);
}

Candado::Toma Candado::Tomar(const std::filesystem::path& ruta) {
  if (archivo_ >= 0) return Toma::kTomado;
  const int archivo = ::open(ruta.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  error_ = archivo < 0 ? errno : 0;
  if (archivo < 0) return Toma::kSinArchivo;
  struct flock pedido = TodoElArchivo();
  if (::fcntl(archivo, F_OFD_SETLK, &pedido) == 0) {
    archivo_ = archivo;
    return Toma::kTomado;
  }
  error_ = errno;
  ::close(archivo);
  return Toma::kAjeno;
}

bool Candado::Libre(const std::filesystem::path& ruta) {
  const int archivo = ::open(ruta.c_str(), O_RDONLY | O_CLOEXEC);
  if (archivo < 0) return false;
  struct flock pedido = TodoElArchivo();
  const bool libre = ::fcntl(archivo, F_OFD_GETLK, &pedido) == 0 && pedido.l_type == F_UNLCK;
  ::close(archivo);
  return libre;
}

}  // namespace utr
