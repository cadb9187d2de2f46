#include "configuration/FilasDeCanales.h"

#include <cmath>
#include <limits>

#include "base/Numeros.h"
#include "configuration/Canales.h"

namespace utr {

std::optional<std::int16_t> NumeroDeFila(std::string_view canal) {
  const double numero = Val(canal);
  if (numero < 1 || numero > std::numeric_limits<std::int16_t>::max() || numero != std::floor(numero))
    return std::nullopt;
  return static_cast<std::int16_t>(numero);
}

ConfigColl ColeccionDe(const Tabla& tabla, FilasDeCanales cuales) {
  ConfigColl coleccion;
  const TablaPtr filas = tabla.Clone();
  const std::size_t columna_canal = filas->IndiceCampo("Canal");
  for (; !filas->Eof(); filas->MoveNext()) {
    const auto canal = NumeroDeFila(filas->Texto(columna_canal));
    if (!canal) continue;
    if (cuales == FilasDeCanales::kTodas || CanalHabilitado(LeerFlags(filas->Texto("Flags"))))
      coleccion.Add(*canal, *filas);
  }
  return coleccion;
}

}  // namespace utr
