#include <QApplication>
#include <QTreeView>

#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/Muestras.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/Registros.h"
#include "widgets/VistaLista.h"

// Budgets of the list widget: from a built table to painted rows with fitted columns.
namespace {

using namespace utr;

constexpr std::size_t kFilas = 262144;
constexpr std::size_t kMuchas = 1000000;
constexpr std::size_t kPocas = 100000;

void Mostrar(VistaLista& vista, const TablaPtr& tabla) {
  vista.Mostrar(tabla);
  vista.Arbol()->scrollToBottom();
  vista.Arbol()->repaint();
}

bool Medir(const ContextoRegistros& contexto) {
  const TablaPtr configuracion = medida::Configuracion();
  const auto construir = [&](const TablaPtr& origen) {
    return ArmarRegistrosDatos(origen, configuracion.get(), contexto);
  };
  VistaLista vista(ColumnasDatos());
  vista.resize(1000, 600);
  vista.show();
  QApplication::processEvents();

  const TablaPtr origen = medida::Origen(kFilas);
  const TablaPtr registros = construir(origen);
  bool bien = medida::Comparar(
      "lista_mostrar_262144", 0.5, [&] { Mostrar(vista, registros); }, [&] { construir(origen); });

  const TablaPtr muchas = construir(medida::Origen(kMuchas));
  const TablaPtr pocas = construir(medida::Origen(kPocas));
  bien &= medida::Comparar(
      "lista_costo_fila_1000000_100000", 1.2, [&] { Mostrar(vista, muchas); },
      [&] {
        for (std::size_t i = 0; i < kMuchas / kPocas; ++i) Mostrar(vista, pocas);
      });
  return bien;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication aplicacion(argc, argv);
  return medida::ConContexto(Medir) ? 0 : 1;
}
