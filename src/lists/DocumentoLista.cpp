#include "lists/DocumentoLista.h"

#include <algorithm>
#include <ostream>
#include <string_view>

#include "base/Archivos.h"

namespace utr {

namespace {

constexpr std::string_view kFinDeLinea = "\r\n";

void AgregarTitulos(std::string& documento, const Columnas& columnas) {
  for (const ColumnaLista& columna : columnas) {
    if (&columna != &columnas.front()) documento += '\t';
    documento += columna.titulo;
  }
}

// "15/03/2026", whatever follows.
bool ComienzaConFecha(std::string_view texto) {
  constexpr std::string_view kForma = "00/00/0000";
  if (texto.size() < kForma.size()) return false;
  return std::equal(kForma.begin(), kForma.end(), texto.begin(),
                    [](char forma, char letra) { return forma == '/' ? letra == '/' : letra >= '0' && letra <= '9'; });
}

}  // namespace

std::string NombreDeArchivo(const EncabezadoLista& encabezado) {
  std::string nombre = encabezado.nombre.empty() ? encabezado.titulo : encabezado.nombre;
  bool tras_fecha = false;
  for (const std::string& linea : encabezado.lineas) {
    const std::size_t comienzo = linea.find(": ");
    if (comienzo == std::string::npos || comienzo + 2 == linea.size()) continue;
    const std::string valor = linea.substr(comienzo + 2);
    const bool es_fecha = ComienzaConFecha(valor);
    if (!es_fecha && valor.find('/') != std::string::npos) continue;  // a folder
    nombre += (es_fecha && tras_fecha ? " a " : " ") + valor;
    tras_fecha = es_fecha;
  }
  for (char& letra : nombre) {
    if (letra == '/' || letra == '\\') letra = '-';
    if (letra == ':') letra = '.';
  }
  return nombre;
}

std::string ArmarDocumento(const ListaTabla& lista, const EncabezadoLista& encabezado, Renglones renglones) {
  if (renglones == Renglones::kTodos && lista.Cantidad() != lista.Total()) {
    ListaTabla entera = lista;  // in the same order
    entera.Filtrar("");
    return ArmarDocumento(entera, encabezado);
  }
  std::string documento = encabezado.titulo;
  for (const std::string& linea : encabezado.lineas) documento.append(kFinDeLinea).append(linea);
  documento += kFinDeLinea;
  AgregarTitulos(documento, lista.LasColumnas());
  const std::size_t columnas = lista.LasColumnas().size();
  for (std::size_t posicion = 0; posicion < lista.Cantidad(); ++posicion) {
    documento += kFinDeLinea;
    for (std::size_t columna = 0; columna < columnas; ++columna) {
      if (columna > 0) documento += '\t';
      lista.Agregar(documento, posicion, columna);
    }
  }
  return documento;
}

bool ExportarLista(const ListaTabla& lista, const EncabezadoLista& encabezado, const std::filesystem::path& ruta,
                   Renglones renglones) {
  if (lista.Cantidad() == 0) return false;
  const std::string documento = ArmarDocumento(lista, encabezado, renglones);
  EscribirEntero(ruta, [&](std::ostream& salida) {
    salida.write(documento.data(), static_cast<std::streamsize>(documento.size()));
  });
  return true;
}

}  // namespace utr
