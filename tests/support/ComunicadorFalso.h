#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/Error.h"
#include "driver/Comunicador.h"

namespace utr {

// A driver that records every call and answers what it was told to. The text of a call is its operation with the
// arguments between brackets, "LeerDatos(01/01/2026,02/01/2026,3)"; truth values read "si" and "no", tables "tabla",
// byte arrays "bytes". Without orders: truth values are true, numbers 0, texts empty, and there are no tables.
class ComunicadorFalso : public Comunicador {
 public:
  // What operations answer, by name. A function is given the text of the call.
  void Devuelve(std::string operacion, bool valor);
  void Devuelve(std::string operacion, const char* texto);
  void Devuelve(std::string operacion, const std::string& texto) { Devuelve(std::move(operacion), texto.c_str()); }
  void Devuelve(std::string operacion, std::int32_t numero);
  void Devuelve(std::string operacion, std::function<std::string(const std::string&)> texto);
  void Devuelve(std::string operacion, std::function<TablaPtr(const std::string&)> tabla);
  void Devuelve(std::string operacion, TablaPtr tabla);  // the same table at every call

  // The operation raises `error` after it was recorded; `veces` below 0: always.
  void Falla(std::string operacion, Error error, int veces = -1);
  void NoFalla(const std::string& operacion) { fallas_.erase(operacion); }

  // Calls recorded so far, oldest first; those of one operation; how many.
  std::vector<std::string> llamadas;
  std::vector<std::string> De(std::string_view operacion) const;
  std::size_t Cuantas(std::string_view operacion) const { return De(operacion).size(); }
  // The tables that an operation was given, oldest first: copies of the rows that they showed; null for a closed one.
  std::vector<TablaPtr> Recibidas(std::string_view operacion) const;

  std::vector<std::string> log;  // lines given to EscribirLog, which is not recorded among the calls
  // Called inside every operation, with its text, ahead of failure and answer.
  std::function<void(const std::string&)> al_llamar;

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
  struct FallaPedida {
    Error error;
    int veces;
  };

  void Recibir(const char* operacion, const Tabla& tabla);
  std::string Anotar(std::string_view operacion, std::initializer_list<std::string> argumentos);
  bool Logico(std::string_view operacion, std::initializer_list<std::string> argumentos = {});
  std::int32_t Numero(std::string_view operacion, std::initializer_list<std::string> argumentos = {});
  std::string Texto(std::string_view operacion, std::initializer_list<std::string> argumentos = {});
  TablaPtr UnaTabla(std::string_view operacion, std::initializer_list<std::string> argumentos = {});

  std::map<std::string, bool, std::less<>> logicos_;
  std::map<std::string, std::int32_t, std::less<>> numeros_;
  std::map<std::string, std::function<std::string(const std::string&)>, std::less<>> textos_;
  std::map<std::string, std::function<TablaPtr(const std::string&)>, std::less<>> tablas_;
  std::map<std::string, FallaPedida, std::less<>> fallas_;
  std::map<std::string, std::vector<TablaPtr>, std::less<>> recibidas_;
};

}  // namespace utr
