// Any bytes as the file of settings: it gives a bag, empty at worst, that every read takes, and that goes through the
// file unchanged. And any text as a name or a value of the bag.
#include <cstring>

#include "base/Error.h"
#include "base/Texto.h"
#include "fuzz/Comun.h"
#include "services/Propiedades.h"

namespace {

using utr::Propiedad;
using utr::Propiedades;
using utr::fuzz::Exigir;

// Also two numbers that aren't any.
bool Iguales(const Propiedad& una, const Propiedad& otra) {
  const auto* doble = std::get_if<double>(&una);
  const auto* otro = std::get_if<double>(&otra);
  if (doble != nullptr && otro != nullptr && *doble != *doble) return *otro != *otro;
  return una == otra;
}

void ExigirIguales(const Propiedades::Bolsa& una, const Propiedades::Bolsa& otra) {
  Exigir(una.size() == otra.size(), "the keys");
  for (const auto& [nombre, valor] : una) {
    const auto lugar = otra.find(nombre);
    Exigir(lugar != otra.end() && Iguales(valor, lugar->second), "a value");
  }
}

void MirarLecturas(const Propiedades& bolsa) {
  for (const auto& [nombre, valor] : bolsa.Contenido()) {
    const std::string texto = bolsa.LeerTexto(nombre, "-");
    Exigir(utr::EsUtf8(texto), "a text");
    const auto* entero = std::get_if<std::int64_t>(&valor);
    const bool cabe = entero != nullptr && *entero == static_cast<std::int32_t>(*entero);
    Exigir(!cabe || bolsa.LeerEntero(nombre, 0) == *entero, "an integer");
    bolsa.LeerEntero(nombre, 1);
    const auto* logico = std::get_if<bool>(&valor);
    Exigir(bolsa.LeerLogico(nombre, true) == bolsa.LeerLogico(nombre, false) || logico == nullptr, "a truth value");
  }
}

void MirarEscritura(Propiedades& bolsa, std::string_view bytes) {
  const std::size_t corte = std::min(bytes.find('\n'), bytes.size());
  const std::string nombre(bytes.substr(0, corte));
  const std::string valor(bytes.substr(corte));
  const Propiedades::Bolsa antes = bolsa.Contenido();
  try {
    bolsa.Escribir(nombre, valor, std::string("-"));
    Exigir(bolsa.LeerTexto(nombre, "") == valor, "what was written");
  } catch (const utr::Error& error) {
    const bool guardable = utr::EsUtf8(nombre) && utr::EsUtf8(valor);
    Exigir(error.Numero() == utr::error::kLlamada && !guardable, "a text refused");
    ExigirIguales(antes, bolsa.Contenido());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t cuantos) {
  static const utr::fuzz::CarpetaEnMemoria carpeta;
  const std::string_view texto = utr::fuzz::Vista(bytes, cuantos);
  utr::fuzz::EscribirTodo(carpeta / "AdminUTR.dll", texto);
  Propiedades bolsa(carpeta / "AdminUTR.dll");
  bolsa.CargarPropiedades();
  MirarLecturas(bolsa);
  MirarEscritura(bolsa, texto);
  const Propiedades::Bolsa antes = bolsa.Contenido();
  bolsa.GrabarYRecargar();
  ExigirIguales(antes, bolsa.Contenido());
  return 0;
}
