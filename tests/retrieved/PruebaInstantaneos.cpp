#include "retrieved/Banco.h"
#include "retrieved/Instantaneos.h"

namespace utr {
namespace {

using prueba::NumeroDeError;

// A frame whose item at place n is 100 + n.
TablaPtr Trama(int largo) {
  auto tabla = TablaDeTextos({"Valor"});
  for (int i = 0; i < largo; ++i) AgregarFilas(*tabla, {{std::to_string(100 + i).c_str()}});
  return tabla;
}

using PruebaInstantaneos = Banco;

TEST_F(PruebaInstantaneos, LugarDeCadaCanal) {
  const auto trama = Trama(38);
  const int lugares[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 28, 29, 30, 31, 32, 33, 34, 14, 15, 35, 36, 37};
  trama->MoveLast();
  for (std::int16_t canal = 1; canal <= 26; ++canal)
    EXPECT_EQ(ValorInstantaneo(*trama, canal), 100 + lugares[canal - 1]);
  for (const int canal : {-1, 0, 27}) EXPECT_EQ(ValorInstantaneo(*trama, static_cast<std::int16_t>(canal)), 0);
  EXPECT_EQ(trama->Texto("Valor"), "100") << "back on the first row";
}

TEST_F(PruebaInstantaneos, FilasQueTraenVariosValores) {
  EXPECT_EQ(ValorInstantaneo(*TablaDeTextos({"Valor"}, {{"1/2"}, {"3"}}), 3), 3);
}

TEST_F(PruebaInstantaneos, TramaCortaOConTexto) {
  EXPECT_EQ(NumeroDeError([] { ValorInstantaneo(*Trama(28), 15); }), 9);
  EXPECT_EQ(NumeroDeError([] { ValorInstantaneo(*TablaDeTextos({"Valor"}, {{"N/D"}}), 1); }), error::kTipos);
  EXPECT_EQ(NumeroDeError([] { ValorInstantaneo(*TablaDeTextos({"Otro"}, {{"1"}}), 1); }), error::kCampo);
}

class PruebaPresentacion : public Banco {
 protected:
  TablaPtr trama_ = Trama(38);
  TablaPtr canales_ = TablaDeCanales(
      {{{"Canal", "1"}, {"Tipo", "0"}, {"NivRefLmn", "7"}, {"RangoMax", "4096"}, {"Parametro", "2"}, {"Unidad", "1"}},
       {{"Canal", "2"}, {"Flags", "30"}},
       {{"Canal", "15"}, {"Tipo", "5"}, {"CtePluvi", "0.5"}, {"Flags", "9"}, {"Parametro", "3"}, {"Unidad", "2"}},
       {{"Canal", "16"}, {"Tipo", "7"}, {"Flags", "3"}}});

  std::vector<std::string> Presentar(bool escalados, bool con_nivel) {
    return Filas(*PresentacionDatosInstantaneos(*trama_, *canales_, escalados, con_nivel, contexto_),
                 {"Canal", "Valor", "Descripcion", "Unidad"});
  }
};

TEST_F(PruebaPresentacion, UnaFilaPorCanalHabilitado) {
  canales_->MoveLast();
  const TablaPtr tabla = PresentacionDatosInstantaneos(*trama_, *canales_, true, false, contexto_);
  const std::pair<const char*, std::uint32_t> campos[] = {{"Fecha", 20}, {"Hora", 15},        {"Canal", 10},
                                                          {"Valor", 50}, {"Descripcion", 50}, {"Unidad", 50}};
  ASSERT_EQ(tabla->FieldCount(), std::size(campos));
  for (std::size_t i = 0; i < std::size(campos); ++i) {
    EXPECT_EQ(tabla->Field(i).nombre, campos[i].first);
    EXPECT_EQ(tabla->Field(i).tamano, campos[i].second);
  }
  EXPECT_EQ(tabla->Texto("Fecha") + " " + tabla->Texto("Hora"), "15/03/2026 10:00:00");
  EXPECT_EQ(canales_->Filas().Actual(), 0U);
  EXPECT_EQ(trama_->Filas().Actual(), 0U);
  EXPECT_EQ(tabla->Filas().Actual(), 0U);
}

TEST_F(PruebaPresentacion, CuentasOUnidades) {
  EXPECT_EQ(Presentar(true, false), (std::vector<std::string>{"1|100.000|Nivel del río|m", "15| 64|Precipitación|mm",
                                                              "16| 129|Supervisión Digital| - "}));
  EXPECT_EQ(Presentar(true, true), (std::vector<std::string>{"1|107.000|Nivel del río|m", "15| 64|Precipitación|mm",
                                                             "16| 129|Supervisión Digital| - "}));
  for (const bool con_nivel : {false, true})
    EXPECT_EQ(Presentar(false, con_nivel), (std::vector<std::string>{"1|100|Nivel del río|m", "15|128|Precipitación|mm",
                                                                     "16|129|Supervisión Digital| - "}));
}

TEST_F(PruebaPresentacion, LaFallaLlevaSuNombreYQuedaRegistrada) {
  trama_ = Trama(20);
  try {
    Presentar(true, false);
    ADD_FAILURE() << "a short frame was taken";
  } catch (const Error& error) {
    EXPECT_EQ(error.Numero(), 9);
    EXPECT_NE(error.Origen().find("PresentacionDatosInstantaneos"), std::string::npos);
    EXPECT_NE(error.Origen().find("modRTU"), std::string::npos);
  }
  EXPECT_NE(prueba::LeerTodo(carpeta_ / "utr.err").find("\"modRTU\",\"PresentacionDatosInstantaneos\""),
            std::string::npos);
}

}  // namespace
}  // namespace utr
