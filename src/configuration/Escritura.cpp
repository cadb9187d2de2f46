#include "configuration/Escritura.h"

#include <algorithm>
#include <span>

#include "base/Texto.h"

namespace utr {
namespace {

struct Corrida {
  const PedidoEscritura& pedido;
  Comunicador& comunicador;
  RegistroErrores& registro;
  Progreso& progreso;
  ResultadoEscritura resultado{};
};

// One step: what it calls (false: it failed), and what a failure says and does.
struct Paso {
  PasoEscritura paso;
  bool (*ejecutar)(Corrida&);
  const char* mensaje;  // null: not a word
  bool sigue_abierto;   // the dialog stays open behind its failure
};

bool ArmarTabla(Corrida& corrida) {
  corrida.resultado.Grabado = true;
  corrida.progreso.Texto(kAvisoEscritura);
  TablaPtr tabla = corrida.pedido.coleccion.GetRecMembers(corrida.registro);
  if (tabla->RecordCount() > 0) corrida.resultado.tabla = std::move(tabla);
  return true;
}

bool GrabarCanales(Corrida& corrida) {
  return corrida.comunicador.GrabarCanalesModificar("33", corrida.pedido.modificar.Texto());
}
// The relation that goes out is the empty one.
bool GrabarPilas(Corrida& corrida) {
  return corrida.comunicador.GrabarPilaCanal("7", "");
}
bool GrabarParametros(Corrida& corrida) {
  return corrida.comunicador.GrabarParametrizacion(*corrida.resultado.tabla);
}
bool GrabarEvento(Corrida& corrida) {
  return corrida.comunicador.GrabarEvento("1", "128/0/40/0");
}
bool Reiniciar(Corrida& corrida) {
  return corrida.comunicador.ReiniciarUTR("14");
}
bool GrabarHora(Corrida& corrida) {
  return corrida.comunicador.GrabarFechaHora();
}

constexpr Paso kCanales{PasoEscritura::kCanalesModificar, GrabarCanales,
                        "No se pudieron grabar los canales a modificar", true};
constexpr Paso kArmar{PasoEscritura::kArmarTabla, ArmarTabla, nullptr, true};
constexpr Paso kParametros{PasoEscritura::kParametrizacion, GrabarParametros, nullptr, false};
constexpr const char* kSinEvento = "No se pudo grabar el evento de parametrización";

constexpr Paso kConfiguracion[] = {
    kCanales,
    kArmar,
    {PasoEscritura::kPilaCanal, GrabarPilas, "No se ha podido grabar la relación pila-canales", false},
    kParametros,
    {PasoEscritura::kEvento, GrabarEvento, kSinEvento, false},
    {PasoEscritura::kReinicio, Reiniciar, "No se ha podido reiniciar la UTR", false},
};
// The event goes ahead of the parameters here.
constexpr Paso kParametrizacion[] = {
    kCanales,
    {PasoEscritura::kEvento, GrabarEvento, kSinEvento, true},
    kArmar,
    kParametros,
    {PasoEscritura::kFechaHora, GrabarHora, "No se pudo grabar la hora de la PC a la UTR\nVerifique el conexionado",
     false},
};

std::span<const Paso> PasosDe(ModoEscritura modo) {
  if (modo == ModoEscritura::kConfiguracion) return kConfiguracion;
  return kParametrizacion;
}

// True: the sequence goes on behind the step.
bool Dar(const Paso& paso, Corrida& corrida) {
  ResultadoEscritura& resultado = corrida.resultado;
  bool bien = false;
  resultado.error = FallaDe([&] { bien = paso.ejecutar(corrida); });
  if (bien && paso.paso == PasoEscritura::kParametrizacion) resultado.Parametrizado = true;
  if (bien) return paso.paso != PasoEscritura::kArmarTabla || resultado.tabla != nullptr;
  resultado.fallo = paso.paso;
  if (!resultado.error && paso.mensaje != nullptr) resultado.mensaje = paso.mensaje;
  resultado.Aceptado = !resultado.error && !paso.sigue_abierto;
  return false;
}

}  // namespace

void CanalesModificar::Agregar(std::string_view canal) {
  if (!Contiene(canal)) texto_ += std::string(canal) + '#';
}

bool CanalesModificar::Contiene(std::string_view canal) const {
  // Behind the last "#" there is no entry.
  const std::vector<std::string_view> entradas = Separar(texto_, '#');
  return std::find(entradas.begin(), entradas.end() - 1, canal) != entradas.end() - 1;
}

std::string_view NombreDePaso(PasoEscritura paso) {
  switch (paso) {
    case PasoEscritura::kCanalesModificar:
      return "canales a modificar";
    case PasoEscritura::kArmarTabla:
      return "tabla de canales";
    case PasoEscritura::kPilaCanal:
      return "relación pila-canales";
    case PasoEscritura::kParametrizacion:
      return "parametrización de los canales";
    case PasoEscritura::kEvento:
      return "evento de parametrización";
    case PasoEscritura::kReinicio:
      return "reinicio de la UTR";
    case PasoEscritura::kFechaHora:
      break;
  }
  return "hora de la PC";
}

ResultadoEscritura Escribir(const PedidoEscritura& pedido, Comunicador& comunicador, RegistroErrores& registro,
                            Progreso& progreso) {
  const std::span<const Paso> pasos = PasosDe(pedido.modo);
  Corrida corrida{pedido, comunicador, registro, progreso};
  corrida.resultado.Aceptado = true;
  progreso.Rango(static_cast<std::int64_t>(pasos.size()));
  std::int64_t hechos = 0;
  for (const Paso& paso : pasos) {
    if (!Dar(paso, corrida)) break;
    progreso.Posicion(++hechos);
  }
  progreso.Texto("");
  return corrida.resultado;
}

}  // namespace utr
