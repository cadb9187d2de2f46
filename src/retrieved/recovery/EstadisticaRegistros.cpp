#include "retrieved/recovery/EstadisticaRegistros.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "base/Fechas.h"
#include "base/Texto.h"
#include "retrieved/series/Momentos.h"

namespace utr {

namespace {

constexpr FechaHora kReferencia{.anio = 2001, .mes = 1, .dia = 1};
constexpr std::size_t kHuecosNombrados = 5;
constexpr std::size_t kContradiccionesNombradas = 100;

// A record by its moment; records of different channels don't meet.
struct Puesto {
  std::int64_t momento = 0;  // seconds
  std::uint32_t canal = 0;
  std::uint32_t fila = 0;
  auto operator<=>(const Puesto&) const = default;
  bool Con(const Puesto& otro) const { return momento == otro.momento && canal == otro.canal; }
};

std::vector<Puesto> Ordenados(const Tabla& tabla, InformeRegistros& informe) {
  const std::vector<std::int64_t> momentos = MomentosDe(tabla);
  const int canal = tabla.BuscarCampo("Canal");
  const std::int64_t referencia = Segundos(kReferencia);
  std::vector<Puesto> puestos;
  puestos.reserve(tabla.RecordCount());
  for (std::uint32_t fila = 0; fila < tabla.RecordCount(); ++fila) {
    const std::int64_t momento = momentos[fila] == kSinMomento ? 0 : momentos[fila];
    if (momento >= referencia && momento < referencia + kSegundosDia) {
      ++informe.de_referencia;
      continue;
    }
    const std::uint32_t suyo = canal < 0 ? 0 : tabla.Textos(static_cast<std::size_t>(canal)).De(fila);
    puestos.push_back({momento, suyo, fila});
  }
  if (!std::is_sorted(puestos.begin(), puestos.end())) std::sort(puestos.begin(), puestos.end());
  return puestos;
}

void BuscarHuecos(const std::vector<Puesto>& puestos, InformeRegistros& informe) {
  if (informe.minutos <= 0) return;
  std::vector<std::pair<std::int64_t, std::size_t>> huecos;  // length, negative, and the record behind it
  for (std::size_t i = 1; i < puestos.size(); ++i) {
    const std::int64_t largo = puestos[i].momento - puestos[i - 1].momento;
    const double veces = static_cast<double>(largo) / (informe.minutos * 60);
    if (veces <= 1) continue;
    huecos.emplace_back(-largo, i);
    informe.faltan += static_cast<std::uint64_t>(std::ceil(veces)) - 1;
  }
  informe.cuantos_huecos = huecos.size();
  const std::size_t nombrados = std::min(huecos.size(), kHuecosNombrados);
  std::partial_sort(huecos.begin(), huecos.begin() + static_cast<std::ptrdiff_t>(nombrados), huecos.end());
  for (std::size_t i = 0; i < nombrados; ++i) {
    const std::size_t detras = huecos[i].second;
    informe.huecos.push_back({FechaDeSegundos(puestos[detras - 1].momento), FechaDeSegundos(puestos[detras].momento)});
  }
}

// What records of one moment say, compared with the first of them.
class Comparador {
 public:
  explicit Comparador(const Tabla& tabla) : tabla_(tabla) {
    for (const char* campo : {"Canal", "Valor", "Maximo", "Minimo"}) campos_.push_back(tabla.IndiceCampo(campo));
  }

  bool Difieren(const Puesto& a, const Puesto& b) const {
    return std::any_of(campos_.begin() + 1, campos_.end(), [&](std::size_t campo) {
      return tabla_.Textos(campo).De(a.fila) != tabla_.Textos(campo).De(b.fila);
    });
  }

  Contradiccion Describir(const Puesto& a, const Puesto& b) const {
    return {TextoFechaHora(FechaDeSegundos(a.momento)) + " " + tabla_.Filas().Texto(a.fila, campos_[0]), Dicho(a.fila),
            Dicho(b.fila)};
  }

 private:
  std::string Dicho(std::size_t fila) const {
    std::string dicho;
    for (std::size_t i = 1; i < campos_.size(); ++i) {
      if (i > 1) dicho += " / ";
      dicho += Recortar(tabla_.Filas().Texto(fila, campos_[i]));
    }
    return dicho;
  }

  const Tabla& tabla_;
  std::vector<std::size_t> campos_;
};

void BuscarContradicciones(const Tabla& tabla, const std::vector<Puesto>& puestos, InformeRegistros& informe) {
  if (tabla.BuscarCampo("Valor") < 0) return;  // events of one second are many
  const Comparador comparador(tabla);
  std::size_t primero = 0;
  for (std::size_t i = 1; i < puestos.size(); ++i) {
    if (!puestos[i].Con(puestos[primero])) {
      primero = i;
    } else if (comparador.Difieren(puestos[primero], puestos[i])) {
      ++informe.cuantas_contradicciones;
      if (informe.contradicciones.size() < kContradiccionesNombradas)
        informe.contradicciones.push_back(comparador.Describir(puestos[primero], puestos[i]));
    }
  }
}

}  // namespace

void DescribirRegistros(const Tabla& tabla, InformeRegistros& informe) {
  const std::vector<Puesto> puestos = Ordenados(tabla, informe);
  if (puestos.empty()) return;
  informe.primero = FechaDeSegundos(puestos.front().momento);
  informe.ultimo = FechaDeSegundos(puestos.back().momento);
  BuscarHuecos(puestos, informe);
  BuscarContradicciones(tabla, puestos, informe);
}

}  // namespace utr
