#include "retrieved/Escalado.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

namespace {

using T = TipoSensor;
using Tipo = std::optional<TipoSensor>;

// Which kinds each scaler takes as a line, and which of them with the reference level; the others stay as they come.
constexpr T kHistoricos[] = {T::kNivel, T::kMeteorologico, T::kVelocidadViento, T::kDireccionViento};
constexpr T kHistoricosConNivel[] = {T::kNivel, T::kMeteorologico};
constexpr T kInstantaneos[] = {T::kNivel, T::kMeteorologico, T::kVelocidadViento, T::kDireccionViento,
                               T::kSupervisionAnalogica};
constexpr T kEventosConNivel[] = {T::kNivel, T::kMeteorologico};
// Events of all kinds are lines; those of the gauge are multiplied by its constant.
constexpr T kEventosConConstante[] = {T::kPluviometro};
constexpr T kDiferenciasConConstante[] = {T::kPluviometro};

bool EsUnoDe(std::span<const T> tipos, Tipo tipo) {
  return std::find(tipos.begin(), tipos.end(), tipo) != tipos.end();
}

double Numero(const Tabla& configuracion, std::string_view campo) {
  return Val(configuracion.Texto(campo));
}

double NumeroEstricto(const Tabla& configuracion, std::string_view campo) {
  return LeerDoble(configuracion.Texto(campo));
}

double Base(double crudo, double cero, double rango, double span, double rango_min) {
  return ((crudo - cero) * rango) / span + rango_min;
}

// The rain gauge writes another form of number than all other channels.
std::string TextoDeLluvia(double cuentas, double constante) {
  const double lluvia = cuentas * constante;
  if (!std::isfinite(lluvia)) Lanzar(error::kDesborde, "EscalarValor");
  return TextoPlano(lluvia);
}

void RegistrarSpan(const ContextoRegistros& contexto) {
  contexto.comunicador.EscribirLog(TextoFechaHora(contexto.reloj.Ahora()) + " Escalando Error el span=0");
}

// What the two event functions read from the channel's row. Rango is read to be dropped: a text there that is no number
// is an error all the same.
struct EscalaEvento {
  explicit EscalaEvento(const Tabla& configuracion)
      : tipo(TipoDeNumero(LeerEntero16(configuracion.Texto("Tipo")))),
        cero(NumeroEstricto(configuracion, "Cero")),
        span(NumeroEstricto(configuracion, "Span")),
        rango_min(Numero(configuracion, "RangoMin")),
        rango(Numero(configuracion, "RangoMax") - rango_min),
        constante(Numero(configuracion, "CtePluvi")) {
    NumeroEstricto(configuracion, "Rango");
    if (span == 0) span = 1;
  }

  Tipo tipo;
  double cero;
  double span;
  double rango_min;
  double rango;
  double constante;
};

}  // namespace

bool SeleccionarCanal(std::string_view canal, Tabla* configuracion) {
  if (configuracion == nullptr) return false;
  configuracion->Filter("");
  configuracion->Filter("Canal='" + Reemplazar(Recortar(canal), "'", "''") + "'");
  return configuracion->RecordCount() > 0;
}

EscalaHistorica::EscalaHistorica(const Tabla& configuracion)
    : tipo_(LeerTipo(configuracion.Texto("Tipo"))),
      cero_(Numero(configuracion, "Cero")),
      span_(Numero(configuracion, "Span")),
      rango_min_(Numero(configuracion, "RangoMin")),
      rango_(Numero(configuracion, "RangoMax") - rango_min_),
      constante_(Numero(configuracion, "CtePluvi")),
      nivel_(Numero(configuracion, "NivRefLmn")) {}

bool EscalaHistorica::SinSpan() const noexcept {
  return EsUnoDe(kHistoricos, tipo_) && span_ <= 0;
}

std::string EscalaHistorica::Escalar(std::string_view valor, const ContextoRegistros& contexto) const {
  if (tipo_ == T::kPluviometro) return TextoDeLluvia(Val(valor), constante_);
  if (!EsUnoDe(kHistoricos, tipo_)) return std::string(valor);
  if (span_ <= 0) {
    RegistrarSpan(contexto);
    return std::string(valor);
  }
  const double base = Base(Val(valor), cero_, rango_, span_, rango_min_);
  return FormatoFijo(EsUnoDe(kHistoricosConNivel, tipo_) ? base + nivel_ : base);
}

std::string EscalarValor(std::string_view valor, std::string_view canal, Tabla* configuracion,
                         const ContextoRegistros& contexto) {
  if (!SeleccionarCanal(canal, configuracion)) return std::string(valor);
  return EscalaHistorica(*configuracion).Escalar(valor, contexto);
}

std::string EscalarValorInstantaneo(std::string_view valor, std::string_view /*canal*/, Tabla* configuracion,
                                    bool con_nivel_referencia, const ContextoRegistros& contexto) {
  if (configuracion == nullptr || configuracion->RecordCount() == 0) return std::string(valor);
  const Tipo tipo = LeerTipo(configuracion->Texto("Tipo"));
  const double nivel = con_nivel_referencia ? NumeroEstricto(*configuracion, "NivRefLmn") : 0;
  if (tipo == T::kPluviometro) return TextoDeLluvia(Val(valor), Numero(*configuracion, "CtePluvi"));
  if (!EsUnoDe(kInstantaneos, tipo)) return std::string(valor);
  const double span = Numero(*configuracion, "Span");
  if (span <= 0) {
    RegistrarSpan(contexto);
    return std::string(valor);
  }
  const double rango_min = Numero(*configuracion, "RangoMin");
  const double rango = Numero(*configuracion, "RangoMax") - rango_min;
  return FormatoFijo(Base(Val(valor), Numero(*configuracion, "Cero"), rango, span, rango_min) + nivel);
}

std::string EscalarValorEvento(std::string_view valor, std::string_view canal, Tabla* configuracion) {
  if (!SeleccionarCanal(canal, configuracion)) return std::string(valor);
  const EscalaEvento escala(*configuracion);
  const double base = Base(Val(valor), escala.cero, escala.rango, escala.span, escala.rango_min);
  if (EsUnoDe(kEventosConNivel, escala.tipo)) return FormatoFijo(base + Numero(*configuracion, "NivRefLmn"));
  return FormatoFijo(EsUnoDe(kEventosConConstante, escala.tipo) ? base * escala.constante : base);
}

std::string EscalarDiferenciaEvento(std::string_view valor, std::string_view canal, Tabla* configuracion) {
  if (!SeleccionarCanal(canal, configuracion)) return std::string(valor);
  const EscalaEvento escala(*configuracion);
  NumeroEstricto(*configuracion, "NivRefLmn");
  const double diferencia = (Val(valor) * escala.rango) / escala.span;
  return FormatoFijo(EsUnoDe(kDiferenciasConConstante, escala.tipo) ? diferencia * escala.constante : diferencia);
}

}  // namespace utr
