#include "schedule/windows/frmAgendas.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>
#include <limits>
#include <set>

#include "base/Texto.h"
#include "schedule/AnotacionAgenda.h"
#include "schedule/CargaAgenda.h"
#include "schedule/EdicionAgenda.h"
#include "schedule/EscrituraAgenda.h"
#include "schedule/windows/PanelProximas.h"
#include "schedule/windows/frmPeriodos.h"
#include "schedule/windows/frmUno.h"
#include "widgets/CampoNumero.h"
#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr const char* kModulo = "frmAgendas";
constexpr const char* kTitulo = "Configuración de Agenda";
constexpr QSize kTamano(760, 620);
constexpr int kMinutosHora = 60;
constexpr int kEntreHorarios = 30;  // from the last time to the one that is proposed
constexpr int kLetrasDuracion = 8;
constexpr int kLadoIcono = 16;
constexpr int kCadaCuanto = 5000;  // milliseconds between two looks at the clock

DescripcionLista Descripcion() {
  return {.titulo = kTitulo,
          .palabras = {.modulo = kModulo, .titulo_ventana = kTitulo, .procedimiento_imprimir = "ImprimirAgenda"}};
}

Columnas ColumnasDeAgenda() {
  return {{.titulo = "Horario", .campo = "Horario"},
          {.titulo = "TOblig", .campo = "TOblig"},
          {.titulo = "TCond", .campo = "TCond"},
          {.titulo = "TWind", .campo = "TWind"}};
}

QLabel* Parrafo(const char* nombre) {
  auto* etiqueta = new QLabel;
  etiqueta->setObjectName(QString::fromLatin1(nombre));
  etiqueta->setTextFormat(Qt::PlainText);
  etiqueta->setWordWrap(true);
  return etiqueta;
}

}  // namespace

frmAgendas::frmAgendas(ModRTU& mod, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, Descripcion(), ColumnasDeAgenda(), parent),
      mod_(mod),
      txtDuracion_(new CampoNumero("txtDuracion", true)),
      no_leida_(new QWidget),
      lblEstado_(Parrafo("lblEstado")),
      proximas_(new PanelProximas) {
  Lista().SinFiltro();
  Lista().OrdenAjeno(0);
  connect(&Lista(), &VistaLista::Ordenada, this, [this](std::size_t columna, bool ascendente) {
    if (columna == 0) RecargarLista(ascendente);
  });
  QPushButton* aceptar = Boton("cmd(0)", "Aceptar");
  QPushButton* cancelar = Boton("cmd(1)", "Cancelar");
  connect(aceptar, &QPushButton::clicked, this,
          [this] { Intentar("cmd_Click", Redaccion::kCompletarse, [this] { Aceptar(); }); });
  ArmarComandos();
  Armar(ArmarEncima(), {.aceptar = aceptar, .cancelar = cancelar, .por_defecto = false}, kTamano, ArmarDebajo());
  Lista().Arbol()->setFocus();
  auto* reloj = new QTimer(this);
  connect(reloj, &QTimer::timeout, this, &frmAgendas::Reflejar);
  reloj->start(kCadaCuanto);
  Reflejar();
}

frmAgendas::~frmAgendas() = default;

// --- Parts -----------------------------------------------------------------------------------------------------------

QWidget* frmAgendas::ArmarEncima() {
  duracion_puesta_ = std::to_string(kDuracionMenor);
  txtDuracion_->setText(Q(duracion_puesta_));
  txtDuracion_->setMaximumWidth(txtDuracion_->fontMetrics().horizontalAdvance(QString(kLetrasDuracion, '0')));
  txtDuracion_->setWhatsThis("Minutos que dura la ventana de transmisión, de 5 a 1440. Vale para toda la agenda.");
  connect(txtDuracion_, &QLineEdit::textChanged, this, &frmAgendas::Reflejar);
  connect(txtDuracion_, &QLineEdit::textEdited, this, [this] {
    aviso_duracion_.clear();
    Reflejar();
  });
  auto* fila = new QHBoxLayout;
  fila->addWidget(Rotulo("lblDuracion", "&Duración de la ventana", txtDuracion_));
  fila->addWidget(txtDuracion_);
  fila->addWidget(new QLabel("min."));
  fila->addStretch(1);
  auto* encima = new QWidget;
  auto* columna = new QVBoxLayout(encima);
  columna->setContentsMargins(0, 0, 0, 0);
  columna->addWidget(ArmarNoLeida());
  columna->addLayout(fila);
  return encima;
}

