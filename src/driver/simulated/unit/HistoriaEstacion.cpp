#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "driver/Dias.h"
#include "driver/simulated/unit/Estacion.h"

// What the station records while time passes.
namespace utr::simulada {

namespace {

constexpr std::int64_t kMinuto = 60;
constexpr int kCanalPuerta = 16;
constexpr int kCanalBateria = 10;

// One run of recording over a span of time. It looks at the world through the hydrology alone and compares with what
// the unit itself remembers, so that a span recorded in one go, in pieces and by several runs of the program leaves the
// same records, and a value that a trainer nails down is a step whenever it happens.
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
    for (const Entrada& entrada : e_.vigente.Entradas()) {
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
    sucedio_ = false;
    encolados_ = 0;
    if (h_.Hueco(t - paso_)) Suceder(suceso::kReinicio);
    const bool obligatoria = EnHorario(bandera::kTxObligatoria, &Entrada::obligatoria);
    for (const ParametrosCanal& p : historicos_) Canal(p, obligatoria);
    Puerta();
    Bateria();
    const bool llama = obligatoria || (sucedio_ && e_.Tiene(bandera::kTxSuceso));
    if (llama || EnHorario(bandera::kTxVentana, &Entrada::ventana)) Transmitir(llama);
  }

  // The schedule has a time of that kind now, and the flags let it rule.
  bool EnHorario(unsigned bandera_propia, bool Entrada::*clase) const {
    const auto& entradas = e_.vigente.Entradas();
    return e_.Tiene(bandera::kTxHora | bandera_propia) &&
           std::any_of(entradas.begin(), entradas.end(), [this, clase](const Entrada& entrada) {
             return entrada.Cuenta() && entrada.*clase && entrada.minuto == minuto_;
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
      ++encolados_;
      e_.memoria.AnotarEnCola(dia_, en_cola);
      if (EnCartucho()) e_.cartucho.AnotarEnCola(dia_, en_cola);
    }
    if (!guarda || p.pila >= kPilas) return;
    e_.memoria.Anotar(p.pila, dia_, muestra);
    if (EnCartucho()) e_.cartucho.Anotar(p.pila, dia_, muestra);
  }

  // What the unit saw of a channel before, which gives way to what it sees now.
  static Vistazo Mirar(Estacion::Vistazos& vistazos, int canal, const Vistazo& ahora) {
    return std::exchange(vistazos[static_cast<std::size_t>(canal - 1)], ahora);
  }
  Vistazo Mirar(Estacion::Vistazos& vistazos, int canal) const {
    return Mirar(vistazos, canal, {.momento = t_, .valor = h_.Valor(canal, t_)});
  }
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
    const Vistazo antes = Mirar(e_.para_condicional, p.canal);
    if (!lluvia && !antes.Sigue(t_, p.t_discret * kMinuto)) return false;
    const double cambio = lluvia ? Vuelcos(p, p.t_discret) * p.cte_pluvi : h_.Valor(p.canal, t_) - antes.valor;
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

  // Alarms fire where a limit is crossed between the last evaluation and this one, however long ago that was. A
  // variation is told from one evaluation to the next alone.
  void Alarmas(const ParametrosCanal& p) {
    const double medido = h_.Valor(p.canal, t_);
    const Hidrologia::Extremos extremos = h_.ExtremosDe(p.canal, t_);
    const Vistazo vistazo{
        .momento = t_, .valor = medido, .arriba = medido + extremos.arriba, .abajo = medido - extremos.abajo};
    const Vistazo antes = Mirar(e_.para_alarmas, p.canal, vistazo);
    if (!antes.Hay()) return;
    const double valor = medido + p.referencia;
    const double previo = antes.valor + p.referencia;
    const std::int32_t cuentas = p.Cuentas(medido);
    if (valor > p.a_max && previo <= p.a_max) Suceder(suceso::kAlarmaMaximo, p.canal - 1, cuentas);
    if (valor < p.a_min && previo >= p.a_min) Suceder(suceso::kAlarmaMinimo, p.canal - 1, cuentas);
    if (antes.Sigue(t_, p.t_eval * kMinuto)) Variacion(p, valor - previo);
    if (p.tipo == TipoSensor::kNivel) return;  // a level has no peaks of its own
    const double techo = p.al_max_pico - p.referencia;
    const double piso = p.al_min_pico - p.referencia;
    if (vistazo.arriba > techo && antes.arriba <= techo) {
      Suceder(suceso::kPicoMaximo, p.canal - 1, p.Cuentas(vistazo.arriba));
    }
    if (vistazo.abajo < piso && antes.abajo >= piso) {
      Suceder(suceso::kPicoMinimo, p.canal - 1, p.Cuentas(vistazo.abajo));
    }
  }

  void Variacion(const ParametrosCanal& p, double cambio) {
    const auto variacion = static_cast<std::int32_t>(Diferencia(p, cambio));
    if (p.al_sub > 0 && cambio > p.al_sub) Suceder(suceso::kVariacionAscendente, p.canal - 1, variacion);
    if (p.al_baj > 0 && -cambio > p.al_baj) Suceder(suceso::kVariacionDescendente, p.canal - 1, variacion);
  }

  void Puerta() {
    if (!e_.canales.Parametros(kCanalPuerta).Habilitado()) return;
    const bool abierta = h_.Valor(kCanalPuerta, t_) != 0;
    const Vistazo antes = Mirar(e_.para_vigilancia, kCanalPuerta);
    if (!antes.Hay() || abierta == (antes.valor != 0)) return;
    Suceder(abierta ? suceso::kPuertaAbierta : suceso::kPuertaCerrada);
  }

  void Bateria() {
    const ParametrosCanal& p = e_.canales.Parametros(kCanalBateria);
    if (!p.Habilitado() || !p.Alarmas()) return;
    const double tension = h_.Valor(kCanalBateria, t_);
    const Vistazo antes = Mirar(e_.para_vigilancia, kCanalBateria);
    if (tension >= p.a_min || !antes.Hay() || antes.valor < p.a_min) return;
    Suceder(suceso::kBateriaBaja, static_cast<int>(std::lround(tension * 10)), 0);  // tenths of a volt
  }

  // Everything that is pending goes, where somebody answers. A transmission that the unit begins leaves its event; in a
  // window it is the central station that asks.
  void Transmitir(bool llama) {
    if (vida_.transmite && t_ > e_.transmitido) {
      e_.memoria.Sellar();
      e_.memoria.MarcarColaTransmitida();
      e_.memoria.MarcarSucesosTransmitidos();
      e_.transmitido = t_;
    }
    if (llama && t_ <= e_.transmitido) Suceder(suceso::kTransmision, encolados_, 0);
  }

  void Suceder(std::uint8_t codigo) { Anotar({.segundo = segundo_, .codigo = codigo, .marcas = marca::kSinValor}); }

  void Suceder(std::uint8_t codigo, int valor1, std::int32_t valor2) {
    Anotar({.segundo = segundo_, .codigo = codigo, .valor1 = static_cast<std::uint16_t>(valor1), .valor2 = valor2});
  }

  void Anotar(Suceso suceso) {
    sucedio_ = true;
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
  bool sucedio_ = false;  // something happened at this moment
  int encolados_ = 0;     // records that this moment brought into the queue
};

}  // namespace

void Estacion::Registrar(std::int64_t desde, std::int64_t hasta, std::int64_t cartucho_desde) {
  Registro(*this, hidrologia_, vida_, cartucho_desde).Entre(desde, hasta);
}

}  // namespace utr::simulada
