#include "driver/simulated/station/Ejecutor.h"

#include <algorithm>

#include "base/Error.h"

namespace utr::simulada {

using namespace protocolo;

namespace {

// What a handler is given: the unit, and what came with the order.
struct Caso {
  EstacionViva& viva;
  Borrador& borrador;
  const Orden& orden;
  std::int64_t milisegundos;

  Estacion& Unidad() const { return viva.Unidad(); }
  const std::vector<std::uint16_t>& Args() const { return orden.argumentos; }
};

Motivo HechaSi(bool hecha) {
  return hecha ? Motivo::kNinguno : Motivo::kArgumentos;
}

bool SonCanales(std::span<const std::uint16_t> numeros) {
  return std::all_of(numeros.begin(), numeros.end(), [](std::uint16_t n) { return n >= 1 && n <= kCanales; });
}

Motivo Suceder(const Caso& c) {
  if (c.Args().size() != 2 || c.Args()[0] > 255) return Motivo::kArgumentos;
  c.Unidad().AnotarSuceso(c.viva.ahora, static_cast<std::uint8_t>(c.Args()[0]), c.Args()[1], 0);
  return Motivo::kNinguno;
}

// Without arguments the stacks stay as the unit has dealt them out.
Motivo Apilar(const Caso& c) {
  if (c.Args().empty()) return Motivo::kNinguno;
  const std::span<const std::uint16_t> canales = std::span{c.Args()}.subspan(1);
  if (c.Args()[0] != canales.size() || !SonCanales(canales)) return Motivo::kArgumentos;
  return HechaSi(c.Unidad().canales.AsignarPilas({canales.begin(), canales.end()}));
}

Motivo Reiniciar(const Caso& c) {
  if (!c.Args().empty()) return Motivo::kArgumentos;
  c.Unidad().Reiniciar(c.viva.ahora);
  return Motivo::kNinguno;
}

// The unit takes the list as an announcement: the parametrization that follows tells the channels itself.
Motivo Anunciar(const Caso& c) {
  return HechaSi(SonCanales(c.Args()));
}

Motivo ReiniciarAgenda(const Caso& c) {
  if (!c.Args().empty()) return Motivo::kArgumentos;
  c.Unidad().ReiniciarAgenda();
  return Motivo::kNinguno;
}

Motivo BorrarFlash(const Caso& c) {
  if (!c.Args().empty()) return Motivo::kArgumentos;
  c.Unidad().BorrarFlash(c.viva.ahora);
  return Motivo::kNinguno;
}

Motivo BorrarCartucho(const Caso& c) {
  if (!c.Args().empty()) return Motivo::kArgumentos;
  if (!c.Unidad().TieneCartucho()) return Motivo::kSinCartucho;
  c.Unidad().BorrarCartucho(c.viva.ahora);
  return Motivo::kNinguno;
}

Motivo PonerEnHora(const Caso& c) {
  const auto hora = LeerReloj(c.Args());
  if (!hora) return Motivo::kArgumentos;
  c.Unidad().PonerEnHora(c.viva.ahora, Segundos(*hora));
  return Motivo::kNinguno;
}

Motivo EscribirEstado(const Caso& c) {
  if (c.Args().size() != 1 || c.Args()[0] > 255) return Motivo::kArgumentos;
  c.Unidad().EscribirEstado(c.Args()[0]);
  return Motivo::kNinguno;
}

Motivo Conmutar(const Caso& c) {
  if (c.Args().size() != 2 || c.Args()[0] < 1 || c.Args()[0] > kSalidas || c.Args()[1] > 1) return Motivo::kArgumentos;
  c.Unidad().ConmutarSalida(c.Args()[0], c.Args()[1] == 1, c.viva.ahora);
  return Motivo::kNinguno;
}

Motivo EscribirPagina(const Caso& c) {
  const auto pagina = LeerPaginaEscrita(c.Args());
  return HechaSi(pagina && c.Unidad().EscribirPagina(pagina->numero, pagina->bytes));
}

// The staged image that the order names. The session's draft is empty afterwards; another's isn't touched.
std::optional<Bytes> TomarImagen(const Caso& c) {
  const auto resumen = LeerResumen(c.Args());
  auto imagen = resumen ? c.borrador.Imagen(c.orden.sesion, c.milisegundos, *resumen) : std::nullopt;
  c.borrador.Soltar(c.orden.sesion);
  return imagen;
}

Motivo TomarCanales(const Caso& c) {
  const auto imagen = TomarImagen(c);
  if (!imagen) return Motivo::kSinBorrador;
  const auto filas = LeerImagenDeCanales(*imagen);
  if (!filas || !filas->presentes[LugarDeColumna("Canal")]) return Motivo::kArgumentos;
  const TablaPtr tabla = TablaDeFilas(*filas);
  Canales& canales = c.Unidad().canales;
  const bool todos = c.orden.codigo == Codigo::kTomarConfiguracion;
  return HechaSi(todos ? canales.Reemplazar(*tabla) : canales.Mezclar(*tabla));
}

Motivo TomarAgenda(const Caso& c) {
  const auto imagen = TomarImagen(c);
  if (!imagen) return Motivo::kSinBorrador;
  const auto entradas = LeerImagenDeAgenda(*imagen);
  return HechaSi(entradas && c.Unidad().agenda.Escribir(*TablaDeAgenda(*entradas)));
}

constexpr struct {
  Codigo codigo;
  Motivo (*hacer)(const Caso&);
} kManejadores[] = {{Codigo::kSuceso, Suceder},
                    {Codigo::kPilas, Apilar},
                    {Codigo::kReinicio, Reiniciar},
                    {Codigo::kCanalesModificar, Anunciar},
                    {Codigo::kReinicioDeAgenda, ReiniciarAgenda},
                    {Codigo::kReinicioDePuesta, Reiniciar},
                    {Codigo::kBorrarFlash, BorrarFlash},
                    {Codigo::kBorrarCartucho, BorrarCartucho},
                    {Codigo::kReloj, PonerEnHora},
                    {Codigo::kEstado, EscribirEstado},
                    {Codigo::kSalida, Conmutar},
                    {Codigo::kPagina, EscribirPagina},
                    {Codigo::kTomarParametrizacion, TomarCanales},
                    {Codigo::kTomarConfiguracion, TomarCanales},
                    {Codigo::kTomarAgenda, TomarAgenda}};

}  // namespace

Motivo Ejecutar(EstacionViva& viva, Borrador& borrador, const Orden& orden, std::int64_t ahora) {
  for (const auto& m : kManejadores) {
    if (m.codigo == orden.codigo) return m.hacer({viva, borrador, orden, ahora});
  }
  return Motivo::kArgumentos;
}

bool EsLarga(Codigo codigo) {
  return codigo == Codigo::kBorrarFlash || codigo == Codigo::kBorrarCartucho;
}

bool EsReinicio(Codigo codigo) {
  return codigo == Codigo::kReinicio || codigo == Codigo::kReinicioDePuesta;
}

}  // namespace utr::simulada
