#include <gtest/gtest.h>

#include "driver/BancoSimulado.h"
#include "operations/Comandos.h"
#include "operations/SalidasDigitales.h"
#include "session/AjustesEnlace.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

// The commands against the simulated station, which goes away, comes back at another speed and keeps what it was told.
class ComandosSimulados : public testing::Test {
 protected:
  ComandosSimulados() { banco.Conectar(); }

  void Esperar(std::initializer_list<const char*> preguntas, std::initializer_list<const char*> avisos) {
    for (const char* pregunta : preguntas) base.operador.EsperaParte(pregunta, Respuesta::kSi);
    for (const char* aviso : avisos) base.operador.EsperaParte(aviso);
  }
  bool Contesta() { return !banco.Driver().LeerFechaHora().empty(); }

  prueba::BancoSimulado banco;
  prueba::ModPrueba base;
  Conexion conexion{banco.Driver(), base.propiedades};
  ModRTU mod = prueba::ModSobre(banco.Driver(), banco.reloj, conexion, base, base.diario, base.bitacora);
  Comandos comandos{mod, "Comandos a la UTR", [](std::string_view, const auto& trabajo) { trabajo(); }};
};

TEST_F(ComandosSimulados, TrasCambiarVelocidadEIdentificadorLaUnidadSigueContestando) {
  Esperar({"¿Desea continuar?"}, {"Velocidad grabada", "UTR iniciada"});
  EXPECT_EQ(comandos.GrabarBPS(1200), FinComando::kHecho);
  EXPECT_TRUE(Contesta());
  EXPECT_EQ(comandos.LeerBPS(), 1);
  Esperar({"¿Confirma"}, {"Id de UTR grabada", "UTR iniciada"});
  EXPECT_EQ(comandos.GrabarIdentificador("300"), FinComando::kHecho);
  EXPECT_TRUE(Contesta());
  EXPECT_EQ(comandos.LeerIdentificador(), 300);
  // Whoever goes on as before meets silence.
  banco.Driver().IdEquipo(120);
  EXPECT_FALSE(Contesta());
  banco.Driver().IdEquipo(300);
  banco.Driver().Conectar("9600,n,8,1", "1");
  EXPECT_FALSE(Contesta());
}

TEST_F(ComandosSimulados, LaUnidadQueCambiaSeVaMasQueLaQueSoloSeReinicia) {
  Esperar({"¿Desea verificar"}, {"UTR iniciada"});
  comandos.Hacer(AccionUTR::kReiniciarUTR);
  EXPECT_FALSE(Contesta());
  banco.Pasar(5);
  EXPECT_TRUE(Contesta());
  ASSERT_TRUE(banco.Driver().EscribirPagina("0", "1"));
  ASSERT_TRUE(banco.Driver().ReiniciarUTR("14"));
  banco.Driver().Conectar("1200,n,8,1", "1");
  banco.Pasar(18);
  EXPECT_FALSE(Contesta());
  banco.Pasar(2);
  EXPECT_TRUE(Contesta());
}

TEST_F(ComandosSimulados, LoGrabadoSeLeeYLoBorradoNoEsta) {
  Esperar({"¿Desea continuar?"}, {"Delay grabado"});
  comandos.GrabarDelay({"100", "255"});
  EXPECT_EQ(comandos.LeerDelay()->delay, "100");
  EXPECT_EQ(comandos.LeerDelay()->repeticiones, "260");
  Esperar({}, {"Ventana de agenda grabada"});
  comandos.GrabarAgenda("1440");
  EXPECT_EQ(comandos.LeerAgenda(), 1440);
  Esperar({"el estado"}, {"Estado grabado"});
  comandos.GrabarCS({false, false, true, false, false, false, false, true});
  EXPECT_EQ(TextoDeBanderas(*comandos.LeerCS()), "ErrorFlash, TxOblig");
  Esperar({}, {"Pagina grabada"});
  comandos.EscribirPagina("34", "7,8,9");
  EXPECT_EQ(comandos.LeerPagina("34"), "7,8,9");
  banco.Desfasar(90);
  comandos.GrabarHora();
  EXPECT_EQ(comandos.ActualizarHora(), banco.Ahora());

  EXPECT_GT(banco.Driver().LeerDatos("01/01/2026", "15/03/2026", 0)->RecordCount(), 0);
  Esperar({"los datos de la UTR"}, {"Flash borrada"});
  comandos.Hacer(AccionUTR::kBorrarFlash);
  EXPECT_EQ(banco.Driver().LeerDatos("01/01/2026", "15/03/2026", 0)->RecordCount(), 0);
  Esperar({"los datos del Cartucho"}, {"Cartucho borrado"});
  comandos.Hacer(AccionUTR::kBorrarCartucho);
  EXPECT_EQ(banco.Driver().LeerEventosCartucho("", "")->RecordCount(), 0);

  EXPECT_EQ(ConmutarSalida(banco.Driver(), 2, true), kEncendido);
  EXPECT_EQ(TextoDeSalida(2, ObtenerEstadoSalidasDig(banco.Driver())[2]), kEncendido);
}

TEST_F(ComandosSimulados, UnaUnidadMudaDejaTodoComoEstaba) {
  banco.Enmudecer(true);
  Esperar({"¿Desea continuar?"}, {"La página 0 no pudo leerse"});
  EXPECT_EQ(comandos.GrabarBPS(1200), FinComando::kNoEscrito);
  EXPECT_EQ(base.propiedades.LeerEntero(clave::kVelocidad, 9600), 9600);
  Esperar({}, {"No se pudo leer la velocidad"});
  EXPECT_FALSE(comandos.LeerBPS());
  banco.Enmudecer(false);
  EXPECT_EQ(comandos.LeerBPS(), 4) << "a second try is possible";
}

}  // namespace
}  // namespace utr
