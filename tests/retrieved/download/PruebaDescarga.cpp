#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <optional>

#include "driver/ErroresDeEnlace.h"
#include "retrieved/Banco.h"
#include "retrieved/download/Descarga.h"
#include "support/DispositivoLleno.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// Cancels while the piece of that name is under way.
class ProgresoAnotado : public SinProgreso {
 public:
  void Texto(std::string_view texto) override { textos.emplace_back(texto); }
  void Rango(std::int64_t pasos) override { rango = pasos; }
  void Posicion(std::int64_t hechos) override {
    posicion = hechos;
    if (al_avanzar) al_avanzar(hechos);
  }
  bool Cancelado() override { return !textos.empty() && textos.back() == cancelar_en; }
  void Descartado(std::string_view que, std::string_view porque) override {
    descartados.push_back(std::string(que) + ": " + std::string(porque));
  }

  std::vector<std::string> textos;
  std::vector<std::string> descartados;
  std::string cancelar_en = "nada";
  std::function<void(std::int64_t hechos)> al_avanzar;
  std::int64_t rango = 0;
  std::int64_t posicion = 0;
};

class PruebaDescarga : public Banco {
 protected:
  PruebaDescarga() {
    comunicador_.Devuelve("LeerDatos", [this](const std::string& llamada) { return Datos(llamada); });
    comunicador_.Devuelve("LeerEventos",
                          TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2"},
                                        {{"14/03/2026", "", "", "", ""}, {"", "10:00:00", "1", "5", "7"}}));
    std::filesystem::create_directory(donde_);
  }

  // Channel 15 has nothing of the span.
  TablaPtr Datos(const std::string& llamada) const {
    if (llamada.ends_with(",14)")) return TablaDeTextos(kOrigen);
    const char* canal = llamada.ends_with(",0)") ? "1" : "3";
    std::vector<Celdas> filas{{"14/03/2026", "", "", "", "", "", "", ""}};
    filas.insert(filas.end(), muestras_, Celdas{"", "10:00:00", canal, "2048", "", "", "1", "0"});
    return TablaDeTextos(kOrigen, filas);
  }

  Descarga Nueva(FormatoDescarga formato = FormatoDescarga::kCsv) {
    PedidoDescarga pedido{.desde = {2026, 3, 13, 8, 0, 0}, .hasta = {2026, 3, 14, 23, 59, 0}};
    pedido.formato = formato;
    return Descarga(contexto_, canales_, {}, CARPETA_DATOS, pedido, donde_);
  }

  static std::vector<std::string> Estados(const Descarga& descarga) {
    std::vector<std::string> estados;
    for (const Pieza& pieza : descarga.Piezas()) estados.push_back(pieza.archivo + " " + TextoEstado(pieza));
    return estados;
  }

  std::vector<std::string> Archivos() const {
    std::vector<std::string> nombres;
    for (const auto& uno : std::filesystem::directory_iterator(donde_)) nombres.push_back(uno.path().filename());
    std::sort(nombres.begin(), nombres.end());
    return nombres;
  }

  static inline const std::vector<const char*> kOrigen{"Fecha",  "Hora",   "Canal",      "Valor",
                                                       "Maximo", "Minimo", "Validacion", "ColaTX"};
  const std::filesystem::path donde_ = carpeta_ / "descarga";
  std::size_t muestras_ = 1;
  TablaPtr canales_ = TablaDeCanales({{{"Canal", "1"}, {"Parametro", "3"}, {"Unidad", "1"}},
                                      {{"Canal", "15"}, {"Tipo", "5"}, {"CtePluvi", "0.2"}},
                                      {{"Canal", "2"}, {"Flags", "0"}},
                                      {{"Canal", "3"}}});
  ProgresoAnotado progreso_;
};

