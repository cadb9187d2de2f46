#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

#include "configuration/Predefinidas.h"
#include "configuration/windows/frmParamCfg.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "widgets/CampoNumero.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

using C = CampoSensor;
using testing::HasSubstr;

class ParamCfg : public prueba::ModPrueba, public testing::Test {
 protected:
  ParamCfg() {
    for (const char* archivo : {"Parametros.xml", "Unidades.xml"}) {
      std::filesystem::copy_file(std::filesystem::path(CARPETA_DATOS) / archivo, carpeta / archivo);
    }
  }

  // A channel of that kind whose values pass.
  static ConfigPtr Canal(const char* tipo, const char* canal) {
    auto c = std::make_shared<Config>();
    c->Tipo = tipo;
    c->Canal = canal;
    c->Flags = "1";
    c->Resolucion = "1";
    c->Parametro = "2";
    c->Unidad = "1";
    c->RangoNegativo = "66";
    c->CtePluvi = 0.2541;
    const std::pair<C, const char*> textos[] = {
        {C::kTMed, "1"},       {C::kTRead, "10"},     {C::kTEval, "60"},         {C::kTStorage, "10"},
        {C::kTDiscret, "60"},  {C::kTCero, "1440"},   {C::kTResetAlarma, "720"}, {C::kMaxValid, "100"},
        {C::kMinValid, "0"},   {C::kMaxSubVal, "10"}, {C::kMaxBajVal, "10"},     {C::kMaxSubTx, "10"},
        {C::kMaxBajTx, "10"},  {C::kAMax, "90"},      {C::kAMin, "10"},          {C::kAlSub, "5"},
        {C::kAlBaj, "5"},      {C::kAlMaxPico, "95"}, {C::kAlMinPico, "5"},      {C::kRangoMin, "0"},
        {C::kRangoMax, "100"}, {C::kCero, "0"},       {C::kSpan, "4095"},        {C::kBits, "7"}};
    for (const auto& [campo, texto] : textos) (*c).*DatosDe(campo).valor = texto;
    return c;
  }

  void Abrir(ConfigPtr config, ModoEdicion modo = ModoEdicion::kTodo, const ConfigColl* coleccion = nullptr) {
    dialogo = std::make_unique<frmParamCfg>(mod);
    dialogo->SoloLectura = modo == ModoEdicion::kSoloLectura;
    dialogo->SoloParametros = modo == ModoEdicion::kSoloParametros;
    dialogo->FijarColeccion(coleccion);
    dialogo->FijarConfiguracion(std::move(config));
    dialogo->show();
  }

  template <class Control>
  Control& El(const char* nombre) {
    return Hallar<Control>(*dialogo, nombre);
  }
  CampoNumero& Campo(C campo) { return El<CampoNumero>(DatosDe(campo).control); }
  std::string Texto(C campo) { return U(Campo(campo).text()); }
  // As an operator changes a field and goes on to the next.
  void Teclear(C campo, const char* texto) {
    Campo(campo).setText(texto);
    emit Campo(campo).editingFinished();
  }
  void Pulsar(const char* boton) { El<QPushButton>(boton).click(); }
  std::string Habilitados() {
    std::string nombres;
    for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
      if (Campo(static_cast<C>(i)).isEnabled()) nombres += std::string(DatosDe(static_cast<C>(i)).control) + " ";
    }
    return nombres;
  }

  GuionVentanas ventanas;
  std::unique_ptr<frmParamCfg> dialogo;
};

struct Cara {
  const char* tipo;
  const char* canal;
  CaraSensor cara;
  const char* nivel;
};
constexpr Cara kCaras[] = {
    {"0", "1", CaraSensor::kLimnimetro, "Nivel de Referencia (Limnímetro): "},
    {"0", "4", CaraSensor::kAnalogico, "Constante a sumar al valor escalado: "},
    {"1", "4", CaraSensor::kMeteorologico, "Nivel de Referencia (Limnímetro): "},
    {"2", "2", CaraSensor::kVelocidad, "Constante a sumar al valor escalado:"},
    {"3", "3", CaraSensor::kDireccion, "Nivel de Referencia (Limnímetro): "},
    {"4", "5", CaraSensor::kSupervisionAnalogica, "Nivel de Referencia (Limnímetro): "},
    {"5", "15", CaraSensor::kPluviometro, "Nivel de Referencia (Limnímetro): "},
    {"7", "16", CaraSensor::kSupervisionDigital, "Nivel de Referencia (Limnímetro): "},
};

