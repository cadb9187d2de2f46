#pragma once

#include <QHeaderView>

namespace utr {

// The titles of a list: each starts and ends where the texts of its cells do, with air around it, and the one that
// has the sort indicator bears an arrow beside its words, up for ascending (Qt's own points the other way).
//
// The last section in sight takes the room that is left over, but never less than the width that it is told.
// Right-aligned titles stay within that width, and so do cells whose view asks AnchoDicho.
class TitulosLista : public QHeaderView {
  Q_OBJECT

 public:
  explicit TitulosLista(QWidget* parent);

  // The widths of all sections, as they are wanted (sectionSizeHint is that of a whole title): the operator may change
  // them by hand, and the places of sections.
  void Decir(const QList<int>& anchos);

  // Room for all the words of a title, which may have become more.
  void DarLugar(int seccion);

  // The width within which the texts of a section stand, which of the last one is what it was told.
  int AnchoDicho(int seccion) const;

  // A section changes for the room that others leave, and not by hand.
  bool Repartiendo() const { return repartiendo_; }

  // What a cell keeps clear at its left and right.
  int Margen() const;

 protected:
  QSize sectionSizeFromContents(int seccion) const override;
  void paintSection(QPainter* pintor, const QRect& lugar, int seccion) const override;
  void resizeEvent(QResizeEvent* evento) override;

 private:
  int AnchoNecesario(int seccion) const;
  int Ultima() const;
  void CambiarUltima();
  void Repartir();

  int ultima_ = 0;  // the section that was last when the widths were told
  int ultima_dicha_ = 0;
  bool repartiendo_ = false;
};

}  // namespace utr
