#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <list>

#include "base/Error.h"
#include "driver/link/transport/Descriptor.h"
#include "driver/simulated/server/Escucha.h"
#include "driver/simulated/station/Extremo.h"

namespace utr::simulada {

namespace {

using enlace::Descriptor;

constexpr std::size_t kMayorConexiones = 8;
constexpr std::int64_t kMayorOcio = 300000;         // milliseconds
constexpr std::size_t kMayorPendiente = 64 * 1024;  // bytes that a client may leave unread
constexpr int kMayorEspera = 16;                    // connections that wait to be taken

[[noreturn]] void NoEscucha(const Opciones::Red& red) {
  const int motivo = errno;
  const bool en_uso = motivo == EADDRINUSE;
  throw Error(en_uso ? error::kPuertoEnUso : error::kLlamada, "utr-estacion",
              "No se puede atender en " + red.direccion + ", puerto " + std::to_string(red.puerto) + ": " +
                  (en_uso ? "otro programa lo tiene" : std::strerror(motivo)),
              motivo);
}

class Conexion {
 public:
  Conexion(Descriptor descriptor, Servida servida, std::int64_t ahora)
      : descriptor_(std::move(descriptor)),
        extremo_(ClaseDeLinea::kTcp, servida.viva, servida.unidad),
        ultimo_(ahora) {}

  pollfd Vigilada() const {
    const int sucesos = (Atrasada() ? 0 : POLLIN) | (pendiente_.empty() ? 0 : POLLOUT);
    return {descriptor_.Numero(), static_cast<short>(sucesos), 0};
  }

  // False: it is over.
  bool Atender(std::int64_t ahora) {
    return Leer(ahora) && Escribir(ahora) && !extremo_.Colgado() && ahora - ultimo_ < kMayorOcio;
  }

  std::optional<std::int64_t> Proximo() const { return extremo_.Proximo(); }

 private:
  // Whoever doesn't take his answers isn't listened to either.
  bool Atrasada() const { return pendiente_.size() > kMayorPendiente; }
  bool Leer(std::int64_t ahora) {
    if (Atrasada()) return true;
    std::array<std::uint8_t, 4096> bytes;
    const ssize_t leidos = ::recv(descriptor_.Numero(), bytes.data(), bytes.size(), 0);
    if (leidos == 0) return false;
    if (leidos < 0) return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    ultimo_ = ahora;
    extremo_.Recibir({bytes.data(), static_cast<std::size_t>(leidos)}, ahora);
    return true;
  }

  bool Escribir(std::int64_t ahora) {
    const auto salen = extremo_.Entregar(ahora);
    pendiente_.insert(pendiente_.end(), salen.begin(), salen.end());
    if (pendiente_.empty()) return true;
    const ssize_t escritos = ::send(descriptor_.Numero(), pendiente_.data(), pendiente_.size(), MSG_NOSIGNAL);
    if (escritos < 0) return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    pendiente_.erase(pendiente_.begin(), pendiente_.begin() + escritos);
    return true;
  }

  Descriptor descriptor_;
  Extremo extremo_;
  protocolo::Bytes pendiente_;
  std::int64_t ultimo_;
};

class EscuchaRed final : public Escucha {
 public:
  EscuchaRed(Opciones::Red red, Servida servida) : red_(std::move(red)), servida_(servida) {
    descriptor_ = Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!descriptor_.Abierto()) NoEscucha(red_);
    const int si = 1;
    ::setsockopt(descriptor_.Numero(), SOL_SOCKET, SO_REUSEADDR, &si, sizeof si);
    sockaddr_in lugar{};
    lugar.sin_family = AF_INET;
    lugar.sin_port = htons(red_.puerto);
    // Without an address it would be all of the machine's.
    if (::inet_pton(AF_INET, red_.direccion.c_str(), &lugar.sin_addr) != 1) {
      errno = EADDRNOTAVAIL;
      NoEscucha(red_);
    }
    auto* comun = reinterpret_cast<sockaddr*>(&lugar);
    if (::bind(descriptor_.Numero(), comun, sizeof lugar) != 0) NoEscucha(red_);
    if (::listen(descriptor_.Numero(), kMayorEspera) != 0) NoEscucha(red_);
    socklen_t largo = sizeof lugar;
    if (::getsockname(descriptor_.Numero(), comun, &largo) == 0) red_.puerto = ntohs(lugar.sin_port);
  }

  std::string Nombre() const override {
    return "Modbus TCP en " + red_.direccion + ", puerto " + std::to_string(red_.puerto);
  }

  void Vigilar(std::vector<pollfd>& descriptores) const override {
    descriptores.push_back({descriptor_.Numero(), POLLIN, 0});
    for (const Conexion& conexion : conexiones_) descriptores.push_back(conexion.Vigilada());
  }

  void Atender(std::int64_t ahora) override {
    Tomar(ahora);
    conexiones_.remove_if([ahora](Conexion& conexion) { return !conexion.Atender(ahora); });
  }

  std::optional<std::int64_t> Proximo(std::int64_t /*ahora*/) const override {
    std::optional<std::int64_t> proximo;
    for (const Conexion& conexion : conexiones_) {
      const auto suyo = conexion.Proximo();
      if (suyo && (!proximo || *suyo < *proximo)) proximo = suyo;
    }
    return proximo;
  }

 private:
  // One beyond the limit is taken and closed, so that it learns of it at once.
  void Tomar(std::int64_t ahora) {
    for (;;) {
      Descriptor nueva(::accept4(descriptor_.Numero(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
      if (!nueva.Abierto()) return;
      if (conexiones_.size() >= kMayorConexiones) continue;
      const int si = 1;
      ::setsockopt(nueva.Numero(), IPPROTO_TCP, TCP_NODELAY, &si, sizeof si);
      conexiones_.emplace_back(std::move(nueva), servida_, ahora);
    }
  }

  Opciones::Red red_;
  Servida servida_;
  Descriptor descriptor_;
  std::list<Conexion> conexiones_;
};

}  // namespace

std::unique_ptr<Escucha> EscucharRed(const Opciones::Red& red, Servida servida) {
  return std::make_unique<EscuchaRed>(red, servida);
}

}  // namespace utr::simulada
