#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "driver/ErroresDeEnlace.h"
#include "driver/Textos.h"
#include "operations/Comandos.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using Fin = FinComando;

constexpr const char* kTitulo = "Comandos a la UTR";
constexpr const char* kPagina = "4,7,3,120,0,1,10,0,9";
constexpr const char* kReiniciar = "Esta acción requiere reiniciar la estación remota.\n¿Desea continuar?";
constexpr const char* kFalloPagina = "No se pudo grabar la página";

class ComandosUTR : public prueba::ModPrueba, public testing::Test {
 protected:
  ComandosUTR() {
    const std::function<std::string(const std::string&)> par = [](const std::string& llamada) {
      return TextoPar(static_cast<std::uint16_t>(std::stoi(llamada.substr(llamada.find('(') + 1))));
    };
    comunicador.Devuelve("ConvertirDe", par);
    comunicador.Devuelve("LeerPagina", kPagina);
  }

  Mensaje Caja(const std::string& texto, Icono icono) { return {texto, kTitulo, icono, Botones::kAceptar}; }
  Mensaje Pregunta(const std::string& texto, Icono icono) {
    return {texto, kTitulo, icono, Botones::kSiNo, {}, Respuesta::kNo};
  }
  // How the last write of the journal ended; a note about another identifier may stand behind it.
  std::string Resultado() {
    const auto& todos = mod.diario.Asientos();
    const auto es_escritura = [](const Asiento& uno) { return uno.clase == ClaseAsiento::kEscritura; };
    return std::find_if(todos.rbegin(), todos.rend(), es_escritura)->resultado;
  }

  int ocupado = 0;
  std::vector<std::string> detalles;
  Comandos comandos{mod, kTitulo, [this](std::string_view detalle, const auto& trabajo) {
                      detalles.emplace_back(detalle);
                      ++ocupado;
                      AlFallar(trabajo, [&] { --ocupado; });
                      --ocupado;
                    }};
};

// --- Reads -----------------------------------------------------------------------------------------------------------

// The pages that a unit, or a line, may give: how many good bytes they have.
const std::pair<std::string, std::size_t> kPaginas[] = {{"", 0},
                                                        {"4", 0},  // one character is what is left of no answer
                                                        {"4,7", 2},
                                                        {"4,7,3,120,0,1,10", 7},
                                                        {TextoPagina(std::vector<std::uint8_t>(64, 1)), 64},
                                                        {TextoPagina(std::vector<std::uint8_t>(300, 1)), 300},
                                                        {"sin,datos,en,la,memoria,de,la,utr", 0},
                                                        {"-4,-7,-3,-120,0,1,-10,0", 0}};

TEST_F(ComandosUTR, LasLecturasDeLaPaginaCeroPidenSusPosicionesYDicenSuFalla) {
  const struct {
    std::function<bool(Comandos&)> leer;
    std::size_t bytes;
    const char* fallo;
  } kLecturas[] = {
      {[](Comandos& c) { return c.LeerDelay().has_value(); }, 3, "No se pudo leer el dato\nVerifique el conexionado"},
      {[](Comandos& c) { return c.LeerBPS().has_value(); }, 1,
       "No se pudo leer la velocidad\nVerifique el conexionado"},
      {[](Comandos& c) { return c.LeerIdentificador().has_value(); }, 5,
       "No se pudo leer el número de la UTR\nVerifique el conexionado"},
      {[](Comandos& c) { return c.LeerAgenda().has_value(); }, 8,
       "No se pudo leer la agenda\nVerifique el conexionado"}};
  for (const auto& lectura : kLecturas) {
    for (const auto& [pagina, bytes] : kPaginas) {
      comunicador.Devuelve("LeerPagina", pagina);
      if (bytes < lectura.bytes) operador.Espera(Caja(lectura.fallo, Icono::kCritico));
      EXPECT_EQ(lectura.leer(comandos), bytes >= lectura.bytes) << lectura.fallo << pagina;
      operador.Comprobar();
    }
    comunicador.Falla("LeerPagina", Error(8020, "driver", "sin respuesta"), 1);
    operador.Espera(Caja(lectura.fallo, Icono::kCritico));
    EXPECT_FALSE(lectura.leer(comandos));
  }
  EXPECT_EQ(Errores(), "");
  EXPECT_THAT(mod.diario.Asientos(), IsEmpty()) << "a read does nothing to the unit";
}

