#include "driver/link/client/UnidadRemota.h"

#include <algorithm>
#include <random>
#include <utility>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::enlace {

namespace {

using namespace protocolo;

constexpr const char* kOrigen = "Comunicador";
constexpr std::size_t kCabeceraDeArchivos = 2;  // function and count of an answer
constexpr std::uint16_t kRegistrosDeCabeza = 5;
constexpr int kLecturasDeTabla = 3;
constexpr int kEntregas = 2;
constexpr std::int64_t kEntreCuentas = 500;  // milliseconds

std::uint32_t NumeroAlAzar() {
  std::random_device azar;
  const std::uint32_t numero = azar();
  return numero == 0 ? 1 : numero;
}

bool EsReinicio(Codigo codigo) {
  return codigo == Codigo::kReinicio || codigo == Codigo::kReinicioDePuesta;
}

// The span of an order, which can't be cancelled any more once its first byte went out. What follows it can be again.
class Compromiso {
 public:
  explicit Compromiso(Espera& espera) : espera_(espera) {}
  ~Compromiso() { espera_.Obstinarse(false); }
  Compromiso(const Compromiso&) = delete;
  Compromiso& operator=(const Compromiso&) = delete;

 private:
  Espera& espera_;
};

// The unit has refused what was asked, and nothing has happened. Any other exception (it failed, it is still at it)
// says nothing of an order: only its result does.
bool EsRechazo(std::uint8_t excepcion) {
  return excepcion == static_cast<std::uint8_t>(Excepcion::kFuncion) ||
         excepcion == static_cast<std::uint8_t>(Excepcion::kDireccion) ||
         excepcion == static_cast<std::uint8_t>(Excepcion::kValor) ||
         excepcion == static_cast<std::uint8_t>(Excepcion::kOcupada);
}

[[noreturn]] void NoSeEntiende(const std::string& que) {
  throw Error(error_enlace::kOtraVersion, kOrigen, "La UTR habla otra versión del protocolo: " + que);
}

[[noreturn]] void Negada(std::uint8_t excepcion) {
  throw Error(error_enlace::kLecturaNegada, kOrigen,
              "La UTR rechazó la lectura (excepción " + std::to_string(excepcion) + ")");
}

[[noreturn]] void SigueOcupada() {
  throw Error(error::kSinRespuesta, kOrigen, "La UTR sigue ocupada con otro pedido");
}

}  // namespace

UnidadRemota::UnidadRemota(Via& via, Espera& espera, Reloj& reloj, const Plazos& plazos, Avisos avisos)
    : via_(via),
      espera_(espera),
      reloj_(reloj),
      plazos_(plazos),
      avisos_(std::move(avisos)),
      intentos_(plazos.intentos),
      sesion_(NumeroAlAzar()) {}

void UnidadRemota::Llamar(std::int32_t identificador) {
  Desconocer();
  llamada_ = identificador;
}

// --- One request -----------------------------------------------------------------------------------------------------

void UnidadRemota::Desconocer() {
  const bool habia = std::exchange(conocida_, false);
  contesto_.reset();
  if (habia && avisos_.desconocida) avisos_.desconocida();
}

// Something done on the line that leads to the unit; nothing when there is none, or when it was lost and can be opened
// again for another try.
std::optional<Bytes> UnidadRemota::EnLinea(const std::function<std::optional<Bytes>(Conversacion&)>& hacer) {
  try {
    Conversacion* linea = via_.Abierta();
    hay_camino_ = linea != nullptr;
    return linea != nullptr ? hacer(*linea) : std::nullopt;
  } catch (const Error& falla) {
    Desconocer();
    reabrir_ = via_.Perder(falla);
    if (!reabrir_) throw;
    return std::nullopt;
  }
}

std::optional<Bytes> UnidadRemota::Intentar(const Pedido& pedido) {
  if (!conocida_ && !Identificar()) return std::nullopt;
  if (pedido.escribe) {
    ExigirConsentimiento();
    Recordar();
  }
  auto respuesta = EnLinea([&](Conversacion& linea) { return linea.Intentar(pedido); });
  if (!respuesta) {
    Desconocer();
    return std::nullopt;
  }
  Recordar();
  contesto_ = true;
  return respuesta;
}

