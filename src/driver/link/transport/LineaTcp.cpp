#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <string>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/transport/Descriptor.h"
#include "driver/link/transport/Linea.h"

namespace utr::enlace {

namespace {

class LineaTcp final : public Linea {
 public:
  LineaTcp(const std::string& direccion, int puerto)
      : nombre_(direccion + ", puerto " + std::to_string(puerto)),
        descriptor_(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    if (!descriptor_.Abierto()) Muda(errno);
    sockaddr_in destino{};
    destino.sin_family = AF_INET;
    destino.sin_port = htons(static_cast<std::uint16_t>(puerto));
    if (::inet_pton(AF_INET, direccion.c_str(), &destino.sin_addr) != 1) Muda(EINVAL);
    // A request goes out at once instead of waiting for the next one.
    const int si = 1;
    ::setsockopt(descriptor_.Numero(), IPPROTO_TCP, TCP_NODELAY, &si, sizeof si);
    const int estado = ::connect(descriptor_.Numero(), reinterpret_cast<const sockaddr*>(&destino), sizeof destino);
    lista_ = estado == 0;
    if (!lista_ && errno != EINPROGRESS) Muda(errno);
  }

  bool Lista(int milisegundos) override {
    if (lista_ || !EsperarEscritura(descriptor_, milisegundos)) return lista_;
    int fallo = 0;
    socklen_t largo = sizeof fallo;
    ::getsockopt(descriptor_.Numero(), SOL_SOCKET, SO_ERROR, &fallo, &largo);
    if (fallo != 0) Muda(fallo);
    lista_ = true;
    return true;
  }

  std::size_t Enviar(std::span<const std::uint8_t> bytes, int milisegundos) override {
    return EnviarPor(descriptor_, "la conexión con " + nombre_, bytes, milisegundos);
  }
  std::size_t Recibir(std::vector<std::uint8_t>& destino, int milisegundos) override {
    return RecibirPor(descriptor_, "la conexión con " + nombre_, destino, milisegundos);
  }
  bool Rts(bool) override { return false; }
  bool Dtr(bool) override { return false; }

 private:
  [[noreturn]] void Muda(int error_del_sistema) const {
    throw Error(error_enlace::kDireccionMuda, "Comunicador", "La dirección " + nombre_ + ", no responde",
                error_del_sistema);
  }

  std::string nombre_;
  Descriptor descriptor_;
  bool lista_ = false;
};

}  // namespace

std::unique_ptr<Linea> TendidoDelEquipo::AbrirTcp(const std::string& direccion, int puerto) {
  return std::make_unique<LineaTcp>(direccion, puerto);
}

}  // namespace utr::enlace
