#include "retrieved/ColumnasRegistros.h"

#include "base/Numeros.h"
#include "configuration/Canales.h"

namespace utr {

namespace {

using P = Presentacion;
using O = ClaseOrden;

std::string NombreDeTexto(std::string_view canal) {
  const double numero = Val(canal);
  return NombreCanal(numero >= kPrimerCanal && numero <= kUltimoCanal ? Entero16(numero) : std::int16_t{0});
}

}  // namespace

Columnas ColumnasDatos() {
  return {{"Fecha", "Fecha", P::kTalCual, O::kFecha},
          {"Hora", "Hora", P::kTalCual, O::kHora},
          {"Canal", "Canal"},
          {"Descripción", "Descripcion", P::kGuionSiNulo},
          {"Valor ", "Valor", P::kTalCual, O::kNumero},
          {"Unidad", "Unidad", P::kGuionSiNulo},
          {"Máximo", "Maximo", P::kTalCual, O::kNumero},
          {"Mínimo", "Minimo", P::kTalCual, O::kNumero},
          {"Validación", "Validacion", P::kNoSi},
          {"Cola TX", "ColaTX", P::kNoSi}};
}

Columnas ColumnasInstantaneos() {
  return {{"Fecha", "Fecha", P::kTalCual, O::kFecha},
          {"Hora", "Hora", P::kTalCual, O::kHora},
          {"Canal", "Canal", P::kFuncion, O::kTexto, NombreDeTexto},
          {"Descripción", "Descripcion", P::kGuionSiNulo},
          {"Valor ", "Valor", P::kTalCual, O::kNumero},
          {"Unidad", "Unidad", P::kGuionSiNulo},
          {"Máximo", "", P::kGuion},
          {"Mínimo", "", P::kGuion},
          {"Validación", "", P::kGuion},
          {"Cola TX", "", P::kGuion}};
}

Columnas ColumnasEventos() {
  return {{"Fecha", "Fecha", P::kTalCual, O::kFecha},     {"Hora", "Hora", P::kTalCual, O::kHora},
          {"Código", "Codigo", P::kTalCual, O::kNumero},  {"Descripción", "Descripcion"},
          {"Valor 1", "Valor1", P::kTalCual, O::kNumero}, {"Valor 2", "Valor2", P::kTalCual, O::kNumero}};
}

}  // namespace utr