// Every field of every kind, at opening in each mode and after a change of the kind.
TEST_F(ParamCfg, CadaTipoYModoConSusCampos) {
  const auto activa = [](C campo, CaraSensor cara) {
    const Celda celda = CeldaDe(campo, cara);
    return celda == Celda::kActiva || celda == Celda::kReiniciada;
  };
  for (const Cara& cara : kCaras) {
    for (const ModoEdicion modo : {ModoEdicion::kTodo, ModoEdicion::kSoloParametros, ModoEdicion::kSoloLectura}) {
      SCOPED_TRACE(std::string(cara.tipo) + "/" + cara.canal + "/" + std::to_string(static_cast<int>(modo)));
      Abrir(Canal(cara.tipo, cara.canal), modo);
      const bool todo = modo == ModoEdicion::kTodo;
      const bool edita = modo != ModoEdicion::kSoloLectura;
      for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
        const auto campo = static_cast<C>(i);
        const DatosCampo& dato = DatosDe(campo);
        const bool limite = campo >= C::kMaxValid && campo <= C::kAlMinPico;
        const bool escala = campo >= C::kRangoMin;
        const bool marco = !escala || activa(C::kFrameCFG, cara.cara);
        EXPECT_EQ(Campo(campo).isEnabled(), activa(campo, cara.cara) && marco && (limite ? edita : todo))
            << dato.control;
        EXPECT_EQ(Campo(campo).isHidden(), CeldaDe(campo, cara.cara) == Celda::kOculta) << dato.control;
        EXPECT_EQ(El<QLabel>(dato.rotulo_control).buddy(), &Campo(campo));
        EXPECT_EQ(Campo(campo).accessibleName(), El<QLabel>(dato.rotulo_control).text());
        const auto* pasos = dialogo->findChild<QWidget*>(Q(std::string("UpD") + dato.control));
        EXPECT_TRUE(pasos == nullptr || pasos->isEnabled() == Campo(campo).isEnabled()) << dato.control;
      }
      EXPECT_EQ(El<QLabel>("LNivRefLmn").text(), Q(cara.nivel));
      EXPECT_EQ(El<QWidget>("FrameDig").isEnabled(), todo && activa(C::kFrameDig, cara.cara));
      EXPECT_EQ(El<QWidget>("CAlarmaON").isEnabled(), todo && activa(C::kAlarmaOn, cara.cara));
      EXPECT_EQ(El<QWidget>("FlagsParam(0)").isEnabled(), todo && activa(C::kOpciones, cara.cara));
      EXPECT_EQ(El<QWidget>("FlagsParam(2)").isEnabled(), todo && activa(C::kTresHilos, cara.cara));
      EXPECT_EQ(El<QWidget>("FlagsParam(3)").isEnabled(), todo && activa(C::kFiltroOlas, cara.cara));
      EXPECT_EQ(El<QWidget>("cboTiposSensores").isEnabled(), todo && activa(C::kTipos, cara.cara));
      EXPECT_EQ(El<QWidget>("LeerParam").isEnabled(), edita);
      EXPECT_TRUE(El<QWidget>("FlagsParam(1)").isHidden());
    }
  }
  Abrir(Canal("6", "4"));
  EXPECT_EQ(Habilitados(), "") << "an unknown kind edits nothing";
  El<QComboBox>("cboTiposSensores").setCurrentIndex(0);
  EXPECT_THAT(Habilitados(), HasSubstr("Periodos(0)"));
}

