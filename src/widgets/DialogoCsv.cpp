#include "widgets/DialogoCsv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>

#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Recuerdos.h"

namespace utr {
namespace {

struct Signo {
  char letra;
  const char* texto;
};
constexpr Signo kSeparadores[] = {{',', "Coma (,)"}, {';', "Punto y coma (;)"}, {'\t', "Tabulación"}};
constexpr Signo kDecimales[] = {{'.', "Punto (.)"}, {',', "Coma (,)"}};

Recuerdos Guardadas() {
  return Recuerdos(QStringLiteral("csv"));
}

template <std::size_t n>
QComboBox* Lista(const char* nombre, const Signo (&signos)[n]) {
  auto* lista = new QComboBox;
  lista->setObjectName(QString::fromLatin1(nombre));
  for (const Signo& signo : signos) lista->addItem(QString::fromUtf8(signo.texto), signo.letra);
  const int cual = Guardadas().Entero(lista->objectName(), 0, 0, static_cast<int>(n) - 1);
  lista->setCurrentIndex(cual);
  return lista;
}

char Elegido(const QComboBox& lista) {
  return static_cast<char>(lista.currentData().toInt());
}

}  // namespace

void CamposCsv::Agregar(QFormLayout& caja) {
  separador_ = Lista("cboSeparador", kSeparadores);
  decimal_ = Lista("cboDecimal", kDecimales);
  marca_ = new QCheckBox(QStringLiteral("Con &marca de UTF-8 al comienzo"));
  marca_->setObjectName("chkMarca");
  marca_->setChecked(Guardadas().Marcado(marca_->objectName(), false));
  separador_->setWhatsThis(QStringLiteral("El signo entre un campo y el siguiente."));
  decimal_->setWhatsThis(QStringLiteral("El signo decimal de los números del archivo."));
  marca_->setWhatsThis(QStringLiteral("Algunas planillas de cálculo sólo con esa marca muestran bien los acentos."));
  caja.addRow(Rotulo("lblSeparador", QStringLiteral("&Separador:"), separador_), separador_);
  caja.addRow(Rotulo("lblDecimal", QStringLiteral("Signo decim&al:"), decimal_), decimal_);
  caja.addRow(QString(), marca_);
}

OpcionesCsv CamposCsv::Opciones() const {
  return {Elegido(*separador_), Elegido(*decimal_), marca_->isChecked()};
}

void CamposCsv::Recordar() const {
  Recuerdos guardadas = Guardadas();
  for (const QComboBox* lista : {separador_, decimal_}) guardadas.Guardar(lista->objectName(), lista->currentIndex());
  guardadas.Guardar(marca_->objectName(), marca_->isChecked());
}

QList<QWidget*> CamposCsv::Controles() const {
  return {separador_, decimal_, marca_};
}

void CamposCsv::Habilitar(bool si) {
  for (QWidget* control : Controles()) control->setEnabled(si);
}

DialogoCsv::DialogoCsv(QWidget* parent) : QDialog(parent), campos_(new CamposCsv(this)) {
  setObjectName("DialogoCsv");
  setWindowTitle(QStringLiteral("Guardar como CSV"));
  auto* caja = new QFormLayout;
  campos_->Agregar(*caja);
  QPushButton* aceptar = Boton("CmdOK", QStringLiteral("Aceptar"));
  QPushButton* cancelar = Boton("CmdCancel", QStringLiteral("Cancelar"));
  const QList<QWidget*> controles = campos_->Controles();
  ArmarDialogo(*this, caja, {.aceptar = aceptar, .cancelar = cancelar}, {controles[0], controles[1], controles[2]});
  connect(aceptar, &QPushButton::clicked, this, [this] {
    campos_->Recordar();
    accept();
  });
  connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace utr
