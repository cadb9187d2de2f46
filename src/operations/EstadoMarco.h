#pragma once

#include <string>

#include "base/Fechas.h"

namespace utr {

// What is known of the fields of a frame: whether they hold what the unit holds, and since when. `contenido` is what
// they hold, as one text.
class EstadoMarco {
 public:
  // `contenido`: of the empty frame.
  explicit EstadoMarco(std::string contenido = {}) : contenido_(std::move(contenido)) {}

  // They were read; `nota` says more about it.
  void Leido(const FechaHora& cuando, std::string contenido, const std::string& nota = {});
  // They were written. Also when the unit didn't confirm it, which leaves open what it holds.
  void Grabado(const FechaHora& cuando, std::string contenido, const std::string& nota = {});
  void NoConfirmado(const FechaHora& cuando, std::string contenido);
  // They hold nothing of the unit any more.
  void Olvidar(std::string contenido);

  // "sin leer", "leído 10:32:05", "modificado", ...: told by what the fields hold now.
  std::string Texto(const std::string& contenido) const;

 private:
  void Fijar(const char* que, const FechaHora& cuando, std::string contenido, const std::string& nota);

  std::string hecho_;  // empty: nothing is known of the unit
  std::string contenido_;
};

}  // namespace utr
