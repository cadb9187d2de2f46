#pragma once

#include "retrieved/recovery/InformeRecuperacion.h"
#include "tables/Tabla.h"

namespace utr {

// What the report says of the records of a table RegistrosDatos or RegistrosEventos whose rows all have a date and a
// time: first and last moment, gaps of more than `informe.minutos`, records under the date of pages that have none
// (which count for nothing else), contradictions of records of the same channel. Fills these members of `informe`.
void DescribirRegistros(const Tabla& tabla, InformeRegistros& informe);

}  // namespace utr