TEST_F(ComandosUTR, LoLeidoSeMuestraEnSusUnidades) {
  comunicador.Devuelve("LeerPagina", "6,7,26,44,1,1,160,5");
  EXPECT_EQ(comandos.LeerDelay()->delay, "70");
  EXPECT_EQ(comandos.LeerDelay()->repeticiones, "260");
  EXPECT_EQ(comandos.LeerBPS(), 6) << "a code without a speed is no failure";
  EXPECT_EQ(comandos.LeerIdentificador(), 300);
  EXPECT_EQ(comandos.LeerAgenda(), 1440);
  EXPECT_EQ(comunicador.De("LeerPagina").front(), "LeerPagina(0,no)");
}

TEST_F(ComandosUTR, LasDemasLecturasYSusFallas) {
  comunicador.Devuelve("LeerPagina", "1,0,0");
  EXPECT_EQ(comandos.LeerPagina("35"), "1,0,0");
  EXPECT_EQ(comunicador.llamadas.back(), "LeerPagina(35,no)");
  comunicador.Devuelve("LeerPagina", "7");
  operador.Espera(Caja("No se puede leer la página solicitada\nVerifique el conexionado", Icono::kCritico));
  EXPECT_EQ(comandos.LeerPagina("35"), "7") << "shown as it came";
  comunicador.Falla("LeerPagina", Error(8020, "driver", "x"));
  operador.Espera("No se puede leer la página solicitada\nVerifique el conexionado");
  EXPECT_EQ(comandos.LeerPagina("35"), "");

  comunicador.Devuelve("LeerFechaHora", "05/03/2026 23:59:58");
  EXPECT_EQ(comandos.ActualizarHora(), (FechaHora{2026, 3, 5, 23, 59, 58}));
  for (const char* texto : {"", "N/D", "31/02/2026 10:00:00", "25:00:00"}) {
    comunicador.Devuelve("LeerFechaHora", texto);
    operador.Espera(Caja("No pudo leer la fecha y hora\nVerifique el conexionado", Icono::kInformacion));
    EXPECT_FALSE(comandos.ActualizarHora()) << texto;
  }

  comunicador.Devuelve("LeerEstado", 0x4020);
  EXPECT_EQ(TextoDeBanderas(*comandos.LeerCS()), "ErrorFlash, TxOblig");
  comunicador.Devuelve("LeerEstado", -1);
  operador.Espera(Caja("Sin datos, verifique conexión", Icono::kCritico));
  EXPECT_FALSE(comandos.LeerCS());
}

// --- Writes that don't restart the unit ------------------------------------------------------------------------------

struct CasoOrden {
  std::function<Fin(Comandos&)> correr;
  const char* operacion;  // the driver's, that may fail
  const char* llamada;    // whole
  Mensaje pregunta;       // without text: none
  Mensaje exito;          // the same
  const char* fallo;
  const char* escrito;  // as the journal tells it
};

Mensaje Si(const char* texto, Icono icono) {
  return {texto, kTitulo, icono, Botones::kSiNo, {}, Respuesta::kNo};
}
Mensaje Ok(const char* texto, Icono icono) {
  return {texto, kTitulo, icono, Botones::kAceptar};
}

