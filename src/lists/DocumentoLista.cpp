#include "lists/DocumentoLista.h"

#include <ostream>

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

}  // namespace

std::string NombreDeArchivo(const EncabezadoLista& encabezado) {
  std::string nombre = encabezado.nombre.empty() ? encabezado.titulo : encabezado.nombre;
  for (const std::string& linea : encabezado.lineas) {
    const std::size_t valor = linea.find(": ");
    if (valor == std::string::npos || valor + 2 == linea.size()) continue;
    nombre += (&linea == &encabezado.lineas.front() ? " " : " a ") + linea.substr(valor + 2);
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
