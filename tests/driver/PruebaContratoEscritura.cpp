#include <array>

#include "driver/Contrato.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/Tablas.h"

// Writing: pages, flags, channels, schedule, outputs, erasing, restarts and files.
namespace utr::prueba {

namespace {

// The bytes of a page with one place changed, as a page text.
std::string Cambiada(std::vector<int> bytes, std::initializer_list<std::pair<std::size_t, int>> cambios) {
  for (const auto& [lugar, valor] : cambios) bytes[lugar] = valor;
  std::string texto;
  for (const int byte : bytes) texto += (texto.empty() ? "" : ",") + std::to_string(byte);
  return texto;
}

TablaPtr Entradas(std::initializer_list<const char*> minutos) {
  auto t = std::make_shared<Tabla>();
  for (const char* campo : {"key", "Horario", "TOblig", "TWind", "TCond"}) t->Append(campo, TipoCampo::kVarChar, 100);
  t->Append("HorarioInteger", TipoCampo::kVarChar, 20);
  t->Open();
  for (const char* minuto : minutos) {
    t->AddNew();
    t->Set("HorarioInteger", minuto);
    t->Set("TOblig", "Si");
    t->Set("TWind", "No");
    t->Set("TCond", "Si");
  }
  t->UpdateBatch();
  return t;
}

}  // namespace

TEST_P(Contrato, LasPaginasSeReescribenSinCambiarDeLargo) {
  banco->Conectar();
  const auto cero = Pagina("0");
  ASSERT_EQ(cero.size(), 64U);
  EXPECT_TRUE(Driver().EscribirPagina("0", Cambiada(cero, {{6, 160}, {7, 5}})));
  auto esperada = cero;
  esperada[6] = 160;
  esperada[7] = 5;
  EXPECT_EQ(Pagina("0"), esperada);
  EXPECT_TRUE(Driver().EscribirPagina("34", "0,0,0"));
  EXPECT_TRUE(Driver().EscribirPagina("35", "1,0,0"));
  EXPECT_EQ(Pagina("35"), (std::vector<int>{1, 0, 0}));
  const std::size_t largo = Pagina("7").size();
  EXPECT_TRUE(Driver().EscribirPagina("7", "9,8"));
  EXPECT_EQ(Pagina("7").size(), largo);
  const std::pair<const char*, const char*> malas[] = {{"x", "1"},  {"0", ""},         {"0", "256"},  {"0", "1,x"},
                                                       {"0", "-1"}, {"35", "1,2,3,4"}, {"65536", "1"}};
  for (const auto& [pagina, datos] : malas)
    EXPECT_FALSE(Driver().EscribirPagina(pagina, datos)) << pagina << " " << datos;
  EXPECT_EQ(Pagina("0"), esperada);
}

TEST_P(Contrato, VelocidadEIdentificadorRigenDespuesDeReiniciar) {
  banco->Conectar();
  const auto cero = Pagina("0");
  EXPECT_EQ(cero[3] + 256 * cero[4], banco->identificador);
  ASSERT_TRUE(Driver().EscribirPagina("0", Cambiada(cero, {{0, 3}, {3, 44}, {4, 1}})));
  EXPECT_NE(Driver().LeerFechaHora(), "") << "nothing changes before the restart";
  ASSERT_TRUE(Driver().ReiniciarUTR("14"));
  EXPECT_EQ(Driver().LeerFechaHora(), "") << "the unit is away";
  EXPECT_FALSE(Driver().EstadoEnlace());
  EXPECT_EQ(Driver().EstadoPuerto(), !banco->por_ip);
  banco->Pasar(20);
  EXPECT_EQ(Driver().LeerFechaHora(), "") << "it is back at another speed or identifier";
  Driver().Conectar("4800,n,8,1", banco->puerto);
  EXPECT_TRUE(Driver().EstadoEnlace());
  EXPECT_EQ(Driver().LeerFechaHora(), "") << "and under another identifier";
  Driver().IdEquipo(300);
  EXPECT_NE(Driver().LeerFechaHora(), "");
  EXPECT_EQ(CodigosDeHoy().back(), "1");
}

TEST_P(Contrato, CadaReinicioTieneSuAusencia) {
  const struct {
    const char* comando;
    double todavia;
    double ya;
  } casos[] = {{"14", 3, 5}, {"44", 19, 25}};
  for (const auto& caso : casos) {
    banco->Conectar();
    ASSERT_TRUE(Driver().ReiniciarUTR(caso.comando));
    banco->Pasar(caso.todavia);
    EXPECT_FALSE(Driver().EstadoEnlace()) << caso.comando;
    banco->Pasar(caso.ya - caso.todavia);
    Driver().Conectar(banco->enlace, banco->puerto);
    EXPECT_NE(Driver().LeerFechaHora(), "") << caso.comando;
  }
  for (const char* comando : {"", "41", "15"}) EXPECT_FALSE(Driver().ReiniciarUTR(comando)) << comando;
}

TEST_P(Contrato, LosIndicadoresSeEscribenYSeLeenDeDosModos) {
  banco->Conectar();
  const struct {
    const char* escrito;
    int leido;
  } casos[] = {{"0/0", 0},     {"4/0", 0x20},     {"8/0", 0x80},    {"16/0", 0x100},
               {"32/0", 0x40}, {"128/0", 0x4000}, {"132/0", 0x4020}};
  for (const auto& caso : casos) {
    EXPECT_TRUE(Driver().GrabarEstado(caso.escrito));
    EXPECT_EQ(Driver().LeerEstado() & 0x41E0, caso.leido) << caso.escrito;
  }
  for (const char* malo : {"", "4", "4/", "x/0", "256/0", "4/0/0"}) EXPECT_FALSE(Driver().GrabarEstado(malo)) << malo;
}

TEST_P(Contrato, LaParametrizacionMezclaPorCanal) {
  banco->Conectar();
  const auto antes = Filas(Driver().ConfiguracionAlmacenada(true));
  const TablaPtr cambio = Driver().ConfiguracionAlmacenada(true);
  const TablaPtr uno = CopiarRecordset(*cambio, false);
  uno->AddNew();
  for (std::size_t c = 0; c < cambio->FieldCount(); ++c) uno->Set(c, cambio->Value(c));
  uno->Set("AMax", "7.25");
  uno->UpdateBatch();
  ASSERT_TRUE(Driver().GrabarParametrizacion(*uno));
  EXPECT_EQ(DeCanal(1, "AMax"), "7.25");
  auto despues = Filas(Driver().ConfiguracionAlmacenada(true));
  EXPECT_NE(despues[0], antes[0]);
  despues[0] = antes[0];
  EXPECT_EQ(despues, antes) << "channels that the table lacks stay as they are";

  uno->Set("Canal", "99");
  EXPECT_FALSE(Driver().GrabarParametrizacion(*uno));
  Tabla sin_canal;
  sin_canal.Append("AMax", TipoCampo::kVarChar, 20);
  sin_canal.Open();
  EXPECT_EQ(NumeroDeError([&] { Driver().GrabarParametrizacion(sin_canal); }), error::kCampo);
}

// What no unit can work with is refused, all of the table with it.
TEST_P(Contrato, LosValoresFueraDeRazonSeRechazan) {
  banco->Conectar();
  const auto antes = Filas(Driver().ConfiguracionAlmacenada(true));
  const TablaPtr tabla = Driver().ConfiguracionAlmacenada(true);
  tabla->Set("AMax", "1.5");  // a good row comes first
  tabla->MoveNext();
  const std::array<const char*, 3> casos[] = {
      {"abc", "Bits", "1"},        {"6", "Bits", "1"},        {"-1", "Bits", "1"},  {"8", "Bits", "1"},
      {"0", "Flags", "x"},         {"0", "Flags", "-1"},      {"7", "Flags", "x"},  {"0", "TStorage", "-5"},
      {"0", "TStorage", "99999"},  {"0", "TStorage", "diez"}, {"1", "TRead", "-1"}, {"3", "TMed", "-1"},
      {"2", "TResetAlarma", "-1"}, {"5", "TCero", "-1"},      {"4", "TEval", "-1"}, {"0", "Bits", "x"},
      {"0", "AMax", "abc"},        {"2", "Cero", "cero"},
  };
  for (const auto& [tipo, columna, valor] : casos) {
    const std::string buen_tipo = tabla->Texto("Tipo");
    const std::string bueno = tabla->Texto(columna);
    tabla->Set("Tipo", tipo);
    tabla->Set(columna, valor);
    EXPECT_FALSE(Driver().GrabarParametrizacion(*tabla)) << tipo << columna << valor;
    EXPECT_FALSE(Driver().GrabarConfiguracion(*tabla)) << tipo << columna << valor;
    tabla->Set(columna, bueno);
    tabla->Set("Tipo", buen_tipo);
  }
  EXPECT_EQ(Filas(Driver().ConfiguracionAlmacenada(true)), antes);
  EXPECT_TRUE(Driver().GrabarParametrizacion(*tabla)) << "nothing but those values was in the way";
}

// And what the rules of the program let pass in a kind of sensor never is.
TEST_P(Contrato, LoQueLasReglasDejanPasarSeAcepta) {
  banco->Conectar();
  const struct {
    const char* tipo;
    std::vector<std::pair<const char*, const char*>> valores;
  } casos[] = {
      {" 1", {{"Bits", "-3"}, {"TCero", "-5"}, {"NivRefLmn", "-2.15"}, {"Flags", "31"}, {"RangoMax", " 12"}}},
      {"0", {{"TStorage", "1440"}, {"TRead", ""}, {"AMax", "-7,5"}, {"Bits", "17"}, {"Unidad", ""}}},
      {"2", {{"Span", "-4095"}, {"Cero", "-1"}, {"Descripcion", "abc"}, {"TCero", "x"}}},
      {"4", {{"TStorage", "-5"}, {"TMed", "x"}, {"TDiscret", "-1"}}},
      {"5", {{"TMed", "-5"}, {"TResetAlarma", "-5"}}},
      {"7", {{"TRead", "-5"}, {"TStorage", "99999"}, {"TEval", "x"}, {"Bits", "0"}, {"AlSub", "x"}}},
  };
  int canal = 0;
  for (const auto& caso : casos) {
    const TablaPtr tabla = Driver().ConfiguracionAlmacenada(true);
    tabla->Filter("Canal='" + std::to_string(++canal) + "'");
    tabla->Set("Tipo", caso.tipo);
    for (const auto& [columna, valor] : caso.valores) tabla->Set(columna, valor);
    EXPECT_TRUE(Driver().GrabarParametrizacion(*tabla)) << caso.tipo;
    for (const auto& [columna, valor] : caso.valores) EXPECT_EQ(DeCanal(canal, columna), valor) << caso.tipo << columna;
  }
}

TEST_P(Contrato, LaConfiguracionReemplaza) {
  banco->Conectar();
  const TablaPtr todos = Driver().ConfiguracionAlmacenada(true);
  const TablaPtr uno = CopiarRecordset(*todos, false);
  todos->MoveFirst();
  uno->AddNew();
  for (std::size_t c = 0; c < todos->FieldCount(); ++c) uno->Set(c, todos->Value(c));
  uno->UpdateBatch();
  ASSERT_TRUE(Driver().GrabarConfiguracion(*uno));
  EXPECT_NE(DeCanal(1, "Flags"), "0");
  for (const int canal : {2, 15, 16, 23}) EXPECT_EQ(DeCanal(canal, "Flags"), "0") << canal;
  EXPECT_EQ(Driver().ConfiguracionAlmacenada(true)->RecordCount(), 23U);
}

// A table that is handed over filtered or sorted goes as it shows itself.
TEST_P(Contrato, DeUnaTablaFiltradaSoloVaLoQueMuestra) {
  banco->Conectar();
  const TablaPtr todos = Driver().ConfiguracionAlmacenada(true);
  const std::string antes = DeCanal(2, "AMax");
  for (; !todos->Eof(); todos->MoveNext()) todos->Set("AMax", "7.5");
  todos->Filter("Canal='1'");
  ASSERT_TRUE(Driver().GrabarParametrizacion(*todos));
  EXPECT_EQ(DeCanal(1, "AMax"), "7.5");
  EXPECT_EQ(DeCanal(2, "AMax"), antes);
  EXPECT_EQ(todos->Texto("Canal"), "1") << "its cursor stays";
  EXPECT_EQ(todos->Filter(), "Canal='1'");
  ASSERT_TRUE(Driver().GrabarConfiguracion(*todos));
  EXPECT_NE(DeCanal(1, "Flags"), "0");
  EXPECT_EQ(DeCanal(2, "Flags"), "0") << "a channel that isn't shown is one that the table lacks";

  const TablaPtr agenda = Entradas({"480", "90", "1439", "7"});
  agenda->Set("TWind", "Si");  // of the last one
  agenda->Filter("TWind='No'");
  agenda->Sort("HorarioInteger DESC");
  ASSERT_TRUE(Driver().GrabarAgenda(*agenda));
  std::vector<std::string> minutos;
  for (const TablaPtr t = Driver().LeerAgenda(); !t->Eof(); t->MoveNext()) {
    if (t->Texto("Descripcion") == "OK") minutos.push_back(t->Texto("HorarioInteger"));
  }
  EXPECT_EQ(minutos, (std::vector<std::string>{"90", "480", "1439"})) << "by text, from the last one";
}

TEST_P(Contrato, NuevePilasComoMucho) {
  banco->Conectar();
  const TablaPtr todos = Driver().ConfiguracionAlmacenada(true);
  for (; !todos->Eof(); todos->MoveNext()) {
    todos->Set("Tipo", "1");
    todos->Set("Flags", "1");
    todos->Set("Pila", "0");  // whatever the table claims
  }
  ASSERT_TRUE(Driver().GrabarParametrizacion(*todos));
  std::set<std::string> pilas;
  int con_pila = 0;
  for (const TablaPtr t = Driver().ConfiguracionAlmacenada(true); !t->Eof(); t->MoveNext()) {
    if (std::stoi(t->Texto("Pila")) > 8) continue;
    ++con_pila;
    pilas.insert(t->Texto("Pila"));
  }
  EXPECT_EQ(con_pila, 9);
  EXPECT_EQ(pilas.size(), 9U);
}

TEST_P(Contrato, LaAgendaSeEscribeYSeLee) {
  banco->Conectar();
  ASSERT_TRUE(Driver().GrabarAgenda(*Entradas({"480", "0", "1439"})));
  std::vector<std::string> minutos;
  for (const TablaPtr t = Driver().LeerAgenda(); !t->Eof(); t->MoveNext()) {
    if (t->Texto("Descripcion") != "OK") continue;
    minutos.push_back(t->Texto("HorarioInteger") + t->Texto("TOblig") + t->Texto("TWind") + t->Texto("TCond"));
  }
  EXPECT_EQ(minutos, (std::vector<std::string>{"480SiNoSi", "0SiNoSi", "1439SiNoSi"}));
  for (const char* minuto : {"1440", "-1", "x", "", "1.5"})
    EXPECT_FALSE(Driver().GrabarAgenda(*Entradas({"10", minuto}))) << minuto;
  EXPECT_TRUE(Driver().ReiniciarAgenda("41"));
  EXPECT_FALSE(Driver().ReiniciarAgenda("14"));
}

TEST_P(Contrato, LasOrdenesDejanSuEvento) {
  banco->Conectar();
  ASSERT_TRUE(Driver().GrabarEvento("1", "128/0/40/0"));
  EXPECT_EQ(CodigosDeHoy().back(), "128");
  ASSERT_TRUE(Driver().GrabarSalidaDigital(2, true));
  EXPECT_EQ(CodigosDeHoy().back(), "40");
  EXPECT_FALSE(Driver().GrabarEvento("2", "128/0/40/0"));
  for (const char* datos : {"", "128/0/40", "128/0/40/x", "0/1/40/0"})
    EXPECT_FALSE(Driver().GrabarEvento("1", datos)) << datos;
}

TEST_P(Contrato, LasSalidasSeVenEnLosInstantaneos) {
  banco->Conectar();
  const auto estado = [&](std::size_t lugar) {
    const TablaPtr t = Driver().LeerInstantaneos();
    return t->Filas().Texto(lugar, 0);
  };
  for (const bool encender : {true, false, true}) {
    EXPECT_TRUE(Driver().GrabarSalidaDigital(1, encender));
    EXPECT_EQ(estado(36), encender ? "1" : "0");
    EXPECT_EQ(estado(37), "0");
  }
  for (const int salida : {0, 3, -1}) EXPECT_FALSE(Driver().GrabarSalidaDigital(salida, true)) << salida;
}

TEST_P(Contrato, BorrarLaFlashLaBorra) {
  banco->Conectar();
  const std::string hoy = TextoFecha(banco->Ahora());
  ASSERT_TRUE(Driver().BorrarFlash());
  EXPECT_EQ(Driver().LeerDatos("", hoy, 0)->RecordCount(), 0U);
  EXPECT_EQ(Driver().LeerColaTx("", hoy)->RecordCount(), 0U);
  EXPECT_EQ(CodigosDeHoy(), std::vector<std::string>{"3"});
  const auto bytes = LeerTextoPagina(Driver().LeerPaginaFlash(0, 0)).value();
  EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 255), 64) << "the two trailing items are never 255";
  banco->Pasar(3600);
  EXPECT_GT(Driver().LeerDatos("", hoy, 0)->RecordCount(), 0U) << "the unit goes on recording";
}

