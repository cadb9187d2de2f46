// Budgets of the driver over a wire, against a station of its own process on this machine: what a whole reading of the
// flash puts on a serial line and takes over TCP, and how many requests a day of one channel costs.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/Fechas.h"
#include "benchmarks/Presupuesto.h"
#include "driver/link/client/ComunicadorEnlace.h"
#include "driver/link/protocol/Pdu.h"
#include "support/ProcesoEstacion.h"

namespace {

using namespace utr::protocolo;

constexpr int kPistas = 32;
constexpr std::int16_t kPaginas = 1024;
constexpr int kBytesPagina = 64;

// The station, with so many days in its rings and no time on its lines, and the driver.
class Puesto {
 public:
  explicit Puesto(int dias) : dias_(dias) {
    std::filesystem::create_directories(carpeta_);
    std::ofstream(carpeta_ / "Estacion.toml") << "[historia]\ndias = " << dias << "\n[tiempos]\nlinea = 0\n";
    estacion_ = std::make_unique<utr::prueba::ProcesoEstacion>(
        carpeta_.string(), std::vector<std::string>{"--tcp", "0", "--linea", "COM4"});
  }
  ~Puesto() {
    estacion_->Terminar(SIGTERM);
    std::filesystem::remove_all(carpeta_);
  }
  Puesto(const Puesto&) = delete;
  Puesto& operator=(const Puesto&) = delete;

  int Puerto() const { return estacion_->Puerto(); }
  std::string Enlace() const { return "127.0.0.1,n,8,1"; }

 private:
  int dias_;
  std::filesystem::path carpeta_ = std::filesystem::temp_directory_path() /
                                   ("medida_enlace_" + std::to_string(::getpid()) + "_" + std::to_string(dias_));
  std::unique_ptr<utr::prueba::ProcesoEstacion> estacion_;
  utr::enlace::TendidoDelEquipo tendido_;
  utr::RelojSistema reloj_;
  utr::Bitacora bitacora_{carpeta_};

 public:
  utr::ComunicadorEnlace driver{{.tendido = tendido_,
                                 .dispositivos = [this](int) { return (carpeta_ / "COM4").string(); },
                                 .reloj = reloj_,
                                 .atender = {},
                                 .bitacora = bitacora_}};
  utr::FechaHora Ahora() const { return reloj_.Ahora(); }
};

// Raises for a page that didn't come: less work would pass for quick work.
std::size_t LeerFlash(utr::Comunicador& driver, int pistas) {
  std::size_t leidos = 0;
  for (int pista = 0; pista < pistas; ++pista) {
    for (std::int16_t pagina = 0; pagina < kPaginas; ++pagina) {
      leidos += driver.LeerPaginaFlash(static_cast<std::int16_t>(pista), pagina).empty() ? 0 : 1;
    }
  }
  if (leidos != static_cast<std::size_t>(pistas) * kPaginas) throw std::runtime_error("pages are missing");
  return leidos;
}

// The requests of a whole reading, each sent and its answer waited for, with nothing done about it.
class BucleSinMas {
 public:
  explicit BucleSinMas(int puerto) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in destino{};
    destino.sin_family = AF_INET;
    destino.sin_port = htons(static_cast<std::uint16_t>(puerto));
    destino.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int si = 1;
    ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &si, sizeof si);
    if (::connect(socket_, reinterpret_cast<sockaddr*>(&destino), sizeof destino) != 0)
      throw std::runtime_error("connect");
  }
  ~BucleSinMas() { ::close(socket_); }
  BucleSinMas(const BucleSinMas&) = delete;
  BucleSinMas& operator=(const BucleSinMas&) = delete;

  void Correr() {
    for (int pista = 0; pista < kPistas; ++pista) {
      for (int pagina = 0; pagina < kPaginas; pagina += kPaginasPorPedido) {
        const int cuantas = std::min<int>(kPaginasPorPedido, kPaginas - pagina);
        const PedidoDeArchivo partes[] = {
            {static_cast<std::uint16_t>(archivo::kFlash + pista), static_cast<std::uint16_t>(pagina),
             static_cast<std::uint16_t>(cuantas * kRegistrosPorPagina)},
            {archivo::kEco, 1, 1}};
        Pedir(TramaTcp(1, kUnicaUnidad, PedidoDeArchivos(partes)), kCabeceraTcp + 2 + CuentaDeRespuesta(partes));
      }
    }
  }

 private:
  void Pedir(const Bytes& trama, std::size_t largo) {
    std::uint8_t bufer[512];
    if (::send(socket_, trama.data(), trama.size(), 0) < 0) throw std::runtime_error("send");
    for (std::size_t leidos = 0; leidos < largo;) {
      const ssize_t mas = ::recv(socket_, bufer, sizeof bufer, 0);
      if (mas <= 0) throw std::runtime_error("recv");
      leidos += static_cast<std::size_t>(mas);
    }
  }

  int socket_;
};

