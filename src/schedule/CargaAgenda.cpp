#include "schedule/CargaAgenda.h"

#include "base/Numeros.h"
#include "driver/PaginaCero.h"
#include "unit/PaginaUnidad.h"

namespace utr {

void AgregarHorarios(FDLHorarios& horarios, Tabla& tabla) {
  const auto si = [&tabla](const char* campo) { return tabla.Texto(campo) == "Si"; };
  if (tabla.RecordCount() > 0) tabla.MoveFirst();
  for (; !tabla.Eof(); tabla.MoveNext()) {
    const std::string minuto = tabla.Texto("HorarioInteger");
    if (minuto.empty() || tabla.Texto("Descripcion") != "OK") continue;
    const FDLHoraroPtr horario = horarios.Add(LeerEntero16(minuto));
    horario->TCond = si("TCond");
    horario->TOblig = si("TOblig");
    horario->TWind = si("TWind");
  }
}

void CargarAgenda(FDLHorarios& horarios, Tabla& tabla, Comunicador& comunicador) {
  AgregarHorarios(horarios, tabla);
  horarios.DuracionVentana = PaginaUnidad::Leer(comunicador, pagina0::kNumero).Par(pagina0::kVentana);
}

}  // namespace utr