QWidget* frmAgendas::ArmarNoLeida() {
  auto* icono = new QLabel;
  icono->setPixmap(IconoDe("aviso").pixmap(kLadoIcono, kLadoIcono));
  icono->setAccessibleName("Aviso");
  auto* texto = Parrafo("lblNoLeida");
  texto->setText("La agenda de la UTR no se leyó: lo que se grabe la reemplaza entera");
  QFont negrita = texto->font();
  negrita.setBold(true);
  texto->setFont(negrita);
  auto* fila = new QHBoxLayout(no_leida_);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->addWidget(icono);
  fila->addWidget(texto, 1);
  no_leida_->hide();
  return no_leida_;
}

QWidget* frmAgendas::ArmarDebajo() {
  auto* debajo = new QWidget;
  auto* columna = new QVBoxLayout(debajo);
  columna->setContentsMargins(0, 0, 0, 0);
  columna->addWidget(proximas_);
  columna->addWidget(lblEstado_);
  return debajo;
}

void frmAgendas::ArmarComandos() {
  ComandoVentana configurar = ComandoConfigurarImpresora("mnuConfigPrint");
  configurar.texto = "&Configurar Impresora...";
  ComandoVentana salir = ComandoSalir("mnuSalir");
  salir.hacer = [this] { hide(); };  // Acepto keeps its value
  ComandoVentana abrir = ComandoAbrir("mnuAgendaAbrir");
  abrir.abre_grupo = true;
  abrir.ayuda = "Abrir el horario elegido";
  const auto ordenar = [this](bool ascendente) {
    ComandoVentana comando = ComandoOrdenar(ascendente);
    comando.hacer = [this] { Lista().RepetirOrden(); };
    return comando;
  };
  const auto borrar = [this] {
    Intentar("BorrarHorarioAgenda", Redaccion::kCompletada, [this] { BorrarHorarioAgenda(); });
  };
  const auto hay_filas = [this] { return HayFilas(); };
  Comandos(
      {{.nombre = "mnuAgenda", .texto = "&Agenda"},
       {.nombre = "mnuAgenNuevo", .texto = "&Nuevo", .dentro_de = "mnuAgenda"},
       {.nombre = "mnuAgenBorrar", .texto = "&Eliminar", .dentro_de = "mnuAgenda"}},
      {{.nombre = "mnuAgenHorarioNuevo",
        .texto = "&Horario",
        .menu = "mnuAgenNuevo",
        .clave = "New",
        .icono = "horario-nuevo",
        .ayuda = "Agregar un horario",
        .tecla = QKeySequence::New,
        .hacer = [this] { Editar(true); }},
       {.nombre = "mnuAgenPeriodoNuevo",
        .texto = "&Período",
        .menu = "mnuAgenNuevo",
        .clave = "NewPer",
        .icono = "periodo-nuevo",
        .ayuda = "Agregar horarios periódicos",
        .hacer = [this] { EditarPeriodico(); }},
       abrir,
       {.nombre = "mnuDelSelection",
        .texto = "&Horario(s) seleccionado(s)",
        .menu = "mnuAgenBorrar",
        .icono = "borrar",
        .tecla = QKeySequence::Delete,
        .si = [this] { return !Lista().FilasElegidas().empty(); },
        .hacer = borrar},
       {.clave = "Delete",
        .icono = "borrar",
        .ayuda = "Eliminar los horarios seleccionados",
        .si = hay_filas,
        .hacer = borrar},
       {.nombre = "mnuDeleteAll",
        .texto = "&Todos los horarios",
        .menu = "mnuAgenBorrar",
        .clave = "DeleteAll",
        .icono = "borrar-todo",
        .ayuda = "Eliminar todos los horarios",
        .si = hay_filas,
        .hacer =
            [this] { Intentar("BorrarListaAgenda", Redaccion::kCompletada, [this] { BorrarListaAgenda(true); }); }},
       ComandoGuardar("mnuAgenGuardarComo"),
       ComandoGuardarCsv(),
       configurar,
       ComandoImprimir("mnuAgenPrint"),
       ComandoVistaPrevia(),
       salir,
       ordenar(true),
       ordenar(false),
       ComandoAyuda(),
       ComandoQueEsEsto()},
      {"New", "NewPer", "Delete", "DeleteAll", nullptr, "Open", "Print", "Save", nullptr, "Sort Ascending",
       "Sort Descending", nullptr, "Help", "Help What's This"});
}

std::string frmAgendas::Titulo() const {
  return U(windowTitle());
}

bool frmAgendas::Intentar(const char* procedimiento, Redaccion redaccion, const std::function<void()>& hacer) {
  if (Ocupacion::Ocupada(*this)) return false;
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, procedimiento, Titulo(), redaccion, hacer);
}

EncabezadoLista frmAgendas::Encabezado(bool para_imprimir) const {
  const char* titulo = para_imprimir ? "Configuración de Agenda de la UTR" : "Configuración de Agenda de la RTU";
  return {titulo, {"Fecha: " + TextoFecha(mod_.reloj.Ahora())}};
}

// Cancelar, Esc and the close button.
void frmAgendas::reject() {
  Acepto = false;
  VentanaLista::reject();
}

