#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "operations/AlmacenAsistentes.h"
#include "operations/ConfiguracionAsistente.h"
#include "operations/PasosAsistente.h"
#include "operations/PuestaEnMarcha.h"
#include "session/LecturaConfiguracion.h"
#include "session/ModRTU.h"

namespace utr {

struct ControlesAsistente;

// "Asistente para puesta en marcha de la UTR": takes a unit from nothing to running. Channels, schedule, identifier and
// speed are collected in four steps; nothing is written before Finish. Show it with exec() and read what follows. Esc
// and the close button cancel; while it talks to the unit it can't be closed.
class frmAsistRemota : public QDialog {
  Q_OBJECT

 public:
  // `lectura` reads the unit and keeps the backups; its table on hand isn't touched.
  frmAsistRemota(ModRTU& mod, LecturaConfiguracion& lectura, AlmacenAsistentes& almacen, QWidget* parent = nullptr);
  ~frmAsistRemota() override;

  bool Concluida = false;  // the sequence ended well

  // What a Finish left in the unit, whether it ended well or not: a write was begun; the identifier that the unit took
  // (0: it was taken away); the channels that were handed over, null where it didn't come to that.
  const ResultadoPuesta& Escrito() const noexcept { return escrito_; }

  // The speed chosen, as text.
  std::string VelPuestaMarcha() const;
  void VelPuestaMarcha(const std::string& velocidad);

  const EstadoAsistente& Estado() const noexcept { return estado_; }

  void done(int resultado) override;

 private:
  void Conectar();
  void CargarPreferencia();
  void Mostrar();
  void Enfocar();
  std::string Titulo() const;

  void Navegar(int boton);
  void SetStep(std::int16_t paso, Direccion direccion);
  void Intentar(const std::function<void()>& accion);

  bool LeeryGuardarCFG(bool hecho);
  bool CargarCanales();
  std::optional<std::filesystem::path> ElegirArchivo(FuenteAsistente fuente);
  FuenteAsistente Fuente() const;
  void MostrarCanales();
  void AtenderViento();
  void GuardarRevisada();

  bool ProcesarAgenda(bool hecho);
  void PrepararFinal();
  void LeerIdentificadorDeLaUTR();

  void DejarIdentificador();
  void CambiarOpciones();
  PedidoPuesta Pedido() const;
  void MostrarLineas(const std::vector<LineaPuesta>& lineas);
  void Finalizar();
  bool IdentificadorAdmitido();
  void Escribir();

  ModRTU& mod_;
  LecturaConfiguracion& lectura_;
  AlmacenAsistentes& almacen_;
  EstadoAsistente estado_;
  ResultadoPuesta escrito_;
  std::unique_ptr<ControlesAsistente> c_;
  bool veleta_forzada_ = false;  // the vane has periods that it was loaded without
  bool sin_regla_ = false;       // the identifier may be left as it is: the window goes, or says what is wrong with it
};

}  // namespace utr
