#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include "base/Error.h"
#include "driver/link/transport/Descriptor.h"
#include "driver/simulated/server/Escucha.h"
#include "driver/simulated/station/Modem.h"

namespace utr::simulada {

namespace {

using enlace::Descriptor;

constexpr std::int64_t kEntreMiradas = 20;  // milliseconds between two looks whether somebody has opened the line
// A line that was closed for so long is laid anew: locks of a program that died stay with the old one.
constexpr std::int64_t kMayorCierre = 1000;
constexpr int kOtraVelocidad = -1;

constexpr struct {
  speed_t codigo;
  int bits_por_segundo;
} kVelocidades[] = {{B300, 300},   {B600, 600},   {B1200, 1200},   {B2400, 2400},
                    {B4800, 4800}, {B9600, 9600}, {B19200, 19200}, {B38400, 38400}};

[[noreturn]] void NoSeTiende(const std::string& nombre, const std::string& motivo) {
  throw Error(error::kArchivo, "utr-estacion", "No se puede tender la línea " + nombre + ": " + motivo, errno);
}

// A pseudo-terminal: what its other end reads and writes goes as it is.
struct Terminal {
  Descriptor propio;
  std::string otro;  // the device that clients open
};

Terminal AbrirTerminal(const std::string& nombre) {
  Terminal terminal{Descriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)), {}};
  const int numero = terminal.propio.Numero();
  std::array<char, 128> otro{};
  if (numero < 0 || ::grantpt(numero) != 0 || ::unlockpt(numero) != 0 ||
      ::ptsname_r(numero, otro.data(), otro.size()) != 0 || ::fcntl(numero, F_SETFL, O_NONBLOCK) != 0) {
    NoSeTiende(nombre, "el sistema no da otra terminal");
  }
  termios ajustes{};
  if (::tcgetattr(numero, &ajustes) != 0) NoSeTiende(nombre, "no es una terminal");
  ::cfmakeraw(&ajustes);
  ::cfsetspeed(&ajustes, B9600);
  ::tcsetattr(numero, TCSANOW, &ajustes);
  terminal.otro = otro.data();
  return terminal;
}

// The end behind the line: the unit itself or a modem.
class Detras {
 public:
  virtual ~Detras() = default;
  virtual void Velocidad(int bits_por_segundo) = 0;
  virtual void Recibir(protocolo::VistaBytes bytes, std::int64_t ahora) = 0;
  virtual protocolo::Bytes Entregar(std::int64_t ahora) = 0;
  virtual std::optional<std::int64_t> Proximo() const = 0;
  virtual void Cerrada() = 0;        // the client has let the line go, and DTR with it
  virtual bool Colgada() const = 0;  // the line must be taken away
};

class UnidadDetras final : public Detras {
 public:
  explicit UnidadDetras(Servida s) : extremo_(ClaseDeLinea::kSerie, s.viva, s.unidad) {}
  void Velocidad(int bps) override { extremo_.Velocidad(bps); }
  void Recibir(protocolo::VistaBytes bytes, std::int64_t ahora) override { extremo_.Recibir(bytes, ahora); }
  protocolo::Bytes Entregar(std::int64_t ahora) override { return extremo_.Entregar(ahora); }
  std::optional<std::int64_t> Proximo() const override { return extremo_.Proximo(); }
  void Cerrada() override { extremo_.Reabrir(); }
  bool Colgada() const override { return extremo_.Colgado(); }

 private:
  Extremo extremo_;
};

class ModemDetras final : public Detras {
 public:
  explicit ModemDetras(Servida s) : modem_(s.viva, s.unidad) {}
  void Velocidad(int bps) override { modem_.Velocidad(bps > 0 ? bps : 0); }
  void Recibir(protocolo::VistaBytes bytes, std::int64_t ahora) override { modem_.Recibir(bytes, ahora); }
  protocolo::Bytes Entregar(std::int64_t ahora) override { return modem_.Entregar(ahora); }
  std::optional<std::int64_t> Proximo() const override { return modem_.Proximo(); }
  void Cerrada() override { modem_.Soltar(); }
  bool Colgada() const override { return false; }

 private:
  Modem modem_;
};

