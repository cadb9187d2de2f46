#include "retrieved/series/CurvasInstantaneas.h"

#include <algorithm>
#include <cmath>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/CanalesUTR.h"
#include "retrieved/series/Momentos.h"
#include "retrieved/series/NumerosDeColumna.h"

namespace utr {
namespace {

void Anotar(CurvasInstantaneas::Curva& curva, CurvasInstantaneas::Punto punto) {
  auto& puntos = curva.puntos;
  if (!puntos.empty() && punto.momento < puntos.back().momento) puntos.clear();
  punto.sigue = punto.sigue && !puntos.empty() && !std::isnan(puntos.back().valor) && !std::isnan(punto.valor);
  puntos.push_back(punto);
  while (puntos.front().momento < punto.momento - CurvasInstantaneas::kSegundos) puntos.pop_front();
}

}  // namespace

void CurvasInstantaneas::Agregar(const Tabla& lectura) {
  std::vector<Curva> antes = std::move(curvas_);
  curvas_.clear();
  const std::vector<std::int64_t> momentos = MomentosDe(lectura);
  const FilasTabla filas = lectura.Filas();
  for (std::size_t fila = 0; fila < momentos.size(); ++fila) {
    const auto texto = [&](const char* campo) {
      return std::string(Recortar(filas.Texto(fila, lectura.IndiceCampo(campo))));
    };
    const double numero = NumeroDeRegistro(texto("Canal"));
    const std::string canal =
        numero >= kPrimerCanal && numero <= kUltimoCanal ? NombreCanal(Entero16(numero)) : texto("Canal");
    const auto suya =
        std::find_if(antes.begin(), antes.end(), [&](const Curva& curva) { return curva.canal == canal; });
    Curva curva = suya == antes.end() ? Curva{canal, {}, {}, {}} : std::move(*suya);
    curva.descripcion = texto("Descripcion");
    curva.unidad = texto("Unidad");
    const double valor = NumeroDeRegistro(texto("Valor"));
    if (momentos[fila] != kSinMomento) Anotar(curva, {momentos[fila], valor, !interrumpida_});
    curvas_.push_back(std::move(curva));
  }
  interrumpida_ = false;
}

}  // namespace utr
