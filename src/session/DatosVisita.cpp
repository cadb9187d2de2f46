#include "session/DatosVisita.h"

#include <fmt/format.h>

#include <fstream>
#include <ostream>
#include <sstream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/LectorToml.h"
#include "base/Texto.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr const char* kModulo = "DatosVisita";
constexpr auto kForma = toml::toml_formatter::default_flags & ~toml::format_flags::allow_multi_line_strings &
                        ~toml::format_flags::allow_literal_strings;

struct CampoVisita {
  const char* clave;
  std::string DatosVisita::*valor;
};
constexpr CampoVisita kCampos[] = {{"operador", &DatosVisita::operador}, {"notas", &DatosVisita::notas}};

fs::path ArchivoDe(const fs::path& carpeta, const FechaHora& dia) {
  return carpeta / fmt::format("Visita-{:04}-{:02}-{:02}.toml", dia.anio, dia.mes, dia.dia);
}

[[noreturn]] void Fallar(const fs::path& archivo, std::string_view que) {
  throw Error(error::kArchivo, kModulo, fmt::format("{}: {}", archivo.filename().string(), que));
}

void Poner(const fs::path& archivo, const toml::key& clave, const toml::node& nodo, DatosVisita& datos) {
  for (const CampoVisita& campo : kCampos) {
    if (clave.str() != campo.clave || !nodo.is_string()) continue;
    datos.*campo.valor = nodo.as_string()->get();
    return;
  }
  Fallar(archivo, fmt::format("línea {}: no se entiende '{}'", clave.source().begin.line, clave.str()));
}

}  // namespace

DatosVisita LeerDatosVisita(const fs::path& carpeta, const FechaHora& dia) {
  const fs::path archivo = ArchivoDe(carpeta, dia);
  DatosVisita datos;
  std::error_code falla;
  if (fs::symlink_status(archivo, falla).type() == fs::file_type::not_found) return datos;
  const bool de_disco = fs::is_regular_file(archivo, falla);  // to open a pipe would wait for its other end
  std::ifstream entrada;
  if (de_disco) entrada.open(archivo, std::ios::binary);
  std::ostringstream todo;
  const bool leido =
      de_disco && entrada && (entrada.peek() == std::ifstream::traits_type::eof() || todo << entrada.rdbuf());
  if (!leido) Fallar(archivo, "no se puede leer");
  const std::string texto = todo.str();
  const TomlLeido entendido = LeerToml(texto);
  if (!entendido.Bien()) Fallar(archivo, entendido.Falla());
  for (const auto& [clave, nodo] : entendido.raiz) Poner(archivo, clave, nodo, datos);
  return datos;
}

void GuardarDatosVisita(const fs::path& carpeta, const FechaHora& dia, const DatosVisita& datos) {
  const fs::path archivo = ArchivoDe(carpeta, dia);
  toml::table raiz;
  for (const CampoVisita& campo : kCampos) {
    if (!EsUtf8(datos.*campo.valor)) Fallar(archivo, "los datos de la visita deben ser texto");
    raiz.insert_or_assign(campo.clave, datos.*campo.valor);
  }
  std::error_code falla;
  fs::create_directories(carpeta, falla);
  if (falla) throw Error(error::kArchivo, kModulo, "No se puede crear la carpeta " + carpeta.string(), falla.value());
  EscribirEntero(archivo, [&](std::ostream& salida) { salida << toml::toml_formatter{raiz, kForma} << '\n'; });
}

}  // namespace utr
