#include "configuration/windows/ControlesSensor.h"

#include <QButtonGroup>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "widgets/Campos.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/Iconos.h"
#include "widgets/MarcoDialogo.h"

namespace utr {
namespace {

using C = CampoSensor;

// The dialog holds some forty controls: it must fit the screen of a small laptop, with larger letters too.
constexpr int kEntreRenglones = 3;
constexpr int kEntreMarcos = 6;
constexpr int kLadoDeMarco = 6;
constexpr int kEntreDatos = 18;
// Figures that a field shows beside its mark; longer texts scroll.
constexpr int kCifrasDeTiempo = 5;
constexpr int kCifrasDeValor = 8;
constexpr int kBordesYMarca = 36;

template <class Control>
Control* Nombrado(Control* control, const char* nombre) {
  control->setObjectName(QString::fromLatin1(nombre));
  return control;
}

QFrame* SinTitulo(const char* nombre) {
  auto* marco = Nombrado(new QFrame, nombre);
  marco->setFrameShape(QFrame::NoFrame);
  return marco;
}

void Apretar(QLayout& disposicion, int margen = kLadoDeMarco) {
  disposicion.setContentsMargins(margen, margen == 0 ? 0 : 4, margen, margen == 0 ? 0 : 4);
  disposicion.setSpacing(kEntreRenglones);
}

QLineEdit* SoloMuestra(const char* nombre, int letras) {
  auto* campo = Nombrado(new QLineEdit, nombre);
  campo->setReadOnly(true);
  campo->setFocusPolicy(Qt::ClickFocus);
  campo->setMaximumWidth(campo->fontMetrics().horizontalAdvance(QString(letras, QChar('0'))) + 24);
  return campo;
}

// What it shows comes from a unit or a file: no mark-up is read in it.
QLabel* Muestra(const char* nombre) {
  auto* rotulo = Nombrado(new QLabel, nombre);
  rotulo->setTextFormat(Qt::PlainText);
  return rotulo;
}

// What belongs together stays so where the others go to the next row.
QHBoxLayout* Juntos(std::initializer_list<QWidget*> controles) {
  auto* fila = new QHBoxLayout;
  fila->setSpacing(kEntreMarcos);
  for (QWidget* control : controles) fila->addWidget(control);
  return fila;
}

QCheckBox* Opcion(const char* nombre, const QString& texto) {
  return Nombrado(new QCheckBox(texto), nombre);
}

QComboBox* Lista(const char* nombre) {
  auto* lista = Nombrado(new QComboBox, nombre);
  lista->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  lista->setMinimumContentsLength(14);
  return lista;
}

QToolButton* Flecha(Qt::ArrowType flecha, const QString& nombre) {
  auto* boton = new QToolButton;
  boton->setArrowType(flecha);
  boton->setAccessibleName(nombre);
  boton->setAutoRepeat(true);
  boton->setFocusPolicy(Qt::NoFocus);
  boton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  boton->setFixedWidth(18);
  return boton;
}

PasosSensor Pasos(const QString& nombre, const QString& rotulo) {
  PasosSensor pasos;
  pasos.todo = new QWidget;
  pasos.todo->setObjectName(nombre);
  pasos.sube = Flecha(Qt::UpArrow, QStringLiteral("Aumentar: ") + rotulo);
  pasos.baja = Flecha(Qt::DownArrow, QStringLiteral("Disminuir: ") + rotulo);
  auto* columna = new QVBoxLayout(pasos.todo);
  columna->setContentsMargins(0, 0, 0, 0);
  columna->setSpacing(0);
  columna->addWidget(pasos.sube);
  columna->addWidget(pasos.baja);
  return pasos;
}

}  // namespace

void CampoDeSensor::Habilitar(bool si) const {
  rotulo->setEnabled(si);
  campo->setEnabled(si);
  if (pasos.todo != nullptr) pasos.todo->setEnabled(si);
}

void CampoDeSensor::Mostrar(bool si) const {
  rotulo->setVisible(si);
  campo->setVisible(si);
  if (pasos.todo != nullptr) pasos.todo->setVisible(si);
}

ControlesSensor::ControlesSensor(QDialog& dialogo) {
  for (const C campo : Periodos()) {
    HacerCampo(DatosDe(campo), QStringLiteral("UpD") + QString::fromLatin1(DatosDe(campo).control));
  }
  for (const auto campos : {Validaciones(), Alarmas(), SensorCFG()}) {
    for (const C campo : campos) HacerCampo(DatosDe(campo), {});
  }
  HacerCampo(DatosDe(C::kNivRefLmn), {});
  HacerCampo(DatosDe(C::kPluviometro), QStringLiteral("UpDCtePluvi"));
  ArmarFramePPal();
  ArmarFrameCFG();
  ArmarFrame16();
  ArmarOpciones();
  QLayout* predefinidas = ArmarPredefinidas();
  ArmarReparos();
  ArmarRonda();
  cmdAceptar = Boton("cmd(0)", "Aceptar");
  cmdCancelar = Boton("cmd(1)", "Cancelar");
  cmdAyuda = Boton("cmdAyuda", "A&yuda");
  ArmarDialogo(dialogo, Cuerpo(predefinidas), {.aceptar = cmdAceptar, .cancelar = cmdCancelar, .ayuda = cmdAyuda});
  dialogo.layout()->setContentsMargins(kMargenVentana, kLadoDeMarco, kMargenVentana, kLadoDeMarco);
  OrdenarTab();
}

void ControlesSensor::HacerCampo(const DatosCampo& dato, const QString& pasos) {
  CampoDeSensor& uno = De(dato.campo);
  uno.campo = new CampoNumero(QString::fromLatin1(dato.control), dato.decimal);
  const int cifras = dato.decimal ? kCifrasDeValor : kCifrasDeTiempo;
  uno.campo->setFixedWidth(uno.campo->fontMetrics().horizontalAdvance(QString(cifras, QChar('0'))) + kBordesYMarca);
  const QString rotulo = QString::fromUtf8(dato.rotulo);
  uno.rotulo = Rotulo(dato.rotulo_control, rotulo, uno.campo);
  if (!pasos.isEmpty()) uno.pasos = Pasos(pasos, rotulo);
}

void ControlesSensor::Renglon(QGridLayout& reja, CampoSensor campo) {
  const CampoDeSensor& uno = De(campo);
  const int renglon = reja.rowCount();
  reja.addWidget(uno.rotulo, renglon, 0);
  reja.addWidget(uno.campo, renglon, 1);
  if (uno.pasos.todo != nullptr) reja.addWidget(uno.pasos.todo, renglon, 2);
}

QGroupBox* ControlesSensor::Marco(const char* nombre, const QString& titulo, std::span<const CampoSensor> campos) {
  auto* marco = Nombrado(new QGroupBox(titulo), nombre);
  auto* reja = new QGridLayout(marco);
  Apretar(*reja);
  reja->setColumnStretch(0, 1);
  for (const C campo : campos) Renglon(*reja, campo);
  return marco;
}

void ControlesSensor::ArmarFramePPal() {
  FramePPal = SinTitulo("FramePPal");
  Canal = SoloMuestra("Canal", 2);
  txtCanal = SoloMuestra("txtCanal", 5);
  txtCanal->setAccessibleName("Nombre del canal");
  lblDescEntrada = Muestra("lblDescEntrada");
  Pila = SoloMuestra("Pila", 3);
  cboTiposSensores = Lista("cboTiposSensores");
  cboTiposSensores->setMinimumContentsLength(18);
  lblParametro = Muestra("lblParametro");
  lblParametro->setWordWrap(true);
  auto* fila = new DisposicionEnFilas(kEntreDatos, FramePPal);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->Agregar(Juntos({Rotulo("lblCanal", "Canal:", Canal), Canal, txtCanal, lblDescEntrada}));
  fila->Agregar(Juntos({Rotulo("lblPila", "Pila:", Pila), Pila}));
  fila->Agregar(Juntos({Rotulo("lblTipo", "Tipo de Sensor:", cboTiposSensores), cboTiposSensores}));
  fila->Agregar(lblParametro, 1);
}

void ControlesSensor::ArmarFrameCFG() {
  FrameCFG = Nombrado(new QGroupBox("Configuración del Sensor:"), "FrameCFG");
  cboParametros = Lista("cboParametros");
  cboUnidades = Lista("cboUnidades");
  cboResol = Lista("cboResol");
  lblRangoNegativo = Muestra("lblRangoNegativo");
  auto* columna = new QVBoxLayout(FrameCFG);
  Apretar(*columna);
  auto* listas = new QGridLayout;
  listas->setColumnStretch(1, 1);
  const std::tuple<const char*, const char*, QComboBox*> tres[] = {{"lblParametros", "Parámetro:", cboParametros},
                                                                   {"lblUnidades", "Unidad:", cboUnidades},
                                                                   {"lblResol", "Resolución:", cboResol}};
  for (const auto& [nombre, rotulo, lista] : tres) {
    const int renglon = listas->rowCount();
    listas->addWidget(Rotulo(nombre, QString::fromUtf8(rotulo), lista), renglon, 0);
    listas->addWidget(lista, renglon, 1);
  }
  columna->addLayout(listas);
  auto* escala = new QGridLayout;
  escala->setColumnStretch(0, 1);
  for (const C campo : SensorCFG()) Renglon(*escala, campo);
  escala->addWidget(lblRangoNegativo, escala->rowCount(), 1);
  columna->addLayout(escala);
  frameNivelRef = SinTitulo("frameNivelRef");
  auto* nivel = new QGridLayout(frameNivelRef);
  Apretar(*nivel, 0);
  // Its captions are the longest: they stand over the field.
  const CampoDeSensor& referencia = De(C::kNivRefLmn);
  nivel->addWidget(referencia.rotulo, 0, 0);
  nivel->addWidget(referencia.campo, 1, 0, Qt::AlignRight);
  columna->addWidget(frameNivelRef);
  const CampoDeSensor& constante = De(C::kPluviometro);
  auto* pluviometro = new QHBoxLayout;
  pluviometro->setSpacing(kEntreRenglones);
  pluviometro->addStretch(1);
  pluviometro->addWidget(constante.campo);
  pluviometro->addWidget(constante.pasos.todo);
  columna->addWidget(constante.rotulo);
  columna->addLayout(pluviometro);
}

void ControlesSensor::ArmarFrame16() {
  Frame16 = Nombrado(new QGroupBox("Parametros"), "Frame16");
  Frame7 = Marco("Frame7", "Tiempos...(Minutos)", Periodos());
  Frame8 = Marco("Frame8", "Validación de Mediciones ( c / TRead ) :", Validaciones().first(4));
  Frame2 = Marco("Frame2", "Valores para Transmisión Condicional ( c / TDiscret ):", Validaciones().subspan(4));
  Frame9 = Marco("Frame9", "Alarmas", Alarmas());
  auto* izquierda = new QVBoxLayout;
  auto* derecha = new QVBoxLayout;
  for (QVBoxLayout* columna : {izquierda, derecha}) columna->setSpacing(kEntreMarcos);
  izquierda->addWidget(Frame7);
  izquierda->addWidget(Frame2);
  izquierda->addStretch(1);
  derecha->addWidget(Frame8);
  derecha->addWidget(Frame9);
  derecha->addStretch(1);
  auto* fila = new DisposicionEnFilas(kEntreMarcos, Frame16);
  fila->setContentsMargins(kLadoDeMarco, 4, kLadoDeMarco, 4);
  fila->Agregar(izquierda, 1);
  fila->Agregar(derecha, 1);
}

void ControlesSensor::ArmarOpciones() {
  fraOpcionesFlags = Nombrado(new QGroupBox("Opciones funcionales:"), "fraOpcionesFlags");
  const char* captions[] = {"Habilitado", "Normal 1", "Pluviometro 3 hilos", "Filtro de Olas"};
  const char* nombres[] = {"FlagsParam(0)", "FlagsParam(1)", "FlagsParam(2)", "FlagsParam(3)"};
  for (std::size_t i = 0; i < FlagsParam.size(); ++i) FlagsParam[i] = Opcion(nombres[i], captions[i]);
  chkFlagRegis_Dif = Opcion("chkFlagRegis_Dif", "Registro Diferencial");
  auto* columna = new QVBoxLayout(fraOpcionesFlags);
  Apretar(*columna);
  for (QCheckBox* opcion : {FlagsParam[0], FlagsParam[1], FlagsParam[2], FlagsParam[3], chkFlagRegis_Dif}) {
    columna->addWidget(opcion);
  }
  FlagsParam[1]->hide();  // the pair of the normal state stands for it

  CAlarmaON = Opcion("CAlarmaON", "Habilitar Alarmas (se evaluan cada TEval) :");
  FrameDig = SinTitulo("FrameDig");
  auto* fila = new QVBoxLayout(FrameDig);
  Apretar(*fila, 0);
  auto* juntos = new QButtonGroup(FrameDig);
  const char* estados[] = {"Estado Normal: 12 V  |  Cerrado", "Estado Normal:   0 V  |  Abierto"};
  const char* nombres_estado[] = {"optEstadoNormal(0)", "optEstadoNormal(1)"};
  for (std::size_t i = 0; i < optEstadoNormal.size(); ++i) {
    optEstadoNormal[i] = Nombrado(new QRadioButton(estados[i]), nombres_estado[i]);
    juntos->addButton(optEstadoNormal[i]);
    fila->addWidget(optEstadoNormal[i]);
  }
}

QLayout* ControlesSensor::ArmarPredefinidas() {
  LeerParam = Boton("LeerParam", "Leer");
  cmdOtroArchivo = Boton("cmdOtroArchivo", "Otro archivo...");
  cmdCopiar = Boton("cmdCopiar", "Copiar valores de...");
  lblArchivo = Muestra("lblArchivo");
  auto* fila = new DisposicionEnFilas(kEntreMarcos);
  fila->Agregar(LeerParam);
  fila->Agregar(lblArchivo, 1);
  fila->Agregar(cmdOtroArchivo);
  fila->Agregar(cmdCopiar);
  auto* columna = new QVBoxLayout;
  columna->setSpacing(kEntreRenglones);
  QLabel* lblLeer =
      Rotulo("lblLeer", "Leer parametrizacion predefinida para este canal en un archivo (*.ipf) :", LeerParam);
  auto* lblNota = Nombrado(new QLabel("Nota: el archivo (*.ipf) se genera en la Estación Central"), "lblNota");
  for (QLabel* largo : {lblLeer, lblNota}) largo->setWordWrap(true);
  columna->addWidget(lblLeer);
  LeerParam->setAccessibleName("Leer");
  columna->addLayout(fila);
  columna->addWidget(lblNota);
  return columna;
}

void ControlesSensor::ArmarReparos() {
  marco_reparos = SinTitulo("marcoReparos");
  auto* icono = new QLabel;
  icono->setPixmap(IconoDe("aviso").pixmap(16, 16));
  icono->setAccessibleName("Aviso");
  lblReparos = new EtiquetaCopiable(QStringLiteral("lblReparos"));
  cmdReparo = Boton("cmdReparo", "Ir al primero");
  auto* fila = new QHBoxLayout(marco_reparos);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->addWidget(icono);
  fila->addWidget(cmdReparo);
  fila->addWidget(lblReparos, 1);
  // The place stays when nothing is wrong: no field moves under the pointer.
  for (QWidget* control : std::initializer_list<QWidget*>{marco_reparos, cmdReparo}) {
    QSizePolicy politica = control->sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    control->setSizePolicy(politica);
  }
}

void ControlesSensor::ArmarRonda() {
  fraRonda = SinTitulo("fraRonda");
  lblRonda = Muestra("lblRonda");
  QFont letra = lblRonda->font();
  letra.setBold(true);
  lblRonda->setFont(letra);
  cmdDejarRestantes = Boton("cmdDejarRestantes", "Dejar los &restantes como están");
  cmdDejarRestantes->setToolTip("Este canal y los que faltan quedan con los valores que tienen");
  auto* fila = new DisposicionEnFilas(kMargenVentana, fraRonda);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->Agregar(lblRonda);
  fila->Agregar(cmdDejarRestantes);
  fraRonda->hide();
}

QLayout* ControlesSensor::Cuerpo(QLayout* predefinidas) {
  auto* izquierda = new QVBoxLayout;
  izquierda->setSpacing(kEntreMarcos);
  izquierda->addWidget(FrameCFG);
  izquierda->addWidget(fraOpcionesFlags);
  izquierda->addStretch(1);
  auto* alarmas = new QVBoxLayout;
  alarmas->addWidget(CAlarmaON);
  alarmas->addWidget(FrameDig);
  alarmas->addStretch(1);
  auto* abajo = new DisposicionEnFilas(kMargenVentana);
  abajo->Agregar(alarmas);
  abajo->AgregarFlexible(predefinidas);
  auto* derecha = new QVBoxLayout;
  derecha->setSpacing(kEntreMarcos);
  derecha->addWidget(Frame16);
  derecha->addLayout(abajo);
  derecha->addStretch(1);
  auto* marcos = new DisposicionEnFilas(kEntreMarcos);
  marcos->Agregar(izquierda);
  marcos->AgregarFlexible(derecha);
  auto* todo = new QVBoxLayout;
  todo->setSpacing(kEntreMarcos);
  todo->addWidget(FramePPal);
  todo->addLayout(marcos);
  todo->addWidget(marco_reparos);
  todo->addWidget(fraRonda);
  return todo;
}

void ControlesSensor::OrdenarTab() {
  QList<QWidget*> orden{cboTiposSensores, cboParametros, cboUnidades, cboResol};
  const auto agregar = [&](std::span<const CampoSensor> campos) {
    for (const C campo : campos) orden.append(De(campo).campo);
  };
  agregar(SensorCFG());
  orden.append({De(C::kNivRefLmn).campo, De(C::kPluviometro).campo, FlagsParam[0], FlagsParam[2], FlagsParam[3],
                chkFlagRegis_Dif});
  for (const auto campos : {Periodos(), Validaciones().subspan(4), Validaciones().first(4), Alarmas()}) agregar(campos);
  orden.append({CAlarmaON, optEstadoNormal[0], optEstadoNormal[1], LeerParam, cmdOtroArchivo, cmdCopiar, cmdReparo,
                lblReparos, cmdDejarRestantes, cmdAceptar, cmdCancelar, cmdAyuda});
  for (qsizetype i = 1; i < orden.size(); ++i) QWidget::setTabOrder(orden[i - 1], orden[i]);
}

}  // namespace utr
