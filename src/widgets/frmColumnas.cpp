#include "widgets/frmColumnas.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr QSize kTamano(460, 380);
constexpr int kEntrePartes = 12;
constexpr int kTitulo = 0;
constexpr int kAncho = 1;
constexpr int kMaximoLetras = 200;

std::size_t ColumnaDe(const QTreeWidgetItem& renglon) {
  return renglon.data(kTitulo, Qt::UserRole).toULongLong();
}

}  // namespace

frmColumnas::frmColumnas(VistaLista& lista)
    : QDialog(lista.window()),
      lista_(lista),
      columnas_(new QTreeWidget),
      subir_(Boton("cmdSubir", QStringLiteral("&Subir"))),
      bajar_(Boton("cmdBajar", QStringLiteral("&Bajar"))),
      ancho_(new QSpinBox),
      principio_(Boton("cmdPrincipio", QStringLiteral("Como al &principio"))) {
  setObjectName("frmColumnas");
  setWindowTitle(QStringLiteral("Columnas"));
  ArmarLista();
  ArmarControles();
  auto* controles = new QVBoxLayout;
  controles->addWidget(subir_);
  controles->addWidget(bajar_);
  controles->addSpacing(kEntrePartes);
  controles->addWidget(Rotulo("lblAncho", QStringLiteral("An&cho, en letras:"), ancho_));
  controles->addWidget(ancho_);
  controles->addSpacing(kEntrePartes);
  controles->addWidget(principio_);
  controles->addStretch(1);
  auto* cuerpo = new QHBoxLayout;
  cuerpo->setSpacing(kEntrePartes);
  cuerpo->addWidget(columnas_, 1);
  cuerpo->addLayout(controles);
  QPushButton* aceptar = Boton("CmdOK", QStringLiteral("Aceptar"));
  QPushButton* cancelar = Boton("CmdCancel", QStringLiteral("Cancelar"));
  connect(aceptar, &QPushButton::clicked, this, &frmColumnas::Aplicar);
  connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
  ArmarDialogo(*this, cuerpo, {.aceptar = aceptar, .cancelar = cancelar},
               {columnas_, subir_, bajar_, ancho_, principio_});
  for (const std::size_t columna : lista_.OrdenDeColumnas()) Agregar(columna, lista_.LetrasDe(columna));
  columnas_->setCurrentItem(columnas_->topLevelItem(0));
  columnas_->setFocus();
  AjustarTamano(*this, kTamano);
}

void frmColumnas::ArmarLista() {
  columnas_->setObjectName("Columnas");
  columnas_->setAccessibleName(QStringLiteral("Columnas"));
  columnas_->setHeaderLabels({QStringLiteral("Columna"), QStringLiteral("Ancho")});
  columnas_->headerItem()->setTextAlignment(kAncho, Qt::AlignRight | Qt::AlignVCenter);
  columnas_->setRootIsDecorated(false);
  columnas_->setAllColumnsShowFocus(true);
  columnas_->setUniformRowHeights(true);
  columnas_->header()->setSectionsMovable(false);
  columnas_->header()->setStretchLastSection(false);
  columnas_->header()->setSectionResizeMode(kTitulo, QHeaderView::Stretch);
  columnas_->header()->setSectionResizeMode(kAncho, QHeaderView::ResizeToContents);
  connect(columnas_, &QTreeWidget::currentItemChanged, this, &frmColumnas::Mostrar);
}

void frmColumnas::ArmarControles() {
  ancho_->setObjectName("txtAncho");
  ancho_->setAccessibleName(QStringLiteral("Ancho, en letras"));
  const bool se_mueven = lista_.ColumnasMovibles();
  for (QPushButton* boton : {subir_, bajar_}) boton->setVisible(se_mueven);
  connect(subir_, &QPushButton::clicked, this, [this] { Mover(-1); });
  connect(bajar_, &QPushButton::clicked, this, [this] { Mover(1); });
  connect(ancho_, &QSpinBox::valueChanged, this, &frmColumnas::AnotarAncho);
  connect(principio_, &QPushButton::clicked, this, &frmColumnas::VolverAlPrincipio);
}

void frmColumnas::Agregar(std::size_t columna, int letras) {
  auto* renglon = new QTreeWidgetItem(columnas_);
  renglon->setText(kTitulo, Q(lista_.Lista().LasColumnas()[columna].titulo).trimmed());
  renglon->setText(kAncho, QString::number(letras));
  renglon->setTextAlignment(kAncho, Qt::AlignRight | Qt::AlignVCenter);
  renglon->setData(kTitulo, Qt::UserRole, static_cast<qulonglong>(columna));
}

void frmColumnas::Mover(int hacia) {
  const int lugar = columnas_->indexOfTopLevelItem(columnas_->currentItem());
  QTreeWidgetItem* renglon = columnas_->takeTopLevelItem(lugar);
  columnas_->insertTopLevelItem(lugar + hacia, renglon);
  columnas_->setCurrentItem(renglon);
}

// The chosen column in the controls. A button that goes off hands the keyboard to the list, not to its neighbour, which
// would undo with the next press what it did.
void frmColumnas::Mostrar() {
  QTreeWidgetItem* renglon = columnas_->currentItem();
  if (renglon == nullptr) return;
  const int lugar = columnas_->indexOfTopLevelItem(renglon);
  const bool arriba = lugar > 0;
  const bool abajo = lugar + 1 < columnas_->topLevelItemCount();
  if ((!arriba && subir_->hasFocus()) || (!abajo && bajar_->hasFocus())) columnas_->setFocus();
  subir_->setEnabled(arriba);
  bajar_->setEnabled(abajo);
  const QSignalBlocker callado(ancho_);
  const int letras = renglon->text(kAncho).toInt();
  ancho_->setRange(1, std::max(letras, kMaximoLetras));
  ancho_->setValue(letras);
}

void frmColumnas::AnotarAncho(int letras) {
  QTreeWidgetItem* renglon = columnas_->currentItem();
  renglon->setText(kAncho, QString::number(letras));
  dados_[ColumnaDe(*renglon)] = letras;
}

void frmColumnas::VolverAlPrincipio() {
  const std::size_t elegida = ColumnaDe(*columnas_->currentItem());
  del_principio_ = true;
  dados_.clear();
  columnas_->clear();
  const std::size_t cuantas = lista_.Lista().LasColumnas().size();
  for (std::size_t columna = 0; columna < cuantas; ++columna) Agregar(columna, lista_.LetrasAjustadas(columna));
  columnas_->setCurrentItem(columnas_->topLevelItem(static_cast<int>(elegida)));
}

void frmColumnas::Aplicar() {
  std::vector<std::size_t> orden;
  orden.reserve(static_cast<std::size_t>(columnas_->topLevelItemCount()));
  for (int lugar = 0; lugar < columnas_->topLevelItemCount(); ++lugar)
    orden.push_back(ColumnaDe(*columnas_->topLevelItem(lugar)));
  if (del_principio_) lista_.ColocarComoAlPrincipio();
  lista_.Colocar(orden, dados_);
  accept();
}

}  // namespace utr
