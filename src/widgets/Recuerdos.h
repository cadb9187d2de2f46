#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <utility>

namespace utr {

// What the program keeps for each user beside its settings: named values in a group, in the file that holds the sizes
// of windows. A group is the object name of a window, or what several windows share ("csv"). What is kept is a
// convenience: a value that is missing, or is not what it should be, counts as never kept, and nothing is raised.
class Recuerdos {
 public:
  // An empty group stands for the top of the file, where the sizes are.
  explicit Recuerdos(QString grupo) : grupo_(std::move(grupo)) {}

  // The value; an invalid one where there is none.
  QVariant Valor(const QString& nombre) const;

  QString Texto(const QString& nombre, const QString& si_no_hay = {}) const;
  QStringList Textos(const QString& nombre) const;
  bool Marcado(const QString& nombre, bool si_no_hay) const;

  // Within those limits; `si_no_hay` for what lies outside them.
  int Entero(const QString& nombre, int si_no_hay, int minimo, int maximo) const;

  // Keeps the value at once.
  void Guardar(const QString& nombre, const QVariant& valor);

  // The value is as if it had never been kept.
  void Olvidar(const QString& nombre);

 private:
  QString Clave(const QString& nombre) const { return grupo_.isEmpty() ? nombre : grupo_ + '/' + nombre; }

  QString grupo_;
};

}  // namespace utr
