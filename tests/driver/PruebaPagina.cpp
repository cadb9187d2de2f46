#include <gtest/gtest.h>

#include <array>

#include "base/Fechas.h"
#include "driver/Pagina.h"

namespace utr::paginas {
namespace {

using Bytes = std::array<std::uint8_t, kBytesPagina>;

Bytes PaginaDeMuestras() {
  Bytes bytes;
  PrepararPagina(bytes, Contenido::kDatos, 7, 9570);
  for (std::uint16_t i = 0; i < Capacidad(Contenido::kDatos); ++i) {
    AgregarMuestra(bytes, {.minuto = static_cast<std::uint16_t>(1430 + i),
                           .canal = 7,
                           .marcas = static_cast<std::uint8_t>(i),
                           .valor = static_cast<std::uint16_t>(65535 - i),
                           .maximo = 300,
                           .minimo = i});
  }
  SellarPagina(bytes);
  return bytes;
}

TEST(Pagina, DevuelveLasMuestrasQueTomo) {
  const Bytes bytes = PaginaDeMuestras();
  const auto cabecera = LeerCabecera(bytes);
  ASSERT_TRUE(cabecera);
  EXPECT_EQ(cabecera->contenido, Contenido::kDatos);
  EXPECT_EQ(cabecera->canal, 7);
  EXPECT_EQ(cabecera->dia, 9570);
  ASSERT_EQ(cabecera->cuenta, Capacidad(Contenido::kDatos));
  for (unsigned i = 0; i < cabecera->cuenta; ++i) {
    const Muestra m = LeerMuestra(bytes, *cabecera, i);
    EXPECT_EQ(m.minuto, 1430 + i);
    EXPECT_EQ(m.canal, 7);
    EXPECT_EQ(m.marcas, i);
    EXPECT_EQ(m.valor, 65535 - i);
    EXPECT_EQ(m.maximo, 300);
    EXPECT_EQ(m.minimo, i);
  }
}

TEST(Pagina, DevuelveLosSucesosQueTomo) {
  Bytes bytes;
  PrepararPagina(bytes, Contenido::kEventos, 0, 1);
  const Suceso sucesos[] = {
      {.segundo = 0, .codigo = 1, .marcas = marca::kSinValor, .valor1 = 0, .valor2 = 0},
      {.segundo = 86399, .codigo = 255, .marcas = 0, .valor1 = 22, .valor2 = -65535},
      {.segundo = 65536, .codigo = 31, .marcas = marca::kPendiente, .valor1 = 65535, .valor2 = 65535}};
  for (const Suceso& s : sucesos) AgregarSuceso(bytes, s);
  SellarPagina(bytes);
  ASSERT_EQ(LeerCabecera(bytes)->cuenta, std::size(sucesos));
  for (unsigned i = 0; i < std::size(sucesos); ++i) {
    const Suceso s = LeerSuceso(bytes, i);
    EXPECT_EQ(s.segundo, sucesos[i].segundo);
    EXPECT_EQ(s.codigo, sucesos[i].codigo);
    EXPECT_EQ(s.marcas & ~marca::kNegativo, sucesos[i].marcas);
    EXPECT_EQ(s.valor1, sucesos[i].valor1);
    EXPECT_EQ(s.valor2, sucesos[i].valor2);
  }
}

TEST(Pagina, EnLaColaCadaMuestraLlevaSuCanal) {
  Bytes bytes;
  PrepararPagina(bytes, Contenido::kCola, 0, 1);
  for (std::uint8_t canal = 1; canal <= Capacidad(Contenido::kCola); ++canal) {
    AgregarMuestra(bytes, {.minuto = 5, .canal = canal, .minimo = 0x1234});
  }
  SellarPagina(bytes);
  const auto cabecera = LeerCabecera(bytes);
  ASSERT_TRUE(cabecera);
  for (std::uint8_t i = 0; i < cabecera->cuenta; ++i) {
    EXPECT_EQ(LeerMuestra(bytes, *cabecera, i).canal, i + 1);
    EXPECT_EQ(LeerMuestra(bytes, *cabecera, i).minimo, 0x1234);
  }
}

TEST(Pagina, CualquierBitCambiadoSeNota) {
  const Bytes buena = PaginaDeMuestras();
  for (std::size_t bit = 0; bit < kBytesPagina * 8; ++bit) {
    Bytes mala = buena;
    mala[bit / 8] = static_cast<std::uint8_t>(mala[bit / 8] ^ (1U << (bit % 8)));
    EXPECT_FALSE(LeerCabecera(mala)) << bit;
  }
}

TEST(Pagina, LoQueNuncaFueUnaPaginaNoLoEs) {
  for (const int relleno : {0, 255, 0xD1}) {
    Bytes bytes;
    bytes.fill(static_cast<std::uint8_t>(relleno));
    EXPECT_FALSE(LeerCabecera(bytes)) << relleno;
  }
  Bytes llena = PaginaDeMuestras();
  llena[2] = 200;  // a count beyond its room, with the right check
  SellarPagina(llena);
  EXPECT_FALSE(LeerCabecera(llena));
}

TEST(Pagina, ElDiaSePuedeQuitar) {
  Bytes bytes = PaginaDeMuestras();
  CambiarDia(bytes, kDiaAusente);
  EXPECT_EQ(LeerCabecera(bytes)->dia, kDiaAusente);
}

}  // namespace
}  // namespace utr::paginas
