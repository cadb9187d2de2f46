#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>

#include "base/Error.h"
#include "driver/link/protocol/Imagenes.h"
#include "driver/link/transport/Descriptor.h"
#include "driver/link/transport/Linea.h"
#include "driver/simulated/server/Servidor.h"
#include "support/Carpeta.h"
#include "support/NumeroDeError.h"
#include "support/ProcesoEstacion.h"
#include "support/RelojFalso.h"

namespace utr::prueba {
namespace {

using namespace protocolo;
using enlace::TendidoDelEquipo;

const Bytes kIdentidad = PedidoDeTramo(4, {0, 3});
const Bytes kUnidad = RespuestaDeRegistros(std::vector<std::uint16_t>{120, 1, 1});

// Reads until so many bytes came or the line is gone.
Bytes Oir(enlace::Linea& linea, std::size_t cuantos) {
  Bytes bytes;
  try {
    while (bytes.size() < cuantos) linea.Recibir(bytes, 1000);
  } catch (const Error&) {
  }
  return bytes;
}

std::unique_ptr<enlace::Linea> Conectada(int puerto) {
  auto linea = TendidoDelEquipo().AbrirTcp("127.0.0.1", puerto);
  while (!linea->Lista(1000)) {
  }
  return linea;
}

Bytes PorTcp(enlace::Linea& linea, VistaBytes pdu, std::size_t largo) {
  linea.Enviar(TramaTcp(1, 120, pdu), 1000);
  Bytes bytes = Oir(linea, kCabeceraTcp + largo);
  if (!bytes.empty()) bytes.erase(bytes.begin(), bytes.begin() + kCabeceraTcp);
  return bytes;
}

Bytes PorSerie(enlace::Linea& linea, VistaBytes pdu, std::size_t largo) {
  linea.Enviar(TramaRtu(120, pdu), 1000);
  return Oir(linea, largo + 3);
}

TEST(ProcesoDeLaEstacion, AtiendeRedYLineaYGuardaLoQueSeLeHace) {
  Carpeta carpeta;
  const Orden orden{120, 7, 1, Codigo::kReloj, {2026, 3, 1, 2, 3, 4}};
  const Bytes pdu = PedidoDeEscritura(0, BloqueDe(orden));
  const Bytes resultado = RespuestaDeRegistros(std::vector<std::uint16_t>{0, 7, 1, 2, 0});
  {
    ProcesoEstacion estacion(carpeta.Ruta().string(), {"--tcp", "0", "--linea", "COM4"});
    EXPECT_EQ(estacion.Hora({2026, 3, 15, 10, 0, 0}), "bien");
    const auto red = Conectada(estacion.Puerto());
    EXPECT_EQ(PorTcp(*red, kIdentidad, kUnidad.size()), kUnidad);
    const auto serie = TendidoDelEquipo().AbrirSerie(estacion.Linea("COM4"), 9600);
    EXPECT_EQ(PorSerie(*serie, kIdentidad, kUnidad.size()), TramaRtu(120, kUnidad));
    EXPECT_EQ(PorSerie(*serie, pdu, 5), TramaRtu(120, AcuseDe(pdu)));
    EXPECT_EQ(estacion.Avanzar(60), "bien");
    EXPECT_EQ(PorTcp(*red, PedidoDeTramo(4, {5, 6}), 14),
              RespuestaDeRegistros(std::vector<std::uint16_t>{2026, 3, 1, 2, 4, 4}));
    EXPECT_EQ(estacion.Escenario("[equipo]\nidentificador = 7\n"), "bien");
    red->Enviar(TramaTcp(1, 120, kIdentidad), 1000);
    const Bytes suya = TramaTcp(2, 7, RespuestaDeRegistros(std::vector<std::uint16_t>{7, 1, 1}));
    red->Enviar(TramaTcp(2, 7, kIdentidad), 1000);
    EXPECT_EQ(Oir(*red, suya.size()), suya) << "its former identifier is nobody's now";
    EXPECT_EQ(estacion.Terminar(SIGTERM), 0);
    EXPECT_EQ(Oir(*serie, 1), Bytes{}) << "the line goes with it";
  }
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(carpeta / "COM4")));
  ProcesoEstacion otra(carpeta.Ruta().string(), {"--tcp", "0"});
  const auto red = Conectada(otra.Puerto());
  const Bytes todos = PedidoDeTramo(4, {registro::kOrdenes, 5});
  red->Enviar(TramaTcp(1, 7, todos), 1000);
  EXPECT_EQ(Oir(*red, kCabeceraTcp + resultado.size()), TramaTcp(1, 7, resultado));
}

