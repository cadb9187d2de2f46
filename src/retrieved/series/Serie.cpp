#include "retrieved/series/Serie.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <unordered_map>
#include <utility>

#include "base/Texto.h"
#include "driver/CanalesUTR.h"
#include "retrieved/series/Momentos.h"
#include "retrieved/series/NumerosDeColumna.h"

namespace utr {
namespace {

constexpr double kVecesHueco = 1.5;
constexpr std::string_view kGrados = "°";  // the unit of directions alone
constexpr double kMediaVuelta = 180;
constexpr std::string_view kDireccion = "DIRECC";  // how their parameter begins, whatever follows

std::uint8_t LeerValidado(std::string_view texto) {
  return NumeroDeRegistro(texto) == 0 ? 0 : 1;
}

bool EsDe(std::string_view texto, std::string_view canal) {
  return IgualSinCaso(Recortar(texto), Recortar(canal));
}

// The rows of the channel that have a moment.
struct Seleccion {
  bool todas = true;
  std::vector<std::uint32_t> filas;  // unless all are
  std::size_t del_canal = 0;
};

Seleccion Elegir(const ColumnaLeida<std::uint8_t>& es_suya, const std::vector<std::int64_t>& momentos) {
  Seleccion seleccion;
  std::size_t con_momento = 0;
  for (std::size_t fila = 0; fila < momentos.size(); ++fila) {
    const std::size_t suya = es_suya.De(fila);
    seleccion.del_canal += suya;
    con_momento += suya & static_cast<std::size_t>(momentos[fila] != kSinMomento);
  }
  seleccion.todas = con_momento == momentos.size();
  if (seleccion.todas) return seleccion;
  seleccion.filas.reserve(con_momento);
  for (std::size_t fila = 0; fila < momentos.size(); ++fila) {
    if (es_suya.De(fila) != 0 && momentos[fila] != kSinMomento)
      seleccion.filas.push_back(static_cast<std::uint32_t>(fila));
  }
  return seleccion;
}

// Of the channel, with a moment or not; there is one.
std::size_t Primera(const ColumnaLeida<std::uint8_t>& es_suya) {
  std::size_t fila = 0;
  while (es_suya.De(fila) == 0) ++fila;
  return fila;
}

std::vector<double> Numeros(const Tabla& tabla, std::string_view campo, const Seleccion& seleccion) {
  const int lugar = tabla.BuscarCampo(campo);
  if (lugar < 0) return {};
  const ColumnaLeida<double> columna(tabla, static_cast<std::size_t>(lugar), NumeroDeRegistro, NumeroDeRegistro({}));
  return seleccion.todas ? columna.Todas() : columna.De(seleccion.filas);
}

std::vector<std::uint8_t> Validaciones(const Tabla& tabla, const Seleccion& seleccion) {
  const int lugar = tabla.BuscarCampo("Validacion");
  if (lugar < 0) return {};
  const ColumnaLeida<std::uint8_t> columna(tabla, static_cast<std::size_t>(lugar), LeerValidado, 1);
  return seleccion.todas ? columna.Todas() : columna.De(seleccion.filas);
}

// The interval between records that occurs most often, the shortest of those that do; 0 without two records.
std::int64_t IntervaloMasComun(const std::vector<std::int64_t>& tiempos) {
  std::unordered_map<std::int64_t, std::size_t> veces;
  std::int64_t en_curso = 0;
  std::size_t seguidas = 0;
  const auto anotar = [&] {
    if (en_curso > 0) veces[en_curso] += seguidas;
  };
  for (std::size_t i = 1; i < tiempos.size(); ++i) {
    const std::int64_t intervalo = tiempos[i] - tiempos[i - 1];
    if (intervalo == en_curso) {
      ++seguidas;
      continue;
    }
    anotar();
    en_curso = intervalo;
    seguidas = 1;
  }
  anotar();
  std::pair<std::int64_t, std::size_t> comun{0, 0};
  for (const auto& [intervalo, cuantas] : veces) {
    if (cuantas > comun.second || (cuantas == comun.second && intervalo < comun.first)) comun = {intervalo, cuantas};
  }
  return comun.first;
}

// What the values of stretches come to.
struct Sumas {
  std::size_t cuantos = 0;
  double suma = 0;
  double minimo = std::numeric_limits<double>::infinity();
  double maximo = -minimo;

