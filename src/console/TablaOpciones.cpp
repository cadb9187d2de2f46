#include "console/TablaOpciones.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/CanalesUTR.h"
#include "driver/Textos.h"

namespace utr::consola {

namespace {

using namespace clase;

constexpr std::int32_t kMayorIdentificador = 65535;
constexpr std::int32_t kMayorPuerto = 65535;
constexpr std::int32_t kVelocidades[] = {300, 1200, 2400, 4800, 9600, 19200};

constexpr DescripcionOrden kOrdenes[] = {
    {Orden::kLeerDatos, "leer-datos", "", 0,
     kEnlace | kSalida | kArchivo | kFechas | kDatos | kCartucho | kCrudos | kCifras,
     "los registros históricos de uno o más canales",
     "Lee los registros históricos de los canales entre dos fechas, días enteros, en unidades de ingeniería.\n"},
    {Orden::kLeerEventos, "leer-eventos", "", 0,
     kEnlace | kSalida | kArchivo | kFechas | kEventos | kCartucho | kCifras, "los eventos de la estación",
     "Lee los eventos de la estación entre dos fechas, o los que tiene pendientes.\n"},
    {Orden::kInstantaneos, "instantaneos", "", 0, kEnlace | kSalida | kArchivo | kInstantaneos | kCrudos,
     "lo que miden ahora todos los canales", "Lee el valor presente de cada canal habilitado.\n"},
    {Orden::kConfiguracion, "configuracion", "", 0, kEnlace | kSalida | kArchivo, "la configuración de canales",
     "Lee la configuración de canales. En xml es la de \"Exportar\" del programa: guardada como .ucg se vuelve a\n"
     "abrir con él. En csv tiene todos sus campos; en txt, las columnas de la lista de canales.\n"},
    {Orden::kRespaldo, "respaldo", "", 0, kEnlace | kRespaldo, "guarda la configuración como respaldo",
     "Lee la configuración y la guarda entre los respaldos de la estación, como hace el programa en cada lectura: si\n"
     "el último respaldo dice lo mismo no agrega otro. Dice la ruta del archivo.\n"},
    {Orden::kVolcar, "volcar", "", 0, kEnlace | kVolcado, "la memoria entera a un archivo de recuperación",
     "Lee la memoria página por página en un archivo de recuperación (.bkp) y dice su ruta. Sin --pilas, --cola ni\n"
     "--eventos lee todo. Interrumpido, el archivo vale hasta donde llegó, y --continuar sigue desde ahí.\n"},
    {Orden::kRecuperar, "recuperar", "ARCHIVO.bkp...", 1000, kRecuperar, "procesa archivos de recuperación",
     "Convierte archivos de recuperación de una estación en tablas: una por canal, la cola y los eventos, con un\n"
     "informe. Dice la ruta de cada una. No se conecta con nada.\n"},
    {Orden::kVerTabla, "ver-tabla", "ARCHIVO", 1, kSalida | kArchivo | kCifras, "una tabla guardada",
     "Muestra una tabla guardada por el programa: resultados, configuraciones (.ucg, .icf), exportaciones (.imp).\n"},
};

std::int32_t LeerNumero(std::string_view opcion, std::string_view texto, std::int32_t menor, std::int32_t mayor) {
  std::int32_t numero = 0;
  const auto [fin, falla] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
  const bool entero = falla == std::errc{} && fin == texto.data() + texto.size();
  if (entero && numero >= menor && numero <= mayor) return numero;
  Mal(std::string(opcion) + " quiere un número de " + std::to_string(menor) + " a " + std::to_string(mayor) +
      ", no \"" + std::string(texto) + "\"");
}

void LeerVelocidad(Lectura& l, std::string_view v) {
  const std::int32_t velocidad = LeerNumero("--velocidad", v, 300, 19200);
  if (std::find(std::begin(kVelocidades), std::end(kVelocidades), velocidad) == std::end(kVelocidades))
    Mal("--velocidad quiere 300, 1200, 2400, 4800, 9600 o 19200, no \"" + std::string(v) + "\"");
  l.opciones.enlace.entrada.velocidad = velocidad;
  l.con_velocidad = true;
}

// "/dev/ttyUSB0", "COM4" or "4".
void LeerPuerto(Lectura& l, std::string_view v) {
  l.con_puerto = true;
  if (v.find('/') != v.npos) {
    l.opciones.enlace.dispositivo = v;
    return;
  }
  const bool con_nombre = v.size() > 3 && IgualSinCaso(v.substr(0, 3), "COM");
  const std::string_view numero = con_nombre ? v.substr(3) : v;
  const int puerto = NumeroDePuerto(numero);
  if (puerto < 1 || puerto > kUltimoPuertoSerie)
    Mal("--puerto quiere la ruta de un dispositivo o un puerto de COM1 a COM10, no \"" + std::string(v) + "\"");
  l.opciones.enlace.entrada.puerto = puerto;
}

// "10.0.0.5:1502".
void LeerIp(Lectura& l, std::string_view v) {
  EntradaEnlace& entrada = l.opciones.enlace.entrada;
  const std::size_t corte = v.find(':');
  entrada.por_ip = true;
  entrada.direccion = v.substr(0, corte);
  if (!EsDireccionIP(entrada.direccion))
    Mal("--ip quiere DIRECCIÓN:PUERTO, como 192.168.0.1:1000, no \"" + std::string(v) + "\"");
  const std::int32_t puerto =
      corte == v.npos ? kPuertoIPDefecto : LeerNumero("--ip", v.substr(corte + 1), 1, kMayorPuerto);
  entrada.puerto_ip = std::to_string(puerto);
}

void LeerIdentificador(Lectura& l, std::string_view v) {
  l.opciones.enlace.entrada.identificador = std::to_string(LeerNumero("--identificador", v, 0, kMayorIdentificador));
  l.con_identificador = true;
}

void LeerTelefono(Lectura& l, std::string_view v) {
  l.opciones.enlace.entrada.telefono = true;
  l.opciones.enlace.entrada.numero_telefono = v;
}

// "-" is the standard output, as everywhere; a dump isn't read from one end to the other.
void LeerArchivo(Lectura& l, std::string_view v) {
  if (v != "-") l.opciones.destino.archivo = v;
  if (v == "-" && l.opciones.orden == Orden::kVolcar) Mal("volcar necesita un archivo de disco en --archivo");
}

void LeerFormato(Lectura& l, std::string_view v) {
  const auto formato = FormatoDe("." + std::string(v));
  if (!formato) Mal("--salida quiere csv, xml o txt, no \"" + std::string(v) + "\"");
  l.opciones.destino.formato = formato;
}

void LeerSeparador(Lectura& l, std::string_view v) {
  const std::string_view texto = v == "tab" ? std::string_view("\t") : v;
  const auto sirve = [](char letra) {
    return letra == '\t' || (letra != '"' && std::ispunct(static_cast<unsigned char>(letra)) != 0);
  };
  if (texto.size() != 1 || !sirve(texto.front()))
    Mal("--separador quiere un solo signo, o tab, no \"" + std::string(v) + "\"");
  l.opciones.destino.csv.separador = texto.front();
  l.con_csv = true;
}

void LeerDecimal(Lectura& l, std::string_view v) {
  if (v != "." && v != ",") Mal("--decimal quiere un punto o una coma, no \"" + std::string(v) + "\"");
  l.opciones.destino.csv.decimal = v.front();
  l.con_csv = true;
}

// "02/13/2005" isn't the day that its writer meant, whichever that was.
bool TieneMes(std::string_view fecha) {
  const auto partes = Separar(fecha.substr(0, fecha.find_first_of("T ")), '/');
  return partes.size() != 3 || Val(partes[1]) <= 12;
}

// "hoy", "ayer", "hoy-7", "01/02/2005", "2005-02-01", "2005-02-01T10:30".
FechaHora LeerMomento(const char* opcion, std::string_view v, const Lectura& l, bool hasta) {
  const auto mal = [&] {
    Mal(std::string(opcion) + " quiere una fecha como 01/02/2005, 2005-02-01, hoy, ayer u hoy-7, no \"" +
        std::string(v) + "\"");
  };
  FechaHora momento = FechaDeDias(DiasDesde1970(l.hoy));
  bool con_hora = false;
  if (v.starts_with("hoy-")) {
    momento = FechaDeDias(DiasDesde1970(l.hoy) - LeerNumero(opcion, v.substr(4), 0, 36500));
  } else if (v == "ayer") {
    momento = FechaDeDias(DiasDesde1970(l.hoy) - 1);
  } else if (v != "hoy") {
    const auto leido = LeerFecha(Reemplazar(v, "T", " "));
    if (!leido || !TieneMes(v) || v.find_first_of("/-") == v.npos) mal();
    momento = *leido;
    con_hora = v.find(':') != v.npos;
  }
  if (con_hora && l.opciones.orden == Orden::kLeerDatos)
    Mal("leer-datos lee días enteros: " + std::string(opcion) + " no lleva hora");
  return hasta && !con_hora ? FechaDeSegundos(Segundos(momento) + kSegundosDia - 1) : momento;
}

// "EA01", "PLV" or "15"; several parted by commas.
void LeerCanales(Lectura& l, std::string_view v) {
  for (const std::string_view nombre : Separar(v, ',')) {
    const int numero = NumeroDePuerto(nombre);
    const std::int16_t canal = numero >= kPrimerCanal && numero <= kUltimoCanal ? static_cast<std::int16_t>(numero)
                                                                                : NumeroDeNombre(Mayusculas(nombre));
    if (canal == 0) Mal("--canal no conoce el canal \"" + std::string(nombre) + "\"");
    auto& canales = l.opciones.canales;
    if (std::find(canales.begin(), canales.end(), canal) == canales.end()) canales.push_back(canal);
  }
}

// "todas", or numbers from 0 to 8 parted by commas.
void LeerPilas(Lectura& l, std::string_view v) {
  SeleccionFlash& seleccion = l.opciones.seleccion;
  seleccion.datos = true;
  seleccion.todas_las_pilas = v == "todas";
  if (seleccion.todas_las_pilas) return;
  for (const std::string_view pila : Separar(v, ','))
    seleccion.pilas.at(static_cast<std::size_t>(LeerNumero("--pilas", pila, 0, kGrupoCola - 1))) = true;
}

constexpr DescripcionOpcion kOpciones[] = {
    {"--estacion", "NOMBRE", kEnlace, "la estación de ese nombre en el libro de estaciones",
     [](Lectura& l, std::string_view v) { l.opciones.enlace.estacion = v; }},
    {"--libro", "ARCHIVO", kEnlace, "otro libro que el de ADMINUTR_LIBRO o Estaciones.toml junto al programa",
     [](Lectura& l, std::string_view v) { l.opciones.enlace.libro = v; }},
    {"--puerto", "PUERTO", kEnlace,
     "por un puerto serie: su dispositivo (/dev/ttyUSB0) o su número en el\nprograma (COM4)", LeerPuerto},
    {"--velocidad", "BPS", kEnlace, "de 300 a 19200; sin ella, 9600", LeerVelocidad},
    {"--telefono", "NÚMERO", kEnlace, "llama por el modem que hay en --puerto", LeerTelefono},
    {"--comandos", "TEXTO", kEnlace, "comandos del modem; sin ellos, los de comandosAT.dat",
     [](Lectura& l, std::string_view v) { l.opciones.enlace.entrada.comandos = v; }},
    {"--ip", "DIRECCIÓN[:PUERTO]", kEnlace, "por TCP; sin puerto, 1000", LeerIp},
    {"--simulada", "", kEnlace, "la estación simulada del programa",
     [](Lectura& l, std::string_view) { l.opciones.enlace.simulada = true; }},
    {"--identificador", "N", kEnlace, "el de la estación; 0, o sin él, contesta cualquiera", LeerIdentificador},
    {"--desde", "FECHA", kFechas, "01/02/2005, 2005-02-01, hoy, ayer u hoy-7 (hace siete días); sin ella, hoy",
     [](Lectura& l, std::string_view v) {
       l.opciones.desde = LeerMomento("--desde", v, l, false);
       l.con_fechas = l.con_desde = true;
     }},
    {"--hasta", "FECHA", kFechas, "incluida; sin ella, hoy",
     [](Lectura& l, std::string_view v) {
       l.opciones.hasta = LeerMomento("--hasta", v, l, true);
       l.con_fechas = l.con_hasta = true;
     }},
    {"--canal", "CANAL[,...]", kDatos, "EA01, PLV o su número; sin él, todos los que guardan historia", LeerCanales},
    {"--pendientes", "", kEventos, "los que la estación no transmitió todavía",
     [](Lectura& l, std::string_view) { l.opciones.pendientes = true; }},
    {"--cartucho", "", kCartucho, "del cartucho de la estación en lugar de su memoria",
     [](Lectura& l, std::string_view) { l.opciones.cartucho = true; }},
    {"--crudos", "", kCrudos, "cuentas en lugar de unidades de ingeniería",
     [](Lectura& l, std::string_view) { l.opciones.crudos = true; }},
    {"--cifras", "", kCifras, "dice además, por la salida de errores, el resumen de los registros de cada canal",
     [](Lectura& l, std::string_view) { l.opciones.cifras = true; }},
    {"--nivel-referencia", "", kInstantaneos, "suma el nivel de referencia",
     [](Lectura& l, std::string_view) { l.opciones.con_nivel = true; }},
    {"--carpeta", "CARPETA", kRespaldo, "en cuya carpeta Respaldos se guarda; sin ella, la del programa",
     [](Lectura& l, std::string_view v) { l.opciones.carpeta = v; }},
    {"--archivo", "ARCHIVO", kVolcado,
     "el archivo .bkp; sin ella, uno con la fecha y la hora en la carpeta actual.\nUno que ya estaba queda como "
     ".anterior mientras tenga algo que el nuevo no",
     LeerArchivo},
    {"--pilas", "N[,...]", kVolcado, "pilas de datos, de 0 a 8, o todas", LeerPilas},
    {"--cola", "", kVolcado, "la cola de transmisión",
     [](Lectura& l, std::string_view) { l.opciones.seleccion.cola = true; }},
    {"--eventos", "", kVolcado, "los eventos",
     [](Lectura& l, std::string_view) { l.opciones.seleccion.eventos = true; }},
    {"--completa", "", kVolcado, "sin detenerse en las páginas vacías",
     [](Lectura& l, std::string_view) { l.opciones.seleccion.completa = true; }},
    {"--con-configuracion", "", kVolcado, "guarda además la configuración, con el mismo nombre y final .ucg",
     [](Lectura& l, std::string_view) { l.opciones.con_configuracion = true; }},
    {"--continuar", "", kVolcado, "sigue la lectura que dejó el archivo de --archivo, que queda además como .anterior",
     [](Lectura& l, std::string_view) { l.opciones.continuar = true; }},
    {"--configuracion", "ARCHIVO", kRecuperar,
     "la de la estación (.ucg o .icf); sin ella, el .ucg que está junto al\nprimer archivo, con su nombre",
     [](Lectura& l, std::string_view v) { l.opciones.configuracion = v; }},
    {"--carpeta", "CARPETA", kRecuperar, "de los resultados, que se crea; sin ella, la carpeta actual",
     [](Lectura& l, std::string_view v) { l.opciones.carpeta = v; }},
    {"--salida", "FORMATO", kSalida, "csv (sin ella), xml o txt; si no, lo que diga el final del archivo", LeerFormato},
    {"--archivo", "ARCHIVO", kArchivo, "en lugar de la salida estándar (-); reemplaza al que hubiera, entero o nada",
     LeerArchivo},
    {"--separador", "SIGNO", kSalida, "entre los campos de csv: un signo, o tab; sin él, la coma", LeerSeparador},
    {"--decimal", "SIGNO", kSalida, "de los números de csv: punto o coma; sin él, el punto", LeerDecimal},
    {"--marca", "", kSalida, "csv comienza con la marca de UTF-8, para planillas",
     [](Lectura& l, std::string_view) {
       l.opciones.destino.csv.marca = true;
       l.con_csv = true;
     }},
};

}  // namespace

std::span<const DescripcionOrden> Ordenes() {
  return kOrdenes;
}

const DescripcionOrden& De(Orden orden) {
  return kOrdenes[static_cast<std::size_t>(orden)];
}

std::span<const DescripcionOpcion> OpcionesConocidas() {
  return kOpciones;
}

void Mal(const std::string& motivo) {
  throw Error(error::kLlamada, "adminutr-cli", motivo);
}

}  // namespace utr::consola
