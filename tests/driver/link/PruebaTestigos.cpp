#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <sstream>

#include "driver/link/protocol/Mapa.h"
#include "driver/link/protocol/Pdu.h"
#include "driver/link/transport/Linea.h"
#include "support/Carpeta.h"
#include "support/ProcesoEstacion.h"

namespace utr::prueba {
namespace {

using namespace protocolo;

// The driver's own line to the station, with one request at a time.
class Propia {
 public:
  explicit Propia(const std::string& dispositivo) : linea_(enlace::TendidoDelEquipo().AbrirSerie(dispositivo, 9600)) {}

  Bytes Pedir(VistaBytes pdu) {
    linea_->Enviar(TramaRtu(120, pdu), 1000);
    ReceptorRtu receptor(Sentido::kRespuesta);
    for (;;) {
      Bytes bytes;
      linea_->Recibir(bytes, 1000);
      receptor.Recibir(bytes);
      if (auto trama = receptor.Proxima()) return std::move(trama->pdu);
    }
  }
  std::string Registros(std::uint16_t desde, std::uint16_t cuantos) {
    std::string texto;
    const auto leidos = LeerRespuestaDeRegistros(Pedir(PedidoDeTramo(4, {desde, cuantos})), cuantos);
    for (const auto registro : leidos.value()) {
      texto += " " + std::to_string(registro);
    }
    return texto;
  }
  std::string Paginas(std::uint16_t primera) {
    const PedidoDeArchivo partes[] = {{archivo::kFlash, primera, 96}};
    const auto leidas = LeerRespuestaDeArchivos(Pedir(PedidoDeArchivos(partes)), partes);
    std::string texto = " ";
    char par[3];
    for (const std::uint8_t byte : leidas.value().at(0)) {
      std::snprintf(par, sizeof par, "%02x", byte);
      texto += par;
    }
    return texto;
  }

 private:
  std::unique_ptr<enlace::Linea> linea_;
};

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

TEST(Testigos, OtrosClientesLeenLaMismaEstacion) {
  Carpeta carpeta;
  ProcesoEstacion estacion(carpeta.Ruta().string(), {"--tcp", "0", "--linea", "COM4", "--linea", "COM6"});
  estacion.Hora({2026, 3, 15, 10, 0, 0});
  Propia propia(estacion.Linea("COM4"));  // held all along, as the program holds it
  const std::string paginas = propia.Paginas(5);
  const std::string trama = propia.Registros(registro::kTrama, 38);
  auto dicho = Declaraciones("/usr/bin/python3 " TESTIGOS " " + estacion.Linea("COM6") + " " +
                             std::to_string(estacion.Puerto()));
  for (const std::string testigo : {"mbpoll", "pymodbus"}) {
    EXPECT_EQ(dicho[testigo + " identidad"], " 120 1 1");
    EXPECT_EQ(dicho[testigo + " estado"], propia.Registros(registro::kEstado, 1)) << testigo;
    EXPECT_EQ(dicho[testigo + " reloj"], " 2026 3 15 10 0 0") << testigo;
  }
  EXPECT_EQ(dicho["mbpoll trama"], trama);
  EXPECT_EQ(dicho["mbpoll salidas"], " 1 0");
  EXPECT_EQ(dicho["pymodbus salidas"], " 1 1");
  EXPECT_EQ(propia.Registros(registro::kTrama + 36, 2), " 1 1");
  EXPECT_EQ(dicho["mbpoll lejos"], " Illegal data address");
  EXPECT_EQ(dicho["mbpoll salida_lejos"], " Illegal data address");
  EXPECT_EQ(dicho["pymodbus lejos"], " 2");
  EXPECT_EQ(dicho["pymodbus funcion"], " 1");
  EXPECT_EQ(dicho["pymodbus paginas"], paginas);
  EXPECT_EQ(dicho["pymodbus eco"], " 4321");
}

}  // namespace
}  // namespace utr::prueba
