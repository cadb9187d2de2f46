#include "retrieved/recovery/InformeRecuperacion.h"

#include <algorithm>
#include <numeric>

namespace utr {

namespace {

// In the order of their numbers.
constexpr std::array<std::string_view, kFinesLinea> kLineas = {
    "con datos",
    "de páginas vacías",
    "repetidas",
    "de pilas sin canal",
    "de las que no salieron registros",
    "dañadas",
    "cortadas",
    "encabezados",
    "fines de pista",
    "sin nada",
    "cortas que no son de las conocidas",
};
constexpr std::array<std::string_view, kFinesFila> kFilas = {
    "guardados", "sin fecha", "sin hora", "sin archivo", "repetidos",
};

template <typename Cuenta>
std::uint64_t Suma(const Cuenta& cuenta) {
  return std::accumulate(cuenta.begin(), cuenta.end(), std::uint64_t{0});
}

template <typename Cuenta>
void Sumar(Cuenta& total, const Cuenta& parte) {
  std::transform(total.begin(), total.end(), parte.begin(), total.begin(), std::plus<>());
}

}  // namespace

CuentaLineas InformeRecuperacion::Lineas() const {
  CuentaLineas total{};
  for (const InformeArchivo& archivo : archivos) Sumar(total, archivo.fines);
  return total;
}

CuentaFilas InformeRecuperacion::Filas() const {
  CuentaFilas total{};
  for (const InformeRegistros& renglon : registros) Sumar(total, renglon.fines);
  return total;
}

// What stands behind the last line end was not counted as a line, but has an end of its own.
bool InformeRecuperacion::LineasCuadran() const {
  return std::all_of(archivos.begin(), archivos.end(), [](const InformeArchivo& archivo) {
    return Suma(archivo.fines) == archivo.lineas + archivo.fines[FinLinea::kCortada];
  });
}

bool InformeRecuperacion::FilasCuadran() const {
  return std::all_of(registros.begin(), registros.end(),
                     [](const InformeRegistros& renglon) { return Suma(renglon.fines) == renglon.decodificadas; });
}

std::string_view EnPalabras(FinLinea fin) {
  return kLineas[static_cast<std::size_t>(fin)];
}

std::string_view EnPalabras(FinFila fin) {
  return kFilas[static_cast<std::size_t>(fin)];
}

}  // namespace utr
