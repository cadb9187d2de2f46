#include <gmock/gmock.h>

#include "base/Error.h"
#include "retrieved/recovery/BancoFlash.h"
#include "retrieved/recovery/LecturaEnCurso.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/NumeroDeError.h"
#include "support/RelojFalso.h"

namespace utr {
namespace {

using prueba::EnCorto;
using prueba::LeerTodo;
using prueba::NumeroDeError;
using prueba::UnidadConFlash;
using prueba::Volcado;
using testing::ElementsAre;
using testing::IsEmpty;

// Cancels at a page, and keeps what it is told.
class ProgresoGuion : public SinProgreso {
 public:
  void Rango(std::int64_t pasos) override { rango = pasos; }
  void Posicion(std::int64_t hechos) override { posicion = hechos; }
  bool Cancelado() override { return cancela_en >= 0 && posicion >= cancela_en; }
  void Descartado(std::string_view que, std::string_view) override { descartes.emplace_back(que); }

  std::int64_t cancela_en = -1;  // pages that are done then
  std::int64_t rango = -1;
  std::int64_t posicion = -1;
  std::vector<std::string> descartes;
};

class PruebaLectorFlash : public testing::Test {
 protected:
  PruebaLectorFlash() {
    // Stack 0 with two pages, stack 1 empty, stack 3 that goes beyond its first track, a queue and events.
    unidad_.Llenar(0, 0, 1, 1);
    unidad_.Llenar(9, 0, 1023, 3);
    unidad_.Llenar(10, 0, 4, 4);
    unidad_.Llenar(27, 0, 2, 5);
    unidad_.Llenar(30, 0, 0, 6);
  }

  // Only these stacks, none: no data; and what else.
  static SeleccionFlash Seleccion(const std::vector<std::size_t>& pilas, bool cola = false, bool eventos = false,
                                  bool completa = false) {
    SeleccionFlash seleccion{
        .datos = !pilas.empty(), .todas_las_pilas = false, .cola = cola, .eventos = eventos, .completa = completa};
    for (const std::size_t pila : pilas) seleccion.pilas[pila] = true;
    return seleccion;
  }

  ContextoLectura Contexto() {
    return {
        .comunicador = unidad_, .reloj = reloj_, .progreso = progreso_, .mapa = mapa_, .seguir_sin_respuesta = [this] {
          return ++preguntas_ < respuestas_si_ + 1;
        }};
  }

  // Reads into the file; what the operator would be told, line by line.
  std::vector<std::string> Leer(const SeleccionFlash& seleccion, const LecturaAnterior* anterior = nullptr,
                                const std::vector<LugarPagina>& reintentar = {}) {
    unidad_.pedidas.clear();
    LecturaEnCurso lectura(Contexto(), {.ruta = ruta_, .opciones = {seleccion, anterior, reintentar}});
    lectura.Leer();
    avance_ = lectura.Lector().Avance();
    fallidas_ = lectura.Lector().Fallidas();
    return lectura.Lector().Renglones();
  }
  std::vector<std::string> Continuar(const SeleccionFlash& seleccion, const std::vector<LugarPagina>& reintentar = {}) {
    const LecturaAnterior anterior(ruta_);
    return Leer(seleccion, &anterior, reintentar);
  }

  void EsperarArchivo(const std::string& en_corto) {
    const std::string esperado = Volcado(en_corto);
    const std::string leido = LeerTodo(ruta_);
    if (leido != esperado) ADD_FAILURE() << EnCorto(leido) << "\ninstead of\n" << EnCorto(esperado);
  }

  std::vector<std::string> Archivos() const {
    std::vector<std::string> nombres;
    for (const auto& entrada : std::filesystem::directory_iterator(carpeta_.Ruta()))
      nombres.push_back(entrada.path().filename().string());
    std::sort(nombres.begin(), nombres.end());
    return nombres;
  }

