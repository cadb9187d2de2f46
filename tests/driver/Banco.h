#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "base/Fechas.h"
#include "driver/Comunicador.h"

namespace utr::prueba {

// A bench on which a driver is tested against its contract: the driver, a unit at the other end, and hands that bring
// the situations about which the contract speaks. The contract suite knows nothing else of the driver.
//
// The unit stands at `enlace`, on `puerto`, with `identificador`; it holds records of the last thirty days at least and
// pending ones among them. Every bench begins with a closed link.
class Banco {
 public:
  virtual ~Banco() = default;

  virtual Comunicador& Driver() = 0;

  std::string enlace = "9600,n,8,1";
  std::string otro_enlace = "4800,n,8,1";  // a speed that isn't the unit's
  std::string puerto = "1";
  std::string puerto_tomado = "2";
  std::string puerto_inexistente = "9";
  std::string puerto_modem = "3";
  bool con_rts = true;  // the line has RTS
  std::int32_t identificador = 120;
  std::string direccion = "192.168.0.1";
  std::string direccion_muda = "10.9.8.7";  // where nobody answers
  std::string puerto_ip = "1000";
  bool por_ip = false;  // Conectar goes over IP, and opens no serial port

  // The unit stops answering, or answers again.
  virtual void Enmudecer(bool muda) = 0;

  // The clock of the unit goes wrong by so many minutes.
  virtual void Desfasar(int minutos) = 0;

  // The unit loses its cartridge, or gets it back.
  virtual void QuitarCartucho(bool quitado) = 0;

  // Time passes, for unit and computer alike.
  virtual void Pasar(double segundos) = 0;

  // The next wait lets this run once.
  virtual void AlEsperar(std::function<void()> hacer) = 0;

  // The computer's present time.
  virtual FechaHora Ahora() = 0;

  // The driver and the unit are started again, as with a new run of the program.
  virtual void Reiniciar() = 0;

  // What the driver's log holds; nothing on a bench that can't look into it.
  virtual std::optional<std::string> TextoLog() = 0;

  // A path for a file of the test.
  virtual std::string Archivo(const std::string& nombre) = 0;

  void Conectar() {
    if (por_ip) {
      Driver().PorIP(true);
      Driver().DireccionIP(direccion);
      Driver().PuertoIP(puerto_ip);
    } else {
      Driver().Conectar(enlace, puerto);
    }
    Driver().IdEquipo(identificador);
  }
};

struct FabricaDeBanco {
  const char* nombre;
  std::unique_ptr<Banco> (*crear)();
};
// What a test is listed under; without it that would be an address.
inline void PrintTo(const FabricaDeBanco& fabrica, std::ostream* salida) {
  *salida << fabrica.nombre;
}

}  // namespace utr::prueba
