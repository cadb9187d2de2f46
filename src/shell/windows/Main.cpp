#include "shell/windows/Main.h"

#include <QApplication>
#include <algorithm>
#include <set>

#include "help/windows/AyudanteQt.h"
#include "session/ArchivoAyuda.h"
#include "session/ArchivoBitacora.h"
#include "session/windows/frmLogin.h"
#include "shell/windows/frmPpal.h"
#include "widgets/Apariencia.h"
#include "widgets/Iconos.h"
#include "widgets/RuedaInofensiva.h"
#include "widgets/TextoQt.h"
#include "widgets/frmTeclado.h"

namespace utr {

Main::Main(const Entorno& entorno)
    : propiedades_(entorno.carpeta / (entorno.nombre + ".dll")),
      registro_(entorno.carpeta / (entorno.nombre + ".err"), entorno.reloj),
      catalogo_(entorno.carpeta),
      con_reloj_(entorno.comunicador, entorno.reloj, reloj_utr_),
      diario_(propiedades_, entorno.reloj),
      bitacora_(entorno.carpeta, diario_, registro_),
      comunicador_(con_reloj_, diario_, entorno.reloj),
      conexion_(comunicador_, propiedades_),
      mod_{.comunicador = comunicador_,
           .propiedades = propiedades_,
           .registro = registro_,
           .operador = entorno.operador,
           .reloj = entorno.reloj,
           .catalogo = catalogo_,
           .puertos = entorno.puertos,
           .impresora = entorno.impresora,
           .conexion = conexion_,
           .diario = diario_,
           .bitacora = bitacora_,
           .atender = entorno.atender,
           .carpeta = entorno.carpeta,
           .nombre = entorno.nombre,
           .graficos = &graficos_,
           .reloj_utr = &reloj_utr_,
           .situacion = entorno.situacion},
      aviso_(entorno.aviso),
      situacion_(entorno.situacion) {
  diario_.AlPreguntarUnidad(
      [this] { return PalabraDe(situacion_ == nullptr ? ClaseDeUnidad::kSimulada : situacion_->Clase()); });
}

Main::~Main() = default;

bool Main::Entrar() {
  FijarArchivoAyuda(mod_);
  propiedades_.CargarPropiedades();
  return PedirClave(mod_);
}

int Main::Correr(Apariencia* apariencia) {
  frmPpal ventana(mod_);
  if (apariencia != nullptr) ventana.Vestir(*apariencia);
  if (situacion_ != nullptr) ventana.Seguir(*situacion_);
  ventana.Cargar();
  ventana.Avisar(aviso_.empty() && situacion_ != nullptr ? situacion_->Aviso() : aviso_);
  ventana.show();
  const int codigo = QApplication::exec();
  CerrarBitacora();
  return codigo;
}

// What the disk didn't take of the journals goes with the program, unless the operator has another place for it.
void Main::CerrarBitacora() {
  diario_.Completar();
  bitacora_.Reintentar();
  std::set<std::int32_t> dejadas;
  for (;;) {
    const auto& pendientes = bitacora_.Pendientes();
    const auto una = std::find_if(pendientes.begin(), pendientes.end(),
                                  [&](const Asiento& asiento) { return !dejadas.contains(asiento.estacion); });
    if (una == pendientes.end()) return;
    const std::int32_t estacion = una->estacion;
    if (!GuardarEnOtroLado(estacion)) dejadas.insert(estacion);
  }
}

// A file for each station, as its journal is. False: the operator gives them up.
bool Main::GuardarEnOtroLado(std::int32_t estacion) {
  const std::string titulo(kTitulo);
  const auto& pendientes = bitacora_.Pendientes();
  const auto cuantos =
      std::count_if(pendientes.begin(), pendientes.end(), [&](const Asiento& a) { return a.estacion == estacion; });
  const std::string numero = estacion == 0 ? "sin identificador" : std::to_string(estacion);
  if (!Preguntar(mod_.operador, titulo,
                 "La bitácora de la estación " + numero + " tiene " +
                     CuantosAsientos(static_cast<std::size_t>(cuantos)) +
                     (cuantos == 1 ? " que no se pudo guardar\n[" : " que no se pudieron guardar\n[") +
                     bitacora_.Falla() + "]\n¿Desea guardar lo que falta en otro archivo?"))
    return false;
  const auto ruta = mod_.operador.ElegirGuardar({.titulo = "Guardar bitácora...",
                                                 .filtro = "Bitácoras (*.csv)|*.csv",
                                                 .carpeta = {},
                                                 .nombre = numero + " " + NombreBitacora(mod_.reloj.Ahora())});
  if (ruta)
    RegistrandoYMostrando(registro_, mod_.operador, "Main", "CerrarBitacora", titulo, Redaccion::kCompletada,
                          [&] { bitacora_.GuardarPendientes(estacion, *ruta); });
  return true;
}

int Ejecutar(const Entorno& entorno) {
  // The end of the program is the end of the main window, not of the dialogs ahead of it.
  QApplication::setQuitOnLastWindowClosed(false);
  Apariencia apariencia;
  QApplication::setWindowIcon(IconoDe("adminutr"));
  RuedaInofensiva rueda;
  qApp->installEventFilter(&rueda);
  TeclaDeTeclado teclado;
  qApp->installEventFilter(&teclado);
  Main principal(entorno);
  const AyudanteQt ayudante(principal.Mod().archivo_ayuda, entorno.operador);
  return principal.Entrar() ? principal.Correr(&apariencia) : 0;
}

}  // namespace utr
