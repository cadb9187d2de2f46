#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "configuration/AnotacionEscritura.h"
#include "configuration/Escritura.h"
#include "configuration/FilasDeCanales.h"
#include "configuration/Pilas.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/OperadorGuion.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

constexpr auto kC = ModoEscritura::kConfiguracion;
constexpr auto kP = ModoEscritura::kParametrizacion;

class ProgresoAnotado : public SinProgreso {
 public:
  explicit ProgresoAnotado(std::vector<std::string>& llamadas) : llamadas_(llamadas) {}
  void Texto(std::string_view texto) override { llamadas_.push_back("[" + std::string(texto) + "]"); }
  void Rango(std::int64_t valor) override { pasos = valor; }
  void Posicion(std::int64_t valor) override { hechos = valor; }
  std::int64_t pasos = 0;
  std::int64_t hechos = 0;

 private:
  std::vector<std::string>& llamadas_;
};

class Escritura : public testing::Test {
 protected:
  ResultadoEscritura Correr(ModoEscritura modo) {
    return Escribir({modo, coleccion, modificar}, comunicador, registro, progreso);
  }

  prueba::Carpeta carpeta;
  RelojFalso reloj;
  RegistroErrores registro{carpeta / "AdminUTR.err", reloj};
  Propiedades propiedades{carpeta / "AdminUTR.dll"};
  Diario diario{propiedades, reloj};
  ComunicadorFalso comunicador;
  ProgresoAnotado progreso{comunicador.llamadas};
  ConfigColl coleccion =
      ColeccionDe(*TablaDeCanales({{{"Canal", "3"}}, {{"Canal", "7"}, {"AMax", "9"}}}), FilasDeCanales::kTodas);
  CanalesModificar modificar;
};

const char* const kAviso = "[Esta operación demorará unos instantes. Por favor espere...]";
const std::vector<std::string> kLlamadas[] = {
    {"GrabarCanalesModificar(33,3#7#)", kAviso, "GrabarPilaCanal(7,)", "GrabarParametrizacion(tabla)",
     "GrabarEvento(1,128/0/40/0)", "ReiniciarUTR(14)", "[]"},
    {"GrabarCanalesModificar(33,3#7#)", "GrabarEvento(1,128/0/40/0)", kAviso, "GrabarParametrizacion(tabla)",
     "GrabarFechaHora()", "[]"},
};

TEST_F(Escritura, CadaModoTieneSuOrdenYEscribeLaColeccionEntera) {
  modificar.Agregar("3");
  modificar.Agregar("7");
  for (const ModoEscritura modo : {kC, kP}) {
    comunicador.llamadas.clear();
    const ResultadoEscritura resultado = Correr(modo);
    EXPECT_THAT(comunicador.llamadas, ElementsAreArray(kLlamadas[static_cast<int>(modo)]));
    EXPECT_TRUE(resultado.Grabado && resultado.Aceptado && resultado.Completa());
    EXPECT_THAT(Filas(*comunicador.Recibidas("GrabarParametrizacion").back(), {"Canal", "AMax"}),
                ElementsAre("3|", "7|9"));
    EXPECT_EQ(progreso.hechos, progreso.pasos);
  }
}