TEST_P(Contrato, LaRelacionDePilasYLosCanalesAModificar) {
  banco->Conectar();
  const auto pila = [&](int canal) { return DeCanal(canal, "Pila"); };
  const std::string antes = pila(1);
  EXPECT_TRUE(Driver().GrabarPilaCanal("7", ""));
  EXPECT_EQ(pila(1), antes);
  EXPECT_TRUE(Driver().GrabarPilaCanal("7", "4$1$15"));
  EXPECT_EQ(pila(4), "0");
  EXPECT_EQ(pila(1), "1");
  EXPECT_EQ(pila(15), "2");
  const std::string hoy = TextoFecha(banco->Ahora());
  EXPECT_EQ(Driver().LeerDatos("", hoy, 3)->RecordCount(), 0U) << "the stack still holds its former channel";
  banco->Pasar(7200);
  EXPECT_GT(Driver().LeerDatos("", hoy, 3)->RecordCount(), 0U);
  for (const char* mala : {"0", "24", "1$1", "1$x", "1$2$3$4$5$6$7$8$9$10"})
    EXPECT_FALSE(Driver().GrabarPilaCanal("7", mala)) << mala;
  EXPECT_FALSE(Driver().GrabarPilaCanal("8", ""));
  for (const char* buena : {"", "3#7#", "23#"}) EXPECT_TRUE(Driver().GrabarCanalesModificar("33", buena)) << buena;
  for (const char* mala : {"3#7", "0#", "24#", "x#"}) EXPECT_FALSE(Driver().GrabarCanalesModificar("33", mala)) << mala;
  EXPECT_FALSE(Driver().GrabarCanalesModificar("34", ""));
}

