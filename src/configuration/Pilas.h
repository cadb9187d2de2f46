#pragma once

#include <cstddef>
#include <string>

#include "base/Reloj.h"
#include "configuration/ConfigColl.h"
#include "driver/Comunicador.h"
#include "services/RegistroErrores.h"
#include "tables/Tabla.h"

// The stacks of the unit's flash and the channels that store in them.
namespace utr {

inline constexpr std::size_t kPilas = 9;
inline constexpr std::size_t kCanalesConRegistro = 19;  // the unit stores that many channels at most

struct ContextoPilas {
  Comunicador& comunicador;  // takes the lines of its log
  RegistroErrores& registro;
  Operador& operador;
  const Reloj& reloj;
  std::string titulo;  // of the messages
};

// The relation of stacks and channels as a text.
class RelacionPilaCanal {
 public:
  // Makes the relation of the channels of a table that store data: their numbers joined by "$", "Nada" without any.
  // More than kCanalesConRegistro are refused with a critical message and a line in the driver's log; the relation
  // stays as it was then. True unless an error occurred, which is logged and shown. The rows that the table shows
  // count; it ends on the first of them.
  bool Armar(Tabla& tabla, const ContextoPilas& contexto);

  const std::string& Texto() const noexcept { return texto_; }

 private:
  static void Rechazar(const ContextoPilas& contexto);

  std::string texto_;
};

// "10 canales con registro, 9 pilas" where more enabled channels store data than there are stacks; else empty.
std::string LineaDePilas(const ConfigColl& coleccion);

}  // namespace utr
