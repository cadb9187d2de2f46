#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The five number texts of the system. They differ on purpose and are never to be confused: each caller is told which
// one it uses. None depends on the locale of the process: the decimal point is "." and the thousands separator ",".
namespace utr {

// Numeric reading: the longest leading numeric prefix, blanks (also tabs and line ends) ignored wherever they stand,
// "." as decimal point, optional sign and exponent; 0 where there is no number. Never fails. Val("5,5") is 5.
double Val(std::string_view texto);

// Numeric test: true when the whole text (blanks around it apart) is one number. "," is the thousands separator and is
// skipped between digits ahead of the decimal point, so "5,5" is numeric. An empty text is not.
bool EsNumerico(std::string_view texto);

// Strict reading: the number of a text that passes EsNumerico ("5,5" gives 55). Raises error 13 for any other text
// and error 6 for a number beyond a double.
double LeerDoble(std::string_view texto);

// Strict reading followed by the rounding of Entero16 or Entero32. Raise 13 and 6.
std::int16_t LeerEntero16(std::string_view texto);
std::int32_t LeerEntero32(std::string_view texto);

// Strict reading rounded half to even, exact in all 64 bits: "9,007,199,254,740,993.5" gives 9007199254740994. Raises
// 13 and 6.
std::int64_t LeerEntero64(std::string_view texto);

// The whole number that a text is ("4", "4.0", "4e2"), exact in all 64 bits; nothing for a fraction, a number beyond
// 64 bits or a text that is no number.
std::optional<std::int64_t> EnteroExacto(std::string_view texto);

// Compares two numbers given as texts that pass EsNumerico, digit by digit, beyond what a double tells apart: "2.0"
// equals "2", and 9007199254740993 is more than 9007199254740992. Raises error 13 for a text that is no number.
std::strong_ordering CompararNumeros(std::string_view a, std::string_view b);

// A double rounded half to even (2.5 is 2, 3.5 is 4). Raises error 6 when the result doesn't fit.
std::int16_t Entero16(double numero);
std::int32_t Entero32(double numero);

// Plain text: the shortest general form with at most 15 significant digits and one leading blank when the number is not
// negative. 12.5 gives " 12.5", -3 gives "-3", 0.2 gives " 0.2", 1e15 gives " 1E+15". The blank is part of the data.
std::string TextoPlano(double numero);

// The same number without the leading blank: the text that a conversion gives where no form is asked for.
std::string TextoGeneral(double numero);

// Fixed format "##########0.000": three decimals, rounded half away from zero on the 15-digit decimal text of the
// number, at least one integer digit, never "-0.000". 1.0005 gives "1.001".
std::string FormatoFijo(double numero);

}  // namespace utr
