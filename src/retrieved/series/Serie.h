#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tables/Tabla.h"

// The records of one channel as a series in time: what a hydrograph draws, what is said under a list, what goes into
// other files. Everything that tells figures of records takes them from here.
namespace utr {

// A stretch of time in which nothing is known, from the last value before it to the first one behind it. Where there is
// no value on that side, from the first record without value or to the last one.
struct HuecoSerie {
  std::int64_t desde = 0;
  std::int64_t hasta = 0;
  auto operator<=>(const HuecoSerie&) const = default;
};

// Points [desde, hasta) with values that may be joined by a line: no gap and no clock that went back between them.
struct TramoSerie {
  std::size_t desde = 0;
  std::size_t hasta = 0;
  auto operator<=>(const TramoSerie&) const = default;
};

// What there is to say of a series in numbers. All values count, validated or not, as the list shows them.
struct CifrasSerie {
  std::size_t registros = 0;     // records of the channel, those without a date among them
  std::size_t sin_fecha = 0;     // of these, those whose date can't be read: in no point and in no figure below
  std::size_t sin_valor = 0;     // "N/D", or any other text that is no number
  std::size_t no_validados = 0;  // with a value that the unit didn't validate
  std::size_t faltan = 0;        // records that should stand between those that are there, as far as the interval tells
  std::size_t huecos = 0;
  std::size_t retrocesos = 0;           // how often the clock went back
  std::optional<std::int64_t> primero;  // the earliest and the latest record, with or without value
  std::optional<std::int64_t> ultimo;
  // Of the values and, where the table has them, of the extremes of their intervals; nothing without a value.
  std::optional<double> minimo;
  std::optional<double> maximo;
  // Of the values. Of directions in degrees that of their vectors, from 0 up to 360, nothing where they cancel out;
  // nothing of directions in counts.
  std::optional<double> media;
  std::optional<double> lluvia;  // total of a rain gauge, in the unit of the values; nothing for other channels
};

struct OpcionesSerie {
  // The text of Canal whose rows are taken, blanks around it and case apart; empty: that of the first row.
  std::string canal;
  // Minutes between two records. More than 1.5 times as much is a gap. Nothing: the commonest interval between records.
  std::optional<double> minutos;
  // Nothing: records come when they come (a queue of transmissions), and no time between two of them is a gap.
  bool a_intervalos = true;
};

// A series doesn't need its table once it is made.
//
// A *point* is a record with a date, counted from 0 in the order of the table's rows, whatever the filter and sort of
// the table: where the clock of the unit went back, times do too. A *fila* is the identity of a row of the table.
class Serie {
 public:
  // No points.
  Serie() = default;

  // The records of a table with the fields Fecha, Hora (may be missing), Canal, Valor, and as far as it has them
  // Maximo, Minimo, Validacion, Descripcion and Unidad: what the views list, a saved table, a file for manual
  // insertion. Raises kCampo for a table without Fecha, Canal or Valor.
  explicit Serie(const Tabla& tabla, const OpcionesSerie& opciones = {});

  // As the table has them; empty without a row of the channel.
  const std::string& Canal() const noexcept { return canal_; }
  const std::string& Descripcion() const noexcept { return descripcion_; }
  const std::string& Unidad() const noexcept { return unidad_; }
  bool EsLluvia() const noexcept { return es_lluvia_; }  // a value is what fell since the record before
  // A value is where the wind comes from: behind 359 degrees comes 0, and neither is less than the other.
  bool EsDireccion() const noexcept { return es_direccion_; }
  // The shorter way from one value to the other leads through north, which no line in a plot does. Only directions in
  // degrees tell.
  bool PasaPorElNorte(double uno, double otro) const noexcept;

  std::size_t Cantidad() const noexcept { return tiempos_.size(); }
  std::span<const std::int64_t> Tiempos() const noexcept { return tiempos_; }  // seconds from 01/01/1970, without zone
  std::span<const double> Valores() const noexcept { return valores_; }        // not a number where there is none
  // The extremes of the interval that ends with each point, likewise; empty where the table has no such field.
  std::span<const double> Minimos() const noexcept { return minimos_; }
  std::span<const double> Maximos() const noexcept { return maximos_; }
  bool TieneValor(std::size_t punto) const noexcept { return valores_[punto] == valores_[punto]; }
  // 0 for a point that the unit didn't validate; empty where the table has no such field.
  std::span<const std::uint8_t> Validados() const noexcept { return validados_; }
  bool Validado(std::size_t punto) const noexcept { return validados_.empty() || validados_[punto] != 0; }

  // The row of a point, and the point of a row: nothing for a row of another channel or without a date.
  std::size_t Fila(std::size_t punto) const noexcept { return filas_.empty() ? punto : filas_[punto]; }
  std::optional<std::size_t> Punto(std::size_t fila) const noexcept;

  // Stretches without gap, in the order of the points. Each point with a value is in one of them.
  const std::vector<TramoSerie>& Tramos() const noexcept { return tramos_; }
  const std::vector<HuecoSerie>& Huecos() const noexcept { return huecos_; }
  // The points ahead of which the clock went back.
  const std::vector<std::size_t>& Retrocesos() const noexcept { return retrocesos_; }
  const CifrasSerie& Cifras() const noexcept { return cifras_; }
  // Minutes between records, as told or as found; nothing while no two records tell.
  std::optional<double> Minutos() const noexcept { return minutos_; }

  // The point with a value that lies nearest in time, at most `alcance` seconds away; nothing without one.
  std::optional<std::size_t> MasCercano(double momento, double alcance) const;

 private:
  void Leer(const Tabla& tabla, const std::string& canal);
  void LeerPalabras(const Tabla& tabla, std::size_t fila);
  void Partir();
  void Contar();

  std::string canal_;
  std::string descripcion_;
  std::string unidad_;
  bool es_lluvia_ = false;
  bool es_direccion_ = false;
  std::vector<std::int64_t> tiempos_;
  std::vector<double> valores_;
  std::vector<double> minimos_;
  std::vector<double> maximos_;
  std::vector<std::uint8_t> validados_;
  std::vector<std::uint32_t> filas_;  // empty: all rows, in their order
  std::optional<double> minutos_;
  std::vector<TramoSerie> tramos_;
  std::vector<HuecoSerie> huecos_;
  std::vector<std::size_t> retrocesos_;
  CifrasSerie cifras_;
};

// The channels of a table of records by the texts of its field Canal, each once, in the order in which they come first.
// None for a table without that field, or without Fecha or Valor: no series can be made of it.
std::vector<std::string> CanalesDeTabla(const Tabla& tabla);

}  // namespace utr
