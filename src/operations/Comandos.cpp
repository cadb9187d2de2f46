#include "operations/Comandos.h"

#include <utility>

#include "base/Numeros.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/PaginaCero.h"
#include "session/AjustesEnlace.h"
#include "unit/PalabrasPagina0.h"

namespace utr {

// A command without a restart: what it asks first (null: nothing) and how it is told. Without words of success nothing
// is said of it.
struct OrdenUTR {
  const char* pregunta;
  Icono icono_pregunta;
  const char* exito;
  Icono icono_exito;
  const char* fallo;
};

// A parameter that takes force with a restart.
struct CambioUTR {
  const char* procedimiento;
  const char* pregunta;
  const char* fallo;
  const char* grabado;
};

// A read of page "0": how many bytes it needs.
struct LecturaPagina0 {
  std::size_t bytes;
  const char* fallo;
};

namespace {

constexpr const char* kModulo = "frmComandos";
constexpr std::string_view kReinicio = "14";
constexpr std::string_view kReinicioAgenda = "41";
constexpr std::int16_t kPausaReinicio = 20;  // seconds in which the unit is away
constexpr const char* kErrorReinicio = "Error iniciando UTR";
constexpr const char* kReiniciada = "UTR iniciada";
constexpr const char* kEsperaReinicio = "La UTR se reinicia: unos 20 segundos";

// How the journal tells an end.
constexpr const char* kAceptoReinicio = "; aceptó el reinicio";

constexpr std::size_t kMenorPagina = 2;  // characters of a page that was read
constexpr double kMayorRetardo = 1000;
constexpr int kPorUnidad = 10;  // what is shown for one that is stored

// What is known of the unit: the parts of page "0", and what stands beside it.
constexpr const char* kDelay = "Delay";
constexpr const char* kVelocidad = "Velocidad";
constexpr const char* kIdentificador = "Identificador";
constexpr const char* kVentana = "Ventana";
constexpr const char* kPartesPagina0[] = {kDelay, kVelocidad, kIdentificador, kVentana};
constexpr const char* kEstado = "Estado";
constexpr const char* kRTS = "RTS";
std::string DatoDePagina(const std::string& numero) {
  return "Página " + numero;
}

// --- The words of the commands ---------------------------------------------------------------------------------------

constexpr LecturaPagina0 kLecturaRetardos{pagina0::kRepeticiones + 1,
                                          "No se pudo leer el dato\nVerifique el conexionado"};
constexpr LecturaPagina0 kLecturaVelocidad{pagina0::kVelocidad + 1,
                                           "No se pudo leer la velocidad\nVerifique el conexionado"};
constexpr LecturaPagina0 kLecturaIdentificador{pagina0::kIdentificador + 2,
                                               "No se pudo leer el número de la UTR\nVerifique el conexionado"};
constexpr LecturaPagina0 kLecturaVentana{pagina0::kVentana + 2, "No se pudo leer la agenda\nVerifique el conexionado"};

// The delays ask about a restart and make none: the unit takes them as it goes.
constexpr OrdenUTR kGrabarDelay{"Esta acción requiere reiniciar la estación remota.\n¿Desea continuar?",
                                Icono::kExclamacion, "Delay grabado", Icono::kInformacion,
                                "No se pudo grabar la página"};
constexpr OrdenUTR kGrabarAgenda{nullptr, Icono::kNinguno, "Ventana de agenda grabada", Icono::kInformacion,
                                 "No se pudo grabar la página"};
constexpr OrdenUTR kGrabarCS{"Esta acción modificará el estado de la UTR\n¿Desea continuar?", Icono::kPregunta,
                             "Estado grabado", Icono::kExclamacion, "No se pudo grabar el estado de la UTR"};
constexpr OrdenUTR kEscribirPagina{nullptr, Icono::kNinguno, "Pagina grabada", Icono::kExclamacion,
                                   "No se pudo grabar página"};
constexpr OrdenUTR kGrabarHora{nullptr, Icono::kNinguno, nullptr, Icono::kNinguno,
                               "No se pudo grabar la hora de la PC a la UTR\nVerifique el conexionado"};

constexpr CambioUTR kGrabarBPS{"GrabarBPS_Click",
                               "Esta acción requiere reiniciar la estación remota.\n¿Desea continuar?",
                               "No se pudo grabar la velocidad", "Velocidad grabada\nSe procede al reinicio de la UTR"};
constexpr CambioUTR kGrabarIdentificador{"GrabarIdentificador_Click",
                                         "Tenga en cuenta que al modificar el identificador de la estación\n"
                                         "remota deberá modificar el mismo en la estación central\n"
                                         "para que se pueda establecer la comunicación entre los equipos.\n"
                                         "Asimismo, tenga en cuenta que si este equipo no utiliza radio\n"
                                         "como mecanismo de comunicación, la modificación de este parámetro\n"
                                         "determinará un funcionamiento incorrecto de la estación\n"
                                         "¿Confirma que desea grabar el identificador indicado?\n"
                                         "Tenga en cuenta que luego de la modificación,\n"
                                         "sse procederá al reinicio de la estación remota.",
                                         "No se pudo grabar el Id de la UTR",
                                         "Id de UTR grabada, se procederá al reinicio de la UTR"};

// What is done to the unit at the press of a button, in the order of AccionUTR.
struct FilaAccion {
  const char* comando;
  OrdenUTR orden;
  bool (*hacer)(Comunicador& comunicador);
};
constexpr FilaAccion kAccionesUTR[] = {
    {"Borrar Cartucho",
     {"Esta acción borrará todos los datos del Cartucho\n¿Desea continuar?", Icono::kPregunta, "Cartucho borrado",
      Icono::kExclamacion, "Error borrando el cartucho\nVerifique el conexionado"},
     [](Comunicador& comunicador) { return comunicador.BorrarCartucho(); }},
    {"Borrar Flash",
     {"Esta acción borrará todos los datos de la UTR\n¿Desea continuar?", Icono::kPregunta, "Flash borrada",
      Icono::kExclamacion, "Error borrando flash\nVerifique el conexionado"},
     [](Comunicador& comunicador) { return comunicador.BorrarFlash(); }},
    {"Reinicio UTR",
     {"¿Desea verificar el reinicio de la UTR?", Icono::kPregunta, kReiniciada, Icono::kExclamacion, kErrorReinicio},
     [](Comunicador& comunicador) { return comunicador.ReiniciarUTR(kReinicio); }},
    {"Reinicio Agenda",
     {"¿Desea verificar el reinicio de la agenda?", Icono::kPregunta, "Agenda iniciada", Icono::kInformacion,
      "No se pudo reiniciar la agenda\nVerifique el conexionado"},
     [](Comunicador& comunicador) { return comunicador.ReiniciarAgenda(kReinicioAgenda); }},
};

const char* TextoRTS(bool activo) {
  return activo ? "Prendido" : "Apagado";
}

std::string EntreCorchetes(const std::optional<Error>& falla) {
  return falla ? " [" + falla->Descripcion() + "]" : std::string();
}

// What a message says ahead of its advice.
std::string Comienzo(std::string_view texto) {
  return std::string(texto.substr(0, texto.find_first_of(",\n")));
}

std::string TextoDe(const Retardos& retardos) {
  return "Delay " + retardos.delay + ", repeticiones " + retardos.repeticiones;
}

// Half to even, so that 25 is stored as 2 and 35 as 4.
std::int16_t EnDecenas(const std::string& texto) {
  return Entero16(LeerDoble(texto) / kPorUnidad);
}

std::string Redondeado(const std::string& texto) {
  return std::to_string(EnDecenas(texto) * kPorUnidad);
}

Retardos RetardosDe(const PaginaUnidad& pagina) {
  return {std::to_string(pagina.Numero(pagina0::kRetardo) * kPorUnidad),
          std::to_string(pagina.Numero(pagina0::kRepeticiones) * kPorUnidad)};
}

// The driver kept the order to itself, because another unit answered than the one that it was meant for.
bool FueRetenido(const std::optional<Error>& falla) {
  return falla && falla->Numero() == error_enlace::kOtraUnidad;
}

}  // namespace

Retardos Redondear(const Retardos& retardos) {
  return {Redondeado(retardos.delay), Redondeado(retardos.repeticiones)};
}

std::string RetardoAlSalir(std::string_view texto) {
  const double valor = Val(texto);
  return valor < 0 || valor > kMayorRetardo ? "0" : std::string(texto);
}

Comandos::Comandos(ModRTU& mod, std::string titulo, Ocupar ocupar)
    : mod_(mod), titulo_(std::move(titulo)), ocupar_(std::move(ocupar)) {}

// --- What all commands are made of -----------------------------------------------------------------------------------

void Comandos::Decir(std::string_view texto, Icono icono, const std::string& detalle) {
  mod_.operador.Mostrar({std::string(texto), titulo_, icono, Botones::kAceptar, {}, {}, detalle});
}

// Enter answers no: what follows can't be taken back.
bool Comandos::Confirmar(const char* pregunta, Icono icono) {
  if (pregunta == nullptr) return true;
  return mod_.operador.Mostrar({pregunta, titulo_, icono, Botones::kSiNo, {}, Respuesta::kNo}) == Respuesta::kSi;
}

bool Comandos::EnRango(CampoComando campo, double valor) {
  const char* palabras = FueraDeRango(campo, valor);
  if (palabras != nullptr) Decir(palabras, Icono::kExclamacion);
  return palabras == nullptr;
}

Comandos::Intento Comandos::Empezar(std::string comando, std::string dato, std::string escrito) const {
  const auto sabido = sabido_.find(dato);
  return {.comando = std::move(comando),
          .dato = std::move(dato),
          .antes = sabido == sabido_.end() ? asiento::kSinLeer : sabido->second,
          .escrito = std::move(escrito)};
}

// A part of page "0" and the page as a whole are written by two roads: what one of them knew doesn't outlast the other.
void Comandos::Saber(const Intento& intento, FinComando fin) {
  if (intento.dato.empty() || fin == FinComando::kNoEscrito) return;
  const std::string pagina0 = DatoDePagina(std::string(pagina0::kNumero));
  const bool entera = intento.dato == pagina0;
  for (const char* parte : kPartesPagina0) {
    if (entera) sabido_.erase(parte);
    if (intento.dato == parte) sabido_.erase(pagina0);
  }
  sabido_[intento.dato] = intento.escrito + (fin == FinComando::kNoConfirmado ? " (no confirmado)" : "");
}

void Comandos::Anotar(Diario::Tarea& tarea, const Intento& intento, const std::string& resultado) {
  tarea.Anotar({mod_.reloj.Ahora(), intento.comando, intento.antes, intento.escrito, resultado});
}

// The writers tell the page as it was, and from then on the order goes out.
ContextoUnidad Comandos::Unidad(Intento& intento, const std::function<std::string(const PaginaUnidad&)>& antes) const {
  return {.comunicador = mod_.comunicador, .registro = mod_.registro, .leida = [&intento, antes](const auto& pagina) {
            intento.antes = antes(pagina);
            intento.salio = true;
          }};
}

bool Comandos::EnEspera(const Accion& accion, Intento& intento, std::optional<Error>& falla) {
  bool hecho = false;
  ocupar_({}, [&] { falla = FallaDe([&] { hecho = accion(intento); }); });
  return hecho && !falla;
}

FinComando Comandos::Cumplir(const OrdenUTR& orden, Intento intento, const Accion& accion) {
  if (!Confirmar(orden.pregunta, orden.icono_pregunta)) return FinComando::kCancelado;
  Diario::Tarea tarea(mod_.diario);
  std::optional<Error> falla;
  if (EnEspera(accion, intento, falla)) {
    Saber(intento, FinComando::kHecho);
    Anotar(tarea, intento, asiento::kHecho);
    if (orden.exito != nullptr) Decir(orden.exito, orden.icono_exito);
    return FinComando::kHecho;
  }
  const bool retenido = FueRetenido(falla);
  const bool salio = intento.salio && !retenido;
  const FinComando fin = salio ? FinComando::kNoConfirmado : FinComando::kNoEscrito;
  Saber(intento, fin);
  Anotar(tarea, intento,
         Comienzo(orden.fallo) + EntreCorchetes(falla) + (salio ? asiento::kSinConfirmar : asiento::kNadaEscrito));
  Decir(orden.fallo, Icono::kCritico, retenido ? falla->Descripcion() : std::string());
  return fin;
}

// --- Page "0" --------------------------------------------------------------------------------------------------------

std::optional<PaginaUnidad> Comandos::LeerPaginaCero(const LecturaPagina0& lectura) {
  std::optional<PaginaUnidad> pagina;
  ocupar_({}, [&] {
    IgnorandoErrores([&] {
      const std::string texto = mod_.comunicador.LeerPagina(pagina0::kNumero, false);
      if (texto.size() < kMenorPagina) return;
      PaginaUnidad leida(pagina0::kNumero, texto);
      leida.ExigirBytes(lectura.bytes);
      pagina = std::move(leida);
    });
  });
  if (!pagina) Decir(lectura.fallo, Icono::kCritico);
  return pagina;
}

std::optional<Retardos> Comandos::LeerDelay() {
  const auto pagina = LeerPaginaCero(kLecturaRetardos);
  if (!pagina) return std::nullopt;
  const Retardos retardos = RetardosDe(*pagina);
  sabido_[kDelay] = TextoDe(retardos);
  return retardos;
}

std::optional<std::int32_t> Comandos::LeerBPS() {
  const auto pagina = LeerPaginaCero(kLecturaVelocidad);
  if (!pagina) return std::nullopt;
  sabido_[kVelocidad] = VelocidadEnPalabras(*pagina);
  return pagina->Numero(pagina0::kVelocidad);
}

std::optional<std::int32_t> Comandos::LeerIdentificador() {
  const auto pagina = LeerPaginaCero(kLecturaIdentificador);
  if (!pagina) return std::nullopt;
  sabido_[kIdentificador] = IdentificadorEnPalabras(*pagina);
  return pagina->Par(pagina0::kIdentificador);
}

std::optional<std::int32_t> Comandos::LeerAgenda() {
  const auto pagina = LeerPaginaCero(kLecturaVentana);
  if (!pagina) return std::nullopt;
  sabido_[kVentana] = VentanaEnPalabras(*pagina);
  return pagina->Par(pagina0::kVentana);
}

FinComando Comandos::GrabarDelay(const Retardos& retardos) {
  if (retardos.delay.empty() || retardos.repeticiones.empty()) {
    Decir("Es necesario que complete todos los valores relacionados con el RTS", Icono::kInformacion);
    return FinComando::kIncompleto;
  }
  if (!EnRango(CampoComando::kRepeticiones, Val(retardos.repeticiones)) ||
      !EnRango(CampoComando::kRetardo, Val(retardos.delay)))
    return FinComando::kIncompleto;
  return Cumplir(kGrabarDelay, Empezar("Grabar delay RTS", kDelay, TextoDe(retardos)), [&](Intento& intento) {
    intento.escrito = TextoDe(Redondear(retardos));
    const ContextoUnidad unidad = Unidad(intento, [](const auto& p) { return TextoDe(RetardosDe(p)); });
    return GrabarDilei(unidad, EnDecenas(retardos.delay), EnDecenas(retardos.repeticiones));
  });
}

// The schedule isn't restarted: the window takes force with it.
FinComando Comandos::GrabarAgenda(const std::string& minutos) {
  if (!EnRango(CampoComando::kVentana, Val(minutos))) return FinComando::kIncompleto;
  return Cumplir(
      kGrabarAgenda, Empezar("Grabar ventana de agenda", kVentana, minutos + " min."),
      [&](Intento& intento) { return GrabarVentanaAgenda(Unidad(intento, VentanaEnPalabras), LeerEntero16(minutos)); });
}

// --- What restarts the unit ------------------------------------------------------------------------------------------

bool Comandos::PuedeGrabarBPS() const {
  return !mod_.conexion.EnLlamada() && HayPuertoSerie(mod_.propiedades);
}

FinComando Comandos::GrabarYReiniciar(const CambioUTR& cambio, Intento intento, const Accion& grabar,
                                      const std::function<void()>& seguir) {
  if (!Confirmar(cambio.pregunta, Icono::kExclamacion)) return FinComando::kCancelado;
  Diario::Tarea tarea(mod_.diario);
  FinComando fin = FinComando::kNoEscrito;
  const auto pasos = [&] {
    std::string resultado;
    const std::optional<Error> falla = FallaDe([&] { fin = Reiniciar(cambio, intento, grabar, seguir, resultado); });
    if (falla) {
      if (intento.grabado) {
        fin = FinComando::kSinTerminar;
      } else if (intento.salio && !FueRetenido(falla)) {
        fin = FinComando::kNoConfirmado;
      }
      resultado += (resultado.empty() ? "[" : "; [") + falla->Descripcion() + "]";
    }
    if (fin == FinComando::kNoEscrito) resultado += asiento::kNadaEscrito;
    Saber(intento, fin);
    Anotar(tarea, intento, resultado);
    if (falla) throw *falla;
  };
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, cambio.procedimiento, titulo_, Redaccion::kCompletada,
                        pasos);
  return fin;
}

