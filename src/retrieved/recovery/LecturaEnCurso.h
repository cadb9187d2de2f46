#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "retrieved/recovery/LectorFlash.h"
#include "services/RegistroErrores.h"

namespace utr {

// A read of the flash with its files. Without an earlier file it grows in place, and a former file of that name is set
// aside as ".anterior" until the new one is whole and has all of its pages. With one, which then is the file `ruta`
// itself, it grows beside it as
// ".continuacion" and takes its place in the end; the former one stays as ".anterior".
class LecturaEnCurso {
 public:
  struct Pedido {
    std::filesystem::path ruta;  // of the recovery file
    OpcionesLectura opciones;
    std::vector<std::filesystem::path> continuaciones{};  // left by a crash, and among the pages of the earlier file
  };

  // Creates the file. Raises kArchivo when that can't be done, and everything is as before then.
  LecturaEnCurso(const ContextoLectura& contexto, Pedido pedido);

  // Reads. Raises what driver and disk raise; the file then holds what was read until then. Behind a failure of the
  // disk an earlier file stays in its place.
  // The journal gets one entry for all of its pages, however it ends.
  void Leer();

  const LectorFlash& Lector() const noexcept { return *lector_; }

 private:
  void LeerTodo();
  void Anotar(Diario::Tarea& tarea, const std::optional<Error>& falla) const;
  void Apartar();
  bool SobraLoApartado() const;
  void Publicar();

  Diario* diario_;
  const Reloj& reloj_;
  Pedido pedido_;
  std::filesystem::path apartado_;  // empty: there was no former file
  std::optional<EscritorRecuperacion> archivo_;
  std::optional<LectorFlash> lector_;
};

// The files that a crash has left of reads that went on from `ruta`, whose pages are `anterior`, oldest first. Those
// that can't be read or hold other pages are left out: they were of another file of that name.
std::vector<std::filesystem::path> ContinuacionesDe(const std::filesystem::path& ruta, const LecturaAnterior& anterior);

// Reads the configuration from the unit and saves it at `ruta`, whole or not at all. False: no table, no rows,
// cancelled while it came, or a failure, which was logged.
bool ExportarConfiguracionLeida(Comunicador& comunicador, RegistroErrores& registro, Progreso& progreso,
                                const std::filesystem::path& ruta);

}  // namespace utr
