#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "session/LecturaConfiguracion.h"
#include "support/DispositivoLleno.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;

class Lectura : public prueba::ModPrueba, public testing::Test {
 protected:
  Lectura() {
    conexion.AlCambiar([this] { avisos.push_back(conexion.Conectado() ? "conectado" : "perdido"); });
    comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({{{"Canal", "1"}}, {{"Canal", "15"}}}));
  }

  std::vector<std::string> Canales() { return Filas(*lectura.RecConfig()->Clone(), {"Canal"}); }

  // Prepares a source that must fail; the number of its error.
  std::int32_t Fallar(const std::string& fuente) {
    const auto falla = FallaDe([&] { lectura.Preparar(fuente); });
    return falla ? falla->Numero() : 0;
  }

  std::vector<std::string> avisos;
  LecturaConfiguracion lectura{mod};
};

TEST_F(Lectura, LaUTRSeLeePorElPuertoDeLosAjustes) {
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{3}}, Propiedad{std::int64_t{1}});
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{70}}, Propiedad{std::int64_t{0}});
  EXPECT_TRUE(lectura.Preparar("RTU"));
  EXPECT_THAT(comunicador.llamadas,
              ElementsAre("Conectar(9600,n,8,1,3)", "IdEquipo(70)", "ConfiguracionAlmacenada(si)"));
  EXPECT_THAT(avisos, ElementsAre("conectado", "conectado"));
  EXPECT_TRUE(lectura.ConfiguracionLeida());
  EXPECT_TRUE(lectura.LeidaDeLaUTR());
  EXPECT_THAT(Canales(), ElementsAre("1", "15"));
}

TEST_F(Lectura, LaTablaQueHaySeDiceEnPalabrasYUnaLecturaQueFallaNoLaCambia) {
  EXPECT_EQ(lectura.Descripcion(), "");
  lectura.Preparar("RTU");
  EXPECT_EQ(lectura.Descripcion(), "de la UTR, sin identificador, leída el 15/03/2026 10:00:00");
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{70}}, Propiedad{std::int64_t{0}});
  lectura.Preparar("RTU");
  EXPECT_EQ(lectura.Descripcion(), "de la UTR, identificador 70, leída el 15/03/2026 10:00:00");
  EXPECT_NE(Fallar("falta.ucg"), 0);
  EXPECT_EQ(lectura.Lecturas(), 2U);
  EXPECT_TRUE(lectura.Descripcion().starts_with("de la UTR, identificador 70"));
  comunicador.Devuelve("LeerArchivoConfiguracion", TablaDeCanales({}));
  lectura.Preparar("río.icf");
  EXPECT_EQ(lectura.Descripcion(), "del archivo río.icf, leída el 15/03/2026 10:00:00");
  EXPECT_EQ(lectura.Lecturas(), 3U);
}

TEST_F(Lectura, PorIPOEnLlamadaNoSeConecta) {
  conexion.FijarPorIP(true);
  lectura.Preparar("RTU");
  conexion.FijarPorIP(false);
  conexion.Llamar("1", "");
  lectura.Preparar("RTU");
  EXPECT_EQ(comunicador.Cuantas("Conectar"), 0U);
  EXPECT_EQ(comunicador.Cuantas("ConfiguracionAlmacenada"), 2U);
}

TEST_F(Lectura, UnaFallaSeRegistraConSuNombreYDejaLoQueHabia) {
  lectura.Preparar("RTU");
  avisos.clear();
  comunicador.Falla("ConfiguracionAlmacenada", Error(1000, "driver", "sin respuesta"));
  EXPECT_EQ(Fallar("RTU"), 1000);
  EXPECT_EQ(avisos.back(), "perdido");
  EXPECT_NE(Errores().find("1000,\"driver\",\"sin respuesta\""), std::string::npos);
  EXPECT_NE(Errores().find("\"frmPPal\",\"Cargando Configuracion\""), std::string::npos);
  EXPECT_THAT(Canales(), ElementsAre("1", "15"));
}

TEST_F(Lectura, UnaFallaNoHaceDeLaUTRLaTablaDeUnArchivo) {
  comunicador.Devuelve("LeerArchivoConfiguracion", TablaDeCanales({{{"Canal", "2"}}}));
  lectura.Preparar("x.icf");
  comunicador.Falla("Conectar", Error(8005, "x", "y"));
  EXPECT_EQ(Fallar("RTU"), 8005);
  EXPECT_FALSE(lectura.LeidaDeLaUTR());
}

