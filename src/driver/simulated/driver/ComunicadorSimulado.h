#pragma once

#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "base/Reloj.h"
#include "driver/Comunicador.h"

namespace utr {

// The contract over a simulated station. In `carpeta`, the folder of the executable, it keeps:
//   UTRSimulada.toml     the scenario, read again at the next call whenever it has changed; optional
//   UTRSimulada.estado   what the unit remembers between runs; written after each change and at the end
//   Comunicador.log      one line a call
// Any of the three may be missing or out of reach: the station answers all the same. But an order that can't be kept
// isn't carried out, and gives false.
//
// Every operation raises Error and nothing else. Waits go through the clock with the time factor of the scenario;
// `atender` lets events of the interface run meanwhile and may be empty.
class ComunicadorSimulado final : public Comunicador {
 public:
  ComunicadorSimulado(std::filesystem::path carpeta, Reloj& reloj, Atender atender);
  ~ComunicadorSimulado() override;
  ComunicadorSimulado(const ComunicadorSimulado&) = delete;
  ComunicadorSimulado& operator=(const ComunicadorSimulado&) = delete;

  // The serial ports of the simulated machine: number and system name, in ascending order.
  std::vector<std::pair<int, std::string>> Puertos() const;

  // What the operator should know of the beginning: that a state file couldn't be read and where it was put, or that
  // the state can't be kept. Empty: nothing happened.
  const std::string& Aviso() const;

  // Writes the lines of the log that wait in memory. To be called once a second, so that none waits longer.
  void VaciarBitacora() noexcept;

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
  struct Interior;
  std::unique_ptr<Interior> interior_;
};

}  // namespace utr
