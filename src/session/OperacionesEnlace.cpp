#include "session/OperacionesEnlace.h"

#include <cstdlib>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "services/ArchivosPrograma.h"

namespace utr {
namespace {

constexpr std::int16_t kToleranciaMinutos = 30;
// The page whose reading tells that a unit is there.
constexpr std::string_view kPaginaDePrueba = "35";

// Whether a unit answers at that speed, which stays in the store.
bool Probar(ModRTU& mod, std::int32_t puerto, std::int32_t velocidad) {
  mod.propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{puerto}}, Propiedad{std::int64_t{kPuertoDefecto}});
  mod.propiedades.Escribir(clave::kVelocidad, Propiedad{std::int64_t{velocidad}},
                           Propiedad{std::int64_t{kVelocidadDefecto}});
  IgnorandoErrores([&] { mod.propiedades.GrabarYRecargar(); });
  bool responde = false;
  IgnorandoErrores([&] {
    mod.conexion.ConectarSegunAjustes();
    responde = !mod.comunicador.LeerPagina(kPaginaDePrueba, true).empty();
  });
  return responde;
}

// What the machine refused names its device, since a number alone doesn't say which one that is; a file that hides
// whose the number is says what to do.
std::string DetalleDe(const Error& falla) {
  const bool dice_mas = falla.ErrorDelSistema() != 0 || falla.Numero() == error::kArchivo;
  return dice_mas ? ". " + falla.Descripcion() : std::string();
}

Tono TonoDe(EnlaceIP ip) {
  switch (ip) {
    case EnlaceIP::kContesta:
      return Tono::kBien;
    case EnlaceIP::kPerdido:
      return Tono::kMal;
    case EnlaceIP::kSinProbar:
      break;
  }
  return Tono::kNeutro;
}

void AvisarSinComandos(ModRTU& mod) {
  // Only a warning: a modem that needs no commands can be called all the same.
  mod.operador.Mostrar({"Debe especificar los comandos de inicialización del modem", "Atención", Icono::kExclamacion,
                        Botones::kAceptar});
}

// False: it was abandoned ahead of dialling.
bool Llamar(ModRTU& mod, const EntradaEnlace& entrada, const std::function<bool()>& cancelada) {
  const std::int32_t velocidad = entrada.velocidad == 0 ? kVelocidadDefecto : entrada.velocidad;
  const std::int32_t puerto = entrada.puerto == 0 ? kPuertoDefecto : entrada.puerto;
  mod.conexion.Conectar(TextoEnlace(std::to_string(velocidad)), std::to_string(puerto));
  const std::string comandos =
      entrada.comandos.empty() ? LeerArchivoPrograma(mod.registro, mod.carpeta, "comandosAT.dat") : entrada.comandos;
  if (comandos.empty()) AvisarSinComandos(mod);
  const auto abandonada = [&] { return cancelada && cancelada(); };
  if (abandonada()) return false;  // what follows would undo it
  mod.comunicador.Cancelar(true);
  if (mod.atender) mod.atender();
  if (abandonada()) return false;
  if (!entrada.numero_telefono.empty()) mod.conexion.Llamar(entrada.numero_telefono, comandos);
  return true;
}

void PonerEnHora(ModRTU& mod) {
  const bool puesta = mod.comunicador.GrabarFechaHora();  // the driver tells the journal
  mod.operador.Mostrar({puesta ? "Puesta en hora satisfactoria" : "Error en Puesta en hora. Compruebe el conexionado",
                        "Puesta en hora", Icono::kInformacion, Botones::kAceptar});
}

}  // namespace

std::optional<std::int32_t> BuscarVelocidad(ModRTU& mod, const BusquedaVelocidad& busqueda) {
  const Propiedades::Bolsa anterior = mod.propiedades.Contenido();
  const auto cancelada = [&] {
    if (mod.atender) mod.atender();
    if (!busqueda.cancelada || !busqueda.cancelada()) return false;
    mod.propiedades.Reponer(anterior);
    IgnorandoErrores([&] { mod.propiedades.GrabarYRecargar(); });
    return true;
  };
  for (const std::int32_t velocidad : busqueda.velocidades.subspan(busqueda.velocidades.empty() ? 0 : 1)) {
    if (busqueda.probando) busqueda.probando(velocidad);
    const bool responde = Probar(mod, busqueda.puerto, velocidad);
    if (cancelada()) return std::nullopt;
    if (responde) return velocidad;
  }
  return std::nullopt;
}

