#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTreeView>

#include "schedule/windows/MostrarAgenda.h"
#include "schedule/windows/frmAgendas.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kPregunta = "En esta acción se va a escribir y reiniciar la agenda\n¿Desea continuar?";
constexpr const char* kBorrarElegidos = "Esta acción eliminará el/los horario/s seleccionado/s\n¿Desea continuar?";
constexpr const char* kBorrarTodos =
    "Esta acción eliminará todos los horarios establecidos en la agenda\n¿Desea continuar?";
constexpr const char* kFalla = "La operación solicitada no puede completarse\n[ sin respuesta ]";
constexpr const char* kExito = "La agenda fue modificada con éxito";
constexpr const char* kSinGrabar = "La agenda no pudo ser grabada";
const Error kSilencio(8020, "driver", "sin respuesta");

void Pulsar(const QObject& ventana, const char* boton) {
  Hallar<QAbstractButton>(ventana, boton).click();
}
void Elegir(const QObject& ventana, const char* entrada) {
  Hallar<QAction>(ventana, entrada).trigger();
}
void Escribir(const QObject& ventana, const char* campo, const char* texto) {
  auto& linea = Hallar<QLineEdit>(ventana, campo);
  linea.selectAll();
  QTest::keyClick(&linea, Qt::Key_Delete);
  QTest::keyClicks(&linea, texto);
}
std::string Campo(const QObject& ventana, const char* campo) {
  return U(Hallar<QLineEdit>(ventana, campo).text());
}
std::string Texto(const QObject& ventana, const char* etiqueta) {
  return U(Hallar<QLabel>(ventana, etiqueta).text());
}
QDateTimeEdit& Hora(const QObject& ventana, const char* campo = "HorarioInicio") {
  return Hallar<QDateTimeEdit>(ventana, campo);
}
std::string Horas(const QObject& ventana) {
  std::string horas;
  const ListaTabla& lista = Hallar<VistaLista>(ventana, nullptr).Lista();
  for (std::size_t i = 0; i < lista.Cantidad(); ++i) horas += lista.Texto(i, 0).substr(0, 5) + ' ';
  return horas;
}

// A unit with three entries and a window of 10 minutes, at 10:00.
class PruebaAgendas : public prueba::ModPrueba, public testing::Test {
 protected:
  PruebaAgendas() {
    const std::function<TablaPtr(const std::string&)> agenda = [](const std::string&) {
      return TablaDeTextos({"HorarioInteger", "Descripcion", "TCond", "TOblig", "TWind"},
                           {{"1200", "OK", "No", "Si", "Si"},
                            {"480", "OK", "Si", "No", "Si"},
                            {"1", "Libre"},
                            {"720", "OK", "No", "No", "No"}});
    };
    comunicador.Devuelve("LeerAgenda", agenda);
    comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,10,0,9");
    comunicador.Devuelve("ConvertirDe", "10/0");
  }

  // The editor by the road of the main window; `paso` leaves it.
  void Procesar(const std::function<void(QDialog&)>& paso) {
    ventanas.Espera("frmAgendas", paso);
    ProcesarAgenda(flujo);
    ventanas.Comprobar();
    operador.Comprobar();
  }
  void NuevoHorario(const QObject& editor, const std::function<void(QDialog&)>& paso) {
    ventanas.Espera("frmUno", paso);
    Elegir(editor, "mnuAgenHorarioNuevo");
  }
  void NuevoPeriodo(const QObject& editor, const std::function<void(QDialog&)>& paso) {
    ventanas.Espera("frmPeriodos", paso);
    Elegir(editor, "mnuAgenPeriodoNuevo");
  }
  static void Aceptar(QDialog& dialogo) { Pulsar(dialogo, "cmd(0)"); }
  static void Cancelar(QDialog& dialogo) { Pulsar(dialogo, "cmd(1)"); }

  QWidget principal;
  LecturaConfiguracion lectura{mod};
  FlujoLectura flujo{mod, lectura, principal};
  GuionVentanas ventanas;
};

