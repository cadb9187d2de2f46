#pragma once

#include <csignal>
#include <vector>

namespace utr::consola {

// Ctrl+C and the request to end (SIGINT, SIGTERM, SIGHUP) as something that long work asks for, for the span of a
// scope; a signal that whoever started the program has ignored stays so. A pipe that nobody reads any more is a failure
// of the write, not the end of the program. One at a time.
class Interrupcion {
 public:
  Interrupcion();
  ~Interrupcion();
  Interrupcion(const Interrupcion&) = delete;
  Interrupcion& operator=(const Interrupcion&) = delete;

  // How often it was asked for.
  static int Veces() noexcept;

  // Ends the process by the signal that came, as whoever started it expects of one that was interrupted. To be called
  // when all is tidied up; does nothing when none came.
  void Morir();

 private:
  void Reponer();

  struct Anterior {
    int senial = 0;
    struct sigaction accion {};
  };
  std::vector<Anterior> anteriores_;
};

}  // namespace utr::consola