TEST_F(PruebaDescarga, TodoLoDelPeriodoEnUnaCarpeta) {
  Descarga descarga = Nueva();
  descarga.Correr(progreso_);
  EXPECT_THAT(comunicador_.llamadas,
              ElementsAre("LeerDatos(13/03/2026,14/03/2026,0)", "LeerDatos(13/03/2026,14/03/2026,14)",
                          "LeerDatos(13/03/2026,14/03/2026,2)", "LeerEventos(13/03/2026 08:00:00,14/03/2026 23:59:00)",
                          "LeerColaTx(13/03/2026,14/03/2026)"));
  EXPECT_THAT(Estados(descarga),
              ElementsAre("Configuracion.ucg guardada", "EA01.csv guardada", "PLV.csv sin datos en el período",
                          "EA03.csv guardada", "Eventos.csv guardada", "ColaTx.csv sin datos en el período",
                          "Descarga.txt guardada"));
  EXPECT_THAT(Archivos(), ElementsAre("Configuracion.ucg", "Descarga.txt", "EA01.csv", "EA03.csv", "Eventos.csv"));
  EXPECT_TRUE(descarga.Completa());
  EXPECT_EQ(progreso_.posicion, progreso_.rango);
  EXPECT_THAT(prueba::LeerTodo(donde_ / "EA01.csv"), HasSubstr("\r\n2026-03-14,10:00:00,EA01,"));
  Tabla configuracion;
  configuracion.Open(donde_ / "Configuracion.ucg");
  EXPECT_EQ(configuracion.RecordCount(), 4U);
  EXPECT_THAT(prueba::LeerTodo(donde_ / "Descarga.txt"),
              testing::AllOf(HasSubstr("desde 13/03/2026 08:00:00 hasta 14/03/2026 23:59:00"),
                             HasSubstr("\r\nPLV_Pluviómetro: sin datos en el período\r\n"),
                             HasSubstr("guardada, 1 registro en EA03.csv\r\n")));
}

TEST_F(PruebaDescarga, CadaFormatoTieneSusArchivos) {
  Nueva(FormatoDescarga::kPorTiempo).Correr(progreso_);
  EXPECT_THAT(Archivos(), ElementsAre("Configuracion.ucg", "Datos.csv", "Descarga.txt", "Eventos.csv"));
  const std::string datos = prueba::LeerTodo(donde_ / "Datos.csv");
  EXPECT_TRUE(datos.starts_with("Fecha,Hora,EA01 ")) << datos;
  EXPECT_THAT(datos, HasSubstr("\r\n2026-03-14,10:00:00,5.000,Si,5.000,Si\r\n"));
  Nueva(FormatoDescarga::kTablas).Correr(progreso_);
  Tabla canal;
  canal.Open(donde_ / "EA01.xml");
  EXPECT_EQ(canal.Filas().Texto(0, 3), "5.000");
}

TEST_F(PruebaDescarga, LoQueNoSePudoLeerFaltaYSePideOtraVez) {
  comunicador_.Falla("LeerDatos", Error(error::kSinRespuesta, "driver", "La UTR no responde"), 1);
  Descarga descarga = Nueva();
  descarga.Correr(progreso_);
  EXPECT_EQ(Estados(descarga)[1], "EA01.csv falta: La UTR no responde");
  EXPECT_EQ(Estados(descarga)[3], "EA03.csv guardada");
  EXPECT_FALSE(descarga.Completa());
  EXPECT_THAT(progreso_.descartados, ElementsAre("EA01_Precipitación: La UTR no responde"));
  comunicador_.llamadas.clear();
  descarga.Correr(progreso_);
  EXPECT_THAT(comunicador_.llamadas, ElementsAre("LeerDatos(13/03/2026,14/03/2026,0)")) << "nothing is read twice";
  EXPECT_TRUE(descarga.Completa());
}

