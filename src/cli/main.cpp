#include <fcntl.h>
#include <unistd.h>

#include <vector>

#include "base/CarpetaPrograma.h"
#include "base/Reloj.h"
#include "console/Consola.h"

namespace {

// A standard descriptor that whoever started the program has closed would be given to the next file that is opened, and
// what is said would go into it.
void OcuparDescriptores() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) == -1) static_cast<void>(::open("/dev/null", O_RDONLY));
  }
}

}  // namespace

int main(int argc, char** argv) {
  OcuparDescriptores();
  utr::RelojSistema reloj;
  const std::vector<std::string_view> argumentos(argv + 1, argv + argc);
  return utr::consola::Correr(argumentos,
                              {.carpeta = utr::CarpetaDeDatos(), .version = ADMINUTR_VERSION, .reloj = reloj});
}
