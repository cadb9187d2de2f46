#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "driver/link/client/Via.h"
#include "driver/link/protocol/Imagenes.h"
#include "driver/link/protocol/Ordenes.h"
#include "driver/link/protocol/Pdu.h"

namespace utr::enlace {

// What a unit answered to a read of files: the bytes of each part, or the exception that it gave instead.
struct Leido {
  std::optional<std::uint8_t> excepcion;
  std::vector<Bytes> partes;

  bool Bien() const { return !excepcion; }
  // The unit says that it has no such register, file or record.
  bool NoHay() const { return excepcion == static_cast<std::uint8_t>(protocolo::Excepcion::kDireccion); }
};

// What the computer is told of the way beside the answers; each may be empty.
struct Avisos {
  std::function<void(bool de_practica)> identificada{};  // a unit has said who it is
  std::function<void()> desconocida{};                   // it may be another one from now on, until one says who it is
  std::function<void(const Trafico&)> trafico{};         // now and then, while much is asked of the unit
  std::function<void(bool abierto)> puerto{};            // the serial port was closed or lost, or is open again
  std::function<void()> fin_de_llamada{};                // a call that stood doesn't any more
  // Whether the unit answered what an operation asked last, a refusal included; told at the end of the operation.
  std::function<void(bool contesta)> contesta{};
  // Asked ahead of each request that writes: whether that was meant for a unit of this kind. Empty: it always was.
  std::function<bool(bool de_practica)> consiente{};
};

// A unit at the other end of the way, asked in the words of its protocol. Before anything else it is asked who it is,
// whenever that may have changed.
//
// Every request raises kSinRespuesta when no answer came to any of its tries, when the unit is at something else for
// too long, and when another unit answers than the one that was called; kOtraVersion for a unit that speaks another
// version of the map; and what the line raises. One that writes raises kOtraUnidad, with nothing sent, when `consiente`
// says no to the unit that is there.
class UnidadRemota {
 public:
  UnidadRemota(Via& via, Espera& espera, Reloj& reloj, const Plazos& plazos, Avisos avisos);

  // The unit that is called, 0 for whoever is there.
  void Llamar(std::int32_t identificador);

  // It may be another unit, or have been restarted: it is asked who it is ahead of the next request.
  void Desconocer();

  // Whether the unit is one to practise with, asked once where it isn't known who would answer. Nothing: nobody does.
  std::optional<bool> DePractica();

  // An operation begins. All of it is of one unit: from its first answer on, and from the first byte of what it writes,
  // another one that says who it is counts as silence.
  void Comenzar() {
    de_la_operacion_.reset();
    contesto_.reset();
  }

  // For the operation at hand: how often a request is tried, and no more than that.
  void Intentos(int cuantos) { intentos_ = cuantos; }

  // The operation at hand is over: whoever was told of what it put on the line is told the end, and what came of it.
  void Terminar();

  // Reads parts of files; one part more, the echo, tells the answer from any other. Exceptions come back but for that
  // of a unit that is at something else: it is asked again for a while.
  Leido LeerArchivos(std::vector<protocolo::PedidoDeArchivo> partes);

  // The same for what a unit may lack: nothing when it says that it has no such thing. Raises kLecturaNegada for any
  // other exception, which says nothing of what there is.
  std::optional<std::vector<Bytes>> LeerSiHay(std::vector<protocolo::PedidoDeArchivo> partes);

  // Input registers of one block, as LeerSiHay.
  std::optional<std::vector<std::uint16_t>> LeerRegistros(std::uint16_t desde, std::size_t cuantos);

  // Pages of a memory came with the last read.
  void ContarPaginas(std::size_t cuantas) { via_.ContarPaginas(cuantas); }

  // Has an order carried out, once. False: refused. An order that the unit has taken isn't cancelled any more.
  bool Ordenar(protocolo::Codigo codigo, const std::vector<std::uint16_t>& argumentos);

  // The order that sets the clock to the computer's time at the moment when it is sent. It isn't repeated.
  bool PonerEnHora();

  // Stages the image of a table and has it taken. False: refused.
  bool Entregar(protocolo::Codigo codigo, VistaBytes imagen);

  // The image of a table that the unit holds, of one state from its first byte to its last. Nothing when the unit
  // doesn't have the table. Raises as LeerSiHay, kOtraVersion for a head that makes no sense, and kCambiante for a
  // table that is another one each time.
  std::optional<Bytes> LeerImagen(std::uint16_t archivo);

 private:
  std::optional<Bytes> EnLinea(const std::function<std::optional<Bytes>(Conversacion&)>& hacer);
  std::optional<Bytes> Intentar(const Pedido& pedido);
  void ExigirConsentimiento() const;
  void Recordar() { de_la_operacion_ = {propia_, de_practica_}; }
  Bytes Preguntar(const Pedido& pedido);
  [[noreturn]] void Callada();
  std::optional<Bytes> SiLibre(const Pedido& pedido, const std::function<std::optional<Bytes>()>& preguntar);
  Bytes PreguntarSiLibre(const Pedido& pedido);
  void EsperarLibre(const Pedido& pedido);
  bool Identificar();
  void Conocer();
  Pedido PedidoDeArchivos(std::vector<protocolo::PedidoDeArchivo>& partes);
  Pedido PedidoDeEscritura(Bytes pdu, Bytes acuse) const;
  protocolo::Orden NuevaOrden(protocolo::Codigo codigo, std::vector<std::uint16_t> argumentos);
  Pedido PedidoDe(const protocolo::Orden& orden) const;
  std::optional<protocolo::ResultadoDeOrden> ResultadoDe(const protocolo::Orden& orden);
  std::optional<protocolo::ResultadoDeOrden> Concluir(const protocolo::Orden& orden);
  std::optional<protocolo::ResultadoDeOrden> Cumplir(const protocolo::Orden& orden);
  bool PrepararBorrador(VistaBytes imagen);
  void Contar();
  void DarCuenta();

  Via& via_;
  Espera& espera_;
  Reloj& reloj_;
  const Plazos& plazos_;
  Avisos avisos_;
  std::int32_t llamada_ = 0;  // identifier that is called
  std::uint16_t propia_ = 0;  // and the one that the unit gave
  bool conocida_ = false;
  bool de_practica_ = false;
  std::optional<std::pair<std::uint16_t, bool>> de_la_operacion_;  // identifier and practice of the unit that it is of
  std::optional<bool> contesto_;                                   // to the operation at hand
  int intentos_;
  bool hay_camino_ = false;
  bool reabrir_ = false;  // the connection closed, and may be opened again
  std::uint16_t eco_ = 0;
  std::uint32_t sesion_;
  std::uint16_t secuencia_ = 0;
  std::int64_t contado_ = 0;
  bool contando_ = false;
};

}  // namespace utr::enlace