TEST_F(PruebaDescarga, UnaUnidadQueCallaTerminaLaDescarga) {
  comunicador_.Falla("LeerDatos", Error(error::kSinRespuesta, "driver", "La UTR no responde"));
  Descarga descarga = Nueva();
  descarga.Correr(progreso_);
  EXPECT_EQ(comunicador_.llamadas.size(), 2U);
  EXPECT_EQ(descarga.Cuantas(EstadoPieza::kFalta), 2U);
  EXPECT_EQ(descarga.Cuantas(EstadoPieza::kPendiente), 3U);
  EXPECT_FALSE(descarga.Cancelada());
  EXPECT_THAT(prueba::LeerTodo(donde_ / "Descarga.txt"), HasSubstr("Eventos: pendiente\r\n"));
}

TEST_F(PruebaDescarga, CanceladaConservaLoQueYaVino) {
  for (const auto formato : {FormatoDescarga::kCsv, FormatoDescarga::kPorTiempo}) {
    progreso_.cancelar_en = "EA03_Meteorologico";
    comunicador_.al_llamar = [this](const std::string& llamada) {
      if (llamada.ends_with(",2)")) throw Error(error_enlace::kCancelada, "driver", "La operación fue cancelada");
    };
    Descarga descarga = Nueva(formato);
    descarga.Correr(progreso_);
    EXPECT_TRUE(descarga.Cancelada());
    EXPECT_EQ(descarga.Piezas()[1].estado, EstadoPieza::kGuardada);
    EXPECT_EQ(descarga.Piezas()[3].estado, EstadoPieza::kPendiente);
    EXPECT_EQ(descarga.Piezas()[4].estado, EstadoPieza::kPendiente);
    EXPECT_TRUE(std::filesystem::exists(donde_ / descarga.Piezas()[1].archivo));
    comunicador_.al_llamar = {};
    progreso_.cancelar_en = "nada";
    descarga.Correr(progreso_);
    EXPECT_TRUE(descarga.Completa());
    EXPECT_THAT(prueba::LeerTodo(donde_ / descarga.Piezas()[3].archivo),
                HasSubstr(formato == FormatoDescarga::kCsv ? "EA03" : "EA01 Precipitación"));
  }
}

// The disk is full when each file's turn comes: what stood before stands, and what was read is written later.
TEST_F(PruebaDescarga, UnDiscoLlenoEnCadaArchivoNoPierdeNada) {
  muestras_ = 50;
  for (const auto formato : {FormatoDescarga::kCsv, FormatoDescarga::kPorTiempo, FormatoDescarga::kTablas}) {
    const std::size_t piezas = Nueva(formato).Piezas().size();
    for (std::size_t cual = 0; cual < piezas; ++cual) {
      Descarga descarga = Nueva(formato);
      const std::filesystem::path archivo = donde_ / descarga.Piezas()[cual].archivo;
      prueba::EscribirTodo(archivo, "anterior");
      std::optional<DispositivoLleno> lleno;
      progreso_.al_avanzar = [&](std::int64_t posicion) {
        if (posicion == static_cast<std::int64_t>(cual)) lleno.emplace(40);
      };
      if (cual + 1 == piezas) lleno.emplace(40);
      descarga.Correr(progreso_);
      progreso_.al_avanzar = {};
      const bool con_datos = descarga.Piezas()[cual].estado != EstadoPieza::kSinDatos;
      EXPECT_FALSE(descarga.Completa());
      // The channels ahead of it have brought theirs to the common file by then.
      const bool con_otros = formato == FormatoDescarga::kPorTiempo && cual == 3;
      const bool escrita = con_otros || (archivo.filename() == "Datos.csv" && cual == 2);
      EXPECT_EQ(prueba::LeerTodo(archivo) != "anterior", escrita) << archivo;
      EXPECT_EQ(descarga.SinGuardar(), cual + 2 == piezas ? 0U : 1U) << "it, or the one behind it but the summary";
      if (con_datos) {
        EXPECT_THAT(TextoEstado(descarga.Piezas()[cual]), testing::EndsWith(": no queda lugar en el disco"));
      }
      lleno.reset();
      const auto leidas = comunicador_.llamadas;
      descarga.Correr(progreso_);
      EXPECT_TRUE(descarga.Completa()) << archivo;
      EXPECT_EQ(prueba::LeerTodo(archivo) != "anterior", con_datos || archivo.filename() == "Datos.csv");
      for (const std::string& llamada : leidas)
        EXPECT_EQ(std::count(comunicador_.llamadas.begin(), comunicador_.llamadas.end(), llamada), 1) << llamada;
      comunicador_.llamadas.clear();
    }
  }
}

