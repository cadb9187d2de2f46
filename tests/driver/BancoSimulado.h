#pragma once

#include <utility>

#include "driver/Banco.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "support/Carpeta.h"
#include "support/RelojFalso.h"

namespace utr::prueba {

// The simulated station on a bench: its situations are brought about by its scenario alone.
class BancoSimulado : public Banco {
 public:
  BancoSimulado() {
    Escenario("");
    Arrancar();
  }

  Comunicador& Driver() override { return *driver_; }
  void Enmudecer(bool muda) override { Equipo("muda = " + std::string(muda ? "true" : "false")); }
  void Desfasar(int minutos) override { Equipo("desfase_minutos = " + std::to_string(minutos)); }
  void QuitarCartucho(bool quitado) override {
    Escenario(quitado ? "[cartucho]\npresente = false\n" : "[cartucho]\npresente = true\n");
  }
  void Pasar(double segundos) override { reloj.Adelantar(segundos); }
  void AlEsperar(std::function<void()> hacer) override { al_esperar_ = std::move(hacer); }
  FechaHora Ahora() override { return reloj.Ahora(); }
  void Reiniciar() override {
    driver_.reset();
    Arrancar();
  }
  // The program is killed, and started again: what it hadn't saved is lost.
  void Matar() {
    const std::string guardado = LeerTodo(carpeta / "UTRSimulada.estado");
    driver_.reset();
    EscribirTodo(carpeta / "UTRSimulada.estado", guardado);
    Arrancar();
  }
  std::optional<std::string> TextoLog() override { return Log(); }
  std::string Archivo(const std::string& nombre) override { return (carpeta / nombre).string(); }

  ComunicadorSimulado& Simulado() { return *driver_; }

  // Writes the scenario file; without times of its own, bytes take none on the line, so that the clock stands still
  // unless a test moves it. Each text has another length or time than the one before: a counter in a comment sees to
  // it, since a test is quicker than the grain of file times.
  void Escenario(const std::string& texto) {
    const bool con_tiempos = texto.find("[tiempos]") != std::string::npos;
    EscribirTodo(carpeta / "UTRSimulada.toml", texto + (con_tiempos ? "" : "\n[tiempos]\nlinea = 0") + "\n#" +
                                                   std::string(static_cast<std::size_t>(++escritos_), '.'));
  }
  std::string Log() const { return LeerTodo(carpeta / "Comunicador.log"); }

  Carpeta carpeta;
  RelojFalso reloj;

 private:
  void Equipo(const std::string& linea) { Escenario("[equipo]\n" + linea + "\n"); }
  void Arrancar() {
    driver_ = std::make_unique<ComunicadorSimulado>(carpeta.Ruta(), reloj, [this] {
      if (al_esperar_) std::exchange(al_esperar_, nullptr)();
    });
  }

  std::function<void()> al_esperar_;
  int escritos_ = 0;
  std::unique_ptr<ComunicadorSimulado> driver_;
};

}  // namespace utr::prueba
