#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "base/Error.h"
#include "base/Reloj.h"
#include "services/Operador.h"

namespace utr {

// The common error log: one line an error in a file beside the executable, named after it with the extension ".err".
class RegistroErrores {
 public:
  RegistroErrores(std::filesystem::path archivo, const Reloj& reloj);

  // Appends number, source, description, last system error, present date and time, module and procedure,
  // comma-separated, texts in double quotes (a quote inside is doubled, line ends become blanks). The system error is
  // the one that the error carries, 0 when the system had no part in it. The file is opened for that line and closed
  // after it. Never raises, shows nothing.
  void RegistrarError(const Error& error, std::string_view modulo, std::string_view procedimiento) noexcept;

 private:
  std::filesystem::path archivo_;
  const Reloj& reloj_;
};

// How a common critical message is worded: each stands in its own procedures.
enum class Redaccion {
  kCompletada,      // "La operación solicitada no puede ser completada", line break, "[", description, "]"
  kCompletarse,     // "La operación solicitada no puede completarse", line break, "[ ", description, " ]"
  kExportar,        // "La operacion no puede ser completada", line break, "[ ", description, " ]"
  kEntreCorchetes,  // "[ ", line break, "La operación solicitada no puede completarse", description, " ]"
  kSeleccionada,    // "[", line break, "La operación seleccionada no puede ser completada", description, "]"
  kCenida,          // kCompletarse with "[" and "]" alone
  kAsistente,       // kCompletada, line break, "Ejecute el asistente de nuevo"
};
std::string TextoFalla(Redaccion redaccion, std::string_view descripcion);

// The three shapes of failure. Each runs `accion`; nothing else in the system catches errors of a procedure of weight.

// Logs a failure and raises it again.
void RegistrandoYRelanzando(RegistroErrores& registro, std::string_view modulo, std::string_view procedimiento,
                            const std::function<void()>& accion);

// Logs a failure and shows one message titled `titulo`, critical unless told otherwise. True: the action ended without
// a failure.
bool RegistrandoYMostrando(RegistroErrores& registro, Operador& operador, std::string_view modulo,
                           std::string_view procedimiento, std::string_view titulo, Redaccion redaccion,
                           const std::function<void()>& accion, Icono icono = Icono::kCritico);

// The same for the reads of the record views, where error 3265 is cleared: it is neither logged nor shown.
bool RegistrandoSalvoCampo(RegistroErrores& registro, Operador& operador, std::string_view modulo,
                           std::string_view procedimiento, std::string_view titulo, Redaccion redaccion,
                           const std::function<void()>& accion);

// Runs `remedio` after a failure of `accion`, which is then raised again: what has to be put back whoever catches it.
void AlFallar(const std::function<void()>& accion, const std::function<void()>& remedio);

// The failure of an action, for the few callers that look at its number; nothing when there was none.
std::optional<Error> FallaDe(const std::function<void()>& accion);

// Drops any failure. For the few procedures that run with errors ignored. True: there was none.
bool IgnorandoErrores(const std::function<void()>& accion) noexcept;

}  // namespace utr
