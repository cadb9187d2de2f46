#pragma once

#include <QWidget>

#include "lists/Columnas.h"
#include "widgets/ServiciosLista.h"

class QPushButton;
class QToolButton;

namespace utr {

class VistaLista;

// What a pane is called, and its words in the list services.
struct DescripcionPanel {
  const char* nombre = nullptr;  // "Cambios": the panel is "PanelCambios", its list "ListaCambios"
  const char* titulo = nullptr;  // of the line that folds it; the count of rows follows
  const char* de_que = nullptr;  // "los cambios": what the buttons work on, for readers
  const char* explicacion = nullptr;
  const char* documento = nullptr;  // title of the text document
  const char* origen = "";          // of paper: whose the list is; empty: of the station at hand
  bool se_despliega = false;        // by itself, when the first row comes
  bool al_final = false;            // the last row is brought into sight, else the first
  PalabrasLista palabras{};
};

// A foldable pane: a title with the count of rows, and under it a short list that can be copied, saved and printed.
class PanelLista : public QWidget {
  Q_OBJECT

 public:
  PanelLista(const ContextoListas& contexto, const DescripcionPanel& descripcion, Columnas columnas,
             QWidget* parent = nullptr);

  // Shows these rows; null: none. The table must not change while it is shown.
  void Mostrar(TablaPtr tabla);

  // The title of its messages.
  void Titular(const std::string& titulo) { servicios_.Titular(titulo); }

 signals:
  // The list unfolded or folded, and the panel needs so many pixels of height more, or less.
  void Plegada(int mas);

 private:
  QPushButton* NuevoBoton(const char* nombre, const char* texto, const char* icono, void (PanelLista::*hacer)());
  void ArmarLista();
  void ArmarTitulo();
  void Plegar(bool desplegado);
  void Copiar();
  void Guardar();
  void GuardarCsv();
  void Imprimir();
  EncabezadoLista Encabezado() const;

  DescripcionPanel descripcion_;
  VistaLista* lista_;
  ServiciosLista servicios_;
  QToolButton* titulo_;
  QList<QPushButton*> botones_;
};

}  // namespace utr