struct CasoFalla {
  ModoEscritura modo;
  const char* operacion;
  PasoEscritura paso;
  const char* mensaje;  // of a step that answers that it failed
  bool abierto;         // the dialog stays open behind such an answer
  bool grabado;
  std::size_t llamadas;    // of the driver, up to the one that failed
  const char* parametros;  // how the journal tells what became of each change
};
const CasoFalla kFallas[] = {
    {kC, "GrabarCanalesModificar", PasoEscritura::kCanalesModificar, "No se pudieron grabar los canales a modificar",
     true, false, 1, "no se escribió"},
    {kC, "GrabarPilaCanal", PasoEscritura::kPilaCanal, "No se ha podido grabar la relación pila-canales", false, true,
     2, "no se escribió"},
    {kC, "GrabarParametrizacion", PasoEscritura::kParametrizacion, "", false, true, 3, "no aceptado; no confirmado"},
    {kC, "GrabarEvento", PasoEscritura::kEvento, "No se pudo grabar el evento de parametrización", false, true, 4,
     "hecho"},
    {kC, "ReiniciarUTR", PasoEscritura::kReinicio, "No se ha podido reiniciar la UTR", false, true, 5, "hecho"},
    {kP, "GrabarCanalesModificar", PasoEscritura::kCanalesModificar, "No se pudieron grabar los canales a modificar",
     true, false, 1, "no se escribió"},
    {kP, "GrabarEvento", PasoEscritura::kEvento, "No se pudo grabar el evento de parametrización", true, false, 2,
     "no se escribió"},
    {kP, "GrabarParametrizacion", PasoEscritura::kParametrizacion, "", false, true, 3, "no aceptado; no confirmado"},
    {kP, "GrabarFechaHora", PasoEscritura::kFechaHora,
     "No se pudo grabar la hora de la PC a la UTR\nVerifique el conexionado", false, true, 4, "hecho"},
};

class EscrituraQueFalla : public Escritura, public testing::WithParamInterface<CasoFalla> {
 protected:
  // What the journal is told: the write as a whole, and one change of a field.
  void ComprobarDiario(const ResultadoEscritura& resultado, const std::string& fin) {
    Diario::Tarea tarea(diario);
    AnotarEscritura(tarea, reloj.Ahora(), {GetParam().modo, {{7, "Alarma máxima", "5", "9"}}, true, resultado});
    ASSERT_EQ(diario.Asientos().size(), 2U);
    EXPECT_EQ(diario.Asientos()[0].resultado,
              "falló: " + std::string(NombreDePaso(GetParam().paso)) + fin + "; no confirmado");
    EXPECT_EQ(diario.Asientos()[1].comando, "EA07: Alarma máxima");
    EXPECT_EQ(diario.Asientos()[1].antes, "5 (antes de la grabación que no terminó)");
    EXPECT_EQ(diario.Asientos()[1].escrito, "9");
    EXPECT_EQ(diario.Asientos()[1].resultado, GetParam().parametros);
  }

  // The calls stop at the failure, and the panel comes off on this way out too.
  void ComprobarLlamadas() {
    EXPECT_EQ(comunicador.llamadas.back(), "[]");
    std::erase_if(comunicador.llamadas, [](const std::string& llamada) { return llamada.starts_with('['); });
    EXPECT_EQ(comunicador.llamadas.size(), GetParam().llamadas);
    EXPECT_THAT(comunicador.llamadas.back(), testing::StartsWith(GetParam().operacion));
  }
};

TEST_P(EscrituraQueFalla, PorSuRespuestaDiceLoSuyoYNadaLeSigue) {
  const CasoFalla& caso = GetParam();
  comunicador.Devuelve(caso.operacion, false);
  const ResultadoEscritura resultado = Correr(caso.modo);
  EXPECT_EQ(resultado.fallo, caso.paso);
  EXPECT_EQ(resultado.mensaje, caso.mensaje);
  EXPECT_EQ(resultado.Aceptado, !caso.abierto);
  EXPECT_EQ(resultado.Grabado, caso.grabado);
  EXPECT_EQ(resultado.tabla != nullptr, caso.grabado) << "what was to be written is known from then on";
  EXPECT_FALSE(resultado.error);
  EXPECT_FALSE(resultado.Completa());
  ComprobarLlamadas();
  ComprobarDiario(resultado, "");
}

TEST_P(EscrituraQueFalla, ConUnErrorDejaElDialogoAbierto) {
  const CasoFalla& caso = GetParam();
  comunicador.Falla(caso.operacion, Error(8020, "driver", "sin respuesta"));
  const ResultadoEscritura resultado = Correr(caso.modo);
  EXPECT_EQ(resultado.fallo, caso.paso);
  ASSERT_TRUE(resultado.error);
  EXPECT_EQ(resultado.error->Descripcion(), "sin respuesta");
  EXPECT_EQ(resultado.mensaje, "");
  EXPECT_FALSE(resultado.Aceptado);
  EXPECT_EQ(resultado.Grabado, caso.grabado);
  ComprobarLlamadas();
  ComprobarDiario(resultado, " [sin respuesta]");
}

