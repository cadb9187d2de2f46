#pragma once

#include <filesystem>

namespace utr {

// A file by which programs agree on who of them uses what stands beside it. Whoever has taken it keeps it to the end of
// this object, or of the process however that ends. The file itself stays.
class Candado {
 public:
  enum class Toma {
    kTomado,
    kAjeno,       // another holder has it, be it in this process
    kSinArchivo,  // the file can't be made or opened: nothing is held, and ErrorDelSistema tells why
  };

  Candado() = default;
  ~Candado();
  Candado(const Candado&) = delete;
  Candado& operator=(const Candado&) = delete;

  // Takes the file at `ruta`, which is made where it isn't there; never waits. One that is held already is kept.
  Toma Tomar(const std::filesystem::path& ruta);

  // Whether the file is there and nobody holds it now. Looking takes nothing: a holder that ended has let go of it.
  static bool Libre(const std::filesystem::path& ruta);

  int ErrorDelSistema() const noexcept { return error_; }

 private:
  int archivo_ = -1;
  int error_ = 0;
};

}  // namespace utr
