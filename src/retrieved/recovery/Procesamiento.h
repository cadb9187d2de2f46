#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "base/Reloj.h"
#include "retrieved/ContextoRegistros.h"
#include "retrieved/recovery/InformeRecuperacion.h"
#include "retrieved/recovery/MapaMemoria.h"
#include "services/Operador.h"
#include "tables/Tabla.h"

// Recovery files into result files: a table for each channel, one of the queue, one of the events, and a report. No
// unit is needed, only the driver's decoders.
namespace utr {

struct PedidoProceso {
  TablaPtr configuracion;  // the channel table; its cursor and filter are changed
  TablaPtr descripciones;  // of events, as CargarEventos gives them; null: events have neither names nor values
  std::vector<std::filesystem::path> archivos;  // recovery files of one unit; the first one names the results
  std::filesystem::path carpeta;                // of the results
  std::filesystem::path carpeta_programa;       // no result replaces its table of events; empty: there is none to mind
  std::string configuracion_aplicada;           // for the report: which configuration that is, in words
  MapaMemoria* mapa = nullptr;                  // as new; is told the state of each page as it is read; null: none
};

enum class FinProceso {
  kProcesado,              // also of files that hold no page at all: then there is a report and no result
  kConfiguracionNoValida,  // the channel table is null or has no rows
  kSinArchivo,             // no recovery file was told
  kFormatoNoReconocido,    // a recovery file is empty
};

struct ResultadoProceso {
  FinProceso fin = FinProceso::kProcesado;
  std::filesystem::path archivo;          // the result saved last, `ArchivoResultado`; empty: there is none
  std::filesystem::path archivo_informe;  // the report as a file
  std::filesystem::path culpable;         // the recovery file that is empty
  InformeRecuperacion informe;
};

// What the operator is told of a run that ended otherwise than kProcesado, without a title; nothing for any other.
std::optional<Mensaje> MensajeDe(const ResultadoProceso& resultado);

// Runs to its end: `progreso` isn't asked whether to go on. It is told a text, the number of lines and each line, then
// the number of results and each result; `atender` is called at each of them. Both have to see themselves to it that
// 32,768 calls cost little.
//
// A former result is replaced when the new one is whole. Nothing is written until all files are read. When saving fails
// behind the first result, the report says that the run didn't end and which results are its own. Raises what
// reading, decoding, building and saving raise, also kArchivo for a file that isn't a recovery file and kLlamada for
// one whose name has less than four characters, or so few that a result would be the program's own table; it doesn't
// log that.
ResultadoProceso ProcesandoDatos(const PedidoProceso& pedido, const ContextoRegistros& contexto, Progreso& progreso,
                                 const Atender& atender);

}  // namespace utr