INSTANTIATE_TEST_SUITE_P(CadaPaso, EscrituraQueFalla, testing::ValuesIn(kFallas));

TEST_F(Escritura, SinCanalesNadaSeEscribeNiSeReinicia) {
  coleccion = ConfigColl();
  const ResultadoEscritura resultado = Correr(kC);
  EXPECT_THAT(comunicador.llamadas, ElementsAre("GrabarCanalesModificar(33,)", kAviso, "[]"));
  EXPECT_TRUE(resultado.Grabado && resultado.Aceptado);
  EXPECT_FALSE(resultado.fallo);
  EXPECT_FALSE(resultado.Completa());

  coleccion = ColeccionDe(*TablaDeCanales({{{"Canal", "3"}}}), FilasDeCanales::kTodas);
  EXPECT_TRUE(Correr(kC).Completa()) << "one channel is enough";
}

TEST(PruebaCanalesModificar, GuardaCadaCanalUnaVezEnElOrdenDelPrimerCambio) {
  CanalesModificar modificar;
  EXPECT_FALSE(modificar.Contiene(""));
  for (const char* canal : {"13", "3", "13", "7", "3", "07"}) modificar.Agregar(canal);
  EXPECT_EQ(modificar.Texto(), "13#3#7#07#");
  EXPECT_TRUE(modificar.Contiene("3"));
  EXPECT_FALSE(modificar.Contiene("1"));
}

TEST(PruebaFilasDeCanales, UnaFilaEsUnCanalPorSuNumero) {
  const struct {
    const char* canal;
    int numero;  // 0: none
  } casos[] = {{"1", 1}, {"07", 7}, {" 7 ", 7}, {"15x", 15}, {"32767", 32767}, {"32768", 0},
               {"0", 0}, {"-3", 0}, {"", 0},    {"EA", 0},   {"2.5", 0},       {"9999999999999999999999", 0}};
  for (const auto& caso : casos) EXPECT_EQ(NumeroDeFila(caso.canal).value_or(0), caso.numero) << caso.canal;
}

TEST(PruebaFilasDeCanales, LaColeccionTomaLasFilasDelModoPeseAFiltroYOrden) {
  const TablaPtr tabla = TablaDeCanales({{{"Canal", "07"}, {"Flags", "3"}},
                                         {{"Canal", "x"}},
                                         {{"Canal", "2"}, {"Flags", "300"}},
                                         {{"Canal", "7"}, {"AMax", "la segunda"}},
                                         {{"Canal", "4"}, {"Flags", "9999999999999999999999"}},
                                         {{"Canal", "1"}, {"Flags", "1"}}});
  tabla->Filter("Canal='1'");
  tabla->Sort("Canal DESC");
  const auto canales = [&](FilasDeCanales cuales) {
    std::vector<std::string> claves;
    for (const ConfigPtr& config : ColeccionDe(*tabla, cuales)) claves.push_back(config->Key + config->AMax);
    return claves;
  };
  EXPECT_THAT(canales(FilasDeCanales::kTodas), ElementsAre("C7", "C2", "C4", "C1"));
  EXPECT_THAT(canales(FilasDeCanales::kHabilitadas), ElementsAre("C7", "C1"));
  EXPECT_EQ(tabla->RecordCount(), 1U);
  const TablaPtr doble = TablaDeCanales({{{"Canal", "3"}, {"Flags", "0"}}, {{"Canal", "3"}, {"Flags", "1"}}});
  EXPECT_EQ(ColeccionDe(*doble, FilasDeCanales::kHabilitadas).Count(), 0U) << "the first row decides in both";
  EXPECT_EQ(ColeccionDe(*doble, FilasDeCanales::kTodas).Item(3)->Flags, "0");
  EXPECT_EQ(FallaDe([] { ColeccionDe(*TablaDeTextos({"Tipo"}), FilasDeCanales::kTodas); })->Numero(), error::kCampo);
}

