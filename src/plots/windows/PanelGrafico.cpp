#include "plots/windows/PanelGrafico.h"

#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <optional>

#include "lists/DocumentoLista.h"
#include "plots/windows/ColoresGrafico.h"
#include "plots/windows/Hidrograma.h"
#include "plots/windows/SalidaGrafico.h"
#include "retrieved/series/TextoSerie.h"
#include "widgets/Campos.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/PanelDePaginas.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"
#include "widgets/TurnoDeImpresora.h"

namespace utr {
namespace {

constexpr double kDia = 86400;
constexpr int kEntre = 4;
constexpr double kAnchoPorVenir = 300;
constexpr std::size_t kLargoFecha = 10;  // of a moment in words
constexpr int kRenglonesDeHechos = 3;
constexpr int kRenglonesDeHechosMinimos = 2;  // where the plot has little room itself
constexpr const char* kFiltro = "Documento PDF (*.pdf)|*.pdf|Imagen PNG (*.png)|*.png";

}  // namespace

PanelGrafico::PanelGrafico(const ContextoListas& contexto, OpcionesPanelGrafico opciones, QWidget* parent)
    : QWidget(parent),
      contexto_(contexto),
      opciones_(std::move(opciones)),
      grafico_(new Hidrograma),
      canales_(new QMenu(this)),
      eventos_(new QCheckBox(QStringLiteral("Eventos"))),
      hechos_(new EtiquetaCopiable(QStringLiteral("GraficoHechos"))),
      sitio_(new QScrollArea) {
  setObjectName("PanelGrafico");
  Armar();
  connect(grafico_, &Hidrograma::PuntoElegido, this,
          [this](const Hidrograma::Punto& punto) { ElegidoPunto(punto.canal, punto.punto); });
  connect(grafico_, &Hidrograma::Dicho, this, &PanelGrafico::Decir);
  connect(grafico_, &Hidrograma::VentanaCambiada, this, &PanelGrafico::Anotar);
  connect(eventos_, &QCheckBox::toggled, this, &PanelGrafico::MarcarEventos);
  connect(canales_, &QMenu::triggered, this, [this](QAction* accion) { emit CanalPedido(accion->data().toString()); });
  ActualizarBotones();
}

QPushButton* PanelGrafico::NuevoBoton(const char* nombre, const char* texto, const char* ayuda,
                                      const std::function<void()>& hacer) {
  QPushButton* boton = Boton(nombre, QString::fromUtf8(texto));
  boton->setWhatsThis(QString::fromUtf8(ayuda));
  boton->setToolTip(boton->whatsThis());
  if (hacer) connect(boton, &QPushButton::clicked, this, hacer);
  return boton;
}

void PanelGrafico::Armar() {
  botones_ = {NuevoBoton("GraficoTodo", "Todo", "Muestra todo lo leído.", [this] { grafico_->Todo(); }),
              NuevoBoton("GraficoDia", "Últimas 24 h", "Muestra las últimas 24 horas de lo leído.",
                         [this] { grafico_->Ultimas(kDia); }),
              NuevoBoton("GraficoSemana", "Últimos 7 días", "Muestra los últimos 7 días de lo leído.",
                         [this] { grafico_->Ultimas(7 * kDia); }),
              NuevoBoton("GraficoImprimir", "Imprimir...", "Imprime el gráfico con su título y período.",
                         [this] { Imprimir(); }),
              NuevoBoton("GraficoGuardar", "Guardar...", "Guarda el gráfico como PDF o PNG.", [this] { Guardar(); })};
  botones_[3]->setAccessibleName(QStringLiteral("Imprimir el gráfico"));
  botones_[4]->setAccessibleName(QStringLiteral("Guardar el gráfico"));
  agregar_ = NuevoBoton("GraficoAgregar", "Agregar canal...",
                        "Lee otro canal del mismo período y lo muestra en el gráfico. La lista no cambia.", {});
  agregar_->setMenu(canales_);
  quitar_ = NuevoBoton("GraficoQuitar", "Quitar agregados", "Deja en el gráfico sólo el canal leído.",
                       [this] { QuitarAgregados(); });
  eventos_->setObjectName("GraficoEventos");
  eventos_->setWhatsThis(QStringLiteral("Lee los eventos del período y los muestra como banderas."));
  eventos_->setVisible(opciones_.con_eventos);
  hechos_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  sitio_->setObjectName("GraficoSitioDeHechos");
  sitio_->setAccessibleName(QStringLiteral("Hechos del gráfico"));
  sitio_->setWidget(hechos_);
  sitio_->setWidgetResizable(true);
  sitio_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  sitio_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Maximum);
  AjustarLetra();
  auto* fila = new DisposicionEnFilas(kEntre);
  for (QWidget* control :
       std::initializer_list<QWidget*>{botones_[0], botones_[1], botones_[2], agregar_, quitar_, eventos_})
    fila->Agregar(control);
  fila->Separar();
  for (QWidget* control : {botones_[3], botones_[4]}) fila->Agregar(control);
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(kEntre, 0, 0, 0);
  caja->setSpacing(kEntre);
  caja->addLayout(fila);
  caja->addWidget(grafico_, 1);
  caja->addWidget(sitio_);
  // Until it is seen, what the window reckons with: buttons in as many rows as beside a list.
  setMinimumHeight(caja->totalMinimumHeightForWidth(static_cast<int>(std::lround(kAnchoPorVenir * EscalaDelTexto()))));
}

