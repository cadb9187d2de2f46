#include "driver/Bitacora.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <fstream>

namespace utr {

namespace {

constexpr const char* kNombre = "Comunicador.log";
constexpr const char* kAnterior = "Comunicador.anterior.log";
constexpr std::uintmax_t kMayorArchivo = 32U << 20;  // bytes with which a run may begin
constexpr std::size_t kMayorEspera = 256 * 1024;     // bytes
constexpr std::size_t kTextoCortado = 60;

}  // namespace

std::string Citar(std::string_view texto, std::size_t mayor) {
  std::string_view visible = texto;
  if (texto.size() > mayor) {
    std::size_t corte = std::min(kTextoCortado, mayor);
    while (corte > 0 && (static_cast<unsigned char>(texto[corte]) & 0xC0) == 0x80) --corte;  // a whole character
    visible = texto.substr(0, corte);
  }
  std::string cita = "\"";
  for (const char c : visible) {
    if (c == '\n') {
      cita += "\\n";
    } else if (c == '\r') {
      cita += "\\r";
    } else {
      cita += static_cast<unsigned char>(c) < 32 ? ' ' : c;
    }
  }
  cita += '"';
  if (visible.size() < texto.size()) cita += fmt::format("... ({} caracteres)", texto.size());
  return cita;
}

Bitacora::Bitacora(std::filesystem::path carpeta) : carpeta_(std::move(carpeta)) {
  std::error_code falla;
  const auto largo = std::filesystem::file_size(carpeta_ / kNombre, falla);
  if (!falla && largo > kMayorArchivo) std::filesystem::rename(carpeta_ / kNombre, carpeta_ / kAnterior, falla);
}

Bitacora::~Bitacora() {
  Vaciar();
}

void Bitacora::PonerFecha(const FechaHora& ahora) {
  if (ahora != fecha_ || texto_fecha_.empty()) {
    Vaciar();
    fecha_ = ahora;
    texto_fecha_ = TextoFechaHora(ahora) + ' ';
  }
  pendiente_ += texto_fecha_;
}

void Bitacora::Linea(std::string_view linea) noexcept {
  try {
    pendiente_.append(linea) += '\n';
    Vaciar();
  } catch (...) {  // a line that found no memory is lost
  }
}

void Bitacora::Aviso(const FechaHora& ahora, std::string_view texto) noexcept {
  try {
    PonerFecha(ahora);
    Linea(texto);
  } catch (...) {
  }
}

void Bitacora::Llamada(const FechaHora& ahora, std::string_view operacion, std::string_view argumentos,
                       std::string_view resultado, bool espera) noexcept {
  try {
    PonerFecha(ahora);
    pendiente_.append(operacion) += '(';
    pendiente_.append(argumentos).append(") = ").append(resultado) += '\n';
    if (!espera || pendiente_.size() > kMayorEspera) Vaciar();
  } catch (...) {
  }
}

// Put together by hand and in one piece: it is written 32,768 times in a reading of the whole flash.
void Bitacora::PaginaFlash(const FechaHora& ahora, int pista, int pagina, std::size_t largo) noexcept {
  constexpr std::size_t kMayorNumero = 20;
  char linea[64 + 3 * kMayorNumero];
  char* fin = linea;
  const auto texto = [&fin](std::string_view palabras) { fin += palabras.copy(fin, palabras.size()); };
  const auto numero = [&fin](auto valor) { fin = std::to_chars(fin, fin + kMayorNumero, valor).ptr; };
  texto("LeerPaginaFlash(");
  numero(pista);
  texto(", ");
  numero(pagina);
  texto(") = ");
  numero(largo);
  texto(" caracteres\n");
  try {
    PonerFecha(ahora);
    pendiente_.append(linea, fin);
    if (pendiente_.size() > kMayorEspera) Vaciar();
  } catch (...) {
  }
}

void Bitacora::Vaciar() noexcept {
  if (pendiente_.empty()) return;
  try {
    std::ofstream archivo(carpeta_ / kNombre, std::ios::binary | std::ios::app);
    archivo << pendiente_;
  } catch (...) {
  }
  pendiente_.clear();
}

std::string Bitacora::GuardarTabla(std::string_view operacion, const Tabla& tabla) noexcept {
  try {
    const std::filesystem::path carpeta = carpeta_ / "Comunicador.tablas";
    std::filesystem::create_directories(carpeta);
    std::string nombre;
    do {
      nombre = fmt::format("{:05}_{}.xml", ++numero_, operacion);
    } while (std::filesystem::exists(carpeta / nombre));
    tabla.Save(carpeta / nombre);
    return nombre;
  } catch (...) {
    return {};
  }
}

}  // namespace utr
