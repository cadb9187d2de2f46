#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "services/Operador.h"

namespace utr {

// An operator who answers from a script. Questions come in the order in which they are expected; a question that nobody
// expected, one with other words, and an expected one that never came fail the test.
class OperadorGuion : public Operador {
 public:
  // Also checks that the whole script was played.
  ~OperadorGuion() override;

  // The next box has exactly this text; the answer given to it.
  void Espera(std::string texto, Respuesta respuesta = Respuesta::kAceptar);
  // The next box equals `mensaje` in text, title, icon, buttons, their captions and what Enter answers.
  void Espera(Mensaje mensaje, Respuesta respuesta = Respuesta::kAceptar);
  // The next box holds this somewhere in its text.
  void EsperaParte(std::string parte, Respuesta respuesta = Respuesta::kAceptar);
  // The next file dialog has this title; the path given to it, or a cancel.
  void EsperaAbrir(std::string titulo, std::optional<std::filesystem::path> ruta);
  void EsperaGuardar(std::string titulo, std::optional<std::filesystem::path> ruta);
  void EsperaImpresora(std::string titulo, std::optional<EleccionImpresora> eleccion);

  // Fails the test for every step that didn't come, and forgets the script.
  void Comprobar();

  // What was shown and asked, in order.
  std::vector<Mensaje> mensajes;
  std::vector<PedidoArchivo> pedidos;
  std::vector<std::string> impresoras;
  int ocupado = 0;         // hourglasses that stand
  int relojes_vistos = 0;  // hourglasses brought
  // Called while a box or dialog is on the screen: a test looks around, or tries what an impatient operator would.
  std::function<void()> al_preguntar;

  Respuesta Mostrar(const Mensaje& mensaje) override;
  std::optional<std::filesystem::path> ElegirAbrir(const PedidoArchivo& pedido) override;
  std::optional<std::filesystem::path> ElegirGuardar(const PedidoArchivo& pedido) override;
  std::optional<EleccionImpresora> ElegirImpresora(std::string_view titulo, const EleccionImpresora& anterior) override;
  void PunteroOcupado(bool ocupado) override;

 private:
  enum class Clase { kMensaje, kAbrir, kGuardar, kImpresora };
  struct Paso {
    Clase clase = Clase::kMensaje;
    Mensaje mensaje;      // its text is the title of a dialog
    bool entero = false;  // compare title, icon and buttons too
    bool parte = false;   // the text holds that of `mensaje`
    Respuesta respuesta = Respuesta::kAceptar;
    std::optional<std::filesystem::path> ruta;
    std::optional<EleccionImpresora> eleccion;
  };

  std::optional<Paso> Tomar(Clase clase, const std::string& texto);
  std::optional<std::filesystem::path> Elegir(Clase clase, const PedidoArchivo& pedido);

  std::deque<Paso> guion_;
};

}  // namespace utr
