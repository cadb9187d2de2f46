#pragma once

#include "lists/Columnas.h"

// The columns in which the record views list their tables.
namespace utr {

Columnas ColumnasDatos();         // RegistrosDatos, of the data view and of the transmission queue
Columnas ColumnasInstantaneos();  // what PresentacionDatosInstantaneos gives, under the same titles
Columnas ColumnasEventos();       // RegistrosEventos

}  // namespace utr
