#pragma once

#include <string>

#include "base/Progreso.h"
#include "base/Reloj.h"

namespace utr::consola {

// How far long work is, on one line of a terminal that is written over; on anything else nothing. Cancelled by an
// interruption.
class ProgresoConsola final : public Progreso {
 public:
  // `errores`: where failures are told.
  ProgresoConsola(int errores, const Reloj& reloj);
  ~ProgresoConsola() override;
  ProgresoConsola(const ProgresoConsola&) = delete;
  ProgresoConsola& operator=(const ProgresoConsola&) = delete;

  void Texto(std::string_view texto) override;
  void Rango(std::int64_t pasos) override;
  void Posicion(std::int64_t hechos) override;
  bool Cancelado() override;
  void Descartado(std::string_view, std::string_view) override {}

  // Shows this in place of text and position, where some time has passed since the last one. `palabras` is only called
  // then.
  template <class Palabras>
  void Decir(Palabras palabras) {
    if (Toca()) Mostrar(palabras());
  }

  // Leaves the line empty.
  void Borrar();

 private:
  bool Toca();
  void Mostrar(std::string_view texto);
  void Ver();

  int errores_;
  const Reloj& reloj_;
  bool terminal_;
  bool escrito_ = false;
  std::int64_t visto_ = 0;  // milliseconds of the clock
  std::string texto_;
  std::int64_t pasos_ = 0;
  std::int64_t hechos_ = 0;
};

}  // namespace utr::consola
