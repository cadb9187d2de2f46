#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "lists/Csv.h"
#include "retrieved/Lectores.h"

namespace utr {

enum class FormatoDescarga : std::uint8_t {
  kCsv,        // a CSV for each channel, for events and for the queue
  kPorTiempo,  // the same with the channels in one table by time
  kTablas,     // persisted tables, which the viewer opens
};

// What is taken from the unit, and how it is written. Records of data and of the queue are asked for by whole days,
// events by moments; both ends are included.
struct PedidoDescarga {
  FechaHora desde;
  FechaHora hasta;
  bool configuracion = true;
  bool datos = true;
  bool eventos = true;
  bool cola = true;
  bool escalados = true;  // data in engineering units, else in counts
  bool cartucho = false;  // records from the cartridge, else from the flash
  FormatoDescarga formato = FormatoDescarga::kCsv;
  OpcionesCsv csv{};
};

enum class EstadoPieza : std::uint8_t {
  kPendiente,  // not tried, or not to its end
  kGuardada,
  kSinDatos,  // the unit has none of that span: there is no file
  kFalta,     // it couldn't be read or written
};

enum class ClasePieza : std::uint8_t { kConfiguracion, kCanal, kEventos, kCola, kResumen };

// One thing to take: where it goes to and what became of it.
struct Pieza {
  ClasePieza clase = ClasePieza::kCanal;
  std::string que{};                // "EA01_Nivel", "Eventos"
  std::string archivo{};            // its name in the folder
  std::filesystem::path carpeta{};  // where it was written; empty: it wasn't
  EstadoPieza estado = EstadoPieza::kPendiente;
  std::string porque{};       // why it is missing
  std::size_t registros = 0;  // rows that were written
  TablaPtr leida{};           // what came from the unit, while it may still be needed
};

// "guardada", "sin datos en el período", "falta: La UTR no responde".
std::string TextoEstado(const Pieza& pieza);

// A new folder for one download, within `donde`, which is made too where it isn't there:
// "UTR-70_2026-03-15_10-00-00", with a number behind it where that is taken. Raises kArchivo.
std::filesystem::path NuevaCarpetaDeDescarga(const std::filesystem::path& donde, std::int32_t identificador,
                                             const FechaHora& ahora);

// Takes configuration, channels, events and transmission queue of a span into a folder, each file whole or not at all,
// and at the end a summary of what is there and what is missing ("Descarga.txt").
//
// The configuration is the table that was read before; everything else is asked of the unit, one call a piece. A piece
// that can't be read is left out and the others go on; two failures one behind the other end the run, and so does a
// file that can't be written. What was read then isn't lost: another Correr goes on with what is missing, and asks the
// unit only for what it hasn't given yet.
class Descarga {
 public:
  // `configuracion`: the channel table, the download's own. `carpeta_programa`: where the descriptions of events are.
  Descarga(const ContextoRegistros& contexto, const TablaPtr& configuracion, const Atender& atender,
           const std::filesystem::path& carpeta_programa, PedidoDescarga pedido, std::filesystem::path carpeta);

  // One step of `progreso` a piece. Raises nothing: what fails is told by the pieces.
  void Correr(Progreso& progreso);

  const std::vector<Pieza>& Piezas() const noexcept { return piezas_; }
  const std::filesystem::path& Carpeta() const noexcept { return carpeta_; }

  // Nothing is missing: what isn't there the unit doesn't have.
  bool Completa() const;
  bool Cancelada() const noexcept { return cancelada_; }

  // The file of a piece that was written: its name, with the folder where that is another one.
  std::string Donde(const Pieza& pieza) const;

  // How many are in that state, the summary apart.
  std::size_t Cuantas(EstadoPieza estado) const;

  // How many came from the unit and have no file, which is what is lost with the download.
  std::size_t SinGuardar() const;

  // Writes these into that folder, which is the one of the download from now on, without asking the unit; the channels
  // of one table by time go there together. Raises nothing, as Correr.
  void GuardarLoLeido(const std::filesystem::path& carpeta);

 private:
  void AgregarPieza(ClasePieza clase, const std::string& que, const std::string& nombre);
  bool Leer(Pieza& pieza);
  TablaPtr Pedir(const Pieza& pieza);
  bool Guardar(Pieza& pieza);
  bool Escribir(Pieza& pieza, const std::function<void(const std::filesystem::path& ruta)>& escribir);
  bool GuardarPorTiempo();
  void EscribirResumen();
  bool Juntas(const Pieza& pieza) const;
  std::string Resumen() const;

  PedidoDescarga pedido_;
  std::filesystem::path carpeta_;
  TablaPtr configuracion_;
  LectorDatos datos_;
  LectorEventos eventos_;
  LectorCola cola_;
  const Reloj& reloj_;
  RegistroErrores& registro_;
  std::vector<Pieza> piezas_;
  int fallas_seguidas_ = 0;
  bool cancelada_ = false;
};

}  // namespace utr
