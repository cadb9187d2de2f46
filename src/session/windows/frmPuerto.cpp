#include "session/windows/frmPuerto.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/Numeros.h"
#include "driver/PaginaCero.h"
#include "session/AjustesEnlace.h"
#include "session/OperacionesEnlace.h"
#include "session/Puertos.h"
#include "session/windows/ParteElegible.h"
#include "session/windows/frmLibroEstaciones.h"
#include "session/windows/modCOM.h"
#include "widgets/Ayuda.h"
#include "widgets/AyudaCombos.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kCifrasPuerto = 5;

}  // namespace

frmPuerto::frmPuerto(ModRTU& mod, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      optSerie_(new QRadioButton("&Serie")),
      CPuerto_(new QComboBox),
      CVelocidad_(new QComboBox),
      optIP_(new QRadioButton("&Dirección IP")),
      DireccionIP_(new QLineEdit),
      PuertoIP_(new CampoDigitos("PuertoIP", kCifrasPuerto)),
      CmdOK_(Boton("CmdOK", "Aceptar")),
      CmdCancel_(Boton("CmdCancel", "Cancelar")),
      cmdAyuda_(Boton("cmdAyuda", "A&yuda")),
      cmdEstaciones_(Boton("cmdEstaciones", "&Estaciones...")) {
  setObjectName("frmPuerto");
  setWindowTitle("Configuración del Puerto de comunicación");
  Armar();
  Llenar();
  connect(optIP_, &QRadioButton::toggled, this, &frmPuerto::ActivarDesactivarControles);
  for (const QComboBox* lista : {CPuerto_, CVelocidad_}) {
    connect(lista, &QComboBox::currentIndexChanged, this, &frmPuerto::ActivarDesactivarControles);
  }
  connect(cmdEstaciones_, &QPushButton::clicked, this, [this] {
    if (const auto estacion = ElegirEstacion(mod_, this)) Tomar(EntradaDe(*estacion));
  });
  connect(CmdOK_, &QPushButton::clicked, this, &frmPuerto::Aceptar);
  connect(CmdCancel_, &QPushButton::clicked, this, &frmPuerto::reject);
  ServirAyuda(*cmdAyuda_, mod_.archivo_ayuda);
  ActivarDesactivarControles();
  AjustarTamano(*this, QSize(460, 0));
}

void frmPuerto::Armar() {
  optSerie_->setObjectName("optSerie");
  CPuerto_->setObjectName("CPuerto");
  CVelocidad_->setObjectName("CVelocidad");
  optIP_->setObjectName("optIP");
  DireccionIP_->setObjectName("DireccionIP");
  SinSaltosDeLinea(*DireccionIP_);
  DireccionIP_->setAccessibleName("Dirección IP");

  serie_ = new ParteElegible("fraSerie", optSerie_, 3);
  serie_->Reja()->addWidget(Rotulo("lblPuerto", "&Puerto:", CPuerto_), 1, ParteElegible::kRotulos);
  serie_->Reja()->addWidget(CPuerto_, 1, ParteElegible::kCampos);
  serie_->Reja()->addWidget(Rotulo("lblVelocidad", "&Velocidad:", CVelocidad_), 2, ParteElegible::kRotulos);
  serie_->Reja()->addWidget(CVelocidad_, 2, ParteElegible::kCampos);
  ip_ = new ParteElegible("fraIP", optIP_, 2);
  ip_->Reja()->addWidget(DireccionIP_, 0, ParteElegible::kCampos);
  ip_->Reja()->addWidget(Rotulo("lblPuertoIP", "P&uerto:", PuertoIP_), 1, ParteElegible::kRotulos);
  ip_->Reja()->addWidget(PuertoIP_, 1, ParteElegible::kCampos);
  AlinearRotulos({serie_->Reja(), ip_->Reja()});
  // The options are of two frames, so that nothing but a group holds them together.
  auto* grupo = new QButtonGroup(this);
  grupo->addButton(optSerie_);
  grupo->addButton(optIP_);
  cmdEstaciones_->setToolTip("Tomar el enlace del libro de estaciones");
  auto* partes = new QVBoxLayout;
  partes->addWidget(cmdEstaciones_, 0, Qt::AlignRight);
  partes->addWidget(serie_);
  partes->addWidget(ip_);

  ArmarDialogo(*this, partes, {.aceptar = CmdOK_, .cancelar = CmdCancel_, .ayuda = cmdAyuda_},
               {cmdEstaciones_, optSerie_, CPuerto_, CVelocidad_, optIP_, DireccionIP_, PuertoIP_});
}

void frmPuerto::Llenar() {
  CargarPuertos(*CPuerto_, PuertosFijos(mod_.puertos));
  for (const std::int32_t velocidad : pagina0::kVelocidades)
    AgregarEntrada(*CVelocidad_, QString::number(velocidad), velocidad);
  const EntradaEnlace entrada = LeerEntrada(mod_.propiedades);
  ElegirEnlace(*CPuerto_, *CVelocidad_, entrada);
  (entrada.por_ip ? optIP_ : optSerie_)->setChecked(true);
  PuertoIP_->setText(Q(entrada.puerto_ip));
  DireccionIP_->setText(Q(entrada.direccion));
}

void frmPuerto::Tomar(const EntradaEnlace& entrada) {
  (entrada.por_ip ? optIP_ : optSerie_)->setChecked(true);
  if (!entrada.por_ip) return ElegirEnlace(*CPuerto_, *CVelocidad_, entrada);
  DireccionIP_->setText(Q(entrada.direccion));
  PuertoIP_->setText(Q(entrada.puerto_ip));
}

void frmPuerto::ActivarDesactivarControles() {
  CPuerto_->setEnabled(optSerie_->isChecked());
  CVelocidad_->setEnabled(optSerie_->isChecked());
  DireccionIP_->setEnabled(optIP_->isChecked());
  PuertoIP_->setEnabled(optIP_->isChecked());
  serie_->Elegir(optSerie_->isChecked());
  ip_->Elegir(optIP_->isChecked());
  // No box tells here what is missing.
  CmdOK_->setEnabled(optIP_->isChecked() || (ValorElegido(*CPuerto_) != 0 && ValorElegido(*CVelocidad_) != 0));
}

void frmPuerto::Aceptar() {
  mod_.conexion.FijarPorIP(optIP_->isChecked());
  if (mod_.conexion.PorIP()) {
    puerto_ = std::to_string(Entero32(Val(U(PuertoIP_->text()))));
    velocidad_ = U(DireccionIP_->text());
  } else {
    puerto_ = std::to_string(ValorElegido(*CPuerto_));
    velocidad_ = std::to_string(ValorElegido(*CVelocidad_));
  }
  EscribirPuerto(mod_.propiedades, puerto_, velocidad_);
  GuardarAjustes(mod_, "frmPuerto", "CmdOK_Click", U(windowTitle()));
  Configuro = true;
  accept();
}

void frmPuerto::reject() {
  puerto_ = std::to_string(kPuertoDefecto);
  velocidad_ = std::to_string(kVelocidadDefecto);
  Configuro = false;
  QDialog::reject();
}

std::string frmPuerto::PSettings() const {
  return TextoEnlace(velocidad_);
}

void ConfigurarPuerto(ModRTU& mod, QWidget& principal) {
  const auto configurar = [&] {
    frmPuerto dialogo(mod, &principal);
    dialogo.exec();
    std::string falla;
    if (dialogo.Configuro) falla = AbrirPuerto(mod, dialogo.PSettings(), dialogo.PPuerto());
    mod.comunicador.ModoConexion(true);
    mod.conexion.Avisar();
    if (!falla.empty()) throw Error(error::kPuertoEnUso, "MsCOmm", falla);
  };
  RegistrandoYMostrando(mod.registro, mod.operador, "frmPpal", "ConfigurarPuerto", U(principal.windowTitle()),
                        Redaccion::kCompletada,
                        [&] { AlFallar(configurar, [&] { mod.conexion.MarcarConectado(false); }); });
}

}  // namespace utr
