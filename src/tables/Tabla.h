#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace utr {

// Field types of the recordset service, by its own numbers, since they decide what a saved file declares. The system
// itself creates kVarChar, kDoble, kEntero and kLogico; the others come in with files and pass through.
enum class TipoCampo : std::uint8_t {
  kEntero16 = 2,
  kEntero = 3,
  kSimple = 4,
  kDoble = 5,
  kMoneda = 6,
  kFecha = 7,
  kBstr = 8,
  kLogico = 11,
  kVariante = 12,
  kDecimal = 14,
  kEntero8 = 16,
  kEntero8SinSigno = 17,
  kEntero16SinSigno = 18,
  kEnteroSinSigno = 19,
  kEntero64 = 20,
  kEntero64SinSigno = 21,
  kFechaArchivo = 64,
  kGuid = 72,
  kBinario = 128,
  kChar = 129,
  kWChar = 130,
  kNumerico = 131,
  kFechaSola = 133,
  kHoraSola = 134,
  kMarcaDeTiempo = 135,
  kNumericoVariable = 139,
  kVarChar = 200,
  kLongVarChar = 201,
  kVarWChar = 202,
  kLongVarWChar = 203,
  kVarBinario = 204,
  kLongVarBinario = 205,
};

// How a column is held. Texts, and every type whose exact text matters (currency, decimals, 64 bits without sign,
// dates, uuid, binary), are held as texts, each distinct one once.
enum class Clase : std::uint8_t { kTexto, kDoble, kEntero, kLogico };
Clase ClaseDe(TipoCampo tipo);

// Attributes of a field, bits that may be combined.
namespace atributo {
inline constexpr unsigned kNinguno = 0;
inline constexpr unsigned kDiferible = 2;
inline constexpr unsigned kActualizable = 4;
inline constexpr unsigned kActualizableDesconocido = 8;
inline constexpr unsigned kFijo = 16;
inline constexpr unsigned kAnulable = 32;      // the field may be null
inline constexpr unsigned kPuedeSerNulo = 64;  // a null may be read from it
inline constexpr unsigned kLargo = 128;
inline constexpr unsigned kIdDeFila = 256;
inline constexpr unsigned kVersionDeFila = 512;
inline constexpr unsigned kCacheDiferida = 4096;
inline constexpr unsigned kPropio = kAnulable | kActualizable;  // what the system's own fields have
}  // namespace atributo

// A precision or a scale that a file didn't declare, so that it isn't declared when the table is written again.
inline constexpr std::uint16_t kSinDeclarar = 256;

struct Campo {
  std::string nombre;
  TipoCampo tipo = TipoCampo::kVarChar;
  std::uint32_t tamano = 0;  // declared size: characters of a text, bytes of any other type; 0 means without limit
  unsigned atributos = atributo::kPropio;
  std::uint16_t precision = 0;  // digits up to 255, which stands for an unknown number of them, or kSinDeclarar
  std::uint16_t escala = 0;     // decimals up to 255, or kSinDeclarar
};

// A value of a field: null, text, number or truth value. Texts of a Tabla are views that live as long as the table's
// rows do (they never move, whatever is added).
using Valor = std::variant<std::monostate, std::string_view, double, std::int64_t, bool>;

// The text of a value: null and empty text give "", numbers their general text, truth values "True" and "False".
std::string TextoDe(const Valor& valor);

class DatosTabla;
class FilasTabla;
class TextosColumna;
class Tabla;
using TablaPtr = std::shared_ptr<Tabla>;

// A client-side table: named typed fields, rows, and one cursor with a filter and a sort order. Whoever reads it
// otherwise than row by row asks it for one of the two views below it: Filas, the rows by their identity, and Textos,
// the distinct texts of a column.
//
// Rows are shared between a table and its clones; fields too. Cursor, filter, sort and state are each clone's own.
// Field names are found without regard to case. Not for more than one thread.
//
// Errors: kCampo (3265) for a name or position that the table lacks; kTablaCerrada on use of a closed table;
// kSinRegistro for a value while no row is current; kTipos for a value that the field's type doesn't take; kArchivo for
// a file that can't be read, written or understood.
class Tabla {
 public:
  enum class Estado { kCerrada, kAbierta };

  Tabla();
  ~Tabla();
  Tabla(Tabla&&) noexcept;
  Tabla& operator=(Tabla&&) noexcept;
  Tabla(const Tabla&) = delete;
  Tabla& operator=(const Tabla&) = delete;

  // --- Definition and life -------------------------------------------------------------------------------------------

  // Adds a field to a closed table. Raises kTablaAbierta on an open one and kLlamada for a name that is taken or empty.
  void Append(std::string_view nombre, TipoCampo tipo, std::uint32_t tamano = 0,
              unsigned atributos = atributo::kPropio);
  void Append(const Campo& campo);

  // Makes a table with fields usable, without rows. Raises kTablaAbierta when it is open.
  void Open();