void PanelGrafico::AjustarLetra() {
  const auto alto = [this](int renglones) {
    return fontMetrics().lineSpacing() * renglones + kEntre + 2 * sitio_->frameWidth();
  };
  sitio_->setMinimumHeight(alto(kRenglonesDeHechosMinimos));
  sitio_->setMaximumHeight(alto(kRenglonesDeHechos));
}

// What divides a window asks nobody how high it gets where it is narrow.
void PanelGrafico::resizeEvent(QResizeEvent* evento) {
  QWidget::resizeEvent(evento);
  setMinimumHeight(layout()->totalMinimumHeightForWidth(width()));
}

void PanelGrafico::changeEvent(QEvent* evento) {
  QWidget::changeEvent(evento);
  if (evento->type() == QEvent::FontChange) AjustarLetra();
}

// --- What is on show -------------------------------------------------------------------------------------------------

void PanelGrafico::Mostrar(ContenidoGrafico contenido) {
  DesmarcarEventos();
  agregados_.clear();
  contenido.eventos.clear();
  grafico_->Mostrar(std::move(contenido));
  ActualizarBotones();
}

void PanelGrafico::Vaciar() {
  Mostrar({});
}

void PanelGrafico::Ofrecer(const QStringList& canales) {
  ofrecidos_ = canales;
  ActualizarBotones();
}

void PanelGrafico::Agregar(const QString& texto, CanalGrafico canal) {
  ContenidoGrafico contenido = grafico_->Contenido();
  contenido.canales.push_back(std::move(canal));
  agregados_.append(texto);
  MostrarOtros(std::move(contenido));
}

void PanelGrafico::QuitarAgregados() {
  ContenidoGrafico contenido = grafico_->Contenido();
  contenido.canales.resize(std::min<std::size_t>(contenido.canales.size(), 1));
  agregados_.clear();
  MostrarOtros(std::move(contenido));
}

// Other channels of the same read: the operator goes on where he is.
void PanelGrafico::MostrarOtros(ContenidoGrafico contenido) {
  if (grafico_->VeTodo()) contenido.ventana.reset();
  const auto cursor = grafico_->Cursor();
  grafico_->Mostrar(std::move(contenido));
  if (cursor) grafico_->Senalar(*cursor);
  ActualizarBotones();
}

void PanelGrafico::ActualizarBotones() {
  const std::size_t cuantos = grafico_->Contenido().canales.size();
  canales_->clear();
  for (const QString& canal : ofrecidos_) {
    if (!agregados_.contains(canal))
      canales_->addAction(QString(canal).replace('&', QLatin1String("&&")))->setData(canal);
  }
  for (QPushButton* boton : botones_) boton->setEnabled(cuantos > 0);
  agregar_->setEnabled(cuantos > 0 && cuantos < kCurvas && !canales_->isEmpty());
  quitar_->setEnabled(cuantos > 1);
  eventos_->setEnabled(cuantos > 0);
  grafico_->setEnabled(cuantos > 0);  // Tab passes it by
}

// --- Events ----------------------------------------------------------------------------------------------------------

void PanelGrafico::MarcarEventos(bool marcado) {
  if (marcado) {
    emit EventosPedidos();
  } else {
    grafico_->PonerEventos({});
  }
}

