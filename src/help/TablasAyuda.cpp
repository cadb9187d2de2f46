#include "help/TablasAyuda.h"

#include <algorithm>
#include <array>
#include <map>

#include "base/Error.h"
#include "base/Texto.h"
#include "configuration/CamposSensor.h"
#include "configuration/Pilas.h"
#include "configuration/ReglasSensor.h"
#include "console/TablaOpciones.h"
#include "driver/CanalesUTR.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/PaginaCero.h"
#include "operations/BanderasEstado.h"
#include "operations/PasosAsistente.h"
#include "operations/PuestaEnMarcha.h"
#include "retrieved/Eventos.h"
#include "schedule/EdicionAgenda.h"
#include "session/AjustesEnlace.h"

namespace utr::ayuda {
namespace {

using Filas = std::vector<std::vector<std::string>>;

// --- Channels and their fields ---------------------------------------------------------------------------------------

// The faces of the dialog with the kind and channel that have them.
struct CaraNombrada {
  const char* nombre;
  std::int16_t tipo;
  std::int16_t canal;
};
constexpr CaraNombrada kCaras[] = {{"Limnímetro", 0, 1}, {"Analógico", 0, 4},    {"Meteorológico", 1, 4},
                                   {"Velocidad", 2, 2},  {"Dirección", 3, 3},    {"Sup. analógica", 4, 22},
                                   {"Lluvia", 5, 15},    {"Sup. digital", 7, 16}};

// What the parentheses of a caption hold, which is how the network calls the field; without any the caption itself.
std::string NombreCorto(std::string_view rotulo) {
  const std::size_t abre = rotulo.find('(');
  const std::size_t cierra = rotulo.find(')');
  std::string dentro(abre == rotulo.npos ? std::string_view() : rotulo.substr(abre + 1, cierra - abre - 1));
  if (!dentro.empty() && dentro != "UI" && dentro != "Cuentas" && dentro != "mm" && dentro != "Limnímetro")
    return dentro;
  return std::string(Recortar(rotulo.substr(0, abre)));
}

Filas CarasDeSensor() {
  Filas filas{{"Campo"}};
  for (const CaraNombrada& cara : kCaras) filas.front().emplace_back(cara.nombre);
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    const auto campo = static_cast<CampoSensor>(i);
    std::vector<std::string> fila{NombreCorto(DatosDe(campo).rotulo)};
    for (const CaraNombrada& cara : kCaras) {
      const Celda celda = CeldaDe(campo, CaraDe(cara.tipo, cara.canal).value());
      fila.emplace_back(celda == Celda::kActiva || celda == Celda::kReiniciada ? "sí" : "");
    }
    filas.push_back(std::move(fila));
  }
  return filas;
}

Filas TiposPorCanal() {
  Filas filas{{"Canal", "Código", "Tipos que admite"}};
  for (std::int16_t canal = kPrimerCanal; canal <= kUltimoCanal; ++canal) {
    std::vector<std::string> tipos;
    for (const TipoOfrecido& tipo : TiposDeCanal(canal)) tipos.emplace_back(tipo.texto);
    const bool salida = ClaseDeCanal(canal) == ClaseCanal::kSalida;
    filas.push_back({std::to_string(canal), NombreCanal(canal), salida ? "salida digital" : Unir(tipos, ", ")});
  }
  return filas;
}

// A channel whose values obey all rules of its kind.
EntradaReglas Sano(std::int16_t tipo) {
  EntradaReglas entrada{.tipo = tipo, .canal = static_cast<std::int16_t>(tipo == 5 ? 15 : 1), .valores = {}};
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) entrada.valores[static_cast<CampoSensor>(i)] = "10";
  for (const CampoSensor campo : Periodos()) entrada.valores[campo] = "60";
  entrada.valores[CampoSensor::kRangoMin] = "0";
  entrada.valores[CampoSensor::kRangoMax] = "100";
  entrada.valores[CampoSensor::kNivRefLmn] = "0";
  return entrada;
}