const CasoOrden kOrdenes[] = {
    {[](Comandos& c) {
       return c.GrabarDelay({"70", "25"});
     },
     "EscribirPagina", "EscribirPagina(0,4,7,2,120,0,1,10,0,9)", Si(kReiniciar, Icono::kExclamacion),
     Ok("Delay grabado", Icono::kInformacion), kFalloPagina, "Delay 70, repeticiones 20"},
    {[](Comandos& c) {
       return c.GrabarDelay({"0", "255"});
     },
     "EscribirPagina", "EscribirPagina(0,4,0,26,120,0,1,10,0,9)", Si(kReiniciar, Icono::kExclamacion),
     Ok("Delay grabado", Icono::kInformacion), kFalloPagina, "Delay 0, repeticiones 260"},
    {[](Comandos& c) { return c.GrabarAgenda("1"); },
     "EscribirPagina",
     "EscribirPagina(0,4,7,3,120,0,1,1,0,9)",
     {},
     Ok("Ventana de agenda grabada", Icono::kInformacion),
     kFalloPagina,
     "1 min."},
    {[](Comandos& c) { return c.GrabarAgenda("2000"); },
     "EscribirPagina",
     "EscribirPagina(0,4,7,3,120,0,1,208,7,9)",
     {},
     Ok("Ventana de agenda grabada", Icono::kInformacion),
     kFalloPagina,
     "2000 min."},
    {[](Comandos& c) {
       return c.GrabarCS({false, false, true, false, false, false, false, true});
     },
     "GrabarEstado", "GrabarEstado(132/0)",
     Si("Esta acción modificará el estado de la UTR\n¿Desea continuar?", Icono::kPregunta),
     Ok("Estado grabado", Icono::kExclamacion), "No se pudo grabar el estado de la UTR", "ErrorFlash, TxOblig"},
    {[](Comandos& c) { return c.EscribirPagina("34", "0,x"); },
     "EscribirPagina",
     "EscribirPagina(34,0,x)",
     {},
     Ok("Pagina grabada", Icono::kExclamacion),
     "No se pudo grabar página",
     "0,x"},
    {[](Comandos& c) { return c.GrabarHora(); },
     "GrabarFechaHora",
     "GrabarFechaHora()",
     {},
     {},
     "No se pudo grabar la hora de la PC a la UTR\nVerifique el conexionado",
     "15/03/2026 10:00:00"},
    {[](Comandos& c) { return c.Hacer(AccionUTR::kBorrarFlash); }, "BorrarFlash", "BorrarFlash()",
     Si("Esta acción borrará todos los datos de la UTR\n¿Desea continuar?", Icono::kPregunta),
     Ok("Flash borrada", Icono::kExclamacion), "Error borrando flash\nVerifique el conexionado", "-"},
    {[](Comandos& c) { return c.Hacer(AccionUTR::kBorrarCartucho); }, "BorrarCartucho", "BorrarCartucho()",
     Si("Esta acción borrará todos los datos del Cartucho\n¿Desea continuar?", Icono::kPregunta),
     Ok("Cartucho borrado", Icono::kExclamacion), "Error borrando el cartucho\nVerifique el conexionado", "-"},
    {[](Comandos& c) { return c.Hacer(AccionUTR::kReiniciarAgenda); }, "ReiniciarAgenda", "ReiniciarAgenda(41)",
     Si("¿Desea verificar el reinicio de la agenda?", Icono::kPregunta), Ok("Agenda iniciada", Icono::kInformacion),
     "No se pudo reiniciar la agenda\nVerifique el conexionado", "-"},
    {[](Comandos& c) { return c.Hacer(AccionUTR::kReiniciarUTR); }, "ReiniciarUTR", "ReiniciarUTR(14)",
     Si("¿Desea verificar el reinicio de la UTR?", Icono::kPregunta), Ok("UTR iniciada", Icono::kExclamacion),
     "Error iniciando UTR", "-"},
};

