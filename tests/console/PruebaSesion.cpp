#include <gtest/gtest.h>

#include <csignal>

#include "console/Interrupcion.h"
#include "console/Sesion.h"
#include "driver/ErroresDeEnlace.h"
#include "support/Carpeta.h"
#include "support/NumeroDeError.h"
#include "support/RelojFalso.h"

namespace utr::consola {
namespace {

// A signal between two calls of the driver has none to end, and must not wait for the end of the next one.
TEST(SesionDeConsola, LaInterrupcionEntreLlamadasTerminaElTrabajo) {
  const prueba::Carpeta carpeta;
  RelojFalso reloj;
  const Entorno entorno{.carpeta = carpeta.Ruta(), .version = "", .reloj = reloj};
  const Opciones opciones;
  const Interrupcion interrupcion;
  Sesion sesion(entorno, opciones);
  const Atender entre = sesion.AtencionEntreLlamadas();
  EXPECT_NO_THROW(entre());
  std::raise(SIGTERM);
  sesion.Atencion()();
  EXPECT_EQ(prueba::NumeroDeError(entre), error_enlace::kCancelada) << "the driver was idle: it used nothing up";
  sesion.SerPaciente(true);
  EXPECT_NO_THROW(entre()) << "a dump ends its page first";
}

}  // namespace
}  // namespace utr::consola
