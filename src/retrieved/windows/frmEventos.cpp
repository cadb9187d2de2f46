#include "retrieved/windows/frmEventos.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "retrieved/ColumnasRegistros.h"
#include "shell/windows/Campos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

const DescripcionVista& Descripcion() {
  using C = Comando;
  static const DescripcionVista descripcion{
      "Eventos de la UTR",
      "mnuEv",
      "&Eventos",
      "mnuEvTraer",
      "&Traer",
      {{C::kMarco0, "mnuEvTraerPor(0)", "Por &Fecha"},
       {C::kMarco1, "mnuEvTraerPor(1)", "&Pendientes"},
       {C::kAbrir, "mnuEvAbrir", "&Abrir"},
       {C::kGuardar, "mnuEvGuardarComo", "&Guardar como..."},
       {C::kExportar, "mnuExportarEv", "E&xportar..."},
       {C::kConfigurarImpresora, "mnuConfigPrint", "&Configurar Impresora"},
       {C::kImprimir, "mnuEvPrint", "&Imprimir"},
       {C::kSalir, "mnuEvSalir", "&Salir"}},
      {C::kAbrir, C::kImprimir, C::kGuardar, C::kExportar, C::kAscendente, C::kDescendente, C::kAyuda, C::kQueEsEsto},
      3,
      {"frmEventos", "Eventos de la UTR", "Exportar ...", "ImprimirEventos", "mnuExportarEv_Click", 0,
       "La lista de eventos ha sido exportada con éxito"}};
  return descripcion;
}

}  // namespace

frmEventos::frmEventos(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VistaRegistros(mod, Descripcion(), ColumnasEventos(), parent),
      lector_(Contexto(), std::move(configuracion), mod.atender, mod.carpeta),
      picSinDatos_(Panel("picSinDatos", "Sin eventos durante las fechas seleccionada")),
      PicSinDatosColaTx_(Panel("PicSinDatosColaTx", "Sin información en la cola de eventos")),
      chkCartucho_(new QCheckBox(QStringLiteral("Eventos del Cartucho"))) {
  QPushButton* cerrar = Boton("cmd(1)", "Cerrar");
  Armar(ArmarMarcos(), cerrar);
}

QWidget* frmEventos::ArmarMarcos() {
  auto* por_fecha = new QGroupBox(QStringLiteral("Eventos por Fecha"));
  auto* izquierda = new QFormLayout;
  fechas_ = AgregarFechas(*izquierda, "dd/MM/yyyy HH:mm:ss");
  fechas_.fin->setTime(QTime(23, 59));
  chkCartucho_->setObjectName("chkCartucho");
  QPushButton* traer = Boton("cmd(0)", "&Traer...");
  traer->setDefault(true);
  connect(traer, &QPushButton::clicked, this, &frmEventos::TraerPorFecha);
  auto* derecha = new QVBoxLayout;
  derecha->addWidget(chkCartucho_);
  derecha->addWidget(traer, 0, Qt::AlignLeft);
  auto* fila = new QHBoxLayout(por_fecha);
  fila->setSpacing(24);
  fila->addLayout(izquierda);
  fila->addLayout(derecha);
  fila->addStretch(1);

  auto* pendientes = new QGroupBox(QStringLiteral("Eventos Pendientes"));
  pendientes->setObjectName("frTxEvPend");
  QPushButton* traer_pendientes = Boton("TraerTxEvPend", "Trae&r... ");
  connect(traer_pendientes, &QPushButton::clicked, this, &frmEventos::TraerPendientes);
  auto* caja = new QVBoxLayout(pendientes);
  caja->addStretch(1);
  caja->addWidget(traer_pendientes, 0, Qt::AlignLeft);

  auto* marcos = new QWidget;
  auto* todo = new QHBoxLayout(marcos);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->addWidget(por_fecha, 3);
  todo->addWidget(pendientes, 1);
  return marcos;
}

void frmEventos::Marco(int cual) {
  if (cual == 0) {
    TraerPorFecha();
  } else {
    TraerPendientes();
  }
}

void frmEventos::TraerPorFecha() {
  PedidoLectura pedido;
  pedido.procedimiento = "cmd_Click( 0 )";
  pedido.leer = [this] {
    return lector_.TraerPorFecha(FechaDe(*fechas_.inicio), FechaDe(*fechas_.fin), chkCartucho_->isChecked());
  };
  pedido.sin_datos = picSinDatos_;
  pedido.contador = "Cantidad de Eventos Cargados: ";
  pedido.periodo = [this] { return TextoPeriodo(fechas_); };
  pedido.al_reves = FechasAlReves();
  pedido.al_reves.titulo = "Atención";
  pedido.al_reves.icono = Icono::kExclamacion;
  Leer(pedido);
}

void frmEventos::TraerPendientes() {
  PedidoLectura pedido;
  pedido.procedimiento = "Eventos de transmicion pendiente";
  pedido.leer = [this] { return lector_.TraerPendientes(); };
  pedido.sin_datos = PicSinDatosColaTx_;
  pedido.contador = "Cantidad de Registros Cargados: ";
  pedido.periodo = [this] { return TextoMomento(); };
  Leer(pedido);
}

EncabezadoLista frmEventos::Encabezado(bool) const {
  return {"Eventos de la UTR", LineasDesdeHasta(fechas_)};
}

}  // namespace utr
