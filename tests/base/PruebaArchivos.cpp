#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <vector>

#include "base/Archivos.h"
#include "base/Error.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"

namespace {

// What was asked of the system, in its order, and what it is to answer when a file is to go to the disk.
std::vector<std::string> pedidos;
int falla_al_disco = 0;

}  // namespace

// These stand in front of the system's own in this program.
extern "C" int fsync(int archivo) {
  struct stat estado {};
  ::fstat(archivo, &estado);
  const bool carpeta = S_ISDIR(estado.st_mode);
  pedidos.push_back(carpeta ? "folder" : "file of " + std::to_string(estado.st_size));
  if (!carpeta && falla_al_disco != 0) {
    errno = falla_al_disco;
    return -1;
  }
  return static_cast<int>(::syscall(SYS_fsync, archivo));
}

extern "C" int rename(const char* de, const char* a) noexcept {
  pedidos.push_back("name");
  return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, de, AT_FDCWD, a, 0));
}

namespace utr {
namespace {

namespace fs = std::filesystem;
using prueba::Carpeta;
using Pedidos = std::vector<std::string>;

// The system's error of a write that has to fail; -1 when it didn't.
int FallaDelSistema(const std::function<void()>& accion) {
  try {
    accion();
  } catch (const Error& e) {
    EXPECT_EQ(e.Numero(), error::kArchivo);
    return e.ErrorDelSistema();
  }
  return -1;
}

const auto kNada = [](std::ostream&) {};
const auto kNuevo = [](std::ostream& s) { s << "nuevo"; };

class Archivos : public testing::Test {
 protected:
  void SetUp() override {
    pedidos.clear();
    falla_al_disco = 0;
  }

