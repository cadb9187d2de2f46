#include "unit/EscritoresPagina0.h"

#include <initializer_list>
#include <string_view>

#include "driver/PaginaCero.h"

namespace utr {
namespace {

// One position, or two where the value is a pair.
struct Cambio {
  std::size_t lugar;
  std::int16_t valor;
  bool par = false;
};

bool Grabar(const ContextoUnidad& contexto, std::string_view procedimiento, std::initializer_list<Cambio> cambios) {
  bool grabada = false;
  RegistrandoYRelanzando(contexto.registro, "Comunicador", procedimiento, [&] {
    PaginaUnidad pagina = PaginaUnidad::Leer(contexto.comunicador, pagina0::kNumero);
    const PaginaUnidad antes = pagina;
    for (const Cambio& cambio : cambios) {
      if (cambio.par) {
        pagina.PonerPar(cambio.lugar, contexto.comunicador.ConvertirDe(cambio.valor));
      } else {
        pagina.Poner(cambio.lugar, cambio.valor);
      }
    }
    if (contexto.leida) contexto.leida(antes);
    grabada = contexto.comunicador.EscribirPagina(pagina0::kNumero, pagina.Texto());
  });
  return grabada;
}

}  // namespace

bool GrabarVentanaAgenda(const ContextoUnidad& contexto, std::int16_t duracion) {
  // The log has always named it so.
  return Grabar(contexto, "Grabando Hora", {{.lugar = pagina0::kVentana, .valor = duracion, .par = true}});
}

bool GrabarDilei(const ContextoUnidad& contexto, std::int16_t delay, std::int16_t contDelay) {
  return Grabar(contexto, "GrabarDilei",
                {{.lugar = pagina0::kRetardo, .valor = delay}, {.lugar = pagina0::kRepeticiones, .valor = contDelay}});
}

bool GrabarIdUTR(const ContextoUnidad& contexto, std::int16_t id) {
  return Grabar(contexto, "GrabarIdUTR", {{.lugar = pagina0::kIdentificador, .valor = id, .par = true}});
}

bool GrabarVelocidad(const ContextoUnidad& contexto, std::int16_t codigo) {
  return Grabar(contexto, "GrabarVelocidad", {{.lugar = pagina0::kVelocidad, .valor = codigo}});
}

}  // namespace utr
