#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/BancoSimulado.h"
#include "driver/simulated/unit/Memoria.h"
#include "retrieved/Eventos.h"
#include "retrieved/Registros.h"
#include "retrieved/recovery/MemoriaFlash.h"
#include "retrieved/recovery/Procesamiento.h"

namespace utr {
namespace {

// A dump of the simulated station, processed without it, against what the station itself gives when it is asked.
class ProcesamientoSimulado : public testing::Test {
 protected:
  ProcesamientoSimulado() { banco_.Conectar(); }

  Comunicador& Driver() { return banco_.Driver(); }

  // All pages of the groups up to the third blank one.
  std::string Volcado() {
    std::string texto = "\"0/31\"\r\n";
    for (const GrupoFlash& grupo : kGruposFlash) {
      int vacias = 0;
      for (int i = 0; i < (grupo.ultima - grupo.primera + 1) * kPaginasPista && vacias < 3; ++i) {
        const LugarPagina lugar{grupo.primera + i / kPaginasPista, i % kPaginasPista};
        const std::string pagina =
            Driver().LeerPaginaFlash(static_cast<std::int16_t>(lugar.pista), static_cast<std::int16_t>(lugar.pagina));
        if (pagina.starts_with("255,255,255,255")) ++vacias;
        texto += fmt::format("\"{}#{},{}\"\r\n", pagina, lugar.pista, lugar.pagina);
      }
      texto += "\"EOT\"\r\n";
    }
    return texto;
  }

  std::filesystem::path Archivo(const std::string& nombre, const std::string& texto) {
    prueba::EscribirTodo(banco_.carpeta / nombre, texto);
    return banco_.carpeta / nombre;
  }

  ResultadoProceso Procesar(const std::vector<std::filesystem::path>& archivos, MapaMemoria* mapa = nullptr) {
    std::filesystem::create_directory(Resultados());
    PedidoProceso pedido;
    pedido.configuracion = Driver().ConfiguracionAlmacenada(true);
    pedido.descripciones = CargarEventos(CARPETA_DATOS);
    pedido.archivos = archivos;
    pedido.carpeta = Resultados();
    pedido.mapa = mapa;
    SinProgreso progreso;
    return ProcesandoDatos(pedido, contexto_, progreso, {});
  }

  std::filesystem::path Resultados() const { return banco_.carpeta / "resultados"; }

  // All fields of all rows, in the order of the moments.
  static std::vector<std::string> Ordenadas(const TablaPtr& tabla) {
    std::vector<std::pair<std::string, std::string>> filas;
    for (std::size_t fila = 0; fila < tabla->RecordCount(); ++fila) {
      std::string todo;
      for (std::size_t campo = 0; campo < tabla->FieldCount(); ++campo) todo += tabla->Filas().Texto(fila, campo) + "|";
      const FechaHora fecha = ConvertirAFecha(tabla->Filas().Texto(fila, 0) + " " + tabla->Filas().Texto(fila, 1));
      filas.emplace_back(fmt::format("{:012}", Segundos(fecha)), todo);
    }
    std::sort(filas.begin(), filas.end());
    std::vector<std::string> textos;
    for (auto& [momento, texto] : filas) textos.push_back(std::move(texto));
    return textos;
  }

  std::vector<std::string> Guardadas(const std::string& nombre) const {
    if (!std::filesystem::exists(Resultados() / nombre)) return {};
    const auto tabla = std::make_shared<Tabla>();
    tabla->Open(Resultados() / nombre);
    return Ordenadas(tabla);
  }

  std::vector<std::string> Leidas(std::int16_t canal) {
    const TablaPtr configuracion = Driver().ConfiguracionAlmacenada(true);
    const auto canal_utr = static_cast<std::int16_t>(canal - 1);
    return Ordenadas(ArmarRegistrosDatos(Driver().LeerDatos("", Hoy(), canal_utr), configuracion.get(), contexto_));
  }

  std::string Hoy() { return TextoFecha(banco_.Ahora()); }

