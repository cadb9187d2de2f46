#include "lists/ListaTabla.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "base/Error.h"
#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

namespace {

constexpr std::string_view kGuion = "-";

bool EsCero(std::string_view texto) {
  return EsNumerico(texto) && LeerDoble(texto) == 0;
}

// What a column shows for a value that is there.
std::string Presentar(const ColumnaLista& columna, std::string_view texto) {
  switch (columna.presentacion) {
    case Presentacion::kNoSi:
      return EsCero(texto) ? "No" : "Si";
    case Presentacion::kFuncion:
      return columna.funcion(texto);
    case Presentacion::kGuion:
      return std::string(kGuion);
    case Presentacion::kTalCual:
    case Presentacion::kGuionSiNulo:
      break;
  }
  return std::string(texto);
}

std::string PresentarNulo(const ColumnaLista& columna) {
  return columna.presentacion == Presentacion::kGuionSiNulo ? std::string(kGuion) : Presentar(columna, "");
}

bool SeMuestraTalCual(const ColumnaLista& columna) {
  return columna.presentacion == Presentacion::kTalCual || columna.presentacion == Presentacion::kGuionSiNulo;
}

// The number of a text of a few digits with a point among them or none, which nearly all are. Both of its parts are
// held exactly, so that the quotient is the number that any other reading of the text gives.
std::optional<double> LeerLlano(std::string_view texto) {
  constexpr std::size_t kCifras = 15;
  static constexpr std::array<double, kCifras + 1> kPotencias = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const bool negativo = texto.starts_with('-');
  if (negativo) texto.remove_prefix(1);
  if (texto.empty() || texto.size() > kCifras) return std::nullopt;
  std::int64_t cifras = 0;
  std::size_t punto = texto.size();
  for (std::size_t i = 0; i < texto.size(); ++i) {
    const auto cifra = static_cast<unsigned char>(texto[i] - '0');
    if (cifra <= 9) {
      cifras = cifras * 10 + cifra;
    } else if (texto[i] == '.' && punto == texto.size() && i > 0 && i + 1 < texto.size()) {
      punto = i;
    } else {
      return std::nullopt;
    }
  }
  const std::size_t decimales = punto == texto.size() ? 0 : texto.size() - punto - 1;
  const double valor = static_cast<double>(cifras) / kPotencias[decimales];
  return negativo ? -valor : valor;
}

std::optional<double> LeerNumero(std::string_view texto) {
  if (const auto llano = LeerLlano(texto)) return llano;
  return EsNumerico(texto) ? std::optional(LeerDoble(texto)) : std::nullopt;
}

// A key that orders as the number of a text does: 0, far below all others, where there is none.
std::uint64_t ClaveDeOrden(std::string_view texto, ClaseOrden clase) {
  std::optional<double> valor;
  if (clase == ClaseOrden::kNumero) {
    valor = LeerNumero(texto);
  } else if (const auto fecha = LeerFecha(texto)) {
    valor = static_cast<double>(Segundos(*fecha));
  }
  if (!valor) return 0;
  // The bits of a double order as the number does once those of a negative one are turned over.
  constexpr std::uint64_t kSigno = std::uint64_t{1} << 63;
  const auto bits = std::bit_cast<std::uint64_t>(*valor + 0.0);
  return (bits & kSigno) != 0 ? ~bits : bits | kSigno;
}

struct ClaveNumero {
  std::uint64_t clave;
  std::uint32_t indice;
};

struct ClaveTexto {
  std::string clave;
  std::uint32_t indice;

