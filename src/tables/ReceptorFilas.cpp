#include "tables/ReceptorFilas.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/Error.h"
#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "tables/Persistido.h"

namespace utr {
namespace {

constexpr std::string_view kBlancos = " \t\r\n";

bool EsBinario(TipoCampo tipo) {
  return DescripcionDeTipo(tipo).dt == "bin.hex";
}

bool EsTextoLibre(TipoCampo tipo) {
  const auto& dt = DescripcionDeTipo(tipo).dt;
  return dt == "string" || dt == "date" || dt == "time" || dt == "uuid";
}

// Dates as "2001-02-03T04:05:06".
std::string FechaCanonica(std::string_view texto) {
  std::string t(Recortar(texto));
  if (!t.empty() && t.back() == 'Z') t.pop_back();
  const auto corte = t.find_first_of("T ");
  std::string dia = t.substr(0, corte);
  std::string hora = corte == std::string::npos ? "" : t.substr(corte + 1);
  if (dia.find(':') != std::string::npos) {
    hora = dia;
    dia = "1899-12-30";
  }
  if (hora.empty()) hora = "00:00:00";
  const auto punto = hora.find('.');
  const bool con_fraccion = punto == std::string::npos || hora.find_first_not_of("0123456789", punto + 1) == hora.npos;
  if (dia.empty() || !con_fraccion || !EsFecha(dia + " " + hora.substr(0, punto))) Lanzar(error::kTipos, "Tabla");
  return dia + "T" + hora;
}

// The exact text of a type that is held as text but is neither free text nor bytes: dates, and decimal numbers without
// grouping.
std::string Canonico(TipoCampo tipo, std::string_view texto) {
  if (!EsDecimal(tipo)) return FechaCanonica(texto);
  if (!EsNumerico(texto)) Lanzar(error::kTipos, "Tabla");
  return Reemplazar(Recortar(texto), ",", "");
}

}  // namespace

ReceptorFilas::ReceptorFilas(DatosTabla& datos, std::vector<ColumnaEntrada> columnas)
    : datos_(datos), columnas_(std::move(columnas)), visibles_(datos) {
  for (std::size_t i = 0; i < columnas_.size(); ++i) {
    const TipoCampo tipo = columnas_[i].campo.tipo;
    libres_.push_back(ClaseDe(tipo) == Clase::kTexto && EsTextoLibre(tipo));
    por_nombre_.emplace(columnas_[i].detalle.nombre_xml, i);
    sin_caso_.emplace(columnas_[i].detalle.nombre_xml, i);
  }
}

void ReceptorFilas::Llana(const FilaLeida& fila) {
  Agregar(visibles_, fila);
}

void ReceptorFilas::Cambiada(const FilaLeida& original, const FilaLeida& nueva) {
  if (!originales_) {
    datos_.originales = datos_.Aparte();
    originales_.emplace(*datos_.originales);
  }
  Agregar(*originales_, original);
  Agregar(visibles_, original);
  Buscar(visibles_);
  FilaPendiente pendiente;
  pendiente.fila = static_cast<std::uint32_t>(datos_.filas - 1);
  pendiente.original = static_cast<std::uint32_t>(datos_.originales->filas - 1);
  pendiente.puestas = Nombradas(nueva.forzados);
  for (const std::uint32_t i : pendiente.puestas) datos_.columnas[i].Escribir(pendiente.fila, Valor{});
  datos_.pendientes.push_back(std::move(pendiente));
  for (const auto& a : nueva.atributos) {
    const std::size_t i = BuscarColumna(a.nombre, 0);
    if (i != kNinguna) datos_.Anotar(datos_.filas - 1, i);
  }
  Poner(visibles_, nueva);
}

// An added row whose nulls are all named needs no account of them.
void ReceptorFilas::Nueva(const FilaLeida& fila) {
  ++nuevas_;
  const std::size_t presentes = Agregar(visibles_, fila);
  const std::size_t n = datos_.filas - 1;
  auto nombradas = Nombradas(fila.forzados);
  if (!nombradas.empty()) Buscar(visibles_);
  std::erase_if(nombradas, [&](std::uint32_t i) { return !datos_.columnas[i].EsNulo(n); });
  if (presentes + nombradas.size() == columnas_.size()) return;
  datos_.pendientes.push_back({static_cast<std::uint32_t>(n), std::nullopt, std::move(nombradas)});
}

void ReceptorFilas::Borrada(const FilaLeida& fila) {
  if (!borradas_) {
    datos_.borradas = datos_.Aparte();
    borradas_.emplace(*datos_.borradas);
  }
  Agregar(*borradas_, fila);
}

void ReceptorFilas::Terminar() {
  Buscar(visibles_);
  if (originales_) Buscar(*originales_);
  if (borradas_) Buscar(*borradas_);
  datos_.publicadas = datos_.filas - nuevas_;
  for (auto& columna : datos_.columnas) columna.Ajustar();
}

std::size_t ReceptorFilas::Agregar(Destino& destino, const FilaLeida& fila) {
  destino.datos.AgregarFila();
  return Poner(destino, fila);
}

std::size_t ReceptorFilas::Poner(Destino& destino, const FilaLeida& fila) {
  std::size_t anterior = kNinguna;
  std::size_t puestos = 0;
  const std::size_t lugar = destino.datos.filas - 1;
  for (const auto& a : fila.atributos) {
    const std::size_t i = BuscarColumna(a.nombre, anterior + 1);
    if (i == kNinguna) continue;
    anterior = i;
    ++puestos;
    auto& columna = destino.datos.columnas[i];
    if (libres_[i]) {
      PonerTexto(destino, i, a.valor);
    } else if (columna.DeClase() != Clase::kTexto) {
      columna.Escribir(lugar, Valor{a.valor});
    } else if (EsBinario(columna.Tipo())) {
      PonerBytes(destino, i, a.valor);
    } else {
      columna.EscribirTexto(lugar, Canonico(columna.Tipo(), a.valor));
    }
  }
  if (destino.en_espera.size() >= kEnEspera) Buscar(destino);
  return puestos;
}

void ReceptorFilas::PonerTexto(Destino& destino, std::size_t columna, std::string_view texto) {
  const Ultimo& ultimo = destino.ultimos[columna];
  auto& suya = destino.datos.columnas[columna];
  if (texto == ultimo.texto) return suya.EscribirIndice(destino.datos.filas - 1, ultimo.numero);
  destino.en_espera.push_back({destino.datos.filas - 1, columna, texto, Diccionario::ClaveDe(texto)});
  suya.Textos().Anticipar(destino.en_espera.back().clave);
}

void ReceptorFilas::Buscar(Destino& destino) {
  for (const auto& e : destino.en_espera) {
    auto& columna = destino.datos.columnas[e.columna];
    const std::uint32_t numero = columna.Textos().Numero(e.texto, e.clave);
    destino.ultimos[e.columna] = {e.texto, numero};
    columna.EscribirIndice(e.fila, numero);
  }
  destino.en_espera.clear();
}

// Bytes in small hex digits without white space. Digits on several lines are kept as they stand besides.
void ReceptorFilas::PonerBytes(Destino& destino, std::size_t columna, std::string_view texto) {
  std::string digitos = Minusculas(texto);
  std::erase_if(digitos, [](char c) { return kBlancos.find(c) != kBlancos.npos; });
  auto& suya = destino.datos.columnas[columna];
  const std::size_t fila = destino.datos.filas - 1;
  suya.EscribirTexto(fila, digitos);
  const std::pair clave{static_cast<std::uint32_t>(fila), static_cast<std::uint32_t>(columna)};
  destino.datos.envueltos.erase(clave);
  if (texto.size() == digitos.size() || digitos.find_first_not_of("0123456789abcdef") != digitos.npos) return;
  destino.datos.envueltos.insert({clave, {suya.Indice(fila), std::string(texto)}});
}

// Most rows skip only columns that are null, so a few are tried from the place at hand on.
std::size_t ReceptorFilas::BuscarColumna(std::string_view nombre, std::size_t esperada) const {
  constexpr std::size_t kCerca = 4;
  const std::size_t fin = std::min(esperada + kCerca, columnas_.size());
  for (std::size_t i = esperada; i < fin; ++i) {
    if (columnas_[i].detalle.nombre_xml == nombre) return i;
  }
  if (const auto i = por_nombre_.find(nombre); i != por_nombre_.end()) return i->second;
  const auto i = sin_caso_.find(nombre);
  return i == sin_caso_.end() ? kNinguna : i->second;
}

// The columns of a list of XML names, each once, in ascending order.
std::vector<std::uint32_t> ReceptorFilas::Nombradas(std::string_view nombres) const {
  std::vector<std::uint32_t> columnas;
  if (nombres.empty()) return columnas;
  std::size_t anterior = kNinguna;
  for (const auto nombre : Separar(nombres, ' ')) {
    const std::size_t i = BuscarColumna(nombre, anterior + 1);
    if (i == kNinguna) continue;
    columnas.push_back(static_cast<std::uint32_t>(i));
    anterior = i;
  }
  std::sort(columnas.begin(), columnas.end());
  columnas.erase(std::unique(columnas.begin(), columnas.end()), columnas.end());
  return columnas;
}

}  // namespace utr