// Another unit may have taken the place of the one that was on show when the operator decided, and only now said who it
// is.
void UnidadRemota::ExigirConsentimiento() const {
  if (!avisos_.consiente || avisos_.consiente(de_practica_)) return;
  throw Error(error_enlace::kOtraUnidad, kOrigen,
              de_practica_ ? "Contesta una estación de práctica donde había una unidad real: no se le envió lo pedido"
                           : "Contesta una unidad real donde había una estación de práctica: no se le envió lo pedido");
}

// A connection that the other end closed while nobody spoke takes no try: what was lost is the connection, not the
// request.
Bytes UnidadRemota::Preguntar(const Pedido& pedido) {
  bool perdonada = false;
  for (int intento = 0; intento < intentos_; ++intento) {
    if (intento > 0) {
      via_.ContarReintento();
      Contar();
    }
    reabrir_ = false;
    if (auto respuesta = Intentar(pedido)) {
      via_.Contestada(true);
      Contar();
      return *std::move(respuesta);
    }
    if (!hay_camino_ && !via_.PuedeReintentar()) break;
    if (reabrir_ && !std::exchange(perdonada, true)) --intento;
  }
  Callada();
}

void UnidadRemota::Callada() {
  via_.Contestada(false);
  contesto_ = false;
  Lanzar(error::kSinRespuesta, kOrigen);
}

// Asks a unit that may be at something else, and again for a while; the exception that says so comes back after that.
std::optional<Bytes> UnidadRemota::SiLibre(const Pedido& pedido,
                                           const std::function<std::optional<Bytes>()>& preguntar) {
  const std::int64_t hasta = espera_.Ahora() + plazos_.ocupada;
  for (;;) {
    auto respuesta = preguntar();
    const auto excepcion = respuesta ? LeerExcepcion(*respuesta, pedido.pdu.front()) : std::nullopt;
    const bool ocupada = excepcion == static_cast<std::uint8_t>(Excepcion::kOcupada);
    if (!ocupada || espera_.Ahora() >= hasta) return respuesta;
    EsperarLibre(pedido);
  }
}

// An order that a busy unit hasn't taken can still be given up; one whose result it is asked for can't.
void UnidadRemota::EsperarLibre(const Pedido& pedido) {
  if (pedido.compromete) espera_.Obstinarse(false);
  espera_.Pausar(plazos_.sondeo);
}

Bytes UnidadRemota::PreguntarSiLibre(const Pedido& pedido) {
  return *SiLibre(pedido, [&] { return std::optional(Preguntar(pedido)); });
}

// Asks the unit who it is, once. False: it didn't answer. Only what it says tells its version: that it has no such
// function or no such register, or another number.
bool UnidadRemota::Identificar() {
  std::vector<PedidoDeArchivo> partes{{archivo::kRegistros, registro::kIdentificador, kLargoDeIdentidad}};
  const Pedido pedido = PedidoDeArchivos(partes);
  const auto respuesta =
      SiLibre(pedido, [&] { return EnLinea([&](Conversacion& linea) { return linea.Intentar(pedido); }); });
  if (!respuesta) return false;
  if (const auto excepcion = LeerExcepcion(*respuesta, funcion::kLeerArchivos)) {
    const auto cual = static_cast<Excepcion>(*excepcion);
    if (cual == Excepcion::kOcupada) SigueOcupada();
    if (cual == Excepcion::kFuncion || cual == Excepcion::kDireccion) NoSeEntiende("desconocida");
    Negada(*excepcion);
  }
  const auto registros = RegistrosDe(LeerRespuestaDeArchivos(*respuesta, partes)->front());
  if (registros[registro::kVersion] != kVersionDelMapa) NoSeEntiende(std::to_string(registros[registro::kVersion]));
  propia_ = registros[registro::kIdentificador];
  de_practica_ = registros[registro::kDePractica] != 0;
  const bool otra = de_la_operacion_ && *de_la_operacion_ != std::pair(propia_, de_practica_);
  if (otra || (llamada_ != 0 && propia_ != 0 && llamada_ != propia_)) Callada();
  conocida_ = true;
  contesto_ = true;
  if (avisos_.identificada) avisos_.identificada(de_practica_);
  return true;
}

