#include "session/AjustesEnlace.h"

#include <algorithm>

#include "base/Numeros.h"
#include "driver/Textos.h"

namespace utr {
namespace {

constexpr double kMayorIdentificador = 65535;

Propiedad Numero(std::int32_t numero) {
  return Propiedad{static_cast<std::int64_t>(numero)};
}
Propiedad Texto(std::string_view texto) {
  return Propiedad{std::string(texto)};
}

// The speed in the store; 0 where it holds an address or anything else that is no speed.
std::int32_t VelocidadSerie(const Propiedades& propiedades) {
  const std::string texto = propiedades.LeerTexto(clave::kVelocidad, std::to_string(kVelocidadDefecto));
  return EsNumerico(texto) ? std::max(0, propiedades.LeerEntero(clave::kVelocidad, kVelocidadDefecto)) : 0;
}

std::optional<std::string> TituloCon(const Propiedades& propiedades, std::string_view enlace) {
  const std::int32_t identificador = propiedades.LeerEntero(clave::kIdentificador, 0);
  if (identificador == 0) return std::nullopt;
  return std::string(kTitulo) + std::string(enlace) + std::to_string(identificador);
}

void EscribirSerie(Propiedades& propiedades, const EntradaEnlace& entrada) {
  const std::int32_t puerto = entrada.puerto == 0 ? kPuertoDefecto : entrada.puerto;
  const std::int32_t velocidad = entrada.velocidad == 0 ? kVelocidadDefecto : entrada.velocidad;
  propiedades.Escribir(clave::kPuerto, Numero(puerto), Numero(kPuertoDefecto));
  propiedades.Escribir(clave::kVelocidad, Numero(velocidad), Numero(kVelocidadDefecto));
  propiedades.Escribir(clave::kPorTelefono, Propiedad{entrada.telefono}, Propiedad{false});
  propiedades.Escribir(clave::kNumeroTelefono, Texto(entrada.numero_telefono), Texto(""));
  propiedades.Escribir(clave::kComandosAT, Texto(entrada.comandos), Texto(""));
}

void EscribirIP(Propiedades& propiedades, const EntradaEnlace& entrada) {
  // The defaults are those of a serial reader: left out as equal to the IP ones, the keys would read back as a serial
  // link.
  propiedades.Escribir(clave::kPuerto, Numero(Entero32(Val(entrada.puerto_ip))), Numero(kPuertoDefecto));
  propiedades.Escribir(clave::kVelocidad, Texto(entrada.direccion), Numero(kVelocidadDefecto));
  propiedades.Escribir(clave::kPorTelefono, Propiedad{false}, Propiedad{false});
  propiedades.Escribir(clave::kNumeroTelefono, Texto(""), Texto(""));
}

}  // namespace

EntradaEnlace LeerEntrada(const Propiedades& propiedades) {
  EntradaEnlace entrada;
  entrada.identificador = std::to_string(propiedades.LeerEntero(clave::kIdentificador, 0));
  const std::int32_t puerto = propiedades.LeerEntero(clave::kPuerto, kPuertoDefecto);
  entrada.por_ip = puerto > kUltimoPuertoSerie;
  if (entrada.por_ip) {
    entrada.puerto_ip = std::to_string(puerto);
    entrada.direccion = propiedades.LeerTexto(clave::kVelocidad, kDireccionDefecto);
    return entrada;
  }
  entrada.puerto = std::max(0, puerto);
  entrada.velocidad = VelocidadSerie(propiedades);
  entrada.telefono = propiedades.LeerLogico(clave::kPorTelefono, false);
  if (entrada.telefono) {
    entrada.numero_telefono = propiedades.LeerTexto(clave::kNumeroTelefono, "");
    entrada.comandos = propiedades.LeerTexto(clave::kComandosAT, "");
  }
  return entrada;
}

std::vector<Reparo> ValidarDatos(const EntradaEnlace& entrada) {
  using C = CampoEnlace;
  std::vector<Reparo> reparos;
  const auto exigir = [&](bool mal, C campo, std::string_view texto) {
    if (mal) reparos.push_back({campo, std::string(texto)});
  };
  const double identificador = Val(entrada.identificador);
  exigir(entrada.telefono && entrada.numero_telefono.empty(), C::kTelefono, "Debe especificar un número de teléfono");
  exigir(entrada.por_ip && !EsDireccionIP(entrada.direccion), C::kDireccion, "Dirección IP inválida");
  // Port 10 passes, whatever the sentence says, and is read back as a serial port.
  exigir(entrada.por_ip && (entrada.puerto_ip.empty() || Val(entrada.puerto_ip) < kUltimoPuertoSerie), C::kPuertoIP,
         "El puerto debe ser superior a 10");
  exigir(entrada.identificador.empty(), C::kIdentificador,
         "Debe indicar un identificador de UTR o cero (0) si desconoce el mismo");
  exigir(!entrada.identificador.empty() && (identificador < 0 || identificador > kMayorIdentificador),
         C::kIdentificador, "El identificador debe estar comprendido entre 1 y 65535");
  exigir(!entrada.por_ip && entrada.puerto == 0, C::kPuerto, kFaltaPuerto);
  exigir(!entrada.por_ip && entrada.velocidad == 0, C::kVelocidad, kFaltaVelocidad);
  return reparos;
}

void EscribirEntrada(Propiedades& propiedades, const EntradaEnlace& entrada) {
  if (entrada.por_ip) {
    EscribirIP(propiedades, entrada);
  } else {
    EscribirSerie(propiedades, entrada);
  }
  propiedades.Escribir(clave::kIdentificador, Numero(Entero32(Val(entrada.identificador))), Numero(0));
}

void EscribirPuerto(Propiedades& propiedades, std::string_view puerto, std::string_view velocidad) {
  propiedades.Escribir(clave::kPuerto, Texto(puerto), Numero(kPuertoDefecto));
  propiedades.Escribir(clave::kVelocidad, Texto(velocidad), Numero(kVelocidadDefecto));
}

void GuardarAjustes(ModRTU& mod, std::string_view modulo, std::string_view procedimiento, std::string_view titulo) {
  RegistrandoYMostrando(mod.registro, mod.operador, modulo, procedimiento, titulo, Redaccion::kCompletada,
                        [&] { mod.propiedades.GrabarYRecargar(); });
}

std::string TextoEnlace(std::string_view velocidad) {
  return std::string(velocidad) + ",n,8,1";
}

bool HayPuertoSerie(const Propiedades& propiedades) {
  return propiedades.LeerEntero(clave::kPuerto, kPuertoDefecto) <= kUltimoPuertoSerie;
}

std::optional<std::string> TituloTrasLectura(const Propiedades& propiedades) {
  return TituloCon(propiedades, " : Identificador: ");
}

std::optional<std::string> TituloTrasComandos(const Propiedades& propiedades) {
  return TituloCon(propiedades, " - Identificador: ");
}

}  // namespace utr
