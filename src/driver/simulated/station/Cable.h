#pragma once

#include <cmath>
#include <cstdint>
#include <deque>
#include <optional>
#include <random>
#include <vector>

#include "driver/link/protocol/Tramas.h"
#include "driver/simulated/scenario/Escenario.h"

namespace utr::simulada {

// Bytes under way to a client, each due when its turn on the line has come. Moments are milliseconds of the clock.
class Salida {
 public:
  // Bytes from `desde` on, behind those that are under way, at so many bits per second; 0: all at once. What comes
  // while 64 KiB are under way is dropped: somebody asks faster than the line can answer.
  void Poner(protocolo::VistaBytes bytes, std::int64_t desde, double bits_por_segundo);

  // What is due by now and wasn't taken yet.
  protocolo::Bytes Tomar(std::int64_t ahora);

  // When the next byte is due; nothing when none is under way.
  std::optional<std::int64_t> Proximo() const;

  void Vaciar() {
    envios_.clear();
    en_camino_ = 0;
  }

 private:
  struct Envio {
    protocolo::Bytes bytes;
    std::int64_t desde = 0;
    double por_byte = 0;  // milliseconds
    std::size_t tomados = 0;

    std::int64_t Turno(std::size_t byte) const {
      return desde + static_cast<std::int64_t>(std::ceil(por_byte * static_cast<double>(byte + 1)));
    }
  };
  std::deque<Envio> envios_;
  std::size_t en_camino_ = 0;  // bytes
};

// Throws the faults of a wire from its seed on: the same seed and the same frames meet the same faults. Each line has
// a number of its own, or a connection that lost its first frame would lose it however often it is opened anew.
class Azar {
 public:
  explicit Azar(const FallasDelCable& fallas, std::uint64_t linea = 0)
      : fallas_(fallas), generador_(fallas.semilla + linea * kEntreLineas) {}

  // A request as it arrives; nothing when it is lost.
  std::optional<protocolo::Bytes> Pedido(protocolo::Bytes trama, bool con_ruido);

  // What becomes of an answer: the pieces that travel, each with the milliseconds by which it is late.
  struct Tramo {
    protocolo::Bytes bytes;
    int demora = 0;
  };
  std::vector<Tramo> Respuesta(protocolo::Bytes trama, bool con_ruido);

  const FallasDelCable& Fallas() const { return fallas_; }

 private:
  bool Toca(double azar);
  std::size_t Hasta(std::size_t mayor);  // 0 to `mayor`
  void Ensuciar(protocolo::Bytes& trama);

  static constexpr std::uint64_t kEntreLineas = 1000000007;  // above any seed that is told

  FallasDelCable fallas_;
  std::mt19937_64 generador_;
};

}  // namespace utr::simulada
