#pragma once

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "base/Error.h"
#include "base/Texto.h"
#include "driver/Banco.h"
#include "driver/Textos.h"
#include "support/NumeroDeError.h"

namespace utr::prueba {

// The suite that every driver must pass. To try another one, give its bench to INSTANTIATE_TEST_SUITE_P.
class Contrato : public testing::TestWithParam<FabricaDeBanco> {
 protected:
  void SetUp() override { banco = GetParam().crear(); }
  Comunicador& Driver() { return banco->Driver(); }

  // The texts of all rows, cells joined by "|"; markers with their date.
  static std::vector<std::string> Filas(const TablaPtr& tabla) {
    std::vector<std::string> filas;
    if (!tabla) return {"sin tabla"};
    for (const TablaPtr clon = tabla->Clone(); !clon->Eof(); clon->MoveNext()) {
      std::string fila;
      for (std::size_t c = 0; c < clon->FieldCount(); ++c) fila += clon->Texto(c) + "|";
      filas.push_back(std::move(fila));
    }
    return filas;
  }

  std::vector<int> Pagina(const std::string& numero) {
    const auto bytes = LeerTextoPagina(Driver().LeerPagina(numero, false)).value();
    return {bytes.begin(), bytes.end()};
  }

  // Codes of the events of today, in order.
  std::vector<std::string> CodigosDeHoy() {
    const std::string hoy = TextoFecha(banco->Ahora());
    std::vector<std::string> codigos;
    for (const TablaPtr t = Driver().LeerEventos(hoy, hoy); !t->Eof(); t->MoveNext()) {
      if (t->Texto("Fecha").empty()) codigos.push_back(t->Texto("Codigo"));
    }
    return codigos;
  }

  // One text of a channel as the unit holds it.
  std::string DeCanal(int canal, const char* campo) {
    const TablaPtr t = Driver().ConfiguracionAlmacenada(true);
    t->Filter("Canal='" + std::to_string(canal) + "'");
    return t->Texto(campo);
  }

  std::unique_ptr<Banco> banco;
};

}  // namespace utr::prueba
