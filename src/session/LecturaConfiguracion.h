#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "session/ModRTU.h"
#include "tables/Tabla.h"

namespace utr {

// The source of a read that means the unit; any other source is the path of a file.
inline constexpr std::string_view kFuenteUTR = "RTU";

// Owner of the table of channels (`RecConfig`) and the roads to it. The table is replaced whole by each read, and only
// when the new one is whole.
class LecturaConfiguracion {
 public:
  explicit LecturaConfiguracion(ModRTU& mod) : mod_(mod) {}

  // Fetches the table of a source: kFuenteUTR, a path that ends in "ucg" in any case (a saved table), or another path
  // (the driver reads it). Opens the link for the unit, unless it is over IP or a call stands. On a failure shows the
  // link as lost, logs, and raises it again; the table is then as before.
  bool Preparar(const std::string& fuente);

  // The table; null when nothing was read.
  const TablaPtr& RecConfig() const noexcept { return rec_config_; }

  // There is a table with rows.
  bool TieneFilas() const;

  // There is a table with rows and it came from the unit.
  bool LeidaDeLaUTR() const { return configuracion_leida_ && TieneFilas(); }

  // The table came from the unit (`ConfiguracionLeida`); false before any read and after a file was opened.
  bool ConfiguracionLeida() const noexcept { return configuracion_leida_; }

  // Writes the table as an exported configuration, replacing the file only when the new one is whole. Raises kArchivo.
  void Guardar(const std::filesystem::path& ruta) const;

  // Closes and forgets the table.
  void Liberar();

 private:
  void PrepararArchivo(const std::string& ruta);
  void PrepararUTR();
  void AbrirEnlace();

  ModRTU& mod_;
  TablaPtr rec_config_;
  bool configuracion_leida_ = false;
};

}  // namespace utr
