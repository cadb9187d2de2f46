
#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "base/Error.h"
#include "base/Fechas.h"
#include "base/LectorToml.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/PaginaCero.h"
#include "driver/Textos.h"
#include "driver/simulated/scenario/Escenario.h"

// Reading of UTRSimulada.toml. Every key stands in a table with the way in which it is read; what no table names is a
// mistake, so that a misspelled key doesn't pass in silence.
namespace utr::simulada {

namespace {

[[noreturn]] void Rechazar(const toml::node& nodo, const std::string& motivo) {
  throw Error(error::kArchivo, "UTRSimulada.toml", "línea " + std::to_string(nodo.source().begin.line) + ": " + motivo);
}

// A value together with the name of its key, for the words of a mistake.
struct Dato {
  const toml::node& nodo;
  std::string clave;

  [[noreturn]] void Mal(const std::string& motivo) const { Rechazar(nodo, "'" + clave + "' " + motivo); }

  double Doble(double menor, double mayor) const {
    const auto valor = nodo.value<double>();
    if (!nodo.is_number() || !valor) Mal("debe ser un número");
    if (!(*valor >= menor && *valor <= mayor)) {
      Mal("debe estar entre" + TextoPlano(menor) + " y" + TextoPlano(mayor));
    }
    return *valor;
  }
  int Entero(int menor, int mayor) const {
    if (!nodo.is_integer()) Mal("debe ser un número entero");
    return static_cast<int>(Doble(menor, mayor));
  }
  bool Logico() const {
    if (!nodo.is_boolean()) Mal("debe ser true o false");
    return *nodo.value<bool>();
  }
  std::string Texto() const {
    if (!nodo.is_string()) Mal("debe ser un texto entre comillas");
    return *nodo.value<std::string>();
  }
  std::vector<Dato> Lista() const {
    const toml::array* lista = nodo.as_array();
    if (lista == nullptr) Mal("debe ser una lista entre corchetes");
    std::vector<Dato> datos;
    for (const toml::node& item : *lista) datos.push_back({item, clave});
    return datos;
  }
  std::vector<int> Enteros(int menor, int mayor) const {
    std::vector<int> numeros;
    for (const Dato& dato : Lista()) numeros.push_back(dato.Entero(menor, mayor));
    std::sort(numeros.begin(), numeros.end());
    return numeros;
  }
  std::vector<std::string> Textos() const {
    std::vector<std::string> textos;
    for (const Dato& dato : Lista()) textos.push_back(dato.Texto());
    return textos;
  }
  const toml::table& Tabla() const {
    if (!nodo.is_table()) Mal("debe ser una tabla");
    return *nodo.as_table();
  }
};

template <class T>
struct Clave {
  const char* nombre;
  void (*leer)(const Dato&, T&);
};

// Every key of the table by the list of keys; an unknown one is a mistake.
template <class T, std::size_t N>
void LeerClaves(const Dato& tabla, const Clave<T> (&claves)[N], T& destino) {
  for (const auto& [llave, nodo] : tabla.Tabla()) {
    const std::string nombre{llave.str()};
    const auto* clave = std::begin(claves);
    while (clave != std::end(claves) && nombre != clave->nombre) ++clave;
    const Dato dato{nodo, tabla.clave.empty() ? nombre : tabla.clave + "." + nombre};
    if (clave == std::end(claves)) dato.Mal("no es una clave conocida");
    clave->leer(dato, destino);
  }
}

constexpr int kMayorPuerto = 10;  // above it a port number means IP

std::string SiNo(bool valor) {
  return valor ? "si" : "no";
}

const Clave<Escenario> kEquipo[] = {
    {"velocidad",
     [](const Dato& d, Escenario& e) {
       const int velocidad = d.Entero(1, 1000000);
       if (!pagina0::CodigoDeVelocidad(velocidad)) d.Mal("debe ser 300, 1200, 2400, 4800, 9600 o 19200");
       e.estado[d.clave] = std::to_string(velocidad);
     }},
    {"identificador", [](const Dato& d, Escenario& e) { e.estado[d.clave] = std::to_string(d.Entero(0, 65535)); }},
    {"desfase_minutos",
     [](const Dato& d, Escenario& e) { e.estado[d.clave] = TextoGeneral(d.Doble(-10000000, 10000000)); }},
    {"estado",
     [](const Dato& d, Escenario& e) {
       constexpr std::string_view kConocidas[] = {"TxOblig", "TxWindows", "TxEvent", "TxHora", "EvCond", "ErrorFlash"};
       const auto nombres = d.Textos();
       for (const std::string& nombre : nombres) {
         if (std::find(std::begin(kConocidas), std::end(kConocidas), nombre) == std::end(kConocidas)) {
           d.Mal("no conoce el indicador \"" + nombre + "\"");
         }
       }
       e.estado[d.clave] = Unir(nombres, ",");
     }},
    {"muda", [](const Dato& d, Escenario& e) { e.lineas.muda = d.Logico(); }},
};

const Clave<Escenario> kEnlace[] = {
    {"puertos", [](const Dato& d, Escenario& e) { e.lineas.puertos = d.Enteros(1, kMayorPuerto); }},
    {"tomados", [](const Dato& d, Escenario& e) { e.lineas.tomados = d.Enteros(1, kMayorPuerto); }},
    {"puerto", [](const Dato& d, Escenario& e) { e.lineas.puerto_unidad = d.Entero(1, kMayorPuerto); }},
    {"arriba", [](const Dato& d, Escenario& e) { e.lineas.arriba = d.Logico(); }},
    {"fallas_por_linea", [](const Dato& d, Escenario& e) { e.lineas.fallas_por_linea = d.Logico(); }},
};

const Clave<Escenario> kIP[] = {
    {"direcciones",
     [](const Dato& d, Escenario& e) {
       e.lineas.direcciones = d.Textos();
       for (const std::string& direccion : e.lineas.direcciones) {
         if (!EsDireccionIP(direccion)) d.Mal("no admite la dirección \"" + direccion + "\"");
       }
     }},
    {"puerto", [](const Dato& d, Escenario& e) { e.lineas.puerto_ip = d.Entero(1, 65535); }},
};

const Clave<Escenario> kModem[] = {
    {"puertos", [](const Dato& d, Escenario& e) { e.lineas.puertos_modem = d.Enteros(1, kMayorPuerto); }},
    {"telefonos", [](const Dato& d, Escenario& e) { e.lineas.telefonos = d.Textos(); }},
    {"ocupados", [](const Dato& d, Escenario& e) { e.lineas.ocupados = d.Textos(); }},
    {"segundos", [](const Dato& d, Escenario& e) { e.tiempos.llamada = d.Doble(0, 3600); }},
    {"exige_comandos", [](const Dato& d, Escenario& e) { e.lineas.exige_comandos = d.Logico(); }},
};

const Clave<Escenario> kTiempos[] = {
    {"factor", [](const Dato& d, Escenario& e) { e.tiempos.factor = d.Doble(0, 100); }},
    {"sin_respuesta", [](const Dato& d, Escenario& e) { e.tiempos.sin_respuesta = d.Doble(0, 3600); }},
    {"ausencia_14", [](const Dato& d, Escenario& e) { e.tiempos.ausencia_14 = d.Doble(0, 3600); }},
    {"linea", [](const Dato& d, Escenario& e) { e.tiempos.linea = d.Doble(0, 100); }},
    {"ausencia_cambio", [](const Dato& d, Escenario& e) { e.tiempos.ausencia_cambio = d.Doble(0, 3600); }},
    {"borrado", [](const Dato& d, Escenario& e) { e.tiempos.borrado = d.Doble(0, 100); }},
    {"ausencia_44", [](const Dato& d, Escenario& e) { e.tiempos.ausencia_44 = d.Doble(0, 3600); }},
};

template <double FallasDelCable::*kCampo>
void LeerAzar(const Dato& d, Escenario& e) {
  e.cable.*kCampo = d.Doble(0, 1);
}

template <int FallasDelCable::*kCampo>
void LeerMilisegundos(const Dato& d, Escenario& e) {
  e.cable.*kCampo = d.Entero(0, 60000);
}

const Clave<Escenario> kLinea[] = {
    {"semilla",
     [](const Dato& d, Escenario& e) { e.cable.semilla = static_cast<std::uint64_t>(d.Entero(0, 1000000000)); }},
    {"ruido", LeerAzar<&FallasDelCable::ruido>},
    {"pedido_perdido", LeerAzar<&FallasDelCable::pedido_perdido>},
    {"respuesta_perdida", LeerAzar<&FallasDelCable::respuesta_perdida>},
    {"media_trama", LeerAzar<&FallasDelCable::media_trama>},
    {"respuesta_doble", LeerAzar<&FallasDelCable::respuesta_doble>},
    {"respuesta_tarde", LeerAzar<&FallasDelCable::respuesta_tarde>},
    {"basura", LeerAzar<&FallasDelCable::basura>},
    {"hueco", LeerAzar<&FallasDelCable::hueco>},
    {"tarde_ms", LeerMilisegundos<&FallasDelCable::tarde>},
    {"hueco_ms", LeerMilisegundos<&FallasDelCable::largo_de_hueco>},
    {"latencia_ms", LeerMilisegundos<&FallasDelCable::latencia>},
    {"fluctuacion_ms", LeerMilisegundos<&FallasDelCable::fluctuacion>},
    {"corta_despues", [](const Dato& d, Escenario& e) { e.cable.corta_despues = d.Entero(0, 1000000); }},
    {"bits_por_segundo", [](const Dato& d, Escenario& e) { e.cable.bits_por_segundo = d.Entero(0, 100000000); }},
};

const Clave<Escenario> kHistoria[] = {
    {"semilla",
     [](const Dato& d, Escenario& e) {
       e.vida.hidrologia.semilla = static_cast<std::uint64_t>(d.Entero(0, 1000000000));
       e.estado[d.clave] = std::to_string(e.vida.hidrologia.semilla);
     }},
    {"dias",
     [](const Dato& d, Escenario& e) {
       e.vida.dias = d.Entero(0, 400);
       e.estado[d.clave] = std::to_string(e.vida.dias);
     }},
    {"dias_cartucho",
     [](const Dato& d, Escenario& e) {
       e.vida.dias_cartucho = d.Entero(0, 400);
       e.estado[d.clave] = std::to_string(e.vida.dias_cartucho);
     }},
    {"pendiente_horas",
     [](const Dato& d, Escenario& e) {
       e.vida.pendiente_horas = d.Doble(0, 10000);
       e.estado[d.clave] = TextoGeneral(e.vida.pendiente_horas);
     }},
    {"transmite", [](const Dato& d, Escenario& e) { e.vida.transmite = d.Logico(); }},
    {"crecidas", [](const Dato& d, Escenario& e) { e.vida.hidrologia.crecidas = d.Doble(0, 3); }},
    {"falla_de_sensor", [](const Dato& d, Escenario& e) { e.vida.hidrologia.falla_de_sensor = d.Logico(); }},
    {"hueco", [](const Dato& d, Escenario& e) { e.vida.hidrologia.hueco = d.Logico(); }},
};

const Clave<Escenario> kCartucho[] = {
    {"presente", [](const Dato& d, Escenario& e) { e.vida.cartucho = d.Logico(); }},
};

const Clave<Escenario> kSalidas[] = {
    {"sd1", [](const Dato& d, Escenario& e) { e.vida.sd1 = d.Logico() ? 1 : 0; }},
    {"salida1", [](const Dato& d, Escenario& e) { e.estado[d.clave] = SiNo(d.Logico()); }},
    {"salida2", [](const Dato& d, Escenario& e) { e.estado[d.clave] = SiNo(d.Logico()); }},
};

const Clave<Escenario> kBitacora[] = {
    {"tablas_enteras", [](const Dato& d, Escenario& e) { e.tablas_enteras = d.Logico(); }},
};

struct EntradaLeida {
  std::string hora = "-";
  std::string clases = "---";
  std::string descripcion = "OK";
};

const Clave<EntradaLeida> kEntrada[] = {
    {"hora", [](const Dato& d, EntradaLeida& e) { e.hora = d.Texto(); }},
    {"obligatoria", [](const Dato& d, EntradaLeida& e) { e.clases[0] = d.Logico() ? 'O' : '-'; }},
    {"ventana", [](const Dato& d, EntradaLeida& e) { e.clases[1] = d.Logico() ? 'V' : '-'; }},
    {"condicional", [](const Dato& d, EntradaLeida& e) { e.clases[2] = d.Logico() ? 'C' : '-'; }},
    {"descripcion", [](const Dato& d, EntradaLeida& e) { e.descripcion = d.Texto(); }},
};

void LeerEntradas(const Dato& dato, Escenario& escenario) {
  std::vector<std::string> textos;
  for (const Dato& item : dato.Lista()) {
    EntradaLeida entrada;
    LeerClaves(item, kEntrada, entrada);
    const std::string texto = entrada.hora + " " + entrada.clases + " " + entrada.descripcion;
    if (entrada.descripcion.find(';') != std::string::npos || !Agenda{}.LeerTexto(texto)) {
      item.Mal("tiene una entrada que no se entiende: \"" + texto + "\"");
    }
    textos.push_back(texto);
  }
  if (textos.size() > Agenda::kLugares) dato.Mal("tiene demasiadas entradas");
  escenario.estado[dato.clave] = Unir(textos, ";");
}

const Clave<Escenario> kAgenda[] = {
    {"entradas", LeerEntradas},
    {"ventana_minutos", [](const Dato& d, Escenario& e) { e.estado[d.clave] = std::to_string(d.Entero(0, 65535)); }},
};

// The number that a key is, within its limits.
int NumeroDeClave(const Dato& dato, std::string_view clave, int menor, int mayor) {
  const double numero = EsNumerico(clave) ? LeerDoble(clave) : -1;
  if (numero < menor || numero > mayor || numero != std::floor(numero)) {
    dato.Mal("debe ser un número de " + std::to_string(menor) + " a " + std::to_string(mayor));
  }
  return static_cast<int>(numero);
}

void LeerPaginas(const Dato& dato, Escenario& escenario) {
  for (const auto& [clave, nodo] : dato.Tabla()) {
    const Dato pagina{nodo, dato.clave + "." + std::string{clave.str()}};
    const int numero = NumeroDeClave(pagina, clave.str(), 1, 65535);
    const auto bytes = LeerTextoPagina(pagina.Texto());
    if (!bytes || bytes->size() > Estacion{}.LeerPagina(numero).size()) {
      pagina.Mal("no es un texto de bytes que quepa en esa página");
    }
    escenario.estado[pagina.clave] = pagina.Texto();
  }
}

void LeerCanales(const Dato& dato, Escenario& escenario) {
  for (const auto& [clave, nodo] : dato.Tabla()) {
    const Dato canal{nodo, dato.clave + "." + std::string{clave.str()}};
    const int numero = NumeroDeClave(canal, clave.str(), 1, kCanales);
    for (const auto& [columna, valor] : canal.Tabla()) {
      const Dato campo{valor, "canal." + std::to_string(numero) + "." + std::string{columna.str()}};
      if (!Canales{}.Poner(numero, columna.str(), {})) campo.Mal("no es una columna de la tabla de canales");
      escenario.estado[campo.clave] = valor.is_number() ? TextoGeneral(campo.Doble(-1e9, 1e9)) : campo.Texto();
    }
  }
}

void LeerValores(const Dato& dato, Escenario& escenario) {
  for (const auto& [clave, nodo] : dato.Tabla()) {
    const Dato valor{nodo, dato.clave + "." + std::string{clave.str()}};
    escenario.vida.hidrologia.fijos[NumeroDeClave(valor, clave.str(), 1, kCanales)] = valor.Doble(-1e6, 1e6);
  }
}

void LeerCuando(const Dato& d, Falla& f) {
  if (d.nodo.is_integer()) {
    f.veces = d.Entero(1, 1000000);
    return;
  }
  const std::string cuando = d.Texto();
  if (cuando != "siempre" && cuando != "la_primera_vez") d.Mal("debe ser \"siempre\", \"la_primera_vez\" o un número");
  f.veces = cuando == "siempre" ? -1 : 1;
}

const Clave<Falla> kFalla[] = {
    {"operacion",
     [](const Dato& d, Falla& f) {
       const auto op = BuscarOperacion(d.Texto());
       if (!op) d.Mal("no es una operación: \"" + d.Texto() + "\"");
       f.operacion = *op;
     }},
    {"tipo",
     [](const Dato& d, Falla& f) {
       const auto tipo = BuscarTipoFalla(d.Texto());
       if (!tipo) d.Mal("no es un tipo de falla: \"" + d.Texto() + "\"");
       f.tipo = *tipo;
     }},
    {"cuando", LeerCuando},
    {"despues_de", [](const Dato& d, Falla& f) { f.despues_de = d.Entero(1, 1000000); }},
    {"pista", [](const Dato& d, Falla& f) { f.pista = d.Entero(0, kPistas - 1); }},
    {"pagina", [](const Dato& d, Falla& f) { f.pagina = d.Entero(0, 65535); }},
    {"hasta_pagina", [](const Dato& d, Falla& f) { f.hasta_pagina = d.Entero(0, 65535); }},
    {"puerto", [](const Dato& d, Falla& f) { f.puerto = d.Entero(1, 65535); }},
    {"velocidad", [](const Dato& d, Falla& f) { f.velocidad = d.Entero(1, 1000000); }},
    {"canal", [](const Dato& d, Falla& f) { f.canal = d.Entero(1, kCanales); }},
    {"numero", [](const Dato& d, Falla& f) { f.numero = d.Entero(-2147483647, 2147483647); }},
    {"origen", [](const Dato& d, Falla& f) { f.origen = d.Texto(); }},
    {"texto", [](const Dato& d, Falla& f) { f.texto = d.Texto(); }},
    {"segundos", [](const Dato& d, Falla& f) { f.segundos = d.Doble(0, kSegundosDia); }},
    {"campo", [](const Dato& d, Falla& f) { f.campo = d.Texto(); }},
    {"valor", [](const Dato& d, Falla& f) { f.valor = d.Texto(); }},
    {"fila", [](const Dato& d, Falla& f) { f.fila = d.Entero(1, 1000000); }},
    {"respuesta_perdida", [](const Dato& d, Falla& f) { f.respuesta_perdida = d.Logico(); }},
    {"bloquea", [](const Dato& d, Falla& f) { f.bloquea = d.Logico(); }},
    {"cuantos", [](const Dato& d, Falla& f) { f.cuantos = d.Entero(0, 1000000); }},
};

// What a fault holds where it says nothing, which depends on its kind.
void Completar(const toml::table& tabla, Falla& falla) {
  constexpr struct {
    TipoFalla tipo;
    const char* valor;
  } kValores[] = {{TipoFalla::kFechaInvalida, "32/13/2001"}, {TipoFalla::kMarcaConHora, "00:00:00"}};
  for (const auto& [tipo, valor] : kValores) {
    if (falla.tipo == tipo && !tabla.contains("valor")) falla.valor = valor;
  }
  if (falla.tipo == TipoFalla::kAtraso && !tabla.contains("segundos")) falla.segundos = 21600;
}

// What is wrong with a fault whose keys are right one by one; empty when nothing is.
std::string Reparo(const toml::table& tabla, const Falla& falla) {
  const std::string operacion{De(falla.operacion).nombre};
  const std::string tipo = *tabla["tipo"].value<std::string>();
  if (!Conviene(falla.tipo, falla.operacion)) {
    return "no puede ser: la operación " + operacion + " no admite \"" + tipo + "\"";
  }
  for (const auto& [clave, nodo] : tabla) {
    if (!Admite(falla.tipo, clave.str())) {
      return "tiene una clave que \"" + tipo + "\" no usa: " + std::string{clave.str()};
    }
  }
  const Asunto asunto = AsuntoDe(falla.operacion);
  if ((falla.pista && !asunto.pista) || ((falla.pagina || falla.hasta_pagina) && !asunto.pagina) ||
      (falla.canal && !asunto.canal)) {
    return "pone una condición que " + operacion + " no tiene";
  }
  if (falla.hasta_pagina && !falla.pagina) return "tiene hasta_pagina sin pagina";
  if (falla.hasta_pagina && *falla.hasta_pagina < *falla.pagina) return "tiene hasta_pagina antes de pagina";
  if (falla.tipo == TipoFalla::kTexto && !tabla.contains("texto")) return "necesita texto";
  if (falla.tipo == TipoFalla::kFilaRepetida && !falla.fila) return "necesita fila";
  return ReparoDeCampo(falla);
}

void LeerFallas(const Dato& dato, Escenario& escenario) {
  for (const Dato& item : dato.Lista()) {
    const toml::table& tabla = item.Tabla();
    if (!tabla.contains("operacion") || !tabla.contains("tipo")) item.Mal("necesita operacion y tipo");
    Falla falla;
    LeerClaves(item, kFalla, falla);
    Completar(tabla, falla);
    if (const std::string reparo = Reparo(tabla, falla); !reparo.empty()) item.Mal(reparo);
    escenario.fallas.push_back(std::move(falla));
  }
}

template <const auto& kClaves>
void Seccion(const Dato& dato, Escenario& escenario) {
  LeerClaves(dato, kClaves, escenario);
}

const Clave<Escenario> kSecciones[] = {
    {"equipo", Seccion<kEquipo>},     {"enlace", Seccion<kEnlace>},     {"ip", Seccion<kIP>},
    {"modem", Seccion<kModem>},       {"tiempos", Seccion<kTiempos>},   {"linea", Seccion<kLinea>},
    {"historia", Seccion<kHistoria>}, {"cartucho", Seccion<kCartucho>}, {"salidas", Seccion<kSalidas>},
    {"agenda", Seccion<kAgenda>},     {"bitacora", Seccion<kBitacora>}, {"paginas", LeerPaginas},
    {"canal", LeerCanales},           {"valores", LeerValores},         {"falla", LeerFallas},
};

// A line of a text, from 1. It is shown, so it holds characters even where the file doesn't.
std::string Renglon(const std::string& texto, std::size_t numero) {
  const auto renglones = Separar(texto, '\n');
  return numero >= 1 && numero <= renglones.size() ? ComoUtf8(Recortar(renglones[numero - 1])) : std::string{};
}

// The reader of TOML gives its reasons in English: the two that happen in earnest are told in our words.
std::string MotivoDeSintaxis(std::string_view motivo, const std::string& renglon) {
  if (motivo.find("redefine") != std::string_view::npos) return "repite una clave o una sección: " + renglon;
  if (motivo.find("utf-8") != std::string_view::npos) return "hay un carácter que no está en UTF-8";
  return "no se entiende: " + renglon;
}

}  // namespace

Escenario LeerEscenarioDeTexto(const std::string& texto) {
  const TomlLeido leido = LeerToml(texto);
  if (!leido.Bien()) {
    throw Error(
        error::kArchivo, "UTRSimulada.toml",
        "línea " + std::to_string(leido.linea) + ": " + MotivoDeSintaxis(leido.motivo, Renglon(texto, leido.linea)));
  }
  Escenario escenario;
  LeerClaves(Dato{leido.raiz, {}}, kSecciones, escenario);
  return escenario;
}

std::string LeerTextoEscenario(const std::filesystem::path& ruta) {
  std::ifstream archivo(ruta, std::ios::binary);
  if (!archivo) throw Error(error::kArchivo, "UTRSimulada.toml", "no está o no se puede leer");
  std::ostringstream copia;
  copia << archivo.rdbuf();
  std::string texto = std::move(copia).str();
  if (texto.find_first_not_of(" \t\r\n") == std::string::npos) {
    throw Error(error::kArchivo, "UTRSimulada.toml", "no tiene nada escrito");
  }
  return texto;
}

}  // namespace utr::simulada
