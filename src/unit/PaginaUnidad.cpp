#include "unit/PaginaUnidad.h"

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

PaginaUnidad::PaginaUnidad(std::string_view texto) {
  for (const std::string_view item : Separar(texto, ',')) items_.emplace_back(item);
}

PaginaUnidad PaginaUnidad::Leer(Comunicador& comunicador, std::string_view numero) {
  return PaginaUnidad(comunicador.LeerPagina(numero, false));
}

void PaginaUnidad::Exigir(std::size_t lugar) const {
  if (lugar >= items_.size()) Lanzar(error::kSubindice, "PaginaUnidad");
}

const std::string& PaginaUnidad::Item(std::size_t lugar) const {
  Exigir(lugar);
  return items_[lugar];
}

std::int32_t PaginaUnidad::Numero(std::size_t lugar) const {
  return Entero32(Val(Item(lugar)));
}

std::int32_t PaginaUnidad::Par(std::size_t lugar) const {
  return Numero(lugar) + 256 * Numero(lugar + 1);
}

void PaginaUnidad::Poner(std::size_t lugar, std::int32_t numero) {
  Exigir(lugar);
  items_[lugar] = std::to_string(numero);
}

void PaginaUnidad::PonerPar(std::size_t lugar, std::string_view par) {
  const std::vector<std::string_view> partes = Separar(par, '/');
  Exigir(lugar + 1);
  if (partes.size() != 2) Lanzar(error::kSubindice, "PaginaUnidad");
  Poner(lugar, Entero32(Val(partes[0])));
  Poner(lugar + 1, Entero32(Val(partes[1])));
}

std::string PaginaUnidad::Texto() const {
  return Unir(items_, ",");
}

}  // namespace utr
