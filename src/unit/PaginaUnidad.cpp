#include "unit/PaginaUnidad.h"

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/Textos.h"

namespace utr {
namespace {

constexpr const char* kModulo = "PaginaUnidad";
constexpr std::int32_t kMayorByte = 255;

}  // namespace

PaginaUnidad::PaginaUnidad(std::string_view numero, std::string_view texto) : numero_(numero) {
  if (texto.empty() || !LeerTextoPagina(texto)) LanzarNoLeida();
  for (const std::string_view item : Separar(texto, ',')) items_.emplace_back(item);
}

PaginaUnidad PaginaUnidad::Leer(Comunicador& comunicador, std::string_view numero) {
  return {numero, comunicador.LeerPagina(numero, false)};
}

void PaginaUnidad::LanzarNoLeida() const {
  throw Error(error::kSubindice, kModulo, "La página " + numero_ + " no pudo leerse");
}

void PaginaUnidad::ExigirBytes(std::size_t cuantos) const {
  if (cuantos > items_.size()) LanzarNoLeida();
}

std::int32_t PaginaUnidad::Numero(std::size_t lugar) const {
  ExigirBytes(lugar + 1);
  return Entero32(Val(items_[lugar]));
}

std::int32_t PaginaUnidad::Par(std::size_t lugar) const {
  return Numero(lugar) + 256 * Numero(lugar + 1);
}

void PaginaUnidad::Poner(std::size_t lugar, std::int32_t numero) {
  ExigirBytes(lugar + 1);
  if (numero < 0 || numero > kMayorByte) Lanzar(error::kDesborde, kModulo);
  items_[lugar] = std::to_string(numero);
}

void PaginaUnidad::PonerPar(std::size_t lugar, std::string_view par) {
  const std::optional<std::uint16_t> valor = LeerPar(par);
  if (!valor) Lanzar(error::kTipos, kModulo);
  ExigirBytes(lugar + 2);
  Poner(lugar, *valor & kMayorByte);
  Poner(lugar + 1, *valor >> 8);
}

std::string PaginaUnidad::Texto() const {
  return Unir(items_, ",");
}

}  // namespace utr
