#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "driver/simulated/station/Extremo.h"

namespace utr::simulada {

// A modem in front of the unit, as a port sees it: commands and result words until a call stands, the unit's frames
// then. It answers as modems do: it echoes from its start on, its words come in pieces, noise of the line follows right
// behind CONNECT, and where a call is lost NO CARRIER comes in place of an answer.
class Modem {
 public:
  Modem(EstacionViva& viva, Despachador& unidad);

  // The bits per second at which the port speaks; the modem follows any.
  void Velocidad(int bits_por_segundo) { extremo_.Velocidad(bits_por_segundo); }

  void Recibir(protocolo::VistaBytes bytes, std::int64_t ahora);
  protocolo::Bytes Entregar(std::int64_t ahora);
  std::optional<std::int64_t> Proximo() const;

  // The line DTR fell: whatever stands is hung up, without a word.
  void Soltar();

  bool EnLlamada() const { return llamada_; }

 private:
  enum class Modo : std::uint8_t { kComandos, kMarcando, kEnLinea };

  void RecibirComando(std::uint8_t byte, std::int64_t ahora);
  void Ejecutar(std::string_view comando, std::int64_t ahora);
  void ResolverLlamada(std::int64_t ahora);
  void ContarEscape(protocolo::VistaBytes bytes, std::int64_t ahora);
  void Decir(std::string_view palabra, std::int64_t ahora, protocolo::VistaBytes detras = {});
  void Colgar();

  EstacionViva& viva_;
  Extremo extremo_;
  Salida palabras_;
  Modo modo_ = Modo::kComandos;
  bool eco_ = true;
  bool iniciado_ = false;
  bool llamada_ = false;  // a call stands, though commands may be taken meanwhile
  std::string comando_;
  std::string numero_;
  std::int64_t contesta_ = 0;  // when the dialled number is decided
  std::int64_t recibido_ = 0;
  int mas_ = 0;  // of "+++", with silence ahead of it
};

}  // namespace utr::simulada
