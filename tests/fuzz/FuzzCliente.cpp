// Any bytes as what a unit answers to AdminUTR: whatever comes, an operation ends with a result of its kind or with an
// Error, in the time that its tries may take. The first byte tells the operation, the second how the others come: as
// they are on a serial line or a TCP connection, or as contents of answers whose frame, check and echo are right, which
// reaches what lies behind them.
#include <algorithm>
#include <filesystem>

#include "base/Error.h"
#include "driver/Textos.h"
#include "driver/link/client/ComunicadorEnlace.h"
#include "driver/link/protocol/Pdu.h"
#include "fuzz/Comun.h"

namespace {

using namespace utr::protocolo;
using utr::fuzz::Exigir;

constexpr std::int64_t kMayorEspera = 3600000;  // milliseconds; a client that tries for longer hangs
constexpr std::size_t kItemsDePagina = 66;

class RelojQuieto final : public utr::Reloj {
 public:
  utr::FechaHora Ahora() const override { return {2026, 3, 15, 10, 0, 0}; }
  std::int64_t Milisegundos() const override { return milisegundos; }
  void Esperar(double segundos, const utr::Atender& /*atender*/) override {
    milisegundos += static_cast<std::int64_t>(segundos * 1000);
  }
  std::int64_t milisegundos = 1000000;
};

// Says the bytes, a handful at a time; then nothing.
class LineaDeBytes : public utr::enlace::Linea {
 public:
  LineaDeBytes(RelojQuieto& reloj, VistaBytes& bytes) : reloj_(reloj), bytes_(bytes) {}

  bool Lista(int) override { return true; }
  std::size_t Enviar(VistaBytes enviados, int) override {
    Pedido(enviados);
    return enviados.size();
  }
  std::size_t Recibir(Bytes& destino, int milisegundos) override {
    Exigir(reloj_.milisegundos < 1000000 + kMayorEspera, "a client that hangs");
    if (milisegundos == 0) return 0;
    Bytes trozo = Trozo();
    if (trozo.empty()) reloj_.milisegundos += milisegundos;
    destino.insert(destino.end(), trozo.begin(), trozo.end());
    return trozo.size();
  }
  bool Rts(bool) override { return false; }
  bool Dtr(bool) override { return false; }

 protected:
  virtual void Pedido(VistaBytes) {}
  virtual Bytes Trozo() { return Tomar(7); }
  Bytes Tomar(std::size_t cuantos) {
    const VistaBytes parte = bytes_.first(std::min(cuantos, bytes_.size()));
    bytes_ = bytes_.subspan(parte.size());
    return {parte.begin(), parte.end()};
  }

 private:
  RelojQuieto& reloj_;
  VistaBytes& bytes_;
};

// Says, to each request, the next bytes in a frame that answers it. The first of them tells how many.
class LineaDeRespuestas final : public LineaDeBytes {
 public:
  using LineaDeBytes::LineaDeBytes;

 private:
  void Pedido(VistaBytes trama) override {
    const Bytes largo = Tomar(1);
    respuesta_.clear();
    if (largo.empty() || trama.size() < 5) return;
    const VistaBytes pdu = trama.subspan(1, trama.size() - 3);
    Bytes contenido = Tomar(std::min<std::size_t>(largo[0], kMayorPdu));
    if (pdu[0] == funcion::kLeerArchivos && contenido.size() % 8 != 0) contenido = DeArchivos(pdu, contenido);
    if (pdu[0] == funcion::kEscribirRegistros && contenido.size() % 2 == 0) contenido = AcuseDe(pdu);
    if (!contenido.empty()) respuesta_ = TramaRtu(trama[0], contenido);
  }
  Bytes Trozo() override { return std::exchange(respuesta_, {}); }

