// Budget of the series that the plots stand on: made of a table of a million records against copying the
// numbers of its rows.
#include <benchmark/benchmark.h>

#include <span>
#include <string_view>
#include <vector>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/Muestras.h"
#include "retrieved/Registros.h"
#include "retrieved/series/Serie.h"

namespace {

constexpr std::size_t kRegistros = 1000000;

// The numbers of the table's rows copied into vectors, row by row, and nothing else: what each text stands for lies
// ready.
class Copia {
 public:
  explicit Copia(const utr::Tabla& tabla)
      : dias_(LeerDe(tabla, "Fecha", DeFecha)), horas_(LeerDe(tabla, "Hora", DeFecha)) {
    for (const char* campo : {"Valor", "Maximo", "Minimo", "Validacion"})
      numeros_.push_back(LeerDe(tabla, campo, [](std::string_view texto) { return utr::Val(texto); }));
  }

  double Copiar() const {
    std::vector<double> copias[5];
    for (auto& copia : copias) copia.reserve(dias_.indices.size());
    for (std::size_t fila = 0; fila < dias_.indices.size(); ++fila) {
      copias[4].push_back(dias_.De(fila) + horas_.De(fila));
      for (std::size_t i = 0; i < 4; ++i) copias[i].push_back(numeros_[i].De(fila));
    }
    return copias[0].back() + copias[4].back();
  }

 private:
  struct Columna {
    std::vector<std::uint32_t> propios{};
    std::span<const std::uint32_t> indices{};
    std::vector<double> numeros{0};
    double De(std::size_t fila) const { return numeros[indices[fila]]; }
  };

  static double DeFecha(std::string_view texto) {
    return static_cast<double>(utr::Segundos(utr::ConvertirAFecha(texto)));
  }

  template <typename Leer>
  static Columna LeerDe(const utr::Tabla& tabla, const char* campo, Leer leer) {
    const utr::TextosColumna textos = tabla.Textos(tabla.IndiceCampo(campo));
    Columna columna;
    columna.indices = textos.Indices(columna.propios);
    for (std::size_t i = 1; i <= textos.Cantidad(); ++i) columna.numeros.push_back(leer(textos.Texto(i)));
    return columna;
  }

  Columna dias_;
  Columna horas_;
  std::vector<Columna> numeros_;
};

bool MedirSerie(const utr::ContextoRegistros& contexto) {
  const utr::TablaPtr configuracion = medida::Configuracion();
  const utr::TablaPtr tabla = utr::ArmarRegistrosDatos(medida::Origen(kRegistros), configuracion.get(), contexto);
  const Copia copia(*tabla);
  return medida::Comparar(
      "serie_de_1000000", 2.0,
      [&] {
        const utr::Serie serie(*tabla);
        benchmark::DoNotOptimize(serie.Valores().data());
      },
      [&] { benchmark::DoNotOptimize(copia.Copiar()); }, 9);
}

}  // namespace

int main() {
  return medida::ConContexto(MedirSerie) ? 0 : 1;
}
