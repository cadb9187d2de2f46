#include "services/ComunicadorConDiario.h"

#include <fmt/format.h>

#include <utility>

#include "base/Error.h"
#include "services/RegistroErrores.h"

namespace utr {
namespace {

constexpr const char* kReloj = "reloj";

std::string Pagina(std::string_view numero) {
  return fmt::format("página {}", numero);
}

std::string Filas(const Tabla& tabla, std::string_view de_que) {
  return tabla.Abierta() ? fmt::format("{} {}", tabla.RecordCount(), de_que) : "tabla cerrada";
}

// "del 01/02/2026 al 15/03/2026"; two empty dates ask for what is pending.
std::string Entre(std::string_view desde, std::string_view hasta) {
  return desde.empty() && hasta.empty() ? "pendientes" : fmt::format("del {} al {}", desde, hasta);
}

std::string Canal(std::int16_t desde_cero) {
  return fmt::format("canal {}", desde_cero + 1);
}

}  // namespace

// `dato`: what is written, as the reads call it; empty: nothing that can be read.
template <class Hacer>
bool ComunicadorConDiario::Escribir(std::string comando, std::string_view dato, std::string escrito, Hacer hacer) {
  std::string antes = dato.empty() ? asiento::kNada : leido_ == dato ? valor_leido_ : std::string(asiento::kSinLeer);
  if (dato == kReloj && leido_ == kReloj) antes = HoraLeida(valor_leido_, leido_el_, reloj_.Ahora());
  leido_.clear();
  Asiento nota{.momento = reloj_.Ahora(),
               .comando = std::move(comando),
               .antes = std::move(antes),
               .escrito = std::move(escrito),
               .resultado = std::string("sin terminar") + asiento::kSinConfirmar};
  const std::uint64_t empezado = diario_.Empezar(nota);
  const auto terminar = [&](std::string resultado) {
    nota.momento = reloj_.Ahora();
    nota.resultado = std::move(resultado);
    diario_.Terminar(empezado, std::move(nota));
  };
  try {
    const bool hecho = hacer();
    terminar(hecho ? asiento::kHecho : std::string(asiento::kNoAceptado) + asiento::kSinConfirmar);
    return hecho;
  } catch (...) {
    const Error falla = ErrorActual();
    terminar("[" + falla.Descripcion() + "]" + asiento::kSinConfirmar);
    throw falla;
  }
}

template <class Hacer>
TablaPtr ComunicadorConDiario::Leer(std::string comando, std::string_view unidades, Hacer hacer) {
  leido_.clear();
  const auto anotar = [&](std::string resultado) {
    diario_.AnotarLlamada({.momento = reloj_.Ahora(),
                           .comando = std::move(comando),
                           .antes = asiento::kNada,
                           .escrito = asiento::kNada,
                           .resultado = std::move(resultado),
                           .clase = ClaseAsiento::kLectura});
  };
  try {
    TablaPtr tabla = hacer();
    anotar(tabla ? Filas(*tabla, unidades) : "sin respuesta");
    return tabla;
  } catch (...) {
    const Error falla = ErrorActual();
    anotar("[" + falla.Descripcion() + "]");
    throw falla;
  }
}

bool ComunicadorConDiario::BorrarFlash() {
  return Escribir("Borrar Flash", {}, asiento::kNada, [&] { return Destino().BorrarFlash(); });
}
bool ComunicadorConDiario::BorrarCartucho() {
  return Escribir("Borrar Cartucho", {}, asiento::kNada, [&] { return Destino().BorrarCartucho(); });
}
bool ComunicadorConDiario::ReiniciarAgenda(std::string_view comando) {
  return Escribir("Reinicio Agenda", {}, asiento::kNada, [&] { return Destino().ReiniciarAgenda(comando); });
}
bool ComunicadorConDiario::ReiniciarUTR(std::string_view comando) {
  return Escribir("Reinicio UTR", {}, asiento::kNada, [&] { return Destino().ReiniciarUTR(comando); });
}
bool ComunicadorConDiario::GrabarAgenda(Tabla& tabla) {
  return Escribir("Grabar agenda", "agenda", Filas(tabla, "horarios"), [&] { return Destino().GrabarAgenda(tabla); });
}
bool ComunicadorConDiario::GrabarParametrizacion(Tabla& tabla) {
  return Escribir("Grabar parametrización", "canales", Filas(tabla, "canales"),
                  [&] { return Destino().GrabarParametrizacion(tabla); });
}
bool ComunicadorConDiario::GrabarConfiguracion(Tabla& tabla) {
  return Escribir("Grabar configuración", "canales", Filas(tabla, "canales"),
                  [&] { return Destino().GrabarConfiguracion(tabla); });
}
bool ComunicadorConDiario::GrabarFechaHora() {
  return Escribir("Grabar fecha y hora", kReloj, TextoFechaHora(reloj_.Ahora()),
                  [&] { return Destino().GrabarFechaHora(); });
}
bool ComunicadorConDiario::GrabarEstado(std::string_view flags) {
  return Escribir("Grabar estado", "estado", std::string(flags), [&] { return Destino().GrabarEstado(flags); });
}
bool ComunicadorConDiario::EscribirPagina(std::string_view pagina, std::string_view datos) {
  return Escribir("Grabar " + Pagina(pagina), Pagina(pagina), std::string(datos),
                  [&] { return Destino().EscribirPagina(pagina, datos); });
}
bool ComunicadorConDiario::GrabarEvento(std::string_view comando, std::string_view datos) {
  return Escribir("Grabar evento", {}, fmt::format("{}: {}", comando, datos),
                  [&] { return Destino().GrabarEvento(comando, datos); });
}
bool ComunicadorConDiario::GrabarPilaCanal(std::string_view comando, std::string_view datos) {
  return Escribir("Grabar relación pila-canales", "relación", fmt::format("{}: {}", comando, datos),
                  [&] { return Destino().GrabarPilaCanal(comando, datos); });
}
bool ComunicadorConDiario::GrabarCanalesModificar(std::string_view comando, std::string_view datos) {
  return Escribir("Grabar canales a modificar", {}, fmt::format("{}: {}", comando, datos),
                  [&] { return Destino().GrabarCanalesModificar(comando, datos); });
}
bool ComunicadorConDiario::GrabarSalidaDigital(int salida, bool encender) {
  return Escribir(fmt::format("Grabar salida digital {}", salida), "salida", encender ? "encendida" : "apagada",
                  [&] { return Destino().GrabarSalidaDigital(salida, encender); });
}

TablaPtr ComunicadorConDiario::ConfiguracionAlmacenada(bool desdeUTR) {
  return Leer("Lectura de la configuración", "canales", [&] { return Destino().ConfiguracionAlmacenada(desdeUTR); });
}
TablaPtr ComunicadorConDiario::LeerAgenda() {
  return Leer("Lectura de la agenda", "horarios", [&] { return Destino().LeerAgenda(); });
}
TablaPtr ComunicadorConDiario::LeerEventos(std::string_view desde, std::string_view hasta) {
  return Leer("Lectura de eventos, " + Entre(desde, hasta), "registros",
              [&] { return Destino().LeerEventos(desde, hasta); });
}
TablaPtr ComunicadorConDiario::LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return Leer(fmt::format("Lectura de datos, {}, {}", Canal(canal), Entre(desde, hasta)), "registros",
              [&] { return Destino().LeerDatos(desde, hasta, canal); });
}
TablaPtr ComunicadorConDiario::LeerColaTx(std::string_view desde, std::string_view hasta) {
  return Leer("Lectura de la cola de transmisión, " + Entre(desde, hasta), "registros",
              [&] { return Destino().LeerColaTx(desde, hasta); });
}
TablaPtr ComunicadorConDiario::LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return Leer(fmt::format("Lectura de datos del cartucho, {}, {}", Canal(canal), Entre(desde, hasta)), "registros",
              [&] { return Destino().LeerDatosCartucho(desde, hasta, canal); });
}
TablaPtr ComunicadorConDiario::LeerEventosCartucho(std::string_view desde, std::string_view hasta) {
  return Leer("Lectura de eventos del cartucho, " + Entre(desde, hasta), "registros",
              [&] { return Destino().LeerEventosCartucho(desde, hasta); });
}
TablaPtr ComunicadorConDiario::LeerColaTxCartucho(std::string_view desde, std::string_view hasta) {
  return Leer("Lectura de la cola de transmisión del cartucho, " + Entre(desde, hasta), "registros",
              [&] { return Destino().LeerColaTxCartucho(desde, hasta); });
}

