#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/transport/Descriptor.h"
#include "driver/link/transport/Linea.h"
#include "support/Carpeta.h"
#include "support/NumeroDeError.h"

namespace utr::enlace {

using namespace prueba;

namespace {

constexpr int kHolgura = 5000;  // milliseconds within which the machine passes bytes on, however busy it is

using Bytes = std::vector<std::uint8_t>;

// A pair of terminals: what is sent to the device comes out here.
struct Terminal {
  Terminal() : maestro(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    EXPECT_EQ(::grantpt(maestro.Numero()), 0);
    EXPECT_EQ(::unlockpt(maestro.Numero()), 0);
    dispositivo = ::ptsname(maestro.Numero());
  }
  Descriptor maestro;
  std::string dispositivo;
};

// A socket that listens on this machine, on a port of its own.
struct Oyente {
  Oyente() : descriptor(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in aqui{};
    aqui.sin_family = AF_INET;
    aqui.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t largo = sizeof aqui;
    EXPECT_EQ(::bind(descriptor.Numero(), reinterpret_cast<sockaddr*>(&aqui), largo), 0);
    EXPECT_EQ(::listen(descriptor.Numero(), 4), 0);
    EXPECT_EQ(::getsockname(descriptor.Numero(), reinterpret_cast<sockaddr*>(&aqui), &largo), 0);
    puerto = ntohs(aqui.sin_port);
  }
  Descriptor Atender() const { return Descriptor(::accept(descriptor.Numero(), nullptr, nullptr)); }
  Descriptor descriptor;
  int puerto = 0;
};

Bytes Recibido(Linea& linea, std::size_t cuantos) {
  Bytes bytes;
  while (bytes.size() < cuantos && linea.Recibir(bytes, kHolgura) > 0) {
  }
  return bytes;
}

// All values a byte can have: a terminal that isn't raw changes or swallows some.
Bytes TodosLosBytes() {
  Bytes bytes(256);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i);
  return bytes;
}

}  // namespace

TEST(LineaSerie, PasaTodosLosBytesEnLosDosSentidos) {
  const Terminal terminal;
  TendidoDelEquipo tendido;
  const auto linea = tendido.AbrirSerie(terminal.dispositivo, 9600);
  const Bytes todos = TodosLosBytes();
  ASSERT_EQ(linea->Enviar(todos, kHolgura), todos.size());
  Bytes salieron;
  while (salieron.size() < todos.size() && RecibirPor(terminal.maestro, "", salieron, kHolgura) > 0) {
  }
  EXPECT_EQ(salieron, todos);
  ASSERT_EQ(EnviarPor(terminal.maestro, "", todos, kHolgura), todos.size());
  EXPECT_EQ(Recibido(*linea, todos.size()), todos);
  Bytes nada;
  EXPECT_EQ(linea->Recibir(nada, 0), 0U);
  EXPECT_TRUE(linea->Lista(0));
  EXPECT_FALSE(linea->Rts(true)) << "a pseudo-terminal has no such line";
}

TEST(LineaSerie, TomaLaVelocidadPedida) {
  const std::pair<int, speed_t> casos[] = {{300, B300}, {1200, B1200}, {9600, B9600}, {19200, B19200}};
  const Terminal terminal;
  TendidoDelEquipo tendido;
  for (const auto& [velocidad, codigo] : casos) {
    const auto linea = tendido.AbrirSerie(terminal.dispositivo, velocidad);
    termios ajustes{};
    ASSERT_EQ(::tcgetattr(terminal.maestro.Numero(), &ajustes), 0);
    EXPECT_EQ(::cfgetospeed(&ajustes), codigo);
    EXPECT_EQ(ajustes.c_cflag & (CSIZE | PARENB | CSTOPB), CS8);
  }
  EXPECT_EQ(NumeroDeError([&] { tendido.AbrirSerie(terminal.dispositivo, 1234); }), error::kLlamada);
}

TEST(LineaSerie, EsDeUnSoloDuenioYSeLiberaAlCerrarse) {
  const Terminal terminal;
  TendidoDelEquipo tendido;
  auto linea = tendido.AbrirSerie(terminal.dispositivo, 9600);
  try {
    tendido.AbrirSerie(terminal.dispositivo, 9600);
    FAIL() << "the port is held";
  } catch (const Error& falla) {
    EXPECT_EQ(falla.Numero(), error::kPuertoEnUso);
    EXPECT_NE(falla.Descripcion().find(terminal.dispositivo), std::string::npos) << falla.Descripcion();
  }
  linea.reset();
  EXPECT_NE(tendido.AbrirSerie(terminal.dispositivo, 9600), nullptr);
}

TEST(LineaSerie, LoQueNoEsUnPuertoNoSeAbre) {
  const Carpeta carpeta;
  EscribirTodo(carpeta / "COM7", "no es un puerto");
  TendidoDelEquipo tendido;
  for (const std::string& nombre : {(carpeta / "COM7").string(), (carpeta / "no_hay").string(), std::string()}) {
    EXPECT_EQ(NumeroDeError([&] { tendido.AbrirSerie(nombre, 9600); }), error_enlace::kPuertoInexistente) << nombre;
  }
  EXPECT_EQ(LeerTodo(carpeta / "COM7"), "no es un puerto");
}

TEST(LineaSerie, SePierdeCuandoElOtroExtremoSeVa) {
  Terminal terminal;
  TendidoDelEquipo tendido;
  const auto linea = tendido.AbrirSerie(terminal.dispositivo, 9600);
  terminal.maestro.Cerrar();
  Bytes bytes;
  EXPECT_EQ(NumeroDeError([&] { linea->Recibir(bytes, kHolgura); }), error_enlace::kLineaPerdida);
  EXPECT_EQ(NumeroDeError([&] { linea->Enviar(TodosLosBytes(), kHolgura); }), error_enlace::kLineaPerdida);
}

TEST(LineaTcp, ConectaPasaBytesYEntregaLoLlegadoAntesDelCierre) {
  const Oyente oyente;
  TendidoDelEquipo tendido;
  const auto linea = tendido.AbrirTcp("127.0.0.1", oyente.puerto);
  Descriptor otro = oyente.Atender();
  ASSERT_TRUE(linea->Lista(kHolgura));
  const Bytes todos = TodosLosBytes();
  ASSERT_EQ(linea->Enviar(todos, kHolgura), todos.size());
  Bytes salieron;
  while (salieron.size() < todos.size() && RecibirPor(otro, "", salieron, kHolgura) > 0) {
  }
  EXPECT_EQ(salieron, todos);
  EnviarPor(otro, "", Bytes{1, 2, 3}, kHolgura);
  otro.Cerrar();
  EXPECT_EQ(Recibido(*linea, 3), (Bytes{1, 2, 3}));
  Bytes bytes;
  EXPECT_EQ(NumeroDeError([&] { linea->Recibir(bytes, kHolgura); }), error_enlace::kLineaPerdida);
}

TEST(LineaTcp, UnaDireccionSinNadieEsMuda) {
  int libre = 0;
  { libre = Oyente().puerto; }
  TendidoDelEquipo tendido;
  EXPECT_EQ(NumeroDeError([&] { tendido.AbrirTcp("127.0.0.1", libre)->Lista(kHolgura); }),
            error_enlace::kDireccionMuda);
  EXPECT_EQ(NumeroDeError([&] { tendido.AbrirTcp("no es una", libre); }), error_enlace::kDireccionMuda);
}

}  // namespace utr::enlace
