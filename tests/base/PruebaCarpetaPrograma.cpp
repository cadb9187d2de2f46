#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>

#include "base/CarpetaPrograma.h"
#include "support/Carpeta.h"

namespace fs = std::filesystem;

namespace {

// A folder with a program in it, and the user's folders, which the environment names.
class CarpetaPrograma : public testing::Test {
 protected:
  CarpetaPrograma() : antes_(Valor("XDG_DATA_HOME")), casa_antes_(Valor("HOME")) {
    fs::create_directories(programa_);
    Fijar("XDG_DATA_HOME", datos_.string());
    Fijar("HOME", (carpeta_.Ruta() / "casa").string());
  }
  ~CarpetaPrograma() override {
    Fijar("XDG_DATA_HOME", antes_);
    Fijar("HOME", casa_antes_);
  }

  static std::string Valor(const char* variable) {
    const char* valor = std::getenv(variable);
    return valor == nullptr ? "" : valor;
  }
  static void Fijar(const char* variable, const std::string& valor) {
    valor.empty() ? unsetenv(variable) : setenv(variable, valor.c_str(), 1);
  }
  static void Escribir(const fs::path& ruta) { std::ofstream(ruta) << "x"; }

  utr::prueba::Carpeta carpeta_;
  fs::path programa_ = carpeta_.Ruta() / "programa";
  fs::path datos_ = carpeta_.Ruta() / "datos";
  fs::path propia_ = datos_ / "AdminUTR";

 private:
  std::string antes_, casa_antes_;
};

TEST_F(CarpetaPrograma, UnaCopiaSeQuedaEnSiMisma) {
  Escribir(programa_ / "comandosAT.dat");
  EXPECT_EQ(utr::CarpetaDeDatos(programa_), programa_);
  EXPECT_FALSE(fs::exists(datos_));
  EXPECT_EQ(utr::ArchivoDelPrograma(datos_, "comandosAT.dat", programa_), datos_ / "comandosAT.dat");
  Escribir(programa_ / "a.ipf");
  EXPECT_EQ(utr::CarpetaCon(datos_, ".ipf", programa_), datos_);
}

TEST_F(CarpetaPrograma, LoInstaladoEscribeDondeElUsuario) {
  Escribir(programa_ / "instalado");
  EXPECT_EQ(utr::CarpetaDeDatos(programa_), propia_);
  EXPECT_TRUE(fs::is_directory(propia_));

  const struct {
    const char* datos;
    const char* casa;
    fs::path esperada;
  } casos[] = {
      {"", "/nadie/aqui", "/nadie/aqui/.local/share/AdminUTR"},
      {"relativa", "/nadie/aqui", "/nadie/aqui/.local/share/AdminUTR"},
      {"/proc/no", "", "/proc/no/AdminUTR"},  // can't be made
      {"", "", programa_},
      {"", "relativa", programa_},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(std::string(caso.datos) + "|" + caso.casa);
    Fijar("XDG_DATA_HOME", caso.datos);
    Fijar("HOME", caso.casa);
    EXPECT_EQ(utr::CarpetaDeDatos(programa_), caso.esperada);
  }
}

TEST_F(CarpetaPrograma, SoloLoInstaladoTieneDatosOcultos) {
  EXPECT_FALSE(utr::EsDeDatosOcultos(propia_, programa_)) << "a copied folder hides nothing";
  Escribir(programa_ / "instalado");
  const std::pair<fs::path, bool> casos[] = {
      {propia_, true}, {propia_ / "", true},          {propia_ / "Descargas", true},
      {datos_, false}, {datos_ / "AdminUTR2", false}, {programa_, false},
      {"", false}};
  for (const auto& [carpeta, oculta] : casos) EXPECT_EQ(utr::EsDeDatosOcultos(carpeta, programa_), oculta) << carpeta;
}

TEST_F(CarpetaPrograma, LoDelUsuarioVaAntesQueLoEntregado) {
  Escribir(programa_ / "instalado");
  const fs::path carpeta = utr::CarpetaDeDatos(programa_);
  const auto archivo = [&] { return utr::ArchivoDelPrograma(carpeta, "UTRSimulada.toml", programa_); };
  EXPECT_EQ(archivo(), carpeta / "UTRSimulada.toml");
  Escribir(programa_ / "UTRSimulada.toml");
  EXPECT_EQ(archivo(), programa_ / "UTRSimulada.toml");
  Escribir(carpeta / "UTRSimulada.toml");
  EXPECT_EQ(archivo(), carpeta / "UTRSimulada.toml");

  const auto con = [&] { return utr::CarpetaCon(carpeta, ".ipf", programa_); };
  EXPECT_EQ(con(), carpeta);
  Escribir(programa_ / "Ejemplo.ipf");
  EXPECT_EQ(con(), programa_);
  Escribir(carpeta / "propio.ipf");
  EXPECT_EQ(con(), carpeta);
}

}  // namespace
