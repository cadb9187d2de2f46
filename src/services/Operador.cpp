#include "services/Operador.h"

namespace utr {

bool Preguntar(Operador& operador, std::string_view titulo, std::string_view texto) {
  return operador.Mostrar({std::string(texto), std::string(titulo), Icono::kPregunta, Botones::kSiNo}) ==
         Respuesta::kSi;
}

void Informar(Operador& operador, std::string_view titulo, std::string_view texto) {
  operador.Mostrar({std::string(texto), std::string(titulo), Icono::kInformacion, Botones::kAceptar});
}

}  // namespace utr