// A pseudo-terminal of the test stands for the device: the station opens its other end as it opens any serial port.
TEST(ProcesoDeLaEstacion, AtiendeEnUnPuertoSerieDeLaMaquina) {
  Carpeta carpeta;
  const enlace::Descriptor otro(::posix_openpt(O_RDWR | O_NOCTTY));
  ASSERT_TRUE(::grantpt(otro.Numero()) == 0 && ::unlockpt(otro.Numero()) == 0);
  char dispositivo[64];
  ASSERT_EQ(::ptsname_r(otro.Numero(), dispositivo, sizeof dispositivo), 0);
  ProcesoEstacion estacion(carpeta.Ruta().string(), {"--serie", dispositivo});
  const Bytes pedido = TramaRtu(120, kIdentidad);
  ASSERT_EQ(::write(otro.Numero(), pedido.data(), pedido.size()), static_cast<ssize_t>(pedido.size()));
  Bytes dicho;
  for (std::uint8_t byte = 0; dicho.size() < kUnidad.size() + 3 && ::read(otro.Numero(), &byte, 1) == 1;) {
    dicho.push_back(byte);
  }
  EXPECT_EQ(dicho, TramaRtu(120, kUnidad));
  EXPECT_EQ(estacion.Terminar(SIGTERM), 0);
}

TEST(ProcesoDeLaEstacion, LoQueNoPuedeSerSeDiceYNoDejaNada) {
  Carpeta carpeta;
  EscribirTodo(carpeta / "COM6", "ajeno");
  ProcesoEstacion estacion(carpeta.Ruta().string(), {"--tcp", "0"});
  const auto motivo = [](const std::string& donde, const std::vector<std::string>& escuchas) {
    try {
      const ProcesoEstacion otra(donde, escuchas);
      return std::string("arranca");
    } catch (const std::runtime_error& falla) {
      return std::string(falla.what());
    }
  };
  Carpeta segunda;
  EscribirTodo(segunda / "COM6", "ajeno");
  EXPECT_NE(motivo(carpeta.Ruta().string(), {"--tcp", "0"}).find("Otra estación usa la carpeta"), std::string::npos);
  EXPECT_NE(motivo(segunda.Ruta().string(), {"--tcp", std::to_string(estacion.Puerto())}).find("otro programa"),
            std::string::npos);
  EXPECT_NE(motivo(segunda.Ruta().string(), {"--linea", "COM6"}).find("otra cosa con ese nombre"), std::string::npos);
  EXPECT_EQ(LeerTodo(segunda / "COM6"), "ajeno");
  EXPECT_NE(motivo(segunda.Ruta().string(), {"--serie", "/dev/null"}).find("/dev/null"), std::string::npos);
  EXPECT_EQ(estacion.Mandar("saltar"), "mal no conoce la orden \"saltar\"");
  EXPECT_EQ(estacion.Mandar("avanzar mucho").substr(0, 4), "mal ");
  EXPECT_EQ(estacion.Escenario("[equipo]\nmudo = true\n").substr(0, 4), "mal ");
  EXPECT_EQ(estacion.Avanzar(1), "bien");
}

// Its lines must not be offered any more, and the terminals that they led to are given to others.
TEST(ProcesoDeLaEstacion, DeUnaEstacionMuertaSeSabeQueNoEsta) {
  Carpeta carpeta;
  EXPECT_FALSE(EstacionDetenida(carpeta.Ruta())) << "there never was one";
  for (const int senial : {SIGKILL, SIGTERM}) {
    ProcesoEstacion estacion(carpeta.Ruta().string(), {"--linea", "COM4"});
    EXPECT_FALSE(EstacionDetenida(carpeta.Ruta()));
    EXPECT_THROW(CandadoDeCarpeta(carpeta.Ruta()), Error) << "looking at it hasn't taken it away";
    estacion.Terminar(senial);
    EXPECT_TRUE(EstacionDetenida(carpeta.Ruta()));
    EXPECT_EQ(std::filesystem::is_symlink(carpeta / "COM4"), senial == SIGKILL);
  }
  std::filesystem::create_symlink("/dev/pts/0", carpeta / "COM4");
  const ProcesoEstacion otra(carpeta.Ruta().string(), {"--linea", "COM6"});
  EXPECT_FALSE(std::filesystem::is_symlink(carpeta / "COM4"));
  EXPECT_TRUE(std::filesystem::is_symlink(carpeta / "COM6"));
}

