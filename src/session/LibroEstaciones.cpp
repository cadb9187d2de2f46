#include "session/LibroEstaciones.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>
#include <utility>

#include "base/Archivos.h"
#include "base/CarpetaPrograma.h"
#include "base/Error.h"
#include "base/LectorToml.h"
#include "base/Texto.h"
#include "driver/PaginaCero.h"
#include "driver/Textos.h"
#include "session/Puertos.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr const char* kModulo = "LibroEstaciones";
constexpr std::int64_t kVersion = 1;
constexpr const char* kClaveVersion = "version";
constexpr const char* kClaveEstacion = "estacion";
constexpr const char* kClaveEnlace = "enlace";
constexpr std::int32_t kMayorPuertoIP = 65535;
constexpr std::int32_t kMayorIdentificador = 65535;

struct PalabrasMedio {
  const char* clave;   // in the file
  const char* rotulo;  // for the operator
};
constexpr std::array<PalabrasMedio, 4> kMedios{
    {{"simulado", "Estación simulada"}, {"serie", "Puerto serie"}, {"telefono", "Teléfono"}, {"ip", "Dirección IP"}}};

// The fields of a station in the file, in their order; the link's kind stands between both tables.
struct CampoTexto {
  const char* clave;
  std::string Estacion::*valor;
};
struct CampoNumero {
  const char* clave;
  std::int32_t Estacion::*valor;
};
constexpr std::array<CampoTexto, 6> kTextos{{{"nombre", &Estacion::nombre},
                                             {"lugar", &Estacion::lugar},
                                             {"telefono", &Estacion::telefono},
                                             {"comandos", &Estacion::comandos},
                                             {"direccion", &Estacion::direccion},
                                             {"notas", &Estacion::notas}}};
constexpr std::array<CampoNumero, 4> kNumeros{{{"identificador", &Estacion::identificador},
                                               {"puerto", &Estacion::puerto},
                                               {"velocidad", &Estacion::velocidad},
                                               {"puerto_ip", &Estacion::puerto_ip}}};

// Every text in one line between double quotes, the one form that holds any text.
constexpr auto kForma = toml::toml_formatter::default_flags & ~toml::format_flags::allow_multi_line_strings &
                        ~toml::format_flags::allow_literal_strings;

[[noreturn]] void Fallar(const fs::path& archivo, std::string_view que) {
  throw Error(error::kArchivo, kModulo, fmt::format("{}: {}", archivo.filename().string(), que));
}
[[noreturn]] void FallarEn(const fs::path& archivo, const toml::node& nodo, std::string_view que) {
  Fallar(archivo, fmt::format("línea {}: {}", nodo.source().begin.line, que));
}

