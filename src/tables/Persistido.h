#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "tables/DatosTabla.h"

// The persisted XML form of a table: what both its writer and its reader know. Internal to the table service.
namespace utr {

namespace uri {
inline constexpr std::string_view kEsquema = "uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882";
inline constexpr std::string_view kTipos = "uuid:C2F41010-65B3-11d1-A29F-00AA00C14882";
inline constexpr std::string_view kRowset = "urn:schemas-microsoft-com:rowset";
inline constexpr std::string_view kFila = "#RowsetSchema";
}  // namespace uri

inline constexpr std::uint32_t kLargoMemo = 4294967295U;  // declared length of a text without limit

// The flags of a column in the order in which they are written.
struct MarcaDeCampo {
  unsigned atributo;
  std::string_view nombre;
};
inline constexpr std::array kMarcasDeCampo = {
    MarcaDeCampo{atributo::kIdDeFila, "rowid"},
    MarcaDeCampo{atributo::kVersionDeFila, "rowver"},
    MarcaDeCampo{atributo::kCacheDiferida, "cachedeferred"},
    MarcaDeCampo{atributo::kAnulable, "nullable"},
    MarcaDeCampo{atributo::kDiferible, "maydefer"},
    MarcaDeCampo{atributo::kActualizable, "write"},
    MarcaDeCampo{atributo::kActualizableDesconocido, "writeunknown"},
};

// How a field type is declared in the schema.
struct TipoPersistido {
  TipoCampo tipo;
  std::string_view dt;
  std::string_view dbtype;  // empty: none
  std::uint32_t largo;      // of a type with a fixed length; 0: the field's own
  bool fijo;
  bool largo_memo;
  bool con_precision;
  bool con_escala;
};

// Whether a text can stand for an attribute's name, without a prefix.
bool EsNombreXml(std::string_view texto);

const TipoPersistido& DescripcionDeTipo(TipoCampo tipo);

// The type of a declaration: `dt` and `dbtype` as read, and the flags that tell texts apart. A `dt` that isn't known is
// a text.
TipoCampo TipoDeDeclaracion(std::string_view dt, std::string_view dbtype, bool fijo, bool memo, bool con_largo);

// Reads a file; raises kArchivo with a Spanish description for anything that isn't a whole table.
std::shared_ptr<DatosTabla> LeerPersistido(const std::filesystem::path& ruta);

// Writes all rows to a file, whole or not at all: one that mustn't be there yet, or in place of a former one. Raises
// kArchivo when it can't be written and kLlamada for a table without fields.
void EscribirPersistido(const DatosTabla& datos, const std::filesystem::path& ruta, bool reemplazar);

}  // namespace utr
