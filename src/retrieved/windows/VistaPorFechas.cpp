#include "retrieved/windows/VistaPorFechas.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/Campos.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

QGroupBox* Grupo(const char* nombre, const char* titulo) {
  auto* grupo = new QGroupBox(QString::fromUtf8(titulo));
  grupo->setObjectName(QString::fromLatin1(nombre));
  return grupo;
}

}  // namespace

VistaPorFechas::VistaPorFechas(ModRTU& mod, const DescripcionLista& descripcion, const PalabrasPorFechas& palabras,
                               Columnas columnas, QPushButton* cerrar, QWidget* parent)
    : VistaRegistros(mod, descripcion, std::move(columnas), parent),
      palabras_(palabras),
      picSinDatos_(Panel("picSinDatos", palabras.sin_datos)),
      PicSinDatosColaTx_(Panel("PicSinDatosColaTx", palabras.sin_cola)),
      chkCartucho_(new QCheckBox(QString::fromUtf8(palabras.cartucho))) {
  chkCartucho_->setObjectName("chkCartucho");
  chkCartucho_->setWhatsThis(QStringLiteral("Lee el período del cartucho de la UTR en lugar de su memoria."));
  ArmarVista(ArmarMarcos(), cerrar);
  Recordar({chkCartucho_});
}

QWidget* VistaPorFechas::ArmarMarcos() {
  auto* marcos = new QWidget;
  auto* fila = new DisposicionEnFilas(kEntreControles, marcos);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->Agregar(ArmarPorFecha(), 3);
  fila->Agregar(ArmarPendientes(), 1);
  return marcos;
}

QWidget* VistaPorFechas::ArmarPorFecha() {
  QGroupBox* grupo = Grupo(palabras_.marco_fechas, palabras_.titulo_fechas);
  auto* caja = new QFormLayout;
  AgregarFechas(*caja, palabras_.formato);
  if (palabras_.dia_entero) CampoFin()->setTime(QTime(23, 59));
  QPushButton* traer = Boton(palabras_.boton_fechas, palabras_.texto_fechas);
  traer->setDefault(true);
  connect(traer, &QPushButton::clicked, this, &VistaPorFechas::TraerPorFecha);
  auto* columna = new QVBoxLayout;
  columna->setSpacing(kEntreControles);
  columna->addWidget(chkCartucho_);
  columna->addWidget(traer, 0, Qt::AlignLeft);
  auto* fila = new DisposicionEnFilas(kEntreColumnas);
  fila->Agregar(caja);
  fila->Agregar(columna);
  auto* todo = new QVBoxLayout(grupo);
  todo->setSpacing(kEntreControles);
  todo->addLayout(fila);
  todo->addWidget(NuevaBarraPeriodos());
  return grupo;
}

QWidget* VistaPorFechas::ArmarPendientes() {
  QGroupBox* grupo = Grupo(palabras_.marco_pendientes, palabras_.titulo_pendientes);
  QPushButton* traer = Boton(palabras_.boton_pendientes, palabras_.texto_pendientes);
  connect(traer, &QPushButton::clicked, this, &VistaPorFechas::TraerPendientes);
  auto* columna = new QVBoxLayout(grupo);
  columna->addStretch(1);
  columna->addWidget(traer, 0, Qt::AlignLeft);
  return grupo;
}

void VistaPorFechas::TraerPorFecha() {
  PedidoLectura pedido;
  pedido.procedimiento = palabras_.procedimiento_fechas;
  pedido.leer = [this] { return LeerPorFecha(Desde(), Hasta(), chkCartucho_->isChecked()); };
  pedido.sin_datos = picSinDatos_;
  pedido.contador = palabras_.contador_fechas;
  pedido.por_fechas = true;
  pedido.al_reves = FechasAlReves();
  pedido.al_reves.icono = palabras_.icono_al_reves;
  if (palabras_.titulo_al_reves != nullptr) pedido.al_reves.titulo = palabras_.titulo_al_reves;
  pedido.conservar = palabras_.conservar_al_reves;
  Leer(pedido);
}

void VistaPorFechas::TraerPendientes() {
  PedidoLectura pedido;
  pedido.procedimiento = palabras_.procedimiento_pendientes;
  pedido.leer = [this] { return LeerPendientes(); };
  pedido.sin_datos = PicSinDatosColaTx_;
  pedido.contador = palabras_.contador_pendientes;
  Leer(pedido);
}

}  // namespace utr
