#pragma once

#include "driver/Comunicador.h"

namespace utr {

// A driver that passes every operation on to another one, which must outlive it. Whoever has something to add to some
// operations (a journal, a backup before a write, a fault in a test) overrides those alone; results and errors go
// through as they come.
class ComunicadorReenviado : public Comunicador {
 public:
  explicit ComunicadorReenviado(Comunicador& destino) : destino_(&destino) {}
  // One that is handed another one stands around it; a copy would pass it by.
  ComunicadorReenviado(const ComunicadorReenviado&) = delete;
  ComunicadorReenviado& operator=(const ComunicadorReenviado&) = delete;

  void IdEquipo(std::int32_t identificador) override { destino_->IdEquipo(identificador); }
  bool BorrarFlash() override { return destino_->BorrarFlash(); }
  bool ReiniciarAgenda(std::string_view comando) override { return destino_->ReiniciarAgenda(comando); }
  bool ReiniciarUTR(std::string_view comando) override { return destino_->ReiniciarUTR(comando); }
  TablaPtr DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                             std::string_view fecha) override {
    return destino_->DecodificarPagina(pagina, descriptor, fecha);
  }
  TablaPtr DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                 std::string_view fecha) override {
    return destino_->DecodificarPaginaCola(pagina, descriptor, fecha);
  }
  TablaPtr LeerInstantaneos() override { return destino_->LeerInstantaneos(); }
  std::string ConvertirA(std::int16_t numero) override { return destino_->ConvertirA(numero); }
  std::string ConvertirDe(std::int16_t valor) override { return destino_->ConvertirDe(valor); }
  void EscribirLog(std::string_view linea) noexcept override { destino_->EscribirLog(linea); }
  std::int32_t DescribirCodigo(std::string_view fecha) override { return destino_->DescribirCodigo(fecha); }
  TablaPtr LeerAgenda() override { return destino_->LeerAgenda(); }
  std::string LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) override {
    return destino_->LeerPaginaFlash(pista, pagina);
  }
  void Pausa(std::int16_t segundos) override { destino_->Pausa(segundos); }
  bool GrabarAgenda(Tabla& tabla) override { return destino_->GrabarAgenda(tabla); }
  TablaPtr ConfiguracionAlmacenada(bool desdeUTR) override { return destino_->ConfiguracionAlmacenada(desdeUTR); }
  TablaPtr LeerArchivoConfiguracion(std::string_view ruta) override { return destino_->LeerArchivoConfiguracion(ruta); }
  bool GrabarParametrizacion(Tabla& tabla) override { return destino_->GrabarParametrizacion(tabla); }
  TablaPtr LeerEventos(std::string_view desde, std::string_view hasta) override {
    return destino_->LeerEventos(desde, hasta);
  }
  TablaPtr LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) override {
    return destino_->LeerDatos(desde, hasta, canal);
  }
  TablaPtr LeerColaTx(std::string_view desde, std::string_view hasta) override {
    return destino_->LeerColaTx(desde, hasta);
  }
  std::string LeerFechaHora() override { return destino_->LeerFechaHora(); }
  std::int32_t LeerEstado() override { return destino_->LeerEstado(); }
  bool GrabarFechaHora() override { return destino_->GrabarFechaHora(); }
  bool GrabarEstado(std::string_view flags) override { return destino_->GrabarEstado(flags); }
  bool EscribirPagina(std::string_view pagina, std::string_view datos) override {
    return destino_->EscribirPagina(pagina, datos);
  }
  bool GrabarEvento(std::string_view comando, std::string_view datos) override {
    return destino_->GrabarEvento(comando, datos);
  }
  bool GrabarPilaCanal(std::string_view comando, std::string_view datos) override {
    return destino_->GrabarPilaCanal(comando, datos);
  }
  bool GrabarCanalesModificar(std::string_view comando, std::string_view datos) override {
    return destino_->GrabarCanalesModificar(comando, datos);
  }
  std::string LeerPagina(std::string_view pagina, bool silencioso) override {
    return destino_->LeerPagina(pagina, silencioso);
  }
  void Conectar(std::string_view enlace, std::string_view puerto) override { destino_->Conectar(enlace, puerto); }
  bool ModoConexion(bool activo) override { return destino_->ModoConexion(activo); }
  bool ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) override {
    return destino_->ExportarImp(tabla, ruta, tipo);
  }
  TablaPtr CargarConfiguracion(std::string_view ruta) override { return destino_->CargarConfiguracion(ruta); }
  std::string ObtenerPuertos() override { return destino_->ObtenerPuertos(); }
  void Desconectar() override { destino_->Desconectar(); }
  bool EstadoPuerto() override { return destino_->EstadoPuerto(); }
  void DireccionIP(std::string_view direccion) override { destino_->DireccionIP(direccion); }
  void PuertoIP(std::string_view puerto) override { destino_->PuertoIP(puerto); }
  bool EstadoEnlace() override { return destino_->EstadoEnlace(); }
  void PorIP(bool activo) override { destino_->PorIP(activo); }
  bool LlamarTelefono(std::string_view numero, std::string_view comandos) override {
    return destino_->LlamarTelefono(numero, comandos);
  }
  void Cancelar(bool activo) override { destino_->Cancelar(activo); }
  bool GrabarSalidaDigital(int salida, bool encender) override {
    return destino_->GrabarSalidaDigital(salida, encender);
  }
  TablaPtr LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) override {
    return destino_->LeerDatosCartucho(desde, hasta, canal);
  }
  TablaPtr LeerEventosCartucho(std::string_view desde, std::string_view hasta) override {
    return destino_->LeerEventosCartucho(desde, hasta);
  }
  TablaPtr LeerColaTxCartucho(std::string_view desde, std::string_view hasta) override {
    return destino_->LeerColaTxCartucho(desde, hasta);
  }
  bool BorrarCartucho() override { return destino_->BorrarCartucho(); }
  bool GrabarConfiguracion(Tabla& tabla) override { return destino_->GrabarConfiguracion(tabla); }

 protected:
  Comunicador& Destino() noexcept { return *destino_; }

  // From now on operations go to another one.
  void Dirigir(Comunicador& destino) noexcept { destino_ = &destino; }

 private:
  Comunicador* destino_;
};

}  // namespace utr
