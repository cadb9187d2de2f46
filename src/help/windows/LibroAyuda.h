#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrl>
#include <filesystem>
#include <memory>

class QHelpEngine;
class QHelpSearchEngine;

namespace utr {

// The help file, open. What Qt keeps about it (contents, index, words) is made anew in a folder of the user's cache at
// each opening, so that nothing old or broken there can be shown.
class LibroAyuda {
 public:
  LibroAyuda();
  ~LibroAyuda();
  LibroAyuda(const LibroAyuda&) = delete;
  LibroAyuda& operator=(const LibroAyuda&) = delete;

  // Opens the file, in place of one that was open; `cache` is a folder for it alone, which is emptied. Gives why it
  // can't be read, a sentence; empty where it can. After a failure nothing is open.
  QString Abrir(const std::filesystem::path& archivo, const QString& cache);
  bool Abierto() const noexcept { return motor_ != nullptr; }

  // The rest asks for an open file.

  // Contents and index as Qt shows them; their widgets belong to the one window that takes them in.
  QHelpEngine& Motor() const { return *motor_; }
  // The search among the words of all pages, which finds none until they have been gathered: its signal
  // indexingFinished tells when.
  QHelpSearchEngine& Buscador() const { return *buscador_; }
  bool PalabrasReunidas() const noexcept { return reunidas_; }

  QUrl Portada() const;
  QUrl PaginaDeMensajes() const;  // what messages mean that any window may show
  // The page of the window with that object name; empty where none is about it.
  QUrl PaginaDe(const QString& ventana) const;
  QByteArray Leer(const QUrl& pagina) const;

  // What a control is for: of the window with that name, by the control's name, which is empty for the window itself.
  // Empty where the pages don't say.
  QString QueEs(const QString& ventana, const QString& control) const;

 private:
  void LeerControles();

  std::unique_ptr<QHelpEngine> motor_;
  std::unique_ptr<QHelpSearchEngine> buscador_;
  bool reunidas_ = false;
  QHash<QString, QString> controles_;  // under "window\tcontrol"
};

// What is searched for the words that someone typed: pages that have each of them, or words that begin like them,
// whatever signs stand between. Empty where there is no word.
QString ConsultaDe(const QString& escrito);

}  // namespace utr
