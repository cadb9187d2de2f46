#include "tables/LectorDirecto.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "base/Texto.h"
#include "tables/Persistido.h"

namespace utr {
namespace {

constexpr std::string_view kAbre = "<rs:data>";
constexpr std::string_view kCierra = "</rs:data>";

// Whether the text declares that prefix for that namespace, between either kind of quotes.
bool Declara(std::string_view texto, const std::string& prefijo, std::string_view espacio) {
  const std::string clave = " xmlns:" + prefijo + "=";
  auto en = texto.find(clave.substr(1));
  if (en == texto.npos) return false;
  en += clave.size() - 1;
  const std::string_view resto = texto.substr(en, espacio.size() + 2);
  return resto.size() == espacio.size() + 2 && resto.substr(1, espacio.size()) == espacio &&
         resto.front() == resto.back();
}

// The character that a reference names, without "&" and ";".
std::optional<std::uint32_t> Referido(std::string_view nombre) {
  constexpr std::pair<std::string_view, char> kNombres[] = {
      {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
  for (const auto& [conocido, c] : kNombres) {
    if (nombre == conocido) return static_cast<std::uint32_t>(c);
  }
  if (!nombre.starts_with('#')) return std::nullopt;
  nombre.remove_prefix(1);
  const bool hexa = nombre.starts_with('x');
  if (hexa) nombre.remove_prefix(1);
  std::uint32_t codigo = 0;
  const char* fin = nombre.data() + nombre.size();
  const auto leido = std::from_chars(nombre.data(), fin, codigo, hexa ? 16 : 10);
  if (leido.ec != std::errc() || leido.ptr != fin) return std::nullopt;
  return codigo;
}

// The text with its references resolved, in place: none is shorter than what it stands for. What is no reference stays.
std::string_view Resolver(char* texto, std::size_t largo) {
  constexpr std::size_t kMasLarga = 64;
  const std::string_view original(texto, largo);
  std::size_t hecho = 0;
  for (std::size_t i = 0; i < largo;) {
    const auto fin = texto[i] == '&' ? original.substr(i, kMasLarga).find(';') : original.npos;
    const auto codigo = fin == original.npos ? std::nullopt : Referido(original.substr(i + 1, fin - 1));
    if (!codigo) {
      texto[hecho++] = texto[i++];
      continue;
    }
    std::string caracter;
    AgregarUtf8(caracter, *codigo);
    hecho += caracter.copy(texto + hecho, caracter.size());
    i += fin + 1;
  }
  return {texto, hecho};
}

class Recorrido {
 public:
  Recorrido(const Partes& partes, ReceptorFilas& receptor)
      : p_(partes.filas), fin_(partes.filas + partes.largo), receptor_(receptor) {}

  bool Leer() {
    for (;;) {
      if (Consumir("<z:row")) {
        if (receptor_.HayNuevas() || !Fila(fila_)) return false;
        receptor_.Llana(fila_);
      } else if (Consumir("<rs:update>")) {
        if (receptor_.HayNuevas() || !Cambio()) return false;
      } else if (Consumir("<rs:insert>")) {
        if (!Envueltas("</rs:insert>", &ReceptorFilas::Nueva)) return false;
      } else if (Consumir("<rs:delete>")) {
        if (!Envueltas("</rs:delete>", &ReceptorFilas::Borrada)) return false;
      } else {
        return p_ == fin_;
      }
    }
  }

 private:
  static bool EsBlanco(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

  bool SaltarBlancos() {
    const char* desde = p_;
    while (p_ < fin_ && EsBlanco(*p_)) ++p_;
    return p_ > desde;
  }

  // Passes over white space and then over `texto`, if it stands there.
  bool Consumir(std::string_view texto) {
    SaltarBlancos();
    if (static_cast<std::size_t>(fin_ - p_) < texto.size()) return false;
    if (std::memcmp(p_, texto.data(), texto.size()) != 0) return false;
    p_ += texto.size();
    return true;
  }

  bool Envueltas(std::string_view cierre, void (ReceptorFilas::*tomar)(const FilaLeida&)) {
    while (!Consumir(cierre)) {
      if (!Consumir("<z:row") || !Fila(fila_)) return false;
      (receptor_.*tomar)(fila_);
    }
    return true;
  }

  bool Cambio() {
    if (!Consumir("<rs:original>") || !Consumir("<z:row") || !Fila(fila_)) return false;
    if (!Consumir("</rs:original>") || !Consumir("<z:row") || !Fila(nueva_)) return false;
    if (!Consumir("</rs:update>")) return false;
    receptor_.Cambiada(fila_, nueva_);
    return true;
  }

  // The attributes of a row up to its end; it has nothing inside.
  bool Fila(FilaLeida& fila) {
    fila.Vaciar();
    for (;;) {
      const bool separado = SaltarBlancos();
      if (fin_ - p_ < 2) return false;
      if (p_[0] == '/' && p_[1] == '>') {
        p_ += 2;
        return true;
      }
      if (!separado || !Atributo(fila)) return false;
    }
  }

  bool Atributo(FilaLeida& fila) {
    const char* nombre = p_;
    while (p_ < fin_ && *p_ != '=' && *p_ != '\'' && *p_ != '"' && *p_ != '<' && *p_ != '>' && !EsBlanco(*p_)) ++p_;
    const std::string_view clave(nombre, static_cast<std::size_t>(p_ - nombre));
    if (fin_ - p_ < 3 || *p_ != '=' || clave.empty() || clave.starts_with("xmlns")) return false;
    const char comilla = p_[1];
    if (comilla != '\'' && comilla != '"') return false;
    p_ += 2;
    const auto valor = Valor(comilla);
    if (!valor) return false;
    if (clave == "rs:forcenull") {
      fila.forzados = *valor;
    } else {
      fila.atributos.push_back({clave, *valor});
    }
    return true;
  }

  std::optional<std::string_view> Valor(char comilla) {
    char* desde = p_;
    bool con_referencias = false;
    for (; p_ < fin_ && *p_ != comilla; ++p_) con_referencias = con_referencias || *p_ == '&';
    if (p_ == fin_) return std::nullopt;
    const auto largo = static_cast<std::size_t>(p_++ - desde);
    return con_referencias ? Resolver(desde, largo) : std::string_view(desde, largo);
  }

  char* p_;
  char* fin_;
  ReceptorFilas& receptor_;
  FilaLeida fila_;
  FilaLeida nueva_;
};

}  // namespace

std::optional<Partes> Partir(char* datos, std::size_t largo) {
  const std::string_view v(datos, largo);
  const auto abre = v.find(kAbre);
  const auto cierra = v.rfind(kCierra);
  if (abre == v.npos || cierra == v.npos || cierra < abre) return std::nullopt;
  const auto cabeza = v.substr(0, abre + kAbre.size());
  if (!Declara(cabeza, "z", uri::kFila) || !Declara(cabeza, "rs", uri::kRowset)) return std::nullopt;
  Partes partes;
  partes.documento = cabeza;
  partes.documento += v.substr(cierra);
  partes.filas = datos + cabeza.size();
  partes.largo = cierra - cabeza.size();
  return partes;
}

bool LeerDirecto(const Partes& partes, ReceptorFilas& receptor) {
  return Recorrido(partes, receptor).Leer();
}

}  // namespace utr