TEST_P(Contrato, LaUnidadRecuerdaEntreCorridas) {
  banco->Conectar();
  const std::string hoy = TextoFecha(banco->Ahora());
  ASSERT_TRUE(Driver().EscribirPagina("34", "7,8,9"));
  ASSERT_TRUE(Driver().GrabarSalidaDigital(1, true));
  ASSERT_TRUE(Driver().GrabarEstado("16/0"));
  ASSERT_TRUE(Driver().GrabarAgenda(*Entradas({"90"})));
  const auto leer = [&] {
    std::vector<std::string> todo;
    for (const TablaPtr& t :
         {Driver().ConfiguracionAlmacenada(true), Driver().LeerAgenda(), Driver().LeerInstantaneos(),
          Driver().LeerDatos("", hoy, 0), Driver().LeerEventos("", hoy), Driver().LeerColaTx("", ""),
          Driver().LeerDatosCartucho("", hoy, 14)}) {
      const auto filas = Filas(t);
      todo.insert(todo.end(), filas.begin(), filas.end());
    }
    todo.push_back(Driver().LeerPagina("34", false));
    todo.push_back(std::to_string(Driver().LeerEstado()));
    return todo;
  };
  const auto antes = leer();
  banco->Reiniciar();
  EXPECT_FALSE(Driver().EstadoPuerto()) << "a new run begins with a closed port";
  banco->Conectar();
  EXPECT_EQ(leer(), antes);
}

