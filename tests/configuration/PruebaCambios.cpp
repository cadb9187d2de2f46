#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "configuration/CambiosConfiguracion.h"
#include "configuration/FilasDeCanales.h"
#include "configuration/VerificacionEscritura.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Linea(const CambioConfiguracion& c) {
  return std::to_string(c.canal) + '|' + c.campo + '|' + c.en_la_utr + '|' + c.nuevo;
}
std::string Linea(const DiferenciaEscritura& d) {
  return std::to_string(d.canal) + '|' + d.campo + '|' + d.escrito + '|' + d.leido;
}
template <class Fila>
std::vector<std::string> Lineas(const std::vector<Fila>& filas) {
  std::vector<std::string> lineas(filas.size());
  std::transform(filas.begin(), filas.end(), lineas.begin(), [](const Fila& fila) { return Linea(fila); });
  return lineas;
}

TEST(PruebaMismoValor, LosNumerosValenPorSuNumeroYElRestoPorSuTexto) {
  const struct {
    const char* a;
    const char* b;
    bool igual;
  } casos[] = {{"5", "05", true},
               {" 12.50", "12.5", true},
               {"-0", "0", true},
               {"1E3", "1000", true},
               {"12,5", "125", false},
               {"12,5", "12,5", true},
               {"", "0", false},
               {"0", "", false},
               {"abc", "ABC", false},
               {"1x", "1", false},
               {"9007199254740993", "9007199254740992", false}};
  for (const auto& caso : casos) EXPECT_EQ(MismoValor(caso.a, caso.b), caso.igual) << caso.a << " y " << caso.b;
}

class Cambios : public testing::Test {
 protected:
  static ConfigColl Coleccion(const FilaDeCanal& fila) {
    return ColeccionDe(*TablaDeCanales({fila}), FilasDeCanales::kTodas);
  }
  // The changes of one channel from one row of texts to another.
  std::vector<std::string> De(const FilaDeCanal& antes, const FilaDeCanal& ahora) {
    return Lineas(CambiosDe(Coleccion(antes), Coleccion(ahora), catalogo));
  }

  Catalogo catalogo{CARPETA_DATOS};
};

struct CasoCambio {
  const char* columna;
  const char* antes;
  const char* ahora;
  const char* linea;  // null: nothing changed
  const char* tipo = "1";
};

TEST_F(Cambios, CadaColumnaSeDiceConSuRotuloYSusPalabras) {
  const CasoCambio casos[] = {
      {"TMed", "1", "2", "Tiempo de Medición (TMed):|1|2"},
      {"MaxSubVal", "", "0", "Máxima Variación Ascendente (MaxSubVal): ||0"},
      {"RangoMax", "10", "20.5", "Rango Máximo (UI)|10|20.5"},
      {"RangoMax", "10", "10.0", nullptr},
      {"CtePluvi", "0.25", "0.254", "Cte. del Pluviómetro (mm):|0.25|0.254"},
      {"Modificado", "False", "True", nullptr},
      {"Tipo", "0", "1", "Tipo de Sensor:|Analógico|Meteorologico"},
      {"Tipo", "9", "1", "Tipo de Sensor:|9|Meteorologico"},
      {"Tipo", "0", "", "Tipo de Sensor:|Analógico|"},
      {"Resolucion", "1", "3", "Resolución:|1|0.01"},
      {"Resolucion", "8", "4", "Resolución:|8|0.001"},
      {"RangoNegativo", "66", "55", "Pendiente|PEND.POS|PEND.NEG"},
      {"RangoNegativo", "66", "0", "Pendiente|PEND.POS (66)|PEND.POS (0)"},
      {"Parametro", "0", "999", "Parámetro:|(ninguno)|999"},
      {"Unidad", "999", "0", "Unidad:|999|-"},
      {"NivRefLmn", "0", "1", "Nivel de Referencia (Limnímetro): |0|1"},
      {"NivRefLmn", "0", "1", "Constante a sumar al valor escalado:|0|1", "2"},
      {"Pila", "1", "2", "Pila|1|2"},
      {"Pagina", "1", "2", "Página|1|2"},
      {"Descripcion", "a", "A", "Descripción|a|A"},
  };
  for (const CasoCambio& caso : casos) {
    const auto fila = [&](const char* valor) {
      return FilaDeCanal{{"Canal", "3"}, {"Tipo", caso.tipo}, {caso.columna, valor}};
    };
    const std::vector<std::string> lineas = De(fila(caso.antes), fila(caso.ahora));
    if (caso.linea == nullptr) {
      EXPECT_THAT(lineas, IsEmpty()) << caso.columna;
    } else {
      EXPECT_THAT(lineas, ElementsAre("3|" + std::string(caso.linea)));
    }
  }
}

