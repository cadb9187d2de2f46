#include "driver/simulated/server/Opciones.h"

#include <algorithm>
#include <charconv>

#include "base/Error.h"
#include "driver/CarpetaDeEstacion.h"
#include "driver/Textos.h"

namespace utr::simulada {

namespace {

constexpr std::string_view kAyuda = R"(Uso: utr-estacion [opciones]

Una estación de práctica al otro extremo de un cable: la UTR simulada en un proceso propio, que contesta Modbus.

  --carpeta RUTA            dónde guarda su escenario (Estacion.toml), su estado y sus líneas; sin ella, la de la
                            variable UTR_ESTACION o ~/.local/state/utr-estacion
  --tcp [DIRECCIÓN:]PUERTO  atiende Modbus TCP; sin dirección, sólo a esta máquina (127.0.0.1)
  --linea COMn              una línea serie: un seudoterminal enlazado como COMn en la carpeta
  --modem COMn              lo mismo, con un modem delante
  --serie DISPOSITIVO       un puerto serie de esta máquina, a la velocidad de la UTR
  --control                 obedece órdenes por la entrada estándar (para pruebas)
  --hora FECHA              con --control, la hora en la que comienza y se queda su reloj
  --ayuda                   muestra esto
  --version                 muestra la versión

Cada opción de línea puede repetirse. Sin ninguna: --tcp 1502 --linea COM4 --modem COM5.
Termina con Ctrl+C y guarda su estado.

Modbus no pide contraseña: con --tcp en otra dirección que 127.0.0.1, cualquiera que llegue al puerto puede borrarla.
)";

[[noreturn]] void Mal(const std::string& motivo) {
  throw Error(error::kLlamada, "utr-estacion", motivo + "; utr-estacion --ayuda dice cómo se usa");
}

// "1502" or "0.0.0.0:1502".
Opciones::Red LeerRed(std::string_view texto) {
  Opciones::Red red;
  const std::size_t corte = texto.rfind(':');
  if (corte != std::string_view::npos) red.direccion = texto.substr(0, corte);
  const std::string_view puerto = corte == std::string_view::npos ? texto : texto.substr(corte + 1);
  const auto [fin, falla] = std::from_chars(puerto.data(), puerto.data() + puerto.size(), red.puerto);
  const bool entero = !puerto.empty() && falla == std::errc{} && fin == puerto.data() + puerto.size();
  if (!entero || !EsDireccionIP(red.direccion)) Mal("--tcp no admite \"" + std::string(texto) + "\"");
  return red;
}

// A name that the list of ports takes: COM1 to COM10.
std::string LeerNombre(std::string_view opcion, std::string_view texto) {
  int numero = 0;
  const std::string_view digitos = texto.starts_with("COM") ? texto.substr(3) : std::string_view{};
  const auto [fin, falla] = std::from_chars(digitos.data(), digitos.data() + digitos.size(), numero);
  const bool entero = falla == std::errc{} && fin == digitos.data() + digitos.size() && !digitos.starts_with('0');
  if (digitos.empty() || !entero || numero < 1 || numero > 10) {
    Mal(std::string(opcion) + " quiere un nombre de COM1 a COM10, no \"" + std::string(texto) + "\"");
  }
  return std::string(texto);
}

void AgregarLinea(Opciones& o, std::vector<std::string>& cuales, std::string_view opcion, std::string_view texto) {
  std::string nombre = LeerNombre(opcion, texto);
  for (const auto* lista : {&o.lineas, &o.modems}) {
    if (std::find(lista->begin(), lista->end(), nombre) != lista->end()) Mal(nombre + " está dos veces");
  }
  cuales.push_back(std::move(nombre));
}

constexpr struct {
  std::string_view nombre;
  void (*leer)(Opciones&, std::string_view);
} kConValor[] = {
    {"--carpeta", [](Opciones& o, std::string_view v) { o.carpeta = v; }},
    {"--tcp", [](Opciones& o, std::string_view v) { o.redes.push_back(LeerRed(v)); }},
    {"--linea", [](Opciones& o, std::string_view v) { AgregarLinea(o, o.lineas, "--linea", v); }},
    {"--modem", [](Opciones& o, std::string_view v) { AgregarLinea(o, o.modems, "--modem", v); }},
    {"--serie", [](Opciones& o, std::string_view v) { o.seriales.emplace_back(v); }},
    {"--hora", [](Opciones& o, std::string_view v) { o.hora = ConvertirAFecha(v); }},
};

}  // namespace

std::string_view Ayuda() {
  return kAyuda;
}

Opciones LeerOpciones(std::span<const std::string_view> argumentos) {
  Opciones opciones;
  opciones.carpeta = CarpetaDeEstacion();
  for (std::size_t i = 0; i < argumentos.size(); ++i) {
    const std::string_view nombre = argumentos[i];
    if (nombre == "--ayuda" || nombre == "--help" || nombre == "-h") {
      opciones.ayuda = true;
    } else if (nombre == "--version") {
      opciones.version = true;
    } else if (nombre == "--control") {
      opciones.control = true;
    } else {
      const auto* opcion = std::find_if(std::begin(kConValor), std::end(kConValor),
                                        [nombre](const auto& o) { return o.nombre == nombre; });
      if (opcion == std::end(kConValor)) Mal("No conoce la opción \"" + std::string(nombre) + "\"");
      if (++i == argumentos.size() || argumentos[i].empty()) Mal("Falta el valor de " + std::string(nombre));
      opcion->leer(opciones, argumentos[i]);
    }
  }
  if (opciones.ayuda || opciones.version) return opciones;
  if (opciones.hora && !opciones.control) Mal("--hora va con --control");
  if (opciones.carpeta.empty()) Mal("No se sabe en qué carpeta guardarse: falta --carpeta");
  const bool escucha =
      !opciones.redes.empty() || !opciones.lineas.empty() || !opciones.modems.empty() || !opciones.seriales.empty();
  if (!escucha) {
    opciones.redes.push_back({.puerto = 1502});
    opciones.lineas = {"COM4"};
    opciones.modems = {"COM5"};
  }
  return opciones;
}

}  // namespace utr::simulada