// `resultado` tells the steps that are done, also where one fails with an error.
FinComando Comandos::Reiniciar(const CambioUTR& cambio, Intento& intento, const Accion& grabar,
                               const std::function<void()>& seguir, std::string& resultado) {
  ocupar_({}, [&] { intento.grabado = grabar(intento); });
  if (!intento.grabado) {
    resultado = std::string(cambio.fallo) + asiento::kSinConfirmar;
    Decir(cambio.fallo, Icono::kCritico);
    return FinComando::kNoConfirmado;
  }
  resultado = Comienzo(cambio.grabado);
  Decir(cambio.grabado, Icono::kInformacion);
  bool hecho = false;
  ocupar_({}, [&] { hecho = mod_.comunicador.ReiniciarUTR(kReinicio); });
  if (!hecho) {
    resultado += std::string("; ") + kErrorReinicio;
    Decir(kErrorReinicio, Icono::kCritico);
    return FinComando::kSinReiniciar;
  }
  resultado += kAceptoReinicio;
  ocupar_(kEsperaReinicio, [&] {
    mod_.comunicador.Pausa(kPausaReinicio);
    seguir();
    resultado += std::string("; ") + kReiniciada;
    Decir(kReiniciada, Icono::kExclamacion);
  });
  return FinComando::kHecho;
}

