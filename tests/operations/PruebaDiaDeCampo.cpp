#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "configuration/AnotacionEscritura.h"
#include "configuration/FilasDeCanales.h"
#include "driver/BancoSimulado.h"
#include "operations/Comandos.h"
#include "operations/PuestaEnMarcha.h"
#include "retrieved/recovery/LecturaEnCurso.h"
#include "schedule/AnotacionAgenda.h"
#include "schedule/CargaAgenda.h"
#include "services/ComunicadorConDiario.h"
#include "session/AjustesEnlace.h"
#include "session/ArchivoBitacora.h"
#include "session/LecturaConfiguracion.h"
#include "session/OperacionesEnlace.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

// A day at the river, as the windows have it: the station is read, found late, changed, given another identifier, saved
// page by page, and commissioned anew.
class DiaDeCampo {
 public:
  explicit DiaDeCampo(bool con_diario)
      : driver_(banco.Driver(), diario_, banco.reloj),
        conexion_(Driver(con_diario), base.propiedades),
        mod_(prueba::ModSobre(Driver(con_diario), banco.reloj, conexion_, base, diario_, bitacora_)),
        lectura_(mod_) {
    base.propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{120}}, Propiedad{std::int64_t{0}});
  }

  void Pasar() {
    banco.Desfasar(90);
    lectura_.Preparar(std::string(kFuenteUTR));
    base.operador.EsperaParte("¿Desea poner en hora el Equipo?", Respuesta::kSi);
    base.operador.EsperaParte("Puesta en hora satisfactoria");
    CompararHoras(mod_);
    Parametrizar();
    CambiarAgenda();
    mod_.comunicador.LeerEventos("", "");
    Recuperar();
    base.operador.EsperaParte("¿Confirma", Respuesta::kSi);
    base.operador.EsperaParte("Id de UTR grabada");
    base.operador.EsperaParte("UTR iniciada");
    Comandos(mod_, "Comandos", [](auto, const auto& trabajo) { trabajo(); }).GrabarIdentificador("300");
    Comisionar();
  }

  prueba::BancoSimulado banco;
  prueba::ModPrueba base;

 private:
  Comunicador& Driver(bool con_diario) { return con_diario ? static_cast<Comunicador&>(driver_) : banco.Driver(); }

  void Parametrizar() {
    const ConfigColl inicial = ColeccionDe(*lectura_.RecConfig(), FilasDeCanales::kHabilitadas);
    const ConfigColl ahora = ColeccionDe(*lectura_.RecConfig(), FilasDeCanales::kHabilitadas);
    ahora.Item(1)->MaxValid = "7.25";
    lectura_.RespaldarParaEscribir();
    SinProgreso progreso;
    CanalesModificar modificar;
    modificar.Agregar("1");
    Diario::Tarea tarea(mod_.diario);
    const ResultadoEscritura resultado =
        Escribir({ModoEscritura::kParametrizacion, ahora, modificar}, mod_.comunicador, mod_.registro, progreso);
    AnotarEscritura(tarea, mod_.reloj.Ahora(),
                    {ModoEscritura::kParametrizacion, CambiosDe(inicial, ahora, mod_.catalogo), false, resultado});
  }

  void CambiarAgenda() {
    FDLHorarios leida;
    CargarAgenda(leida, *mod_.comunicador.LeerAgenda(), mod_.comunicador);
    FDLHorarios nueva;
    nueva.Add(480)->TWind = false;
    nueva.DuracionVentana = 300;
    Diario::Tarea tarea(mod_.diario);
    AnotarAgenda(tarea, mod_.reloj.Ahora(), leida, nueva, EscribirAgenda(nueva, {mod_.comunicador, mod_.registro}));
  }

  void Recuperar() {
    SinProgreso progreso;
    MapaMemoria mapa(UsoMapa::kLectura);
    LecturaEnCurso lectura({.comunicador = mod_.comunicador,
                            .reloj = mod_.reloj,
                            .progreso = progreso,
                            .mapa = mapa,
                            .diario = &mod_.diario},
                           {.ruta = banco.carpeta / "rio.bkp", .opciones = {{.datos = false, .eventos = true}}});
    lectura.Leer();
  }

  void Comisionar() {
    const TablaPtr canales = lectura_.LeerDeLaUTR();
    const ConfigColl completa = ColeccionDe(*canales, FilasDeCanales::kTodas);
    const FDLHorarios sin_horarios;
    SinProgreso progreso;
    PonerEnMarcha({.completa = completa, .horarios = sin_horarios, .identificador = "300", .velocidad = 9600},
                  {.unidad = {mod_.comunicador, mod_.registro},
                   .reloj = mod_.reloj,
                   .diario = mod_.diario,
                   .progreso = progreso});
  }

  Diario diario_{base.propiedades, banco.reloj};
  BitacoraVisita bitacora_{base.carpeta.Ruta(), diario_, base.registro};
  ComunicadorConDiario driver_;
  Conexion conexion_;
  ModRTU mod_;
  LecturaConfiguracion lectura_;
};

