#pragma once

#include <utility>

#include "driver/Banco.h"
#include "driver/link/LineaDeMemoria.h"
#include "driver/link/client/ComunicadorEnlace.h"
#include "driver/simulated/station/Despachador.h"
#include "driver/simulated/station/Modem.h"
#include "support/Carpeta.h"

namespace utr::prueba {

// The driver over a wire and a station at its other end, both in memory, on one clock that stands still.
class BancoEnlace : public Banco, private enlace::Tendido {
 public:
  // With `en_disco` false the station is kept nowhere, which makes its orders quick; with a short history it is soon
  // there.
  explicit BancoEnlace(bool en_disco = true, bool historia_corta = false)
      : en_disco_(en_disco), historia_(historia_corta ? "\n[historia]\ndias = 1\ndias_cartucho = 1\n" : "") {
    puerto_ip = "1502";
    if (en_disco) Escenario("");
    Arrancar();
    if (!en_disco) Escenario("");
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
    estacion_.reset();
    Arrancar();
  }
  std::optional<std::string> TextoLog() override {
    bitacora_.Vaciar();
    return LeerTodo(carpeta / "Comunicador.log");
  }
  std::string Archivo(const std::string& nombre) override { return (carpeta / nombre).string(); }

  ComunicadorEnlace& Enlace() { return *driver_; }
  simulada::EstacionViva& Viva() { return estacion_->viva; }

  // The station is killed and started again: what it hadn't saved is lost, and its lines with it.
  void MatarEstacion() {
    const std::string guardado = LeerTodo(carpeta / "Estacion.estado");
    estacion_.reset();
    EscribirTodo(carpeta / "Estacion.estado", guardado);
    estacion_ = std::make_unique<Estacion>(Donde(), reloj);
    ++vida_;
  }

  std::vector<bool> puertos;      // what the driver told of its port
  int fines_de_llamada = 0;       // and of its calls
  std::vector<bool> contestadas;  // and whether each operation was answered
  std::string quien;  // and of who is there: "p" a station to practise with, "r" a real one, "?" it may be another
  std::function<bool(bool de_practica)> consiente;  // what may be written to; empty: anything
  int aperturas = 0;                                // of TCP connections that were tried
  int aperturas_mudas = 0;                          // of these, from now on, that nobody answers

  // Over TCP, what answers a request in place of the station; nothing leaves it to the station. For units that aren't
  // like ours.
  std::function<std::optional<protocolo::Bytes>(protocolo::VistaBytes pdu)> en_lugar;

  // What the station says to a request, however it came.
  std::optional<protocolo::Bytes> ContestarDeVeras(protocolo::VistaBytes pdu) {
    return estacion_->unidad.Responder(protocolo::kUnicaUnidad, pdu, true);
  }

  void Escenario(const std::string& texto) {
    const bool con_tiempos = texto.find("[tiempos]") != std::string::npos;
    const std::string todo = texto + historia_ + (con_tiempos ? "" : "\n[tiempos]\nlinea = 0\n");
    if (!en_disco_) return Viva().Escenificar(todo);
    EscribirTodo(carpeta / "Estacion.toml", todo + "\n#" + std::string(static_cast<std::size_t>(++escritos_), '.'));
  }

  Carpeta carpeta;
  RelojFalso reloj;
  enlace::Plazos plazos;

 protected:
  void Arrancar() {
    if (!estacion_) estacion_ = std::make_unique<Estacion>(Donde(), reloj);
    driver_ = std::make_unique<ComunicadorEnlace>(ComunicadorEnlace::Partes{
        .tendido = *this,
        .dispositivos = [this](int numero) { return DispositivoDe(numero); },
        .reloj = reloj,
        .atender =
            [this] {
              if (al_esperar_) std::exchange(al_esperar_, nullptr)();
            },
        .bitacora = bitacora_,
        .plazos = plazos,
        .avisos = {.identificada = [this](bool de_practica) { quien += de_practica ? "p" : "r"; },
                   .desconocida = [this] { quien += "?"; },
                   .puerto = [this](bool abierto) { puertos.push_back(abierto); },
                   .fin_de_llamada = [this] { ++fines_de_llamada; },
                   .contesta = [this](bool contesta) { contestadas.push_back(contesta); },
                   .consiente = [this](bool de_practica) { return !consiente || consiente(de_practica); }}});
  }

