#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace utr {

// Numbers that callers look at. Any other number may travel too: the driver and the windows have their own.
namespace error {
inline constexpr std::int32_t kLlamada = 5;          // a call with arguments that cannot be served
inline constexpr std::int32_t kDesborde = 6;         // a number beyond the range of its type
inline constexpr std::int32_t kSubindice = 9;        // a place beyond the end of a list
inline constexpr std::int32_t kTipos = 13;           // a text that is not the number or date that was asked for
inline constexpr std::int32_t kArchivo = 75;         // a file that cannot be read, written or understood
inline constexpr std::int32_t kSinRegistro = 3021;   // a field asked for while no row is current
inline constexpr std::int32_t kCampo = 3265;         // a field that the table lacks
inline constexpr std::int32_t kTablaCerrada = 3704;  // an operation on a closed table
inline constexpr std::int32_t kTablaAbierta = 3705;  // a definition or opening of a table that is open already
inline constexpr std::int32_t kPuertoEnUso = 8005;   // a serial port that is open already or in use
inline constexpr std::int32_t kSinRespuesta = 8020;  // the unit doesn't answer
inline constexpr std::int32_t kCancelado = 32755;    // a common dialog that was cancelled
}  // namespace error

// The one exception type of the system: a number, a source (the procedure or component that raised it) and a
// description in Spanish, since the description reaches the operator in brackets. Whoever raises it because the
// operating system refused something hands over the system's own error number (errno) of that refusal at once; nobody
// looks it up later, when it may be that of something else.
class Error : public std::exception {
 public:
  Error(std::int32_t numero, std::string origen, std::string descripcion, int error_del_sistema = 0);

  std::int32_t Numero() const noexcept { return numero_; }
  const std::string& Origen() const noexcept { return origen_; }
  const std::string& Descripcion() const noexcept { return descripcion_; }
  int ErrorDelSistema() const noexcept { return error_del_sistema_; }  // 0: the system had no part in it
  const char* what() const noexcept override { return descripcion_.c_str(); }

 private:
  std::int32_t numero_;
  std::string origen_;
  std::string descripcion_;
  int error_del_sistema_;
};

// The Spanish description of one of the numbers above; a general sentence for any other number.
std::string DescripcionDe(std::int32_t numero);

// Raises Error(numero, origen, DescripcionDe(numero)).
[[noreturn]] void Lanzar(std::int32_t numero, std::string origen);

// The exception in flight as an Error: itself when it is one; want of memory is number 7, any other exception becomes
// number 5 with its own words as source, each with a Spanish sentence as description; the system's error of a
// std::system_error goes along. Call it only from inside a catch.
Error ErrorActual();

}  // namespace utr
