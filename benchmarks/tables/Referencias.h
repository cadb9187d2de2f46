#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/tables/Registros.h"

// The least that anybody has to do who writes or reads such a file.
namespace medida {

inline std::string LeerTodo(const std::filesystem::path& ruta) {
  std::string texto(std::filesystem::file_size(ruta), '\0');
  std::ifstream(ruta, std::ios::binary).read(texto.data(), static_cast<std::streamsize>(texto.size()));
  return texto;
}

// The rows of a table as a program has them that keeps nothing but their texts, in the order of the file. No text needs
// a reference, and nobody asks whether it does.
class EscrituraMinima {
 public:
  EscrituraMinima(Variedad variedad, bool pendientes) : pendientes_(pendientes) {
    std::vector<std::size_t> largos;
    for (std::size_t fila = 0; fila < kFilas; ++fila) {
      for (std::size_t campo = 0; campo < kCampos.size(); ++campo) {
        const std::string celda = EsNula(fila, campo) ? "" : Celda(fila, campo, variedad);
        textos_ += celda;
        largos.push_back(celda.size());
      }
    }
    std::size_t desde = 0;
    for (const std::size_t largo : largos) {
      celdas_.emplace_back(largo == 0 ? nullptr : textos_.data() + desde, largo);
      desde += largo;
    }
    for (const char* campo : kCampos) nombres_.push_back(std::string(campo) + "='");
  }

  // Copies each row with its names, ends lines where the service does, and brings the file to the disk.
  void Escribir(const std::filesystem::path& ruta) {
    const int archivo = ::open(ruta.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    lugar_ = bufer_.get();
    if (pendientes_) Poner("\t<rs:insert>\r\n");
    const std::string_view* celda = celdas_.data();
    for (std::size_t fila = 0; fila < kFilas; ++fila, celda += kCampos.size()) {
      Fila(celda);
      if (lugar_ - bufer_.get() > kTramo) Volcar(archivo);
    }
    if (pendientes_) Poner("\t</rs:insert>\r\n");
    Volcar(archivo);
    ::fsync(archivo);
    ::close(archivo);
  }

 private:
  static constexpr std::ptrdiff_t kTramo = 1 << 20;
  static constexpr std::ptrdiff_t kAncho = 108;

  void Fila(const std::string_view* celdas) {
    char* linea = lugar_;
    Poner(pendientes_ ? "\t\t<z:row" : "\t<z:row");
    for (std::size_t campo = 0; campo < kCampos.size(); ++campo) {
      if (celdas[campo].data() == nullptr) continue;
      Separar(linea);
      Poner(nombres_[campo]);
      Poner(celdas[campo]);
      *lugar_++ = '\'';
    }
    if (pendientes_) Nulos(celdas, linea);
    Poner("/>\r\n");
  }

  void Nulos(const std::string_view* celdas, char*& linea) {
    const char* separador = "rs:forcenull='";
    for (std::size_t campo = 0; campo < kCampos.size(); ++campo) {
      if (celdas[campo].data() != nullptr) continue;
      if (*separador == 'r') Separar(linea);
      Poner(separador);
      Poner(kCampos[campo]);
      separador = " ";
    }
    if (*separador == ' ') *lugar_++ = '\'';
  }

  void Separar(char*& linea) {
    if (lugar_ - linea < kAncho) {
      *lugar_++ = ' ';
      return;
    }
    Poner(pendientes_ ? "\r\n\t\t\t " : "\r\n\t\t ");
    linea = lugar_;
  }

  void Poner(std::string_view texto) {
    std::memcpy(lugar_, texto.data(), texto.size());
    lugar_ += texto.size();
  }

  void Volcar(int archivo) {
    if (::write(archivo, bufer_.get(), static_cast<std::size_t>(lugar_ - bufer_.get())) < 0) std::abort();
    lugar_ = bufer_.get();
  }

  bool pendientes_;
  std::string textos_;
  std::vector<std::string_view> celdas_;
  std::vector<std::string> nombres_;
  std::unique_ptr<char[]> bufer_ = std::make_unique<char[]>(2 * kTramo);
  char* lugar_ = nullptr;
};

// Reads a file at once, has its tree built in the quickest way that the library offers, and walks its values.
inline std::size_t LeerYRecorrer(const std::filesystem::path& ruta) {
  const auto largo = static_cast<std::size_t>(std::filesystem::file_size(ruta));
  const auto bytes = std::make_unique_for_overwrite<char[]>(largo);
  const int archivo = ::open(ruta.c_str(), O_RDONLY);
  std::size_t leidos = 0;
  for (ssize_t n = 1; n > 0; leidos += static_cast<std::size_t>(n))
    n = ::read(archivo, bytes.get() + leidos, largo - leidos);
  ::close(archivo);
  pugi::xml_document documento;
  if (!documento.load_buffer_inplace(bytes.get(), leidos, pugi::parse_escapes, pugi::encoding_utf8)) std::abort();
  std::size_t suma = 0;
  std::vector<pugi::xml_node> nodos{documento.document_element().child("rs:data")};
  while (!nodos.empty()) {
    const pugi::xml_node nodo = nodos.back();
    nodos.pop_back();
    for (const auto atributo : nodo.attributes()) suma += std::char_traits<char>::length(atributo.value());
    for (const auto hijo : nodo.children()) nodos.push_back(hijo);
  }
  return suma;
}

}  // namespace medida
