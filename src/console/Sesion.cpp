#include "console/Sesion.h"

#include <utility>

#include "base/Error.h"
#include "base/Texto.h"
#include "console/Interrupcion.h"
#include "console/Salida.h"
#include "driver/ErroresDeEnlace.h"
#include "retrieved/CifrasRegistros.h"
#include "retrieved/series/TextoSerie.h"

namespace utr::consola {

Sesion::Sesion(const Entorno& entorno, const Opciones& opciones)
    : entorno_(entorno),
      opciones_(opciones),
      bitacora_(entorno.carpeta),
      registro_(entorno.carpeta / "adminutr-cli.err", entorno.reloj),
      catalogo_(entorno.carpeta),
      progreso_(entorno.errores, entorno.reloj) {}

void Sesion::Preparar() {
  enlace_ = std::make_unique<Enlace>(opciones_.enlace, entorno_.carpeta, entorno_.reloj, Atencion(), bitacora_, [this] {
    if (!std::exchange(de_practica_, true)) Avisar("Quien contesta es una estación de práctica");
  });
}

void Sesion::Abrir() {
  fase_ = Fase::kEnlace;
  progreso_.Texto("Abriendo el enlace...");
  enlace_->Abrir();
  ExigirSinInterrumpir();
  fase_ = Fase::kConversacion;
}

// The simulated station ends no read that has begun, so that the wait itself ends here.
void Sesion::Oir() {
  const int veces = Interrupcion::Veces();
  if (veces == oidas_ || (paciente_ && veces < 2)) return;
  oidas_ = veces;
  if (!enlace_) return;
  enlace_->Driver().Cancelar(false);
  if (enlace_->Simulada()) ExigirSinInterrumpir();
}

TablaPtr Sesion::LeerConfiguracion() {
  progreso_.Texto("Leyendo la configuración...");
  TablaPtr tabla = Driver().ConfiguracionAlmacenada(true);
  if (tabla && tabla->Abierta() && tabla->RecordCount() > 0) return tabla;
  Avisar("La estación no tiene configuración");
  return nullptr;
}

void Sesion::Entregar(const TablaPtr& tabla, Columnas columnas, EncabezadoLista encabezado) {
  Entregar(tabla, tabla, std::move(columnas), std::move(encabezado));
}

void Sesion::Entregar(const TablaPtr& tabla, const TablaPtr& de_lista, Columnas columnas, EncabezadoLista encabezado) {
  PasarAArchivos();
  ExigirSinInterrumpir();
  progreso_.Borrar();
  Entregable que{tabla, ListaTabla(std::move(columnas)), std::move(encabezado)};
  que.lista.Mostrar(de_lista);
  consola::Entregar(que, opciones_.destino, entorno_.salida);
}

void Sesion::Resumir(const Tabla& tabla, const Tabla* configuracion, bool a_intervalos) {
  if (!opciones_.cifras) return;
  const SeriesDeTabla series = SeriesDe(tabla, configuracion);
  for (const auto& serie : series) Avisar(TituloSerie(*serie) + ": " + TextoCifras(tabla, {serie}, a_intervalos));
  if (!series.empty()) return;
  const std::string cifras = TextoCifras(tabla, series);
  Avisar(cifras.empty() ? "La tabla no es de registros: no hay cifras" : cifras);
}

void Sesion::Decir(const std::string& linea) {
  progreso_.Borrar();
  EscribirEn(entorno_.salida, linea + "\n");
}

void Sesion::Avisar(const std::string& linea) {
  progreso_.Borrar();
  EscribirSinFallar(entorno_.errores, "adminutr-cli: " + Reemplazar(linea, "\n", " ") + "\n");
}

void ExigirSinInterrumpir() {
  if (Interrupcion::Veces() > 0) throw Error(error_enlace::kCancelada, "adminutr-cli", "Interrumpido");
}

}  // namespace utr::consola
