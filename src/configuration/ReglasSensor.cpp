#include "configuration/ReglasSensor.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "base/Texto.h"

namespace utr {
namespace {

using C = CampoSensor;
using Paso = void (*)(const EntradaReglas&, ResultadoReglas&);

constexpr std::array<Paso, 5> kPasos{ValidarTiempos, ValidarValidaciones, ValidarAlarmas, ValidarCanalPluviometro,
                                     ValidarNumeros};

// The constant of the gauge may be typed with a comma, as files have it.
bool EsNumeroDe(CampoSensor campo, const std::string& texto) {
  return EsNumeroSimple(campo == C::kPluviometro ? Reemplazar(texto, ",", ".") : texto);
}

// The caption of a field as its kind shows it.
std::string RotuloDe(CampoSensor campo, const EntradaReglas& entrada) {
  const auto cara = CaraDe(entrada.tipo, entrada.canal);
  return campo == C::kNivRefLmn && cara ? RotuloNivel(*cara) : DatosDe(campo).rotulo;
}

}  // namespace

void Aplicar(const std::vector<ValorForzado>& forzados, ValoresSensor& valores) {
  for (const ValorForzado& forzado : forzados) valores[forzado.campo] = forzado.texto;
}

// A gauge on another channel comes only from a foreign file; what it can't have is emptied and the line never shows.
void ValidarCanalPluviometro(const EntradaReglas& entrada, ResultadoReglas& resultado) {
  if (entrada.tipo != 5 || entrada.canal == 15) return;
  for (const C campo : {C::kMaxBajTx, C::kMaxBajVal, C::kMaxSubVal, C::kMinValid, C::kAlBaj, C::kAlMaxPico,
                        C::kAlMinPico, C::kAlSub, C::kAMax, C::kAMin}) {
    resultado.forzados.push_back({campo, "0"});
  }
}

// Later readers would take "12,5" for 12 or 125. What came so from the unit isn't judged.
void ValidarNumeros(const EntradaReglas& entrada, ResultadoReglas& resultado) {
  if (!entrada.habilitado) return;
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    const auto campo = static_cast<C>(i);
    const std::string& texto = entrada.valores[campo];
    if (texto == entrada.cargados[campo] || !entrada.habilitado(campo) || EsNumeroDe(campo, texto)) continue;
    resultado.reparos.push_back({RotuloDe(campo, entrada) + " no es un número", {campo}});
  }
}

ResultadoReglas ValidarDatos(const EntradaReglas& entrada) {
  ResultadoReglas resultado;
  for (const Paso paso : kPasos) {
    paso(entrada, resultado);
    if (!resultado.reparos.empty()) break;
  }
  return resultado;
}

ResultadoReglas ReparosVivos(const EntradaReglas& entrada) {
  ResultadoReglas resultado;
  for (const Paso paso : kPasos) paso(entrada, resultado);
  return resultado;
}

std::string MensajeDeReparos(const std::vector<ReparoSensor>& reparos) {
  std::string mensaje = "Error en los valores ingresados";
  for (const ReparoSensor& reparo : reparos) mensaje += "\r\n" + reparo.texto;
  return mensaje;
}

bool EsNumeroSimple(std::string_view texto) {
  texto = Recortar(texto);
  if (!texto.empty() && (texto.front() == '-' || texto.front() == '+')) texto.remove_prefix(1);
  const auto es_cifra = [](char letra) { return letra >= '0' && letra <= '9'; };
  return std::count(texto.begin(), texto.end(), '.') <= 1 && std::any_of(texto.begin(), texto.end(), es_cifra) &&
         std::all_of(texto.begin(), texto.end(), [&](char letra) { return letra == '.' || es_cifra(letra); });
}

}  // namespace utr
