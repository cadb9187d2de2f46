#include "session/ArchivoBitacora.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <map>
#include <optional>
#include <span>
#include <sstream>
#include <string_view>
#include <utility>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr const char* kModulo = "Bitacora";
constexpr std::string_view kFinDeLinea = "\r\n";
constexpr std::string_view kInicioCabecera = "\"N.º (bitácora ";
constexpr std::string_view kColumnas =
    ")\",\"Momento\",\"Estación\",\"Unidad\",\"Qué\",\"Antes\",\"Después\",\"Resultado\"";
constexpr std::size_t kCampos = 8;

constexpr std::string_view kPrefijo = "Bitacora-";
constexpr std::string_view kExtension = ".csv";

std::string Citado(std::string_view texto) {
  return '"' + Reemplazar(texto, "\"", "\"\"") + '"';
}

std::string Iso(const FechaHora& f) {
  return fmt::format("{:04}-{:02}-{:02} {}", f.anio, f.mes, f.dia, TextoHora(f));
}

// One record of the file: its fields, the line on which it begins, and whether its end is there.
struct Registro {
  std::vector<std::string> campos;
  std::size_t linea = 1;
  bool entero = false;
};

// Takes a text apart into records.
class Separador {
 public:
  explicit Separador(std::string_view texto) : texto_(texto) {}

  // The next record; nothing at the end.
  std::optional<Registro> Siguiente() {
    if (lugar_ >= texto_.size()) return std::nullopt;
    Registro registro{.campos = {std::string()}, .linea = linea_};
    bool dentro = false;
    while (lugar_ < texto_.size() && !registro.entero) Tomar(registro, dentro);
    return registro;
  }

 private:
  char Proxima() const { return lugar_ < texto_.size() ? texto_[lugar_] : '\0'; }

  void Tomar(Registro& registro, bool& dentro) {
    const char letra = texto_[lugar_++];
    if (letra == '\n') ++linea_;
    std::string& campo = registro.campos.back();
    if (letra == '"') {
      if (dentro && Proxima() == '"') {
        campo += texto_[lugar_++];
      } else {
        dentro = !dentro;
      }
    } else if (!dentro && letra == ',') {
      registro.campos.emplace_back();
    } else if (!dentro && letra == '\n') {
      registro.entero = true;
    } else if (dentro || letra != '\r' || Proxima() != '\n') {
      campo += letra;
    }
  }

  std::string_view texto_;
  std::size_t lugar_ = 0;
  std::size_t linea_ = 1;
};

std::optional<std::int32_t> Natural(std::string_view texto) {
  const bool cifras = !texto.empty() && texto.size() < 10 && texto.find_first_not_of("0123456789") == texto.npos;
  return cifras ? std::optional(std::stoi(std::string(texto))) : std::nullopt;
}

std::optional<Asiento> AsientoDe(const Registro& registro) {
  if (!registro.entero || registro.campos.size() != kCampos) return std::nullopt;
  const auto& c = registro.campos;
  const auto momento = LeerFecha(c[1]);
  const auto estacion = Natural(c[2]);
  if (!momento || !estacion) return std::nullopt;
  return Asiento{.momento = *momento,
                 .comando = c[4],
                 .antes = c[5],
                 .escrito = c[6],
                 .resultado = c[7],
                 .clase = ClaseAsiento::kNota,
                 .estacion = *estacion,
                 .unidad = c[3]};
}

std::string TodoElTexto(const fs::path& archivo) {
  std::ostringstream todo;
  std::error_code falla;
  const bool de_disco = fs::is_regular_file(archivo, falla);  // to open a pipe would wait for its other end
  errno = 0;
  std::ifstream entrada;
  if (de_disco) entrada.open(archivo, std::ios::binary);
  const bool bien =
      de_disco && entrada && (entrada.peek() == std::ifstream::traits_type::eof() || todo << entrada.rdbuf());
  if (!bien) throw Error(error::kArchivo, kModulo, "No se puede leer " + archivo.string(), errno);
  return todo.str();
}