// --- What is on show -------------------------------------------------------------------------------------------------

TablaPtr frmAgendas::PedirAgenda() {
  const PunteroDeEspera espera(mod_.operador);
  return mod_.comunicador.LeerAgenda();
}

bool frmAgendas::LeerAgenda() {
  const TablaPtr tabla = PedirAgenda();
  no_leida_->setVisible(tabla == nullptr);
  if (!tabla) {
    mod_.operador.Mostrar({.texto = "No se puede leer la agenda de la UTR\nVerifique conexión",
                           .titulo = "Atención",
                           .icono = Icono::kCritico});
    return false;
  }
  const auto cierre = qScopeGuard([&tabla] { tabla->Close(); });
  leida_ = FDLHorarios();
  if (tabla->RecordCount() == 0) return false;
  BorrarListaAgenda(false);
  CargarColeccionAgenda(*tabla);
  leida_ = horarios_;
  if (HayFilas()) Lista().Elegir(0);  // so that opening one needs no click ahead of it
  return true;
}

// Taken whole or not at all.
void frmAgendas::CargarColeccionAgenda(Tabla& tabla) {
  const PunteroDeEspera espera(mod_.operador);
  FDLHorarios leida = SoloColeccion ? FDLHorarios() : horarios_;
  CargarAgenda(leida, tabla, mod_.comunicador);
  horarios_ = std::move(leida);
  RecargarLista();
}

void frmAgendas::RecargarLista(bool ascendente) {
  const std::optional<std::size_t> actual = Lista().FilaActual();
  const std::string elegida = actual ? ClaveDe(*actual) : std::string();
  std::set<std::string> elegidas;
  for (const std::size_t posicion : Lista().FilasElegidas()) elegidas.insert(ClaveDe(posicion));
  const TablaPtr filas = horarios_.GetRecMembers();
  Lista().Vaciar();
  filas_ = filas;
  Lista().Ordenar(0, ascendente);
  if (filas->RecordCount() > 0) {
    filas->Sort(ascendente ? "HorarioInteger ASC" : "HorarioInteger DESC");
    filas->MoveLast();
    const int proximo = static_cast<int>(std::get<std::int64_t>(filas->Value("HorarioInteger"))) + kEntreHorarios;
    const bool cabe = proximo <= std::numeric_limits<std::int16_t>::max();
    proximo_ = static_cast<std::int16_t>(cabe ? proximo : MinutoDelDia(proximo));
  }
  Lista().Mostrar(filas);
  ElegirClave(elegida);
  Lista().ElegirTodas([&](std::size_t fila) { return elegidas.contains(filas_->Filas().Texto(fila, 0)); });
  MostrarDuracion();
  Reflejar();
}

std::string frmAgendas::ClaveDe(std::size_t posicion) const {
  return filas_->Filas().Texto(Lista().Lista().Fila(posicion), 0);
}

void frmAgendas::ElegirClave(const std::string& clave) {
  for (std::size_t posicion = 0; posicion < Lista().Lista().Cantidad(); ++posicion) {
    if (ClaveDe(posicion) == clave) return Lista().Elegir(posicion);
  }
}

// What was typed since the field was filled last is gone then, and it is said.
void frmAgendas::MostrarDuracion() {
  const std::string escrita = U(txtDuracion_->text());
  const std::string nueva = std::to_string(horarios_.DuracionVentana);
  const bool se_pierde = escrita != duracion_puesta_ && escrita != nueva;
  duracion_puesta_ = nueva;
  txtDuracion_->setText(Q(nueva));
  if (!se_pierde) return;
  aviso_duracion_ = "Duración: vuelve a " + nueva + " min.; " +
                    (escrita.empty() ? "se había dejado vacía" : "se había escrito " + escrita);
}

// Everything that follows the schedule and the clock, but the list.
void frmAgendas::Reflejar() {
  const std::string escrita = U(txtDuracion_->text());
  const std::optional<std::int32_t> duracion = DuracionDe(escrita);
  txtDuracion_->Marcar(duracion ? QString() : QStringLiteral("La ventana dura de 5 a 1440 minutos"));
  const FechaHora ahora = mod_.reloj.Ahora();
  proximas_->Mostrar(
      ProximasDe(horarios_, ahora.hora * kMinutosHora + ahora.minuto, duracion.value_or(horarios_.DuracionVentana)));
  std::vector<std::string> partes{TextoDeCantidad(horarios_.Count())};
  // "5,5" is 55: a comma parts thousands.
  const bool otra = duracion && std::to_string(*duracion) != escrita;
  const std::string como_vale = otra ? "La ventana escrita vale " + std::to_string(*duracion) + " min." : std::string();
  for (const std::string& parte : {aviso_periodo_, aviso_duracion_, como_vale}) {
    if (!parte.empty()) partes.push_back(parte);
  }
  lblEstado_->setText(Q(Unir(partes, ". ")));
}

