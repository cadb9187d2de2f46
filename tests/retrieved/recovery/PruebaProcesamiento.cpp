#include <fmt/format.h>
#include <gmock/gmock.h>

#include <numeric>

#include "base/Texto.h"
#include "retrieved/Banco.h"
#include "retrieved/Eventos.h"
#include "retrieved/recovery/ListasPilas.h"
#include "retrieved/recovery/Procesamiento.h"
#include "retrieved/recovery/SeleccionRegistros.h"
#include "support/DispositivoLleno.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A page line: 66 items, all `byte` but the first 64 less `datos` ones, which are erased, and the two of the tail.
std::string Linea(int pista, int pagina, int byte = 7, int datos = 64) {
  std::string texto;
  for (int i = 0; i < 64; ++i) texto += (i < datos ? std::to_string(byte) : "255") + ",";
  return fmt::format("\"{}0,0#{},{}\"\r\n", texto, pista, pagina);
}

// Keeps the frames that decoders are given.
class ConTramas : public ComunicadorFalso {
 public:
  std::vector<std::vector<std::uint8_t>> tramas;

  TablaPtr DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                             std::string_view fecha) override {
    tramas.emplace_back(pagina.begin(), pagina.end());
    return ComunicadorFalso::DecodificarPagina(pagina, descriptor, fecha);
  }
};

const Celdas kMarca = {"10/03/2026"};

TablaPtr Muestras(const std::vector<Celdas>& filas) {
  return TablaDeTextos({"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"}, filas);
}

class Procesamiento : public Banco {
 protected:
  // Channels 1 to 3 in stacks 2, 0 and none; the rain gauge in stack 8.
  TablaPtr configuracion_ = TablaDeCanales({{{"Canal", "1"}, {"Pila", "2"}, {"TStorage", "10"}},
                                            {{"Canal", "2"}, {"Pila", "0"}},
                                            {{"Canal", "3"}, {"Pila", ""}},
                                            {{"Canal", "4"}, {"Pila", "1"}, {"Tipo", "4"}},
                                            {{"Canal", "15"}, {"Pila", "8"}, {"Tipo", "5"}}});
  ConTramas driver_;
  MapaMemoria mapa_{UsoMapa::kProceso};

  std::filesystem::path Archivo(const std::string& texto, const std::string& nombre = "equipo.bkp") {
    prueba::EscribirTodo(carpeta_ / nombre, texto);
    return carpeta_ / nombre;
  }

  ResultadoProceso Procesar(const std::vector<std::filesystem::path>& archivos) {
    std::filesystem::create_directory(carpeta_ / "res");
    PedidoProceso pedido;
    pedido.configuracion = configuracion_;
    pedido.archivos = archivos;
    pedido.carpeta = carpeta_ / "res";
    pedido.configuracion_aplicada = "del equipo 120";
    pedido.mapa = &mapa_;
    ResultadoProceso resultado = ProcesandoDatos(pedido, {driver_, reloj_, catalogo_, registro_}, progreso_, {});
    EXPECT_TRUE(resultado.informe.LineasCuadran());
    EXPECT_TRUE(resultado.informe.FilasCuadran());
    return resultado;
  }
  ResultadoProceso ProcesarTexto(const std::string& texto) {
    return Procesar(std::vector<std::filesystem::path>{Archivo(texto)});
  }

  std::vector<std::string> Guardadas(const std::string& nombre) const {
    const auto ruta = carpeta_ / "res" / nombre;
    if (!std::filesystem::exists(ruta)) return {"sin archivo"};
    Tabla tabla;
    tabla.Open(ruta);
    return Filas(tabla, {"Fecha", "Hora", "Canal", "Valor"});
  }

  // Keeps what it is told.
  struct Anotado : SinProgreso {
    void Texto(std::string_view texto) override { textos.emplace_back(texto); }
    void Rango(std::int64_t pasos) override { rangos.push_back(pasos); }
    void Posicion(std::int64_t hechos) override { ultima = hechos; }
    std::vector<std::string> textos;
    std::vector<std::int64_t> rangos;
    std::int64_t ultima = -1;
  } progreso_;
};

