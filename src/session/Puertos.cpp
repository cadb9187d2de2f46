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
      const auto fijo =
          std::find_if(puertos.begin(), puertos.end(), [&](const auto& p) { return p.numero == otro.numero; });
      if (fijo != puertos.end()) {
        fijo->nombre = otro.nombre;
      } else if (otro.numero <= kUltimoPuertoSerie) {
        puertos.push_back(otro);
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