TEST_P(Contrato, LosArchivosDeConfiguracion) {
  banco->Conectar();
  const std::string bueno = banco->Archivo("bueno.icf");
  Driver().ConfiguracionAlmacenada(true)->Save(bueno);
  Driver().Desconectar();
  EXPECT_EQ(Driver().LeerArchivoConfiguracion(bueno)->RecordCount(), 23U);
  EXPECT_EQ(Driver().CargarConfiguracion(bueno)->RecordCount(), 23U);
  Tabla otra;
  otra.Append("Canal", TipoCampo::kVarChar, 30);
  otra.Open();
  otra.Save(banco->Archivo("otra.icf"));
  EscribirTodo(banco->Archivo("basura.icf"), std::string("\x01\x02<xml>\xFF\x00 basura", 16));
  EscribirTodo(banco->Archivo("cortado.icf"), LeerTodo(bueno).substr(0, 5000));
  for (const char* malo : {"otra.icf", "basura.icf", "cortado.icf", "no_hay.icf"}) {
    EXPECT_NE(NumeroDeError([&] { Driver().LeerArchivoConfiguracion(banco->Archivo(malo)); }), 0) << malo;
    EXPECT_NE(NumeroDeError([&] { Driver().CargarConfiguracion(banco->Archivo(malo)); }), 0) << malo;
  }
}

