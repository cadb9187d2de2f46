#include <gtest/gtest.h>

#include <set>

#include "driver/ComunicadorReenviado.h"
#include "support/ComunicadorFalso.h"
#include "support/Tablas.h"

namespace utr {
namespace {

std::string Dicho(bool valor) {
  return valor ? "si" : "no";
}
std::string Dicho(std::int32_t numero) {
  return std::to_string(numero);
}
std::string Dicho(std::string texto) {
  return texto;
}
std::string Dicho(const TablaPtr& tabla) {
  return tabla ? tabla->Texto("Quien") : "sin tabla";
}

// Every operation once, each argument another one, and what they gave.
std::vector<std::string> LlamarTodo(Comunicador& c, Tabla& tabla) {
  const std::uint8_t bytes[78] = {};
  c.IdEquipo(120);
  c.EscribirLog("línea");
  c.Pausa(3);
  c.Conectar("9600,n,8,1", "1");
  c.Desconectar();
  c.DireccionIP("192.168.0.1");
  c.PuertoIP("1000");
  c.PorIP(true);
  c.Cancelar(false);
  return {Dicho(c.BorrarFlash()),
          Dicho(c.ReiniciarAgenda("41")),
          Dicho(c.ReiniciarUTR("14")),
          Dicho(c.DecodificarPagina(bytes, "0#0", "01/01/2001")),
          Dicho(c.DecodificarPaginaCola(bytes, "1#0", "02/01/2001")),
          Dicho(c.LeerInstantaneos()),
          Dicho(c.ConvertirA(17)),
          Dicho(c.ConvertirDe(300)),
          Dicho(c.DescribirCodigo("15/03/2026")),
          Dicho(c.LeerAgenda()),
          Dicho(c.LeerPaginaFlash(3, 17)),
          Dicho(c.GrabarAgenda(tabla)),
          Dicho(c.ConfiguracionAlmacenada(true)),
          Dicho(c.LeerArchivoConfiguracion("a.icf")),
          Dicho(c.GrabarParametrizacion(tabla)),
          Dicho(c.LeerEventos("a", "b")),
          Dicho(c.LeerDatos("c", "d", 4)),
          Dicho(c.LeerColaTx("e", "f")),
          Dicho(c.LeerFechaHora()),
          Dicho(c.LeerEstado()),
          Dicho(c.GrabarFechaHora()),
          Dicho(c.GrabarEstado("4/0")),
          Dicho(c.EscribirPagina("34", "0,0,0")),
          Dicho(c.GrabarEvento("1", "128/0/40/0")),
          Dicho(c.GrabarPilaCanal("7", "1$2")),
          Dicho(c.GrabarCanalesModificar("33", "3#")),
          Dicho(c.LeerPagina("35", true)),
          Dicho(c.ModoConexion(false)),
          Dicho(c.ExportarImp(tabla, "a.imp", 1)),
          Dicho(c.CargarConfiguracion("b.icf")),
          Dicho(c.ObtenerPuertos()),
          Dicho(c.EstadoPuerto()),
          Dicho(c.EstadoEnlace()),
          Dicho(c.LlamarTelefono("48001234", "ATZ")),
          Dicho(c.GrabarSalidaDigital(2, true)),
          Dicho(c.LeerDatosCartucho("g", "h", 5)),
          Dicho(c.LeerEventosCartucho("i", "j")),
          Dicho(c.LeerColaTxCartucho("k", "l")),
          Dicho(c.BorrarCartucho()),
          Dicho(c.GrabarConfiguracion(tabla))};
}

// Answers that tell the operation: the text of the call, a table that holds it, a number of its own; truth values are
// alternately true and false.
void Responder(ComunicadorFalso& falso, const std::vector<std::string>& llamadas) {
  bool valor = false;
  std::int32_t numero = 0;
  for (const std::string& llamada : llamadas) {
    const std::string operacion = llamada.substr(0, llamada.find('('));
    falso.Devuelve(operacion, valor = !valor);
    falso.Devuelve(operacion, ++numero);
    falso.Devuelve(operacion, std::function<std::string(const std::string&)>([](const std::string& l) { return l; }));
    falso.Devuelve(operacion, std::function<TablaPtr(const std::string&)>(
                                  [](const std::string& l) { return TablaDeTextos({"Quien"}, {{l.c_str()}}); }));
  }
}

TEST(ComunicadorReenviado, CadaOperacionPasaConSusArgumentosYSuRespuesta) {
  ComunicadorFalso directo;
  ComunicadorFalso destino;
  ComunicadorReenviado reenviado(destino);
  const TablaPtr tabla = TablaDeTextos({"Canal"}, {{"1"}});
  LlamarTodo(directo, *tabla);
  const std::vector<std::string> llamadas = std::exchange(directo.llamadas, {});
  EXPECT_EQ(std::set<std::string>(llamadas.begin(), llamadas.end()).size(), 48U) << "all but the log";
  Responder(directo, llamadas);
  Responder(destino, llamadas);
  EXPECT_EQ(LlamarTodo(reenviado, *tabla), LlamarTodo(directo, *tabla));
  EXPECT_EQ(destino.llamadas, llamadas);
  EXPECT_EQ(destino.log, std::vector<std::string>{"línea"});
  destino.Falla("LeerAgenda", Error(8020, "driver", "La UTR no responde"));
  EXPECT_THROW(reenviado.LeerAgenda(), Error);
}

TEST(ComunicadorReenviado, LoQueSeCambiaEsLoUnicoQueCambia) {
  class SinCartucho : public ComunicadorReenviado {
   public:
    using ComunicadorReenviado::ComunicadorReenviado;
    bool BorrarCartucho() override { return !Destino().BorrarFlash(); }
  };
  ComunicadorFalso destino;
  SinCartucho cambiado(destino);
  EXPECT_FALSE(cambiado.BorrarCartucho());
  EXPECT_TRUE(cambiado.BorrarFlash());
  EXPECT_EQ(destino.llamadas, (std::vector<std::string>{"BorrarFlash()", "BorrarFlash()"}));
}

TEST(ComunicadorFalso, GuardaUnaCopiaDeCadaTablaQueRecibe) {
  ComunicadorFalso falso;
  const TablaPtr tabla = TablaDeTextos({"Canal", "AMax"}, {{"1", "5"}, {"2", "6"}, {"1", "7"}});
  tabla->Filter("Canal='1'");
  tabla->Sort("AMax DESC");
  falso.Devuelve("GrabarParametrizacion", false);
  EXPECT_FALSE(falso.GrabarParametrizacion(*tabla));
  tabla->Set("AMax", "9");
  EXPECT_TRUE(falso.GrabarConfiguracion(*tabla));
  const auto recibidas = falso.Recibidas("GrabarParametrizacion");
  ASSERT_EQ(recibidas.size(), 1U);
  ASSERT_EQ(recibidas[0]->RecordCount(), 2U) << "the rows that it showed";
  EXPECT_EQ(recibidas[0]->Filas().Texto(0, 1), "7") << "as they were then, in their order";
  EXPECT_EQ(recibidas[0]->Filas().Texto(1, 1), "5");
  EXPECT_EQ(falso.Recibidas("GrabarConfiguracion")[0]->Filas().Texto(0, 1), "9");
  EXPECT_TRUE(falso.Recibidas("GrabarAgenda").empty());
  tabla->Filter("Canal='3'");
  falso.GrabarAgenda(*tabla);
  EXPECT_EQ(falso.Recibidas("GrabarAgenda")[0]->RecordCount(), 0U);
}

}  // namespace
}  // namespace utr
