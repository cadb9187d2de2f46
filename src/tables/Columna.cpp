#include "tables/Columna.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>
#include <utility>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

struct Limites {
  TipoCampo tipo;
  std::int64_t minimo;
  std::int64_t maximo;
};

constexpr std::array kLimites = {
    Limites{TipoCampo::kEntero8, -128, 127},
    Limites{TipoCampo::kEntero8SinSigno, 0, 255},
    Limites{TipoCampo::kEntero16, -32768, 32767},
    Limites{TipoCampo::kEntero16SinSigno, 0, 65535},
    Limites{TipoCampo::kEntero, -2147483648LL, 2147483647LL},
    Limites{TipoCampo::kEnteroSinSigno, 0, 4294967295LL},
};

void ExigirRango(TipoCampo tipo, std::int64_t numero) {
  for (const auto& l : kLimites) {
    if (l.tipo == tipo && (numero < l.minimo || numero > l.maximo)) Lanzar(error::kDesborde, "Tabla");
  }
}

std::int64_t EnteroDe(double numero) {
  const double redondo = std::nearbyint(numero);  // half to even, the default mode
  if (!(redondo >= -9.2233720368547758e18 && redondo < 9.2233720368547758e18)) Lanzar(error::kDesborde, "Tabla");
  return static_cast<std::int64_t>(redondo);
}

bool LogicoDe(std::string_view texto) {
  if (IgualSinCaso(texto, "True")) return true;
  if (IgualSinCaso(texto, "False")) return false;
  return LeerDoble(texto) != 0;
}

// A value as double, integer or truth value; monostate never comes here. A true counts as -1 where a number is asked
// for.
template <class... F>
struct Casos : F... {
  using F::operator()...;
};
template <class... F>
Casos(F...) -> Casos<F...>;

double ADoble(const Valor& valor) {
  return std::visit(Casos{[](std::monostate) { return 0.0; }, [](std::string_view t) { return LeerDoble(t); },
                          [](double n) { return n; }, [](std::int64_t n) { return static_cast<double>(n); },
                          [](bool b) { return b ? -1.0 : 0.0; }},
                    valor);
}

std::int64_t AEntero(const Valor& valor) {
  return std::visit(Casos{[](std::monostate) { return std::int64_t{0}; },
                          [](std::string_view t) { return LeerEntero64(t); }, [](double n) { return EnteroDe(n); },
                          [](std::int64_t n) { return n; }, [](bool b) { return std::int64_t{b ? -1 : 0}; }},
                    valor);
}

bool ALogico(const Valor& valor) {
  return std::visit(
      Casos{[](std::monostate) { return false; }, [](std::string_view t) { return LogicoDe(t); },
            [](double n) { return n != 0; }, [](std::int64_t n) { return n != 0; }, [](bool b) { return b; }},
      valor);
}

// The number as its column holds it. What isn't finite there has no text in a file.
double Ajustado(TipoCampo tipo, double numero) {
  if (!(std::fabs(numero) <= std::numeric_limits<double>::max())) Lanzar(error::kDesborde, "Tabla");
  if (tipo != TipoCampo::kSimple) return numero;
  if (std::fabs(numero) > static_cast<double>(std::numeric_limits<float>::max())) Lanzar(error::kDesborde, "Tabla");
  return static_cast<double>(static_cast<float>(numero));
}

}  // namespace

Clase ClaseDe(TipoCampo tipo) {
  switch (tipo) {
    case TipoCampo::kDoble:
    case TipoCampo::kSimple:
      return Clase::kDoble;
    case TipoCampo::kEntero8:
    case TipoCampo::kEntero8SinSigno:
    case TipoCampo::kEntero16:
    case TipoCampo::kEntero16SinSigno:
    case TipoCampo::kEntero:
    case TipoCampo::kEnteroSinSigno:
    case TipoCampo::kEntero64:
      return Clase::kEntero;
    case TipoCampo::kLogico:
      return Clase::kLogico;
    default:
      return Clase::kTexto;
  }
}

bool EsDecimal(TipoCampo tipo) {
  return tipo == TipoCampo::kMoneda || tipo == TipoCampo::kDecimal || tipo == TipoCampo::kNumerico ||
         tipo == TipoCampo::kNumericoVariable || tipo == TipoCampo::kEntero64SinSigno;
}

std::string TextoDe(const Valor& valor) {
  return std::visit(
      Casos{[](std::monostate) { return std::string(); }, [](std::string_view t) { return std::string(t); },
            [](double n) { return TextoGeneral(n); }, [](std::int64_t n) { return std::to_string(n); },
            [](bool b) { return std::string(b ? "True" : "False"); }},
      valor);
}

bool Columna::Cabe(std::size_t fila, std::size_t nulos_por_valor) const noexcept {
  constexpr std::size_t kSiempre = 64;
  return indexada_ || fila < reservadas_ || fila < kSiempre + nulos_por_valor * (escritas_ + 1);
}