TEST_F(PruebaAgendas, SeLeeSeEditaYSeGraba) {
  Procesar([&](QDialog& editor) {
    EXPECT_EQ(Horas(editor), "08:00 12:00 20:00 ");
    EXPECT_EQ(Campo(editor, "txtDuracion"), "10");
    EXPECT_THAT(U(Hallar<QPlainTextEdit>(editor, "txtProximas").toPlainText()),
                HasSubstr("Próximo horario: 12:00 (sin tipo de transmisión), en 2 h\n12:00"));
    NuevoHorario(editor, [&](QDialog& uno) {
      EXPECT_EQ(Hora(uno).time(), QTime(20, 30));
      EXPECT_TRUE(Hallar<QLabel>(uno, "lblEstaba").isHidden());
      EXPECT_EQ(Texto(editor, "lblEstado"), "La agenda tiene 4 horarios");
      Hora(uno).setTime(QTime(8, 3));
      Hallar<QCheckBox>(uno, "chkCond").setChecked(false);
      Aceptar(uno);
    });
    EXPECT_EQ(Horas(editor), "08:00 08:03 12:00 20:00 ");
    EXPECT_EQ(Hallar<VistaLista>(editor, nullptr).FilaActual(), 1U) << "the entry that was just made";
    EXPECT_THAT(U(Hallar<QPlainTextEdit>(editor, "txtProximas").toPlainText()),
                HasSubstr("Atención: 08:00 y 08:03 se superponen"));
    Escribir(editor, "txtDuracion", "5");
    operador.Espera({kPregunta, "Configuración de Agenda", Icono::kPregunta, Botones::kSiNo, {}, Respuesta::kNo},
                    Respuesta::kNo);
    Aceptar(editor);
    EXPECT_TRUE(editor.isVisible());
    comunicador.llamadas.clear();
    operador.Espera(kPregunta, Respuesta::kSi);
    comunicador.al_llamar = [&](const std::string&) {
      editor.close();  // an impatient operator
      EXPECT_TRUE(editor.isVisible());
      EXPECT_TRUE(Hallar<QWidget>(editor, "picInfo").isVisible());
    };
    operador.Espera({kExito, flujo.Titulo(), Icono::kInformacion, Botones::kAceptar});
    Aceptar(editor);
  });
  EXPECT_THAT(comunicador.llamadas, ElementsAre("GrabarAgenda(tabla)", "LeerPagina(0,no)", "ConvertirDe(5)",
                                                "EscribirPagina(0,4,7,3,120,0,1,10,0,9)", "ReiniciarAgenda(41)"));
  EXPECT_THAT(
      Filas(*comunicador.Recibidas("GrabarAgenda").front(), {"key", "HorarioInteger", "TOblig", "TWind", "TCond"}),
      ElementsAre("480|480|No|Si|Si", "1230|483|Si|Si|No", "720|720|No|No|No", "1200|1200|Si|Si|No"));
}

// What of the unit fails, and what is seen of it.
TEST_F(PruebaAgendas, LoQueNoSeLeeSeVe) {
  const char* sin_leer = "No se puede leer la agenda de la UTR\nVerifique conexión";
  comunicador.Devuelve("LeerAgenda", TablaPtr());
  operador.Espera({sin_leer, "Atención", Icono::kCritico, Botones::kAceptar});
  Procesar([](QDialog& editor) {
    EXPECT_EQ(Texto(editor, "lblNoLeida"), "La agenda de la UTR no se leyó: lo que se grabe la reemplaza entera");
    EXPECT_TRUE(Hallar<QLabel>(editor, "lblNoLeida").isVisible());
    EXPECT_EQ(Campo(editor, "txtDuracion"), "5");
    editor.reject();
  });
  comunicador.Devuelve("LeerAgenda", TablaDeTextos({"HorarioInteger"}));
  operador.Espera({"Sin datos para grabar", "Configuración de Agenda", Icono::kExclamacion, Botones::kAceptar});
  Procesar([](QDialog& editor) {
    EXPECT_FALSE(Hallar<QLabel>(editor, "lblNoLeida").isVisible()) << "an empty schedule was read";
    Aceptar(editor);
    EXPECT_TRUE(editor.isVisible());
    editor.reject();
  });
  comunicador.Falla("LeerAgenda", kSilencio);
  operador.Espera({kFalla, flujo.Titulo(), Icono::kCritico, Botones::kAceptar});
  ProcesarAgenda(flujo);
  EXPECT_EQ(comunicador.Cuantas("LeerPagina"), 0U);
}

