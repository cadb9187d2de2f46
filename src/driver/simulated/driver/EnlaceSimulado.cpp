#include "driver/simulated/driver/EnlaceSimulado.h"

#include <algorithm>

#include "base/Error.h"
#include "base/Numeros.h"
#include "driver/Textos.h"

namespace utr::simulada {

namespace {

constexpr const char* kOrigen = "Comunicador";

template <class T>
bool Contiene(const std::vector<T>& lista, const T& valor) {
  return std::find(lista.begin(), lista.end(), valor) != lista.end();
}

int NumeroDePuerto(std::string_view texto) {
  if (!EsNumerico(texto)) Lanzar(error::kLlamada, kOrigen);
  const double numero = LeerDoble(texto);
  return numero >= 0 && numero <= 65535 ? static_cast<int>(numero) : 0;
}

}  // namespace

void EnlaceSimulado::Conectar(std::string_view enlace, std::string_view puerto_pedido, const Lineas& lineas) {
  const auto pedido = LeerEnlace(enlace);
  if (!pedido) Lanzar(error::kLlamada, kOrigen);
  const int numero = NumeroDePuerto(puerto_pedido);
  Desconectar();
  if (pedido->por_ip) {
    por_ip = true;  // also where nobody answers yet: the next operation tries again
    direccion = pedido->direccion;
    puerto_ip = numero;
    if (!Contiene(lineas.direcciones, direccion) || numero != lineas.puerto_ip) {
      throw Error(error_enlace::kDireccionMuda, kOrigen,
                  "La dirección " + direccion + ", puerto " + std::to_string(numero) + ", no responde");
    }
    ajustes = direccion + ",n,8,1";
  } else {
    if (!Contiene(lineas.puertos, numero)) {
      throw Error(error_enlace::kPuertoInexistente, kOrigen, "El puerto COM " + std::to_string(numero) + " no existe");
    }
    if (Contiene(lineas.tomados, numero)) Lanzar(error::kPuertoEnUso, kOrigen);
    por_ip = false;
    abierto = true;
    puerto = numero;
    velocidad = pedido->velocidad;
    ajustes = std::to_string(velocidad) + ",n,8,1";
  }
  caido = false;
}

void EnlaceSimulado::Desconectar() {
  abierto = false;
  por_ip = false;
  rts = false;
  llamada = false;
}

bool EnlaceSimulado::Llega(const Lineas& lineas, const Estacion& estacion) const {
  if (lineas.muda) return false;
  // A unit without an identifier takes what comes for its own.
  const bool para_otra = id_equipo != 0 && estacion.identificador != 0 && id_equipo != estacion.identificador;
  if (para_otra) return false;
  if (por_ip) return Contiene(lineas.direcciones, direccion) && puerto_ip == lineas.puerto_ip;
  if (!abierto) return false;
  if (llamada && TieneModem(lineas)) return true;  // modems settle their speed between themselves
  return puerto == lineas.puerto_unidad && velocidad == estacion.velocidad;
}

int EnlaceSimulado::VelocidadDeLinea(const Estacion& estacion) const {
  return por_ip ? estacion.velocidad : std::min(velocidad, estacion.velocidad);
}

bool EnlaceSimulado::Arriba(const Lineas& lineas, std::int64_t ahora) const {
  if (!lineas.arriba) return false;
  if (por_ip) return Contiene(lineas.direcciones, direccion) && puerto_ip == lineas.puerto_ip && ahora >= ausente_hasta;
  return abierto && !caido;
}

bool EnlaceSimulado::TieneModem(const Lineas& lineas) const {
  return abierto && Contiene(lineas.puertos_modem, puerto);
}

}  // namespace utr::simulada
