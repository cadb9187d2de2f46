#include <algorithm>
#include <cmath>
#include <numeric>

#include "driver/Dias.h"
#include "driver/simulated/Estacion.h"

// What the station records while time passes.
namespace utr::simulada {

namespace {

constexpr std::int64_t kMinuto = 60;
constexpr int kCanalPuerta = 16;
constexpr int kCanalBateria = 10;

// One run of recording over a span of time. It looks at the world through the hydrology alone, present and former, so
// that a span recorded in one go and in pieces leaves the same records.
class Registro {
 public:
  Registro(Estacion& estacion, const Hidrologia& hidrologia, const Vida& vida, std::int64_t cartucho_desde)
      : e_(estacion), h_(hidrologia), vida_(vida), cartucho_desde_(cartucho_desde) {
    for (int canal = 1; canal <= kCanales; ++canal) {
      const ParametrosCanal& p = e_.canales.Parametros(canal);
      if (p.TieneHistoria()) historicos_.push_back(p);
    }
    paso_ = Paso();
  }

  void Entre(std::int64_t desde, std::int64_t hasta) {
    for (std::int64_t t = (desde / paso_ + 1) * paso_; t <= hasta; t += paso_) Instante(t);
    e_.memoria.Sellar();
    e_.cartucho.Sellar();
  }

 private:
  // The longest step, in seconds, that meets every time of every channel and of the schedule.
  std::int64_t Paso() const {
    int paso = 30;
    for (const ParametrosCanal& p : historicos_) {
      for (const int minutos : {p.t_storage, p.t_eval, p.t_discret}) paso = std::gcd(paso, minutos);
    }
    for (const Entrada& entrada : e_.agenda.Entradas()) {
      if (entrada.Cuenta()) paso = std::gcd(paso, entrada.minuto);
    }
    return std::max(paso, 1) * kMinuto;
  }

  void Instante(std::int64_t t) {
    if (h_.Hueco(t)) return;
    t_ = t;
    dia_ = DiaDe(t);
    segundo_ = static_cast<std::uint32_t>(t - SegundosDeDia(dia_));
    minuto_ = static_cast<int>(segundo_ / 60);
    if (h_.Hueco(t - paso_)) Suceder(suceso::kReinicio);
    const bool obligatoria = Obligatoria();
    for (const ParametrosCanal& p : historicos_) Canal(p, obligatoria);
    Puerta();
    Bateria();
    if (obligatoria) Transmitir();
  }

  bool Obligatoria() const {
    const auto& entradas = e_.agenda.Entradas();
    return std::any_of(entradas.begin(), entradas.end(), [this](const Entrada& entrada) {
      return entrada.Cuenta() && entrada.obligatoria && entrada.minuto == minuto_;
    });
  }

  void Canal(const ParametrosCanal& p, bool obligatoria) {
    const bool guarda = minuto_ % p.t_storage == 0;
    const bool falla = h_.Falla(p.canal, t_);
    if (p.Alarmas() && p.tipo != TipoSensor::kPluviometro && !falla && Toca(p.t_eval)) Alarmas(p);
    const bool condicional = !falla && Toca(p.t_discret) && Condicional(p);
    if (!guarda && !obligatoria && !condicional) return;
    Muestra muestra = Tomar(p, falla);
    if (obligatoria || condicional) {
      muestra.marcas |= marca::kEnCola;
      Muestra en_cola = muestra;
      en_cola.marcas = static_cast<std::uint8_t>(en_cola.marcas | Pendiente());
      e_.memoria.AnotarEnCola(dia_, en_cola);
      if (EnCartucho()) e_.cartucho.AnotarEnCola(dia_, en_cola);
    }
    if (!guarda || p.pila >= kPilas) return;
    e_.memoria.Anotar(p.pila, dia_, muestra);
    if (EnCartucho()) e_.cartucho.Anotar(p.pila, dia_, muestra);
  }

  double Antes(int canal, std::int64_t momento) const { return e_.MundoEn(momento).Valor(canal, momento); }
  bool Toca(int periodo) const { return periodo > 0 && minuto_ % periodo == 0; }
  bool EnCartucho() const { return vida_.cartucho && t_ > cartucho_desde_; }
  unsigned Pendiente() const { return t_ > e_.transmitido ? marca::kPendiente : 0; }

  Muestra Tomar(const ParametrosCanal& p, bool falla) const {
    Muestra m{.minuto = static_cast<std::uint16_t>(minuto_), .canal = static_cast<std::uint8_t>(p.canal)};
    if (falla) {
      m.marcas = marca::kSinValor | marca::kSinExtremos;
      return m;
    }
    if (p.tipo == TipoSensor::kPluviometro) {
      m.valor = Vuelcos(p, p.t_storage);
      m.marcas = marca::kSinExtremos | marca::kValidado;
      return m;
    }
    const double valor = h_.Valor(p.canal, t_);
    const Hidrologia::Extremos extremos = h_.ExtremosDe(p.canal, t_);
    m.valor = p.Cuentas(valor);
    m.maximo = p.Cuentas(valor + extremos.arriba);
    m.minimo = p.Cuentas(valor - extremos.abajo);
    const double referido = valor + p.referencia;
    if (p.max_valid <= p.min_valid || (referido <= p.max_valid && referido >= p.min_valid)) m.marcas = marca::kValidado;
    return m;
  }

  std::uint16_t Vuelcos(const ParametrosCanal& p, int minutos) const {
    return static_cast<std::uint16_t>(std::clamp(h_.VuelcosEntre(t_ - minutos * kMinuto, t_, p.cte_pluvi), 0, 65535));
  }

