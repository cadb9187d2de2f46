#include "help/windows/LibroAyuda.h"

#include <QDir>
#include <QHelpEngine>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QStringList>

#include "help/PaginasAyuda.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr QLatin1String kPortada("inicio.html");
constexpr QLatin1String kMensajes("mensajes.html");
constexpr QLatin1String kCualquiera("*");  // the window under which controls are told that many have

QUrl Direccion(const QString& archivo) {
  return {QStringLiteral("qthelp://%1/%2/%3").arg(Q(ayuda::kEspacio), Q(ayuda::kCarpetaVirtual), archivo)};
}

// The folder is there and empty.
bool Vaciar(const QString& carpeta) {
  QDir dir(carpeta);
  return (!dir.exists() || dir.removeRecursively()) && QDir().mkpath(carpeta);
}

}  // namespace

LibroAyuda::LibroAyuda() = default;
LibroAyuda::~LibroAyuda() = default;

QString LibroAyuda::Abrir(const std::filesystem::path& archivo, const QString& cache) {
  buscador_.reset();
  motor_.reset();
  reunidas_ = false;
  controles_.clear();
  const QString ruta = Q(archivo.string());
  if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
    return QStringLiteral("Falta el controlador SQLite de Qt (paquete libqt6sql6-sqlite).");
  if (QHelpEngineCore::namespaceName(ruta) != Q(ayuda::kEspacio))
    return QStringLiteral("El archivo %1 está dañado o no es la ayuda de AdminUTR.").arg(ruta);
  if (!Vaciar(cache)) return QStringLiteral("No se puede escribir en la carpeta %1.").arg(cache);
  auto motor = std::make_unique<QHelpEngine>(cache + QStringLiteral("/ayuda.qhc"));
  motor->setReadOnly(false);
  if (!motor->setupData() || !motor->registerDocumentation(ruta))
    return QStringLiteral("No se puede preparar la ayuda en la carpeta %1.").arg(cache);
  motor_ = std::move(motor);
  buscador_ = std::make_unique<QHelpSearchEngine>(motor_.get());
  QObject::connect(buscador_.get(), &QHelpSearchEngine::indexingFinished, buscador_.get(),
                   [this] { reunidas_ = true; });
  motor_->setupData();  // contents, index and words of what was registered
  LeerControles();
  return {};
}

void LibroAyuda::LeerControles() {
  const QByteArray todo = motor_->fileData(Direccion(Q(ayuda::kArchivoControles)));
  const QStringList lineas = QString::fromUtf8(todo).split('\n', Qt::SkipEmptyParts);
  for (const QString& linea : lineas) {
    const QStringList partes = linea.split('\t');
    if (partes.size() == 3) controles_.insert(partes[0] + '\t' + partes[1], partes[2]);
  }
}

QUrl LibroAyuda::Portada() const {
  return Direccion(kPortada);
}

QUrl LibroAyuda::PaginaDeMensajes() const {
  return Direccion(kMensajes);
}

QUrl LibroAyuda::PaginaDe(const QString& ventana) const {
  const QList<QHelpLink> enlaces = ventana.isEmpty() ? QList<QHelpLink>() : motor_->documentsForIdentifier(ventana);
  return enlaces.isEmpty() ? QUrl() : enlaces.front().url;
}

QByteArray LibroAyuda::Leer(const QUrl& pagina) const {
  return motor_->fileData(pagina);
}

QString LibroAyuda::QueEs(const QString& ventana, const QString& control) const {
  if (control.isEmpty()) return controles_.value(ventana + '\t');
  // One of an array may be told as the others are: "lblDato(3)" as "lblDato".
  for (const QString& nombre : {control, control.section('(', 0, 0)}) {
    for (const QString& donde : {ventana, QString(kCualquiera)}) {
      const auto palabras = controles_.constFind(donde + '\t' + nombre);
      if (palabras != controles_.constEnd()) return *palabras;
    }
  }
  return {};
}

QString ConsultaDe(const QString& escrito) {
  static const QRegularExpression entre_palabras(QStringLiteral("[^\\p{L}\\p{N}]+"));
  QStringList palabras;
  for (const QString& palabra : escrito.split(entre_palabras, Qt::SkipEmptyParts))
    palabras.append('"' + palabra + QStringLiteral("\"*"));
  return palabras.join(' ');
}

}  // namespace utr
