#pragma once

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Archivos.h"
#include "benchmarks/Internados.h"
#include "benchmarks/tables/Registros.h"

// The least that anybody has to do who writes or reads such a file: the same bytes of the same table, the same table of
// the same bytes.
namespace medida {

inline std::string LeerTodo(const std::filesystem::path& ruta) {
  std::string texto(std::filesystem::file_size(ruta), '\0');
  std::ifstream(ruta, std::ios::binary).read(texto.data(), static_cast<std::streamsize>(texto.size()));
  return texto;
}

// Writes a table whose columns are texts. It takes each distinct text once, asks whether a reference is needed in it
// and how long a column has to be declared, and then copies names and texts row by row. It brings the file to the disk
// in the same way as the table, since that isn't what is compared.
class EscrituraMinima {
 public:
  EscrituraMinima(const utr::Tabla& tabla, bool pendientes) : tabla_(tabla), pendientes_(pendientes) {}

  void Escribir(const std::filesystem::path& ruta) {
    utr::EscribirEntero(ruta, [&](std::ostream& salida) {
      lugar_ = bufer_.get();
      Cabeza();
      if (pendientes_) Poner("\t<rs:insert>\r\n");
      for (std::size_t fila = 0; fila < tabla_.RecordCount(); ++fila) {
        Fila(fila);
        if (lugar_ - bufer_.get() > kTramo) Volcar(salida);
      }
      if (pendientes_) Poner("\t</rs:insert>\r\n");
      Poner("</rs:data>\r\n</xml>");
      Volcar(salida);
    });
  }

 private:
  static constexpr std::ptrdiff_t kTramo = 128 * 1024;
  static constexpr std::ptrdiff_t kAncho = 108;

  struct Columna {
    std::string nombre;
    std::string comienzo;  // of a value, without the blank
    std::vector<std::uint32_t> apoyo;
    std::span<const std::uint32_t> numeros;  // by row
    std::string textos;                      // one behind the other
    std::vector<std::uint32_t> finales;      // by number
    std::size_t largo = 0;
  };
  static constexpr std::size_t kHolgura = 16;

  void Cabeza() {
    Poner(
        "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\r\n"
        "\txmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\r\n"
        "\txmlns:rs='urn:schemas-microsoft-com:rowset'\r\n\txmlns:z='#RowsetSchema'>\r\n"
        "<s:Schema id='RowsetSchema'>\r\n\t<s:ElementType name='row' content='eltOnly' rs:updatable='true'>\r\n");
    columnas_.resize(tabla_.FieldCount());
    for (std::size_t i = 0; i < columnas_.size(); ++i) {
      Tomar(columnas_[i], i);
      Poner(
          fmt::format("\t\t<s:AttributeType name='{}' rs:number='{}' rs:nullable='true' rs:write='true'>\r\n"
                      "\t\t\t<s:datatype dt:type='string' rs:dbtype='str' dt:maxLength='{}' rs:precision='0' "
                      "rs:maybenull='false'/>\r\n\t\t</s:AttributeType>\r\n",
                      columnas_[i].nombre, i + 1, columnas_[i].largo));
    }
    Poner("\t\t<s:extends type='rs:rowbase'/>\r\n\t</s:ElementType>\r\n</s:Schema>\r\n<rs:data>\r\n");
  }

  void Tomar(Columna& columna, std::size_t campo) const {
    const utr::TextosColumna textos = tabla_.Textos(campo);
    columna.nombre = tabla_.Field(campo).nombre;
    columna.comienzo = columna.nombre + "='";
    columna.comienzo.append(kHolgura, '\0');
    columna.largo = tabla_.Field(campo).tamano;
    columna.numeros = textos.Indices(columna.apoyo);
    columna.finales.assign(1, 0);
    columna.finales.reserve(textos.Cantidad() + 1);
    columna.textos.clear();
    for (std::size_t n = 1; n <= textos.Cantidad(); ++n) {
      const std::string_view texto = textos.Texto(n);
      if (texto.size() > columna.largo) std::abort();
      columna.textos += texto;
      columna.finales.push_back(static_cast<std::uint32_t>(columna.textos.size()));
    }
    // No text of the measured tables needs a reference or is longer than declared: whatever these take beyond isn't
    // measured, but whether they do has to be asked.
    columna.textos.append(kHolgura, '0');
    if (PideReferencia(columna.textos)) std::abort();
  }