TEST_P(Contrato, ElArchivoDeInsercionManual) {
  Tabla datos;
  for (const char* campo : {"Fecha", "Hora", "Canal", "Valor", "Validacion"})
    datos.Append(campo, TipoCampo::kVarChar, 50);
  datos.Open();
  datos.AddNew();
  const char* const fila[] = {"15/03/2026", "10:00:00", "EA01", "3.450", "1"};
  for (std::size_t c = 0; c < 5; ++c) datos.Set(c, fila[c]);
  datos.UpdateBatch();
  const std::string ruta = banco->Archivo("datos.imp");
  const auto leido = [&] {
    auto t = std::make_shared<Tabla>();
    t->Open(std::filesystem::path(ruta));
    return t;
  };
  ASSERT_TRUE(Driver().ExportarImp(datos, ruta, 1));
  EXPECT_EQ(Filas(leido()), std::vector<std::string>{"1|15/03/2026 10:00:00|EA01|3.450|||1|"});
  EXPECT_EQ(leido()->Field(2).nombre, "canal");
  ASSERT_TRUE(Driver().ExportarImp(datos, ruta, 0)) << "an existing file is replaced";
  EXPECT_EQ(Filas(leido()), std::vector<std::string>{"0|15/03/2026 10:00:00||||"});
  const std::string antes = LeerTodo(ruta);
  EXPECT_FALSE(Driver().ExportarImp(datos, ruta, 7));
  EXPECT_EQ(LeerTodo(ruta), antes);
}