  bool operator<(const ClaveTexto& otra) const { return clave < otra.clave; }
};

// Sorts by distributing over the digits of the keys, the lowest first. Digits that all keys share cost one look.
void OrdenarClaves(std::vector<ClaveNumero>& claves) {
  constexpr unsigned kBits = 11;
  constexpr std::size_t kDigitos = std::size_t{1} << kBits;
  std::vector<ClaveNumero> otras(claves.size());
  for (unsigned bit = 0; bit < 64; bit += kBits) {
    const auto digito = [bit](const ClaveNumero& clave) { return (clave.clave >> bit) & (kDigitos - 1); };
    std::array<std::uint32_t, kDigitos + 1> lugares{};
    for (const ClaveNumero& clave : claves) ++lugares[digito(clave) + 1];
    if (std::find(lugares.begin(), lugares.end(), claves.size()) != lugares.end()) continue;
    std::partial_sum(lugares.begin(), lugares.end(), lugares.begin());
    for (const ClaveNumero& clave : claves) otras[lugares[digito(clave)]++] = clave;
    claves.swap(otras);
  }
}

// Texts without a value have the small keys, far below those of all numbers.
bool EsDeValor(const ClaveNumero& clave) {
  return clave.clave > std::numeric_limits<std::uint32_t>::max();
}

// Sorts numbers that a double doesn't tell apart, which stand together, by all their digits.
template <typename Texto>
void OrdenarIguales(std::vector<ClaveNumero>& claves, Texto texto) {
  for (auto desde = claves.begin(); desde != claves.end();) {
    const auto hasta = std::find_if(desde, claves.end(), [&](const auto& otra) { return otra.clave != desde->clave; });
    if (hasta - desde > 1 && EsDeValor(*desde)) {
      std::sort(desde, hasta, [&](const auto& a, const auto& b) { return CompararNumeros(texto(a), texto(b)) < 0; });
    }
    desde = hasta;
  }
}

// The place of each index among sorted keys; equal keys share it.
template <typename Clave, typename Igual>
std::vector<std::uint32_t> Rangos(const std::vector<Clave>& ordenadas, Igual igual) {
  std::vector<std::uint32_t> rangos(ordenadas.size());
  std::uint32_t rango = 0;
  for (std::size_t i = 0; i < ordenadas.size(); ++i) {
    if (i > 0 && !igual(ordenadas[i - 1], ordenadas[i])) ++rango;
    rangos[ordenadas[i].indice] = rango;
  }
  return rangos;
}

// A search that doesn't mind case, quick where the case needn't be looked at.
class Busqueda {
 public:
  explicit Busqueda(std::string_view texto) : texto_(Minusculas(texto)), con_letras_(texto_ != Mayusculas(texto)) {}

  bool EstaEn(std::string_view donde) const {
    if (donde.find(texto_) != std::string_view::npos) return true;
    return con_letras_ && Minusculas(donde).find(texto_) != std::string::npos;
  }

 private:
  std::string texto_;
  bool con_letras_;
};

}  // namespace

ListaTabla::ListaTabla(Columnas columnas) : columnas_(std::move(columnas)) {}

void ListaTabla::Definir(Columnas columnas) {
  Vaciar();
  columnas_ = std::move(columnas);
}

void ListaTabla::Mostrar(TablaPtr tabla) {
  Vaciar();
  if (!tabla || !tabla->Abierta()) return;
  std::vector<Fuente> fuentes;
  for (const ColumnaLista& columna : columnas_) fuentes.push_back(PrepararColumna(*tabla, columna));
  fuentes_ = std::move(fuentes);
  total_ = tabla->RecordCount();
  tabla_ = std::move(tabla);
}

void ListaTabla::Vaciar() noexcept {
  tabla_.reset();
  fuentes_.clear();
  total_ = 0;
  filtro_.clear();
  orden_.reset();
  con_vista_ = false;
  vista_.clear();
}

