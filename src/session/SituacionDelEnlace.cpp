#include "session/SituacionDelEnlace.h"

namespace utr {

namespace {

struct Palabras {
  const char* texto;
  const char* detalle;
  const char* palabra;
};

// In the order of ClaseDeUnidad.
constexpr Palabras kPalabras[] = {
    {"Estación simulada", "La UTR es una simulación de este programa: nada de lo que se graba llega a una unidad.",
     "simulada"},
    {"Estación de práctica",
     "Al otro extremo de la línea hay una estación de práctica: nada de lo que se graba llega a una unidad real.",
     "de práctica"},
    {"Unidad real", "Al otro extremo de la línea hay una UTR: lo que se graba queda en ella.", "real"},
    {"Unidad sin identificar",
     "Lo que se pide sale por una línea, y todavía no contestó nadie. Puede ser una UTR: lo que se graba queda en "
     "ella.",
     "sin identificar"},
};

const Palabras& De(ClaseDeUnidad clase) {
  return kPalabras[static_cast<std::size_t>(clase)];
}

}  // namespace

void SituacionDelEnlace::PonerClase(ClaseDeUnidad clase) {
  clase_ = clase;
  if (clase != ClaseDeUnidad::kDesconocida) {
    ultima_conocida_ = clase;
    otra_conexion_ = false;
  }
  if (aviso_) aviso_();
}

void SituacionDelEnlace::PonerCuenta(const CuentaDeLinea& cuenta) {
  if (cuenta == cuenta_) return;
  cuenta_ = cuenta;
  if (aviso_) aviso_();
}

bool SituacionDelEnlace::Consiente(bool de_practica) const noexcept {
  return a_la_vista_ == ClaseDeUnidad::kDesconocida || EsDePractica(a_la_vista_) == de_practica;
}

std::string TextoDe(ClaseDeUnidad clase) {
  return De(clase).texto;
}

std::string DetalleDe(ClaseDeUnidad clase) {
  return De(clase).detalle;
}

std::string PalabraDe(ClaseDeUnidad clase) {
  return De(clase).palabra;
}

bool EsDePractica(ClaseDeUnidad clase) {
  return clase == ClaseDeUnidad::kSimulada || clase == ClaseDeUnidad::kDePractica;
}

bool EsDePractica(std::string_view palabra) {
  return palabra == De(ClaseDeUnidad::kSimulada).palabra || palabra == De(ClaseDeUnidad::kDePractica).palabra;
}

std::string TextoDe(const CuentaDeLinea& cuenta) {
  const std::uint64_t bytes = cuenta.enviados + cuenta.recibidos;
  if (bytes == 0) return {};
  const auto cuantos = [](std::uint64_t numero, const char* uno, const char* varios) {
    return std::to_string(numero) + (numero == 1 ? uno : varios);
  };
  const std::string paginas = cuenta.paginas == 0 ? "" : cuantos(cuenta.paginas, " página, ", " páginas, ");
  return std::to_string(bytes) + " bytes, " + paginas + cuantos(cuenta.reintentos, " reintento", " reintentos");
}

}  // namespace utr