TEST_F(Procesamiento, LosDescriptoresSiguenAlIndice) {
  // Stack 1 has no channel with a history; stack 2 leaves no page on its first track.
  ProcesarTexto(Linea(2, 5) + Linea(3, 0) + Linea(6, 0, 7, 4) + Linea(7, 9) + Linea(24, 0) + Linea(27, 5) +
                Linea(30, 6));
  // The index begins at the first entry of the list, whatever the stack; track 6 is blank and so doesn't count.
  EXPECT_THAT(driver_.De("DecodificarPagina"), ElementsAre("DecodificarPagina(bytes, 0#0#1024#0#64,01/01/2001)",
                                                           "DecodificarPagina(bytes, 0#0#1024#0#64,01/01/2001)",
                                                           "DecodificarPagina(bytes, 14#0#1024#0#64,01/01/2001)",
                                                           "DecodificarPagina(bytes,1#0#1024#0#64,01/01/2001)"));
  EXPECT_THAT(driver_.De("DecodificarPaginaCola"),
              ElementsAre("DecodificarPaginaCola(bytes,1#5#1024#0#64,01/01/2001)"));
}

// A page line of 40 bytes.
std::string Incompleta(const std::string& lugar) {
  std::string corta = "\"";
  for (int i = 0; i < 40; ++i) corta += "9,";
  return corta + "9#" + lugar + "\"\r\n";
}

TEST_F(Procesamiento, LaTramaNoSeBorraEntreLineas) {
  const ResultadoProceso resultado = ProcesarTexto(Linea(0, 0, 7) + Linea(1, 0, 8, 4) + Incompleta("1,1"));
  ASSERT_EQ(driver_.tramas.size(), 2U);
  EXPECT_EQ(driver_.tramas[0].size(), 78U);
  EXPECT_EQ(std::accumulate(driver_.tramas[0].begin(), driver_.tramas[0].begin() + 13, 0), 0);
  EXPECT_EQ(driver_.tramas[0][13], 7);
  EXPECT_EQ(driver_.tramas[0][76], 7);
  EXPECT_EQ(driver_.tramas[0][77], 0);
  // What a short line doesn't bring is of the line before, though that was a blank one, and the report says so.
  EXPECT_EQ(driver_.tramas[1][52], 9);
  EXPECT_EQ(driver_.tramas[1][53], 255);
  EXPECT_EQ(resultado.informe.archivos[0].cuantas_incompletas, 1U);
  EXPECT_THAT(TextoInforme(resultado.informe), HasSubstr("línea 3: pista 1, página 1: trae 40 bytes"));
}

TEST_F(Procesamiento, CadaArchivoEmpiezaDeNuevo) {
  driver_.Devuelve("DecodificarPagina", [&](const std::string&) -> TablaPtr {
    if (driver_.tramas.size() == 1) return Muestras({kMarca, {"", "10:00:00", "15", "1"}});
    return Muestras({{"", "11:00:00", "15", "1"}});
  });
  const ResultadoProceso resultado =
      Procesar({Archivo(Linea(24, 0), "uno.bkp"), Archivo(Incompleta("25,0"), "dos.bkp")});
  ASSERT_EQ(driver_.tramas.size(), 2U);
  EXPECT_EQ(driver_.tramas[1][53], 0) << "no byte of the other file";
  EXPECT_THAT(driver_.De("DecodificarPagina").back(), HasSubstr("bytes, 0#")) << "nor its index";
  EXPECT_EQ(resultado.informe.Filas(), (CuentaFilas{{1, 1, 0, 0, 0}})) << "nor its date";
}

