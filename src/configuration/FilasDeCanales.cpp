#include "configuration/FilasDeCanales.h"

#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "base/Error.h"
#include "base/Numeros.h"
#include "configuration/Canales.h"
#include "driver/CanalesUTR.h"

namespace utr {

std::optional<std::int16_t> NumeroDeFila(std::string_view canal) {
  const double numero = Val(canal);
  if (numero < 1 || numero > std::numeric_limits<std::int16_t>::max() || numero != std::floor(numero))
    return std::nullopt;
  return static_cast<std::int16_t>(numero);
}

void ExigirColumnasDeCanal(const Tabla& tabla) {
  for (const ColumnaCanal& columna : kColumnasDeCanal) {
    if (columna.nombre == "Modificado" || tabla.BuscarCampo(columna.nombre) >= 0) continue;
    throw Error(error::kCampo, "ExigirColumnasDeCanal",
                "La tabla de canales no tiene la columna " + std::string(columna.nombre));
  }
}

ConfigColl ColeccionDe(const Tabla& tabla, FilasDeCanales cuales) {
  ConfigColl coleccion;
  std::set<std::int16_t> vistos;
  const TablaPtr filas = tabla.Clone();
  const std::size_t columna_canal = filas->IndiceCampo("Canal");
  for (; !filas->Eof(); filas->MoveNext()) {
    const auto canal = NumeroDeFila(filas->Texto(columna_canal));
    if (!canal || !vistos.insert(*canal).second) continue;
    if (cuales == FilasDeCanales::kTodas || CanalHabilitado(LeerFlags(filas->Texto("Flags"))))
      coleccion.Add(*canal, *filas);
  }
  return coleccion;
}

}  // namespace utr