std::string ComunicadorConDiario::LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) {
  leido_.clear();
  std::string datos;
  AlFallar([&] { datos = Destino().LeerPaginaFlash(pista, pagina); }, [&] { diario_.AnotarPaginaFlash(false); });
  diario_.AnotarPaginaFlash(!datos.empty());
  return datos;
}

std::string ComunicadorConDiario::LeerFechaHora() {
  leido_.clear();
  valor_leido_ = Destino().LeerFechaHora();
  leido_el_ = reloj_.Ahora();
  if (!valor_leido_.empty()) leido_ = kReloj;
  return valor_leido_;
}

std::string ComunicadorConDiario::LeerPagina(std::string_view pagina, bool silencioso) {
  leido_.clear();
  valor_leido_ = Destino().LeerPagina(pagina, silencioso);
  if (!valor_leido_.empty()) leido_ = Pagina(pagina);
  return valor_leido_;
}

void ComunicadorConDiario::IdEquipo(std::int32_t identificador) {
  leido_.clear();
  Destino().IdEquipo(identificador);
}
void ComunicadorConDiario::Conectar(std::string_view enlace, std::string_view puerto) {
  leido_.clear();
  Destino().Conectar(enlace, puerto);
}
void ComunicadorConDiario::PorIP(bool activo) {
  leido_.clear();
  Destino().PorIP(activo);
}
void ComunicadorConDiario::DireccionIP(std::string_view direccion) {
  leido_.clear();
  Destino().DireccionIP(direccion);
}
void ComunicadorConDiario::PuertoIP(std::string_view puerto) {
  leido_.clear();
  Destino().PuertoIP(puerto);
}
bool ComunicadorConDiario::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  leido_.clear();
  return Destino().LlamarTelefono(numero, comandos);
}
void ComunicadorConDiario::Desconectar() {
  leido_.clear();
  diario_.Completar();
  Destino().Desconectar();
}

}  // namespace utr
