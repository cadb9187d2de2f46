#include "tables/Tabla.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "tables/DatosTabla.h"
#include "tables/Persistido.h"

namespace utr {
namespace {

struct Criterio {
  std::string_view campo;
  std::string valor;
};

std::string_view SinCorchetes(std::string_view campo) {
  if (campo.size() >= 2 && campo.front() == '[' && campo.back() == ']') return campo.substr(1, campo.size() - 2);
  return campo;
}

// The value of a comparison: in quotes, where a doubled one stands for one, or as it is. Nothing for a broken quote.
std::optional<std::string> LeerValor(std::string_view texto) {
  if (texto.empty() || texto.front() != '\'') return std::string(texto);
  if (texto.size() < 2 || texto.back() != '\'') return std::nullopt;
  texto = texto.substr(1, texto.size() - 2);
  std::string valor;
  for (std::size_t i = 0; i < texto.size(); ++i) {
    if (texto[i] == '\'' && (++i == texto.size() || texto[i] != '\'')) return std::nullopt;
    valor.push_back(texto[i]);
  }
  return valor;
}

Criterio LeerCriterio(std::string_view criterio) {
  const auto igual = criterio.find('=');
  if (igual == std::string_view::npos) Lanzar(error::kLlamada, "Tabla");
  const auto campo = SinCorchetes(Recortar(criterio.substr(0, igual)));
  auto valor = LeerValor(Recortar(criterio.substr(igual + 1)));
  if (campo.empty() || !valor) Lanzar(error::kLlamada, "Tabla");
  return {campo, std::move(*valor)};
}

// The place of each distinct text of a column in the ascending order of what `clave` makes of it, by number; null (0)
// comes first. Texts with equal keys share a place.
template <typename Clave>
std::vector<std::uint32_t> LugaresPor(const Diccionario& textos, Clave clave) {
  const auto n = static_cast<std::uint32_t>(textos.Cantidad());
  std::vector<decltype(clave(std::string_view{}))> claves(n + 1);
  for (std::uint32_t i = 1; i <= n; ++i) claves[i] = clave(textos.Texto(i));
  std::vector<std::uint32_t> orden(n);
  std::iota(orden.begin(), orden.end(), 1U);
  std::sort(orden.begin(), orden.end(), [&](std::uint32_t a, std::uint32_t b) { return claves[a] < claves[b]; });
  std::vector<std::uint32_t> lugares(n + 1, 0);
  std::uint32_t lugar = 0;
  for (std::size_t i = 0; i < orden.size(); ++i) {
    if (i == 0 || claves[orden[i - 1]] < claves[orden[i]]) ++lugar;
    lugares[orden[i]] = lugar;
  }
  return lugares;
}

// A decimal number as a key: most are told apart by their doubles, the others digit by digit.
struct ClaveDecimal {
  double cerca = 0;
  std::string_view texto;