// --- Editing ---------------------------------------------------------------------------------------------------------

void frmAgendas::Activar() {
  if (Lista().FilaActual()) Editar(false);
}

void frmAgendas::Editar(bool nuevo) {
  Intentar("Editar", Redaccion::kCompletada, [&] { EditarHorario(nuevo); });
}

void frmAgendas::EditarHorario(bool nuevo) {
  frmUno dialogo(this);
  aviso_periodo_.clear();
  const bool estaba = nuevo && horarios_.Buscar(proximo_);
  const FDLHoraroPtr horario = nuevo ? horarios_.Add(proximo_) : horarios_.Item(ClaveDe(*Lista().FilaActual()));
  dialogo.Horario(horario);
  if (estaba) dialogo.AvisarQueEstaba();
  Reflejar();
  dialogo.exec();
  if (dialogo.Acepto) {
    RecargarLista();
    return ElegirClave(Reemplazar(horario->Key, "C", ""));
  }
  if (nuevo) horarios_.Remove(horario->Key);
  Reflejar();
}

void frmAgendas::EditarPeriodico() {
  Intentar("EditarPeriodico", Redaccion::kCompletada, [this] {
    aviso_periodo_.clear();
    Reflejar();
    frmPeriodos dialogo(mod_.operador, this);
    dialogo.HoraDeInicio(proximo_);
    dialogo.exec();
    if (!dialogo.Acepto) return;
    aviso_periodo_ = TextoDePeriodo(AgregarPeriodo(horarios_, {.desde = dialogo.HoraDeInicio(),
                                                               .hasta = dialogo.HoraDeFin(),
                                                               .paso = dialogo.PeriodoDeAgenda(),
                                                               .TWind = dialogo.TxCWind(),
                                                               .TCond = dialogo.TxCCond(),
                                                               .TOblig = dialogo.TxCOblig()}));
    RecargarLista();
  });
}

void frmAgendas::BorrarHorarioAgenda() {
  if (!HayFilas()) return;
  const bool seguir =
      Preguntar(mod_.operador, Titulo(), "Esta acción eliminará el/los horario/s seleccionado/s\n¿Desea continuar?",
                Respuesta::kNo);
  if (!seguir) return;
  aviso_periodo_.clear();
  for (const std::size_t posicion : Lista().FilasElegidas()) {
    // A row may stand for an entry that is gone already: a new one that was cancelled.
    if (const FDLHoraroPtr horario = horarios_.Buscar(ClaveDe(posicion))) horarios_.Remove(horario->Key);
  }
  RecargarLista();
}

void frmAgendas::BorrarListaAgenda(bool preguntar) {
  if (!HayFilas()) return;
  if (preguntar && !Preguntar(mod_.operador, Titulo(),
                              "Esta acción eliminará todos los horarios establecidos en la agenda\n¿Desea continuar?",
                              Respuesta::kNo))
    return;
  aviso_periodo_.clear();
  const TablaPtr tabla = horarios_.GetRecMembers();
  for (; !tabla->Eof(); tabla->MoveNext()) horarios_.Remove(tabla->Texto("key") + 'C');
  proximo_ = 0;
  RecargarLista();
}

// --- Leaving ---------------------------------------------------------------------------------------------------------

void frmAgendas::Aceptar() {
  const std::string duracion = U(txtDuracion_->text());
  if (std::optional<Mensaje> reparo = ReparoDeAgenda(Lista().Lista().Total(), duracion)) {
    reparo->titulo = Titulo();
    mod_.operador.Mostrar(*reparo);
    return;
  }
  horarios_.DuracionVentana = *DuracionDe(duracion);
  if (SoloColeccion) {
    Acepto = true;
    return hide();
  }
  if (Preguntar(mod_.operador, Titulo(), "En esta acción se va a escribir y reiniciar la agenda\n¿Desea continuar?",
                Respuesta::kNo))
    Grabar();
}

void frmAgendas::Grabar() {
  Acepto = true;
  ResultadoAgenda resultado;
  Diario::Tarea tarea(mod_.diario);
  {
    const Ocupacion ocupacion(*this, AlTrabajar());
    if (mod_.atender) mod_.atender();  // the panel is seen before the driver blocks
    resultado = EscribirAgenda(horarios_, {mod_.comunicador, mod_.registro});
  }
  AnotarAgenda(tarea, mod_.reloj.Ahora(), leida_, horarios_, resultado);
  Grabado = resultado.Grabado;
  if (resultado.error) throw *resultado.error;
  if (!resultado.mensaje.empty())
    mod_.operador.Mostrar({.texto = resultado.mensaje, .titulo = Titulo(), .icono = Icono::kCritico});
  hide();
}

}  // namespace utr