// The entries of a file.
std::vector<std::string> Asientos(const std::filesystem::path& archivo) {
  std::vector<std::string> textos;
  for (const Asiento& a : LeerBitacora(archivo).asientos) {
    textos.push_back(TextoHora(a.momento) + "|" + std::to_string(a.estacion) + "|" + a.comando + "|" + a.antes + "|" +
                     a.escrito + "|" + a.resultado);
  }
  return textos;
}

}  // namespace

TEST(BitacoraDelDiaDeCampo, TieneCadaCosaUnaVezYEnSuOrden) {
  DiaDeCampo dia(true);
  dia.Pasar();
  const auto carpeta = dia.base.carpeta / "Respaldos";
  EXPECT_THAT(
      Asientos(carpeta / "120/Bitacora-2026-03-15.csv"),
      testing::ElementsAre(
          "10:00:00|120|Lectura de la configuración|-|-|23 canales",
          "10:00:00|120|Respaldo (lectura)|-|2026-03-15 10.00.00 lectura.ucg|hecho",
          "10:00:00|120|Grabar fecha y hora|15/03/2026 11:30:00|15/03/2026 10:00:00|hecho",
          "10:00:00|120|Respaldo (antes de escribir)|-|2026-03-15 10.00.00 lectura.ucg|ya estaba guardado",
          "10:00:00|120|Grabar parametrización de canales|-|12 canales, 1 cambio|hecho",
          "10:00:00|120|EA01: Valor Máximo  (MaxValid)|12.15|7.25|hecho",
          "10:00:00|120|Lectura de la agenda|-|-|8 horarios",
          "10:00:00|120|Grabar agenda|6 horarios (00:00 TCond TWind, 04:00 TOblig TCond TWind, 08:00 TOblig TCond "
          "TWind, 12:00 TOblig TWind, 16:00 TCond TWind, 20:00 TOblig TCond TWind), ventana de 10 min.|1 horario "
          "(08:00 TOblig TCond), ventana de 300 min.|hecho",
          "10:00:00|120|Lectura de eventos, pendientes|-|-|8 registros",
          "10:00:00|120|Recuperación de la memoria flash|-|rio.bkp|100 páginas leídas, 0 sin respuesta",
          "10:00:20|120|Grabar identificador|120|300|Id de UTR grabada; aceptó el reinicio; UTR iniciada",
          "10:00:20|120|Cambio de identificador|120|300|sigue en la bitácora de la estación 300"));
  EXPECT_THAT(Asientos(carpeta / "300/Bitacora-2026-03-15.csv"),
              testing::ElementsAre(
                  "10:00:20|300|Cambio de identificador|120|300|lo anterior está en la bitácora de la estación 120",
                  "10:00:20|300|Lectura de la configuración|-|-|23 canales",
                  "10:00:20|300|Respaldo (lectura)|-|2026-03-15 10.00.20 lectura.ucg|hecho",
                  "10:00:20|300|Puesta en marcha: Configuración de sensores|sin leer|23 canales|hecho",
                  "10:00:20|300|Puesta en marcha: Página 34|sin leer|0,0,0|hecho",
                  "10:00:20|300|Puesta en marcha: Página 35|sin leer|1,0,0|hecho",
                  "10:00:20|300|Puesta en marcha: Identificador: se elimina|300|0|hecho",
                  "10:00:20|300|Puesta en marcha: Velocidad|9600|9600 bps|hecho",
                  "10:00:20|300|Puesta en marcha: Borrado de la flash|-|-|hecho",
                  "10:00:22|300|Puesta en marcha: Puesta en hora|-|-|hecho",
                  "10:00:22|300|Puesta en marcha: Reinicio de la UTR|-|-|hecho"));
}

TEST(BitacoraDelDiaDeCampo, NoLeAgregaNadaAlDriver) {
  DiaDeCampo con(true);
  DiaDeCampo sin(false);
  con.Pasar();
  sin.Pasar();
  con.banco.Simulado().VaciarBitacora();
  sin.banco.Simulado().VaciarBitacora();
  EXPECT_FALSE(con.banco.Log().empty());
  EXPECT_EQ(con.banco.Log(), sin.banco.Log());
}

}  // namespace utr
