#include "driver/CanalesUTR.h"
#include "driver/Contrato.h"

// Reading: configuration, schedule, present values, records by date and by page.
namespace utr::prueba {

namespace {

// Reply frames of the pages of some tracks, as a recovery file gives them: the last item dropped, 13 bytes ahead.
std::vector<std::vector<std::uint8_t>> Respuestas(Comunicador& driver, int desde, int hasta) {
  std::vector<std::vector<std::uint8_t>> respuestas;
  for (int pista = desde; pista <= hasta; ++pista) {
    for (int pagina = 0; pagina < 1024; ++pagina) {
      const auto bytes =
          LeerTextoPagina(driver.LeerPaginaFlash(static_cast<std::int16_t>(pista), static_cast<std::int16_t>(pagina)));
      EXPECT_EQ(bytes.value().size(), 66U);
      if (std::count(bytes->begin(), bytes->end() - 1, 255) >= 60) continue;  // blank
      std::vector<std::uint8_t> respuesta(78);
      std::copy(bytes->begin(), bytes->end() - 1, respuesta.begin() + 13);
      respuestas.push_back(std::move(respuesta));
    }
  }
  return respuestas;
}

template <class T>
void Agregar(std::vector<T>& destino, const std::vector<T>& otros) {
  destino.insert(destino.end(), otros.begin(), otros.end());
}

}  // namespace

TEST_P(Contrato, LaConfiguracionTieneSusColumnasYSusCanales) {
  banco->Conectar();
  const TablaPtr t = Driver().ConfiguracionAlmacenada(true);
  ASSERT_EQ(t->RecordCount(), 23U);
  std::set<std::string> con_historia;
  std::set<std::string> pilas;
  for (std::size_t i = 0; i < kColumnasDeCanal.size(); ++i) {
    EXPECT_EQ(t->Field(i).nombre, kColumnasDeCanal[i].nombre);
    EXPECT_EQ(t->Field(i).tipo, kColumnasDeCanal[i].tipo) << i;
    EXPECT_EQ(t->Field(i).tamano, kColumnasDeCanal[i].tamano) << i;
  }
  for (int canal = 1; !t->Eof(); t->MoveNext(), ++canal) {
    EXPECT_EQ(t->Texto("Canal"), std::to_string(canal));
    if ((std::stoi(t->Texto("Flags")) & 1) == 0 || !GuardaHistoria(LeerTipo(t->Texto("Tipo")))) continue;
    con_historia.insert(t->Texto("Canal"));
    pilas.insert(t->Texto("Pila"));
  }
  EXPECT_LE(con_historia.size(), 9U);
  EXPECT_EQ(pilas.size(), con_historia.size()) << "each channel with a history has a stack of its own";
}

TEST_P(Contrato, LaAgendaTieneEntradasQueCuentanYOtras) {
  banco->Conectar();
  const TablaPtr t = Driver().LeerAgenda();
  int cuentan = 0;
  int otras = 0;
  for (; !t->Eof(); t->MoveNext()) {
    const bool cuenta = t->Texto("Descripcion") == "OK" && !t->Texto("HorarioInteger").empty();
    ++(cuenta ? cuentan : otras);
    for (const char* campo : {"TCond", "TOblig", "TWind"}) {
      EXPECT_TRUE(t->Texto(campo) == "Si" || t->Texto(campo) == "No") << campo;
    }
  }
  EXPECT_GT(cuentan, 0);
  EXPECT_GT(otras, 0);
}

TEST_P(Contrato, LosInstantaneosFormanUnaTramaDe38) {
  banco->Conectar();
  const TablaPtr t = Driver().LeerInstantaneos();
  std::string trama;
  for (; !t->Eof(); t->MoveNext()) trama += t->Texto("Valor") + "/";
  const auto lugares = Separar(trama, '/');
  ASSERT_EQ(lugares.size(), 39U);
  for (std::size_t i = 0; i < 38; ++i) EXPECT_FALSE(lugares[i].empty()) << i;
}

TEST_P(Contrato, LosDatosSonMarcasYMuestrasDelCanal) {
  banco->Conectar();
  const FechaHora ahora = banco->Ahora();
  const std::string hasta = TextoFecha(ahora);
  const std::string desde = TextoFecha(FechaDeDias(DiasDesde1970(ahora) - 30));
  for (const int canal : {0, 14}) {
    const TablaPtr t = Driver().LeerDatos(desde, hasta, static_cast<std::int16_t>(canal));
    std::set<std::string> dias;
    ASSERT_TRUE(EsFecha(t->Texto("Fecha"))) << "a marker comes first";
    for (; !t->Eof(); t->MoveNext()) {
      if (EsFecha(t->Texto("Fecha"))) {
        dias.insert(t->Texto("Fecha"));
        continue;
      }
      ASSERT_EQ(t->Texto("Canal"), std::to_string(canal + 1));
      ASSERT_TRUE(EsFecha(t->Texto("Hora")));
    }
    EXPECT_EQ(dias.size(), 31U) << "thirty days and today, ends included";
  }
}

TEST_P(Contrato, LasFechasLimitanLoLeido) {
  banco->Conectar();
  const FechaHora ahora = banco->Ahora();
  const std::string hoy = TextoFecha(ahora);
  const std::string ayer = TextoFecha(FechaDeDias(DiasDesde1970(ahora) - 1));
  const auto cuantas = [&](const std::string& desde, const std::string& hasta) {
    return Driver().LeerDatos(desde, hasta, 0)->RecordCount();
  };
  EXPECT_EQ(cuantas(ayer, hoy), cuantas(ayer, ayer) + cuantas(hoy, hoy));
  EXPECT_EQ(cuantas(hoy, ayer), 0U);
  EXPECT_EQ(cuantas("01/01/1990", "02/01/1990"), 0U);
  EXPECT_EQ(Driver().LeerDatos(hoy, hoy, 8)->RecordCount(), 0U) << "a channel without a history";
  EXPECT_EQ(Driver().LeerDatos(hoy, hoy, 99)->RecordCount(), 0U);
  EXPECT_EQ(Driver().LeerEventos(ayer + " 00:00:00", ayer + " 23:59:59")->RecordCount(),
            Driver().LeerEventos(ayer, ayer)->RecordCount());
  EXPECT_EQ(NumeroDeError([&] { Driver().LeerDatos("ayer", "hoy", 0); }), error::kTipos);
}

TEST_P(Contrato, LosDosExtremosEntran) {
  banco->Conectar();
  const std::string ayer = TextoFecha(FechaDeDias(DiasDesde1970(banco->Ahora()) - 1));
  const auto horas = [&](const std::string& desde, const std::string& hasta) {
    std::vector<std::string> textos;
    for (const TablaPtr t = Driver().LeerDatos(desde, hasta, 0); !t->Eof(); t->MoveNext()) {
      if (!t->Texto("Hora").empty()) textos.push_back(t->Texto("Hora"));
    }
    return textos;
  };
  const auto todas = horas(ayer, ayer);
  ASSERT_GT(todas.size(), 10U);
  const std::vector<std::string> esperadas(todas.begin() + 3, todas.begin() + 8);
  EXPECT_EQ(horas(ayer + " " + todas[3], ayer + " " + todas[7]), esperadas);
}

TEST_P(Contrato, LosPendientesSonParteDeLosDeSiempre) {
  banco->Conectar();
  const auto filas = [](const TablaPtr& t, const char* campo) {
    std::multiset<std::string> textos;
    for (; !t->Eof(); t->MoveNext()) {
      if (!t->Texto("Hora").empty()) textos.insert(t->Texto("Hora") + " " + t->Texto(campo));
    }
    return textos;
  };
  const std::string hoy = TextoFecha(banco->Ahora());
  const TablaPtr pendientes = Driver().LeerEventos("", "");
  ASSERT_GT(pendientes->RecordCount(), 0U);
  EXPECT_EQ(pendientes->Texto("Fecha"), "") << "the stream begins in the middle of a day";
  const auto sucesos = filas(pendientes, "Codigo");
  const auto todos = filas(Driver().LeerEventos("01/01/2001", hoy), "Codigo");
  EXPECT_LT(sucesos.size(), todos.size());
  EXPECT_TRUE(std::includes(todos.begin(), todos.end(), sucesos.begin(), sucesos.end()));

  const auto cola = filas(Driver().LeerColaTx("", ""), "Canal");
  const auto toda = filas(Driver().LeerColaTx("01/01/2001", hoy), "Canal");
  ASSERT_GT(cola.size(), 0U);
  EXPECT_LT(cola.size(), toda.size());
  EXPECT_TRUE(std::includes(toda.begin(), toda.end(), cola.begin(), cola.end()));
}

TEST_P(Contrato, LaColaLlevaFechaYMuestraJuntas) {
  banco->Conectar();
  const TablaPtr t = Driver().LeerColaTx("", "");
  EXPECT_TRUE(EsFecha(t->Texto("Fecha")));
  EXPECT_GT(t->Texto("Hora").size(), 1U);
}

TEST_P(Contrato, LeerPorFechaEsDecodificarLasPaginas) {
  banco->Conectar();
  const std::string hoy = TextoFecha(banco->Ahora());
  const TablaPtr canales = Driver().ConfiguracionAlmacenada(true);
  for (; !canales->Eof(); canales->MoveNext()) {
    const int pila = std::stoi(canales->Texto("Pila"));
    if (pila > 8) continue;
    const int canal = std::stoi(canales->Texto("Canal"));
    std::vector<std::string> decodificado;
    const std::string descriptor = " " + std::to_string(canal - 1) + "#0#1024#0#64";
    for (const auto& respuesta : Respuestas(Driver(), 3 * pila, 3 * pila + 2)) {
      Agregar(decodificado, Filas(Driver().DecodificarPagina(respuesta, descriptor, "01/01/2001")));
    }
    EXPECT_GT(decodificado.size(), 1000U) << canal;
    EXPECT_EQ(Filas(Driver().LeerDatos("", hoy, static_cast<std::int16_t>(canal - 1))), decodificado) << canal;
  }
  std::vector<std::string> sucesos;
  for (const auto& respuesta : Respuestas(Driver(), 30, 31)) {
    Agregar(sucesos, Filas(Driver().DecodificarPagina(respuesta, "1#0#1024#0#64", "01/01/2001")));
  }
  EXPECT_EQ(Filas(Driver().LeerEventos("", hoy)), sucesos);
  std::vector<std::string> cola;
  int pagina = 0;
  for (const auto& respuesta : Respuestas(Driver(), 27, 29)) {
    const std::string descriptor = "1#" + std::to_string(pagina++) + "#1024#0#64";
    Agregar(cola, Filas(Driver().DecodificarPaginaCola(respuesta, descriptor, "01/01/2001")));
  }
  EXPECT_EQ(Filas(Driver().LeerColaTx("", hoy)), cola);
}

TEST_P(Contrato, LoQueNoEsUnaPaginaNoDaFilas) {
  banco->Conectar();
  const auto datos = Respuestas(Driver(), 0, 0).front();
  const auto suceso = Respuestas(Driver(), 30, 30).front();
  const std::vector<std::uint8_t> borrada(78, 255);
  const std::vector<std::uint8_t> corta(datos.begin(), datos.begin() + 70);
  const auto sin_filas = [](const TablaPtr& t) { return !t || t->RecordCount() == 0; };
  EXPECT_FALSE(sin_filas(Driver().DecodificarPagina(datos, "0#0#1024#0#64", "01/01/2001")));
  for (const auto& pagina : {borrada, corta, std::vector<std::uint8_t>{}}) {
    EXPECT_TRUE(sin_filas(Driver().DecodificarPagina(pagina, "0#0#1024#0#64", "01/01/2001")));
    EXPECT_TRUE(sin_filas(Driver().DecodificarPaginaCola(pagina, "1#0#1024#0#64", "01/01/2001")));
  }
  EXPECT_TRUE(sin_filas(Driver().DecodificarPaginaCola(datos, "1#0#1024#0#64", "01/01/2001")));
  EXPECT_TRUE(sin_filas(Driver().DecodificarPagina(datos, "cualquiera", "01/01/2001")));
  // The descriptors of events and of channel 2 differ by a blank at most: the page itself tells what it holds.
  const TablaPtr eventos = Driver().DecodificarPagina(suceso, " 1#0#1024#0#64", "01/01/2001");
  EXPECT_GE(eventos->BuscarCampo("Codigo"), 0);
}

TEST_P(Contrato, UnaPaginaQueNoExisteNoSeLee) {
  banco->Conectar();
  const std::pair<int, int> fuera[] = {{-1, 0}, {32, 0}, {0, -1}, {0, 1024}};
  for (const auto& [pista, pagina] : fuera) {
    EXPECT_EQ(Driver().LeerPaginaFlash(static_cast<std::int16_t>(pista), static_cast<std::int16_t>(pagina)), "");
  }
  for (const char* pagina : {"", "x", "-1", "65536", "1.5"})
    EXPECT_EQ(Driver().LeerPagina(pagina, false), "") << pagina;
}

TEST_P(Contrato, ElRelojSeLeeYSePoneEnHora) {
  banco->Conectar();
  EXPECT_EQ(Driver().LeerFechaHora(), TextoFechaHora(banco->Ahora()));
  banco->Desfasar(45);
  EXPECT_EQ(Driver().LeerFechaHora(), TextoFechaHora(FechaDeSegundos(Segundos(banco->Ahora()) + 45 * 60)));
  EXPECT_TRUE(Driver().GrabarFechaHora());
  EXPECT_EQ(Driver().LeerFechaHora(), TextoFechaHora(banco->Ahora()));
  EXPECT_EQ(CodigosDeHoy().back(), "2");
}

TEST_P(Contrato, ElCartuchoEsOtraMemoria) {
  banco->Conectar();
  const std::string hoy = TextoFecha(banco->Ahora());
  EXPECT_EQ(Filas(Driver().LeerDatosCartucho(hoy, hoy, 0)), Filas(Driver().LeerDatos(hoy, hoy, 0)));
  EXPECT_GT(Driver().LeerEventosCartucho("", hoy)->RecordCount(), 0U);
  EXPECT_GT(Driver().LeerColaTxCartucho("", hoy)->RecordCount(), 0U);
  EXPECT_TRUE(Driver().BorrarCartucho());
  EXPECT_EQ(Driver().LeerDatosCartucho("", hoy, 0)->RecordCount(), 0U);
  EXPECT_EQ(Driver().LeerEventosCartucho("", hoy)->RecordCount(), 0U);
  EXPECT_EQ(Driver().LeerColaTxCartucho("", hoy)->RecordCount(), 0U);
  EXPECT_GT(Driver().LeerDatos(hoy, hoy, 0)->RecordCount(), 0U) << "the flash keeps its records";
  banco->QuitarCartucho(true);
  EXPECT_FALSE(Driver().BorrarCartucho());
  EXPECT_EQ(Driver().LeerDatosCartucho("", hoy, 0), nullptr) << "a unit that answers without data";
  EXPECT_EQ(Driver().LeerEventosCartucho("", hoy), nullptr);
  EXPECT_EQ(Driver().LeerColaTxCartucho("", hoy), nullptr);
}

TEST_P(Contrato, ElTiempoQuePasaDejaRegistros) {
  banco->Conectar();
  const std::string hoy = TextoFecha(banco->Ahora());
  const auto antes = Filas(Driver().LeerDatos(hoy, hoy, 0));
  banco->Pasar(3600);
  const auto despues = Filas(Driver().LeerDatos(hoy, hoy, 0));
  ASSERT_GT(despues.size(), antes.size());
  EXPECT_TRUE(std::equal(antes.begin(), antes.end(), despues.begin())) << "what was recorded stays";
}

}  // namespace utr::prueba
