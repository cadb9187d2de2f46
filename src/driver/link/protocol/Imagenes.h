#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "driver/TablasDeUnidad.h"
#include "driver/link/protocol/Mapa.h"
#include "driver/link/protocol/Ordenes.h"

// The images in which the tables of a unit travel, and the files that hold them in pieces of 64 bytes.
namespace utr::protocolo {

// Rows of channels: which columns they have, by their numbers in ColumnasDeUnidad, and the texts of each row, with an
// empty one for a column that isn't there.
struct FilasDeCanales {
  std::vector<bool> presentes;
  std::vector<std::vector<std::string>> filas;
};

// What a table shows, as far as it has columns of a unit. Raises error 3265 for a table without a field Canal.
FilasDeCanales FilasDeTabla(const Tabla& tabla);

// The same rows as a table of texts, with the columns that they have: what a unit takes over.
TablaPtr TablaDeFilas(const FilasDeCanales& filas);

// The image: rows (2 bytes), columns present (6 bytes, column c in bit c mod 8 of byte c div 8), then the texts of each
// row. A text is its length in one byte and its bytes; 254 stands ahead of a length in two bytes, 255 for the same text
// as in the row above. Nothing for what can't have an image: a text of more than 65535 bytes, an image of more than
// kMayorImagen bytes, more than kMayorFilas rows.
std::optional<Bytes> ImagenDe(const FilasDeCanales& filas);
// Nothing for bytes that aren't an image from their first to their last.
std::optional<FilasDeCanales> LeerImagenDeCanales(VistaBytes imagen);

// The image of a schedule: entries (2 bytes); each with its minute (2 bytes, 65535 for none), its classes (1 byte: 1
// obligatory, 2 window, 4 conditional) and its description (a length in one byte, and the bytes). Nothing for a
// description of more than 255 bytes, and for more than kMayorAgenda entries.
std::optional<Bytes> ImagenDe(std::span<const EntradaAgenda> entradas);
std::optional<std::vector<EntradaAgenda>> LeerImagenDeAgenda(VistaBytes imagen);

// What a head and an order say of an image; its first two bytes are the count of its rows.
Resumen ResumenDe(VistaBytes imagen);

// A table's file: record 0 is the head, five registers as in ArgumentosDe(Resumen) and zeros behind them, records 1 and
// on are the image in pieces, the last one filled with zeros.
Bytes ArchivoDe(VistaBytes imagen);
std::optional<Resumen> LeerCabeza(VistaBytes record);  // at least the first ten bytes of record 0

// How many pieces an image of that length takes.
constexpr std::size_t PiezasDe(std::size_t largo) {
  return (largo + kBytesPorPieza - 1) / kBytesPorPieza;
}

}  // namespace utr::protocolo
