#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "services/Impresora.h"

namespace utr {

enum class Icono { kNinguno, kInformacion, kExclamacion, kCritico, kPregunta };
// kOpciones: a button for each of the message's own two options, and Cancelar. kAceptarOpcion: Aceptar, which Esc and
// the close button give too, and one for the first option.
enum class Botones { kAceptar, kAceptarCancelar, kSiNo, kOpciones, kAceptarOpcion };
// What the operator chose. The close button and Esc give kCerrado where the box has no button for them.
enum class Respuesta { kAceptar, kCancelar, kSi, kNo, kPrimera, kSegunda, kCerrado };

struct Mensaje {
  std::string texto;  // plain text, lines parted by "\n"
  std::string titulo;
  Icono icono = Icono::kNinguno;
  Botones botones = Botones::kAceptar;
  std::array<std::string, 2> opciones{};  // captions, for the buttons that are the message's own
  std::optional<Respuesta> defecto{};  // what Enter answers; without one, or one that has no button: the first button
  std::string detalle{};               // more lines, in a field that scrolls; empty: there is no such field
};

// What Enter answers in a box.
Respuesta DefectoDe(const Mensaje& mensaje);

// A filter of the file dialogs as the system writes them: "Texto (*.txt)|*.txt".
struct PedidoArchivo {
  std::string titulo;
  std::string filtro;             // empty, to open: a folder is asked for
  std::filesystem::path carpeta;  // where the dialog starts; empty: where it was last
  std::string nombre;             // proposed name, may be empty
};

// Everything that the program asks of the person in front of it, outside its own windows. One implementation shows real
// boxes and dialogs; tests answer from a script.
class Operador {
 public:
  virtual ~Operador() = default;

  // Shows a modal message and returns the answer.
  virtual Respuesta Mostrar(const Mensaje& mensaje) = 0;

  // The path to open or to save, or nothing after a cancel. Saving asks before an existing file is replaced, and adds
  // the filter's extension to a name that doesn't end in it.
  virtual std::optional<std::filesystem::path> ElegirAbrir(const PedidoArchivo& pedido) = 0;
  virtual std::optional<std::filesystem::path> ElegirGuardar(const PedidoArchivo& pedido) = 0;

  // The printer to use and its copies, or nothing after a cancel. `anterior` is what was chosen last.
  virtual std::optional<EleccionImpresora> ElegirImpresora(std::string_view titulo,
                                                           const EleccionImpresora& anterior) = 0;

  // Brings the hourglass pointer (true) and the normal one (false).
  virtual void PunteroOcupado(bool ocupado) = 0;
};

// A question with yes and no under that title; true for yes. Enter answers `defecto`: kNo for what destroys.
bool Preguntar(Operador& operador, std::string_view titulo, std::string_view texto, Respuesta defecto = Respuesta::kSi);

// A piece of information under that title.
void Informar(Operador& operador, std::string_view titulo, std::string_view texto);

// The hourglass for the span of a scope; it comes off on every way out.
class PunteroDeEspera {
 public:
  explicit PunteroDeEspera(Operador& operador) : operador_(operador) { operador_.PunteroOcupado(true); }
  ~PunteroDeEspera() { operador_.PunteroOcupado(false); }
  PunteroDeEspera(const PunteroDeEspera&) = delete;
  PunteroDeEspera& operator=(const PunteroDeEspera&) = delete;

 private:
  Operador& operador_;
};

}  // namespace utr
