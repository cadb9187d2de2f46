#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/ReglasSensor.h"
#include "tables/Tabla.h"

// Sets of values that a central station prepares for its sensors (.ipf): which families of sensors there are, what each
// position of a set means, and what a set makes of the fields of a channel.
namespace utr {

// A family of sensors, as sets are made for.
struct FamiliaSensor {
  const char* arreglo;                   // object name of the labels with the values: "lblDatos"
  const char* sensor;                    // its words where the file has none
  std::span<const char* const> rotulos;  // captions of the values, by position from 0
};

// Families are numbered from 1 to 5; null for any other number.
inline constexpr int kFamilias = 5;
const FamiliaSensor* FamiliaDe(int numero);

// The number of the family of a kind; 0 for kinds without one.
int FamiliaDeTipo(std::int16_t tipo);

// --- The file --------------------------------------------------------------------------------------------------------

// The sets of a file: an open table with the columns Id, Nombre, Fecha, IdDescripcionSensores and Parametros, and
// others. Raises kArchivo for a file that can't be read as a table and kCampo for one that lacks a column.
TablaPtr LeerPredefinidas(const std::filesystem::path& ruta);

// Keeps the rows of a family on show.
void FiltrarFamilia(Tabla& conjuntos, int familia);

// The column with the words for the kind of sensor: the first one of texts beyond the known five. None: nothing.
std::optional<std::string> CampoDelSensor(const Tabla& conjuntos);

// The file beside the program: itself when it lies there, else a copy in place of an older one of that name, whole or
// not at all. Raises kArchivo when that fails and kLlamada for a name that doesn't end in .ipf, which might be one of
// the program's own.
std::filesystem::path JuntoAlPrograma(const std::filesystem::path& archivo, const std::filesystem::path& carpeta);

// --- A set -----------------------------------------------------------------------------------------------------------

// The values of a set by position, as they stand between the separators; none of an empty text.
std::vector<std::string> ValoresDePredefinida(std::string_view parametros);

// A value that the set's wish went beyond the range of: the range stands instead.
struct ValorRebajado {
  CampoSensor campo;
  std::string pedido;
  std::string puesto;
  bool operator==(const ValorRebajado&) const = default;
};

// A value that is shown and goes nowhere.
struct ValorSinAplicar {
  std::string rotulo;
  std::string valor;
  bool operator==(const ValorSinAplicar&) const = default;
};

// What a set makes of a channel. A field that isn't named stays as it is.
struct AplicacionPredefinida {
  std::vector<ValorForzado> valores;           // see Aplicar
  std::optional<bool> alarma{};                // CAlarmaON
  std::optional<bool> estado_normal{};         // FlagsParam(1): true is optEstadoNormal(1)
  std::vector<ValorRebajado> rebajados{};      // in the order of the fields
  std::vector<ValorSinAplicar> sin_aplicar{};  // in the order of the positions
};

// Puts a set to a channel of that kind whose fields have these values, all or nothing. A kind without a family takes
// "0" in all times, limits and alarms, whatever the set. Raises kSubindice for a set with fewer values than its family
// has positions and kTipos, naming the position, for a value that is no plain number. Surplus values don't count.
AplicacionPredefinida AplicarPredefinida(std::int16_t tipo, std::string_view parametros, const ValoresSensor& valores);

// The positions of a family that no kind applies, as captions in their order.
std::vector<std::string> RotulosSinAplicar(int familia);

// In words for the operator: what was lowered and what wasn't applied, a line each. Empty where there is nothing to
// say.
std::string AvisoDePredefinida(const AplicacionPredefinida& aplicacion);

}  // namespace utr