TEST_F(Cambios, ParametrosYUnidadesVanConElNombreDelCatalogo) {
  const std::string parametro = catalogo.DescripcionParametro("1", 6);
  const std::string unidad = catalogo.DescripcionUnidad("1");
  ASSERT_NE(parametro, "");
  EXPECT_THAT(De({{"Canal", "3"}}, {{"Canal", "3"}, {"Parametro", "1"}, {"Unidad", "1"}}),
              ElementsAre("3|Parámetro:|(ninguno)|" + parametro, "3|Unidad:|-|" + unidad));
}

TEST_F(Cambios, LasOpcionesSeDicenUnaPorUna) {
  const struct {
    const char* tipo;
    const char* antes;
    const char* ahora;
    std::vector<std::string> lineas;
  } casos[] = {
      {"1", "1", "2", {"Habilitado|Si|No", "Habilitar Alarmas (se evaluan cada TEval) :|No|Si"}},
      {"7", "1", "5", {"Estado Normal:|12 V  |  Cerrado|0 V  |  Abierto"}},
      {"0", "0", "24", {"Registro Diferencial|No|Si", "Filtro de Olas|No|Si"}},
      {"1", "8", "0", {"Registro Diferencial|Si|No"}},
      {"5", "0", "24", {"Pluviometro 3 hilos|No|Si", "Registro Diferencial|No|Si"}},
      {"3", "0", "8", {"Pluviometro 3 hilos|No|Si"}},
      {"2", "16", "0", {"Filtro de Olas|Si|No"}},
      {"5", "31", "15", {"Registro Diferencial|Si|No"}},
      {"1", "32", "0", {"Flags|32|0"}},
      {"1", "31", "63", {"Flags|31|63"}},
      {"1", "300", "13", {"Habilitado|No|Si", "Flags|300|13"}},
      {"1", "01", "1", {}},
      {"1", "", "0", {"Flags||0"}},
      {"1", "1x", "1", {"Flags|1x|1"}},
  };
  for (const auto& caso : casos) {
    std::vector<std::string> lineas;
    for (const std::string& linea : caso.lineas) lineas.push_back("4|" + linea);
    EXPECT_EQ(De({{"Canal", "4"}, {"Tipo", caso.tipo}, {"Flags", caso.antes}},
                 {{"Canal", "4"}, {"Tipo", caso.tipo}, {"Flags", caso.ahora}}),
              lineas)
        << caso.tipo << ": " << caso.antes << " a " << caso.ahora;
  }
}

TEST_F(Cambios, UnCanalDeUnSoloLadoSeDice) {
  const auto coleccion = [](const std::vector<FilaDeCanal>& filas) {
    return ColeccionDe(*TablaDeCanales(filas), FilasDeCanales::kTodas);
  };
  const ConfigColl inicial = coleccion({{{"Canal", "07"}}, {{"Canal", "2"}}});
  const ConfigColl ahora = coleccion({{{"Canal", "5"}, {"AMax", "9"}}, {{"Canal", "7"}}});
  const std::vector<std::string> lineas = Lineas(CambiosDe(inicial, ahora, catalogo));
  EXPECT_EQ(lineas.front(), "5|Canal|no está|5");
  EXPECT_THAT(lineas, testing::Contains("5|Alarma de Máxima (AMax):||9"));
  EXPECT_THAT(lineas, testing::Not(testing::Contains(testing::HasSubstr("TMed"))));
  EXPECT_EQ(lineas.back(), "2|Canal|2|no se escribe");
  EXPECT_THAT(CambiosDe(inicial, coleccion({{{"Canal", "7"}}, {{"Canal", "2"}}}), catalogo), IsEmpty());
}

TEST_F(Cambios, LaTablaLosTieneEnSuOrden) {
  const TablaPtr tabla = TablaDeCambios({{15, "Bits a enviar", "1", "2"}, {3, "b", "", "x"}});
  EXPECT_THAT(Filas(*tabla, {"NroCanal", "Canal", "Campo", "ValorUTR", "ValorNuevo"}),
              ElementsAre("15|PLV|Bits a enviar|1|2", "3|EA03|b||x"));
  EXPECT_EQ(TablaDeCambios({})->RecordCount(), 0U);
}

// --- Written against read back ---------------------------------------------------------------------------------------

constexpr std::size_t kComparadas = 34;  // columns of the channel table that are compared

