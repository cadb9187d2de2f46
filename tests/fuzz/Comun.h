#pragma once

#include <stdlib.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

// What the targets have in common. Internal to this folder.
namespace utr::fuzz {

// A promise that wasn't kept ends the run, so that the fuzzer keeps the bytes that broke it.
inline void Exigir(bool cierto, const char* que) {
  if (cierto) return;
  std::fprintf(stderr, "%s\n", que);
  std::abort();
}

// A folder in memory for what can only be read from a file: bringing thousands of files a second to a disk wears it.
class CarpetaEnMemoria {
 public:
  CarpetaEnMemoria() {
    std::string plantilla = "/dev/shm/adminutr-fuzz-XXXXXX";
    Exigir(mkdtemp(plantilla.data()) != nullptr, "a folder in memory");
    ruta_ = plantilla;
  }
  ~CarpetaEnMemoria() {
    std::error_code nada;
    std::filesystem::remove_all(ruta_, nada);
  }
  CarpetaEnMemoria(const CarpetaEnMemoria&) = delete;
  CarpetaEnMemoria& operator=(const CarpetaEnMemoria&) = delete;

  std::filesystem::path operator/(const char* nombre) const { return ruta_ / nombre; }

 private:
  std::filesystem::path ruta_;
};

inline void EscribirTodo(const std::filesystem::path& ruta, std::string_view bytes) {
  std::ofstream(ruta, std::ios::binary) << bytes;
}

inline std::string LeerTodo(const std::filesystem::path& ruta) {
  std::ifstream entrada(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(entrada), {}};
}

inline std::string_view Vista(const std::uint8_t* bytes, std::size_t cuantos) {
  return {reinterpret_cast<const char*>(bytes), cuantos};
}

}  // namespace utr::fuzz
