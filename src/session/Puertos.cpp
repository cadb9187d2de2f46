#include "session/Puertos.h"

#include <algorithm>
#include <set>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "session/AjustesEnlace.h"

namespace utr {
namespace {

// Name without its closing digits, and those digits, so that "ttyS10" stands behind "ttyS2".
std::pair<std::string, double> ClaveNatural(const std::string& nombre) {
  const std::size_t letra = nombre.find_last_not_of("0123456789");
  const std::size_t corte = letra == std::string::npos ? 0 : letra + 1;
  return {nombre.substr(0, corte), Val(nombre.substr(corte))};
}

// The number in a name like "COM3"; 0 for any other name.
int NumeroPropio(const std::string& nombre) {
  constexpr std::string_view kPrefijo = "COM";
  if (!nombre.starts_with(kPrefijo)) return 0;
  const std::string resto = nombre.substr(kPrefijo.size());
  const bool digitos =
      !resto.empty() && resto.size() <= 4 && resto.find_first_not_of("0123456789") == std::string::npos;
  return digitos ? std::stoi(resto) : 0;
}

}  // namespace

std::vector<PuertoSerie> NumerarPuertos(std::vector<std::string> nombres) {
  std::sort(nombres.begin(), nombres.end(),
            [](const std::string& a, const std::string& b) { return ClaveNatural(a) < ClaveNatural(b); });
  std::set<int> usados;
  for (const std::string& nombre : nombres) usados.insert(NumeroPropio(nombre));
  std::vector<PuertoSerie> puertos;
  int libre = 1;
  for (std::string& nombre : nombres) {
    int numero = NumeroPropio(nombre);
    if (numero == 0) {
      while (usados.contains(libre)) ++libre;
      numero = libre++;
    }
    if (numero <= kUltimoPuertoSerie) puertos.push_back({numero, std::move(nombre)});
  }
  std::sort(puertos.begin(), puertos.end(),
            [](const PuertoSerie& a, const PuertoSerie& b) { return a.numero < b.numero; });
  return puertos;
}

std::vector<PuertoSerie> PuertosFijos() {
  std::vector<PuertoSerie> puertos;
  for (int numero = 1; numero <= 5; ++numero) puertos.push_back({numero, {}});
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
