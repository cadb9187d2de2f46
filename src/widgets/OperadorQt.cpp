#include "widgets/OperadorQt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTreeView>
#include <algorithm>
#include <memory>

#include "base/CarpetaPrograma.h"
#include "base/Texto.h"
#include "widgets/CarpetaDelOperador.h"
#include "widgets/DialogoImpresora.h"
#include "widgets/Ocupacion.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kRenglonesDetalle = 8;
constexpr int kTamanoDeArchivo = 1;  // columns of Qt's model of files
constexpr int kFechaDeArchivo = 3;
constexpr QSize kTamanoArchivos(880, 520);
constexpr int kMargenFecha = 16;  // pixels
constexpr int kLetrasCarpetas = 16;
constexpr int kLetrasNombre = 30;

QWidget* Encima() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : QApplication::activeWindow();
}

QMessageBox::Icon IconoQt(Icono icono) {
  switch (icono) {
    case Icono::kInformacion:
      return QMessageBox::Information;
    case Icono::kExclamacion:
      return QMessageBox::Warning;
    case Icono::kCritico:
      return QMessageBox::Critical;
    case Icono::kPregunta:
      return QMessageBox::Question;
    case Icono::kNinguno:
      break;
  }
  return QMessageBox::NoIcon;
}

// The normal pointer for the span of a box, since the operator is being asked; then the hourglass again.
class PunteroNormal {
 public:
  PunteroNormal() {
    while (QApplication::overrideCursor() != nullptr) {
      guardados_.append(*QApplication::overrideCursor());
      QApplication::restoreOverrideCursor();
    }
  }
  ~PunteroNormal() {
    while (!guardados_.isEmpty()) QApplication::setOverrideCursor(guardados_.takeLast());
  }
  PunteroNormal(const PunteroNormal&) = delete;
  PunteroNormal& operator=(const PunteroNormal&) = delete;

 private:
  QList<QCursor> guardados_;
};

struct BotonDeCaja {
  Botones cuando;
  Respuesta respuesta;
  const char* texto;
  QMessageBox::ButtonRole papel;
};
constexpr BotonDeCaja kBotones[] = {
    {Botones::kAceptar, Respuesta::kAceptar, "Aceptar", QMessageBox::AcceptRole},
    {Botones::kAceptarCancelar, Respuesta::kAceptar, "Aceptar", QMessageBox::AcceptRole},
    {Botones::kAceptarCancelar, Respuesta::kCancelar, "Cancelar", QMessageBox::RejectRole},
    {Botones::kSiNo, Respuesta::kSi, "&Sí", QMessageBox::YesRole},
    {Botones::kSiNo, Respuesta::kNo, "&No", QMessageBox::NoRole},
    // Of one role, so that they stand in this order on every desktop.
    {Botones::kOpciones, Respuesta::kPrimera, nullptr, QMessageBox::ActionRole},
    {Botones::kOpciones, Respuesta::kSegunda, nullptr, QMessageBox::ActionRole},
    {Botones::kOpciones, Respuesta::kCancelar, "Cancelar", QMessageBox::RejectRole},
    {Botones::kAceptarOpcion, Respuesta::kAceptar, "Aceptar", QMessageBox::AcceptRole},
    {Botones::kAceptarOpcion, Respuesta::kPrimera, nullptr, QMessageBox::ActionRole},
};

QString TextoDeBoton(const BotonDeCaja& boton, const Mensaje& mensaje) {
  if (boton.texto != nullptr) return QString::fromUtf8(boton.texto);
  return Q(mensaje.opciones[boton.respuesta == Respuesta::kPrimera ? 0 : 1]);
}

// A field with more lines between the text and the buttons of a box that has both.
void AgregarDetalle(QMessageBox& caja, const QString& lineas) {
  auto* reja = qobject_cast<QGridLayout*>(caja.layout());
  auto* pie = caja.findChild<QDialogButtonBox*>();
  auto* campo = new QPlainTextEdit(lineas);
  campo->setObjectName("Detalle");
  campo->setAccessibleName(QStringLiteral("Detalle"));
  campo->setReadOnly(true);
  campo->setTabChangesFocus(true);
  campo->setMinimumHeight(kRenglonesDetalle * campo->fontMetrics().lineSpacing());
  reja->removeWidget(pie);
  reja->addWidget(campo, reja->rowCount(), 0, 1, reja->columnCount());
  reja->addWidget(pie, reja->rowCount(), 0, 1, reja->columnCount());
  caja.defaultButton()->setFocus();  // Enter is for the buttons
}

