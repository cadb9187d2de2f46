#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

// The bytes of a persisted table before anybody parses them. Internal to the table service.
namespace utr {

// The bytes of a file as they come in, looked at while they are at hand: whether they are UTF-8 and hold neither a zero
// byte nor a reference.
class BytesPersistidos {
 public:
  explicit BytesPersistidos(std::size_t capacidad) : datos_(std::make_unique_for_overwrite<char[]>(capacidad)) {}

  char* Lugar() { return datos_.get() + largo_; }
  void Agregar(std::size_t cuantos);

  // Makes the bytes fit for the parser: UTF-8 without a zero byte and without references that name no character.
  void Preparar();

  char* Datos() { return datos_.get(); }
  std::size_t Largo() const { return largo_; }
  std::string_view Vista() const { return {datos_.get(), largo_}; }

 private:
  void Recodificar();
  void Reponer(std::string_view texto);

  std::unique_ptr<char[]> datos_;
  std::size_t largo_ = 0;
  std::size_t validos_ = 0;
  bool utf8_ = true;
  bool con_ceros_ = false;
  bool con_referencias_ = false;
};

// A whole file, fit for the parser. A mark or the declaration says what its bytes are; without either they are read as
// ComoUtf8 does. Zero bytes become blanks, references that name no character U+FFFD. Raises kArchivo.
BytesPersistidos LeerBytes(const std::filesystem::path& ruta);

}  // namespace utr
