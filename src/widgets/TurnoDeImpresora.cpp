#include "widgets/TurnoDeImpresora.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace utr {
namespace {

// Which copy it is, ahead of what the work tells of its pages.
class ProgresoDeCopia : public Progreso {
 public:
  ProgresoDeCopia(Progreso& todo, std::string copia) : todo_(todo), copia_(std::move(copia)) {}
  void Texto(std::string_view texto) override { todo_.Texto(texto.empty() ? "" : copia_ + std::string(texto)); }
  void Rango(std::int64_t pasos) override { todo_.Rango(pasos); }
  void Posicion(std::int64_t hechos) override { todo_.Posicion(hechos); }
  bool Cancelado() override { return todo_.Cancelado(); }
  void Descartado(std::string_view que, std::string_view porque) override { todo_.Descartado(que, porque); }

 private:
  Progreso& todo_;
  std::string copia_;
};

}  // namespace

bool EstaInstalada(Impresora& impresora, const EleccionImpresora& eleccion) {
  const std::vector<std::string> nombres = impresora.Nombres();
  return std::find(nombres.begin(), nombres.end(), eleccion.nombre) != nombres.end();
}

bool HayImpresora(Operador& operador, EleccionImpresora& eleccion) {
  if (!eleccion.nombre.empty()) return true;
  const auto elegida = operador.ElegirImpresora("Configurar Impresora", eleccion);
  if (!elegida) return false;
  eleccion = *elegida;
  return !eleccion.nombre.empty();
}

void PorCopia(int copias, Progreso& progreso, const std::function<bool(Progreso& progreso)>& imprimir) {
  for (int copia = 1; copia <= copias; ++copia) {
    const std::string cual = "Copia " + std::to_string(copia) + " de " + std::to_string(copias) + ". ";
    ProgresoDeCopia suyo(progreso, copias > 1 ? cual : std::string());
    if (!imprimir(suyo)) return;
  }
}

}  // namespace utr
