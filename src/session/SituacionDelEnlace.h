#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace utr {

// Who is at the other end, as far as the program knows.
enum class ClaseDeUnidad : std::uint8_t {
  kSimulada,     // the station in the program's own process
  kDePractica,   // a station to practise with, over a wire
  kReal,         // a unit over a wire
  kDesconocida,  // over a wire, and it hasn't said who it is
};

// What went over the wire since the beginning of the run.
struct CuentaDeLinea {
  std::uint64_t enviados = 0;   // bytes
  std::uint64_t recibidos = 0;  // bytes
  std::uint64_t reintentos = 0;
  std::uint64_t paginas = 0;  // of the memory of units

  bool operator==(const CuentaDeLinea&) const = default;
};

// What whoever has the driver tells whoever shows the link, beside the driver's contract: one object in the program's
// run. It shows nothing itself.
class SituacionDelEnlace {
 public:
  ClaseDeUnidad Clase() const noexcept { return clase_; }

  // Who was the last one known: what was read before the other end got lost is still hers. Unknown if nobody ever was.
  ClaseDeUnidad UltimaConocida() const noexcept { return ultima_conocida_; }
  const CuentaDeLinea& Cuenta() const noexcept { return cuenta_; }

  void PonerClase(ClaseDeUnidad clase);
  void PonerCuenta(const CuentaDeLinea& cuenta);

  // The line leads elsewhere from now on, or was opened once more.
  void PonerConexion(ClaseDeUnidad clase) {
    otra_conexion_ = true;
    PonerRespuesta({});
    PonerClase(clase);
  }

  // The operator acts now, with the class of unit before him that is on show. A unit that is merely silent is taken for
  // the one that was there.
  void ActuaElOperador() noexcept {
    if (clase_ != ClaseDeUnidad::kDesconocida || otra_conexion_) a_la_vista_ = clase_;
  }

  // Whether what he has begun may be written to a unit of that kind: not where the one on show was of the other kind.
  bool Consiente(bool de_practica) const noexcept;

  // The serial port of the line was closed or lost, or is open again.
  void PonerPuerto(bool abierto) {
    if (aviso_de_puerto_) aviso_de_puerto_(abierto);
  }
  void AlCambiarElPuerto(std::function<void(bool abierto)> aviso) { aviso_de_puerto_ = std::move(aviso); }

  // A call that stood over the line doesn't any more, however it ended.
  void PonerFinDeLlamada() {
    if (aviso_de_llamada_) aviso_de_llamada_();
  }
  void AlTerminarLaLlamada(std::function<void()> aviso) { aviso_de_llamada_ = std::move(aviso); }

  // What came of a call to the unit: whether it answered. Nothing: it may be another one from now on, or be away for a
  // while.
  void PonerRespuesta(std::optional<bool> contesta) {
    if (aviso_de_respuesta_) aviso_de_respuesta_(contesta);
  }
  void AlResponder(std::function<void(std::optional<bool> contesta)> aviso) { aviso_de_respuesta_ = std::move(aviso); }

  // Something about ports that the operator should know; the last one is kept for whoever comes later.
  void PonerAviso(const std::string& aviso) {
    ultimo_aviso_ = aviso;
    if (con_aviso_) con_aviso_(aviso);
  }
  const std::string& Aviso() const noexcept { return ultimo_aviso_; }
  void AlAvisar(std::function<void(const std::string&)> con_aviso) { con_aviso_ = std::move(con_aviso); }

  // Who shows it; one at a time, none with an empty function. Told at each change, also in the middle of an operation.
  void AlCambiar(std::function<void()> aviso) { aviso_ = std::move(aviso); }

 private:
  ClaseDeUnidad clase_ = ClaseDeUnidad::kSimulada;
  ClaseDeUnidad ultima_conocida_ = clase_;
  bool otra_conexion_ = false;                              // since somebody said who it is
  ClaseDeUnidad a_la_vista_ = ClaseDeUnidad::kDesconocida;  // when the operator acted last
  CuentaDeLinea cuenta_;
  std::function<void()> aviso_;
  std::function<void(bool)> aviso_de_puerto_;
  std::function<void()> aviso_de_llamada_;
  std::function<void(std::optional<bool>)> aviso_de_respuesta_;
  std::string ultimo_aviso_;
  std::function<void(const std::string&)> con_aviso_;
};

// "Estación simulada", and the sentence that says more.
std::string TextoDe(ClaseDeUnidad clase);
std::string DetalleDe(ClaseDeUnidad clase);

// Its word in the journal: "simulada", "de práctica", "real", "sin identificar".
std::string PalabraDe(ClaseDeUnidad clase);

// Whether what is written there reaches no unit of the field; by such a word too.
bool EsDePractica(ClaseDeUnidad clase);
bool EsDePractica(std::string_view palabra);

// "12345 bytes, 42 páginas, 3 reintentos", the pages where there were any; empty for a line on which nothing went.
std::string TextoDe(const CuentaDeLinea& cuenta);

}  // namespace utr
