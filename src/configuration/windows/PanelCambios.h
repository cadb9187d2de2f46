#pragma once

#include <QWidget>
#include <vector>

#include "configuration/CambiosConfiguracion.h"
#include "widgets/ServiciosLista.h"

class QPushButton;
class QToolButton;

namespace utr {

class VistaLista;

// The foldable pane "Cambios": what a write would change in the unit, as a list of its own that can be copied, saved
// and printed. It unfolds by itself when the first change comes, and is the operator's to fold from then on.
class PanelCambios : public QWidget {
  Q_OBJECT

 public:
  // `modulo`: name of the window in the error log.
  PanelCambios(const ContextoListas& contexto, const char* modulo, QWidget* parent = nullptr);

  void Mostrar(const std::vector<CambioConfiguracion>& cambios);

  // The title of its messages.
  void Titular(const std::string& titulo) { servicios_.Titular(titulo); }

 private:
  QPushButton* NuevoBoton(const char* nombre, const char* texto, const char* icono, void (PanelCambios::*hacer)());
  void ArmarLista();
  void Plegar(bool desplegado);
  void Copiar();
  void Guardar();
  void Imprimir();

  VistaLista* lista_;
  ServiciosLista servicios_;
  QToolButton* titulo_;
  QList<QPushButton*> botones_;
};

}  // namespace utr