ListaTabla::Fuente ListaTabla::PrepararColumna(const Tabla& tabla, const ColumnaLista& columna) const {
  Fuente fuente;
  if (columna.presentacion == Presentacion::kGuion) return fuente;
  const std::size_t campo =
      columna.lugar >= 0 ? static_cast<std::size_t>(columna.lugar) : tabla.IndiceCampo(columna.campo);
  fuente.campo = static_cast<int>(campo);
  fuente.de_texto = ClaseDe(tabla.Field(campo).tipo) == Clase::kTexto;
  fuente.directa = fuente.de_texto && SeMuestraTalCual(columna);
  if (fuente.directa) return fuente;
  fuente.textos.push_back(PresentarNulo(columna));
  if (fuente.de_texto) {
    const TextosColumna textos = tabla.Textos(campo);
    for (std::size_t i = 1; i <= textos.Cantidad(); ++i) fuente.textos.push_back(Presentar(columna, textos.Texto(i)));
    return fuente;
  }
  std::unordered_map<std::string, std::uint32_t> vistos;
  for (std::size_t posicion = 0; posicion < tabla.RecordCount(); ++posicion) {
    const std::size_t fila = tabla.Filas().EnVista(posicion);
    if (fila >= fuente.indices.size()) fuente.indices.resize(fila + 1, 0);
    const Valor valor = tabla.Filas().Value(fila, campo);
    if (std::holds_alternative<std::monostate>(valor)) continue;
    const auto [visto, nuevo] = vistos.try_emplace(TextoDe(valor), static_cast<std::uint32_t>(fuente.textos.size()));
    if (nuevo) fuente.textos.push_back(Presentar(columna, visto->first));
    fuente.indices[fila] = visto->second;
  }
  return fuente;
}

std::size_t ListaTabla::Fila(std::size_t posicion) const {
  if (posicion >= Cantidad()) Lanzar(error::kLlamada, "ListaTabla");
  return con_vista_ ? vista_[posicion] : tabla_->Filas().EnVista(posicion);
}

std::size_t ListaTabla::Indices(const Fuente& fuente) const {
  if (fuente.campo < 0) return 1;
  return fuente.directa ? tabla_->Textos(static_cast<std::size_t>(fuente.campo)).Cantidad() + 1 : fuente.textos.size();
}

std::size_t ListaTabla::IndiceDe(std::size_t fila, const Fuente& fuente) const {
  if (fuente.campo < 0) return 0;
  return fuente.de_texto ? tabla_->Textos(static_cast<std::size_t>(fuente.campo)).De(fila) : fuente.indices[fila];
}

// IndiceDe of every row, of a column that reads the table.
std::span<const std::uint32_t> ListaTabla::IndicesPorFila(const Fuente& fuente,
                                                          std::vector<std::uint32_t>& apoyo) const {
  return fuente.de_texto ? tabla_->Textos(static_cast<std::size_t>(fuente.campo)).Indices(apoyo) : fuente.indices;
}

std::string_view ListaTabla::TextoDeIndice(std::size_t indice, std::size_t columna) const {
  const Fuente& fuente = fuentes_[columna];
  if (fuente.campo < 0) return kGuion;
  if (!fuente.directa) return fuente.textos[indice];
  if (indice > 0) return tabla_->Textos(static_cast<std::size_t>(fuente.campo)).Texto(indice);
  return columnas_[columna].presentacion == Presentacion::kGuionSiNulo ? kGuion : std::string_view{};
}

std::string_view ListaTabla::Mostrado(std::size_t fila, std::size_t columna) const {
  return TextoDeIndice(IndiceDe(fila, fuentes_[columna]), columna);
}

std::string ListaTabla::Texto(std::size_t posicion, std::size_t columna) const {
  return std::string(Mostrado(Fila(posicion), columna));
}

void ListaTabla::Agregar(std::string& salida, std::size_t posicion, std::size_t columna) const {
  salida += Mostrado(Fila(posicion), columna);
}

std::size_t ListaTabla::IndiceDeTexto(std::size_t posicion, std::size_t columna) const {
  return IndiceDe(Fila(posicion), fuentes_[columna]);
}