TEST_F(Lectura, SinTablaOSinFilasNoHayConfiguracion) {
  comunicador.Devuelve("ConfiguracionAlmacenada", TablaPtr());
  EXPECT_TRUE(lectura.Preparar("RTU"));
  EXPECT_FALSE(lectura.LeidaDeLaUTR());
  comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({}));
  EXPECT_TRUE(lectura.Preparar("RTU"));
  EXPECT_FALSE(lectura.LeidaDeLaUTR());
}

TEST_F(Lectura, LasTresUltimasLetrasDecidenElLector) {
  lectura.Preparar("RTU");
  lectura.Guardar(carpeta / "estacion.ucg");
  for (const char* nombre : {"a.ucg", "b.UCG", "c.Ucg", "sinpuntoucg"}) {
    std::filesystem::copy_file(carpeta / "estacion.ucg", carpeta / nombre);
    comunicador.llamadas.clear();
    EXPECT_TRUE(lectura.Preparar((carpeta / nombre).string())) << nombre;
    EXPECT_TRUE(comunicador.llamadas.empty()) << "no link is needed";
    EXPECT_FALSE(lectura.ConfiguracionLeida());
    EXPECT_THAT(Canales(), ElementsAre("1", "15"));
  }
  comunicador.Devuelve("LeerArchivoConfiguracion", TablaDeCanales({{{"Canal", "9"}}}));
  for (const char* nombre : {"x.icf", "x.ucg2", "uc", "x.ucg "}) {
    EXPECT_TRUE(lectura.Preparar(nombre));
    EXPECT_EQ(comunicador.llamadas.back(), std::string("LeerArchivoConfiguracion(") + nombre + ")");
  }
  EXPECT_THAT(Canales(), ElementsAre("9"));
}

TEST_F(Lectura, UnArchivoDanadoDejaLaTablaQueHabia) {
  lectura.Preparar("RTU");
  lectura.Guardar(carpeta / "buena.ucg");
  const std::string entera = prueba::LeerTodo(carpeta / "buena.ucg");
  const struct {
    const char* nombre;
    std::string contenido;
  } casos[] = {{"cortada.ucg", entera.substr(0, entera.size() / 2)}, {"vacia.ucg", ""}, {"otra.ucg", "{\"json\": 1}"}};
  for (const auto& caso : casos) {
    prueba::EscribirTodo(carpeta / caso.nombre, caso.contenido);
    EXPECT_EQ(Fallar((carpeta / caso.nombre).string()), error::kArchivo) << caso.nombre;
    EXPECT_THAT(Canales(), ElementsAre("1", "15"));
  }
  EXPECT_EQ(Fallar((carpeta / "no está.ucg").string()), error::kArchivo);
  EXPECT_EQ(Fallar("sin tabla.icf"), error::kArchivo);
  EXPECT_THAT(Canales(), ElementsAre("1", "15"));
}

TEST_F(Lectura, LoGuardadoSeAbreIgual) {
  lectura.Preparar("RTU");
  prueba::EscribirTodo(carpeta / "e.ucg", "lo de antes");
  lectura.Guardar(carpeta / "e.ucg");
  lectura.Preparar((carpeta / "e.ucg").string());
  EXPECT_EQ(lectura.RecConfig()->FieldCount(), TablaDeCanales({})->FieldCount());
  EXPECT_THAT(Canales(), ElementsAre("1", "15"));
  EXPECT_EQ(carpeta.Cuantos(), 2U) << "no leftovers beside the backups";
}

TEST_F(Lectura, UnGuardadoQueFallaDejaElArchivoAnterior) {
  lectura.Preparar("RTU");
  std::filesystem::create_directories(carpeta / "ocupada.ucg" / "adentro");
  const std::filesystem::path perdida = carpeta / "no existe" / "x.ucg";
  for (const std::filesystem::path& ruta : {carpeta / "ocupada.ucg", perdida}) {
    const auto falla = FallaDe([&] { lectura.Guardar(ruta); });
    ASSERT_TRUE(falla) << ruta;
    EXPECT_EQ(falla->Numero(), error::kArchivo);
    EXPECT_EQ(falla->Descripcion(), "No se puede escribir el archivo " + ruta.string());
  }
  EXPECT_TRUE(std::filesystem::exists(carpeta / "ocupada.ucg" / "adentro"));
  prueba::EscribirTodo(carpeta / "e.ucg", "anterior");
  {
    const DispositivoLleno lleno(1000);
    EXPECT_TRUE(FallaDe([&] { lectura.Guardar(carpeta / "e.ucg"); }));
  }
  EXPECT_EQ(prueba::LeerTodo(carpeta / "e.ucg"), "anterior");
  EXPECT_EQ(carpeta.Cuantos(), 3U) << "no leftovers beside the backups";
}

