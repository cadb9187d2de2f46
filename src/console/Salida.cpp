#include "console/Salida.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "console/Interrupcion.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::consola {

namespace {

namespace fs = std::filesystem;

constexpr const char* kOrigen = "adminutr-cli";

[[noreturn]] void NoSeEscribe(const std::string& donde, int error_del_sistema) {
  throw Error(error::kArchivo, kOrigen, "No se puede escribir " + donde, error_del_sistema);
}

// A folder that goes away with what is in it.
class CarpetaPasajera {
 public:
  CarpetaPasajera() : ruta_((fs::temp_directory_path() / "adminutr-XXXXXX").string()) {
    if (::mkdtemp(ruta_.data()) == nullptr) NoSeEscribe("en la carpeta " + fs::temp_directory_path().string(), errno);
  }
  ~CarpetaPasajera() {
    std::error_code nada;
    fs::remove_all(ruta_, nada);
  }
  CarpetaPasajera(const CarpetaPasajera&) = delete;
  CarpetaPasajera& operator=(const CarpetaPasajera&) = delete;

  fs::path Ruta() const { return ruta_; }

 private:
  std::string ruta_;
};

// The persisted form is a file's: its writer begins with one.
std::string BytesXml(const Tabla& tabla) {
  const CarpetaPasajera carpeta;
  const fs::path ruta = carpeta.Ruta() / "tabla.xml";
  tabla.Save(ruta);
  std::ifstream archivo(ruta, std::ios::binary);
  std::ostringstream copia;
  copia << archivo.rdbuf();
  return std::move(copia).str();
}

std::string Bytes(const Entregable& que, const Destino& destino) {
  if (destino.formato == Formato::kXml) return BytesXml(*que.tabla);
  if (destino.formato == Formato::kTxt) return ArmarDocumento(que.lista, que.encabezado, Renglones::kTodos);
  std::ostringstream salida;
  EscribirCsv(salida, que.lista, destino.csv, Renglones::kTodos);
  return std::move(salida).str();
}

void EnArchivo(const Entregable& que, const Destino& destino) {
  if (destino.formato == Formato::kXml) return que.tabla->GuardarSobre(destino.archivo);
  if (destino.formato == Formato::kTxt) {
    ExportarLista(que.lista, que.encabezado, destino.archivo, Renglones::kTodos);
    return;
  }
  ExportarCsv(que.lista, destino.csv, destino.archivo, Renglones::kTodos);
}

// What is no file of a disk is written to, never replaced.
bool EsDispositivo(const fs::path& ruta) {
  std::error_code nada;
  const fs::file_status que = fs::status(ruta, nada);
  return fs::exists(que) && !fs::is_regular_file(que) && !fs::is_directory(que);
}

void EnDispositivo(const fs::path& ruta, std::string_view bytes) {
  const int descriptor = ::open(ruta.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor < 0) NoSeEscribe(ruta.string(), errno);
  struct Cierre {
    int descriptor;
    ~Cierre() { ::close(descriptor); }
  } const cierre{descriptor};
  EscribirEn(descriptor, bytes);
}

}  // namespace

void EscribirEn(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t escritos = ::write(descriptor, bytes.data(), bytes.size());
    if (escritos >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(escritos));
    } else if (errno != EINTR) {
      NoSeEscribe("la salida", errno);
    }
    if (Interrupcion::Veces() > 0 && !bytes.empty()) throw Error(error_enlace::kCancelada, kOrigen, "Interrumpido");
  }
}

void EscribirSinFallar(int descriptor, std::string_view bytes) noexcept {
  while (!bytes.empty()) {
    const ssize_t escritos = ::write(descriptor, bytes.data(), bytes.size());
    if (escritos < 0 && errno != EINTR) return;
    if (escritos > 0) bytes.remove_prefix(static_cast<std::size_t>(escritos));
  }
}

void Entregar(const Entregable& que, const Destino& destino, int salida) {
  if (destino.archivo.empty()) {
    EscribirEn(salida, Bytes(que, destino));
    // The document has no end of line behind its last one, which would leave the prompt there.
    if (destino.formato == Formato::kTxt && ::isatty(salida) == 1) EscribirEn(salida, "\n");
  } else if (EsDispositivo(destino.archivo)) {
    EnDispositivo(destino.archivo, Bytes(que, destino));
  } else {
    EnArchivo(que, destino);
  }
}

}  // namespace utr::consola
