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
  void Imprimir(std::string_view nombre, std::string_view texto, LetraImpresion letra) override {
    letras.push_back(letra);
    trabajos.push_back(std::string(nombre) + ":" + std::string(texto));
    if (falla) throw Error(482, "Imprimir", "Error de impresora");
  }
  std::vector<std::string> trabajos;
  std::vector<LetraImpresion> letras;  // of each job
  bool falla = false;
};

}  // namespace utr::prueba