TEST_F(ParamCfg, MuestraElCanalYLoGuardaComoEstaba) {
  const ConfigPtr config = Canal("2", "2");
  config->NivRefLmn = "1.5";
  config->Pila = "4";
  config->Cero = "1,\xff\nx";
  config->Span = std::string(40, '7');
  config->Parametro = "999";
  config->RangoNegativo = "55";
  const Config antes = *config;
  Abrir(config);
  EXPECT_EQ(El<QLineEdit>("Canal").text(), "2");
  EXPECT_EQ(El<QLineEdit>("txtCanal").text(), "EA02");
  EXPECT_EQ(El<QLabel>("lblDescEntrada").text(), "Tipo de Entrada: Entrada Analógica");
  EXPECT_EQ(El<QLineEdit>("Pila").text(), "4");
  EXPECT_EQ(El<QComboBox>("cboTiposSensores").currentText(), "Velocidad de Viento");
  EXPECT_EQ(El<QComboBox>("cboParametros").itemText(0), "(ninguno)");
  EXPECT_EQ(El<QComboBox>("cboParametros").currentIndex(), -1);
  EXPECT_EQ(El<QComboBox>("cboUnidades").itemText(0), "-");
  EXPECT_EQ(El<QComboBox>("cboUnidades").currentData().toInt(), 1);
  EXPECT_EQ(El<QLabel>("lblParametro").text(), "Velocidad de Viento");
  EXPECT_EQ(El<QLabel>("lblRangoNegativo").text(), "PEND.NEG");
  EXPECT_EQ(Texto(C::kNivRefLmn), "1.5") << "the reset of the kind comes ahead of the values";
  EXPECT_EQ(Texto(C::kPluviometro), "0.254");
  Pulsar("cmd(0)");
  EXPECT_TRUE(dialogo->Acepto);
  EXPECT_TRUE(config->Modificado);
  for (const auto campo : {&Config::Cero, &Config::Span, &Config::Parametro, &Config::Unidad, &Config::NivRefLmn,
                           &Config::Bits, &Config::TRead, &Config::Tipo, &Config::Flags}) {
    EXPECT_EQ((*config).*campo, antes.*campo);
  }
  EXPECT_EQ(config->CtePluvi, 0.2541);
  EXPECT_EQ(config->RangoNegativo, "66");
}

TEST_F(ParamCfg, LasOpcionesVanYVuelven) {
  const std::tuple<const char*, const char*, const char*, const char*> casos[] = {
      {"0", "1", "31", "31"}, {"0", "4", "9", "1"}, {"5", "15", "17", "1"}, {"7", "16", "5", "5"}};
  for (const auto& [tipo, canal, flags, sin_diferencial] : casos) {
    const ConfigPtr config = Canal(tipo, canal);
    config->Flags = flags;
    config->TStorage = "10";
    Abrir(config);
    const int bits = std::stoi(flags);
    EXPECT_EQ(El<QCheckBox>("CAlarmaON").isChecked(), (bits & 2) != 0);
    EXPECT_EQ(El<QRadioButton>("optEstadoNormal(1)").isChecked(), (bits & 4) != 0);
    auto& diferencial = El<QCheckBox>("chkFlagRegis_Dif");
    EXPECT_EQ(diferencial.isChecked(), (bits & (*canal == '1' && canal[1] == '5' ? 16 : 8)) != 0) << canal;
    if (std::string(flags) != "31") diferencial.setChecked(false);
    Pulsar("cmd(0)");
    EXPECT_EQ(config->Flags, sin_diferencial) << tipo;
  }
  const ConfigPtr puerta = Canal("7", "16");
  Abrir(puerta);
  El<QRadioButton>("optEstadoNormal(1)").click();
  Pulsar("cmd(0)");
  EXPECT_EQ(puerta->Flags, "5");
  EXPECT_EQ(puerta->RangoMax, "0");
}

