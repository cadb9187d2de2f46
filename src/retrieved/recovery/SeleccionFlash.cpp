#include "retrieved/recovery/SeleccionFlash.h"

#include <algorithm>

#include "base/Numeros.h"

namespace utr {
namespace {

constexpr std::size_t kOtrosDeVacia = 2;  // items of a blank page that aren't 255

}  // namespace

bool SeleccionFlash::Elige(std::size_t grupo) const {
  if (grupo == kGrupoCola) return cola;
  if (grupo == kGrupoEventos) return eventos;
  return datos && (todas_las_pilas || pilas[grupo]);
}

bool SeleccionFlash::Hay() const {
  for (std::size_t grupo = 0; grupo < kGruposFlash.size(); ++grupo) {
    if (Elige(grupo)) return true;
  }
  return false;
}

int SeleccionFlash::PrimeraPista() const {
  return datos ? 0 : kGruposFlash[kGrupoCola].primera;
}

std::vector<PasoFlash> PlanDeLectura(const SeleccionFlash& seleccion) {
  std::vector<PasoFlash> plan;
  for (int pista = seleccion.PrimeraPista(); pista < kPistas; ++pista) {
    const std::size_t grupo = GrupoDePista(pista);
    const bool leer = seleccion.Elige(grupo);
    if (leer || grupo == kGrupoEventos) plan.push_back({pista, leer});
  }
  return plan;
}

// Nearly every page has more than two other items at its very beginning.
bool EsPaginaVacia(std::string_view texto) {
  std::size_t otros = 0;
  for (std::size_t desde = 0; desde <= texto.size() && otros <= kOtrosDeVacia;) {
    const std::size_t coma = std::min(texto.find(',', desde), texto.size());
    const std::string_view item = texto.substr(desde, coma - desde);
    if (item != "255" && Val(item) != 255) ++otros;
    desde = coma + 1;
  }
  return otros == kOtrosDeVacia;
}

}  // namespace utr
