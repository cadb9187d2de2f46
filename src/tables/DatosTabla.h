#pragma once

#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tables/Tabla.h"

// What the clones of a table share: fields and columns. Internal to the table service.
namespace utr {

// Texts, each distinct one once, by number from 1. Texts never move.
class Diccionario {
 public:
  // What a text is looked up by. The hash is blind to case, so that one probe sequence holds all variants of a text.
  struct Clave {
    std::uint64_t cabeza;
    std::uint32_t dispersion;
    std::uint32_t marca;
  };
  static Clave ClaveDe(std::string_view texto) noexcept;

  // The number of the text, which is added when it is new.
  std::uint32_t Numero(std::string_view texto) { return Numero(texto, ClaveDe(texto)); }
  std::uint32_t Numero(std::string_view texto, const Clave& clave);

  // Brings the slot of a text near, for a reader that looks several texts up soon.
  void Anticipar(const Clave& clave) const noexcept {
    if (!ranuras_.empty()) __builtin_prefetch(&ranuras_[clave.dispersion & (ranuras_.size() - 1)]);
  }

  // The numbers of all texts that are equal to this one but for case.
  std::vector<std::uint32_t> IgualesSinCaso(std::string_view texto) const;

  std::string_view Texto(std::uint32_t numero) const noexcept {
    return {entradas_[numero - 1].texto, entradas_[numero - 1].largo};
  }
  std::size_t Cantidad() const noexcept { return entradas_.size(); }
  std::size_t Memoria() const noexcept;

 private:
  struct Entrada {
    const char* texto;
    std::uint32_t largo;
  };
  // A slot holds the first bytes of its text, so that a short text is found without looking anywhere else.
  struct Ranura {
    std::uint64_t cabeza = 0;
    std::uint32_t numero = 0;  // 0: free
    std::uint32_t marca = 0;   // bits of the hash above the length, which counts to 255
  };

  bool Es(const Ranura& ranura, const Clave& clave, std::string_view texto) const noexcept {
    return ranura.cabeza == clave.cabeza && ranura.marca == clave.marca &&
           (texto.size() <= sizeof ranura.cabeza || Texto(ranura.numero) == texto);
  }
  const char* Guardar(std::string_view texto);
  void Crecer();

  static constexpr std::size_t kBloque = 32 * 1024;
  std::vector<std::unique_ptr<char[]>> bloques_;
  char* cursor_ = nullptr;
  std::size_t libre_ = 0;  // bytes left at the cursor
  std::size_t bytes_ = 0;
  std::vector<Entrada> entradas_;
  std::vector<Ranura> ranuras_;  // a power of two
};

// Numbers whose exact text is kept, since a double wouldn't hold all their digits. They compare as numbers.
bool EsDecimal(TipoCampo tipo);

// One column. Only the vectors of its class are used.
class Columna {
 public:
  explicit Columna(TipoCampo tipo) : tipo_(tipo), clase_(ClaseDe(tipo)) {}

  Clase DeClase() const noexcept { return clase_; }
  TipoCampo Tipo() const noexcept { return tipo_; }
  void AgregarNulo();
  void Reservar(std::size_t filas);
  void Ajustar();  // gives back the room that isn't used
  std::size_t Memoria() const noexcept;

  Valor Leer(std::size_t fila) const noexcept;
  bool EsNulo(std::size_t fila) const noexcept;
  double Numero(std::size_t fila) const noexcept;  // of a number or truth value that isn't null
  std::int64_t Entero(std::size_t fila) const noexcept { return enteros_[fila]; }  // of an integer that isn't null

  // Raises kTipos or kDesborde for a value that the type doesn't take, and changes nothing then.
  void Escribir(std::size_t fila, const Valor& valor);