  void Agregar(std::span<const double> valores, const TramoSerie& tramo) {
    Sumas estas = *this;
    for (std::size_t i = tramo.desde; i < tramo.hasta; ++i) {
      const double valor = valores[i];
      estas.suma += valor;
      estas.minimo = valor < estas.minimo ? valor : estas.minimo;
      estas.maximo = valor > estas.maximo ? valor : estas.maximo;
    }
    estas.cuantos += tramo.hasta - tramo.desde;
    *this = estas;
  }

  // What is no number is passed over.
  void AgregarExtremos(std::span<const double> minimos, std::span<const double> maximos, const TramoSerie& tramo) {
    for (std::size_t i = tramo.desde; i < tramo.hasta && !minimos.empty(); ++i)
      minimo = minimos[i] < minimo ? minimos[i] : minimo;
    for (std::size_t i = tramo.desde; i < tramo.hasta && !maximos.empty(); ++i)
      maximo = maximos[i] > maximo ? maximos[i] : maximo;
  }
};

// The direction of the sum of unit vectors, in degrees.
std::optional<double> DireccionMedia(std::span<const double> grados, const std::vector<TramoSerie>& tramos) {
  constexpr double kPorGrado = std::numbers::pi / 180;
  constexpr double kSeAnulan = 1e-6;  // of a vector's length, on average
  double seno = 0;
  double coseno = 0;
  double cuantos = 0;
  for (const TramoSerie& tramo : tramos) {
    for (const double valor : grados.subspan(tramo.desde, tramo.hasta - tramo.desde)) {
      seno += std::sin(valor * kPorGrado);
      coseno += std::cos(valor * kPorGrado);
      ++cuantos;
    }
  }
  if (std::hypot(seno, coseno) <= cuantos * kSeAnulan) return std::nullopt;
  const double media = std::fmod(std::atan2(seno, coseno) / kPorGrado + 360, 360);
  return 360 - media < kSeAnulan ? 0 : media;
}

// Walks the points and parts them where something is missing between them.
class Partidor {
 public:
  Partidor(std::span<const std::int64_t> tiempos, std::span<const double> valores, double segundos)
      : tiempos_(tiempos), valores_(valores), segundos_(segundos) {}

  void Partir() {
    const auto hueco = static_cast<std::int64_t>(segundos_ * kVecesHueco);
    for (std::size_t i = 0; i < tiempos_.size(); ++i) {
      if (tramo_ && !std::isnan(valores_[i])) {  // as nearly all of them go
        const std::int64_t intervalo = tiempos_[i] - tiempos_[i - 1];
        if (intervalo >= 0 && intervalo <= hueco) continue;
      }
      const bool atras = i > 0 && tiempos_[i] < tiempos_[i - 1];
      if (atras) Retroceder(i);
      const bool lejos = i > 0 && !atras && segundos_ > 0 && Faltan(i);
      if (std::isnan(valores_[i])) {
        Callar(i);
      } else {
        Hablar(i, lejos);
      }
    }
    Cerrar(tiempos_.size());
    if (hueco_) CerrarHueco(tiempos_.back());
  }

  std::vector<TramoSerie> tramos;
  std::vector<HuecoSerie> huecos;
  std::vector<std::size_t> retrocesos;
  std::size_t faltan = 0;

 private:
  // Too long between this point and the one before; counts what should stand there.
  bool Faltan(std::size_t i) {
    const double veces = static_cast<double>(tiempos_[i] - tiempos_[i - 1]) / segundos_;
    if (veces <= kVecesHueco) return false;
    faltan += static_cast<std::size_t>(std::max(1LL, std::llround(veces) - 1));
    return true;
  }

  void Retroceder(std::size_t i) {
    Cerrar(i);
    if (hueco_) CerrarHueco(tiempos_[i - 1]);
    retrocesos.push_back(i);
    sin_antes_ = true;
  }

  void Callar(std::size_t i) {
    if (!hueco_) hueco_ = tiempos_[sin_antes_ ? i : i - 1];
    Cerrar(i);
    sin_antes_ = false;
  }

