#include <fmt/format.h>

#include <string>
#include <vector>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/CanalesUTR.h"
#include "retrieved/recovery/InformeRecuperacion.h"

namespace utr {

namespace {

constexpr std::string_view kFinDeLinea = "\r\n";
constexpr std::size_t kAnchoPalabras = 36;
constexpr std::size_t kAnchoNumero = 12;

// The text of the report as it grows, line by line.
class Escrito {
 public:
  void Linea(std::string_view texto = {}) {
    texto_ += texto;
    texto_ += kFinDeLinea;
  }
  void Titulo(std::string_view texto) {
    if (!texto_.empty()) Linea();
    Linea(texto);
  }
  std::string Texto() && { return std::move(texto_); }

 private:
  std::string texto_;
};

std::string Izquierda(std::string_view texto, std::size_t ancho) {
  const std::size_t largo = Largo(texto);
  return std::string(texto) + std::string(largo < ancho ? ancho - largo : 0, ' ');
}

std::string Derecha(std::string_view texto, std::size_t ancho) {
  const std::size_t largo = Largo(texto);
  return std::string(largo < ancho ? ancho - largo : 0, ' ') + std::string(texto);
}

std::string Renglon(std::string_view palabras, std::uint64_t numero) {
  return "  " + Izquierda(palabras, kAnchoPalabras) + Derecha(std::to_string(numero), kAnchoNumero);
}

// "pista 3: páginas 5, 7 a 9", one line a track.
void EscribirTramos(const std::vector<TramoPaginas>& tramos, Escrito& escrito) {
  for (auto tramo = tramos.begin(); tramo != tramos.end();) {
    std::string linea = fmt::format("    pista {}: páginas ", tramo->pista);
    const auto primero = tramo;
    for (; tramo != tramos.end() && tramo->pista == primero->pista; ++tramo) {
      if (tramo != primero) linea += ", ";
      linea += tramo->desde == tramo->hasta ? std::to_string(tramo->desde)
                                            : fmt::format("{} a {}", tramo->desde, tramo->hasta);
    }
    escrito.Linea(linea);
  }
}

void EscribirPaginas(std::string_view titulo, const std::vector<TramoPaginas>& tramos, Escrito& escrito) {
  if (tramos.empty()) return;
  escrito.Linea("  " + std::string(titulo) + ":");
  EscribirTramos(tramos, escrito);
}

void EscribirNombradas(std::string_view titulo, const std::vector<LineaNombrada>& lineas, std::uint64_t cuantas,
                       Escrito& escrito) {
  if (lineas.empty()) return;
  escrito.Linea("  " + std::string(titulo) + ":");
  for (const LineaNombrada& linea : lineas) escrito.Linea(fmt::format("    línea {}: {}", linea.numero, linea.porque));
  if (cuantas > lineas.size()) escrito.Linea(fmt::format("    ... y {} más", cuantas - lineas.size()));
}

void EscribirArchivo(const InformeArchivo& archivo, std::size_t numero, bool varios, Escrito& escrito) {
  escrito.Titulo(fmt::format("ARCHIVO {}: {}", numero, archivo.ruta.string()));
  escrito.Linea(fmt::format("  {} bytes, {} líneas{}", archivo.bytes, archivo.lineas,
                            archivo.fines[FinLinea::kCortada] > 0 ? " y un trozo" : ""));
  std::uint64_t total = 0;
  for (std::size_t fin = 0; fin < kFinesLinea; ++fin) {
    escrito.Linea(Renglon(EnPalabras(static_cast<FinLinea>(fin)), archivo.fines[static_cast<FinLinea>(fin)]));
    total += archivo.fines[static_cast<FinLinea>(fin)];
  }
  escrito.Linea(Renglon("en total", total));
  const std::uint64_t nombradas =
      archivo.fines[FinLinea::kDanada] + archivo.fines[FinLinea::kCortada] + archivo.fines[FinLinea::kCorta];
  EscribirNombradas("Líneas de las que no se sacó nada", archivo.danadas, nombradas, escrito);
  EscribirNombradas("Páginas incompletas, que el controlador recibió con el resto de la anterior", archivo.incompletas,
                    archivo.cuantas_incompletas, escrito);
  EscribirPaginas("Páginas casi vacías, que pueden tener algún dato", archivo.blancas_con_datos, escrito);
  EscribirPaginas("Páginas de pilas que ningún canal de la configuración tiene", archivo.sin_canal, escrito);
  EscribirPaginas("Páginas de las que no salieron registros", archivo.sin_tabla, escrito);
  if (varios) EscribirPaginas("Páginas cuyos registros salieron de este archivo", archivo.tomadas, escrito);
}

std::string Canal(std::int16_t canal) {
  return ClaseDeCanal(canal) ? NombreCanal(canal) : "ninguno";
}

void EscribirAjenas(const InformeRecuperacion& informe, Escrito& escrito) {
  if (informe.ajenas.empty()) return;
  escrito.Titulo("PÁGINAS DE UN CANAL QUE NO ES EL QUE SE PIDIÓ");
  escrito.Linea("  Sus registros están en el archivo del canal que ellas mismas dicen, si ese canal tiene uno.");
  for (const PaginasAjenas& ajenas : informe.ajenas) {
    const TramoPaginas& tramo = ajenas.tramo;
    const std::string paginas = tramo.desde == tramo.hasta ? fmt::format("página {}", tramo.desde)
                                                           : fmt::format("páginas {} a {}", tramo.desde, tramo.hasta);
    const std::string archivo = informe.archivos.size() > 1 ? fmt::format("archivo {}, ", ajenas.archivo + 1) : "";
    escrito.Linea(fmt::format("  {}pista {}, {}: son de {}, se pidió {}", archivo, tramo.pista, paginas,
                              Canal(ajenas.propio), Canal(ajenas.pedido)));
  }
}

// "2 días 03:10:00".
std::string Duracion(const FechaHora& desde, const FechaHora& hasta) {
  const std::int64_t segundos = Segundos(hasta) - Segundos(desde);
  const std::int64_t dias = segundos / kSegundosDia;
  const std::string hora = TextoHora(FechaDeSegundos(segundos % kSegundosDia));
  return dias == 0 ? hora : fmt::format("{} {} {}", dias, dias == 1 ? "día" : "días", hora);
}

void EscribirCuentas(const InformeRecuperacion& informe, Escrito& escrito) {
  escrito.Titulo("REGISTROS");
  std::string titulos = "  " + Izquierda("", 20);
  for (std::size_t fin = 0; fin < kFinesFila; ++fin)
    titulos += Derecha(EnPalabras(static_cast<FinFila>(fin)), kAnchoNumero);
  escrito.Linea(titulos + Derecha("en total", kAnchoNumero));
  const auto renglon = [&](std::string_view nombre, const CuentaFilas& fines, std::uint64_t total) {
    std::string linea = "  " + Izquierda(nombre, 20);
    for (const std::uint64_t cuantos : fines) linea += Derecha(std::to_string(cuantos), kAnchoNumero);
    escrito.Linea(linea + Derecha(std::to_string(total), kAnchoNumero));
  };
  std::uint64_t total = 0;
  for (const InformeRegistros& registros : informe.registros) {
    if (registros.decodificadas > 0) renglon(registros.nombre, registros.fines, registros.decodificadas);
    total += registros.decodificadas;
  }
  renglon("Todos", informe.Filas(), total);
  std::vector<std::string> sin_registros;
  for (const InformeRegistros& registros : informe.registros) {
    if (registros.decodificadas == 0) sin_registros.push_back(registros.nombre);
  }
  if (!sin_registros.empty()) escrito.Linea("  Sin ningún registro: " + Unir(sin_registros, ", "));
}

void EscribirHuecos(const InformeRegistros& registros, Escrito& escrito) {
  if (registros.minutos <= 0 || !registros.primero) return;
  const std::string minutos = TextoGeneral(registros.minutos);
  if (registros.cuantos_huecos == 0)
    return escrito.Linea(fmt::format("    Sin huecos: guarda un registro cada {} minutos", minutos));
  escrito.Linea(fmt::format("    Huecos: {} (guarda un registro cada {} minutos; faltan {}){}",
                            registros.cuantos_huecos, minutos, registros.faltan,
                            registros.cuantos_huecos > registros.huecos.size() ? ", los más largos:" : ":"));
  for (const HuecoRegistros& hueco : registros.huecos) {
    escrito.Linea(fmt::format("      del {} al {}: {}", TextoFechaHora(hueco.desde), TextoFechaHora(hueco.hasta),
                              Duracion(hueco.desde, hueco.hasta)));
  }
}

void EscribirRegistros(const InformeRegistros& registros, Escrito& escrito) {
  if (registros.decodificadas == 0) return;
  escrito.Linea();
  escrito.Linea("  " + registros.nombre);
  escrito.Linea(registros.archivo.empty() ? "    Sin archivo" : "    " + registros.archivo.filename().string());
  if (registros.primero) {
    escrito.Linea(
        fmt::format("    Del {} al {}", TextoFechaHora(*registros.primero), TextoFechaHora(*registros.ultimo)));
  }
  if (registros.de_referencia > 0) {
    escrito.Linea(
        fmt::format("    Bajo la fecha 01/01/2001, de páginas que no dicen la suya: {}", registros.de_referencia));
  }
  EscribirHuecos(registros, escrito);
  if (registros.cuantas_contradicciones == 0) return;
  escrito.Linea(fmt::format("    Registros del mismo momento que no dicen lo mismo (valor / máximo / mínimo): {}",
                            registros.cuantas_contradicciones));
  for (const Contradiccion& c : registros.contradicciones)
    escrito.Linea(fmt::format("      {}: {} y {}", c.momento, c.una, c.otra));
  if (registros.cuantas_contradicciones > registros.contradicciones.size()) {
    escrito.Linea(
        fmt::format("      ... y {} más", registros.cuantas_contradicciones - registros.contradicciones.size()));
  }
}

void EscribirResultados(const InformeRecuperacion& informe, Escrito& escrito) {
  if (informe.de_antes.empty()) return;
  escrito.Titulo("RESULTADOS CON EL MISMO NOMBRE QUE ESTE PROCESO NO ESCRIBIÓ");
  for (const std::filesystem::path& ruta : informe.de_antes)
    escrito.Linea("  " + ruta.filename().string() + ": de una corrida anterior");
}

}  // namespace

std::string TextoInforme(const InformeRecuperacion& informe) {
  Escrito escrito;
  escrito.Titulo("INFORME DE RECUPERACIÓN");
  escrito.Linea("  Procesado el " + TextoFechaHora(informe.momento));
  if (!informe.configuracion.empty()) escrito.Linea("  Configuración aplicada: " + informe.configuracion);
  if (!informe.LineasCuadran()) escrito.Linea("  ATENCIÓN: la cuenta de las líneas no cierra");
  if (informe.interrumpido) {
    escrito.Linea(
        "  ATENCIÓN: el proceso no terminó. Este informe llega hasta donde llegó; de los resultados sólo son");
    escrito.Linea("  de este proceso los que nombra más abajo junto a sus registros.");
  } else if (!informe.FilasCuadran()) {
    escrito.Linea("  ATENCIÓN: la cuenta de los registros no cierra");
  }
  EscribirCuentas(informe, escrito);
  for (const InformeRegistros& registros : informe.registros) EscribirRegistros(registros, escrito);
  EscribirResultados(informe, escrito);
  EscribirAjenas(informe, escrito);
  for (std::size_t i = 0; i < informe.archivos.size(); ++i)
    EscribirArchivo(informe.archivos[i], i + 1, informe.archivos.size() > 1, escrito);
  return std::move(escrito).Texto();
}

}  // namespace utr
