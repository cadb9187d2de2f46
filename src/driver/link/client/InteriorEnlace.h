#pragma once

#include <concepts>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/TablasRegistros.h"
#include "driver/link/client/ComunicadorEnlace.h"
#include "driver/link/client/LecturaDeAnillo.h"

namespace utr {

// What every operation does around its own work: it keeps others off the line, begins anew for Cancelar, and turns the
// silence of the unit, or a read that it refuses, into what its contract says.
struct ComunicadorEnlace::Interior {
  explicit Interior(Partes partes);

  // Runs `hacer` as the one operation on the line. Raises kOcupado while another one runs. Pages that were fetched
  // ahead are dropped, but by the operation that they are for.
  template <class Hacer>
  auto EnTurno(Hacer hacer, bool olvida = true) -> decltype(hacer());

  // The same for what asks the unit and tells by its result that it failed: `silencio` is that result.
  template <class Resultado, class Hacer>
  Resultado Preguntar(Resultado silencio, Hacer hacer, bool olvida = true);

  // The same for an order: false without an answer. `codigo` has a value where the call makes sense.
  bool Ordenar(bool valida, protocolo::Codigo codigo, const std::vector<std::uint16_t>& argumentos = {});

  // Has a table taken. False: refused, or no answer.
  bool Entregar(protocolo::Codigo codigo, const Tabla& tabla);

  TablaPtr LeerCanales();

  // What a read of records begins with: the heads of the rings, the stacks of the channels, the clock.
  struct Cabezas {
    protocolo::Cabezales anillos;
    std::optional<std::vector<std::uint16_t>> pilas;
    std::optional<FechaHora> reloj;
  };
  std::optional<Cabezas> LeerCabezas(enlace::CualMemoria memoria);
  // The ring of a channel (1 to 23); nothing for one without a stack. Raises kLecturaNegada for a unit that doesn't
  // say.
  std::optional<std::size_t> AnilloDe(int canal, const Cabezas& cabezas);

  TablaPtr LeerDatos(enlace::CualMemoria memoria, std::string_view desde, std::string_view hasta, int canal);
  TablaPtr LeerEventos(enlace::CualMemoria memoria, std::string_view desde, std::string_view hasta);
  TablaPtr LeerCola(enlace::CualMemoria memoria, std::string_view desde, std::string_view hasta, bool pendiente);
  TablaPtr LeerPendientes();
  std::string LeerPaginaFlash(int pista, int pagina);

  // Tells of the port once an operation has left it open or closed, and of a call that doesn't stand any more.
  void AvisarCamino() {
    const bool habia = std::exchange(habia_puerto_, via.HayPuerto());
    const bool en_llamada = std::exchange(habia_llamada_, via.EnLlamada());
    if (en_llamada && !habia_llamada_ && partes.avisos.fin_de_llamada) partes.avisos.fin_de_llamada();
    if (habia != habia_puerto_ && partes.avisos.puerto) partes.avisos.puerto(habia_puerto_);
  }

  Partes partes;
  enlace::Espera espera;
  enlace::Via via;
  enlace::UnidadRemota unidad;
  bool en_curso = false;

 private:
  using Bytes = enlace::Bytes;
  struct Adelantada {
    Bytes bytes;
    std::int64_t leida = 0;  // milliseconds of the clock
  };

  std::map<std::pair<int, int>, Adelantada> adelantadas_;  // by track and page
  bool habia_puerto_ = false;
  bool habia_llamada_ = false;
};

template <class Hacer>
auto ComunicadorEnlace::Interior::EnTurno(Hacer hacer, bool olvida) -> decltype(hacer()) {
  if (en_curso) throw Error(error_enlace::kOcupado, "Comunicador", "Hay otra operación en curso con la UTR");
  struct Turno {
    explicit Turno(Interior& i) : interior(i) { interior.en_curso = true; }
    ~Turno() {
      interior.en_curso = false;
      interior.unidad.Terminar();
      interior.AvisarCamino();
    }
    Turno(const Turno&) = delete;
    Turno& operator=(const Turno&) = delete;
    Interior& interior;
  };
  const Turno turno(*this);
  espera.Comenzar();
  unidad.Comenzar();
  if (olvida) adelantadas_.clear();
  return hacer();
}

template <class Resultado, class Hacer>
Resultado ComunicadorEnlace::Interior::Preguntar(Resultado silencio, Hacer hacer, bool olvida) {
  return EnTurno(
      [&]() -> Resultado {
        try {
          return hacer();
        } catch (const Error& falla) {
          if (falla.Numero() != error::kSinRespuesta && falla.Numero() != error_enlace::kLecturaNegada) throw;
          return silencio;
        }
      },
      olvida);
}

}  // namespace utr