TEST_F(ParamCfg, SoloLoTecleadoTieneConsecuencias) {
  Abrir(Canal("0", "1"));
  Teclear(C::kRangoMax, "200");
  for (const C campo : {C::kAMax, C::kMaxValid, C::kMaxSubVal, C::kAlSub}) EXPECT_EQ(Texto(campo), "200");
  EXPECT_EQ(Texto(C::kBits), "8");
  Teclear(C::kNivRefLmn, "5");
  EXPECT_EQ(Texto(C::kAMax), "205");
  Campo(C::kAMax).setText("150");
  emit Campo(C::kRangoMax).editingFinished();
  emit Campo(C::kNivRefLmn).editingFinished();
  EXPECT_EQ(Texto(C::kAMax), "150") << "walking by changes nothing";
  Teclear(C::kBits, "3");
  EXPECT_EQ(Texto(C::kBits), "8");
  El<QComboBox>("cboResol").setCurrentIndex(1);
  EXPECT_EQ(Texto(C::kBits), "11");
  Teclear(C::kRangoMin, "300");
  EXPECT_EQ(El<QLabel>("lblRangoNegativo").text(), "PEND.NEG");
  Teclear(C::kNivRefLmn, "0");
  // A typed text counts also where its field was never left.
  Campo(C::kRangoMin).setText("50");
  operador.Espera(
      "Error en los valores ingresados\n"
      "El valor de MaxValid debe ser menor o igual al valor maximo entre el Rango Maximo o el Rango Minimo "
      "mas el nivel de refencia");
  Campo(C::kMaxValid).setText("9999");
  Pulsar("cmd(0)");
  EXPECT_EQ(Texto(C::kAMin), "50");
  EXPECT_FALSE(dialogo->Acepto);
  // The change of a kind that resets the level is none of the operator's.
  Abrir(Canal("0", "2"));
  Teclear(C::kNivRefLmn, "5");
  El<QComboBox>("cboTiposSensores").setCurrentText("Velocidad de Viento");
  EXPECT_EQ(Texto(C::kNivRefLmn), "0");
  emit Campo(C::kNivRefLmn).editingFinished();
  EXPECT_EQ(Texto(C::kAMax), "95");
}