  // A change since the last conditional time that is large enough to be sent; it leaves an event with the difference.
  bool Condicional(const ParametrosCanal& p) {
    const bool lluvia = p.tipo == TipoSensor::kPluviometro;
    const double cambio = lluvia ? Vuelcos(p, p.t_discret) * p.cte_pluvi
                                 : h_.Valor(p.canal, t_) - Antes(p.canal, t_ - p.t_discret * kMinuto);
    const bool subida = p.max_sub_tx > 0 && cambio > p.max_sub_tx;
    const bool bajada = p.max_baj_tx > 0 && -cambio > p.max_baj_tx;
    if (!subida && !bajada) return false;
    const double cuentas = lluvia ? cambio / p.cte_pluvi : Diferencia(p, cambio);
    Suceder(subida ? suceso::kTransmisionPorSubida : suceso::kTransmisionPorBajada, p.canal - 1,
            static_cast<std::int32_t>(cuentas));
    return true;
  }

  static double Diferencia(const ParametrosCanal& p, double cambio) {
    return p.Rango() == 0 ? 0 : std::clamp(cambio * p.span / p.Rango(), -65535.0, 65535.0);
  }

  // Alarms fire where a limit is crossed between the last evaluation and this one.
  void Alarmas(const ParametrosCanal& p) {
    const std::int64_t antes = t_ - p.t_eval * kMinuto;
    const double valor = h_.Valor(p.canal, t_) + p.referencia;
    const double previo = Antes(p.canal, antes) + p.referencia;
    const std::int32_t cuentas = p.Cuentas(valor - p.referencia);
    if (valor > p.a_max && previo <= p.a_max) Suceder(suceso::kAlarmaMaximo, p.canal - 1, cuentas);
    if (valor < p.a_min && previo >= p.a_min) Suceder(suceso::kAlarmaMinimo, p.canal - 1, cuentas);
    const auto variacion = static_cast<std::int32_t>(Diferencia(p, valor - previo));
    if (p.al_sub > 0 && valor - previo > p.al_sub) Suceder(suceso::kVariacionAscendente, p.canal - 1, variacion);
    if (p.al_baj > 0 && previo - valor > p.al_baj) Suceder(suceso::kVariacionDescendente, p.canal - 1, variacion);
    if (p.tipo == TipoSensor::kNivel) return;  // a level has no peaks of its own
    const Hidrologia::Extremos extremos = e_.MundoEn(antes).ExtremosDe(p.canal, antes);
    const double arriba = valor + h_.ExtremosDe(p.canal, t_).arriba;
    const double abajo = valor - h_.ExtremosDe(p.canal, t_).abajo;
    if (arriba > p.al_max_pico && previo + extremos.arriba <= p.al_max_pico) {
      Suceder(suceso::kPicoMaximo, p.canal - 1, p.Cuentas(arriba - p.referencia));
    }
    if (abajo < p.al_min_pico && previo - extremos.abajo >= p.al_min_pico) {
      Suceder(suceso::kPicoMinimo, p.canal - 1, p.Cuentas(abajo - p.referencia));
    }
  }

  void Puerta() {
    if (!e_.canales.Parametros(kCanalPuerta).Habilitado()) return;
    const bool abierta = h_.Valor(kCanalPuerta, t_) != 0;
    if (abierta == (Antes(kCanalPuerta, t_ - paso_) != 0)) return;
    Suceder(abierta ? suceso::kPuertaAbierta : suceso::kPuertaCerrada);
  }

  void Bateria() {
    const ParametrosCanal& p = e_.canales.Parametros(kCanalBateria);
    if (!p.Habilitado() || !p.Alarmas()) return;
    const double tension = h_.Valor(kCanalBateria, t_);
    if (tension >= p.a_min || Antes(kCanalBateria, t_ - paso_) < p.a_min) return;
    Suceder(suceso::kBateriaBaja, static_cast<int>(std::lround(tension * 10)), 0);  // tenths of a volt
  }

  void Transmitir() {
    if (vida_.transmite && t_ > e_.transmitido) {
      e_.memoria.Sellar();
      e_.memoria.MarcarColaTransmitida();
      e_.memoria.MarcarSucesosTransmitidos();
      e_.transmitido = t_;
    }
    if (t_ <= e_.transmitido) Suceder(suceso::kTransmision, static_cast<int>(historicos_.size()), 0);
  }

  void Suceder(std::uint8_t codigo) { Anotar({.segundo = segundo_, .codigo = codigo, .marcas = marca::kSinValor}); }

  void Suceder(std::uint8_t codigo, int valor1, std::int32_t valor2) {
    Anotar({.segundo = segundo_, .codigo = codigo, .valor1 = static_cast<std::uint16_t>(valor1), .valor2 = valor2});
  }

  void Anotar(Suceso suceso) {
    suceso.marcas = static_cast<std::uint8_t>(suceso.marcas | Pendiente());
    e_.memoria.AnotarSuceso(dia_, suceso);
    if (EnCartucho()) e_.cartucho.AnotarSuceso(dia_, suceso);
  }

  Estacion& e_;
  const Hidrologia& h_;
  const Vida& vida_;
  std::int64_t cartucho_desde_;
  std::vector<ParametrosCanal> historicos_;
  std::int64_t paso_ = kMinuto;

  std::int64_t t_ = 0;
  std::int32_t dia_ = 0;
  std::uint32_t segundo_ = 0;
  int minuto_ = 0;
};

}  // namespace

void Estacion::Registrar(std::int64_t desde, std::int64_t hasta, std::int64_t cartucho_desde) {
  Registro(*this, hidrologia_, vida_, cartucho_desde).Entre(desde, hasta);
}

}  // namespace utr::simulada
