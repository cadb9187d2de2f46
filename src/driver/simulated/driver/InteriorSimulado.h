#pragma once

#include <functional>
#include <optional>

#include "driver/Bitacora.h"
#include "driver/simulated/driver/ComunicadorConFallas.h"
#include "driver/simulated/driver/EnlaceSimulado.h"
#include "driver/simulated/scenario/EstacionViva.h"
#include "driver/simulated/scenario/Fallas.h"
#include "tables/Tabla.h"

namespace utr::simulada {

// The log, made ahead of the station, which writes to it from the first moment on.
struct ConBitacora {
  Bitacora bitacora;
};

// What the operations over the unit stand on: it lets time pass in the unit, waits for what the line takes, and saves
// the unit when an order changed it. To the faults of the scenario it is the driver that they meet.
struct InteriorSimulado : private ConBitacora, public EstacionViva, public EntornoDeFallas {
  using ConBitacora::bitacora;

  InteriorSimulado(const std::filesystem::path& donde, Reloj& un_reloj, Atender atiende);

  // Runs `cuerpo` as operation `op`, which reaches for the unit, and waits for as long as what it sends and gets takes
  // on the line.
  template <class Cuerpo>
  auto Operar(Op op, Cuerpo cuerpo) -> decltype(cuerpo());

  // What every call begins with: the scenario as it is now, and the time that has passed. Calls on pages, which come by
  // the thousand, look at the scenario once in so many of a run.
  Fallas& Mirar(Op op) override;

  void Disponer(bool bloquea, double atraso_de_valores) override;

  // Waits so many seconds, times the factor of the scenario. Events run meanwhile, unless a fault blocks this call.
  void Esperar(double segundos) override;

  // Raises kPuertoEnUso while another program has the station.
  void ExigirPropia();

  // The unit answers; when it doesn't, the time that its silence takes has passed.
  bool Responde();

  // For reads whose silence must not pass for a unit without data: raises kSinRespuesta when it doesn't answer.
  void ExigirRespuesta();

  // The wait while a number is dialled: false, at once, when the call is abandoned.
  bool EsperarLlamada(double segundos);

  // Orders of the unit come through these: false without an answer, when `orden` gives false, which must have changed
  // nothing then, and when the changed unit can't be saved: it is as it was before in that case.
  template <class Orden>
  bool Ordenar(Op op, Orden orden);

  Fallas fallas;
  EnlaceSimulado enlace;
  std::function<void(std::optional<bool>)> al_contestar;  // told each time whether it did; nothing: it went away
  double atraso = 0;  // seconds by which a fault makes the present values of this call old

 private:
  void AlAdoptar() override;
  bool Cumplir(const std::function<bool()>& orden);
  bool Llega();
  void Transferir(Op op, std::size_t filas);

  static std::size_t FilasDe(const TablaPtr& tabla) { return tabla && tabla->Abierta() ? tabla->RecordCount() : 0; }
  template <class Otro>
  static std::size_t FilasDe(const Otro&) {
    return 0;
  }

  int paginas_seguidas_ = 0;
  bool bloqueada_ = false;  // the call at hand lets no events run
  bool respondio_ = false;  // the unit answered this operation
};

template <class Cuerpo>
auto InteriorSimulado::Operar(Op op, Cuerpo cuerpo) -> decltype(cuerpo()) {
  Seguir();
  respondio_ = false;
  auto resultado = cuerpo();
  if (respondio_) Transferir(op, FilasDe(resultado));
  return resultado;
}

template <class Orden>
bool InteriorSimulado::Ordenar(Op op, Orden orden) {
  return Operar(op, [&] { return Responde() && Cumplir(orden); });
}

}  // namespace utr::simulada