TEST(ProcesoDeLaEstacion, LoQueLeFaltaYLoQuePierdeSeAdvierteUnaVez) {
  Carpeta carpeta;
  std::vector<std::string> advertido;
  const simulada::Voces voces{[](std::string_view) {}, [&](std::string_view linea) { advertido.emplace_back(linea); }};
  simulada::Opciones opciones;
  opciones.carpeta = carpeta / "suya";
  { const simulada::Servidor servidor(opciones, carpeta / "no_hay.toml", voces); }
  ASSERT_EQ(advertido.size(), 1U);
  EXPECT_NE(advertido[0].find("Sin escenario para editar"), std::string::npos) << advertido[0];
  advertido.clear();

  RelojFalso reloj;
  simulada::EstacionViva viva({}, {"x", "y"}, reloj, {}, [](const FechaHora&, std::string_view) {});
  simulada::Despachador unidad(viva);
  const auto tender = [&] {
    enlace::Descriptor otro(::posix_openpt(O_RDWR | O_NOCTTY));
    char dispositivo[64];
    EXPECT_TRUE(::grantpt(otro.Numero()) == 0 && ::unlockpt(otro.Numero()) == 0 &&
                ::ptsname_r(otro.Numero(), dispositivo, sizeof dispositivo) == 0);
    std::filesystem::remove(carpeta / "serie");
    std::filesystem::create_symlink(dispositivo, carpeta / "serie");
    return otro;
  };
  enlace::Descriptor otro = tender();
  const auto escucha = simulada::EscucharSerie((carpeta / "serie").string(), {viva, unidad, voces});
  escucha->Atender(0);
  EXPECT_TRUE(advertido.empty());
  otro.Cerrar();
  for (const std::int64_t ahora : {10, 20, 3000, 6000}) escucha->Atender(ahora);
  ASSERT_EQ(advertido.size(), 1U);
  EXPECT_NE(advertido[0].find("Se lo sigue intentando"), std::string::npos) << advertido[0];
  otro = tender();
  escucha->Atender(9000);
  ASSERT_EQ(advertido.size(), 2U);
  EXPECT_NE(advertido[1].find("anda otra vez"), std::string::npos) << advertido[1];
}

// An address that can't be read must not become all of the machine's.
TEST(ProcesoDeLaEstacion, SinUnaDireccionQueSeEntiendaNoSeEscucha) {
  RelojFalso reloj;
  simulada::EstacionViva viva({}, {"x", "y"}, reloj, {}, [](const FechaHora&, std::string_view) {});
  simulada::Despachador unidad(viva);
  const simulada::Voces voces{[](std::string_view) {}, [](std::string_view) {}};
  for (const char* direccion : {"127.000.000.001", "localhost", ""}) {
    EXPECT_EQ(NumeroDeError([&] {
                simulada::EscucharRed({direccion, 0}, {viva, unidad, voces});
              }),
              error::kLlamada)
        << direccion;
  }
}

TEST(ProcesoDeLaEstacion, LasConexionesEstanContadas) {
  Carpeta carpeta;
  ProcesoEstacion estacion(carpeta.Ruta().string(), {"--tcp", "0"});
  std::vector<std::unique_ptr<enlace::Linea>> conexiones;
  for (int i = 0; i < 8; ++i) {
    conexiones.push_back(Conectada(estacion.Puerto()));
    EXPECT_EQ(PorTcp(*conexiones.back(), kIdentidad, kUnidad.size()), kUnidad);
  }
  const auto de_mas = Conectada(estacion.Puerto());
  EXPECT_EQ(Oir(*de_mas, 1), Bytes{}) << "it is closed at once";
  const Bytes sin_sentido{0, 1, 0, 9, 0, 6, 120, 4, 0, 0, 0, 3};
  conexiones[0]->Enviar(sin_sentido, 1000);
  EXPECT_EQ(Oir(*conexiones[0], 1), Bytes{});
  EXPECT_EQ(PorTcp(*conexiones[1], kIdentidad, kUnidad.size()), kUnidad);
  EXPECT_EQ(estacion.Avanzar(301), "bien");
  EXPECT_EQ(Oir(*conexiones[1], 1), Bytes{}) << "it was idle for five minutes";
  EXPECT_EQ(PorTcp(*Conectada(estacion.Puerto()), kIdentidad, kUnidad.size()), kUnidad);
}