// Settings that can't be saved are told, and hold all the same: the unit has changed already.
void Comandos::Ajustar(const CambioUTR& cambio, std::string_view clave, std::int32_t valor, std::int32_t defecto) {
  mod_.propiedades.Escribir(clave, Propiedad{std::int64_t{valor}}, Propiedad{std::int64_t{defecto}});
  GuardarAjustes(mod_, kModulo, cambio.procedimiento, titulo_);
}

FinComando Comandos::GrabarBPS(std::int32_t velocidad) {
  if (velocidad == 0) {
    Decir("Debe seleccionar un valor de los presentes en la lista", Icono::kInformacion);
    return FinComando::kIncompleto;
  }
  const auto codigo = static_cast<std::int16_t>(pagina0::CodigoDeVelocidad(velocidad).value_or(0));
  return GrabarYReiniciar(
      kGrabarBPS, Empezar("Grabar velocidad", kVelocidad, std::to_string(velocidad)),
      [&](Intento& intento) { return GrabarVelocidad(Unidad(intento, VelocidadEnPalabras), codigo); },
      [&] {
        Ajustar(kGrabarBPS, clave::kVelocidad, velocidad, kVelocidadDefecto);
        mod_.conexion.ConectarSegunAjustes();
      });
}

FinComando Comandos::GrabarIdentificador(const std::string& identificador) {
  if (identificador.empty()) {
    Decir("Debe ingresar el numero de identificador para grabar", Icono::kInformacion);
    return FinComando::kIncompleto;
  }
  if (!EnRango(CampoComando::kIdentificador, Val(identificador))) return FinComando::kIncompleto;
  const std::int32_t anterior = mod_.propiedades.LeerEntero(clave::kIdentificador, 0);
  const FinComando fin = GrabarYReiniciar(
      kGrabarIdentificador, Empezar("Grabar identificador", kIdentificador, identificador),
      [&](Intento& intento) {
        return GrabarIdUTR(Unidad(intento, IdentificadorEnPalabras), LeerEntero16(identificador));
      },
      [&] {
        Ajustar(kGrabarIdentificador, clave::kIdentificador, LeerEntero16(identificador), 0);
        mod_.comunicador.IdEquipo(mod_.propiedades.LeerEntero(clave::kIdentificador, 0));
      });
  mod_.diario.AnotarOtroIdentificador(anterior, mod_.propiedades.LeerEntero(clave::kIdentificador, 0));
  return fin;
}

