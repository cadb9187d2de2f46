#pragma once

#include <string_view>

#include "console/Opciones.h"
#include "lists/DocumentoLista.h"
#include "tables/Tabla.h"

namespace utr::consola {

// A table as it goes out: in xml itself, in csv and txt the list of it.
struct Entregable {
  TablaPtr tabla;
  ListaTabla lista;
  EncabezadoLista encabezado;  // of txt
};

// Writes all rows where `destino` says: a file whole or not at all, in place of a former one; a device or the standard
// output (`salida`) as it comes. Raises kArchivo, with the system's error, for what can't be written.
void Entregar(const Entregable& que, const Destino& destino, int salida);

// Writes all the bytes. Raises kArchivo when the system refuses them, kCancelada for an interruption while it waits.
void EscribirEn(int descriptor, std::string_view bytes);

// The same where nothing can be done about a failure.
void EscribirSinFallar(int descriptor, std::string_view bytes) noexcept;

}  // namespace utr::consola
