#include "widgets/DialogoVistaPrevia.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPrinter>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollArea>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>

#include "widgets/Accesibilidad.h"
#include "widgets/Campos.h"
#include "widgets/Compaginado.h"
#include "widgets/ImpresoraQt.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {

namespace {

constexpr QSize kTamano(760, 700);
constexpr int kMargenHoja = 12;

}  // namespace

// One page of the document on a sheet of its paper.
class HojaVista : public QWidget {
 public:
  HojaVista(const Compaginado& hojas, const QPrinter& papel) : hojas_(hojas), papel_(papel) {
    setObjectName("picHoja");
    DarRol(*this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("Hoja"));
  }

  void Ir(int pagina) {
    pagina_ = pagina;
    update();
  }

  // The sheet is as wide as it is told, with the height that goes with it.
  void Ensanchar(int ancho) {
    const QRectF hoja = papel_.pageLayout().fullRectPixels(papel_.resolution());
    const int lado = ancho - 2 * kMargenHoja;
    setFixedSize(ancho, static_cast<int>(lado * hoja.height() / hoja.width()) + 2 * kMargenHoja);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const QRectF hoja = papel_.pageLayout().fullRectPixels(papel_.resolution());
    const QRectF util = papel_.pageLayout().paintRectPixels(papel_.resolution());
    QPainter pintor(this);
    pintor.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QRectF sitio = QRectF(rect()).adjusted(kMargenHoja, kMargenHoja, -kMargenHoja, -kMargenHoja);
    pintor.fillRect(sitio.translated(3, 3), palette().color(QPalette::Shadow));
    pintor.fillRect(sitio, Qt::white);
    pintor.translate(sitio.topLeft());
    pintor.scale(sitio.width() / hoja.width(), sitio.height() / hoja.height());
    pintor.translate(util.topLeft());
    hojas_.Dibujar(pintor, pagina_);
  }

 private:
  const Compaginado& hojas_;
  const QPrinter& papel_;
  int pagina_ = 0;
};

DialogoVistaPrevia::DialogoVistaPrevia(const DocumentoImpreso& documento, const EleccionImpresora& eleccion,
                                       Progreso& progreso, QWidget* parent)
    : QDialog(parent), papel_(std::make_unique<QPrinter>(QPrinter::HighResolution)) {
  setObjectName("DialogoVistaPrevia");
  setWindowTitle(QStringLiteral("Vista previa: ") + Q(documento.titulo));
  papel_->setOutputFormat(QPrinter::PdfFormat);  // no device: nothing is printed from here
  PonerPapel(*papel_, eleccion);
  hojas_ = std::make_unique<Compaginado>(documento, *papel_, FuenteDe(documento.letra), progreso);
  hoja_ = new HojaVista(*hojas_, *papel_);
  anterior_ = Boton("cmdAnterior", QStringLiteral("&Anterior"));
  siguiente_ = Boton("cmdSiguiente", QStringLiteral("&Siguiente"));
  numero_ = new QSpinBox;
  numero_->setObjectName("txtPagina");
  numero_->setRange(1, std::max(1, Paginas()));
  numero_->setSuffix(QStringLiteral(" de %1").arg(Paginas()));
  auto* mando = new QHBoxLayout;
  mando->addWidget(Rotulo("lblPagina", QStringLiteral("&Página:"), numero_));
  for (QWidget* control : std::initializer_list<QWidget*>{numero_, anterior_, siguiente_}) mando->addWidget(control);
  mando->addStretch(1);
  marco_ = new QScrollArea;
  marco_->setObjectName("marcoHoja");
  marco_->setAccessibleName(QStringLiteral("Hoja"));
  marco_->setBackgroundRole(QPalette::Mid);
  marco_->setAlignment(Qt::AlignHCenter);
  marco_->setWidget(hoja_);
  marco_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->addLayout(mando);
  cuerpo->addWidget(marco_, 1);
  QPushButton* imprimir = Boton("CmdOK", QStringLiteral("&Imprimir"));
  QPushButton* cerrar = Boton("CmdCancel", QStringLiteral("&Cerrar"));
  ArmarDialogo(*this, cuerpo, {.aceptar = imprimir, .cancelar = cerrar, .por_defecto = false},
               {numero_, anterior_, siguiente_, marco_});
  AjustarTamano(*this, kTamano);
  connect(imprimir, &QPushButton::clicked, this, &QDialog::accept);
  connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
  connect(anterior_, &QPushButton::clicked, numero_, &QSpinBox::stepDown);
  connect(siguiente_, &QPushButton::clicked, numero_, &QSpinBox::stepUp);
  const auto tecla = [this](Qt::Key cual, const char* que, void (QSpinBox::*hacer)()) {
    auto* atajo = new QShortcut(QKeySequence(Qt::CTRL | cual), this);
    atajo->setWhatsThis(QString::fromUtf8(que));
    connect(atajo, &QShortcut::activated, numero_, hacer);
  };
  tecla(Qt::Key_PageUp, "Página anterior", &QSpinBox::stepDown);
  tecla(Qt::Key_PageDown, "Página siguiente", &QSpinBox::stepUp);
  connect(numero_, &QSpinBox::valueChanged, this, &DialogoVistaPrevia::Ir);
  if (Paginas() > 0) Ir(1);
}

DialogoVistaPrevia::~DialogoVistaPrevia() {
  delete hoja_;  // it draws from what goes now
}

// The sheet is as wide as the window lets it be, so that a larger window shows larger letters.
void DialogoVistaPrevia::resizeEvent(QResizeEvent* evento) {
  QDialog::resizeEvent(evento);
  hoja_->Ensanchar(marco_->viewport()->width());
}

int DialogoVistaPrevia::Paginas() const {
  return hojas_->Paginas();
}

void DialogoVistaPrevia::Ir(int pagina) {
  hoja_->Ir(pagina - 1);
  anterior_->setEnabled(pagina > 1);
  siguiente_->setEnabled(pagina < Paginas());
}

}  // namespace utr