// What a rule really asks where its words, which are the system's own, can be taken the other way round.
std::string Aclaracion(const ReparoSensor& reparo) {
  const auto nombre = [&](std::size_t i) { return NombreCorto(DatosDe(reparo.campos.at(i)).rotulo); };
  if (reparo.texto.ends_with("debe ser múltiplo de 1440")) return "1440 dividido por " + nombre(0) + " no deja resto";
  if (reparo.texto.find("debe ser múltiplo de") != std::string::npos)
    return nombre(1) + " es " + nombre(0) + " o un múltiplo entero de él";
  if (reparo.texto.ends_with("debe ser menor o igual que el rango mínimo"))
    return nombre(0) + " menos el nivel de referencia no es menor que el Rango Mínimo";
  if (reparo.texto.ends_with("debe ser mayor que el valor de " + std::string(DatosDe(reparo.campos.front()).rotulo)))
    return nombre(1) + " no es menor que " + nombre(0);
  return {};
}

std::vector<std::string> FilaDeRegla(const ReparoSensor& reparo) {
  std::vector<std::string> campos;
  for (const CampoSensor campo : reparo.campos) campos.push_back(NombreCorto(DatosDe(campo).rotulo));
  return {reparo.texto, Unir(campos, ", "), Aclaracion(reparo)};
}

// The words of the rules themselves: each field in turn takes values that break them.
Filas Reglas(std::int16_t tipo) {
  static constexpr std::array kMalos{"0", "-100000", "7", "120", "1441", "100000"};
  Filas filas{{"Mensaje", "Campos", "Qué se comprueba"}};
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    for (const char* malo : kMalos) {
      EntradaReglas entrada = Sano(tipo);
      entrada.valores[static_cast<CampoSensor>(i)] = malo;
      for (const ReparoSensor& reparo : ReparosVivos(entrada).reparos) {
        std::vector<std::string> fila = FilaDeRegla(reparo);
        if (std::find(filas.begin(), filas.end(), fila) == filas.end()) filas.push_back(std::move(fila));
      }
    }
  }
  return filas;
}

// --- The unit --------------------------------------------------------------------------------------------------------

Filas TablaEventos(const std::filesystem::path& datos) {
  const TablaPtr eventos = CargarEventos(datos);
  if (!eventos) throw Error(error::kArchivo, "Ayuda", "Eventos.xml no se puede leer");
  Filas filas{{"Código", "Evento", "Valor 1", "Valor 2"}};
  for (eventos->MoveFirst(); !eventos->Eof(); eventos->MoveNext()) {
    filas.push_back({});
    for (const char* campo : {"Numero", "Nombre", "Valor1", "Valor2"}) filas.back().push_back(eventos->Texto(campo));
  }
  return filas;
}

Filas TablaBanderas() {
  Filas filas{{"Casilla", "Bit al grabar", "Se lee"}};
  for (const BanderaEstado& bandera : kBanderasEstado)
    filas.push_back({bandera.rotulo, std::to_string(bandera.casilla), bandera.leida == 0 ? "nunca" : "sí"});
  return filas;
}

// --- Errors and the command line -------------------------------------------------------------------------------------

Filas TablaErrores() {
  static constexpr std::array kNumeros{error::kLlamada,     error::kDesborde,     error::kSubindice,
                                       error::kTipos,       error::kArchivo,      error::kSinRegistro,
                                       error::kCampo,       error::kTablaCerrada, error::kTablaAbierta,
                                       error::kPuertoEnUso, error::kSinRespuesta, error::kCancelado};
  Filas filas{{"Número", "Qué dice"}};
  for (const std::int32_t numero : kNumeros) filas.push_back({std::to_string(numero), DescripcionDe(numero)});
  return filas;
}

Filas TablaErroresDeEnlace() {
  Filas filas{{"Número", "Qué pasó"}};
  for (const auto& error : error_enlace::kSignificados) filas.push_back({std::to_string(error.numero), error.que_paso});
  return filas;
}