  // Reads a file in persisted XML form into this closed table, which must have no fields. On any failure the table is
  // as before. The cursor stands on the first row. Rows that the file holds as pending inserts stay pending.
  void Open(const std::filesystem::path& ruta);

  // Writes the whole table to a new file in persisted XML form, whole or not at all: all rows in the order of adding,
  // whatever the filter and the sort, since a file is the table and not a view of it. Rows that were not posted are
  // written as pending inserts, and what a file held as pending as that still. Raises kArchivo when anything of that
  // name is there, also a link that leads nowhere, or when it can't be written; kLlamada for a format other than 1 and
  // for a table without fields, which couldn't be opened again.
  void Save(const std::filesystem::path& ruta, int formato = 1) const;

  // Save in place of a former file, which stays as it was when the new one can't be written whole.
  void GuardarSobre(const std::filesystem::path& ruta) const;

  // Ends the use of this table; clones go on. Closing a closed table does nothing.
  void Close() noexcept;

  Estado State() const noexcept { return estado_; }
  bool Abierta() const noexcept { return estado_ == Estado::kAbierta; }

  // A second cursor on the same rows: no filter, no sort, on the first row.
  std::shared_ptr<Tabla> Clone() const;

  // --- Fields --------------------------------------------------------------------------------------------------------

  std::size_t FieldCount() const noexcept;
  const Campo& Field(std::size_t indice) const;
  const Campo& Field(std::string_view nombre) const;
  std::size_t IndiceCampo(std::string_view nombre) const;   // raises kCampo
  int BuscarCampo(std::string_view nombre) const noexcept;  // -1 when the table lacks it

  // --- Walking -------------------------------------------------------------------------------------------------------

  // The rows that pass the filter, in the order of the sort (else in the order in which they were added).
  void MoveFirst();
  void MoveNext();  // raises kSinRegistro when already past the end
  void MoveLast();
  bool Eof() const noexcept;  // past the last row, or no rows
  bool Bof() const;           // no rows (there is no moving backwards past the first)
  std::size_t RecordCount() const;
  void IrAFila(std::size_t fila);  // makes the row of that identity current; raises kSinRegistro when there is none

  // --- Values of the current row -------------------------------------------------------------------------------------

  Valor Value(std::size_t campo) const;
  Valor Value(std::string_view campo) const;

  // The value as a text of its own, null as "". Whoever wants no copy takes the Value of a text column.
  std::string Texto(std::size_t campo) const;
  std::string Texto(std::string_view campo) const;
  bool EsNulo(std::size_t campo) const;
  bool EsNulo(std::string_view campo) const;

  // Writes one value. Texts are taken by any field: numbers and truth values are read from them strictly ("Si"/"No" are
  // not truth values; "True", "False" and numbers are), so a text that doesn't convert raises kTipos and changes
  // nothing.
  void Set(std::size_t campo, const Valor& valor);
  void Set(std::string_view campo, const Valor& valor);
  void Set(std::size_t campo, const char* texto) { Set(campo, Valor{std::string_view{texto}}); }
  void Set(std::string_view campo, const char* texto) { Set(campo, Valor{std::string_view{texto}}); }
  void Set(std::size_t campo, const std::string& texto) { Set(campo, Valor{std::string_view{texto}}); }
  void Set(std::string_view campo, const std::string& texto) { Set(campo, Valor{std::string_view{texto}}); }

  // Writes text `indice` of a text column (0 is null) without looking the text up, for builders that write the same
  // texts by the thousand. Raises kLlamada for a column of another kind and for a text that it never held.
  void SetIndice(std::size_t campo, std::uint32_t indice);

  // --- Change --------------------------------------------------------------------------------------------------------

  // Adds a row of nulls and makes it current, whatever the filter says.
  void AddNew();

  // Posts every pending row: one that was added, or that a file holds as changed or taken away.
  void UpdateBatch();
  std::size_t Pendientes() const noexcept;

  // Room for that many rows, so that a builder that knows how many come doesn't pay for growth.
  void Reservar(std::size_t filas);

  // --- Filter, sort, find --------------------------------------------------------------------------------------------

  // Keeps the rows where a field equals a value: "Canal='3'", "TDirV='Si'", "Id= 4", "Fecha=01/01/2001". A doubled
  // apostrophe inside quotes stands for one. Texts compare exactly but for case, as the service does; numbers as
  // numbers, integers and decimals in all their digits (a value that isn't one keeps no row). An empty text clears it.
  // The cursor goes to the first row that is left. Raises kLlamada for a text of another form and kCampo for an unknown
  // field. Equality on a text costs a constant time, whatever the number of rows, after the first filter on that field.
  void Filter(std::string_view criterio);
  const std::string& Filter() const noexcept { return filtro_; }

  // "Campo ASC", "Campo DESC" or "Campo" (ascending): stable, nulls first, texts by their characters without regard to
  // ASCII case, numbers by value. An empty text gives back the order of adding. The cursor goes to the first row.
  void Sort(std::string_view orden);
  const std::string& Sort() const noexcept { return orden_; }

