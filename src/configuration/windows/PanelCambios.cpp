#include "configuration/windows/PanelCambios.h"

namespace utr {
namespace {

Columnas ColumnasDeCambios() {
  return {{"NroCanal", "NroCanal", Presentacion::kTalCual, ClaseOrden::kNumero},
          {"Canal", "Canal"},
          {"Campo", "Campo"},
          {"En la UTR", "ValorUTR"},
          {"Nuevo", "ValorNuevo"}};
}

}  // namespace

PanelCambios::PanelCambios(const ContextoListas& contexto, const char* modulo, QWidget* parent)
    : PanelLista(contexto,
                 {.nombre = "Cambios",
                  .titulo = "Cambios",
                  .de_que = "los cambios",
                  .explicacion = "Lo que va a cambiar en la UTR si se acepta: cada campo que difiere de lo que se leyó "
                                 "de ella.",
                  .documento = "Cambios en los canales de la UTR",
                  .se_despliega = true,
                  .palabras = {.modulo = modulo, .procedimiento_imprimir = "ImprimirCambios"}},
                 ColumnasDeCambios(), parent) {}

}  // namespace utr
