#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Dates and times of day as the system writes them: day first, built by hand, independent of the locale.
namespace utr {

inline constexpr std::int64_t kSegundosDia = 86400;

// A moment of the proleptic Gregorian calendar to the second, without zone: years 100 to 9999.
struct FechaHora {
  int anio = 1899;
  int mes = 12;
  int dia = 30;
  int hora = 0;
  int minuto = 0;
  int segundo = 0;

  auto operator<=>(const FechaHora&) const = default;
};

// True when the fields name a moment that exists (29/02 only in leap years).
bool EsValida(const FechaHora& fecha);

// Days from 01/01/1970 to the date (negative before it), and the date of such a day count at midnight.
std::int64_t DiasDesde1970(const FechaHora& fecha);
FechaHora FechaDeDias(std::int64_t dias);

// Seconds from 01/01/1970 00:00:00, and back. Both ignore zones.
std::int64_t Segundos(const FechaHora& fecha);
FechaHora FechaDeSegundos(std::int64_t segundos);

// The date that a text holds, or nothing. Accepted, with blanks around: "d/m/yyyy" or "d-m-yyyy" (day first; where the
// second part is above 12 and the first isn't, the two are taken the other way round; two-digit years 00 to 29 are of
// 2000, 30 to 99 of 1900), "yyyy/m/d" and "yyyy-m-d", each optionally followed by a blank and a time; and a time alone
// "h:m" or "h:m:s", which lies on 30/12/1899.
std::optional<FechaHora> LeerFecha(std::string_view texto);

// The date test: LeerFecha gives a moment.
bool EsFecha(std::string_view texto);

// LeerFecha, raising error 13 where there is no date.
FechaHora ConvertirAFecha(std::string_view texto);

std::string TextoFecha(const FechaHora& fecha);      // "dd/mm/yyyy"
std::string TextoHora(const FechaHora& fecha);       // "HH:mm:ss"
std::string TextoFechaHora(const FechaHora& fecha);  // "dd/mm/yyyy HH:mm:ss", at midnight too

}  // namespace utr