  bool operator<(const ClaveDecimal& otra) const {
    if (cerca != otra.cerca) return cerca < otra.cerca;
    return texto != otra.texto && CompararNumeros(texto, otra.texto) < 0;
  }
};

std::vector<std::uint32_t> LugaresDeTextos(const Columna& columna) {
  const auto decimal = [](std::string_view texto) { return ClaveDecimal{LeerDoble(texto), texto}; };
  if (EsDecimal(columna.Tipo())) return LugaresPor(columna.Textos(), decimal);
  return LugaresPor(columna.Textos(), Minusculas);
}

// Appends the numbers of all texts behind number `desde` that hold this number.
void IgualesEnValor(const Diccionario& textos, std::uint32_t desde, double numero, std::string_view valor,
                    std::vector<std::uint32_t>& numeros) {
  for (std::uint32_t n = desde + 1; n <= textos.Cantidad(); ++n) {
    const auto texto = textos.Texto(n);
    if (LeerDoble(texto) == numero && CompararNumeros(texto, valor) == 0) numeros.push_back(n);
  }
}

}  // namespace

Tabla::Tabla() : datos_(std::make_shared<DatosTabla>()) {}
Tabla::Tabla(std::shared_ptr<DatosTabla> datos) : datos_(std::move(datos)) {}
Tabla::~Tabla() = default;
Tabla::Tabla(Tabla&&) noexcept = default;
Tabla& Tabla::operator=(Tabla&&) noexcept = default;

// --- Definition and life ---------------------------------------------------------------------------------------------

void Tabla::Append(std::string_view nombre, TipoCampo tipo, std::uint32_t tamano, unsigned atributos) {
  Campo campo;
  campo.nombre = nombre;
  campo.tipo = tipo;
  campo.tamano = tamano;
  campo.atributos = atributos;
  Append(campo);
}

void Tabla::Append(const Campo& campo) {
  if (Abierta()) Lanzar(error::kTablaAbierta, "Tabla");
  if (campo.nombre.empty() || datos_->Buscar(campo.nombre) >= 0) Lanzar(error::kLlamada, "Tabla");
  datos_->AgregarCampo(campo);
}

void Tabla::Open() {
  if (Abierta()) Lanzar(error::kTablaAbierta, "Tabla");
  estado_ = Estado::kAbierta;
  MoveFirst();
}

void Tabla::Open(const std::filesystem::path& ruta) {
  if (Abierta() || !datos_->campos.empty()) Lanzar(error::kTablaAbierta, "Tabla");
  datos_ = LeerPersistido(ruta);
  estado_ = Estado::kAbierta;
  MoveFirst();
}

void Tabla::Save(const std::filesystem::path& ruta, int formato) const {
  ExigirAbierta();
  if (formato != 1) Lanzar(error::kLlamada, "Tabla");
  EscribirPersistido(*datos_, ruta, false);
}

void Tabla::GuardarSobre(const std::filesystem::path& ruta) const {
  ExigirAbierta();
  EscribirPersistido(*datos_, ruta, true);
}

void Tabla::Close() noexcept {
  estado_ = Estado::kCerrada;
  datos_ = std::make_shared<DatosTabla>();
  filtro_.clear();
  filtrada_ = false;
  orden_.clear();
  campo_orden_ = -1;
  vista_.clear();
  fila_ = kNinguna;
}

std::shared_ptr<Tabla> Tabla::Clone() const {
  ExigirAbierta();
  std::shared_ptr<Tabla> clon(new Tabla(datos_));
  clon->Open();
  return clon;
}

// --- Fields ----------------------------------------------------------------------------------------------------------

std::size_t Tabla::FieldCount() const noexcept {
  return datos_->campos.size();
}

const Campo& Tabla::Field(std::size_t indice) const {
  ExigirCampo(indice);
  return datos_->campos[indice];
}

const Campo& Tabla::Field(std::string_view nombre) const {
  return datos_->campos[IndiceCampo(nombre)];
}

std::size_t Tabla::IndiceCampo(std::string_view nombre) const {
  const int indice = datos_->Buscar(nombre);
  if (indice < 0) {
    throw Error(error::kCampo, "Tabla", DescripcionDe(error::kCampo) + ": " + std::string(nombre));
  }
  return static_cast<std::size_t>(indice);
}

int Tabla::BuscarCampo(std::string_view nombre) const noexcept {
  return datos_->Buscar(nombre);
}

void Tabla::ExigirAbierta() const {
  if (!Abierta()) Lanzar(error::kTablaCerrada, "Tabla");
}

void Tabla::ExigirCampo(std::size_t campo) const {
  if (campo >= datos_->campos.size()) Lanzar(error::kCampo, "Tabla");
}

std::size_t Tabla::ExigirFila() const {
  ExigirAbierta();
  if (fila_ == kNinguna) Lanzar(error::kSinRegistro, "Tabla");
  return fila_;
}

// --- Walking ---------------------------------------------------------------------------------------------------------

// Makes the row at that place of the view current, or none when it lies behind the last one.
void Tabla::Ubicar(std::size_t posicion) {
  posicion_ = posicion;
  actual_fuera_ = false;
  if (TieneVista()) {
    fila_ = posicion < vista_.size() ? vista_[posicion] : kNinguna;
  } else {
    fila_ = posicion < datos_->filas ? posicion : kNinguna;
  }
}

void Tabla::MoveFirst() {
  ExigirAbierta();
  Sincronizar();
  Ubicar(0);
}

void Tabla::MoveNext() {
  const std::size_t actual = ExigirFila();
  if (!TieneVista()) return Ubicar(actual + 1);
  if (filtrada_) Actualizar(igualdad_);
  std::size_t siguiente = actual_fuera_ ? posicion_ : posicion_ + 1;
  // Rows that a change took out of the filter since the view was made are walked over.
  while (siguiente < vista_.size() && filtrada_ && !Coincide(igualdad_, vista_[siguiente])) ++siguiente;
  if (siguiente >= vista_.size() && filas_vista_ < datos_->filas) {
    Sincronizar();  // rows were added since
    siguiente = actual_fuera_ ? posicion_ : posicion_ + 1;
  }
  Ubicar(siguiente);
}

void Tabla::MoveLast() {
  const std::size_t cuantas = RecordCount();
  Ubicar(cuantas == 0 ? 0 : cuantas - 1);
}

bool Tabla::Eof() const noexcept {
  return fila_ == kNinguna;
}

bool Tabla::Bof() const {
  if (!TieneVista()) return datos_->filas == 0;
  Sincronizar();
  return vista_.empty();
}

std::size_t Tabla::RecordCount() const {
  ExigirAbierta();
  if (!TieneVista()) return datos_->filas;
  Sincronizar();
  return vista_.size();
}

void Tabla::IrAFila(std::size_t fila) {
  ExigirAbierta();
  if (fila >= datos_->filas) Lanzar(error::kSinRegistro, "Tabla");
  if (!TieneVista()) return Ubicar(fila);
  Sincronizar();
  const auto lugar = std::find(vista_.begin(), vista_.end(), static_cast<std::uint32_t>(fila));
  Ubicar(static_cast<std::size_t>(lugar - vista_.begin()));
  fila_ = fila;
  actual_fuera_ = lugar == vista_.end();
}

// --- Values ----------------------------------------------------------------------------------------------------------

Valor Tabla::Value(std::size_t campo) const {
  ExigirCampo(campo);
  return datos_->columnas[campo].Leer(ExigirFila());
}

Valor Tabla::Value(std::string_view campo) const {
  return Value(IndiceCampo(campo));
}
std::string Tabla::Texto(std::size_t campo) const {
  return TextoDe(Value(campo));
}
std::string Tabla::Texto(std::string_view campo) const {
  return TextoDe(Value(IndiceCampo(campo)));
}
bool Tabla::EsNulo(std::string_view campo) const {
  return EsNulo(IndiceCampo(campo));
}

bool Tabla::EsNulo(std::size_t campo) const {
  ExigirCampo(campo);
  return datos_->columnas[campo].EsNulo(ExigirFila());
}

void Tabla::Set(std::size_t campo, const Valor& valor) {
  ExigirCampo(campo);
  const std::size_t fila = ExigirFila();
  datos_->columnas[campo].Escribir(fila, valor);
  if (!datos_->pendientes.empty()) datos_->Anotar(fila, campo);
}

void Tabla::Set(std::string_view campo, const Valor& valor) {
  Set(IndiceCampo(campo), valor);
}

void Tabla::SetIndice(std::size_t campo, std::uint32_t indice) {
  const std::size_t fila = ExigirFila();
  if (indice > Textos(campo).Cantidad()) Lanzar(error::kLlamada, "Tabla");
  datos_->columnas[campo].EscribirIndice(fila, indice);
  if (!datos_->pendientes.empty()) datos_->Anotar(fila, campo);
}

// --- Change ----------------------------------------------------------------------------------------------------------

void Tabla::AddNew() {
  ExigirAbierta();
  datos_->AgregarFila();
  fila_ = datos_->filas - 1;
  posicion_ = vista_.size();
  actual_fuera_ = TieneVista();
}

void Tabla::UpdateBatch() {
  ExigirAbierta();
  datos_->Publicar();
}

std::size_t Tabla::Pendientes() const noexcept {
  const auto contar = [](const auto& aparte) { return aparte ? aparte->filas : 0; };
  return datos_->filas - datos_->publicadas + contar(datos_->originales) + contar(datos_->borradas);
}

void Tabla::Reservar(std::size_t filas) {
  for (auto& columna : datos_->columnas) columna.Reservar(filas);
}

// --- Filter, sort, find ----------------------------------------------------------------------------------------------

Tabla::Igualdad Tabla::Preparar(std::string_view criterio) const {
  auto [campo, valor] = LeerCriterio(criterio);
  Igualdad igualdad;
  igualdad.campo = IndiceCampo(campo);
  igualdad.valor = std::move(valor);
  const Columna& columna = datos_->columnas[igualdad.campo];
  if (columna.DeClase() == Clase::kTexto && !EsDecimal(columna.Tipo())) {
    Actualizar(igualdad);
  } else if (columna.DeClase() == Clase::kLogico && IgualSinCaso(igualdad.valor, "True")) {
    igualdad.numero = -1;
  } else if (columna.DeClase() == Clase::kLogico && IgualSinCaso(igualdad.valor, "False")) {
    igualdad.numero = 0;
  } else if (columna.DeClase() == Clase::kEntero) {
    const auto entero = EnteroExacto(igualdad.valor);
    igualdad.entero = entero.value_or(0);
    igualdad.vacia = !entero;
  } else if (EsNumerico(igualdad.valor)) {
    igualdad.numero = LeerDoble(igualdad.valor);
    if (columna.DeClase() == Clase::kLogico && igualdad.numero != 0) igualdad.numero = -1;
    Actualizar(igualdad);
  } else {
    igualdad.vacia = true;
  }
  return igualdad;
}

// Only texts that are new since the last time are looked at; the equal ones stay in ascending order.
void Tabla::Actualizar(Igualdad& igualdad) const {
  Columna& columna = datos_->columnas[igualdad.campo];
  if (columna.DeClase() != Clase::kTexto || igualdad.vacia) return;
  Diccionario& textos = columna.Textos();
  const auto desde = static_cast<std::uint32_t>(igualdad.distintos);
  igualdad.distintos = textos.Cantidad();
  if (desde == igualdad.distintos) return;
  if (EsDecimal(columna.Tipo())) return IgualesEnValor(textos, desde, igualdad.numero, igualdad.valor, igualdad.textos);
  textos.IgualesSinCaso(igualdad.valor, desde, igualdad.textos);
}

bool Tabla::Coincide(const Igualdad& igualdad, std::size_t fila) const {
  const Columna& columna = datos_->columnas[igualdad.campo];
  if (igualdad.vacia || columna.EsNulo(fila)) return false;
  if (columna.DeClase() == Clase::kEntero) return columna.Entero(fila) == igualdad.entero;
  if (columna.DeClase() != Clase::kTexto) return columna.Numero(fila) == igualdad.numero;
  const std::uint32_t texto = columna.Indice(fila);
  return std::binary_search(igualdad.textos.begin(), igualdad.textos.end(), texto);
}

// Makes the view anew from filter and sort; the cursor is not looked at. Returns the place that row `fila` has in it or
// would have; with kNinguna, nothing of use.
std::size_t Tabla::RehacerVista(std::size_t fila) const {
  vista_.clear();
  if (!filtrada_) {
    vista_.resize(datos_->filas);
    std::iota(vista_.begin(), vista_.end(), 0U);
  } else if (datos_->columnas[igualdad_.campo].DeClase() == Clase::kTexto) {
    Actualizar(igualdad_);
    for (const std::uint32_t texto : igualdad_.textos) datos_->columnas[igualdad_.campo].FilasDe(texto, vista_);
    if (igualdad_.textos.size() > 1) std::sort(vista_.begin(), vista_.end());
  } else {
    for (std::uint32_t i = 0; i < datos_->filas; ++i) {
      if (Coincide(igualdad_, i)) vista_.push_back(i);
    }
  }
  filas_vista_ = datos_->filas;
  version_vista_ = filtrada_ ? datos_->columnas[igualdad_.campo].Version() : 0;
  return OrdenarVista(fila);
}

// Orders the rows of a view that stand as they were added. A row that isn't among them is put in for that long.
std::size_t Tabla::OrdenarVista(std::size_t fila) const {
  const auto clave = static_cast<std::uint32_t>(fila);
  const auto lugar = fila == kNinguna ? vista_.end() : std::lower_bound(vista_.begin(), vista_.end(), clave);
  // All rows of a filter on the field of the order are equal in it.
  const bool ordenar = campo_orden_ >= 0 && !(filtrada_ && igualdad_.campo == static_cast<std::size_t>(campo_orden_));
  if (!ordenar) return static_cast<std::size_t>(lugar - vista_.begin());
  const bool ajena = fila != kNinguna && (lugar == vista_.end() || *lugar != clave);
  if (ajena) vista_.insert(lugar, clave);
  OrdenarPorValor();
  const auto final = std::find(vista_.begin(), vista_.end(), clave);
  const auto posicion = static_cast<std::size_t>(final - vista_.begin());
  if (ajena) vista_.erase(final);
  return posicion;
}

void Tabla::OrdenarPorValor() const {
  const Columna& columna = datos_->columnas[static_cast<std::size_t>(campo_orden_)];
  const auto ordenar = [&](auto&& menor) {
    if (descendente_) {
      std::stable_sort(vista_.begin(), vista_.end(), [&](auto a, auto b) { return menor(b, a); });
    } else {
      std::stable_sort(vista_.begin(), vista_.end(), menor);
    }
  };
  if (columna.DeClase() == Clase::kTexto) {
    const auto lugares = LugaresDeTextos(columna);
    ordenar([&](std::uint32_t a, std::uint32_t b) { return lugares[columna.Indice(a)] < lugares[columna.Indice(b)]; });
  } else {
    // A true is -1 to an operator of numbers, but false comes ahead of true in a list.
    const double signo = columna.DeClase() == Clase::kLogico ? -1 : 1;
    const bool entera = columna.DeClase() == Clase::kEntero;
    ordenar([&](std::uint32_t a, std::uint32_t b) {
      if (columna.EsNulo(a) || columna.EsNulo(b)) return columna.EsNulo(a) && !columna.EsNulo(b);
      if (entera) return columna.Entero(a) < columna.Entero(b);
      return columna.Numero(a) * signo < columna.Numero(b) * signo;
    });
  }
}

// Brings the view up to date with changes of rows, keeping the cursor beside its neighbours: a current row that left
// waits ahead of the row that follows it.
void Tabla::Sincronizar() const {
  if (!TieneVista()) return;
  const bool cambiada = filtrada_ && version_vista_ != datos_->columnas[igualdad_.campo].Version();
  if (!cambiada && filas_vista_ == datos_->filas) return;
  posicion_ = RehacerVista(fila_);
  actual_fuera_ = fila_ != kNinguna && (posicion_ >= vista_.size() || vista_[posicion_] != fila_);
}

void Tabla::Filter(std::string_view criterio) {
  ExigirAbierta();
  if (Recortar(criterio).empty()) {
    filtrada_ = false;
    filtro_.clear();
  } else {
    igualdad_ = Preparar(criterio);
    filtrada_ = true;
    filtro_ = criterio;
  }
  if (TieneVista()) {
    RehacerVista(kNinguna);
  } else {
    vista_ = std::vector<std::uint32_t>();  // "{}" would keep the room
  }
  Ubicar(0);
}

void Tabla::Sort(std::string_view orden) {
  ExigirAbierta();
  const auto texto = Recortar(orden);
  if (texto.empty()) {
    campo_orden_ = -1;
  } else {
    auto nombre = texto;
    const auto blanco = texto.rfind(' ');
    const auto sentido = blanco == std::string_view::npos ? std::string_view{} : texto.substr(blanco + 1);
    const bool desc = IgualSinCaso(sentido, "DESC");
    if (desc || IgualSinCaso(sentido, "ASC")) nombre = Recortar(texto.substr(0, blanco));
    campo_orden_ = static_cast<int>(IndiceCampo(SinCorchetes(nombre)));
    descendente_ = desc;
  }
  orden_ = texto;
  if (TieneVista()) {
    RehacerVista(kNinguna);
  } else {
    vista_ = std::vector<std::uint32_t>();  // "{}" would keep the room
  }
  Ubicar(0);
}

void Tabla::Find(std::string_view criterio) {
  ExigirAbierta();
  const Igualdad igualdad = Preparar(criterio);
  while (!Eof() && !Coincide(igualdad, fila_)) MoveNext();
}

// --- Views -----------------------------------------------------------------------------------------------------------

FilasTabla Tabla::Filas() const {
  return FilasTabla(*this);
}

TextosColumna Tabla::Textos(std::size_t campo) const {
  ExigirCampo(campo);
  if (datos_->columnas[campo].DeClase() != Clase::kTexto) Lanzar(error::kLlamada, "Tabla");
  return {*datos_, campo};
}

std::size_t FilasTabla::EnVista(std::size_t posicion) const {
  if (posicion >= tabla_.RecordCount()) Lanzar(error::kSinRegistro, "Tabla");
  return tabla_.TieneVista() ? tabla_.vista_[posicion] : posicion;
}

std::size_t FilasTabla::Actual() const {
  return tabla_.ExigirFila();
}

Valor FilasTabla::Value(std::size_t fila, std::size_t campo) const {
  tabla_.ExigirAbierta();
  tabla_.ExigirCampo(campo);
  if (fila >= tabla_.datos_->filas) Lanzar(error::kSinRegistro, "Tabla");
  return tabla_.datos_->columnas[campo].Leer(fila);
}

std::string FilasTabla::Texto(std::size_t fila, std::size_t campo) const {
  return TextoDe(Value(fila, campo));
}

std::size_t TextosColumna::Cantidad() const noexcept {
  return datos_.columnas[campo_].Textos().Cantidad();
}

std::string_view TextosColumna::Texto(std::size_t indice) const {
  if (indice == 0 || indice > Cantidad()) Lanzar(error::kLlamada, "Tabla");
  return datos_.columnas[campo_].Textos().Texto(static_cast<std::uint32_t>(indice));
}

std::uint32_t TextosColumna::De(std::size_t fila) const {
  if (fila >= datos_.filas) Lanzar(error::kSinRegistro, "Tabla");
  return datos_.columnas[campo_].Indice(fila);
}

std::span<const std::uint32_t> TextosColumna::Indices(std::vector<std::uint32_t>& apoyo) const {
  return datos_.columnas[campo_].Indices(datos_.filas, apoyo);
}

std::size_t Tabla::Memoria() const noexcept {
  std::size_t bytes = vista_.capacity() * sizeof(std::uint32_t);
  for (const auto& columna : datos_->columnas) bytes += columna.Memoria();
  return bytes;
}

}  // namespace utr
