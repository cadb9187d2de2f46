#include "session/windows/frmEstacion.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>
#include <vector>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/PaginaCero.h"
#include "session/Puertos.h"
#include "widgets/AyudaCombos.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kCifras = 5;
constexpr int kLineasNotas = 4;
constexpr int kMargenNotas = 12;
constexpr int kAncho = 480;
constexpr MedioEstacion kMedios[] = {MedioEstacion::kSimulado, MedioEstacion::kSerie, MedioEstacion::kTelefono,
                                     MedioEstacion::kIP};

QComboBox* Combo(const char* nombre) {
  auto* combo = new QComboBox;
  combo->setObjectName(QString::fromLatin1(nombre));
  return combo;
}

std::int32_t NumeroDe(const QLineEdit& campo) {
  return Entero32(Val(U(campo.text())));
}

}  // namespace

frmEstacion::frmEstacion(ModRTU& mod, const LibroEstaciones& libro, const Estacion* propia, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      libro_(libro),
      propia_(propia == nullptr ? std::string() : propia->nombre),
      estacion_(propia == nullptr ? Estacion() : *propia),
      txtNombre_(new CampoTexto("txtNombre")),
      txtLugar_(new CampoTexto("txtLugar")),
      txtIdentificador_(new CampoDigitos("txtIdentificador", kCifras)),
      cboMedio_(Combo("cboMedio")),
      cboPuerto_(Combo("cboPuerto")),
      cboVelocidad_(Combo("cboVelocidad")),
      txtTelefono_(new CampoTexto("txtTelefono")),
      txtComandos_(new CampoTexto("txtComandos")),
      txtDireccion_(new CampoTexto("txtDireccion")),
      txtPuertoIP_(new CampoDigitos("txtPuertoIP", kCifras)),
      txtNotas_(new QPlainTextEdit) {
  setObjectName("frmEstacion");
  setWindowTitle(propia == nullptr ? "Nueva estación" : "Modificar estación");
  txtNotas_->setObjectName("txtNotas");
  txtNotas_->setTabChangesFocus(true);
  txtNotas_->setFixedHeight(kLineasNotas * txtNotas_->fontMetrics().lineSpacing() + kMargenNotas);
  QPushButton* aceptar = Boton("CmdOK", "Aceptar");
  QPushButton* cancelar = Boton("CmdCancel", "Cancelar");
  ArmarDialogo(*this, ArmarCuerpo(), {.aceptar = aceptar, .cancelar = cancelar},
               {txtNombre_, txtLugar_, txtIdentificador_, cboMedio_, cboPuerto_, cboVelocidad_, txtTelefono_,
                txtComandos_, txtDireccion_, txtPuertoIP_, txtNotas_});
  Llenar();
  connect(cboMedio_, &QComboBox::currentIndexChanged, this, &frmEstacion::SegunElMedio);
  connect(aceptar, &QPushButton::clicked, this, &frmEstacion::Aceptar);
  connect(cancelar, &QPushButton::clicked, this, &frmEstacion::reject);
  SegunElMedio();
  AjustarTamano(*this, {kAncho, 0});
}

QLayout* frmEstacion::ArmarCuerpo() {
  auto* reja = new QFormLayout;
  const auto fila = [&](const char* nombre, const char* rotulo, QWidget* campo) {
    reja->addRow(Rotulo(nombre, QString::fromUtf8(rotulo), campo), campo);
  };
  fila("lblNombre", "&Nombre:", txtNombre_);
  fila("lblLugar", "&Lugar:", txtLugar_);
  fila("lblIdentificador", "&Identificador:", txtIdentificador_);
  fila("lblMedio", "&Enlace:", cboMedio_);
  fila("lblPuerto", "P&uerto:", cboPuerto_);
  fila("lblVelocidad", "&Velocidad:", cboVelocidad_);
  fila("lblTelefono", "&Teléfono:", txtTelefono_);
  fila("lblComandos", "Comandos &MODEM:", txtComandos_);
  fila("lblDireccion", "&Dirección IP:", txtDireccion_);
  fila("lblPuertoIP", "&Puerto IP:", txtPuertoIP_);
  fila("lblNotas", "N&otas:", txtNotas_);
  txtIdentificador_->setToolTip("Cero (0) si se desconoce");
  txtComandos_->setToolTip("Vacío: los del archivo comandosAT.dat");
  return reja;
}

void frmEstacion::Llenar() {
  for (const MedioEstacion medio : kMedios) {
    const std::string_view texto = TextoDe(medio);
    AgregarEntrada(*cboMedio_, QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size())),
                   static_cast<std::int32_t>(medio));
  }
  for (std::int32_t puerto = 1; puerto <= kUltimoPuertoSerie; ++puerto)
    AgregarEntrada(*cboPuerto_, Q(TextoPuerto(puerto)), puerto);
  for (const std::int32_t velocidad : pagina0::kVelocidades)
    AgregarEntrada(*cboVelocidad_, QString::number(velocidad), velocidad);
  txtNombre_->setText(Q(estacion_.nombre));
  txtLugar_->setText(Q(estacion_.lugar));
  txtIdentificador_->setText(QString::number(estacion_.identificador));
  SeleccionarValor(*cboMedio_, static_cast<std::int32_t>(estacion_.medio));
  SeleccionarValor(*cboPuerto_, estacion_.puerto);
  SeleccionarValor(*cboVelocidad_, estacion_.velocidad);
  txtTelefono_->setText(Q(estacion_.telefono));
  txtComandos_->setText(Q(estacion_.comandos));
  txtDireccion_->setText(Q(estacion_.direccion));
  txtPuertoIP_->setText(QString::number(estacion_.puerto_ip));
  txtNotas_->setPlainText(Q(estacion_.notas));
}

