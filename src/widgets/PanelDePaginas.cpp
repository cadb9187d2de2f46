#include "widgets/PanelDePaginas.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QScopeGuard>

#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr const char* kPanel = "picPaginas";

// Tells a panel how far the work is. Events run each time that it is asked whether to go on, so that a click on the
// button of the panel is heard.
class ProgresoEnPanel : public SinProgreso {
 public:
  ProgresoEnPanel(PanelAviso& panel, const bool& cancelado) : panel_(panel), cancelado_(cancelado) {}
  void Texto(std::string_view texto) override { panel_.Detallar(Q(texto)); }
  bool Cancelado() override {
    QCoreApplication::processEvents();
    return cancelado_;
  }

 private:
  PanelAviso& panel_;
  const bool& cancelado_;
};

PanelAviso* PanelFlotante(QWidget& ventana) {
  auto* panel = ventana.findChild<PanelAviso*>(QString::fromLatin1(kPanel), Qt::FindDirectChildrenOnly);
  if (panel != nullptr) return panel;
  panel =
      new PanelAviso(kPanel, QStringLiteral("Esta operación demorará unos instantes. Por favor espere..."), &ventana);
  panel->Flotar();
  panel->ReservarDetalle();
  return panel;
}

}  // namespace

void ConPanelDePaginas(QWidget& ventana, OpcionesOcupacion opciones, const TrabajoDePaginas& trabajo) {
  bool cancelado = false;
  PanelAviso& panel = *opciones.panel;
  QPushButton* cancelar = panel.Boton("cmdCancelarPanel", QStringLiteral("&Cancelar"));
  cancelar->show();
  const auto conexion = QObject::connect(cancelar, &QPushButton::clicked, &ventana, [&cancelado] { cancelado = true; });
  const auto fin = qScopeGuard([&panel, cancelar, conexion] {
    QObject::disconnect(conexion);
    panel.Detallar({});
    cancelar->hide();
  });
  opciones.siguen.push_back(cancelar);
  opciones.al_cancelar = [&cancelado] { cancelado = true; };
  const Ocupacion ocupacion(ventana, opciones);
  ProgresoEnPanel progreso(panel, cancelado);
  trabajo(progreso);
}

void ConPanelDePaginas(const QWidget& parte, const TrabajoDePaginas& trabajo) {
  QWidget& ventana = *parte.window();
  OpcionesOcupacion opciones;
  opciones.panel = PanelFlotante(ventana);
  for (QWidget* hijo : ventana.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (hijo != opciones.panel) opciones.apagados.push_back(hijo);
  }
  ConPanelDePaginas(ventana, std::move(opciones), trabajo);
}

}  // namespace utr
