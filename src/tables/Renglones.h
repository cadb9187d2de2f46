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
  explicit Renglones(std::ostream& salida) : salida_(salida), buffer_(kTramo + kReserva) {}

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

  // The place where the next bytes go, for a writer that keeps it at hand over a whole row. Nothing else may be written
  // before it is given back.
  struct Punta {
    char* lugar;
    char* limite;  // where the present line is full

    // What stands in a row's text goes over with kHolgura bytes at once, which have to be readable.
    void Poner(std::string_view texto) {
      std::memcpy(lugar, texto.data(), kHolgura);
      if (texto.size() > kHolgura) std::memcpy(lugar + kHolgura, texto.data() + kHolgura, texto.size() - kHolgura);
      lugar += texto.size();
    }
    void Poner(char c) { *lugar++ = c; }
  };

  // With room for so many bytes, and for what is copied beyond them.
  Punta Tomar(std::size_t bytes) {
    Hacer(bytes);
    const std::ptrdiff_t limite = linea_ + kAnchoLinea;
    return {buffer_.data() + usados_, buffer_.data() + std::max<std::ptrdiff_t>(limite, 0)};
  }
  void Dejar(const Punta& punta) {
    usados_ = static_cast<std::size_t>(punta.lugar - buffer_.data());
    linea_ = punta.limite - buffer_.data() - kAnchoLinea;
  }

  // What the beginning and the end of an element of rows take, and an attribute beyond its own bytes.
  static constexpr std::size_t kBytesFila = 16;
  static constexpr std::size_t kBytesAtributo = 16;

  // The beginning of an element of rows, with its tabs, in room for `bytes` beyond it.
  Punta Abrir(std::size_t sangria, std::size_t bytes) {
    static constexpr char kFila[kHolgura + 4] = "\t\t\t<z:row";
    constexpr std::size_t kTabuladores = 3;
    sangria_ = sangria;
    Hacer(kBytesFila + bytes);
    Punta punta{buffer_.data() + usados_, buffer_.data() + usados_ + kAnchoLinea};
    punta.Poner({kFila + kTabuladores - sangria, sangria + 6});
    return punta;
  }

  // Ends a line that is full. The blank that opens the next one doesn't count there.
  void Cortar(Punta& punta, std::size_t extra) const {
    if (punta.lugar < punta.limite) return;
    static constexpr char kSalto[] = "\r\n\t\t\t\t\t";
    std::memcpy(punta.lugar, kSalto, sizeof kSalto);
    punta.lugar += 2 + sangria_ + extra;
    punta.limite = punta.lugar + 1 + kAnchoLinea;
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
  // Behind what room was made for: what is copied beyond it, and where a line that ends there would be full.
  static constexpr std::size_t kReserva = kHolgura + kAnchoLinea;

  // Room for so many bytes, and for what is copied beyond them.
  void Hacer(std::size_t bytes) {
    if (buffer_.size() - usados_ >= bytes + kReserva) return;
    VolcarPaginas();
    if (buffer_.size() - usados_ < bytes + kReserva) buffer_.resize(usados_ + bytes + kReserva);
  }

  // What fills pages of the file to their end: the system takes a page at once more readily than in two parts.
  void VolcarPaginas() {
    constexpr std::size_t kPagina = 4096;
    const std::size_t enteros = usados_ / kPagina * kPagina;
    salida_.write(buffer_.data(), static_cast<std::streamsize>(enteros));
    usados_ -= enteros;
    std::memmove(buffer_.data(), buffer_.data() + enteros, usados_);
    linea_ -= static_cast<std::ptrdiff_t>(enteros);
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

  std::ostream& salida_;
  std::vector<char> buffer_;
  std::size_t usados_ = 0;
  std::size_t sangria_ = 0;
  std::ptrdiff_t linea_ = 0;  // where the bytes of the present line begin that the service counts
};

}  // namespace utr
