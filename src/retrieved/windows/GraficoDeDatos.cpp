#include "retrieved/windows/GraficoDeDatos.h"

#include <QScrollArea>

#include "plots/windows/MiniCurvas.h"
#include "plots/windows/PanelGrafico.h"
#include "retrieved/series/TextoSerie.h"
#include "retrieved/windows/EnlaceGrafico.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

FechaHora FinDelDia(FechaHora fecha) {
  fecha.hora = 23;
  fecha.minuto = 59;
  fecha.segundo = 59;
  return fecha;
}

FechaHora ComienzoDelDia(FechaHora fecha) {
  fecha.hora = fecha.minuto = fecha.segundo = 0;
  return fecha;
}

// Limits are in engineering units: over counts they would lie.
CanalGrafico CanalGraficoDe(std::shared_ptr<const Serie> serie, const CanalDeSerie& canal, bool escalados) {
  return {std::move(serie), escalados ? canal.limites : std::vector<LimiteSerie>{}};
}

}  // namespace

GraficoDeDatos::GraficoDeDatos(ModRTU& mod, const TablaPtr& configuracion, const Ventana& ventana, LeerAparte leer)
    : mod_(mod),
      configuracion_(configuracion ? configuracion->Clone() : nullptr),
      leer_(std::move(leer)),
      lector_({mod.comunicador, mod.reloj, mod.catalogo, mod.registro},
              configuracion_ ? configuracion_->Clone() : nullptr, mod.atender),
      panel_(new PanelGrafico(
          mod.Listas(),
          {.ventana = ventana.nombre, .titulo = ventana.titulo, .con_eventos = true, .vistos = mod.graficos})),
      minis_(new MiniCurvas) {
  setObjectName("GraficoDeDatos");
  auto* desliza = new QScrollArea;
  desliza->setAccessibleName(minis_->accessibleName());
  desliza->setWidget(minis_);
  desliza->setWidgetResizable(true);
  desliza->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  addWidget(panel_);
  addWidget(desliza);
  connect(panel_, &PanelGrafico::CanalPedido, this, &GraficoDeDatos::AgregarCanal);
  connect(panel_, &PanelGrafico::EventosPedidos, this, &GraficoDeDatos::TraerEventos);
}

ComandoVentana GraficoDeDatos::ComandoVer() {
  return {
      .nombre = "mnuVerGrafico", .texto = "&Gráfico", .icono = "grafico", .ayuda = "Ver el gráfico", .hacer = [] {}};
}

void GraficoDeDatos::Enlazar(VistaLista& lista) {
  lista_ = &lista;
  EnlazarConLista(*panel_, lista);
}

CanalDeSerie GraficoDeDatos::CanalDe(const std::string& entrada) const {
  return configuracion_ ? LeerCanalDeSerie(*configuracion_, CanalDeEntrada(entrada)) : CanalDeSerie{};
}

QString GraficoDeDatos::Periodo() const {
  return QStringLiteral("Desde: %1    Hasta: %2").arg(Q(TextoFecha(pedido_.desde)), Q(TextoFecha(pedido_.hasta)));
}

void GraficoDeDatos::VerRegistros(std::shared_ptr<const Serie> serie, const LectorDatos::Pedido& pedido) {
  pedido_ = pedido;
  ContenidoGrafico contenido;
  contenido.canales.push_back(CanalGraficoDe(std::move(serie), CanalDe(pedido.canal), pedido.escalados));
  contenido.titulo = QStringLiteral("Datos históricos de la UTR: %1").arg(Q(TituloSerie(*contenido.canales[0].serie)));
  contenido.periodo = Periodo();
  contenido.estacion = Q(mod_.EstacionAMano());
  panel_->Mostrar(std::move(contenido));
  QStringList otros;
  for (const std::string& canal : lector_.CargarCanales()) {
    if (canal != pedido.canal) otros.append(Q(canal));
  }
  panel_->Ofrecer(otros);
  if (lista_ != nullptr) SenalarFilaActual(*panel_, *lista_);
  setCurrentIndex(0);
}

void GraficoDeDatos::VerInstantaneos(const Tabla& valores, bool escalados, bool con_nivel) {
  // Values in another form don't go on the same curves.
  if (const std::pair forma(escalados, con_nivel); forma != forma_) {
    forma_ = forma;
    minis_->Vaciar();
  }
  minis_->Agregar(valores);
  setCurrentIndex(1);
}

void GraficoDeDatos::InterrumpirInstantaneos() {
  minis_->Interrumpir();
}

void GraficoDeDatos::Vaciar() {
  panel_->Vaciar();
  panel_->Ofrecer({});
}

void GraficoDeDatos::AgregarCanal(const QString& entrada) {
  LectorDatos::Pedido pedido = pedido_;
  pedido.canal = U(entrada);
  FinLectura fin = FinLectura::kSinDatos;
  if (!leer_("AgregarCanal", [&] { fin = lector_.TraerDatos(pedido); })) return;
  if (fin != FinLectura::kListado)
    return Informar(mod_.operador, U(window()->windowTitle()),
                    "Sin datos para el canal durante las fechas seleccionada");
  const CanalDeSerie canal = CanalDe(pedido.canal);
  auto serie = std::make_shared<const Serie>(*lector_.Resultado(), OpcionesSerie{{}, canal.minutos});
  panel_->Agregar(entrada, CanalGraficoDe(std::move(serie), canal, pedido.escalados));
}

void GraficoDeDatos::TraerEventos() {
  std::vector<EventoGrafico> eventos;
  const bool bien = leer_("TraerEventos", [&] {
    LectorEventos lector({mod_.comunicador, mod_.reloj, mod_.catalogo, mod_.registro},
                         configuracion_ ? configuracion_->Clone() : nullptr, mod_.atender, mod_.carpeta);
    const FinLectura fin =
        lector.TraerPorFecha(ComienzoDelDia(pedido_.desde), FinDelDia(pedido_.hasta), pedido_.cartucho);
    if (fin == FinLectura::kListado) eventos = EventosDeTabla(*lector.Resultado());
  });
  if (!bien) return panel_->DesmarcarEventos();
  panel_->PonerEventos(std::move(eventos));
}

}  // namespace utr