std::optional<bool> UnidadRemota::DePractica() {
  return conocida_ || Identificar() ? std::optional(de_practica_) : std::nullopt;
}

void UnidadRemota::Conocer() {
  if (!conocida_) LeerRegistros(registro::kIdentificador, 1);
}

void UnidadRemota::Contar() {
  if (espera_.Ahora() - contado_ >= kEntreCuentas) DarCuenta();
}

void UnidadRemota::DarCuenta() {
  contado_ = espera_.Ahora();
  contando_ = true;
  if (avisos_.trafico) avisos_.trafico(via_.Cuenta());
}

void UnidadRemota::Terminar() {
  if (contando_) DarCuenta();
  contando_ = false;
  const auto contesto = std::exchange(contesto_, std::nullopt);
  if (contesto && avisos_.contesta) avisos_.contesta(*contesto);
}

// --- Reading ---------------------------------------------------------------------------------------------------------

// The request for these parts and the echo, which joins them.
Pedido UnidadRemota::PedidoDeArchivos(std::vector<PedidoDeArchivo>& partes) {
  eco_ = static_cast<std::uint16_t>((eco_ + 1) % (kMayorRecord + 1));
  partes.push_back({archivo::kEco, eco_, 1});
  const auto es_suya = [partes, eco = eco_](VistaBytes pdu) {
    if (LeerExcepcion(pdu, funcion::kLeerArchivos)) return true;
    const auto leidas = LeerRespuestaDeArchivos(pdu, partes);
    return leidas && Leer16(leidas->back(), 0) == eco;
  };
  return {.direccion = DireccionDe(llamada_),
          .pdu = protocolo::PedidoDeArchivos(partes),
          .respuesta = kCabeceraDeArchivos + CuentaDeRespuesta(partes),
          .es_suya = es_suya};
}

Leido UnidadRemota::LeerArchivos(std::vector<PedidoDeArchivo> partes) {
  const Pedido pedido = PedidoDeArchivos(partes);
  const Bytes respuesta = PreguntarSiLibre(pedido);
  if (const auto excepcion = LeerExcepcion(respuesta, funcion::kLeerArchivos)) {
    if (*excepcion == static_cast<std::uint8_t>(Excepcion::kOcupada)) SigueOcupada();
    return {excepcion, {}};
  }
  auto leidas = LeerRespuestaDeArchivos(respuesta, partes);
  leidas->pop_back();
  return {std::nullopt, *std::move(leidas)};
}

std::optional<std::vector<Bytes>> UnidadRemota::LeerSiHay(std::vector<PedidoDeArchivo> partes) {
  Leido leido = LeerArchivos(std::move(partes));
  if (leido.NoHay()) return std::nullopt;
  if (!leido.Bien()) Negada(*leido.excepcion);
  return std::move(leido.partes);
}

std::optional<std::vector<std::uint16_t>> UnidadRemota::LeerRegistros(std::uint16_t desde, std::size_t cuantos) {
  const auto leido = LeerSiHay({{archivo::kRegistros, desde, static_cast<std::uint16_t>(cuantos)}});
  if (!leido) return std::nullopt;
  return RegistrosDe(leido->front());
}

