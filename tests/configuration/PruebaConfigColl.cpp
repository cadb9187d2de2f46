#include <gtest/gtest.h>

#include "base/Error.h"
#include "configuration/ConfigColl.h"
#include "support/Carpeta.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {
namespace {

// The channel table: name, type and width of its columns, in order.
constexpr const char* kEsquema =
    "Tipo:5 Pila:5 Flags:5 TMed:10 TRead:10 TEval:10 TStorage:10 TDiscret:10 TCero:10 TResetAlarma:10 MaxValid:20 "
    "MinValid:20 MaxSubVal:20 MaxBajVal:20 MaxSubTx:20 MaxBajTx:20 AMax:20 AMin:20 AlSub:20 AlBaj:20 AlMaxPico:20 "
    "AlMinPico:20 RangoMax:20 RangoMin:20 Rango:20 Span:20 Cero:20 Bits:5 Pagina:5 Canal:30 CtePluvi:doble "
    "NivRefLmn:20 "
    "Resolucion:30 Descripcion:30 Modificado:logico Parametro:4 Unidad:4 RangoNegativo:4";

std::string Esquema(const Tabla& tabla) {
  std::string esquema;
  for (std::size_t i = 0; i < tabla.FieldCount(); ++i) {
    const Campo& campo = tabla.Field(i);
    if (i > 0) esquema += ' ';
    esquema += campo.nombre + ':';
    esquema += campo.tipo == TipoCampo::kDoble    ? "doble"
               : campo.tipo == TipoCampo::kLogico ? "logico"
                                                  : std::to_string(campo.tamano);
    EXPECT_NE(campo.atributos & atributo::kAnulable, 0U) << campo.nombre;
    EXPECT_NE(campo.atributos & atributo::kActualizable, 0U) << campo.nombre;
  }
  return esquema;
}

class PruebaConfigColl : public testing::Test {
 protected:
  std::vector<std::string> Canales() const {
    std::vector<std::string> canales;
    for (const ConfigPtr& config : coleccion_) canales.push_back(config->Canal);
    return canales;
  }
  void Agregar(std::initializer_list<std::int16_t> canales) {
    for (const std::int16_t canal : canales)
      coleccion_.Add(canal, *TablaDeCanales({{{"Canal", std::to_string(canal).c_str()}}}));
  }

