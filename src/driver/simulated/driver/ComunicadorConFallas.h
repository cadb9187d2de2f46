#pragma once

#include "driver/ComunicadorReenviado.h"
#include "driver/simulated/scenario/Fallas.h"

namespace utr {

// Where faults strike: what they need to know of the driver that meets them, and to do to it.
class EntornoDeFallas {
 public:
  virtual ~EntornoDeFallas() = default;

  // The faults in force for the call of `op` that begins now.
  virtual simulada::Fallas& Mirar(simulada::Op op) = 0;

  // What holds from now to the next call: whether no events run while the driver waits, and by how many seconds the
  // present values are old.
  virtual void Disponer(bool bloquea, double atraso) = 0;

  // Waits so many seconds of the scenario's; events run meanwhile unless the call is blocked.
  virtual void Esperar(double segundos) = 0;
};

// Has the calls of another driver meet the faults of a scenario: they delay it, take the place of its answer, or spoil
// what it gave. What no fault meets goes through as it comes. Only the log can't fail.
class ComunicadorConFallas final : public ComunicadorReenviado {
 public:
  // Both must outlive it.
  ComunicadorConFallas(Comunicador& destino, EntornoDeFallas& entorno)
      : ComunicadorReenviado(destino), entorno_(entorno) {}

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
  template <class Hacer>
  auto Sufrir(simulada::Op op, simulada::Contexto contexto, Hacer hacer) -> decltype(hacer());
  template <class Hacer>
  auto Sufrir(simulada::Op op, Hacer hacer) -> decltype(hacer());

  bool Demorar(simulada::Op op, double segundos);

  EntornoDeFallas& entorno_;
  // The link as it was asked for, which conditions are about.
  bool por_ip_ = false;
  int puerto_ = 0;
  int velocidad_ = 0;
  int puerto_ip_ = 0;
  bool llamar_ = true;  // no call has been abandoned
};

}  // namespace utr
