#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "tables/DatosTabla.h"

// The schema block of a persisted table. Internal to the reader.
namespace utr {

// A column of the file: its XML name is the key of its values.
struct ColumnaEntrada {
  Campo campo;
  DetalleColumna detalle;
  std::uint32_t orden = 0;
};

// The columns that an ElementType describes, in their order: rs:number where every one has it, else as they stand.
// References inside it, where there are any, decide which columns there are and in which order. Key columns that only
// a cursor needed are left out.
std::vector<ColumnaEntrada> LeerColumnas(pugi::xml_node esquema, pugi::xml_node elemento);

// What the ElementType says of the whole table.
std::vector<AtributoAjeno> LeerAtributosDeTabla(pugi::xml_node elemento);

}  // namespace utr
