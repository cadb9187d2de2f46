#include <gtest/gtest.h>

#include <sstream>

#include "retrieved/download/TablaPorTiempo.h"
#include "support/Tablas.h"

namespace utr {
namespace {

TablaPtr Canal(const std::vector<Celdas>& filas) {
  return TablaDeTextos(
      {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX", "Descripcion", "Unidad"}, filas);
}

std::string Escrita(const std::vector<TablaPtr>& canales, const OpcionesCsv& opciones = {}) {
  std::ostringstream salida;
  EXPECT_TRUE(EscribirPorTiempo(salida, canales, opciones));
  return salida.str();
}

TEST(TablaPorTiempo, UnRenglonPorMomentoYNadaSePierde) {
  const TablaPtr nivel = Canal({{"01/02/2005", "10:00:00", "EA01", "1.500", "2.000", "N/D", "1", "0", "Nivel", "m"},
                                {"01/02/2005", "10:30:00", "EA01", "N/D", "N/D", "N/D", "0", "0", "Nivel", "m"},
                                // the clock went back: the same moment once more
                                {"01/02/2005", "10:00:00", "EA01", "1.700", "N/D", "N/D", "1", "0", "Nivel", "m"},
                                {"", "11:00:00", "EA01", "9.000", "N/D", "N/D", "1", "0", "Nivel", "m"}});
  const TablaPtr lluvia = Canal({{"", "09:00:00", "PLV", " 0.8", "N/D", "N/D", "1", "0", "-", "-"},
                                 {"01/02/2005", "10:00:00", "PLV", " 0.2", "N/D", "N/D", "1", "0", "-", "-"},
                                 {"31/01/2005", "23:00:00", "PLV", " 0.4", "N/D", "N/D", "0", "0", "-", "-"}});
  EXPECT_EQ(Escrita({nivel, lluvia}),
            "Fecha,Hora,EA01 Nivel (m),EA01 máximo,EA01 validado,PLV,PLV validado\r\n"
            "2005-01-31,23:00:00,,,,0.4,No\r\n"
            "2005-02-01,10:00:00,1.500,2.000,Si,0.2,Si\r\n"
            "2005-02-01,10:00:00,1.700,,Si,,\r\n"
            "2005-02-01,10:30:00,,,No,,\r\n"
            ",11:00:00,9.000,,Si,,\r\n"
            ",09:00:00,,,,0.8,Si\r\n");
  EXPECT_EQ(Escrita({lluvia}, {.separador = ';', .decimal = ','}).substr(0, 55),
            "Fecha;Hora;PLV;PLV validado\r\n2005-01-31;23:00:00;0,4;No");
}

TEST(TablaPorTiempo, UnFlujoQueFallaLoDice) {
  std::ostringstream salida;
  salida.setstate(std::ios::badbit);
  EXPECT_FALSE(EscribirPorTiempo(
      salida, {Canal({{"01/02/2005", "10:00:00", "EA01", "1", "N/D", "N/D", "1", "0", "-", "-"}})}, {}));
}

}  // namespace
}  // namespace utr
