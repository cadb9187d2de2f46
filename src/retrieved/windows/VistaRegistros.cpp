#include "retrieved/windows/VistaRegistros.h"

#include <QFormLayout>
#include <QLabel>

#include "widgets/CampoFecha.h"
#include "widgets/Campos.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr QSize kTamano(960, 620);

FechaHora FechaDe(const QDateTimeEdit& campo) {
  const QDate fecha = campo.date();
  const QTime hora = campo.time();
  return {fecha.year(), fecha.month(), fecha.day(), hora.hour(), hora.minute(), hora.second()};
}

}  // namespace

VistaRegistros::VistaRegistros(ModRTU& mod, const DescripcionLista& descripcion, Columnas columnas, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, descripcion, std::move(columnas), parent),
      mod_(mod),
      lblCantRegistros_(Linea("lblCantRegistros")),
      lblPeriodo_(Linea("lblPeriodo")) {}

void VistaRegistros::ComandosDeVista(const std::vector<MenuVentana>& menus, std::vector<ComandoVentana> comandos,
                                     const NombresMenu& nombres) {
  std::vector<const char*> barra{"Print",           "Save",  "Export", nullptr,           "Sort Ascending",
                                 "Sort Descending", nullptr, "Help",   "Help What's This"};
  if (nombres.abrir != nullptr) {
    comandos.push_back(ComandoAbrir(nombres.abrir));
    barra.insert(barra.begin(), "Open");
  }
  for (ComandoVentana& comando :
       std::vector{ComandoGuardar(nombres.guardar), ComandoGuardarCsv(), ComandoExportar(nombres.exportar),
                   ComandoConfigurarImpresora(nombres.configurar_impresora), ComandoImprimir(nombres.imprimir),
                   ComandoSalir(nombres.salir), ComandoOrdenar(true), ComandoOrdenar(false), ComandoAyuda(),
                   ComandoQueEsEsto()}) {
    comandos.push_back(std::move(comando));
  }
  Comandos(menus, comandos, barra);
}

void VistaRegistros::ArmarVista(QWidget* marcos, QPushButton* cerrar) {
  Armar(marcos, {.cancelar = cerrar, .por_defecto = false}, kTamano);
}

// --- Dates -----------------------------------------------------------------------------------------------------------

void VistaRegistros::AgregarFechas(QFormLayout& caja, const char* formato) {
  const FechaHora hoy = mod_.reloj.Ahora();
  caja.setSpacing(kEntreControles);
  const auto nuevo = [&](const char* nombre, const char* rotulo, const char* texto) {
    auto* campo = new CampoFecha;
    campo->setTimeSpec(Qt::UTC);  // no hour of the day is missing or doubled there
    campo->setDateTime(QDateTime(QDate(hoy.anio, hoy.mes, hoy.dia), QTime(0, 0), Qt::UTC));
    campo->setObjectName(QString::fromLatin1(nombre));
    campo->setDisplayFormat(QString::fromLatin1(formato));
    campo->setCalendarPopup(true);
    campo->setWhatsThis(QStringLiteral("Límite del período que se lee; los dos extremos están incluidos."));
    campo->setLocale(QLocale(QLocale::Spanish));
    caja.addRow(Rotulo(rotulo, QString::fromUtf8(texto), campo), campo);
    return campo;
  };
  inicio_ = nuevo("FechaInicio", "lblFechaInicio", "Fecha de &Inicio:");
  fin_ = nuevo("FechaFin", "lblFechaFin", "Fecha de &Fin:");
}

FechaHora VistaRegistros::Desde() const {
  return FechaDe(*inicio_);
}

FechaHora VistaRegistros::Hasta() const {
  return FechaDe(*fin_);
}

VistaRegistros::Periodo VistaRegistros::PeriodoElegido() const {
  return {inicio_->text(), fin_->text()};
}

std::vector<std::string> VistaRegistros::LineasDesdeHasta() const {
  return {"Desde: " + U(leido_.desde), "Hasta: " + U(leido_.hasta)};
}

std::string VistaRegistros::LineaFecha() const {
  return "Fecha: " + TextoFecha(mod_.reloj.Ahora());
}

QString VistaRegistros::TextoPeriodo(bool por_fechas) const {
  if (por_fechas) return QStringLiteral("Desde: %1    Hasta: %2").arg(leido_.desde, leido_.hasta);
  return QStringLiteral("Leído: %1").arg(Q(TextoFechaHora(mod_.reloj.Ahora())));
}

Mensaje VistaRegistros::FechasAlReves() const {
  return {"La fecha de inicio debe ser menor que la de finalización", U(windowTitle()), Icono::kInformacion,
          Botones::kAceptar};
}

// --- Reading ---------------------------------------------------------------------------------------------------------

bool VistaRegistros::Leer(const PedidoLectura& pedido) {
  if (Ocupacion::Ocupada(*this)) return false;
  const Periodo periodo = PeriodoElegido();
  if (!pedido.conservar) Limpiar();
  FinLectura fin = FinLectura::kSinDatos;
  const auto leer = [&] {
    const Ocupacion ocupacion(*this, AlTrabajar());
    fin = pedido.leer();
    Listar(fin, pedido, periodo);
  };
  const bool bien =
      RegistrandoSalvoCampo(mod_.registro, mod_.operador, U(objectName()), pedido.procedimiento, U(windowTitle()),
                            Redaccion::kCompletarse, [&] { AlFallar(leer, [this] { Limpiar(); }); });
  if (bien && fin == FinLectura::kFechasAlReves) mod_.operador.Mostrar(pedido.al_reves);
  return bien;
}

bool VistaRegistros::LeerAparte(const std::string& procedimiento, const std::function<void()>& leer) {
  if (Ocupacion::Ocupada(*this)) return false;
  return RegistrandoSalvoCampo(mod_.registro, mod_.operador, U(objectName()), procedimiento, U(windowTitle()),
                               Redaccion::kCompletarse, [&] {
                                 const Ocupacion ocupacion(*this, AlTrabajar());
                                 leer();
                               });
}

void VistaRegistros::Listar(FinLectura fin, const PedidoLectura& pedido, const Periodo& periodo) {
  if (fin == FinLectura::kFechasAlReves) return;
  Limpiar();
  leido_ = periodo;
  Decir(lblPeriodo_, TextoPeriodo(pedido.por_fechas));
  if (fin == FinLectura::kSinDatos) return Zona().Mostrar({pedido.sin_datos});
  Lista().Mostrar(Lector().Resultado());
  Decir(lblCantRegistros_, QString::fromUtf8(pedido.contador) + QString::number(Lista().Lista().Total()));
  Listado();
}

void VistaRegistros::Limpiar() {
  Zona().Mostrar({});
  Lista().Vaciar();
  for (QLabel* linea : {lblCantRegistros_, lblPeriodo_}) Decir(linea, {});
  Vaciado();
}

}  // namespace utr
