#include "services/Propiedades.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <optional>
#include <sstream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/LectorToml.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

std::optional<Propiedad> DesdeToml(const toml::node& nodo) {
  if (const auto* entero = nodo.as_integer()) return Propiedad{entero->get()};
  if (const auto* doble = nodo.as_floating_point()) return Propiedad{doble->get()};
  if (const auto* logico = nodo.as_boolean()) return Propiedad{logico->get()};
  if (const auto* texto = nodo.as_string()) return Propiedad{texto->get()};
  return std::nullopt;
}

// Every text in one line between double quotes, the one form that holds any text.
template <class Dato>
std::string EnToml(const Dato& dato) {
  constexpr auto kForma = toml::toml_formatter::default_flags & ~toml::format_flags::allow_multi_line_strings &
                          ~toml::format_flags::allow_literal_strings;
  std::ostringstream salida;
  salida << toml::toml_formatter{toml::value<Dato>{dato}, kForma};
  return std::move(salida).str();
}

std::string TextoPropiedad(const Propiedad& valor) {
  if (const auto* entero = std::get_if<std::int64_t>(&valor)) return std::to_string(*entero);
  if (const auto* doble = std::get_if<double>(&valor)) return TextoGeneral(*doble);
  if (const auto* logico = std::get_if<bool>(&valor)) return *logico ? "True" : "False";
  return std::get<std::string>(valor);
}

// The number of a value that is one, or whose text is one.
std::optional<double> NumeroPropiedad(const Propiedad& valor) {
  if (const auto* entero = std::get_if<std::int64_t>(&valor)) return static_cast<double>(*entero);
  if (const auto* doble = std::get_if<double>(&valor)) return *doble;
  const auto* texto = std::get_if<std::string>(&valor);
  if (texto == nullptr || !EsNumerico(*texto)) return std::nullopt;
  try {
    return LeerDoble(*texto);
  } catch (const Error&) {
    return std::nullopt;
  }
}

}  // namespace

Propiedades::Propiedades(std::filesystem::path archivo) : archivo_(std::move(archivo)) {}

std::int32_t Propiedades::LeerEntero(std::string_view nombre, std::int32_t defecto) const {
  const Propiedad* valor = Buscar(nombre);
  if (valor == nullptr) return defecto;
  const std::optional<double> numero = NumeroPropiedad(*valor);
  if (!numero || !std::isfinite(*numero)) return defecto;
  try {
    return Entero32(*numero);
  } catch (const Error&) {
    return defecto;
  }
}

bool Propiedades::LeerLogico(std::string_view nombre, bool defecto) const {
  const Propiedad* valor = Buscar(nombre);
  if (valor == nullptr) return defecto;
  if (const auto* logico = std::get_if<bool>(valor)) return *logico;
  if (const auto* texto = std::get_if<std::string>(valor)) {
    if (IgualSinCaso(*texto, "True")) return true;
    if (IgualSinCaso(*texto, "False")) return false;
  }
  const std::optional<double> numero = NumeroPropiedad(*valor);
  return numero ? *numero != 0 : defecto;
}

std::string Propiedades::LeerTexto(std::string_view nombre, std::string_view defecto) const {
  const Propiedad* valor = Buscar(nombre);
  return valor == nullptr ? std::string(defecto) : TextoPropiedad(*valor);
}

void Propiedades::Escribir(std::string_view nombre, const Propiedad& valor, const Propiedad& defecto) {
  const auto* texto = std::get_if<std::string>(&valor);
  if (!EsUtf8(nombre) || (texto != nullptr && !EsUtf8(*texto))) Lanzar(error::kLlamada, "Propiedades");
  if (valor == defecto) {
    if (const auto lugar = bolsa_.find(nombre); lugar != bolsa_.end()) bolsa_.erase(lugar);
    return;
  }
  bolsa_.insert_or_assign(std::string(nombre), valor);
}

std::string Propiedades::LeerArchivoPropiedades() const {
  // Opened for appending first, which leaves an empty file where there was none and harms no other.
  std::ofstream(archivo_, std::ios::binary | std::ios::app).close();
  std::ifstream entrada(archivo_, std::ios::binary);
  std::ostringstream todo;
  if (entrada) todo << entrada.rdbuf();
  return todo.str();
}

void Propiedades::CargarPropiedades() {
  std::map<std::string, Propiedad, std::less<>> leidas;
  try {
    const std::string texto = LeerArchivoPropiedades();
    const TomlLeido leido = LeerToml(texto);
    if (!leido.Bien()) throw Error(error::kArchivo, archivo_.string(), leido.Falla());
    for (const auto& [nombre, nodo] : leido.raiz) {
      if (std::optional<Propiedad> valor = DesdeToml(nodo)) leidas.emplace(nombre.str(), std::move(*valor));
    }
  } catch (const std::exception&) {
    leidas.clear();  // a damaged file counts as a missing one
  }
  bolsa_ = std::move(leidas);
}

void Propiedades::GrabarArchivoPropiedades() const {
  EscribirEntero(archivo_, [this](std::ostream& salida) {
    for (const auto& [nombre, valor] : bolsa_) {
      // A name as a text too: the library writes some that it couldn't read as names.
      salida << EnToml(nombre) << " = ";
      std::visit([&salida](const auto& dato) { salida << EnToml(dato); }, valor);
      salida << '\n';
    }
  });
}

void Propiedades::GrabarYRecargar() {
  GrabarArchivoPropiedades();
  CargarPropiedades();
}

const Propiedad* Propiedades::Buscar(std::string_view nombre) const {
  const auto lugar = bolsa_.find(nombre);
  return lugar == bolsa_.end() ? nullptr : &lugar->second;
}

}  // namespace utr
