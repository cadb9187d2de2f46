#include "services/Operador.h"

#include <algorithm>
#include <vector>

namespace utr {
namespace {

// The answers that have a button, in their order.
std::vector<Respuesta> RespuestasDe(Botones botones) {
  switch (botones) {
    case Botones::kAceptarCancelar:
      return {Respuesta::kAceptar, Respuesta::kCancelar};
    case Botones::kSiNo:
      return {Respuesta::kSi, Respuesta::kNo};
    case Botones::kOpciones:
      return {Respuesta::kPrimera, Respuesta::kSegunda, Respuesta::kCancelar};
    case Botones::kAceptarOpcion:
      return {Respuesta::kAceptar, Respuesta::kPrimera};
    case Botones::kAceptar:
      break;
  }
  return {Respuesta::kAceptar};
}

}  // namespace

Respuesta DefectoDe(const Mensaje& mensaje) {
  const std::vector<Respuesta> posibles = RespuestasDe(mensaje.botones);
  const bool tiene_boton =
      mensaje.defecto && std::find(posibles.begin(), posibles.end(), *mensaje.defecto) != posibles.end();
  return tiene_boton ? *mensaje.defecto : posibles.front();
}

bool Preguntar(Operador& operador, std::string_view titulo, std::string_view texto, Respuesta defecto) {
  const Mensaje mensaje{std::string(texto), std::string(titulo), Icono::kPregunta, Botones::kSiNo, {}, defecto};
  return operador.Mostrar(mensaje) == Respuesta::kSi;
}

void Informar(Operador& operador, std::string_view titulo, std::string_view texto) {
  operador.Mostrar({std::string(texto), std::string(titulo), Icono::kInformacion, Botones::kAceptar});
}

}  // namespace utr