  prueba::Carpeta carpeta_;
  RelojFalso reloj_;
  RegistroErrores registro_{carpeta_ / "utr.err", reloj_};
  ConfigColl coleccion_;
};

TEST_F(PruebaConfigColl, ColeccionVaciaDaElEsquemaSinFilas) {
  const TablaPtr tabla = coleccion_.GetRecMembers(registro_);
  EXPECT_EQ(Esquema(*tabla), kEsquema);
  EXPECT_TRUE(tabla->Abierta());
  EXPECT_EQ(tabla->RecordCount(), 0U);
}

TEST_F(PruebaConfigColl, TodoVuelveComoVinoMenosElNombre) {
  auto origen = std::make_shared<Tabla>();
  AgregarColumnasDeCanales(*origen);
  origen->Append("Nombre", TipoCampo::kVarChar, 30);
  origen->Open();
  origen->AddNew();
  for (std::size_t i = 0; i < 38; ++i) origen->Set(i, std::to_string(i + 1));
  origen->Set("CtePluvi", Valor{0.25});
  origen->Set("Modificado", Valor{true});
  origen->Set("Nombre", "Estación");
  origen->UpdateBatch();

  const ConfigPtr config = coleccion_.Add(30, *origen);
  EXPECT_EQ(config->Nombre, "Estación");
  EXPECT_EQ(config->Key, "C30");
  EXPECT_EQ(config->CtePluvi, 0.25);

  const TablaPtr vuelta = coleccion_.GetRecMembers(registro_);
  ASSERT_EQ(vuelta->RecordCount(), 1U);
  EXPECT_EQ(vuelta->Pendientes(), 0U);
  EXPECT_EQ(vuelta->BuscarCampo("Nombre"), -1);
  for (std::size_t i = 0; i < 38; ++i)
    EXPECT_EQ(vuelta->Texto(i), origen->Texto(vuelta->Field(i).nombre)) << vuelta->Field(i).nombre;
}

TEST_F(PruebaConfigColl, LaPrimeraFilaDeUnCanalTieneLaUltimaPalabra) {
  const auto tabla = TablaDeCanales({{{"Canal", "3"}, {"Span", "100"}}, {{"Canal", "3"}, {"Span", "200"}}});
  const ConfigPtr primero = coleccion_.Add(3, *tabla);
  tabla->MoveNext();
  EXPECT_EQ(coleccion_.Add(3, *tabla), primero);
  EXPECT_EQ(primero->Span, "100");
  EXPECT_EQ(coleccion_.Count(), 1U);
}

TEST_F(PruebaConfigColl, ItemPorNumeroOTexto) {
  Agregar({9, 7});
  EXPECT_EQ(coleccion_.Item(7)->Canal, "7");
  EXPECT_EQ(coleccion_.Item(" 7 "), coleccion_.Item(7));
  EXPECT_EQ(coleccion_.Item(99), nullptr);
  EXPECT_EQ(coleccion_.Item(""), nullptr);
  EXPECT_EQ(coleccion_.Item("C7"), nullptr);
}

TEST_F(PruebaConfigColl, RemoveEsPorLugarOPorClaveEntera) {
  Agregar({5, 7, 1, 9});
  coleccion_.Remove(1);
  EXPECT_EQ(Canales(), (std::vector<std::string>{"7", "1", "9"}));
  coleccion_.Remove("C1");
  EXPECT_EQ(Canales(), (std::vector<std::string>{"7", "9"}));
  EXPECT_THROW(coleccion_.Remove("7"), Error);
  EXPECT_THROW(coleccion_.Remove(std::size_t{0}), Error);
  EXPECT_THROW(coleccion_.Remove(3), Error) << "one behind the last";
  EXPECT_EQ(coleccion_.Count(), 2U);
}

TEST_F(PruebaConfigColl, ConClaveDadaNoSeHallaPorCanal) {
  const auto tabla = TablaDeCanales({{{"Canal", "4"}}});
  const ConfigPtr config = coleccion_.Add(4, *tabla, "viento");
  EXPECT_EQ(config->Key, "C4");
  EXPECT_EQ(coleccion_.Item(4), nullptr);
  EXPECT_EQ(coleccion_.Add(6, *tabla, "VIENTO")->Key, "C6");
  EXPECT_EQ(coleccion_.Count(), 1U) << "a key that is taken takes no other";
  coleccion_.Remove("Viento");
  EXPECT_EQ(coleccion_.Count(), 0U);
}

TEST_F(PruebaConfigColl, LoQueNoSeLeeQuedaComoEra) {
  const ConfigPtr config = coleccion_.Add(2, *TablaDeTextos({"Canal", "Span", "CtePluvi", "Modificado", "NivRefLmn"},
                                                            {{"2", nullptr, "mucho", "Si", nullptr}}));
  EXPECT_EQ(config->Canal, "2");
  EXPECT_EQ(config->Span, "");
  EXPECT_EQ(config->CtePluvi, 0);
  EXPECT_FALSE(config->Modificado);
  EXPECT_EQ(config->NivRefLmn, "0");
  EXPECT_EQ(config->Parametro, "0");
  EXPECT_EQ(config->Unidad, "");
  EXPECT_EQ(config->Nombre, "");
  EXPECT_EQ(coleccion_.Add(3, *TablaDeTextos({"Canal"}))->Canal, "") << "a table without a row";
}

TEST_F(PruebaConfigColl, ConstanteConPuntoOComa) {
  std::int16_t canal = 0;
  for (const char* texto : {"0,2", "0.2", " 0,2 "})
    EXPECT_EQ(coleccion_.Add(++canal, *TablaDeTextos({"CtePluvi"}, {{texto}}))->CtePluvi, 0.2) << texto;
  EXPECT_EQ(coleccion_.Add(++canal, *TablaDeCanales({{{"CtePluvi", "0.2"}}}))->CtePluvi, 0.2);
}

TEST_F(PruebaConfigColl, NombreNulo) {
  EXPECT_EQ(coleccion_.Add(1, *TablaDeTextos({"Nombre"}, {{nullptr}}))->Nombre, "");
}

TEST_F(PruebaConfigColl, GetRecMembersQuedaEnLaPrimeraFilaEnOrdenDeAgregado) {
  Agregar({22, 1, 15});
  const TablaPtr tabla = coleccion_.GetRecMembers(registro_);
  EXPECT_EQ(tabla->Texto("Canal"), "22");
  EXPECT_EQ(Filas(*tabla, {"Canal"}), (std::vector<std::string>{"22", "1", "15"}));
}

}  // namespace
}  // namespace utr
