#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace utr::simulada {

// What happens around the station, as a pure function of the moment (seconds from 01/01/1970, local) and of the seed:
// two runs agree, and the past need not be kept. Rain falls in storms of several bursts, a large one every eleven days
// at the latest; each raises the river in a wave that comes some hours later and ebbs for days. Temperature, radiation,
// humidity, wind and pressure follow day, season and storms. Now and then a sensor fails for hours, and the unit stands
// still for some.
class Hidrologia {
 public:
  struct Opciones {
    std::uint64_t semilla = 7340;
    double crecidas = 1;          // height of flood waves and depth of storms, as a factor
    bool falla_de_sensor = true;  // the hygrometer fails for seven hours within every ten days
    bool hueco = true;            // nothing is recorded for five hours within every thirteen days
    std::map<int, double> fijos;  // channels whose value a trainer has nailed down

    bool operator==(const Opciones&) const = default;
  };

  explicit Hidrologia(Opciones opciones);

  // Value of the sensor that is wired to a channel (1 to 23) in engineering units, without the level reference. Of the
  // rain gauge: millimetres per hour.
  double Valor(int canal, std::int64_t momento) const;

  // How far above and below the value the interval that ends there has been.
  struct Extremos {
    double arriba = 0;
    double abajo = 0;
  };
  Extremos ExtremosDe(int canal, std::int64_t momento) const;

  // Millimetres of rain in the span from one moment (excluded) to another, at most two days long, in whole steps of
  // `paso`, so that spans laid end to end add up.
  int VuelcosEntre(std::int64_t desde, std::int64_t hasta, double paso) const;

  bool Falla(int canal, std::int64_t momento) const;
  bool Hueco(std::int64_t momento) const;

 private:
  struct Tormenta {
    std::int64_t inicio = 0;
    double duracion = 0;  // seconds
    double milimetros = 0;
    std::array<double, 4> tandas{};  // where its bursts end, as parts of the duration
  };

  std::optional<Tormenta> TormentaDelDia(std::int64_t dia) const;
  const std::vector<Tormenta>& TormentasHasta(std::int64_t dia) const;
  double Acumulado(const Tormenta& tormenta, std::int64_t momento) const;
  double Respuesta(std::int64_t momento, double demora, double constante) const;
  double Lluvia(std::int64_t momento) const;
  double Temperatura(std::int64_t momento) const;
  double Radiacion(std::int64_t momento) const;
  double Viento(std::int64_t momento) const;
  double Ruido(int canal, std::int64_t momento) const;
  std::uint64_t Azar(std::uint64_t a, std::uint64_t b) const;

  Opciones opciones_;
  mutable std::int64_t dia_a_mano_ = -1;
  mutable std::vector<Tormenta> a_mano_;
};

}  // namespace utr::simulada
