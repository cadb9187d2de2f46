#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "driver/simulated/scenario/Fallas.h"
#include "driver/simulated/unit/Estacion.h"

namespace utr::simulada {

// Who is there at the other ends of the machine's lines.
struct Lineas {
  std::vector<int> puertos{1, 2, 3};
  std::vector<int> tomados{2};  // held by another program
  int puerto_unidad = 1;
  bool fallas_por_linea = false;  // the faults strike a practice station at the end of a line too
  bool arriba = true;             // false: the link reports that it is down, whatever it does
  bool muda = false;              // the unit doesn't answer
  std::vector<std::string> direcciones{"192.168.0.1"};
  int puerto_ip = 1000;
  std::vector<int> puertos_modem{3};
  std::vector<std::string> telefonos;  // numbers that answer; empty: any
  std::vector<std::string> ocupados;   // numbers that are busy; of a real modem's dialogue alone
  bool exige_comandos = false;         // the modem dials only after an initialisation
};

// What befalls frames on a wire. Chances go from 0 to 1 and are thrown for each frame, from the seed on; times are
// milliseconds.
struct FallasDelCable {
  std::uint64_t semilla = 1;
  double ruido = 0;              // flipped bits, either way; on serial lines alone
  double pedido_perdido = 0;     //
  double respuesta_perdida = 0;  //
  double media_trama = 0;        // an answer that breaks off
  double respuesta_doble = 0;    //
  double respuesta_tarde = 0;    // by `tarde`
  double basura = 0;             // bytes ahead of an answer
  double hueco = 0;              // a pause inside an answer, of `largo_de_hueco`
  int tarde = 2500;
  int largo_de_hueco = 200;
  int latencia = 0;          // of every answer
  int fluctuacion = 0;       // up to so much more
  int corta_despues = 0;     // so many frames after it was opened the line is hung up; 0: never
  int bits_por_segundo = 0;  // at which bytes travel; 0: what the line itself has

  bool operator==(const FallasDelCable&) const = default;
};

// Spans in seconds, and the weight of the line; each is multiplied by the factor.
struct Tiempos {
  double factor = 1;
  double sin_respuesta = 1;     // until a call to a silent unit is given up
  double llamada = 4;           // until a dialled number answers
  double ausencia_14 = 4;       // that the unit is away after restart "14"
  double ausencia_44 = 20;      // and "44"
  double ausencia_cambio = 20;  // and either one, when with it another speed or identifier takes force
  double linea = 1;             // multiplies what bytes take on the line; 0: they take no time
  double borrado = 3;           // that the unit takes to erase a memory; in process it takes none

  // Milliseconds that the unit is away after a restart: the common one or that at the end of commissioning, with
  // another speed or identifier or without.
  std::int64_t Ausencia(bool de_puesta_en_marcha, bool cambia) const {
    const double comun = de_puesta_en_marcha ? ausencia_44 : ausencia_14;
    return static_cast<std::int64_t>((cambia ? std::max(comun, ausencia_cambio) : comun) * factor * 1000);
  }
  std::int64_t Borrado() const { return static_cast<std::int64_t>(borrado * factor * 1000); }  // milliseconds
};

// Everything that UTRSimulada.toml can say, with what holds where it says nothing.
struct Escenario {
  Lineas lineas;
  Tiempos tiempos;
  FallasDelCable cable;
  Vida vida;
  bool tablas_enteras = false;  // tables go whole into files beside the log
  std::vector<Falla> fallas;

  // What the unit itself remembers, as texts by key ("equipo.velocidad", "canal.4.TStorage", "paginas.34"): it takes
  // over what differs from the scenario that was applied last, so that a restart of the program doesn't undo what was
  // done to the unit. Keys of pages and channels are there only where the file names them.
  std::map<std::string, std::string> estado;

  Escenario();
};

// The text of the file, which is what is kept of a good scenario. Raises kArchivo for a file that can't be read and for
// one without anything in it: a program that writes a file anew has it empty for a moment.
std::string LeerTextoEscenario(const std::filesystem::path& ruta);

// Reads a scenario. Raises kArchivo with one sentence in Spanish (line and reason) for a text that is no TOML, or holds
// an unknown key, a value of another type or one that makes no sense.
Escenario LeerEscenarioDeTexto(const std::string& texto);

// The state of the scenarios differs in what shapes the history: taking it over makes the memories anew.
bool CambiaHistoria(const std::map<std::string, std::string>& antes, const std::map<std::string, std::string>& ahora);

// A key that was told isn't any more: what it fixed goes back to the factory's.
bool PierdeClaves(const std::map<std::string, std::string>& antes, const std::map<std::string, std::string>& ahora);

// Lets the unit take over what differs between the state applied before and this one.
void AplicarEstado(Estacion& estacion, const std::map<std::string, std::string>& antes,
                   const std::map<std::string, std::string>& ahora);

}  // namespace utr::simulada
