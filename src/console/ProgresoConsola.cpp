#include "console/ProgresoConsola.h"

#include <unistd.h>

#include "console/Interrupcion.h"
#include "console/Salida.h"

namespace utr::consola {

namespace {

constexpr std::int64_t kEntreVistazos = 200;  // milliseconds
constexpr std::string_view kRenglonVacio = "\r\033[K";

}  // namespace

ProgresoConsola::ProgresoConsola(int errores, const Reloj& reloj)
    : errores_(errores), reloj_(reloj), terminal_(::isatty(errores) == 1) {}

ProgresoConsola::~ProgresoConsola() {
  Borrar();
}

void ProgresoConsola::Texto(std::string_view texto) {
  texto_ = texto;
  pasos_ = 0;
  if (terminal_) Ver();
}

void ProgresoConsola::Rango(std::int64_t pasos) {
  pasos_ = pasos;
  hechos_ = 0;
}

void ProgresoConsola::Posicion(std::int64_t hechos) {
  hechos_ = hechos;
  if (Toca()) Ver();
}

bool ProgresoConsola::Cancelado() {
  return Interrupcion::Veces() > 0;
}

bool ProgresoConsola::Toca() {
  return terminal_ && reloj_.Milisegundos() - visto_ >= kEntreVistazos;
}

void ProgresoConsola::Ver() {
  Mostrar(pasos_ == 0 ? texto_ : texto_ + " " + std::to_string(hechos_) + "/" + std::to_string(pasos_));
}

void ProgresoConsola::Mostrar(std::string_view texto) {
  EscribirSinFallar(errores_, std::string(kRenglonVacio) + std::string(texto));
  escrito_ = true;
  visto_ = reloj_.Milisegundos();
}

void ProgresoConsola::Borrar() {
  if (escrito_) EscribirSinFallar(errores_, kRenglonVacio);
  escrito_ = false;
}

}  // namespace utr::consola
