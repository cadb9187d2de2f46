#include "session/Puertos.h"

#include <algorithm>

#include "session/AjustesEnlace.h"

namespace utr {
std::vector<PuertoSerie> PuertosFijos() {
  std::vector<PuertoSerie> puertos;
  for (int numero = 1; numero <= 5; ++numero) puertos.push_back({numero, {}});
  return puertos;
}

std::vector<PuertoSerie> PuertosFijos(ListaDePuertos& lista) {
  std::vector<PuertoSerie> puertos = PuertosFijos();
  IgnorandoErrores([&] {
    for (const PuertoSerie& otro : lista.Listar()) {
      for (PuertoSerie& puerto : puertos) {
        if (puerto.numero == otro.numero) puerto.nombre = otro.nombre;
      }
    }
  });
  return puertos;
}

std::vector<PuertoSerie> PuertosOfrecidos(ListaDePuertos& lista) {
  std::vector<PuertoSerie> puertos;
  IgnorandoErrores([&] { puertos = lista.Listar(); });
  std::erase_if(puertos, [](const PuertoSerie& puerto) { return puerto.numero > kUltimoPuertoSerie; });
  return puertos.empty() ? PuertosFijos() : puertos;
}

std::string TextoPuerto(int numero) {
  return "COM " + std::to_string(numero);
}

}  // namespace utr
