#include "base/Fechas.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>

#include "base/Error.h"
#include "base/Texto.h"

namespace utr {
namespace {

std::chrono::year_month_day FechaCivil(const FechaHora& f) {
  return std::chrono::year{f.anio} / std::chrono::month{static_cast<unsigned>(f.mes)} /
         std::chrono::day{static_cast<unsigned>(f.dia)};
}

std::optional<int> LeerCifras(std::string_view t, std::size_t maximo) {
  if (t.empty() || t.size() > maximo) return std::nullopt;
  int valor = 0;
  const auto [fin, problema] = std::from_chars(t.data(), t.data() + t.size(), valor);
  if (problema != std::errc() || fin != t.data() + t.size() || t.front() == '-') return std::nullopt;
  return valor;
}

bool LeerHora(std::string_view t, FechaHora& f) {
  const auto partes = Separar(t, ':');
  if (partes.size() < 2 || partes.size() > 3) return false;
  const auto h = LeerCifras(partes[0], 2);
  const auto m = LeerCifras(partes[1], 2);
  const auto s = partes.size() == 3 ? LeerCifras(partes[2], 2) : std::optional<int>(0);
  if (!h || !m || !s) return false;
  f.hora = *h;
  f.minuto = *m;
  f.segundo = *s;
  return true;
}

int AnioCompleto(int anio, std::size_t cifras) {
  if (cifras > 2) return anio;
  return anio < 30 ? 2000 + anio : 1900 + anio;
}

bool LeerDia(std::string_view t, FechaHora& f) {
  const char separador = t.find('/') != std::string_view::npos ? '/' : '-';
  const auto partes = Separar(t, separador);
  if (partes.size() != 3) return false;
  const bool anio_delante = partes[0].size() == 4;
  const auto texto_anio = partes[anio_delante ? 0 : 2];
  const auto anio = LeerCifras(texto_anio, 4);
  const auto primero = LeerCifras(partes[anio_delante ? 2 : 0], 2);
  const auto mes = LeerCifras(partes[1], 2);
  if (!anio || !primero || !mes || texto_anio.size() == 3) return false;
  f.anio = AnioCompleto(*anio, texto_anio.size());
  f.dia = *primero;
  f.mes = *mes;
  if (!anio_delante && f.mes > 12 && f.dia <= 12) std::swap(f.dia, f.mes);
  return true;
}

}  // namespace

bool EsValida(const FechaHora& f) {
  return f.anio >= 100 && f.anio <= 9999 && f.mes >= 1 && f.mes <= 12 && f.dia >= 1 && FechaCivil(f).ok() &&
         f.hora >= 0 && f.hora <= 23 && f.minuto >= 0 && f.minuto <= 59 && f.segundo >= 0 && f.segundo <= 59;
}

std::int64_t DiasDesde1970(const FechaHora& fecha) {
  return std::chrono::sys_days{FechaCivil(fecha)}.time_since_epoch().count();
}

FechaHora FechaDeDias(std::int64_t dias) {
  const std::chrono::year_month_day civil{std::chrono::sys_days{std::chrono::days{dias}}};
  FechaHora f;
  f.anio = static_cast<int>(civil.year());
  f.mes = static_cast<int>(static_cast<unsigned>(civil.month()));
  f.dia = static_cast<int>(static_cast<unsigned>(civil.day()));
  return f;
}

std::int64_t Segundos(const FechaHora& f) {
  return DiasDesde1970(f) * kSegundosDia + f.hora * 3600 + f.minuto * 60 + f.segundo;
}

FechaHora FechaDeSegundos(std::int64_t segundos) {
  std::int64_t dias = segundos / kSegundosDia;
  std::int64_t resto = segundos % kSegundosDia;
  if (resto < 0) {
    resto += kSegundosDia;
    --dias;
  }
  FechaHora f = FechaDeDias(dias);
  f.hora = static_cast<int>(resto / 3600);
  f.minuto = static_cast<int>(resto % 3600 / 60);
  f.segundo = static_cast<int>(resto % 60);
  return f;
}

std::optional<FechaHora> LeerFecha(std::string_view texto) {
  texto = Recortar(texto);
  FechaHora f;
  const auto blanco = texto.find(' ');
  const auto primera = texto.substr(0, blanco);
  if (primera.find(':') != std::string_view::npos) {
    if (blanco != std::string_view::npos || !LeerHora(primera, f)) return std::nullopt;
  } else {
    if (!LeerDia(primera, f)) return std::nullopt;
    if (blanco != std::string_view::npos && !LeerHora(Recortar(texto.substr(blanco)), f)) return std::nullopt;
  }
  return EsValida(f) ? std::optional(f) : std::nullopt;
}

bool EsFecha(std::string_view texto) {
  return LeerFecha(texto).has_value();
}

FechaHora ConvertirAFecha(std::string_view texto) {
  const auto f = LeerFecha(texto);
  if (!f) Lanzar(error::kTipos, "ConvertirAFecha");
  return *f;
}

std::string TextoFecha(const FechaHora& f) {
  return fmt::format("{:02}/{:02}/{:04}", f.dia, f.mes, f.anio);
}

std::string TextoHora(const FechaHora& f) {
  return fmt::format("{:02}:{:02}:{:02}", f.hora, f.minuto, f.segundo);
}

std::string TextoFechaHora(const FechaHora& f) {
  return TextoFecha(f) + " " + TextoHora(f);
}

}  // namespace utr