class Pilas : public Escritura {
 protected:
  // Channels from 1 on of those kinds.
  static TablaPtr Canales(const std::vector<const char*>& tipos) {
    static const auto numeros = [] {
      std::vector<std::string> textos;
      for (int i = 1; i < 30; ++i) textos.push_back(std::to_string(i));
      return textos;
    }();
    std::vector<FilaDeCanal> filas;
    for (std::size_t i = 0; i < tipos.size(); ++i) filas.push_back({{"Canal", numeros[i].c_str()}, {"Tipo", tipos[i]}});
    return TablaDeCanales(filas);
  }

  OperadorGuion operador;
  ContextoPilas contexto{comunicador, registro, operador, reloj, "Configuración de los canales"};
  RelacionPilaCanal relacion;
};

TEST_F(Pilas, LaRelacionUneLosCanalesQueGuardan) {
  const TablaPtr tabla = Canales({"0", "4", "1", "2", "6", "3", "7", "5"});
  EXPECT_TRUE(relacion.Armar(*tabla, contexto));
  EXPECT_EQ(relacion.Texto(), "1$3$4$6$8");
  EXPECT_EQ(tabla->Texto("Canal"), "1");
  EXPECT_TRUE(relacion.Armar(*Canales({"4", "7"}), contexto));
  EXPECT_EQ(relacion.Texto(), "Nada");
  EXPECT_TRUE(relacion.Armar(*Canales({}), contexto));
  EXPECT_EQ(relacion.Texto(), "Nada");
  EXPECT_THAT(comunicador.log, ElementsAre("15/03/2026 10:00:00 Relacion Pila canal: 1$3$4$6$8",
                                           "15/03/2026 10:00:00 Relacion Pila canal: Nada",
                                           "15/03/2026 10:00:00 Relacion Pila canal: Nada"));
}

TEST_F(Pilas, ConVeinteCanalesLaRelacionQuedaComoEstaba) {
  EXPECT_TRUE(relacion.Armar(*Canales(std::vector<const char*>(19, "1")), contexto));
  const std::string diecinueve = relacion.Texto();
  EXPECT_THAT(diecinueve, testing::EndsWith("$18$19"));
  operador.Espera(Mensaje{"Se ha superado la capacidad de almacenamiento de la UTR", "Configuración de los canales",
                          Icono::kCritico, Botones::kAceptar});
  EXPECT_TRUE(relacion.Armar(*Canales(std::vector<const char*>(20, "1")), contexto));
  EXPECT_EQ(relacion.Texto(), diecinueve);
  EXPECT_EQ(comunicador.log.back(), "15/03/2026 10:00:00 Se ha superado la capacidad de almacenamiento de la UTR");
}

TEST_F(Pilas, UnErrorSeMuestraYSeRegistra) {
  operador.Espera(
      Mensaje{"[ \nLa operación solicitada no puede completarse" + DescripcionDe(error::kCampo) + ": Tipo ]",
              "Configuración de los canales", Icono::kCritico, Botones::kAceptar});
  EXPECT_FALSE(relacion.Armar(*TablaDeTextos({"Canal"}, {{"1"}}), contexto));
  EXPECT_THAT(prueba::LeerTodo(carpeta / "AdminUTR.err"), HasSubstr("\"frmParametros\",\"ArmarRelacionPilaCanal\""));
}

TEST_F(Pilas, LaLineaCuentaLosHabilitadosQueGuardanMasAllaDeNueve) {
  const auto linea = [](const TablaPtr& tabla) { return LineaDePilas(ColeccionDe(*tabla, FilasDeCanales::kTodas)); };
  std::vector<const char*> tipos(9, "1");
  tipos.push_back("7");
  EXPECT_EQ(linea(Canales(tipos)), "");
  tipos.push_back("5");
  const TablaPtr diez = Canales(tipos);
  EXPECT_EQ(linea(diez), "10 canales con registro, 9 pilas");
  diez->Set("Flags", "30");
  EXPECT_EQ(linea(diez), "") << "one that isn't enabled stores nothing";
}

}  // namespace
}  // namespace utr
