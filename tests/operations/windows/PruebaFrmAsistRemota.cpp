#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <map>

#include "operations/windows/AlmacenAsistentesQt.h"
#include "operations/windows/AsistenteParam.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Bitacora = std::vector<std::string>;

class AlmacenFalso : public AlmacenAsistentes {
 public:
  std::string Leer(std::string_view seccion, std::string_view clave) const override {
    const auto valor = valores.find(std::string(seccion) + '/' + std::string(clave));
    return valor == valores.end() ? std::string() : valor->second;
  }
  void Guardar(std::string_view seccion, std::string_view clave, std::string_view valor) override {
    valores[std::string(seccion) + '/' + std::string(clave)] = valor;
  }
  std::map<std::string, std::string> valores;
};

// A unit with two enabled channels and one that is off, a schedule of one entry, the identifier 120 and 9600 bps, over
// COM 3; and the main window in front of it.
class Asistente : public prueba::ModPrueba, public testing::Test {
 protected:
  Asistente() {
    principal.setWindowTitle(Q(kTitulo));
    flujo.Servirse({.estado = [this](std::string_view texto) { dichos.emplace_back(texto); },
                    .verificacion = [this](auto texto, auto) { verificado = texto; }});
    leida = TablaDeCanales({Canal("1", "1"), Canal("4", "0"), Canal("2", "1")});
    comunicador.Devuelve("ConfiguracionAlmacenada", [this](const std::string&) -> TablaPtr {
      const auto escritas = comunicador.Recibidas("GrabarConfiguracion");
      return escritas.empty() ? leida : escritas.back();
    });
    const std::function<TablaPtr(const std::string&)> agenda = [](const std::string&) {
      return TablaDeTextos({"HorarioInteger", "Descripcion", "TCond", "TOblig", "TWind"},
                           {{"480", "OK", "Si", "No", "Si"}});
    };
    comunicador.Devuelve("LeerAgenda", agenda);  // the editor closes what it was given
    comunicador.Devuelve("LeerPagina", "4,1,2,120,0,9,10,0,77");
    const std::function<std::string(const std::string&)> par = [](const std::string& llamada) {
      const int valor = std::stoi(llamada.substr(llamada.find('(') + 1));
      return std::to_string(valor % 256) + '/' + std::to_string(valor / 256);
    };
    comunicador.Devuelve("ConvertirDe", par);
    comunicador.Devuelve("EstadoEnlace", false);
    propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{3}}, Propiedad{std::int64_t{1}});
    propiedades.GrabarYRecargar();
  }

  static FilaDeCanal Canal(const char* numero, const char* flags) {
    return {{"Canal", numero},  {"Tipo", "1"},      {"Flags", flags},   {"TMed", "1"},       {"TRead", "10"},
            {"TEval", "60"},    {"TStorage", "60"}, {"TDiscret", "60"}, {"TCero", "0"},      {"TResetAlarma", "60"},
            {"MaxValid", "10"}, {"MinValid", "0"},  {"MaxSubVal", "2"}, {"MaxBajVal", "2"},  {"MaxSubTx", "1"},
            {"MaxBajTx", "1"},  {"AMax", "9"},      {"AMin", "1"},      {"AlSub", "1"},      {"AlBaj", "1"},
            {"AlMaxPico", "9"}, {"AlMinPico", "1"}, {"Bits", "10"},     {"Resolucion", "3"}, {"RangoNegativo", "66"}};
  }

  // Opens the wizard as the main window does, with an operator who does that in it.
  void Abrir(std::function<void(QDialog&)> operar) {
    ventanas.Espera("frmAsistRemota", [this, operar](QDialog& d) {
      asistente = &d;
      operar(d);
    });
    AsistenteParam(flujo, almacen);
    EXPECT_EQ(operador.ocupado, 0);
  }

  enum Nav { kCancelar = 1, kAnterior, kSiguiente, kFinalizar };
  void Pulsar(Nav boton) { Boton(boton).click(); }
  QAbstractButton& Boton(Nav boton) {
    return Hallar<QAbstractButton>(*asistente, ("cmdNav(" + std::to_string(boton) + ")").c_str());
  }
  template <class Control>
  Control& El(const char* nombre) {
    return Hallar<Control>(*asistente, nombre);
  }
  std::string Texto(const char* nombre) { return U(El<QLabel>(nombre).text()); }
  std::string Aviso(const char* nombre) {
    return El<QWidget>(nombre).isHidden() ? "" : U(El<QWidget>(nombre).accessibleName());
  }
  std::string Paso() {
    return std::to_string(El<QStackedWidget>("pasos").currentIndex()) + ' ' + U(asistente->windowTitle()) +
           (Boton(kFinalizar).isEnabled() ? " F" : "");
  }
  // The states of the list of steps, below that of the backup.
  Bitacora Estados() {
    const ListaTabla& lista = El<VistaLista>("lineas").Lista();
    Bitacora estados;
    for (std::size_t i = 1; i < lista.Cantidad(); ++i) estados.push_back(lista.Texto(i, 1));
    return estados;
  }

  // The sensor dialogs come one after the other: what is typed as AMax in each and accepted, or "-" to cancel it, or
  // "..." to end the round.
  void EsperarCanales(const Bitacora& hechos) {
    for (const std::string& hecho : hechos) {
      ventanas.Espera("frmParamCfg", [this, hecho](QDialog& d) {
        vistos.push_back(U(Hallar<QLabel>(d, "lblRonda").text()) + ": " + U(Hallar<QLineEdit>(d, "Alarmas(0)").text()));
        if (hecho == "...") return Hallar<QAbstractButton>(d, "cmdDejarRestantes").click();
        if (hecho == "-") return Hallar<QAbstractButton>(d, "cmd(1)").click();
        Hallar<QLineEdit>(d, "Alarmas(0)").setText(Q(hecho));
        Hallar<QAbstractButton>(d, "cmd(0)").click();
      });
    }
  }
  void EsperarAgenda(bool acepta, const char* duracion = nullptr) {
    ventanas.Espera("frmAgendas", [this, acepta, duracion](QDialog& d) {
      auto& campo = Hallar<QLineEdit>(d, "txtDuracion");
      vistos.push_back("agenda: " + U(campo.text()));
      if (duracion != nullptr) campo.setText(duracion);
      Hallar<QAbstractButton>(d, acepta ? "cmd(0)" : "cmd(1)").click();
    });
  }
  // From the introduction to the last step.
  void LlegarAlFinal() {
    EsperarCanales({"..."});
    EsperarAgenda(true);
    for (int i = 0; i < 3; ++i) Pulsar(kSiguiente);
    ASSERT_EQ(Paso(), "3 Asistente puesta en marcha: Step 3 F");
  }
  Bitacora Ordenes() const {
    Bitacora ordenes = comunicador.llamadas;
    std::erase_if(ordenes,
                  [](const std::string& o) { return o.starts_with("EstadoPuerto") || o.starts_with("Obtener"); });
    return ordenes;
  }

  QWidget principal;
  LecturaConfiguracion lectura{mod};
  FlujoLectura flujo{mod, lectura, principal};
  AlmacenFalso almacen;
  GuionVentanas ventanas;
  TablaPtr leida;
  Bitacora dichos;
  Bitacora vistos;
  std::string verificado;
  QDialog* asistente = nullptr;
};

