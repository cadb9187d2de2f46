#include "driver/simulated/unit/Estacion.h"

#include <algorithm>
#include <cmath>

#include "base/Fechas.h"
#include "driver/Dias.h"
#include "driver/PaginaCero.h"

namespace utr::simulada {

namespace {

constexpr std::int64_t kMinuto = 60;
constexpr std::int64_t kDia = kSegundosDia;
constexpr int kMinutosDia = 1440;
constexpr std::int64_t kMayorAusencia = 60 * kDia;

// Where each flag is read: the bit as written and the mask as read.
constexpr struct {
  unsigned escrito;
  std::int32_t leido;
} kBanderas[] = {{bandera::kErrorFlash, 0x4000}, {bandera::kCondicional, 0x0200}, {bandera::kTxHora, 0x0040},
                 {bandera::kTxSuceso, 0x0100},   {bandera::kTxVentana, 0x0080},   {bandera::kTxObligatoria, 0x0020}};

const std::size_t kLugarSD1 = *LugarEnTrama(24);

std::size_t LargoDePagina(int numero) {
  return numero == 34 || numero == 35 ? 3 : kBytesPagina;
}

unsigned Par(const std::vector<std::uint8_t>& pagina, std::size_t lugar) {
  return pagina[lugar] | (static_cast<unsigned>(pagina[lugar + 1]) << 8);
}

// Page "0" as it leaves the factory: 9600 bits per second, identifier 120, a window of ten minutes.
std::vector<std::uint8_t> PaginaDeFabrica() {
  std::vector<std::uint8_t> pagina(kBytesPagina, 0);
  pagina[pagina0::kVelocidad] = 4;
  pagina[pagina0::kRetardo] = 7;
  pagina[pagina0::kRepeticiones] = 3;
  pagina[pagina0::kIdentificador] = 120;
  pagina[5] = 1;  // without a name, so that a writer which loses it is seen
  pagina[pagina0::kVentana] = 10;
  return pagina;
}

std::uint32_t SegundoDelDia(std::int64_t momento) {
  return static_cast<std::uint32_t>(momento - SegundosDeDia(DiaDe(momento)));
}

}  // namespace

Estacion::Estacion() : hidrologia_(vida_.hidrologia) {
  paginas[0] = PaginaDeFabrica();
}

void Estacion::Vivir(const Vida& vida) {
  if (vida.hidrologia != vida_.hidrologia) hidrologia_ = Hidrologia(vida.hidrologia);
  vida_ = vida;
}

void Estacion::RehacerHistoria(std::int64_t ahora) {
  memoria.Borrar();
  cartucho.Borrar();
  para_alarmas = para_condicional = para_vigilancia = {};
  const std::int64_t reloj = Reloj(ahora);
  transmitido = reloj - static_cast<std::int64_t>(vida_.pendiente_horas * 3600);
  Registrar(reloj - vida_.dias * kDia, reloj, reloj - vida_.dias_cartucho * kDia);
  registrado = reloj;
}

void Estacion::Avanzar(std::int64_t ahora) {
  const std::int64_t reloj = Reloj(ahora);
  if (reloj / kMinuto == registrado / kMinuto) return;
  // A clock that was put back records its hours a second time, as the unit does.
  if (reloj > registrado) Registrar(std::max(registrado, reloj - kMayorAusencia), reloj, registrado);
  Registrado(reloj);
}

// What a clock that was put back records again hasn't been transmitted.
void Estacion::Registrado(std::int64_t reloj) {
  if (reloj < registrado) transmitido = std::min(transmitido, reloj);
  registrado = reloj;
}

void Estacion::Desfasar(std::int64_t segundos) {
  Registrado(registrado + segundos - desfase);
  desfase = segundos;
}

void Estacion::PonerEnHora(std::int64_t ahora, std::int64_t hora) {
  desfase = hora - ahora;
  Registrado(hora);
  AnotarSuceso(ahora, suceso::kPuestaEnHora);
}

void Estacion::Reiniciar(std::int64_t ahora) {
  const std::vector<std::uint8_t>& cero = paginas[0];
  if (const auto nueva = pagina0::VelocidadDeCodigo(cero[pagina0::kVelocidad])) velocidad = *nueva;
  identificador = static_cast<int>(Par(cero, pagina0::kIdentificador));
  ReiniciarAgenda();
  AnotarSuceso(ahora, suceso::kReinicio);
}

void Estacion::ReiniciarAgenda() {
  vigente = agenda;
  ventana = static_cast<int>(Par(LeerPagina(0), pagina0::kVentana));
}

void Estacion::BorrarFlash(std::int64_t ahora) {
  memoria.Borrar();
  banderas &= ~bandera::kErrorFlash;
  AnotarSuceso(ahora, suceso::kFlashBorrada);
}

void Estacion::BorrarCartucho(std::int64_t ahora) {
  cartucho.Borrar();
  // An erased cartridge is empty.
  Anotar(ahora, {.codigo = suceso::kCartuchoBorrado, .marcas = marca::kSinValor}, false);
}

void Estacion::ConmutarSalida(int salida, bool encender, std::int64_t ahora) {
  salidas[static_cast<std::size_t>(salida - 1)] = encender;
  AnotarSuceso(ahora, suceso::kSalidaConmutada, static_cast<std::uint16_t>(salida), encender ? 1 : 0);
}

void Estacion::AnotarSuceso(std::int64_t ahora, std::uint8_t codigo) {
  Anotar(ahora, {.codigo = codigo, .marcas = marca::kSinValor}, true);
}

void Estacion::AnotarSuceso(std::int64_t ahora, std::uint8_t codigo, std::uint16_t valor1, std::int32_t valor2) {
  Anotar(ahora, {.codigo = codigo, .valor1 = valor1, .valor2 = valor2}, true);
}

void Estacion::Anotar(std::int64_t ahora, Suceso suceso, bool en_cartucho) {
  const std::int64_t reloj = Reloj(ahora);
  suceso.segundo = SegundoDelDia(reloj);
  suceso.marcas = static_cast<std::uint8_t>(suceso.marcas | marca::kPendiente);
  for (Memoria* donde : {&memoria, en_cartucho && TieneCartucho() ? &cartucho : nullptr}) {
    if (donde == nullptr) continue;
    donde->AnotarSuceso(DiaDe(reloj), suceso);
    donde->Sellar();
  }
}

std::vector<std::uint8_t> Estacion::LeerPagina(int numero) const {
  const auto pagina = paginas.find(numero);
  return pagina != paginas.end() ? pagina->second : std::vector<std::uint8_t>(LargoDePagina(numero), 0);
}

bool Estacion::EscribirPagina(int numero, const std::vector<std::uint8_t>& bytes) {
  std::vector<std::uint8_t> pagina = LeerPagina(numero);
  if (bytes.size() > pagina.size()) return false;
  std::copy(bytes.begin(), bytes.end(), pagina.begin());
  paginas[numero] = std::move(pagina);
  return true;
}

std::int32_t Estacion::Estado() const {
  std::int32_t estado = 0;
  for (const auto& b : kBanderas) estado |= (banderas & b.escrito) != 0 ? b.leido : 0;
  return estado;
}

void Estacion::EscribirEstado(unsigned bits) {
  if ((bits & bandera::kActualizarCola) != 0) memoria.MarcarColaTransmitida();
  if ((bits & bandera::kActualizarSucesos) != 0) memoria.MarcarSucesosTransmitidos();
  constexpr unsigned kPropias = bandera::kActualizarCola | bandera::kActualizarSucesos | bandera::kCondicional;
  banderas = (banderas & bandera::kCondicional) | (bits & 0xFF & ~kPropias);
}

std::array<std::int32_t, Estacion::kTrama> Estacion::Instantaneos(std::int64_t ahora, std::int64_t atraso) const {
  const std::int64_t reloj = Reloj(ahora) - atraso;
  const Hidrologia& mundo = hidrologia_;
  const std::int64_t medianoche = SegundosDeDia(DiaDe(reloj));
  std::array<std::int32_t, kTrama> trama{};
  for (int canal = 1; canal <= kCanales; ++canal) {
    const ParametrosCanal& p = canales.Parametros(canal);
    if (!p.Habilitado() || mundo.Falla(canal, reloj)) continue;
    std::int32_t& lugar = trama[*LugarEnTrama(static_cast<std::int16_t>(canal))];
    if (p.tipo == TipoSensor::kPluviometro) {
      lugar = mundo.VuelcosEntre(medianoche, reloj, p.cte_pluvi);  // counted since midnight
    } else if (p.tipo == TipoSensor::kSupervisionDigital) {
      lugar = mundo.Valor(canal, reloj) != 0 ? 1 : 0;
    } else {
      lugar = p.Cuentas(mundo.Valor(canal, reloj));
    }
  }
  // Output 1 opens with the windows of the schedule and reads inverted.
  const auto minuto = static_cast<int>((reloj - medianoche) / kMinuto);
  const auto& entradas = vigente.Entradas();
  const bool abierta = Tiene(bandera::kTxHora | bandera::kTxVentana) &&
                       std::any_of(entradas.begin(), entradas.end(), [this, minuto](const Entrada& e) {
                         return e.Cuenta() && e.ventana && (minuto - e.minuto + kMinutosDia) % kMinutosDia < ventana;
                       });
  trama[kLugarSD1] = vida_.sd1 >= 0 ? 1 - vida_.sd1 : (abierta ? 0 : 1);
  trama[kLugarSD1 + 1] = salidas[0] ? 1 : 0;
  trama[kLugarSD1 + 2] = salidas[1] ? 1 : 0;
  return trama;
}

}  // namespace utr::simulada
