#include "tables/DatosTabla.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

constexpr std::uint64_t kSinCaso = 0x2020202020202020ULL;

// Reads a number of fixed size from bytes that may stand anywhere.
template <typename T>
std::uint64_t Tomar(const char* p) noexcept {
  T w;
  std::memcpy(&w, p, sizeof w);
  return w;
}

// The first eight bytes; of a shorter text all of them, in an arrangement that is one to one for each length.
std::uint64_t Cabeza(std::string_view t) noexcept {
  const char* p = t.data();
  const std::size_t n = t.size();
  if (n >= 8) return Tomar<std::uint64_t>(p);
  if (n >= 4) return Tomar<std::uint32_t>(p) | Tomar<std::uint32_t>(p + n - 4) << 32;
  if (n >= 2) return Tomar<std::uint16_t>(p) | Tomar<std::uint16_t>(p + n - 2) << 16;
  return n == 1 ? Tomar<std::uint8_t>(p) : 0;
}

std::uint64_t Mezclar(std::uint64_t h, std::uint64_t w) noexcept {
  // Setting the bit 0x20 of each byte makes capitals and small letters alike, in ASCII and in the second byte of the
  // letters of Latin-1.
  h = (h ^ (w | kSinCaso)) * 0xD6E8FEB86659FD93ULL;
  return h ^ (h >> 32);
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

// --- Diccionario -----------------------------------------------------------------------------------------------------

Diccionario::Clave Diccionario::ClaveDe(std::string_view texto) noexcept {
  Clave clave{Cabeza(texto), 0, 0};
  std::uint64_t h = Mezclar(texto.size() * 0x9E3779B97F4A7C15ULL, clave.cabeza);
  for (std::size_t i = 8; i < texto.size(); i += 8) h = Mezclar(h, Cabeza(texto.substr(i)));
  clave.dispersion = static_cast<std::uint32_t>(h * 0x9E3779B97F4A7C15ULL >> 32);
  clave.marca = (clave.dispersion & 0xFFFFFF00U) | static_cast<std::uint32_t>(std::min<std::size_t>(texto.size(), 255));
  return clave;
}

const char* Diccionario::Guardar(std::string_view texto) {
  if (texto.empty()) return "";
  if (texto.size() > libre_) {
    // A long text gets a block of its own, so that the present one stays in use.
    const bool propio = texto.size() > kBloque / 4;
    const std::size_t tamano = propio ? texto.size() : kBloque;
    bloques_.push_back(std::make_unique_for_overwrite<char[]>(tamano));
    bytes_ += tamano;
    char* inicio = bloques_.back().get();
    if (propio) return static_cast<const char*>(std::memcpy(inicio, texto.data(), texto.size()));
    cursor_ = inicio;
    libre_ = tamano;
  }
  char* destino = cursor_;
  std::memcpy(destino, texto.data(), texto.size());
  cursor_ += texto.size();
  libre_ -= texto.size();
  return destino;
}

void Diccionario::Crecer() {
  const std::size_t nuevo = std::max<std::size_t>(16, ranuras_.size() * 2);
  ranuras_.assign(nuevo, {});
  for (std::uint32_t n = 1; n <= entradas_.size(); ++n) {
    const Clave clave = ClaveDe(Texto(n));
    std::size_t i = clave.dispersion & (nuevo - 1);
    while (ranuras_[i].numero != 0) i = (i + 1) & (nuevo - 1);
    ranuras_[i] = {clave.cabeza, n, clave.marca};
  }
}

std::uint32_t Diccionario::Numero(std::string_view texto, const Clave& clave) {
  if ((entradas_.size() + 1) * 3 > ranuras_.size() * 2) Crecer();
  const std::size_t mascara = ranuras_.size() - 1;
  std::size_t i = clave.dispersion & mascara;
  for (; ranuras_[i].numero != 0; i = (i + 1) & mascara) {
    if (Es(ranuras_[i], clave, texto)) return ranuras_[i].numero;
  }
  if (texto.size() > std::numeric_limits<std::uint32_t>::max() || entradas_.size() > 0xFFFFFFF0U) {
    Lanzar(error::kDesborde, "Tabla");
  }
  entradas_.push_back({Guardar(texto), static_cast<std::uint32_t>(texto.size())});
  ranuras_[i] = {clave.cabeza, static_cast<std::uint32_t>(entradas_.size()), clave.marca};
  return ranuras_[i].numero;
}

std::vector<std::uint32_t> Diccionario::IgualesSinCaso(std::string_view texto) const {
  std::vector<std::uint32_t> numeros;
  if (ranuras_.empty()) return numeros;
  const Clave clave = ClaveDe(texto);
  const std::size_t mascara = ranuras_.size() - 1;
  for (std::size_t i = clave.dispersion & mascara; ranuras_[i].numero != 0; i = (i + 1) & mascara) {
    const std::uint32_t n = ranuras_[i].numero;
    if (ranuras_[i].marca == clave.marca && IgualSinCaso(Texto(n), texto)) numeros.push_back(n);
  }
  return numeros;
}

std::size_t Diccionario::Memoria() const noexcept {
  return bytes_ + entradas_.capacity() * sizeof(Entrada) + ranuras_.capacity() * sizeof(Ranura);
}

// --- Columna ---------------------------------------------------------------------------------------------------------

void Columna::AgregarNulo() {
  switch (clase_) {
    case Clase::kTexto:
      indices_.push_back(0);
      return;
    case Clase::kDoble:
      dobles_.push_back(0);
      break;
    case Clase::kEntero:
      enteros_.push_back(0);
      break;
    case Clase::kLogico:
      logicos_.push_back(0);
      break;
  }
  presentes_.push_back(false);
}

void Columna::Reservar(std::size_t filas) {
  switch (clase_) {
    case Clase::kTexto:
      indices_.reserve(filas);
      return;
    case Clase::kDoble:
      dobles_.reserve(filas);
      break;
    case Clase::kEntero:
      enteros_.reserve(filas);
      break;
    case Clase::kLogico:
      logicos_.reserve(filas);
      break;
  }
  presentes_.reserve(filas);
}

void Columna::Ajustar() {
  indices_.shrink_to_fit();
  dobles_.shrink_to_fit();
  enteros_.shrink_to_fit();
  logicos_.shrink_to_fit();
  presentes_.shrink_to_fit();
}

std::size_t Columna::Memoria() const noexcept {
  return textos_.Memoria() + indices_.capacity() * 4 + dobles_.capacity() * 8 + enteros_.capacity() * 8 +
         logicos_.capacity() + presentes_.capacity() / 8 + inicios_.capacity() * 4 + filas_por_texto_.capacity() * 4;
}

bool Columna::EsNulo(std::size_t fila) const noexcept {
  return clase_ == Clase::kTexto ? indices_[fila] == 0 : !presentes_[fila];
}

Valor Columna::Leer(std::size_t fila) const noexcept {
  if (EsNulo(fila)) return {};
  switch (clase_) {
    case Clase::kTexto:
      return textos_.Texto(indices_[fila]);
    case Clase::kDoble:
      return dobles_[fila];
    case Clase::kEntero:
      return enteros_[fila];
    case Clase::kLogico:
      return logicos_[fila] != 0;
  }
  return {};
}

double Columna::Numero(std::size_t fila) const noexcept {
  if (clase_ == Clase::kDoble) return dobles_[fila];
  return clase_ == Clase::kEntero ? static_cast<double>(enteros_[fila]) : (logicos_[fila] != 0 ? -1.0 : 0.0);
}

void Columna::EscribirNulo(std::size_t fila) {
  if (EsNulo(fila)) return;
  Cambiar(fila);
  if (clase_ == Clase::kTexto) {
    indices_[fila] = 0;
  } else {
    presentes_[fila] = false;
  }
}

void Columna::Escribir(std::size_t fila, const Valor& valor) {
  if (std::holds_alternative<std::monostate>(valor)) return EscribirNulo(fila);
  if (clase_ == Clase::kTexto) {
    if (EsDecimal(tipo_)) ADoble(valor);
    if (const auto* texto = std::get_if<std::string_view>(&valor)) return EscribirTexto(fila, *texto);
    return EscribirTexto(fila, TextoDe(valor));
  }
  if (clase_ == Clase::kDoble) {
    dobles_[fila] = Ajustado(tipo_, ADoble(valor));
  } else if (clase_ == Clase::kEntero) {
    const std::int64_t numero = AEntero(valor);
    ExigirRango(tipo_, numero);
    enteros_[fila] = numero;
  } else {
    logicos_[fila] = ALogico(valor) ? 1 : 0;
  }
  ++version_;
  presentes_[fila] = true;
}

void Columna::Indexar() const {
  const std::size_t filas = indices_.size();
  if (indice_vigente_ && filas - indexadas_ <= 64 + indexadas_ / 8) return;
  inicios_.assign(textos_.Cantidad() + 2, 0);
  for (const std::uint32_t n : indices_) ++inicios_[n + 1];
  for (std::size_t n = 1; n < inicios_.size(); ++n) inicios_[n] += inicios_[n - 1];
  filas_por_texto_.resize(filas);
  auto lugar = inicios_;
  for (std::uint32_t fila = 0; fila < filas; ++fila) filas_por_texto_[lugar[indices_[fila]]++] = fila;
  indexadas_ = filas;
  indice_vigente_ = true;
}

void Columna::FilasDe(std::uint32_t texto, std::vector<std::uint32_t>& filas) const {
  Indexar();
  if (texto + 1 < inicios_.size()) {
    filas.insert(filas.end(), filas_por_texto_.begin() + inicios_[texto],
                 filas_por_texto_.begin() + inicios_[texto + 1]);
  }
  for (auto fila = static_cast<std::uint32_t>(indexadas_); fila < indices_.size(); ++fila) {
    if (indices_[fila] == texto) filas.push_back(fila);
  }
}

// --- DatosTabla ------------------------------------------------------------------------------------------------------

std::size_t DispersionSinCaso::operator()(std::string_view texto) const noexcept {
  std::size_t h = texto.size();
  for (const char c : texto) h = h * 31 + (static_cast<unsigned char>(c) | 0x20U);
  return h;
}

bool IgualdadSinCaso::operator()(std::string_view a, std::string_view b) const noexcept {
  if (a.size() != b.size()) return false;
  return std::memcmp(a.data(), b.data(), a.size()) == 0 || IgualSinCaso(a, b);
}

void DatosTabla::AgregarCampo(const Campo& campo, DetalleColumna detalle) {
  por_nombre_.emplace(campo.nombre, campos.size());
  campos.push_back(campo);
  detalles.push_back(std::move(detalle));
  columnas.emplace_back(campo.tipo);
}

void DatosTabla::AgregarFila() {
  if (filas >= std::numeric_limits<std::uint32_t>::max()) Lanzar(error::kDesborde, "Tabla");
  for (auto& columna : columnas) columna.AgregarNulo();
  ++filas;
}

void DatosTabla::Anotar(std::size_t fila, std::size_t campo) {
  const auto antes = [](const FilaPendiente& p, std::size_t f) { return p.fila < f; };
  const auto p = std::lower_bound(pendientes.begin(), pendientes.end(), fila, antes);
  if (p == pendientes.end() || p->fila != fila) return;
  const auto columna = static_cast<std::uint32_t>(campo);
  const auto lugar = std::lower_bound(p->puestas.begin(), p->puestas.end(), columna);
  if (lugar == p->puestas.end() || *lugar != columna) p->puestas.insert(lugar, columna);
}

void DatosTabla::Publicar() {
  publicadas = filas;
  pendientes.clear();
  originales.reset();
  borradas.reset();
}

std::unique_ptr<DatosTabla> DatosTabla::Aparte() const {
  auto aparte = std::make_unique<DatosTabla>();
  for (const auto& campo : campos) aparte->AgregarCampo(campo);
  return aparte;
}

int DatosTabla::Buscar(std::string_view nombre) const noexcept {
  const auto i = por_nombre_.find(nombre);
  return i == por_nombre_.end() ? -1 : static_cast<int>(i->second);
}

}  // namespace utr
