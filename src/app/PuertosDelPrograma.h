#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "app/Eleccion.h"
#include "driver/CarpetaDeEstacion.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "session/NumerosDePuerto.h"
#include "session/windows/modCOM.h"

namespace utr {

// The one list of serial ports: those of the simulated station, the lines of a station that runs on this machine, and
// the machine's devices, each with a number of its own.
class PuertosDelPrograma : public ListaDePuertos {
 public:
  // `avisar` is told what the operator should know of the numbers, when a list has brought it up.
  PuertosDelPrograma(ComunicadorSimulado& simulado, NumerosDePuerto& numeros, Eleccion eleccion,
                     std::function<void(const std::string&)> avisar)
      : simulado_(simulado), numeros_(numeros), eleccion_(eleccion), avisar_(std::move(avisar)) {}

  std::vector<PuertoSerie> Listar() override {
    // The simulated station keeps its numbers though it isn't to be chosen: a device would keep them for good.
    auto puertos = numeros_.Repartir(Simulados(), Dispositivos());
    if (eleccion_ == Eleccion::kLinea)
      std::erase_if(puertos, [this](const PuertoSerie& puerto) { return numeros_.EsDeNadie(puerto.numero); });
    if (!numeros_.Aviso().empty()) avisar_(numeros_.Aviso());
    return puertos;
  }

  // A port of the simulated station: one that it has, and that never was a device's as far as anybody can tell.
  bool EsSimulado(int numero) override {
    const auto simulados = Simulados();
    const bool tiene =
        std::any_of(simulados.begin(), simulados.end(), [numero](const auto& p) { return p.numero == numero; });
    return eleccion_ == Eleccion::kSimulada || (eleccion_ == Eleccion::kLibre && tiene && numeros_.EsDeNadie(numero));
  }
  bool EsSimulada(std::string_view direccion) {
    return eleccion_ == Eleccion::kSimulada || (eleccion_ == Eleccion::kLibre && simulado_.TieneDireccion(direccion));
  }

 private:
  std::vector<PuertoSerie> Simulados() {
    std::vector<PuertoSerie> puertos;
    for (const auto& [numero, nombre] : simulado_.Puertos()) puertos.push_back({numero, nombre});
    return puertos;
  }
  std::vector<utr::Dispositivo> Dispositivos() const {
    if (eleccion_ == Eleccion::kSimulada) return {};
    std::vector<utr::Dispositivo> todos = LineasDeEstacion(CarpetaDeEstacion());
    const auto del_equipo = DispositivosDelEquipo();
    todos.insert(todos.end(), del_equipo.begin(), del_equipo.end());
    return todos;
  }

  ComunicadorSimulado& simulado_;
  NumerosDePuerto& numeros_;
  Eleccion eleccion_;
  std::function<void(const std::string&)> avisar_;
};

}  // namespace utr
