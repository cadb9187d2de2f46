#pragma once

#include <cstdint>

// Numbers of the errors of a link, beside kPuertoEnUso and kSinRespuesta, which callers look at.
namespace utr::error_enlace {

inline constexpr std::int32_t kPuertoInexistente = 8002;
inline constexpr std::int32_t kLineaPerdida = 8012;    // the device is gone, or the other end has hung up
inline constexpr std::int32_t kCancelada = 8021;       // the operator cancelled the operation
inline constexpr std::int32_t kOcupado = 8022;         // another operation is on the line
inline constexpr std::int32_t kOtraVersion = 8023;     // the unit speaks another version of the protocol
inline constexpr std::int32_t kCambiante = 8024;       // what is read changes while it is read
inline constexpr std::int32_t kPaginaNegada = 8025;    // the unit refuses a page that should be among those read
inline constexpr std::int32_t kLecturaNegada = 8026;   // the unit refuses a read, or failed at it
inline constexpr std::int32_t kOtraUnidad = 8027;      // an order was meant for a unit of another kind
inline constexpr std::int32_t kDireccionMuda = 10060;  // nobody answers at the address

// What each of them tells the operator, in the order of the numbers.
struct Significado {
  std::int32_t numero;
  const char* que_paso;
};
inline constexpr Significado kSignificados[] = {
    {kPuertoInexistente, "El puerto no existe"},
    {kLineaPerdida, "El dispositivo se desenchufó, o el otro extremo cortó"},
    {kCancelada, "La operación fue cancelada"},
    {kOcupado, "Hay otra operación en la línea"},
    {kOtraVersion, "El equipo habla otra versión del protocolo"},
    {kCambiante, "Lo que se lee cambia mientras se lo lee"},
    {kPaginaNegada, "El equipo niega una página que debería estar"},
    {kLecturaNegada, "El equipo negó una lectura, o falló al hacerla"},
    {kOtraUnidad, "Contesta otra clase de unidad que la que estaba a la vista: la orden no se envió"},
    {kDireccionMuda, "Nadie atiende en la dirección IP"},
};

}  // namespace utr::error_enlace
