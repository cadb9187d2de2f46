#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <ostream>
#include <string_view>
#include <vector>

#include "tables/Diccionario.h"

// Lines as the recordset service breaks them. Internal to the writer.
namespace utr {

// Elements and attributes in the layout of the service, through a buffer that is written when it is full.
class Renglones {
 public:
  explicit Renglones(std::ostream& salida) : salida_(salida), buffer_(kTramo) {}

  // How far behind its end a short text has to be readable where it is copied without a look at its length.
  static constexpr std::size_t kHolgura = Diccionario::kHolgura;

  void Crudo(std::string_view texto) {
    Hacer(texto.size());
    std::memcpy(buffer_.data() + usados_, texto.data(), texto.size());
    usados_ += texto.size();
  }

  void Elemento(std::size_t sangria, std::string_view nombre) {
    sangria_ = sangria;
    linea_ = static_cast<std::ptrdiff_t>(usados_);
    Tabuladores(sangria);
    Crudo("<");
    Crudo(nombre);
  }

  // `nombre` with its "=": the value is written as it is.
  void Atributo(std::string_view nombre, std::string_view valor, std::size_t extra) {
    Cortar(extra);
    Crudo(" ");
    Crudo(nombre);
    Crudo("'");
    Crudo(valor);
    Crudo("'");
  }

  // The place where the next bytes go, for a writer that keeps it at hand over many attributes. Nothing else may be
  // written before it is given back.
  struct Punta {
    char* bytes;
    std::size_t usados;
    std::size_t caben;
    std::ptrdiff_t linea;
  };
  Punta Tomar() { return {buffer_.data(), usados_, buffer_.size(), linea_}; }
  void Dejar(const Punta& punta) {
    usados_ = punta.usados;
    linea_ = punta.linea;
  }

  // The beginning of an element of rows, with its tabs.
  Punta Abrir(Punta punta, std::size_t sangria) {
    static constexpr char kFila[kHolgura + 1] = "\t\t\t<z:row";
    constexpr std::size_t kTabuladores = 3;
    sangria_ = sangria;
    punta = Hacer(punta, kHolgura);
    punta.linea = static_cast<std::ptrdiff_t>(punta.usados);
    std::memcpy(punta.bytes + punta.usados, kFila + kTabuladores - sangria, kHolgura - kTabuladores);
    punta.usados += sangria + 6;
    return punta;
  }

  // A whole attribute, from the blank ahead of it to its last quote.
  Punta Hecho(Punta punta, std::string_view atributo, std::size_t extra) {
    return ConHolgura(Cortar(Hacer(punta, atributo.size()), extra), atributo);
  }

  // The same in two pieces: the blank, name and quote ahead of the value, and the value.
  Punta Hecho(Punta punta, std::string_view comienzo, std::string_view valor, std::size_t extra) {
    punta = Cortar(Hacer(punta, comienzo.size() + valor.size()), extra);
    punta = ConHolgura(ConHolgura(punta, comienzo), valor);
    punta.bytes[punta.usados++] = '\'';
    return punta;
  }

  // A value that brings line ends of its own: what follows is counted from the last one on.
  void AtributoEnvuelto(std::string_view nombre, std::string_view valor, std::size_t extra) {
    Atributo(nombre, valor, extra);
    const auto salto = valor.find_last_of('\n');
    const auto resto = salto == valor.npos ? valor.npos : valor.find_first_not_of("\t\n", salto);
    if (resto != valor.npos)
      linea_ = static_cast<std::ptrdiff_t>(usados_) - static_cast<std::ptrdiff_t>(valor.size() - resto + 1);
  }

  void Cerrar(std::string_view fin) {
    Crudo(fin);
    Crudo("\r\n");
  }

  void Volcar() {
    salida_.write(buffer_.data(), static_cast<std::streamsize>(usados_));
    linea_ -= static_cast<std::ptrdiff_t>(usados_);
    usados_ = 0;
  }

 private:
  static constexpr std::ptrdiff_t kAnchoLinea = 108;  // a line with that many bytes takes no further attribute
  static constexpr std::size_t kTramo = std::size_t{128} * 1024;

  // Room for so many bytes, and for what is copied beyond them.
  void Hacer(std::size_t bytes) {
    if (buffer_.size() - usados_ >= bytes + kHolgura) return;
    Volcar();
    if (buffer_.size() < bytes + kHolgura) buffer_.resize(bytes + kHolgura);
  }

  void Tabuladores(std::size_t cuantos) {
    while (cuantos-- > 0) Crudo("\t");
  }

  // Ends a line that is full. The blank that opens the next one doesn't count there.
  void Cortar(std::size_t extra) {
    if (static_cast<std::ptrdiff_t>(usados_) - linea_ < kAnchoLinea) return;
    Crudo("\r\n");
    Tabuladores(sangria_ + extra);
    linea_ = static_cast<std::ptrdiff_t>(usados_) + 1;
  }

  // The three steps of an attribute on a place at hand. Room for it, for the end of a line and for what is copied
  // beyond it:
  Punta Hacer(const Punta& punta, std::size_t bytes) {
    if (punta.caben - punta.usados >= bytes + 3 * kHolgura) return punta;
    Dejar(punta);
    Hacer(bytes + 3 * kHolgura);
    return Tomar();
  }

  Punta Cortar(const Punta& punta, std::size_t extra) {
    if (static_cast<std::ptrdiff_t>(punta.usados) - punta.linea < kAnchoLinea) return punta;
    Dejar(punta);
    Cortar(extra);
    return Tomar();
  }

  static Punta ConHolgura(Punta punta, std::string_view texto) {
    char* lugar = punta.bytes + punta.usados;
    std::memcpy(lugar, texto.data(), kHolgura);
    if (texto.size() > kHolgura) std::memcpy(lugar + kHolgura, texto.data() + kHolgura, texto.size() - kHolgura);
    punta.usados += texto.size();
    return punta;
  }

  std::ostream& salida_;
  std::vector<char> buffer_;
  std::size_t usados_ = 0;
  std::size_t sangria_ = 0;
  std::ptrdiff_t linea_ = 0;  // where the bytes of the present line begin that the service counts
};

}  // namespace utr