TEST_F(Procesamiento, CadaDanoTieneSuCuenta) {
  driver_.Devuelve("DecodificarPagina", [&](const std::string&) -> TablaPtr {
    return Muestras({kMarca, {"", "10:00:00", "2", "2048"}});
  });
  const std::string texto = "\"0/31\"\r\n" + Linea(0, 0) + Linea(0, 0) + Linea(0, 1, 7, 4) + Linea(0, 2, 255) +
                            Linea(3, 7) + Linea(0, 3, 256) + Linea(32, 3) + "\"EOT\"\r\n\r\n\"otra\"\r\n" +
                            Linea(27, 0) + Linea(30, 0) + "\"255,25";
  const ResultadoProceso resultado = ProcesarTexto(texto);
  const CuentaLineas lineas = resultado.informe.Lineas();
  const std::pair<FinLinea, std::uint64_t> esperadas[] = {
      {FinLinea::kEncabezado, 1}, {FinLinea::kDatos, 1},    {FinLinea::kRepetida, 1},   {FinLinea::kBlanca, 2},
      {FinLinea::kSinCanal, 1},   {FinLinea::kDanada, 2},   {FinLinea::kFinDePista, 1}, {FinLinea::kVacia, 1},
      {FinLinea::kCorta, 1},      {FinLinea::kSinTabla, 2}, {FinLinea::kCortada, 1}};
  for (const auto& [fin, cuantas] : esperadas) EXPECT_EQ(lineas[fin], cuantas) << EnPalabras(fin);
  const std::string informe = TextoInforme(resultado.informe);
  for (const char* dicho :
       {"del equipo 120", "línea 7: tiene un número mayor que 255", "línea 8: la pista no es un número de 0 a 31",
        "ningún canal de la configuración tiene:\r\n    pista 3: páginas 7\r\n",
        "Sin ningún registro: EA01, EA03, PLV\r\n", "línea 11: es corta", "línea 14: está cortada",
        "13 líneas y un trozo\r\n", "casi vacías, que pueden tener algún dato:\r\n    pista 0: páginas 1\r\n",
        "no salieron registros:\r\n    pista 27: páginas 0\r\n    pista 30: páginas 0\r\n"}) {
    EXPECT_THAT(informe, HasSubstr(dicho));
  }
  const std::pair<LugarPagina, EstadoPagina> estados[] = {
      {{0, 0}, EstadoPagina::kDatos},   {{0, 1}, EstadoPagina::kVacia},    {{3, 7}, EstadoPagina::kSinCanal},
      {{0, 3}, EstadoPagina::kDaniada}, {{27, 0}, EstadoPagina::kDaniada}, {{0, 4}, EstadoPagina::kPendiente}};
  for (const auto& [lugar, estado] : estados)
    EXPECT_EQ(mapa_.Estado(lugar), estado) << lugar.pista << "," << lugar.pagina;
  EXPECT_EQ(progreso_.rangos, (std::vector<std::int64_t>{13, 6}));
  EXPECT_EQ(progreso_.ultima, 6);
  EXPECT_EQ(progreso_.textos.front(), "Procesando... (Track:0 Pagina:0)");
}

