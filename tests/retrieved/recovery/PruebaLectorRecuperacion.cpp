#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "retrieved/recovery/LectorRecuperacion.h"
#include "support/Carpeta.h"
#include "support/NumeroDeError.h"

namespace utr {
namespace {

using C = ClaseLinea;
using D = DanoLinea;

// `cuantos` items joined by ",": all `valor` but the last one, which is 0.
std::string Items(std::size_t cuantos, const std::string& valor = "12") {
  std::string texto;
  for (std::size_t i = 1; i < cuantos; ++i) texto += valor + ",";
  return texto + "0";
}

std::string Linea(const std::string& texto) {
  return '"' + texto + "\"\r\n";
}

// What each line is, in order: one letter of the class, and of a damaged one its damage.
struct Leido {
  std::vector<std::pair<C, D>> lineas;
  bool ajeno = false;
  bool vacio = false;
};

Leido Leer(const std::string& texto) {
  std::istringstream fuente(texto);
  LectorRecuperacion lector(fuente);
  Leido leido;
  while (const LineaRecuperacion* linea = lector.Siguiente()) leido.lineas.emplace_back(linea->clase, linea->dano);
  leido.ajeno = lector.EsAjeno();
  leido.vacio = lector.Vacio();
  return leido;
}

TEST(LectorRecuperacion, CadaLineaTieneUnaClase) {
  const std::string pagina = Items(66) + "#3,17";
  const struct {
    std::string texto;
    C clase;
    D dano = D::kNinguno;
  } casos[] = {
      {Linea("0/31"), C::kEncabezado},
      {"27/31\n", C::kEncabezado},
      {Linea("27/32"), C::kCorta},
      {Linea("EOT"), C::kFinDePista},
      {"\r\n", C::kVacia},
      {Linea(" "), C::kVacia},
      {Linea("EOTS"), C::kCorta},
      {Linea("1,2,3#3,17"), C::kCorta},
      {Linea(std::string(48, 'x')), C::kCorta},
      {Linea(std::string(49, 'x')), C::kDanada, D::kSinPosicion},
      {Linea(pagina), C::kPagina},
      {"\"" + pagina + "\"\n", C::kPagina},
      {"\"" + pagina + "\"\r\r\n", C::kPagina},
      {" \"" + pagina + "\" \n", C::kPagina},
      {Linea(Items(64) + "#3,17"), C::kPagina},
      {Linea(Items(65) + ",#3,17"), C::kPagina},  // nothing behind the last comma
      {Linea(Items(66, " 7 ") + "# 3 , 17 "), C::kPagina},
      {Linea(Items(66, "255") + "#31,1023"), C::kPagina},
      {Linea(Items(67) + "#3,17"), C::kDanada, D::kDemasiados},
      {Linea(Items(66, "256") + "#3,17"), C::kDanada, D::kMayor},
      {Linea(Items(66, "99999999999999999999") + "#3,17"), C::kDanada, D::kMayor},
      {Linea(Items(65) + ",256#3,17"), C::kDanada, D::kMayor},
      {Linea(Items(66, "1.5") + "#3,17"), C::kDanada, D::kSinNumero},
      {Linea(Items(66, "-1") + "#3,17"), C::kDanada, D::kSinNumero},
      {Linea(Items(66, "1 2") + "#3,17"), C::kDanada, D::kSinNumero},
      {Linea(Items(60) + ",," + Items(3) + "#3,17"), C::kDanada, D::kSinNumero},
      {Linea(Items(66, std::string("1\0", 2)) + "#3,17"), C::kDanada, D::kSinNumero},
      {Linea(Items(66)), C::kDanada, D::kSinPosicion},
      {Linea(pagina + "#3,17"), C::kDanada, D::kPosiciones},
      {Linea(Items(66) + "#32,17"), C::kDanada, D::kPistaErronea},
      {Linea(Items(66) + "#,17"), C::kDanada, D::kPistaErronea},
      {Linea(Items(66) + "#3.5,17"), C::kDanada, D::kPistaErronea},
      {Linea(Items(66) + "#3,1024"), C::kDanada, D::kPaginaErronea},
      {Linea(Items(66) + "#3"), C::kDanada, D::kPaginaErronea},
      {Linea(Items(66) + "#3,1,7"), C::kDanada, D::kPaginaErronea},
      {"\"" + pagina + "\r\n", C::kDanada, D::kComillas},
      {pagina + "\"\r\n", C::kDanada, D::kComillas},
      // Two halves of lines glued together: numbers enough, but they aren't of one page.
      {"\"12,1\"" + pagina + "\"\r\n", C::kDanada, D::kComillas},
      {Linea(std::string(5000, '1')), C::kDanada, D::kLarga},
      {"\"" + pagina + "\"", C::kCortada},
      {"\"0", C::kCortada},
  };
  for (const auto& caso : casos) {
    const Leido leido = Leer(caso.texto);
    ASSERT_EQ(leido.lineas.size(), 1U) << caso.texto;
    EXPECT_EQ(leido.lineas[0].first, caso.clase) << caso.texto;
    EXPECT_EQ(leido.lineas[0].second, caso.dano) << caso.texto;
    EXPECT_EQ(EnPalabras(caso.dano).empty(), caso.dano == D::kNinguno);
  }
}

TEST(LectorRecuperacion, UnaPaginaDiceSusBytesYSuLugar) {
  std::istringstream fuente("\xEF\xBB\xBF\"0/31\"\r\n\"1,255," + Items(64, "255") + "#30,1023\"\r\n");
  LectorRecuperacion lector(fuente);
  EXPECT_EQ(lector.Siguiente()->clase, C::kEncabezado) << "the mark of UTF-8 isn't text";
  const LineaRecuperacion* linea = lector.Siguiente();
  EXPECT_EQ(linea->numero, 2U);
  EXPECT_EQ(linea->pista, 30);
  EXPECT_EQ(linea->pagina, 1023);
  ASSERT_EQ(linea->Bytes().size(), 65U) << "the last item isn't a byte of the page";
  EXPECT_EQ(linea->bytes[0], 1);
  EXPECT_EQ(linea->bytes[64], 255);
  EXPECT_EQ(linea->borrados, 64U);
  EXPECT_TRUE(linea->EsBlanca());
  EXPECT_EQ(linea->texto, "1,255," + Items(64, "255"));
  EXPECT_EQ(lector.Siguiente(), nullptr);
  EXPECT_EQ(lector.Siguiente(), nullptr);

  // The last item doesn't count: of 64 items with 60 erased ones 60 count, of 61 with the last one among them 59.
  for (const auto& [erased, blanca] : {std::pair{60, true}, std::pair{59, false}}) {
    std::string texto;
    for (int i = 0; i < 63; ++i) texto += i < erased ? "255," : "7,";
    std::istringstream una(Linea(texto + "255#3,17"));
    LectorRecuperacion otro(una);
    EXPECT_EQ(otro.Siguiente()->EsBlanca(), blanca) << erased;
  }
}

TEST(LectorRecuperacion, UnaLineaDe100MegasNoSeGuarda) {
  // A source without end line ends for 100 MB, then one page.
  class Larga : public std::streambuf {
   public:
    explicit Larga(std::string cola) : cola_(std::move(cola)) {}

   protected:
    int_type underflow() override {
      if (faltan_ == 0) return traits_type::eof();
      const bool ultima = --faltan_ == 0;
      std::string& tramo = ultima ? cola_ : tramo_;
      setg(tramo.data(), tramo.data(), tramo.data() + tramo.size());
      return traits_type::to_int_type(tramo.front());
    }

   private:
    int faltan_ = 101;
    std::string tramo_ = std::string(1 << 20, '1');
    std::string cola_;
  } larga("\r\n" + Linea(Items(66) + "#0,0"));
  std::istream fuente(&larga);
  LectorRecuperacion lector(fuente);
  const LineaRecuperacion* linea = lector.Siguiente();
  EXPECT_EQ(linea->dano, D::kLarga);
  EXPECT_GE(linea->largo, 100U << 20);
  EXPECT_EQ(lector.Siguiente()->clase, C::kPagina);
  EXPECT_EQ(lector.PrimerDano(), "línea 1: es mucho más larga que una página");
}

TEST(LectorRecuperacion, LaClaseNoDependeDeDondeCaeElBufer) {
  std::string texto;
  std::vector<std::pair<C, D>> esperadas;
  for (int i = 0; i < 3000; ++i) {
    texto += Linea(Items(66, i % 7 == 0 ? "5" : "200") + "#1,5") + Linea(std::string(i % 9000, '9'));
    esperadas.emplace_back(C::kPagina, D::kNinguno);
    const auto cifras = i % 9000;
    esperadas.push_back(cifras == 0     ? std::pair{C::kVacia, D::kNinguno}
                        : cifras <= 48  ? std::pair{C::kCorta, D::kNinguno}
                        : cifras > 4094 ? std::pair{C::kDanada, D::kLarga}
                                        : std::pair{C::kDanada, D::kSinPosicion});
  }
  EXPECT_EQ(Leer(texto).lineas, esperadas);
}

TEST(LectorRecuperacion, UnArchivoAjenoSeReconoce) {
  const std::string pagina = Linea(Items(66) + "#3,17");
  const std::string dano = Linea(Items(67) + "#3,17");
  std::string utf16;
  for (const char c : "\"0/31\"\r\n" + pagina) utf16 += {c, '\0'};
  const struct {
    std::string texto;
    bool ajeno;
  } casos[] = {
      {"", false},
      {Linea("0/31") + Linea("EOT"), false},
      {Linea("0/31") + pagina, false},
      {Linea("0/31") + dano, true},
      {dano + pagina, false},
      {Linea("0/31") + "\"255,255,255,255,255,255,255,255,255,255,255,255,255,255", false},
      {std::string(1000, 'x'), true},
      {std::string(1000, '\0'), true},
      {"una lista de compras\n", false},
      {"una línea de otro programa que es bastante más larga que cincuenta\n", true},
      {utf16, true},
  };
  for (const auto& caso : casos) {
    EXPECT_EQ(Leer(caso.texto).ajeno, caso.ajeno) << caso.texto;
    EXPECT_EQ(Leer(caso.texto).vacio, caso.texto.empty()) << caso.texto;
  }
}

TEST(LectorRecuperacion, LoQueNoSeAbreSeDice) {
  const prueba::Carpeta carpeta;
  EXPECT_EQ(prueba::NumeroDeError([&] { LectorRecuperacion lector(carpeta / "no.bkp"); }), error::kArchivo);
  EXPECT_EQ(prueba::NumeroDeError([&] { LectorRecuperacion(carpeta.Ruta()).Siguiente(); }), error::kArchivo);
  EXPECT_EQ(prueba::NumeroDeError([&] { MedirRecuperacion(carpeta.Ruta()); }), error::kArchivo);
  prueba::EscribirTodo(carpeta / "dos.bkp", "\"0/31\"\r\n\r\n\"EO");
  const TamanoRecuperacion tamano = MedirRecuperacion(carpeta / "dos.bkp");
  EXPECT_EQ(tamano.lineas, 2U);
  EXPECT_EQ(tamano.bytes, 13U);
}

}  // namespace
}  // namespace utr