// Dates in the way of the country, day first: Qt's own come in that of the process. Folders stay ahead of files.
class ArchivosEnEspanol : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

  QVariant data(const QModelIndex& indice, int papel) const override {
    if (indice.column() != kFechaDeArchivo || papel != Qt::DisplayRole)
      return QSortFilterProxyModel::data(indice, papel);
    return Archivos().lastModified(mapToSource(indice)).toString(QStringLiteral("dd/MM/yyyy HH:mm"));
  }

 protected:
  bool lessThan(const QModelIndex& uno, const QModelIndex& otro) const override {
    const QFileInfo a = Archivos().fileInfo(uno);
    const QFileInfo b = Archivos().fileInfo(otro);
    if (a.isDir() != b.isDir()) return a.isDir() == (sortOrder() == Qt::AscendingOrder);
    if (uno.column() == kFechaDeArchivo && a.lastModified() != b.lastModified())
      return a.lastModified() < b.lastModified();
    if (uno.column() == kTamanoDeArchivo && a.size() != b.size()) return a.size() < b.size();
    return a.fileName().localeAwareCompare(b.fileName()) < 0;
  }

 private:
  const QFileSystemModel& Archivos() const { return *qobject_cast<const QFileSystemModel*>(sourceModel()); }
};

// Names are long here, since they have dates: they get what the rest leaves, and no less than one needs.
void Ensanchar(QFileDialog& dialogo) {
  dialogo.setViewMode(QFileDialog::Detail);
  dialogo.resize((kTamanoArchivos.toSizeF() * EscalaDelTexto()).toSize().boundedTo(SitioEnPantalla(dialogo)));
  const QFontMetrics letra = dialogo.fontMetrics();
  const int carpetas = std::min(kLetrasCarpetas * letra.averageCharWidth(), dialogo.width() / 4);
  if (auto* partes = dialogo.findChild<QSplitter*>(QStringLiteral("splitter")))
    partes->setSizes({carpetas, dialogo.width() - carpetas});
  const auto* vista = dialogo.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (vista == nullptr) return;
  QHeaderView& titulos = *vista->header();
  titulos.setStretchLastSection(false);
  const int escrita = letra.horizontalAdvance(QStringLiteral("00/00/0000 00:00")) + kMargenFecha;
  const int fecha = std::max(escrita, titulos.sectionSizeHint(kFechaDeArchivo));
  titulos.resizeSection(kFechaDeArchivo, fecha);
  const int nombre = kLetrasNombre * letra.averageCharWidth();
  const int demas = titulos.sectionSizeHint(1) + titulos.sectionSizeHint(2) + fecha;
  const bool caben = dialogo.width() - carpetas >= nombre + demas;
  titulos.setSectionResizeMode(0, caben ? QHeaderView::Stretch : QHeaderView::Interactive);
  if (!caben) titulos.resizeSection(0, nombre);
}

// Names the kinds of file in Spanish: Qt's own come from the desktop's database in the language of the process.
class ClasesDeArchivo : public QFileIconProvider {
 public:
  QString type(const QFileInfo& archivo) const override {
    if (archivo.isDir()) return QStringLiteral("Carpeta");
    const QString extension = archivo.suffix().toUpper();
    return extension.isEmpty() ? QStringLiteral("Archivo") : QStringLiteral("Archivo ") + extension;
  }
};

// ".txt" of each "*.txt" in a pattern of a filter; empty for one that takes any.
QStringList ExtensionesDe(std::string_view patron) {
  QStringList extensiones;
  for (const std::string_view una : Separar(patron, ';')) {
    const QString extension = Q(Recortar(una)).mid(1);
    extensiones.append(extension.size() < 2 || extension.contains(QLatin1Char('*')) ? QString() : extension);
  }
  return extensiones;
}