bool LlamarPorTelefono(ModRTU& mod, const EntradaEnlace& entrada, std::string_view titulo,
                       const std::function<bool()>& cancelada) {
  bool llamada = true;
  if (const std::optional<Error> falla = FallaDe([&] { llamada = Llamar(mod, entrada, cancelada); })) {
    mod.registro.RegistrarError(*falla, "frmPresentacion", "LlamarPorTelefono");
    mod.conexion.OlvidarLlamada();
  }
  if (!llamada) return false;
  if (!mod.conexion.EnLlamada()) {
    mod.operador.Mostrar(
        {"Error al comunicarse por teléfono", std::string(titulo), Icono::kCritico, Botones::kAceptar});
  }
  return mod.conexion.EnLlamada();
}

std::string AbrirPuerto(ModRTU& mod, std::string_view enlace, std::string_view puerto) {
  const std::optional<Error> falla = FallaDe([&] { mod.conexion.Conectar(enlace, puerto); });
  if (!falla || mod.conexion.PorIP()) return {};
  return (falla->Numero() == error::kPuertoEnUso ? "El puerto requerido se encuentra abierto"
                                                 : "Error en el puerto de comunicación") +
         DetalleDe(*falla);
}

Mensaje MensajeDePuerto(const Error& falla, std::string_view titulo) {
  if (falla.Numero() == error::kPuertoEnUso) {
    return {"El puerto requerido se encuentra en uso" + DetalleDe(falla), std::string(titulo), Icono::kInformacion,
            Botones::kAceptar};
  }
  return {"Error en el puerto de comunicación" + DetalleDe(falla), std::string(titulo), Icono::kCritico,
          Botones::kAceptar};
}

TextosPanel InfoPanel(ModRTU& mod) {
  const std::string puerto = std::to_string(mod.propiedades.LeerEntero(clave::kPuerto, kPuertoDefecto));
  if (mod.conexion.PorIP()) {
    const std::string direccion = mod.propiedades.LeerTexto(clave::kVelocidad, kDireccionDefecto);
    return {"Puerto: " + puerto + " ", " IP: " + direccion + " ", true, TonoDe(mod.conexion.Ip())};
  }
  if (!mod.comunicador.EstadoPuerto()) return {" Desconectado ", "  ", false, Tono::kMal};
  const std::string enlace = mod.comunicador.ObtenerPuertos();
  const std::string abierto = mod.conexion.PuertoAbierto().empty() ? puerto : mod.conexion.PuertoAbierto();
  return {" COM " + abierto + " ", " Vel: " + std::string(Separar(enlace, ',').front()) + " bps "};
}

std::int16_t MinutosDeDiferencia(FechaHora equipo, const FechaHora& ahora) {
  std::int64_t segundos = Segundos(equipo);
  const std::int64_t presente = Segundos(ahora);
  if (equipo.anio < ahora.anio) segundos = presente - kSegundosDia;
  const std::int64_t minutos = std::llabs(presente - segundos) / 60;
  return Entero16(static_cast<double>(minutos));
}

void CompararHoras(ModRTU& mod) {
  const FechaHora equipo = ConvertirAFecha(mod.comunicador.LeerFechaHora());
  if (MinutosDeDiferencia(equipo, mod.reloj.Ahora()) < kToleranciaMinutos) return;
  const Mensaje pregunta{
      "El Equipo posee una fecha cuya diferencia es mayor a 30 minutos con respecto a la de la PC. \n"
      "Puede que el mismo se encuentre fuera de hora\n"
      "¿Desea poner en hora el Equipo?",
      "Equipo fuera de hora", Icono::kInformacion, Botones::kSiNo};
  if (mod.operador.Mostrar(pregunta) == Respuesta::kSi) {
    PonerEnHora(mod);
    return;
  }
  mod.operador.Mostrar(
      {"Tenga en cuenta que si la hora del equipo es incorrecta\n"
       "los datos registrados tendran fechas erroneas.",
       "Puesta en hora", Icono::kInformacion, Botones::kAceptar});
}

}  // namespace utr
