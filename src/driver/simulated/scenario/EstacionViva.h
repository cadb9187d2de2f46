#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "base/Candado.h"
#include "base/Reloj.h"
#include "driver/simulated/scenario/Escenario.h"
#include "driver/simulated/unit/EstadoPersistido.h"

namespace utr::simulada {

// The names under which a station keeps itself in its folder.
struct ArchivosDeEstacion {
  std::string escenario;
  std::string estado;
  // By which programs agree on whose the state is; empty: whoever makes the station sees to that.
  std::string candado{};
};

// A unit that lives: it takes its scenario over whenever the file changes, records while time passes, and is kept on
// disk. Whoever serves it, in process or over a wire, calls Comenzar ahead of whatever is asked of it and brings every
// order through Cumplir.
class EstacionViva {
 public:
  using Anotar = std::function<void(const FechaHora& ahora, std::string_view linea)>;

  // The unit as the last run left it, or a fresh one. An empty `carpeta`: a station in memory alone, which is kept
  // nowhere and has the scenario that Escenificar gives it. `anotar` gets a line for each thing worth the log.
  EstacionViva(std::filesystem::path carpeta, ArchivosDeEstacion archivos, Reloj& reloj, Atender atender,
               Anotar anotar);
  virtual ~EstacionViva();  // saves it
  EstacionViva(const EstacionViva&) = delete;
  EstacionViva& operator=(const EstacionViva&) = delete;

  // Looks at the scenario, lets time pass in the unit, and saves it where that is due.
  void Comenzar();

  // Lets time pass in the unit alone: for what comes by the thousand.
  void Seguir();

  // Another scenario from now on, as if its file said so. Raises kArchivo for a text that makes no sense.
  void Escenificar(std::string texto);

  // Carries an order out. False: `orden` gave false, which must have changed nothing then, or the changed unit can't be
  // saved; it is as it was before in that case.
  bool Cumplir(const std::function<bool()>& orden);

  // Writes the state. False: it couldn't be kept.
  bool Guardar() noexcept;

  // The state is this program's. One that another program had is taken, as that one left it, once it has let go of it;
  // until then the unit is a fresh one that nobody should talk to, and it is kept nowhere.
  bool EsPropia();

  Estacion& Unidad() { return estado.estacion; }

  std::filesystem::path carpeta;
  Reloj& reloj;
  Atender atender;
  Escenario escenario;
  EstadoPersistido estado;
  std::string aviso;       // what went wrong with the saved state at the beginning; empty: nothing
  FechaHora fecha;         // the computer's time at the last Comenzar or Seguir
  std::int64_t ahora = 0;  // the same in seconds

 protected:
  // Another scenario holds from now on. Not called while the station is being made.
  virtual void AlAdoptar() {}

 private:
  void RevisarEscenario();
  bool EstaQuieto(const Escenario& nuevo, const std::string& ruta);
  void Adoptar(Escenario nuevo, std::string texto);
  bool TomarEstado();
  void CargarUnidad();
  void CargarEstadoGuardado();
  void RetomarEscenario();
  void Apartar(const std::string& motivo);
  void GuardarSiToca();

  // The scenario file that was read last, by what tells it from another one.
  struct Firma {
    bool leida = false;
    bool hay = false;
    std::int64_t segundos = 0, nanosegundos = 0, largo = 0, nodo = 0;
    bool operator==(const Firma&) const = default;
  };
  static Firma FirmaDe(const std::string& ruta);

  ArchivosDeEstacion archivos_;
  Anotar anotar_;
  std::string ruta_escenario_;
  Firma firma_;
  bool por_guardar_ = false;   // another scenario holds and isn't saved yet
  std::int64_t guardado_ = 0;  // when the unit was saved, in milliseconds of the clock
  bool guardable_ = true;      // nothing that isn't ours has the name of the state file
  Candado candado_;
  bool ajena_ = false;  // another program has the state
};

}  // namespace utr::simulada
