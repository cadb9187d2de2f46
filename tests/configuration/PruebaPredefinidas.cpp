#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Error.h"
#include "base/Texto.h"
#include "configuration/Predefinidas.h"
#include "services/RegistroErrores.h"
#include "support/Carpeta.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using C = CampoSensor;

const std::filesystem::path kEjemplo = std::filesystem::path(CARPETA_DATOS) / "ParametrizacionesEjemplo.ipf";

// "100#101#..." up to that many values, so that each tells its position.
std::string Posiciones(std::size_t cuantas) {
  std::vector<std::string> valores;
  for (std::size_t i = 0; i < cuantas; ++i) valores.push_back(std::to_string(100 + i));
  return Unir(valores, "#");
}

ValoresSensor ConRango(const char* minimo, const char* maximo) {
  ValoresSensor valores;
  valores[C::kRangoMin] = minimo;
  valores[C::kRangoMax] = maximo;
  return valores;
}

// The texts of an array of fields, "=" where a field isn't touched.
std::string Textos(const AplicacionPredefinida& aplicacion, std::span<const C> campos) {
  ValoresSensor valores;
  for (const C campo : campos) valores[campo] = "=";
  Aplicar(aplicacion.valores, valores);
  std::vector<std::string> textos;
  textos.reserve(campos.size());
  for (const C campo : campos) textos.push_back(valores[campo]);
  return Unir(textos, " ");
}

std::string Nombres(const std::vector<ValorSinAplicar>& sueltos) {
  std::vector<std::string> nombres;
  nombres.reserve(sueltos.size());
  for (const ValorSinAplicar& valor : sueltos) nombres.push_back(valor.rotulo + "=" + valor.valor);
  return Unir(nombres, " ");
}

std::string Opcion(const std::optional<bool>& opcion) {
  return opcion ? *opcion ? "si" : "no" : "=";
}

TEST(Predefinidas, CadaPosicionVaASuCampo) {
  constexpr C kNivel[] = {C::kNivRefLmn};
  const struct {
    std::int16_t tipo;
    const char *periodos, *validaciones, *alarmas, *nivel, *alarma, *estado, *sin_aplicar;
  } casos[] = {
      {0, "104 100 101 102 103 0 105", "106 107 = = = =", "111 112 113 114 0 0", "117", "si", "=",
       "MaxDeltaAscLmn=108 MaxDeltaDesLmn=109 DeltaAscTxCondLmn=115 DeltaDesTxCondLmn=116"},
      {1, "104 100 102 101 103 0 105", "107 108 = = = =", "109 110 111 112 113 114", "=", "si", "=",
       "AlarmPicoMtrMax=115 AlarmPicoMtrMin=116"},
      {4, "2 100 100 100 100 0 101", "103 104 = = = =", "105 106 0 0 0 0", "=", "si", "=", ""},
      {5, "2 100 100 101 103 104 0", "105 0 = = = =", "0 0 0 0 0 0", "=", "no", "=", "TEvalPlv=102 DeltaTxCondPlv=106"},
      {7, "2 100 100 100 100 0 101", "0 0 = = = =", "0 0 0 0 0 0", "=", "si", "no", ""},
      {6, "0 0 0 0 0 0 0", "0 0 0 0 0 0", "0 0 0 0 0 0", "=", "=", "=", ""},
  };
  for (const auto& caso : casos) {
    const FamiliaSensor* familia = FamiliaDe(FamiliaDeTipo(caso.tipo));
    const auto aplicacion = AplicarPredefinida(caso.tipo, familia != nullptr ? Posiciones(familia->rotulos.size()) : "",
                                               ConRango("1000", "1000"));
    EXPECT_EQ(Textos(aplicacion, Periodos()), caso.periodos) << caso.tipo;
    EXPECT_EQ(Textos(aplicacion, Validaciones()), caso.validaciones) << caso.tipo;
    EXPECT_EQ(Textos(aplicacion, Alarmas()), caso.alarmas) << caso.tipo;
    EXPECT_EQ(Textos(aplicacion, kNivel), caso.nivel) << caso.tipo;
    EXPECT_EQ(Opcion(aplicacion.alarma), caso.alarma) << caso.tipo;
    EXPECT_EQ(Opcion(aplicacion.estado_normal), caso.estado) << caso.tipo;
    EXPECT_EQ(Nombres(aplicacion.sin_aplicar), caso.sin_aplicar) << caso.tipo;
    EXPECT_THAT(aplicacion.rebajados, IsEmpty()) << caso.tipo;
  }
  for (const auto tipo : {std::int16_t{2}, std::int16_t{3}}) {
    EXPECT_EQ(AplicarPredefinida(tipo, Posiciones(17), ConRango("1000", "1000")).valores,
              AplicarPredefinida(1, Posiciones(17), ConRango("1000", "1000")).valores);
  }
  for (const int tipo : {-1, 6, 8}) EXPECT_EQ(FamiliaDeTipo(static_cast<std::int16_t>(tipo)), 0);
}

