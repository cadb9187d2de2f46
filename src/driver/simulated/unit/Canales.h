#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "driver/CanalesUTR.h"
#include "driver/TablasDeUnidad.h"
#include "driver/simulated/unit/Memoria.h"
#include "tables/Tabla.h"

namespace utr::simulada {

inline constexpr int kCanales = kUltimaEntrada;
inline constexpr int kSinPila = 255;  // an erased byte: the channel has no stack

// The numbers of a channel that the unit itself works with, read from its texts.
struct ParametrosCanal {
  int canal = 0;
  std::optional<TipoSensor> tipo = TipoSensor::kNivel;
  int pila = kSinPila;
  unsigned flags = 0;
  int t_read = 0, t_eval = 0, t_storage = 0, t_discret = 0, t_cero = 0;  // minutes
  double rango_min = 0, rango_max = 0, cero = 0, span = 0, cte_pluvi = 0;
  double max_valid = 0, min_valid = 0, max_sub_tx = 0, max_baj_tx = 0;
  double a_max = 0, a_min = 0, al_sub = 0, al_baj = 0, al_max_pico = 0, al_min_pico = 0, referencia = 0;

  bool Habilitado() const { return (flags & 1) != 0; }
  bool Alarmas() const { return (flags & 2) != 0; }
  bool TieneHistoria() const { return Habilitado() && GuardaHistoria(tipo) && t_storage > 0; }

  // Counts of a value in engineering units (without the level reference): 0 to 65535.
  std::uint16_t Cuentas(double valor) const;
  double Rango() const { return rango_max - rango_min; }
};

// The table of channels as the unit holds it: 23 rows of texts. At most nine channels with a history have a stack.
class Canales {
 public:
  Canales();

  // All rows as a new table, on its first row.
  TablaPtr ComoTabla() const { return TablaDeCanales(filas_); }

  // Takes over the rows that a table shows, channel by channel and column by column; columns that it lacks stay as they
  // are. False, with nothing changed, when a row names no channel from 1 to 23 or no kind of sensor, or holds no number
  // (of times and flags: a negative one, or more than 65535) where a channel of its kind needs one. Raises error 3265
  // without a field Canal.
  bool Mezclar(Tabla& tabla);

  // The same, and every channel that the table doesn't show becomes disabled.
  bool Reemplazar(Tabla& tabla);

  // Gives the stacks to these channels in their order; nine at most and no channel twice, else false.
  bool AsignarPilas(const std::vector<int>& canales);

  // One text by channel and column name; empty for unknown ones. Poner gives false for an unknown column.
  std::string Texto(int canal, std::string_view columna) const;
  bool Poner(int canal, std::string_view columna, std::string_view texto);

  // A channel's text as it leaves the factory.
  static std::string TextoDeFabrica(int canal, std::string_view columna);

  const ParametrosCanal& Parametros(int canal) const { return parametros_[static_cast<std::size_t>(canal - 1)]; }
  int PilaDe(int canal) const { return Parametros(canal).pila; }

  // For saving and loading: the texts of all channels in the order of columns. RehacerParametros after a load.
  std::vector<std::vector<std::string>>& Filas() { return filas_; }
  void RehacerParametros();

 private:
  void RepartirPilas();

  std::vector<std::vector<std::string>> filas_;
  std::array<ParametrosCanal, kCanales> parametros_;
};

}  // namespace utr::simulada