const Mensaje kConcluida{"La puesta en marcha de la UTR ha concluido satisfactoriamente",
                         "Asistente puesta en marcha: Step 3", Icono::kInformacion, Botones::kAceptar};

TEST_F(Asistente, DeLaUTRHastaElFinalYLaRelectura) {
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{120}}, Propiedad{std::int64_t{0}});
  propiedades.GrabarYRecargar();
  Abrir([this](QDialog&) {
    EXPECT_EQ(Paso(), "0 Asistente para puesta en marcha de la UTR");
    EXPECT_FALSE(Boton(kAnterior).isEnabled());
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "1 Asistente puesta en marcha: Step 1");
    EXPECT_EQ(Texto("LabelP1"), "Cargar configuración desde:");
    EsperarCanales({"8.5", "-"});
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2");
    EXPECT_EQ(Texto("lblStep(2)"), "Seleccione y verifique la agenda a escribir a la UTR");
    EsperarAgenda(true, "300");
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "3 Asistente puesta en marcha: Step 3 F");
    EXPECT_FALSE(Boton(kSiguiente).isEnabled());
    EXPECT_EQ(Texto("lblStep(3)"), "Haga clic en Finalizar para poner en marcha la UTR");
    EXPECT_TRUE(El<QCheckBox>("CHKRadio").isChecked());
    EXPECT_EQ(El<QLineEdit>("TxtRadio").text(), "120");
    EXPECT_EQ(El<QComboBox>("CVel").currentText(), "9600");
    EXPECT_EQ(Texto("lblCambioVelocidad"), "");
    El<QLineEdit>("TxtRadio").setText("300");
    El<QComboBox>("CVel").setCurrentText("19200");
    EXPECT_EQ(Texto("lblCambioVelocidad"), "La UTR pasará a 19200 bps");
    operador.Espera(kConcluida);
    operador.al_preguntar = [this] { EXPECT_EQ(Estados(), Bitacora(10, "hecho")); };
    Pulsar(kFinalizar);
  });
  EXPECT_THAT(vistos, ElementsAre("Canal 1 de 2: 9", "Canal 2 de 2: 9", "agenda: 10"));
  EXPECT_THAT(Ordenes(),
              ElementsAre("ConfiguracionAlmacenada(si)",                           // step 1
                          "LeerAgenda()", "LeerPagina(0,no)", "LeerPagina(0,no)",  // step 2, the identifier
                          "GrabarConfiguracion(tabla)",                            //
                          "GrabarAgenda(tabla)", "LeerPagina(0,no)", "ConvertirDe(300)",
                          "EscribirPagina(0,4,1,2,120,0,9,44,1,77)",               //
                          "EscribirPagina(34,0,0,0)", "EscribirPagina(35,1,0,0)",  //
                          "LeerPagina(0,no)", "ConvertirDe(300)", "EscribirPagina(0,4,1,2,44,1,9,10,0,77)",
                          "LeerPagina(0,no)", "EscribirPagina(0,5,1,2,120,0,9,10,0,77)",  //
                          "BorrarFlash()", "GrabarFechaHora()", "ReiniciarUTR(44)",       //
                          "EstadoEnlace()", "Conectar(19200n,8,1,3)", "ModoConexion(si)", "Conectar(19200,n,8,1,3)",
                          "IdEquipo(300)", "ConfiguracionAlmacenada(si)"));
  EXPECT_THAT(reloj.esperas, ElementsAre(2, 10, 15));
  EXPECT_EQ(Filas(*comunicador.Recibidas("GrabarConfiguracion").at(0), {"Canal", "Flags", "AMax"}),
            (Bitacora{"1|1|8.5", "4|0|9", "2|1|9"}));
  EXPECT_THAT(dichos, ElementsAre("Aguarde...Releyendo configuración del equipo", ""));
  EXPECT_THAT(verificado, testing::EndsWith("valores escritos y verificados"));
  EXPECT_TRUE(lectura.EsDelEquipoActual());
  EXPECT_EQ(propiedades.LeerEntero(clave::kVelocidad, 0), 19200);
  EXPECT_EQ(principal.windowTitle(), "Administración y configuración - KV7340 : Identificador: 300");
}