TEST(Predefinidas, NingunValorPasaDelRangoTampocoLosMinimos) {
  const struct {
    std::int16_t tipo;
    const char *minimo, *maximo;
    const char *validaciones, *alarmas;
    std::vector<ValorRebajado> rebajados;
  } casos[] = {
      {1,
       "-5",
       "107.5",
       "107 -5 = = = =",
       "107.5 -5 107.5 -5 107.5 -5",
       {{C::kMinValid, "108", "-5"},
        {C::kAMax, "109", "107.5"},
        {C::kAMin, "110", "-5"},
        {C::kAlSub, "111", "107.5"},
        {C::kAlBaj, "112", "-5"},
        {C::kAlMaxPico, "113", "107.5"},
        {C::kAlMinPico, "114", "-5"}}},
      {5, "0", "50", "50 0 = = = =", "0 0 0 0 0 0", {{C::kMaxValid, "105", "50"}}},
      {4, "", "200", "103 0 = = = =", "105 0 0 0 0 0", {{C::kMinValid, "104", "0"}, {C::kAMin, "106", "0"}}},
  };
  for (const auto& caso : casos) {
    const auto familia = FamiliaDe(FamiliaDeTipo(caso.tipo));
    const auto aplicacion =
        AplicarPredefinida(caso.tipo, Posiciones(familia->rotulos.size()), ConRango(caso.minimo, caso.maximo));
    EXPECT_EQ(Textos(aplicacion, Validaciones()), caso.validaciones) << caso.tipo;
    EXPECT_EQ(Textos(aplicacion, Alarmas()), caso.alarmas) << caso.tipo;
    EXPECT_EQ(aplicacion.rebajados, caso.rebajados) << caso.tipo;
  }
}

TEST(Predefinidas, TextosYOpciones) {
  const auto aplicar = [](const char* parametros) { return AplicarPredefinida(7, parametros, {}); };
  // Surplus values don't count, whatever they are; blanks around a value neither.
  EXPECT_EQ(Textos(aplicar("7# 60 #0#1#x#"), Periodos()), "2 7 7 7 7 0 60");
  for (const auto& [valor, alarma, estado] : {std::tuple{"0", false, false},
                                              {"1", true, true},
                                              {"1.0", true, true},
                                              {"2", true, false},
                                              {"-1", true, false}}) {
    const auto aplicacion = aplicar(("7#60#" + std::string(valor) + "#" + valor).c_str());
    EXPECT_EQ(aplicacion.alarma, alarma) << valor;
    EXPECT_EQ(aplicacion.estado_normal, estado) << valor;
  }
  // Limits are general texts, times stand as the set has them.
  const auto supervision = AplicarPredefinida(4, "010#720#1#15.50#-.5#14.80#1", ConRango("-1", "20"));
  EXPECT_EQ(Textos(supervision, Periodos()), "2 010 010 010 010 0 720");
  EXPECT_EQ(Textos(supervision, Validaciones()), "15.5 -1 = = = =");
  EXPECT_EQ(AvisoDePredefinida(supervision),
            "Valor Mínimo (MinValid): -1 en lugar de -.5, por el rango del sensor\n"
            "Alarma de Mínima (AMin): -1 en lugar de 1, por el rango del sensor");
  EXPECT_EQ(AvisoDePredefinida(AplicarPredefinida(5, "5#5#6#60#1440#50#1", ConRango("0", "50"))),
            "No se aplican: TEvalPlv (6), DeltaTxCondPlv (1)");
  EXPECT_EQ(AvisoDePredefinida(aplicar("7#60#0#1")), "");
}

