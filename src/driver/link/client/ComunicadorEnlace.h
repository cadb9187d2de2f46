#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include "base/Reloj.h"
#include "driver/Bitacora.h"
#include "driver/Comunicador.h"
#include "driver/link/client/Plazos.h"
#include "driver/link/client/UnidadRemota.h"
#include "driver/link/transport/Linea.h"

namespace utr {

// The contract over a wire: a unit at the end of a serial line, of a telephone call or of a TCP connection, reached in
// the protocol of docs/protocol.md.
//
// Over IP it connects at the first operation, and again, without a word, after the other end has closed the connection.
// A port that is lost raises kLineaPerdida once; the next operation opens the same device again, and doesn't dial. A
// call that is made while another one runs raises kOcupado and does nothing. Cancelar(false) ends what is running: a
// call gives false, a pause, a read and an order of which no byte went out raise kCancelada; an order that was sent
// waits for its result. It means nothing for what comes later.
//
// Pages that are read one after the other are fetched three at a time.
class ComunicadorEnlace final : public Comunicador {
 public:
  // What it is made of; everything but the values must outlive it.
  struct Partes {
    enlace::Tendido& tendido;
    enlace::DispositivoDe dispositivos;  // device of a serial port
    Reloj& reloj;
    Atender atender;
    Bitacora& bitacora;  // for EscribirLog
    enlace::Plazos plazos{};
    enlace::Avisos avisos{};
  };
  explicit ComunicadorEnlace(Partes partes);
  ~ComunicadorEnlace() override;
  ComunicadorEnlace(const ComunicadorEnlace&) = delete;
  ComunicadorEnlace& operator=(const ComunicadorEnlace&) = delete;

  // What went over the line since the beginning.
  const enlace::Trafico& Cuenta() const;

  // Whether the unit is one to practise with. It is asked once where it isn't known who would answer; nothing when
  // nobody does. Raises as any operation does.
  std::optional<bool> DePractica();

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
