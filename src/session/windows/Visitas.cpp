#include "session/windows/Visitas.h"

#include "session/ModRTU.h"
#include "session/SituacionDelEnlace.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::int64_t kEntreVisitas = 6 * 3600;  // seconds

constexpr const char* kUltima = "ultima";
constexpr const char* kAnterior = "anterior";

QString GrupoDe(const ModRTU& mod) {
  const bool de_practica = mod.situacion != nullptr && EsDePractica(mod.situacion->Clase());
  const QString grupo = de_practica ? QStringLiteral("visitas-de-practica") : QStringLiteral("visitas");
  return grupo + '/' + QString::number(mod.propiedades.LeerEntero(clave::kIdentificador, 0));
}

}  // namespace

Visitas::Visitas(const ModRTU& mod) : ahora_(mod.reloj.Ahora()), recuerdos_(GrupoDe(mod)) {}

std::optional<FechaHora> Visitas::Leer(const char* nombre) const {
  return LeerFecha(U(recuerdos_.Texto(QString::fromLatin1(nombre))));
}

bool Visitas::SigueDesde(const FechaHora& ultima) const {
  return Segundos(ahora_) - Segundos(ultima) <= kEntreVisitas;
}

void Visitas::Anotar() {
  const auto ultima = Leer(kUltima);
  if (ultima && !SigueDesde(*ultima)) recuerdos_.Guardar(QString::fromLatin1(kAnterior), Q(TextoFechaHora(*ultima)));
  recuerdos_.Guardar(QString::fromLatin1(kUltima), Q(TextoFechaHora(ahora_)));
}

std::optional<FechaHora> Visitas::FinDeLaAnterior() const {
  const auto ultima = Leer(kUltima);
  const auto anterior = ultima && !SigueDesde(*ultima) ? ultima : Leer(kAnterior);
  return anterior && *anterior <= ahora_ ? anterior : std::nullopt;
}

}  // namespace utr