// Over IP and in a call the link isn't opened anew, and the settings keep the address.
TEST_F(Asistente, PorIPYEnLlamadaElEnlaceQueda) {
  for (const bool por_ip : {true, false}) {
    SCOPED_TRACE(por_ip);
    conexion.FijarPorIP(por_ip);
    if (!por_ip) conexion.Llamar("1", "");
    comunicador.llamadas.clear();
    Abrir([this](QDialog&) {
      LlegarAlFinal();
      EXPECT_EQ(Texto("lblCambioVelocidad"), "La UTR pasará a 9600 bps");
      operador.Espera(kConcluida);
      Pulsar(kFinalizar);
    });
    const Bitacora ordenes = Ordenes();
    ASSERT_GE(ordenes.size(), 3U);
    EXPECT_THAT(Bitacora(ordenes.end() - 3, ordenes.end()),
                ElementsAre("EstadoEnlace()", "IdEquipo(0)", "ConfiguracionAlmacenada(si)"));
    EXPECT_EQ(propiedades.LeerEntero(clave::kVelocidad, -1), -1);
  }
}

TEST_F(Asistente, UnaFallaSeDiceYOtroIntentoPuedeOCancelarRelee) {
  comunicador.Devuelve("BorrarFlash", false);
  Abrir([this](QDialog&) {
    LlegarAlFinal();
    const auto fallar = [this] {
      operador.Espera(
          Mensaje{"La operación solicitada no puede ser completada\n[No se ha podido borrar la flash]\n"
                  "Ejecute el asistente de nuevo",
                  "Asistente puesta en marcha: Step 3", Icono::kCritico, Botones::kAceptar});
      Pulsar(kFinalizar);
      EXPECT_THAT(Estados(), ElementsAre("hecho", "hecho", "hecho", "hecho", "hecho", "hecho", "hecho", "no confirmado",
                                         "no alcanzado", "no alcanzado"));
      EXPECT_EQ(Texto("lblStep(3)"), "No se ha podido borrar la flash");
      EXPECT_TRUE(El<QWidget>("pgbProgreso").isHidden());
      EXPECT_EQ(Paso(), "3 Asistente puesta en marcha: Step 3 F");
    };
    fallar();
    // Again, from a step before.
    Pulsar(kAnterior);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2 F");
    fallar();
    comunicador.llamadas.clear();
    Pulsar(kCancelar);
  });
  EXPECT_THAT(Ordenes(), ElementsAre("Conectar(9600,n,8,1,3)", "IdEquipo(0)", "ConfiguracionAlmacenada(si)"));
  EXPECT_NE(Errores().find("\"FrmAsistRemotas\",\"SetStep\""), std::string::npos);
  EXPECT_EQ(reloj.esperas, std::vector<double>{});
}

