#include "driver/link/transport/Descriptor.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::enlace {

namespace {

bool Esperar(const Descriptor& descriptor, short que, int milisegundos) {
  pollfd espera{.fd = descriptor.Numero(), .events = que, .revents = 0};
  return ::poll(&espera, 1, milisegundos < 0 ? 0 : milisegundos) > 0;
}

[[noreturn]] void Perdida(const std::string& nombre, int error_del_sistema) {
  throw Error(error_enlace::kLineaPerdida, "Comunicador", "Se perdió " + nombre, error_del_sistema);
}

bool EsPasajero(int error_del_sistema) {
  return error_del_sistema == EAGAIN || error_del_sistema == EINTR;
}

// A socket whose other end is gone must not end the program with a signal.
ssize_t Escribir(int numero, std::span<const std::uint8_t> bytes) {
  const ssize_t enviados = ::send(numero, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  return enviados >= 0 || errno != ENOTSOCK ? enviados : ::write(numero, bytes.data(), bytes.size());
}

}  // namespace

void Descriptor::Cerrar() noexcept {
  if (numero_ >= 0) ::close(numero_);
  numero_ = -1;
}

bool EsperarLectura(const Descriptor& descriptor, int milisegundos) {
  return Esperar(descriptor, POLLIN, milisegundos);
}

bool EsperarEscritura(const Descriptor& descriptor, int milisegundos) {
  return Esperar(descriptor, POLLOUT, milisegundos);
}

std::size_t EnviarPor(const Descriptor& descriptor, const std::string& nombre, std::span<const std::uint8_t> bytes,
                      int milisegundos) {
  if (bytes.empty() || !EsperarEscritura(descriptor, milisegundos)) return 0;
  const ssize_t enviados = Escribir(descriptor.Numero(), bytes);
  if (enviados >= 0) return static_cast<std::size_t>(enviados);
  if (EsPasajero(errno)) return 0;
  Perdida(nombre, errno);
}

// A read of nothing, on a file that was said to be readable, is the end of the other side.
std::size_t RecibirPor(const Descriptor& descriptor, const std::string& nombre, std::vector<std::uint8_t>& destino,
                       int milisegundos) {
  if (!EsperarLectura(descriptor, milisegundos)) return 0;
  std::array<std::uint8_t, 4096> bufer;
  const ssize_t leidos = ::read(descriptor.Numero(), bufer.data(), bufer.size());
  if (leidos < 0 && EsPasajero(errno)) return 0;
  if (leidos <= 0) Perdida(nombre, leidos < 0 ? errno : EPIPE);
  destino.insert(destino.end(), bufer.begin(), bufer.begin() + leidos);
  return static_cast<std::size_t>(leidos);
}

}  // namespace utr::enlace