class LineaTendida final : public Escucha {
 public:
  LineaTendida(const std::filesystem::path& carpeta, std::string nombre, std::unique_ptr<Detras> detras)
      : enlace_(carpeta / nombre), nombre_(std::move(nombre)), detras_(std::move(detras)) {
    Tender();
  }
  ~LineaTendida() override { QuitarEnlace(); }
  LineaTendida(const LineaTendida&) = delete;
  LineaTendida& operator=(const LineaTendida&) = delete;

  std::string Nombre() const override { return "Línea serie " + enlace_.string(); }

  // The system reports a closed line again and again: one is looked at by time instead.
  void Vigilar(std::vector<pollfd>& descriptores) const override {
    if (!cerrada_) descriptores.push_back({terminal_.propio.Numero(), POLLIN, 0});
  }

  void Atender(std::int64_t ahora) override {
    Mirar(ahora);
    Leer(ahora);
    const auto salen = detras_->Entregar(ahora);
    // What a client doesn't take in time is lost, as on any serial line.
    const auto escritos = salen.empty() ? 0 : ::write(terminal_.propio.Numero(), salen.data(), salen.size());
    (void)escritos;
    if (detras_->Colgada()) {
      detras_->Cerrada();
      Tender();
    }
  }

  std::optional<std::int64_t> Proximo(std::int64_t ahora) const override {
    auto proximo = detras_->Proximo();
    if (cerrada_ && (!proximo || *proximo > ahora + kEntreMiradas)) proximo = ahora + kEntreMiradas;
    return proximo;
  }

 private:
  // Whoever sees the former line end finds the new one under its name already.
  void Tender() {
    Terminal nueva = AbrirTerminal(nombre_);
    QuitarEnlace();
    std::error_code falla;
    std::filesystem::create_symlink(nueva.otro, enlace_, falla);
    if (falla) NoSeTiende(nombre_, "en la carpeta hay otra cosa con ese nombre");
    terminal_ = std::move(nueva);
    cerrada_ = false;
  }

  // A link of that name is a line of a station that ended badly; anything else isn't ours.
  void QuitarEnlace() const {
    std::error_code falla;
    if (std::filesystem::is_symlink(enlace_, falla)) std::filesystem::remove(enlace_, falla);
  }

  void Mirar(std::int64_t ahora) {
    pollfd mirada{terminal_.propio.Numero(), POLLIN, 0};
    const bool cerrada = ::poll(&mirada, 1, 0) > 0 && (mirada.revents & POLLHUP) != 0;
    if (cerrada && !cerrada_) {
      detras_->Cerrada();
      cerrada_desde_ = ahora;
      usada_ = true;
    }
    cerrada_ = cerrada;
    if (cerrada_ && usada_ && ahora - cerrada_desde_ >= kMayorCierre) {
      usada_ = false;
      Tender();
    }
  }

  void Leer(std::int64_t ahora) {
    std::array<std::uint8_t, 4096> bytes;
    const ssize_t leidos = ::read(terminal_.propio.Numero(), bytes.data(), bytes.size());
    if (leidos <= 0) return;
    detras_->Velocidad(VelocidadDelOtro());
    detras_->Recibir({bytes.data(), static_cast<std::size_t>(leidos)}, ahora);
  }

  int VelocidadDelOtro() const {
    termios ajustes{};
    if (::tcgetattr(terminal_.propio.Numero(), &ajustes) != 0) return kOtraVelocidad;
    for (const auto& velocidad : kVelocidades) {
      if (velocidad.codigo == ::cfgetospeed(&ajustes)) return velocidad.bits_por_segundo;
    }
    return kOtraVelocidad;
  }

  std::filesystem::path enlace_;
  std::string nombre_;
  std::unique_ptr<Detras> detras_;
  Terminal terminal_;
  bool cerrada_ = false;  // nobody has it open, after somebody had
  bool usada_ = false;
  std::int64_t cerrada_desde_ = 0;
};

}  // namespace

std::unique_ptr<Escucha> TenderLinea(const std::filesystem::path& carpeta, const std::string& nombre, bool modem,
                                     Servida servida) {
  std::unique_ptr<Detras> detras;
  if (modem) {
    detras = std::make_unique<ModemDetras>(servida);
  } else {
    detras = std::make_unique<UnidadDetras>(servida);
  }
  return std::make_unique<LineaTendida>(carpeta, nombre, std::move(detras));
}

}  // namespace utr::simulada
