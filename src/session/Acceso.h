#pragma once

#include <string>
#include <string_view>

namespace utr {

// The password in force where the settings hold none.
inline constexpr std::string_view kClaveDefecto = "Pampas";

// The attempts at a password within one dialog: three, compared exactly and with case.
class Acceso {
 public:
  enum class Resultado { kAceptada, kReintentar, kAgotada };

  explicit Acceso(std::string clave) : clave_(std::move(clave)) {}

  Resultado Probar(std::string_view intento);

 private:
  std::string clave_;
  int fallidos_ = 0;
};

// The new password may be typed: the present one was given exactly, and isn't empty.
bool PuedeCambiarClave(std::string_view actual, std::string_view original);

// The new password may be taken: it isn't empty and was repeated.
bool ClaveNuevaValida(std::string_view nueva, std::string_view repetida);

}  // namespace utr
