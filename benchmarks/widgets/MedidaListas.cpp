#include <QAbstractTableModel>
#include <QApplication>
#include <QTreeView>
#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/Muestras.h"
#include "benchmarks/retrieved/NueveCanales.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/Registros.h"
#include "widgets/VistaLista.h"

// Budgets of the list widget: from a built table to painted rows with fitted columns, on records of nine channels.
namespace {

using namespace utr;

constexpr std::size_t kFilas = 262144;
constexpr std::size_t kMuchas = 1000000;
constexpr std::size_t kPocas = 100000;
constexpr QSize kTamano(1000, 600);

void Mostrar(VistaLista& vista, const TablaPtr& tabla) {
  vista.Mostrar(tabla);
  vista.Arbol()->scrollToBottom();
  vista.Arbol()->repaint();
}

// The texts of a table, and nothing else.
class ModeloPelado : public QAbstractTableModel {
 public:
  void Mostrar(TablaPtr tabla) {
    beginResetModel();
    tabla_ = std::move(tabla);
    endResetModel();
  }
  int rowCount(const QModelIndex& padre = {}) const override {
    return padre.isValid() || !tabla_ ? 0 : static_cast<int>(tabla_->RecordCount());
  }
  int columnCount(const QModelIndex& padre = {}) const override {
    return padre.isValid() || !tabla_ ? 0 : static_cast<int>(tabla_->FieldCount());
  }
  QVariant data(const QModelIndex& indice, int papel) const override {
    if (papel != Qt::DisplayRole) return {};
    return QString::fromStdString(
        tabla_->Filas().Texto(static_cast<std::size_t>(indice.row()), static_cast<std::size_t>(indice.column())));
  }

 private:
  TablaPtr tabla_;
};

// A bare view of the same rows, with the least that it takes to fit its columns: the widths of the letters of each
// distinct text together.
class VistaPelada {
 public:
  VistaPelada() {
    vista_.setModel(&modelo_);
    vista_.setUniformRowHeights(true);
    vista_.resize(kTamano);
    vista_.show();
    const QFontMetricsF medidas(vista_.font());
    for (std::size_t i = 0; i < anchos_.size(); ++i)
      anchos_[i] = medidas.horizontalAdvance(QChar(static_cast<char16_t>(i)));
  }

  void Mostrar(const TablaPtr& tabla) {
    modelo_.Mostrar(tabla);
    for (std::size_t campo = 0; campo < tabla->FieldCount(); ++campo)
      vista_.setColumnWidth(static_cast<int>(campo), Ancho(tabla->Textos(campo)));
    vista_.scrollToBottom();
    vista_.repaint();
  }

  QString Texto(std::size_t fila, int campo) const {
    return modelo_.index(static_cast<int>(fila), campo).data().toString();
  }
  int AnchoDe(int campo) const { return vista_.columnWidth(campo); }

 private:
  int Ancho(const TextosColumna& textos) const {
    double mayor = 0;
    for (std::size_t n = 1; n <= textos.Cantidad(); ++n) {
      double ancho = 0;
      for (const char c : textos.Texto(n)) ancho += anchos_[static_cast<unsigned char>(c)];
      mayor = std::max(mayor, ancho);
    }
    return static_cast<int>(mayor);
  }

  ModeloPelado modelo_;
  QTreeView vista_;
  std::array<double, 256> anchos_{};
};

// What the list makes of the text that the bare view shows.
QString Presentado(const ColumnaLista& columna, const QString& texto) {
  switch (columna.presentacion) {
    case Presentacion::kGuionSiNulo:
      return texto.isEmpty() ? QStringLiteral("-") : texto;
    case Presentacion::kNoSi:
      return texto.toDouble() == 0 ? QStringLiteral("No") : QStringLiteral("Si");
    default:
      return texto;
  }
}

// Whether both show the same rows: each cell of one column, in a width that has room for all of them.
bool EsIgual(VistaLista& vista, int i, const VistaPelada& pelada, const Tabla& tabla) {
  const ColumnaLista columna = ColumnasDatos()[static_cast<std::size_t>(i)];
  int campo = 0;
  while (tabla.Field(static_cast<std::size_t>(campo)).nombre != columna.campo) ++campo;
  if (columna.presentacion == Presentacion::kTalCual && vista.Arbol()->columnWidth(i) < pelada.AnchoDe(campo))
    return false;
  const QAbstractItemModel& modelo = *vista.Arbol()->model();
  for (std::size_t fila = 0; fila < tabla.RecordCount(); ++fila) {
    const QString texto = modelo.index(static_cast<int>(fila), i).data().toString();
    if (texto != Presentado(columna, pelada.Texto(fila, campo))) return false;
  }
  return true;
}

bool SonIguales(VistaLista& vista, const VistaPelada& pelada, const Tabla& tabla) {
  const int columnas = static_cast<int>(ColumnasDatos().size());
  bool iguales = static_cast<std::size_t>(vista.Arbol()->model()->rowCount()) == tabla.RecordCount() &&
                 vista.Arbol()->model()->columnCount() == columnas;
  for (int i = 0; iguales && i < columnas; ++i) iguales = EsIgual(vista, i, pelada, tabla);
  if (!iguales) std::fprintf(stderr, "the compared view shows other rows\n");
  return iguales;
}

bool Medir(const ContextoRegistros& contexto) {
  const TablaPtr configuracion = medida::ConfiguracionDeNueve();
  const auto construir = [&](std::size_t filas) {
    const TablaPtr origen = medida::OrigenDeNueve(filas, medida::Crudos::kDistintos);
    return ArmarRegistrosDatos(origen, configuracion.get(), contexto);
  };
  VistaLista vista(ColumnasDatos());
  vista.resize(kTamano);
  vista.show();
  QApplication::processEvents();

  const TablaPtr registros = construir(kFilas);
  VistaPelada pelada;
  QApplication::processEvents();
  bool bien = medida::CompararTrabajo(
      "lista_mostrar_262144", 1.5, [&] { Mostrar(vista, registros); }, [&] { pelada.Mostrar(registros); });
  bien &= SonIguales(vista, pelada, *registros);

  const TablaPtr muchas = construir(kMuchas);
  const TablaPtr pocas = construir(kPocas);
  bien &= medida::CompararTrabajo(
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