TEST_F(Lectura, CadaLecturaCompletaDeLaUTRSeRespalda) {
  const auto respaldos = [&] {
    const std::filesystem::directory_iterator todos(lectura.CarpetaDeRespaldos());
    return std::count_if(begin(todos), end(todos), [](const auto& uno) { return uno.path().extension() == ".ucg"; });
  };
  EXPECT_FALSE(lectura.RespaldarParaEscribir().Guardado()) << "nothing was read yet";
  lectura.Preparar("RTU");
  ASSERT_TRUE(lectura.RespaldoDeLectura());
  EXPECT_TRUE(lectura.RespaldoDeLectura()->Guardado());
  EXPECT_EQ(lectura.RespaldarParaEscribir().archivo, lectura.RespaldoDeLectura()->archivo);
  lectura.Guardar(carpeta / "e.ucg");
  lectura.Preparar((carpeta / "e.ucg").string());
  EXPECT_EQ(respaldos(), 1) << "a file isn't the unit";
  comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({}));
  lectura.Preparar("RTU");
  EXPECT_FALSE(lectura.RespaldoDeLectura());
  EXPECT_EQ(respaldos(), 1);
}

TEST_F(Lectura, LoLeidoAparteSeRespaldaSinTocarLaTabla) {
  EXPECT_FALSE(lectura.RespaldoDelEquipo());
  lectura.Preparar("RTU");
  const auto primero = lectura.RespaldoDelEquipo();
  comunicador.llamadas.clear();
  comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({{{"Canal", "9"}}}));
  EXPECT_EQ(lectura.LeerDeLaUTR()->Texto("Canal"), "9");
  EXPECT_THAT(comunicador.llamadas, ElementsAre("ConfiguracionAlmacenada(si)"));
  EXPECT_THAT(Canales(), ElementsAre("1", "15"));
  const auto segundo = lectura.RespaldoDelEquipo();
  ASSERT_TRUE(primero && segundo);
  EXPECT_NE(segundo->archivo, primero->archivo);
  comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({}));
  lectura.LeerDeLaUTR();
  EXPECT_EQ(lectura.RespaldoDelEquipo()->archivo, segundo->archivo) << "what the unit gave last";
  EXPECT_EQ(lectura.RespaldarRevisada(*TablaDeCanales({})).archivo.filename(), "2026-03-15 10.00.00-003 asistente.ucg");
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{70}}, Propiedad{std::int64_t{0}});
  EXPECT_FALSE(lectura.RespaldoDelEquipo()) << "another unit";
  EXPECT_FALSE(lectura.EsDelEquipoActual());
}

TEST_F(Lectura, UnRespaldoQueFallaNoHaceFallarLaLectura) {
  prueba::EscribirTodo(carpeta / "Respaldos", "un archivo");
  EXPECT_TRUE(lectura.Preparar("RTU"));
  EXPECT_TRUE(lectura.LeidaDeLaUTR());
  ASSERT_TRUE(lectura.RespaldoDeLectura());
  EXPECT_NE(lectura.RespaldoDeLectura()->falla, "");
}

TEST_F(Lectura, LaTablaQueYaNoEsLaDeLaUTRQuedaParaMirar) {
  lectura.Preparar("RTU");
  lectura.OlvidarOrigen();
  EXPECT_FALSE(lectura.LeidaDeLaUTR());
  EXPECT_TRUE(lectura.TieneFilas());
  lectura.Preparar("RTU");
  EXPECT_TRUE(lectura.LeidaDeLaUTR());
}

TEST_F(Lectura, UnArchivoSeMiraSinTocarLaTabla) {
  lectura.Preparar("RTU");
  comunicador.Devuelve("LeerArchivoConfiguracion", TablaDeCanales({{{"Canal", "9"}}}));
  EXPECT_EQ(lectura.LeerArchivo("x.icf")->Texto("Canal"), "9");
  EXPECT_TRUE(FallaDe([&] { lectura.LeerArchivo("no está.ucg"); }));
  EXPECT_THAT(Canales(), ElementsAre("1", "15"));
  EXPECT_TRUE(lectura.LeidaDeLaUTR());
}

TEST_F(Lectura, LiberarCierraLaTabla) {
  lectura.Liberar();
  lectura.Preparar("RTU");
  const TablaPtr tabla = lectura.RecConfig();
  lectura.Liberar();
  EXPECT_FALSE(tabla->Abierta());
  EXPECT_FALSE(lectura.TieneFilas());
}

}  // namespace
}  // namespace utr