TEST_F(Asistente, UnaRelecturaQueFallaSeDiceYLaTablaYaNoEsDeLaUTR) {
  lectura.Preparar("RTU");
  Abrir([this](QDialog&) {
    LlegarAlFinal();
    operador.Espera(kConcluida);
    operador.al_preguntar = [this] { comunicador.Falla("ConfiguracionAlmacenada", Error(8020, "d", "no responde")); };
    operador.Espera(Mensaje{"La operación solicitada no puede completarse\n[no responde]",
                            "Administración y configuración - KV7340", Icono::kCritico, Botones::kAceptar});
    Pulsar(kFinalizar);
  });
  EXPECT_FALSE(lectura.LeidaDeLaUTR());
  EXPECT_EQ(dichos.back(), "");
  EXPECT_NE(Errores().find("\"frmPpal\",\"AsistenteParam\""), std::string::npos);
}

TEST_F(Asistente, ElPuertoQueNoAbreDejaEnLosAjustesLaUTRComoQuedo) {
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{120}}, Propiedad{std::int64_t{0}});
  Abrir([this](QDialog&) {
    LlegarAlFinal();
    El<QLineEdit>("TxtRadio").setText("300");
    El<QComboBox>("CVel").setCurrentText("19200");
    operador.Espera(kConcluida);
    operador.al_preguntar = [this] { comunicador.Falla("Conectar", Error(8005, "d", "tomado")); };
    operador.EsperaParte("La operación solicitada no puede completarse\n[tomado]");
    Pulsar(kFinalizar);
  });
  EXPECT_EQ(Ordenes().back(), "Conectar(19200n,8,1,3)");
  propiedades.CargarPropiedades();
  EXPECT_EQ(propiedades.LeerEntero(clave::kVelocidad, 0), 19200);
  EXPECT_EQ(propiedades.LeerEntero(clave::kIdentificador, 0), 300);
}

TEST_F(Asistente, SinIdentificadorConCartuchoYElEnlaceEnPie) {
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{120}}, Propiedad{std::int64_t{0}});
  principal.setWindowTitle("con identificador");
  comunicador.Devuelve("EstadoEnlace", true);
  Abrir([this](QDialog&) {
    LlegarAlFinal();
    El<QCheckBox>("CHKRadio").setChecked(false);
    El<QCheckBox>("chkBorrarDatos(1)").setChecked(true);
    EXPECT_EQ(El<VistaLista>("lineas").Lista().Texto(0, 0), "Respaldo de los canales de la UTR");
    operador.Espera(kConcluida);
    Pulsar(kFinalizar);
  });
  const Bitacora ordenes = Ordenes();
  EXPECT_THAT(ordenes, testing::IsSupersetOf({"EscribirPagina(0,4,1,2,0,0,9,10,0,77)", "BorrarCartucho()"}));
  const Bitacora final{"EstadoEnlace()", "Conectar(9600,n,8,1,3)", "IdEquipo(0)", "ConfiguracionAlmacenada(si)"};
  EXPECT_THAT(Bitacora(ordenes.end() - 4, ordenes.end()), ElementsAreArray(final));
  EXPECT_EQ(propiedades.LeerEntero(clave::kVelocidad, -1), -1);
  EXPECT_EQ(U(principal.windowTitle()), kTitulo);
}

