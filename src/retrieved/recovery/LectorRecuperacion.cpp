#include "retrieved/recovery/LectorRecuperacion.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "base/Error.h"

namespace utr {

namespace {

constexpr std::size_t kBufer = std::size_t{1} << 18;
constexpr std::size_t kLineaMaxima = 4096;  // a page with blanks around each of its numbers is well below
constexpr std::uint64_t kCorta = 50;        // nothing that short is a page
constexpr std::string_view kMarcaUtf8 = "\xEF\xBB\xBF";

struct Palabras {
  DanoLinea dano;
  std::string_view texto;
};
constexpr Palabras kPalabras[] = {
    {DanoLinea::kNinguno, ""},
    {DanoLinea::kLarga, "es mucho más larga que una página"},
    {DanoLinea::kComillas, "le falta una comilla o le sobra"},
    {DanoLinea::kSinPosicion, "no tiene posición"},
    {DanoLinea::kPosiciones, "tiene más de una posición"},
    {DanoLinea::kDemasiados, "tiene más números que una página"},
    {DanoLinea::kSinNumero, "tiene algo que no es un número"},
    {DanoLinea::kMayor, "tiene un número mayor que 255"},
    {DanoLinea::kPistaErronea, "la pista no es un número de 0 a 31"},
    {DanoLinea::kPaginaErronea, "la página no es un número de 0 a 1023"},
};

bool EsBlanco(char c) {
  return c == ' ' || c == '\t';
}

bool EsCifra(char c) {
  return c >= '0' && c <= '9';
}

std::string_view SinBlancos(std::string_view texto) {
  while (!texto.empty() && EsBlanco(texto.front())) texto.remove_prefix(1);
  while (!texto.empty() && EsBlanco(texto.back())) texto.remove_suffix(1);
  return texto;
}

// A whole number without sign up to `mayor`.
std::optional<std::int16_t> LeerNumero(std::string_view texto, int mayor) {
  texto = SinBlancos(texto);
  if (texto.empty() || !std::all_of(texto.begin(), texto.end(), EsCifra)) return std::nullopt;
  int numero = 0;
  for (const char c : texto) {
    numero = numero * 10 + (c - '0');
    if (numero > mayor) return std::nullopt;
  }
  return static_cast<std::int16_t>(numero);
}

bool EsEncabezado(std::string_view texto) {
  const std::size_t barra = texto.find('/');
  return barra != std::string_view::npos && LeerNumero(texto.substr(0, barra), kPistasFlash - 1) &&
         LeerNumero(texto.substr(barra + 1), kPistasFlash - 1);
}

ClaseLinea ClaseDeCorta(std::string_view linea) {
  if (linea.size() >= 2 && linea.front() == '"' && linea.back() == '"') linea = linea.substr(1, linea.size() - 2);
  linea = SinBlancos(linea);
  if (linea.empty()) return ClaseLinea::kVacia;
  if (linea == "EOT") return ClaseLinea::kFinDePista;
  return EsEncabezado(linea) ? ClaseLinea::kEncabezado : ClaseLinea::kCorta;
}

// Takes the items of a page text one after the other.
class LectorDeItems {
 public:
  LectorDeItems(std::string_view texto, LineaRecuperacion& linea)
      : lugar_(texto.data()), fin_(texto.data() + texto.size()), linea_(linea) {}

  // Every item but the last one becomes a byte. Nothing is stored of the last one, which may be empty too.
  DanoLinea Leer() {
    for (std::size_t items = 1;; ++items) {
      if (items > kItemsDePagina) return DanoLinea::kDemasiados;
      const DanoLinea dano = LeerUno();
      const bool ultimo = lugar_ == fin_;
      if (ultimo && vacio_) return DanoLinea::kNinguno;
      if (dano != DanoLinea::kNinguno || ultimo) return dano;
      Guardar();
      ++lugar_;
    }
  }

 private:
  // Goes on to the comma behind the item or to the end.
  DanoLinea LeerUno() {
    numero_ = 0;
    SaltarBlancos();
    const char* comienzo = lugar_;
    for (; lugar_ != fin_ && EsCifra(*lugar_); ++lugar_) numero_ = std::min(numero_ * 10 + (*lugar_ - '0'), 256);
    const bool con_cifras = lugar_ != comienzo;
    SaltarBlancos();
    vacio_ = !con_cifras && (lugar_ == fin_ || *lugar_ == ',');
    if (!con_cifras || (lugar_ != fin_ && *lugar_ != ',')) return DanoLinea::kSinNumero;
    return numero_ > 255 ? DanoLinea::kMayor : DanoLinea::kNinguno;
  }

