#include "services/Diario.h"

namespace utr {

TablaPtr Diario::ComoTabla() const {
  constexpr std::pair<const char*, std::uint32_t> kCampos[] = {
      {"Momento", 20}, {"Comando", 50}, {"Antes", 255}, {"Escrito", 255}, {"Resultado", 255}};
  auto tabla = std::make_shared<Tabla>();
  for (const auto& [nombre, tamano] : kCampos) tabla->Append(nombre, TipoCampo::kVarChar, tamano);
  tabla->Open();
  for (const Asiento& asiento : asientos_) {
    tabla->AddNew();
    tabla->Set("Momento", TextoFechaHora(asiento.momento));
    tabla->Set("Comando", asiento.comando);
    tabla->Set("Antes", asiento.antes);
    tabla->Set("Escrito", asiento.escrito);
    tabla->Set("Resultado", asiento.resultado);
  }
  tabla->UpdateBatch();
  if (!asientos_.empty()) tabla->MoveFirst();
  return tabla;
}

}  // namespace utr