TEST_F(Asistente, LosAjustesQueNoSePuedenGuardarRigenIgual) {
  std::filesystem::remove(carpeta / "AdminUTR.dll");
  std::filesystem::create_directories(carpeta / "AdminUTR.dll" / "x");
  Abrir([this](QDialog&) {
    LlegarAlFinal();
    El<QComboBox>("CVel").setCurrentText("1200");
    operador.Espera(kConcluida);
    operador.EsperaParte("La operación solicitada no puede ser completada\n[No se puede escribir el archivo");
    Pulsar(kFinalizar);
  });
  EXPECT_THAT(comunicador.De("Conectar"), ElementsAre("Conectar(1200n,8,1,3)", "Conectar(1200,n,8,1,3)"));
}

TEST_F(Asistente, LoCanceladoOVacioDejaElPaso) {
  Abrir([this](QDialog&) {
    Pulsar(kSiguiente);
    for (const auto& [opcion, operacion] :
         {std::pair("OptionXML", "CargarConfiguracion"), std::pair("optcfgPrevia", "")}) {
      El<QAbstractButton>(opcion).click();
      operador.EsperaAbrir("Abrir configuración...", std::nullopt);
      Pulsar(kSiguiente);
      EXPECT_EQ(Paso(), "1 Asistente puesta en marcha: Step 1");
      if (*operacion == '\0') continue;
      for (const TablaPtr& vacia : {TablaPtr(), TablaDeCanales({})}) {
        comunicador.Devuelve(operacion, vacia);
        operador.EsperaAbrir("Abrir configuración...", "x.icf");
        operador.Espera(Mensaje{"La operación solicitada no puede ser completada\n[La configuración no tiene canales]",
                                "Asistente puesta en marcha: Step 1", Icono::kCritico, Botones::kAceptar});
        Pulsar(kSiguiente);
        EXPECT_EQ(Paso(), "1 Asistente puesta en marcha: Step 1");
      }
    }
    EXPECT_EQ(operador.pedidos.front().filtro, "Archivos de configuración (*.icf)|*.icf");
    EXPECT_EQ(operador.pedidos.back().filtro, "Configuración UTR(*.ucg)|*.ucg");
    // All off: no round, and the step says so.
    El<QAbstractButton>("OptionXML").click();
    comunicador.Devuelve("CargarConfiguracion", TablaDeCanales({Canal("1", "0"), Canal("1", "1")}));
    operador.EsperaAbrir("Abrir configuración...", "x.icf");
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2");
    EXPECT_EQ(
        Aviso("avisoCanalesLeidos"),
        "Hay canales repetidos: EA01 (canal 1). Vale la primera fila de cada uno.\nNingún canal está habilitado.");
    EsperarAgenda(false);
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2");
    EXPECT_EQ(Texto("lblStep(2)"), "Seleccione y verifique la agenda a escribir a la UTR");
    comunicador.Devuelve("LeerAgenda", TablaDeTextos({"HorarioInteger", "Descripcion"}));
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2");
    EXPECT_THAT(Aviso("avisoAgenda"), testing::StartsWith("No hay una agenda de la cual partir"));
    comunicador.Falla("LeerAgenda", Error(7, "driver", "roto"));
    operador.Espera("La operación solicitada no puede ser completada\n[roto]\nEjecute el asistente de nuevo");
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2");
    comunicador.llamadas.clear();
    asistente->close();
  });
  EXPECT_THAT(Ordenes(), IsEmpty());
  EXPECT_EQ(lectura.RecConfig(), nullptr);
}

