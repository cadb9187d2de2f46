#include "retrieved/recovery/EscritorRecuperacion.h"

#include <fmt/format.h>

#include <utility>

#include "base/Error.h"
#include "services/RegistroErrores.h"

namespace utr {
namespace {

constexpr std::string_view kFinDeLinea = "\"\r\n";
constexpr std::string_view kSeparadores = "/: .";

}  // namespace

std::filesystem::path NombreArchivoFlash(const std::filesystem::path& carpeta, const FechaHora& ahora) {
  std::string nombre = TextoFechaHora(ahora) + "_DatosFlash";
  for (char& letra : nombre) {
    if (kSeparadores.find(letra) != std::string_view::npos) letra = '_';
  }
  return carpeta / (nombre + ".bkp");
}

std::filesystem::path RutaDeConfiguracion(const std::filesystem::path& archivo) {
  return std::filesystem::path(archivo).replace_extension(".ucg");
}

EscritorRecuperacion::EscritorRecuperacion(const std::filesystem::path& ruta, int primera_pista) : archivo_(ruta) {
  const auto encabezar = [&] {
    archivo_.Agregar(fmt::format("\"{}/{}{}", primera_pista, kPistas - 1, kFinDeLinea));
    archivo_.Sincronizar();
  };
  AlFallar(encabezar, [&] {
    std::error_code nada;
    std::filesystem::remove(ruta, nada);
  });
}

EscritorRecuperacion::~EscritorRecuperacion() {
  IgnorandoErrores([&] { Entregar(); });
}

bool EscritorRecuperacion::Admite(std::string_view texto) {
  const auto tiene = [texto](char letra) { return texto.find(letra) != std::string_view::npos; };
  return !texto.empty() && !tiene('"') && !tiene('#') && !tiene('\r') && !tiene('\n') && !tiene('\0');
}

void EscritorRecuperacion::Pagina(const LugarPagina& lugar, std::string_view texto) {
  const auto poner = [this](char antes, const fmt::format_int& numero) {
    lineas_ += antes;
    lineas_.append(numero.data(), numero.size());
  };
  (lineas_ += '"').append(texto);
  poner('#', fmt::format_int(lugar.pista));
  poner(',', fmt::format_int(lugar.pagina));
  lineas_ += kFinDeLinea;
  if (++sin_asegurar_ == kPaginasPorTanda) Asegurar();
}

void EscritorRecuperacion::FinDePista() {
  lineas_ += "\"EOT\"\r\n";
  Asegurar();
}

void EscritorRecuperacion::Asegurar() {
  Entregar();
  archivo_.Sincronizar();
  sin_asegurar_ = 0;
}

// Where all of them don't fit on the disk, those that do.
void EscritorRecuperacion::Entregar() {
  const std::string lineas = std::exchange(lineas_, {});
  if (lineas.empty() || IgnorandoErrores([&] { archivo_.Agregar(lineas); })) return;
  for (std::size_t desde = 0, hasta = 0; desde < lineas.size(); desde = hasta) {
    hasta = lineas.find('\n', desde) + 1;
    archivo_.Agregar(std::string_view(lineas).substr(desde, hasta - desde));
  }
}

void EscritorRecuperacion::Terminar() {
  Entregar();
  archivo_.Terminar();
}

void EscritorRecuperacion::Terminar(const std::filesystem::path& definitiva) {
  Entregar();
  archivo_.Terminar(definitiva);
}

}  // namespace utr