TEST_F(ComandosUTR, CadaOrdenPreguntaHaceYDice) {
  for (const CasoOrden& caso : kOrdenes) {
    for (const Respuesta respuesta : {Respuesta::kNo, Respuesta::kCerrado}) {
      if (caso.pregunta.texto.empty()) continue;
      comunicador.llamadas.clear();
      operador.Espera(caso.pregunta, respuesta);
      EXPECT_EQ(caso.correr(comandos), Fin::kCancelado) << caso.llamada;
      EXPECT_THAT(comunicador.llamadas, IsEmpty()) << "only a yes does anything";
    }
    if (!caso.pregunta.texto.empty()) operador.Espera(caso.pregunta, Respuesta::kSi);
    if (!caso.exito.texto.empty()) operador.Espera(caso.exito);
    EXPECT_EQ(caso.correr(comandos), Fin::kHecho) << caso.llamada;
    EXPECT_EQ(comunicador.llamadas.back(), caso.llamada);
    EXPECT_EQ(mod.diario.Asientos().back().escrito, caso.escrito);
    EXPECT_EQ(Resultado(), "hecho");
  }
  EXPECT_EQ(mod.diario.Asientos().size(), std::size(kOrdenes)) << "what wasn't confirmed is no command";
}

TEST_F(ComandosUTR, CadaOrdenQueFallaLoDiceConSusPalabrasYQuedaSinConfirmar) {
  for (const CasoOrden& caso : kOrdenes) {
    for (const bool con_error : {false, true}) {
      if (con_error) comunicador.Falla(caso.operacion, Error(8020, "driver", "sin respuesta"));
      comunicador.Devuelve(caso.operacion, false);
      if (!caso.pregunta.texto.empty()) operador.Espera(caso.pregunta, Respuesta::kSi);
      operador.Espera(Caja(caso.fallo, Icono::kCritico));
      EXPECT_EQ(caso.correr(comandos), Fin::kNoConfirmado) << caso.llamada;
      EXPECT_THAT(Resultado(), EndsWith(con_error ? " [sin respuesta]; no confirmado" : "; no confirmado"));
      operador.Comprobar();
    }
    comunicador.NoFalla(caso.operacion);
    comunicador.Devuelve(caso.operacion, true);
  }
  EXPECT_EQ(ocupado, 0);
}

// The driver sends nothing when another unit answers than the one on show: no frame and no journal may leave it open.
TEST_F(ComandosUTR, LaOrdenQueElManejadorRetieneDiceElMotivoYQueNoSeEscribioNada) {
  const char* motivo = "Contesta una unidad real";
  for (const CasoOrden& caso : kOrdenes) {
    comunicador.Falla(caso.operacion, Error(error_enlace::kOtraUnidad, "driver", motivo));
    if (!caso.pregunta.texto.empty()) operador.Espera(caso.pregunta, Respuesta::kSi);
    Mensaje caja = Caja(caso.fallo, Icono::kCritico);
    caja.detalle = motivo;
    operador.Espera(caja);
    EXPECT_EQ(caso.correr(comandos), Fin::kNoEscrito) << caso.llamada;
    EXPECT_THAT(Resultado(), EndsWith(" [Contesta una unidad real]; no se escribió nada"));
    operador.Comprobar();
    comunicador.NoFalla(caso.operacion);
  }
}

