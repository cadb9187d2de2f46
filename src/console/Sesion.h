#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/Reloj.h"
#include "configuration/Catalogo.h"
#include "console/Codigos.h"
#include "console/Enlace.h"
#include "console/Opciones.h"
#include "console/ProgresoConsola.h"
#include "driver/Bitacora.h"
#include "retrieved/ContextoRegistros.h"
#include "services/RegistroErrores.h"

namespace utr::consola {

// Where a command line runs.
struct Entorno {
  std::filesystem::path carpeta;  // where the program writes: book, logs, ports
  std::string version;
  Reloj& reloj;
  int salida = 1;   // descriptor of what was asked for
  int errores = 2;  // and of what went wrong
};

// Raises kCancelada when the program was interrupted.
void ExigirSinInterrumpir();

// What an order works with, made once for it.
class Sesion {
 public:
  Sesion(const Entorno& entorno, const Opciones& opciones);
  Sesion(const Sesion&) = delete;
  Sesion& operator=(const Sesion&) = delete;

  const Opciones& LasOpciones() const noexcept { return opciones_; }
  const std::filesystem::path& Carpeta() const noexcept { return entorno_.carpeta; }
  const Reloj& ElReloj() const noexcept { return entorno_.reloj; }
  Comunicador& Driver() noexcept { return enlace_->Driver(); }
  std::int32_t Identificador() const { return enlace_->Identificador(); }
  RegistroErrores& Registro() noexcept { return registro_; }
  ProgresoConsola& Avance() noexcept { return progreso_; }
  ContextoRegistros Contexto() { return {Driver(), entorno_.reloj, catalogo_, registro_}; }
  Catalogo& ElCatalogo() noexcept { return catalogo_; }

  // Lets an interruption be heard by the driver: it ends the call that is under way, which then raises. While
  // `paciente` holds, only the second one does.
  Atender Atencion() {
    return [this] { Oir(); };
  }
  // The same for work between the calls, where there is none to end: it raises itself, unless `paciente` holds.
  Atender AtencionEntreLlamadas() {
    return [this] {
      if (!paciente_) ExigirSinInterrumpir();
    };
  }
  void SerPaciente(bool paciente) noexcept { paciente_ = paciente; }

  // Chooses the driver. Raises as Enlace does.
  void Preparar();

  // Opens the link.
  void Abrir();

  // What is done from here on is work on files.
  void PasarAArchivos() noexcept { fase_ = Fase::kArchivos; }
  Fase LaFase() const noexcept { return fase_; }

  // The table of channels as the unit holds it. Null, with the reason told: it has none.
  TablaPtr LeerConfiguracion();

  // Writes a table where the options say. Raises kCancelada, with nothing written, when it was interrupted meanwhile.
  void Entregar(const TablaPtr& tabla, Columnas columnas, EncabezadoLista encabezado);
  // The same with another table for the list.
  void Entregar(const TablaPtr& tabla, const TablaPtr& de_lista, Columnas columnas, EncabezadoLista encabezado);

  // The figures of the records that were delivered, a line for each channel, where the options want them.
  // `configuracion`: the table of channels, or null.
  void Resumir(const Tabla& tabla, const Tabla* configuracion, bool a_intervalos = true);

  // A line of the result, and one of what went wrong.
  void Decir(const std::string& linea);
  void Avisar(const std::string& linea);

 private:
  void Oir();

  const Entorno& entorno_;
  const Opciones& opciones_;
  Bitacora bitacora_;
  RegistroErrores registro_;
  Catalogo catalogo_;
  ProgresoConsola progreso_;
  bool paciente_ = false;
  int oidas_ = 0;             // interruptions that were acted on
  bool de_practica_ = false;  // the operator was told so
  Fase fase_ = Fase::kArgumentos;
  std::unique_ptr<Enlace> enlace_;
};

// The orders. Each gives how it ended, with a word told of what isn't kHecho, or raises.
Codigo LeerDatos(Sesion& sesion);
Codigo LeerEventos(Sesion& sesion);
Codigo Instantaneos(Sesion& sesion);
Codigo Configuracion(Sesion& sesion);
Codigo Respaldo(Sesion& sesion);
Codigo Volcar(Sesion& sesion);
Codigo Recuperar(Sesion& sesion);
Codigo VerTabla(Sesion& sesion);

}  // namespace utr::consola
