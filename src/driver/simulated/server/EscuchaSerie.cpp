#include <utility>

#include "base/Error.h"
#include "driver/link/transport/Linea.h"
#include "driver/simulated/server/Escucha.h"
#include "driver/simulated/station/Extremo.h"

namespace utr::simulada {

namespace {

constexpr std::int64_t kEntreMiradas = 5;       // milliseconds between two looks at the device
constexpr std::int64_t kEntreAperturas = 2000;  // and between two tries to open it

class EscuchaSerie final : public Escucha {
 public:
  EscuchaSerie(std::string dispositivo, Servida servida)
      : dispositivo_(std::move(dispositivo)),
        servida_(servida),
        extremo_(ClaseDeLinea::kSerie, servida.viva, servida.unidad) {
    extremo_.SinRitmo();
    Abrir();
  }

  std::string Nombre() const override { return "Puerto serie " + dispositivo_; }
  void Vigilar(std::vector<pollfd>& /*descriptores*/) const override {}

  void Atender(std::int64_t ahora) override {
    try {
      if (linea_ != nullptr && velocidad_ != servida_.unidad.Velocidad()) linea_.reset();
      if (linea_ == nullptr && ahora >= proxima_apertura_) Abrir();
      if (linea_ != nullptr) Pasar(ahora);
    } catch (const Error& falla) {
      Caer(falla);
      proxima_apertura_ = ahora + kEntreAperturas;
    }
  }

  std::optional<std::int64_t> Proximo(std::int64_t ahora) const override { return ahora + kEntreMiradas; }

 private:
  void Abrir() {
    velocidad_ = servida_.unidad.Velocidad();
    linea_ = tendido_.AbrirSerie(dispositivo_, velocidad_);
    extremo_.Reabrir();
    pendiente_.clear();
    if (std::exchange(caida_, false)) servida_.voces.advertir(Nombre() + ": anda otra vez");
  }

  // Told once, however often it is tried again.
  void Caer(const Error& falla) {
    linea_.reset();
    if (!std::exchange(caida_, true)) {
      servida_.voces.advertir(Nombre() + ": " + falla.Descripcion() + ". Se lo sigue intentando");
    }
  }

  void Pasar(std::int64_t ahora) {
    protocolo::Bytes bytes;
    linea_->Recibir(bytes, 0);
    if (!bytes.empty()) extremo_.Recibir(bytes, ahora);
    if (extremo_.Colgado()) extremo_.Reabrir();
    const auto salen = extremo_.Entregar(ahora);
    pendiente_.insert(pendiente_.end(), salen.begin(), salen.end());
    if (pendiente_.empty()) return;
    const auto enviados = static_cast<std::ptrdiff_t>(linea_->Enviar(pendiente_, 0));
    pendiente_.erase(pendiente_.begin(), pendiente_.begin() + enviados);
  }

  std::string dispositivo_;
  Servida servida_;
  enlace::TendidoDelEquipo tendido_;
  std::unique_ptr<enlace::Linea> linea_;
  Extremo extremo_;
  protocolo::Bytes pendiente_;
  int velocidad_ = 0;
  bool caida_ = false;
  std::int64_t proxima_apertura_ = 0;
};

}  // namespace

std::unique_ptr<Escucha> EscucharSerie(const std::string& dispositivo, Servida servida) {
  return std::make_unique<EscuchaSerie>(dispositivo, servida);
}

}  // namespace utr::simulada
