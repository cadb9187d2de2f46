#include <algorithm>

#include "base/Numeros.h"
#include "driver/Textos.h"
#include "driver/simulated/driver/InteriorSimulado.h"

namespace utr {

namespace {

// The port that a text names, 0 for none.
int PuertoDe(std::string_view texto) {
  const double numero = EsNumerico(texto) ? LeerDoble(texto) : 0;
  return numero >= 1 && numero <= 65535 ? static_cast<int>(numero) : 0;
}

}  // namespace

void ComunicadorSimulado::IdEquipo(std::int32_t identificador) {
  interior_->Operar(Op::kIdEquipo, std::to_string(identificador), [&] {
    interior_->enlace.id_equipo = identificador;
    return Interior::Nada{};
  });
}

std::string ComunicadorSimulado::ConvertirDe(std::int16_t valor) {
  return interior_->Operar(Op::kConvertirDe, std::to_string(valor),
                           [&] { return TextoPar(static_cast<std::uint16_t>(valor)); });
}

void ComunicadorSimulado::Pausa(std::int16_t segundos) {
  interior_->Operar(Op::kPausa, std::to_string(segundos), [&] {
    interior_->Esperar(segundos);
    return Interior::Nada{};
  });
}

void ComunicadorSimulado::Conectar(std::string_view enlace, std::string_view puerto) {
  const auto pedido = LeerEnlace(enlace);
  const Contexto contexto{.puerto = PuertoDe(puerto), .velocidad = pedido ? pedido->velocidad : 0};
  interior_->Operar(Op::kConectar, Citar(enlace) + ", " + Citar(puerto), contexto, [&] {
    interior_->enlace.Conectar(enlace, puerto, interior_->escenario.lineas);
    return Interior::Nada{};
  });
}

bool ComunicadorSimulado::ModoConexion(bool activo) {
  return interior_->Operar(Op::kModoConexion, activo ? "si" : "no", [&] {
    if (interior_->enlace.abierto) interior_->enlace.rts = activo;
    return interior_->enlace.abierto;
  });
}

std::string ComunicadorSimulado::ObtenerPuertos() {
  return interior_->Operar(Op::kObtenerPuertos, "", [&] { return interior_->enlace.ajustes; });
}

void ComunicadorSimulado::Desconectar() {
  interior_->Operar(Op::kDesconectar, "", [&] {
    interior_->enlace.Desconectar();
    return Interior::Nada{};
  });
}

bool ComunicadorSimulado::EstadoPuerto() {
  return interior_->Operar(Op::kEstadoPuerto, "", [&] { return interior_->enlace.abierto; });
}

void ComunicadorSimulado::DireccionIP(std::string_view direccion) {
  interior_->Operar(Op::kDireccionIP, Citar(direccion), [&] {
    interior_->enlace.direccion = direccion;
    return Interior::Nada{};
  });
}

void ComunicadorSimulado::PuertoIP(std::string_view puerto) {
  interior_->Operar(Op::kPuertoIP, Citar(puerto), [&] {
    interior_->enlace.puerto_ip = PuertoDe(puerto);
    return Interior::Nada{};
  });
}

bool ComunicadorSimulado::EstadoEnlace() {
  return interior_->Operar(Op::kEstadoEnlace, "", [&] {
    return interior_->enlace.Arriba(interior_->escenario.lineas, interior_->reloj.Milisegundos());
  });
}

void ComunicadorSimulado::PorIP(bool activo) {
  interior_->Operar(Op::kPorIP, activo ? "si" : "no", [&] {
    interior_->enlace.por_ip = activo;
    return Interior::Nada{};
  });
}

// Dials, and waits in short steps, so that Cancelar is heard while events run.
bool ComunicadorSimulado::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  const std::string argumentos = Citar(numero) + ", " + Citar(comandos);
  return interior_->Operar(Op::kLlamarTelefono, argumentos, [&] {
    Interior& i = *interior_;
    i.enlace.llamada = false;
    if (!i.enlace.TieneModem(i.escenario.lineas)) return false;
    i.EsperarLlamada(i.escenario.tiempos.llamada);
    const simulada::Lineas& lineas = i.escenario.lineas;
    const bool atiende = lineas.telefonos.empty() ||
                         std::find(lineas.telefonos.begin(), lineas.telefonos.end(), numero) != lineas.telefonos.end();
    const bool inicializado = !lineas.exige_comandos || !comandos.empty();
    i.enlace.llamada = i.enlace.llamar && atiende && inicializado && !numero.empty() && i.enlace.TieneModem(lineas);
    return i.enlace.llamada;
  });
}

void ComunicadorSimulado::Cancelar(bool activo) {
  interior_->Operar(Op::kCancelar, activo ? "si" : "no", [&] {
    interior_->enlace.llamar = activo;
    return Interior::Nada{};
  });
}

}  // namespace utr