// Completes the name before the dialog asks whether to replace the file: Qt takes any dot for an extension, so that
// "datos 01.11.2026" would be saved without one.
class DialogoGuardar : public QFileDialog {
 public:
  DialogoGuardar(QWidget* parent, const QString& titulo, std::string_view filtro)
      : QFileDialog(parent, titulo), filtro_(filtro) {}

 protected:
  void accept() override {
    auto* nombre = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (const QString carpeta = CarpetaDe(nombre->text()); !carpeta.isEmpty()) {
      // Qt goes there too, but leaves the typed path in the field.
      setDirectory(carpeta);
      return nombre->clear();
    }
    const int cual = static_cast<int>(nameFilters().indexOf(selectedNameFilter()));
    nombre->setText(ConExtension(nombre->text(), filtro_, cual));
    QFileDialog::accept();
  }

 private:
  // The folder that was typed instead of a file; empty: it is none.
  QString CarpetaDe(QString nombre) const {
    if (nombre == QStringLiteral("~") || nombre.startsWith(QStringLiteral("~/")))
      nombre.replace(0, 1, QDir::homePath());
    const QFileInfo escrita(directory(), nombre);
    return !nombre.isEmpty() && escrita.isDir() ? escrita.absoluteFilePath() : QString();
  }

  std::string filtro_;
};

}  // namespace

Respuesta OperadorQt::Mostrar(const Mensaje& mensaje) {
  // A key that was typed while the program was blocked answers no question that wasn't seen yet.
  if (QWidget* ventana = Encima()) const Ocupacion vaciar(*ventana);
  const PunteroNormal puntero;
  QMessageBox caja(Encima());
  caja.setTextFormat(Qt::PlainText);
  caja.setText(Q(mensaje.texto));
  caja.setWindowTitle(Q(mensaje.titulo));
  caja.setIcon(IconoQt(mensaje.icono));
  QList<std::pair<QAbstractButton*, Respuesta>> respuestas;
  for (const BotonDeCaja& boton : kBotones) {
    if (boton.cuando != mensaje.botones) continue;
    QPushButton* puesto = caja.addButton(TextoDeBoton(boton, mensaje), boton.papel);
    if (boton.respuesta == DefectoDe(mensaje)) caja.setDefaultButton(puesto);
    if (mensaje.botones == Botones::kAceptarOpcion && boton.respuesta == Respuesta::kAceptar)
      caja.setEscapeButton(puesto);
    respuestas.append({puesto, boton.respuesta});
  }
  if (mensaje.botones == Botones::kSiNo) {
    // Without a button of its own Esc would press "No"; which side is the safe one is the caller's to say.
    QPushButton* cierre = caja.addButton(QString(), QMessageBox::RejectRole);
    cierre->setVisible(false);
    caja.setEscapeButton(cierre);
  }
  if (!mensaje.detalle.empty()) AgregarDetalle(caja, Q(mensaje.detalle));
  caja.exec();
  for (const auto& [boton, respuesta] : respuestas) {
    if (caja.clickedButton() == boton) return respuesta;
  }
  return Respuesta::kCerrado;
}

std::optional<std::filesystem::path> OperadorQt::ElegirAbrir(const PedidoArchivo& pedido) {
  return Elegir(pedido, false);
}

std::optional<std::filesystem::path> OperadorQt::ElegirGuardar(const PedidoArchivo& pedido) {
  return Elegir(pedido, true);
}

