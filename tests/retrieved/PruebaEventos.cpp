#include "retrieved/Banco.h"
#include "retrieved/Eventos.h"

namespace utr {
namespace {

using prueba::NumeroDeError;

const std::vector<const char*> kOrigen = {"Fecha", "Hora", "Codigo", "Valor1", "Valor2"};
const std::vector<const char*> kTodos = {"Fecha", "Hora", "Codigo", "Valor1", "Valor2", "Descripcion"};

class PruebaEventos : public Banco {
 protected:
  PruebaEventos() {
    comunicador_.Devuelve("DescribirCodigo", 1900);
    comunicador_.Devuelve("ConvertirA", std::function<std::string(const std::string&)>(
                                            [](const std::string& llamada) { return "dia de " + llamada; }));
  }

  // Channel 3 spans 10 over 4096 counts from 100 up.
  TablaPtr canales_ =
      TablaDeCanales({{{"Canal", "3"}, {"RangoMin", "100"}, {"RangoMax", "110"}}, {{"Canal", "4"}, {"Rango", ""}}});
  TablaPtr descripciones_ =
      TablaDeTextos({"Numero", "Nombre", "Valor1", "Valor2"}, {{"1", "Reinicio", "-", "-"},
                                                               {"10", "Alarma", "Canal", "Valor"},
                                                               {"20", "Batería", "Tensión", "-"},
                                                               {"21", "Puerta", "ab", "cd"},
                                                               {"22", "Rota", "", "Valor"},
                                                               {"25", "Rara", "ñé", "ñé"},
                                                               {"26", "Corta", "ñéí", "°%"},
                                                               {"31", "Salto", "Canal", "Diferencia"}});