std::vector<std::string_view> ListaTabla::TextosDistintos(std::size_t columna) const {
  std::vector<std::string_view> textos;
  if (!tabla_) return textos;
  const Fuente& fuente = fuentes_[columna];
  const std::size_t cuantos = Indices(fuente);
  textos.reserve(cuantos);
  if (!fuente.directa) {
    for (std::size_t i = 0; i < cuantos; ++i) textos.push_back(TextoDeIndice(i, columna));
    return textos;
  }
  textos.push_back(TextoDeIndice(0, columna));
  const TextosColumna de_la_tabla = tabla_->Textos(static_cast<std::size_t>(fuente.campo));
  for (std::size_t i = 1; i < cuantos; ++i) textos.push_back(de_la_tabla.Texto(i));
  return textos;
}

void ListaTabla::Filtrar(std::string_view texto) {
  if (texto == filtro_) return;
  filtro_ = texto;
  RehacerVista();
}

void ListaTabla::Ordenar(const OrdenLista& orden) {
  if (orden.columna >= columnas_.size()) Lanzar(error::kLlamada, "ListaTabla");
  orden_ = orden;
  RehacerVista();
}

void ListaTabla::QuitarOrden() {
  orden_.reset();
  RehacerVista();
}

void ListaTabla::RehacerVista() {
  vista_.clear();
  con_vista_ = tabla_ && (!filtro_.empty() || orden_);
  if (!con_vista_) return;
  vista_.resize(total_);
  const FilasTabla filas = tabla_->Filas();
  for (std::size_t i = 0; i < total_; ++i) vista_[i] = static_cast<std::uint32_t>(filas.EnVista(i));
  if (!filtro_.empty()) DejarLasQueContienen(vista_);
  if (orden_) OrdenarFilas(vista_);
}

void ListaTabla::DejarLasQueContienen(std::vector<std::uint32_t>& filas) const {
  const Busqueda busqueda(filtro_);
  std::vector<std::pair<const Fuente*, std::vector<bool>>> hallados;
  for (std::size_t columna = 0; columna < fuentes_.size(); ++columna) {
    std::vector<bool> esta(Indices(fuentes_[columna]));
    for (std::size_t i = 0; i < esta.size(); ++i) esta[i] = busqueda.EstaEn(TextoDeIndice(i, columna));
    if (std::find(esta.begin(), esta.end(), true) != esta.end())
      hallados.emplace_back(&fuentes_[columna], std::move(esta));
  }
  std::erase_if(filas, [&](std::uint32_t fila) {
    return std::none_of(hallados.begin(), hallados.end(),
                        [&](const auto& hallado) { return hallado.second[IndiceDe(fila, *hallado.first)]; });
  });
}

std::vector<std::uint32_t> ListaTabla::RangosDe(std::size_t columna, bool como_texto) const {
  const ClaseOrden clase = como_texto ? ClaseOrden::kTexto : columnas_[columna].orden;
  return clase == ClaseOrden::kTexto ? RangosDeTexto(columna) : RangosDeValor(columna, clase);
}

std::vector<std::uint32_t> ListaTabla::RangosDeTexto(std::size_t columna) const {
  const std::size_t cuantos = Indices(fuentes_[columna]);
  std::vector<ClaveTexto> claves;
  claves.reserve(cuantos);
  for (std::uint32_t i = 0; i < cuantos; ++i) claves.push_back({Minusculas(TextoDeIndice(i, columna)), i});
  std::sort(claves.begin(), claves.end());
  return Rangos(claves, [](const auto& a, const auto& b) { return a.clave == b.clave; });
}