  // --- Text columns ---
  const Diccionario& Textos() const noexcept { return textos_; }
  Diccionario& Textos() noexcept { return textos_; }
  std::uint32_t Indice(std::size_t fila) const noexcept { return indices_[fila]; }
  std::span<const std::uint32_t> Indices() const noexcept { return indices_; }
  void EscribirTexto(std::size_t fila, std::string_view texto) { EscribirIndice(fila, textos_.Numero(texto)); }
  void EscribirIndice(std::size_t fila, std::uint32_t numero) noexcept {
    if (indices_[fila] == numero) return;
    Cambiar(fila);
    indices_[fila] = numero;
  }

  // Appends to `filas` every row, from the first on, whose text is number `texto`.
  void FilasDe(std::uint32_t texto, std::vector<std::uint32_t>& filas) const;

  // Goes up with every change of a value.
  std::uint64_t Version() const noexcept { return version_; }

 private:
  // Rows that the index hasn't seen yet may change without making it stale.
  void Cambiar(std::size_t fila) noexcept {
    ++version_;
    if (fila < indexadas_) indice_vigente_ = false;
  }
  void EscribirNulo(std::size_t fila);
  void Indexar() const;

  TipoCampo tipo_;
  Clase clase_;
  std::uint64_t version_ = 0;

  Diccionario textos_;
  std::vector<std::uint32_t> indices_;
  std::vector<double> dobles_;
  std::vector<std::int64_t> enteros_;
  std::vector<std::uint8_t> logicos_;  // 0, 1
  std::vector<bool> presentes_;        // of numbers and truth values

  // Rows by text number, for the rows that were there when it was built; later ones are looked at one by one.
  mutable std::vector<std::uint32_t> inicios_;
  mutable std::vector<std::uint32_t> filas_por_texto_;
  mutable std::size_t indexadas_ = 0;
  mutable bool indice_vigente_ = false;
};

struct DispersionSinCaso {
  using is_transparent = void;
  std::size_t operator()(std::string_view texto) const noexcept;
};
struct IgualdadSinCaso {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept;
};

// An attribute of the rowset namespace that a file declares and the table has no use for.
struct AtributoAjeno {
  std::string nombre;  // without the prefix
  std::string valor;
};

// What a file says of a column beyond its field.
struct DetalleColumna {
  std::string nombre_xml;  // the key of its values; empty for a column of no file
  std::vector<AtributoAjeno> otros;
};

// A row that a file holds as pending and of which not everything follows from its values.
struct FilaPendiente {
  std::uint32_t fila;
  std::optional<std::uint32_t> original;  // its row in `originales`, when it was changed; without, it was added
  std::vector<std::uint32_t> puestas;     // the columns that were set, in ascending order
};

// Bytes whose digits stand on more than one line in a file.
struct TextoEnvuelto {
  std::uint32_t numero;  // of the text without the white space, so that another value of the cell tells itself apart
  std::string crudo;
};

class DatosTabla {
 public:
  void AgregarCampo(const Campo& campo, DetalleColumna detalle = {});  // of a name that occurs twice the first answers
  void AgregarFila();
  int Buscar(std::string_view nombre) const noexcept;

  // A value of a row was set: a pending row that keeps account of it is told.
  void Anotar(std::size_t fila, std::size_t campo);

  // Nothing is pending any more.
  void Publicar();

  // A table without rows that has these fields.
  std::unique_ptr<DatosTabla> Aparte() const;

  std::vector<Campo> campos;
  std::vector<Columna> columnas;
  std::size_t filas = 0;
  std::size_t publicadas = 0;

  // What a file held beside the rows on show, so that it is written as it came.
  std::vector<DetalleColumna> detalles;
  std::vector<AtributoAjeno> de_tabla = {{"updatable", "true"}};
  std::vector<FilaPendiente> pendientes;   // ascending by row; rows behind `publicadas` may do without an entry
  std::unique_ptr<DatosTabla> originales;  // rows of `pendientes` before they were changed
  std::unique_ptr<DatosTabla> borradas;    // rows that were taken away
  std::map<std::pair<std::uint32_t, std::uint32_t>, TextoEnvuelto> envueltos;  // by row and column

 private:
  std::unordered_map<std::string, std::size_t, DispersionSinCaso, IgualdadSinCaso> por_nombre_;
};

}  // namespace utr