std::optional<std::filesystem::path> OperadorQt::Elegir(const PedidoArchivo& pedido, bool guardar) {
  const PunteroNormal puntero;
  if (ultima_carpeta_.isEmpty()) {
    ultima_carpeta_ = Q(DocumentosDelOperador().string());
  }
  ClasesDeArchivo clases;
  const auto nuevo = guardar ? std::make_unique<DialogoGuardar>(Encima(), Q(pedido.titulo), pedido.filtro)
                             : std::make_unique<QFileDialog>(Encima(), Q(pedido.titulo));
  QFileDialog& dialogo = *nuevo;
  dialogo.setOption(QFileDialog::DontUseNativeDialog);  // a desktop's own speaks its own language
  dialogo.setIconProvider(&clases);
  dialogo.setProxyModel(new ArchivosEnEspanol(&dialogo));
  Ensanchar(dialogo);
  dialogo.setNameFilters(FiltroQt(pedido.filtro).split(QStringLiteral(";;"), Qt::SkipEmptyParts));
  // What is saved into a hidden folder isn't found again.
  const bool donde_diga = !pedido.carpeta.empty() && !(guardar && EsDeDatosOcultos(pedido.carpeta));
  dialogo.setDirectory(donde_diga ? Q(pedido.carpeta.string()) : ultima_carpeta_);
  const bool carpeta = !guardar && pedido.filtro.empty();
  dialogo.setFileMode(guardar ? QFileDialog::AnyFile : carpeta ? QFileDialog::Directory : QFileDialog::ExistingFile);
  dialogo.setOption(QFileDialog::ShowDirsOnly, carpeta);
  dialogo.setAcceptMode(guardar ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  const char* aceptar = guardar ? "&Guardar" : carpeta ? "&Elegir" : "&Abrir";
  dialogo.setLabelText(QFileDialog::Accept, QString::fromLatin1(aceptar));
  dialogo.setLabelText(QFileDialog::Reject, QStringLiteral("Cancelar"));
  dialogo.setLabelText(QFileDialog::FileName, QStringLiteral("&Nombre:"));
  dialogo.setLabelText(QFileDialog::FileType, QStringLiteral("Tipo:"));
  if (!pedido.nombre.empty()) dialogo.selectFile(Q(pedido.nombre));
  if (dialogo.exec() != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) return std::nullopt;
  const QString elegido = dialogo.selectedFiles().first();
  ultima_carpeta_ =
      carpeta ? elegido : QFileInfo(elegido).absolutePath();  // a typed path leaves the folder on show where it was
  return Ruta(elegido);
}

std::optional<EleccionImpresora> OperadorQt::ElegirImpresora(std::string_view titulo,
                                                             const EleccionImpresora& anterior) {
  const PunteroNormal puntero;
  DialogoImpresora dialogo(Q(titulo), anterior, Encima());
  if (dialogo.exec() != QDialog::Accepted) return std::nullopt;
  return dialogo.Eleccion();
}

void OperadorQt::PunteroOcupado(bool ocupado) {
  if (ocupado) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else if (QApplication::overrideCursor() != nullptr) {
    QApplication::restoreOverrideCursor();
  }
}

QString FiltroQt(std::string_view filtro) {
  const std::vector<std::string_view> partes = Separar(filtro, '|');
  QStringList salida;
  for (std::size_t i = 0; i + 1 < partes.size(); i += 2) {
    QString texto = Q(Recortar(partes[i]));
    QString patron = Q(Recortar(partes[i + 1]));
    const QString entre = QStringLiteral("(%1)").arg(patron);
    if (texto.endsWith(entre, Qt::CaseInsensitive)) texto.chop(entre.size());
    patron.replace(QLatin1Char(';'), QLatin1Char(' '));
    salida.append(QStringLiteral("%1 (%2)").arg(texto.trimmed(), patron));
  }
  return salida.join(QStringLiteral(";;"));
}

QString ConExtension(const QString& nombre, std::string_view filtro, int cual) {
  const std::vector<std::string_view> partes = Separar(filtro, '|');
  const std::size_t lugar = 2 * static_cast<std::size_t>(std::max(cual, 0)) + 1;
  if (nombre.isEmpty() || lugar >= partes.size()) return nombre;
  QString primera;
  for (const QString& extension : ExtensionesDe(partes[lugar])) {
    if (extension.isEmpty()) return nombre;
    if (primera.isEmpty()) primera = extension;
  }
  for (std::size_t i = 1; i < partes.size(); i += 2) {
    for (const QString& extension : ExtensionesDe(partes[i])) {
      if (!extension.isEmpty() && nombre.endsWith(extension, Qt::CaseInsensitive)) return nombre;
    }
  }
  return nombre + primera;
}

}  // namespace utr