TEST_F(Procesamiento, CadaFilaTieneSuFin) {
  driver_.Devuelve("DecodificarPagina", [&](const std::string&) -> TablaPtr {
    // The second page has neither date nor channels of its own.
    if (driver_.tramas.back()[13] == 8)
      return Muestras({{"", "11:00:00", "1", "0"}, {"", "12:00:00", "7", "1"}, {"", "12:00:00", "EA01", "1"}});
    return Muestras({{"", "09:00:00", "1", "0"},
                     kMarca,
                     {"", "10:00:00", "1", "2048"},
                     {"", "24:00:00", "1", "0"},
                     {"", "", "1", "0"},
                     {"01/01/2001"},
                     {"", "10:00:00", "1", "abc"}});
  });
  const ResultadoProceso resultado = ProcesarTexto(Linea(0, 0, 7) + Linea(0, 1, 8));
  EXPECT_THAT(
      Guardadas("equipoDatosCanal_1.xml"),
      ElementsAre("10/03/2026|10:00:00|EA01|5.000", "01/01/2001|10:00:00|EA01|N/D", "01/01/2001|11:00:00|EA01|0.000"));
  EXPECT_EQ(resultado.archivo, carpeta_ / "res" / "equipoDatosCanal_1.xml");
  ASSERT_EQ(resultado.informe.registros.size(), 6U);
  const InformeRegistros& canal = resultado.informe.registros[0];
  EXPECT_EQ(canal.decodificadas, 6U);
  EXPECT_EQ(canal.fines, (CuentaFilas{{3, 1, 2, 0, 0}}));
  EXPECT_EQ(canal.de_referencia, 2U);
  EXPECT_EQ(TextoFechaHora(*canal.ultimo), "10/03/2026 10:00:00");
  EXPECT_EQ(resultado.informe.Filas()[FinFila::kSinArchivo], 2U);
  EXPECT_EQ(resultado.informe.registros[5].nombre, "EA07");
  // Asked for channel 1: the rows themselves say of which one they are.
  ASSERT_EQ(resultado.informe.ajenas.size(), 2U);
  EXPECT_EQ(resultado.informe.ajenas[0].propio, 7);
  EXPECT_EQ(resultado.informe.ajenas[0].pedido, 1);
}

TEST_F(Procesamiento, LasPaginasAjenasSeNombranPorTramosEnCualquierOrden) {
  driver_.Devuelve("DecodificarPagina", Muestras({kMarca, {"", "10:00:00", "2", "0"}}));
  const ResultadoProceso resultado = ProcesarTexto(Linea(0, 7) + Linea(0, 6) + Linea(0, 8) + Linea(0, 3));
  ASSERT_EQ(resultado.informe.ajenas.size(), 2U);
  EXPECT_EQ(resultado.informe.ajenas[0].tramo, (TramoPaginas{0, 6, 8}));
  EXPECT_EQ(resultado.informe.ajenas[1].tramo, (TramoPaginas{0, 3, 3}));
}

TEST_F(Procesamiento, UnaTablaDeOtraClaseNoEsDeEsaPista) {
  driver_.Devuelve("DecodificarPagina", TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2"},
                                                      {{"10/03/2026"}, {"", "10:00:00", "5", "1", "2"}}));
  const ResultadoProceso resultado = ProcesarTexto(Linea(0, 0) + Linea(30, 0));
  EXPECT_EQ(resultado.informe.Lineas()[FinLinea::kSinTabla], 1U);
  Tabla eventos;
  eventos.Open(carpeta_ / "res" / "equipoEventos.xml");
  EXPECT_THAT(Filas(eventos, {"Fecha", "Hora", "Codigo", "Valor1", "Descripcion"}),
              ElementsAre("10/03/2026|10:00:00|5|N/D|Evento"));
}

TEST_F(Procesamiento, EnLaColaUnCanalQueNoSeEntiendeCuestaSoloSuFila) {
  driver_.Devuelve("DecodificarPaginaCola", Muestras({{"10/03/2026", "10:00:00", "1", "2048"}, {"", "10:10:00", "x"}}));
  const ResultadoProceso resultado = ProcesarTexto(Linea(27, 0));
  EXPECT_THAT(Guardadas("equipoColaTx.xml"), ElementsAre("10/03/2026|10:00:00|EA01|5.000"));
  EXPECT_EQ(resultado.informe.Filas(), (CuentaFilas{{1, 0, 0, 1, 0}}));
}

