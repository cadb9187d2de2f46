#include "retrieved/series/TextoSerie.h"

#include <cmath>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

bool Dice(std::string_view palabra) {
  return !Recortar(palabra).empty() && Recortar(palabra) != "-";
}

std::string Extremos(const Serie& serie, std::size_t punto) {
  std::vector<std::string> partes;
  const auto agregar = [&](const char* palabra, std::span<const double> valores) {
    if (!valores.empty() && !std::isnan(valores[punto])) partes.push_back(palabra + TextoGeneral(valores[punto]));
  };
  agregar("mínimo ", serie.Minimos());
  agregar("máximo ", serie.Maximos());
  return partes.empty() ? std::string() : " (" + Unir(partes, ", ") + ")";
}

}  // namespace

std::string TextoMomento(std::int64_t momento) {
  return TextoFechaHora(FechaDeSegundos(momento));
}

std::string TextoValor(double valor, const std::string& unidad) {
  if (std::isnan(valor)) return "N/D";
  return Dice(unidad) ? TextoGeneral(valor) + " " + unidad : TextoGeneral(valor);
}

std::string TextoPunto(const Serie& serie, std::size_t punto) {
  std::string texto = TituloSerie(serie) + ": " + TextoMomento(serie.Tiempos()[punto]) + ", " +
                      TextoValor(serie.Valores()[punto], serie.Unidad()) + Extremos(serie, punto);
  if (serie.TieneValor(punto) && !serie.Validado(punto)) texto += ", no validado";
  return texto;
}

std::string TituloSerie(const Serie& serie) {
  return Dice(serie.Descripcion()) ? serie.Canal() + " " + serie.Descripcion() : serie.Canal();
}

}  // namespace utr