TEST_F(PruebaDescarga, LaTablaPorTiempoSeEscribeConCadaCanal) {
  comunicador_.al_llamar = [this](const std::string& llamada) {
    if (llamada.ends_with(",2)")) {
      EXPECT_THAT(prueba::LeerTodo(donde_ / "Datos.csv"), HasSubstr("EA01 Precipitación"));
    }
  };
  Descarga descarga = Nueva(FormatoDescarga::kPorTiempo);
  descarga.Correr(progreso_);
  EXPECT_TRUE(descarga.Completa());
  EXPECT_THAT(prueba::LeerTodo(donde_ / "Datos.csv"), HasSubstr(",EA03"));
}

TEST_F(PruebaDescarga, LoQueNoEntroEnElDiscoVaAOtraCarpetaSinPedirloDeNuevo) {
  for (const auto formato : {FormatoDescarga::kCsv, FormatoDescarga::kPorTiempo}) {
    muestras_ = 50;
    Descarga descarga = Nueva(formato);
    std::optional<DispositivoLleno> lleno;
    progreso_.al_avanzar = [&](std::int64_t posicion) {
      if (posicion == 3) lleno.emplace(40);
    };
    descarga.Correr(progreso_);
    progreso_.al_avanzar = {};
    ASSERT_EQ(descarga.SinGuardar(), 1U);
    lleno.reset();
    comunicador_.llamadas.clear();
    const auto otra = NuevaCarpetaDeDescarga(carpeta_ / "otra", 70, {2026, 3, 15, 10, 0, 0});
    descarga.GuardarLoLeido(otra);
    EXPECT_EQ(descarga.SinGuardar(), 0U);
    EXPECT_TRUE(comunicador_.llamadas.empty());
    const bool juntas = formato == FormatoDescarga::kPorTiempo;
    EXPECT_TRUE(std::filesystem::exists(otra / (juntas ? "Datos.csv" : "EA03.csv")));
    EXPECT_EQ(descarga.Donde(descarga.Piezas()[1]), juntas ? "Datos.csv" : (donde_ / "EA01.csv").string());
    EXPECT_THAT(prueba::LeerTodo(otra / "Descarga.txt"),
                testing::AllOf(HasSubstr(" en " + (donde_ / "Configuracion.ucg").string()),
                               HasSubstr("guardada, 50 registros en " + descarga.Piezas()[3].archivo + "\r\n"),
                               HasSubstr("Eventos: pendiente")));
    descarga.Correr(progreso_);
    EXPECT_TRUE(descarga.Completa());
    EXPECT_TRUE(std::filesystem::exists(otra / "Eventos.csv"));
  }
}

TEST(NuevaCarpetaDeDescarga, CadaVezUnaNueva) {
  const prueba::Carpeta carpeta;
  const FechaHora ahora{2026, 3, 5, 9, 8, 7};
  const auto donde = carpeta / "Descargas";
  EXPECT_EQ(NuevaCarpetaDeDescarga(donde, 70, ahora), donde / "UTR-70_2026-03-05_09-08-07");
  EXPECT_EQ(NuevaCarpetaDeDescarga(donde, 70, ahora), donde / "UTR-70_2026-03-05_09-08-07-2");
  prueba::EscribirTodo(carpeta / "archivo", "x");
  EXPECT_EQ(prueba::NumeroDeError([&] { NuevaCarpetaDeDescarga(carpeta / "archivo", 70, ahora); }), error::kArchivo);
}

}  // namespace
}  // namespace utr
