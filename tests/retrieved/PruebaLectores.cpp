#include <map>

#include "lists/ListaTabla.h"
#include "retrieved/Banco.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/Lectores.h"

namespace utr {
namespace {

using prueba::NumeroDeError;

const FechaHora kPrimero = {2005, 2, 1, 8, 30, 0};
const FechaHora kSegundo = {2005, 2, 2, 7, 0, 0};
const FechaHora kPrimeroAntes = {2005, 2, 1, 8, 29, 0};

class PruebaLectores : public Banco {
 protected:
  TablaPtr canales_ = TablaDeCanales({{{"Canal", "1"}, {"Tipo", "0"}, {"Parametro", "2"}, {"Unidad", "1"}},
                                      {{"Canal", "2"}, {"Tipo", "2"}, {"Flags", "0"}},
                                      {{"Canal", "3"}, {"Tipo", "3"}, {"Parametro", ""}},
                                      {{"Canal", "5"}, {"Tipo", "0"}, {"Parametro", "0"}},
                                      {{"Canal", "4"}, {"Tipo", "4"}},
                                      {{"Canal", "15"}, {"Tipo", "5"}, {"Parametro", "999"}},
                                      {{"Canal", "16"}, {"Tipo", "7"}},
                                      {{"Canal", "22"}, {"Tipo", "1"}, {"Parametro", "1"}}});
  TablaPtr datos_ = TablaDeTextos(
      {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"},
      {{"01/02/2005", "", "1", "", "", "", "", ""}, {"", "10:00:00", "1", "2048", "4096", "0", "1", "0"}});
  TablaPtr sin_filas_ = TablaDeTextos({"Fecha"});
  TablaPtr eventos_ =
      TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2"}, {{"", "10:00:00", "31", "0", "2048"}});

  int atendidos_ = 0;
  Atender atender_ = [this] { ++atendidos_; };
  LectorDatos datos_lector_{contexto_, canales_, atender_};
  LectorCola cola_{contexto_, canales_, atender_};

  LectorDatos::Pedido Pedido(const char* canal) const { return {kPrimero, kSegundo, canal}; }
};

TEST_F(PruebaLectores, CanalesConHistoria) {
  EXPECT_EQ(datos_lector_.CargarCanales(),
            (std::vector<std::string>{"EA01_Nivel del río", "EA03_Direccion de Viento", "EA05_Analógico",
                                      "PLV_Pluviómetro", "EA15_Temperatura del aire"}));
  EXPECT_TRUE(LectorDatos(contexto_, nullptr, nullptr).CargarCanales().empty());
}

TEST_F(PruebaLectores, CanalDeUnaEntrada) {
  const std::pair<const char*, int> casos[] = {{"EA01_Nivel del río", 1},
                                               {"PLV_a_b", 15},
                                               {"EA15_", 22},
                                               {"ED5_Puerta", 18},
                                               {"EA16", 23},
                                               {"", 0},
                                               {"_EA01", 0},
                                               {"SD1_x", 24}};
  for (const auto& [entrada, canal] : casos) EXPECT_EQ(CanalDeEntrada(entrada), canal) << entrada;
}

TEST_F(PruebaLectores, DatosConFechasSolasYCanalDesdeCero) {
  comunicador_.Devuelve("LeerDatos", datos_);
  EXPECT_EQ(datos_lector_.TraerDatos(Pedido("PLV_Lluvia")), FinLectura::kListado);
  EXPECT_EQ(comunicador_.llamadas, (std::vector<std::string>{"LeerDatos(01/02/2005,02/02/2005,14)"}));
  EXPECT_GT(atendidos_, 0);
  EXPECT_EQ(Filas(*datos_lector_.Resultado(), {"Fecha", "Hora", "Valor", "Unidad"}),
            (std::vector<std::string>{"01/02/2005|10:00:00|5.000|m"}));
  auto cuentas = Pedido("EA01_x");
  cuentas.escalados = false;
  datos_lector_.TraerDatos(cuentas);
  EXPECT_EQ(Filas(*datos_lector_.Resultado(), {"Valor", "Unidad", "Descripcion"}),
            (std::vector<std::string>{"2048|-|-"}));
}

TEST_F(PruebaLectores, DatosDelCartucho) {
  comunicador_.Devuelve("LeerDatosCartucho", datos_);
  auto pedido = Pedido("EA01_x");
  pedido.cartucho = true;
  EXPECT_EQ(datos_lector_.TraerDatos(pedido), FinLectura::kListado);
  EXPECT_EQ(comunicador_.llamadas, (std::vector<std::string>{"LeerDatosCartucho(01/02/2005,02/02/2005,0)"}));
}

TEST_F(PruebaLectores, LaCopiaSigueALoQueSeLista) {
  comunicador_.Devuelve("LeerDatos", datos_);
  datos_lector_.TraerDatos(Pedido("EA01_x"));
  datos_->Set("Valor", "1");
  EXPECT_EQ(datos_lector_.Resultado()->Texto("Maximo"), "10.000") << "stands on its first row";

  comunicador_.Devuelve("LeerDatos", sin_filas_);
  EXPECT_EQ(datos_lector_.TraerDatos(Pedido("EA01_x")), FinLectura::kSinDatos);
  ASSERT_NE(datos_lector_.Resultado(), nullptr);
  EXPECT_EQ(datos_lector_.Resultado()->RecordCount(), 0U);

  comunicador_.Devuelve("LeerDatos", TablaPtr{});
  EXPECT_EQ(datos_lector_.TraerDatos(Pedido("EA01_x")), FinLectura::kSinDatos);
  EXPECT_EQ(datos_lector_.Resultado(), nullptr);

  comunicador_.Devuelve("LeerDatos", datos_);
  datos_lector_.TraerDatos(Pedido("EA01_x"));
  comunicador_.Falla("LeerDatos", Error(1000, "x", "y"));
  EXPECT_EQ(NumeroDeError([&] { datos_lector_.TraerDatos(Pedido("EA01_x")); }), 1000);
  EXPECT_EQ(datos_lector_.Resultado(), nullptr);
}

TEST_F(PruebaLectores, DatosQueNoLlaman) {
  LectorDatos::Pedido al_reves = {kSegundo, kPrimero, "EA01_x"};
  EXPECT_EQ(datos_lector_.TraerDatos(al_reves), FinLectura::kFechasAlReves);
  EXPECT_EQ(datos_lector_.TraerDatos(Pedido("")), FinLectura::kSinDatos);
  EXPECT_EQ(datos_lector_.TraerDatos(Pedido("N/D_x")), FinLectura::kSinDatos);
  EXPECT_TRUE(comunicador_.llamadas.empty());
  EXPECT_EQ(datos_lector_.TraerDatos({kPrimero, kPrimeroAntes, "EA01_x"}), FinLectura::kSinDatos) << "the same day";
  EXPECT_EQ(comunicador_.Cuantas("LeerDatos"), 1U);
}

TEST_F(PruebaLectores, InstantaneosDosLlamadasSalvoLecturaFresca) {
  const auto trama = TablaDeTextos({"Valor"}, std::vector<Celdas>(38, Celdas{"8"}));
  comunicador_.Devuelve("LeerInstantaneos", trama);
  const std::vector<std::string> dobles = {"LeerInstantaneos()", "Pausa(3)", "LeerInstantaneos()"};
  const std::vector<std::string> una = {"LeerInstantaneos()"};
  const std::pair<double, const std::vector<std::string>*> pasos[] = {
      {0, &dobles}, {8.999, &una}, {8.999, &una}, {9, &dobles}};
  for (const auto& [segundos, llamadas] : pasos) {
    reloj_.Adelantar(segundos);
    comunicador_.llamadas.clear();
    EXPECT_EQ(datos_lector_.MostrarInstantaneos(false, false), FinLectura::kListado);
    EXPECT_EQ(comunicador_.llamadas, *llamadas) << segundos;
  }
}

TEST_F(PruebaLectores, InstantaneosUsanLaSegundaLectura) {
  int llamada = 0;
  comunicador_.Devuelve("LeerInstantaneos", [&](const std::string&) {
    return TablaDeTextos({"Valor"}, std::vector<Celdas>(38, Celdas{++llamada == 1 ? "1" : "2"}));
  });
  datos_lector_.MostrarInstantaneos(false, false);
  EXPECT_EQ(datos_lector_.Resultado()->Texto("Valor"), "2");
}

TEST_F(PruebaLectores, InstantaneosSinDatos) {
  EXPECT_EQ(datos_lector_.MostrarInstantaneos(true, true), FinLectura::kSinDatos);
  comunicador_.Devuelve("LeerInstantaneos", sin_filas_);
  EXPECT_EQ(datos_lector_.MostrarInstantaneos(true, true), FinLectura::kSinDatos);
  EXPECT_EQ(datos_lector_.Resultado(), nullptr);
  EXPECT_EQ(comunicador_.Cuantas("LeerInstantaneos"), 3U) << "a read without data counts as the last one too";
}

TEST_F(PruebaLectores, EventosPorFechaConSuHora) {
  comunicador_.Devuelve("LeerEventos", eventos_);
  comunicador_.Devuelve("LeerEventosCartucho", eventos_);
  LectorEventos lector(contexto_, canales_, atender_, CARPETA_DATOS);
  EXPECT_TRUE(lector.ConDescEventos());
  EXPECT_EQ(lector.TraerPorFecha(kPrimero, kPrimero, false), FinLectura::kListado);
  EXPECT_EQ(lector.TraerPorFecha(kPrimero, kSegundo, true), FinLectura::kListado);
  EXPECT_EQ(comunicador_.llamadas,
            (std::vector<std::string>{"LeerEventos(01/02/2005 08:30:00,01/02/2005 08:30:00)",
                                      "LeerEventosCartucho(01/02/2005 08:30:00,02/02/2005 07:00:00)"}));
  EXPECT_EQ(Filas(*lector.Resultado(), {"Fecha", "Valor1", "Valor2", "Descripcion"}),
            (std::vector<std::string>{"|Canal:  1|5.000|Ascenso con transmisión"}));
  EXPECT_EQ(lector.TraerPorFecha(kPrimero, kPrimeroAntes, false), FinLectura::kFechasAlReves);
  EXPECT_EQ(lector.Resultado(), nullptr);
}

TEST_F(PruebaLectores, EventosPendientes) {
  comunicador_.Devuelve("LeerEventos", eventos_);
  LectorEventos lector(contexto_, canales_, atender_, CARPETA_DATOS);
  EXPECT_EQ(lector.TraerPendientes(), FinLectura::kListado);
  EXPECT_EQ(comunicador_.llamadas, (std::vector<std::string>{"LeerEventos(,)"}));
  EXPECT_EQ(lector.Resultado()->Texto("Fecha"), "15/03/2026");
}

// A scaling that fails leaves the table of channels on the one that it was at.
TEST_F(PruebaLectores, UnaLecturaFallidaNoEscondeCanales) {
  canales_->Filter("Canal='15'");
  canales_->Set("CtePluvi", "1e308");
  canales_->Filter("");
  const std::vector<std::string> todos = datos_lector_.CargarCanales();
  comunicador_.Devuelve("LeerDatos",
                        TablaDeTextos({"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"},
                                      {{"", "10:00:00", "15", "2048", "", "", "1", "0"}}));
  comunicador_.Devuelve("LeerInstantaneos", TablaDeTextos({"Valor"}, std::vector<Celdas>(38, Celdas{"8"})));
  EXPECT_EQ(NumeroDeError([&] { datos_lector_.TraerDatos(Pedido("PLV_x")); }), error::kDesborde);
  ASSERT_EQ(canales_->Filter(), "Canal='15'");
  EXPECT_EQ(datos_lector_.MostrarInstantaneos(false, false), FinLectura::kListado);
  EXPECT_EQ(datos_lector_.Resultado()->RecordCount(), 7U);
  canales_->Filter("Canal='99'");
  EXPECT_EQ(datos_lector_.CargarCanales(), todos);
  canales_->Filter("Canal='99'");
  EXPECT_EQ(datos_lector_.MostrarInstantaneos(false, false), FinLectura::kListado);
}

TEST_F(PruebaLectores, EventosSinDescripcionesOSinCanales) {
  comunicador_.Devuelve("LeerEventos", eventos_);
  LectorEventos sin_descripciones(contexto_, canales_, atender_, carpeta_.Ruta());
  LectorEventos sin_canales(contexto_, nullptr, atender_, CARPETA_DATOS);
  EXPECT_FALSE(sin_descripciones.ConDescEventos());
  for (LectorEventos* lector : {&sin_descripciones, &sin_canales}) {
    for (const bool pendientes : {false, true}) {
      pendientes ? lector->TraerPendientes() : lector->TraerPorFecha(kPrimero, kSegundo, false);
      EXPECT_EQ(Filas(*lector->Resultado(), {"Fecha", "Valor1", "Valor2", "Descripcion"}),
                (std::vector<std::string>{"|N/D|N/D|Evento"}));
    }
  }
}

TEST_F(PruebaLectores, ColaPorDiaYPendiente) {
  comunicador_.Devuelve("LeerColaTx", datos_);
  comunicador_.Devuelve("LeerColaTxCartucho", datos_);
  EXPECT_EQ(cola_.TraerPorDia(kPrimero, kSegundo, false), FinLectura::kListado);
  EXPECT_TRUE(cola_.PorDia());
  EXPECT_EQ(cola_.TraerPorDia(kPrimero, kPrimeroAntes, true), FinLectura::kListado);
  EXPECT_EQ(cola_.TraerPendientes(), FinLectura::kListado);
  EXPECT_FALSE(cola_.PorDia());
  EXPECT_EQ(comunicador_.llamadas,
            (std::vector<std::string>{"LeerColaTx(01/02/2005,02/02/2005)", "LeerColaTxCartucho(01/02/2005,01/02/2005)",
                                      "LeerColaTx(,)"}));
  EXPECT_EQ(cola_.TraerPorDia(kSegundo, kPrimero, false), FinLectura::kFechasAlReves);
  EXPECT_FALSE(cola_.PorDia()) << "what is on show was pending";
  EXPECT_EQ(cola_.Resultado()->Texto("Valor"), "5.000");
}

TEST_F(PruebaLectores, ColaSinDatos) {
  EXPECT_EQ(cola_.TraerPendientes(), FinLectura::kSinDatos);
  comunicador_.Devuelve("LeerColaTx", sin_filas_);
  EXPECT_EQ(cola_.TraerPorDia(kPrimero, kPrimero, false), FinLectura::kSinDatos);
}

// The columns of a view over the table that its reader gives: every field named there exists.
std::string PrimeraFila(const Columnas& columnas, const TablaPtr& tabla) {
  ListaTabla lista(columnas);
  lista.Mostrar(tabla);
  std::string texto;
  for (const ColumnaLista& columna : columnas) texto += columna.titulo + ";";
  return texto + "\n" + lista.TextoDeFilas(std::vector<std::size_t>{0});
}

TEST_F(PruebaLectores, ColumnasDeCadaVista) {
  comunicador_.Devuelve("LeerDatos", datos_);
  comunicador_.Devuelve("LeerEventos", eventos_);
  comunicador_.Devuelve("LeerInstantaneos", TablaDeTextos({"Valor"}, std::vector<Celdas>(38, Celdas{"0"})));
  const std::string titulos_datos = "Fecha;Hora;Canal;Descripción;Valor ;Unidad;Máximo;Mínimo;Validación;Cola TX;\n";
  datos_lector_.TraerDatos(Pedido("EA01_x"));
  EXPECT_EQ(PrimeraFila(ColumnasDatos(), datos_lector_.Resultado()),
            titulos_datos + "01/02/2005\t10:00:00\tEA01\tNivel del río\t5.000\tm\t10.000\t0.000\tSi\tNo");
  datos_lector_.MostrarInstantaneos(true, false);
  EXPECT_EQ(PrimeraFila(ColumnasInstantaneos(), datos_lector_.Resultado()),
            titulos_datos + "15/03/2026\t10:00:00\tEA01\tNivel del río\t0.000\tm\t-\t-\t-\t-");
  LectorEventos lector(contexto_, canales_, atender_, CARPETA_DATOS);
  lector.TraerPendientes();
  EXPECT_EQ(PrimeraFila(ColumnasEventos(), lector.Resultado()),
            "Fecha;Hora;Código;Descripción;Valor 1;Valor 2;\n"
            "15/03/2026\t10:00:00\t31\tAscenso con transmisión\tCanal:  1\t5.000");
}

// Two rows of which the first one of each pair comes first by the kind of its column alone: by texts, or as they were
// added, the other one would.
TEST_F(PruebaLectores, CadaColumnaSeOrdenaPorSuClase) {
  const std::map<std::string, std::pair<const char*, const char*>> pares = {{"Fecha", {"02/01/2005", "01/02/2005"}},
                                                                            {"Hora", {"9:59:59", "10:00:00"}},
                                                                            {"Valor", {"9", "10"}},
                                                                            {"Maximo", {"-1", "-0.5"}},
                                                                            {"Minimo", {"9", "1e1"}},
                                                                            {"Codigo", {"9", "10"}},
                                                                            {"Valor1", {"9", "10"}},
                                                                            {"Valor2", {"9", "10"}},
                                                                            {"Canal", {"10", "9"}},
                                                                            {"Descripcion", {"10", "9"}},
                                                                            {"Unidad", {"10", "9"}}};
  for (const Columnas& columnas : {ColumnasDatos(), ColumnasEventos()}) {
    for (const ColumnaLista& columna : columnas) {
      const auto par = pares.find(columna.campo);
      if (par == pares.end()) continue;
      ListaTabla lista({columna});
      lista.Mostrar(TablaDeTextos({par->first.c_str()}, {{par->second.second}, {par->second.first}}));
      lista.Ordenar({0});
      EXPECT_EQ(lista.Texto(0, 0), par->second.first) << columna.titulo;
    }
  }
}

}  // namespace
}  // namespace utr
