// Any bytes on a line of the station: whatever it answers is a whole frame of its protocol, and it answers nobody's
// broadcast. The first byte tells what the others are: what a serial line or a TCP connection brings, a request with a
// frame around it, the contents of an order, the image of a table.

#include "base/Reloj.h"
#include "driver/link/protocol/Imagenes.h"
#include "driver/simulated/station/Extremo.h"
#include "fuzz/Comun.h"

namespace {

using namespace utr::protocolo;
using utr::fuzz::Exigir;
using utr::simulada::ClaseDeLinea;

class RelojQuieto final : public utr::Reloj {
 public:
  utr::FechaHora Ahora() const override { return {2026, 3, 15, 10, 0, 0}; }
  std::int64_t Milisegundos() const override { return milisegundos; }
  void Esperar(double segundos, const utr::Atender& /*atender*/) override {
    milisegundos += static_cast<std::int64_t>(segundos * 1000);
  }
  std::int64_t milisegundos = 1000000;
};

// The same fresh station for each input.
struct Estacion {
  RelojQuieto reloj;
  utr::simulada::EstacionViva viva{{}, {"", ""}, reloj, {}, [](const utr::FechaHora&, std::string_view) {}};
  utr::simulada::EstadoPersistido fresca = viva.estado;
};

Estacion& Fresca() {
  static Estacion estacion;
  estacion.viva.estado = estacion.fresca;
  return estacion;
}

// What the station says to bytes that come in two pieces with a long gap behind them.
Bytes Contestar(ClaseDeLinea clase, VistaBytes bytes) {
  Estacion& e = Fresca();
  utr::simulada::Despachador unidad(e.viva);
  utr::simulada::Extremo extremo(clase, e.viva, unidad);
  const std::size_t corte = bytes.size() / 2;
  extremo.Recibir(bytes.first(corte), e.reloj.milisegundos);
  extremo.Recibir(bytes.subspan(corte), e.reloj.milisegundos);
  e.reloj.milisegundos += 3600000;
  return extremo.Entregar(e.reloj.milisegundos);
}

void MirarSerie(const Bytes& dicho) {
  ReceptorRtu receptor(Sentido::kRespuesta);
  for (std::size_t lugar = 0; lugar < dicho.size(); lugar += kMayorTramaRtu) {
    receptor.Recibir(VistaBytes{dicho}.subspan(lugar, std::min(kMayorTramaRtu, dicho.size() - lugar)));
    while (const auto trama = receptor.Proxima()) Exigir(trama->direccion != kDifusion, "an answer to a broadcast");
  }
  Exigir(receptor.Vacio() && receptor.Descartados() == 0, "an answer that is no frame");
}

void MirarRed(const Bytes& dicho) {
  ReceptorTcp receptor;
  receptor.Recibir(dicho);
  while (const auto trama = receptor.Proxima()) {
    const LargoDePdu medida = MedirPdu(Sentido::kRespuesta, trama->pdu);
    // An exception to a function that nobody knows has two bytes like any other.
    Exigir(medida.clase == LargoDePdu::Clase::kSabido && medida.largo == trama->pdu.size(), "the length of an answer");
  }
  Exigir(receptor.Vacio() && !receptor.Roto(), "an answer that is no frame");
}

void MirarOrden(VistaBytes bytes) {
  const auto registros = RegistrosDe(bytes);
  if (registros.empty() || registros.size() > kMayorArgumentos) return;
  const Orden orden{0, 7, 1, static_cast<Codigo>(registros[0]), {registros.begin() + 1, registros.end()}};
  const Bytes pdu = PedidoDeEscritura(0, BloqueDe(orden));
  Exigir(Contestar(ClaseDeLinea::kSerie, TramaRtu(kUnicaUnidad, pdu)) == TramaRtu(kUnicaUnidad, AcuseDe(pdu)),
         "the acknowledgement of an order");
}

void MirarImagen(VistaBytes bytes) {
  if (const auto filas = LeerImagenDeCanales(bytes)) {
    const auto imagen = ImagenDe(*filas);
    if (!imagen) return;
    const auto otra = LeerImagenDeCanales(*imagen);
    Exigir(otra && otra->filas == filas->filas && otra->presentes == filas->presentes, "the image of channels");
  }
  if (const auto agenda = LeerImagenDeAgenda(bytes)) {
    const auto imagen = ImagenDe(*agenda);
    Exigir(imagen && LeerImagenDeAgenda(*imagen) == agenda, "the image of a schedule");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t cuantos) {
  if (cuantos < 2) return 0;
  const VistaBytes resto{bytes + 1, cuantos - 1};
  switch (bytes[0] % 5) {
    case 0:
      MirarSerie(Contestar(ClaseDeLinea::kSerie, resto));
      break;
    case 1:
      MirarRed(Contestar(ClaseDeLinea::kTcp, resto));
      break;
    case 2:
      if (resto.size() <= kMayorPdu) MirarRed(Contestar(ClaseDeLinea::kTcp, TramaTcp(1, kUnicaUnidad, resto)));
      break;
    case 3:
      MirarOrden(resto);
      break;
    default:
      MirarImagen(resto);
  }
  return 0;
}
