#include "retrieved/recovery/FilasCrudas.h"

#include <cstring>
#include <utility>

#include "base/Fechas.h"
#include "base/Texto.h"
#include "retrieved/ConstructorRegistros.h"

namespace utr {

namespace {

constexpr const char* kMuestras[] = {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"};
constexpr const char* kEventos[] = {"Fecha", "Hora", "Codigo", "Valor1", "Valor2"};

constexpr std::uint32_t kCuentas = 65536;

// The count of a converter that a text is, without a needless zero; kCuentas for any other.
std::uint32_t CuentaDe(std::string_view texto) {
  if (texto.empty() || texto.size() > 5 || (texto.front() == '0' && texto.size() > 1)) return kCuentas;
  std::uint32_t cuenta = 0;
  for (const char c : texto) {
    if (c < '0' || c > '9') return kCuentas;
    cuenta = cuenta * 10 + static_cast<std::uint32_t>(c - '0');
  }
  return cuenta;
}

class OrigenCrudo {
 public:
  OrigenCrudo(std::span<const FilaCruda> filas, const TextosCrudos& textos) : filas_(filas), textos_(textos) {}

  std::size_t Cantidad() const { return filas_.size(); }
  std::size_t Fila(std::size_t posicion) const { return posicion; }
  bool Recordable(LugarRegistro) const { return true; }
  std::uint32_t Indice(std::size_t fila, LugarRegistro campo) const { return filas_[fila][campo]; }
  Valor Leer(std::size_t fila, LugarRegistro campo) const {
    const std::uint32_t numero = filas_[fila][campo];
    return numero == 0 ? Valor{} : Valor{textos_.Texto(numero)};
  }
  PapelFila Papel(std::size_t fila) {
    return std::exchange(fecha_, filas_[fila][kFechaCruda]) == filas_[fila][kFechaCruda] ? PapelFila::kRegistro
                                                                                         : PapelFila::kFechaYRegistro;
  }

 private:
  std::span<const FilaCruda> filas_;
  const TextosCrudos& textos_;
  std::uint32_t fecha_ = 0;
};

}  // namespace

TextosCrudos::TextosCrudos() : cuentas_(kCuentas), cortos_(4096) {}

std::uint32_t TextosCrudos::Numero(std::string_view texto) {
  std::uint32_t& numero = LugarDe(texto);
  if (numero != 0) return numero;
  textos_.emplace_back(texto);
  return numero = static_cast<std::uint32_t>(textos_.size());
}

std::uint32_t& TextosCrudos::LugarDe(std::string_view texto) {
  if (const std::uint32_t cuenta = CuentaDe(texto); cuenta < kCuentas) return cuentas_[cuenta];
  if (texto.size() <= sizeof(Ranura::bytes)) return LugarDeCorto(texto);
  if (ultimo_largo_ == nullptr || ultimo_largo_->first != texto) {
    const auto hallado = largos_.find(texto);
    ultimo_largo_ = &*(hallado != largos_.end() ? hallado : largos_.try_emplace(std::string(texto)).first);
  }
  return ultimo_largo_->second;
}

std::uint32_t& TextosCrudos::LugarDeCorto(std::string_view texto) {
  std::uint64_t bytes = 0;
  if (!texto.empty()) std::memcpy(&bytes, texto.data(), texto.size());
  const auto largo = static_cast<std::uint32_t>(texto.size());
  Ranura* ranura = &Buscar(bytes, largo);
  if (ranura->numero != 0) return ranura->numero;
  if (++cuantos_cortos_ * 2 > cortos_.size()) {
    Crecer();
    ranura = &Buscar(bytes, largo);
  }
  ranura->bytes = bytes;
  ranura->largo = largo;
  return ranura->numero;
}

TextosCrudos::Ranura& TextosCrudos::Buscar(std::uint64_t bytes, std::uint32_t largo) {
  const std::size_t tope = cortos_.size() - 1;
  const std::uint64_t mezcla = (bytes + largo) * 0x9E3779B97F4A7C15U;
  for (std::size_t lugar = (mezcla ^ (mezcla >> 32)) & tope;; lugar = (lugar + 1) & tope) {
    Ranura& ranura = cortos_[lugar];
    if (ranura.numero == 0 || (ranura.bytes == bytes && ranura.largo == largo)) return ranura;
  }
}

void TextosCrudos::Crecer() {
  std::vector<Ranura> viejas(cortos_.size() * 2);
  viejas.swap(cortos_);
  for (const Ranura& ranura : viejas) {
    if (ranura.numero != 0) Buscar(ranura.bytes, ranura.largo) = ranura;
  }
}

std::span<const char* const> CamposDe(ClaseFlujo clase) {
  if (clase == ClaseFlujo::kEventos) return kEventos;
  return kMuestras;
}

TablaPtr ArmarRegistros(std::span<const FilaCruda> filas, const TextosCrudos& textos, Tabla* configuracion,
                        const ContextoRegistros& contexto) {
  TablaPtr resultado = CrearRegistrosDatos();
  OrigenCrudo origen(filas, textos);
  ConstructorRegistros(origen, configuracion, contexto, *resultado).Construir();
  return resultado;
}

TablaPtr ArmarFlujoEventos(const FilasDeFlujo& filas, const TextosCrudos& textos) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : kEventos) tabla->Append(campo, TipoCampo::kVarChar, 50);
  tabla->Open();
  std::uint32_t fecha = 0;
  for (const FilaCruda& fila : filas) {
    if (std::exchange(fecha, fila[kFechaCruda]) != fila[kFechaCruda]) {
      tabla->AddNew();
      tabla->Set(kFechaCruda, Valor{textos.Texto(fecha)});
    }
    tabla->AddNew();
    for (std::size_t campo = kHoraCruda; campo < std::size(kEventos); ++campo) {
      if (fila[campo] != 0) tabla->Set(campo, Valor{textos.Texto(fila[campo])});
    }
  }
  tabla->UpdateBatch();
  return tabla;
}