Filas TablaOrdenes() {
  Filas filas{{"Orden", "Para qué"}};
  for (const consola::DescripcionOrden& orden : consola::Ordenes()) {
    const std::string operandos = orden.operandos.empty() ? "" : " " + std::string(orden.operandos);
    filas.push_back({std::string(orden.nombre) + operandos, std::string(orden.texto)});
  }
  return filas;
}

Filas TablaOpciones() {
  Filas filas{{"Opción", "Qué hace", "Órdenes"}};
  for (const consola::DescripcionOpcion& opcion : consola::OpcionesConocidas()) {
    std::vector<std::string> ordenes;
    for (const consola::DescripcionOrden& orden : consola::Ordenes()) {
      if ((orden.clases & opcion.clases) != 0) ordenes.emplace_back(orden.nombre);
    }
    const std::string valor = opcion.valor.empty() ? "" : " " + std::string(opcion.valor);
    filas.push_back({std::string(opcion.nombre) + valor, std::string(opcion.texto), Unir(ordenes, ", ")});
  }
  return filas;
}

// --- Single values ---------------------------------------------------------------------------------------------------

template <class Numeros>
std::string Enumerados(const Numeros& numeros) {
  std::vector<std::string> textos;
  textos.reserve(std::size(numeros));
  for (const std::int32_t numero : numeros) textos.push_back(std::to_string(numero));
  const std::string ultimo = textos.back();
  textos.pop_back();
  return Unir(textos, ", ") + " o " + ultimo;
}

const std::map<std::string, std::string, std::less<>>& Valores() {
  static const std::map<std::string, std::string, std::less<>> valores{
      {"duracion-menor", std::to_string(kDuracionMenor)},
      {"duracion-mayor", std::to_string(kDuracionMayor)},
      {"horarios-mayor", std::to_string(kHorariosDeMas - 1)},
      {"identificador-asignable", std::to_string(kMayorIdentificadorAsignable)},
      {"velocidades", Enumerados(pagina0::kVelocidades)},
      {"velocidades-asistente", Enumerados(kVelocidadesAsistente)},
      {"puerto-ip", std::to_string(kPuertoIPDefecto)},
      {"direccion-ip", std::string(kDireccionDefecto)},
      {"canales-con-registro", std::to_string(kCanalesConRegistro)},
      {"ultimo-puerto-serie", std::to_string(kUltimoPuertoSerie)},
      {"constante-pluviometro", std::string(kConstanteDefecto)}};
  return valores;
}

[[noreturn]] void Desconocido(std::string_view nombre) {
  throw Error(error::kArchivo, "Ayuda", "no hay nada que se llame " + std::string(nombre));
}

}  // namespace

FuentesAyuda FuentesDelPrograma(const std::filesystem::path& datos) {
  const std::map<std::string, std::function<Filas()>, std::less<>> tablas{
      {"caras-sensor", CarasDeSensor},
      {"tipos-por-canal", TiposPorCanal},
      {"reglas-nivel", [] { return Reglas(0); }},
      {"reglas-meteorologico", [] { return Reglas(1); }},
      {"reglas-velocidad", [] { return Reglas(2); }},
      {"reglas-direccion", [] { return Reglas(3); }},
      {"reglas-supervision", [] { return Reglas(4); }},
      {"reglas-lluvia", [] { return Reglas(5); }},
      {"eventos", [datos] { return TablaEventos(datos); }},
      {"banderas", TablaBanderas},
      {"errores", TablaErrores},
      {"errores-enlace", TablaErroresDeEnlace},
      {"ordenes", TablaOrdenes},
      {"opciones", TablaOpciones}};
  return {.tabla =
              [tablas](std::string_view nombre) {
                const auto tabla = tablas.find(nombre);
                return tabla == tablas.end() ? (Desconocido(nombre), Filas()) : tabla->second();
              },
          .valor =
              [](std::string_view nombre) {
                const auto valor = Valores().find(nombre);
                return valor == Valores().end() ? (Desconocido(nombre), std::string()) : valor->second;
              }};
}

}  // namespace utr::ayuda
