#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <memory>

#include "shell/windows/frmPpal.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"

namespace utr {

// The main window over stand-ins: a unit that answers at once, with two channels and the right time.
class ConPpal : public prueba::ModPrueba, public testing::Test {
 protected:
  ConPpal() {
    comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({{{"Canal", "1"}}, {{"Canal", "2"}}}));
    comunicador.Devuelve("LeerFechaHora", "15/03/2026 10:00:00");
    comunicador.Devuelve("ObtenerPuertos", "9600,n,8,1");
  }

  // Makes and loads the window, with an operator who accepts or cancels the first dialog.
  void Cargar(bool acepta = true) {
    ventanas.Espera("frmPresentacion",
                    [acepta](QDialog& d) { Pulsar(d, acepta ? "AceptarLecturaCFG" : "CancelarLecturaCFG"); });
    ventana = std::make_unique<frmPpal>(mod);
    ventana->Cargar();
    ventana->show();
  }
  // The same, forgetting the calls that it took.
  void CargarYOlvidar(bool acepta = true) {
    Cargar(acepta);
    comunicador.llamadas.clear();
  }

  // The list of channels comes, is looked at and closed.
  void EsperarLista(const std::function<void(QDialog&)>& mirar = {}) {
    ventanas.Espera("frmParametrizacion", [mirar](QDialog& d) {
      if (mirar) mirar(d);
      d.close();
    });
  }

  // The driver's calls but the two that only show the link, which come at each of its changes.
  std::vector<std::string> Ordenes() const {
    std::vector<std::string> ordenes = comunicador.llamadas;
    std::erase_if(ordenes, [](const std::string& o) { return o == "EstadoPuerto()" || o == "ObtenerPuertos()"; });
    return ordenes;
  }

  static void Pulsar(QObject& donde, const char* nombre) { Hallar<QAbstractButton>(donde, nombre).click(); }
  QAction& Accion(const char* nombre) { return Hallar<QAction>(*ventana, nombre); }
  void Ejecutar(const char* nombre) { Accion(nombre).trigger(); }
  void Elegir(int indice) { Ejecutar(qPrintable(QString("mnuAcciones(%1)").arg(indice))); }
  std::string Panel(const char* nombre) { return Hallar<QLabel>(*ventana, nombre).text().toStdString(); }
  std::string Titulo() { return ventana->windowTitle().toStdString(); }
  bool Conectado() {
    EXPECT_NE(Accion("Conected").isChecked(), Accion("Disconected").isChecked());
    return Accion("Conected").isChecked();
  }

  GuionVentanas ventanas;
  std::unique_ptr<frmPpal> ventana;
};

}  // namespace utr
