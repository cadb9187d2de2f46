#include "console/Consola.h"

#include <utility>

#include "base/Error.h"
#include "console/Interrupcion.h"
#include "console/Salida.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::consola {

namespace {

constexpr Codigo (*kHacer[])(Sesion&) = {LeerDatos, LeerEventos, Instantaneos, Configuracion,
                                         Respaldo,  Volcar,      Recuperar,    VerTabla};

void Fallar(const Entorno& entorno, const std::string& texto) {
  EscribirSinFallar(entorno.errores, "adminutr-cli: " + texto + "\n");
}

Codigo Hacer(Sesion& sesion, Orden orden) {
  try {
    sesion.Preparar();
    return kHacer[static_cast<std::size_t>(orden)](sesion);
  } catch (...) {
    const Error falla = ErrorActual();
    const bool interrumpida = Interrupcion::Veces() > 0;
    if (!interrumpida) sesion.Registro().RegistrarError(falla, "adminutr-cli", "Hacer");
    const bool dicha = falla.Numero() == error_enlace::kCancelada && falla.Descripcion().starts_with("Interrumpido");
    sesion.Avisar(interrumpida && !dicha ? "Interrumpido" : EnUnRenglon(falla));
    return CodigoDe(falla, sesion.LaFase());
  }
}

// What needs nothing but the output.
Codigo Mostrar(const Entorno& entorno, const std::string& texto) {
  try {
    EscribirEn(entorno.salida, texto);
    return Codigo::kHecho;
  } catch (const Error& falla) {
    Fallar(entorno, EnUnRenglon(falla));
    return Codigo::kArchivo;
  }
}

Codigo Atender(std::span<const std::string_view> argumentos, const Entorno& entorno) {
  try {
    const Opciones opciones = LeerOpciones(argumentos, entorno.reloj.Ahora());
    if (opciones.ayuda) return Mostrar(entorno, Ayuda(opciones.orden));
    if (opciones.version) return Mostrar(entorno, "adminutr-cli " + entorno.version + "\n");
    Sesion sesion(entorno, opciones);
    return Hacer(sesion, *opciones.orden);
  } catch (...) {
    Fallar(entorno, EnUnRenglon(ErrorActual()) + "; adminutr-cli --ayuda dice cómo se usa");
    return Codigo::kArgumentos;
  }
}

}  // namespace

int Correr(std::span<const std::string_view> argumentos, const Entorno& entorno) {
  Interrupcion interrupcion;
  const Codigo codigo = Atender(argumentos, entorno);
  interrupcion.Morir();
  return static_cast<int>(codigo);
}

}  // namespace utr::consola
