#include "operations/PuestaEnMarcha.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/Numeros.h"
#include "driver/PaginaCero.h"
#include "services/RegistroErrores.h"

namespace utr {
namespace {

struct Corrida {
  const PedidoPuesta& pedido;
  const ContextoPuesta& contexto;
  std::vector<LineaPuesta> lineas;
  ResultadoPuesta resultado{};

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
bool GrabarVentana(Corrida& corrida) {
  return GrabarVentanaAgenda(corrida.contexto.unidad, Entero16(corrida.pedido.horarios.DuracionVentana));
}
bool DetenerModem(Corrida& corrida) {
  return corrida.Unidad().EscribirPagina("34", "0,0,0");
}
bool ArrancarModem(Corrida& corrida) {
  return corrida.Unidad().EscribirPagina("35", "1,0,0");
}
bool GrabarIdentificador(Corrida& corrida, std::int16_t identificador) {
  const bool tomado = GrabarIdUTR(corrida.contexto.unidad, identificador);
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
  return GrabarVelocidad(corrida.contexto.unidad, Entero16(codigo));
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
     .detalle = Ventana},
    {.linea = "Página 34",
     .texto = "Escribiendo paginas de configuración",
     .aplica = Siempre,
     .ejecutar = DetenerModem,
     .falla = {0x80040FA0, "InicioOrbcomm", "No se pudo grabar página 34"}},
    {.linea = "Página 35",
     .texto = nullptr,
     .aplica = Siempre,
     .ejecutar = ArrancarModem,
     .falla = {0x80040FA1, "InicioOrbcomm", "No se pudo grabar página 35"},
     .progreso = 3},
    {.linea = "Identificador",
     .texto = "Escribiendo el Id de la UTR",
     .aplica = Asigna,
     .ejecutar = AsignarIdentificador,
     .progreso = 4,
     .detalle = Identificador},
    {.linea = "Identificador: se elimina",
     .texto = "Eliminando identificador del equipo",
     .aplica = Elimina,
     .ejecutar = EliminarIdentificador,
     .progreso = 4},
    {.linea = "Velocidad",
     .texto = "Escribiendo la velocidad de la UTR",
     .aplica = Siempre,
     .ejecutar = GrabarSuVelocidad,
     .progreso = 5,
     .detalle = Velocidad},
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

// True: the sequence goes on.
bool Dar(const Paso& paso, LineaPuesta& linea, Corrida& corrida) {
  linea.estado = EstadoPaso::kEnCurso;
  Avisar(corrida);
  bool bien = false;
  if (const auto error = FallaDe([&] { bien = Ejecutar(paso, corrida); })) {
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
