#pragma once

#include <QObject>
#include <filesystem>

class QPushButton;
class QWidget;

namespace utr {

// Where the help is opened.
enum class EntradaAyuda {
  kContenido,  // at its first page, with the table of contents
  kBuscar,     // where words are searched
  kVentana,    // at the page of the window that asks
};

// Shows the help. There is one in the program's run, a child of the application object; without one, as under most
// tests, nothing is shown.
class Ayudante : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // `archivo`: the help file, which is there; `desde`: a window, or a control of it.
  virtual void Mostrar(const std::filesystem::path& archivo, EntradaAyuda entrada, const QWidget& desde) = 0;
};

// Opens a help file; nothing where there is no such file.
void AbrirAyuda(const std::filesystem::path& archivo, const QWidget& desde,
                EntradaAyuda entrada = EntradaAyuda::kVentana);

// Has the help button of a window open that file at the window's page, and F1 press it there. It is off while there is
// no such file.
void ServirAyuda(QPushButton& boton, const std::filesystem::path& archivo);

// There is such a file.
bool HayAyuda(const std::filesystem::path& archivo);

}  // namespace utr
