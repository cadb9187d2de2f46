#pragma once

#include <QTextBrowser>
#include <QWidget>

#include "help/windows/LibroAyuda.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTabWidget;

namespace utr {

// A page of the help, in the colours of the program's theme.
class PaginaAyuda : public QTextBrowser {
  Q_OBJECT

 public:
  explicit PaginaAyuda(const LibroAyuda& libro, QWidget* parent = nullptr);

 protected:
  QVariant loadResource(int tipo, const QUrl& direccion) override;
  void changeEvent(QEvent* evento) override;

 private:
  void Vestir();

  const LibroAyuda& libro_;
  bool vistiendo_ = false;
};

// The window of the help: contents, index and search beside the page.
class frmAyuda : public QWidget {
  Q_OBJECT

 public:
  // `libro` is open, and outlives the window.
  explicit frmAyuda(const LibroAyuda& libro, QWidget* parent = nullptr);

  // Show a page with the contents, or where words are searched, with the keyboard there.
  void IrA(const QUrl& pagina);
  void IrABuscar();

 signals:
  // What was searched is on show.
  void Buscado();

 private:
  QWidget* ArmarContenido();
  QWidget* ArmarIndice();
  QWidget* ArmarBusqueda();
  QWidget* ArmarBarra();
  void Buscar();
  void MostrarHallados();
  void AgregarHallado(const QString& titulo, const QUrl& pagina);
  void DecirHallados();
  void AbrirHallado(const QListWidgetItem* hallado);
  void Titular();

  const LibroAyuda& libro_;
  PaginaAyuda* pagina_;
  QTabWidget* hojas_;
  QLineEdit* txtBuscar_;
  QListWidget* hallados_;
  QLabel* lblHallados_;
};

}  // namespace utr