TEST_F(Procesamiento, VariosArchivosSeSumanSinRepetir) {
  // Byte 7: two records; byte 8: the same page later, when it had a third one and another value in the second.
  driver_.Devuelve("DecodificarPagina", [&](const std::string&) -> TablaPtr {
    const int byte = driver_.tramas.back()[13];
    if (byte == 9) return nullptr;
    TablaPtr tabla = Muestras({kMarca, {"", "10:00:00", "1", "0"}, {"", "10:10:00", "1", byte == 7 ? "1024" : "2048"}});
    if (byte == 8) AgregarFilas(*tabla, {{"", "13:20:00", "1", "4096"}});
    return tabla;
  });
  const auto uno = Archivo(Linea(0, 0, 7) + Linea(0, 1, 9) + Linea(0, 2, 7, 4) + Linea(0, 3, 7), "uno.bkp");
  const auto dos = Archivo(Linea(0, 0, 8) + Linea(0, 1, 7) + Linea(0, 2, 7) + Linea(0, 3, 7), "dos.bkp");
  const ResultadoProceso resultado = Procesar({uno, dos, dos});
  const CuentaLineas lineas = resultado.informe.Lineas();
  EXPECT_EQ(lineas[FinLinea::kRepetida], 5U) << "page 3 of the second file, all of the third";
  EXPECT_EQ(lineas[FinLinea::kSinTabla], 1U);
  EXPECT_EQ(lineas[FinLinea::kBlanca], 1U);
  EXPECT_EQ(mapa_.Cuantas(EstadoPagina::kDatos), 4U);
  // Pages 0 of both, page 3 of the first, pages 1 and 2 of the second: 2 + 2 + 2 + 2 records and two new ones of page
  // 0.
  const InformeRegistros& canal = resultado.informe.registros[0];
  EXPECT_EQ(canal.decodificadas, 11U);
  EXPECT_EQ(canal.fines[FinFila::kRepetida], 1U);
  EXPECT_EQ(canal.fines[FinFila::kGuardada], 10U);
  EXPECT_EQ(resultado.informe.archivos[1].tomadas, (std::vector<TramoPaginas>{{0, 0, 2}}));
  EXPECT_EQ(resultado.informe.archivos[2].tomadas, (std::vector<TramoPaginas>{}));
  ASSERT_EQ(canal.cuantas_contradicciones, 1U);
  EXPECT_EQ(canal.contradicciones[0].una, "2.500 / N/D / N/D");
  EXPECT_EQ(canal.contradicciones[0].otra, "5.000 / N/D / N/D");
  ASSERT_EQ(canal.huecos.size(), 1U);
  EXPECT_THAT(TextoInforme(resultado.informe),
              testing::AllOf(HasSubstr("10/03/2026 10:10:00 EA01: 2.500 / N/D / N/D y 5.000 / N/D / N/D"),
                             HasSubstr("Huecos: 1 (guarda un registro cada 10 minutos; faltan 18):\r\n"
                                       "      del 10/03/2026 10:10:00 al 10/03/2026 13:20:00: 03:10:00"),
                             HasSubstr("salieron de este archivo:\r\n    pista 0: páginas 0 a 2\r\n")));
  EXPECT_THAT(resultado.archivo.filename().string(), "unoDatosCanal_1.xml");
}

TEST_F(Procesamiento, LoQueNoSeProcesaSeDice) {
  const std::string solo_marcas = "\"0/31\"\r\n\"EOT\"\r\n";
  const struct {
    std::string texto;
    FinProceso fin;
    std::string mensaje;
  } casos[] = {{"", FinProceso::kFormatoNoReconocido, "No se reconoce el formato del archivo"},
               {solo_marcas, FinProceso::kProcesado, ""},
               {solo_marcas + "\"255,255", FinProceso::kProcesado, ""}};
  for (const auto& caso : casos) {
    const ResultadoProceso resultado = ProcesarTexto(caso.texto);
    EXPECT_EQ(resultado.fin, caso.fin) << caso.texto;
    EXPECT_EQ(resultado.archivo, "");
    const auto mensaje = MensajeDe(resultado);
    EXPECT_EQ(mensaje ? mensaje->texto : "", caso.mensaje);
    EXPECT_EQ(std::filesystem::exists(carpeta_ / "res" / "equipoInforme.txt"), caso.fin == FinProceso::kProcesado);
  }
  EXPECT_EQ(Procesar(std::vector<std::filesystem::path>{}).fin, FinProceso::kSinArchivo);
  configuracion_ = TablaDeCanales({});
  EXPECT_EQ(ProcesarTexto(Linea(0, 0)).fin, FinProceso::kConfiguracionNoValida);
  configuracion_ = nullptr;
  EXPECT_EQ(Procesar(std::vector<std::filesystem::path>{}).fin, FinProceso::kConfiguracionNoValida);
}

