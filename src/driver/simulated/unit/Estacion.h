#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "driver/simulated/unit/Agenda.h"
#include "driver/simulated/unit/Canales.h"
#include "driver/simulated/unit/Hidrologia.h"
#include "driver/simulated/unit/Memoria.h"

namespace utr::simulada {

// Event numbers of the unit.
namespace suceso {
inline constexpr std::uint8_t kReinicio = 1;
inline constexpr std::uint8_t kPuestaEnHora = 2;
inline constexpr std::uint8_t kFlashBorrada = 3;
inline constexpr std::uint8_t kCartuchoBorrado = 4;
inline constexpr std::uint8_t kAlarmaMaximo = 10;
inline constexpr std::uint8_t kAlarmaMinimo = 11;
inline constexpr std::uint8_t kPicoMaximo = 12;
inline constexpr std::uint8_t kPicoMinimo = 13;
inline constexpr std::uint8_t kBateriaBaja = 20;
inline constexpr std::uint8_t kPuertaAbierta = 21;
inline constexpr std::uint8_t kPuertaCerrada = 22;
inline constexpr std::uint8_t kVariacionAscendente = 23;
inline constexpr std::uint8_t kVariacionDescendente = 24;
inline constexpr std::uint8_t kTransmision = 30;
inline constexpr std::uint8_t kTransmisionPorSubida = 31;
inline constexpr std::uint8_t kTransmisionPorBajada = 32;
inline constexpr std::uint8_t kSalidaConmutada = 40;
}  // namespace suceso

// Bits of the state flags as they are written. The two lowest only order something and are never kept.
namespace bandera {
inline constexpr unsigned kActualizarCola = 0x01;
inline constexpr unsigned kActualizarSucesos = 0x02;
inline constexpr unsigned kTxObligatoria = 0x04;  // at the obligatory times of the schedule
inline constexpr unsigned kTxVentana = 0x08;      // in the windows of the schedule
inline constexpr unsigned kTxSuceso = 0x10;       // as soon as something happens
inline constexpr unsigned kTxHora = 0x20;         // by the schedule at all; the first two rule within
inline constexpr unsigned kCondicional = 0x40;    // read only
inline constexpr unsigned kErrorFlash = 0x80;
}  // namespace bandera

// What the unit saw of a channel when it last looked, which is what it compares with when it looks again.
struct Vistazo {
  std::int64_t momento = -1;  // of its clock; -1: it has never looked
  double valor = 0;
  double arriba = 0;  // the highest and the lowest of the interval
  double abajo = 0;

  bool Hay() const { return momento >= 0; }

  // The looks follow one another: a clock that was moved or a unit that stood still lies between others.
  bool Sigue(std::int64_t ahora, std::int64_t periodo) const {
    return Hay() && ahora > momento && ahora - momento <= periodo;
  }
};

// How the station lives; from the scenario.
struct Vida {
  int dias = 45;  // of history that a fresh memory holds
  int dias_cartucho = 20;
  double pendiente_horas = 30;  // since when the central station hasn't answered
  bool transmite = false;       // whether it answers from now on
  bool cartucho = true;         // a cartridge is in its slot
  int sd1 = -1;                 // output 1: -1 follows the windows of the schedule, 0 and 1 hold it
  Hidrologia::Opciones hidrologia;
};

// The unit itself: what it is, holds and does, apart from the link. Moments are seconds from 01/01/1970; where one is
// called `ahora` it is the computer's time, and the unit's own clock is off it by `desfase`.
class Estacion {
 public:
  Estacion();

  // --- What it remembers; all of it is saved -------------------------------------------------------------------------

  int velocidad = 9600;     // in force; page "0" holds what takes force at the next restart
  int identificador = 120;  // the same
  unsigned banderas = bandera::kTxObligatoria | bandera::kTxVentana | bandera::kTxHora;
  std::int64_t desfase = 0;
  std::array<bool, 2> salidas{};
  std::map<int, std::vector<std::uint8_t>> paginas;  // those that were ever written
  Canales canales;
  Agenda agenda = Agenda::DeFabrica();   // as it was written
  Agenda vigente = Agenda::DeFabrica();  // in force: what was written when it was restarted last
  int ventana = 10;                      // minutes, in force; page "0" holds what was written
  Memoria memoria;
  Memoria cartucho;
  std::int64_t registrado = 0;   // moment of its clock up to which everything is recorded
  std::int64_t transmitido = 0;  // records up to here were transmitted when they were made
  using Vistazos = std::array<Vistazo, kCanales>;
  Vistazos para_alarmas;      // at the last evaluation of alarms
  Vistazos para_condicional;  // at the last conditional time
  Vistazos para_vigilancia;   // of door and battery

  // --- Life ----------------------------------------------------------------------------------------------------------

  // Takes over how it lives from now on; records that exist stay.
  void Vivir(const Vida& vida);

  // Both memories anew: the history of so many days up to the unit's present time.
  void RehacerHistoria(std::int64_t ahora);

  // Records what happened since the last call, sixty days at most.
  void Avanzar(std::int64_t ahora);

  // Its clock jumps to be off by so much, and nothing happened in the time that it jumped over.
  void Desfasar(std::int64_t segundos);

  std::int64_t Reloj(std::int64_t ahora) const { return ahora + desfase; }
  bool TieneCartucho() const { return vida_.cartucho; }

  // --- Orders; each leaves its event ---------------------------------------------------------------------------------

  void PonerEnHora(std::int64_t ahora, std::int64_t hora);  // its clock stands at `hora` from now on
  void Reiniciar(std::int64_t ahora);  // speed and identifier of page "0" take force, and the schedule
  void ReiniciarAgenda();              // the schedule and the window of page "0" take force; the one without an event
  void BorrarFlash(std::int64_t ahora);
  void BorrarCartucho(std::int64_t ahora);
  void ConmutarSalida(int salida, bool encender, std::int64_t ahora);
  void AnotarSuceso(std::int64_t ahora, std::uint8_t codigo);
  void AnotarSuceso(std::int64_t ahora, std::uint8_t codigo, std::uint16_t valor1, std::int32_t valor2);

  // --- Pages and flags -----------------------------------------------------------------------------------------------

  // A page of the unit: page 0 has 64 bytes, 34 and 35 have three, any other 64.
  std::vector<std::uint8_t> LeerPagina(int numero) const;

  // Writes over the first bytes of a page; its length doesn't change. False for more bytes than the page has.
  bool EscribirPagina(int numero, const std::vector<std::uint8_t>& bytes);

  // The flags in the layout of reading.
  std::int32_t Estado() const;

  // All these flags are set.
  bool Tiene(unsigned bits) const { return (banderas & bits) == bits; }

  // Takes flags in the layout of writing.
  void EscribirEstado(unsigned bits);

  // --- Present values ------------------------------------------------------------------------------------------------

  static constexpr std::size_t kTrama = kLugaresDeTrama;
  // As they were so many seconds ago; the two switched outputs are always as they stand.
  std::array<std::int32_t, kTrama> Instantaneos(std::int64_t ahora, std::int64_t atraso = 0) const;

 private:
  void Anotar(std::int64_t ahora, Suceso suceso, bool en_cartucho);
  void Registrado(std::int64_t reloj);
  void Registrar(std::int64_t desde, std::int64_t hasta, std::int64_t cartucho_desde);

  Vida vida_;
  Hidrologia hidrologia_;
};

}  // namespace utr::simulada
