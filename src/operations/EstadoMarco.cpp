#include "operations/EstadoMarco.h"

namespace utr {

void EstadoMarco::Leido(const FechaHora& cuando, std::string contenido, const std::string& nota) {
  Fijar("leído ", cuando, std::move(contenido), nota);
}

void EstadoMarco::Grabado(const FechaHora& cuando, std::string contenido, const std::string& nota) {
  Fijar("grabado ", cuando, std::move(contenido), nota);
}

void EstadoMarco::NoConfirmado(const FechaHora& cuando, std::string contenido) {
  Fijar("no confirmado ", cuando, std::move(contenido), {});
}

void EstadoMarco::Olvidar(std::string contenido) {
  hecho_.clear();
  contenido_ = std::move(contenido);
}

std::string EstadoMarco::Texto(const std::string& contenido) const {
  const bool modificado = contenido != contenido_;
  if (hecho_.empty()) return modificado ? "sin leer, modificado" : "sin leer";
  return modificado ? "modificado" : hecho_;
}

void EstadoMarco::Fijar(const char* que, const FechaHora& cuando, std::string contenido, const std::string& nota) {
  hecho_ = que + TextoHora(cuando) + (nota.empty() ? "" : ", " + nota);
  contenido_ = std::move(contenido);
}

}  // namespace utr
