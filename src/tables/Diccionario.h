#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

// The distinct texts of a column. Internal to the table service.
namespace utr {

// Equality of texts without regard to the case that Minusculas removes.
struct DispersionSinCaso {
  using is_transparent = void;
  std::size_t operator()(std::string_view texto) const noexcept;
};
struct IgualdadSinCaso {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept;
};

// Texts, each distinct one once, by number from 1. Texts never move.
class Diccionario {
 public:
  // What a text is looked up by.
  struct Clave {
    std::uint64_t cabeza;
    std::uint32_t dispersion;
    std::uint32_t marca;
  };
  static Clave ClaveDe(std::string_view texto) noexcept;

  // The number of the text, which is added when it is new.
  std::uint32_t Numero(std::string_view texto) { return Numero(texto, ClaveDe(texto)); }
  std::uint32_t Numero(std::string_view texto, const Clave& clave);

  // Brings the slot of a text near, for a reader that looks several texts up soon. This one and the two below are put
  // in place by force: to the compiler a call of a function that only fetches ahead has no effect and can go.
  [[gnu::always_inline]] void Anticipar(const Clave& clave) const noexcept {
    if (!ranuras_.empty()) __builtin_prefetch(&ranuras_[clave.dispersion >> salto_]);
  }

  // Appends the numbers of all texts behind number `desde` that are equal to this one but for case, in ascending order.
  // The first call makes an index that grows with the texts from then on.
  void IgualesSinCaso(std::string_view texto, std::uint32_t desde, std::vector<std::uint32_t>& numeros);

  // Behind each text so many bytes more can be read, so that short ones are copied without a look at their length.
  static constexpr std::size_t kHolgura = 32;

  std::string_view Texto(std::uint32_t numero) const noexcept {
    return {entradas_[numero - 1].texto, entradas_[numero - 1].largo};
  }
  // Bring what Texto reads near, for a walk that comes to this number soon: first its entry, somewhat later its bytes.
  [[gnu::always_inline]] void AnticiparEntrada(std::uint32_t numero) const noexcept {
    __builtin_prefetch(entradas_.data() + numero - 1);
  }
  [[gnu::always_inline]] void AnticiparTexto(std::uint32_t numero) const noexcept {
    __builtin_prefetch(entradas_[numero - 1].texto);
  }

  std::size_t Cantidad() const noexcept { return entradas_.size(); }

  // Calls `hacer` with runs of texts, one behind the other without a mark between them, until all were there.
  template <typename Hacer>
  void CadaTramo(const Hacer& hacer) const {
    for (const Bloque& bloque : bloques_) hacer(std::string_view(bloque.bytes.get(), bloque.usados));
  }
  std::size_t Memoria() const noexcept;

 private:
  struct Entrada {
    const char* texto;
    std::uint32_t largo;
  };
  // A slot holds the first bytes of its text, so that a short text is found without looking anywhere else.
  struct Ranura {
    std::uint64_t cabeza = 0;
    std::uint32_t numero = 0;  // 0: free
    std::uint32_t marca = 0;   // bits of the hash above the length, which counts to 255
  };

  bool Es(const Ranura& ranura, const Clave& clave, std::string_view texto) const noexcept {
    return ranura.cabeza == clave.cabeza && ranura.marca == clave.marca &&
           (texto.size() <= sizeof ranura.cabeza || Texto(ranura.numero) == texto);
  }
  const char* Guardar(std::string_view texto);
  void Crecer();
  void IndexarSinCaso();

  // Blocks of texts double up to the larger size.
  static constexpr std::size_t kBloqueMenor = 256;
  static constexpr std::size_t kBloqueMayor = 32 * 1024;
  struct Bloque {
    std::unique_ptr<char[]> bytes;
    std::size_t usados = 0;
  };
  std::vector<Bloque> bloques_;
  std::size_t abierto_ = static_cast<std::size_t>(-1);  // the block that takes the next short text, once there is one
  std::size_t libre_ = 0;                               // bytes left there
  std::size_t bytes_ = 0;
  std::vector<Entrada> entradas_;
  // A power of two. The upper bits of a hash say where a text belongs, so that the slots keep their order when there
  // are twice as many.
  std::vector<Ranura> ranuras_;
  unsigned salto_ = 0;  // how many bits of a hash don't count

  // Texts that are equal but for case share a chain, newest first: its newest text by hash, then the one before each.
  std::vector<std::uint32_t> ultimos_;  // a power of two
  std::vector<std::uint32_t> anteriores_;
};

}  // namespace utr