TEST(Predefinidas, ConjuntosQueNoSeAplican) {
  const struct {
    std::int16_t tipo;
    std::string parametros;
    std::int32_t numero;
    const char* descripcion;
  } casos[] = {
      {0, Posiciones(17), error::kSubindice, "El subíndice está fuera del intervalo"},
      {1, Posiciones(16), error::kSubindice, "El subíndice está fuera del intervalo"},
      {7, "", error::kSubindice, "El subíndice está fuera del intervalo"},
      {7, "1#60#0", error::kSubindice, "El subíndice está fuera del intervalo"},
      {7, "1#60#0#", error::kTipos, "El valor de la posición 3 (EstNormalDls) no es un número: \"\""},
      {4, "1#60#0#12,5#0#1#0", error::kTipos, "El valor de la posición 3 (MaxAls) no es un número: \"12,5\""},
      // Also where it would only be shown.
      {5, "5#5#-#60#1440#50#1", error::kTipos, "El valor de la posición 2 (TEvalPlv) no es un número: \"-\""},
      {5, "1e2#5#5#60#1440#50#1", error::kTipos, "El valor de la posición 0 (TReadPlv) no es un número: \"1e2\""},
      {7, "2.5#60#0#1", error::kTipos, "El valor de la posición 0 no es un número entero: \"2.5\""},
  };
  for (const auto& caso : casos) {
    const auto falla = FallaDe([&] { AplicarPredefinida(caso.tipo, caso.parametros, ConRango("0", "10")); });
    ASSERT_TRUE(falla) << caso.parametros;
    EXPECT_EQ(falla->Numero(), caso.numero) << caso.parametros;
    EXPECT_EQ(falla->Descripcion(), caso.descripcion);
  }
}

TEST(Predefinidas, ElEjemploPasaLasReglasDeUnCanalSensato) {
  const struct {
    std::int16_t id, tipo, canal;
    const char *minimo, *maximo;
  } canales[] = {{1, 0, 1, "0", "10"},  {2, 0, 1, "0", "5"},    {3, 0, 1, "0", "30"},  {4, 1, 2, "-20", "50"},
                 {5, 1, 3, "0", "100"}, {6, 2, 4, "0.5", "60"}, {7, 4, 12, "0", "20"}, {8, 4, 13, "0", "25"},
                 {9, 5, 15, "0", "50"}, {10, 5, 15, "0", "20"}, {11, 7, 16, "0", "0"}, {12, 7, 17, "0", "0"}};
  const TablaPtr conjuntos = LeerPredefinidas(kEjemplo);
  ASSERT_EQ(conjuntos->RecordCount(), std::size(canales));
  for (const auto& canal : canales) {
    conjuntos->Filter("Id= " + std::to_string(canal.id));
    EXPECT_EQ(conjuntos->Texto("IdDescripcionSensores"), std::to_string(FamiliaDeTipo(canal.tipo)));
    EXPECT_EQ(conjuntos->Texto("TipoSensor"), FamiliaDe(FamiliaDeTipo(canal.tipo))->sensor);
    EntradaReglas entrada{.tipo = canal.tipo, .canal = canal.canal, .valores = ConRango(canal.minimo, canal.maximo)};
    for (const C campo : Validaciones()) entrada.valores[campo] = "1";
    entrada.valores[C::kBits] = "12";
    const auto aplicacion = AplicarPredefinida(canal.tipo, conjuntos->Texto("Parametros"), entrada.valores);
    Aplicar(aplicacion.valores, entrada.valores);
    entrada.habilitado = [](C) { return true; };
    for (const ReparoSensor& reparo : ReparosVivos(entrada).reparos) ADD_FAILURE() << canal.id << ": " << reparo.texto;
  }
}

TEST(Predefinidas, ElEjemploTieneLaFormaConQueElProgramaEscribe) {
  const prueba::Carpeta carpeta;
  LeerPredefinidas(kEjemplo)->Save(carpeta / "copia.ipf");
  EXPECT_EQ(prueba::LeerTodo(carpeta / "copia.ipf"), prueba::LeerTodo(kEjemplo));
}

TEST(Predefinidas, FamiliaYPalabrasDelSensor) {
  const auto conjuntos = TablaCon({{"Id", TipoCampo::kEntero, 4},
                                   {"nombre", TipoCampo::kVarChar, 20},
                                   {"Alta", TipoCampo::kMarcaDeTiempo, 16},
                                   {"Orden", TipoCampo::kEntero, 4},
                                   {"Fecha", TipoCampo::kVarChar, 20},
                                   {"Sensor", TipoCampo::kVarWChar, 20},
                                   {"Notas", TipoCampo::kVarChar, 20},
                                   {"IDDESCRIPCIONSENSORES", TipoCampo::kEntero, 4},
                                   {"Parametros", TipoCampo::kVarChar, 200}},
                                  {{"1", "a", nullptr, "1", "", "", "", "2", "1#2"},
                                   {"1", "b", nullptr, "1", "", "", "", "5", "3#4"},
                                   {"2", "c", nullptr, "1", "", "", "", "2", nullptr},
                                   {"3", "d", nullptr, "1", "", "", "", nullptr, "5"}});
  EXPECT_EQ(CampoDelSensor(*conjuntos), "Sensor");
  EXPECT_EQ(CampoDelSensor(*TablaDeTextos({"Id", "Nombre", "Fecha", "IdDescripcionSensores", "Parametros"})),
            std::nullopt);
  FiltrarFamilia(*conjuntos, 2);
  EXPECT_THAT(Filas(*conjuntos, {"Nombre"}), ElementsAre("a", "c"));
  FiltrarFamilia(*conjuntos, 5);
  EXPECT_THAT(Filas(*conjuntos, {"Nombre"}), ElementsAre("b"));
  FiltrarFamilia(*conjuntos, 1);
  EXPECT_TRUE(conjuntos->Eof());
}

