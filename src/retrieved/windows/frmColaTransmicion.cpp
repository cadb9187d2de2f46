#include "retrieved/windows/frmColaTransmicion.h"

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
      "Cola de transmisión",
      "mnuDatos",
      "&Datos",
      "mnuTraerDatos",
      "&Traer Cola de Tx",
      {{C::kMarco0, "mnuColaTxDia", "Cola Tx por &Día"},
       {C::kMarco1, "mnuColaTxPend", "Cola Tx &Pendiente"},
       {C::kGuardar, "mnuGuardarComo", "&Guardar como..."},
       {C::kExportar, "mnuExportar", "E&xportar..."},
       {C::kConfigurarImpresora, "mnuCfgImpresora", "&Configurar Impresora"},
       {C::kImprimir, "mnuImprimir", "&Imprimir"},
       {C::kSalir, "mnuSalir", "&Salir"}},
      {C::kImprimir, C::kGuardar, C::kExportar, C::kAscendente, C::kDescendente, C::kAyuda, C::kQueEsEsto},
      2,
      {"frmColaTransmicion", "Cola de transmisión", "Guardar como ...", "ImprimirDatos", "mnuExportar_Click", 1,
       "La lista de datos ha sido exportada con éxito"}};
  return descripcion;
}

constexpr const char* kContador = "Cantidad de Registros Cargados: ";

}  // namespace

frmColaTransmicion::frmColaTransmicion(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VistaRegistros(mod, Descripcion(), ColumnasDatos(), parent),
      lector_(Contexto(), std::move(configuracion), mod.atender),
      picSinDatos_(Panel("picSinDatos", "Sin datos para el canal durante las fechas seleccionada")),
      PicSinDatosColaTx_(Panel("PicSinDatosColaTx", "Sin información en la cola de datos")),
      chkCartucho_(new QCheckBox(QStringLiteral("Leer del Cartucho"))) {
  QPushButton* cerrar = Boton("cmd", "&Cerrar");
  Armar(ArmarMarcos(), cerrar);
}

QWidget* frmColaTransmicion::ArmarMarcos() {
  auto* por_dia = new QGroupBox(QStringLiteral("Cola de transmisión por día"));
  por_dia->setObjectName("frTxPorDia");
  auto* izquierda = new QFormLayout;
  fechas_ = AgregarFechas(*izquierda, "dd/MM/yyyy");
  chkCartucho_->setObjectName("chkCartucho");
  QPushButton* traer = Boton("TraerTxPorDia", "Traer...");
  traer->setDefault(true);
  connect(traer, &QPushButton::clicked, this, &frmColaTransmicion::TraerPorDia);
  auto* derecha = new QVBoxLayout;
  derecha->addWidget(chkCartucho_);
  derecha->addWidget(traer, 0, Qt::AlignLeft);
  auto* fila = new QHBoxLayout(por_dia);
  fila->setSpacing(24);
  fila->addLayout(izquierda);
  fila->addLayout(derecha);
  fila->addStretch(1);

  auto* pendiente = new QGroupBox(QStringLiteral("Cola de transmisión pendiente"));
  pendiente->setObjectName("frTxPend");
  QPushButton* traer_pendiente = Boton("TraerTxPend", "Traer...");
  connect(traer_pendiente, &QPushButton::clicked, this, &frmColaTransmicion::TraerPendientes);
  auto* caja = new QVBoxLayout(pendiente);
  caja->addStretch(1);
  caja->addWidget(traer_pendiente, 0, Qt::AlignLeft);

  auto* marcos = new QWidget;
  auto* todo = new QHBoxLayout(marcos);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->addWidget(por_dia, 3);
  todo->addWidget(pendiente, 1);
  return marcos;
}

void frmColaTransmicion::Marco(int cual) {
  if (cual == 0) {
    TraerPorDia();
  } else {
    TraerPendientes();
  }
}

void frmColaTransmicion::TraerPorDia() {
  PedidoLectura pedido;
  pedido.procedimiento = "TraerTxPorDia";
  pedido.leer = [this] {
    return lector_.TraerPorDia(FechaDe(*fechas_.inicio), FechaDe(*fechas_.fin), chkCartucho_->isChecked());
  };
  pedido.sin_datos = picSinDatos_;
  pedido.contador = kContador;
  pedido.periodo = [this] { return TextoPeriodo(fechas_); };
  pedido.al_reves = FechasAlReves();
  pedido.conservar = true;
  Leer(pedido);
}

void frmColaTransmicion::TraerPendientes() {
  PedidoLectura pedido;
  pedido.procedimiento = "TraerTxPend";
  pedido.leer = [this] { return lector_.TraerPendientes(); };
  pedido.sin_datos = PicSinDatosColaTx_;
  pedido.contador = kContador;
  pedido.periodo = [this] { return TextoMomento(); };
  Leer(pedido);
}

EncabezadoLista frmColaTransmicion::Encabezado(bool para_imprimir) const {
  if (!lector_.PorDia()) return {"Datos pendientes de la cola de tx de la UTR", {LineaFecha()}};
  // Paper and file differ in their titles.
  return {para_imprimir ? "Datos de la cola de tx por dia de la UTR" : "Datos de la cola de tx de la UTR",
          LineasDesdeHasta(fechas_)};
}

}  // namespace utr
