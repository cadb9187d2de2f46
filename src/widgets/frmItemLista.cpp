#include "widgets/frmItemLista.h"

#include <QApplication>
#include <QClipboard>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include "widgets/Campos.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"

namespace utr {

frmItemLista::frmItemLista(QWidget* parent) : QDialog(parent) {
  setObjectName("frmItemLista");
  auto* hoja = new QWidget;
  pares_ = new QFormLayout(hoja);
  pares_->setHorizontalSpacing(16);
  pares_->setVerticalSpacing(8);
  auto* marco = new QScrollArea;
  marco->setWidget(hoja);
  marco->setWidgetResizable(true);
  marco->setFrameShape(QFrame::NoFrame);
  marco->setFocusPolicy(Qt::NoFocus);
  QPushButton* cmd = Boton("cmd", "&Cerrar");
  connect(cmd, &QPushButton::clicked, this, &frmItemLista::accept);
  auto* copiar = new QShortcut(QKeySequence::Copy, this);
  copiar->setWhatsThis("Copiar todos los campos");
  connect(copiar, &QShortcut::activated, this, &frmItemLista::Copiar);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->addWidget(marco);
  ArmarDialogo(*this, cuerpo, {.cancelar = cmd});
}

void frmItemLista::ItemToShow(const ListaTabla& lista, std::size_t posicion, std::size_t columna_titulo) {
  const Columnas& columnas = lista.LasColumnas();
  for (std::size_t i = 0; i < columnas.size(); ++i) AgregarPar(i, columnas[i].titulo, lista.Texto(posicion, i));
  setWindowTitle(QStringLiteral("Detalles: ") + Q(lista.Texto(posicion, columna_titulo)));
  const QSize hoja = pares_->sizeHint();
  resize(QSize(std::max(360, hoja.width() + 60), hoja.height() + 90).boundedTo(SitioEnPantalla(*this)));
  RecordarTamano(this);
}

// What was marked in a value is copied by the value itself.
void frmItemLista::Copiar() {
  QStringList renglones;
  for (int fila = 0; fila < pares_->rowCount(); ++fila) {
    const auto* titulo = qobject_cast<QLabel*>(pares_->itemAt(fila, QFormLayout::LabelRole)->widget());
    const auto* dato = qobject_cast<QLabel*>(pares_->itemAt(fila, QFormLayout::FieldRole)->widget());
    renglones.append(titulo->text().replace("&&", "&") + dato->text());
  }
  QApplication::clipboard()->setText(renglones.join('\n'));
}

void frmItemLista::AgregarPar(std::size_t indice, const std::string& titulo, const std::string& dato) {
  auto* lblDato = new EtiquetaCopiable(QString("lblDato(%1)").arg(indice));
  lblDato->Poner(Q(dato.empty() ? "-" : dato));
  auto* lblColumna = new QLabel(Q(titulo + ": ").replace('&', "&&"));
  lblColumna->setObjectName(QString("lblColumna(%1)").arg(indice));
  QFont letra = lblColumna->font();
  letra.setBold(true);
  lblColumna->setFont(letra);
  // The value is what a screen reader reads there, as labelled by its title.
  lblColumna->setBuddy(lblDato);
  pares_->addRow(lblColumna, lblDato);
}

}  // namespace utr
