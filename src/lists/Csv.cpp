#include "lists/Csv.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "base/Archivos.h"
#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

constexpr std::string_view kMarca = "\xEF\xBB\xBF";
constexpr std::string_view kFinDeLinea = "\r\n";
constexpr std::string_view kSinValor = "N/D";
constexpr std::size_t kTramo = 65536;  // bytes that are held before the stream gets them

std::string FechaIso(const FechaHora& fecha, std::string_view texto) {
  std::string hora = TextoHora(fecha);
  if (texto.find_first_of("/-") == std::string_view::npos) return hora;
  const std::string dia = TextoFecha(fecha);
  std::string iso = dia.substr(6) + '-' + dia.substr(3, 2) + '-' + dia.substr(0, 2);
  if (texto.find(':') != std::string_view::npos) iso += 'T' + hora;
  return iso;
}

// Commas part thousands in a text that passes the test of numbers. One that stands anywhere else was meant as something
// else, a decimal sign above all, and without it the number would be another one.
bool ComasEnSuLugar(std::string_view numero) {
  const std::size_t primera = numero.find(',');
  if (primera == std::string_view::npos) return true;
  const std::size_t delante = primera - std::min(numero.find_first_of("0123456789,"), primera);
  const std::string_view grupos = numero.substr(primera, numero.find_first_not_of("0123456789,", primera) - primera);
  for (std::size_t i = 0; i < grupos.size(); ++i) {
    if ((grupos[i] == ',') != (i % 4 == 0)) return false;
  }
  return delante >= 1 && delante <= 3 && numero[primera - delante] != '0' && grupos.size() % 4 == 0;
}

// Of a text that passes the test of numbers: "d" stands for "e" there.
std::string NumeroLlano(std::string_view texto, char decimal) {
  std::string numero;
  for (const char letra : Recortar(texto)) {
    if (letra == ',') continue;
    numero += letra == '.' ? decimal : (letra == 'd' || letra == 'D') ? 'E' : letra;
  }
  return numero;
}

std::string EnSuForma(std::string_view texto, ClaseOrden clase, char decimal) {
  switch (clase) {
    case ClaseOrden::kNumero:
      if (EsNumerico(texto) && ComasEnSuLugar(Recortar(texto))) return NumeroLlano(texto, decimal);
      break;
    case ClaseOrden::kFecha:
    case ClaseOrden::kHora:
      if (const auto fecha = LeerFecha(texto)) return FechaIso(*fecha, texto);
      break;
    case ClaseOrden::kTexto:
      break;
  }
  texto.remove_prefix(std::min(texto.find_first_not_of(' '), texto.size()));
  return std::string(texto);
}

std::string Entrecomillado(const std::string& campo, char separador) {
  const bool basta = campo.find_first_of(std::string("\"\r\n") + separador) == std::string::npos;
  return basta ? campo : '"' + Reemplazar(campo, "\"", "\"\"") + '"';
}

bool GuionEsNada(const ColumnaLista& columna) {
  return columna.presentacion == Presentacion::kGuion || columna.presentacion == Presentacion::kGuionSiNulo;
}

}  // namespace

std::string CampoCsv(std::string_view texto, ClaseOrden clase, const OpcionesCsv& opciones, bool guion_es_nada) {
  const std::string_view recortado = Recortar(texto);
  if (recortado == kSinValor || (guion_es_nada && recortado == "-")) return {};
  return Entrecomillado(EnSuForma(texto, clase, opciones.decimal), opciones.separador);
}

EscritorCsv::EscritorCsv(std::ostream& salida, OpcionesCsv opciones) : salida_(salida), opciones_(opciones) {
  if (opciones_.marca) pendiente_ = kMarca;
  inicio_fila_ = pendiente_.size();
}

void EscritorCsv::Agregar(std::string_view texto, ClaseOrden clase) {
  AgregarHecho(CampoCsv(texto, clase, opciones_));
}

void EscritorCsv::AgregarHecho(std::string_view campo) {
  if (!primero_) pendiente_ += opciones_.separador;
  primero_ = false;
  pendiente_ += campo;
}

void EscritorCsv::Titulos(const Columnas& columnas) {
  for (const ColumnaLista& columna : columnas) Agregar(Recortar(columna.titulo));
  TerminarFila();
}

bool EscritorCsv::TerminarFila() {
  // A line without anything would be no row for who reads it.
  if (!primero_ && pendiente_.size() == inicio_fila_) pendiente_ += "\"\"";
  pendiente_ += kFinDeLinea;
  primero_ = true;
  if (pendiente_.size() >= kTramo) Terminar();
  inicio_fila_ = pendiente_.size();
  return static_cast<bool>(salida_);
}

bool EscritorCsv::Terminar() {
  salida_.write(pendiente_.data(), static_cast<std::streamsize>(pendiente_.size()));
  pendiente_.clear();
  inicio_fila_ = 0;
  return static_cast<bool>(salida_);
}

ColumnaCsv::ColumnaCsv(const ListaTabla& lista, std::size_t columna, const OpcionesCsv& opciones)
    : lista_(&lista),
      columna_(columna),
      opciones_(opciones),
      textos_(lista.TextosDistintos(columna)),
      campos_(textos_.size()),
      hechos_(textos_.size()) {}

const std::string& ColumnaCsv::Campo(std::size_t posicion) {
  const std::size_t indice = lista_->IndiceDeTexto(posicion, columna_);
  if (!hechos_[indice]) {
    const ColumnaLista& columna = lista_->LasColumnas()[columna_];
    campos_[indice] = CampoCsv(textos_[indice], columna.orden, opciones_, GuionEsNada(columna));
    hechos_[indice] = true;
  }
  return campos_[indice];
}

bool EscribirCsv(std::ostream& salida, const ListaTabla& lista, const OpcionesCsv& opciones, Renglones renglones) {
  if (renglones == Renglones::kTodos && lista.Cantidad() != lista.Total()) {
    ListaTabla entera = lista;  // in the same order
    entera.Filtrar("");
    return EscribirCsv(salida, entera, opciones);
  }
  EscritorCsv escritor(salida, opciones);
  escritor.Titulos(lista.LasColumnas());
  std::vector<ColumnaCsv> columnas;
  for (std::size_t i = 0; lista.Cantidad() > 0 && i < lista.LasColumnas().size(); ++i)
    columnas.emplace_back(lista, i, opciones);
  for (std::size_t posicion = 0; posicion < lista.Cantidad(); ++posicion) {
    for (ColumnaCsv& columna : columnas) escritor.AgregarHecho(columna.Campo(posicion));
    if (!escritor.TerminarFila()) return false;
  }
  return escritor.Terminar();
}

bool ExportarCsv(const ListaTabla& lista, const OpcionesCsv& opciones, const std::filesystem::path& ruta,
                 Renglones renglones) {
  if ((renglones == Renglones::kALaVista ? lista.Cantidad() : lista.Total()) == 0) return false;
  EscribirEntero(ruta, [&](std::ostream& salida) { EscribirCsv(salida, lista, opciones, renglones); });
  return true;
}

}  // namespace utr
