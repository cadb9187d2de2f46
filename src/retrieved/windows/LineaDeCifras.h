#pragma once

namespace utr {

class EtiquetaCopiable;
class Tabla;
class VistaLista;

// What stands with a list of records, whether a read or a file brought them.

// The line under the list for TextoCifras, hidden at first.
EtiquetaCopiable* NuevaLineaDeCifras();

// Marks the rows of that table that aren't to be trusted like the others. Ahead of showing it in the list.
void MarcarRegistros(VistaLista& lista, const Tabla& tabla);

}  // namespace utr
