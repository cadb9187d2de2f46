#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <filesystem>

#include "retrieved/windows/VistaRegistros.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {

// Windows of records over a recording driver, a scripted operator and a clock that stands at 15/03/2026 10:00:00.
class BancoVistas {
 public:
  template <typename Control>
  static Control* Hijo(const QWidget& ventana, const char* nombre) {
    return &Hallar<Control>(ventana, nombre);
  }

  static void Pulsar(const QWidget& ventana, const char* boton) { Hijo<QAbstractButton>(ventana, boton)->click(); }
  static void Elegir(const QWidget& ventana, const char* entrada) { Hijo<QAction>(ventana, entrada)->trigger(); }
  static std::string Texto(const QWidget& ventana, const char* etiqueta) {
    return U(Hijo<QLabel>(ventana, etiqueta)->text());
  }
  static VistaLista& Lista(const QWidget& ventana) { return *ventana.findChild<VistaLista*>(); }
  static void Fecha(const QWidget& ventana, const char* campo, const QDateTime& fecha) {
    Hijo<QDateTimeEdit>(ventana, campo)->setDateTime(fecha);
  }
  static QDateTime Dia(int dia, int hora = 0) { return {QDate(2026, 3, dia), QTime(hora, 0), Qt::UTC}; }

  // Names of the panels that are seen.
  static std::vector<std::string> Paneles(const QWidget& ventana) {
    std::vector<std::string> nombres;
    for (const PanelAviso* panel : ventana.findChildren<PanelAviso*>()) {
      if (!panel->isHidden()) nombres.push_back(U(panel->objectName()));
    }
    return nombres;
  }

  // All texts that the list shows, row by row, cells joined by "|".
  static std::vector<std::string> Filas(const QWidget& ventana) {
    const ListaTabla& lista = Lista(ventana).Lista();
    std::vector<std::string> filas;
    for (std::size_t fila = 0; fila < lista.Cantidad(); ++fila) {
      std::string texto;
      for (std::size_t columna = 0; columna < lista.LasColumnas().size(); ++columna) {
        texto += (columna == 0 ? "" : "|") + lista.Texto(fila, columna);
      }
      filas.push_back(texto);
    }
    return filas;
  }

  static TablaPtr Canales() {
    return TablaDeCanales({{{"Canal", "1"}, {"Parametro", "3"}, {"Unidad", "1"}},
                           {{"Canal", "15"}, {"Tipo", "5"}, {"CtePluvi", "0.2"}},
                           {{"Canal", "2"}, {"Flags", "0"}},
                           {{"Canal", "5"}, {"Tipo", "4"}}});
  }

  // A stream of the driver: a marker and its samples.
  static TablaPtr Datos(const std::vector<Celdas>& muestras) {
    std::vector<Celdas> filas{{"14/03/2026", "", "", "", "", "", "", ""}};
    filas.insert(filas.end(), muestras.begin(), muestras.end());
    return TablaDeTextos({"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"}, filas);
  }
  static TablaPtr Eventos(const std::vector<Celdas>& eventos) {
    std::vector<Celdas> filas{{"14/03/2026", "", "", "", ""}};
    filas.insert(filas.end(), eventos.begin(), eventos.end());
    return TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2"}, filas);
  }

  prueba::ModPrueba banco;
  ComunicadorFalso& driver = banco.comunicador;
  OperadorGuion& operador = banco.operador;
};

}  // namespace utr