// Ahead of everything: what is missing, out of range or no number.
TEST_F(ComandosUTR, LoQueNoSePuedeEscribirNoLlegaALaUnidad) {
  const struct {
    std::function<Fin(Comandos&)> correr;
    Mensaje mensaje;
    Fin fin = Fin::kIncompleto;
    bool pregunta = false;
  } kCasos[] = {
      {[](Comandos& c) {
         return c.GrabarDelay({"", "3"});
       },
       Ok("Es necesario que complete todos los valores relacionados con el RTS", Icono::kInformacion)},
      {[](Comandos& c) {
         return c.GrabarDelay({"7", ""});
       },
       Ok("Es necesario que complete todos los valores relacionados con el RTS", Icono::kInformacion)},
      {[](Comandos& c) {
         return c.GrabarDelay({"70", "256"});
       },
       Ok("Dato invalido", Icono::kExclamacion)},
      {[](Comandos& c) { return c.GrabarBPS(0); },
       Ok("Debe seleccionar un valor de los presentes en la lista", Icono::kInformacion)},
      {[](Comandos& c) { return c.GrabarIdentificador(""); },
       Ok("Debe ingresar el numero de identificador para grabar", Icono::kInformacion)},
      {[](Comandos& c) { return c.EscribirPagina("", "1,2"); },
       Ok("Ingrese un número de página valido", Icono::kExclamacion)},
      {[](Comandos& c) { return c.GrabarAgenda(""); }, Ok(kFalloPagina, Icono::kCritico), Fin::kNoEscrito},
      {[](Comandos& c) { return c.GrabarAgenda("32768"); }, Ok(kFalloPagina, Icono::kCritico), Fin::kNoEscrito},
      {[](Comandos& c) {
         return c.GrabarDelay({"4000000", "3"});
       },
       Ok(kFalloPagina, Icono::kCritico), Fin::kNoEscrito, true},
  };
  for (const auto& caso : kCasos) {
    if (caso.pregunta) operador.Espera(kReiniciar, Respuesta::kSi);
    operador.Espera(caso.mensaje);
    EXPECT_EQ(caso.correr(comandos), caso.fin) << caso.mensaje.texto;
  }
  EXPECT_THAT(comunicador.llamadas, IsEmpty());
}

TEST_F(ComandosUTR, SobreUnaPaginaCeroQueNoSeLeyoNadieEscribe) {
  const struct {
    std::function<Fin(Comandos&)> correr;
    std::size_t bytes;
    bool con_reinicio = false;
  } kEscritores[] = {{[](Comandos& c) {
                        return c.GrabarDelay({"70", "30"});
                      },
                      3},
                     {[](Comandos& c) { return c.GrabarAgenda("15"); }, 8},
                     {[](Comandos& c) { return c.GrabarBPS(1200); }, 1, true},
                     {[](Comandos& c) { return c.GrabarIdentificador("300"); }, 5, true}};
  for (const auto& escritor : kEscritores) {
    for (const auto& [pagina, bytes] : kPaginas) {
      if (bytes >= escritor.bytes || (pagina == "4" && escritor.bytes == 1)) continue;
      comunicador.Devuelve("LeerPagina", pagina);
      if (escritor.bytes != 8) operador.EsperaParte("¿", Respuesta::kSi);
      if (escritor.con_reinicio) {
        operador.EsperaParte("La operación solicitada no puede ser completada\n[La página 0 no pudo leerse");
      } else {
        operador.Espera(Caja(kFalloPagina, Icono::kCritico));
      }
      EXPECT_EQ(escritor.correr(comandos), Fin::kNoEscrito) << pagina;
      EXPECT_THAT(Resultado(), HasSubstr("[La página 0 no pudo leerse"));
      EXPECT_THAT(Resultado(), EndsWith("; no se escribió nada"));
      operador.Comprobar();
    }
  }
  EXPECT_EQ(comunicador.Cuantas("EscribirPagina") + comunicador.Cuantas("ReiniciarUTR"), 0U);
}

// --- What restarts the unit ------------------------------------------------------------------------------------------

