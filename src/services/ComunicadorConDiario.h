#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Reloj.h"
#include "driver/ComunicadorReenviado.h"
#include "services/Diario.h"

namespace utr {

// Tells the journal of every write, every command and every long read that passes to another driver, and of how it
// ended; of a write ahead of it too, since a program that is cut off in the middle can't tell any more. It makes no
// call of its own: what stood in the unit before is told where the call just ahead has read it.
class ComunicadorConDiario final : public ComunicadorReenviado {
 public:
  // All must outlive it.
  ComunicadorConDiario(Comunicador& destino, Diario& diario, const Reloj& reloj)
      : ComunicadorReenviado(destino), diario_(diario), reloj_(reloj) {}

  bool BorrarFlash() override;
  bool BorrarCartucho() override;
  bool ReiniciarAgenda(std::string_view comando) override;
  bool ReiniciarUTR(std::string_view comando) override;
  bool GrabarAgenda(Tabla& tabla) override;
  bool GrabarParametrizacion(Tabla& tabla) override;
  bool GrabarConfiguracion(Tabla& tabla) override;
  bool GrabarFechaHora() override;
  bool GrabarEstado(std::string_view flags) override;
  bool EscribirPagina(std::string_view pagina, std::string_view datos) override;
  bool GrabarEvento(std::string_view comando, std::string_view datos) override;
  bool GrabarPilaCanal(std::string_view comando, std::string_view datos) override;
  bool GrabarCanalesModificar(std::string_view comando, std::string_view datos) override;
  bool GrabarSalidaDigital(int salida, bool encender) override;

  TablaPtr ConfiguracionAlmacenada(bool desdeUTR) override;
  TablaPtr LeerAgenda() override;
  TablaPtr LeerEventos(std::string_view desde, std::string_view hasta) override;
  TablaPtr LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) override;
  TablaPtr LeerColaTx(std::string_view desde, std::string_view hasta) override;
  TablaPtr LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) override;
  TablaPtr LeerEventosCartucho(std::string_view desde, std::string_view hasta) override;
  TablaPtr LeerColaTxCartucho(std::string_view desde, std::string_view hasta) override;
  std::string LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) override;

  // Not told, but what they give is what stood there before.
  std::string LeerFechaHora() override;
  std::string LeerPagina(std::string_view pagina, bool silencioso) override;

  // Another unit may be at the other end from then on.
  void IdEquipo(std::int32_t identificador) override;
  void Conectar(std::string_view enlace, std::string_view puerto) override;
  void PorIP(bool activo) override;
  void DireccionIP(std::string_view direccion) override;
  void PuertoIP(std::string_view puerto) override;
  bool LlamarTelefono(std::string_view numero, std::string_view comandos) override;
  void Desconectar() override;

 private:
  template <class Hacer>
  bool Escribir(std::string comando, std::string_view dato, std::string escrito, Hacer hacer);
  template <class Hacer>
  TablaPtr Leer(std::string comando, std::string_view unidades, Hacer hacer);

  Diario& diario_;
  const Reloj& reloj_;
  std::string leido_;        // what the last call read; empty: nothing that can be written
  std::string valor_leido_;  // and what it was
  FechaHora leido_el_{};     // and when, by this computer's clock
};

}  // namespace utr