  prueba::Carpeta carpeta_;
  std::filesystem::path ruta_ = carpeta_ / "lectura.bkp";
  UnidadConFlash unidad_;
  RelojFalso reloj_;
  ProgresoGuion progreso_;
  MapaMemoria mapa_{UsoMapa::kLectura};
  AvanceLectura avance_;
  std::vector<LugarPagina> fallidas_;
  int preguntas_ = 0;
  int respuestas_si_ = 0;
};

TEST(PaginaVacia, EsLaQueTieneTodoMenosDosEn255) {
  const std::string cuerpo = prueba::TextoDePagina(255);
  const struct {
    std::string texto;
    bool vacia;
  } casos[] = {{cuerpo, true},
               {cuerpo.substr(0, cuerpo.size() - 2), false},  // 65 items, all but one
               {cuerpo + ",0", false},
               {cuerpo.substr(0, cuerpo.size() - 1) + "255", false},
               {"255,1, 255 ,255.0,2", true},
               {"255,256,255,2", true},
               {"255", false},
               {"1,2", true},
               {"", false}};
  for (const auto& [texto, vacia] : casos) EXPECT_EQ(EsPaginaVacia(texto), vacia) << texto;
}

TEST_F(PruebaLectorFlash, VolcadosDeUnaMemoriaChica) {
  const struct {
    const char* que;
    SeleccionFlash seleccion;
    std::string archivo;
  } casos[] = {
      {"the third blank page ends a group and isn't written", Seleccion({0}), "0/31 1@0,0-1 255@0,2-3 EOT EOT EOT"},
      {"without data", Seleccion({}, true, true), "27/31 5@27,0-2 255@27,3-4 EOT 6@30,0 255@30,1-2 EOT"},
      {"events that nobody wants leave the ends of their tracks", Seleccion({}, true),
       "27/31 5@27,0-2 255@27,3-4 EOT EOT EOT"},
      {"only stack 3, over two tracks", Seleccion({3}), "0/31 3@9,0-1023 EOT 4@10,0-4 255@10,5-6 EOT EOT EOT"},
      {"empty stacks", Seleccion({1, 2}), "0/31 255@3,0-1 EOT 255@6,0-1 EOT EOT EOT"},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.que);
    std::filesystem::remove(ruta_);
    EXPECT_THAT(Leer(caso.seleccion), IsEmpty());
    EsperarArchivo(caso.archivo);
  }
}

TEST_F(PruebaLectorFlash, LasVaciasSeCuentanATravesDePistasYGrupos) {
  unidad_.datos.clear();
  for (const int pista : {0, 1, 2}) unidad_.Llenar(pista, 0, 1023, 1);
  unidad_.datos.erase({0, 500});
  unidad_.datos.erase({2, 7});
  Leer(Seleccion({0, 1, 2}));
  // The third one is the first of stack 1; from there the count begins anew.
  EsperarArchivo(
      "0/31 1@0,0-499 255@0,500 1@0,501-1023 EOT 1@1,0-1023 EOT 1@2,0-6 255@2,7 1@2,8-1023 EOT EOT 255@6,0-1 EOT "
      "EOT EOT");
}

TEST_F(PruebaLectorFlash, CompletaTraeTodasLasPaginas) {
  Leer(Seleccion({}, false, true, true));
  EsperarArchivo("27/31 6@30,0 255@30,1-1023 EOT 255@31,0-1023 EOT");
  EXPECT_EQ(mapa_.Cuenta(), "1 con datos, 2047 vacías, 30720 salteadas");
  EXPECT_EQ(avance_.leidas, 2048);
  EXPECT_EQ(avance_.por_leer, 0);
}

TEST_F(PruebaLectorFlash, UnaPaginaSeIntentaTresVeces) {
  unidad_.fallas = {{{27, 0}, 1}, {{27, 1}, 2}, {{27, 2}, 3}};
  EXPECT_THAT(Leer(Seleccion({}, true)), ElementsAre("No se puede leer la pagina: 2"));
  EsperarArchivo("27/31 5@27,0-1 255@27,3-4 EOT EOT EOT");
  EXPECT_EQ(avance_.reintentos, 1 + 2 + 2);
  EXPECT_THAT(progreso_.descartes, ElementsAre("Pista 27, página 2"));
  EXPECT_EQ(mapa_.Estado({27, 2}), EstadoPagina::kFallida);
  EXPECT_EQ(mapa_.Estado({27, 5}), EstadoPagina::kVacia);
  EXPECT_EQ(mapa_.Estado({27, 6}), EstadoPagina::kSalteada);
  EXPECT_EQ(progreso_.rango, 3 * kPaginasPista);
  EXPECT_EQ(progreso_.posicion, progreso_.rango) << "what blank pages leave out is done too";
}

TEST_F(PruebaLectorFlash, UnaCancelacionDejaUnArchivoQueSirve) {
  progreso_.cancela_en = 1024 + 2;
  EXPECT_THAT(Leer(Seleccion({3, 4})), ElementsAre("Lectura cancelada por usuario"));
  EsperarArchivo("0/31 3@9,0-1023 EOT 4@10,0-1 EOT");

  // While the last page of a track came: no track is begun any more.
  for (const auto& [pagina, archivo] :
       {std::pair{LugarPagina{9, 1023}, "0/31 3@9,0-1023 EOT"}, {LugarPagina{30, 3}, "27/31 6@30,0 255@30,1-2 EOT"}}) {
    std::filesystem::remove(ruta_);
    unidad_.al_pedir = [this, &pagina](const LugarPagina& lugar) { progreso_.cancela_en = lugar == pagina ? 0 : -1; };
    const bool eventos = pagina.pista == 30;
    EXPECT_THAT(Leer(eventos ? Seleccion({}, false, true) : Seleccion({3})), ElementsAre(LectorFlash::kCancelada));
    EsperarArchivo(archivo);
    progreso_.cancela_en = -1;
  }
}

TEST_F(PruebaLectorFlash, UnErrorDelControladorDejaLoLeido) {
  unidad_.al_pedir = [](const LugarPagina& lugar) {
    if (lugar == LugarPagina{27, 2}) throw Error(1000, "driver", "Se cortó");
  };
  EXPECT_EQ(NumeroDeError([&] { Leer(Seleccion({}, true)); }), 1000);
  EsperarArchivo("27/31 5@27,0-1");
}

TEST_F(PruebaLectorFlash, UnEquipoMudoPreguntaCadaDieciseisPaginas) {
  for (int pagina = 0; pagina < kPaginasPista; ++pagina) unidad_.fallas[{27, pagina}] = -1;
  unidad_.Devuelve("LeerEstado", -1);
  respuestas_si_ = 2;
  const std::vector<std::string> renglones = Leer(Seleccion({}, true));
  EXPECT_EQ(preguntas_, 3);
  EXPECT_EQ(unidad_.pedidas.size(), 3U * 16 * 3);
  ASSERT_EQ(renglones.size(), 3U * 16 + 1);
  EXPECT_EQ(renglones.back(), "Lectura cancelada por usuario");
  EsperarArchivo("27/31 EOT");

  // One that gives a page in between isn't asked.
  for (int pagina = 15; pagina < kPaginasPista; pagina += 16) {
    unidad_.fallas.erase({27, pagina});
    unidad_.datos[{27, pagina}] = 5;
  }
  std::filesystem::remove(ruta_);
  preguntas_ = 0;
  Leer(Seleccion({}, true));
  EXPECT_EQ(preguntas_, 0);

  // A unit that tells its state is alive.
  for (int pagina = 0; pagina < kPaginasPista; ++pagina) unidad_.fallas[{27, pagina}] = -1;
  std::filesystem::remove(ruta_);
  unidad_.Devuelve("LeerEstado", 4);
  preguntas_ = 0;
  Leer(Seleccion({}, true));
  EXPECT_EQ(preguntas_, 0);
  EXPECT_EQ(unidad_.Cuantas("LeerEstado"), 3U + 64U);
}

TEST_F(PruebaLectorFlash, UnTextoQueRompeElRenglonNoEsUnaPagina) {
  unidad_.al_pedir = {};
  class Sucia : public UnidadConFlash {
   public:
    std::string LeerPaginaFlash(std::int16_t, std::int16_t pagina) override {
      return pagina == 0 ? "1,2\r\n3" : pagina == 1 ? "1\"2" : prueba::TextoDePagina(255);
    }
  } sucia;
  LecturaEnCurso lectura({.comunicador = sucia, .reloj = reloj_, .progreso = progreso_, .mapa = mapa_},
                         {.ruta = ruta_, .opciones = {Seleccion({}, true)}});
  lectura.Leer();
  EXPECT_THAT(lectura.Lector().Renglones(),
              ElementsAre("No se puede leer la pagina: 0", "No se puede leer la pagina: 1"));
  EsperarArchivo("27/31 255@27,2-3 EOT EOT EOT");
}

TEST_F(PruebaLectorFlash, UnDiscoLlenoTerminaLaLecturaEnSeguida) {
  {
    const DispositivoLleno lleno(1000);
    EXPECT_EQ(NumeroDeError([&] { Leer(Seleccion({3})); }), error::kArchivo);
  }
  EXPECT_EQ(unidad_.pedidas.size(), 256U) << "no page is read behind the write that found no room";
  EsperarArchivo("0/31 3@9,0-6");

  // Where not even the header fits nothing has happened.
  const std::string antes = LeerTodo(ruta_);
  {
    const DispositivoLleno lleno(4);
    EXPECT_EQ(NumeroDeError([&] { Leer(Seleccion({3})); }), error::kArchivo);
  }
  EXPECT_EQ(LeerTodo(ruta_), antes);
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp"));
}

TEST_F(PruebaLectorFlash, DeUnEquipoLentoCadaPaginaQuedaEnSeguidaEnElArchivo) {
  unidad_.al_pedir = [this](const LugarPagina& lugar) {
    if (lugar.pagina == 3) {
      EXPECT_EQ(EnCorto(LeerTodo(ruta_)), "27/31 5@27,0 5@27,1 5@27,2 ");
    }
    reloj_.Adelantar(10);
  };
  Leer(Seleccion({}, true));
  EXPECT_EQ(avance_.gastado, 6 * 10000);
}

TEST_F(PruebaLectorFlash, ElArchivoAnteriorSeVaCuandoElNuevoEstaEntero) {
  prueba::EscribirTodo(ruta_, "anterior");
  progreso_.cancela_en = 1;
  Leer(Seleccion({}, true));
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp", "lectura.bkp.anterior"));
  EXPECT_EQ(LeerTodo(carpeta_ / "lectura.bkp.anterior"), "anterior");

  progreso_.cancela_en = -1;
  unidad_.fallas[{27, 1}] = 3;
  Leer(Seleccion({}, true));
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp", "lectura.bkp.anterior", "lectura.bkp.anterior-2"))
      << "a page is lacking, which the former file may hold";
  std::filesystem::remove(carpeta_ / "lectura.bkp.anterior-2");

  Leer(Seleccion({}, true));
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp", "lectura.bkp.anterior")) << "that one isn't of this read";
}

TEST_F(PruebaLectorFlash, ElArchivoNuevoEsParaLosMismosQueElAnterior) {
  namespace fs = std::filesystem;
  const auto permisos = [this] { return fs::status(ruta_).permissions(); };
  const fs::perms solo_suyo = fs::perms::owner_read | fs::perms::owner_write;
  Leer(Seleccion({3}, true));
  for (const fs::perms unos : {solo_suyo, solo_suyo | fs::perms::group_read | fs::perms::group_write}) {
    fs::permissions(ruta_, unos);
    Leer(Seleccion({3}, true));
    EXPECT_EQ(permisos(), unos) << "read anew";
    Continuar(Seleccion({3}, true));
    EXPECT_EQ(permisos(), unos) << "gone on with";
  }
}

// The new file may be whole and yet lack pages of the former one: another part was read, or the memory was erased.
TEST_F(PruebaLectorFlash, ElArchivoAnteriorQuedaMientrasTengaPaginasQueElNuevoNo) {
  Leer(Seleccion({3}, true));
  Leer(Seleccion({3}, true, true));
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp"));
  Leer(Seleccion({}, true));
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp", "lectura.bkp.anterior"));
  unidad_ = {};
  Leer(Seleccion({}, true));
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp", "lectura.bkp.anterior", "lectura.bkp.anterior-2"));
}

// --- Going on --------------------------------------------------------------------------------------------------------

TEST_F(PruebaLectorFlash, ContinuadaEsIgualQueSinInterrumpir) {
  unidad_.Llenar(0, 900, 1023, 7);  // data behind a gap
  unidad_.Llenar(1, 0, 3, 7);
  for (const bool completa : {false, true}) {
    const SeleccionFlash seleccion = completa ? Seleccion({0}, false, true, true) : Seleccion({0, 1, 3}, true, true);
    std::filesystem::remove(ruta_);
    Leer(seleccion);
    const std::string entera = LeerTodo(ruta_);
    const std::int64_t total = progreso_.rango;
    for (const std::int64_t corte : {std::int64_t{0}, std::int64_t{2}, std::int64_t{1000}, total / 2, total - 1}) {
      SCOPED_TRACE(corte);
      std::filesystem::remove(ruta_);
      progreso_.cancela_en = corte;
      unidad_.fallas = {{{0, 1}, 3}, {{9, 3}, 3}};
      Leer(seleccion);
      progreso_.cancela_en = -1;
      unidad_.fallas.clear();
      EXPECT_THAT(Continuar(seleccion), IsEmpty());
      EXPECT_TRUE(LeerTodo(ruta_) == entera) << EnCorto(LeerTodo(ruta_)).substr(0, 3000);
    }
  }
}

TEST_F(PruebaLectorFlash, ContinuarPideSoloLoQueFaltaOPudoCambiar) {
  Leer(Seleccion({3}));
  unidad_.fallas.clear();
  Continuar(Seleccion({3}));
  // The last page with data, the two blank ones and the third, which ends the group.
  EXPECT_THAT(unidad_.pedidas,
              ElementsAre(LugarPagina{10, 4}, LugarPagina{10, 5}, LugarPagina{10, 6}, LugarPagina{10, 7}));
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp", "lectura.bkp.anterior"));

  // A retry leaves alone what was read.
  unidad_.fallas[{9, 5}] = 3;
  std::filesystem::remove(ruta_);
  Leer(Seleccion({3}));
  EXPECT_THAT(Continuar(Seleccion({3}), fallidas_), IsEmpty());
  EXPECT_THAT(unidad_.pedidas, ElementsAre(LugarPagina{9, 5}, LugarPagina{10, 7}));
  EsperarArchivo("0/31 3@9,0-1023 EOT 4@10,0-4 255@10,5-6 EOT EOT EOT");
}

TEST_F(PruebaLectorFlash, UnReintentoPideTodasLasQueFallaron) {
  // Page 1 turns out to be blank, so that three blank ones lie ahead of the next one that failed.
  unidad_.Llenar(0, 3, 8, 2);
  unidad_.datos.erase({0, 0});
  unidad_.datos.erase({0, 1});
  unidad_.fallas = {{{0, 1}, 3}, {{0, 6}, 3}};
  Leer(Seleccion({0}));
  EsperarArchivo("0/31 255@0,0 255@0,2 2@0,3-5 2@0,7-8 EOT EOT EOT");
  unidad_.fallas = {{{0, 6}, 3}};
  EXPECT_THAT(Continuar(Seleccion({0}), fallidas_), ElementsAre("No se puede leer la pagina: 6"));
  Continuar(Seleccion({0}), fallidas_);
  EsperarArchivo("0/31 255@0,0-2 2@0,3-8 EOT EOT EOT");

  // So is one that failed while a read went on, though the earlier file has it.
  unidad_.datos[{0, 8}] = 9;
  unidad_.fallas = {{{0, 8}, 3}};
  EXPECT_THAT(Leer(Seleccion({0}, false, false, true), std::make_unique<LecturaAnterior>(ruta_).get()),
              ElementsAre("No se puede leer la pagina: 8 (queda la del archivo anterior)"));
  Continuar(Seleccion({0}), fallidas_);
  EXPECT_EQ(unidad_.pedidas.front(), (LugarPagina{0, 8}));
  EXPECT_EQ(*LecturaAnterior(ruta_).Texto({0, 8}), prueba::TextoDePagina(9));
}

TEST_F(PruebaLectorFlash, LoQueElEquipoRegistroMientrasTantoEntra) {
  Leer(Seleccion({}, true));
  unidad_.datos[{27, 2}] = 8;
  unidad_.datos[{27, 3}] = 9;
  Continuar(Seleccion({}, true));
  EsperarArchivo("27/31 5@27,0-1 8@27,2 9@27,3 255@27,4-5 EOT EOT EOT");
}

TEST_F(PruebaLectorFlash, ElArchivoNuevoNuncaTieneMenos) {
  const SeleccionFlash seleccion = Seleccion({0, 3}, true, true);
  Leer(Seleccion({0, 3}, true, true, true));  // with pages beyond where blank ones would end a group
  const std::string entera = LeerTodo(ruta_);
  const LecturaAnterior todo(ruta_);
  const auto comprobar = [&](const char* que) {
    SCOPED_TRACE(que);
    const LecturaAnterior nueva(ruta_);
    for (int indice = 0; indice < kPaginasFlash; ++indice) {
      const LugarPagina lugar{indice / kPaginasPista, indice % kPaginasPista};
      if (todo.Texto(lugar) == nullptr) continue;
      ASSERT_NE(nueva.Texto(lugar), nullptr) << lugar.pista << "," << lugar.pagina;
      ASSERT_TRUE(todo.EsVacia(lugar) || *nueva.Texto(lugar) == *todo.Texto(lugar));
    }
    EXPECT_EQ(nueva.Danadas(), 0U);
    prueba::EscribirTodo(ruta_, entera);
  };

  Continuar(seleccion);
  comprobar("blank pages end the groups");
  for (const std::int64_t corte : {0, 5, 2000, 3072, 9000}) {
    progreso_.cancela_en = corte;
    Continuar(seleccion);
    comprobar("cancelled");
  }
  progreso_.cancela_en = -1;

  unidad_.al_pedir = [](const LugarPagina& lugar) {
    if (lugar == LugarPagina{9, 1023} || lugar == LugarPagina{10, 4}) throw Error(1000, "driver", "Se cortó");
  };
  EXPECT_EQ(NumeroDeError([&] { Continuar(seleccion); }), 1000);
  comprobar("the driver raises");
  unidad_.al_pedir = {};

  for (int pagina = 0; pagina < kPaginasPista; ++pagina) unidad_.fallas[{0, pagina}] = -1;
  unidad_.Devuelve("LeerEstado", -1);
  Continuar(Seleccion({0, 3}, true, true, true));
  EXPECT_EQ(preguntas_, 1);
  comprobar("the unit falls silent");
  unidad_.fallas.clear();

  unidad_.datos.clear();
  Continuar(seleccion);
  comprobar("erased meanwhile");

  {
    const DispositivoLleno lleno(3000);
    EXPECT_EQ(NumeroDeError([&] { Continuar(seleccion); }), error::kArchivo);
  }
  EXPECT_TRUE(LeerTodo(ruta_) == entera) << "a full disk leaves the file in its place";
  EXPECT_THAT(ContinuacionesDe(ruta_, todo), ElementsAre(carpeta_ / "lectura.bkp.continuacion"));
}

TEST_F(PruebaLectorFlash, LoQueDejoUnaCaidaSeAgregaYSeBorraAlFinal) {
  Leer(Seleccion({}, true));
  prueba::EscribirTodo(carpeta_ / "lectura.bkp.continuacion",
                       Volcado("27/31 5@27,0-2") + "\"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20");
  prueba::EscribirTodo(carpeta_ / "lectura.bkp.continuacion-2", Volcado("27/31 9@28,0 255@27,0"));
  LecturaAnterior anterior(ruta_);
  const std::vector<std::filesystem::path> restos = ContinuacionesDe(ruta_, anterior);
  ASSERT_EQ(restos.size(), 2U);

  // One of another file that had this name isn't offered.
  prueba::EscribirTodo(carpeta_ / "lectura.bkp.continuacion-3", Volcado("27/31 8@27,0-2"));
  EXPECT_EQ(ContinuacionesDe(ruta_, anterior), restos);
  std::filesystem::remove(carpeta_ / "lectura.bkp.continuacion-3");

  for (const auto& resto : restos) anterior.Agregar(resto);
  EXPECT_EQ(anterior.Danadas(), 1U);
  LecturaEnCurso lectura(Contexto(),
                         {.ruta = ruta_, .opciones = {Seleccion({}, true), &anterior}, .continuaciones = restos});
  lectura.Leer();
  EsperarArchivo("27/31 5@27,0-2 255@27,3-4 EOT 9@28,0 EOT EOT EOT");
  EXPECT_THAT(Archivos(), ElementsAre("lectura.bkp", "lectura.bkp.anterior"));
}

TEST_F(PruebaLectorFlash, LosGruposDelArchivoQuedanElegidos) {
  prueba::EscribirTodo(ruta_, Volcado("0/31 1@0,0 EOT 3@10,0 EOT 6@31,5 EOT"));
  const LecturaAnterior anterior(ruta_);
  EXPECT_EQ(anterior.Ampliar({.datos = false, .todas_las_pilas = false}), Seleccion({0, 3}, false, true));
  EXPECT_EQ(anterior.Paginas(), 3U);
}

TEST_F(PruebaLectorFlash, SeCompruebaQueElArchivoSeaDelEquipo) {
  const auto comprobar = [&](const std::string& en_corto) {
    prueba::EscribirTodo(ruta_, Volcado(en_corto));
    const LecturaAnterior anterior(ruta_);
    unidad_.pedidas.clear();
    const std::optional<Error> falla = FallaDe([&] { anterior.ComprobarEquipo(unidad_, {}); });
    return falla ? falla->Descripcion() : std::string();
  };
  EXPECT_EQ(comprobar("0/31 3@9,0-999 EOT"), "");
  EXPECT_THAT(unidad_.pedidas, ElementsAre(LugarPagina{9, 166}));
  EXPECT_EQ(comprobar("0/31 8@9,0-499 3@9,500-999 EOT"), "") << "one of three is enough";
  EXPECT_EQ(comprobar("0/31 255@9,0-9 EOT"), "") << "nothing to compare with";
  EXPECT_EQ(comprobar("0/31 EOT"), "");
  EXPECT_THAT(comprobar("0/31 8@9,0-999 EOT"), testing::HasSubstr("es de otro equipo"));
  EXPECT_EQ(unidad_.pedidas.size(), 3U);

  unidad_.fallas = {{{9, 166}, 3}};
  EXPECT_EQ(comprobar("0/31 3@9,0-999 EOT"), "") << "a bad page doesn't speak against the unit";
  for (int pagina = 0; pagina < kPaginasPista; ++pagina) unidad_.fallas[{9, pagina}] = -1;
  EXPECT_THAT(comprobar("0/31 3@9,0-999 EOT"), testing::HasSubstr("No se pudo leer"));
}

TEST_F(PruebaLectorFlash, NoSeContinuaLoQueNoEsUnaLectura) {
  const std::string larga(80, 'x');
  for (const std::string& texto : {std::string(), larga + "\r\n" + larga, std::string("<xml/>\n")}) {
    prueba::EscribirTodo(ruta_, texto);
    EXPECT_EQ(NumeroDeError([&] { const LecturaAnterior anterior(ruta_); }), error::kArchivo) << texto;
  }
  EXPECT_EQ(NumeroDeError([&] { const LecturaAnterior anterior(carpeta_ / "no.bkp"); }), error::kArchivo);
}

// --- Around a read ---------------------------------------------------------------------------------------------------

TEST(AvanceLectura, DiceLoQueFalta) {
  EXPECT_EQ(EnPalabras({.total = 3072, .por_leer = 3072, .como_maximo = true}), "0 de 3072 páginas, 0 reintentos");
  EXPECT_EQ(EnPalabras({.total = 3072,
                        .pasadas = 100,
                        .leidas = 100,
                        .reintentos = 1,
                        .por_leer = 2972,
                        .gastado = 9000,
                        .como_maximo = true}),
            "100 de 3072 páginas, 11.1 por segundo, faltan como máximo 5 min, 1 reintento");
  EXPECT_EQ(EnPalabras({.total = 32768, .pasadas = 8, .leidas = 8, .por_leer = 32760, .gastado = 800}),
            "8 de 32768 páginas, 10.0 por segundo, 0 reintentos");
  EXPECT_EQ(EnPalabras({.total = 32768, .pasadas = 100, .leidas = 100, .por_leer = 32668, .gastado = 100000}),
            "100 de 32768 páginas, 1.0 por segundo, faltan 9 h 5 min, 0 reintentos");
}

TEST(NombreArchivoFlash, EsLaFechaConLosSeparadoresReemplazados) {
  EXPECT_EQ(NombreArchivoFlash("/tmp/pro.grama", {2006, 3, 12, 0, 0, 0}),
            "/tmp/pro.grama/12_03_2006_00_00_00_DatosFlash.bkp");
  EXPECT_EQ(RutaDeConfiguracion("/a.bkp/b.bkp.c.BKP"), "/a.bkp/b.bkp.c.ucg");
}

}  // namespace
}  // namespace utr
