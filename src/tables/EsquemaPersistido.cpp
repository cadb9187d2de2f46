#include <algorithm>
#include <array>

#include "base/Texto.h"
#include "tables/Persistido.h"

namespace utr {
namespace {

using T = TipoCampo;

// The first line with a `dt` and `dbtype` is the one that a declaration without further marks stands for.
constexpr std::array kTipos = {
    TipoPersistido{T::kVarWChar, "string", "", 0, false, false, true, false},
    TipoPersistido{T::kWChar, "string", "", 0, true, false, true, false},
    TipoPersistido{T::kLongVarWChar, "string", "", 0, false, true, true, false},
    TipoPersistido{T::kBstr, "string", "", 0, false, true, true, false},
    TipoPersistido{T::kVariante, "string", "", 0, false, false, false, false},
    TipoPersistido{T::kVarChar, "string", "str", 0, false, false, true, false},
    TipoPersistido{T::kChar, "string", "str", 0, true, false, true, false},
    TipoPersistido{T::kLongVarChar, "string", "str", 0, false, true, true, false},
    TipoPersistido{T::kEntero8, "i1", "", 1, true, false, true, false},
    TipoPersistido{T::kEntero8SinSigno, "ui1", "", 1, true, false, true, false},
    TipoPersistido{T::kEntero16, "i2", "", 2, true, false, true, false},
    TipoPersistido{T::kEntero16SinSigno, "ui2", "", 2, true, false, true, false},
    TipoPersistido{T::kEntero, "int", "", 4, true, false, true, false},
    TipoPersistido{T::kEntero, "i4", "", 4, true, false, true, false},
    TipoPersistido{T::kEnteroSinSigno, "ui4", "", 4, true, false, true, false},
    TipoPersistido{T::kEntero64, "i8", "", 8, true, false, true, false},
    TipoPersistido{T::kEntero64SinSigno, "ui8", "", 8, true, false, true, false},
    TipoPersistido{T::kSimple, "r4", "", 4, true, false, true, false},
    TipoPersistido{T::kDoble, "float", "", 8, true, false, true, false},
    TipoPersistido{T::kDoble, "r8", "", 8, true, false, true, false},
    TipoPersistido{T::kLogico, "boolean", "", 2, true, false, true, false},
    TipoPersistido{T::kMoneda, "number", "currency", 8, true, false, true, false},
    TipoPersistido{T::kDecimal, "number", "decimal", 16, true, false, true, true},
    TipoPersistido{T::kNumerico, "number", "numeric", 19, true, false, true, true},
    TipoPersistido{T::kNumericoVariable, "number", "varnumeric", 0, false, false, true, true},
    TipoPersistido{T::kFecha, "dateTime", "variantdate", 16, true, false, true, false},
    TipoPersistido{T::kMarcaDeTiempo, "dateTime", "timestamp", 16, true, false, true, true},
    TipoPersistido{T::kFechaArchivo, "dateTime", "filetime", 16, true, false, true, false},
    TipoPersistido{T::kFechaSola, "date", "", 6, true, false, true, false},
    TipoPersistido{T::kHoraSola, "time", "", 6, true, false, true, false},
    TipoPersistido{T::kGuid, "uuid", "", 16, true, false, true, false},
    TipoPersistido{T::kVarBinario, "bin.hex", "", 0, false, false, true, false},
    TipoPersistido{T::kBinario, "bin.hex", "", 0, true, false, true, false},
    TipoPersistido{T::kLongVarBinario, "bin.hex", "", 0, false, true, true, false},
};

}  // namespace

bool EsNombreXml(std::string_view texto) {
  const auto letra = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
  };
  const auto signo = [&](char c) { return letra(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
  return !texto.empty() && letra(texto.front()) && std::all_of(texto.begin(), texto.end(), signo) && EsUtf8(texto);
}

const TipoPersistido& DescripcionDeTipo(TipoCampo tipo) {
  for (const auto& t : kTipos) {
    if (t.tipo == tipo) return t;
  }
  return kTipos.front();
}

TipoCampo TipoDeDeclaracion(std::string_view dt, std::string_view dbtype, bool fijo, bool memo, bool con_largo) {
  const bool texto = dt.empty() || IgualSinCaso(dt, "string");
  if (texto && !con_largo && !memo) return IgualSinCaso(dbtype, "str") ? T::kLongVarChar : T::kVariante;
  if (dt.empty()) dt = "string";
  const TipoPersistido* candidato = nullptr;
  for (const auto& t : kTipos) {
    if (!IgualSinCaso(t.dt, dt)) continue;
    // A date without a kind is a time stamp, a number without one a double.
    if (IgualSinCaso(dt, "dateTime") && dbtype.empty()) return T::kMarcaDeTiempo;
    if (IgualSinCaso(dt, "number") && dbtype.empty()) return T::kDoble;
    if (!t.dbtype.empty() || !dbtype.empty()) {
      if (!IgualSinCaso(t.dbtype, dbtype)) continue;
    }
    if (candidato == nullptr) candidato = &t;
    const bool variable = t.dt == "string" || t.dt == "bin.hex";
    if (!variable || (t.fijo == fijo && t.largo_memo == memo)) return t.tipo;
  }
  return candidato != nullptr ? candidato->tipo : T::kVarWChar;
}

}  // namespace utr