// The seconds in which a client that isn't ours makes the requests of so many tracks.
double SegundosDePymodbus(int puerto, int pistas) {
  const std::string orden =
      "/usr/bin/python3 " LECTURA_PYMODBUS " " + std::to_string(puerto) + " " + std::to_string(pistas);
  std::FILE* salida = ::popen(orden.c_str(), "r");
  double segundos = 0;
  const int leidos = std::fscanf(salida, "%lf", &segundos);
  if (::pclose(salida) != 0 || leidos != 1) throw std::runtime_error("python3-pymodbus: scripts/preparar bench");
  return segundos;
}

// Of the bytes on a serial line at least 85 % are page bytes.
bool MedirLineaSerie(Puesto& puesto) {
  puesto.driver.Conectar("9600,n,8,1", "4");
  const auto antes = puesto.driver.Cuenta();
  const std::size_t paginas = LeerFlash(puesto.driver, 4);
  const auto ahora = puesto.driver.Cuenta();
  const auto bytes = static_cast<double>(ahora.enviados - antes.enviados + ahora.recibidos - antes.recibidos);
  return medida::Informar("bytes_de_linea_por_byte_de_pagina", bytes / static_cast<double>(paginas * kBytesPagina),
                          1 / 0.85);
}

// Against a plain loop and against pymodbus, so that the faster of the two is the one that counts.
bool MedirTcp(Puesto& puesto) {
  puesto.driver.Conectar(puesto.Enlace(), std::to_string(puesto.Puerto()));
  BucleSinMas bucle(puesto.Puerto());
  const bool bien = medida::Comparar(
      "leer_la_flash_por_tcp", 1.5, [&] { LeerFlash(puesto.driver, kPistas); }, [&] { bucle.Correr(); }, 3);
  constexpr int kAlgunas = 4;
  std::vector<double> razones;
  for (int i = 0; i < 3; ++i) {
    const double nuestro = medida::Segundos([&] { LeerFlash(puesto.driver, kAlgunas); });
    razones.push_back(nuestro / SegundosDePymodbus(puesto.Puerto(), kAlgunas));
  }
  return medida::Informar("leer_la_flash_por_tcp_contra_pymodbus", medida::Mediana(razones), 1) && bien;
}

// What a day costs beyond the requests of its pages at three a request. In the cold the line is taken up anew, and what
// that asks counts.
double PedidosDeMas(Puesto& puesto, int dias, bool en_frio) {
  const std::string dia = TextoFecha(utr::FechaDeDias(utr::DiasDesde1970(puesto.Ahora()) - dias));
  puesto.driver.IdEquipo(0);  // nothing is known, not even who is there
  const auto antes = puesto.driver.Cuenta().pedidos;
  if (en_frio) {
    puesto.driver.Desconectar();
    puesto.driver.Conectar(puesto.Enlace(), std::to_string(puesto.Puerto()));
  }
  const utr::TablaPtr tabla = puesto.driver.LeerDatos(dia, dia, 0);
  const auto pedidos = static_cast<double>(puesto.driver.Cuenta().pedidos - antes);
  int paginas = 0;  // each of them begins with a row that bears the date
  for (; !tabla->Eof(); tabla->MoveNext()) paginas += tabla->Texto("Fecha").empty() ? 0 : 1;
  if (paginas <= 5) throw std::runtime_error("a day without its pages: " + dia);
  return pedidos - (paginas + kPaginasPorPedido - 1) / kPaginasPorPedido;
}

bool MedirDia(Puesto& puesto, const char* nombre, int hasta, int paso, bool en_frio) {
  double peor = 0;
  for (int dias = 1; dias < hasta; dias += paso) peor = std::max(peor, PedidosDeMas(puesto, dias, en_frio));
  return medida::Informar(nombre, peor, 6);
}

}  // namespace

int main() {
  constexpr int kDias = 200;
  constexpr int kPocosDias = 20;
  Puesto puesto(kDias);  // full rings
  bool bien = MedirLineaSerie(puesto);
  bien = MedirTcp(puesto) && bien;
  bien = MedirDia(puesto, "pedidos_de_mas_por_un_dia", 120, 9, false) && bien;
  bien = MedirDia(puesto, "pedidos_de_mas_por_un_dia_en_frio", 120, 9, true) && bien;
  Puesto nuevo(kPocosDias);  // rings that haven't come round
  bien = MedirDia(nuevo, "pedidos_de_mas_por_un_dia_sin_dar_la_vuelta", kPocosDias, 1, true) && bien;
  return bien ? 0 : 1;
}
