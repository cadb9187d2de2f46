#include "operations/windows/AsistenteParam.h"

#include <QWidget>

#include "configuration/VerificacionEscritura.h"
#include "operations/windows/frmAsistRemota.h"
#include "session/AjustesEnlace.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::string_view kModulo = "frmPpal";
constexpr std::string_view kProcedimiento = "AsistenteParam";
constexpr double kVuelta = 15;  // seconds that the unit needs to come back

// The link fell with the restart and is to be opened anew. Over IP the settings hold the address in the place of the
// speed, and a call that is dropped can't be taken up again.
bool EnlaceCaido(ModRTU& mod) {
  return !mod.comunicador.EstadoEnlace() && !mod.conexion.PorIP() && !mod.conexion.EnLlamada();
}

void Reconectar(ModRTU& mod, const std::string& velocidad) {
  const std::int32_t puerto = mod.propiedades.LeerEntero(clave::kPuerto, kPuertoDefecto);
  mod.conexion.Conectar(velocidad + "n,8,1", std::to_string(puerto));
  mod.comunicador.ModoConexion(true);
}

void TomarVelocidad(Propiedades& propiedades, const std::string& velocidad) {
  propiedades.Escribir(clave::kVelocidad, Propiedad{std::int64_t{std::stoi(velocidad)}},
                       Propiedad{std::int64_t{kVelocidadDefecto}});
}

// The settings, and the title of the main window, name the unit as it is called now. True: they have changed.
bool TomarIdentificador(FlujoLectura& flujo, std::optional<std::int16_t> identificador) {
  Propiedades& propiedades = flujo.Mod().propiedades;
  const std::int32_t anterior = propiedades.LeerEntero(clave::kIdentificador, 0);
  if (anterior == 0 || !identificador || *identificador == anterior) return false;
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{*identificador}}, Propiedad{std::int64_t{0}});
  flujo.Mod().diario.AnotarOtroIdentificador(anterior, *identificador);
  flujo.Principal().setWindowTitle(Q(TituloTrasLectura(propiedades).value_or(std::string(kTitulo))));
  return true;
}

// What the program runs on is what the file holds; where changes couldn't be saved, it is what was changed.
void RecargarAjustes(FlujoLectura& flujo, bool cambiados) {
  if (!cambiados) return flujo.Mod().propiedades.CargarPropiedades();
  GuardarAjustes(flujo.Mod(), kModulo, kProcedimiento, flujo.Titulo());
}

// Says in the status bar whether the unit gives back what it was given.
void DecirVerificacion(FlujoLectura& flujo, const TablaPtr& escrita) {
  if (!escrita || !flujo.Lectura().TieneFilas()) return;
  const VerificacionEscritura verificacion = Verificar(*escrita, *flujo.Lectura().RecConfig());
  if (!verificacion.Iguales()) {
    return flujo.Verificacion("La UTR no devuelve lo que se le escribió", AvisoDeVerificacion(verificacion, {}, {}));
  }
  const auto& respaldo = flujo.Lectura().RespaldoDeLectura();
  if (respaldo && !respaldo->Guardado()) return;  // that it couldn't be kept stands there
  flujo.Verificacion(LineaVerificada(verificacion));
}

void TrasConcluir(FlujoLectura& flujo, const frmAsistRemota& asistente) {
  ModRTU& mod = flujo.Mod();
  flujo.Estado("Aguarde...Releyendo configuración del equipo");
  mod.reloj.Esperar(kVuelta, mod.atender);
  // The unit has its new speed and identifier whether the port opens or not: the settings go with it, or the next try
  // would call a unit that isn't there any more.
  const bool caido = EnlaceCaido(mod);
  std::optional<Error> falla;
  if (caido) {
    falla = FallaDe([&] { Reconectar(mod, asistente.VelPuestaMarcha()); });
    TomarVelocidad(mod.propiedades, asistente.VelPuestaMarcha());
  }
  const bool otro_identificador = TomarIdentificador(flujo, asistente.Escrito().identificador);
  RecargarAjustes(flujo, caido || otro_identificador);
  if (falla) throw *falla;
  flujo.Preparar(std::string(kFuenteUTR));
  DecirVerificacion(flujo, asistente.Escrito().canales);
}

void TrasCerrar(FlujoLectura& flujo, const frmAsistRemota& asistente) {
  if (!asistente.Escrito().escribio) return;
  flujo.Lectura().OlvidarOrigen();  // until it is read again
  const PunteroDeEspera espera(flujo.Mod().operador);
  if (asistente.Concluida) return TrasConcluir(flujo, asistente);
  flujo.Preparar(std::string(kFuenteUTR));
}

}  // namespace

void AsistenteParam(FlujoLectura& flujo, AlmacenAsistentes& almacen) {
  ModRTU& mod = flujo.Mod();
  const auto correr = [&] {
    frmAsistRemota asistente(mod, flujo.Lectura(), almacen, &flujo.Principal());
    asistente.exec();
    TrasCerrar(flujo, asistente);
  };
  RegistrandoYMostrando(mod.registro, mod.operador, kModulo, kProcedimiento, flujo.Titulo(), Redaccion::kCenida,
                        [&] { AlFallar(correr, [&] { flujo.Estado({}); }); });
  flujo.Estado({});
}

}  // namespace utr
