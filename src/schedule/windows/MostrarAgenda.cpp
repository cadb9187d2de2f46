#include "schedule/windows/MostrarAgenda.h"

#include "schedule/windows/frmAgendas.h"

namespace utr {
namespace {

void Editar(FlujoLectura& flujo) {
  ModRTU& mod = flujo.Mod();
  frmAgendas editor(mod, &flujo.Principal());
  editor.LeerAgenda();
  editor.exec();
  if (!editor.Acepto) return;
  if (editor.Grabado) return Informar(mod.operador, flujo.Titulo(), "La agenda fue modificada con éxito");
  mod.operador.Mostrar({.texto = "La agenda no pudo ser grabada", .titulo = flujo.Titulo(), .icono = Icono::kCritico});
}

}  // namespace

void ProcesarAgenda(FlujoLectura& flujo) {
  ModRTU& mod = flujo.Mod();
  RegistrandoYMostrando(mod.registro, mod.operador, "frmPpal", "ProcesarAgenda", flujo.Titulo(),
                        Redaccion::kCompletarse, [&flujo] { Editar(flujo); });
}

}  // namespace utr
