#pragma once

#include <QDialog>
#include <QPointer>
#include <functional>
#include <map>

#include "lists/Columnas.h"
#include "lists/DocumentoLista.h"
#include "retrieved/Lectores.h"
#include "retrieved/windows/DescripcionVista.h"
#include "session/ModRTU.h"
#include "tables/Tabla.h"
#include "widgets/ServiciosLista.h"

class QAction;
class QDateTimeEdit;
class QFormLayout;
class QLabel;
class QMenuBar;
class QPushButton;
class QToolBar;
class QVBoxLayout;

namespace utr {

class PanelAviso;
class VistaLista;
class ZonaLista;

// Pixels between controls that stand one over the other, and between columns of them.
inline constexpr int kEntreControles = 6;
inline constexpr int kEntreColumnas = 24;

// What the views of data, events and transmission queue share: menu, toolbar, the list with its panels, counters, list
// services, detail, and the way a read runs. While a read runs the window can neither be used nor closed.
class VistaRegistros : public QDialog {
  Q_OBJECT

 protected:
  // One read: what to do and what to say about each outcome.
  struct PedidoLectura {
    std::string procedimiento;  // in the error log
    std::function<FinLectura()> leer;
    PanelAviso* sin_datos;             // what is seen when nothing came
    const char* contador;              // words ahead of the count
    std::function<QString()> periodo;  // the span that was read, asked for when the read ended
    Mensaje al_reves;                  // said about dates the wrong way round
    bool conservar = false;            // the list stays when the dates are the wrong way round
  };

  VistaRegistros(ModRTU& mod, const DescripcionVista& descripcion, Columnas columnas, QWidget* parent);

  // Puts the window together: the frames over the list, the button that closes it below.
  void Armar(QWidget* marcos, QPushButton* cerrar);

  void Leer(const PedidoLectura& pedido);

  // A panel that stands in the place of the list.
  PanelAviso* Panel(const char* nombre, const char* texto);

  // A pair of date pickers, both at today, added to the form with their labels.
  struct Fechas {
    QDateTimeEdit* inicio;
    QDateTimeEdit* fin;
  };
  Fechas AgregarFechas(QFormLayout& caja, const char* formato);

  // "Desde: " and "Hasta: " with the texts of the pickers, as they are printed and shown.
  static std::vector<std::string> LineasDesdeHasta(const Fechas& fechas);
  // "Fecha: " and today.
  std::string LineaFecha() const;
  // The span of a read: that of the pickers, or the moment of a read without one.
  static QString TextoPeriodo(const Fechas& fechas);
  QString TextoMomento() const;
  // What is said as information about dates the wrong way round.
  Mensaje FechasAlReves() const;

  ContextoRegistros Contexto() const { return {mod_.comunicador, mod_.reloj, mod_.catalogo, mod_.registro}; }

  // The command of one of the two frames.
  virtual void Marco(int cual) = 0;
  // Title and date lines of the document, for a file or for the printer.
  virtual EncabezadoLista Encabezado(bool para_imprimir) const = 0;
  virtual const LectorRegistros& Lector() const = 0;

  QAction* AccionDe(Comando comando) const { return acciones_.at(comando); }
  VistaLista& Lista() { return *lista_; }

  void closeEvent(QCloseEvent* evento) override;
  void reject() override;

 private:
  void ArmarMenu(const DescripcionVista& descripcion);
  void ArmarBarra(const DescripcionVista& descripcion);
  void OrdenarTab();
  void Ejecutar(Comando comando);
  void VerDetalle();
  FinLectura LeerOcupada(const std::function<FinLectura()>& leer);
  void Listar(FinLectura fin, const PedidoLectura& pedido);
  void Limpiar();
  void Ocupar(bool ocupada);
  void Habilitar();
  void ContarFiltradas();

  ModRTU& mod_;
  VistaLista* lista_;
  ServiciosLista servicios_;
  std::size_t columna_titulo_;
  std::map<Comando, QAction*> acciones_;
  QMenuBar* menu_;
  QToolBar* barra_;
  ZonaLista* zona_;
  PanelAviso* picInfo_;
  QLabel* lblCantRegistros_;
  QLabel* lblFiltradas_;
  QLabel* lblPeriodo_;
  QWidget* marcos_ = nullptr;
  QPushButton* cerrar_ = nullptr;
  QPointer<QWidget> con_foco_;  // when the read began
  bool ocupada_ = false;
};

// The moment that a picker holds.
FechaHora FechaDe(const QDateTimeEdit& campo);

}  // namespace utr
