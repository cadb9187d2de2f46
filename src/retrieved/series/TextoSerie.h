#pragma once

#include <cstdint>
#include <string>

#include "retrieved/series/Serie.h"

// A series in words, for operators. Times as the unit wrote them.
namespace utr {

// "dd/mm/yyyy HH:mm:ss" of a time of a series.
std::string TextoMomento(std::int64_t momento);

// A value with its unit: "12.5 m"; "N/D" for none. Without a unit ("-", as of counts) the number alone.
std::string TextoValor(double valor, const std::string& unidad);

// What there is to say of a point, one line: "EA01 Nivel del río: 15/03/2026 10:00:00, 105.25 m (mínimo 105, máximo
// 105.5), no validado".
std::string TextoPunto(const Serie& serie, std::size_t punto);

// "EA01 Nivel del río": channel, and what it measures where that is known.
std::string TituloSerie(const Serie& serie);

}  // namespace utr