TEST_F(ParamCfg, LosPasosYElPeriodoDeLectura) {
  Abrir(Canal("5", "15"));
  const auto paso = [this](const char* pasos, int cual) {
    El<QWidget>(pasos).findChildren<QToolButton*>().at(cual)->click();
  };
  paso("UpDPeriodos(1)", 0);
  EXPECT_EQ(Texto(C::kTRead), "12");
  EXPECT_EQ(Texto(C::kTStorage), "12");
  EXPECT_EQ(Texto(C::kTEval), "60") << "disabled";
  Teclear(C::kTRead, "7");
  EXPECT_EQ(Texto(C::kTStorage), "12") << "no divisor of the day";
  Campo(C::kTRead).setText("30");
  EXPECT_EQ(Texto(C::kTStorage), "12") << "not at a keystroke";
  emit Campo(C::kTRead).editingFinished();
  EXPECT_EQ(Texto(C::kTStorage), "30");
  paso("UpDCtePluvi", 0);
  EXPECT_EQ(Texto(C::kPluviometro), "0.26");
  Teclear(C::kPluviometro, "0");
  EXPECT_EQ(Texto(C::kPluviometro), "0.25");
  QKeyEvent abajo(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QApplication::sendEvent(&Campo(C::kPluviometro), &abajo);
  EXPECT_EQ(Texto(C::kPluviometro), "0.24");
}

TEST_F(ParamCfg, CadaCampoTomaSusCaracteres) {
  Abrir(Canal("0", "1"));
  const auto pulsar = [](QWidget& campo, const char* letra, Qt::KeyboardModifiers con = Qt::NoModifier) {
    QKeyEvent tecla(QEvent::KeyPress, letra[0] == 'v' ? Qt::Key_V : Qt::Key_unknown, con, letra);
    QApplication::sendEvent(&campo, &tecla);
  };
  for (const auto& [campo, queda] : {std::pair(C::kTRead, "12"), std::pair(C::kAMax, "-1.,2")}) {
    Campo(campo).clear();
    for (const char* letra : {"x", "-", "1", "@", ".", ",", "é", "2", " "}) pulsar(Campo(campo), letra);
    EXPECT_EQ(Texto(campo), queda);
    Campo(campo).clear();
    QApplication::clipboard()->setText("a-1.\n,2 ñ");
    pulsar(Campo(campo), "v", Qt::ControlModifier);
    EXPECT_EQ(Texto(campo), queda);
    // The same from the menu of the field and from a composed text, in place of what is selected.
    Campo(campo).setText("x77x");
    Campo(campo).setSelection(1, 2);
    Campo(campo).paste();
    EXPECT_EQ(Texto(campo), std::string("x") + queda + "x") << "what was there stays";
    QInputMethodEvent compuesto;
    compuesto.setCommitString("ñ5");
    QApplication::sendEvent(&Campo(campo), &compuesto);
    EXPECT_EQ(Texto(campo), std::string("x") + queda + "5x");
  }
}

TEST_F(ParamCfg, LosReparosSeVenEnSusCampos) {
  const ConfigPtr config = Canal("0", "1");
  config->AMax = "101";
  Abrir(config);
  EXPECT_TRUE(Campo(C::kAMax).Marcado()) << "at opening";
  EXPECT_THAT(U(Campo(C::kAMax).accessibleDescription()), HasSubstr("El valor de la alarma de máxima debe ser menor"));
  EXPECT_EQ(Campo(C::kAMax).toolTip(), Campo(C::kAMax).accessibleDescription());
  EXPECT_TRUE(Campo(C::kRangoMax).Marcado());
  EXPECT_FALSE(Campo(C::kTRead).Marcado());
  EXPECT_EQ(U(El<QLabel>("lblReparos").text()), "No se cumple 1 regla: Alarma de Máxima (AMax).");
  Campo(C::kTRead).setText("7");
  EXPECT_TRUE(Campo(C::kTRead).Marcado()) << "while it is typed";
  EXPECT_THAT(U(El<QLabel>("lblReparos").text()), HasSubstr("La primera: Período de Lectura (TRead)"));
  Campo(C::kTRead).setText("10");
  Campo(C::kAMax).setText("100");
  EXPECT_FALSE(Campo(C::kAMax).Marcado());
  EXPECT_TRUE(El<QWidget>("marcoReparos").isHidden());
}

TEST_F(ParamCfg, ElRenglonDiceQueRemediaUnCampoApagado) {
  const std::tuple<const char*, const char*, std::string Config::*, ModoEdicion, const char*, const char*> casos[] = {
      {"0", "1", &Config::TRead, ModoEdicion::kSoloParametros, "use \"Leer\" o \"Configurar\".", "LeerParam"},
      {"0", "1", &Config::Bits, ModoEdicion::kSoloParametros, "use \"Configurar\".", nullptr},
      {"0", "1", &Config::TRead, ModoEdicion::kSoloLectura, "use \"Configurar\".", nullptr},
      {"5", "15", &Config::TEval, ModoEdicion::kTodo, "use \"Aceptar\".", "cmd(0)"},
      {"3", "3", &Config::AlSub, ModoEdicion::kTodo, "use \"Leer\".", "LeerParam"},
      {"0", "1", &Config::AMax, ModoEdicion::kTodo, "La primera: Alarma de Máxima (AMax).", "Alarmas(0)"}};
  for (const auto& [tipo, canal, campo, modo, final, destino] : casos) {
    const ConfigPtr config = Canal(tipo, canal);
    (*config).*campo = "0";
    if (campo == &Config::AMax) config->AMax = config->AMin = "101";
    Abrir(config, modo);
    EXPECT_THAT(U(El<QLabel>("lblReparos").text()), testing::EndsWith(final)) << tipo;
    EXPECT_EQ(El<QWidget>("cmdReparo").isHidden(), destino == nullptr) << tipo;
    if (destino == nullptr) continue;
    Pulsar("cmdReparo");
    EXPECT_EQ(dialogo->focusWidget(), &El<QWidget>(destino)) << tipo;
  }
}

TEST_F(ParamCfg, AceptarPasoAPaso) {
  const ConfigPtr config = Canal("0", "1");
  Abrir(config, ModoEdicion::kSoloLectura);
  Pulsar("cmd(0)");
  EXPECT_FALSE(dialogo->Acepto);
  EXPECT_FALSE(dialogo->isVisible());
  EXPECT_FALSE(config->Modificado);

  Abrir(Canal("4", "5"));
  operador.Espera(Mensaje{"Debe seleccionar un Tipo de Sensor para el Canal seleccionado", "Atención",
                          Icono::kExclamacion, Botones::kAceptar});
  Pulsar("cmd(0)");
  EXPECT_TRUE(dialogo->isVisible());

  Abrir(config);
  Teclear(C::kTMed, "0");
  operador.Espera(
      Mensaje{"Error en los valores ingresados\nTiempo de Medición (TMed): no puede(n) ser menor(es) o "
              "igual(es) a cero",
              "Atención", Icono::kExclamacion, Botones::kAceptar});
  Pulsar("cmd(0)");
  EXPECT_EQ(config->TMed, "1");
  Teclear(C::kTMed, "2");
  Teclear(C::kCero, "12,5");
  operador.Espera("Error en los valores ingresados\nCero (Cuentas) no es un número");
  Pulsar("cmd(0)");
  Teclear(C::kCero, "12.5");
  Pulsar("cmd(0)");
  EXPECT_TRUE(dialogo->Acepto);
  EXPECT_EQ(config->TMed, "2");
  EXPECT_EQ(config->Cero, "12.5");
  EXPECT_EQ(config->AlMaxPico, "90") << "forced";

  Abrir(config);
  Teclear(C::kTMed, "3");
  dialogo->close();
  EXPECT_FALSE(dialogo->Acepto);
  EXPECT_EQ(config->TMed, "2");
}

TEST_F(ParamCfg, SoloParametrosDejaLaIdentidad) {
  const ConfigPtr config = Canal("1", "4");
  Abrir(config, ModoEdicion::kSoloParametros);
  Campo(C::kRangoMax).setText("500");
  El<QComboBox>("cboTiposSensores").setCurrentIndex(1);
  Teclear(C::kAMax, "80");
  Campo(C::kTRead).setText("5");
  Pulsar("cmd(0)");
  EXPECT_EQ(config->AMax, "80");
  EXPECT_EQ(config->TRead, "5");
  EXPECT_EQ(config->RangoMax, "100");
  EXPECT_EQ(config->Tipo, "1");
  EXPECT_EQ(config->Rango, "");
}

TEST_F(ParamCfg, LeerPoneUnaPredefinida) {
  const auto archivo = carpeta / "ParametrizacionesEjemplo.ipf";
  std::filesystem::copy_file(std::filesystem::path(CARPETA_DATOS) / "ParametrizacionesEjemplo.ipf", archivo);
  const ConfigPtr config = Canal("0", "1");
  Abrir(config);
  operador.EsperaAbrir("Abrir parametrizaciones...", std::nullopt);
  operador.Espera("No hay parametrizaciones definidas para este tipo de sensor");
  Pulsar("LeerParam");
  EXPECT_EQ(El<QLabel>("lblArchivo").text(), "Sin archivo");

  operador.EsperaAbrir("Abrir parametrizaciones...", archivo);
  ventanas.Espera("frmPredefinidas", [](QDialog& ventana) { Hallar<QPushButton>(ventana, "cmd(0)").click(); });
  const TablaPtr conjuntos = LeerPredefinidas(archivo);
  FiltrarFamilia(*conjuntos, 1);
  conjuntos->MoveFirst();
  const auto aplicacion = AplicarPredefinida(0, conjuntos->Texto("Parametros"), ValoresDe(*config));
  ASSERT_NE(AvisoDePredefinida(aplicacion), "");
  operador.Espera(AvisoDePredefinida(aplicacion));
  Pulsar("LeerParam");
  EXPECT_EQ(El<QLabel>("lblArchivo").text(), "ParametrizacionesEjemplo.ipf");
  for (const ValorForzado& valor : aplicacion.valores) EXPECT_EQ(Texto(valor.campo), valor.texto);
  EXPECT_EQ(El<QCheckBox>("CAlarmaON").isChecked(), *aplicacion.alarma);
  const std::string a_max = Texto(C::kAMax);
  emit Campo(C::kNivRefLmn).editingFinished();
  EXPECT_EQ(Texto(C::kAMax), a_max) << "nothing follows what a set puts";
}

TEST_F(ParamCfg, CopiarTomaLoQueAquiSePuedeEditar) {
  ConfigColl canales;
  const TablaPtr tabla = std::make_shared<Tabla>();
  AgregarColumnasDeCanales(*tabla);
  tabla->Open();
  for (const auto& [canal, tipo] :
       {std::pair("1", "0"), std::pair("4", "0"), std::pair("5", "0"), std::pair("6", "1")}) {
    tabla->AddNew();
    tabla->Set("Canal", canal);
    tabla->UpdateBatch();
    *canales.Add(static_cast<std::int16_t>(std::stoi(canal)), *tabla) = *Canal(tipo, canal);
  }
  const ConfigPtr origen = canales.Item(std::int16_t{5});
  origen->AMax = "70";
  origen->NivRefLmn = "9";
  origen->MaxBajVal = "77";
  origen->Resolucion = "2";
  origen->Bits = "10";
  origen->Unidad = "3";
  origen->Flags = "3";
  const ConfigPtr config = canales.Item(std::int16_t{4});
  Abrir(config, ModoEdicion::kTodo, &canales);
  const auto acciones = El<QPushButton>("cmdCopiar").menu()->actions();
  ASSERT_EQ(acciones.size(), 1) << "the analogue one alone, no level and no weather";
  EXPECT_EQ(acciones.front()->text(), "EA05 - Nivel del río");
  acciones.front()->trigger();
  EXPECT_EQ(Texto(C::kAMax), "70");
  EXPECT_EQ(Texto(C::kNivRefLmn), "9");
  EXPECT_EQ(Texto(C::kMaxBajVal), "10") << "disabled here";
  EXPECT_EQ(Texto(C::kBits), "10");
  EXPECT_EQ(El<QComboBox>("cboResol").currentText(), "0.1");
  EXPECT_EQ(El<QComboBox>("cboUnidades").currentData().toInt(), 1);
  EXPECT_FALSE(El<QCheckBox>("CAlarmaON").isChecked());
}

// With larger letters too: the whole fits a small laptop, and no caption is cut.
TEST_F(ParamCfg, CabeEnUnaPantallaChica) {
  const QFont letra = QApplication::font();
  QFont grande = letra;
  grande.setPointSizeF(letra.pointSizeF() * 1.25);
  QApplication::setFont(grande);
  for (const Cara& cara : kCaras) {
    Abrir(Canal(cara.tipo, cara.canal));
    dialogo->FijarRonda(22, 23);
    dialogo->resize(dialogo->minimumSizeHint());
    QCoreApplication::processEvents();
    EXPECT_LE(dialogo->width(), 1280) << cara.tipo;
    EXPECT_LE(dialogo->height(), 760) << cara.tipo;
    for (const QWidget* control : dialogo->findChildren<QWidget*>()) {
      const bool con_texto = control->inherits("QLabel") || control->inherits("QAbstractButton");
      if (!con_texto || !control->isVisible() || control->inherits("QToolButton")) continue;
      EXPECT_GE(control->width(), control->minimumSizeHint().width()) << U(control->objectName());
      EXPECT_GE(control->height(), control->minimumSizeHint().height()) << U(control->objectName());
    }
  }
  QApplication::setFont(letra);
}

// Letters of twice the size: its frames stand one under the other, and nothing is reached by scrolling sideways.
TEST_F(ParamCfg, ConLetrasGrandesNoSeDesplazaALosLados) {
  const QFont letra = QApplication::font();
  QFont grande = letra;
  grande.setPointSizeF(letra.pointSizeF() * 2);
  QApplication::setFont(grande);
  for (const Cara& cara : kCaras) {
    Abrir(Canal(cara.tipo, cara.canal));
    dialogo->FijarRonda(22, 23);
    dialogo->resize(1264, 760);
    dialogo->show();
    QCoreApplication::processEvents();
    const auto* cuerpo = dialogo->findChild<QScrollArea*>();
    ASSERT_NE(cuerpo, nullptr) << cara.tipo;
    EXPECT_EQ(cuerpo->horizontalScrollBar()->maximum(), 0) << cara.tipo;
  }
  QApplication::setFont(letra);
}

}  // namespace
}  // namespace utr
