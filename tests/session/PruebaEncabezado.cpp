#include <gtest/gtest.h>

#include <functional>

#include "driver/ErroresDeEnlace.h"
#include "session/AjustesEnlace.h"
#include "session/Encabezado.h"
#include "session/RelojUTR.h"
#include "support/ModPrueba.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"

namespace utr {
namespace {

TEST(RelojUTR, ElAdelantoSeDiceConSusDosUnidadesMayores) {
  const std::pair<std::int64_t, const char*> casos[] = {
      {0, "en hora"},
      {2, "en hora"},
      {-2, "en hora"},
      {3, "3 s adelantado"},
      {-59, "59 s atrasado"},
      {60, "1 min adelantado"},
      {-128, "2 min 8 s atrasado"},
      {3600, "1 h adelantado"},
      {3605, "1 h adelantado"},
      {3 * 3600 + 5 * 60 + 59, "3 h 5 min adelantado"},
      {-(2 * kSegundosDia + 3 * 3600 + 60), "2 d 3 h atrasado"},
      {400 * kSegundosDia + 120, "400 d adelantado"},
  };
  for (const auto& [segundos, texto] : casos) EXPECT_EQ(TextoAdelanto(segundos), texto) << segundos;
}

class ConEncabezado : public prueba::ModPrueba, public testing::Test {
 protected:
  ConEncabezado() {
    mod.reloj_utr = &reloj_utr;
    comunicador.Devuelve("ConfiguracionAlmacenada", TablaDeCanales({{{"Canal", "1"}}}));
  }

  Encabezado El(std::optional<std::size_t> canales = 1) const {
    return EncabezadoDe(lectura, mod, canales, {" COM 1 ", " Vel: 9600 bps ", true});
  }