void PanelGrafico::PonerEventos(std::vector<EventoGrafico> eventos) {
  if (eventos.empty()) Decir(QStringLiteral("Sin eventos en el período"));
  grafico_->PonerEventos(std::move(eventos));
}

void PanelGrafico::DesmarcarEventos() {
  eventos_->setChecked(false);
}

// --- Cursor ----------------------------------------------------------------------------------------------------------

void PanelGrafico::ElegidoPunto(std::size_t canal, std::size_t punto) {
  if (canal > 0 && !opciones_.una_tabla) return;
  senalando_ = true;  // what the list tells back changes nothing
  emit FilaElegida(grafico_->Contenido().canales[canal].serie->Fila(punto));
  senalando_ = false;
}

void PanelGrafico::SenalarFila(std::optional<std::size_t> fila) {
  if (senalando_) return;
  const auto& canales = grafico_->Contenido().canales;
  const std::size_t cuantos = opciones_.una_tabla ? canales.size() : std::min<std::size_t>(canales.size(), 1);
  for (std::size_t canal = 0; fila && canal < cuantos; ++canal) {
    if (const auto punto = canales[canal].serie->Punto(*fila)) return grafico_->Senalar({canal, *punto});
  }
  if (grafico_->Cursor()) grafico_->SinCursor();
}

void PanelGrafico::Decir(const QString& texto) {
  hechos_->Poner(texto);
  // The keyboard scrolls it where there is more than fits.
  const bool sobra = hechos_->heightForWidth(sitio_->viewport()->width()) > sitio_->viewport()->height();
  sitio_->setFocusPolicy(sobra ? Qt::StrongFocus : Qt::NoFocus);
}

void PanelGrafico::showEvent(QShowEvent* evento) {
  QWidget::showEvent(evento);
  Decir(hechos_->text());
}

void PanelGrafico::Avisar(const QString& aviso) {
  Decir(aviso + '\n' + grafico_->Hechos());
}

void PanelGrafico::Anotar() {
  if (opciones_.vistos != nullptr && !grafico_->Contenido().canales.empty())
    opciones_.vistos->Poner(opciones_.ventana, VistoDe(grafico_->Contenido()));
}

// --- Paper and files -------------------------------------------------------------------------------------------------

void PanelGrafico::Intentar(std::string_view procedimiento, const std::function<void()>& accion) {
  RegistrandoYMostrando(contexto_.registro, contexto_.operador, U(opciones_.ventana), procedimiento,
                        U(opciones_.titulo), Redaccion::kCompletarse, [&] {
                          const PunteroDeEspera puntero(contexto_.operador);
                          accion();
                        });
}

void PanelGrafico::Imprimir() {
  EleccionImpresora& eleccion = contexto_.eleccion;
  if (!HayImpresora(contexto_.operador, eleccion)) return;
  Intentar("ImprimirGrafico", [&] {
    ConPanelDePaginas(*this, [&](Progreso& progreso) {
      ImprimirGrafico(grafico_->Contenido(), contexto_.impresora, eleccion, progreso);
    });
  });
}

// Its first channel and the days that are in sight.
std::string PanelGrafico::NombrePropuesto() const {
  const ContenidoGrafico contenido = grafico_->Contenido();
  EncabezadoLista encabezado{"Gráfico", {}};
  if (!contenido.canales.empty()) encabezado.titulo += " " + TituloSerie(*contenido.canales.front().serie);
  const std::optional<VentanaTiempo> ventana = contenido.ventana ? contenido.ventana : TodoElTiempo(contenido);
  if (ventana) {
    for (const double momento : {ventana->desde, ventana->hasta})
      encabezado.lineas.push_back("Día: " + TextoMomento(std::llround(momento)).substr(0, kLargoFecha));
  }
  return NombreDeArchivo(encabezado);
}

void PanelGrafico::Guardar() {
  const auto ruta = contexto_.operador.ElegirGuardar({"Guardar gráfico ...", kFiltro, {}, NombrePropuesto()});
  if (!ruta) return;
  bool guardado = false;
  Intentar("GuardarGrafico", [&] {
    GuardarGrafico(grafico_->Contenido(), *ruta);
    guardado = true;
  });
  if (guardado) Informar(contexto_.operador, U(opciones_.titulo), "El gráfico ha sido guardado con éxito");
}

}  // namespace utr
