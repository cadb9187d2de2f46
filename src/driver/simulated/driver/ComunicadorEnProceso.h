#pragma once

#include "driver/Comunicador.h"

namespace utr {

namespace simulada {
struct InteriorSimulado;
}

// The contract over the unit in this process: the work of each operation alone, without its faults and its line in the
// log. Time passes in the unit ahead of each operation that reaches for it, the scenario is looked at by whoever calls.
class ComunicadorEnProceso final : public Comunicador {
 public:
  // `interior` must outlive it.
  explicit ComunicadorEnProceso(simulada::InteriorSimulado& interior) : interior_(&interior) {}

  void IdEquipo(std::int32_t identificador) override;
  bool BorrarFlash() override;
  bool ReiniciarAgenda(std::string_view comando) override;
  bool ReiniciarUTR(std::string_view comando) override;
  TablaPtr DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                             std::string_view fecha) override;
  TablaPtr DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                 std::string_view fecha) override;
  TablaPtr LeerInstantaneos() override;
  std::string ConvertirA(std::int16_t numero) override;
  std::string ConvertirDe(std::int16_t valor) override;
  void EscribirLog(std::string_view linea) noexcept override;
  std::int32_t DescribirCodigo(std::string_view fecha) override;
  TablaPtr LeerAgenda() override;
  std::string LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) override;
  void Pausa(std::int16_t segundos) override;
  bool GrabarAgenda(Tabla& tabla) override;
  TablaPtr ConfiguracionAlmacenada(bool desdeUTR) override;
  TablaPtr LeerArchivoConfiguracion(std::string_view ruta) override;
  bool GrabarParametrizacion(Tabla& tabla) override;
  TablaPtr LeerEventos(std::string_view desde, std::string_view hasta) override;
  TablaPtr LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) override;
  TablaPtr LeerColaTx(std::string_view desde, std::string_view hasta) override;
  std::string LeerFechaHora() override;
  std::int32_t LeerEstado() override;
  bool GrabarFechaHora() override;
  bool GrabarEstado(std::string_view flags) override;
  bool EscribirPagina(std::string_view pagina, std::string_view datos) override;
  bool GrabarEvento(std::string_view comando, std::string_view datos) override;
  bool GrabarPilaCanal(std::string_view comando, std::string_view datos) override;
  bool GrabarCanalesModificar(std::string_view comando, std::string_view datos) override;
  std::string LeerPagina(std::string_view pagina, bool silencioso) override;
  void Conectar(std::string_view enlace, std::string_view puerto) override;
  bool ModoConexion(bool activo) override;
  bool ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) override;
  TablaPtr CargarConfiguracion(std::string_view ruta) override;
  std::string ObtenerPuertos() override;
  void Desconectar() override;
  bool EstadoPuerto() override;
  void DireccionIP(std::string_view direccion) override;
  void PuertoIP(std::string_view puerto) override;
  bool EstadoEnlace() override;
  void PorIP(bool activo) override;
  bool LlamarTelefono(std::string_view numero, std::string_view comandos) override;
  void Cancelar(bool activo) override;
  bool GrabarSalidaDigital(int salida, bool encender) override;
  TablaPtr LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) override;
  TablaPtr LeerEventosCartucho(std::string_view desde, std::string_view hasta) override;
  TablaPtr LeerColaTxCartucho(std::string_view desde, std::string_view hasta) override;
  bool BorrarCartucho() override;
  bool GrabarConfiguracion(Tabla& tabla) override;

 private:
  simulada::InteriorSimulado* interior_;
};

}  // namespace utr