  prueba::BancoSimulado banco_;
  Catalogo catalogo_{CARPETA_DATOS};
  RegistroErrores registro_{banco_.carpeta / "utr.err", banco_.reloj};
  ContextoRegistros contexto_{banco_.Driver(), banco_.reloj, catalogo_, registro_};
};

const InformeRegistros& Renglon(const ResultadoProceso& resultado, const std::string& nombre) {
  const auto& registros = resultado.informe.registros;
  return *std::find_if(registros.begin(), registros.end(), [&](const auto& r) { return r.nombre == nombre; });
}

TEST_F(ProcesamientoSimulado, LoRecuperadoEsLoQueLeenDatosColaYEventos) {
  MapaMemoria mapa(UsoMapa::kProceso);
  const ResultadoProceso resultado = Procesar({Archivo("equipo.bkp", Volcado())}, &mapa);
  EXPECT_TRUE(resultado.informe.LineasCuadran());
  EXPECT_TRUE(resultado.informe.FilasCuadran());
  const TablaPtr configuracion = Driver().ConfiguracionAlmacenada(true);
  int con_historia = 0;
  for (const TablaPtr filas = configuracion->Clone(); !filas->Eof(); filas->MoveNext()) {
    if (Val(filas->Texto("Pila")) > 8) continue;
    const auto canal = static_cast<std::int16_t>(Val(filas->Texto("Canal")));
    const auto guardadas = Guardadas("equipoDatosCanal_" + std::to_string(canal) + ".xml");
    EXPECT_GT(guardadas.size(), 1000U) << canal;
    EXPECT_EQ(guardadas, Leidas(canal)) << canal;
    ++con_historia;
  }
  EXPECT_EQ(con_historia, 9);
  EXPECT_EQ(Guardadas("equipoColaTx.xml"),
            Ordenadas(ArmarRegistrosCola(Driver().LeerColaTx("", Hoy()), configuracion.get(), contexto_)));
  const TablaPtr descripciones = CargarEventos(CARPETA_DATOS);
  const auto eventos = Guardadas("equipoEventos.xml");
  EXPECT_GT(eventos.size(), 50U);
  EXPECT_EQ(eventos, Ordenadas(ArmarRegistrosEventos(Driver().LeerEventos("", Hoy()), configuracion.get(),
                                                     descripciones.get())));
  EXPECT_EQ(resultado.archivo, Resultados() / "equipoEventos.xml");
  const CuentaLineas lineas = resultado.informe.Lineas();
  EXPECT_EQ(mapa.Cuantas(EstadoPagina::kDatos), lineas[FinLinea::kDatos]);
  EXPECT_EQ(mapa.Cuantas(EstadoPagina::kVacia), lineas[FinLinea::kBlanca]);
  EXPECT_EQ(lineas[FinLinea::kBlanca], 33U);
  EXPECT_TRUE(resultado.informe.ajenas.empty());
  EXPECT_EQ(
      resultado.informe.Filas()[FinFila::kGuardada],
      Renglon(resultado, "Eventos").decodificadas + Renglon(resultado, "Cola de transmisión").decodificadas + [&] {
        std::uint64_t suma = 0;
        for (const InformeRegistros& r : resultado.informe.registros) suma += r.canal > 0 ? r.decodificadas : 0;
        return suma;
      }());
}

// The text of a recovery file with all pages of some tracks that aren't erased.
std::string VolcadoDe(const simulada::Memoria& memoria, int desde, int hasta) {
  std::string texto = "\"0/31\"\r\n";
  for (int pista = desde; pista <= hasta; ++pista) {
    for (int pagina = 0; pagina < kPaginasPista; ++pagina) {
      if (memoria.PaginaEn(pista, pagina)[0] == 255) continue;
      texto += fmt::format("\"{}#{},{}\"\r\n", memoria.TextoDePagina(pista, pagina), pista, pagina);
    }
  }
  return texto;
}

TEST_F(ProcesamientoSimulado, UnAnilloQueDioLaVueltaQuedaEntero) {
  // 3100 pages of six records into a ring of 3072: the newest 28 stand ahead of the oldest ones.
  simulada::Memoria memoria;
  for (int i = 0; i < 3100 * 6; ++i)
    memoria.Anotar(0, 9000 + i / 144, {.minuto = static_cast<std::uint16_t>(i % 144 * 10), .canal = 1, .valor = 5});
  memoria.Sellar();
  const ResultadoProceso resultado = Procesar({Archivo("anillo.bkp", VolcadoDe(memoria, 0, 2))});
  const InformeRegistros& canal = Renglon(resultado, "EA01");
  EXPECT_EQ(canal.fines[FinFila::kGuardada], 3072U * 6);
  EXPECT_EQ(TextoFechaHora(*canal.primero), "23/08/2024 04:00:00") << "28 pages are a day and four hours";
  EXPECT_EQ(TextoFechaHora(*canal.ultimo), "29/12/2024 03:50:00");
  EXPECT_EQ(canal.cuantos_huecos, 0U) << "once they are in order";
  EXPECT_EQ(Guardadas("anilloDatosCanal_1.xml").size(), 3072U * 6);
}

TEST_F(ProcesamientoSimulado, LasPaginasDicenDeQueCanalYDeQueDiaSon) {
  // Stack 0 was of channel 5 before it was of channel 1; the last page has no date of its own.
  simulada::Memoria memoria;
  memoria.Anotar(0, 9000, {.minuto = 600, .canal = 5, .valor = 5});
  memoria.Anotar(0, 9001, {.minuto = 610, .canal = 1, .valor = 5});
  memoria.Anotar(0, 9002, {.minuto = 620, .canal = 1, .valor = 5});
  memoria.Sellar();
  std::array<std::uint8_t, simulada::kBytesPagina> sin_dia{};
  const auto ultima = memoria.PaginaEn(0, 2);
  std::copy(ultima.begin(), ultima.end(), sin_dia.begin());
  simulada::CambiarDia(sin_dia, simulada::kDiaAusente);
  const std::string texto = Reemplazar(VolcadoDe(memoria, 0, 0), simulada::TextoDe(ultima), simulada::TextoDe(sin_dia));
  const ResultadoProceso resultado = Procesar({Archivo("mano.bkp", texto)});
  EXPECT_EQ(Guardadas("manoDatosCanal_5.xml").size(), 1U);
  EXPECT_EQ(Guardadas("manoDatosCanal_1.xml").size(), 2U);
  const InformeRegistros& canal = Renglon(resultado, "EA01");
  EXPECT_EQ(canal.de_referencia, 1U);
  EXPECT_EQ(TextoFechaHora(*canal.ultimo), "23/08/2024 10:10:00") << "the date of reference is no moment of a record";
  ASSERT_EQ(resultado.informe.ajenas.size(), 1U);
  EXPECT_EQ(resultado.informe.ajenas[0].tramo, (TramoPaginas{0, 0, 0}));
  EXPECT_EQ(resultado.informe.ajenas[0].propio, 5);
}

TEST_F(ProcesamientoSimulado, UnaPaginaRotaYUnaFaltanteCuestanSoloLoSuyo) {
  simulada::Memoria memoria;
  for (int i = 0; i < 120; ++i)
    memoria.Anotar(0, 9000, {.minuto = static_cast<std::uint16_t>(i * 10), .canal = 1, .valor = 5});
  memoria.AnotarSuceso(9000, {.segundo = 60, .codigo = 5});
  memoria.Sellar();
  // Page 3 isn't there, 4 is of no kind that the driver knows, 5 has a number too many.
  const std::string bueno = VolcadoDe(memoria, 0, 31);
  const auto pagina = [&](int cual) { return memoria.TextoDePagina(0, cual) + "#0," + std::to_string(cual); };
  std::string malo = Reemplazar(bueno, "\"" + pagina(3) + "\"\r\n", "");
  malo = Reemplazar(malo, pagina(4), "210" + pagina(4).substr(3));
  malo = Reemplazar(malo, "#0,5\"", ",0#0,5\"");
  const auto entero = Archivo("entero.bkp", bueno);
  const auto roto = Archivo("roto.bkp", malo);
  Procesar({entero});
  const auto todas = Guardadas("enteroDatosCanal_1.xml");
  const ResultadoProceso resultado = Procesar({roto});
  EXPECT_EQ(resultado.informe.Lineas()[FinLinea::kSinTabla], 1U);
  EXPECT_EQ(resultado.informe.Lineas()[FinLinea::kDanada], 1U);
  EXPECT_EQ(Guardadas("rotoDatosCanal_1.xml").size(), todas.size() - 18);
  EXPECT_EQ(Guardadas("rotoEventos.xml"), Guardadas("enteroEventos.xml"));
  // Both together: what one lacks the other has, and nothing stands twice.
  EXPECT_EQ(Procesar({roto, entero}).informe.Filas()[FinFila::kRepetida], 0U);
  EXPECT_EQ(Guardadas("rotoDatosCanal_1.xml"), todas);
}

}  // namespace
}  // namespace utr