  const Carpeta carpeta_;
  const fs::path ruta_ = carpeta_ / "lista.txt";
};

TEST_F(Archivos, UnaFallaEnElMedioDejaElArchivoAnterior) {
  prueba::EscribirTodo(ruta_, "anterior");
  EXPECT_THROW(EscribirEntero(ruta_,
                              [](std::ostream& s) {
                                s << "mitad" << std::flush;
                                throw std::runtime_error("corte");
                              }),
               std::runtime_error);
  EXPECT_EQ(FallaDelSistema([&] { EscribirEntero(ruta_, [](std::ostream& s) { s.setstate(std::ios::badbit); }); }), 0);
  {
    const DispositivoLleno lleno(100000);
    for (const std::size_t pieza : {1U, 70000U, 150000U}) {
      const auto mucho = [&](std::ostream& s) {
        for (std::size_t n = 0; n < 150000; n += pieza) s << std::string(pieza, 'x');
      };
      EXPECT_EQ(FallaDelSistema([&] { EscribirEntero(ruta_, mucho); }), EFBIG) << pieza;
    }
  }
  falla_al_disco = EIO;
  EXPECT_EQ(FallaDelSistema([&] { EscribirEntero(ruta_, kNuevo); }), EIO) << "written, but not on the disk";
  EXPECT_EQ(prueba::LeerTodo(ruta_), "anterior");
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
}

TEST_F(Archivos, LlegaAlDiscoAntesDeLlevarSuNombre) {
  EscribirEntero(ruta_, kNuevo);
  EXPECT_EQ(pedidos, (Pedidos{"file of 5", "name", "folder"}));
  falla_al_disco = EINVAL;  // a file system that knows no such thing
  EscribirEntero(ruta_, kNada);
  EXPECT_EQ(prueba::LeerTodo(ruta_), "");
}

TEST_F(Archivos, PiezasDeCualquierTamanoLleganEnteras) {
  std::string esperado;
  EscribirEntero(ruta_, [&](std::ostream& s) {
    for (std::size_t n = 1; n < 200000; n = n * 3 + 1) {
      const std::string pieza(n, static_cast<char>('a' + n % 26));
      s << pieza << '.' << std::flush << pieza;
      esperado.append(pieza).append(".").append(pieza);
    }
  });
  EXPECT_EQ(prueba::LeerTodo(ruta_), esperado);
}

TEST_F(Archivos, ElArchivoConservaSusPermisos) {
  for (const auto permisos : {fs::perms{0600}, fs::perms{0640}}) {
    EscribirEntero(ruta_, kNada);
    fs::permissions(ruta_, permisos);
    EscribirEntero(ruta_, kNuevo);
    EXPECT_EQ(fs::status(ruta_).permissions(), permisos);
  }
}

TEST_F(Archivos, UnArchivoProtegidoQuedaComoEsta) {
  prueba::EscribirTodo(ruta_, "anterior");
  fs::permissions(ruta_, fs::perms{0444});
  EXPECT_EQ(FallaDelSistema([&] { EscribirEntero(ruta_, kNuevo); }), EACCES);
  EXPECT_EQ(prueba::LeerTodo(ruta_), "anterior");
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
}

TEST_F(Archivos, NoTocaArchivosAjenos) {
  prueba::EscribirTodo(carpeta_ / "lista.txt.tmp~", "ajeno");  // a name that a write in between might choose
  EscribirEntero(ruta_, kNuevo);
  EXPECT_EQ(prueba::LeerTodo(carpeta_ / "lista.txt.tmp~"), "ajeno");
  EXPECT_EQ(carpeta_.Cuantos(), 2U);
}

TEST_F(Archivos, UnEnlaceQuedaYSeEscribeAquelloALoQueLleva) {
  fs::create_directory(carpeta_ / "lejos");
  prueba::EscribirTodo(carpeta_ / "lejos/otro", "anterior");
  fs::permissions(carpeta_ / "lejos/otro", fs::perms{0600});
  fs::create_symlink("lejos/otro", carpeta_ / "enlace");
  const struct {
    fs::path enlace;
    const char* destino;
  } casos[] = {{carpeta_ / "lejos/otro", "lejos/otro"},
               {"lejos/otro", "lejos/otro"},
               {"lejos/nuevo", "lejos/nuevo"},
               {"enlace", "lejos/otro"}};
  for (const auto& caso : casos) {
    fs::remove(ruta_);
    fs::create_symlink(caso.enlace, ruta_);
    EXPECT_EQ(FallaDelSistema([&] { EscribirNuevo(ruta_, kNuevo); }), EEXIST) << caso.enlace;
    EXPECT_EQ(FallaDelSistema([&] { ArchivoCreciente{ruta_}; }), EEXIST) << caso.enlace;
    EscribirEntero(ruta_, kNuevo);
    EXPECT_TRUE(fs::is_symlink(ruta_)) << caso.enlace;
    EXPECT_EQ(prueba::LeerTodo(carpeta_ / caso.destino), "nuevo") << caso.enlace;
  }
  EXPECT_EQ(fs::status(carpeta_ / "lejos/otro").permissions(), fs::perms{0600});
  fs::remove(ruta_);
  fs::create_symlink(ruta_, ruta_);
  EXPECT_EQ(FallaDelSistema([&] { EscribirEntero(ruta_, kNuevo); }), ELOOP);
  EXPECT_TRUE(fs::is_symlink(ruta_));
}

TEST_F(Archivos, LoQueAparecioMientrasSeEscribiaQueda) {
  const auto lento = [&](std::ostream& s) {
    s << "tarde";
    prueba::EscribirTodo(ruta_, "de otro");
  };
  EXPECT_EQ(FallaDelSistema([&] { EscribirNuevo(ruta_, lento); }), EEXIST);
  EXPECT_EQ(prueba::LeerTodo(ruta_), "de otro");
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
}

TEST_F(Archivos, ElNombreMasLargoQueSePuede) {
  const fs::path largo = carpeta_ / (std::string(251, 'n') + ".txt");
  EscribirEntero(largo, kNuevo);
  EXPECT_EQ(prueba::LeerTodo(largo), "nuevo");
  EXPECT_EQ(FallaDelSistema([&] { EscribirEntero(carpeta_ / std::string(256, 'n'), kNuevo); }), ENAMETOOLONG);
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
}

TEST_F(Archivos, UnDestinoImposibleEsUnErrorClaro) {
  const fs::path perdida = carpeta_ / "no" / "x.txt";
  for (const auto& escribir : {&EscribirEntero, &EscribirNuevo}) {
    try {
      escribir(perdida, kNuevo);
      ADD_FAILURE();
    } catch (const Error& e) {
      EXPECT_EQ(e.Descripcion(), "No se puede escribir el archivo " + perdida.string());
      EXPECT_EQ(e.ErrorDelSistema(), ENOENT);
    }
  }
  fs::create_directories(ruta_ / "adentro");
  EXPECT_EQ(FallaDelSistema([&] { EscribirEntero(ruta_, kNuevo); }), EISDIR);
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
}

TEST_F(Archivos, UnArchivoCrecienteQuedaBuenoHastaDondeLlego) {
  {
    ArchivoCreciente archivo(ruta_);
    archivo.Agregar("uno\r\n");
    EXPECT_EQ(prueba::LeerTodo(ruta_), "uno\r\n") << "a crash of the program loses nothing";
    {
      const DispositivoLleno lleno(8);
      EXPECT_EQ(FallaDelSistema([&] { archivo.Agregar("segundo\r\n"); }), EFBIG);
    }
    EXPECT_EQ(prueba::LeerTodo(ruta_), "uno\r\n") << "half a line would be read as a line";
    archivo.Agregar("dos\r\n");
    EXPECT_EQ(archivo.Largo(), 10U);
    archivo.Sincronizar();
    archivo.Sincronizar();
  }
  EXPECT_EQ(prueba::LeerTodo(ruta_), "uno\r\ndos\r\n");
  EXPECT_EQ(pedidos, (Pedidos{"file of 10", "folder", "file of 10"}));
  EXPECT_EQ(FallaDelSistema([&] { ArchivoCreciente{ruta_}; }), EEXIST);
  EXPECT_EQ(prueba::LeerTodo(ruta_), "uno\r\ndos\r\n");
}

TEST_F(Archivos, UnArchivoCrecienteTomaSuNombreAlTerminar) {
  prueba::EscribirTodo(ruta_, "anterior");
  ArchivoCreciente archivo(carpeta_ / "en curso");
  archivo.Agregar("todo");
  EXPECT_EQ(prueba::LeerTodo(ruta_), "anterior");
  archivo.Terminar(ruta_);
  EXPECT_EQ(prueba::LeerTodo(ruta_), "todo");
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
  EXPECT_EQ(pedidos, (Pedidos{"file of 4", "folder", "name", "folder"}));
  EXPECT_THROW(archivo.Agregar("más"), Error);
}

TEST_F(Archivos, LoQueElDiscoRechazoUnaVezNoTerminaBien) {
  prueba::EscribirTodo(ruta_, "anterior");
  ArchivoCreciente archivo(carpeta_ / "en curso");
  archivo.Agregar("todo");
  falla_al_disco = ENOSPC;
  EXPECT_EQ(FallaDelSistema([&] { archivo.Sincronizar(); }), ENOSPC);
  falla_al_disco = 0;
  EXPECT_EQ(FallaDelSistema([&] { archivo.Terminar(ruta_); }), ENOSPC);
  EXPECT_EQ(prueba::LeerTodo(ruta_), "anterior");
}

}  // namespace
}  // namespace utr