TEST(PruebaVerificacion, LoQueVuelveIgualSeCuenta) {
  const TablaPtr escrita =
      TablaDeCanales({{{"Canal", "3"}, {"AMax", "9.50"}}, {{"Canal", "7"}, {"CtePluvi", "0.254"}}});
  const TablaPtr otra = TablaDeCanales({{{"Canal", "07"}, {"CtePluvi", "0.254"}},
                                        {{"Canal", "3"}, {"AMax", "9.5"}, {"Pila", "4"}, {"Pagina", "2"}},
                                        {{"Canal", "3"}, {"AMax", "la segunda no cuenta"}},
                                        {{"Canal", "9"}}});
  otra->Set("Modificado", "True");
  otra->Filter("Canal='9'");
  const VerificacionEscritura igual = Verificar(*escrita, *otra);
  EXPECT_THAT(Lineas(igual.diferencias), IsEmpty());
  EXPECT_EQ(LineaVerificada(igual), std::to_string(2 * kComparadas) + " valores escritos y verificados");
  EXPECT_EQ(AvisoDeVerificacion(igual, std::nullopt, "x"), "");
}

TEST(PruebaVerificacion, CadaDiferenciaSeDice) {
  const TablaPtr escrita = TablaDeCanales(
      {{{"Canal", "1"}}, {{"Canal", "3"}, {"AMax", "12,5"}, {"Flags", "3"}}, {{"Canal", "7"}, {"Descripcion", "a"}}});
  const TablaPtr releida = TablaDeCanales(
      {{{"Canal", "3"}, {"AMax", "125"}, {"Flags", "1"}}, {{"Canal", "7"}, {"Descripcion", "A"}, {"AMin", "0"}}});
  EXPECT_THAT(Lineas(Verificar(*escrita, *releida).diferencias),
              ElementsAre("1|Canal|1|no está", "3|Flags|3|1", "3|Alarma de Máxima (AMax):|12,5|125",
                          "7|Alarma de Mínima (AMin):||0", "7|Descripción|a|A"));
}

TEST(PruebaVerificacion, LaConstanteDelPluviometroSeLeeConCualquierComa) {
  const TablaPtr escrita = TablaDeCanales({{{"Canal", "15"}, {"CtePluvi", "0.25"}}});
  std::vector<const char*> columnas(kColumnasDeCanal.size());
  std::transform(kColumnasDeCanal.begin(), kColumnasDeCanal.end(), columnas.begin(),
                 [](const ColumnaCanal& columna) { return columna.nombre.data(); });
  const TablaPtr de_textos = TablaDeTextos(columnas, {{}});
  for (const char* columna : columnas) de_textos->Set(columna, escrita->Texto(columna));
  de_textos->Set("CtePluvi", "0,25");
  EXPECT_THAT(Lineas(Verificar(*escrita, *de_textos).diferencias), IsEmpty());
}

TEST(PruebaVerificacion, UnaTablaSinColumnasNoVerificaNada) {
  const TablaPtr escrita = TablaDeCanales({{{"Canal", "1"}, {"AMax", "5"}}});
  const auto lineas = Lineas(Verificar(*escrita, *TablaDeTextos({"Canal"}, {{"1"}})).diferencias);
  EXPECT_EQ(lineas.size(), kComparadas);
  EXPECT_THAT(lineas, testing::Contains("1|Alarma de Máxima (AMax):|5|no está"));
  EXPECT_THAT(Lineas(Verificar(*escrita, *TablaDeTextos({"AMax"}, {{"5"}})).diferencias),
              ElementsAre("1|Canal|1|no está"));
}

TEST(PruebaVerificacion, ElAvisoNombraElPasoVeinteValoresYElRespaldo) {
  VerificacionEscritura verificacion;
  EXPECT_EQ(AvisoDeVerificacion(verificacion, PasoEscritura::kReinicio, ""),
            "La escritura no está completa: falló el paso \"reinicio de la UTR\"\n"
            "No hay un respaldo de la configuración anterior");
  verificacion.diferencias = {{3, "Valor Máximo  (MaxValid):", "10", ""}};
  EXPECT_EQ(AvisoDeVerificacion(verificacion, std::nullopt, "/r/a.ucg"),
            "Un valor releído de la UTR difiere de lo escrito:\n"
            "EA03 - Valor Máximo  (MaxValid): escrito \"10\", leído \"\"\n"
            "La configuración anterior está respaldada en /r/a.ucg");
  const auto lineas = [&](std::size_t cuantas) {
    verificacion.diferencias.resize(cuantas);
    const std::string aviso = AvisoDeVerificacion(verificacion, PasoEscritura::kEvento, "");
    return std::pair(std::count(aviso.begin(), aviso.end(), '\n'), aviso.find("... y 3 más\n") != std::string::npos);
  };
  EXPECT_EQ(lineas(20), std::pair(22L, false));
  EXPECT_EQ(lineas(23), std::pair(23L, true));
}

}  // namespace
}  // namespace utr