TEST_F(Procesamiento, LoQueFallaDejaLosResultadosDeAntes) {
  driver_.Devuelve("DecodificarPagina", [&](const std::string&) -> TablaPtr {
    return Muestras({kMarca, {"", "10:00:00", "1", "0"}});
  });
  const ResultadoProceso buena = ProcesarTexto(Linea(0, 0));
  const std::string antes = prueba::LeerTodo(buena.archivo);
  const std::string informe = prueba::LeerTodo(buena.archivo_informe);
  const auto ajeno = Archivo(std::string(100, 'x') + "\r\n", "ajeno.bkp");
  EXPECT_EQ(prueba::NumeroDeError([&] { Procesar({Archivo(Linea(0, 0) + Linea(0, 1)), ajeno}); }), error::kArchivo);
  EXPECT_EQ(prueba::NumeroDeError([&] { Procesar({Archivo("x", "a.bkp"), carpeta_ / "no.bkp"}); }), error::kArchivo);
  EXPECT_EQ(prueba::NumeroDeError([&] {
              Procesar({Archivo(Linea(0, 0), "bkp"), carpeta_ / "no.bkp"});
            }),
            error::kLlamada);
  std::filesystem::create_directory(carpeta_ / "no.bkp");
  EXPECT_EQ(prueba::NumeroDeError([&] { Procesar({carpeta_ / "no.bkp"}); }), error::kArchivo) << "a folder";
  const std::vector otro = {Archivo(Linea(0, 1))};
  {
    const DispositivoLleno lleno(200);
    EXPECT_EQ(prueba::NumeroDeError([&] { Procesar(otro); }), error::kArchivo);
  }
  driver_.Falla("DecodificarPagina", Error(321, "driver", "no anda"));
  EXPECT_EQ(prueba::NumeroDeError([&] { ProcesarTexto(Linea(0, 0)); }), 321);
  EXPECT_EQ(prueba::LeerTodo(buena.archivo), antes);
  EXPECT_EQ(prueba::LeerTodo(buena.archivo_informe), informe);

  // Failing behind the first result: the report of the run before would be wrong beside it.
  driver_.NoFalla("DecodificarPagina");
  driver_.Devuelve("DecodificarPagina", [&](const std::string&) -> TablaPtr {
    return Muestras({kMarca, {"", "10:00:00", "1", "0"}, {"", "10:00:00", "2", "0"}});
  });
  std::filesystem::create_directories(carpeta_ / "res" / "equipoDatosCanal_2.xml");
  EXPECT_EQ(prueba::NumeroDeError([&] { ProcesarTexto(Linea(0, 0)); }), error::kArchivo);
  EXPECT_THAT(prueba::LeerTodo(buena.archivo_informe),
              testing::AllOf(HasSubstr("el proceso no terminó"),
                             HasSubstr("de los resultados sólo son\r\n  de este proceso los que nombra más abajo"),
                             HasSubstr("    equipoDatosCanal_1.xml\r\n"), testing::Not(HasSubstr("no cierra"))));
  std::filesystem::remove(carpeta_ / "res" / "equipoDatosCanal_2.xml");

  // Another run of the same name that brings another channel alone: what it didn't write is named.
  driver_.NoFalla("DecodificarPagina");
  driver_.Devuelve("DecodificarPagina", [&](const std::string&) -> TablaPtr {
    return Muestras({kMarca, {"", "10:00:00", "2", "0"}});
  });
  EXPECT_THAT(TextoInforme(ProcesarTexto(Linea(0, 0)).informe),
              HasSubstr("equipoDatosCanal_1.xml: de una corrida anterior"));
  EXPECT_EQ(prueba::LeerTodo(buena.archivo), antes);
}

