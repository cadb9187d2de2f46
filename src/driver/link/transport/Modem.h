#pragma once

#include <string>
#include <string_view>

#include "driver/link/transport/Espera.h"

namespace utr::enlace {

// The dialogue with a telephone modem in its command mode: words of its answers come in pieces, behind the echo of what
// was sent and what it still had to say of something else.
class Modem {
 public:
  Modem(Linea& linea, Espera& espera) : linea_(linea), espera_(espera) {}

  // A modem answers, so that what is sent would be commands to it. Raises what the line and the wait raise.
  bool Contesta();

  // Sends the commands, one a line of the text, then dials. False: the modem doesn't answer or refuses a command, or
  // nobody takes the call. Raises kCancelada at once when the wait is cancelled: the modem is told to give the call up,
  // and one that stood already by then is hung up.
  bool Llamar(std::string_view numero, std::string_view comandos);

  // Ends a call: by DTR where the line has it, else by the pause, "+++", the pause and ATH. Raises what the line
  // raises.
  void Colgar();

 private:
  enum class Palabra { kNinguna, kBien, kError, kConectado, kFallida };

  static Palabra Leer(std::string_view linea);
  void Decir(std::string_view texto);
  Palabra Siguiente(std::int64_t hasta);
  bool Ordenar(std::string_view comando);
  bool Despertar();
  void Desistir();

  Linea& linea_;
  Espera& espera_;
  std::vector<std::uint8_t> recibido_;
};

// What came in place of an answer is a modem saying that the call has ended.
bool DiceSinPortadora(std::string_view recibido);

}  // namespace utr::enlace