TEST_P(Contrato, ElArchivoDeInsercionLlevaLoQueLaTablaMuestra) {
  const TablaPtr datos =
      TablaDeTextos({"Fecha", "Canal", "Valor"},
                    {{"15/03/2026", "EA01", "1"}, {"15/03/2026", "EA02", "2"}, {"15/03/2026", "EA01", "3"}});
  datos->Filter("Canal='EA01'");
  datos->Sort("Valor DESC");
  const std::string ruta = banco->Archivo("datos.imp");
  ASSERT_TRUE(Driver().ExportarImp(*datos, ruta, 1));
  Tabla leida;
  leida.Open(std::filesystem::path(ruta));
  EXPECT_EQ(Filas(leida.Clone()), (std::vector<std::string>{"1|15/03/2026|EA01|3||||", "1|15/03/2026|EA01|1||||"}));
}

TEST_P(Contrato, ElArchivoDeInsercionNombraElCanalDeUnaSolaManera) {
  const std::pair<const char*, const char*> casos[] = {{"1", "EA01"}, {" 7", "EA07"},   {"15", "PLV"},  {"22", "EA15"},
                                                       {"18", "ED5"}, {"EA03", "EA03"}, {"PLV", "PLV"}, {"N/D", "N/D"},
                                                       {"99", "99"},  {"", ""}};
  const TablaPtr datos = TablaDeTextos({"Canal"});
  std::vector<std::string> esperadas;
  for (const auto& [canal, codigo] : casos) {
    AgregarFilas(*datos, {{canal}});
    esperadas.push_back("1||" + std::string(codigo) + "|||||");
  }
  const std::string ruta = banco->Archivo("datos.imp");
  ASSERT_TRUE(Driver().ExportarImp(*datos, ruta, 1));
  Tabla leida;
  leida.Open(std::filesystem::path(ruta));
  EXPECT_EQ(Filas(leida.Clone()), esperadas);
}

// A file that can't be written is an error with its reason, not a refusal: the operator must hear of it.
TEST_P(Contrato, UnArchivoDeInsercionQueNoSePuedeEscribirSeDice) {
  banco->Conectar();
  const TablaPtr datos = Driver().LeerDatos("", TextoFecha(banco->Ahora()), 0);
  const std::string ruta = banco->Archivo("datos.imp");
  EscribirTodo(ruta, "viejo");
  EXPECT_EQ(NumeroDeError([&] { Driver().ExportarImp(*datos, banco->Archivo("no/hay/carpeta.imp"), 1); }),
            error::kArchivo);
  {
    const DispositivoLleno lleno(4096);
    EXPECT_EQ(NumeroDeError([&] { Driver().ExportarImp(*datos, ruta, 1); }), error::kArchivo);
  }
  EXPECT_EQ(LeerTodo(ruta), "viejo");
}

}  // namespace utr::prueba