  // "Campo=valor", no quotes needed (a value in quotes is taken without them): from the current row on, the first row
  // that matches becomes current; without one, or past the end already, the cursor ends after the last row.
  void Find(std::string_view criterio);

  // --- Views ---------------------------------------------------------------------------------------------------------

  // Neither moves the cursor, and neither outlives the table. Raises kLlamada for a column that holds no texts.
  FilasTabla Filas() const;
  TextosColumna Textos(std::size_t campo) const;

  // Bytes held by rows, texts and indexes.
  std::size_t Memoria() const noexcept;

 private:
  friend class FilasTabla;
  friend TablaPtr CopiarRecordset(Tabla& origen, bool con_datos);  // a file may repeat a field's name, Append doesn't

  explicit Tabla(std::shared_ptr<DatosTabla> datos);

  static constexpr std::size_t kNinguna = static_cast<std::size_t>(-1);

  // What a filter or a search compares with: a column and a value made ready for that column's class.
  struct Igualdad {
    std::size_t campo = 0;
    std::vector<std::uint32_t> textos;  // of a text column: the texts that are equal to it
    std::size_t distintos = 0;          // how many texts the column had when they were looked up
    std::string valor;
    double numero = 0;
    std::int64_t entero = 0;  // of a column of integers, since a double doesn't tell all of them apart
    bool vacia = false;       // nothing can be equal
  };
  Igualdad Preparar(std::string_view criterio) const;
  void Actualizar(Igualdad& igualdad) const;
  bool Coincide(const Igualdad& igualdad, std::size_t fila) const;

  void ExigirAbierta() const;
  std::size_t ExigirFila() const;
  void ExigirCampo(std::size_t campo) const;
  bool TieneVista() const noexcept { return filtrada_ || campo_orden_ >= 0; }
  std::size_t RehacerVista(std::size_t fila) const;
  std::size_t OrdenarVista(std::size_t fila) const;
  void OrdenarPorValor() const;
  void Sincronizar() const;
  void Ubicar(std::size_t posicion);

  std::shared_ptr<DatosTabla> datos_;
  Estado estado_ = Estado::kCerrada;

  std::string filtro_;
  bool filtrada_ = false;
  mutable Igualdad igualdad_;
  std::string orden_;
  int campo_orden_ = -1;
  bool descendente_ = false;

  // Rows on show while there is a filter or a sort; without either they are 0, 1, 2, ... Mutable since the view follows
  // changes that came through another clone when it is next asked.
  mutable std::vector<std::uint32_t> vista_;
  mutable std::uint64_t version_vista_ = 0;
  mutable std::size_t filas_vista_ = 0;
  mutable std::size_t posicion_ = 0;   // of the current row in the view, or of the row that follows it when it left
  mutable bool actual_fuera_ = false;  // the current row isn't in the view
  std::size_t fila_ = kNinguna;        // the current row; none: past the end
};

// The rows of a table by their identity: the place of a row in the order of adding, which neither filter nor sort
// changes. Lists and builders read a table through it.
class FilasTabla {
 public:
  // The row at a position of those on show: EnVista(0) is the first. Positions hold until the next change of filter,
  // sort or rows. Raises kSinRegistro beyond the last one.
  std::size_t EnVista(std::size_t posicion) const;

  // The current row of the cursor. Raises kSinRegistro when there is none.
  std::size_t Actual() const;

  // Tabla::Value and Tabla::Texto of any row. Raise kSinRegistro for a row that isn't there.
  Valor Value(std::size_t fila, std::size_t campo) const;
  std::string Texto(std::size_t fila, std::size_t campo) const;

 private:
  friend class Tabla;
  explicit FilasTabla(const Tabla& tabla) : tabla_(tabla) {}

  const Tabla& tabla_;
};

// The distinct texts that a text column has ever held, by number from 1 (0 is null). Widths, filters as one types and
// sorting by text look at each text once.
class TextosColumna {
 public:
  std::size_t Cantidad() const noexcept;

  // Text number `indice`; raises kLlamada for 0 and for one that the column never held. The view lives as long as the
  // table's rows do.
  std::string_view Texto(std::size_t indice) const;

  // Which one a row holds. Raises kSinRegistro for a row that isn't there.
  std::uint32_t De(std::size_t fila) const;

  // The same of all rows, in the order of adding; valid until the table or `apoyo` changes, where they are put unless
  // the table holds them as such.
  std::span<const std::uint32_t> Indices(std::vector<std::uint32_t>& apoyo) const;

 private:
  friend class Tabla;
  TextosColumna(const DatosTabla& datos, std::size_t campo) : datos_(datos), campo_(campo) {}

  const DatosTabla& datos_;
  std::size_t campo_;
};

// A new table with the same fields; with `con_datos` all rows of the source from its first on (its filter and sort
// hold), posted, read without moving any other cursor than the source's, which ends past the last row; a source without
// rows then gives one blank row in which every truth value is false. The new table stands on its first row.
TablaPtr CopiarRecordset(Tabla& origen, bool con_datos);

}  // namespace utr
