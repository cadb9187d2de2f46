#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/Fechas.h"
#include "session/ModRTU.h"
#include "session/Respaldos.h"
#include "tables/Tabla.h"

namespace utr {

// The source of a read that means the unit; any other source is the path of a file.
inline constexpr std::string_view kFuenteUTR = "RTU";

// A saved table of channels, read without the driver. Raises for a file that can't be read or is none.
TablaPtr AbrirExportada(const std::filesystem::path& ruta);

// The table of channels of a file: a saved table where its path ends in "ucg" in any case, else what the driver reads
// from it. Raises for a file that can't be read.
TablaPtr LeerArchivoDeCanales(Comunicador& comunicador, const std::string& ruta);

// Owner of the table of channels (`RecConfig`) and the roads to it. The table is replaced whole by each read, and only
// when the new one is whole. Each backup is told to the journal.
class LecturaConfiguracion {
 public:
  explicit LecturaConfiguracion(ModRTU& mod)
      : mod_(mod), respaldos_(mod.carpeta, mod.propiedades, mod.reloj, mod.registro) {}

  // Fetches the table of a source: kFuenteUTR, a path that ends in "ucg" in any case (a saved table), or another path
  // (the driver reads it). Opens the link for the unit, unless it is over IP or a call stands. On a failure shows the
  // link as lost, logs, and raises it again; the table is then as before. A table with rows that came from the unit is
  // saved as a backup; a backup that fails doesn't fail the read.
  bool Preparar(const std::string& fuente);

  // The table of such a path, for whoever looks at a file beside the table on hand, which stays as it is. Raises for a
  // file that can't be read.
  TablaPtr LeerArchivo(const std::string& ruta) const;

  // The table of channels as the unit gives it now, for whoever works on it beside the table on hand, which stays as
  // it is and of the origin that it has. A table with rows is saved as a backup. The link must be open. Null when the
  // unit answers without one; raises what the driver raises.
  TablaPtr LeerDeLaUTR();

  // The table; null when nothing was read.
  const TablaPtr& RecConfig() const noexcept { return rec_config_; }

  // The source of the table on hand, kFuenteUTR or a path; empty when nothing was read.
  const std::string& Fuente() const noexcept { return fuente_; }

  // When the table on hand was read; nothing before any read.
  const std::optional<FechaHora>& LeidaEl() const noexcept { return leida_el_; }

  // How many reads brought a table so far. Whoever asked for one learns by it whether the table on hand is a former
  // one.
  std::uint32_t Lecturas() const noexcept { return lecturas_; }

  // The table on hand in words: "de la UTR, identificador 70, leída el 15/03/2026 10:00:00", or the path of its file.
  // Empty when nothing was read.
  std::string Descripcion() const;

  // There is a table with rows.
  bool TieneFilas() const;

  // There is a table with rows and it came from the unit.
  bool LeidaDeLaUTR() const { return configuracion_leida_ && TieneFilas(); }

  // The table came from the unit (`ConfiguracionLeida`); false before any read and after a file was opened.
  bool ConfiguracionLeida() const noexcept { return configuracion_leida_; }

  // The table came from the unit that the settings point at now: its identifier and the way to it are those of the
  // read. Only such a table may go back to the unit, or another station would get it.
  bool EsDelEquipoActual() const;

  // The identifier under which the table was read from a unit; 0: none was told, or nothing was read.
  std::int32_t IdentificadorLeido() const noexcept { return equipo_leido_.identificador; }

  // The table on hand isn't what the unit holds any more: it was written, wholly or in part, and not read back.
  // `ConfiguracionLeida` is cleared until the next read.
  void OlvidarOrigen() noexcept { configuracion_leida_ = false; }

  // The backup made by the last read from the unit; nothing before one, and behind a read that brought no rows.
  const std::optional<ResultadoRespaldo>& RespaldoDeLectura() const noexcept { return respaldo_; }

  // The backup of the last table with rows that came from the unit, whoever asked for it; nothing where there is none
  // in this session, or the settings point at another unit since.
  std::optional<ResultadoRespaldo> RespaldoDelEquipo() const;

  // Saves the table as a backup ahead of a write. Never raises; without a table it fails.
  ResultadoRespaldo RespaldarParaEscribir();

  // Saves a table that was reviewed for commissioning. Never raises.
  ResultadoRespaldo RespaldarRevisada(const Tabla& tabla) { return Guardar(tabla, MotivoRespaldo::kAsistente); }

  // Where the backups of the station lie; the folder may not be there yet.
  std::filesystem::path CarpetaDeRespaldos() const { return respaldos_.Carpeta(); }

  // Writes the table as an exported configuration, replacing the file only when the new one is whole. Raises kArchivo.
  void Guardar(const std::filesystem::path& ruta) const;

  // Closes and forgets the table.
  void Liberar();

 private:
  // Which unit a read goes to, as far as the settings tell.
  struct Equipo {
    std::int32_t identificador = 0;
    std::string camino;  // port with telephone number, or address with port
    bool operator==(const Equipo&) const = default;
  };
  Equipo EquipoActual() const;
  ResultadoRespaldo Guardar(const Tabla& tabla, MotivoRespaldo motivo);
  void Respaldar(const Tabla& tabla);

  void Anotar(const std::string& fuente);
  void PrepararArchivo(const std::string& ruta);
  void PrepararUTR();
  void AbrirEnlace();

  ModRTU& mod_;
  Respaldos respaldos_;
  TablaPtr rec_config_;
  std::string fuente_;
  std::optional<FechaHora> leida_el_;
  std::uint32_t lecturas_ = 0;
  std::optional<ResultadoRespaldo> respaldo_;
  Equipo equipo_leido_;
  std::optional<ResultadoRespaldo> ultimo_respaldo_;  // of any read from the unit
  Equipo equipo_respaldado_;
  bool configuracion_leida_ = false;
};

}  // namespace utr