// --- Flags, pages, clock ---------------------------------------------------------------------------------------------

std::optional<Banderas> Comandos::LeerCS() {
  std::int32_t estado = -1;
  ocupar_({}, [&] { IgnorandoErrores([&] { estado = mod_.comunicador.LeerEstado(); }); });
  if (estado < 0) {
    Decir("Sin datos, verifique conexión", Icono::kCritico);
    return std::nullopt;
  }
  const Banderas banderas = BanderasDe(estado);
  sabido_[kEstado] = TextoDeBanderas(banderas);
  return banderas;
}

FinComando Comandos::GrabarCS(const Banderas& banderas) {
  return Cumplir(kGrabarCS, Empezar("Grabar estado", kEstado, TextoDeBanderas(banderas)), [&](Intento& intento) {
    const std::string par = mod_.comunicador.ConvertirDe(ValorDe(banderas));
    intento.salio = true;
    return mod_.comunicador.GrabarEstado(par);
  });
}

std::string Comandos::LeerPagina(const std::string& numero) {
  std::string pagina;
  ocupar_({}, [&] { IgnorandoErrores([&] { pagina = mod_.comunicador.LeerPagina(numero, false); }); });
  if (pagina.size() < kMenorPagina) {
    Decir("No se puede leer la página solicitada\nVerifique el conexionado", Icono::kCritico);
  } else {
    sabido_[DatoDePagina(numero)] = pagina;
  }
  return pagina;
}