// A program that dies leaves its line locked; the station lays it anew.
TEST(ProcesoDeLaEstacion, UnaLineaQueSeCierraVuelveATenderse) {
  Carpeta carpeta;
  ProcesoEstacion estacion(carpeta.Ruta().string(), {"--linea", "COM4", "--modem", "COM5"});
  const std::string antes = std::filesystem::read_symlink(estacion.Linea("COM4"));
  {
    const auto serie = TendidoDelEquipo().AbrirSerie(estacion.Linea("COM4"), 9600);
    EXPECT_FALSE(serie->Rts(true)) << "a pseudo-terminal has no such line";
    EXPECT_EQ(PorSerie(*serie, kIdentidad, kUnidad.size()), TramaRtu(120, kUnidad));
    EXPECT_EQ(NumeroDeError([&] { TendidoDelEquipo().AbrirSerie(estacion.Linea("COM4"), 9600); }), error::kPuertoEnUso);
  }
  while (std::filesystem::read_symlink(estacion.Linea("COM4")) == antes) EXPECT_EQ(estacion.Avanzar(0.5), "bien");
  const auto serie = TendidoDelEquipo().AbrirSerie(estacion.Linea("COM4"), 9600);
  EXPECT_EQ(PorSerie(*serie, kIdentidad, kUnidad.size()), TramaRtu(120, kUnidad));
  EXPECT_EQ(estacion.Escenario("[linea]\ncorta_despues = 1\n"), "bien");
  const std::string cortada = std::filesystem::read_symlink(estacion.Linea("COM4"));
  EXPECT_EQ(PorSerie(*serie, kIdentidad, kUnidad.size()), Bytes{}) << "the wire is cut";
  EXPECT_NE(std::filesystem::read_symlink(estacion.Linea("COM4")), cortada);
  const auto modem = TendidoDelEquipo().AbrirSerie(estacion.Linea("COM5"), 9600);
  const std::string llamada = "AT\r";
  modem->Enviar({reinterpret_cast<const std::uint8_t*>(llamada.data()), llamada.size()}, 1000);
  const Bytes dicho = Oir(*modem, 9);
  EXPECT_EQ(std::string(dicho.begin(), dicho.end()), "AT\r\r\nOK\r\n");
}

TEST(OpcionesDeLaEstacion, SeLeenOSeRechazan) {
  using Argumentos = std::vector<std::string_view>;
  const auto leer = [](const Argumentos& argumentos) { return simulada::LeerOpciones(argumentos); };
  const auto usuales = leer({"--carpeta", "/x"});
  EXPECT_EQ(usuales.redes.at(0).puerto, 1502);
  EXPECT_EQ(usuales.redes.at(0).direccion, "127.0.0.1");
  EXPECT_EQ(usuales.lineas, std::vector<std::string>{"COM4"});
  EXPECT_EQ(usuales.modems, std::vector<std::string>{"COM5"});
  const auto propias = leer({"--carpeta", "/x", "--tcp", "0.0.0.0:502", "--linea", "COM10"});
  EXPECT_EQ(propias.redes.at(0).direccion, "0.0.0.0");
  EXPECT_TRUE(propias.modems.empty());
  for (const Argumentos& malas : {Argumentos{"--tcp"},
                                  {"--tcp", "70000"},
                                  {"--tcp", "1.2.3:1"},
                                  {"--tcp", "127.000.000.001:1502"},
                                  {"--tcp", "010.0.0.1:1502"},
                                  {"--tcp", "502x"},
                                  {"--linea", "COM0"},
                                  {"--linea", "COM11"},
                                  {"--linea", "COM04"},
                                  {"--linea", "/dev/x"},
                                  {"--linea", "COM4", "--modem", "COM4"},
                                  {"--carpeta", ""},
                                  {"-x"},
                                  {"algo"}}) {
    EXPECT_EQ(NumeroDeError([&] { leer(malas); }), error::kLlamada) << testing::PrintToString(malas);
  }
}

}  // namespace
}  // namespace utr::prueba
