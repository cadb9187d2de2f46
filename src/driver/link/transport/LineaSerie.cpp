#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <cerrno>
#include <iterator>
#include <utility>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/transport/Descriptor.h"
#include "driver/link/transport/Linea.h"

namespace utr::enlace {

namespace {

constexpr const char* kOrigen = "Comunicador";

constexpr std::pair<std::int32_t, speed_t> kVelocidades[] = {
    {300, B300},   {600, B600},     {1200, B1200},   {2400, B2400},   {4800, B4800},
    {9600, B9600}, {19200, B19200}, {38400, B38400}, {57600, B57600}, {115200, B115200}};

speed_t CodigoDe(std::int32_t velocidad) {
  for (const auto& [bps, codigo] : kVelocidades) {
    if (bps == velocidad) return codigo;
  }
  throw Error(error::kLlamada, kOrigen, "Un puerto serie no tiene la velocidad " + std::to_string(velocidad));
}

[[noreturn]] void NoSeAbre(const std::string& dispositivo, int error_del_sistema) {
  const bool en_uso = error_del_sistema == EBUSY || error_del_sistema == EWOULDBLOCK;
  if (en_uso) {
    throw Error(error::kPuertoEnUso, kOrigen, "Otro programa tiene el puerto " + dispositivo, error_del_sistema);
  }
  const std::string motivo = error_del_sistema == EACCES
                                 ? "No hay permiso para abrir el puerto " + dispositivo + " (grupo dialout)"
                                 : "No se abre el puerto " + dispositivo;
  throw Error(error_enlace::kPuertoInexistente, kOrigen, motivo, error_del_sistema);
}

// Bytes as they are, with nothing added, dropped or waited for, and no notice taken of the carrier: a modem is talked
// to before there is one. DTR falls when the port is closed, so that no call outlives it.
void Configurar(const Descriptor& descriptor, const std::string& dispositivo, speed_t codigo) {
  termios ajustes{};
  if (::tcgetattr(descriptor.Numero(), &ajustes) != 0) NoSeAbre(dispositivo, errno);
  ::cfmakeraw(&ajustes);
  ajustes.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS);
  ajustes.c_cflag |= CLOCAL | CREAD | HUPCL;
  ajustes.c_cc[VMIN] = 1;  // so that a read of nothing means that the line is gone
  ajustes.c_cc[VTIME] = 0;
  if (::cfsetspeed(&ajustes, codigo) != 0 || ::tcsetattr(descriptor.Numero(), TCSANOW, &ajustes) != 0) {
    NoSeAbre(dispositivo, errno);
  }
  ::tcflush(descriptor.Numero(), TCIOFLUSH);
}

class LineaSerie final : public Linea {
 public:
  // Two locks, because programs differ in which one they ask: the lock of the file, and the terminal's own.
  LineaSerie(const std::string& dispositivo, std::int32_t velocidad) : nombre_("el puerto " + dispositivo) {
    const speed_t codigo = CodigoDe(velocidad);
    descriptor_ = Descriptor(::open(dispositivo.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!descriptor_.Abierto()) NoSeAbre(dispositivo, errno);
    if (::flock(descriptor_.Numero(), LOCK_EX | LOCK_NB) != 0) NoSeAbre(dispositivo, errno);
    if (::ioctl(descriptor_.Numero(), TIOCEXCL) != 0) NoSeAbre(dispositivo, errno);
    Configurar(descriptor_, dispositivo, codigo);
  }

  // What still waits to go out would keep the close waiting for it.
  ~LineaSerie() override {
    ::tcflush(descriptor_.Numero(), TCIOFLUSH);
    ::ioctl(descriptor_.Numero(), TIOCNXCL);
  }
  LineaSerie(const LineaSerie&) = delete;
  LineaSerie& operator=(const LineaSerie&) = delete;

  bool Lista(int) override { return true; }
  std::size_t Enviar(std::span<const std::uint8_t> bytes, int milisegundos) override {
    return EnviarPor(descriptor_, nombre_, bytes, milisegundos);
  }
  std::size_t Recibir(std::vector<std::uint8_t>& destino, int milisegundos) override {
    return RecibirPor(descriptor_, nombre_, destino, milisegundos);
  }
  bool Rts(bool activo) override { return Senial(TIOCM_RTS, activo); }
  bool Dtr(bool activo) override { return Senial(TIOCM_DTR, activo); }

 private:
  bool Senial(int senial, bool activa) {
    return ::ioctl(descriptor_.Numero(), activa ? TIOCMBIS : TIOCMBIC, &senial) == 0;
  }

  std::string nombre_;
  Descriptor descriptor_;
};

}  // namespace

std::unique_ptr<Linea> TendidoDelEquipo::AbrirSerie(const std::string& dispositivo, std::int32_t velocidad) {
  return std::make_unique<LineaSerie>(dispositivo, velocidad);
}

}  // namespace utr::enlace
