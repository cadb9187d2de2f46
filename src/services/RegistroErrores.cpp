#include "services/RegistroErrores.h"

#include <fmt/format.h>

#include <fstream>

namespace utr {
namespace {

std::string EntreComillas(std::string_view texto) {
  std::string citado = "\"";
  for (const char letra : texto) {
    if (letra == '"') citado += '"';
    citado += letra == '\n' || letra == '\r' ? ' ' : letra;
  }
  return citado + '"';
}

}  // namespace

RegistroErrores::RegistroErrores(std::filesystem::path archivo, const Reloj& reloj)
    : archivo_(std::move(archivo)), reloj_(reloj) {}

void RegistroErrores::RegistrarError(const Error& error, std::string_view modulo,
                                     std::string_view procedimiento) noexcept {
  try {
    const std::string linea =
        fmt::format("{},{},{},{},{},{},{}\n", error.Numero(), EntreComillas(error.Origen()),
                    EntreComillas(error.Descripcion()), error.ErrorDelSistema(),
                    EntreComillas(TextoFechaHora(reloj_.Ahora())), EntreComillas(modulo), EntreComillas(procedimiento));
    std::ofstream(archivo_, std::ios::binary | std::ios::app) << linea;
  } catch (...) {
    // A log that cannot be written must not turn one failure into two.
  }
}

std::string TextoFalla(Redaccion redaccion, std::string_view descripcion) {
  switch (redaccion) {
    case Redaccion::kCompletada:
      return fmt::format("La operación solicitada no puede ser completada\n[{}]", descripcion);
    case Redaccion::kExportar:
      return fmt::format("La operacion no puede ser completada\n[ {} ]", descripcion);
    case Redaccion::kEntreCorchetes:
      return fmt::format("[ \nLa operación solicitada no puede completarse{} ]", descripcion);
    case Redaccion::kSeleccionada:
      return fmt::format("[\nLa operación seleccionada no puede ser completada{}]", descripcion);
    case Redaccion::kCenida:
      return fmt::format("La operación solicitada no puede completarse\n[{}]", descripcion);
    case Redaccion::kAsistente:
      return TextoFalla(Redaccion::kCompletada, descripcion) + "\nEjecute el asistente de nuevo";
    case Redaccion::kCompletarse:
      break;
  }
  return fmt::format("La operación solicitada no puede completarse\n[ {} ]", descripcion);
}

void RegistrandoYRelanzando(RegistroErrores& registro, std::string_view modulo, std::string_view procedimiento,
                            const std::function<void()>& accion) {
  try {
    accion();
  } catch (...) {
    const Error error = ErrorActual();
    registro.RegistrarError(error, modulo, procedimiento);
    throw error;
  }
}

bool RegistrandoYMostrando(RegistroErrores& registro, Operador& operador, std::string_view modulo,
                           std::string_view procedimiento, std::string_view titulo, Redaccion redaccion,
                           const std::function<void()>& accion, Icono icono) {
  try {
    accion();
    return true;
  } catch (...) {
    const Error error = ErrorActual();
    registro.RegistrarError(error, modulo, procedimiento);
    operador.Mostrar({TextoFalla(redaccion, error.Descripcion()), std::string(titulo), icono, Botones::kAceptar});
    return false;
  }
}

bool RegistrandoSalvoCampo(RegistroErrores& registro, Operador& operador, std::string_view modulo,
                           std::string_view procedimiento, std::string_view titulo, Redaccion redaccion,
                           const std::function<void()>& accion) {
  bool completa = false;
  const bool sin_falla = RegistrandoYMostrando(registro, operador, modulo, procedimiento, titulo, redaccion, [&] {
    try {
      accion();
      completa = true;
    } catch (const Error& error) {
      if (error.Numero() != error::kCampo) throw;
    }
  });
  return sin_falla && completa;
}

void AlFallar(const std::function<void()>& accion, const std::function<void()>& remedio) {
  try {
    accion();
  } catch (...) {
    remedio();
    throw;
  }
}

std::optional<Error> FallaDe(const std::function<void()>& accion) {
  try {
    accion();
  } catch (...) {
    return ErrorActual();
  }
  return std::nullopt;
}

bool IgnorandoErrores(const std::function<void()>& accion) noexcept {
  try {
    accion();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace utr