TEST_F(Procesamiento, NingunResultadoReemplazaLaTablaDelPrograma) {
  driver_.Devuelve("DecodificarPagina",
                   TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2"}, {{"10/03/2026", "10:00:00", "5"}}));
  prueba::EscribirTodo(carpeta_ / "Eventos.xml", "del programa");
  PedidoProceso pedido;
  pedido.configuracion = configuracion_;
  pedido.archivos = {Archivo(Linea(30, 0), ".bkp")};
  pedido.carpeta = carpeta_ / ".";
  pedido.carpeta_programa = carpeta_.Ruta();
  const ContextoRegistros contexto{driver_, reloj_, catalogo_, registro_};
  EXPECT_EQ(prueba::NumeroDeError([&] { ProcesandoDatos(pedido, contexto, progreso_, {}); }), error::kLlamada);
  EXPECT_EQ(prueba::LeerTodo(carpeta_ / "Eventos.xml"), "del programa");
  pedido.carpeta_programa = "/";
  EXPECT_EQ(ProcesandoDatos(pedido, contexto, progreso_, {}).archivo.filename(), "Eventos.xml") << "elsewhere it may";
}

TEST_F(Procesamiento, LasListasDePilasSonParalelas) {
  const ListasPilas listas = ArmarListasPilas(*configuracion_);
  EXPECT_EQ(listas.pilas, " 2, 0,, 8");
  EXPECT_EQ(listas.canales, " 0, 1, 2, 14");
  EXPECT_EQ(listas.pistas, " 8, 2,, 26");
  const struct {
    int pista;
    std::int16_t indice;
  } casos[] = {{0, 1}, {2, 1}, {3, -1}, {6, 0}, {8, 0}, {24, 3}, {26, 3}, {27, 1}, {31, 1}};
  for (const auto& caso : casos) {
    EXPECT_EQ(IndicePila(caso.pista, listas.pilas), caso.indice) << caso.pista;
    EXPECT_EQ(EstaPilaConfigurada(caso.pista, listas.pilas), caso.indice >= 0) << caso.pista;
  }
  EXPECT_FALSE(EstaPilaConfigurada(0, "")) << "an empty list holds no stack 0";
}

TEST_F(Procesamiento, ValidarYExtraerCopianLasQuePasan) {
  const TablaPtr tabla = TablaDeTextos({"Fecha", "Hora", "Canal"}, {{" 10/03/2026 ", " 23:59:59 ", "EA01"},
                                                                    {"31/02/2026", "10:00:00", "1"},
                                                                    {"10/03/2026", "24:00:00", "1"},
                                                                    {"10/03/2026", "10:60:00", "1"},
                                                                    {"10/03/2026", "10:00", "1"},
                                                                    {"10/03/2026", "x:00:00", "1"},
                                                                    {nullptr, "10:00:00", "1"},
                                                                    {"10/03/2026", "0:0:0", "1"},
                                                                    {"10/03/2026", "-1:00:00", "PLV"},
                                                                    {"10/03/2026", "10:00:00", "2"}});
  Descartes descartes;
  const TablaPtr validos = ValidarRegistros(*tabla, &descartes);
  EXPECT_EQ(descartes.por_fecha, 2U);
  EXPECT_EQ(descartes.por_hora, 5U);
  EXPECT_EQ(tabla->RecordCount(), 10U);
  EXPECT_THAT(Filas(*validos, {"Hora", "Canal"}), ElementsAre(" 23:59:59 |EA01", "0:0:0|1", "10:00:00|2"));
  EXPECT_THAT(Filas(*ExtraerCanal(*validos, 1), {"Hora"}), ElementsAre(" 23:59:59 ", "0:0:0"));
  EXPECT_THAT(Filas(*ExtraerCanal(*validos, 9), {"Hora"}), IsEmpty());
  tabla->Filter("Canal='1'");
  EXPECT_EQ(ValidarRegistros(*tabla)->RecordCount(), 1U) << "the rows on show";
}

}  // namespace
}  // namespace utr