std::optional<Bytes> UnidadRemota::LeerImagen(std::uint16_t archivo) {
  for (int vez = 0; vez < kLecturasDeTabla; ++vez) {
    const auto cabeza = LeerSiHay({{archivo, 0, kRegistrosDeCabeza}});
    if (!cabeza) return std::nullopt;
    const auto resumen = LeerCabeza(cabeza->front());
    if (!resumen) NoSeEntiende("sus tablas no se entienden");
    Bytes imagen;
    const std::size_t piezas = PiezasDe(resumen->largo);
    for (std::size_t pieza = 0; pieza < piezas; pieza += kPaginasPorPedido) {
      const std::size_t cuantas = std::min<std::size_t>(kPaginasPorPedido, piezas - pieza);
      const auto leido = LeerSiHay({{archivo, static_cast<std::uint16_t>(1 + pieza),
                                     static_cast<std::uint16_t>(cuantas * kRegistrosPorPagina)}});
      if (!leido) break;  // it has become shorter
      imagen.insert(imagen.end(), leido->front().begin(), leido->front().end());
    }
    imagen.resize(std::min<std::size_t>(imagen.size(), resumen->largo));
    if (imagen.size() == resumen->largo && Crc32(imagen) == resumen->control) return imagen;
  }
  throw Error(error_enlace::kCambiante, kOrigen, "La UTR cambia mientras se la lee");
}

// --- Orders ----------------------------------------------------------------------------------------------------------

Pedido UnidadRemota::PedidoDeEscritura(Bytes pdu, Bytes acuse) const {
  const std::uint8_t funcion = pdu.front();
  const std::size_t largo = acuse.size();
  return {.direccion = DireccionDe(llamada_),
          .pdu = std::move(pdu),
          .respuesta = largo,
          .escribe = true,
          .es_suya = [funcion, acuse = std::move(acuse)](VistaBytes otra) {
            return LeerExcepcion(otra, funcion).has_value() ||
                   std::equal(otra.begin(), otra.end(), acuse.begin(), acuse.end());
          }};
}

Orden UnidadRemota::NuevaOrden(Codigo codigo, std::vector<std::uint16_t> argumentos) {
  return {.identificador = propia_,
          .sesion = sesion_,
          .secuencia = ++secuencia_,
          .codigo = codigo,
          .argumentos = std::move(argumentos)};
}

Pedido UnidadRemota::PedidoDe(const Orden& orden) const {
  Bytes pdu = protocolo::PedidoDeEscritura(0, BloqueDe(orden));
  Bytes acuse = AcuseDe(pdu);
  Pedido pedido = PedidoDeEscritura(std::move(pdu), std::move(acuse));
  pedido.compromete = true;
  return pedido;
}

// What the unit says of an order; nothing when it never got it. The newest result is nearly always the one.
std::optional<ResultadoDeOrden> UnidadRemota::ResultadoDe(const Orden& orden) {
  for (const std::size_t cuantos : {std::size_t{1}, kResultados}) {
    const auto registros = LeerRegistros(registro::kOrdenes, cuantos * kRegistrosPorResultado);
    if (!registros) return std::nullopt;
    for (const ResultadoDeOrden& resultado : LeerResultados(*registros)) {
      if (resultado.sesion == orden.sesion && resultado.secuencia == orden.secuencia) return resultado;
    }
  }
  return std::nullopt;
}

// The same once it has ended, or its time is up.
std::optional<ResultadoDeOrden> UnidadRemota::Concluir(const Orden& orden) {
  const std::int64_t hasta = espera_.Ahora() + LimiteDe(orden.codigo);
  for (;;) {
    const auto resultado = ResultadoDe(orden);
    const bool corre = resultado && resultado->estado == EstadoDeOrden::kEnCurso;
    if (!corre || espera_.Ahora() >= hasta) return resultado;
    espera_.Pausar(plazos_.sondeo);
  }
}

