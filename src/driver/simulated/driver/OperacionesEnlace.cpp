#include <algorithm>

#include "driver/Dias.h"
#include "driver/Textos.h"
#include "driver/simulated/driver/ComunicadorEnProceso.h"
#include "driver/simulated/driver/InteriorSimulado.h"

// What needs no answer of the unit: the link, the log, and numbers turned into texts.
namespace utr {

void ComunicadorEnProceso::EscribirLog(std::string_view linea) noexcept {
  interior_->bitacora.Linea(linea);
}

void ComunicadorEnProceso::IdEquipo(std::int32_t identificador) {
  interior_->enlace.id_equipo = identificador;
}

std::string ComunicadorEnProceso::ConvertirA(std::int16_t numero) {
  return FechaDeDia(numero);
}

std::string ComunicadorEnProceso::ConvertirDe(std::int16_t valor) {
  return TextoPar(static_cast<std::uint16_t>(valor));
}

std::int32_t ComunicadorEnProceso::DescribirCodigo(std::string_view fecha) {
  return DiaDe(Segundos(ConvertirAFecha(fecha)));
}

void ComunicadorEnProceso::Pausa(std::int16_t segundos) {
  interior_->Esperar(segundos);
}

void ComunicadorEnProceso::Conectar(std::string_view enlace, std::string_view puerto) {
  interior_->ExigirPropia();
  interior_->enlace.Conectar(enlace, puerto, interior_->escenario.lineas);
}

bool ComunicadorEnProceso::ModoConexion(bool activo) {
  if (interior_->enlace.abierto) interior_->enlace.rts = activo;
  return interior_->enlace.abierto;
}

std::string ComunicadorEnProceso::ObtenerPuertos() {
  return interior_->enlace.ajustes;
}

void ComunicadorEnProceso::Desconectar() {
  interior_->enlace.Desconectar();
}

bool ComunicadorEnProceso::EstadoPuerto() {
  return interior_->enlace.abierto;
}

void ComunicadorEnProceso::DireccionIP(std::string_view direccion) {
  interior_->enlace.direccion = direccion;
}

void ComunicadorEnProceso::PuertoIP(std::string_view puerto) {
  interior_->enlace.puerto_ip = NumeroDePuerto(puerto);
}

bool ComunicadorEnProceso::EstadoEnlace() {
  return interior_->enlace.Arriba(interior_->escenario.lineas, interior_->reloj.Milisegundos());
}

void ComunicadorEnProceso::PorIP(bool activo) {
  interior_->enlace.por_ip = activo;
}

// Dials, and waits in short steps, so that Cancelar is heard while events run.
bool ComunicadorEnProceso::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  simulada::InteriorSimulado& i = *interior_;
  i.enlace.llamada = false;
  if (!i.enlace.TieneModem(i.escenario.lineas)) return false;
  i.EsperarLlamada(i.escenario.tiempos.llamada);
  const simulada::Lineas& lineas = i.escenario.lineas;
  const bool atiende = lineas.telefonos.empty() ||
                       std::find(lineas.telefonos.begin(), lineas.telefonos.end(), numero) != lineas.telefonos.end();
  const bool inicializado = !lineas.exige_comandos || !comandos.empty();
  i.enlace.llamada = i.enlace.llamar && atiende && inicializado && !numero.empty() && i.enlace.TieneModem(lineas);
  return i.enlace.llamada;
}

void ComunicadorEnProceso::Cancelar(bool activo) {
  interior_->enlace.llamar = activo;
}

}  // namespace utr
