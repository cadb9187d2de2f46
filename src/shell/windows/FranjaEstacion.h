#pragma once

#include <QFrame>
#include <QLabel>
#include <array>

#include "session/Encabezado.h"

namespace utr {

class DisposicionEnFilas;
class EtiquetaEstado;

// The strip above the actions: which station, how it is reached, and how its clock goes.
class FranjaEstacion : public QFrame {
  Q_OBJECT

 public:
  explicit FranjaEstacion(QWidget* parent = nullptr);

  void Mostrar(const Encabezado& encabezado);
  // Who is at the other end: a screen reader is told it here, since the end of a menu bar is nothing to it.
  void DecirUnidad(const QString& unidad);

 protected:
  void changeEvent(QEvent* evento) override;

 private:
  struct Celda {
    QLabel* rotulo;
    EtiquetaEstado* dato;
    EtiquetaEstado* detalle;
  };

  Celda Agregar(const char* nombre, const char* titulo, const char* que_es, int estirado);
  void PonerLetras();
  static void Mostrar(const Celda& celda, const Dato& dato);

  DisposicionEnFilas* fila_;
  std::array<Celda, 3> celdas_{};  // station, link, clock
};

}  // namespace utr
