#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "driver/Comunicador.h"
#include "support/Tablas.h"

namespace utr::prueba {

// Every operation that waits for the unit, and how it tells that it failed.
struct Operacion {
  const char* nombre;
  std::function<bool(Comunicador&)> fallo;
};
inline std::vector<Operacion> Operaciones() {
  const auto tabla = [] { return TablaDeTextos({"Canal", "AMax"}, {{"1", "7"}}); };
  const auto agenda = [] {
    return TablaDeTextos({"HorarioInteger", "TOblig", "TWind", "TCond"}, {{"7", "Si", "No", "No"}});
  };
  return {{"LeerFechaHora", [](Comunicador& c) { return c.LeerFechaHora().empty(); }},
          {"LeerEstado", [](Comunicador& c) { return c.LeerEstado() < 0; }},
          {"LeerPagina", [](Comunicador& c) { return c.LeerPagina("0", false).empty(); }},
          {"LeerPaginaFlash", [](Comunicador& c) { return c.LeerPaginaFlash(0, 0).empty(); }},
          {"LeerAgenda", [](Comunicador& c) { return c.LeerAgenda() == nullptr; }},
          {"ConfiguracionAlmacenada", [](Comunicador& c) { return c.ConfiguracionAlmacenada(true) == nullptr; }},
          {"LeerInstantaneos", [](Comunicador& c) { return c.LeerInstantaneos() == nullptr; }},
          {"LeerDatos", [](Comunicador& c) { return c.LeerDatos("", "", 0) == nullptr; }},
          {"LeerEventos", [](Comunicador& c) { return c.LeerEventos("", "") == nullptr; }},
          {"LeerColaTx", [](Comunicador& c) { return c.LeerColaTx("", "") == nullptr; }},
          {"LeerDatosCartucho", [](Comunicador& c) { return c.LeerDatosCartucho("", "", 0) == nullptr; }},
          {"LeerEventos de días", [](Comunicador& c) { return c.LeerEventos("", "31/12/2030") == nullptr; }},
          {"LeerEventosCartucho", [](Comunicador& c) { return c.LeerEventosCartucho("", "") == nullptr; }},
          {"BorrarFlash", [](Comunicador& c) { return !c.BorrarFlash(); }},
          {"BorrarCartucho", [](Comunicador& c) { return !c.BorrarCartucho(); }},
          {"ReiniciarAgenda", [](Comunicador& c) { return !c.ReiniciarAgenda("41"); }},
          {"ReiniciarUTR", [](Comunicador& c) { return !c.ReiniciarUTR("14"); }},
          {"GrabarFechaHora", [](Comunicador& c) { return !c.GrabarFechaHora(); }},
          {"GrabarEstado", [](Comunicador& c) { return !c.GrabarEstado("4/0"); }},
          {"EscribirPagina", [](Comunicador& c) { return !c.EscribirPagina("7", "1,2"); }},
          {"GrabarEvento", [](Comunicador& c) { return !c.GrabarEvento("1", "128/0/40/0"); }},
          {"GrabarPilaCanal", [](Comunicador& c) { return !c.GrabarPilaCanal("7", "1$2"); }},
          {"GrabarCanalesModificar", [](Comunicador& c) { return !c.GrabarCanalesModificar("33", "1#"); }},
          {"GrabarParametrizacion", [=](Comunicador& c) { return !c.GrabarParametrizacion(*tabla()); }},
          {"GrabarConfiguracion", [=](Comunicador& c) { return !c.GrabarConfiguracion(*tabla()); }},
          {"GrabarAgenda", [=](Comunicador& c) { return !c.GrabarAgenda(*agenda()); }},
          {"GrabarSalidaDigital", [](Comunicador& c) { return !c.GrabarSalidaDigital(1, true); }}};
}

inline bool EsLectura(const Operacion& operacion) {
  return std::string_view(operacion.nombre).starts_with("Leer") ||
         std::string_view(operacion.nombre).starts_with("Conf");
}

}  // namespace utr::prueba
