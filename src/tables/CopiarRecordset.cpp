#include "tables/DatosTabla.h"
#include "tables/Tabla.h"

namespace utr {

TablaPtr CopiarRecordset(Tabla& origen, bool con_datos) {
  auto copia = std::make_shared<Tabla>();
  for (std::size_t i = 0; i < origen.FieldCount(); ++i) copia->datos_->AgregarCampo(origen.Field(i));
  copia->Open();
  if (!con_datos) return copia;
  const std::size_t cuantas = origen.RecordCount();
  if (cuantas == 0) {
    copia->AddNew();
    for (std::size_t i = 0; i < copia->FieldCount(); ++i) {
      if (ClaseDe(copia->Field(i).tipo) == Clase::kLogico) copia->Set(i, Valor{false});
    }
  } else {
    copia->Reservar(cuantas);
    for (origen.MoveFirst(); !origen.Eof(); origen.MoveNext()) {
      copia->AddNew();
      for (std::size_t i = 0; i < copia->FieldCount(); ++i) copia->Set(i, origen.Value(i));
    }
  }
  copia->UpdateBatch();
  copia->MoveFirst();
  return copia;
}

}  // namespace utr
