#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <sstream>

#include "driver/Pagina.h"
#include "driver/Textos.h"
#include "driver/link/BancoProceso.h"

namespace utr::prueba {
namespace {

// What the driver of the program gives of it, as the witnesses print it.
std::string Trama(Comunicador& driver) {
  std::string texto;
  for (const TablaPtr tabla = driver.LeerInstantaneos(); !tabla->Eof(); tabla->MoveNext()) {
    texto += " " + std::string(tabla->Texto(0));
  }
  return texto;
}

std::string TresPaginas(Comunicador& driver, std::int16_t primera) {
  std::string texto = " ";
  char par[3];
  for (std::int16_t pagina = primera; pagina < primera + 3; ++pagina) {
    auto bytes = LeerTextoPagina(driver.LeerPaginaFlash(0, pagina)).value();
    bytes.resize(paginas::kBytesPagina);  // behind them the text of a page has what closes it
    for (const std::uint8_t byte : bytes) {
      std::snprintf(par, sizeof par, "%02x", byte);
      texto += par;
    }
  }
  return texto;
}

// What the witnesses print, "mbpoll identidad" and the rest of the line.
std::map<std::string, std::string> Declaraciones(const std::string& orden) {
  std::map<std::string, std::string> todas;
  std::FILE* salida = ::popen(orden.c_str(), "r");
  std::string texto;
  char parte[4096];
  for (std::size_t leidos = 1; leidos > 0;) texto.append(parte, leidos = std::fread(parte, 1, sizeof parte, salida));
  EXPECT_EQ(::pclose(salida), 0) << "python3-pymodbus and mbpoll are needed: scripts/preparar test";
  std::istringstream lineas(texto);
  for (std::string linea; std::getline(lineas, linea);) {
    const std::size_t corte = linea.find(' ', linea.find(' ') + 1);
    todas[linea.substr(0, corte)] = linea.substr(corte);
  }
  return todas;
}

// The program's own driver holds the serial line all along, and finds what the witnesses did.
TEST(Testigos, OtrosClientesLeenLaMismaEstacion) {
  BancoProceso banco(false);
  Comunicador& driver = banco.Driver();
  banco.Conectar();
  const std::string paginas = TresPaginas(driver, 5);
  const std::string trama = Trama(driver);
  const std::string estado = " " + std::to_string(driver.LeerEstado());
  const std::string reloj = driver.LeerFechaHora();
  auto dicho =
      Declaraciones("/usr/bin/python3 " TESTIGOS " " + banco.LineaLibre() + " " + std::to_string(banco.PuertoTcp()));
  EXPECT_TRUE(driver.EstadoPuerto());
  EXPECT_EQ(reloj, "15/03/2026 10:00:00");
  for (const std::string testigo : {"mbpoll", "pymodbus"}) {
    EXPECT_EQ(dicho[testigo + " identidad"], " 120 1 1");
    EXPECT_EQ(dicho[testigo + " estado"], estado) << testigo;
    EXPECT_EQ(dicho[testigo + " reloj"], " 2026 3 15 10 0 0") << testigo;
  }
  EXPECT_EQ(dicho["mbpoll trama"], trama);
  // By the time of the second witness the first one has switched output 1 on.
  ASSERT_TRUE(trama.ends_with(" 0 0"));
  EXPECT_EQ(dicho["pymodbus trama"], trama.substr(0, trama.size() - 4) + " 1 0");
  EXPECT_EQ(dicho["mbpoll salidas"], " 1 0");
  EXPECT_EQ(dicho["pymodbus salidas"], " 1 1");
  EXPECT_TRUE(Trama(driver).ends_with(" 1 1"));
  EXPECT_EQ(driver.LeerFechaHora(), reloj);
  EXPECT_EQ(dicho["mbpoll lejos"], " Illegal data address");
  EXPECT_EQ(dicho["mbpoll salida_lejos"], " Illegal data address");
  EXPECT_EQ(dicho["pymodbus lejos"], " 2");
  EXPECT_EQ(dicho["pymodbus funcion"], " 1");
  EXPECT_EQ(dicho["pymodbus paginas"], paginas);
  EXPECT_EQ(dicho["pymodbus eco"], " 4321");
}

}  // namespace
}  // namespace utr::prueba
