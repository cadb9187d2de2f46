#include "retrieved/windows/VistaRegistros.h"

#include <QDateTimeEdit>
#include <QFormLayout>
#include <QLabel>
#include <QScopedValueRollback>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "retrieved/windows/BarraPeriodos.h"
#include "retrieved/windows/LineaDeCifras.h"
#include "session/windows/EsperaDeUnidad.h"
#include "session/windows/Visitas.h"
#include "widgets/Campos.h"
#include "widgets/ControlesRecordados.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr QSize kTamano(960, 620);

}  // namespace

VistaRegistros::VistaRegistros(ModRTU& mod, const DescripcionLista& descripcion, Columnas columnas, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, descripcion, std::move(columnas), parent),
      mod_(mod),
      lblCantRegistros_(Linea("lblCantRegistros")),
      lblPeriodo_(Linea("lblPeriodo")),
      lblCifras_(NuevaLineaDeCifras()),
      picCancelada_(Panel("picCancelada", "La lectura fue cancelada; nada de lo que llegó se muestra")) {}

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
                   ComandoVistaPrevia(), ComandoSalir(nombres.salir), ComandoOrdenar(true), ComandoOrdenar(false),
                   ComandoAyuda(), ComandoQueEsEsto()}) {
    comandos.push_back(std::move(comando));
  }
  Comandos(menus, comandos, barra);
}

void VistaRegistros::ArmarVista(QWidget* marcos, QPushButton* cerrar) {
  JuntoAlPie(lblCifras_);
  Armar(marcos, {.cancelar = cerrar, .por_defecto = false}, kTamano);
}

// --- Dates -----------------------------------------------------------------------------------------------------------

void VistaRegistros::AgregarFechas(QFormLayout& caja, const char* formato) {
  caja.setSpacing(kEntreControles);
  const auto nuevo = [&](const char* nombre, const char* rotulo, const char* texto) {
    QDateTimeEdit* campo = NuevoCampoFecha(mod_, nombre, formato);
    caja.addRow(Rotulo(rotulo, QString::fromUtf8(texto), campo), campo);
    return campo;
  };
  inicio_ = nuevo("FechaInicio", "lblFechaInicio", "Fecha de &Inicio:");
  fin_ = nuevo("FechaFin", "lblFechaFin", "Fecha de &Fin:");
}

QWidget* VistaRegistros::NuevaBarraPeriodos() {
  periodos_ = new BarraPeriodos(mod_, inicio_, fin_);
  recordar_ = new ControlesRecordados(objectName());
  periodos_->Agregar(recordar_);
  return periodos_;
}

void VistaRegistros::Recordar(QList<QWidget*> campos) {
  campos.append({inicio_, fin_});
  recordar_->Reponer(campos, &Lista());
}

QStringList VistaRegistros::RecordarColumnas(const QString& nombre, std::function<QStringList()> disposicion) {
  return recordar_->Columnas(nombre, std::move(disposicion));
}

void VistaRegistros::done(int resultado) {
  recordar_->Guardar();
  VentanaLista::done(resultado);
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
  return {"Desde: " + U(visto_.leido.desde), "Hasta: " + U(visto_.leido.hasta)};
}

std::string VistaRegistros::LineaFecha() const {
  return "Fecha: " + TextoFecha(mod_.reloj.Ahora());
}

QString VistaRegistros::TextoPeriodo(const Periodo& periodo, bool por_fechas) const {
  if (por_fechas) return QStringLiteral("Desde: %1    Hasta: %2").arg(periodo.desde, periodo.hasta);
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
  bool llegada = false;  // not when the operator ended it
  const auto leer = [&] {
    OpcionesOcupacion opciones = AlTrabajar();
    EsperaDeUnidad espera(mod_, opciones);
    const Ocupacion ocupacion(*this, opciones);
    llegada = Llamar(espera, [&] { fin = pedido.leer(); });
    if (!llegada) {
      Limpiar();
      return Ver({.panel = picCancelada_});
    }
    if (fin != FinLectura::kFechasAlReves) Visitas(mod_).Anotar();
    Listar(fin, pedido, periodo);
  };
  const bool bien =
      RegistrandoSalvoCampo(mod_.registro, mod_.operador, U(objectName()), pedido.procedimiento, U(windowTitle()),
                            Redaccion::kCompletarse, [&] { AlFallar(leer, [this] { Limpiar(); }); });
  if (bien && fin == FinLectura::kFechasAlReves) mod_.operador.Mostrar(pedido.al_reves);
  return bien && llegada;
}

bool VistaRegistros::LeerAparte(const std::string& procedimiento, const std::function<void()>& leer) {
  if (Ocupacion::Ocupada(*this)) return false;
  bool llegada = false;
  const bool bien = RegistrandoSalvoCampo(mod_.registro, mod_.operador, U(objectName()), procedimiento,
                                          U(windowTitle()), Redaccion::kCompletarse, [&] {
                                            OpcionesOcupacion opciones = AlTrabajar();
                                            EsperaDeUnidad espera(mod_, opciones);
                                            const Ocupacion ocupacion(*this, opciones);
                                            llegada = Llamar(espera, leer);
                                          });
  return bien && llegada;
}

bool VistaRegistros::Llamar(EsperaDeUnidad& espera, const std::function<void()>& llamada) {
  const QScopedValueRollback<const EsperaDeUnidad*> en_curso(espera_, &espera);
  return espera.Llamar(llamada);
}

Atender VistaRegistros::AtenderLectura() {
  return [this] {
    if (mod_.atender) mod_.atender();
    if (espera_ != nullptr && espera_->Cancelada())
      throw Error(error_enlace::kCancelada, "VistaRegistros", "La operación fue cancelada");
  };
}

void VistaRegistros::Listar(FinLectura fin, const PedidoLectura& pedido, const Periodo& periodo) {
  if (fin == FinLectura::kFechasAlReves) return;
  Limpiar();
  Visto visto;
  visto.tabla = Lector().Resultado();
  visto.leido = periodo;
  visto.periodo = TextoPeriodo(periodo, pedido.por_fechas);
  if (fin == FinLectura::kSinDatos) {
    visto.panel = pedido.sin_datos;
    return Ver(visto);
  }
  visto.cuenta = QString::fromUtf8(pedido.contador) + QString::number(visto.tabla->RecordCount());
  visto.series = SeriesDe(*visto.tabla, Canales());
  visto.cifras = Q(TextoCifras(*visto.tabla, visto.series, AIntervalos()));
  Ver(visto);
  Listado();
}

void VistaRegistros::Ver(const Visto& visto) {
  Lista().Vaciar();
  visto_ = visto;
  if (visto_.panel != nullptr) {
    Zona().Mostrar({visto_.panel});
  } else {
    Zona().Mostrar({});
    MostrarTabla();
  }
  Decir(lblCantRegistros_, visto_.cuenta);
  Decir(lblPeriodo_, visto_.periodo);
  Decir(lblCifras_, visto_.cifras);
}

void VistaRegistros::MostrarTabla() {
  if (!visto_.tabla) return;
  MarcarRegistros(Lista(), *visto_.tabla);
  Lista().Mostrar(visto_.tabla);
  if (HayFilas()) Lista().Elegir(0);  // so that opening a record needs no click ahead of it
}

void VistaRegistros::Limpiar() {
  Ver({});
  Vaciado();
}

}  // namespace utr
