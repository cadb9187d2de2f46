#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "session/Respaldos.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr auto kLectura = MotivoRespaldo::kLectura;
constexpr auto kEscritura = MotivoRespaldo::kEscritura;

class PruebaRespaldos : public testing::Test {
 protected:
  static TablaPtr Tabla1(const char* amax) {
    return TablaDeCanales({{{"Canal", "7"}, {"AMax", amax}}, {{"Canal", "1"}, {"AMin", ""}}});
  }
  std::string Guardar(const Tabla& tabla, MotivoRespaldo motivo = kLectura) {
    const ResultadoRespaldo resultado = respaldos.Guardar(tabla, motivo);
    EXPECT_TRUE(resultado.Guardado()) << resultado.falla;
    return (resultado.repetido ? "otra vez " : "") + resultado.archivo.lexically_relative(carpeta.Ruta()).string();
  }
  std::set<std::string> Nombres() const {
    std::set<std::string> nombres;
    for (const auto& entrada : std::filesystem::directory_iterator(respaldos.Carpeta()))
      nombres.insert(entrada.path().filename().string());
    return nombres;
  }

  prueba::Carpeta carpeta;
  RelojFalso reloj;
  RegistroErrores registro{carpeta / "AdminUTR.err", reloj};
  Propiedades propiedades{carpeta / "AdminUTR.dll"};
  Respaldos respaldos{carpeta.Ruta(), propiedades, reloj, registro};
};

TEST_F(PruebaRespaldos, CadaEstacionTieneSuCarpetaYCadaArchivoSuFechaYMotivo) {
  EXPECT_EQ(Guardar(*Tabla1("1")), "Respaldos/sin-identificador/2026-03-15 10.00.00 lectura.ucg");
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{70}}, Propiedad{std::int64_t{0}});
  reloj.Poner({2026, 4, 1, 9, 5, 7});
  EXPECT_EQ(Guardar(*Tabla1("1"), kEscritura), "Respaldos/70/2026-04-01 09.05.07 antes de escribir.ucg");
}

TEST_F(PruebaRespaldos, GuardaLaTablaEnteraPeseAFiltroYOrden) {
  const TablaPtr tabla = Tabla1("&<'\"\n");
  tabla->Filter("Canal='1'");
  tabla->Sort("Canal ASC");
  Tabla guardada;
  guardada.Open(carpeta / Guardar(*tabla));
  EXPECT_EQ(guardada.FieldCount(), tabla->FieldCount());
  EXPECT_EQ(Filas(guardada, {"Canal", "AMax", "TMed"}), Filas(*tabla->Clone(), {"Canal", "AMax", "TMed"}));
  EXPECT_EQ(tabla->RecordCount(), 1U);
}

TEST_F(PruebaRespaldos, LoMismoNoSeGuardaDosVecesSeguidas) {
  const std::string primera = Guardar(*Tabla1("1"));
  reloj.Adelantar(60);
  const TablaPtr filtrada = Tabla1("1");
  filtrada->Filter("Canal='9'");
  EXPECT_EQ(Guardar(*filtrada, kEscritura), "otra vez " + primera);
  Guardar(*Tabla1("2"));
  Guardar(*Tabla1("1"));
  const TablaPtr con_nulo = Tabla1("1");
  con_nulo->Set("AMax", Valor{});
  Guardar(*con_nulo);
  EXPECT_THAT(Nombres(), ElementsAre("2026-03-15 10.00.00 lectura.ucg", "2026-03-15 10.01.00 lectura.ucg",
                                     "2026-03-15 10.01.00-002 lectura.ucg", "2026-03-15 10.01.00-003 lectura.ucg"));
  prueba::EscribirTodo(respaldos.Carpeta() / *Nombres().rbegin(), "cortado");
  Guardar(*con_nulo, kEscritura);
  EXPECT_EQ(*Nombres().rbegin(), "2026-03-15 10.01.00-004 antes de escribir.ucg") << "a damaged one holds nothing";
  Tabla con_campo;
  for (std::size_t i = 0; i < con_nulo->FieldCount(); ++i) con_campo.Append(con_nulo->Field(i));
  con_campo.Append("Otro", TipoCampo::kVarChar, 5);
  con_campo.Open();
  for (con_nulo->MoveFirst(); !con_nulo->Eof(); con_nulo->MoveNext()) {
    con_campo.AddNew();
    for (std::size_t i = 0; i < con_nulo->FieldCount(); ++i) con_campo.Set(i, con_nulo->Value(i));
  }
  Guardar(con_campo);
  EXPECT_EQ(*Nombres().rbegin(), "2026-03-15 10.01.00-005 lectura.ucg") << "a column more is another table";
}