  // All texts of a column at once, in a loop that the compiler does sixteen bytes at a time.
  static bool PideReferencia(std::string_view textos) {
    unsigned char pide = 0;
    for (const char c : textos) {
      const auto b = static_cast<unsigned char>(c);
      pide |= static_cast<unsigned char>((b < 0x20) | (b == '&') | (b == '<') | (b == '>') | (b == '\'') | (b == '"'));
    }
    return pide != 0;
  }

  void Fila(std::size_t fila) {
    char* linea = lugar_;
    Poner(pendientes_ ? "\t\t<z:row" : "\t<z:row");
    bool nulos = false;
    for (const Columna& columna : columnas_) {
      const std::uint32_t numero = columna.numeros[fila];
      nulos |= numero == 0;
      if (numero == 0) continue;
      Separar(linea);
      Breve({columna.comienzo.data(), columna.nombre.size() + 2});
      const std::uint32_t desde = columna.finales[numero - 1];
      Breve({columna.textos.data() + desde, columna.finales[numero] - desde});
      *lugar_++ = '\'';
    }
    if (pendientes_ && nulos) Nulos(fila, linea);
    Poner("/>\r\n");
  }

  void Nulos(std::size_t fila, char*& linea) {
    Separar(linea);
    const char* separador = "rs:forcenull='";
    for (const Columna& columna : columnas_) {
      if (columna.numeros[fila] != 0) continue;
      Poner(std::exchange(separador, " "));
      Poner(columna.nombre);
    }
    *lugar_++ = '\'';
  }

  void Separar(char*& linea) {
    if (lugar_ - linea < kAncho) {
      *lugar_++ = ' ';
      return;
    }
    Poner(pendientes_ ? "\r\n\t\t\t " : "\r\n\t\t ");
    linea = lugar_;
  }

  // Of a text with room behind it, nearly always by one copy of a length that is known.
  void Breve(std::string_view texto) {
    std::memcpy(lugar_, texto.data(), kHolgura);
    if (texto.size() > kHolgura) std::memcpy(lugar_, texto.data(), texto.size());
    lugar_ += texto.size();
  }

  void Poner(std::string_view texto) {
    std::memcpy(lugar_, texto.data(), texto.size());
    lugar_ += texto.size();
  }

  void Volcar(std::ostream& salida) {
    salida.write(bufer_.get(), lugar_ - bufer_.get());
    lugar_ = bufer_.get();
  }

  const utr::Tabla& tabla_;
  bool pendientes_;
  std::vector<Columna> columnas_;
  std::unique_ptr<char[]> bufer_ = std::make_unique<char[]>(2 * kTramo);
  char* lugar_ = nullptr;
};

// When a text that isn't the one of the row above is looked up.
enum class Busqueda : std::uint8_t {
  kEnseguida,
  kAnticipada,  // a few rows later, when its place has been fetched
};

// The table of a file: each distinct text of a column once, and its number by row.
template <Busqueda kBusqueda>
class LecturaMinima {
  static constexpr std::size_t kEspera = 8;

 public:
  struct Espera {
    std::string_view valor;
    std::size_t dispersion;
    std::size_t fila;
  };
  struct Columna {
    std::string clave;
    Internados textos;
    std::vector<std::uint32_t> numeros;  // by row; 0 is null
    std::string_view ultimo;             // most values are the one of the row above
    std::uint32_t su_numero = 0;
    std::array<Espera, kEspera> esperan;
    std::size_t llegadas = 0;  // of those that wait or waited
    std::size_t buscadas = 0;
  };

