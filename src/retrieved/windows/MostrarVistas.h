#pragma once

#include <filesystem>

#include "session/windows/FlujoLectura.h"

// The main window's roads to the record views. Without a configuration of the unit each offers to read it, and the view
// isn't opened in that pass. They show their failures.
namespace utr {

void MostrarEventos(FlujoLectura& flujo);
void MostrarDatos(FlujoLectura& flujo);
void ColaDeTransmicion(FlujoLectura& flujo);
void DescargarTodo(FlujoLectura& flujo);

// The viewer of files, on that file; on none with an empty path. Failures are logged and raised; a file that can't be
// opened is told by the viewer itself.
void VisualizarArchivos(FlujoLectura& flujo, const std::filesystem::path& archivo = {});

// Asks for a configuration, processes recovery files with the one on hand then, and offers to look at the result.
// Without a configuration nothing is processed, which the status bar says. Failures are logged and raised.
void ProcesarDatos(FlujoLectura& flujo);

}  // namespace utr