TEST_F(PruebaAgendas, ElTecladoLlegaATodo) {
  Procesar([&](QDialog& editor) {
    for (const char* control : {"Lista", "txtProximas", "cmd(0)", "cmd(1)", "txtDuracion", "Lista"}) {
      EXPECT_EQ(U(editor.focusWidget()->objectName()), control);
      QTest::keyClick(editor.focusWidget(), Qt::Key_Tab);
    }
    const auto entrar = [](QDialog& dialogo) {
      auto& cancelar = Hallar<QWidget>(dialogo, "cmd(1)");
      cancelar.setFocus();
      QTest::keyClick(&cancelar, Qt::Key_Return);
      EXPECT_FALSE(dialogo.isVisible());
    };
    NuevoHorario(editor, entrar);
    EXPECT_EQ(Texto(editor, "lblEstado"), "La agenda tiene 3 horarios") << "Enter is the button's on which it comes";
    entrar(editor);
  });
}

// Backspace over the hour and nothing typed instead: what was there, not 00.
TEST_F(PruebaAgendas, UnaHoraVaciaQuedaComoEstaba) {
  Procesar([&](QDialog& editor) {
    NuevoHorario(editor, [](QDialog& uno) {
      Hora(uno).setSelectedSection(QDateTimeEdit::HourSection);
      QTest::keyClick(&Hora(uno), Qt::Key_Backspace);
      EXPECT_EQ(U(Hora(uno).text()), ":30");
      QTest::keyClick(&Hora(uno), Qt::Key_Return);
    });
    EXPECT_EQ(Horas(editor), "08:00 12:00 20:00 20:30 ");
    editor.reject();
  });
}

TEST_F(PruebaAgendas, SinLaPagina0NoSeAbre) {
  comunicador.Devuelve("LeerPagina", "");
  operador.Espera("La operación solicitada no puede completarse\n[ La página 0 no pudo leerse ]");
  ProcesarAgenda(flujo);
  EXPECT_THAT(Errores(), HasSubstr("\"frmPpal\",\"ProcesarAgenda\""));
}

TEST_F(PruebaAgendas, CadaFallaAlGrabarDiceLoSuyo) {
  const struct {
    const char* operacion;
    const char* falla;
    const char* final;
  } casos[] = {{"GrabarAgenda", "Error grabando agenda", kSinGrabar},
               {"EscribirPagina", "Error grabando duración de ventana de agenda", kSinGrabar},
               {"ReiniciarAgenda", "Error reiniciando agenda", kExito}};
  for (const auto& caso : casos) {
    comunicador.Devuelve(caso.operacion, false);
    operador.Espera(kPregunta, Respuesta::kSi);
    operador.Espera({caso.falla, "Configuración de Agenda", Icono::kCritico, Botones::kAceptar});
    operador.Espera(caso.final);
    Procesar(Aceptar);
    comunicador.Devuelve(caso.operacion, true);
  }
}

