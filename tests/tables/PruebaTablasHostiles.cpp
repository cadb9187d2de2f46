#include <gtest/gtest.h>

#include <algorithm>

#include "support/Carpeta.h"
#include "tables/Comun.h"

// Tables that nobody has in earnest: what they hold stays right, and their room follows what they hold.
namespace utr {
namespace {

using prueba::Carpeta;
using prueba::Recorrido;

std::string Archivo(int columnas, const std::string& filas) {
  std::string s =
      "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882' xmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882' "
      "xmlns:rs='urn:schemas-microsoft-com:rowset' xmlns:z='#RowsetSchema'><s:Schema id='RowsetSchema'>"
      "<s:ElementType name='row'>";
  for (int i = 0; i < columnas; ++i) {
    s += "<s:AttributeType name='k" + std::to_string(i) + "'" + (i % 2 == 0 ? "" : " dt:type='int'") + "/>";
  }
  return s + "</s:ElementType></s:Schema><rs:data>\r\n" + filas + "</rs:data>\r\n</xml>";
}

std::string Repetido(const char* texto, int veces) {
  std::string s;
  while (veces-- > 0) s += texto;
  return s;
}

TEST(TablasHostiles, FilasVaciasDeMuchasColumnasNoOcupanLugar) {
  const Carpeta carpeta;
  constexpr int kColumnas = 2000;
  constexpr int kVacias = 20000;
  const std::string llena = "\t<z:row k0='primera' k1='1'/>\r\n";
  const std::string ultima = "\t<z:row k1999='7' k1998='x'/>\r\n";
  const std::string bytes = Archivo(kColumnas, llena + Repetido("\t<z:row/>\r\n", kVacias) + ultima);
  prueba::EscribirTodo(carpeta / "t.xml", bytes);
  Tabla t;
  t.Open(carpeta / "t.xml");
  EXPECT_EQ(t.RecordCount(), kVacias + 2U);
  EXPECT_LT(t.Memoria(), bytes.size() * 4);
  t.MoveLast();
  EXPECT_EQ(t.Texto(1999), "7");
  EXPECT_EQ(t.Texto(1998), "x");
  EXPECT_TRUE(t.EsNulo(1997));
  t.Filter("k1998='x'");
  EXPECT_EQ(t.RecordCount(), 1U);
  t.Filter("");
  t.GuardarSobre(carpeta / "u.xml");
  const std::string guardado = prueba::LeerTodo(carpeta / "u.xml");
  EXPECT_NE(guardado.find("\t<z:row k1998='x' k1999='7'/>\r\n</rs:data>"), std::string::npos);
  EXPECT_EQ(std::count(guardado.begin(), guardado.end(), '\n'), 4 + 2 + 2000 * 3 + 4 + kVacias + 2 + 1);
}

// Values in any order of rows, against a plain model; a column changes its form underway.
TEST(TablasHostiles, UnaColumnaRalaGuardaLoMismoQueUnaLlena) {
  constexpr std::size_t kFilas = 6000;
  for (const std::size_t paso : {1UL, 7UL, 40UL, 1501UL, 5999UL}) {
    Tabla t;
    t.Append("t", TipoCampo::kVarChar, 20);
    t.Append("n", TipoCampo::kEntero);
    t.Append("d", TipoCampo::kDoble);
    t.Append("b", TipoCampo::kLogico);
    t.Open();
    for (std::size_t i = 0; i < kFilas; ++i) t.AddNew();
    std::vector<std::size_t> modelo(kFilas, 0);
    for (std::size_t k = 1; k <= kFilas / 4; ++k) {
      const std::size_t fila = (kFilas - 1 + k * paso) % kFilas;
      modelo[fila] = k % 5 == 0 ? 0 : k % 300;
      t.IrAFila(fila);
      for (std::size_t i = 0; i < 3; ++i) t.Set(i, modelo[fila] == 0 ? Valor{} : Valor{double(modelo[fila])});
      t.Set(3, modelo[fila] == 0 ? Valor{} : Valor{modelo[fila] % 2 == 1});
    }
    std::size_t pasan = 0;
    for (std::size_t fila = 0; fila < kFilas; ++fila) {
      const std::string texto = modelo[fila] == 0 ? "" : std::to_string(modelo[fila]);
      for (std::size_t i = 0; i < 3; ++i) ASSERT_EQ(t.Filas().Texto(fila, i), texto) << paso << " " << fila;
      ASSERT_EQ(t.Filas().Texto(fila, 3), modelo[fila] == 0 ? "" : modelo[fila] % 2 == 1 ? "True" : "False");
      pasan += modelo[fila] == 8 ? 1 : 0;
    }
    t.Filter("t='8'");
    EXPECT_EQ(t.RecordCount(), pasan) << paso;
    t.Filter("n=8");
    EXPECT_EQ(t.RecordCount(), pasan) << paso;
  }
}

TEST(TablasHostiles, VariantesDeUnTextoQueSoloCambianDeCaso) {
  constexpr std::size_t kVariantes = 4096;
  Tabla t;
  t.Append("t", TipoCampo::kVarChar, 20);
  t.Open();
  const auto variante = [](std::size_t k) {
    std::string s = "abcdefghijklñ";
    for (std::size_t i = 0; i < 12; ++i) {
      if ((k >> i & 1U) != 0) s[i] = static_cast<char>(s[i] - 'a' + 'A');
    }
    return s;
  };
  for (std::size_t k = 0; k < kVariantes; ++k) {
    t.AddNew();
    t.Set(0, variante(k));
    t.AddNew();
    t.Set(0, "otro" + std::to_string(k));
  }
  EXPECT_EQ(t.Textos(0).Cantidad(), kVariantes * 2);
  t.Filter("t='ABCDEFGHIJKLÑ'");
  EXPECT_EQ(t.RecordCount(), kVariantes);
  t.Set(0, "AbCdEfGhIjKlÑ");  // a new variant that stays among them
  t.MoveNext();
  t.Set(0, "otro7");
  EXPECT_EQ(t.RecordCount(), kVariantes - 1);
  t.Filter("t='OTRO7'");
  EXPECT_EQ(t.RecordCount(), 2U);
  EXPECT_EQ(Recorrido(t, "t"), "otro7 otro7");
}

TEST(TablasHostiles, ColumnasAlRevesYDesconocidas) {
  const Carpeta carpeta;
  constexpr int kColumnas = 600;
  std::string fila = "\t<z:row";
  for (int i = kColumnas - 1; i >= 0; --i) {
    fila +=
        (i % 3 == 0 ? " K" : " k") + std::to_string(i) + "='" + std::to_string(i) + "' q" + std::to_string(i) + "=''";
  }
  prueba::EscribirTodo(carpeta / "t.xml", Archivo(kColumnas, fila + "/>\r\n" + fila + "/>\r\n"));
  Tabla t;
  t.Open(carpeta / "t.xml");
  ASSERT_EQ(t.RecordCount(), 2U);
  for (t.MoveFirst(); !t.Eof(); t.MoveNext()) {
    for (std::size_t i = 0; i < kColumnas; ++i) ASSERT_EQ(t.Texto(i), std::to_string(i));
  }
}

}  // namespace
}  // namespace utr
