#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/Reloj.h"
#include "services/Propiedades.h"
#include "services/RegistroErrores.h"
#include "tables/Tabla.h"

namespace utr {

// kAsistente: a table that was reviewed for commissioning, not one that the unit gave.
enum class MotivoRespaldo : std::uint8_t { kLectura, kEscritura, kAsistente };
// "lectura": in the name of the backup.
std::string_view TextoDe(MotivoRespaldo motivo);

// What became of a backup.
struct ResultadoRespaldo {
  std::filesystem::path archivo{};  // where the table lies; empty after a failure
  bool repetido = false;            // it lay there already: nothing was written
  std::string falla{};              // why it couldn't be saved; empty: it was

  bool Guardado() const noexcept { return falla.empty(); }
};

// The tables of channels as the unit gave them, and those that were reviewed for commissioning, kept as exported
// configurations beside the program, in a folder for each station: "Respaldos/70/2026-03-15 10.00.00 lectura.ucg".
class Respaldos {
 public:
  static constexpr std::size_t kPorEstacion = 100;

  // `carpeta`: that of the program. The station is the identifier that the settings hold when it is asked for.
  Respaldos(std::filesystem::path carpeta, const Propiedades& propiedades, const Reloj& reloj,
            RegistroErrores& registro);

  // The folder of a station under that of the program; it may not be there yet. Identifier 0: "sin-identificador".
  static std::filesystem::path CarpetaDe(const std::filesystem::path& programa, std::int32_t identificador);
  // Stations that have a folder, by identifier, in ascending order.
  static std::vector<std::int32_t> Estaciones(const std::filesystem::path& programa);

  // The folder of the present station.
  std::filesystem::path Carpeta() const;

  // Saves the whole table, whatever its filter and sort, unless the newest backup of the station holds the same; then
  // deletes all but the newest kPorEstacion of the files that bear such a name, and never any other. Failures are
  // logged and told in the result; a former backup that can't be deleted is only logged. Never raises.
  ResultadoRespaldo Guardar(const Tabla& tabla, MotivoRespaldo motivo);

 private:
  ResultadoRespaldo GuardarEn(const std::filesystem::path& carpeta, const Tabla& tabla, MotivoRespaldo motivo);
  void Podar(const std::filesystem::path& carpeta, const std::filesystem::path& recien);

  std::filesystem::path carpeta_;
  const Propiedades& propiedades_;
  const Reloj& reloj_;
  RegistroErrores& registro_;
};

}  // namespace utr