// An error in the middle leaves the editor open; a second try is possible, "&Salir" goes with what there is.
TEST_F(PruebaAgendas, UnErrorAlGrabarDejaLaVentanaAbierta) {
  const struct {
    const char* salida;
    const char* mensaje;
  } casos[] = {{"mnuSalir", kSinGrabar}, {"cmd(1)", nullptr}, {"cmd(0)", kExito}};
  for (const auto& caso : casos) {
    comunicador.Falla("EscribirPagina", kSilencio, 1);
    Procesar([&](QDialog& editor) {
      operador.Espera(kPregunta, Respuesta::kSi);
      operador.Espera({kFalla, "Configuración de Agenda", Icono::kCritico, Botones::kAceptar});
      Aceptar(editor);
      EXPECT_TRUE(editor.isVisible());
      EXPECT_FALSE(Hallar<QWidget>(editor, "picInfo").isVisible());
      if (*caso.salida == 'm') {
        operador.Espera(caso.mensaje);
        return Elegir(editor, caso.salida);
      }
      if (caso.mensaje != nullptr) {
        operador.Espera(kPregunta, Respuesta::kSi);
        operador.Espera(caso.mensaje);
      }
      Pulsar(editor, caso.salida);
    });
  }
}

// The proposal is there already: the old entry is handed out, and Cancelar takes it, though the list goes on showing
// it.
TEST_F(PruebaAgendas, CancelarQuitaElHorarioQueYaEstaba) {
  Procesar([&](QDialog& editor) {
    Hallar<VistaLista>(editor, nullptr).Elegir(0);
    ventanas.Espera("frmUno", [](QDialog& uno) {
      Hora(uno).setTime(QTime(19, 30));
      Aceptar(uno);
    });
    Elegir(editor, "mnuAgendaAbrir");
    EXPECT_EQ(Horas(editor), "12:00 19:30 20:00 ");
    Hallar<VistaLista>(editor, nullptr).ClicColumna(0);
    EXPECT_EQ(Horas(editor), "20:00 19:30 12:00 ") << "12:30 comes next";
    NuevoHorario(editor, Aceptar);
    Hallar<VistaLista>(editor, nullptr).ClicColumna(0);
    EXPECT_EQ(Horas(editor), "20:00 19:30 12:30 12:00 ");
    NuevoHorario(editor, [&](QDialog& uno) {
      EXPECT_EQ(Texto(uno, "lblEstaba"), "Ya está en la agenda: se edita el horario 12:30; Cancelar lo quita");
      Cancelar(uno);
    });
    EXPECT_EQ(Horas(editor), "20:00 19:30 12:30 12:00 ");
    EXPECT_EQ(Texto(editor, "lblEstado"), "La agenda tiene 3 horarios");
    Hallar<VistaLista>(editor, nullptr).Elegir(2);
    operador.EsperaParte("La operación solicitada no puede ser completada\n[");
    Elegir(editor, "mnuAgendaAbrir");
    operador.Espera(kBorrarElegidos, Respuesta::kSi);
    Hallar<QTreeView>(editor, "Lista").selectAll();
    Elegir(editor, "mnuDelSelection");
    EXPECT_EQ(Horas(editor), "");
    editor.reject();
  });
}

TEST_F(PruebaAgendas, PasadaLaMedianocheSeGuardaLoQueSeVe) {
  frmAgendas editor(mod);
  FDLHorarios agenda;
  agenda.Add(1425);
  editor.Horarios(agenda);
  editor.RecargarLista();
  NuevoHorario(editor, [](QDialog& uno) {
    EXPECT_EQ(Hora(uno).time(), QTime(0, 15));
    Aceptar(uno);
  });
  EXPECT_EQ(editor.Horarios().Item(1455)->Horario, 15);
  EXPECT_EQ(agenda.Count(), 1) << "the one that was handed in is nobody's but its owner's";
}

