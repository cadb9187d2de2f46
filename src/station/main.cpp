#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "base/CarpetaPrograma.h"
#include "base/Error.h"
#include "driver/link/transport/Descriptor.h"
#include "driver/simulated/server/Servidor.h"

namespace {

// SIGINT and SIGTERM as something to be read, so that the station ends between two requests.
utr::enlace::Descriptor SenialesDeFin() {
  sigset_t seniales;
  sigemptyset(&seniales);
  for (const int senial : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&seniales, senial);
  sigprocmask(SIG_BLOCK, &seniales, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  return utr::enlace::Descriptor(::signalfd(-1, &seniales, SFD_CLOEXEC));
}

void Decir(std::string_view linea) {
  std::cout << linea << std::endl;
}

void Advertir(std::string_view linea) {
  std::cerr << "utr-estacion: " << linea << std::endl;
}

void Correr(const utr::simulada::Opciones& opciones) {
  const utr::enlace::Descriptor fin = SenialesDeFin();
  const auto modelo = opciones.control ? std::filesystem::path{} : utr::CarpetaDelEjecutable() / "UTRSimulada.toml";
  const utr::simulada::Voces voces{Decir, Advertir};
  utr::simulada::Servidor servidor(opciones, modelo, voces);
  servidor.Correr(fin.Numero(), opciones.control ? STDIN_FILENO : -1, Decir);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::vector<std::string_view> argumentos(argv + 1, argv + argc);
    const auto opciones = utr::simulada::LeerOpciones(argumentos);
    if (opciones.ayuda) {
      std::cout << utr::simulada::Ayuda();
    } else if (opciones.version) {
      std::cout << "utr-estacion " ADMINUTR_VERSION "\n";
    } else {
      Correr(opciones);
    }
    return 0;
  } catch (...) {
    Advertir(utr::ErrorActual().Descripcion());
    return 1;
  }
}
