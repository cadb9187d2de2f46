#include "operations/windows/ControlesAsistente.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

#include "operations/PasosAsistente.h"
#include "widgets/AyudaCombos.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/Iconos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Tamanos.h"

namespace utr {
namespace {

constexpr int kLetrasDeAncho = 112;  // of the texts, so that they break into lines that can be read
constexpr int kEntreParrafos = 10;
constexpr int kSangria = 20;
constexpr int kCifrasIdentificador = 5;
constexpr int kRenglonesALaVista = 5;

constexpr std::array<const char*, 4> kTextos{
    "Este asistente le permitirá poner en marcha la UTR. En esta operación el usuario deberá configurar tanto los "
    "sensores que tiene conectados, asi como la definición de la agenda de comunicaciones.",
    "En este paso se configura los canales de la UTR. Es importante verificar cuidadosamente los valores asignados a "
    "estas variables debido a que afectan directamente al funcionamiento y desempeño de la UTR.",
    "En este paso se configura la agenda de comunicaciones de las la UTR. Es importante verificar cuidadosamente los "
    "valores asignados a estas variables debido a que afectan directamente al funcionamiento y desempeño de la UTR.",
    "En este paso se graba toda la información de agenda y configuración cargada en los pasos anteriores, y luego se "
    "procede a borrar la memoria flash de la UTR, eliminando todos los datos de ella. Ademas luego del borrado se "
    "actualizará la hora de la misma utilizando el horario de su PC. Es importante verificar que este ultimo sea "
    "correcto  Finalmente se almacenará toda la información suministrada y se procederá al reinicio de la UTR"};

template <class Control>
Control* Nombrado(Control* control, const char* nombre) {
  control->setObjectName(QString::fromLatin1(nombre));
  return control;
}

QLabel* Texto(const char* nombre, const char* texto = "") {
  auto* rotulo = Nombrado(new QLabel(QString::fromUtf8(texto)), nombre);
  rotulo->setTextFormat(Qt::PlainText);
  rotulo->setWordWrap(true);
  return rotulo;
}

QLabel* Destacado(const char* nombre, const char* texto) {
  QLabel* rotulo = Texto(nombre, texto);
  QFont letra = rotulo->font();
  letra.setBold(true);
  rotulo->setFont(letra);
  return rotulo;
}

QRadioButton* Opcion(const char* nombre, const char* texto) {
  return Nombrado(new QRadioButton(QString::fromUtf8(texto)), nombre);
}

QCheckBox* Casilla(const char* nombre, const char* texto) {
  return Nombrado(new QCheckBox(QString::fromUtf8(texto)), nombre);
}

}  // namespace

LineaAviso::LineaAviso(const char* nombre) : texto_(new EtiquetaCopiable(QString())) {
  setObjectName(QString::fromLatin1(nombre));
  auto* icono = new QLabel;
  icono->setPixmap(IconoDe("aviso").pixmap(16, 16));
  icono->setAccessibleName("Aviso");
  auto* fila = new QHBoxLayout(this);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->addWidget(icono, 0, Qt::AlignTop);
  fila->addWidget(texto_, 1);
  hide();
}

void LineaAviso::Decir(const QString& texto) {
  texto_->Poner(texto);
  setAccessibleName(texto);
  setVisible(!texto.isEmpty());
}

ControlesAsistente::ControlesAsistente(QDialog& dialogo) : pasos(Nombrado(new QStackedWidget, "pasos")) {
  ArmarIntroduccion();
  ArmarConfiguracion();
  ArmarAgenda();
  ArmarFinal();
  picInfo = new PanelAviso("picInfo", "Esta operación demorará unos instantes. Por favor espere...");
  picInfo->hide();
  auto* todo = new QVBoxLayout(&dialogo);
  todo->setContentsMargins(kMargenVentana, kMargenVentana, kMargenVentana, kMargenVentana);
  // What a step has to say may be more, by its end, than what the window was made for. Each scrolls by itself: in one
  // area all of them would be as high as the highest.
  for (QWidget* paso : fraStep) pasos->addWidget(new AreaDesplazable(paso, &dialogo));
  todo->addWidget(pasos, 1);
  todo->addWidget(picInfo);
  todo->addSpacing(kSobreElPie);
  ArmarNavegacion();
  todo->addWidget(pieNavegacion);
  OrdenarTab();
}

QVBoxLayout* ControlesAsistente::Paso(std::size_t paso, const char* texto) {
  // The introduction has no caption.
  const QString titulo = paso == 0 ? QString() : QStringLiteral("Step %1").arg(paso);
  auto* marco = new QGroupBox(titulo);
  marco->setObjectName(QStringLiteral("fraStep(%1)").arg(paso));
  marco->setFlat(paso == 0);
  fraStep.at(paso) = marco;
  auto* columna = new QVBoxLayout(marco);
  columna->setSpacing(kEntreParrafos);
  QLabel* parrafo = Texto("lblTexto", texto);
  const int en_pantalla = SitioEnPantalla(*parrafo).width() - 8 * kMargenVentana;
  parrafo->setMinimumWidth(std::min(parrafo->fontMetrics().averageCharWidth() * kLetrasDeAncho, en_pantalla));
  columna->addWidget(parrafo);
  return columna;
}

void ControlesAsistente::ArmarIntroduccion() {
  QVBoxLayout* columna = Paso(0, kTextos[0]);
  chkShowIntro = Casilla("chkShowIntro", "No mostrar esta pantalla la próxima vez");
  columna->addStretch(1);
  columna->addWidget(chkShowIntro);
}

void ControlesAsistente::ArmarConfiguracion() {
  QVBoxLayout* columna = Paso(1, kTextos[1]);
  LabelP1 = Destacado("LabelP1", "");
  OptionUTR = Opcion("OptionUTR", " UTR");
  optcfgPrevia = Opcion("optcfgPrevia", "Configuración previamente almacenada desde UTR");
  OptionXML = Opcion("OptionXML", "Archivo de configuración proveniente de E. Central");
  lblStep[1] = Texto("lblStep(1)", "Seleccione y verifique la configuración a escribir a la UTR");
  avisoCanales = new LineaAviso("avisoCanales");
  columna->addWidget(LabelP1);
  auto* grupo = new QButtonGroup(fraStep[1]);
  auto* opciones = new QVBoxLayout;
  opciones->setContentsMargins(kSangria, 0, 0, 0);
  for (QRadioButton* opcion : {OptionUTR, optcfgPrevia, OptionXML}) {
    grupo->addButton(opcion);
    opciones->addWidget(opcion);
  }
  columna->addLayout(opciones);
  columna->addWidget(lblStep[1]);
  columna->addWidget(avisoCanales);
  columna->addStretch(1);
}

void ControlesAsistente::ArmarAgenda() {
  QVBoxLayout* columna = Paso(2, kTextos[2]);
  lblStep[2] = Destacado("lblStep(2)", "");
  columna->addWidget(lblStep[2]);
  avisoAgenda = new LineaAviso("avisoAgenda");
  avisoVeleta = new LineaAviso("avisoVeleta");
  avisoCanalesLeidos = new LineaAviso("avisoCanalesLeidos");
  avisoRespaldo = new LineaAviso("avisoRespaldo");
  for (LineaAviso* aviso : {avisoAgenda, avisoVeleta, avisoCanalesLeidos, avisoRespaldo}) columna->addWidget(aviso);
  columna->addStretch(1);
}

void ControlesAsistente::ArmarFinal() {
  QVBoxLayout* columna = Paso(3, kTextos[3]);
  ArmarOpcionesFinales();
  columna->addWidget(fraOpciones);
  // A detail may be as long as what a driver has to say; it stands last, so that it pushes no state out of sight.
  lineas = new VistaLista({{.titulo = "Paso", .campo = "Paso"},
                           {.titulo = "Estado", .campo = "Estado"},
                           {.titulo = "Detalle", .campo = "Detalle"}});
  lineas->setObjectName("lineas");
  lineas->SinFiltro();
  lineas->Arbol()->header()->setSectionsClickable(false);  // a sequence has one order
  lineas->Arbol()->setAccessibleName("Pasos de la puesta en marcha");
  lineas->Arbol()->setMinimumHeight(lineas->Arbol()->fontMetrics().height() * 3 / 2 * kRenglonesALaVista);
  columna->addWidget(lineas, 1);
  lblStep[3] = Destacado("lblStep(3)", "");
  columna->addWidget(lblStep[3]);
  pgbProgreso = Nombrado(new QProgressBar, "pgbProgreso");
  pgbProgreso->setFormat("%v de %m");
  pgbProgreso->setAccessibleName("Progreso");
  QSizePolicy sitio = pgbProgreso->sizePolicy();
  sitio.setRetainSizeWhenHidden(true);
  pgbProgreso->setSizePolicy(sitio);
  pgbProgreso->hide();
  columna->addWidget(pgbProgreso);
}

void ControlesAsistente::ArmarOpcionesFinales() {
  CHKRadio = Casilla("CHKRadio", "Asignar identificador para redes Punto - Multipunto (i.e. RadioMODEM - Rs485,etc.)");
  TxtRadio = new CampoDigitos("TxtRadio", kCifrasIdentificador);
  TxtRadio->setFixedWidth(TxtRadio->fontMetrics().horizontalAdvance("000000") + 24);
  LRadio = Rotulo("LRadio", "Identificador:", TxtRadio);
  avisoRadio = new LineaAviso("avisoRadio");
  CVel = Nombrado(new QComboBox, "CVel");
  for (const std::int32_t velocidad : kVelocidadesAsistente) {
    AgregarEntrada(*CVel, QString::number(velocidad), velocidad);
  }
  lblCambioVelocidad = Texto("lblCambioVelocidad");
  chkBorrarDatos = {Casilla("chkBorrarDatos(0)", "Borrar datos del Equipo"),
                    Casilla("chkBorrarDatos(1)", "Borrar datos del Cartucho")};
  chkBorrarDatos[0]->setChecked(true);
  chkBorrarDatos[0]->setEnabled(false);
  chkBorrarDatos[0]->setToolTip("La puesta en marcha borra siempre la memoria del equipo");
  StatusBarFechaHora = Nombrado(new QLabel, "StatusBarFechaHora");

  fraOpciones = new QWidget;
  auto* reja = new QGridLayout(fraOpciones);
  reja->setContentsMargins(0, 0, 0, 0);
  reja->setColumnStretch(3, 1);
  reja->addWidget(CHKRadio, 0, 0, 1, 4);
  reja->addWidget(LRadio, 1, 0);
  reja->addWidget(TxtRadio, 1, 1);
  reja->addWidget(avisoRadio, 1, 2, 1, 2);
  reja->addWidget(Rotulo("lblVel", "Velocidad del Equipo:", CVel), 2, 0);
  reja->addWidget(CVel, 2, 1);
  reja->addWidget(lblCambioVelocidad, 2, 2, 1, 2);
  auto* borrados = new QHBoxLayout;
  borrados->addWidget(chkBorrarDatos[0]);
  borrados->addSpacing(kSangria);
  borrados->addWidget(chkBorrarDatos[1]);
  borrados->addStretch(1);
  reja->addLayout(borrados, 3, 0, 1, 4);
  reja->addWidget(Texto("lblPerdida", "Lo que no se recuperó se pierde: \"Recuperar Datos\" lo guarda antes."), 4, 0, 1,
                  4);
  reja->addWidget(Nombrado(new QLabel("Fecha y hora actual:"), "lblFechaHora"), 5, 0);
  reja->addWidget(StatusBarFechaHora, 5, 1, 1, 3);
}

void ControlesAsistente::ArmarNavegacion() {
  const char* captions[] = {"A&yuda", "&Cancelar", "< &Anterior", "&Siguiente >", "&Finalizar"};
  const char* nombres[] = {"cmdNav(0)", "cmdNav(1)", "cmdNav(2)", "cmdNav(3)", "cmdNav(4)"};
  for (std::size_t i = 0; i < cmdNav.size(); ++i) {
    cmdNav[i] = Boton(nombres[i], captions[i]);
    // A click leaves the keyboard where it is: a field that is left checks itself, and a click that asks for something
    // else does so once.
    cmdNav[i]->setFocusPolicy(Qt::TabFocus);
  }
  pieNavegacion = new QWidget;
  auto* fila = new QHBoxLayout(pieNavegacion);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->addWidget(cmdNav[0]);
  fila->addStretch(1);
  fila->addWidget(cmdNav[1]);
  fila->addSpacing(kEntreParrafos);
  fila->addWidget(cmdNav[2]);
  fila->addWidget(cmdNav[3]);
  fila->addSpacing(kEntreParrafos);
  fila->addWidget(cmdNav[4]);
}

void ControlesAsistente::OrdenarTab() {
  OrdenDeTab({chkShowIntro, OptionUTR, optcfgPrevia, OptionXML, CHKRadio, TxtRadio, CVel, chkBorrarDatos[1],
              lineas->Arbol(), cmdNav[2], cmdNav[3], cmdNav[4], cmdNav[1], cmdNav[0]});
}

}  // namespace utr