std::vector<std::uint32_t> ListaTabla::RangosDeValor(std::size_t columna, ClaseOrden clase) const {
  const std::size_t cuantos = Indices(fuentes_[columna]);
  std::vector<ClaveNumero> claves;
  std::vector<ClaveTexto> sin_valor;
  claves.reserve(cuantos);
  for (std::uint32_t i = 0; i < cuantos; ++i) {
    const std::string_view texto = TextoDeIndice(i, columna);
    claves.push_back({ClaveDeOrden(texto, clase), i});
    if (claves.back().clave == 0) sin_valor.push_back({Minusculas(texto), i});
  }
  // The keys of numbers lie far above the few that order these.
  std::sort(sin_valor.begin(), sin_valor.end());
  for (std::size_t i = 1; i < sin_valor.size(); ++i) {
    const std::uint64_t anterior = claves[sin_valor[i - 1].indice].clave;
    claves[sin_valor[i].indice].clave = anterior + (sin_valor[i].clave == sin_valor[i - 1].clave ? 0 : 1);
  }
  OrdenarClaves(claves);
  const auto texto = [&](const ClaveNumero& clave) { return TextoDeIndice(clave.indice, columna); };
  if (clase == ClaseOrden::kNumero) OrdenarIguales(claves, texto);
  return Rangos(claves, [&](const auto& a, const auto& b) {
    if (a.clave != b.clave) return false;
    return clase != ClaseOrden::kNumero || !EsDeValor(a) || CompararNumeros(texto(a), texto(b)) == 0;
  });
}

// By the times of equal dates first, since the order by dates keeps that of equal ones.
void ListaTabla::OrdenarFilas(std::vector<std::uint32_t>& filas) const {
  const std::size_t siguiente = orden_->columna + 1;
  const bool de_fechas = !orden_->como_texto && columnas_[orden_->columna].orden == ClaseOrden::kFecha;
  if (de_fechas && siguiente < columnas_.size() && columnas_[siguiente].orden == ClaseOrden::kHora)
    Distribuir(filas, siguiente, false);
  Distribuir(filas, orden_->columna, orden_->como_texto);
}

// Distributes the rows by the rank of their text, which keeps the order of equal ones in both directions.
void ListaTabla::Distribuir(std::vector<std::uint32_t>& filas, std::size_t columna, bool como_texto) const {
  const Fuente& fuente = fuentes_[columna];
  if (fuente.campo < 0) return;  // the same text in all of them
  std::vector<std::uint32_t> apoyo;
  const auto indices = IndicesPorFila(fuente, apoyo);
  const auto rangos = RangosDe(columna, como_texto);
  const auto ultimo = static_cast<std::uint32_t>(rangos.size() - 1);
  const auto rango_de = [&](std::uint32_t fila) {
    const std::uint32_t rango = rangos[indices[fila]];
    return orden_->descendente ? ultimo - rango : rango;
  };
  std::vector<std::uint32_t> rango_de_fila(filas.size());
  std::vector<std::uint32_t> lugares(rangos.size() + 1, 0);
  for (std::size_t i = 0; i < filas.size(); ++i) ++lugares[(rango_de_fila[i] = rango_de(filas[i])) + 1];
  std::partial_sum(lugares.begin(), lugares.end(), lugares.begin());
  std::vector<std::uint32_t> ordenadas(filas.size());
  for (std::size_t i = 0; i < filas.size(); ++i) ordenadas[lugares[rango_de_fila[i]]++] = filas[i];
  filas = std::move(ordenadas);
}

std::string ListaTabla::TextoConTitulos(std::span<const std::size_t> posiciones) const {
  if (posiciones.empty()) return {};
  std::vector<std::string> titulos;
  for (const ColumnaLista& columna : columnas_) titulos.push_back(columna.titulo);
  return Unir(titulos, "\t") + '\n' + TextoDeFilas(posiciones);
}

std::string ListaTabla::TextoDeFilas(std::span<const std::size_t> posiciones) const {
  std::string texto;
  bool primera = true;
  for (const std::size_t posicion : posiciones) {
    if (!std::exchange(primera, false)) texto += '\n';
    for (std::size_t columna = 0; columna < columnas_.size(); ++columna) {
      if (columna > 0) texto += '\t';
      Agregar(texto, posicion, columna);
    }
  }
  return texto;
}

}  // namespace utr