struct CasoCambio {
  std::function<Fin(Comandos&)> correr;
  std::vector<std::string> llamadas;
  Mensaje pregunta;
  const char* grabado;
  const char* fallo;
  const char* procedimiento;
  const char* antes;
  std::string_view clave;
  std::int32_t ajuste;  // the setting behind it
};
const CasoCambio kCambios[] = {
    {[](Comandos& c) { return c.GrabarBPS(1200); },
     {"LeerPagina(0,no)", "EscribirPagina(0,1,7,3,120,0,1,10,0,9)", "ReiniciarUTR(14)", "Pausa(20)",
      "Conectar(1200,n,8,1,3)"},
     Si(kReiniciar, Icono::kExclamacion),
     "Velocidad grabada\nSe procede al reinicio de la UTR",
     "No se pudo grabar la velocidad",
     "GrabarBPS_Click",
     "9600",
     clave::kVelocidad,
     1200},
    {[](Comandos& c) { return c.GrabarIdentificador("300"); },
     {"LeerPagina(0,no)", "ConvertirDe(300)", "EscribirPagina(0,4,7,3,44,1,1,10,0,9)", "ReiniciarUTR(14)", "Pausa(20)",
      "IdEquipo(300)"},
     Si("Tenga en cuenta que al modificar el identificador de la estación\n"
        "remota deberá modificar el mismo en la estación central\n"
        "para que se pueda establecer la comunicación entre los equipos.\n"
        "Asimismo, tenga en cuenta que si este equipo no utiliza radio\n"
        "como mecanismo de comunicación, la modificación de este parámetro\n"
        "determinará un funcionamiento incorrecto de la estación\n"
        "¿Confirma que desea grabar el identificador indicado?\n"
        "Tenga en cuenta que luego de la modificación,\n"
        "sse procederá al reinicio de la estación remota.",
        Icono::kExclamacion),
     "Id de UTR grabada, se procederá al reinicio de la UTR",
     "No se pudo grabar el Id de la UTR",
     "GrabarIdentificador_Click",
     "120",
     clave::kIdentificador,
     300},
};

class CambioConReinicio : public ComandosUTR {
 protected:
  CambioConReinicio() { EscribirPuerto(); }
  void EscribirPuerto() {
    propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{3}}, Propiedad{std::int64_t{1}});
    propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{120}}, Propiedad{std::int64_t{0}});
  }
  std::int32_t Guardado(const CasoCambio& caso) {
    Propiedades guardadas(propiedades.Archivo());
    guardadas.CargarPropiedades();
    return guardadas.LeerEntero(caso.clave, -1);
  }
};

TEST_F(CambioConReinicio, LaConversacionSigueConLoNuevo) {
  for (const CasoCambio& caso : kCambios) {
    comunicador.llamadas.clear();
    comunicador.al_llamar = [&](const std::string& llamada) {
      EXPECT_EQ(ocupado, 1) << llamada;
      EXPECT_EQ(detalles.back().empty(), !llamada.starts_with("Pausa") && !caso.llamadas.back().starts_with(llamada));
    };
    operador.Espera(caso.pregunta, Respuesta::kSi);
    operador.Espera(Caja(caso.grabado, Icono::kInformacion));
    operador.Espera(Caja("UTR iniciada", Icono::kExclamacion));
    EXPECT_EQ(caso.correr(comandos), Fin::kHecho);
    EXPECT_EQ(comunicador.llamadas, caso.llamadas);
    EXPECT_EQ(propiedades.LeerEntero(caso.clave, -1), caso.ajuste);
    EXPECT_EQ(Guardado(caso), caso.ajuste);
    EXPECT_EQ(mod.diario.Asientos().back().antes, caso.antes);
    EXPECT_THAT(Resultado(), EndsWith("; UTR iniciada"));
  }
}

