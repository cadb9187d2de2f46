#pragma once

#include <set>
#include <string>
#include <vector>

#include "configuration/Catalogo.h"
#include "session/BitacoraVisita.h"
#include "session/ModRTU.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/ImpresoraFalsa.h"
#include "support/OperadorGuion.h"
#include "support/RelojFalso.h"

namespace utr::prueba {

class PuertosFalsos : public ListaDePuertos {
 public:
  std::vector<PuertoSerie> Listar() override { return puertos; }
  bool EsSimulado(int numero) override { return simulados.contains(numero); }
  std::vector<PuertoSerie> puertos;
  std::set<int> simulados;
};

// The shared state of the program over stand-ins, in a folder of its own. Link utr_session,
// utr_pruebas.
struct ModPrueba {
  Carpeta carpeta;
  RelojFalso reloj;
  ComunicadorFalso comunicador;
  OperadorGuion operador;
  Propiedades propiedades{carpeta / "AdminUTR.dll"};
  RegistroErrores registro{carpeta / "AdminUTR.err", reloj};
  Catalogo catalogo{carpeta.Ruta()};
  PuertosFalsos puertos;
  ImpresoraFalsa impresora;
  Conexion conexion{comunicador, propiedades};
  Diario diario{propiedades, reloj};
  BitacoraVisita bitacora{carpeta.Ruta(), diario, registro};
  ModRTU mod{.comunicador = comunicador,
             .propiedades = propiedades,
             .registro = registro,
             .operador = operador,
             .reloj = reloj,
             .catalogo = catalogo,
             .puertos = puertos,
             .impresora = impresora,
             .conexion = conexion,
             .diario = diario,
             .bitacora = bitacora,
             .atender = {},
             .carpeta = carpeta.Ruta()};

  // What the error log holds.
  std::string Errores() const { return LeerTodo(carpeta / "AdminUTR.err"); }
};

// The same state over another driver and what belongs to it.
inline ModRTU ModSobre(Comunicador& driver, Reloj& reloj, Conexion& conexion, ModPrueba& base, Diario& diario,
                       BitacoraVisita& bitacora) {
  return {.comunicador = driver,
          .propiedades = base.propiedades,
          .registro = base.registro,
          .operador = base.operador,
          .reloj = reloj,
          .catalogo = base.catalogo,
          .puertos = base.puertos,
          .impresora = base.impresora,
          .conexion = conexion,
          .diario = diario,
          .bitacora = bitacora,
          .atender = {},
          .carpeta = base.carpeta.Ruta()};
}

}  // namespace utr::prueba
