#pragma once

#include <QDialog>
#include <filesystem>
#include <map>
#include <string_view>
#include <vector>

#include "lists/Columnas.h"
#include "widgets/ComandoVentana.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Ocupacion.h"
#include "widgets/PanelDePaginas.h"
#include "widgets/ServiciosLista.h"

class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;
class QMenuBar;
class QToolBar;
class QSplitter;

namespace utr {

class EtiquetaCopiable;
class PanelAviso;
class VistaLista;
class ZonaLista;

// What a window around a list is called, and its words in the list services.
struct DescripcionLista {
  const char* titulo = nullptr;
  std::size_t columna_titulo = 0;  // of the list, for the caption of the detail dialog
  PalabrasLista palabras{};        // its `modulo` is the object name of the window
};

// A window around a list: menu, toolbar, what the window puts over the list, the list with its filter and the panels
// that stand in its place, a line of counters and buttons below. It knows the list services, the detail of a row and
// how to keep the operator out while the window works; where the rows come from is the window's own.
//
// A window derives from it, and in its constructor: adds panels and lines, tells its commands, and puts itself together
// with Armar, in any order. Commands follow by themselves what the list shows and what is selected.
class VentanaLista : public QDialog {
  Q_OBJECT

 public:
  ~VentanaLista() override;

 protected:
  // `archivo_ayuda`: opened by the command of the help.
  VentanaLista(const ContextoListas& contexto, std::filesystem::path archivo_ayuda, const DescripcionLista& descripcion,
               Columnas columnas, QWidget* parent);

  // Menus and toolbar. Entries stand in their menus in the order of `comandos`, a menu within a menu where its first
  // entry comes. `barra`: the keys of the buttons in their order, null for a rule.
  void Comandos(const std::vector<MenuVentana>& menus, const std::vector<ComandoVentana>& comandos,
                const std::vector<const char*>& barra);

  // The commands that lists have in common, ready to be told or changed first: `nombre` is that of the menu entry.
  // Saving, printing and the detail want rows in sight; the export takes the whole table, whatever the filter.
  ComandoVentana ComandoAbrir(const char* nombre);
  ComandoVentana ComandoGuardar(const char* nombre);
  ComandoVentana ComandoGuardarCsv();
  ComandoVentana ComandoExportar(const char* nombre);
  ComandoVentana ComandoConfigurarImpresora(const char* nombre);
  ComandoVentana ComandoImprimir(const char* nombre);
  ComandoVentana ComandoVistaPrevia();
  ComandoVentana ComandoSalir(const char* nombre);
  // The buttons of the toolbar that order by the first column as text, that open the help, and that explain a control.
  ComandoVentana ComandoOrdenar(bool ascendente);
  ComandoVentana ComandoAyuda();
  ComandoVentana ComandoQueEsEsto();

  // Puts the window together: `encima` over the list (null: nothing), the buttons below, of which Cancelar
  // rejects. `tamano`: the first size, at least. `debajo`: what stands between the list and the buttons, if anything;
  // with `divisible` the operator shares out the room between the two.
  void Armar(QWidget* encima, const PieDialogo& pie, const QSize& tamano, QWidget* debajo = nullptr,
             bool divisible = false);

  // Puts a part beside the list, ahead of Comandos and Armar: the operator shares out the room between them, and folds
  // the part away and back by an entry of the menu "Ver" and a button at the end of the toolbar. Both are remembered
  // for each user.
  void AlLado(QWidget* parte, const ComandoVentana& ver);

  // A line right below the list and what is beside it, ahead of Armar.
  void BajoLaLista(QWidget* linea) { bajo_la_lista_ = linea; }

  // A line right above the buttons, ahead of Armar: it stays in sight with them where the rest has to scroll.
  void JuntoAlPie(QWidget* linea) { junto_al_pie_ = linea; }

  // Another caption of the window, and with it another title of the messages of the list services.
  void Titular(const QString& titulo);

  // What the .imp export writes from now on (0 events, 1 data), and says then.
  void FijarImp(int tipo, const char* exito);
  // Prints a text that isn't the list and is aligned with blanks, in the way of the list. `origen`: whose it is, as in
  // EncabezadoLista.
  void ImprimirTexto(const std::string& texto, const std::string& origen = {});

  // Lays out or draws pages behind "picInfo", which counts them and can be told to stop.
  void ConPanel(const TrabajoDePaginas& trabajo);

  // A panel that stands in the place of the list. "picInfo", which asks to wait, is there already.
  PanelAviso* Panel(const char* nombre, const char* texto);
  // A text left of the buttons, which takes no room while it is empty.
  QLabel* Linea(const char* nombre);
  static void Decir(QLabel* linea, const QString& texto);
  static void Decir(EtiquetaCopiable* linea, const QString& texto);

  // How this window looks while it works: const Ocupacion ocupacion(*this, AlTrabajar());
  OpcionesOcupacion AlTrabajar();

  // Brings commands up to date, where one depends on more than list, selection and work.
  void Habilitar();

  // The action of a command, by the name of its entry or the key of its button.
  QAction* Accion(std::string_view nombre) const { return acciones_.at(std::string(nombre)).accion; }

  VistaLista& Lista() { return *lista_; }
  const VistaLista& Lista() const { return *lista_; }
  ZonaLista& Zona() { return *zona_; }
  bool HayFilas() const;      // in sight
  bool HayResultado() const;  // whatever the filter

  // Title and date lines of the document, for a file or for the printer.
  virtual EncabezadoLista Encabezado(bool para_imprimir) const = 0;
  // What the .imp export takes; null: nothing was read.
  virtual TablaPtr TablaDeImp() const { return nullptr; }
  // A double click on a row, Enter, or the command Abrir: shows the row in full, or what the window makes of it.
  virtual void Activar();

 private:
  struct AccionVentana {
    QAction* accion = nullptr;
    std::function<bool()> si;
  };

  std::function<void()> UnaVez(std::function<void()> hacer);
  QAction* NuevaAccion(const ComandoVentana& comando);
  QMenu* NuevoMenu(const MenuVentana& menu, QMenu* madre);
  static QList<QWidget*> Alcanzables(QWidget* parte);
  void OrdenarTab();
  void AgregarVer();
  QWidget* Centro();
  QWidget* ListaYLado();
  void DarLugarALaLista(QSplitter& partes);
  void Contar();

  Operador& operador_;
  std::filesystem::path archivo_ayuda_;
  VistaLista* lista_;
  ServiciosLista servicios_;
  std::size_t columna_titulo_;
  std::map<std::string, AccionVentana, std::less<>> acciones_;
  QMenuBar* menu_;
  QToolBar* barra_;
  ZonaLista* zona_;
  PanelAviso* picInfo_;
  QHBoxLayout* lineas_;
  QLabel* lblFiltradas_;
  QWidget* encima_ = nullptr;
  QWidget* debajo_ = nullptr;
  QWidget* al_lado_ = nullptr;
  QWidget* bajo_la_lista_ = nullptr;
  QWidget* junto_al_pie_ = nullptr;
  QMetaObject::Connection por_si_sola_;  // the list takes its width from what stands beside it
  QAction* ver_ = nullptr;               // folds it
  PieDialogo pie_;
};

}  // namespace utr