// The calls that may fail, what is said, and whether settings and link have moved.
TEST_F(CambioConReinicio, LaQueFallaAMitadDejaAjustesYEnlaceDondeLaUnidadQuedo) {
  const std::string comun = "La operación solicitada no puede ser completada\n[sin respuesta]";
  for (const CasoCambio& caso : kCambios) {
    const char* ultima = caso.clave == clave::kVelocidad ? "Conectar" : "IdEquipo";
    const struct {
      const char* operacion;
      bool con_error;
      bool grabado;  // the message of the page came first
      std::string mensaje;
      Fin fin;
      bool movido;
    } kFallas[] = {{"EscribirPagina", false, false, caso.fallo, Fin::kNoConfirmado, false},
                   {"EscribirPagina", true, false, comun, Fin::kNoConfirmado, false},
                   {"ReiniciarUTR", false, true, "Error iniciando UTR", Fin::kSinReiniciar, false},
                   {"ReiniciarUTR", true, true, comun, Fin::kSinTerminar, false},
                   {ultima, true, true, comun, Fin::kSinTerminar, true}};
    for (const auto& falla : kFallas) {
      propiedades.Reponer({});
      EscribirPuerto();
      propiedades.GrabarArchivoPropiedades();
      const std::int32_t anterior = propiedades.LeerEntero(caso.clave, -1);
      comunicador.Devuelve(falla.operacion, false);
      if (falla.con_error) comunicador.Falla(falla.operacion, Error(8020, "driver", "sin respuesta"));
      operador.Espera(caso.pregunta, Respuesta::kSi);
      if (falla.grabado) operador.Espera(caso.grabado);
      operador.Espera(Caja(falla.mensaje, Icono::kCritico));
      EXPECT_EQ(caso.correr(comandos), falla.fin) << falla.operacion;
      EXPECT_EQ(Resultado().find("aceptó el reinicio") != std::string::npos, falla.movido) << falla.operacion;
      EXPECT_EQ(Guardado(caso), falla.movido ? caso.ajuste : anterior) << falla.operacion;
      EXPECT_EQ(ocupado, 0);
      operador.Comprobar();
      comunicador.NoFalla(falla.operacion);
      comunicador.Devuelve(falla.operacion, true);
    }
    EXPECT_THAT(Errores(), HasSubstr(std::string("\"frmComandos\",\"") + caso.procedimiento + "\""));
  }
  EXPECT_EQ(comunicador.Cuantas("Pausa"), 2U) << "nobody waits for a unit that wasn't restarted";
}

TEST_F(CambioConReinicio, UnIdentificadorQueNoCabeTerminaEnElErrorComunSinEscribir) {
  operador.Espera(kCambios[1].pregunta, Respuesta::kSi);
  operador.EsperaParte("La operación solicitada no puede ser completada\n[");
  EXPECT_EQ(comandos.GrabarIdentificador("40000"), Fin::kNoEscrito);
  EXPECT_THAT(comunicador.llamadas, IsEmpty());
  EXPECT_THAT(Errores(), HasSubstr("\"frmComandos\",\"GrabarIdentificador_Click\""));
  EXPECT_THAT(Resultado(), EndsWith("; no se escribió nada"));
}

// The unit talks at the new speed already: the link follows, whatever the disk says.
TEST_F(CambioConReinicio, LosAjustesQueNoSePuedenGuardarNoDejanElEnlaceAtras) {
  std::filesystem::create_directory(propiedades.Archivo());
  operador.Espera(kReiniciar, Respuesta::kSi);
  operador.Espera(kCambios[0].grabado);
  operador.EsperaParte("La operación solicitada no puede ser completada\n[");
  operador.Espera("UTR iniciada");
  EXPECT_EQ(comandos.GrabarBPS(1200), Fin::kHecho);
  EXPECT_EQ(comunicador.llamadas.back(), "Conectar(1200,n,8,1,3)");
}

TEST_F(CambioConReinicio, LaVelocidadSoloSeCambiaPorUnPuertoPropio) {
  EXPECT_TRUE(comandos.PuedeGrabarBPS());
  conexion.Llamar("4112233", "");
  EXPECT_FALSE(comandos.PuedeGrabarBPS());
  conexion.OlvidarLlamada();
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{11}}, Propiedad{std::int64_t{1}});
  EXPECT_FALSE(comandos.PuedeGrabarBPS());
}

// --- RTS and the journal ---------------------------------------------------------------------------------------------

TEST_F(ComandosUTR, ElRTSCambiaSoloDondeElManejadorLoAcepta) {
  comunicador.Devuelve("ModoConexion", false);
  EXPECT_FALSE(comandos.ConmutarRTS());
  comunicador.Falla("ModoConexion", Error(5, "driver", "sin puerto"), 1);
  EXPECT_FALSE(comandos.ConmutarRTS());
  EXPECT_EQ(Resultado(), "no aceptado [sin puerto]");
  EXPECT_EQ(mod.diario.Asientos().back().antes, "sin leer") << "the line may stand either way at the beginning";
  comunicador.Devuelve("ModoConexion", true);
  EXPECT_TRUE(comandos.ConmutarRTS());
  EXPECT_FALSE(comandos.ConmutarRTS());
  EXPECT_EQ(mod.diario.Asientos().back().antes, "Prendido");
  EXPECT_THAT(comunicador.llamadas,
              ElementsAre("ModoConexion(si)", "ModoConexion(si)", "ModoConexion(si)", "ModoConexion(no)"));
}

