#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

// What the record views do when the operator asks for a read, without the views: they call the driver, build the record
// table and keep a private copy of it. A view asks, shows `Resultado()` and the panel or message that the outcome
// names. Failures of driver and builders go up.
namespace utr {

enum class FinLectura {
  kListado,        // Resultado() has rows
  kSinDatos,       // nothing came: the panel of that read
  kFechasAlReves,  // the end lies ahead of the start: the driver was not called
};

// What the three readers share. The tables of the result are independent of what the driver gave.
class LectorRegistros {
 public:
  // `configuracion`: the channel table or null, the reader's own from now on. `atender` is called ahead of each driver
  // call; what it raises ends the read.
  LectorRegistros(const ContextoRegistros& contexto, TablaPtr configuracion, Atender atender);

  // The private copy of what was read last: null before any read and after one that brought no table or failed, without
  // rows after one that brought none.
  const TablaPtr& Resultado() const noexcept { return resultado_; }

  // The channel table, or null.
  const TablaPtr& Configuracion() const noexcept { return configuracion_; }

 protected:
  // Keeps a built table and says whether there is something to list.
  FinLectura Guardar(TablaPtr armada);
  void Soltar();
  void LlamarEventos() const;

  ContextoRegistros contexto_;
  TablaPtr configuracion_;
  Atender atender_;

 private:
  TablaPtr resultado_;
};

// The data view: historic records of one channel, and present values of all.
class LectorDatos : public LectorRegistros {
 public:
  using LectorRegistros::LectorRegistros;

  // The entries of the channel list: enabled channels of a kind with a history, "<name>_<description>".
  std::vector<std::string> CargarCanales() const;

  struct Pedido {
    FechaHora desde;  // only the dates count
    FechaHora hasta;
    std::string canal;  // text of the channel list; an empty one brings nothing
    bool escalados = true;
    bool cartucho = false;
  };
  FinLectura TraerDatos(const Pedido& pedido);

  // Two driver calls with a pause between them, or one when the last read is less than 9 seconds old.
  FinLectura MostrarInstantaneos(bool escalados, bool con_nivel_referencia);

 private:
  TablaPtr LeerInstantaneos();

  std::optional<std::int64_t> ultima_lectura_;  // milliseconds
};

// The channel number of an entry of the channel list, or of a name alone; 0 for an unknown one.
std::int16_t CanalDeEntrada(std::string_view entrada);

// The event view.
class LectorEventos : public LectorRegistros {
 public:
  // Loads the descriptions of events from the folder of the executable.
  LectorEventos(const ContextoRegistros& contexto, TablaPtr configuracion, Atender atender,
                const std::filesystem::path& carpeta);

  bool ConDescEventos() const noexcept { return descripciones_ != nullptr; }

  FinLectura TraerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho);
  FinLectura TraerPendientes();

 private:
  TablaPtr descripciones_;
};

// The transmission queue view.
class LectorCola : public LectorRegistros {
 public:
  using LectorRegistros::LectorRegistros;

  // Only the dates count. Dates the wrong way round leave the former result as it is.
  FinLectura TraerPorDia(const FechaHora& desde, const FechaHora& hasta, bool cartucho);
  FinLectura TraerPendientes();

  // The last read that was made was by day; it selects the titles of exports.
  bool PorDia() const noexcept { return por_dia_; }

 private:
  bool por_dia_ = false;
};

}  // namespace utr