bool LectorDeFlujo::Leer(const Tabla& tabla, std::vector<FilaCruda>& filas) {
  if (!UbicarCampos(tabla)) return false;
  const std::size_t campos = CamposDe(clase_).size();
  for (std::size_t posicion = 0; posicion < tabla.RecordCount(); ++posicion) {
    const std::size_t fila = tabla.Filas().EnVista(posicion);
    FilaCruda cruda{};
    for (std::size_t i = 0; i < campos; ++i) cruda[i] = Numero(tabla.Filas().Value(fila, lugares_[i]));
    const Papel papel = PapelDe(cruda[kFechaCruda]);
    if (papel != Papel::kNinguno) fecha_ = cruda[kFechaCruda];
    const bool con_hora = Largo(textos_.Texto(cruda[kHoraCruda])) > 1;
    if (papel == Papel::kMarca || (papel == Papel::kMarcaYRegistro && !con_hora)) continue;
    cruda[kFechaCruda] = fecha_;
    if (!con_hora) cruda[kHoraCruda] = 0;
    filas.push_back(cruda);
  }
  return true;
}

// The tables of a driver are alike: most often the fields stand where they stood in the last one.
bool LectorDeFlujo::UbicarCampos(const Tabla& tabla) {
  const auto campos = CamposDe(clase_);
  for (std::size_t i = 0; i < campos.size(); ++i) {
    if (lugares_[i] < tabla.FieldCount() && tabla.Field(lugares_[i]).nombre == campos[i]) continue;
    const int lugar = tabla.BuscarCampo(campos[i]);
    if (lugar < 0) return false;
    lugares_[i] = static_cast<std::size_t>(lugar);
  }
  return true;
}

// Builders tell a date by the date test, that of events by its length. Rows of the queue carry record and date
// together.
LectorDeFlujo::Papel LectorDeFlujo::PapelDe(std::uint32_t fecha) {
  if (fecha == 0) return Papel::kNinguno;
  if (fecha != fecha_mirada_) {
    fecha_mirada_ = fecha;
    es_fecha_ = clase_ == ClaseFlujo::kEventos ? Largo(textos_.Texto(fecha)) > 1 : EsFecha(textos_.Texto(fecha));
  }
  if (!es_fecha_) return Papel::kNinguno;
  return clase_ == ClaseFlujo::kCola ? Papel::kMarcaYRegistro : Papel::kMarca;
}

std::uint32_t LectorDeFlujo::Numero(const Valor& valor) {
  if (const auto* texto = std::get_if<std::string_view>(&valor)) return textos_.Numero(*texto);
  return std::holds_alternative<std::monostate>(valor) ? 0 : textos_.Numero(TextoDe(valor));
}

}  // namespace utr
