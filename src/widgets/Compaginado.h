#pragma once

#include <QFont>
#include <QRectF>
#include <string_view>
#include <vector>

#include "services/Impresora.h"
#include "widgets/AnchoTexto.h"

class QPagedPaintDevice;
class QPainter;

namespace utr {

// A document laid out in pages for one device, to be drawn page by page in any order. Columns are as wide as their
// widest text; lines that are wider than the page are drawn smaller, down to a readable size, and then wrapped. Each
// page bears the column titles and a foot with its number.
//
// The document must live as long as this does. Texts are drawn in units of the device's dots, whoever paints.
class Compaginado {
 public:
  // Lays it out. `letra`: the family; its size is found here. Tells the lines that are measured; once cancelled it has
  // no pages.
  Compaginado(const DocumentoImpreso& documento, const QPagedPaintDevice& dispositivo, const QFont& letra,
              Progreso& progreso);

  int Paginas() const { return static_cast<int>(comienzos_.size()); }

  // The area that pages are drawn in, in dots.
  QSizeF Area() const { return area_.size(); }

  // Draws a page, from 0, at the origin of the painter.
  void Dibujar(QPainter& pintor, int pagina) const;

 private:
  using Lineas = std::vector<std::string_view>;

  // The widths of a document in one size of the letter.
  struct Medidas {
    double suelto = 0;  // the widest line without tabs
    std::vector<double> columnas{};
    double espacio = 0;

    double Total() const;
  };

  // The first line of a page, and how much of its height stands on the pages before.
  struct Comienzo {
    std::size_t linea = 0;
    double saltado = 0;
  };

  bool Medir(Progreso& progreso);
  void MedirLinea(std::string_view linea);
  void Encajar();
  bool Paginar(Progreso& progreso);
  double AltoUtil() const;
  double Renglones(double alto) const;
  void FijarLetra(double puntos);
  double AltoDe(std::string_view linea) const;
  double AltoDeCelda(std::string_view celda, double ancho) const;
  double DibujarLinea(QPainter& pintor, std::size_t linea, double y) const;
  void DibujarPie(QPainter& pintor, int pagina) const;
  double AnchoDeCelda(std::size_t columna, bool con_columnas) const;
  bool Repite(std::size_t linea) const { return documento_.titulos && linea > *documento_.titulos; }
  static Lineas Celdas(std::string_view linea);

  const DocumentoImpreso& documento_;
  QRectF area_;
  double puntos_por_pulgada_;
  QFont letra_;
  AnchoTexto ancho_;
  double alto_linea_ = 0;
  double alto_titulos_ = 0;
  Medidas medidas_;
  bool todo_cabe_ = true;  // no cell is wider than its column, so that every line is as high as the others
  Lineas lineas_;
  std::vector<Comienzo> comienzos_;  // of each page
};

}  // namespace utr