 private:
  struct Estacion {
    Estacion(const std::filesystem::path& donde, RelojFalso& reloj)
        : viva(donde, {"Estacion.toml", "Estacion.estado"}, reloj, {}, [](const FechaHora&, std::string_view) {}) {}
    simulada::EstacionViva viva;
    simulada::Despachador unidad{viva};
  };

  // One end of a line of the station; it is lost with the station's life.
  template <class Otro>
  class Punta {
   public:
    template <class... Mas>
    Punta(BancoEnlace& banco, int velocidad, Mas... mas)
        : banco_(banco), vida_(banco.vida_), otro_(mas..., banco.estacion_->viva, banco.estacion_->unidad) {
      otro_.Velocidad(velocidad);
    }
    void Recibir(protocolo::VistaBytes bytes, std::int64_t ahora) {
      if (!Suplida(bytes)) otro_.Recibir(bytes, ahora);
    }
    protocolo::Bytes Entregar(std::int64_t ahora) {
      if (!suplida_.empty()) return std::exchange(suplida_, {});
      return Colgado() ? protocolo::Bytes{} : otro_.Entregar(ahora);
    }
    std::optional<std::int64_t> Proximo() const { return Colgado() ? std::nullopt : otro_.Proximo(); }
    bool Colgado() const {
      if (vida_ != banco_.vida_) return true;
      if constexpr (requires { otro_.Colgado(); }) return otro_.Colgado();
      return false;
    }

   private:
    // A request goes out in one piece.
    bool Suplida(protocolo::VistaBytes bytes) {
      if (!banco_.en_lugar) return false;
      protocolo::ReceptorTcp receptor;
      receptor.Recibir(bytes);
      const auto pedido = receptor.Proxima();
      const auto pdu = pedido ? banco_.en_lugar(pedido->pdu) : std::nullopt;
      if (pdu) suplida_ = protocolo::TramaTcp(pedido->transaccion, pedido->direccion, *pdu);
      return pdu.has_value();
    }

    BancoEnlace& banco_;
    int vida_;
    Otro otro_;
    protocolo::Bytes suplida_;
  };

  template <class Otro, class... Mas>
  std::unique_ptr<enlace::Linea> Tender(int velocidad, Mas... mas) {
    using Extremo = Punta<Otro>;
    return std::make_unique<LineaDeMemoria<Extremo>>(std::make_unique<Extremo>(*this, velocidad, mas...), reloj);
  }

  std::optional<std::string> DispositivoDe(int numero) const {
    const std::string texto = std::to_string(numero);
    return texto == puerto || texto == puerto_tomado || texto == puerto_modem ? std::optional(texto) : std::nullopt;
  }
  std::unique_ptr<enlace::Linea> AbrirSerie(const std::string& dispositivo, std::int32_t velocidad) override {
    if (dispositivo == puerto_tomado) Lanzar(error::kPuertoEnUso, "BancoEnlace");
    if (dispositivo == puerto_modem) return Tender<simulada::Modem>(velocidad);
    return Tender<simulada::Extremo>(velocidad, simulada::ClaseDeLinea::kSerie);
  }
  std::unique_ptr<enlace::Linea> AbrirTcp(const std::string& adonde, int puerto_tcp) override {
    ++aperturas;
    const bool muda = aperturas_mudas > 0 && aperturas_mudas-- > 0;
    if (muda || adonde != direccion || std::to_string(puerto_tcp) != puerto_ip) {
      Lanzar(error_enlace::kDireccionMuda, "BancoEnlace");
    }
    return Tender<simulada::Extremo>(0, simulada::ClaseDeLinea::kTcp);
  }
  void Equipo(const std::string& linea) { Escenario("[equipo]\n" + linea + "\n"); }

  std::filesystem::path Donde() const { return en_disco_ ? carpeta.Ruta() : std::filesystem::path{}; }

  bool en_disco_;
  std::string historia_;  // of the scenario
  Bitacora bitacora_{carpeta.Ruta()};
  std::unique_ptr<Estacion> estacion_;
  int vida_ = 0;
  int escritos_ = 0;
  std::function<void()> al_esperar_;
  std::unique_ptr<ComunicadorEnlace> driver_;
};

}  // namespace utr::prueba
