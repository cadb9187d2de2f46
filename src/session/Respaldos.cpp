#include "session/Respaldos.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Error.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kModulo = "Respaldos";
constexpr std::string_view kCarpeta = "Respaldos";
constexpr std::string_view kSinIdentificador = "sin-identificador";

constexpr std::array<std::string_view, 3> kMotivos{"lectura", "antes de escribir", "asistente"};

// The place of each part in a name: a digit for "0", any other character for itself. Names sort by time.
constexpr std::string_view kFormaFecha = "0000-00-00 00.00.00";
constexpr std::string_view kFormaOrden = "-000";  // from the second on of the same second

bool TieneForma(std::string_view texto, std::string_view forma) {
  return texto.size() == forma.size() && std::equal(texto.begin(), texto.end(), forma.begin(), [](char letra, char f) {
           return f == '0' ? letra >= '0' && letra <= '9' : letra == f;
         });
}

// A name as Guardar gives them.
bool EsRespaldo(std::string_view nombre) {
  if (!TieneForma(nombre.substr(0, kFormaFecha.size()), kFormaFecha)) return false;
  nombre.remove_prefix(kFormaFecha.size());
  if (TieneForma(nombre.substr(0, kFormaOrden.size()), kFormaOrden)) nombre.remove_prefix(kFormaOrden.size());
  return std::any_of(kMotivos.begin(), kMotivos.end(),
                     [nombre](std::string_view motivo) { return nombre == fmt::format(" {}.ucg", motivo); });
}

[[noreturn]] void Fallar(std::string_view que, const fs::path& carpeta, const std::error_code& falla) {
  throw Error(error::kArchivo, std::string(kModulo), fmt::format("No se puede {} la carpeta {}", que, carpeta.string()),
              falla.value());
}

// The backups of a folder, oldest first.
std::vector<fs::path> RespaldosDe(const fs::path& carpeta) {
  std::vector<fs::path> hallados;
  std::error_code falla;
  fs::directory_iterator entrada(carpeta, falla);
  for (; !falla && entrada != fs::directory_iterator(); entrada.increment(falla)) {
    const bool archivo = entrada->symlink_status(falla).type() == fs::file_type::regular;
    if (archivo && EsRespaldo(entrada->path().filename().string())) hallados.push_back(entrada->path());
  }
  if (falla) Fallar("leer", carpeta, falla);
  std::sort(hallados.begin(), hallados.end());
  return hallados;
}

// A name that none of them has and that sorts behind those of the same second.
std::string NombreNuevo(const std::vector<fs::path>& anteriores, const FechaHora& f, MotivoRespaldo motivo) {
  const std::string fecha =
      fmt::format("{:04}-{:02}-{:02} {:02}.{:02}.{:02}", f.anio, f.mes, f.dia, f.hora, f.minuto, f.segundo);
  int orden = 0;
  for (const fs::path& otro : anteriores) {
    const std::string nombre = otro.filename().string();
    if (nombre.starts_with(fecha)) orden = nombre[fecha.size()] == '-' ? std::stoi(nombre.substr(fecha.size() + 1)) : 1;
  }
  return fmt::format("{}{} {}.ucg", fecha, orden == 0 ? "" : fmt::format("-{:03}", orden + 1), TextoDe(motivo));
}

bool MismosCampos(const Tabla& a, const Tabla& b) {
  if (a.FieldCount() != b.FieldCount()) return false;
  for (std::size_t i = 0; i < a.FieldCount(); ++i) {
    if (a.Field(i).nombre != b.Field(i).nombre || a.Field(i).tipo != b.Field(i).tipo) return false;
  }
  return true;
}

// Both hold the same fields and values in the same order of rows; both show all rows.
bool MismoContenido(const Tabla& a, const Tabla& b) {
  if (!MismosCampos(a, b) || a.RecordCount() != b.RecordCount()) return false;
  for (std::size_t i = 0; i < a.RecordCount(); ++i) {
    for (std::size_t campo = 0; campo < a.FieldCount(); ++campo) {
      if (a.Filas().Value(a.Filas().EnVista(i), campo) != b.Filas().Value(b.Filas().EnVista(i), campo)) return false;
    }
  }
  return true;
}