// What is written stands as it was typed: the operator who writes a page by hand answers for it.
FinComando Comandos::EscribirPagina(const std::string& numero, const std::string& datos) {
  if (!EsNumerico(numero)) {
    Decir("Ingrese un número de página valido", Icono::kExclamacion);
    return FinComando::kIncompleto;
  }
  return Cumplir(kEscribirPagina, Empezar("Grabar página " + numero, DatoDePagina(numero), datos),
                 [&](Intento& intento) {
                   intento.salio = true;
                   return mod_.comunicador.EscribirPagina(numero, datos);
                 });
}

std::optional<FechaHora> Comandos::ActualizarHora() {
  std::optional<FechaHora> hora;
  ocupar_({}, [&] { IgnorandoErrores([&] { hora = LeerFecha(mod_.comunicador.LeerFechaHora()); }); });
  if (hora) {
    reloj_leido_ = {*hora, mod_.reloj.Ahora()};
  } else {
    Decir("No pudo leer la fecha y hora\nVerifique el conexionado", Icono::kInformacion);
  }
  return hora;
}

FinComando Comandos::GrabarHora() {
  const FechaHora ahora = mod_.reloj.Ahora();
  Intento intento = Empezar("Grabar fecha y hora", {}, TextoFechaHora(ahora));
  if (reloj_leido_) intento.antes = HoraLeida(TextoFechaHora(reloj_leido_->first), reloj_leido_->second, ahora);
  return Cumplir(kGrabarHora, std::move(intento), [&](Intento& en_curso) {
    en_curso.salio = true;
    reloj_leido_.reset();
    return mod_.comunicador.GrabarFechaHora();
  });
}

// --- Actions ---------------------------------------------------------------------------------------------------------

FinComando Comandos::Hacer(AccionUTR accion) {
  const FilaAccion& fila = kAccionesUTR[static_cast<std::size_t>(accion)];
  return Cumplir(fila.orden, {.comando = fila.comando, .antes = "-", .escrito = "-"}, [&](Intento& intento) {
    intento.salio = true;
    // A restart or an erasure may change any of it, but for the line's own.
    std::erase_if(sabido_, [](const auto& uno) { return uno.first != kRTS; });
    reloj_leido_.reset();
    return fila.hacer(mod_.comunicador);
  });
}

bool Comandos::ConmutarRTS() {
  Intento intento = Empezar(kRTS, kRTS, TextoRTS(!rts_));
  Diario::Tarea tarea(mod_.diario);
  std::optional<Error> falla;
  const bool hecho = EnEspera([&](Intento&) { return mod_.comunicador.ModoConexion(!rts_); }, intento, falla);
  if (hecho) {
    rts_ = !rts_;
    Saber(intento, FinComando::kHecho);
  }
  Anotar(tarea, intento, hecho ? asiento::kHecho : asiento::kNoAceptado + EntreCorchetes(falla));
  return rts_;
}

}  // namespace utr
