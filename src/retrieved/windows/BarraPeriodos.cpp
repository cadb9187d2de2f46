#include "retrieved/windows/BarraPeriodos.h"

#include <QDateTimeEdit>
#include <QPushButton>

#include "session/ModRTU.h"
#include "session/RelojUTR.h"
#include "session/windows/Visitas.h"
#include "widgets/CampoFecha.h"
#include "widgets/Campos.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kEntreBotones = 6;

// Pickers keep their time in UTC: no hour of the day is missing or doubled there.
QDateTime EnCampo(const FechaHora& fecha) {
  return {QDate(fecha.anio, fecha.mes, fecha.dia), QTime(fecha.hora, fecha.minuto, fecha.segundo), Qt::UTC};
}

}  // namespace

BarraPeriodos::BarraPeriodos(const ModRTU& mod, QDateTimeEdit* inicio, QDateTimeEdit* fin)
    : mod_(mod), inicio_(inicio), fin_(fin), fila_(new DisposicionEnFilas(kEntreBotones, this)) {
  fila_->setContentsMargins(0, 0, 0, 0);
  int cual = 0;
  for (const PeriodoConNombre& uno : kPeriodos) {
    const std::string nombre = "Periodo(" + std::to_string(cual++) + ")";
    QPushButton* boton = Boton(nombre.c_str(), QString::fromUtf8(uno.nombre));
    connect(boton, &QPushButton::clicked, this, [this, periodo = uno.periodo] { Poner(periodo); });
    fila_->Agregar(boton);
    if (uno.periodo == Periodo::kDesdeLaVisita) visita_ = boton;
  }
  fila_->Separar();
  Actualizar();
}

void BarraPeriodos::Agregar(QWidget* control) {
  fila_->Agregar(control);
}

std::optional<Lapso> BarraPeriodos::LapsoAhora(Periodo periodo) const {
  const FechaHora ahora = mod_.reloj.Ahora();
  const auto unidad = mod_.reloj_utr == nullptr ? std::nullopt : mod_.reloj_utr->EnLaUnidad(ahora);
  return LapsoDe(periodo, ahora, Visitas(mod_).FinDeLaAnterior(), unidad);
}

void BarraPeriodos::Actualizar() {
  const auto lapso = LapsoAhora(Periodo::kDesdeLaVisita);
  visita_->setEnabled(lapso.has_value());
  visita_->setToolTip(lapso ? QStringLiteral("La última visita terminó el %1").arg(Q(TextoFechaHora(lapso->desde)))
                            : QStringLiteral("No se conoce una visita anterior a esta estación"));
}

void BarraPeriodos::Poner(Periodo periodo) {
  const auto lapso = LapsoAhora(periodo);
  if (!lapso) return Actualizar();
  inicio_->setDateTime(EnCampo(lapso->desde));
  fin_->setDateTime(EnCampo(lapso->hasta));
}

QDateTimeEdit* NuevoCampoFecha(const ModRTU& mod, const char* nombre, const char* formato) {
  auto* campo = new CampoFecha;
  campo->setTimeSpec(Qt::UTC);
  campo->setDateTime(EnCampo(FechaDeDias(DiasDesde1970(mod.reloj.Ahora()))));
  campo->setObjectName(QString::fromLatin1(nombre));
  campo->setDisplayFormat(QString::fromLatin1(formato));
  campo->setCalendarPopup(true);
  campo->setWhatsThis(QStringLiteral("Límite del período que se lee; los dos extremos están incluidos."));
  campo->setLocale(QLocale(QLocale::Spanish));
  return campo;
}

FechaHora FechaDe(const QDateTimeEdit& campo) {
  const QDate fecha = campo.date();
  const QTime hora = campo.time();
  return {fecha.year(), fecha.month(), fecha.day(), hora.hour(), hora.minute(), hora.second()};
}

}  // namespace utr
