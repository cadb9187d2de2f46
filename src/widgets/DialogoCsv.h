#pragma once

#include <QDialog>

#include "lists/Csv.h"

class QCheckBox;
class QComboBox;
class QFormLayout;

namespace utr {

// The fields in which the operator tells how a CSV is written: separator, decimal sign, mark. They start as the same
// user left them last in any window, at first as RFC 4180 has them.
class CamposCsv : public QObject {
  Q_OBJECT

 public:
  explicit CamposCsv(QObject* parent) : QObject(parent) {}

  // Puts them into a form with their labels. Once.
  void Agregar(QFormLayout& caja);

  OpcionesCsv Opciones() const;

  // What they say now is what they start with from now on.
  void Recordar() const;

  QList<QWidget*> Controles() const;
  void Habilitar(bool si);

 private:
  QComboBox* separador_ = nullptr;
  QComboBox* decimal_ = nullptr;
  QCheckBox* marca_ = nullptr;
};

// Asks for them ahead of a file; accepted, they are remembered.
class DialogoCsv : public QDialog {
  Q_OBJECT

 public:
  explicit DialogoCsv(QWidget* parent = nullptr);

  OpcionesCsv Opciones() const { return campos_->Opciones(); }

 private:
  CamposCsv* campos_;
};

}  // namespace utr
