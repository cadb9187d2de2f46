#include <algorithm>
#include <charconv>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/Muestras.h"
#include "benchmarks/retrieved/NueveCanales.h"
#include "lists/ListaTabla.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/Registros.h"

// Budgets of the record builder and of the order of lists, on records as a station of nine channels keeps them.
namespace {

using namespace utr;
using medida::ConfiguracionDeNueve;
using medida::CrudoDeNueve;
using medida::Crudos;
using medida::OrigenDeNueve;

constexpr std::size_t kFilas = 262144;
constexpr std::size_t kMuchas = 1000000;
constexpr std::size_t kPocas = 100000;

// The texts of the same raw numbers, and the loop that does nothing but scale and format them.
class Plano {
 public:
  Plano(std::size_t muestras, Crudos crudos) {
    for (std::size_t i = 0; i < muestras; ++i) {
      for (std::size_t campo = 3; campo < 6; ++campo) crudos_.push_back(std::to_string(CrudoDeNueve(i, campo, crudos)));
    }
  }

  std::size_t Escalar() const {
    std::vector<std::string> textos;
    textos.reserve(crudos_.size());
    constexpr std::size_t kPorVuelta = std::size_t{3} * simulada::kPilas;
    for (std::size_t i = 0; i < crudos_.size(); ++i) {
      int crudo = 0;
      std::from_chars(crudos_[i].data(), crudos_[i].data() + crudos_[i].size(), crudo);
      const auto pila = static_cast<int>(i % kPorVuelta / 3);
      const double valor = ((crudo - 819.0) * 14.5) / (64716 - 100 * pila) + 1;
      char texto[32];
      textos.emplace_back(texto, std::to_chars(texto, texto + sizeof texto, valor, std::chars_format::fixed, 3).ptr);
    }
    return textos.size() + textos.back().size();
  }

 private:
  std::vector<std::string> crudos_;
};

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
  std::size_t suma = 0;
  const auto construir = [&](const TablaPtr& origen) {
    suma += ArmarRegistrosDatos(origen, configuracion.get(), contexto)->RecordCount();
  };
  bool bien = true;
  for (const auto& [nombre, crudos] : {std::pair{"registros_armar_con_ruido", Crudos::kRuido},
                                       std::pair{"registros_armar_distintos", Crudos::kDistintos}}) {
    const TablaPtr origen = OrigenDeNueve(kFilas, crudos);
    const Plano plano(kFilas, crudos);
    bien &= medida::CompararTrabajo(
        nombre, 2.0, [&] { construir(origen); }, [&] { suma += plano.Escalar(); });
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
