#include <algorithm>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/ArmadoMinimo.h"
#include "benchmarks/retrieved/Muestras.h"
#include "benchmarks/retrieved/NueveCanales.h"
#include "driver/CanalesUTR.h"
#include "lists/ListaTabla.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/Registros.h"

// Budgets of the record builder and of the order of lists, on records as a station of nine channels keeps them.
namespace {

using namespace utr;
using medida::ArmadoMinimo;
using medida::ConfiguracionDeNueve;
using medida::Crudos;
using medida::OrigenDeNueve;

constexpr std::size_t kFilas = 262144;
constexpr std::size_t kMuchas = 1000000;
constexpr std::size_t kPocas = 100000;

std::vector<ArmadoMinimo::Canal> Canales(Tabla& configuracion, const ContextoRegistros& contexto) {
  std::vector<ArmadoMinimo::Canal> canales(16);
  for (int pila = 0; pila < simulada::kPilas; ++pila) {
    const std::uint8_t numero = medida::CanalDePila(pila);
    const std::string texto = std::to_string(numero);
    canales[numero] = {{NombreCanal(numero), DescripcionDeCanal(texto, &configuracion, contexto.catalogo),
                        UnidadDeCanal(texto, &configuracion, contexto.catalogo)},
                       64716.0 - 100 * pila,
                       pila == 8,
                       pila % 4 < 2};
  }
  return canales;
}

bool SonIguales(const Tabla& armada, const ArmadoMinimo& minimo) {
  if (armada.RecordCount() != minimo.Filas()) return false;
  for (std::size_t fila = 0; fila < minimo.Filas(); ++fila) {
    for (std::size_t campo = 0; campo < armada.FieldCount(); ++campo) {
      if (armada.Filas().Texto(fila, campo) != minimo.Texto(fila, campo)) return false;
    }
  }
  return true;
}

// Wave and noise as texts of three decimals, most of them distinct, with the marks that a list shows between them.
TablaPtr TablaDeOrden(std::size_t filas) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : {"Fecha", "Hora", "Valor"}) tabla->Append(campo, TipoCampo::kVarChar, 20);
  tabla->Open();
  tabla->Reservar(filas);
  for (std::size_t i = 0; i < filas; ++i) {
    const FechaHora fecha = FechaDeSegundos(1104537600 + static_cast<std::int64_t>(i * 7919 % filas) * 60);
    tabla->AddNew();
    tabla->Set(0, TextoFecha(fecha));
    tabla->Set(1, TextoHora(fecha));
    tabla->Set(2, fmt::format("{}.{:03}", (i * 2654435761U >> 7) % 5000, i * 40503U % 1000));
  }
  tabla->UpdateBatch();
  return tabla;
}

template <typename Clave, typename Leer>
std::vector<std::pair<Clave, std::uint32_t>> Claves(const Tabla& tabla, std::size_t campo, Leer leer) {
  std::vector<std::pair<Clave, std::uint32_t>> claves;
  for (std::uint32_t fila = 0; fila < tabla.RecordCount(); ++fila)
    claves.emplace_back(leer(tabla.Filas().Texto(fila, campo)), fila);
  return claves;
}

template <typename Clave>
void OrdenarEstandar(std::vector<std::pair<Clave, std::uint32_t>> claves) {
  std::stable_sort(claves.begin(), claves.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
}

bool MedirRegistros(const ContextoRegistros& contexto) {
  const TablaPtr configuracion = ConfiguracionDeNueve();
  const auto canales = Canales(*configuracion, contexto);
  std::size_t suma = 0;
  const auto construir = [&](const TablaPtr& origen) {
    suma += ArmarRegistrosDatos(origen, configuracion.get(), contexto)->RecordCount();
  };
  bool bien = true;
  for (const auto& [nombre, crudos] : {std::pair{"registros_armar_con_ruido", Crudos::kRuido},
                                       std::pair{"registros_armar_distintos", Crudos::kDistintos}}) {
    const TablaPtr origen = OrigenDeNueve(kFilas, crudos);
    bien &= medida::CompararTrabajo(
        nombre, 2.0, [&] { construir(origen); }, [&] { suma += ArmadoMinimo(*origen, canales).Filas(); });
    if (SonIguales(*ArmarRegistrosDatos(origen, configuracion.get(), contexto), ArmadoMinimo(*origen, canales)))
      continue;
    std::fprintf(stderr, "the compared work makes other records\n");
    bien = false;
  }

  const TablaPtr muchas = OrigenDeNueve(kMuchas, Crudos::kRuido);
  const TablaPtr pocas = OrigenDeNueve(kPocas, Crudos::kRuido);
  bien &= medida::CompararTrabajo(
      "registros_costo_fila_1000000_100000", 1.2, [&] { construir(muchas); },
      [&] {
        for (std::size_t i = 0; i < kMuchas / kPocas; ++i) construir(pocas);
      },
      7);
  return bien && suma > 0;
}

// Against a sort of keys that lie ready: the list has to read its own from the texts first.
bool MedirOrden() {
  const TablaPtr tabla = TablaDeOrden(kMuchas);
  ListaTabla lista({{"Fecha", "Fecha", Presentacion::kTalCual, ClaseOrden::kFecha},
                    {"Hora", "Hora", Presentacion::kTalCual, ClaseOrden::kHora},
                    {"Valor ", "Valor", Presentacion::kTalCual, ClaseOrden::kNumero}});
  lista.Mostrar(tabla);
  const auto fecha = [](const std::string& texto) { return Segundos(ConvertirAFecha(texto)); };
  const auto medir = [&](const char* nombre, double limite, const OrdenLista& orden, const auto& claves) {
    return medida::CompararTrabajo(
        nombre, limite, [&] { lista.Ordenar(orden); }, [&] { OrdenarEstandar(claves); });
  };
  bool bien = medir("lista_ordenar_fechas", 2.0, {0}, Claves<std::int64_t>(*tabla, 0, fecha));
  bien &= medir("lista_ordenar_horas", 2.0, {1}, Claves<std::int64_t>(*tabla, 1, fecha));
  bien &= medir("lista_ordenar_numeros", 1.5, {2},
                Claves<double>(*tabla, 2, [](const std::string& t) { return LeerDoble(t); }));
  bien &= medir("lista_ordenar_textos", 2.0, {2, false, true},
                Claves<std::string>(*tabla, 2, [](const std::string& t) { return t; }));
  return bien;
}

}  // namespace

int main() {
  bool bien = medida::ConContexto(MedirRegistros);
  bien &= MedirOrden();
  return bien ? 0 : 1;
}
