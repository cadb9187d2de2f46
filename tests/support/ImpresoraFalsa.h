#pragma once

#include <string>
#include <vector>

#include "base/Error.h"
#include "services/Impresora.h"

namespace utr::prueba {

// Two printers that keep what they are given.
class ImpresoraFalsa : public Impresora {
 public:
  std::vector<std::string> Nombres() override { return {"Oficina", "Laboratorio"}; }
  bool Imprimir(const EleccionImpresora& eleccion, const DocumentoImpreso& documento, Progreso& progreso) override {
    if (progreso.Cancelado()) return false;
    documentos.push_back(documento);
    trabajos.push_back(eleccion.nombre + ":" + documento.texto);
    if (falla) throw Error(482, "Imprimir", "Error de impresora");
    return true;
  }
  std::vector<std::string> trabajos;
  std::vector<DocumentoImpreso> documentos;  // of each job
  bool falla = false;
};

}  // namespace utr::prueba
