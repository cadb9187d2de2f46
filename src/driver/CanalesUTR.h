#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tables/Tabla.h"

// What the program and every driver know alike about the channels of a unit: numbers and names, kinds of sensor, the
// columns of the channel table, the places of the frame of present values.
namespace utr {

// --- Numbers and names -----------------------------------------------------------------------------------------------

inline constexpr std::int16_t kPrimerCanal = 1;
inline constexpr std::int16_t kUltimaEntrada = 23;
inline constexpr std::int16_t kUltimoCanal = 26;  // 24 to 26 are the digital outputs

enum class ClaseCanal : std::uint8_t { kAnalogica, kPluviometro, kDigital, kSalida };

// The class of a channel number; nothing for any number but 1 to 26.
std::optional<ClaseCanal> ClaseDeCanal(std::int16_t canal);

// The short code of a channel number, "EA01" to "EA14", "PLV", "ED1"...; "N/D" for any other number.
std::string NombreCanal(std::int16_t canal);

// The channel number of a name that can be named back: analogue ones (every "EA" is removed; 15 and 16 are channels 22
// and 23) and "PLV" in any case. 0 for any other.
std::int16_t NumeroCanal(std::string_view nombre);

// NumeroCanal, and where it gives 0 the number whose short code is exactly `nombre`; 0 for an unknown name.
std::int16_t NumeroDeNombre(std::string_view nombre);

// --- Kinds of sensor -------------------------------------------------------------------------------------------------

// The values are those of the column Tipo.
enum class TipoSensor : std::uint8_t {
  kNivel = 0,  // level, with a reference; on channels other than 1 any analogue sensor
  kMeteorologico = 1,
  kVelocidadViento = 2,
  kDireccionViento = 3,
  kSupervisionAnalogica = 4,
  kPluviometro = 5,
  kSupervisionDigital = 7,
};

// The kind of a number; nothing for a number that stands for none.
std::optional<TipoSensor> TipoDeNumero(double numero);

// The kind that a text of the column Tipo names by its leading number, which is 0 for a text without one.
std::optional<TipoSensor> LeerTipo(std::string_view texto);

// The text of the column Tipo.
std::string TextoTipo(TipoSensor tipo);

// Channels of this kind keep a history in the unit.
bool GuardaHistoria(std::optional<TipoSensor> tipo);

// --- The channel table -----------------------------------------------------------------------------------------------

struct ColumnaCanal {
  std::string_view nombre;
  TipoCampo tipo;
  std::uint32_t tamano;
};

// The 38 columns, in their order.
inline constexpr std::array<ColumnaCanal, 38> kColumnasDeCanal = {{
    {"Tipo", TipoCampo::kVarChar, 5},        {"Pila", TipoCampo::kVarChar, 5},
    {"Flags", TipoCampo::kVarChar, 5},       {"TMed", TipoCampo::kVarChar, 10},
    {"TRead", TipoCampo::kVarChar, 10},      {"TEval", TipoCampo::kVarChar, 10},
    {"TStorage", TipoCampo::kVarChar, 10},   {"TDiscret", TipoCampo::kVarChar, 10},
    {"TCero", TipoCampo::kVarChar, 10},      {"TResetAlarma", TipoCampo::kVarChar, 10},
    {"MaxValid", TipoCampo::kVarChar, 20},   {"MinValid", TipoCampo::kVarChar, 20},
    {"MaxSubVal", TipoCampo::kVarChar, 20},  {"MaxBajVal", TipoCampo::kVarChar, 20},
    {"MaxSubTx", TipoCampo::kVarChar, 20},   {"MaxBajTx", TipoCampo::kVarChar, 20},
    {"AMax", TipoCampo::kVarChar, 20},       {"AMin", TipoCampo::kVarChar, 20},
    {"AlSub", TipoCampo::kVarChar, 20},      {"AlBaj", TipoCampo::kVarChar, 20},
    {"AlMaxPico", TipoCampo::kVarChar, 20},  {"AlMinPico", TipoCampo::kVarChar, 20},
    {"RangoMax", TipoCampo::kVarChar, 20},   {"RangoMin", TipoCampo::kVarChar, 20},
    {"Rango", TipoCampo::kVarChar, 20},      {"Span", TipoCampo::kVarChar, 20},
    {"Cero", TipoCampo::kVarChar, 20},       {"Bits", TipoCampo::kVarChar, 5},
    {"Pagina", TipoCampo::kVarChar, 5},      {"Canal", TipoCampo::kVarChar, 30},
    {"CtePluvi", TipoCampo::kDoble, 8},      {"NivRefLmn", TipoCampo::kVarChar, 20},
    {"Resolucion", TipoCampo::kVarChar, 30}, {"Descripcion", TipoCampo::kVarChar, 30},
    {"Modificado", TipoCampo::kLogico, 2},   {"Parametro", TipoCampo::kVarChar, 4},
    {"Unidad", TipoCampo::kVarChar, 4},      {"RangoNegativo", TipoCampo::kVarChar, 4},
}};

// Appends them to a closed table.
void AgregarColumnasDeCanales(Tabla& tabla);

// Whether a column of that name holds a quantity (minutes, counts, bits, engineering units), whatever its type and the
// case of its letters; not for codes, masks, identifiers and texts, digits though they may be.
bool EsColumnaDeCantidad(std::string_view columna);

// --- The frame of present values -------------------------------------------------------------------------------------

inline constexpr std::size_t kLugaresDeTrama = 38;

// The place of a channel in the frame, from 0; nothing for a channel without one.
std::optional<std::size_t> LugarEnTrama(std::int16_t canal);

}  // namespace utr
