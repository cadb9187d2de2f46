#include "driver/simulated/unit/Agenda.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/Fechas.h"
#include "base/Texto.h"

namespace utr::simulada {

namespace {

constexpr const char* kDeFabrica =
    "00:00 -VC OK;04:00 OVC OK;08:00 OVC OK;12:00 OV- OK;16:00 -VC OK;20:00 OVC OK;23:30 OVC Error de datos;- --- "
    "Libre";

std::string TextoDeEntrada(const Entrada& e) {
  std::string texto = e.minuto < 0 ? "-" : fmt::format("{:02}:{:02}", e.minuto / 60, e.minuto % 60);
  texto += {' ', e.obligatoria ? 'O' : '-', e.ventana ? 'V' : '-', e.condicional ? 'C' : '-', ' '};
  return texto + e.descripcion;
}

// "08:00 OVC OK" taken apart; false for another form.
bool LeerEntrada(std::string_view texto, Entrada& entrada) {
  const std::size_t blanco = texto.find(' ');
  if (blanco == std::string_view::npos || texto.size() < blanco + 6 || texto[blanco + 4] != ' ') return false;
  const std::string_view hora = texto.substr(0, blanco);
  const std::string_view clases = texto.substr(blanco + 1, 3);
  if (hora != "-") {
    const auto momento = hora.find(':') == std::string_view::npos ? std::nullopt : LeerFecha(hora);
    if (!momento) return false;
    entrada.minuto = momento->hora * 60 + momento->minuto;
  }
  const std::string_view letras = "OVC";
  for (std::size_t i = 0; i < letras.size(); ++i) {
    if (clases[i] != letras[i] && clases[i] != '-') return false;
  }
  entrada.obligatoria = clases[0] == 'O';
  entrada.ventana = clases[1] == 'V';
  entrada.condicional = clases[2] == 'C';
  entrada.descripcion = texto.substr(blanco + 5);
  return true;
}

}  // namespace

Agenda Agenda::DeFabrica() {
  Agenda agenda;
  agenda.LeerTexto(kDeFabrica);
  return agenda;
}

std::string Agenda::ComoTexto() const {
  std::vector<std::string> textos;
  for (const Entrada& e : entradas_) textos.push_back(TextoDeEntrada(e));
  return Unir(textos, ";");
}

bool Agenda::LeerTexto(std::string_view texto) {
  std::vector<Entrada> entradas;
  if (!texto.empty()) {
    for (const std::string_view parte : Separar(texto, ';')) {
      Entrada entrada;
      if (!LeerEntrada(parte, entrada)) return false;
      entradas.push_back(std::move(entrada));
    }
  }
  if (entradas.size() > kLugares) return false;
  entradas_ = std::move(entradas);
  return true;
}

bool Agenda::Escribir(Tabla& tabla) {
  auto nuevas = LeerEntradasDeAgenda(tabla);
  if (!nuevas) return false;
  std::copy_if(entradas_.begin(), entradas_.end(), std::back_inserter(*nuevas),
               [](const Entrada& e) { return !e.Cuenta(); });
  if (nuevas->size() > kLugares) return false;
  entradas_ = std::move(*nuevas);
  return true;
}

}  // namespace utr::simulada
