#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace utr {

// A typed value of the settings bag.
using Propiedad = std::variant<std::int64_t, double, bool, std::string>;

// Names of the keys, as they stand in the file.
namespace clave {
inline constexpr std::string_view kClave = "Clave";
inline constexpr std::string_view kIdentificador = "COMIDENT";
inline constexpr std::string_view kPuerto = "PUERTO";
inline constexpr std::string_view kVelocidad = "Velocidad";
inline constexpr std::string_view kPorTelefono = "PORTELEFONO";
inline constexpr std::string_view kNumeroTelefono = "NUMEROTELEFONO";
inline constexpr std::string_view kComandosAT = "COMANDOSAT";
inline constexpr std::string_view kParametrizaciones = "Parametrizaciones";  // written only
}  // namespace clave

// The settings store: one bag of typed values by name, kept in memory and in one file (TOML) beside the executable,
// named after it with the extension ".dll".
class Propiedades {
 public:
  explicit Propiedades(std::filesystem::path archivo);

  // Reads give the default where the key is absent. A value of another type is converted where it can be (the number of
  // a text by its strict reading, the text of a number); where it can't, the default is given.
  std::int32_t LeerEntero(std::string_view nombre, std::int32_t defecto) const;
  bool LeerLogico(std::string_view nombre, bool defecto) const;
  std::string LeerTexto(std::string_view nombre, std::string_view defecto) const;

  // Writes the value; one that equals the default leaves the key out. Any text comes back from the file as it was; one
  // that is no UTF-8 would make the file unreadable, so it raises kLlamada and changes nothing.
  void Escribir(std::string_view nombre, const Propiedad& valor, const Propiedad& defecto);

  // All keys and values, to be put back later. Neither reads nor writes the file.
  using Bolsa = std::map<std::string, Propiedad, std::less<>>;
  const Bolsa& Contenido() const noexcept { return bolsa_; }
  void Reponer(Bolsa bolsa) { bolsa_ = std::move(bolsa); }

  // The file's content as one block; empty when it doesn't exist (an empty file is left then) or can't be read.
  std::string LeerArchivoPropiedades() const;

  // Sets the bag from the file. Never raises: anything unreadable gives an empty bag.
  void CargarPropiedades();

  // Replaces the file by the bag's content, whole or not at all. Raises kArchivo when it can't be written; the former
  // file stays then.
  void GrabarArchivoPropiedades() const;

  // GrabarArchivoPropiedades and CargarPropiedades: what the program runs on is what the file holds.
  void GrabarYRecargar();

  const std::filesystem::path& Archivo() const noexcept { return archivo_; }

 private:
  const Propiedad* Buscar(std::string_view nombre) const;

  std::filesystem::path archivo_;
  Bolsa bolsa_;
};

}  // namespace utr