TEST_F(ComandosUTR, ElDiarioTieneElValorAnteriorSinLlamadasDeMas) {
  comunicador.Devuelve("LeerEstado", 0x40);
  comandos.LeerCS();
  comunicador.llamadas.clear();
  const auto grabar = [&](const Banderas& banderas) {
    operador.EsperaParte("¿Desea continuar?", Respuesta::kSi);
    operador.EsperaParte("stado");
    comandos.GrabarCS(banderas);
    return mod.diario.Asientos().back().antes;
  };
  EXPECT_EQ(grabar({}), "TxHora");
  comunicador.Devuelve("GrabarEstado", false);
  EXPECT_EQ(grabar({true}), "ninguna") << "what was written is what stands";
  EXPECT_EQ(grabar({}), "UpDateTx(Wr Only) (no confirmado)");
  operador.Espera("Pagina grabada");
  comandos.EscribirPagina("34", "1");
  EXPECT_EQ(mod.diario.Asientos().back().antes, "sin leer");
  EXPECT_EQ(comunicador.Cuantas("LeerEstado") + comunicador.Cuantas("LeerPagina"), 0U);

  const auto ventana = [&](const char* aviso) {
    operador.Espera(aviso);
    comandos.GrabarAgenda("15");
    return mod.diario.Asientos().back().antes;
  };
  comandos.LeerAgenda();
  comandos.LeerPagina("0");
  comunicador.Devuelve("LeerPagina", "");
  EXPECT_EQ(ventana(kFalloPagina), "10 min.") << "its own read failed";
  operador.Espera("Pagina grabada");
  comandos.EscribirPagina("0", "4");
  EXPECT_EQ(mod.diario.Asientos().back().antes, kPagina);
  EXPECT_EQ(ventana(kFalloPagina), "sin leer") << "the page was written over it";
  comunicador.Devuelve("LeerPagina", kPagina);
  ventana("Ventana de agenda grabada");
  operador.Espera("Pagina grabada");
  comandos.EscribirPagina("0", "4");
  EXPECT_EQ(mod.diario.Asientos().back().antes, "sin leer") << "the window was written into it";

  comunicador.Devuelve("LeerFechaHora", "15/03/2026 09:59:00");
  comandos.ActualizarHora();
  const auto hora = [&] {
    comandos.GrabarHora();
    return mod.diario.Asientos().back().antes;
  };
  EXPECT_EQ(hora(), "15/03/2026 09:59:00");
  EXPECT_EQ(hora(), "sin leer") << "what was written went on since";
  comandos.ActualizarHora();
  reloj.Adelantar(2400);
  EXPECT_EQ(hora(), "15/03/2026 09:59:00, leída el 15/03/2026 10:00:00");
  reloj.Poner({2026, 3, 15, 10, 0, 0});

  operador.EsperaParte("¿Desea continuar?", Respuesta::kSi);
  operador.Espera("Flash borrada");
  comandos.Hacer(AccionUTR::kBorrarFlash);
  EXPECT_EQ(grabar({}), "sin leer") << "an erasure may change any of it";

  const TablaPtr tabla = mod.diario.ComoTabla();
  EXPECT_EQ(tabla->RecordCount(), 14);
  EXPECT_EQ(tabla->Texto("Momento"), "15/03/2026 10:00:00");
  EXPECT_EQ(tabla->Texto("UTR"), "sin identificador");
  EXPECT_EQ(tabla->Texto("Comando"), "Grabar estado");
  EXPECT_EQ(tabla->Texto("Escrito"), "ninguna");
}

}  // namespace
}  // namespace utr