TEST_F(Asistente, VolverYAvanzarMuestraLoCambiadoSinCargarDeNuevo) {
  Abrir([this](QDialog&) {
    EsperarCanales({"8.5", "..."});
    EsperarAgenda(true, "77");
    for (int i = 0; i < 3; ++i) Pulsar(kSiguiente);
    comunicador.llamadas.clear();
    Pulsar(kAnterior);
    EXPECT_EQ(Texto("lblStep(2)"), "Este paso ya fué ejecutado");
    Pulsar(kAnterior);
    EXPECT_EQ(Paso(), "1 Asistente puesta en marcha: Step 1 F");
    EXPECT_EQ(Texto("LabelP1"), "Este paso ya fué ejecutado");
    EXPECT_FALSE(El<QWidget>("OptionXML").isEnabled());
    EXPECT_NE(El<QWidget>("OptionXML").toolTip(), "");
    EsperarCanales({"-", "-"});
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2");
    EsperarAgenda(false, "99");
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2") << "a cancelled editor";
    EsperarAgenda(true);
    Pulsar(kSiguiente);
    EXPECT_THAT(Ordenes(), ElementsAre("LeerPagina(0,no)"));
    Pulsar(kCancelar);
  });
  EXPECT_THAT(vistos, ElementsAre("Canal 1 de 2: 9", "Canal 2 de 2: 9", "agenda: 10", "Canal 1 de 2: 8.5",
                                  "Canal 2 de 2: 9", "agenda: 77", "agenda: 77"));
  // Each review is kept, and comes back as a saved configuration.
  std::filesystem::path revisada;
  for (const auto& entrada : std::filesystem::directory_iterator(lectura.CarpetaDeRespaldos())) {
    if (entrada.path().string().ends_with("asistente.ucg")) revisada = entrada.path();
  }
  Abrir([&](QDialog&) {
    Pulsar(kSiguiente);
    El<QAbstractButton>("optcfgPrevia").click();
    operador.EsperaAbrir("Abrir configuración...", revisada);
    EsperarCanales({"..."});
    Pulsar(kSiguiente);
    EXPECT_EQ(operador.pedidos.back().carpeta, lectura.CarpetaDeRespaldos());
    EXPECT_EQ(vistos.back(), "Canal 1 de 2: 8.5");
    Pulsar(kCancelar);
  });
}

TEST_F(Asistente, ElIdentificadorFueraDeRangoSeRechazaAntesDeEscribir) {
  comunicador.Devuelve("LeerPagina", "4,1,2,64,156,9,10,0");
  const Mensaje rango{"Ingrese un valor numérico comprendido entre 1 y 32760", "Atencion", Icono::kNinguno,
                      Botones::kAceptar};
  Abrir([&](QDialog&) {
    LlegarAlFinal();
    auto& campo = El<QLineEdit>("TxtRadio");
    EXPECT_EQ(campo.text(), "40000");
    comunicador.llamadas.clear();
    operador.Espera(rango);
    Pulsar(kFinalizar);
    EXPECT_THAT(Ordenes(), IsEmpty());
    EXPECT_EQ(campo.text(), "40000");
    campo.clearFocus();
    for (const auto& [texto, mensaje] :
         {std::pair("32761", rango), std::pair("", Mensaje{"Ingrese un valor numerico", "Atencion"})}) {
      campo.setText(texto);
      operador.Espera(mensaje);
      emit campo.editingFinished();
      EXPECT_EQ(campo.text(), "1");
    }
    campo.setText("32760");
    emit campo.editingFinished();
    EXPECT_EQ(campo.text(), "32760");
    // Nothing to say of a field that is off, nor when the wizard goes.
    campo.setText("0");
    El<QCheckBox>("CHKRadio").setChecked(false);
    emit campo.editingFinished();
    El<QCheckBox>("CHKRadio").setChecked(true);
    campo.setFocus();
    Pulsar(kCancelar);
  });
}

TEST_F(Asistente, LoQueNoPudoLeerseNoSeElimina) {
  const std::tuple<const char*, const char*, bool> paginas[] = {
      {"", "0", true}, {"4", "0", true}, {"4,1,2,0,0,9,10,0", "0", false}, {"4,1,2,44,1,9,10,0", "300", false}};
  Abrir([&](QDialog&) {
    LlegarAlFinal();
    for (const auto& [pagina, identificador, sin_leer] : paginas) {
      SCOPED_TRACE(pagina);
      comunicador.Devuelve("LeerPagina", pagina);
      Pulsar(kAnterior);
      EsperarAgenda(true);
      Pulsar(kSiguiente);
      EXPECT_EQ(U(El<QLineEdit>("TxtRadio").text()), identificador);
      EXPECT_EQ(El<QCheckBox>("CHKRadio").isChecked(), std::string_view(identificador) != "0");
      EXPECT_EQ(Aviso("avisoRadio").empty(), !sin_leer);
    }
    Pulsar(kCancelar);
  });
}

