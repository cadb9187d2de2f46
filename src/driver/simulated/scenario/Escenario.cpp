#include "driver/simulated/scenario/Escenario.h"

#include <algorithm>
#include <cmath>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/PaginaCero.h"
#include "driver/Textos.h"

namespace utr::simulada {

namespace {

constexpr struct {
  std::string_view nombre;
  unsigned bit;
} kNombresDeBanderas[] = {{"TxOblig", bandera::kTxObligatoria}, {"TxWindows", bandera::kTxVentana},
                          {"TxEvent", bandera::kTxSuceso},      {"TxHora", bandera::kTxHora},
                          {"EvCond", bandera::kCondicional},    {"ErrorFlash", bandera::kErrorFlash}};

int Entero(const std::string& texto) {
  return static_cast<int>(Val(texto));
}

// A 16-bit value into two places of page "0".
void PonerPar(Estacion& estacion, std::size_t lugar, int valor) {
  std::vector<std::uint8_t> cero = estacion.LeerPagina(0);
  cero[lugar] = static_cast<std::uint8_t>(valor & 0xFF);
  cero[lugar + 1] = static_cast<std::uint8_t>((valor >> 8) & 0xFF);
  estacion.EscribirPagina(0, cero);
}

void AplicarVelocidad(Estacion& estacion, const std::string& texto) {
  std::vector<std::uint8_t> cero = estacion.LeerPagina(0);
  cero[pagina0::kVelocidad] = static_cast<std::uint8_t>(pagina0::CodigoDeVelocidad(Entero(texto)).value_or(0));
  estacion.EscribirPagina(0, cero);
  estacion.velocidad = Entero(texto);
}

void AplicarIdentificador(Estacion& estacion, const std::string& texto) {
  PonerPar(estacion, pagina0::kIdentificador, Entero(texto));
  estacion.identificador = Entero(texto);
}

void AplicarBanderas(Estacion& estacion, const std::string& texto) {
  estacion.banderas = 0;
  for (const std::string_view nombre : Separar(texto, ',')) {
    for (const auto& b : kNombresDeBanderas) {
      if (b.nombre == nombre) estacion.banderas |= b.bit;
    }
  }
}

// Keys whose change reaches the unit, each with the way in which it does.
constexpr struct {
  const char* clave;
  void (*aplicar)(Estacion&, const std::string&);
} kAplicables[] = {
    {"equipo.velocidad", AplicarVelocidad},
    {"equipo.identificador", AplicarIdentificador},
    {"equipo.desfase_minutos", [](Estacion& e, const std::string& t) { e.Desfasar(std::llround(Val(t) * 60)); }},
    {"equipo.estado", AplicarBanderas},
    {"salidas.salida1", [](Estacion& e, const std::string& t) { e.salidas[0] = t == "si"; }},
    {"salidas.salida2", [](Estacion& e, const std::string& t) { e.salidas[1] = t == "si"; }},
    {"agenda.entradas",
     [](Estacion& e, const std::string& t) {
       e.agenda.LeerTexto(t);
       e.vigente = e.agenda;
     }},
    {"agenda.ventana_minutos",
     [](Estacion& e, const std::string& t) {
       PonerPar(e, 6, Entero(t));
       e.ventana = Entero(t);
     }},
};

constexpr std::string_view kPaginas = "paginas.";
constexpr std::string_view kCanal = "canal.";
constexpr std::string_view kHistoria = "historia.";

// One key with its new text; an empty `texto` with `quitada` gives the page or channel back what the factory gave it.
void Aplicar(Estacion& estacion, const std::string& clave, const std::string& texto, bool quitada) {
  for (const auto& aplicable : kAplicables) {
    if (clave == aplicable.clave && !quitada) aplicable.aplicar(estacion, texto);
  }
  if (clave.starts_with(kPaginas)) {
    const int numero = Entero(clave.substr(kPaginas.size()));
    const auto bytes = LeerTextoPagina(texto);
    if (quitada) {
      estacion.paginas.erase(numero);
    } else if (bytes) {
      estacion.EscribirPagina(numero, *bytes);
    }
  }
  if (clave.starts_with(kCanal)) {
    const auto partes = Separar(clave, '.');
    const int canal = Entero(std::string{partes[1]});
    estacion.canales.Poner(canal, partes[2], quitada ? Canales::TextoDeFabrica(canal, partes[2]) : texto);
  }
}

}  // namespace

Escenario::Escenario()
    : estado{{"equipo.velocidad", "9600"},
             {"equipo.identificador", "120"},
             {"equipo.desfase_minutos", "0"},
             {"equipo.estado", "TxOblig,TxWindows,TxHora"},
             {"salidas.salida1", "no"},
             {"salidas.salida2", "no"},
             {"agenda.entradas", Agenda::DeFabrica().ComoTexto()},
             {"agenda.ventana_minutos", "10"},
             {"historia.semilla", "7340"},
             {"historia.dias", "45"},
             {"historia.dias_cartucho", "20"},
             {"historia.pendiente_horas", "30"}} {}

bool CambiaHistoria(const std::map<std::string, std::string>& antes, const std::map<std::string, std::string>& ahora) {
  return std::any_of(ahora.begin(), ahora.end(), [&antes](const auto& par) {
    const auto previo = antes.find(par.first);
    return par.first.starts_with(kHistoria) && (previo == antes.end() || previo->second != par.second);
  });
}

bool PierdeClaves(const std::map<std::string, std::string>& antes, const std::map<std::string, std::string>& ahora) {
  return std::any_of(antes.begin(), antes.end(), [&ahora](const auto& par) { return !ahora.contains(par.first); });
}

void AplicarEstado(Estacion& estacion, const std::map<std::string, std::string>& antes,
                   const std::map<std::string, std::string>& ahora) {
  for (const auto& [clave, texto] : antes) {
    if (ahora.count(clave) == 0) Aplicar(estacion, clave, {}, true);
  }
  for (const auto& [clave, texto] : ahora) {
    const auto previo = antes.find(clave);
    if (previo != antes.end() && previo->second == texto) continue;
    Aplicar(estacion, clave, texto, false);
  }
}

}  // namespace utr::simulada
