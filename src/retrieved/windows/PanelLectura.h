#pragma once

#include <QWidget>

#include "base/Progreso.h"
#include "base/Reloj.h"
#include "retrieved/recovery/LectorFlash.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace utr {

class VistaMapa;

// The panel of a read under way, "picInfo": track and page, the bars over tracks and over the pages of a track, how
// fast it goes and how long it takes, and the button that ends it. Its room is kept while it can't be seen.
class PanelLectura : public QWidget, public Progreso {
  Q_OBJECT

 public:
  // `mapa` is brought up to date together with the figures.
  PanelLectura(const Reloj& reloj, VistaMapa& mapa, QWidget* parent = nullptr);

  // The read whose figures are shown from now on; it outlives the next call of this or of ExportandoConfiguracion.
  void Seguir(const LectorFlash& lector, int primera_pista);
  void ExportandoConfiguracion();

  // Shows it, as at the beginning of a read, or takes it away.
  void Ver(bool visto);

  // The read is to end at its next page.
  void Cancelar();

  QPushButton* Boton() const { return Cancelar_; }

  void Texto(std::string_view texto) override;
  void Rango(std::int64_t pasos) override;
  void Posicion(std::int64_t hechos) override;
  bool Cancelado() override { return cancelado_; }
  void Descartado(std::string_view que, std::string_view porque) override;

 private:
  void Armar();
  void Cifras();

  const Reloj& reloj_;
  VistaMapa& mapa_;
  QLabel* LblPista_;
  QLabel* LblInfo_;
  QLabel* lblAvance_;
  QProgressBar* Progreso_;
  QProgressBar* ProgresoPaginas_;
  QPushButton* Cancelar_;
  const LectorFlash* lector_ = nullptr;
  LugarPagina lugar_;          // told last; twice the same: its track is done
  std::int64_t mostrado_ = 0;  // when the figures were shown last, in milliseconds of the clock
  bool cancelado_ = false;
};

}  // namespace utr
