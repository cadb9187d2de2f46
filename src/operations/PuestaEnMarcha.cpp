#include "operations/PuestaEnMarcha.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/Numeros.h"
#include "driver/PaginaCero.h"
#include "services/RegistroErrores.h"
#include "unit/PalabrasPagina0.h"

namespace utr {
namespace {

struct Corrida {
  const PedidoPuesta& pedido;
  const ContextoPuesta& contexto;
  std::vector<LineaPuesta> lineas;
  ResultadoPuesta resultado{};
  std::optional<std::string> antes{};  // of the step at hand, where it read what it changes

  Comunicador& Unidad() const { return contexto.unidad.comunicador; }
};

// What a step raises when the unit says no. Without a text a no stops nothing.
struct FallaPaso {
  std::uint32_t numero = 0;
  const char* origen = "";
  const char* texto = nullptr;
};

struct Paso {
  const char* linea;
  const char* texto;  // what is said ahead of it; null: what was said before
  bool (*aplica)(const PedidoPuesta&);
  bool (*ejecutar)(Corrida&);
  FallaPaso falla{};
  double espera_antes = 0;                                // seconds ahead of the call
  double espera_despues = 0;                              // and behind it
  const char* dicho = nullptr;                            // what is said then
  double espera_final = 0;                                // seconds behind that
  std::int64_t progreso = 0;                              // how much is done then; 0: as much as before
  bool cuenta_siempre = false;                            // that much is done too where the step doesn't apply
  std::string (*detalle)(const PedidoPuesta&) = nullptr;  // what goes to the unit
  const char* escrito = asiento::kNada;                   // the same, for the journal alone
  bool lee_antes = false;                                 // it reads page "0" ahead of its write
};

bool Siempre(const PedidoPuesta&) {
  return true;
}
bool HayCanales(const PedidoPuesta& pedido) {
  return pedido.completa.Count() > 0;
}
bool HayHorarios(const PedidoPuesta& pedido) {
  return pedido.horarios.Count() > 0;
}
bool Asigna(const PedidoPuesta& pedido) {
  return pedido.asignar;
}
bool Elimina(const PedidoPuesta& pedido) {
  return !pedido.asignar && EsNumerico(pedido.identificador) && Val(pedido.identificador) != 0;
}
bool BorraCartucho(const PedidoPuesta& pedido) {
  return pedido.borrar_cartucho;
}

std::string CuantosCanales(const PedidoPuesta& pedido) {
  return fmt::format("{} canales", pedido.completa.Count());
}
std::string CuantosHorarios(const PedidoPuesta& pedido) {
  return fmt::format("{} horarios", pedido.horarios.Count());
}
std::string Ventana(const PedidoPuesta& pedido) {
  return fmt::format("{} min.", pedido.horarios.DuracionVentana);
}
std::string Identificador(const PedidoPuesta& pedido) {
  return pedido.identificador;
}
std::string Velocidad(const PedidoPuesta& pedido) {
  return fmt::format("{} bps", pedido.velocidad);
}

bool GrabarCanales(Corrida& corrida) {
  corrida.resultado.canales = corrida.pedido.completa.GetRecMembers(corrida.contexto.unidad.registro);
  return corrida.Unidad().GrabarConfiguracion(*corrida.resultado.canales);
}
bool GrabarAgenda(Corrida& corrida) {
  return corrida.Unidad().GrabarAgenda(*corrida.pedido.horarios.GetRecMembers());
}
// The unit for the writers of page "0", which tell what stood there.
ContextoUnidad Escribiendo(Corrida& corrida, std::string (*en_palabras)(const PaginaUnidad&)) {
  ContextoUnidad unidad = corrida.contexto.unidad;
  unidad.leida = [&corrida, en_palabras](const PaginaUnidad& pagina) { corrida.antes = en_palabras(pagina); };
  return unidad;
}
bool GrabarVentana(Corrida& corrida) {
  return GrabarVentanaAgenda(Escribiendo(corrida, VentanaEnPalabras),
                             Entero16(corrida.pedido.horarios.DuracionVentana));
}
bool DetenerModem(Corrida& corrida) {
  return corrida.Unidad().EscribirPagina("34", "0,0,0");
}
bool ArrancarModem(Corrida& corrida) {
  return corrida.Unidad().EscribirPagina("35", "1,0,0");
}
bool GrabarIdentificador(Corrida& corrida, std::int16_t identificador) {
  const bool tomado = GrabarIdUTR(Escribiendo(corrida, IdentificadorEnPalabras), identificador);
  if (tomado) corrida.resultado.identificador = identificador;
  return tomado;
}
bool AsignarIdentificador(Corrida& corrida) {
  return GrabarIdentificador(corrida, LeerEntero16(corrida.pedido.identificador));
}
bool EliminarIdentificador(Corrida& corrida) {
  return GrabarIdentificador(corrida, 0);
}
bool GrabarSuVelocidad(Corrida& corrida) {
  const std::int32_t codigo = pagina0::CodigoDeVelocidad(corrida.pedido.velocidad).value_or(0);
  return GrabarVelocidad(Escribiendo(corrida, VelocidadEnPalabras), Entero16(codigo));
}
bool BorrarLaFlash(Corrida& corrida) {
  return corrida.Unidad().BorrarFlash();
}
bool PonerEnHora(Corrida& corrida) {
  return corrida.Unidad().GrabarFechaHora();
}
bool BorrarElCartucho(Corrida& corrida) {
  return corrida.Unidad().BorrarCartucho();
}
bool Reiniciar(Corrida& corrida) {
  return corrida.Unidad().ReiniciarUTR("44");
}

constexpr std::int64_t kProgresoTotal = 7;

constexpr std::array<Paso, 12> kPasos{{
    {.linea = "Configuración de sensores",
     .texto = "Guardando la configuración de sensores",
     .aplica = HayCanales,
     .ejecutar = GrabarCanales,
     .falla = {0x800403E9, "GuardarConfiguracion", "No se ha podido grabar la configuración de los canales"},
     .progreso = 1,
     .cuenta_siempre = true,
     .detalle = CuantosCanales},
    {.linea = "Agenda",
     .texto = "Guardando la configuración de agenda",
     .aplica = HayHorarios,
     .ejecutar = GrabarAgenda,
     .falla = {0x80040FA2, "GrabaragendaLocal", "No se pudo grabar la agenda"},
     .detalle = CuantosHorarios},
    {.linea = "Ventana de agenda",
     .texto = nullptr,
     .aplica = HayHorarios,
     .ejecutar = GrabarVentana,
     .falla = {0x80040FA2, "GrabaragendaLocal", "No se pudo grabar la ventana de agenda"},
     .progreso = 2,
     .cuenta_siempre = true,
     .detalle = Ventana,
     .lee_antes = true},
    {.linea = "Página 34",
     .texto = "Escribiendo paginas de configuración",
     .aplica = Siempre,
     .ejecutar = DetenerModem,
     .falla = {0x80040FA0, "InicioOrbcomm", "No se pudo grabar página 34"},
     .escrito = "0,0,0"},
    {.linea = "Página 35",
     .texto = nullptr,
     .aplica = Siempre,
     .ejecutar = ArrancarModem,
     .falla = {0x80040FA1, "InicioOrbcomm", "No se pudo grabar página 35"},
     .progreso = 3,
     .escrito = "1,0,0"},
    {.linea = "Identificador",
     .texto = "Escribiendo el Id de la UTR",
     .aplica = Asigna,
     .ejecutar = AsignarIdentificador,
     .progreso = 4,
     .detalle = Identificador,
     .lee_antes = true},
    {.linea = "Identificador: se elimina",
     .texto = "Eliminando identificador del equipo",
     .aplica = Elimina,
     .ejecutar = EliminarIdentificador,
     .progreso = 4,
     .escrito = "0",
     .lee_antes = true},
    {.linea = "Velocidad",
     .texto = "Escribiendo la velocidad de la UTR",
     .aplica = Siempre,
     .ejecutar = GrabarSuVelocidad,
     .progreso = 5,
     .detalle = Velocidad,
     .lee_antes = true},
    {.linea = "Borrado de la flash",
     .texto = "Borrando flash...",
     .aplica = Siempre,
     .ejecutar = BorrarLaFlash,
     .falla = {0x800403E9, "BorradoFlashYHora", "No se ha podido borrar la flash"}},
    {.linea = "Puesta en hora",
     .texto = "Poniendo en hora...",
     .aplica = Siempre,
     .ejecutar = PonerEnHora,
     .falla = {0x800403E9, "BorradoFlashYHora", "No se ha podido grabar hora"},
     .espera_antes = 2,
     .dicho = "Puesto en hora"},
    {.linea = "Borrado del cartucho",
     .texto = "Borrando cartucho...",
     .aplica = BorraCartucho,
     .ejecutar = BorrarElCartucho,
     .falla = {0x800403E9, "BorradoCartucho", "No se ha podido borrar el cartucho"},
     .espera_despues = 2,
     .dicho = "Cartucho Borrado...",
     .progreso = 6,
     .cuenta_siempre = true},
    {.linea = "Reinicio de la UTR",
     .texto = "Reiniciando UTR",
     .aplica = Siempre,
     .ejecutar = Reiniciar,
     .falla = {0x800403EB, "IniciarUTRYAgenda", "No se ha podido iniciar la UTR"},
     .dicho = "UTR iniciada espere por favor...",
     .espera_final = 10,
     .progreso = kProgresoTotal},
}};

LineaPuesta LineaDeRespaldo(const std::optional<ResultadoRespaldo>& respaldo) {
  if (respaldo && respaldo->Guardado()) {
    return {"Respaldo de los canales de la UTR", EstadoPaso::kHecho, respaldo->archivo.filename().string()};
  }
  return {"sin respaldo de los canales de la UTR", EstadoPaso::kSinRespaldo,
          respaldo ? respaldo->falla : "No se leyeron de esta UTR"};
}

void Avisar(const Corrida& corrida) {
  if (corrida.contexto.lineas) corrida.contexto.lineas(corrida.lineas);
}

void Decir(const Corrida& corrida, const char* texto) {
  if (texto != nullptr) corrida.contexto.progreso.Texto(texto);
  if (corrida.contexto.atender) corrida.contexto.atender();  // it is seen before the driver blocks
}

void Aguardar(const Corrida& corrida, double segundos) {
  if (segundos > 0) corrida.contexto.reloj.Esperar(segundos, corrida.contexto.atender);
}

// What the unit answers. Raises where a no ends the sequence.
bool Ejecutar(const Paso& paso, Corrida& corrida) {
  Decir(corrida, paso.texto);
  Aguardar(corrida, paso.espera_antes);
  corrida.resultado.escribio = true;
  const bool bien = paso.ejecutar(corrida);
  if (!bien && paso.falla.texto != nullptr) {
    throw Error(static_cast<std::int32_t>(paso.falla.numero), paso.falla.origen, paso.falla.texto);
  }
  return bien;
}

void Cerrar(const Paso& paso, const Corrida& corrida) {
  Aguardar(corrida, paso.espera_despues);
  if (paso.dicho != nullptr) Decir(corrida, paso.dicho);
  Aguardar(corrida, paso.espera_final);
}

void Contar(const Paso& paso, const Corrida& corrida) {
  if (paso.progreso > 0) corrida.contexto.progreso.Posicion(paso.progreso);
}

void Terminar(LineaPuesta& linea, Corrida& corrida, const Error& error) {
  linea.estado = EstadoPaso::kNoConfirmado;
  linea.detalle = error.Descripcion();
  for (LineaPuesta& otra : corrida.lineas) {
    if (otra.estado == EstadoPaso::kPendiente) otra.estado = EstadoPaso::kNoAlcanzado;
  }
  corrida.resultado.error = error;
  Avisar(corrida);
}

// How a step ended, for the journal. One that reads what it changes and didn't come to it wrote nothing.
std::string FinDe(const Paso& paso, const Corrida& corrida, bool bien, const std::optional<Error>& error) {
  if (bien) return asiento::kHecho;
  const bool nada = paso.lee_antes && !corrida.antes;
  return (error ? "[" + error->Descripcion() + "]" : std::string(asiento::kNoAceptado)) +
         (nada ? asiento::kNadaEscrito : asiento::kSinConfirmar);
}

void Anotar(Diario::Tarea& tarea, const Paso& paso, const Corrida& corrida, const std::string& fin) {
  const bool con_valor = paso.detalle != nullptr || std::string_view(paso.escrito) != asiento::kNada;
  tarea.Anotar({.momento = corrida.contexto.reloj.Ahora(),
                .comando = std::string("Puesta en marcha: ") + paso.linea,
                .antes = corrida.antes.value_or(con_valor ? asiento::kSinLeer : asiento::kNada),
                .escrito = paso.detalle == nullptr ? paso.escrito : paso.detalle(corrida.pedido),
                .resultado = fin});
}

// True: the sequence goes on.
bool Dar(const Paso& paso, LineaPuesta& linea, Corrida& corrida) {
  linea.estado = EstadoPaso::kEnCurso;
  Avisar(corrida);
  bool bien = false;
  Diario::Tarea tarea(corrida.contexto.diario);
  corrida.antes.reset();
  const auto error = FallaDe([&] { bien = Ejecutar(paso, corrida); });
  Anotar(tarea, paso, corrida, FinDe(paso, corrida, bien, error));
  if (error) {
    Terminar(linea, corrida, *error);
    return false;
  }
  linea.estado = bien ? EstadoPaso::kHecho : EstadoPaso::kNoAceptado;
  Avisar(corrida);
  Cerrar(paso, corrida);
  Contar(paso, corrida);
  return true;
}

}  // namespace

std::string_view ReparoDeIdentificador(std::string_view texto) {
  if (!EsNumerico(texto)) return "Ingrese un valor numerico";
  const double numero = LeerDoble(texto);
  if (numero < 1 || numero > kMayorIdentificadorAsignable) {
    return "Ingrese un valor numérico comprendido entre 1 y 32760";
  }
  return {};
}

std::string_view NombreDe(EstadoPaso estado) {
  static constexpr std::array<std::string_view, 7> kNombres{"pendiente",     "en curso",     "hecho", "no aceptado",
                                                            "no confirmado", "no alcanzado", "aviso"};
  return kNombres.at(static_cast<std::size_t>(estado));
}

bool LlamaLaAtencion(EstadoPaso estado) {
  return estado == EstadoPaso::kNoAceptado || estado == EstadoPaso::kNoConfirmado || estado == EstadoPaso::kSinRespaldo;
}

std::vector<LineaPuesta> LineasDe(const PedidoPuesta& pedido) {
  std::vector<LineaPuesta> lineas{LineaDeRespaldo(pedido.respaldo)};
  for (const Paso& paso : kPasos) {
    if (!paso.aplica(pedido)) continue;
    lineas.push_back({.texto = paso.linea, .detalle = paso.detalle == nullptr ? "" : paso.detalle(pedido)});
  }
  return lineas;
}

TablaPtr TablaDeLineas(const std::vector<LineaPuesta>& lineas) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* columna : {"Paso", "Estado", "Detalle"}) tabla->Append(columna, TipoCampo::kVarChar, 100);
  tabla->Open();
  for (const LineaPuesta& linea : lineas) {
    tabla->AddNew();
    tabla->Set("Paso", linea.texto);
    tabla->Set("Estado", NombreDe(linea.estado));
    tabla->Set("Detalle", linea.detalle);
  }
  tabla->UpdateBatch();
  return tabla;
}

ResultadoPuesta PonerEnMarcha(const PedidoPuesta& pedido, const ContextoPuesta& contexto) {
  Corrida corrida{pedido, contexto, LineasDe(pedido)};
  contexto.progreso.Rango(kProgresoTotal);
  contexto.progreso.Posicion(0);
  std::size_t linea = 1;  // behind that of the backup
  for (const Paso& paso : kPasos) {
    if (!paso.aplica(pedido)) {
      if (paso.cuenta_siempre) Contar(paso, corrida);
    } else if (!Dar(paso, corrida.lineas.at(linea++), corrida)) {
      break;
    }
  }
  return corrida.resultado;
}

}  // namespace utr
