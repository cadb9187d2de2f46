#include "shell/windows/Main.h"

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>
#include <clocale>
#include <cstdio>
#include <optional>

#include "app/ActosDelOperador.h"
#include "app/PuertosDelPrograma.h"
#include "base/CarpetaPrograma.h"
#include "base/Reloj.h"
#include "driver/ComunicadorAnotado.h"
#include "driver/ComunicadorElegido.h"
#include "driver/link/client/ComunicadorEnlace.h"
#include "driver/simulated/driver/ComunicadorConFallas.h"
#include "driver/simulated/driver/FallasPorLinea.h"
#include "shell/windows/InstanciaUnica.h"
#include "widgets/ImpresoraQt.h"
#include "widgets/OperadorQt.h"
#include "widgets/TextoQt.h"

namespace {

// Qt's own words in Spanish: the catalogues beside the executable, else the system's. The complement goes in later, so
// that it is asked first.
void CargarCatalogo(QTranslator& catalogo, const QString& nombre) {
  const QString propia = QCoreApplication::applicationDirPath() + "/translations";
  if (catalogo.load(nombre, propia) || catalogo.load(nombre, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&catalogo);
  }
}

utr::CuentaDeLinea CuentaDe(const utr::enlace::Trafico& trafico) {
  return {trafico.enviados, trafico.recibidos, trafico.reintentos, trafico.paginas};
}

// What the driver over a wire learns goes to whoever shows it.
utr::enlace::Avisos AvisosPara(utr::SituacionDelEnlace& situacion) {
  return {.identificada =
              [&situacion](bool de_practica) {
                situacion.PonerClase(de_practica ? utr::ClaseDeUnidad::kDePractica : utr::ClaseDeUnidad::kReal);
              },
          .desconocida =
              [&situacion] {
                // The wire is left, too, when the simulated station is chosen.
                if (situacion.Clase() == utr::ClaseDeUnidad::kSimulada) return;
                situacion.PonerRespuesta({});
                situacion.PonerClase(utr::ClaseDeUnidad::kDesconocida);
              },
          .trafico = [&situacion](const utr::enlace::Trafico& trafico) { situacion.PonerCuenta(CuentaDe(trafico)); },
          .puerto = [&situacion](bool abierto) { situacion.PonerPuerto(abierto); },
          .fin_de_llamada = [&situacion] { situacion.PonerFinDeLlamada(); },
          .contesta = [&situacion](bool contesta) { situacion.PonerRespuesta(contesta); },
          .consiente = [&situacion](bool de_practica) { return situacion.Consiente(de_practica); }};
}

}  // namespace

int main(int argc, char** argv) {
  QApplication aplicacion(argc, argv);
  QCoreApplication::setApplicationName("AdminUTR");
  QCoreApplication::setApplicationVersion(ADMINUTR_VERSION);
  QGuiApplication::setDesktopFileName("adminutr");
  // QApplication has taken over the machine's settings: numbers in files and in the driver's texts use "." whatever
  // they are.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale::c());
  QTranslator catalogo;
  CargarCatalogo(catalogo, "qtbase_es");
  QTranslator complemento;
  CargarCatalogo(complemento, "complemento_es");

  const QString carpeta = utr::Q(utr::CarpetaDeDatos().string());
  // Ahead of the driver, which must not touch the station of the instance that runs.
  utr::InstanciaUnica instancia(carpeta);
  if (!instancia.Tomar()) return 0;

  const auto eleccion = utr::EleccionDelEntorno();
  if (!eleccion) {
    std::fprintf(stderr, "AdminUTR: %s debe ser \"simulado\" o \"linea\"\n", utr::kVariableDeEleccion);
    return 2;
  }

  const utr::Atender atender = [] { QCoreApplication::processEvents(); };
  utr::RelojSistema reloj;
  utr::SituacionDelEnlace situacion;
  const utr::ActosDelOperador actos(situacion);
  utr::ComunicadorSimulado simulado(utr::Ruta(carpeta), reloj, atender);
  simulado.AlContestar([&](std::optional<bool> contesta) { situacion.PonerRespuesta(contesta); });
  utr::Bitacora bitacora(utr::Ruta(carpeta));
  utr::NumerosDePuerto numeros(utr::Ruta(carpeta) / "Puertos.toml");
  utr::enlace::TendidoDelEquipo tendido;
  utr::PuertosDelPrograma puertos(simulado, numeros, *eleccion,
                                  [&](const std::string& aviso) { situacion.PonerAviso(aviso); });
  utr::ComunicadorEnlace* por_linea = nullptr;
  utr::FallasPorLinea fallas(
      simulado, [&] { return por_linea->DePractica(); }, reloj, atender);
  utr::ComunicadorEnlace enlace({.tendido = tendido,
                                 .dispositivos = [&](int numero) { return numeros.Abrible(numero); },
                                 .reloj = reloj,
                                 .atender = [&] { fallas.Atiende(); },
                                 .bitacora = bitacora,
                                 .avisos = AvisosPara(situacion)});
  por_linea = &enlace;
  utr::ComunicadorConFallas con_fallas(enlace, fallas);
  utr::ComunicadorAnotado anotado(con_fallas, bitacora, reloj);
  utr::ComunicadorElegido comunicador(
      simulado, anotado,
      {.puerto_simulado = [&](int numero) { return puertos.EsSimulado(numero); },
       .direccion_simulada = [&](std::string_view direccion) { return puertos.EsSimulada(direccion); }});
  comunicador.AlElegir([&] {
    situacion.PonerConexion(comunicador.Simulado() ? utr::ClaseDeUnidad::kSimulada : utr::ClaseDeUnidad::kDesconocida);
  });
  if (*eleccion == utr::Eleccion::kLinea) situacion.PonerConexion(utr::ClaseDeUnidad::kDesconocida);
  QTimer cada_segundo;
  QObject::connect(&cada_segundo, &QTimer::timeout, [&] {
    simulado.VaciarBitacora();
    bitacora.Vaciar();
    situacion.PonerCuenta(CuentaDe(enlace.Cuenta()));  // the end of a run of short operations too
  });
  cada_segundo.start(1000);
  utr::OperadorQt operador;
  utr::ImpresoraQt impresora;
  const QString nombre = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
  return utr::Ejecutar({comunicador, puertos, impresora, operador, reloj, atender, utr::Ruta(carpeta), utr::U(nombre),
                        simulado.Aviso().empty() ? numeros.Aviso() : simulado.Aviso(), &situacion});
}
