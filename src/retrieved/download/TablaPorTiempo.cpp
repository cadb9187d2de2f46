#include "retrieved/download/TablaPorTiempo.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <numeric>
#include <ostream>

#include "base/Texto.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/series/Serie.h"

namespace utr {
namespace {

constexpr std::int64_t kNunca = std::numeric_limits<std::int64_t>::max();
constexpr std::size_t kFecha = 0;  // places among the columns of the lists
constexpr std::size_t kHora = 1;
constexpr std::size_t kCanal = 2;
constexpr std::size_t kDescripcion = 3;
constexpr std::size_t kUnidad = 5;

struct CampoDeCanal {
  std::size_t columna;
  const char* palabra;  // in its title; null: that of the channel's value
  bool si_hay;          // only where the channel has any
};
constexpr std::array kCampos{CampoDeCanal{4, nullptr, false}, CampoDeCanal{7, "mínimo", true},
                             CampoDeCanal{6, "máximo", true}, CampoDeCanal{8, "validado", false}};

std::string ConPalabra(const ListaTabla& lista, const char* palabra) {
  const std::string canal = lista.Texto(0, kCanal);
  if (palabra != nullptr) return canal + ' ' + palabra;
  const std::string descripcion = lista.Texto(0, kDescripcion);
  const std::string unidad{Recortar(lista.Texto(0, kUnidad))};
  return canal + (descripcion == "-" ? "" : ' ' + descripcion) + (unidad == "-" ? "" : " (" + unidad + ')');
}

// The records of one channel in the order of their moments.
class CanalPorTiempo {
 public:
  CanalPorTiempo(const TablaPtr& tabla, const OpcionesCsv& opciones)
      : lista_(std::make_unique<ListaTabla>(ColumnasDatos())), serie_(*tabla) {
    lista_->Mostrar(tabla);
    orden_.resize(lista_->Cantidad());
    std::iota(orden_.begin(), orden_.end(), std::uint32_t{0});
    std::stable_sort(orden_.begin(), orden_.end(), [this](auto a, auto b) { return DePosicion(a) < DePosicion(b); });
    for (const std::size_t columna : {kFecha, kHora}) cuando_.emplace_back(*lista_, columna, opciones);
    for (const CampoDeCanal& campo : kCampos) {
      if (campo.si_hay && !Hay(campo.columna)) continue;
      titulos_.push_back(ConPalabra(*lista_, campo.palabra));
      campos_.emplace_back(*lista_, campo.columna, opciones);
    }
  }

  const std::vector<std::string>& Titulos() const { return titulos_; }
  bool Terminado() const { return siguiente_ == orden_.size(); }
  std::int64_t Momento() const { return DePosicion(orden_[siguiente_]); }

  void EscribirCuando(EscritorCsv& escritor) {
    for (ColumnaCsv& columna : cuando_) escritor.AgregarHecho(columna.Campo(orden_[siguiente_]));
  }
  void EscribirYSeguir(EscritorCsv& escritor) {
    for (ColumnaCsv& columna : campos_) escritor.AgregarHecho(columna.Campo(orden_[siguiente_]));
    ++siguiente_;
  }
  void EscribirNada(EscritorCsv& escritor) const {
    for (std::size_t i = 0; i < campos_.size(); ++i) escritor.AgregarHecho({});
  }

 private:
  // A row without a date is no point, and comes at the end.
  std::int64_t DePosicion(std::uint32_t posicion) const {
    const auto punto = serie_.Punto(lista_->Fila(posicion));
    return punto ? serie_.Tiempos()[*punto] : kNunca;
  }

  bool Hay(std::size_t columna) const {
    const auto textos = lista_->TextosDistintos(columna);
    return std::any_of(textos.begin(), textos.end(),
                       [](std::string_view texto) { return !texto.empty() && texto != "N/D"; });
  }

  std::unique_ptr<ListaTabla> lista_;
  Serie serie_;
  std::vector<std::uint32_t> orden_;  // positions in the list
  std::size_t siguiente_ = 0;
  std::vector<std::string> titulos_;
  std::vector<ColumnaCsv> cuando_;
  std::vector<ColumnaCsv> campos_;
};

// The channel whose next record comes first; null behind the last one.
CanalPorTiempo* Primero(std::vector<CanalPorTiempo>& canales) {
  CanalPorTiempo* primero = nullptr;
  for (CanalPorTiempo& canal : canales) {
    if (!canal.Terminado() && (primero == nullptr || canal.Momento() < primero->Momento())) primero = &canal;
  }
  return primero;
}

}  // namespace

bool EscribirPorTiempo(std::ostream& salida, const std::vector<TablaPtr>& tablas, const OpcionesCsv& opciones) {
  std::vector<CanalPorTiempo> canales;
  canales.reserve(tablas.size());
  for (const TablaPtr& tabla : tablas) canales.emplace_back(tabla, opciones);
  EscritorCsv escritor(salida, opciones);
  for (const char* titulo : {"Fecha", "Hora"}) escritor.Agregar(titulo);
  for (const CanalPorTiempo& canal : canales) {
    for (const std::string& titulo : canal.Titulos()) escritor.Agregar(titulo);
  }
  if (!escritor.TerminarFila()) return false;
  while (CanalPorTiempo* primero = Primero(canales)) {
    const std::int64_t momento = primero->Momento();
    primero->EscribirCuando(escritor);
    for (CanalPorTiempo& canal : canales) {
      // Records without a date have nothing in common.
      const bool suyo = momento == kNunca ? &canal == primero : !canal.Terminado() && canal.Momento() == momento;
      suyo ? canal.EscribirYSeguir(escritor) : canal.EscribirNada(escritor);
    }
    if (!escritor.TerminarFila()) return false;
  }
  return escritor.Terminar();
}

}  // namespace utr
