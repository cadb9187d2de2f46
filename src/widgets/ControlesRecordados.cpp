#include "widgets/ControlesRecordados.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <utility>

#include "widgets/VistaLista.h"

namespace utr {
namespace {

const QString kMarca = QStringLiteral("recordar");
const QString kLista = QStringLiteral("columnas");

QVariant EstadoDe(const QWidget& campo) {
  if (const auto* boton = qobject_cast<const QAbstractButton*>(&campo)) return boton->isChecked();
  if (const auto* lista = qobject_cast<const QComboBox*>(&campo)) return lista->currentText();
  if (const auto* texto = qobject_cast<const QLineEdit*>(&campo)) return texto->text();
  if (const auto* fecha = qobject_cast<const QDateTimeEdit*>(&campo)) return fecha->dateTime().toString(Qt::ISODate);
  return {};
}

void ReponerEstado(QWidget& campo, const Recuerdos& recuerdos) {
  const QString nombre = campo.objectName();
  if (auto* boton = qobject_cast<QAbstractButton*>(&campo)) {
    // Of choices that exclude each other, the one that was on turns the others off.
    const bool marcado = recuerdos.Marcado(nombre, boton->isChecked());
    if (marcado || !boton->autoExclusive()) boton->setChecked(marcado);
  } else if (auto* lista = qobject_cast<QComboBox*>(&campo)) {
    if (const int cual = lista->findText(recuerdos.Texto(nombre)); cual >= 0) lista->setCurrentIndex(cual);
  } else if (auto* texto = qobject_cast<QLineEdit*>(&campo)) {
    texto->setText(recuerdos.Texto(nombre, texto->text()));
  } else if (auto* fecha = qobject_cast<QDateTimeEdit*>(&campo)) {
    const QDateTime guardada = QDateTime::fromString(recuerdos.Texto(nombre), Qt::ISODate);
    if (guardada.isValid()) fecha->setDateTime(guardada);
  }
}

}  // namespace

ControlesRecordados::ControlesRecordados(const QString& ventana, QWidget* parent)
    : QCheckBox(QStringLiteral("Recordar"), parent), recuerdos_(ventana) {
  setObjectName("chkRecordar");
  setChecked(recuerdos_.Marcado(kMarca, false));
  setWhatsThis(QStringLiteral(
      "Marcado, la ventana se abre la próxima vez como se la dejó: canal, fechas, opciones, columnas y orden."));
}

void ControlesRecordados::Reponer(QList<QWidget*> campos, VistaLista* lista) {
  campos_ = std::move(campos);
  lista->ConservarAnchos(isChecked());
  connect(this, &QCheckBox::toggled, lista, &VistaLista::ConservarAnchos);
  const QStringList columnas = Columnas(kLista, [lista] { return lista->Disposicion(); });
  if (!isChecked()) return;
  for (QWidget* campo : std::as_const(campos_)) ReponerEstado(*campo, recuerdos_);
  lista->Disponer(columnas);
}

QStringList ControlesRecordados::Columnas(const QString& nombre, std::function<QStringList()> disposicion) {
  columnas_[nombre] = std::move(disposicion);
  return isChecked() ? recuerdos_.Textos(nombre) : QStringList();
}

void ControlesRecordados::Guardar() {
  recuerdos_.Guardar(kMarca, isChecked());
  const auto guardar = [this](const QString& nombre, const auto& valor) {
    isChecked() ? recuerdos_.Guardar(nombre, valor()) : recuerdos_.Olvidar(nombre);
  };
  for (const QWidget* campo : std::as_const(campos_))
    guardar(campo->objectName(), [campo] { return EstadoDe(*campo); });
  for (const auto& [nombre, disposicion] : columnas_) guardar(nombre, disposicion);
}

}  // namespace utr
