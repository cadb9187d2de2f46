#pragma once

#include <functional>
#include <optional>
#include <string>

#include "session/LibroEstaciones.h"
#include "session/ModRTU.h"
#include "widgets/VentanaLista.h"

class QPushButton;

namespace utr {

// "Libro de estaciones": the stations that are known, to be looked at, changed, and one of them picked. It connects
// nothing and touches no setting.
class frmLibroEstaciones : public VentanaLista {
  Q_OBJECT

 public:
  // Reads the book; where that fails, it is said, and there is only the closing left.
  explicit frmLibroEstaciones(ModRTU& mod, QWidget* parent = nullptr);
  ~frmLibroEstaciones() override;

  // The one that was picked; nothing where the window was closed.
  const std::optional<Estacion>& Elegida() const noexcept { return elegida_; }

 protected:
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  void Activar() override;

 private:
  void ArmarComandos();
  bool Intentar(const char* procedimiento, const std::function<void()>& hacer);
  void Leer();
  void Mostrar(const std::string& elegida = {});
  const Estacion* Actual() const;
  bool ConfirmarPuerto(const Estacion& estacion);
  void Nueva();
  void Modificar();
  void Borrar();
  void Importar();
  void Exportar();

  ModRTU& mod_;
  LibroEstaciones libro_;
  bool leido_ = false;
  std::optional<Estacion> elegida_;
  QPushButton* cmdElegir_;
  PanelAviso* vacio_;
  PanelAviso* ilegible_;
  TablaPtr filas_;
};

// Lets the operator pick a station of the book over that window; nothing where none was picked.
std::optional<Estacion> ElegirEstacion(ModRTU& mod, QWidget* parent);

}  // namespace utr
