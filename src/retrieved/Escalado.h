#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "driver/CanalesUTR.h"
#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

// Raw values of a unit as texts of engineering values, from the row of a channel in the channel table. The four
// functions differ on purpose: in the kinds that they scale, in what a span of zero does, and in the offset that they
// add.
//
// All give `valor` back unchanged without a table (null) or without a row for the channel. Three of them select the row
// by the filter "Canal='<canal trimmed>'", which stays set. None catches anything: a field that the table lacks (3265),
// a strict reading of no number (13) and a result beyond a double (6) go up.
namespace utr {

// For historic and queue records. Kinds 0 and 1 take the level reference, 2 and 3 don't, 5 is counts times the constant
// of the gauge in plain text, the others stay raw. A span of zero or less leaves the value raw and logs a line.
std::string EscalarValor(std::string_view valor, std::string_view canal, Tabla* configuracion,
                         const ContextoRegistros& contexto);

// For present values, on the row on which the table stands: no filter is touched. Kinds 0 to 4 take the level reference
// when asked for, 5 is as above.
std::string EscalarValorInstantaneo(std::string_view valor, std::string_view canal, Tabla* configuracion,
                                    bool con_nivel_referencia, const ContextoRegistros& contexto);

// For an event that carries a reading. A span of exactly 0 counts as 1.
std::string EscalarValorEvento(std::string_view valor, std::string_view canal, Tabla* configuracion);

// For an event that carries a difference of readings: neither zero nor bottom of the range nor level reference apply.
std::string EscalarDiferenciaEvento(std::string_view valor, std::string_view canal, Tabla* configuracion);

// Clears the filter and selects the row of a channel. False: no table, or no row.
bool SeleccionarCanal(std::string_view canal, Tabla* configuracion);

// EscalarValor taken in two steps, for builders that scale thousands of values of one channel.
class EscalaHistorica {
 public:
  // Reads the row on which the table stands.
  explicit EscalaHistorica(const Tabla& configuracion);

  // The scaled value of a raw one. Logs a line where the span doesn't allow it.
  std::string Escalar(std::string_view valor, const ContextoRegistros& contexto) const;

  // The span keeps the channel from being scaled: each call of Escalar logs.
  bool SinSpan() const noexcept;

 private:
  std::optional<TipoSensor> tipo_;
  double cero_;
  double span_;
  double rango_min_;
  double rango_;
  double constante_;
  double nivel_;
};

}  // namespace utr
