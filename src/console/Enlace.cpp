#include "console/Enlace.h"

#include "base/CarpetaPrograma.h"
#include "base/Error.h"
#include "base/Numeros.h"
#include "driver/CarpetaDeEstacion.h"
#include "driver/ComunicadorAnotado.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/client/ComunicadorEnlace.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "services/ArchivosPrograma.h"
#include "services/RegistroErrores.h"
#include "session/LibroEstaciones.h"
#include "session/NumerosDePuerto.h"

namespace utr::consola {

namespace {

namespace fs = std::filesystem;

constexpr const char* kOrigen = "adminutr-cli";

// The book that was asked for, which has to be there, or the program's own.
fs::path ElLibro(const PedidoEnlace& pedido, const fs::path& carpeta) {
  fs::path pedido_o_del_entorno = pedido.libro.empty() ? RutaDelEntorno("ADMINUTR_LIBRO") : pedido.libro;
  if (pedido_o_del_entorno.empty()) return carpeta / LibroEstaciones::kArchivo;
  std::error_code nada;
  if (!fs::exists(pedido_o_del_entorno, nada))
    throw Error(error::kArchivo, kOrigen, "El libro " + pedido_o_del_entorno.string() + " no está");
  return pedido_o_del_entorno;
}

// What the book says of a station in place of its name.
PedidoEnlace Resolver(const PedidoEnlace& pedido, const fs::path& carpeta) {
  if (pedido.estacion.empty()) return pedido;
  LibroEstaciones libro(ElLibro(pedido, carpeta));
  libro.Leer();
  const Estacion* estacion = libro.Buscar(pedido.estacion);
  if (estacion == nullptr) {
    throw Error(error::kLlamada, kOrigen,
                "El libro " + libro.Archivo().string() + " no tiene la estación \"" + pedido.estacion + "\"");
  }
  PedidoEnlace resuelto;
  resuelto.simulada = estacion->medio == MedioEstacion::kSimulado;
  resuelto.entrada = EntradaDe(*estacion);
  return resuelto;
}

// A device that was told by its name.
std::string DispositivoLlamado(const std::string& dispositivo) {
  if (!EstacionDetenida(fs::path(dispositivo).parent_path())) return dispositivo;
  throw Error(error_enlace::kPuertoInexistente, kOrigen,
              "La estación que tendió el puerto " + dispositivo + " no está en marcha");
}

// The device of a port's number: that which the program knows by it, else the line of a station on this machine.
std::optional<std::string> DispositivoDe(const fs::path& carpeta, int numero) {
  const NumerosDePuerto numeros(carpeta / "Puertos.toml");
  if (!numeros.Legible()) throw Error(error::kArchivo, kOrigen, numeros.Aviso());
  if (numeros.De(numero)) return numeros.Abrible(numero);
  const std::string nombre = "COM" + std::to_string(numero);
  for (const Dispositivo& linea : LineasDeEstacion(CarpetaDeEstacion())) {
    if (fs::path(linea.ruta).filename() == nombre) return linea.ruta;
  }
  return std::nullopt;
}

}  // namespace

struct Enlace::Partes {
  Partes(const PedidoEnlace& un_pedido, fs::path donde, Reloj& un_reloj, Atender atender, Bitacora& bitacora,
         const std::function<void()>& de_practica)
      : carpeta(std::move(donde)), pedido(Resolver(un_pedido, carpeta)), reloj(un_reloj) {
    if (pedido.simulada) {
      driver = std::make_unique<ComunicadorSimulado>(carpeta, reloj, std::move(atender));
      return;
    }
    linea = std::make_unique<ComunicadorEnlace>(ComunicadorEnlace::Partes{
        .tendido = tendido,
        .dispositivos =
            [this](int numero) {
              return pedido.dispositivo.empty() ? DispositivoDe(carpeta, numero)
                                                : std::optional(DispositivoLlamado(pedido.dispositivo));
            },
        .reloj = reloj,
        .atender = std::move(atender),
        .bitacora = bitacora,
        .avisos = {.identificada = [de_practica](bool si) {
          if (si) de_practica();
        }}});
    driver = std::make_unique<ComunicadorAnotado>(*linea, bitacora, reloj);
  }

  void AbrirPuerto() {
    const EntradaEnlace& entrada = pedido.entrada;
    const std::string extremo = entrada.por_ip ? entrada.direccion : std::to_string(entrada.velocidad);
    driver->Conectar(TextoEnlace(extremo), entrada.por_ip ? entrada.puerto_ip : std::to_string(entrada.puerto));
    if (!entrada.por_ip) driver->ModoConexion(true);
  }

  void Llamar() {
    RegistroErrores registro(carpeta / "adminutr-cli.err", reloj);
    const std::string comandos = pedido.entrada.comandos.empty()
                                     ? LeerArchivoPrograma(registro, carpeta, "comandosAT.dat")
                                     : pedido.entrada.comandos;
    driver->Cancelar(true);
    if (driver->LlamarTelefono(pedido.entrada.numero_telefono, comandos)) return;
    throw Error(error::kSinRespuesta, kOrigen,
                "Error al comunicarse por teléfono con " + pedido.entrada.numero_telefono);
  }

  fs::path carpeta;
  PedidoEnlace pedido;
  Reloj& reloj;
  enlace::TendidoDelEquipo tendido;
  std::unique_ptr<ComunicadorEnlace> linea;
  std::unique_ptr<Comunicador> driver;
};

Enlace::Enlace(const PedidoEnlace& pedido, fs::path carpeta, Reloj& reloj, Atender atender, Bitacora& bitacora,
               const std::function<void()>& de_practica)
    : partes_(std::make_unique<Partes>(pedido, std::move(carpeta), reloj, std::move(atender), bitacora, de_practica)) {}

Enlace::~Enlace() {
  IgnorandoErrores([this] { partes_->driver->Desconectar(); });
}

Comunicador& Enlace::Driver() noexcept {
  return *partes_->driver;
}

bool Enlace::Simulada() const noexcept {
  return partes_->pedido.simulada;
}

std::int32_t Enlace::Identificador() const {
  return Entero32(Val(partes_->pedido.entrada.identificador));
}

void Enlace::Abrir() {
  partes_->AbrirPuerto();
  if (partes_->pedido.entrada.telefono) partes_->Llamar();
  partes_->driver->IdEquipo(Identificador());
}

}  // namespace utr::consola
