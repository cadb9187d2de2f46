#pragma once

#include <cstdint>
#include <string_view>

namespace utr {

// How long work tells how far it is, whoever shows it: a dialog with a bar of its own, the status bar, a command line.
// All calls come on the thread of the work; none may raise.
class Progreso {
 public:
  virtual ~Progreso() = default;

  // What is being done now; empty: nothing.
  virtual void Texto(std::string_view texto) = 0;

  // How many steps the whole has, counted from 0; 0: not known. And how many are done.
  virtual void Rango(std::int64_t pasos) = 0;
  virtual void Posicion(std::int64_t hechos) = 0;

  // The operator asked to end the work; asked at each step.
  virtual bool Cancelado() = 0;

  // A part of the work or of its data was left out, and why.
  virtual void Descartado(std::string_view que, std::string_view porque) = 0;
};

// Nobody looks on and nobody cancels.
class SinProgreso : public Progreso {
 public:
  void Texto(std::string_view) override {}
  void Rango(std::int64_t) override {}
  void Posicion(std::int64_t) override {}
  bool Cancelado() override { return false; }
  void Descartado(std::string_view, std::string_view) override {}
};

}  // namespace utr