void ExigirCabecera(const fs::path& archivo, std::string_view texto) {
  const std::string cabecera = CabeceraBitacora();
  if (texto.starts_with(cabecera)) return;
  const std::string nombre = archivo.filename().string();
  if (!texto.starts_with(kInicioCabecera)) throw Error(error::kArchivo, kModulo, nombre + " no es una bitácora");
  texto.remove_prefix(kInicioCabecera.size());
  const auto version = Natural(texto.substr(0, texto.find(')')));
  throw Error(error::kArchivo, kModulo,
              version && *version != kVersionBitacora ? fmt::format("{} es de otra versión ({})", nombre, *version)
                                                      : nombre + ": línea 1: no se entiende");
}

// Day and order in a name as NombreBitacora gives it.
std::optional<std::pair<FechaHora, int>> DiaYOrden(std::string_view nombre) {
  if (!nombre.starts_with(kPrefijo) || !nombre.ends_with(kExtension)) return std::nullopt;
  const std::string medio(nombre.substr(kPrefijo.size(), nombre.size() - kPrefijo.size() - kExtension.size()));
  const auto dia = LeerFecha(medio.substr(0, std::min<std::size_t>(10, medio.size())));
  const int orden = medio.size() == 10 ? 1 : Natural(medio.substr(std::min<std::size_t>(11, medio.size()))).value_or(0);
  if (!dia || orden == 0 || NombreBitacora(*dia, orden) != nombre) return std::nullopt;
  return std::pair(*dia, orden);
}

}  // namespace

std::string CabeceraBitacora() {
  return fmt::format("{}{}{}{}", kInicioCabecera, kVersionBitacora, kColumnas, kFinDeLinea);
}

std::string RenglonBitacora(std::size_t numero, const Asiento& asiento) {
  return fmt::format("{},{},{},{},{},{},{},{}{}", numero, Iso(asiento.momento), asiento.estacion,
                     Citado(asiento.unidad), Citado(asiento.comando), Citado(asiento.antes), Citado(asiento.escrito),
                     Citado(asiento.resultado), kFinDeLinea);
}

BitacoraLeida LeerBitacora(const fs::path& archivo) {
  const std::string texto = TodoElTexto(archivo);
  BitacoraLeida leida;
  leida.largo = texto.size();
  if (texto.empty()) return leida;
  ExigirCabecera(archivo, texto);
  Separador separador(texto);
  separador.Siguiente();
  while (const auto registro = separador.Siguiente()) {
    if (auto asiento = AsientoDe(*registro)) {
      leida.asientos.push_back(std::move(*asiento));
      leida.ultimo = static_cast<std::size_t>(Natural(registro->campos[0]).value_or(0));
    } else if (leida.reparo.empty()) {
      leida.reparo = fmt::format("{}: línea {}: no se entiende", archivo.filename().string(), registro->linea);
    }
  }
  return leida;
}

std::string NombreBitacora(const FechaHora& dia, int orden) {
  return fmt::format("{}{:04}-{:02}-{:02}{}{}", kPrefijo, dia.anio, dia.mes, dia.dia,
                     orden > 1 ? fmt::format("-{:03}", orden) : std::string(), kExtension);
}

std::vector<DiaDeBitacora> DiasDeBitacora(const fs::path& carpeta) {
  std::map<std::pair<FechaHora, int>, fs::path> archivos;
  std::error_code falla;
  for (fs::directory_iterator i(carpeta, falla), fin; !falla && i != fin; i.increment(falla)) {
    if (const auto lugar = DiaYOrden(i->path().filename().string())) archivos[*lugar] = i->path();
  }
  std::vector<DiaDeBitacora> dias;
  for (const auto& [lugar, archivo] : archivos) {
    if (dias.empty() || dias.back().dia != lugar.first) dias.push_back({lugar.first, {}});
    dias.back().archivos.push_back(archivo);
  }
  std::reverse(dias.begin(), dias.end());
  return dias;
}

}  // namespace utr
