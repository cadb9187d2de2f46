#include "session/NumerosDePuerto.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/LectorToml.h"
#include "base/Numeros.h"
#include "driver/CarpetaDeEstacion.h"
#include "session/AjustesEnlace.h"

namespace utr {
namespace {

constexpr const char* kArchivo = "Puertos.toml";
constexpr const char* kTabla = "puertos";
constexpr std::string_view kPrefijo = "COM";

// Name without its closing digits, and those digits, so that "ttyS10" stands behind "ttyS2".
std::pair<std::string, double> ClaveNatural(const std::string& nombre) {
  const std::size_t letra = nombre.find_last_not_of("0123456789");
  const std::size_t corte = letra == std::string::npos ? 0 : letra + 1;
  return {nombre.substr(0, corte), Val(nombre.substr(corte))};
}

// The number of a port from 1 to 10 that a text of digits tells; 0 for any other text.
int NumeroDeTexto(std::string_view texto) {
  const bool digitos = !texto.empty() && texto.size() <= 2 && texto.find_first_not_of("0123456789") == texto.npos;
  const int numero = digitos ? std::stoi(std::string(texto)) : 0;
  return numero <= kUltimoPuertoSerie ? numero : 0;
}

// The number in a name like "COM3"; 0 for any other name.
int NumeroPropio(const std::filesystem::path& ruta) {
  const std::string nombre = ruta.filename().string();
  return nombre.starts_with(kPrefijo) ? NumeroDeTexto(std::string_view(nombre).substr(kPrefijo.size())) : 0;
}

bool EstaEntre(std::span<const PuertoSerie> puertos, int numero) {
  return std::any_of(puertos.begin(), puertos.end(), [numero](const PuertoSerie& p) { return p.numero == numero; });
}

[[noreturn]] void NoSeEntiende(const std::string& motivo) {
  throw Error(error::kArchivo, kArchivo, motivo);
}

// The pairs of the file. Each of its lines must make sense: what is passed over would have its number given away.
std::map<int, std::string> LeerPares(const std::filesystem::path& archivo) {
  std::map<int, std::string> pares;
  std::ifstream entrada(archivo, std::ios::binary);
  const std::string texto{std::istreambuf_iterator<char>(entrada), {}};
  const TomlLeido leido = LeerToml(texto);
  if (!leido.Bien()) NoSeEntiende(leido.Falla());
  for (const auto& [clave, nodo] : leido.raiz) {
    if (clave.str() != kTabla || !nodo.is_table()) NoSeEntiende("'" + std::string(clave.str()) + "' está de más");
  }
  const toml::table* tabla = leido.raiz[kTabla].as_table();
  if (tabla == nullptr) return pares;
  for (const auto& [clave, nodo] : *tabla) {
    const int numero = NumeroDeTexto(clave.str());
    const auto ruta = nodo.value<std::string>();
    if (numero == 0 || !ruta || ruta->empty()) NoSeEntiende("'" + std::string(clave.str()) + "' no es un puerto");
    const bool repetida = std::any_of(pares.begin(), pares.end(), [&](const auto& par) { return par.second == *ruta; });
    if (repetida) NoSeEntiende(*ruta + " tiene dos números");
    pares[numero] = *ruta;
  }
  return pares;
}

}  // namespace

std::vector<Dispositivo> LineasDeEstacion(const std::filesystem::path& carpeta) {
  std::vector<Dispositivo> lineas;
  if (EstacionDetenida(carpeta)) return lineas;
  std::error_code falla;
  for (std::filesystem::directory_iterator i(carpeta, falla), fin; !falla && i != fin; i.increment(falla)) {
    std::error_code de_esta;
    const bool hay = std::filesystem::is_character_file(i->path(), de_esta);
    if (hay && NumeroPropio(i->path()) != 0) lineas.push_back({i->path().string(), "Línea de la estación"});
  }
  return lineas;
}

std::string NombreDuradero(const std::string& ruta, const std::filesystem::path& enlaces) {
  std::error_code falla;
  const std::filesystem::path dispositivo = std::filesystem::canonical(ruta, falla);
  if (falla) return ruta;
  for (std::filesystem::directory_iterator i(enlaces, falla), fin; !falla && i != fin; i.increment(falla)) {
    std::error_code de_este;
    if (std::filesystem::canonical(i->path(), de_este) == dispositivo && !de_este) return i->path().string();
  }
  return ruta;
}

NumerosDePuerto::NumerosDePuerto(std::filesystem::path archivo) : archivo_(std::move(archivo)) {
  Leer();
}

void NumerosDePuerto::Leer() {
  std::error_code falla;
  if (std::filesystem::symlink_status(archivo_, falla).type() == std::filesystem::file_type::not_found) return;
  std::string motivo = "no se puede leer";
  try {
    if (std::ifstream(archivo_)) {
      dispositivos_ = LeerPares(archivo_);
      return;
    }
  } catch (const Error& error) {
    motivo = error.Descripcion();
  }
  legible_ = false;
  aviso_ = archivo_.string() + ", " + motivo +
           ". No se sabe de qué dispositivo es cada puerto COM: corrija ese archivo o quítelo, y vuelva a empezar";
}

// A file that can't be written costs nothing now: the numbers hold until the end of the run.
void NumerosDePuerto::Guardar() {
  try {
    EscribirEntero(archivo_, [this](std::ostream& salida) {
      salida << "# El dispositivo de cada puerto COM. Un número que se quita de aquí queda libre para otro.\n["
             << kTabla << "]\n";
      for (const auto& [numero, ruta] : dispositivos_)
        salida << numero << " = " << toml::value<std::string>(ruta) << '\n';
    });
  } catch (const Error& error) {
    aviso_ = error.Descripcion();
  }
}

int NumerosDePuerto::NumeroDe(const std::string& ruta) const {
  for (const auto& [numero, otra] : dispositivos_) {
    if (otra == ruta) return numero;
  }
  return 0;
}

int NumerosDePuerto::NumeroNuevo(const std::string& ruta, std::span<const PuertoSerie> simulados) const {
  const auto libre = [&](int numero) { return !dispositivos_.contains(numero) && !EstaEntre(simulados, numero); };
  const int propio = NumeroPropio(ruta);
  if (propio != 0 && libre(propio)) return propio;
  for (int numero = 1; numero <= kUltimoPuertoSerie; ++numero) {
    if (libre(numero)) return numero;
  }
  return 0;
}

std::vector<PuertoSerie> NumerosDePuerto::Repartir(std::span<const PuertoSerie> simulados,
                                                   std::vector<Dispositivo> presentes) {
  std::sort(presentes.begin(), presentes.end(),
            [](const Dispositivo& a, const Dispositivo& b) { return ClaveNatural(a.ruta) < ClaveNatural(b.ruta); });
  // Those that ask for a number choose ahead of those that take any.
  std::stable_partition(presentes.begin(), presentes.end(),
                        [](const Dispositivo& dispositivo) { return NumeroPropio(dispositivo.ruta) != 0; });
  std::vector<PuertoSerie> puertos;
  if (!legible_) return puertos;
  bool hay_nuevos = false;
  for (const Dispositivo& dispositivo : presentes) {
    int numero = NumeroDe(dispositivo.ruta);
    if (numero == 0) {
      numero = NumeroNuevo(dispositivo.ruta, simulados);
      if (numero == 0) {
        aviso_ = "No queda número de puerto para " + dispositivo.ruta + "; ver " + kArchivo;
        continue;
      }
      dispositivos_[numero] = dispositivo.ruta;
      hay_nuevos = true;
    }
    puertos.push_back({numero, dispositivo.descripcion + ", " + dispositivo.ruta});
  }
  if (hay_nuevos) Guardar();
  for (const PuertoSerie& simulado : simulados) {
    if (!dispositivos_.contains(simulado.numero)) puertos.push_back(simulado);
  }
  std::sort(puertos.begin(), puertos.end(),
            [](const PuertoSerie& a, const PuertoSerie& b) { return a.numero < b.numero; });
  return puertos;
}

std::optional<std::string> NumerosDePuerto::De(int numero) const {
  const auto par = dispositivos_.find(numero);
  return par == dispositivos_.end() ? std::nullopt : std::optional(par->second);
}

std::optional<std::string> NumerosDePuerto::Abrible(int numero) const {
  if (!legible_) throw Error(error::kArchivo, kArchivo, aviso_);
  auto ruta = De(numero);
  if (ruta && EstacionDetenida(std::filesystem::path(*ruta).parent_path())) ruta.reset();
  return ruta;
}

}  // namespace utr