TEST(Predefinidas, ArchivosQueNoSonDeConjuntos) {
  const prueba::Carpeta carpeta;
  TablaDeTextos({"Id", "Nombre", "Fecha", "Parametros"})->Save(carpeta / "sin columna");
  const std::string ejemplo = prueba::LeerTodo(kEjemplo);
  prueba::EscribirTodo(carpeta / "vacio", "");
  prueba::EscribirTodo(carpeta / "basura", std::string("\xff\xfe\0basura#", 10));
  prueba::EscribirTodo(carpeta / "otro formato", "Id;Nombre\r\n1;uno\r\n");
  prueba::EscribirTodo(carpeta / "cortado", ejemplo.substr(0, ejemplo.size() / 2));
  const std::pair<const char*, std::int32_t> casos[] = {
      {"sin columna", error::kCampo},    {"vacio", error::kArchivo},   {"basura", error::kArchivo},
      {"otro formato", error::kArchivo}, {"cortado", error::kArchivo}, {"no existe", error::kArchivo}};
  for (const auto& caso : casos) {
    const auto falla = FallaDe([&] { LeerPredefinidas(carpeta / caso.first); });
    ASSERT_TRUE(falla) << caso.first;
    EXPECT_EQ(falla->Numero(), caso.second) << caso.first;
  }
  // Without sets, but a file of sets.
  TablaDeTextos({"Id", "Nombre", "Fecha", "IdDescripcionSensores", "Parametros"})->Save(carpeta / "sin filas");
  EXPECT_EQ(LeerPredefinidas(carpeta / "sin filas")->RecordCount(), 0U);
}

TEST(Predefinidas, CopiaJuntoAlPrograma) {
  namespace fs = std::filesystem;
  const prueba::Carpeta carpeta;
  const fs::path programa = carpeta / "programa";
  for (const char* nombre : {"programa", "usb"}) fs::create_directory(carpeta / nombre);
  fs::create_directory_symlink(programa, carpeta / "enlace");
  prueba::EscribirTodo(carpeta / "usb/Cuenca.IPF", "nuevo");
  prueba::EscribirTodo(programa / "Cuenca.IPF", "un viejo mas largo");
  EXPECT_EQ(JuntoAlPrograma(carpeta / "usb/Cuenca.IPF", programa), programa / "Cuenca.IPF");
  EXPECT_EQ(prueba::LeerTodo(programa / "Cuenca.IPF"), "nuevo");
  // The same folder by another name is no other folder.
  const fs::path por_enlace = carpeta / "enlace/Cuenca.IPF";
  EXPECT_EQ(JuntoAlPrograma(por_enlace, programa), por_enlace);
  EXPECT_EQ(JuntoAlPrograma(carpeta / "usb/../programa/Cuenca.IPF", programa).lexically_normal(),
            programa / "Cuenca.IPF");
  // Nothing of the program's own is replaced, and a copy that fails leaves the older one.
  prueba::EscribirTodo(carpeta / "usb/Eventos.xml", "x");
  EXPECT_EQ(FallaDe([&] { JuntoAlPrograma(carpeta / "usb/Eventos.xml", programa); })->Numero(), error::kLlamada);
  fs::remove(carpeta / "usb/Cuenca.IPF");
  EXPECT_EQ(FallaDe([&] { JuntoAlPrograma(carpeta / "usb/Cuenca.IPF", programa); })->Numero(), error::kArchivo);
  EXPECT_EQ(prueba::LeerTodo(programa / "Cuenca.IPF"), "nuevo");
  EXPECT_FALSE(fs::exists(programa / "Eventos.xml"));
}

}  // namespace
}  // namespace utr
