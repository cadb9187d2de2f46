#include "retrieved/Escalado.h"

#include <cmath>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

namespace {

constexpr double kPluviometro = 5;

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
      : tipo(LeerEntero16(configuracion.Texto("Tipo"))),
        cero(NumeroEstricto(configuracion, "Cero")),
        span(NumeroEstricto(configuracion, "Span")),
        rango_min(Numero(configuracion, "RangoMin")),
        rango(Numero(configuracion, "RangoMax") - rango_min),
        constante(Numero(configuracion, "CtePluvi")) {
    NumeroEstricto(configuracion, "Rango");
    if (span == 0) span = 1;
  }

  std::int16_t tipo;
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
    : tipo_(Numero(configuracion, "Tipo")),
      cero_(Numero(configuracion, "Cero")),
      span_(Numero(configuracion, "Span")),
      rango_min_(Numero(configuracion, "RangoMin")),
      rango_(Numero(configuracion, "RangoMax") - rango_min_),
      constante_(Numero(configuracion, "CtePluvi")),
      nivel_(Numero(configuracion, "NivRefLmn")) {}

bool EscalaHistorica::SinSpan() const noexcept {
  const bool escala = tipo_ == 0 || tipo_ == 1 || tipo_ == 2 || tipo_ == 3;
  return escala && span_ <= 0;
}

std::string EscalaHistorica::Escalar(std::string_view valor, const ContextoRegistros& contexto) const {
  if (tipo_ == kPluviometro) return TextoDeLluvia(Val(valor), constante_);
  const bool con_nivel = tipo_ == 0 || tipo_ == 1;
  if (!con_nivel && tipo_ != 2 && tipo_ != 3) return std::string(valor);
  if (span_ <= 0) {
    RegistrarSpan(contexto);
    return std::string(valor);
  }
  const double base = Base(Val(valor), cero_, rango_, span_, rango_min_);
  return FormatoFijo(con_nivel ? base + nivel_ : base);
}

std::string EscalarValor(std::string_view valor, std::string_view canal, Tabla* configuracion,
                         const ContextoRegistros& contexto) {
  if (!SeleccionarCanal(canal, configuracion)) return std::string(valor);
  return EscalaHistorica(*configuracion).Escalar(valor, contexto);
}

std::string EscalarValorInstantaneo(std::string_view valor, std::string_view /*canal*/, Tabla* configuracion,
                                    bool con_nivel_referencia, const ContextoRegistros& contexto) {
  if (configuracion == nullptr || configuracion->RecordCount() == 0) return std::string(valor);
  const double tipo = Numero(*configuracion, "Tipo");
  const double nivel = con_nivel_referencia ? NumeroEstricto(*configuracion, "NivRefLmn") : 0;
  if (tipo == kPluviometro) return TextoDeLluvia(Val(valor), Numero(*configuracion, "CtePluvi"));
  if (!(tipo == 0 || tipo == 1 || tipo == 2 || tipo == 3 || tipo == 4)) return std::string(valor);
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
  switch (escala.tipo) {
    case 0:
    case 1:
      return FormatoFijo(base + Numero(*configuracion, "NivRefLmn"));
    case 5:
      return FormatoFijo(base * escala.constante);
    default:
      return FormatoFijo(base);
  }
}

std::string EscalarDiferenciaEvento(std::string_view valor, std::string_view canal, Tabla* configuracion) {
  if (!SeleccionarCanal(canal, configuracion)) return std::string(valor);
  const EscalaEvento escala(*configuracion);
  NumeroEstricto(*configuracion, "NivRefLmn");
  const double diferencia = (Val(valor) * escala.rango) / escala.span;
  return FormatoFijo(escala.tipo == 5 ? diferencia * escala.constante : diferencia);
}

}  // namespace utr
