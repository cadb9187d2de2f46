#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tables/Diccionario.h"
#include "tables/Tabla.h"

// The values of one field. Internal to the table service.
namespace utr {

// Numbers whose exact text is kept, since a double wouldn't hold all their digits. They compare as numbers.
bool EsDecimal(TipoCampo tipo);

// One column, by rows. Rows behind the last value take no room. A column of which nearly every row is null holds only
// the others (it is thin), so that its room follows its values and not the rows of the table.
class Columna {
 public:
  explicit Columna(TipoCampo tipo) : tipo_(tipo), clase_(ClaseDe(tipo)) {}

  Clase DeClase() const noexcept { return clase_; }
  TipoCampo Tipo() const noexcept { return tipo_; }
  void Reservar(std::size_t filas);
  void Ajustar();  // gives back the room that isn't used
  std::size_t Memoria() const noexcept;

  Valor Leer(std::size_t fila) const noexcept;
  bool EsNulo(std::size_t fila) const noexcept;
  double Numero(std::size_t fila) const noexcept;        // of a number or truth value that isn't null
  std::int64_t Entero(std::size_t fila) const noexcept;  // of an integer that isn't null

  // Raises kTipos or kDesborde for a value that the type doesn't take, and changes nothing then.
  void Escribir(std::size_t fila, const Valor& valor);

  // --- Text columns ---
  const Diccionario& Textos() const noexcept { return textos_; }
  Diccionario& Textos() noexcept { return textos_; }
  std::uint32_t Indice(std::size_t fila) const noexcept {
    const std::size_t lugar = Lugar(fila);
    return lugar < indices_.size() ? indices_[lugar] : 0;
  }
  // The same of the first `filas` rows; put into `apoyo` where the column doesn't hold one for each row.
  std::span<const std::uint32_t> Indices(std::size_t filas, std::vector<std::uint32_t>& apoyo) const;
  // The same by rows, up to the last one that has a value, of a column that isn't thin; valid until it changes.
  std::span<const std::uint32_t> IndicesDensos() const noexcept { return indices_; }
  void EscribirTexto(std::size_t fila, std::string_view texto) { EscribirIndice(fila, textos_.Numero(texto)); }
  void EscribirIndice(std::size_t fila, std::uint32_t numero);

  // Appends to `filas` every row, from the first on, whose text is number `texto` (not 0). The first call makes an
  // index that follows the column from then on.
  void FilasDe(std::uint32_t texto, std::vector<std::uint32_t>& filas);

  // Goes up with every change of a value.
  std::uint64_t Version() const noexcept { return version_; }

  // --- Walks over all values: places from 0 up to Lugares(), in the order of their rows; a place may be null ---
  std::size_t Lugares() const noexcept { return clase_ == Clase::kTexto ? indices_.size() : presentes_.size(); }
  bool Rala() const noexcept { return rala_; }
  std::size_t FilaDe(std::size_t lugar) const noexcept { return rala_ ? filas_[lugar] : lugar; }

 private:
  // Where the value of a row is; behind the last place when it has none.
  std::size_t Lugar(std::size_t fila) const noexcept { return rala_ ? LugarRalo(fila) : fila; }
  std::size_t LugarRalo(std::size_t fila) const noexcept;
  std::size_t AbrirLugar(std::size_t fila);
  bool Cabe(std::size_t fila, std::size_t nulos_por_valor) const noexcept;
  void Extender(std::size_t lugares);
  void Ralear();
  void Densar();
  void EscribirNulo(std::size_t fila);

  // Calls `hacer` with each vector that this column's class uses.
  template <typename Hacer>
  void CadaVector(const Hacer& hacer) {
    if (clase_ == Clase::kTexto) return hacer(indices_);
    if (clase_ == Clase::kDoble) hacer(dobles_);
    if (clase_ == Clase::kEntero) hacer(enteros_);
    if (clase_ == Clase::kLogico) hacer(logicos_);
    hacer(presentes_);
  }

  void Indexar();
  void Enlazar(std::uint32_t fila, std::uint32_t texto);
  void Desenlazar(std::uint32_t fila, std::uint32_t texto);

  TipoCampo tipo_;
  Clase clase_;
  bool rala_ = false;
  bool indexada_ = false;
  std::uint64_t version_ = 0;
  std::size_t escritas_ = 0;    // how many places were written, which bounds the room for nulls between them
  std::size_t reservadas_ = 0;  // rows that there will be, as a builder told

  // By place; only those of the class are used.
  Diccionario textos_;
  std::vector<std::uint32_t> indices_;
  std::vector<double> dobles_;
  std::vector<std::int64_t> enteros_;
  std::vector<std::uint8_t> logicos_;  // 0, 1
  std::vector<bool> presentes_;        // of numbers and truth values
  std::vector<std::uint32_t> filas_;   // of a thin column: the row of each place, ascending

  // The index of a text column: the rows of each text in a chain, by row number + 1, with 0 at its ends.
  struct Cadena {
    std::uint32_t primera = 0;
    std::uint32_t ultima = 0;
  };
  struct Eslabon {
    std::uint32_t anterior = 0;
    std::uint32_t siguiente = 0;
  };
  std::vector<Cadena> cadenas_;     // by text number
  std::vector<Eslabon> eslabones_;  // by row
};

}  // namespace utr
