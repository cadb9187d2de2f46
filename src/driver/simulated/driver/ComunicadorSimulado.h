#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Reloj.h"
#include "driver/ComunicadorReenviado.h"

namespace utr {

namespace simulada {
class Fallas;
enum class Op : std::uint8_t;
}  // namespace simulada

// The contract over a simulated station. In `carpeta`, where the program writes, it keeps:
//   UTRSimulada.toml     the scenario, read again at the next call whenever it has changed; optional, and the one that
//   came
//                        with an installed program stands in for it
//   UTRSimulada.estado   what the unit remembers between runs; written after each change and at the end
//   UTRSimulada.candado  taken for as long as the program runs, so that no two programs keep the same state
//   Comunicador.log      one line a call
// Any of them may be missing or out of reach: the station answers all the same. But an order that can't be kept isn't
// carried out, and gives false. While another program has the station, Conectar and whatever asks the unit raise
// kPuertoEnUso.
//
// Every operation raises Error and nothing else. Waits go through the clock with the time factor of the scenario;
// `atender` lets events of the interface run meanwhile and may be empty.
class ComunicadorSimulado final : public ComunicadorReenviado {
 public:
  ComunicadorSimulado(const std::filesystem::path& carpeta, Reloj& reloj, Atender atender);
  ~ComunicadorSimulado() override;
  ComunicadorSimulado(const ComunicadorSimulado&) = delete;
  ComunicadorSimulado& operator=(const ComunicadorSimulado&) = delete;

  // The serial ports of the simulated machine: number and system name, in ascending order; and whether an address is
  // one of its own. Both as the scenario says now.
  std::vector<std::pair<int, std::string>> Puertos();
  bool TieneDireccion(std::string_view direccion);

  // The faults that the scenario wants a call of `op` to meet over a line as well, with their counts; none where it
  // doesn't. `Factor` is that of its times.
  simulada::Fallas* FallasPorLinea(simulada::Op op);
  double Factor() const;

  // Who is told of every call that reached for the unit whether it answered; nothing: it is away for a while.
  void AlContestar(std::function<void(std::optional<bool> contesta)> aviso);

  // What the operator should know of the beginning: that a state file couldn't be read and where it was put, or that
  // the state can't be kept. Empty: nothing happened.
  const std::string& Aviso() const;

  // Writes the lines of the log that wait in memory. To be called once a second, so that none waits longer.
  void VaciarBitacora() noexcept;

 private:
  struct Partes;
  explicit ComunicadorSimulado(std::unique_ptr<Partes> partes);

  std::unique_ptr<Partes> partes_;
};

}  // namespace utr
