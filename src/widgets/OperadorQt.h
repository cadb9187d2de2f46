#pragma once

#include <QString>

#include "services/Operador.h"

class QWidget;

namespace utr {

// The operator in front of a real screen: Qt's boxes and dialogs, over the window that is active when they are asked
// for. Messages are plain text, their buttons read Spanish words whatever the catalogue that is loaded, and nothing
// that was typed before one was seen answers it.
class OperadorQt : public Operador {
 public:
  Respuesta Mostrar(const Mensaje& mensaje) override;
  std::optional<std::filesystem::path> ElegirAbrir(const PedidoArchivo& pedido) override;
  std::optional<std::filesystem::path> ElegirGuardar(const PedidoArchivo& pedido) override;
  std::optional<EleccionImpresora> ElegirImpresora(std::string_view titulo, const EleccionImpresora& anterior) override;
  void PunteroOcupado(bool ocupado) override;

 private:
  std::optional<std::filesystem::path> Elegir(const PedidoArchivo& pedido, bool guardar);

  QString ultima_carpeta_;
};

// A filter as the system writes it, "Texto (*.txt)|*.txt|Todos|*.*", as Qt takes it: one "Texto (*.txt)" for each pair.
QString FiltroQt(std::string_view filtro);

// A name with the extension of the filter's pair number `cual` (from 0; below 0: the first), the first one where the
// pair has several. As it is where it ends in an extension of any pair already, which then tells what is wanted, and
// for a pair that takes any file.
QString ConExtension(const QString& nombre, std::string_view filtro, int cual);

}  // namespace utr