  RelojUTR reloj_utr;
  ComunicadorConReloj con_reloj{comunicador, reloj, reloj_utr};
  LecturaConfiguracion lectura{mod};
};

TEST_F(ConEncabezado, ElRelojEsElDeLaUltimaLecturaYNoDiceNadaTrasEscribirlo) {
  EXPECT_EQ(El().reloj.texto, "Sin leer");
  comunicador.Devuelve("LeerFechaHora", "15/03/2026 09:57:52");
  EXPECT_EQ(con_reloj.LeerFechaHora(), "15/03/2026 09:57:52");
  EXPECT_EQ(El().reloj.texto, "2 min 8 s atrasado");
  EXPECT_EQ(El().reloj.detalle, "UTR 09:57:52, PC 10:00:00 del 15/03/2026");
  EXPECT_EQ(El().reloj.tono, Tono::kAviso);
  comunicador.Devuelve("LeerFechaHora", "14/03/2026 23:00:00");
  con_reloj.LeerFechaHora();
  EXPECT_EQ(El().reloj.detalle, "UTR 14/03/2026 23:00:00, PC 10:00:00 del 15/03/2026");
  comunicador.Devuelve("LeerFechaHora", "Error");
  con_reloj.LeerFechaHora();
  EXPECT_EQ(El().reloj.texto, "11 h atrasado") << "what isn't a date tells nothing new";
  for (const auto& [hora, tono] : {std::pair{"15/03/2026 10:00:02", Tono::kBien},
                                   {"15/03/2026 09:59:58", Tono::kBien},
                                   {"15/03/2026 10:00:03", Tono::kAviso},
                                   {"15/03/2026 09:59:57", Tono::kAviso},
                                   {"15/03/2026 10:29:59", Tono::kAviso},
                                   {"15/03/2026 10:30:00", Tono::kMal}}) {
    comunicador.Devuelve("LeerFechaHora", hora);
    con_reloj.LeerFechaHora();
    EXPECT_EQ(El().reloj.tono, tono) << hora;
  }
  comunicador.Devuelve("GrabarFechaHora", false);
  EXPECT_FALSE(con_reloj.GrabarFechaHora());
  EXPECT_EQ(El().reloj.texto, "Sin leer") << "it may have been written all the same";
  comunicador.Devuelve("GrabarFechaHora", true);
  EXPECT_TRUE(con_reloj.GrabarFechaHora());
  EXPECT_EQ(El().reloj.texto, "Puesto en hora");
  EXPECT_EQ(El().reloj.detalle, "El 15/03/2026 10:00:00, sin releer");
}

TEST_F(ConEncabezado, ElRelojDeUnaUnidadNoEsElDeLaQueSigue) {
  const auto llegar = [&] {
    con_reloj.IdEquipo(70);
    con_reloj.PorIP(false);
    con_reloj.DireccionIP("");
    con_reloj.PuertoIP("1000");
  };
  const std::function<void()> otra[] = {[&] { con_reloj.IdEquipo(71); },
                                        [&] { con_reloj.PorIP(true); },
                                        [&] { con_reloj.DireccionIP("10.0.0.7"); },
                                        [&] { con_reloj.PuertoIP("1001"); },
                                        [&] { con_reloj.Conectar("9600,N,8,1", "1"); },
                                        [&] { con_reloj.Conectar("9600,N,8,1", "1"); },
                                        [&] { con_reloj.LlamarTelefono("11", ""); },
                                        [&] { con_reloj.LlamarTelefono("11", ""); }};
  comunicador.Devuelve("LeerFechaHora", "15/03/2026 12:00:30");
  for (const auto& cambiar : otra) {
    llegar();
    con_reloj.LeerFechaHora();
    llegar();
    EXPECT_EQ(reloj_utr.EnLaUnidad({2026, 3, 15, 23, 0, 0}), (FechaHora{2026, 3, 16, 1, 0, 30})) << "the same again";
    cambiar();
    EXPECT_FALSE(reloj_utr.Leida() || reloj_utr.EnLaUnidad({2026, 3, 15, 23, 0, 0}));
  }
  llegar();
  con_reloj.LeerFechaHora();
  comunicador.Falla("IdEquipo", Error(8011, "driver", "otra llamada en curso"), 1);
  EXPECT_EQ(prueba::NumeroDeError([&] { con_reloj.IdEquipo(71); }), 8011);
  con_reloj.LeerFechaHora();
  con_reloj.IdEquipo(71);
  EXPECT_FALSE(reloj_utr.Leida());
}

TEST_F(ConEncabezado, LaEstacionEsLaDeLaConfiguracionQueHay) {
  EXPECT_EQ(El(std::nullopt).estacion.texto, "Sin configuración");
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{70}}, Propiedad{std::int64_t{0}});
  lectura.Preparar(std::string(kFuenteUTR));
  EXPECT_EQ(El().estacion.texto, "Identificador 70, 1 canal habilitado");
  EXPECT_EQ(El().estacion.detalle, "De la UTR, leída el 15/03/2026 10:00:00");
  EXPECT_EQ(El().estacion.tono, Tono::kNeutro);
  propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{71}}, Propiedad{std::int64_t{0}});
  EXPECT_EQ(El(8).estacion.texto, "Identificador 70, 8 canales habilitados") << "the one that was read";
  EXPECT_EQ(El().estacion.detalle, "De la UTR, leída el 15/03/2026 10:00:00; los ajustes señalan otra UTR");
  lectura.OlvidarOrigen();
  EXPECT_EQ(El().estacion.detalle, "De la UTR, leída el 15/03/2026 10:00:00; no es lo que la UTR tiene ahora");
  EXPECT_EQ(El().estacion.tono, Tono::kAviso);
  comunicador.Devuelve("LeerArchivoConfiguracion", TablaDeCanales({{{"Canal", "1"}}, {{"Canal", "2"}}}));
  lectura.Preparar("/campo/Arroyo Seco.icf");
  EXPECT_EQ(El(2).estacion.texto, "Archivo Arroyo Seco.icf, 2 canales habilitados");
  EXPECT_EQ(El(std::nullopt).estacion.texto, "Archivo Arroyo Seco.icf");
  EXPECT_EQ(El().estacion.detalle, "leída el 15/03/2026 10:00:00, /campo/Arroyo Seco.icf");
}

