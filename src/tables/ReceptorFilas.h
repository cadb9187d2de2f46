#pragma once

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tables/DatosTabla.h"
#include "tables/LectorEsquema.h"

// Takes the rows of a file into a table, however they were read. Internal to the reader.
namespace utr {

// A row as it stands in a file: its attributes, and the names of the columns that it says are null, parted by blanks.
// The texts have to stay where they are until all rows were taken.
struct FilaLeida {
  struct Atributo {
    std::string_view nombre;
    std::string_view valor;
  };
  std::vector<Atributo> atributos;
  std::string_view forzados;

  void Vaciar() {
    atributos.clear();
    forzados = {};
  }
};

// Raises kTipos or kDesborde for a value that its column doesn't take.
class ReceptorFilas {
 public:
  // `datos` has the fields of `columnas` and no rows yet.
  ReceptorFilas(DatosTabla& datos, std::vector<ColumnaEntrada> columnas);

  void Llana(const FilaLeida& fila);
  void Cambiada(const FilaLeida& original, const FilaLeida& nueva);
  void Nueva(const FilaLeida& fila);  // no row of the two kinds above may come behind one
  void Borrada(const FilaLeida& fila);

  bool HayNuevas() const { return nuevas_ > 0; }
  void Terminar();

 private:
  // Where rows go: the last text of each column is remembered with its number, since most columns repeat it row by row.
  struct Ultimo {
    std::string_view texto{"\0", 1};
    std::uint32_t numero = 0;
  };
  // A text that is still to be looked up: the slots of many are fetched meanwhile.
  struct EnEspera {
    std::size_t fila;
    std::size_t columna;
    std::string_view texto;
    Diccionario::Clave clave;
  };
  static constexpr std::size_t kEnEspera = 64;
  struct Destino {
    explicit Destino(DatosTabla& tabla) : datos(tabla), ultimos(tabla.campos.size()) {}
    DatosTabla& datos;
    std::vector<Ultimo> ultimos;
    std::vector<EnEspera> en_espera;
  };

  // Both give how many attributes found their column.
  std::size_t Agregar(Destino& destino, const FilaLeida& fila);
  std::size_t Poner(Destino& destino, const FilaLeida& fila);
  void PonerTexto(Destino& destino, std::size_t columna, std::string_view texto);
  void PonerBytes(Destino& destino, std::size_t columna, std::string_view texto);
  static void Buscar(Destino& destino);
  std::size_t BuscarColumna(std::string_view nombre, std::size_t esperada) const;
  std::vector<std::uint32_t> Nombradas(std::string_view nombres) const;

  static constexpr std::size_t kNinguna = static_cast<std::size_t>(-1);

  DatosTabla& datos_;
  std::vector<ColumnaEntrada> columnas_;
  std::vector<bool> libres_;  // texts that are kept as they stand
  std::unordered_map<std::string_view, std::size_t> por_nombre_;
  std::unordered_map<std::string_view, std::size_t, DispersionSinCaso, IgualdadSinCaso> sin_caso_;
  Destino visibles_;
  std::optional<Destino> originales_;
  std::optional<Destino> borradas_;
  std::size_t nuevas_ = 0;
};

}  // namespace utr
