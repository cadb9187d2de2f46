#pragma once

#include <filesystem>
#include <string_view>

namespace utr {

// Where the program has its files. A built folder that was copied somewhere keeps everything in itself, as it always
// did. A package can't: its folder belongs to the system. It says so by a file named "instalado" beside the
// executables, and then all that is written (settings, logs, scenario and state of the simulated station, modem
// commands, predefined parametrizations, backups, journal, book of stations) lies in a folder of the user, which
// removing the package leaves alone.

// What an environment variable names, as it stands there; empty: it isn't there.
std::filesystem::path RutaDelEntorno(const char* variable);

// The folder of the executable that runs, links followed; empty where the system doesn't tell.
const std::filesystem::path& CarpetaDelEjecutable();

// Where a program in the folder `ejecutable` writes: there, or, when it is installed, in AdminUTR in the user's data
// folder (XDG_DATA_HOME, else ~/.local/share), which is made. A folder that can't be made is given all the same, so
// that each file tells its own failure; a user without a home writes where the program is.
std::filesystem::path CarpetaDeDatos(const std::filesystem::path& ejecutable = CarpetaDelEjecutable());

// That folder is the one in which an installed program writes, or lies in it: a hidden one, which the operator wouldn't
// find again.
bool EsDeDatosOcultos(const std::filesystem::path& carpeta,
                      const std::filesystem::path& ejecutable = CarpetaDelEjecutable());

// The file of that name as the program reads it: the one in `carpeta`, where it writes; when there is none and the
// program is installed, the one that came with it. Gives the name in `carpeta` when there is neither.
std::filesystem::path ArchivoDelPrograma(const std::filesystem::path& carpeta, std::string_view nombre,
                                         const std::filesystem::path& ejecutable = CarpetaDelEjecutable());

// Where to begin looking for files that end in `extension` (".ipf"): `carpeta`, unless it has none of them and the
// installed program came with some.
std::filesystem::path CarpetaCon(const std::filesystem::path& carpeta, std::string_view extension,
                                 const std::filesystem::path& ejecutable = CarpetaDelEjecutable());

}  // namespace utr
