#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

namespace utr {

// One running program per user and folder of the executable. The first one listens on a local socket; a later one
// knocks there, which brings the active window of the first to the front.
class InstanciaUnica : public QObject {
  Q_OBJECT

 public:
  explicit InstanciaUnica(const QString& carpeta, QObject* parent = nullptr);

  // True: this is the first instance, which answers from now on. False: another one runs and was told.
  bool Tomar();

 signals:
  // Another instance was started and has ended; the window that the operator is at has been brought to the front.
  void OtraInstancia();

 private:
  bool Avisar() const;

  QString nombre_;
  QLocalServer servidor_;
};

}  // namespace utr
