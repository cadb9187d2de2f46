#include "retrieved/recovery/ArchivosResultado.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "base/Error.h"
#include "base/Texto.h"

namespace utr {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDatos = "Datos";
constexpr std::string_view kCanal = "Canal_";
constexpr std::string_view kCola = "ColaTx";
constexpr std::string_view kEventos = "Eventos";
constexpr std::string_view kExtension = ".xml";
constexpr const char* kInforme = "Informe.txt";
constexpr std::size_t kLargoExtension = 4;

// The beginning of characters counted from the end.
std::size_t LugarDesdeElFin(std::string_view texto, std::size_t caracteres) {
  std::size_t lugar = texto.size();
  while (caracteres > 0 && lugar > 0) {
    --lugar;
    const bool sigue = (static_cast<unsigned char>(texto[lugar]) & 0xC0) == 0x80;
    if (!sigue) --caracteres;
  }
  return lugar;
}

bool Quitar(std::string_view& texto, std::string_view final) {
  if (!texto.ends_with(final)) return false;
  texto.remove_suffix(final.size());
  return true;
}

bool QuitarNumero(std::string_view& texto) {
  const std::size_t largo = texto.size();
  while (!texto.empty() && texto.back() >= '0' && texto.back() <= '9') texto.remove_suffix(1);
  return texto.size() < largo;
}

// With what the name of a result begins.
std::optional<std::string> BaseDe(const std::string& nombre) {
  std::string_view texto = nombre;
  if (!Quitar(texto, kExtension)) return std::nullopt;
  if (Quitar(texto, kCola) || Quitar(texto, kEventos)) return std::string(texto);
  if (QuitarNumero(texto) && Quitar(texto, kCanal) && Quitar(texto, kDatos)) return std::string(texto);
  return std::nullopt;
}

std::string Nombre(std::string_view clase) {
  return std::string(clase) + std::string(kExtension);
}

}  // namespace

ArchivosResultado::ArchivosResultado(const fs::path& carpeta, const fs::path& recuperacion) : carpeta_(carpeta) {
  const std::string nombre = recuperacion.filename().string();
  if (Largo(nombre) < kLargoExtension) {
    throw Error(error::kLlamada, "ArchivosResultado",
                "El nombre del archivo de recuperación tiene menos de cuatro caracteres: " + nombre);
  }
  base_ = nombre.substr(0, LugarDesdeElFin(nombre, kLargoExtension));
}

fs::path ArchivosResultado::Datos() const {
  return carpeta_ / (base_ + Nombre(kDatos));
}

fs::path ArchivosResultado::Canal(std::int16_t canal) const {
  return carpeta_ / (base_ + std::string(kDatos) + Nombre(std::string(kCanal) + std::to_string(canal)));
}

fs::path ArchivosResultado::Cola() const {
  return carpeta_ / (base_ + Nombre(kCola));
}

fs::path ArchivosResultado::Eventos() const {
  return carpeta_ / (base_ + Nombre(kEventos));
}

fs::path ArchivosResultado::Informe() const {
  return carpeta_ / (base_ + kInforme);
}

std::vector<fs::path> ArchivosResultado::Existentes() const {
  std::vector<fs::path> hallados;
  std::error_code falla;
  for (fs::directory_iterator i(carpeta_, falla), fin; !falla && i != fin; i.increment(falla)) {
    if (BaseDe(i->path().filename().string()) == base_) hallados.push_back(carpeta_ / i->path().filename());
  }
  std::sort(hallados.begin(), hallados.end());
  return hallados;
}

fs::path InformeDeResultado(const fs::path& resultado) {
  const auto base = BaseDe(resultado.filename().string());
  return base ? resultado.parent_path() / (*base + kInforme) : fs::path{};
}

bool EsResultadoDeCola(const fs::path& resultado) {
  return resultado.filename().string().ends_with(Nombre(kCola));
}

}  // namespace utr
