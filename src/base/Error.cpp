#include "base/Error.h"

#include <array>
#include <system_error>
#include <utility>

namespace utr {
namespace {

struct Descripcion {
  std::int32_t numero;
  const char* texto;
};

constexpr std::array kDescripciones = {
    Descripcion{error::kLlamada, "Llamada o argumento no válido"},
    Descripcion{error::kDesborde, "Desbordamiento: el número excede el rango permitido"},
    Descripcion{error::kSubindice, "El subíndice está fuera del intervalo"},
    Descripcion{error::kTipos, "No coinciden los tipos: el texto no es un número o una fecha válida"},
    Descripcion{error::kArchivo, "Error de acceso al archivo"},
    Descripcion{error::kSinRegistro, "No hay un registro actual en la tabla"},
    Descripcion{error::kCampo, "No se encontró el campo solicitado en la tabla"},
    Descripcion{error::kTablaCerrada, "La operación no se permite con la tabla cerrada"},
    Descripcion{error::kTablaAbierta, "La operación no se permite con la tabla abierta"},
    Descripcion{error::kPuertoEnUso, "El puerto se encuentra abierto o en uso"},
    Descripcion{error::kSinRespuesta, "La UTR no responde"},
    Descripcion{error::kCancelado, "La operación fue cancelada"},
};

}  // namespace

Error::Error(std::int32_t numero, std::string origen, std::string descripcion, int error_del_sistema)
    : numero_(numero),
      origen_(std::move(origen)),
      descripcion_(std::move(descripcion)),
      error_del_sistema_(error_del_sistema) {}

std::string DescripcionDe(std::int32_t numero) {
  for (const auto& d : kDescripciones) {
    if (d.numero == numero) return d.texto;
  }
  return "Error definido por la aplicación o por el sistema";
}

void Lanzar(std::int32_t numero, std::string origen) {
  throw Error(numero, std::move(origen), DescripcionDe(numero));
}

Error ErrorActual() {
  try {
    throw;
  } catch (const Error& e) {
    return e;
  } catch (const std::bad_alloc&) {
    return Error(7, "sistema", "Memoria insuficiente");
  } catch (const std::system_error& e) {
    const bool del_sistema =
        e.code().category() == std::system_category() || e.code().category() == std::generic_category();
    return Error(error::kLlamada, e.what(), "Error interno inesperado", del_sistema ? e.code().value() : 0);
  } catch (const std::exception& e) {
    return Error(error::kLlamada, e.what(), "Error interno inesperado");
  } catch (...) {
    return Error(error::kLlamada, "desconocido", "Error interno inesperado");
  }
}

}  // namespace utr