TEST_F(PruebaAgendas, UnPeriodoDiceQueAgregoYQueCambio) {
  Procesar([&](QDialog& editor) {
    const auto escribir = [](QDialog& periodos, QTime desde, QTime hasta, const char* paso) {
      Hora(periodos).setTime(desde);
      Hora(periodos, "HorarioFin").setTime(hasta);
      Escribir(periodos, "PeriodoAgenda", paso);
      Aceptar(periodos);
    };
    operador.Espera("El horario de inicio debe ser inferior al horario de finalización");
    operador.Espera("Debe ingresar un período mayor que cero");
    operador.Espera("Debe ingresar un período mayor que cero");
    NuevoPeriodo(editor, [&](QDialog& periodos) {
      EXPECT_EQ(Hora(periodos).time(), QTime(20, 30));
      EXPECT_EQ(Hora(periodos, "HorarioFin").time(), QTime(2, 30));
      Aceptar(periodos);
      escribir(periodos, QTime(7, 0), QTime(9, 0), "");
      escribir(periodos, QTime(7, 0), QTime(9, 0), "00");
      EXPECT_TRUE(periodos.isVisible());
      Hallar<QCheckBox>(periodos, "chkTxOblig").setChecked(true);
      escribir(periodos, QTime(7, 0), QTime(9, 0), "x3-0");
    });
    EXPECT_EQ(Horas(editor), "07:00 07:30 08:00 08:30 09:00 12:00 20:00 ");
    EXPECT_EQ(Texto(editor, "lblEstado"),
              "La agenda tiene 7 horarios. Se agregaron 4 horarios. Ya estaba y tomó estos tipos: 08:00");
    operador.EsperaParte("La operación solicitada no puede ser completada\n[");
    NuevoPeriodo(editor, [&](QDialog& periodos) { escribir(periodos, QTime(0, 0), QTime(23, 59), "32768"); });
    EXPECT_THAT(Texto(editor, "lblEstado"), HasSubstr("La agenda tiene 7 horarios"));
    NuevoPeriodo(editor, [&](QDialog& periodos) { escribir(periodos, QTime(0, 0), QTime(23, 59), "10"); });
    operador.EsperaParte("Como máximo se admiten 50");
    Aceptar(editor);
    editor.reject();
  });
}

TEST_F(PruebaAgendas, SeBorraSoloConUnSi) {
  Procesar([&](QDialog& editor) {
    Hallar<VistaLista>(editor, nullptr).Elegir(1);
    for (const Respuesta respuesta : {Respuesta::kNo, Respuesta::kCerrado}) {
      operador.Espera(kBorrarElegidos, respuesta);
      Elegir(editor, "mnuDelSelection");
      operador.Espera(kBorrarTodos, respuesta);
      Elegir(editor, "mnuDeleteAll");
    }
    EXPECT_EQ(Horas(editor), "08:00 12:00 20:00 ");
    operador.Espera(kBorrarElegidos, Respuesta::kSi);
    Elegir(editor, "mnuDelSelection");
    EXPECT_EQ(Horas(editor), "08:00 20:00 ");
    EXPECT_FALSE(Hallar<QAction>(editor, "mnuDelSelection").isEnabled()) << "nothing is selected any more";
    operador.Espera(kBorrarTodos, Respuesta::kSi);
    Elegir(editor, "mnuDeleteAll");
    EXPECT_EQ(Horas(editor), "");
    for (const char* entrada : {"mnuAgendaAbrir", "mnuAgenGuardarComo", "mnuAgenPrint", "mnuDeleteAll"})
      EXPECT_FALSE(Hallar<QAction>(editor, entrada).isEnabled()) << entrada;
    NuevoHorario(editor, [](QDialog& uno) {
      EXPECT_EQ(Hora(uno).time(), QTime(0, 0));
      Cancelar(uno);
    });
    editor.reject();
  });
}

// Another column orders the list until its next rebuild; the buttons turn the order over, whichever is pressed.
TEST_F(PruebaAgendas, CadaRecargaDevuelveElOrdenDeLosHorarios) {
  Procesar([&](QDialog& editor) {
    auto& lista = Hallar<VistaLista>(editor, nullptr);
    EXPECT_EQ(lista.ColumnaOrdenada(), 0U);
    lista.ClicColumna(1);
    EXPECT_EQ(Horas(editor), "20:00 08:00 12:00 ");
    Pulsar(editor, "Sort Descending");
    EXPECT_EQ(Horas(editor), "08:00 12:00 20:00 ");
    NuevoHorario(editor, Aceptar);
    EXPECT_EQ(Horas(editor), "08:00 12:00 20:00 20:30 ");
    EXPECT_EQ(lista.ColumnaOrdenada(), 0U);
    Pulsar(editor, "Sort Ascending");
    EXPECT_EQ(Horas(editor), "20:30 20:00 12:00 08:00 ");
    editor.reject();
  });
}

