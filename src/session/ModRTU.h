#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/Reloj.h"
#include "driver/Comunicador.h"
#include "services/ContextoListas.h"
#include "services/Diario.h"
#include "services/Propiedades.h"
#include "services/RegistroErrores.h"
#include "session/Conexion.h"

namespace utr {

class BitacoraVisita;
class Catalogo;
class GraficosALaVista;
class RelojUTR;
class SituacionDelEnlace;

// Lists the serial ports: number as shown ("COM n"), system name for the tip.
struct PuertoSerie {
  int numero = 0;
  std::string nombre;
};
class ListaDePuertos {
 public:
  virtual ~ListaDePuertos() = default;
  virtual std::vector<PuertoSerie> Listar() = 0;
  // Whether the simulated station is what that number reaches on this machine.
  virtual bool EsSimulado(int numero) = 0;
};

// The state that the whole program shares, made once in Main and handed by reference to whoever needs it. Built with
// its fields named.
struct ModRTU {
  Comunicador& comunicador;
  Propiedades& propiedades;
  RegistroErrores& registro;
  Operador& operador;
  Reloj& reloj;
  Catalogo& catalogo;
  ListaDePuertos& puertos;
  Impresora& impresora;
  Conexion& conexion;
  Diario& diario;                   // of what was done to the unit
  BitacoraVisita& bitacora;         // which keeps it
  Atender atender;                  // lets events of the interface run
  std::filesystem::path carpeta;    // where the program writes (CarpetaDeDatos)
  std::string nombre = "AdminUTR";  // name of the executable, without extension
  std::filesystem::path archivo_ayuda{};
  EleccionImpresora eleccion_impresora{};   // no name until one was chosen
  std::string ruta_predefinida{};           // predefined parametrization in use
  GraficosALaVista* graficos = nullptr;     // the plots last on show, for who prints them; null: nobody keeps them
  const RelojUTR* reloj_utr = nullptr;      // what is known of the unit's clock; null: nobody listens to its calls
  SituacionDelEnlace* situacion = nullptr;  // who is at the other end; none: nobody tells

  // For windows that end before this does.
  ContextoListas Listas() {
    return {comunicador, registro, operador, impresora, eleccion_impresora, reloj, [this] { return EstacionAMano(); }};
  }

  // The unit that the settings point at, as a text that differs from that of any other one: stations to practise with
  // bear the identifiers of the field.
  std::string UnidadAMano() const;

  // "Estación Río Grande, UTR 120": the unit of the settings, with the name that the book of stations has for it, if
  // one alone is known by that identifier. A book that can't be read names nobody.
  // "UTR 120 de práctica" for one that isn't in the field.
  std::string EstacionAMano() const;

 private:
  bool DePractica() const;
};

// The program's title and bare caption of the main window.
inline constexpr std::string_view kTitulo = "Administración y configuración - KV7340";

}  // namespace utr