  void SaltarBlancos() {
    while (lugar_ != fin_ && EsBlanco(*lugar_)) ++lugar_;
  }

  void Guardar() {
    linea_.bytes[linea_.cuantos++] = static_cast<std::uint8_t>(numero_);
    if (numero_ == 255) ++linea_.borrados;
  }

  const char* lugar_;
  const char* fin_;
  LineaRecuperacion& linea_;
  int numero_ = 0;
  bool vacio_ = false;
};

// What is wrong with a line of more than 50 characters, or its page.
DanoLinea LeerPagina(std::string_view texto, LineaRecuperacion& linea) {
  texto = SinBlancos(texto);
  if (texto.size() < 2 || texto.front() != '"' || texto.back() != '"') return DanoLinea::kComillas;
  texto = texto.substr(1, texto.size() - 2);
  if (texto.find('"') != std::string_view::npos) return DanoLinea::kComillas;
  const std::size_t numeral = texto.find('#');
  if (numeral == std::string_view::npos) return DanoLinea::kSinPosicion;
  const std::string_view posicion = texto.substr(numeral + 1);
  if (posicion.find('#') != std::string_view::npos) return DanoLinea::kPosiciones;
  const std::size_t coma = posicion.find(',');
  const auto pista = LeerNumero(posicion.substr(0, coma), kPistasFlash - 1);
  if (!pista) return DanoLinea::kPistaErronea;
  const auto pagina =
      coma == std::string_view::npos ? std::nullopt : LeerNumero(posicion.substr(coma + 1), kPaginasPorPista - 1);
  if (!pagina) return DanoLinea::kPaginaErronea;
  linea.con_lugar = true;
  linea.pista = *pista;
  linea.pagina = *pagina;
  linea.texto = texto.substr(0, numeral);
  return LectorDeItems(linea.texto, linea).Leer();
}

[[noreturn]] void FallarLectura(const std::filesystem::path& ruta, const char* verbo) {
  throw Error(error::kArchivo, "LectorRecuperacion",
              std::string("No se puede ") + verbo + " el archivo " + ruta.string(), errno);
}

std::ifstream Abrir(const std::filesystem::path& ruta) {
  // Anything else could keep the program waiting, or never end.
  std::error_code falla;
  const auto estado = std::filesystem::status(ruta, falla);
  errno = std::filesystem::is_directory(estado) ? EISDIR : EINVAL;
  if (std::filesystem::exists(estado) && !std::filesystem::is_regular_file(estado)) FallarLectura(ruta, "abrir");
  errno = 0;
  std::ifstream archivo(ruta, std::ios::binary);
  if (!archivo) FallarLectura(ruta, "abrir");
  return archivo;
}

// Reads up to `cuantos` characters; less than that only at the end.
std::size_t LeerTrozo(std::istream& fuente, char* destino, std::size_t cuantos, const std::filesystem::path& ruta) {
  errno = 0;
  fuente.read(destino, static_cast<std::streamsize>(cuantos));
  if (fuente.bad()) FallarLectura(ruta, "leer");
  return static_cast<std::size_t>(fuente.gcount());
}

}  // namespace

std::string_view EnPalabras(DanoLinea dano) {
  const auto* hallada = std::find_if(std::begin(kPalabras), std::end(kPalabras),
                                     [dano](const Palabras& palabras) { return palabras.dano == dano; });
  return hallada == std::end(kPalabras) ? std::string_view{} : hallada->texto;
}

LectorRecuperacion::LectorRecuperacion(const std::filesystem::path& ruta)
    : ruta_(ruta), archivo_(Abrir(ruta)), fuente_(archivo_), bufer_(kBufer) {}

LectorRecuperacion::LectorRecuperacion(std::istream& fuente) : fuente_(fuente), bufer_(kBufer) {}

const LineaRecuperacion* LectorRecuperacion::Siguiente() {
  const auto texto = Cortar();
  if (!texto) return nullptr;
  ++linea_.numero;
  linea_.largo = omitidos_ + texto->size();
  linea_.dano = DanoLinea::kNinguno;
  linea_.texto = {};
  linea_.con_lugar = false;
  linea_.cuantos = linea_.borrados = 0;
  Clasificar(*texto);
  Contar();
  return &linea_;
}

void LectorRecuperacion::Clasificar(std::string_view texto) {
  if (!entera_) {
    linea_.clase = ClaseLinea::kCortada;
  } else if (linea_.largo <= kCorta) {
    linea_.clase = ClaseDeCorta(SinBlancos(texto));
  } else {
    linea_.dano = linea_.largo > kLineaMaxima ? DanoLinea::kLarga : LeerPagina(texto, linea_);
    linea_.clase = linea_.dano == DanoLinea::kNinguno ? ClaseLinea::kPagina : ClaseLinea::kDanada;
  }
}

void LectorRecuperacion::Contar() {
  con_marcas_ |= linea_.clase == ClaseLinea::kEncabezado || linea_.clase == ClaseLinea::kFinDePista;
  con_paginas_ |= linea_.clase == ClaseLinea::kPagina;
  con_trozo_ |= linea_.clase == ClaseLinea::kCortada && linea_.largo > kCorta;
  if (linea_.clase != ClaseLinea::kDanada || con_danadas_) return;
  con_danadas_ = true;
  primera_danada_ = linea_.numero;
  primer_dano_ = linea_.dano;
}

bool LectorRecuperacion::EsAjeno() const noexcept {
  return !con_paginas_ && (con_danadas_ || (con_trozo_ && !con_marcas_));
}

std::string LectorRecuperacion::PrimerDano() const {
  if (!con_danadas_) return {};
  return "línea " + std::to_string(primera_danada_) + ": " + std::string(EnPalabras(primer_dano_));
}

// The text up to the next line end, without it. Of a line that is far too long only its length goes on.
std::optional<std::string_view> LectorRecuperacion::Cortar() {
  omitidos_ = 0;
  std::size_t mirados = 0;
  for (;;) {
    const char* comienzo = bufer_.data() + desde_;
    const auto* salto = static_cast<const char*>(std::memchr(comienzo + mirados, '\n', hasta_ - desde_ - mirados));
    if (salto != nullptr) {
      std::string_view texto{comienzo, static_cast<std::size_t>(salto - comienzo)};
      desde_ += texto.size() + 1;
      while (!texto.empty() && texto.back() == '\r') texto.remove_suffix(1);
      entera_ = true;
      return texto;
    }
    mirados = hasta_ - desde_;
    if (omitidos_ > 0 || mirados > kLineaMaxima) {
      omitidos_ += mirados;
      desde_ = hasta_;
      mirados = 0;
    }
    if (Cargar()) continue;
    if (omitidos_ + mirados == 0) return std::nullopt;
    const std::string_view trozo{bufer_.data() + desde_, mirados};
    desde_ = hasta_;
    entera_ = false;
    return trozo;
  }
}

// Brings more of the file behind what is left of the buffer. False: there is no more.
bool LectorRecuperacion::Cargar() {
  if (fin_) return false;
  const bool primera = linea_.numero == 0 && hasta_ == 0;
  std::memmove(bufer_.data(), bufer_.data() + desde_, hasta_ - desde_);
  hasta_ -= desde_;
  desde_ = 0;
  const std::size_t leidos = LeerTrozo(fuente_, bufer_.data() + hasta_, bufer_.size() - hasta_, ruta_);
  hasta_ += leidos;
  fin_ = hasta_ < bufer_.size();
  if (primera && std::string_view(bufer_.data(), hasta_).starts_with(kMarcaUtf8)) desde_ = kMarcaUtf8.size();
  return leidos > 0;
}

TamanoRecuperacion MedirRecuperacion(const std::filesystem::path& ruta) {
  std::ifstream archivo = Abrir(ruta);
  std::vector<char> bufer(kBufer);
  TamanoRecuperacion tamano;
  for (;;) {
    const std::size_t leidos = LeerTrozo(archivo, bufer.data(), bufer.size(), ruta);
    tamano.bytes += leidos;
    tamano.lineas += static_cast<std::uint64_t>(
        std::count(bufer.begin(), bufer.begin() + static_cast<std::ptrdiff_t>(leidos), '\n'));
    if (leidos < bufer.size()) return tamano;
  }
}

}  // namespace utr