TEST_F(PruebaRespaldos, QuedanLosCienMasNuevosYNadaAjenoSeToca) {
  const std::filesystem::path donde = respaldos.Carpeta();
  std::filesystem::create_directories(donde / "2001-01-01 00.00.00 lectura.ucg");
  prueba::EscribirTodo(carpeta / "lejos", "x");
  std::filesystem::create_symlink(carpeta / "lejos", donde / "2001-01-02 00.00.00 lectura.ucg");
  const char* const ajenos[] = {"2001-01-01 00.00.00 lectura.icf",  "2001-01-01 00.00.00 lectura (copia).ucg",
                                "2001-01-01 00:00:00 lectura.ucg",  "2001-01-01 00.00.00-2 lectura.ucg",
                                "a2001-01-01 00.00.00 lectura.ucg", "2001-01-01 00.00.00 mia.ucg",
                                "2001-01-01 00.00.00.ucg",          "01.ucg"};
  for (const char* ajeno : ajenos) prueba::EscribirTodo(donde / ajeno, "x");
  for (int i = 0; i < 105; ++i)
    prueba::EscribirTodo(donde / fmt::format("2025-01-01 00.{:02}.{:02} antes de escribir.ucg", i / 60, i % 60), "x");
  reloj.Poner({2020, 1, 1});  // set back: by its name the new one is the oldest
  Guardar(*Tabla1("1"));
  const std::set<std::string> nombres = Nombres();
  EXPECT_EQ(nombres.size(), std::size(ajenos) + 2 + 100);
  for (const char* ajeno : ajenos) EXPECT_TRUE(nombres.count(ajeno)) << ajeno;
  EXPECT_TRUE(nombres.count("2020-01-01 00.00.00 lectura.ucg"));
  EXPECT_FALSE(nombres.count("2025-01-01 00.00.05 antes de escribir.ucg"));
  EXPECT_TRUE(nombres.count("2025-01-01 00.00.06 antes de escribir.ucg"));
}

TEST_F(PruebaRespaldos, LoQueNoSePuedeGuardarSeDiceYSeRegistra) {
  {
    std::filesystem::create_directories(respaldos.Carpeta());
    const DispositivoLleno lleno(1000);
    const ResultadoRespaldo resultado = respaldos.Guardar(*Tabla1("1"), kEscritura);
    EXPECT_THAT(resultado.falla, HasSubstr("No se puede escribir el archivo"));
    EXPECT_EQ(resultado.archivo, "");
  }
  EXPECT_TRUE(Nombres().empty()) << "no leftovers";
  EXPECT_THAT(prueba::LeerTodo(carpeta / "AdminUTR.err"), HasSubstr("\"Respaldos\",\"Guardar\""));
  std::filesystem::remove_all(carpeta / "Respaldos");
  EXPECT_FALSE(respaldos.Guardar(Tabla(), kEscritura).Guardado());
  std::filesystem::remove_all(carpeta / "Respaldos");
  prueba::EscribirTodo(carpeta / "Respaldos", "un archivo");
  EXPECT_EQ(respaldos.Guardar(*Tabla1("1"), kEscritura).falla,
            "No se puede crear la carpeta " + respaldos.Carpeta().string());
}

}  // namespace
}  // namespace utr