bool TieneControl(std::string_view texto) {
  return std::any_of(texto.begin(), texto.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

// The bytes of a file; nothing where there is none.
std::optional<std::string> Bytes(const fs::path& archivo) {
  std::error_code falla;
  if (fs::symlink_status(archivo, falla).type() == fs::file_type::not_found) return std::nullopt;
  const bool de_disco = fs::is_regular_file(archivo, falla);  // to open a pipe would wait for its other end
  std::ostringstream todo;
  errno = 0;
  std::ifstream entrada;
  if (de_disco) entrada.open(archivo, std::ios::binary);
  const bool leido =
      de_disco && entrada && (entrada.peek() == std::ifstream::traits_type::eof() || todo << entrada.rdbuf());
  if (!leido || entrada.bad())
    throw Error(error::kArchivo, kModulo, fmt::format("{}: no se puede leer", archivo.filename().string()), errno);
  return todo.str();
}

MedioEstacion MedioDe(const fs::path& archivo, const toml::node& nodo) {
  const std::string clave = nodo.value<std::string>().value_or("");
  for (std::size_t i = 0; i < kMedios.size(); ++i) {
    if (clave == kMedios.at(i).clave) return static_cast<MedioEstacion>(i);
  }
  FallarEn(archivo, nodo, "el enlace debe ser \"simulado\", \"serie\", \"telefono\" o \"ip\"");
}

// Puts a value of the file into its field; false where there is no such field.
bool Poner(const fs::path& archivo, std::string_view clave, const toml::node& nodo, Estacion& estacion) {
  if (clave == kClaveEnlace) {
    estacion.medio = MedioDe(archivo, nodo);
    return true;
  }
  for (const CampoTexto& campo : kTextos) {
    if (clave != campo.clave) continue;
    if (!nodo.is_string()) FallarEn(archivo, nodo, fmt::format("'{}' debe ser un texto entre comillas", clave));
    estacion.*campo.valor = nodo.as_string()->get();
    return true;
  }
  for (const CampoNumero& campo : kNumeros) {
    if (clave != campo.clave) continue;
    const auto numero = nodo.is_integer() ? nodo.value<std::int32_t>() : std::nullopt;
    if (!numero) FallarEn(archivo, nodo, fmt::format("'{}' debe ser un número entero", clave));
    estacion.*campo.valor = *numero;
    return true;
  }
  return false;
}

Estacion LeerEstacion(const fs::path& archivo, const toml::table& tabla) {
  Estacion estacion;
  for (const auto& [clave, nodo] : tabla) {
    if (!Poner(archivo, clave.str(), nodo, estacion))
      Fallar(archivo, fmt::format("línea {}: '{}' está de más", clave.source().begin.line, clave.str()));
  }
  const auto reparos = ReparosDe(estacion);
  if (!reparos.empty()) FallarEn(archivo, tabla, reparos.front().texto);
  return estacion;
}

bool MismoNombre(const Estacion& estacion, std::string_view nombre) {
  return IgualSinCaso(estacion.nombre, nombre);
}

template <class Estaciones>
auto Lugar(Estaciones& estaciones, std::string_view nombre) {
  return std::find_if(estaciones.begin(), estaciones.end(), [&](const auto& e) { return MismoNombre(e, nombre); });
}

void Ordenar(std::vector<Estacion>& estaciones) {
  std::sort(estaciones.begin(), estaciones.end(), [](const Estacion& a, const Estacion& b) {
    return std::pair(Minusculas(a.nombre), a.nombre) < std::pair(Minusculas(b.nombre), b.nombre);
  });
}

std::vector<Estacion> LeerLista(const fs::path& archivo, const toml::node& nodo) {
  const toml::array* lista = nodo.as_array();
  if (lista == nullptr) FallarEn(archivo, nodo, "'estacion' debe ser una lista, [[estacion]]");
  std::vector<Estacion> estaciones;
  for (const toml::node& elemento : *lista) {
    if (!elemento.is_table()) FallarEn(archivo, elemento, "'estacion' debe ser una lista, [[estacion]]");
    Estacion estacion = LeerEstacion(archivo, *elemento.as_table());
    if (Lugar(estaciones, estacion.nombre) != estaciones.end())
      FallarEn(archivo, elemento, fmt::format("la estación '{}' está dos veces", estacion.nombre));
    estaciones.push_back(std::move(estacion));
  }
  return estaciones;
}

void ExigirVersion(const fs::path& archivo, const toml::node* version) {
  if (version == nullptr || !version->is_integer()) Fallar(archivo, "no es un libro de estaciones");
  const std::int64_t numero = version->as_integer()->get();
  if (numero != kVersion) FallarEn(archivo, *version, fmt::format("el libro es de otra versión ({})", numero));
}

// Every line must make sense: what is passed over would be lost with the next change.
std::vector<Estacion> Entender(const fs::path& archivo, const std::string& bytes) {
  std::vector<Estacion> estaciones;
  if (bytes.empty()) return estaciones;
  const TomlLeido leido = LeerToml(bytes);
  if (!leido.Bien()) Fallar(archivo, leido.Falla());
  ExigirVersion(archivo, leido.raiz.get(kClaveVersion));
  for (const auto& [clave, nodo] : leido.raiz) {
    if (clave.str() == kClaveVersion) continue;
    if (clave.str() != kClaveEstacion)
      Fallar(archivo, fmt::format("línea {}: '{}' está de más", clave.source().begin.line, clave.str()));
    estaciones = LeerLista(archivo, nodo);
  }
  Ordenar(estaciones);
  return estaciones;
}

std::vector<Estacion> LeerLibro(const fs::path& archivo) {
  const auto bytes = Bytes(archivo);
  if (!bytes) Fallar(archivo, "no está");
  return Entender(archivo, *bytes);
}

template <class Valor>
void EscribirCampo(std::ostream& salida, const char* clave, const Valor& valor, const Valor& defecto) {
  if (valor == defecto) return;
  const toml::table tabla{{clave, valor}};
  salida << toml::toml_formatter{tabla, kForma} << '\n';
}

std::string TextoDelLibro(const std::vector<Estacion>& estaciones) {
  const Estacion defecto;
  std::ostringstream salida;
  salida << "# Libro de estaciones. Lo escribe el programa: lo que se anota con # no se conserva.\n"
         << kClaveVersion << " = " << kVersion << '\n';
  for (const Estacion& estacion : estaciones) {
    salida << "\n[[" << kClaveEstacion << "]]\n";
    for (const CampoTexto& campo : kTextos)
      EscribirCampo(salida, campo.clave, estacion.*campo.valor, defecto.*campo.valor);
    salida << kClaveEnlace << " = \"" << kMedios.at(static_cast<std::size_t>(estacion.medio)).clave << "\"\n";
    for (const CampoNumero& campo : kNumeros)
      EscribirCampo(salida, campo.clave, estacion.*campo.valor, defecto.*campo.valor);
  }
  return salida.str();
}

ResultadoImportacion Unificar(std::vector<Estacion>& libro, std::vector<Estacion> otras, bool reemplazar) {
  ResultadoImportacion resultado;
  for (Estacion& otra : otras) {
    const auto propia = Lugar(libro, otra.nombre);
    if (propia == libro.end()) {
      libro.push_back(std::move(otra));
      ++resultado.nuevas;
    } else if (*propia == otra) {
      ++resultado.iguales;
    } else if (reemplazar) {
      *propia = std::move(otra);
      ++resultado.reemplazadas;
    } else {
      ++resultado.dejadas;
    }
  }
  return resultado;
}

}  // namespace

std::string_view TextoDe(MedioEstacion medio) {
  return kMedios.at(static_cast<std::size_t>(medio)).rotulo;
}

std::vector<ReparoEstacion> ReparosDe(const Estacion& e) {
  using C = CampoEstacion;
  using M = MedioEstacion;
  std::vector<ReparoEstacion> reparos;
  const auto exigir = [&](bool mal, C campo, std::string_view texto) {
    if (mal) reparos.push_back({campo, std::string(texto)});
  };
  const auto una_linea = [&](const std::string& texto, C campo, std::string_view cual) {
    exigir(!EsUtf8(texto) || TieneControl(texto), campo, fmt::format("{} debe caber en una línea de texto", cual));
  };
  const bool por_puerto = e.medio != M::kIP;
  const auto& velocidades = pagina0::kVelocidades;
  exigir(Recortar(e.nombre).empty(), C::kNombre, "Debe indicar un nombre para la estación");
  una_linea(e.nombre, C::kNombre, "El nombre");
  una_linea(e.lugar, C::kLugar, "El lugar");
  exigir(e.identificador < 0 || e.identificador > kMayorIdentificador, C::kIdentificador,
         "El identificador debe estar comprendido entre 1 y 65535, o ser cero (0) si se desconoce");
  exigir(por_puerto && (e.puerto < 1 || e.puerto > kUltimoPuertoSerie), C::kPuerto,
         "El puerto de comunicaciones debe estar comprendido entre 1 y 10");
  exigir(por_puerto && std::find(velocidades.begin(), velocidades.end(), e.velocidad) == velocidades.end(),
         C::kVelocidad, "La velocidad debe ser 300, 1200, 2400, 4800, 9600 o 19200");
  exigir(e.medio == M::kTelefono && Recortar(e.telefono).empty(), C::kTelefono,
         "Debe especificar un número de teléfono");
  una_linea(e.telefono, C::kTelefono, "El número de teléfono");
  una_linea(e.comandos, C::kComandos, "Los comandos del modem");
  exigir(e.medio == M::kIP && !EsDireccionIP(e.direccion), C::kDireccion, "Dirección IP inválida");
  una_linea(e.direccion, C::kDireccion, "La dirección");
  // Port 10 would be read back as a serial one.
  exigir(e.medio == M::kIP && (e.puerto_ip <= kUltimoPuertoSerie || e.puerto_ip > kMayorPuertoIP), C::kPuertoIP,
         "El puerto debe estar comprendido entre 11 y 65535");
  exigir(!EsUtf8(e.notas), C::kNotas, "Las notas deben ser texto");
  return reparos;
}

EntradaEnlace EntradaDe(const Estacion& estacion) {
  EntradaEnlace entrada;
  entrada.identificador = std::to_string(estacion.identificador);
  entrada.por_ip = estacion.medio == MedioEstacion::kIP;
  if (entrada.por_ip) {
    entrada.direccion = estacion.direccion;
    entrada.puerto_ip = std::to_string(estacion.puerto_ip);
    return entrada;
  }
  entrada.puerto = estacion.puerto;
  entrada.velocidad = estacion.velocidad;
  entrada.telefono = estacion.medio == MedioEstacion::kTelefono;
  if (entrada.telefono) {
    entrada.numero_telefono = estacion.telefono;
    entrada.comandos = estacion.comandos;
  }
  return entrada;
}

std::string TextoEnlaceDe(const Estacion& estacion) {
  std::string puerto = fmt::format("{}, {} bps", TextoPuerto(estacion.puerto), estacion.velocidad);
  switch (estacion.medio) {
    case MedioEstacion::kSimulado:
      return TextoPuerto(estacion.puerto) + " (simulado)";
    case MedioEstacion::kTelefono:
      return fmt::format("Teléfono {} por {}", estacion.telefono, puerto);
    case MedioEstacion::kIP:
      return fmt::format("{}, puerto {}", estacion.direccion, estacion.puerto_ip);
    case MedioEstacion::kSerie:
      break;
  }
  return puerto;
}

LibroEstaciones::LibroEstaciones(fs::path archivo) : archivo_(std::move(archivo)) {}

void LibroEstaciones::Leer() {
  estaciones_.clear();
  leido_ = false;
  const auto propio = Bytes(archivo_);
  const fs::path legible = propio ? archivo_ : ArchivoDelPrograma(archivo_.parent_path(), kArchivo);
  estaciones_ = Entender(legible, propio ? *propio : Bytes(legible).value_or(""));
  bytes_ = propio.value_or("");
  leido_ = true;
}

const Estacion* LibroEstaciones::Buscar(std::string_view nombre) const {
  const auto lugar = Lugar(estaciones_, nombre);
  return lugar == estaciones_.end() ? nullptr : &*lugar;
}

const Estacion* LibroEstaciones::LaUnica(std::int32_t identificador) const {
  const auto es_ella = [&](const Estacion& una) { return identificador != 0 && una.identificador == identificador; };
  if (std::count_if(estaciones_.begin(), estaciones_.end(), es_ella) != 1) return nullptr;
  return &*std::find_if(estaciones_.begin(), estaciones_.end(), es_ella);
}

void LibroEstaciones::Agregar(Estacion estacion) {
  ExigirLibre(estacion, nullptr);
  std::vector<Estacion> nuevas = estaciones_;
  nuevas.push_back(std::move(estacion));
  Guardar(std::move(nuevas));
}

void LibroEstaciones::Cambiar(std::string_view nombre, Estacion estacion) {
  const Estacion* propia = Buscar(nombre);
  if (propia == nullptr) Lanzar(error::kLlamada, kModulo);
  ExigirLibre(estacion, propia);
  std::vector<Estacion> nuevas = estaciones_;
  *Lugar(nuevas, nombre) = std::move(estacion);
  Guardar(std::move(nuevas));
}

void LibroEstaciones::Borrar(std::string_view nombre) {
  if (Buscar(nombre) == nullptr) Lanzar(error::kLlamada, kModulo);
  std::vector<Estacion> nuevas = estaciones_;
  nuevas.erase(Lugar(nuevas, nombre));
  Guardar(std::move(nuevas));
}

ResultadoImportacion LibroEstaciones::Importar(const fs::path& archivo, bool reemplazar) {
  std::vector<Estacion> nuevas = estaciones_;
  const ResultadoImportacion resultado = Unificar(nuevas, LeerLibro(archivo), reemplazar);
  if (resultado.nuevas + resultado.reemplazadas > 0) Guardar(std::move(nuevas));
  return resultado;
}

ResultadoImportacion LibroEstaciones::Previsto(const fs::path& archivo) const {
  std::vector<Estacion> nuevas = estaciones_;
  return Unificar(nuevas, LeerLibro(archivo), true);
}

void LibroEstaciones::Exportar(const fs::path& archivo) const {
  EscribirEntero(archivo, [this](std::ostream& salida) { salida << TextoDelLibro(estaciones_); });
}

void LibroEstaciones::Guardar(std::vector<Estacion> nuevas) {
  if (!leido_) Fallar(archivo_, "no se pudo leer; no se modifica");
  if (Bytes(archivo_).value_or("") != bytes_)
    Fallar(archivo_, "otro programa lo modificó; vuelva a abrir el libro de estaciones");
  Ordenar(nuevas);
  std::string bytes = TextoDelLibro(nuevas);
  EscribirEntero(archivo_, [&](std::ostream& salida) { salida << bytes; });
  bytes_ = std::move(bytes);
  estaciones_ = std::move(nuevas);
}

void LibroEstaciones::ExigirLibre(const Estacion& estacion, const Estacion* propia) const {
  const Estacion* otra = Buscar(estacion.nombre);
  if (!ReparosDe(estacion).empty() || (otra != nullptr && otra != propia)) Lanzar(error::kLlamada, kModulo);
}

}  // namespace utr
