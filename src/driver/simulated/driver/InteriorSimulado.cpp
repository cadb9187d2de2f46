#include "driver/simulated/driver/InteriorSimulado.h"

#include <algorithm>

#include "base/Error.h"

namespace utr::simulada {

namespace {

constexpr int kPaginasEntreMiradas = 96;  // a look at a file costs as much as several pages
constexpr double kPasoDeLlamada = 0.1;    // seconds between two looks at whether the call was abandoned

}  // namespace

InteriorSimulado::InteriorSimulado(const std::filesystem::path& donde, Reloj& un_reloj, Atender atiende)
    : ConBitacora{Bitacora{donde}},
      EstacionViva(donde, {"UTRSimulada.toml", "UTRSimulada.estado", "UTRSimulada.candado"}, un_reloj,
                   std::move(atiende),
                   [this](const FechaHora& cuando, std::string_view linea) { bitacora.Aviso(cuando, linea); }) {
  AlAdoptar();
}

void InteriorSimulado::AlAdoptar() {
  fallas.Poner(escenario.fallas);
}

Fallas& InteriorSimulado::Mirar(Op op) {
  const bool seguida = op == Op::kLeerPaginaFlash || op == Op::kDecodificarPagina || op == Op::kDecodificarPaginaCola;
  if (!seguida || paginas_seguidas_ % kPaginasEntreMiradas == 0) Comenzar();
  paginas_seguidas_ = seguida ? paginas_seguidas_ + 1 : 0;
  return fallas;
}

void InteriorSimulado::Disponer(bool bloquea, double atraso_de_valores) {
  bloqueada_ = bloquea;
  atraso = atraso_de_valores;
}

bool InteriorSimulado::Cumplir(const std::function<bool()>& orden) {
  const EnlaceSimulado como_estaba = enlace;
  if (EstacionViva::Cumplir(orden)) return true;
  enlace = como_estaba;
  return false;
}

bool InteriorSimulado::Llega() {
  if (enlace.ausente_hasta != 0 && reloj.Milisegundos() >= enlace.ausente_hasta) enlace.ausente_hasta = 0;
  return enlace.ausente_hasta == 0 && enlace.Llega(escenario.lineas, Unidad());
}

void InteriorSimulado::ExigirPropia() {
  if (!EsPropia()) throw Error(error::kPuertoEnUso, "Comunicador", "Otro programa tiene la estación simulada");
}

bool InteriorSimulado::Responde() {
  ExigirPropia();
  const bool llega = Llega();
  enlace.caido = !llega;
  respondio_ = llega;
  if (!llega) Esperar(escenario.tiempos.sin_respuesta);
  if (al_contestar) al_contestar(llega);
  return llega;
}

void InteriorSimulado::ExigirRespuesta() {
  if (!Responde()) Lanzar(error::kSinRespuesta, "Comunicador");
}

void InteriorSimulado::Esperar(double segundos) {
  bitacora.Vaciar();
  reloj.Esperar(segundos * escenario.tiempos.factor, bloqueada_ ? Atender{} : atender);
}

bool InteriorSimulado::EsperarLlamada(double segundos) {
  for (; segundos > 0 && enlace.llamar; segundos -= kPasoDeLlamada) Esperar(std::min(segundos, kPasoDeLlamada));
  return enlace.llamar;
}

// Ten bits a byte: eight, and the two that begin and end it.
void InteriorSimulado::Transferir(Op op, std::size_t filas) {
  if (escenario.tiempos.factor <= 0) return;
  const Octetos& octetos = De(op).octetos;
  const double bits = 10 * (octetos.fijos + static_cast<double>(filas) * octetos.por_fila);
  const double segundos = bits / enlace.VelocidadDeLinea(Unidad()) * escenario.tiempos.linea;
  if (segundos * escenario.tiempos.factor > 0) Esperar(segundos);
}

}  // namespace utr::simulada