  // The parts that were asked for, full of what there is, and the echo.
  static Bytes DeArchivos(VistaBytes pdu, const Bytes& contenido) {
    const auto pedidas = LeerPedidoDeArchivos(pdu);
    if (!pedidas) return contenido;
    std::vector<Bytes> partes;
    std::size_t lugar = 0;
    for (const PedidoDeArchivo& parte : *pedidas) {
      Bytes& bytes = partes.emplace_back();
      for (int i = 0; i < 2 * parte.registros; ++i) bytes.push_back(contenido[lugar++ % contenido.size()]);
      if (parte.archivo == 2 && parte.record == 0 && bytes.size() == 6) bytes = {0, 120, 0, 1, 0, 0};  // who it is
    }
    partes.back().clear();
    Poner16(partes.back(), pedidas->back().record);
    return RespuestaDeArchivos(partes);
  }

  Bytes respuesta_;
};

class TendidoDeBytes final : public utr::enlace::Tendido {
 public:
  TendidoDeBytes(RelojQuieto& reloj, VistaBytes bytes, bool con_marco)
      : reloj_(reloj), bytes_(bytes), con_marco_(con_marco) {}
  std::unique_ptr<utr::enlace::Linea> AbrirSerie(const std::string&, std::int32_t) override {
    if (con_marco_) return std::make_unique<LineaDeRespuestas>(reloj_, bytes_);
    return std::make_unique<LineaDeBytes>(reloj_, bytes_);
  }
  std::unique_ptr<utr::enlace::Linea> AbrirTcp(const std::string&, int) override {
    return std::make_unique<LineaDeBytes>(reloj_, bytes_);
  }

 private:
  RelojQuieto& reloj_;
  VistaBytes bytes_;
  bool con_marco_;
};

void ExigirPagina(const std::string& texto) {
  const auto bytes = utr::LeerTextoPagina(texto);
  Exigir(bytes && (bytes->empty() || bytes->size() == kItemsDePagina), "a page of flash");
}

using Operacion = void (*)(utr::Comunicador&);
constexpr Operacion kOperaciones[] = {
    [](utr::Comunicador& c) { c.ConfiguracionAlmacenada(true); },
    [](utr::Comunicador& c) { c.LeerAgenda(); },
    [](utr::Comunicador& c) { c.LeerDatos("01/03/2026", "02/03/2026", 0); },
    [](utr::Comunicador& c) { c.LeerEventos("", ""); },
    [](utr::Comunicador& c) { c.LeerColaTx("", ""); },
    [](utr::Comunicador& c) { c.LeerInstantaneos(); },
    [](utr::Comunicador& c) { c.LeerFechaHora(); },
    [](utr::Comunicador& c) { ExigirPagina(c.LeerPaginaFlash(0, 1022)); },
    [](utr::Comunicador& c) { c.LeerPagina("0", false); },
    [](utr::Comunicador& c) { c.GrabarSalidaDigital(1, true); },
    [](utr::Comunicador& c) { c.BorrarFlash(); },
    [](utr::Comunicador& c) { c.LlamarTelefono("4800", "ATZ"); },
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t cuantos) {
  if (cuantos < 3) return 0;
  RelojQuieto reloj;
  const unsigned modo = bytes[1] % 3;
  TendidoDeBytes tendido(reloj, {bytes + 2, cuantos - 2}, modo == 2);
  utr::Bitacora bitacora(std::filesystem::path("/dev/null/nada"));
  utr::ComunicadorEnlace driver({.tendido = tendido,
                                 .dispositivos = [](int) { return std::string("linea"); },
                                 .reloj = reloj,
                                 .atender = {},
                                 .bitacora = bitacora});
  try {
    driver.Conectar(modo == 1 ? "127.0.0.1,n,8,1" : "9600,n,8,1", "4");
    kOperaciones[bytes[0] % std::size(kOperaciones)](driver);
  } catch (const utr::Error& error) {
    Exigir(!error.Descripcion().empty(), "an error without words");
  }
  return 0;
}