  // Reads the file at once and walks over its bytes: names, quotes, references. Anything that isn't a row is passed
  // over up to its end.
  explicit LecturaMinima(const std::filesystem::path& ruta) {
    const auto largo = static_cast<std::size_t>(std::filesystem::file_size(ruta));
    const auto bytes = std::make_unique_for_overwrite<char[]>(largo);
    Leer(ruta, bytes.get(), largo);
    for (const char* campo : kCampos) {
      columnas_.emplace_back().clave = campo;
      columnas_.back().numeros.reserve(kFilas);
    }
    fin_ = bytes.get() + largo;
    // There are no references, but nobody knows that before.
    if (std::memchr(bytes.get(), '&', largo) != nullptr) std::abort();
    p_ = bytes.get() + std::string_view(bytes.get(), largo).find("<rs:data>") + 9;
    while (p_ < fin_) Elemento();
    for (Columna& columna : columnas_) {
      while (columna.buscadas < columna.llegadas) Buscar(columna);
    }
  }

  std::size_t Filas() const { return filas_; }
  const std::vector<Columna>& Columnas() const { return columnas_; }

 private:
  static void Leer(const std::filesystem::path& ruta, char* bytes, std::size_t largo) {
    const int archivo = ::open(ruta.c_str(), O_RDONLY);
    std::size_t leidos = 0;
    for (ssize_t n = 1; n > 0; leidos += static_cast<std::size_t>(n))
      n = ::read(archivo, bytes + leidos, largo - leidos);
    ::close(archivo);
    if (leidos != largo) std::abort();
  }

  void Elemento() {
    if (static_cast<std::size_t>(fin_ - p_) > kFila.size() && std::string_view(p_, kFila.size()) == kFila) {
      p_ += kFila.size();
      Fila();
    } else {
      ++p_;
    }
  }

  void Fila() {
    std::size_t siguiente = 0;
    for (Columna& columna : columnas_) columna.numeros.push_back(0);
    for (;; ++p_) {
      if (p_ == fin_) std::abort();
      if (*p_ == '/') break;
      if (*p_ == ' ' || *p_ == '\t' || *p_ == '\r' || *p_ == '\n') continue;
      Atributo(siguiente);
    }
    ++filas_;
  }

  // Values come in the order of their columns.
  void Atributo(std::size_t& siguiente) {
    for (; siguiente < columnas_.size(); ++siguiente) {
      Columna& columna = columnas_[siguiente];
      const std::size_t largo = columna.clave.size();
      if (static_cast<std::size_t>(fin_ - p_) <= largo || p_[largo] != '=' ||
          std::memcmp(p_, columna.clave.data(), largo) != 0)
        continue;
      p_ += largo;
      Tomar(columna, Valor());
      ++siguiente;
      return;
    }
    while (p_ < fin_ && *p_ != '=') ++p_;  // an attribute of no column
    Valor();
  }

  void Tomar(Columna& columna, std::string_view valor) {
    if constexpr (kBusqueda == Busqueda::kAnticipada) {
      if (columna.llegadas - columna.buscadas == kEspera) Buscar(columna);
      columna.esperan[columna.llegadas++ % kEspera] = {valor, columna.textos.Anticipar(valor), filas_};
    } else {
      if (columna.su_numero == 0 || valor != columna.ultimo) {
        columna.ultimo = valor;
        columna.su_numero = columna.textos.Numero(valor);
      }
      columna.numeros.back() = columna.su_numero;
    }
  }

  // The one that waits longest.
  static void Buscar(Columna& columna) {
    const Espera& espera = columna.esperan[columna.buscadas++ % kEspera];
    columna.numeros[espera.fila] = columna.textos.Numero(espera.valor, espera.dispersion);
  }

  std::string_view Valor() {
    if (fin_ - p_ < 3) std::abort();
    const char comilla = p_[1];
    const char* desde = p_ += 2;
    while (p_ < fin_ && *p_ != comilla) ++p_;
    if (p_ == fin_) std::abort();
    return {desde, static_cast<std::size_t>(p_ - desde)};
  }

  static constexpr std::string_view kFila = "<z:row";
  std::vector<Columna> columnas_;
  std::size_t filas_ = 0;
  char* p_ = nullptr;
  char* fin_ = nullptr;
};

}  // namespace medida
