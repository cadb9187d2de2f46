#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "base/Error.h"
#include "services/Propiedades.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"

namespace utr {
namespace {

Propiedad Entero(std::int64_t numero) {
  return Propiedad{numero};
}
Propiedad Texto(const char* texto) {
  return Propiedad{std::string(texto)};
}

class Propiedades_ : public testing::Test {
 protected:
  prueba::Carpeta carpeta_;
  const std::filesystem::path archivo_ = carpeta_ / "AdminUTR.dll";
};

TEST_F(Propiedades_, CadaValorVuelveConSuTipo) {
  Propiedades escritas(archivo_);
  escritas.Escribir("COMIDENT", Entero(-70000), Entero(0));
  escritas.Escribir("PORTELEFONO", Propiedad{true}, Propiedad{false});
  escritas.Escribir("Clave", Texto("con \"comillas\", ñ y\nlíneas\\"), Texto("Pampas"));
  escritas.Escribir("Factor", Propiedad{0.25}, Propiedad{1.0});
  escritas.Escribir("Número", Texto("0012"), Texto(""));
  escritas.GrabarArchivoPropiedades();

  Propiedades leidas(archivo_);
  leidas.CargarPropiedades();
  EXPECT_EQ(leidas.LeerEntero("COMIDENT", 0), -70000);
  EXPECT_TRUE(leidas.LeerLogico("PORTELEFONO", false));
  EXPECT_EQ(leidas.LeerTexto("Clave", "Pampas"), "con \"comillas\", ñ y\nlíneas\\");
  EXPECT_EQ(leidas.LeerTexto("Factor", ""), "0.25");
  EXPECT_EQ(leidas.LeerTexto("Número", ""), "0012") << "a text of digits stays a text";
}

TEST_F(Propiedades_, CualquierTextoVuelveComoEra) {
  std::mt19937 azar(20261123);
  const char* const piezas[] = {"\n", "\r\n", "'", "'\''", "\"",   "\"\"\"", "\\",     "\\n",    "#", "=",
                                "[",  "ñ",    "💧", "\t",   "\x7f", "\x01",   "\u0085", "\u2028", " ", "x"};
  for (int vuelta = 0; vuelta < 300; ++vuelta) {
    const auto texto = [&] {
      std::string t;
      for (auto n = azar() % 6; n > 0; --n) t += piezas[azar() % std::size(piezas)];
      return azar() % 8 == 0 ? t + '\0' : t;
    };
    const std::string valor = texto();
    const std::string nombre = texto() + "'";
    Propiedades bolsa(archivo_);
    bolsa.Escribir("Clave", valor, Entero(0));
    bolsa.Escribir(nombre, Texto("otra"), Entero(0));
    bolsa.GrabarYRecargar();
    ASSERT_EQ(bolsa.LeerTexto("Clave", "Pampas"), valor) << prueba::LeerTodo(archivo_);
    ASSERT_EQ(bolsa.LeerTexto(nombre, ""), "otra") << prueba::LeerTodo(archivo_);
  }
}

TEST_F(Propiedades_, LoQueHariaIlegibleElArchivoSeRechaza) {
  Propiedades bolsa(archivo_);
  EXPECT_THROW(bolsa.Escribir("Clave", Texto("a\xF1o"), Texto("Pampas")), Error);
  EXPECT_THROW(bolsa.Escribir("a\xF1o", Texto("x"), Texto("")), Error);
  bolsa.Escribir("PUERTO", Entero(3), Entero(1));
  bolsa.GrabarYRecargar();
  EXPECT_EQ(bolsa.LeerEntero("PUERTO", 1), 3);
  EXPECT_EQ(bolsa.LeerTexto("Clave", "Pampas"), "Pampas");
}

TEST_F(Propiedades_, ConElDiscoLlenoQuedaElArchivoAnterior) {
  Propiedades bolsa(archivo_);
  bolsa.Escribir("Clave", Texto("anterior"), Texto("Pampas"));
  bolsa.GrabarYRecargar();
  bolsa.Escribir("Clave", std::string(100000, 'x'), Texto("Pampas"));
  {
    const DispositivoLleno lleno(10);
    EXPECT_THROW(bolsa.GrabarArchivoPropiedades(), Error);
  }
  bolsa.CargarPropiedades();
  EXPECT_EQ(bolsa.LeerTexto("Clave", "Pampas"), "anterior");
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
}

TEST_F(Propiedades_, UnValorDeOtroTipoSeConvierteODaElDefecto) {
  Propiedades bolsa(archivo_);
  const struct {
    Propiedad valor;
    std::int32_t entero;  // read with the default 77
    bool logico;          // read with the default true
    const char* texto;
  } casos[] = {
      {Texto("9600"), 9600, true, "9600"},
      {Texto("192.168.0.1"), 77, true, "192.168.0.1"},
      {Texto(""), 77, true, ""},
      {Texto("False"), 77, false, "False"},
      {Texto("0"), 0, false, "0"},
      {Texto("1e300"), 77, true, "1e300"},
      {Entero(5'000'000'000), 77, true, "5000000000"},
      {Entero(0), 0, false, "0"},
      {Propiedad{2.5}, 2, true, "2.5"},
      {Propiedad{false}, 77, false, "False"},
      {Propiedad{true}, 77, true, "True"},
  };
  for (const auto& caso : casos) {
    bolsa.Escribir("K", caso.valor, Texto("un defecto que ninguno es"));
    EXPECT_EQ(bolsa.LeerEntero("K", 77), caso.entero) << caso.texto;
    EXPECT_EQ(bolsa.LeerLogico("K", true), caso.logico) << caso.texto;
    EXPECT_EQ(bolsa.LeerTexto("K", "?"), caso.texto);
  }
}

TEST_F(Propiedades_, ElValorIgualAlDefectoBorraLaClave) {
  Propiedades bolsa(archivo_);
  bolsa.Escribir("COMIDENT", Entero(12), Entero(0));
  bolsa.Escribir("COMIDENT", Entero(0), Entero(0));
  EXPECT_EQ(bolsa.LeerEntero("COMIDENT", 0), 0);
  EXPECT_EQ(bolsa.LeerEntero("COMIDENT", 9), 9);
}

TEST_F(Propiedades_, SinArchivoQuedaUnoVacioYTodoEsDefecto) {
  Propiedades bolsa(archivo_);
  bolsa.CargarPropiedades();
  EXPECT_EQ(bolsa.LeerTexto("Clave", "Pampas"), "Pampas");
  ASSERT_TRUE(std::filesystem::exists(archivo_));
  EXPECT_EQ(std::filesystem::file_size(archivo_), 0U);
}

TEST_F(Propiedades_, BytesAlAzarDanUnaBolsaVacia) {
  std::mt19937 azar(20260315);
  for (int vuelta = 0; vuelta < 200; ++vuelta) {
    std::string bytes;
    for (auto n = azar() % 300 + 8; n > 0; --n) bytes += static_cast<char>(azar());
    prueba::EscribirTodo(archivo_, bytes);
    Propiedades bolsa(archivo_);
    bolsa.Escribir("Clave", Texto("de antes"), Texto("Pampas"));
    bolsa.CargarPropiedades();
    EXPECT_EQ(bolsa.LeerTexto("Clave", "Pampas"), "Pampas") << "round " << vuelta;
    EXPECT_EQ(prueba::LeerTodo(archivo_), bytes) << "reading changes nothing";
  }
}

TEST_F(Propiedades_, UnaClaveDeOtraFormaNoArrastraALasDemas) {
  prueba::EscribirTodo(archivo_, "PUERTO = [1, 2]\n\"\" = 'sin nombre'\nClave = 'otra'\n[Tabla]\nx = 1\n");
  Propiedades bolsa(archivo_);
  bolsa.CargarPropiedades();
  bolsa.GrabarYRecargar();
  EXPECT_EQ(bolsa.LeerEntero("PUERTO", 1), 1);
  EXPECT_EQ(bolsa.LeerTexto("Clave", "Pampas"), "otra");
}

TEST_F(Propiedades_, GrabarReemplazaElArchivoEntero) {
  prueba::EscribirTodo(archivo_, std::string(5000, '#'));
  Propiedades bolsa(archivo_);
  bolsa.Escribir("PUERTO", Entero(3), Entero(1));
  bolsa.GrabarYRecargar();
  EXPECT_LT(std::filesystem::file_size(archivo_), 100U);
  EXPECT_EQ(bolsa.LeerEntero("PUERTO", 1), 3);
}

TEST_F(Propiedades_, UnaCarpetaInalcanzableSeDiceYLaBolsaSigue) {
  Propiedades bolsa(carpeta_ / "no existe/AdminUTR.dll");
  bolsa.Escribir("PUERTO", Entero(3), Entero(1));
  try {
    bolsa.GrabarYRecargar();
    FAIL() << "saved nowhere without a word";
  } catch (const Error& error) {
    EXPECT_EQ(error.Numero(), error::kArchivo);
  }
  EXPECT_EQ(bolsa.LeerEntero("PUERTO", 1), 3);
  EXPECT_EQ(bolsa.LeerArchivoPropiedades(), "");
}

}  // namespace
}  // namespace utr
