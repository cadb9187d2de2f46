#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace utr {

// A folder of a test's own, gone with everything in it at the end.
class CarpetaTemporal {
 public:
  CarpetaTemporal() {
    std::string plantilla = (std::filesystem::temp_directory_path() / "adminutr-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
    ruta_ = plantilla;
  }
  ~CarpetaTemporal() {
    std::error_code nada;
    std::filesystem::remove_all(ruta_, nada);
  }
  CarpetaTemporal(const CarpetaTemporal&) = delete;
  CarpetaTemporal& operator=(const CarpetaTemporal&) = delete;

  const std::filesystem::path& Ruta() const { return ruta_; }
  std::filesystem::path operator/(std::string_view nombre) const { return ruta_ / nombre; }

  // Names of what the folder holds.
  std::size_t Cuantos() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(ruta_), {}));
  }

 private:
  std::filesystem::path ruta_;
};

inline std::string LeerBytes(const std::filesystem::path& ruta) {
  std::ifstream entrada(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(entrada), {}};
}

inline void EscribirBytes(const std::filesystem::path& ruta, std::string_view bytes) {
  std::ofstream(ruta, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace utr