  void Hablar(std::size_t i, bool lejos) {
    if (lejos) Cerrar(i);
    if (hueco_) {
      CerrarHueco(tiempos_[i]);
    } else if (lejos) {
      huecos.push_back({tiempos_[i - 1], tiempos_[i]});
    }
    if (!tramo_) tramo_ = i;
    sin_antes_ = false;
  }

  void Cerrar(std::size_t hasta) {
    if (tramo_) tramos.push_back({*tramo_, hasta});
    tramo_.reset();
  }

  void CerrarHueco(std::int64_t hasta) {
    huecos.push_back({*hueco_, hasta});
    hueco_.reset();
  }

  std::span<const std::int64_t> tiempos_;
  std::span<const double> valores_;
  double segundos_;
  bool sin_antes_ = true;              // no point goes before that the next one could be joined with
  std::optional<std::size_t> tramo_;   // first point of the stretch that is open
  std::optional<std::int64_t> hueco_;  // start of the gap that is open
};

}  // namespace

Serie::Serie(const Tabla& tabla, const OpcionesSerie& opciones) : minutos_(opciones.minutos) {
  if (minutos_ && !(*minutos_ > 0)) minutos_.reset();
  Leer(tabla, opciones.canal);
  if (!minutos_ && opciones.a_intervalos) {
    if (const std::int64_t comun = IntervaloMasComun(tiempos_); comun > 0) minutos_ = static_cast<double>(comun) / 60;
  }
  Partir();
  Contar();
}

void Serie::Leer(const Tabla& tabla, const std::string& canal) {
  const std::size_t campo = tabla.IndiceCampo("Canal");
  tabla.IndiceCampo("Valor");
  std::vector<std::int64_t> momentos = MomentosDe(tabla);
  if (momentos.empty()) return;
  const std::string buscado = canal.empty() ? tabla.Filas().Texto(0, campo) : canal;
  const auto es_suya = [&](std::string_view texto) -> std::uint8_t { return EsDe(texto, buscado) ? 1 : 0; };
  const ColumnaLeida<std::uint8_t> es_de_canal(tabla, campo, es_suya, es_suya({}));
  const Seleccion seleccion = Elegir(es_de_canal, momentos);
  cifras_.registros = seleccion.del_canal;
  if (seleccion.del_canal == 0) return;
  LeerPalabras(tabla, Primera(es_de_canal));
  if (seleccion.todas) {
    tiempos_ = std::move(momentos);
  } else {
    for (const std::uint32_t fila : seleccion.filas) tiempos_.push_back(momentos[fila]);
    filas_ = seleccion.filas;
  }
  valores_ = Numeros(tabla, "Valor", seleccion);
  minimos_ = Numeros(tabla, "Minimo", seleccion);
  maximos_ = Numeros(tabla, "Maximo", seleccion);
  validados_ = Validaciones(tabla, seleccion);
}

void Serie::LeerPalabras(const Tabla& tabla, std::size_t fila) {
  const auto leer = [&](std::string_view campo) {
    const int lugar = tabla.BuscarCampo(campo);
    return lugar < 0 ? std::string()
                     : std::string(Recortar(tabla.Filas().Texto(fila, static_cast<std::size_t>(lugar))));
  };
  canal_ = leer("Canal");
  descripcion_ = leer("Descripcion");
  unidad_ = leer("Unidad");
  es_lluvia_ = ClaseDeCanal(NumeroDeNombre(canal_)) == ClaseCanal::kPluviometro;
  es_direccion_ = unidad_ == kGrados || Mayusculas(descripcion_).starts_with(kDireccion);
}

void Serie::Partir() {
  Partidor partidor(tiempos_, valores_, minutos_.value_or(0) * 60);
  partidor.Partir();
  tramos_ = std::move(partidor.tramos);
  huecos_ = std::move(partidor.huecos);
  retrocesos_ = std::move(partidor.retrocesos);
  cifras_.faltan = partidor.faltan;
  cifras_.huecos = huecos_.size();
  cifras_.retrocesos = retrocesos_.size();
}

void Serie::Contar() {
  cifras_.sin_fecha = cifras_.registros - Cantidad();
  if (retrocesos_.empty() && !tiempos_.empty()) {
    cifras_.primero = tiempos_.front();
    cifras_.ultimo = tiempos_.back();
  } else if (!tiempos_.empty()) {
    const auto [primero, ultimo] = std::minmax_element(tiempos_.begin(), tiempos_.end());
    cifras_.primero = *primero;
    cifras_.ultimo = *ultimo;
  }
  Sumas sumas;
  for (const TramoSerie& tramo : tramos_) {
    sumas.Agregar(valores_, tramo);
    sumas.AgregarExtremos(minimos_, maximos_, tramo);
    if (validados_.empty()) continue;
    const auto validado = validados_.begin() + static_cast<std::ptrdiff_t>(tramo.desde);
    const auto largo = static_cast<std::ptrdiff_t>(tramo.hasta - tramo.desde);
    cifras_.no_validados += static_cast<std::size_t>(std::count(validado, validado + largo, 0));
  }
  cifras_.sin_valor = Cantidad() - sumas.cuantos;
  if (sumas.cuantos == 0) return;
  cifras_.minimo = sumas.minimo;
  cifras_.maximo = sumas.maximo;
  if (!es_direccion_) {
    cifras_.media = sumas.suma / static_cast<double>(sumas.cuantos);
  } else if (unidad_ == kGrados) {
    cifras_.media = DireccionMedia(valores_, tramos_);
  }
  if (es_lluvia_) cifras_.lluvia = sumas.suma;
}

bool Serie::PasaPorElNorte(double uno, double otro) const noexcept {
  return unidad_ == kGrados && std::abs(uno - otro) > kMediaVuelta;
}

std::optional<std::size_t> Serie::Punto(std::size_t fila) const noexcept {
  if (filas_.empty()) return fila < Cantidad() ? std::optional(fila) : std::nullopt;
  const auto lugar = std::lower_bound(filas_.begin(), filas_.end(), fila);
  if (lugar == filas_.end() || *lugar != fila) return std::nullopt;
  return static_cast<std::size_t>(lugar - filas_.begin());
}

std::optional<std::size_t> Serie::MasCercano(double momento, double alcance) const {
  std::optional<std::size_t> cercano;
  const auto mirar = [&](std::size_t punto) {
    const double lejos = std::abs(static_cast<double>(tiempos_[punto]) - momento);
    if (lejos > alcance) return;
    alcance = lejos;
    cercano = punto;
  };
  for (const TramoSerie& tramo : tramos_) {
    const auto comienzo = tiempos_.begin() + static_cast<std::ptrdiff_t>(tramo.desde);
    const auto fin = tiempos_.begin() + static_cast<std::ptrdiff_t>(tramo.hasta);
    const auto detras = std::lower_bound(
        comienzo, fin, momento, [](std::int64_t t, double buscado) { return static_cast<double>(t) < buscado; });
    if (detras != fin) mirar(static_cast<std::size_t>(detras - tiempos_.begin()));
    if (detras != comienzo) mirar(static_cast<std::size_t>(detras - tiempos_.begin()) - 1);
  }
  return cercano;
}

std::vector<std::string> CanalesDeTabla(const Tabla& tabla) {
  std::vector<std::string> canales;
  for (const char* campo : {"Fecha", "Canal", "Valor"}) {
    if (tabla.BuscarCampo(campo) < 0) return canales;
  }
  const std::size_t campo = tabla.IndiceCampo("Canal");
  const auto nuevo = [&](std::string_view texto) {
    return std::none_of(canales.begin(), canales.end(), [&](const std::string& uno) { return EsDe(texto, uno); });
  };
  std::vector<bool> vistos;  // by text
  const ColumnaLeida<std::string> columna(tabla, campo,
                                          [](std::string_view texto) { return std::string(Recortar(texto)); }, {});
  for (std::size_t fila = 0; fila < columna.Cantidad(); ++fila) {
    const std::uint32_t indice = columna.Indice(fila);
    if (indice >= vistos.size()) vistos.resize(indice + 1);
    if (vistos[indice]) continue;
    vistos[indice] = true;
    const std::string& canal = columna.De(fila);
    if (!canal.empty() && nuevo(canal)) canales.push_back(canal);
  }
  return canales;
}

}  // namespace utr
