#include "session/windows/EsperaDeUnidad.h"

#include <QPushButton>
#include <QTimer>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "session/ModRTU.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kCada = 500;  // milliseconds between two looks at the figures

// The station in the program's own process gives a read all at once.
bool PuedeCancelar(const ModRTU& mod) {
  return mod.situacion != nullptr && mod.situacion->Clase() != ClaseDeUnidad::kSimulada;
}

CuentaDeLinea CuentaDe(const ModRTU& mod) {
  return mod.situacion == nullptr ? CuentaDeLinea{} : mod.situacion->Cuenta();
}

}  // namespace

EsperaDeUnidad::EsperaDeUnidad(ModRTU& mod, OpcionesOcupacion& opciones, Cancelable cancelable)
    : mod_(mod),
      panel_(*opciones.panel),
      desde_(TextoHora(mod.reloj.Ahora())),
      comienzo_(mod.reloj.Milisegundos()),
      al_comenzar_(CuentaDe(mod)) {
  if (cancelable == Cancelable::kSiempre || PuedeCancelar(mod)) PonerBoton(opciones);
  Mostrar();
  auto* cada_tanto = new QTimer(this);
  connect(cada_tanto, &QTimer::timeout, this, &EsperaDeUnidad::Mostrar);
  cada_tanto->start(kCada);
}

EsperaDeUnidad::~EsperaDeUnidad() {
  panel_.Detallar({});
  if (boton_ != nullptr) boton_->hide();
}

void EsperaDeUnidad::PonerBoton(OpcionesOcupacion& opciones) {
  boton_ = panel_.Boton("CancelarLectura", QStringLiteral("Cancelar"));
  boton_->setEnabled(true);
  boton_->show();
  connect(boton_, &QPushButton::clicked, this, &EsperaDeUnidad::Cancelar);
  opciones.siguen.push_back(boton_);
  opciones.al_cancelar = [this] { Cancelar(); };
}

void EsperaDeUnidad::Cancelar() {
  cancelada_ = true;
  if (boton_ != nullptr) boton_->setEnabled(false);
  mod_.comunicador.Cancelar(false);
}

bool EsperaDeUnidad::Llamar(const std::function<void()>& llamada) {
  const auto falla = FallaDe(llamada);
  if (falla && falla->Numero() == error_enlace::kCancelada && cancelada_) return false;
  if (falla) throw Error(*falla);
  return true;
}

void EsperaDeUnidad::Mostrar() {
  QString texto = QStringLiteral("Esperando a la UTR desde las ") + Q(desde_);
  if (const auto segundos = (mod_.reloj.Milisegundos() - comienzo_) / 1000; segundos > 0)
    texto += QStringLiteral(" (%1\u00a0s)").arg(segundos);
  const CuentaDeLinea ahora = CuentaDe(mod_);
  const CuentaDeLinea cuenta{.enviados = ahora.enviados - al_comenzar_.enviados,
                             .recibidos = ahora.recibidos - al_comenzar_.recibidos,
                             .reintentos = ahora.reintentos - al_comenzar_.reintentos,
                             .paginas = ahora.paginas - al_comenzar_.paginas};
  if (const std::string linea = TextoDe(cuenta); !linea.empty()) texto += QStringLiteral(": ") + Q(linea);
  panel_.Detallar(texto);
}

}  // namespace utr
