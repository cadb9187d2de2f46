#include <gtest/gtest.h>

#include <cerrno>
#include <ostream>
#include <stdexcept>

#include "base/Archivos.h"
#include "services/RegistroErrores.h"
#include "support/Carpeta.h"
#include "support/OperadorGuion.h"
#include "support/RelojFalso.h"
#include "tables/Tabla.h"

namespace utr {
namespace {

class Registro : public testing::Test {
 protected:
  std::string Log() const { return prueba::LeerTodo(carpeta_ / "AdminUTR.err"); }

  prueba::Carpeta carpeta_;
  RelojFalso reloj_{{2026, 2, 3, 4, 5, 6}};
  RegistroErrores registro_{carpeta_ / "AdminUTR.err", reloj_};
  OperadorGuion operador_;
};

[[noreturn]] void Romper() {
  throw Error(8005, "MsCOmm", "en uso");
}

TEST_F(Registro, UnaLineaPorErrorConTodosSusCampos) {
  errno = EIO;  // of something else, long ago
  registro_.RegistrarError(Error(8005, "Con \"comillas\"", "dos\nlíneas", ENOENT), "frmPpal", "mnuAccAvanzadas_Click ");
  registro_.RegistrarError(Error(-3, "", ""), "m", "p");
  EXPECT_EQ(Log(),
            "8005,\"Con \"\"comillas\"\"\",\"dos líneas\",2,\"03/02/2026 04:05:06\",\"frmPpal\","
            "\"mnuAccAvanzadas_Click \"\n"
            "-3,\"\",\"\",0,\"03/02/2026 04:05:06\",\"m\",\"p\"\n");
}

TEST_F(Registro, ElErrorDelSistemaEsElDeEsaFalla) {
  const std::string perdida = (carpeta_ / "no/x").string();
  const std::function<void()> fallas[] = {
      [&] { EscribirEntero(perdida, [](std::ostream&) {}); },
      [&] { ArchivoCreciente{perdida}; },
      [&] { Tabla().Open(std::filesystem::path(perdida)); },
      [&] { std::filesystem::copy(perdida, perdida); },
  };
  for (const auto& falla : fallas) {
    const auto error = FallaDe([&] {
      AlFallar(falla, [] { errno = EIO; });  // what runs between the failure and its line
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->ErrorDelSistema(), ENOENT) << error->Descripcion();
  }
}

TEST_F(Registro, UnRegistroInalcanzableCallaYNoTapaElError) {
  RegistroErrores inalcanzable(carpeta_ / "no existe/x.err", reloj_);
  EXPECT_THROW(RegistrandoYRelanzando(inalcanzable, "m", "p", Romper), Error);
}

TEST_F(Registro, RelanzaElMismoError) {
  try {
    RegistrandoYRelanzando(registro_, "frmPPal", "Cargando Configuracion", Romper);
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Numero(), 8005);
    EXPECT_EQ(error.Descripcion(), "en uso");
  }
  EXPECT_NE(Log().find("\"frmPPal\",\"Cargando Configuracion\""), std::string::npos);
}

TEST_F(Registro, MuestraUnMensajeConSuRedaccion) {
  const struct {
    Redaccion redaccion;
    const char* texto;
  } casos[] = {
      {Redaccion::kCompletada, "La operación solicitada no puede ser completada\n[en uso]"},
      {Redaccion::kCompletarse, "La operación solicitada no puede completarse\n[ en uso ]"},
      {Redaccion::kExportar, "La operacion no puede ser completada\n[ en uso ]"},
      {Redaccion::kEntreCorchetes, "[ \nLa operación solicitada no puede completarseen uso ]"},
      {Redaccion::kSeleccionada, "[\nLa operación seleccionada no puede ser completadaen uso]"},
      {Redaccion::kCenida, "La operación solicitada no puede completarse\n[en uso]"},
      {Redaccion::kAsistente,
       "La operación solicitada no puede ser completada\n[en uso]\nEjecute el asistente de nuevo"},
  };
  for (const auto& caso : casos) {
    operador_.Espera(Mensaje{caso.texto, "Título", Icono::kCritico, Botones::kAceptar});
    EXPECT_FALSE(RegistrandoYMostrando(registro_, operador_, "m", "p", "Título", caso.redaccion, Romper));
  }
  EXPECT_TRUE(RegistrandoYMostrando(registro_, operador_, "m", "p", "Título", Redaccion::kCompletada, [] {}));
}

TEST_F(Registro, ElCampoAusenteSeBorraYLosDemasSeMuestran) {
  const auto leer = [&](std::int32_t numero) {
    return RegistrandoSalvoCampo(registro_, operador_, "frmDatos", "cmd_Click", "T", Redaccion::kCompletarse,
                                 [&] { throw Error(numero, "x", "y"); });
  };
  EXPECT_FALSE(leer(error::kCampo));
  EXPECT_TRUE(RegistrandoSalvoCampo(registro_, operador_, "m", "p", "T", Redaccion::kCompletarse, [] {}));
  EXPECT_EQ(Log(), "");
  operador_.Espera("La operación solicitada no puede completarse\n[ y ]");
  EXPECT_FALSE(leer(error::kCampo + 1));
  EXPECT_NE(Log(), "");
}

TEST_F(Registro, UnaExcepcionAjenaLlegaComoError) {
  const auto falla = FallaDe([] { throw std::runtime_error("inner words"); });
  ASSERT_TRUE(falla);
  EXPECT_EQ(falla->Numero(), 5);
  EXPECT_FALSE(FallaDe([] {}));
  EXPECT_FALSE(IgnorandoErrores([] { throw 3; }));
}

TEST_F(Registro, AlFallarRemediaSoloTrasUnaFalla) {
  int remedios = 0;
  AlFallar([] {}, [&] { ++remedios; });
  EXPECT_EQ(remedios, 0);
  EXPECT_THROW(AlFallar(Romper, [&] { ++remedios; }), Error);
  EXPECT_EQ(remedios, 1);
}

}  // namespace
}  // namespace utr
