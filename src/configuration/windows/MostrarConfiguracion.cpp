#include "configuration/windows/MostrarConfiguracion.h"

#include "configuration/VerificacionEscritura.h"
#include "configuration/windows/frmParametrizacion.h"

namespace utr {
namespace {

// A road to the list: its name in the error log, the mode, and the seconds that the unit needs behind a write.
struct CaminoLista {
  const char* procedimiento;
  bool configuracion;
  std::int16_t pausa;
};
constexpr CaminoLista kConfiguracion{"MostrarConfiguracion", true, 5};
constexpr CaminoLista kParametros{"MostrarParametros", false, 7};

constexpr const char* kReleida =
    "La configuración fue modificada con éxito.\nSe ha releido la configuración desde la UTR";
constexpr const char* kSinReleer =
    "La configuración fue modificada con éxito,\npero no se ha podido releer la configuración desde la UTR.\n"
    "Aguarde unos instantes y relea la configuración";

// Says whether the unit holds what was written: in the status bar where it does, in a box where it doesn't, or where a
// step of the sequence failed.
void DecirVerificacion(FlujoLectura& flujo, const frmParametrizacion& lista, bool releida) {
  const ResultadoEscritura& escritura = lista.Resultado();
  VerificacionEscritura verificacion;
  if (releida && escritura.tabla) verificacion = Verificar(*escritura.tabla, *flujo.Lectura().RecConfig());
  if (releida && escritura.Completa() && verificacion.Iguales()) {
    const auto& respaldo = flujo.Lectura().RespaldoDeLectura();
    const bool guardado = !respaldo || respaldo->Guardado();
    return flujo.Verificacion(LineaVerificada(verificacion) + (guardado ? "" : ", sin respaldo de lo leído"),
                              guardado ? std::string() : respaldo->falla);
  }
  const std::string aviso = AvisoDeVerificacion(verificacion, escritura.fallo, lista.Respaldo().archivo);
  if (!aviso.empty()) flujo.Mod().operador.Mostrar({aviso, flujo.Titulo(), Icono::kExclamacion, Botones::kAceptar});
}

void Releer(FlujoLectura& flujo, const frmParametrizacion& lista, std::int16_t pausa) {
  ModRTU& mod = flujo.Mod();
  flujo.Lectura().OlvidarOrigen();  // until it is read again
  flujo.Estado("Aguarde...Releyendo configuración del equipo");
  bool releida = false;
  {
    const PunteroDeEspera espera(mod.operador);
    mod.comunicador.Pausa(pausa);
    releida = flujo.Releer();
  }
  const Icono icono = releida ? Icono::kInformacion : Icono::kExclamacion;
  mod.operador.Mostrar({releida ? kReleida : kSinReleer, flujo.Titulo(), icono, Botones::kAceptar});
  flujo.Estado("Releyendo configuración del equipo...");
  DecirVerificacion(flujo, lista, releida);
}

void TrasCerrar(FlujoLectura& flujo, const frmParametrizacion& lista, std::int16_t pausa) {
  if (lista.Grabado) flujo.Verificacion({});  // what was verified before holds no more
  if (lista.Grabado && lista.Aceptado) return Releer(flujo, lista, pausa);
  // A write that broke off leaves nobody knows what in the unit.
  if (lista.Grabado) return flujo.Lectura().OlvidarOrigen();
  if (lista.Aceptado)
    flujo.Mod().operador.Mostrar(
        {"La configuración no pudo ser grabada", flujo.Titulo(), Icono::kCritico, Botones::kAceptar});
}

void MostrarLista(FlujoLectura& flujo, const CaminoLista& camino, bool solo_mirar) {
  ModRTU& mod = flujo.Mod();
  RegistrandoYMostrando(mod.registro, mod.operador, "frmPpal", camino.procedimiento, flujo.Titulo(),
                        Redaccion::kCompletarse, [&] {
                          if (!flujo.Lectura().TieneFilas())
                            return Informar(mod.operador, flujo.Titulo(), "Debe leer una configuración");
                          frmParametrizacion lista(mod, flujo.Lectura(), &flujo.Principal());
                          lista.ModoConfiguracion = camino.configuracion;
                          lista.SoloLectura = solo_mirar || !flujo.Lectura().EsDelEquipoActual();
                          {
                            const PunteroDeEspera espera(mod.operador);
                            lista.Llenar(*flujo.Lectura().RecConfig());
                          }
                          lista.exec();
                          TrasCerrar(flujo, lista, camino.pausa);
                        });
}

}  // namespace

void MostrarConfiguracion(FlujoLectura& flujo, bool solo_mirar) {
  MostrarLista(flujo, kConfiguracion, solo_mirar);
}

void MostrarParametros(FlujoLectura& flujo) {
  MostrarLista(flujo, kParametros, false);
}

}  // namespace utr
