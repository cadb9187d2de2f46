// Any text as a scenario: it is refused in one sentence that tells its line, or it is one by which a unit lives: its
// state is taken over and given back, its faults strike what an operation gives.
#include "base/Error.h"
#include "base/Texto.h"
#include "driver/simulated/scenario/Escenario.h"
#include "fuzz/Comun.h"

namespace {

using namespace utr::simulada;
using utr::fuzz::Exigir;

constexpr std::int64_t kAhora = 1773568800;  // 15/03/2026 10:00
constexpr std::int64_t kUnaHora = 3600;

// What an operation gives: a table with dates, numbers and texts.
utr::TablaPtr TablaDeMuestra() {
  auto tabla = std::make_shared<utr::Tabla>();
  tabla->Append("Fecha", utr::TipoCampo::kVarChar, 20);
  tabla->Append("Canal", utr::TipoCampo::kEntero);
  tabla->Append("Valor", utr::TipoCampo::kDoble);
  tabla->Open();
  for (int canal = 1; canal <= 3; ++canal) {
    tabla->AddNew();
    tabla->Set("Fecha", "15/03/2026 10:00:00");
    tabla->Set("Canal", utr::Valor{std::int64_t{canal}});
    tabla->Set("Valor", utr::Valor{0.5 * canal});
  }
  tabla->UpdateBatch();
  return tabla;
}

void MirarFallas(const Escenario& escenario) {
  Fallas fallas;
  fallas.Poner(escenario.fallas);
  for (const Falla& falla : escenario.fallas) {
    const Contexto contexto{falla.pista, falla.pagina, falla.canal, falla.puerto.value_or(1),
                            falla.velocidad.value_or(9600)};
    const Fallas::Efecto efecto = fallas.Para(falla.operacion, contexto);
    Exigir(efecto.demora >= 0 && efecto.atraso >= 0, "a delay");
    const auto tabla = TablaDeMuestra();
    const auto estropeada = Estropear(falla, *tabla);
    Exigir(estropeada == nullptr || estropeada->RecordCount() <= tabla->RecordCount() + 1, "the rows of a fault");
    Estropear(falla, std::string("255,0,12,7,"));
  }
}

// The unit lives by it for an hour, and by the one of the factory after that.
void MirarUnidad(const Escenario& escenario) {
  static const Estacion fresca;
  Estacion unidad = fresca;
  unidad.registrado = kAhora - kUnaHora;
  unidad.Vivir(escenario.vida);
  AplicarEstado(unidad, {}, escenario.estado);
  unidad.Avanzar(kAhora);
  unidad.Instantaneos(kAhora);
  const Escenario fabrica;
  AplicarEstado(unidad, escenario.estado, fabrica.estado);
  Exigir(unidad.velocidad == 9600 && unidad.identificador == 120, "the unit of the factory");
  Exigir(unidad.paginas.size() <= 1, "a page, other than \"0\", that nobody tells any more");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t cuantos) {
  const std::string texto(utr::fuzz::Vista(bytes, cuantos));
  try {
    const Escenario escenario = LeerEscenarioDeTexto(texto);
    MirarFallas(escenario);
    MirarUnidad(escenario);
  } catch (const utr::Error& error) {
    Exigir(error.Numero() == utr::error::kArchivo && error.Descripcion().starts_with("línea "), "where a mistake is");
    Exigir(utr::EsUtf8(error.Descripcion()), "the words of a mistake");
  }
  return 0;
}
