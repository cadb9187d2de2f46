#include <gtest/gtest.h>

#include <random>

#include "base/Texto.h"
#include "support/Carpeta.h"
#include "support/NumeroDeError.h"
#include "tables/Tabla.h"

namespace utr {
namespace {

using prueba::Carpeta;

std::string ArchivoSano(const Carpeta& carpeta) {
  Tabla t;
  t.Append("Canal", TipoCampo::kVarChar, 30);
  t.Append("CtePluvi", TipoCampo::kDoble);
  t.Open();
  for (int i = 1; i <= 23; ++i) {
    t.AddNew();
    t.Set("Canal", std::to_string(i));
    t.Set("CtePluvi", Valor{i * 0.2});
  }
  t.UpdateBatch();
  t.Save(carpeta / "sana.xml");
  return prueba::LeerTodo(carpeta / "sana.xml");
}

// What remains of an attempt to open damaged bytes: a whole table or a clear error, never half a table.
void Intentar(const Carpeta& carpeta, const std::string& bytes, bool debe_fallar) {
  prueba::EscribirTodo(carpeta / "d.xml", bytes);
  Tabla t;
  try {
    t.Open(carpeta / "d.xml");
    EXPECT_FALSE(debe_fallar) << bytes;
  } catch (const Error& e) {
    EXPECT_EQ(e.Numero(), error::kArchivo);
    EXPECT_NE(e.Descripcion().find("d.xml"), std::string::npos);
    EXPECT_FALSE(t.Abierta());
    EXPECT_EQ(t.FieldCount(), 0U);
  }
}

TEST(PersistidoDanado, TodoCorteEsUnErrorClaro) {
  const Carpeta carpeta;
  const std::string sano = ArchivoSano(carpeta);
  for (std::size_t n = 0; n < sano.size(); n += n < 200 ? 1 : 37) Intentar(carpeta, sano.substr(0, n), true);
  Intentar(carpeta, sano.substr(0, sano.size() - 1), true);
}

TEST(PersistidoDanado, BytesAlAzarNuncaDejanMediaTabla) {
  const Carpeta carpeta;
  const std::string sano = ArchivoSano(carpeta);
  std::mt19937 azar(7);
  for (int i = 0; i < 600; ++i) {
    std::string bytes = sano;
    for (unsigned k = 0; k <= azar() % 4; ++k) bytes[azar() % bytes.size()] = static_cast<char>(azar());
    Intentar(carpeta, bytes, false);
  }
}

TEST(PersistidoDanado, FechasQueNoLoSon) {
  const Carpeta carpeta;
  const std::string fecha = "2001-02-03T04:05:06.125";
  Tabla t;
  t.Append("f", TipoCampo::kFecha);
  t.Open();
  t.AddNew();
  t.Set("f", fecha);
  t.Save(carpeta / "sana.xml");
  const std::string sano = prueba::LeerTodo(carpeta / "sana.xml");
  Intentar(carpeta, sano, false);
  for (const char* mala :
       {"", " ", "2001-13-03", "2001-02-03T04:05:06.x", "2001-02-03T25:00:00", "T10:00:00", "ayer"}) {
    Intentar(carpeta, Reemplazar(sano, fecha, mala), true);
  }
}

// Rows that nothing reads would vanish without a word.
TEST(PersistidoDanado, UnaFilaFueraDeSuLugarEsUnErrorClaro) {
  const Carpeta carpeta;
  const std::string sano = ArchivoSano(carpeta);
  const std::string fila = "<z:row Canal='99'/>";
  std::string hondo = fila;
  for (int i = 0; i < 60; ++i) hondo = "<f>" + hondo + "</f>";
  const auto antes_de = [&](std::string_view lugar, const std::string& que) {
    std::string s = sano;
    return s.insert(s.find(lugar), que);
  };
  const std::string pendiente = "<f>" + fila + "</f>";
  for (const std::string& dentro :
       {hondo, "<rs:insert>" + pendiente + "</rs:insert>", "<rs:update>" + pendiente + fila + "</rs:update>",
        "<rs:update><rs:original>" + pendiente + "</rs:original></rs:update>", "<z:row>" + fila + "</z:row>",
        std::string("<y:row Canal='99'/>")}) {
    Intentar(carpeta, antes_de("</rs:data>", dentro), true);
  }
  for (const std::string& afuera : {fila, "<params>" + pendiente + "</params>", "<data>" + fila + "</data>"}) {
    Intentar(carpeta, antes_de("</xml>", afuera), true);
  }
  Intentar(carpeta, sano + sano, true);
  Intentar(carpeta, Reemplazar(sano, "urn:schemas-microsoft-com:rowset", "urn:otra"), true);
  Intentar(carpeta, Reemplazar(sano, "xmlns:z=", "xmlns:y="), true);
}

TEST(PersistidoDanado, OtrosFormatosYValoresImposibles) {
  const Carpeta carpeta;
  const std::string sano = ArchivoSano(carpeta);
  const auto con = [&](const std::string& que, const std::string& por) {
    std::string s = sano;
    s.replace(s.find(que), que.size(), por);
    return s;
  };
  Intentar(carpeta, "", true);
  Intentar(carpeta, "no es xml", true);
  Intentar(carpeta, "<html><body/></html>", true);
  Intentar(carpeta, "<xml/>", true);
  Intentar(carpeta, con("CtePluvi='0.2", "CtePluvi='x0.2"), true);
  Intentar(carpeta, con("uuid:BDC6E3F0", "uuid:00000000"), true);
  Intentar(carpeta, std::string(1000, '\0'), true);
  Tabla t;
  EXPECT_EQ(prueba::NumeroDeError([&] { t.Open(carpeta / "no está.xml"); }), error::kArchivo);
  EXPECT_EQ(prueba::NumeroDeError([&] { t.Open(carpeta.Ruta()); }), error::kArchivo);
}

}  // namespace
}  // namespace utr
