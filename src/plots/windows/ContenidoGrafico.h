#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "retrieved/series/CanalDeSerie.h"
#include "retrieved/series/Reduccion.h"
#include "retrieved/series/Serie.h"

namespace utr {

// One channel of a plot.
struct CanalGrafico {
  std::shared_ptr<const Serie> serie;
  std::vector<LimiteSerie> limites;  // in the units of its values
};

// An event of the unit as a flag over the curves.
struct EventoGrafico {
  std::int64_t momento = 0;
  QString texto;
};

// The flags of a table of events, RegistrosEventos, in the order of time; those whose date can't be read are left out.
std::vector<EventoGrafico> EventosDeTabla(const Tabla& eventos);

// All that a plot shows. The first channel is the one that was read, whose rows stand in the list.
struct ContenidoGrafico {
  QString titulo;    // of the plot on paper
  QString estacion;  // whose records they are, or what file they are from
  QString periodo;   // the span as its reader was told it; empty: that of the records
  std::vector<CanalGrafico> canales;
  std::vector<EventoGrafico> eventos;      // ascending
  std::optional<VentanaTiempo> ventana{};  // what is in sight of it; nothing: all
  bool de_archivo = false;                 // from a file, which may be of any station
};

// From the first to the last record of all channels; nothing without any record.
std::optional<VentanaTiempo> TiempoDeRegistros(const ContenidoGrafico& contenido);

// The same, and on to events beyond them.
std::optional<VentanaTiempo> TodoElTiempo(const ContenidoGrafico& contenido);

// The extent of values that an axis shows for a channel: what lies in that span of time, with room around it, and the
// limits near enough not to squeeze the curve. Rain starts at 0, and its bars take the upper part alone.
struct Extension {
  double abajo = 0;
  double arriba = 1;
};
Extension ExtensionDe(const CanalGrafico& canal, const VentanaTiempo& ventana);

// The limits that stand beside what is drawn of such a span: none beside bars of several records each, since the unit
// compares single readings with them.
std::vector<LimiteSerie> LimitesALaVista(const CanalGrafico& canal, const VentanaTiempo& ventana);

// What a plot without anything to draw says instead; empty where there is something.
QString PorQueNada(const ContenidoGrafico& contenido);

// The span in sight in words: "15/03/2026 00:00:00 a 16/03/2026 10:00:00".
QString TextoVentana(const VentanaTiempo& ventana);

}  // namespace utr
