#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "driver/Banco.h"
#include "driver/link/client/ComunicadorEnlace.h"
#include "support/Carpeta.h"
#include "support/ProcesoEstacion.h"

namespace utr::prueba {

// The driver over a real line, and a station at its other end in a process of its own. The date is the test's; a wait
// moves it on, for both, and takes no time. Milliseconds are the machine's, since bytes really travel, but they fly
// while the unit is mute: nothing is on its way then.
class BancoProceso : public Banco {
 public:
  explicit BancoProceso(bool por_tcp) : BancoProceso(por_tcp, Pacientes(), "") {}

  // With other time-outs, and something more in its scenario all along.
  BancoProceso(bool por_tcp, const enlace::Plazos& plazos, const char* siempre) : plazos_(plazos), siempre_(siempre) {
    direccion = "127.0.0.1";
    direccion_muda = "127.0.0.2";
    puerto = "4";
    puerto_modem = "5";
    con_rts = false;
    por_ip = por_tcp;
    EscribirTodo(carpeta / "Estacion.toml", siempre_ + kTiempos);
    Arrancar();
  }

  Comunicador& Driver() override { return *driver_; }
  ComunicadorEnlace& Enlace() { return *driver_; }
  void Enmudecer(bool muda) override {
    Escenario("[equipo]\nmuda = " + std::string(muda ? "true\n" : "false\n"));
    reloj_.Volar(muda);
  }
  void Desfasar(int minutos) override { Escenario("[equipo]\ndesfase_minutos = " + std::to_string(minutos) + "\n"); }
  void QuitarCartucho(bool quitado) override {
    Escenario("[cartucho]\npresente = " + std::string(quitado ? "false\n" : "true\n"));
  }
  void Pasar(double segundos) override { reloj_.Esperar(segundos, {}); }
  void AlEsperar(std::function<void()> hacer) override { al_esperar_ = std::move(hacer); }
  FechaHora Ahora() override { return reloj_.Ahora(); }
  void Reiniciar() override {
    driver_.reset();
    estacion_->Terminar(SIGTERM);
    Arrancar();
  }
  std::optional<std::string> TextoLog() override {
    bitacora_.Vaciar();
    return LeerTodo(carpeta / "Comunicador.log");
  }
  std::string Archivo(const std::string& nombre) override { return (carpeta / nombre).string(); }

  void Escenario(const std::string& texto) { EXPECT_EQ(estacion_->Escenario(texto + siempre_ + kTiempos), "bien"); }

  // Where other clients reach the same station.
  std::string LineaLibre() const { return estacion_->Linea("COM7"); }
  int PuertoTcp() const { return estacion_->Puerto(); }

  // The station dies at once, and later lives again.
  void MatarEstacion() { estacion_->Terminar(SIGKILL); }
  void RevivirEstacion() {
    const std::string antes = puerto_ip;
    ArrancarEstacion(antes);
  }

  Carpeta carpeta;

 private:
  static constexpr const char* kTiempos = "[tiempos]\nlinea = 0\n[modem]\nsegundos = 0.1\n";

  class RelojDelBanco : public Reloj {
   public:
    explicit RelojDelBanco(std::unique_ptr<ProcesoEstacion>& estacion) : estacion_(estacion) {}
    FechaHora Ahora() const override { return FechaDeSegundos(Segundos({2026, 3, 15, 10, 0, 0}) + esperado_ / 1000); }
    std::int64_t Milisegundos() const override {
      return volado_ + (sistema_.Milisegundos() - desde_) * veces_ + esperado_;
    }
    void Esperar(double segundos, const Atender& atender) override {
      if (atender) atender();
      if (segundos <= 0) return;
      esperado_ += static_cast<std::int64_t>(segundos * 1000);
      estacion_->Avanzar(segundos);
    }
    void Volar(bool activo) {
      volado_ += (sistema_.Milisegundos() - desde_) * veces_;
      desde_ = sistema_.Milisegundos();
      veces_ = activo ? 30 : 1;
    }

   private:
    std::unique_ptr<ProcesoEstacion>& estacion_;
    RelojSistema sistema_;
    std::int64_t desde_ = sistema_.Milisegundos();
    std::int64_t volado_ = 0;
    std::int64_t veces_ = 1;
    std::int64_t esperado_ = 0;
  };

  void ArrancarEstacion(const std::string& puerto_tcp) {
    estacion_ = std::make_unique<ProcesoEstacion>(
        carpeta.Ruta().string(),
        std::vector<std::string>{"--tcp", puerto_tcp, "--linea", "COM4", "--modem", "COM5", "--linea", "COM6",
                                 "--linea", "COM7", "--hora", TextoFechaHora(reloj_.Ahora())});
    puerto_ip = std::to_string(estacion_->Puerto());
  }
  void Arrancar() {
    ArrancarEstacion("0");
    tomado_ = tendido_.AbrirSerie(estacion_->Linea("COM6"), 9600);
    puerto_tomado = "6";
    driver_ = std::make_unique<ComunicadorEnlace>(
        ComunicadorEnlace::Partes{.tendido = tendido_,
                                  .dispositivos = [this](int numero) -> std::optional<std::string> {
                                    if (numero < 4 || numero > 6) return std::nullopt;
                                    return (carpeta / ("COM" + std::to_string(numero))).string();
                                  },
                                  .reloj = reloj_,
                                  .atender =
                                      [this] {
                                        if (al_esperar_) std::exchange(al_esperar_, nullptr)();
                                      },
                                  .bitacora = bitacora_,
                                  .plazos = plazos_});
  }
  // Long enough for a machine that is at much else, and no wait ahead of another try.
  static enlace::Plazos Pacientes() {
    enlace::Plazos plazos;
    plazos.serie = plazos.llamada = 500;
    plazos.tcp = 700;
    plazos.silencio = plazos.silencio_en_llamada = 50;
    return plazos;
  }

  enlace::Plazos plazos_;
  std::string siempre_;
  std::unique_ptr<ProcesoEstacion> estacion_;
  RelojDelBanco reloj_{estacion_};
  enlace::TendidoDelEquipo tendido_;
  std::unique_ptr<enlace::Linea> tomado_;
  Bitacora bitacora_{carpeta.Ruta()};
  std::function<void()> al_esperar_;
  std::unique_ptr<ComunicadorEnlace> driver_;
};

}  // namespace utr::prueba
