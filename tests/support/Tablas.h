#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "configuration/ConfigColl.h"
#include "tables/Tabla.h"

// Tables written down in a test. Rows are posted and the table stands on its first one.
namespace utr {

using Celdas = std::vector<const char*>;  // a null pointer is a null value

inline void AgregarFilas(Tabla& tabla, const std::vector<Celdas>& filas) {
  for (const Celdas& fila : filas) {
    tabla.AddNew();
    for (std::size_t campo = 0; campo < fila.size(); ++campo) {
      if (fila[campo] != nullptr) tabla.Set(campo, fila[campo]);
    }
  }
  tabla.UpdateBatch();
  if (!filas.empty()) tabla.MoveFirst();
}

// Fields of any type.
inline TablaPtr TablaCon(const std::vector<Campo>& campos, const std::vector<Celdas>& filas = {}) {
  auto tabla = std::make_shared<Tabla>();
  for (const Campo& campo : campos) tabla->Append(campo);
  tabla->Open();
  AgregarFilas(*tabla, filas);
  return tabla;
}

// Text fields of 50 characters.
inline TablaPtr TablaDeTextos(const std::vector<const char*>& campos, const std::vector<Celdas>& filas = {}) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : campos) tabla->Append(campo, TipoCampo::kVarChar, 50);
  tabla->Open();
  AgregarFilas(*tabla, filas);
  return tabla;
}

// One channel of a channel table: columns and texts.
using FilaDeCanal = std::vector<std::pair<const char*, const char*>>;

// A channel table with its 38 columns. Each row starts as an enabled analogue channel that maps 0 to 4096 counts on 0
// to 10
// ("Flags" 1, "Tipo" 1, "Cero" 0, "Span" 4096, "RangoMin" 0, "RangoMax" 10, "Rango" 10, "NivRefLmn" 0, "Parametro" 0)
// and takes the texts given. Link utr_configuration.
inline TablaPtr TablaDeCanales(const std::vector<FilaDeCanal>& canales) {
  static const FilaDeCanal kComun = {{"Flags", "1"},    {"Tipo", "1"},      {"Cero", "0"},   {"Span", "4096"},
                                     {"RangoMin", "0"}, {"RangoMax", "10"}, {"Rango", "10"}, {"NivRefLmn", "0"},
                                     {"CtePluvi", "0"}, {"Parametro", "0"}, {"Unidad", "0"}, {"Modificado", "False"}};
  auto tabla = std::make_shared<Tabla>();
  AgregarColumnasDeCanales(*tabla);
  tabla->Open();
  for (const FilaDeCanal& canal : canales) {
    tabla->AddNew();
    for (const auto& [columna, texto] : kComun) tabla->Set(columna, texto);
    for (const auto& [columna, texto] : canal) tabla->Set(columna, texto);
  }
  tabla->UpdateBatch();
  if (!canales.empty()) tabla->MoveFirst();
  return tabla;
}

// All rows of some columns from the first on, cells joined by "|", null as "(nulo)". The cursor ends behind the last
// row.
inline std::vector<std::string> Filas(Tabla& tabla, const std::vector<const char*>& campos) {
  std::vector<std::string> filas;
  if (tabla.RecordCount() > 0) tabla.MoveFirst();
  for (; !tabla.Eof(); tabla.MoveNext()) {
    std::string fila;
    for (const char* campo : campos) {
      if (campo != campos.front()) fila += '|';
      fila += tabla.EsNulo(campo) ? "(nulo)" : tabla.Texto(campo);
    }
    filas.push_back(std::move(fila));
  }
  return filas;
}

}  // namespace utr