TEST_F(PruebaAgendas, LaDuracionEscritaQueSeReemplazaSeDice) {
  Procesar([&](QDialog& editor) {
    Escribir(editor, "txtDuracion", "60x");
    EXPECT_THAT(U(Hallar<QPlainTextEdit>(editor, "txtProximas").toPlainText()),
                HasSubstr("20:00 obligatoria, por ventana hasta las 21:00"));
    NuevoHorario(editor, Aceptar);
    EXPECT_EQ(Campo(editor, "txtDuracion"), "10");
    EXPECT_EQ(Texto(editor, "lblEstado"),
              "La agenda tiene 4 horarios. Duración: vuelve a 10 min.; se había escrito 60");
    NuevoHorario(editor, Aceptar);
    EXPECT_THAT(Texto(editor, "lblEstado"), HasSubstr("se había escrito 60"));
    Escribir(editor, "txtDuracion", "4");
    EXPECT_EQ(Texto(editor, "lblEstado"), "La agenda tiene 5 horarios");
    EXPECT_THAT(U(Hallar<QPlainTextEdit>(editor, "txtProximas").toPlainText()), HasSubstr("hasta las 20:10"))
        << "4 is no window";
    Escribir(editor, "txtDuracion", "5,5");
    EXPECT_EQ(Texto(editor, "lblEstado"), "La agenda tiene 5 horarios. La ventana escrita vale 55 min.");
    Escribir(editor, "txtDuracion", "4");
    operador.Espera("Debe ingresar un valor válido de ventana");
    Aceptar(editor);
    editor.reject();
  });
}

TEST_F(PruebaAgendas, EnModoColeccionNoSeEscribeNada) {
  frmAgendas editor(mod);
  editor.SoloColeccion = true;
  FDLHorarios otra;
  otra.Add(1);
  editor.Horarios(otra);
  ASSERT_TRUE(editor.LeerAgenda());
  EXPECT_EQ(editor.Horarios().Count(), 3);
  comunicador.llamadas.clear();
  ventanas.Espera("frmAgendas", [](QDialog& dialogo) {
    Escribir(dialogo, "txtDuracion", "30");
    Aceptar(dialogo);
  });
  editor.exec();
  EXPECT_TRUE(editor.Acepto);
  EXPECT_FALSE(editor.Grabado);
  EXPECT_EQ(editor.Horarios().DuracionVentana, 30);
  EXPECT_THAT(comunicador.llamadas, testing::IsEmpty());
}

TEST_F(PruebaAgendas, ElTituloDelArchivoNoEsElDelPapel) {
  Procesar([&](QDialog& editor) {
    operador.EsperaGuardar("Exportar ...", carpeta / "agenda.txt");
    operador.Espera("La lista ha sido exportada con éxito");
    Elegir(editor, "mnuAgenGuardarComo");
    operador.EsperaImpresora("Configurar Impresora", EleccionImpresora{"Oficina", 1});
    Elegir(editor, "mnuAgenPrint");
    editor.reject();
  });
  const std::string documento =
      "\r\nFecha: 15/03/2026\r\nHorario\tTOblig\tTCond\tTWind\r\n08:00:00\tNo\tSi\tSi\r\n12:00:00\tNo\tNo\tNo\r\n"
      "20:00:00\tSi\tNo\tSi";
  EXPECT_EQ(prueba::LeerTodo(carpeta / "agenda.txt"), "Configuración de Agenda de la RTU" + documento);
  EXPECT_THAT(impresora.trabajos, ElementsAre("Oficina:Configuración de Agenda de la UTR" + documento));
}

}  // namespace
}  // namespace utr