std::size_t Columna::LugarRalo(std::size_t fila) const noexcept {
  const auto i = std::lower_bound(filas_.begin(), filas_.end(), fila);
  const bool esta = i != filas_.end() && *i == fila;
  return static_cast<std::size_t>(esta ? i - filas_.begin() : filas_.end() - filas_.begin());
}

// The place of a row that gets a value.
std::size_t Columna::AbrirLugar(std::size_t fila) {
  const std::size_t lugar = Lugar(fila);
  if (lugar < Lugares()) return lugar;
  // The two limits lie apart, so that a column doesn't change its form to and fro.
  if (rala_ && Cabe(fila, 16)) Densar();
  if (!rala_ && !Cabe(fila, 32)) Ralear();
  if (!rala_) {
    Extender(std::max(fila + 1, Lugares()));
    return fila;
  }
  const auto donde = std::lower_bound(filas_.begin(), filas_.end(), fila);
  const auto en = donde - filas_.begin();
  filas_.insert(donde, static_cast<std::uint32_t>(fila));
  CadaVector([en](auto& valores) {
    valores.insert(valores.begin() + en, typename std::remove_reference_t<decltype(valores)>::value_type{});
  });
  return static_cast<std::size_t>(en);
}

void Columna::Extender(std::size_t lugares) {
  CadaVector([lugares](auto& valores) { valores.resize(lugares); });
}

void Columna::Ralear() {
  for (std::size_t fila = 0; fila < Lugares(); ++fila) {
    if (!EsNulo(fila)) filas_.push_back(static_cast<std::uint32_t>(fila));
  }
  CadaVector([this](auto& valores) {
    for (std::size_t i = 0; i < filas_.size(); ++i) valores[i] = valores[filas_[i]];
    valores.resize(filas_.size());
    valores.shrink_to_fit();
  });
  rala_ = true;
}

void Columna::Densar() {
  CadaVector([this](auto& valores) {
    std::remove_reference_t<decltype(valores)> repartidos(filas_.empty() ? 0 : filas_.back() + 1);
    for (std::size_t i = 0; i < filas_.size(); ++i) repartidos[filas_[i]] = valores[i];
    valores = std::move(repartidos);
  });
  filas_ = std::vector<std::uint32_t>();
  rala_ = false;
}

void Columna::Reservar(std::size_t filas) {
  reservadas_ = std::max(reservadas_, filas);
  CadaVector([filas](auto& valores) { valores.reserve(filas); });
}

void Columna::Ajustar() {
  CadaVector([](auto& valores) { valores.shrink_to_fit(); });
  filas_.shrink_to_fit();
}

std::size_t Columna::Memoria() const noexcept {
  return textos_.Memoria() + indices_.capacity() * 4 + dobles_.capacity() * 8 + enteros_.capacity() * 8 +
         logicos_.capacity() + presentes_.capacity() / 8 + filas_.capacity() * 4 +
         cadenas_.capacity() * sizeof(Cadena) + eslabones_.capacity() * sizeof(Eslabon);
}

bool Columna::EsNulo(std::size_t fila) const noexcept {
  if (clase_ == Clase::kTexto) return Indice(fila) == 0;
  const std::size_t lugar = Lugar(fila);
  return lugar >= presentes_.size() || !presentes_[lugar];
}

Valor Columna::Leer(std::size_t fila) const noexcept {
  if (clase_ == Clase::kTexto) {
    const std::uint32_t numero = Indice(fila);
    return numero == 0 ? Valor{} : Valor{textos_.Texto(numero)};
  }
  const std::size_t lugar = Lugar(fila);
  if (lugar >= presentes_.size() || !presentes_[lugar]) return {};
  if (clase_ == Clase::kDoble) return dobles_[lugar];
  if (clase_ == Clase::kEntero) return enteros_[lugar];
  return logicos_[lugar] != 0;
}

double Columna::Numero(std::size_t fila) const noexcept {
  const std::size_t lugar = Lugar(fila);
  if (clase_ == Clase::kDoble) return dobles_[lugar];
  return clase_ == Clase::kEntero ? static_cast<double>(enteros_[lugar]) : (logicos_[lugar] != 0 ? -1.0 : 0.0);
}

std::int64_t Columna::Entero(std::size_t fila) const noexcept {
  return enteros_[Lugar(fila)];
}

void Columna::EscribirNulo(std::size_t fila) {
  if (clase_ == Clase::kTexto) return EscribirIndice(fila, 0);
  if (EsNulo(fila)) return;
  ++version_;
  presentes_[Lugar(fila)] = false;
}

