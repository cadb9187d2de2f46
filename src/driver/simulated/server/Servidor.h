#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "driver/CarpetaDeEstacion.h"
#include "driver/simulated/server/Escucha.h"
#include "driver/simulated/server/RelojGobernado.h"

namespace utr::simulada {

// The station as a process: its unit, its listeners and the one loop that serves them. State and scenario lie in the
// folder of the options, as Estacion.estado and Estacion.toml.
class Servidor {
 public:
  // `voces` get what the operator is told, a line at a time; they must outlive it. Raises Error when the folder or a
  // listener can't be had; nothing is left behind then.
  Servidor(const Opciones& opciones, const std::filesystem::path& escenario_modelo, const Voces& voces);

  // Serves until `parar` can be read from; `ordenes` is where orders of --control come from, -1 for none. Their answers
  // go to `contestar`, "bien" or "mal" and a reason. The state is saved when the station goes.
  void Correr(int parar, int ordenes, const std::function<void(std::string_view)>& contestar);

 private:
  void Cumplir(std::string_view orden, const std::function<void(std::string_view)>& contestar);
  bool LeerOrdenes(int ordenes, const std::function<void(std::string_view)>& contestar);
  int Plazo() const;

  CandadoDeCarpeta candado_;
  RelojGobernado reloj_;
  EstacionViva viva_;
  Despachador unidad_;
  std::vector<std::unique_ptr<Escucha>> escuchas_;
  std::string recibido_;   // of the orders
  std::string escenario_;  // that is being dictated
  int renglones_ = 0;      // of it that are still to come
};

}  // namespace utr::simulada