// The file holds that table. One that can't be read holds another.
bool Contiene(const fs::path& archivo, const Tabla& tabla) {
  Tabla anterior;
  return IgnorandoErrores([&] { anterior.Open(archivo); }) && MismoContenido(anterior, *tabla.Clone());
}

void CrearCarpeta(const fs::path& carpeta) {
  std::error_code falla;
  fs::create_directories(carpeta, falla);
  if (falla) Fallar("crear", carpeta, falla);
}

}  // namespace

std::string_view TextoDe(MotivoRespaldo motivo) {
  return kMotivos.at(static_cast<std::size_t>(motivo));
}

Respaldos::Respaldos(fs::path carpeta, const Propiedades& propiedades, const Reloj& reloj, RegistroErrores& registro)
    : carpeta_(std::move(carpeta)), propiedades_(propiedades), reloj_(reloj), registro_(registro) {}

fs::path Respaldos::CarpetaDe(const fs::path& programa, std::int32_t identificador) {
  return programa / kCarpeta / (identificador == 0 ? std::string(kSinIdentificador) : std::to_string(identificador));
}

std::vector<std::int32_t> Respaldos::Estaciones(const fs::path& programa) {
  std::vector<std::int32_t> estaciones;
  std::error_code falla;
  for (fs::directory_iterator i(programa / kCarpeta, falla), fin; !falla && i != fin; i.increment(falla)) {
    const std::string nombre = i->path().filename().string();
    const bool cifras = !nombre.empty() && nombre.size() < 10 && nombre.find_first_not_of("0123456789") == nombre.npos;
    const std::int32_t identificador = cifras ? std::stoi(nombre) : 0;
    if (CarpetaDe(programa, identificador).filename() == nombre) estaciones.push_back(identificador);
  }
  std::sort(estaciones.begin(), estaciones.end());
  return estaciones;
}

fs::path Respaldos::Carpeta() const {
  return CarpetaDe(carpeta_, propiedades_.LeerEntero(clave::kIdentificador, 0));
}

ResultadoRespaldo Respaldos::Guardar(const Tabla& tabla, MotivoRespaldo motivo) {
  ResultadoRespaldo resultado;
  const auto falla = FallaDe([&] {
    RegistrandoYRelanzando(registro_, kModulo, "Guardar", [&] { resultado = GuardarEn(Carpeta(), tabla, motivo); });
  });
  if (falla) resultado = {.falla = falla->Descripcion()};
  return resultado;
}

ResultadoRespaldo Respaldos::GuardarEn(const fs::path& carpeta, const Tabla& tabla, MotivoRespaldo motivo) {
  CrearCarpeta(carpeta);
  const std::vector<fs::path> anteriores = RespaldosDe(carpeta);
  if (!anteriores.empty() && Contiene(anteriores.back(), tabla))
    return {.archivo = anteriores.back(), .repetido = true};
  const fs::path nuevo = carpeta / NombreNuevo(anteriores, reloj_.Ahora(), motivo);
  tabla.Save(nuevo);
  Podar(carpeta, nuevo);
  return {.archivo = nuevo};
}

// The clock may have been set back, so that the one just saved isn't the newest by its name; it stays.
void Respaldos::Podar(const fs::path& carpeta, const fs::path& recien) {
  const auto podar = [&] {
    std::vector<fs::path> todos = RespaldosDe(carpeta);
    std::erase(todos, recien);
    for (std::size_t i = 0; i + kPorEstacion <= todos.size(); ++i) fs::remove(todos[i]);
  };
  static_cast<void>(FallaDe([&] { RegistrandoYRelanzando(registro_, kModulo, "Podar", podar); }));
}

}  // namespace utr
