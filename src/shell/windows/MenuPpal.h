#pragma once

#include <QAction>
#include <QMainWindow>
#include <QObject>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "session/SituacionDelEnlace.h"
#include "shell/windows/ListaAcciones.h"
#include "widgets/Ayuda.h"

class QActionGroup;
class QLabel;
class QMenu;
class QToolBar;

namespace utr {

class Apariencia;

// Menus and toolbar of the main window. They tell what was asked for and show the states that they are given.
class MenuPpal : public QObject {
  Q_OBJECT

 public:
  explicit MenuPpal(QMainWindow* ventana);

  void FijarVista(Vista vista);
  void FijarOrden(bool ascendente);
  void FijarConexion(bool conectado);
  // Shows or hides the two connection buttons with their separator.
  void MostrarConexion(bool visible);

  // Appends theme and size of text to "&Ver"; they change `apariencia`, which must outlive the window.
  void OfrecerApariencia(Apariencia& apariencia);

  // What opens the help is off while there is none.
  void HabilitarAyuda(bool hay);

  // Who is at the other end of the link: always in sight, at the end of the menu bar.
  void MostrarUnidad(ClaseDeUnidad clase);

  // A toolbar button by its key.
  QAction* Boton(const std::string& clave) const { return botones_.at(clave); }

 signals:
  void Accion(int indice);
  void Avanzada(int indice);
  void Visita(int indice);
  void VistaPedida(Vista vista);
  void OrdenPedido(bool ascendente);
  void Conectar();
  void Desconectar();
  void BarraDeEstado(bool visible);
  void AyudaPedida(EntradaAyuda entrada);
  void QueEsEsto();
  void TecladoPedido();
  void AcercaDe();
  void Salir();

 private:
  void ArmarAcciones(QMainWindow* ventana);
  void ArmarConexion(QMainWindow* ventana);
  void ArmarVer(QMainWindow* ventana);
  void ArmarVisita(QMainWindow* ventana);
  void ArmarAyuda(QMainWindow* ventana);
  void ArmarBarra(QMainWindow* ventana);
  QAction* Agregar(QToolBar* barra, const char* clave, const char* texto, const char* icono, QActionGroup* grupo);

  std::array<QAction*, 4> vistas_{};
  std::map<std::string, QAction*> botones_;
  std::vector<QAction*> de_ayuda_;
  QMenu* ver_ = nullptr;
  QAction* separador_ = nullptr;
  QLabel* unidad_;
};

}  // namespace utr