  std::vector<std::string> Armar(const std::vector<Celdas>& filas) {
    return Filas(*ArmarRegistrosEventos(TablaDeTextos(kOrigen, filas), canales_.get(), descripciones_.get()), kTodos);
  }
  std::vector<std::string> Pendientes(const std::vector<Celdas>& filas) {
    return Filas(
        *ArmarEventosPendientes(TablaDeTextos(kOrigen, filas), canales_.get(), descripciones_.get(), contexto_),
        kTodos);
  }
};

struct CasoEvento {
  Celdas fila;
  const char* resultado;
};

TEST_F(PruebaEventos, ValoresSegunLosRotulos) {
  const CasoEvento casos[] = {
      {{"", "10:00", "31", "2", "2048"}, "|10:00|31|Canal:  3|5.000|Salto"},
      {{"", "10:00", "10", "2", "2048"}, "|10:00|10|Canal:  3|105.000|Alarma"},
      {{"", "10:00", "10", "8", "2048"}, "|10:00|10|Canal:  9|2048|Alarma"},
      {{"", "10:00", "20", "123", "7"}, "|10:00|20|123|7|Batería"},
      {{"", "10:00", "20", nullptr, "7"}, "|10:00|20|(nulo)|7|Batería"},
      {{"", "10:00", "10", "2", "abc"}, "|10:00|10|N/D|N/D|Alarma"},
      {{"", "10:00", "10", "abc", "2048"}, "|10:00|10|N/D|N/D|Alarma"},
      {{"", "10:00", "31", "", "2048"}, "|10:00|31|N/D|N/D|Salto"},
      {{"", "10:00", "31", nullptr, "2048"}, "|10:00|31|N/D|N/D|Salto"},
      {{"", "10:00", "20", "abc", "7"}, "|10:00|20|abc|7|Batería"},
      {{"", "10:00", "20", "123", ""}, "|10:00|20|N/D|N/D|Batería"},
      {{"", "10:00", "1", "5", "6"}, "|10:00|1|N/D|N/D|Reinicio"},
      {{"", "10:00", "21", "5", "6"}, "|10:00|21|N/D|N/D|Puerta"},
      {{"", "10:00", "22", "2", "6"}, "|10:00|22|N/D|N/D|Rota"},
      {{"", "10:00", "25", "2", "6"}, "|10:00|25|N/D|N/D|Rara"},
      {{"", "10:00", "26", "2", "6"}, "|10:00|26|2|6|Corta"},
      {{"", "10:00", "99", "5", "6"}, "|10:00|99|N/D|N/D|-"},
      {{"", "10:00", "40000", "5", "6"}, "|10:00|40000|N/D|N/D|-"},
      {{"", "10:00", " 20 ", "5", "6"}, "|10:00| 20 |5|6|Batería"},
      {{"", "10:00", "xx", "5", "6"}, "|10:00|N/D|N/D|N/D|Evento"},
      {{"", "10:00", nullptr, "5", "6"}, "|10:00|N/D|N/D|N/D|Evento"},
  };
  for (const CasoEvento& caso : casos) EXPECT_EQ(Armar({caso.fila}), std::vector<std::string>{caso.resultado});
}

TEST_F(PruebaEventos, UnCodigoIlegibleHeredaLasMarcasDelAnterior) {
  EXPECT_EQ(Armar({{"", "10:00", "31", "2", "2048"},
                   {"", "10:01", "xx", "2", "4096"},
                   {"", "10:02", "1", "2", "4096"},
                   {"", "10:03", "xx", "2", "4096"}}),
            (std::vector<std::string>{"|10:00|31|Canal:  3|5.000|Salto", "|10:01|N/D|Canal:  3|10.000|Evento",
                                      "|10:02|1|N/D|N/D|Reinicio", "|10:03|N/D|N/D|N/D|Evento"}));
}

TEST_F(PruebaEventos, CualquierTextoLargoEsMarcador) {
  EXPECT_EQ(Armar({{"x", "10:00", "1", "", ""},
                   {"ayer", "10:01", "1", "", ""},
                   {"", "10:02", "1", "", ""},
                   {"02/02/2005"},
                   {nullptr, "1", "1", "", ""},
                   {nullptr, "10:03", "1", "", ""}}),
            (std::vector<std::string>{"|10:00|1|N/D|N/D|Reinicio", "ayer|10:02|1|N/D|N/D|Reinicio",
                                      "02/02/2005|10:03|1|N/D|N/D|Reinicio"}));
}

TEST_F(PruebaEventos, SinDescripcionesNoHayNombresNiValores) {
  const auto origen = TablaDeTextos(kOrigen, {{"", "10:00", "31", "2", "2048"}, {"", "10:01", "y", "2", "2048"}});
  EXPECT_EQ(Filas(*ArmarRegistrosEventos(origen, canales_.get(), nullptr), kTodos),
            (std::vector<std::string>{"|10:00|31|N/D|N/D|Evento", "|10:01|N/D|N/D|N/D|Evento"}));
}

TEST_F(PruebaEventos, SinConfiguracionElSegundoValorQuedaCrudo) {
  const auto origen = TablaDeTextos(kOrigen, {{"", "10:00", "31", "2", "2048"}});
  EXPECT_EQ(Filas(*ArmarRegistrosEventos(origen, nullptr, descripciones_.get()), {"Valor1", "Valor2"}),
            (std::vector<std::string>{"Canal:  3|2048"}));
}

TEST_F(PruebaEventos, VacioOSinOrigen) {
  EXPECT_EQ(ArmarRegistrosEventos(nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(ArmarEventosPendientes(nullptr, nullptr, nullptr, contexto_), nullptr);
  const TablaPtr sin_filas = TablaDeTextos({"Fecha"});
  for (const TablaPtr& vacio : {ArmarRegistrosEventos(sin_filas, nullptr, nullptr),
                                ArmarEventosPendientes(sin_filas, nullptr, nullptr, contexto_)}) {
    const std::uint32_t tamanos[] = {20, 15, 50, 50, 50, 150};
    ASSERT_EQ(vacio->FieldCount(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
      EXPECT_EQ(vacio->Field(i).nombre, kTodos[i]);
      EXPECT_EQ(vacio->Field(i).tamano, tamanos[i]);
    }
    EXPECT_EQ(vacio->RecordCount(), 0U);
  }
  EXPECT_TRUE(comunicador_.llamadas.empty());
}

TEST_F(PruebaEventos, PendientesAntesDelPrimerMarcadorSonDelDiaAnterior) {
  EXPECT_EQ(Pendientes({{"", "22:00", "1", "", ""},
                        {"x", "23:00", "1", "", ""},
                        {nullptr, "23:30", "1", "", ""},
                        {"15/03/2005", "08:00", "1", "", ""},
                        {"", "00:10", "1", "", ""},
                        {"16/03/2005"},
                        {"", "00:20", "1", "", ""}}),
            (std::vector<std::string>{"dia de ConvertirA(1899)|22:00|1|N/D|N/D|Reinicio",
                                      "dia de ConvertirA(1899)|23:00|1|N/D|N/D|Reinicio",
                                      "dia de ConvertirA(1899)|23:30|1|N/D|N/D|Reinicio",
                                      "15/03/2005|00:10|1|N/D|N/D|Reinicio", "16/03/2005|00:20|1|N/D|N/D|Reinicio"}));
  EXPECT_EQ(comunicador_.llamadas, (std::vector<std::string>{"DescribirCodigo(15/03/2005)", "ConvertirA(1899)"}));
}

TEST_F(PruebaEventos, PendientesSinMarcadorSonDeHoy) {
  EXPECT_EQ(Pendientes({{"", "22:00", "1", "", ""}, {"", "23:00", "1", "", ""}}),
            (std::vector<std::string>{"15/03/2026|22:00|1|N/D|N/D|Reinicio", "15/03/2026|23:00|1|N/D|N/D|Reinicio"}));
  EXPECT_TRUE(comunicador_.llamadas.empty());
}

TEST_F(PruebaEventos, PendientesNuncaSonDiferencias) {
  EXPECT_EQ(Pendientes({{"15/03/2005"}, {"", "10:00", "31", "2", "2048"}}),
            (std::vector<std::string>{"15/03/2005|10:00|31|Canal:  3|105.000|Salto"}));
}

TEST_F(PruebaEventos, LaFechaProvisionalPropiaTambienSeCambiaYElBucleTermina) {
  EXPECT_EQ(Pendientes({{"", "22:00", "1", "", ""}, {"01/01/2001"}, {"", "10:00", "1", "", ""}}),
            (std::vector<std::string>{"dia de ConvertirA(1899)|22:00|1|N/D|N/D|Reinicio",
                                      "dia de ConvertirA(1899)|10:00|1|N/D|N/D|Reinicio"}));
  comunicador_.Devuelve("ConvertirA", "01/01/2001");
  EXPECT_EQ(Pendientes({{"", "22:00", "1", "", ""}, {"02/01/2001"}, {"", "10:00", "1", "", ""}}),
            (std::vector<std::string>{"01/01/2001|22:00|1|N/D|N/D|Reinicio", "02/01/2001|10:00|1|N/D|N/D|Reinicio"}));
}

TEST_F(PruebaEventos, DondeQuedaElCursor) {
  const auto origen = TablaDeTextos(kOrigen, {{"", "10:00", "1", "", ""}, {"", "11:00", "1", "", ""}});
  EXPECT_TRUE(ArmarRegistrosEventos(origen, nullptr, nullptr)->Eof());
  const TablaPtr pendientes = ArmarEventosPendientes(origen, nullptr, nullptr, contexto_);
  EXPECT_EQ(pendientes->Texto("Hora"), "10:00");
  EXPECT_EQ(pendientes->Filter(), "");
  EXPECT_EQ(pendientes->Pendientes(), 0U);
}

TEST_F(PruebaEventos, LoQueFallaSube) {
  EXPECT_EQ(NumeroDeError([&] { Armar({{"", "10:00", "10", "3", "7"}}); }), error::kTipos) << "an empty Rango";
  EXPECT_EQ(NumeroDeError([&] {
              descripciones_->AddNew();
              descripciones_->Set("Numero", "40000");
              descripciones_->Set("Valor1", "Canal");
              descripciones_->Set("Valor2", "Valor");
              Armar({{"", "10:00", "40000", "2", "7"}});
            }),
            error::kDesborde);
  comunicador_.Devuelve("DescribirCodigo", 40000);
  EXPECT_EQ(NumeroDeError([&] { Pendientes({{"15/03/2105"}}); }), error::kDesborde);
  for (const char* falta : kOrigen) {
    auto campos = kOrigen;
    std::erase(campos, falta);
    const auto origen = TablaDeTextos(campos, {{"x"}});
    EXPECT_EQ(NumeroDeError([&] { ArmarRegistrosEventos(origen, nullptr, nullptr); }), error::kCampo) << falta;
    EXPECT_EQ(NumeroDeError([&] { ArmarEventosPendientes(origen, nullptr, nullptr, contexto_); }), error::kCampo)
        << falta;
  }
}

TEST_F(PruebaEventos, DescribirEvento) {
  EXPECT_EQ(DescribirEvento(" 31 ", descripciones_.get()), "31#Salto#Canal#Diferencia");
  EXPECT_EQ(descripciones_->Filter(), "Numero='31'");
  EXPECT_EQ(DescribirEvento("7", descripciones_.get()), "7#-#-#-");
  EXPECT_EQ(DescribirEvento("7", nullptr), "7#-#-#-");
}

TEST_F(PruebaEventos, Diferenciales) {
  std::vector<int> codigos;
  for (std::int16_t codigo = -1; codigo <= 256; ++codigo) {
    if (EsEventoDiferencial(codigo)) codigos.push_back(codigo);
  }
  EXPECT_EQ(codigos, (std::vector<int>{23, 24, 31, 32, 33, 34, 35}));
}

TEST_F(PruebaEventos, DescripcionesQueSeEntregan) {
  const TablaPtr tabla = CargarEventos(CARPETA_DATOS);
  ASSERT_NE(tabla, nullptr);
  for (; !tabla->Eof(); tabla->MoveNext()) {
    const auto numero = std::stoi(tabla->Texto("Numero"));
    const bool con_dos = tabla->Texto("Valor2").size() > 2;
    if (EsEventoDiferencial(static_cast<std::int16_t>(numero))) {
      EXPECT_TRUE(con_dos) << numero;
    }
    if (con_dos) {
      EXPECT_GT(tabla->Texto("Valor1").size(), 2U) << numero;
    }
  }
  EXPECT_EQ(DescribirEvento("128", tabla.get()), "128#Parametrización#-#-");
}

TEST_F(PruebaEventos, ArchivoDeDescripcionesAusenteOCortado) {
  EXPECT_EQ(CargarEventos(carpeta_.Ruta()), nullptr);
  const std::string entero = prueba::LeerTodo(std::filesystem::path(CARPETA_DATOS) / "Eventos.xml");
  prueba::EscribirTodo(carpeta_ / "Eventos.xml", entero.substr(0, entero.size() - 40));
  EXPECT_EQ(CargarEventos(carpeta_.Ruta()), nullptr);
}

}  // namespace
}  // namespace utr