// Sends the order until the unit knows it, and waits for its end. Nothing: it was refused ahead of that.
std::optional<ResultadoDeOrden> UnidadRemota::Cumplir(const Orden& orden) {
  espera_.Ceder();
  const Compromiso compromiso(espera_);
  const Pedido pedido = PedidoDe(orden);
  for (int intento = 0; intento < intentos_; ++intento) {
    const Bytes respuesta = PreguntarSiLibre(pedido);
    const auto excepcion = LeerExcepcion(respuesta, funcion::kEscribirRegistros);
    if (excepcion && EsRechazo(*excepcion)) return std::nullopt;
    try {
      if (auto resultado = Concluir(orden)) return resultado;
    } catch (const Error& falla) {
      // It was acknowledged, and a unit that restarts answers nobody.
      const bool se_fue = falla.Numero() == error::kSinRespuesta && EsReinicio(orden.codigo);
      if (!se_fue || excepcion) throw;
      return ResultadoDeOrden{orden.sesion, orden.secuencia, EstadoDeOrden::kHecha, Motivo::kNinguno};
    }
  }
  return std::nullopt;
}

bool UnidadRemota::Ordenar(Codigo codigo, const std::vector<std::uint16_t>& argumentos) {
  Conocer();
  const auto resultado = Cumplir(NuevaOrden(codigo, argumentos));
  const bool hecha = resultado && resultado->estado == EstadoDeOrden::kHecha;
  if (hecha && EsReinicio(codigo)) {
    Desconocer();
    via_.Contestada(false);
  }
  return hecha;
}

// Its time is that of the moment when it goes out, so that the line is waited for ahead of it. When it isn't
// acknowledged it may have arrived all the same; it is looked for, and never sent again.
bool UnidadRemota::PonerEnHora() {
  Conocer();
  EnLinea([](Conversacion& linea) {
    linea.EsperarTurno();
    return std::optional<Bytes>();
  });
  if (!conocida_) Conocer();
  espera_.Ceder();
  const Compromiso compromiso(espera_);
  const auto registros = RegistrosDeReloj(reloj_.Ahora());
  const Orden orden = NuevaOrden(Codigo::kReloj, {registros.begin(), registros.end()});
  Pedido pedido = PedidoDe(orden);
  pedido.plazo = plazos_.escritura;
  const auto respuesta = Intentar(pedido);
  const auto excepcion = respuesta ? LeerExcepcion(*respuesta, funcion::kEscribirRegistros) : std::nullopt;
  if (excepcion && EsRechazo(*excepcion)) return false;
  const auto resultado = Concluir(orden);
  return resultado && resultado->estado == EstadoDeOrden::kHecha;
}

// --- Tables ----------------------------------------------------------------------------------------------------------

// False: the unit doesn't take it.
bool UnidadRemota::PrepararBorrador(VistaBytes imagen) {
  const Bytes archivo = ArchivoDe(imagen);
  Bytes sesion;
  Poner32(sesion, sesion_);
  const std::size_t piezas = PiezasDe(imagen.size());
  for (std::size_t pieza = 0; pieza < piezas;) {
    std::vector<EscrituraDeArchivo> partes{{archivo::kBorrador, 0, sesion}};
    for (int i = 0; i < kPaginasPorPedido && pieza < piezas; ++i, ++pieza) {
      const auto record = static_cast<std::uint16_t>(1 + pieza);
      const auto desde = archivo.begin() + static_cast<std::ptrdiff_t>(record * kBytesPorPieza);
      partes.push_back({archivo::kBorrador, record, Bytes(desde, desde + kBytesPorPieza)});
    }
    const Bytes pdu = PedidoDeEscrituraDeArchivos(partes);
    if (LeerExcepcion(PreguntarSiLibre(PedidoDeEscritura(pdu, pdu)), pdu.front())) return false;
  }
  return true;
}

// A draft that was lost on the way, because the unit was started again or somebody else was at it, is made once more.
bool UnidadRemota::Entregar(Codigo codigo, VistaBytes imagen) {
  Conocer();
  for (int vez = 0; vez < kEntregas; ++vez) {
    if (!PrepararBorrador(imagen)) return false;
    const auto resultado = Cumplir(NuevaOrden(codigo, ArgumentosDe(ResumenDe(imagen))));
    if (resultado && resultado->estado == EstadoDeOrden::kHecha) return true;
    if (!resultado || resultado->motivo != Motivo::kSinBorrador) return false;
  }
  return false;
}

}  // namespace utr::enlace
