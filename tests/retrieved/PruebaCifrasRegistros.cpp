#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "retrieved/CifrasRegistros.h"
#include "support/Tablas.h"

namespace utr {
namespace {

TablaPtr Datos(const std::vector<Celdas>& filas) {
  return TablaDeTextos(
      {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX", "Descripcion", "Unidad"}, filas);
}

Celdas Registro(const char* hora, const char* canal, const char* valor, const char* validacion = "1") {
  return {"15/03/2026", hora, canal, valor, "N/D", "N/D", validacion, "0", "Nivel", "m"};
}

Celdas Viento(const char* hora, const char* valor, const char* unidad) {
  return {"15/03/2026", hora, "EA03", valor, "N/D", "N/D", "1", "0", "Dirección del viento", unidad};
}

TEST(CifrasRegistros, LoQueHayEnLoLeido) {
  const TablaPtr canales = TablaDeCanales({{{"Canal", "1"}, {"TStorage", "10"}}});
  struct Caso {
    TablaPtr tabla;
    const char* texto;
  };
  const Caso casos[] = {
      {Datos({}), ""},
      {Datos({Registro("10:00:00", "EA01", "1.500")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:00:00; 1 registro; mínimo 1.5 m, máximo 1.5 m, media "
       "1.500 m"},
      {Datos({Registro("10:00:00", "EA01", "1.000"), Registro("10:10:00", "EA01", "N/D", "0"),
              Registro("10:20:00", "EA01", "2.000", "0"), Registro("10:50:00", "EA01", "2.000")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:50:00; 4 registros, 1 sin valor, 1 sin validar, faltan 2, "
       "2 huecos; mínimo 1 m, máximo 2 m, media 1.667 m"},
      {Datos({Registro("10:00:00", "PLV", " 0.2"), Registro("10:10:00", "PLV", " 0.4")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:10:00; 2 registros; mínimo 0.2 m, máximo 0.4 m, media "
       "0.300 m, lluvia total 0.600 m"},
      {Datos({{"15/03/2026", "10:00:00", "PLV", "5", "N/D", "N/D", "1", "0", "-", "-"}}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:00:00; 1 registro; mínimo 5, máximo 5, media 5.000, suma "
       "5.000"},
      {Datos({{"15/03/2026", "10:00:00", "EA01", "1", "1.75", "0.5", "1", "0", "Nivel", "m"},
              {"15/03/2026", "10:10:00", "EA01", "N/D", "9", "-9", "1", "0", "Nivel", "m"}}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:10:00; 2 registros, 1 sin valor, 1 hueco; mínimo 0.5 m, "
       "máximo 1.75 m, media 1.000 m"},
      {Datos({Viento("10:00:00", "350", "°"), Viento("10:10:00", "20", "°")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:10:00; 2 registros; dirección media 5.000 °"},
      {Datos({Viento("10:00:00", "355", "°"), Viento("10:10:00", "5", "°")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:10:00; 2 registros; dirección media 0.000 °"},
      {Datos({Viento("10:00:00", "90", "°"), Viento("10:10:00", "270", "°")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:10:00; 2 registros"},
      {Datos({Viento("10:00:00", "1000", "-"), Viento("10:10:00", "20", "-")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:10:00; 2 registros"},
      {Datos({Registro("10:00:00", "EA01", "N/D"), Registro("10:10:00", "EA01", "N/D")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:10:00; 2 registros, 2 sin valor, 1 hueco"},
      {Datos({Registro("10:20:00", "EA01", "1"), Registro("10:00:00", "PLV", "2")}),
       "Primero: 15/03/2026 10:00:00, último: 15/03/2026 10:20:00; 2 registros; 2 canales"},
      {Datos({{"", "10:00:00", "EA01", "1", "", "", "1", "0", "-", "-"}}), "Sin fechas; 1 registro, 1 sin fecha"},
      {TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2", "Descripcion"},
                     {{"15/03/2026", "11:00:00", "1", "", "", ""}, {"14/03/2026", "12:00:00", "2", "", "", ""}}),
       "Primero: 14/03/2026 12:00:00, último: 15/03/2026 11:00:00; 2 eventos"},
      {TablaDeTextos({"Fecha", "Hora", "Canal", "Valor"}, {{"15/03/2026", "11:00:00", "1", "2"}}), ""},
  };
  for (const Caso& caso : casos) EXPECT_EQ(TextoCifras(*caso.tabla, SeriesDe(*caso.tabla, canales.get())), caso.texto);
}

TEST(CifrasRegistros, DeLoQueNoEsAIntervalosNoFaltaNada) {
  const TablaPtr canales = TablaDeCanales({{{"Canal", "1"}, {"TStorage", "10"}}});
  const TablaPtr cola = Datos({Registro("10:00:00", "EA01", "1.000"), Registro("12:50:00", "EA01", "2.000")});
  const SeriesDeTabla series = SeriesDe(*cola, canales.get());
  EXPECT_THAT(TextoCifras(*cola, series), testing::HasSubstr("faltan"));
  EXPECT_EQ(TextoCifras(*cola, series, false),
            "Primero: 15/03/2026 10:00:00, último: 15/03/2026 12:50:00; 2 registros; mínimo 1 m, máximo 2 m, media "
            "1.500 m");
  EXPECT_EQ(SeriesDe(*cola, nullptr, false)[0]->Tramos(), (std::vector<TramoSerie>{{0, 2}})) << "one line in a plot";
}

TEST(CifrasRegistros, SeMarcaLoQueNoTieneValorONoFueValidado) {
  const TablaPtr tabla = Datos({Registro("10:00:00", "EA01", "1"), Registro("10:10:00", "EA01", "N/D", "0"),
                                Registro("10:20:00", "EA01", "2", "0"), Registro("10:30:00", "EA01", nullptr)});
  const MarcasRegistros marcas(*tabla);
  EXPECT_EQ(marcas.De(0), MarcaRegistro::kNinguna);
  EXPECT_EQ(marcas.De(1), MarcaRegistro::kSinValor);
  EXPECT_EQ(marcas.De(2), MarcaRegistro::kSinValidar);
  EXPECT_EQ(marcas.De(3), MarcaRegistro::kSinValor);
  const TablaPtr eventos = TablaDeTextos({"Fecha"}, {{"15/03/2026"}});
  EXPECT_EQ(MarcasRegistros(*eventos).De(0), MarcaRegistro::kNinguna);
}

}  // namespace
}  // namespace utr
