#include <gtest/gtest.h>

#include "base/Texto.h"
#include "driver/Textos.h"
#include "driver/simulated/unit/Memoria.h"

namespace utr::simulada {
namespace {

// Minutes of all samples of a stack, with their day.
std::vector<int> Recorrido(const Memoria& memoria, int pila) {
  std::vector<int> numeros;
  memoria.RecorrerPila(pila, [&](VistaPagina pagina, const Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.cuenta; ++i) {
      numeros.push_back(cabecera.dia * 10000 + LeerMuestra(pagina, cabecera, i).minuto);
    }
  });
  return numeros;
}

void Anotar(Memoria& memoria, int pila, int dia, int minuto) {
  memoria.Anotar(pila, dia, {.minuto = static_cast<std::uint16_t>(minuto), .canal = 3});
}

TEST(Memoria, ElTextoDeUnaPaginaTiene66Elementos) {
  Memoria memoria;
  Anotar(memoria, 0, 10, 20);
  memoria.Sellar();
  for (const int pagina : {0, 1}) {
    const auto bytes = LeerTextoPagina(memoria.TextoDePagina(0, pagina)).value();
    ASSERT_EQ(bytes.size(), 66U);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.begin() + 64, memoria.PaginaEn(0, pagina).begin()));
    EXPECT_NE(bytes[64], 255);
    EXPECT_NE(bytes[65], 255);
  }
}

TEST(Memoria, CadaPilaEscribeEnSusPistas) {
  Memoria memoria;
  for (int pila = 0; pila < kPilas; ++pila) Anotar(memoria, pila, 1, pila);
  memoria.AnotarEnCola(1, {.minuto = 1, .canal = 2});
  memoria.AnotarSuceso(1, {.segundo = 1, .codigo = 3});
  memoria.Sellar();
  for (int pista = 0; pista < kPistas; ++pista) {
    const bool primera = (pista < 30 && pista % 3 == 0) || pista == 30;
    EXPECT_EQ(LeerCabecera(memoria.PaginaEn(pista, 0)).has_value(), primera) << pista;
  }
  EXPECT_EQ(LeerCabecera(memoria.PaginaEn(27, 0))->contenido, Contenido::kCola);
  EXPECT_EQ(LeerCabecera(memoria.PaginaEn(30, 0))->contenido, Contenido::kEventos);
}

TEST(Memoria, CadaDiaComienzaUnaPagina) {
  Memoria memoria;
  for (const int dia : {5, 5, 6, 6, 6, 7}) Anotar(memoria, 2, dia, 1);
  memoria.Sellar();
  EXPECT_EQ(LeerCabecera(memoria.PaginaEn(6, 0))->cuenta, 2);
  EXPECT_EQ(LeerCabecera(memoria.PaginaEn(6, 1))->cuenta, 3);
  EXPECT_EQ(LeerCabecera(memoria.PaginaEn(6, 2))->cuenta, 1);
}

TEST(Memoria, LaPilaLlenaPierdeLoMasViejo) {
  Memoria memoria;
  const int capacidad = 3 * kPaginasPista;
  for (int dia = 0; dia < capacidad + 10; ++dia) Anotar(memoria, 4, dia, 7);
  memoria.Sellar();
  const auto numeros = Recorrido(memoria, 4);
  ASSERT_EQ(numeros.size(), static_cast<std::size_t>(capacidad));
  EXPECT_EQ(numeros.front(), 10 * 10000 + 7);
  EXPECT_EQ(numeros.back(), (capacidad + 9) * 10000 + 7);
  EXPECT_TRUE(std::is_sorted(numeros.begin(), numeros.end()));
  EXPECT_TRUE(Recorrido(memoria, 5).empty()) << "the neighbour is untouched";
}

TEST(Memoria, UnaPaginaDaniadaSeSaltea) {
  Memoria memoria;
  for (int dia = 0; dia < 3; ++dia) Anotar(memoria, 0, dia, 1);
  memoria.Sellar();
  memoria.Bytes()[kBytesPagina + 9] ^= 1;
  EXPECT_EQ(Recorrido(memoria, 0), (std::vector<int>{1, 20001}));
}

TEST(Memoria, LoTransmitidoDejaDeEstarPendiente) {
  Memoria memoria;
  const auto pendientes = [&memoria] {
    int cuantos = 0;
    memoria.RecorrerSucesos([&](VistaPagina pagina, const Cabecera& cabecera) {
      for (unsigned i = 0; i < cabecera.cuenta; ++i) {
        cuantos += (LeerSuceso(pagina, i).marcas & marca::kPendiente) != 0 ? 1 : 0;
      }
    });
    return cuantos;
  };
  const auto anotar = [&memoria](int cuantos) {
    for (int i = 0; i < cuantos; ++i) memoria.AnotarSuceso(i, {.segundo = 1, .codigo = 1, .marcas = marca::kPendiente});
    memoria.Sellar();
  };
  memoria.MarcarSucesosTransmitidos();  // nothing there is no fault
  anotar(20);
  EXPECT_EQ(pendientes(), 20);
  memoria.MarcarSucesosTransmitidos();
  EXPECT_EQ(pendientes(), 0);
  anotar(3);
  EXPECT_EQ(pendientes(), 3);
  memoria.MarcarSucesosTransmitidos();
  EXPECT_EQ(pendientes(), 0);
}

TEST(Memoria, BorrarDejaTodoEn255) {
  Memoria memoria;
  Anotar(memoria, 0, 1, 1);
  memoria.Borrar();
  EXPECT_TRUE(std::all_of(memoria.Bytes().begin(), memoria.Bytes().end(), [](std::uint8_t b) { return b == 255; }));
  Anotar(memoria, 0, 9, 9);
  memoria.Sellar();
  EXPECT_EQ(Recorrido(memoria, 0), std::vector<int>{90009});
}

}  // namespace
}  // namespace utr::simulada
