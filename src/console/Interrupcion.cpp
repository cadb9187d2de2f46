#include "console/Interrupcion.h"

namespace utr::consola {

namespace {

constexpr int kDeFin[] = {SIGINT, SIGTERM, SIGHUP};

// What a handler may touch.
volatile std::sig_atomic_t veces = 0;
volatile std::sig_atomic_t ultima = 0;

extern "C" void AlRecibir(int senial) {
  veces = veces + 1;
  ultima = senial;
}

}  // namespace

Interrupcion::Interrupcion() {
  veces = 0;
  ultima = 0;
  const auto poner = [this](int senial, void (*hacer)(int)) {
    struct sigaction accion {};
    accion.sa_handler = hacer;  // without SA_RESTART: a write that waits for a reader is to end too
    Anterior anterior{.senial = senial};
    ::sigaction(senial, &accion, &anterior.accion);
    anteriores_.push_back(anterior);
    if (anterior.accion.sa_handler == SIG_IGN) ::sigaction(senial, &anterior.accion, nullptr);
  };
  for (const int senial : kDeFin) poner(senial, AlRecibir);
  poner(SIGPIPE, SIG_IGN);
}

Interrupcion::~Interrupcion() {
  Reponer();
}

void Interrupcion::Reponer() {
  for (const Anterior& anterior : anteriores_) ::sigaction(anterior.senial, &anterior.accion, nullptr);
  anteriores_.clear();
}

int Interrupcion::Veces() noexcept {
  return veces;
}

void Interrupcion::Morir() {
  if (ultima == 0) return;
  Reponer();
  std::raise(ultima);
}

}  // namespace utr::consola
