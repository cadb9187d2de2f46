#include "widgets/CampoFecha.h"

#include <QEvent>
#include <QLineEdit>

namespace utr {

CampoFecha::CampoFecha(QWidget* parent) : QDateTimeEdit(parent) {
  lineEdit()->installEventFilter(this);
}

bool CampoFecha::eventFilter(QObject* objeto, QEvent* evento) {
  const bool suelta = objeto == lineEdit() && evento->type() == QEvent::MouseButtonRelease;
  if (suelta && !lineEdit()->hasSelectedText()) setSelectedSection(currentSection());
  return QDateTimeEdit::eventFilter(objeto, evento);
}

}  // namespace utr
