#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace utr::prueba {

// A folder of its own for a test; it goes away with everything in it.
class Carpeta {
 public:
  Carpeta() {
    std::string plantilla = (std::filesystem::temp_directory_path() / "adminutr-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr) std::abort();
    ruta_ = plantilla;
  }
  ~Carpeta() {
    std::error_code nada;
    std::filesystem::remove_all(ruta_, nada);
  }
  Carpeta(const Carpeta&) = delete;
  Carpeta& operator=(const Carpeta&) = delete;

  const std::filesystem::path& Ruta() const { return ruta_; }
  std::filesystem::path operator/(const std::string& nombre) const { return ruta_ / nombre; }

  // How many entries the folder holds.
  std::size_t Cuantos() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(ruta_), {}));
  }

 private:
  std::filesystem::path ruta_;
};

inline std::string LeerTodo(const std::filesystem::path& ruta) {
  std::ifstream entrada(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(entrada), {}};
}

inline void EscribirTodo(const std::filesystem::path& ruta, const std::string& texto) {
  std::ofstream(ruta, std::ios::binary) << texto;
}

}  // namespace utr::prueba
