#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/Reloj.h"
#include "driver/Comunicador.h"
#include "shell/Operador.h"
#include "shell/Propiedades.h"
#include "shell/RegistroErrores.h"

namespace utr {

class Catalogo;

// Lists the serial ports: number as shown ("COM n"), system name for the tip.
struct PuertoSerie {
  int numero = 0;
  std::string nombre;
};
class ListaDePuertos {
 public:
  virtual ~ListaDePuertos() = default;
  virtual std::vector<PuertoSerie> Listar() = 0;
};

// The state that the whole program shares, made once in Main and handed by reference to whoever needs it.
struct ModRTU {
  Comunicador& comunicador;
  Propiedades& propiedades;
  RegistroErrores& registro;
  Operador& operador;
  Reloj& reloj;
  Catalogo& catalogo;
  ListaDePuertos& puertos;
  Atender atender;                  // lets events of the interface run
  std::filesystem::path carpeta;    // folder of the executable: settings, logs, catalogues, help
  std::string nombre = "AdminUTR";  // name of the executable, without extension
  std::filesystem::path archivo_ayuda{};

  bool configuracion_leida = false;  // RecConfig came from the unit
  bool por_ip = false;               // the link is over IP
  bool en_llamada = false;           // a telephone call stands, so Conectar isn't repeated
  EleccionImpresora impresora{};     // no name until one was chosen
  std::string ruta_predefinida{};    // predefined parametrization in use
};

// The program's title and bare caption of the main window.
inline constexpr std::string_view kTitulo = "Administración y configuración - KV7340";

}  // namespace utr
