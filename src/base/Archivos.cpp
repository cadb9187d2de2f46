#include "base/Archivos.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ostream>
#include <random>
#include <streambuf>
#include <utility>

#include "base/Error.h"

namespace utr {

namespace {

namespace fs = std::filesystem;

constexpr int kNueva = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
constexpr int kPresente = O_WRONLY | O_NOFOLLOW | O_CLOEXEC;
constexpr int kEnlacesSeguidos = 40;  // one after the other, as many as the system follows
constexpr mode_t kPermisos = 0666;    // what the process' mask leaves of them
constexpr mode_t kEscritura = 0222;

// The functions below give 0 or the system's error.

int Volcar(int archivo, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t escritos = ::write(archivo, bytes.data(), bytes.size());
    if (escritos >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(escritos));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

int AlDisco(int archivo) {
  if (::fsync(archivo) == 0) return 0;
  // A file system without such a thing writes when it likes; that isn't a failure of this file.
  return errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP ? 0 : errno;
}

// The name of a file in its folder outlives a crash only when the folder is on the disk too. The file itself is good
// either way, so nothing is raised.
void CarpetaAlDisco(const fs::path& ruta) {
  const fs::path carpeta = ruta.has_parent_path() ? ruta.parent_path() : fs::path(".");
  const int descriptor = ::open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  AlDisco(descriptor);
  ::close(descriptor);
}

int Renombrar(const fs::path& de, const fs::path& a) {
  return ::rename(de.c_str(), a.c_str()) == 0 ? 0 : errno;
}

// Renames unless something of that name is there.
int RenombrarANuevo(const fs::path& de, const fs::path& a) {
  if (::renameat2(AT_FDCWD, de.c_str(), AT_FDCWD, a.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  struct stat estado {};  // a file system that can't do both in one step
  return ::lstat(a.c_str(), &estado) == 0 ? EEXIST : Renombrar(de, a);
}

// A name beside `ruta` that stays within the length that a name may have.
fs::path NombreAlLado(const fs::path& ruta) {
  static std::mt19937 azar{std::random_device{}()};
  return ruta.parent_path() / fmt::format("{}.{:08x}.tmp~", ruta.filename().string().substr(0, 200), azar());
}

// A file under way beside the one that it is to become. It goes away unless it was put in its place.
class ArchivoEnCurso {
 public:
  explicit ArchivoEnCurso(const fs::path& destino) : destino_(destino) {
    struct stat anterior {};
    const bool hay = ::lstat(destino.c_str(), &anterior) == 0 && S_ISREG(anterior.st_mode);
    if (hay && (anterior.st_mode & kEscritura) == 0) {
      falla_ = EACCES;  // protected: a new file in its place would undo that without a word
      return;
    }
    do {
      temporal_ = NombreAlLado(destino);
      archivo_ = ::open(temporal_.c_str(), kNueva, kPermisos);
    } while (archivo_ < 0 && errno == EEXIST);
    falla_ = archivo_ < 0 ? errno : 0;
    if (falla_ == 0 && hay) falla_ = Permitir(anterior.st_mode & 07777U);
  }
  ~ArchivoEnCurso() {
    if (archivo_ >= 0) ::close(archivo_);
    if (creado() && !puesto_) ::unlink(temporal_.c_str());
  }
  ArchivoEnCurso(const ArchivoEnCurso&) = delete;
  ArchivoEnCurso& operator=(const ArchivoEnCurso&) = delete;

  int Descriptor() const { return archivo_; }
  int Falla() const { return falla_; }

  // Brings the file to the disk and gives it its name.
  int Publicar(bool reemplazar) {
    falla_ = AlDisco(archivo_);
    if (::close(std::exchange(archivo_, kCerrado)) != 0 && falla_ == 0) falla_ = errno;
    if (falla_ == 0) falla_ = reemplazar ? Renombrar(temporal_, destino_) : RenombrarANuevo(temporal_, destino_);
    puesto_ = falla_ == 0;
    if (puesto_) CarpetaAlDisco(destino_);
    return falla_;
  }

 private:
  static constexpr int kCerrado = -2;
  bool creado() const { return archivo_ != -1; }

  // A file system without permissions gives all files the same ones; nobody may read what nobody but the owner could.
  int Permitir(mode_t permisos) const {
    if (::fchmod(archivo_, permisos) == 0) return 0;
    const int falla = errno;
    struct stat estado {};
    if (::fstat(archivo_, &estado) != 0) return errno;
    return (estado.st_mode & kPermisos & ~permisos) == 0 ? 0 : falla;
  }

  fs::path destino_;
  fs::path temporal_;
  int archivo_ = -1;
  int falla_ = 0;
  bool puesto_ = false;
};

// The stream that a writer is given. Keeps the error of a write that failed, since a stream only knows that one did.
class Bufer : public std::streambuf {
 public:
  explicit Bufer(int archivo) : archivo_(archivo) { Vaciar(); }

  int Falla() const { return falla_; }

 protected:
  int_type overflow(int_type letra) override {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(letra, traits_type::eof())) {
      *pptr() = traits_type::to_char_type(letra);
      pbump(1);
    }
    return traits_type::not_eof(letra);
  }

  std::streamsize xsputn(const char* letras, std::streamsize cuantas) override {
    if (cuantas < epptr() - pptr()) return std::streambuf::xsputn(letras, cuantas);
    if (sync() != 0) return 0;
    return Pasar({letras, static_cast<std::size_t>(cuantas)}) == 0 ? cuantas : 0;
  }

  int sync() override {
    const int falla = Pasar({pbase(), static_cast<std::size_t>(pptr() - pbase())});
    Vaciar();
    return falla == 0 ? 0 : -1;
  }

 private:
  int Pasar(std::string_view bytes) {
    if (falla_ == 0) falla_ = Volcar(archivo_, bytes);
    return falla_;
  }
  void Vaciar() { setp(letras_.data(), letras_.data() + letras_.size()); }

  int archivo_;
  int falla_ = 0;
  std::array<char, 65536> letras_;
};

[[noreturn]] void Fallar(const char* origen, const fs::path& ruta, int falla) {
  const char* que = falla == EEXIST ? "El archivo ya existe: " : "No se puede escribir el archivo ";
  throw Error(error::kArchivo, origen, que + ruta.string(), falla);
}

void Escribir(const char* origen, const fs::path& ruta, const std::function<void(std::ostream&)>& escribir,
              bool reemplazar) {
  ArchivoEnCurso archivo(ruta);
  if (archivo.Falla() != 0) Fallar(origen, ruta, archivo.Falla());
  Bufer bufer(archivo.Descriptor());
  std::ostream salida(&bufer);
  escribir(salida);
  salida.flush();
  if (!salida) Fallar(origen, ruta, bufer.Falla());
  if (const int falla = archivo.Publicar(reemplazar); falla != 0) Fallar(origen, ruta, falla);
}

}  // namespace

fs::path DestinoDe(const fs::path& ruta) {
  fs::path destino = ruta;
  std::error_code falla;
  for (int pasos = 0; fs::is_symlink(fs::symlink_status(destino, falla)); ++pasos) {
    if (pasos == kEnlacesSeguidos) Fallar("DestinoDe", ruta, ELOOP);
    const fs::path siguiente = fs::read_symlink(destino, falla);
    if (falla) Fallar("DestinoDe", ruta, falla.value());
    destino = destino.parent_path() / siguiente;  // one that is absolute takes the place of all
  }
  return destino;
}

void EscribirEntero(const fs::path& ruta, const std::function<void(std::ostream&)>& escribir) {
  Escribir("EscribirEntero", DestinoDe(ruta), escribir, true);
}

void EscribirNuevo(const fs::path& ruta, const std::function<void(std::ostream&)>& escribir) {
  struct stat estado {};
  if (::lstat(ruta.c_str(), &estado) == 0) Fallar("EscribirNuevo", ruta, EEXIST);  // before the work, not behind it
  Escribir("EscribirNuevo", ruta, escribir, false);
}

// --- ArchivoCreciente ------------------------------------------------------------------------------------------------

ArchivoCreciente::ArchivoCreciente(fs::path ruta) : ruta_(std::move(ruta)) {
  archivo_ = ::open(ruta_.c_str(), kNueva, kPermisos);
  if (archivo_ < 0) Fallar(errno);
}

ArchivoCreciente::ArchivoCreciente(fs::path ruta, std::uint64_t largo) : ruta_(std::move(ruta)), largo_(largo) {
  archivo_ = ::open(ruta_.c_str(), kPresente);
  struct stat estado {};
  int falla = archivo_ < 0 || ::fstat(archivo_, &estado) != 0 ? errno : 0;
  const bool es_el = S_ISREG(estado.st_mode) && static_cast<std::uint64_t>(estado.st_size) == largo;
  if (falla == 0 && !es_el) falla = EBUSY;
  if (falla == 0 && ::lseek(archivo_, 0, SEEK_END) < 0) falla = errno;
  if (falla == 0) return;
  if (archivo_ >= 0) ::close(archivo_);
  Fallar(falla);
}

ArchivoCreciente::~ArchivoCreciente() {
  if (archivo_ >= 0) ::close(archivo_);
}

void ArchivoCreciente::Fallar(int error_del_sistema) const {
  utr::Fallar("ArchivoCreciente", ruta_, error_del_sistema);
}

void ArchivoCreciente::ExigirAbierto() const {
  if (archivo_ < 0) Lanzar(error::kLlamada, "ArchivoCreciente");
}

void ArchivoCreciente::Agregar(std::string_view bytes) {
  ExigirAbierto();
  if (const int falla = Volcar(archivo_, bytes); falla != 0) {
    const auto largo = static_cast<off_t>(largo_);
    if (::ftruncate(archivo_, largo) == 0) ::lseek(archivo_, largo, SEEK_SET);
    Fallar(falla);
  }
  largo_ += bytes.size();
}

void ArchivoCreciente::Sincronizar() {
  ExigirAbierto();
  if (falla_del_disco_ == 0) falla_del_disco_ = AlDisco(archivo_);
  if (falla_del_disco_ != 0) Fallar(falla_del_disco_);
  if (!std::exchange(carpeta_al_dia_, true)) CarpetaAlDisco(ruta_);
}

void ArchivoCreciente::Terminar() {
  Sincronizar();
  if (::close(std::exchange(archivo_, -1)) != 0) Fallar(errno);
}

void ArchivoCreciente::Terminar(const fs::path& definitiva) {
  Terminar();
  if (const int falla = Renombrar(ruta_, definitiva); falla != 0) utr::Fallar("ArchivoCreciente", definitiva, falla);
  CarpetaAlDisco(definitiva);
  ruta_ = definitiva;
}

}  // namespace utr
