#pragma once

#include <functional>
#include <string>
#include <utility>

#include "base/Reloj.h"
#include "driver/Bitacora.h"
#include "driver/ComunicadorReenviado.h"

namespace utr {

// Writes a line to the driver's log for each call of another driver: its arguments and what it gave or raised.
class ComunicadorAnotado final : public ComunicadorReenviado {
 public:
  // All three must outlive it. While `tablas_enteras` says so, each table is kept whole beside its line, which names
  // the file; without it none is.
  ComunicadorAnotado(Comunicador& destino, Bitacora& bitacora, const Reloj& reloj,
                     std::function<bool()> tablas_enteras = {})
      : ComunicadorReenviado(destino), bitacora_(bitacora), reloj_(reloj), tablas_enteras_(std::move(tablas_enteras)) {}

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
  template <class Hacer, class... Argumentos>
  auto Anotar(const char* operacion, Hacer hacer, const Argumentos&... argumentos) -> decltype(hacer());

  // What is said of an argument or a result of `operacion`.
  template <class Dato>
  std::string Decir(const char* operacion, const Dato& dato);
  std::string DecirTabla(const char* operacion, const Tabla& tabla);

  Bitacora& bitacora_;
  const Reloj& reloj_;
  std::function<bool()> tablas_enteras_;
};

}  // namespace utr