void Columna::Escribir(std::size_t fila, const Valor& valor) {
  if (std::holds_alternative<std::monostate>(valor)) return EscribirNulo(fila);
  if (clase_ == Clase::kTexto) {
    if (EsDecimal(tipo_)) ADoble(valor);
    if (const auto* texto = std::get_if<std::string_view>(&valor)) return EscribirTexto(fila, *texto);
    return EscribirTexto(fila, TextoDe(valor));
  }
  const double doble = clase_ == Clase::kDoble ? Ajustado(tipo_, ADoble(valor)) : 0;
  const std::int64_t entero = clase_ == Clase::kEntero ? AEntero(valor) : 0;
  if (clase_ == Clase::kEntero) ExigirRango(tipo_, entero);
  const bool logico = clase_ == Clase::kLogico && ALogico(valor);
  const std::size_t lugar = AbrirLugar(fila);
  if (clase_ == Clase::kDoble) dobles_[lugar] = doble;
  if (clase_ == Clase::kEntero) enteros_[lugar] = entero;
  if (clase_ == Clase::kLogico) logicos_[lugar] = logico ? 1 : 0;
  ++version_;
  ++escritas_;
  presentes_[lugar] = true;
}

std::span<const std::uint32_t> Columna::Indices(std::size_t filas, std::vector<std::uint32_t>& apoyo) const {
  if (!rala_ && indices_.size() == filas) return indices_;
  apoyo.assign(filas, 0);
  for (std::size_t lugar = 0; lugar < Lugares(); ++lugar) apoyo[FilaDe(lugar)] = indices_[lugar];
  return apoyo;
}

void Columna::EscribirIndice(std::size_t fila, std::uint32_t numero) {
  if (fila == indices_.size() && !rala_ && !indexada_ && numero != 0) {  // most values come row by row
    indices_.push_back(numero);
    ++version_;
    ++escritas_;
    return;
  }
  const std::uint32_t anterior = Indice(fila);
  if (anterior == numero) return;
  indices_[numero == 0 ? Lugar(fila) : AbrirLugar(fila)] = numero;
  ++version_;
  ++escritas_;
  if (!indexada_) return;
  if (anterior != 0) Desenlazar(static_cast<std::uint32_t>(fila), anterior);
  if (numero != 0) Enlazar(static_cast<std::uint32_t>(fila), numero);
}

// --- Index -----------------------------------------------------------------------------------------------------------

void Columna::Indexar() {
  if (indexada_) return;
  if (rala_) Densar();
  indexada_ = true;
  cadenas_.resize(textos_.Cantidad() + 1);
  eslabones_.resize(indices_.size());
  for (std::uint32_t fila = 0; fila < indices_.size(); ++fila) {
    if (indices_[fila] != 0) Enlazar(fila, indices_[fila]);
  }
}

// At the end of the chain, whatever the row: whoever walks the chain puts it in order.
void Columna::Enlazar(std::uint32_t fila, std::uint32_t texto) {
  if (texto >= cadenas_.size()) cadenas_.resize(textos_.Cantidad() + 1);
  if (fila >= eslabones_.size()) eslabones_.resize(indices_.size());
  Cadena& cadena = cadenas_[texto];
  eslabones_[fila] = {cadena.ultima, 0};
  (cadena.ultima == 0 ? cadena.primera : eslabones_[cadena.ultima - 1].siguiente) = fila + 1;
  cadena.ultima = fila + 1;
}

void Columna::Desenlazar(std::uint32_t fila, std::uint32_t texto) {
  Cadena& cadena = cadenas_[texto];
  const Eslabon e = eslabones_[fila];
  (e.anterior == 0 ? cadena.primera : eslabones_[e.anterior - 1].siguiente) = e.siguiente;
  (e.siguiente == 0 ? cadena.ultima : eslabones_[e.siguiente - 1].anterior) = e.anterior;
}

void Columna::FilasDe(std::uint32_t texto, std::vector<std::uint32_t>& filas) {
  Indexar();
  if (texto >= cadenas_.size()) return;
  const auto antes = static_cast<std::ptrdiff_t>(filas.size());
  std::vector<std::uint32_t> atrasadas;  // rows that came into the chain behind a later one
  for (std::uint32_t f = cadenas_[texto].primera; f != 0; f = eslabones_[f - 1].siguiente) {
    const bool en_orden = std::ssize(filas) == antes || filas.back() < f - 1;
    (en_orden ? filas : atrasadas).push_back(f - 1);
  }
  if (atrasadas.empty()) return;
  std::sort(atrasadas.begin(), atrasadas.end());
  const auto medio = std::ssize(filas);
  filas.insert(filas.end(), atrasadas.begin(), atrasadas.end());
  std::inplace_merge(filas.begin() + antes, filas.begin() + medio, filas.end());
  cadenas_[texto] = {};
  for (auto i = filas.begin() + antes; i != filas.end(); ++i) Enlazar(*i, texto);
}

}  // namespace utr
