#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "tables/Tabla.h"

namespace utr {

// The two catalogue files of the program (ArchivoDelPrograma): names of measured parameters and of units by their id.
// Each is read once, on first use, and kept. A file that is missing, empty or can't be understood leaves its table out:
// nothing is raised, lists show their fixed entry and descriptions their fallback.
class Catalogo {
 public:
  explicit Catalogo(const std::filesystem::path& carpeta);

  // Make sure that the table was looked for. True whether the file exists or not.
  bool CargarParametros();
  bool CargarUnidades();

  // The shared tables, loaded if needed; null without a file. Whoever sorts one sorts it for all.
  TablaPtr Parametros();
  TablaPtr Unidades();

  // The text of the parameter with that id, else the word of the kind `tipo` as on channel 2.
  std::string DescripcionParametro(std::string_view parametro, std::int16_t tipo);

  // The text of the unit with that id, else " - ".
  std::string DescripcionUnidad(std::string_view unidad);

 private:
  struct Ranura {
    explicit Ranura(std::filesystem::path ruta) : archivo(std::move(ruta)) {}
    std::filesystem::path archivo;
    bool buscada = false;
    TablaPtr tabla;
  };

  static TablaPtr Cargar(Ranura& ranura);

  Ranura parametros_;
  Ranura unidades_;
};

}  // namespace utr