void frmEstacion::SegunElMedio() {
  const auto medio = static_cast<MedioEstacion>(ValorElegido(*cboMedio_));
  const auto habilitar = [this](bool si, std::initializer_list<QWidget*> campos) {
    for (QWidget* campo : campos) {
      campo->setEnabled(si);
      for (QLabel* rotulo : findChildren<QLabel*>()) {
        if (rotulo->buddy() == campo) rotulo->setEnabled(si);
      }
    }
  };
  habilitar(medio != MedioEstacion::kIP, {cboPuerto_, cboVelocidad_});
  habilitar(medio == MedioEstacion::kTelefono, {txtTelefono_, txtComandos_});
  habilitar(medio == MedioEstacion::kIP, {txtDireccion_, txtPuertoIP_});
}

Estacion frmEstacion::Escrita() const {
  return {.nombre = U(txtNombre_->text().trimmed()),
          .lugar = U(txtLugar_->text()),
          .identificador = NumeroDe(*txtIdentificador_),
          .medio = static_cast<MedioEstacion>(ValorElegido(*cboMedio_)),
          .puerto = ValorElegido(*cboPuerto_),
          .velocidad = ValorElegido(*cboVelocidad_),
          .telefono = U(txtTelefono_->text()),
          .comandos = U(txtComandos_->text()),
          .direccion = U(txtDireccion_->text().trimmed()),
          .puerto_ip = NumeroDe(*txtPuertoIP_),
          .notas = U(txtNotas_->toPlainText())};
}

QWidget* frmEstacion::CampoDe(CampoEstacion campo) const {
  QWidget* const campos[] = {txtNombre_,   txtLugar_,    txtIdentificador_, cboPuerto_,   cboVelocidad_,
                             txtTelefono_, txtComandos_, txtDireccion_,     txtPuertoIP_, txtNotas_};
  return campos[static_cast<std::size_t>(campo)];
}

// All in one box; the operator finds himself at the first field that is wrong.
void frmEstacion::Aceptar() {
  Estacion escrita = Escrita();
  std::vector<ReparoEstacion> reparos = ReparosDe(escrita);
  if (libro_.Buscar(escrita.nombre) != nullptr && !IgualSinCaso(escrita.nombre, propia_))
    reparos.insert(reparos.begin(), {CampoEstacion::kNombre, "Ya hay otra estación con ese nombre"});
  if (reparos.empty()) {
    estacion_ = std::move(escrita);
    return accept();
  }
  std::vector<std::string> lineas;
  lineas.reserve(reparos.size());
  for (const ReparoEstacion& reparo : reparos) lineas.push_back(reparo.texto);
  Informar(mod_.operador, U(windowTitle()), "Debe completar lo siguiente:\n" + Unir(lineas, "\n"));
  CampoDe(reparos.front().campo)->setFocus();
}

}  // namespace utr