TEST_F(Asistente, LaPresentacionSeSalteaSiSePidio) {
  Abrir([this](QDialog&) {
    El<QCheckBox>("chkShowIntro").click();
    Pulsar(kCancelar);
  });
  EXPECT_EQ(almacen.valores["UTRStartUp/IntroductionScreen"], "ShowIntro");
  Abrir([this](QDialog&) {
    EXPECT_EQ(Paso(), "1 Asistente puesta en marcha: Step 1");
    Pulsar(kAnterior);
    EXPECT_TRUE(El<QCheckBox>("chkShowIntro").isChecked());
    El<QCheckBox>("chkShowIntro").click();
    Pulsar(kCancelar);
  });
  EXPECT_EQ(almacen.valores["UTRStartUp/IntroductionScreen"], "");
  AlmacenAsistentesQt().Guardar("UTRStartUp", "IntroductionScreen", "ShowIntro");
  EXPECT_EQ(AlmacenAsistentesQt().Leer("UTRStartUp", "IntroductionScreen"), "ShowIntro");
}

TEST_F(Asistente, UnPasoQueCabeNoSeDesplazaPorLosDemas) {
  Abrir([this](QDialog& d) {
    constexpr int kBaja = 360;  // enough for the first step, too little for the last one
    d.resize(d.width(), kBaja);
    QCoreApplication::processEvents();
    ASSERT_EQ(d.height(), kBaja);
    ASSERT_GT(El<QWidget>("fraStep(3)").minimumSizeHint().height(), kBaja);
    for (const QScrollArea* area : d.findChildren<QScrollArea*>()) {
      EXPECT_TRUE(!area->isVisible() || area->verticalScrollBar()->maximum() == 0);
    }
    Pulsar(kCancelar);
  });
}

TEST_F(Asistente, ElVientoSeForzaYSeAvisa) {
  FilaDeCanal veleta = Canal("3", "1");
  veleta.push_back({"Tipo", "3"});
  FilaDeCanal anemometro = Canal("2", "1");
  anemometro.push_back({"Tipo", "2"});
  anemometro.push_back({"TRead", "7"});
  leida = TablaDeCanales({veleta, anemometro});
  Abrir([this](QDialog&) {
    Pulsar(kSiguiente);
    EsperarCanales({"..."});
    operador.Espera(
        Mensaje{"La veleta y el anemometro deben tener el mismo Tread y Tstorage\n"
                "Se han forzados los tiempos de la veleta igual al del anemometro",
                "Atención   ", Icono::kNinguno, Botones::kAceptar});
    Pulsar(kSiguiente);
    EXPECT_EQ(Paso(), "2 Asistente puesta en marcha: Step 2");
    const std::string aviso = Aviso("avisoVeleta");
    EXPECT_THAT(aviso, testing::StartsWith("La veleta (EA03) no cumple:"));
    Pulsar(kAnterior);
    EsperarCanales({"..."});
    Pulsar(kSiguiente);
    EXPECT_EQ(Aviso("avisoVeleta"), aviso) << "as long as it does";
    Pulsar(kCancelar);
  });
}

// Somebody who clicks, types and closes while the sequence runs.
TEST_F(Asistente, NadaSeCierraNiSeRepiteMientrasEscribe) {
  mod.atender = [] { QCoreApplication::processEvents(); };
  Abrir([this](QDialog&) {
    LlegarAlFinal();
    comunicador.al_llamar = [this](const std::string& llamada) {
      if (!llamada.starts_with("Borrar") && !llamada.starts_with("Escribir")) return;
      asistente->close();
      EncolarClic(&Boton(kFinalizar));
      EncolarClic(&Boton(kCancelar));
      EncolarTecla(asistente, Qt::Key_Escape);
    };
    operador.Espera(kConcluida);
    operador.al_preguntar = [this] { comunicador.al_llamar = {}; };
    Pulsar(kFinalizar);
  });
  EXPECT_EQ(comunicador.Cuantas("GrabarConfiguracion"), 1U);
  EXPECT_EQ(comunicador.Cuantas("ReiniciarUTR"), 1U);
}

}  // namespace
}  // namespace utr