TEST_F(ConEncabezado, ElEnlaceSeDiceSinPreguntarAlControlador) {
  conexion.MarcarConectado(true);
  comunicador.llamadas.clear();
  EXPECT_EQ(El().enlace.texto, "Conectado");
  EXPECT_EQ(El().enlace.detalle, "COM 1, Vel: 9600 bps");
  EXPECT_EQ(EncabezadoDe(lectura, mod, {}, {" Desconectado ", "  ", false}).enlace.texto, "Desconectado");
  conexion.MarcarConectado(false);
  EXPECT_EQ(El().enlace.texto, "Desconectado") << "the next action asks before it goes on";
  EXPECT_EQ(El().enlace.tono, Tono::kMal);
  conexion.FijarPorIP(true);
  const Encabezado por_ip = EncabezadoDe(lectura, mod, {}, {"Puerto: 1000 ", " IP: 10.0.0.7 ", true});
  EXPECT_EQ(por_ip.enlace.detalle, "IP: 10.0.0.7, puerto: 1000");
  EXPECT_TRUE(comunicador.llamadas.empty());
}

TEST_F(ConEncabezado, PorIPSeDiceLoQueSeSupoDeLasLlamadas) {
  const auto llegar = [&] { conexion.FijarPorIP(true); };
  const auto responder = [&](std::optional<bool> contesta) { conexion.MarcarRespuesta(contesta); };
  const auto conectar_mal = [&](std::int32_t numero) {
    comunicador.Falla("Conectar", Error(numero, "driver", "x"), 1);
    EXPECT_EQ(prueba::NumeroDeError([&] { conexion.ConectarSegunAjustes(); }), numero);
  };
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{1502}}, Propiedad{std::int64_t{1}});
  propiedades.Escribir(clave::kVelocidad, Propiedad{std::string("10.0.0.7")}, Propiedad{std::string()});
  const struct {
    const char* que;
    std::function<void()> hacer;
    const char* texto;
    Tono tono;
  } casos[] = {
      {"chosen", llegar, "Por IP, sin probar", Tono::kNeutro},
      {"answered", [&] { responder(true); }, "Por IP, conectado", Tono::kBien},
      {"silent", [&] { responder(false); }, "Por IP, sin conexión", Tono::kMal},
      {"again", [&] { responder(true); }, "Por IP, conectado", Tono::kBien},
      {"another unit", [&] { responder({}); }, "Por IP, sin probar", Tono::kNeutro},
      {"silent", [&] { responder(false); }, "Por IP, sin conexión", Tono::kMal},
      {"chosen anew", llegar, "Por IP, sin probar", Tono::kNeutro},
      {"a file that can't be read", [&] { conexion.MarcarConectado(false); }, "Por IP, sin probar", Tono::kNeutro},
      {"nobody at the address", [&] { conectar_mal(error_enlace::kDireccionMuda); }, "Por IP, sin conexión",
       Tono::kMal},
      {"opened", [&] { conexion.ConectarSegunAjustes(); }, "Por IP, sin probar", Tono::kNeutro},
      {"answered", [&] { responder(true); }, "Por IP, conectado", Tono::kBien},
      {"given up", [&] { conectar_mal(error_enlace::kCancelada); }, "Por IP, sin probar", Tono::kNeutro},
      {"answered", [&] { responder(true); }, "Por IP, conectado", Tono::kBien},
      {"closed", [&] { conexion.Desconectar(); }, "Por IP, sin probar", Tono::kNeutro},
      {"a serial port that fails, then IP",
       [&] {
         conexion.FijarPorIP(false);
         comunicador.Falla("Conectar", Error(8005, "driver", "x"), 1);
         EXPECT_EQ(prueba::NumeroDeError([&] { conexion.Conectar("9600,n,8,1", "2"); }), 8005);
         responder(false);
         llegar();
       },
       "Por IP, sin probar", Tono::kNeutro},
  };
  for (const auto& caso : casos) {
    int avisos = 0;
    conexion.AlCambiar([&] { ++avisos; });
    caso.hacer();
    EXPECT_GT(avisos, 0) << caso.que;
    const TextosPanel panel = InfoPanel(mod);
    const Dato enlace = EncabezadoDe(lectura, mod, {}, panel).enlace;
    EXPECT_EQ(enlace.texto, caso.texto) << caso.que;
    EXPECT_EQ(enlace.tono, caso.tono) << caso.que;
    EXPECT_EQ(panel.tono, caso.tono) << caso.que;
    EXPECT_TRUE(panel.habilitados);
    EXPECT_EQ(panel.puerto + panel.velocidad, "Puerto: 1502  IP: 10.0.0.7 ");
  }
  conexion.AlCambiar({});
}

}  // namespace
}  // namespace utr
