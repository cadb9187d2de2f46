#include "console/Opciones.h"

#include <algorithm>

#include "base/Texto.h"
#include "console/TablaOpciones.h"

namespace utr::consola {

namespace {

constexpr std::string_view kPrograma = "adminutr-cli";
constexpr std::size_t kAnchoOpcion = 30;

struct NombreFormato {
  std::string_view final;
  Formato formato;
};
constexpr NombreFormato kFormatos[] = {{".csv", Formato::kCsv}, {".xml", Formato::kXml}, {".txt", Formato::kTxt}};

// Of configurations, which are tables in the program's own form and nothing else.
bool EsDeConfiguracion(const std::filesystem::path& archivo) {
  const std::string nombre = Minusculas(archivo.string());
  return nombre.ends_with(".ucg") || nombre.ends_with(".icf");
}

bool EsAyuda(std::string_view argumento) {
  return argumento == "--ayuda" || argumento == "--help" || argumento == "-h";
}

// --- Reading ---------------------------------------------------------------------------------------------------------

class Lector {
 public:
  Lector(std::span<const std::string_view> argumentos, const FechaHora& hoy) : argumentos_(argumentos) {
    l_.hoy = hoy;
    l_.opciones.desde = FechaDeDias(DiasDesde1970(hoy));
    l_.opciones.hasta = FechaDeSegundos(Segundos(l_.opciones.desde) + kSegundosDia - 1);
    l_.opciones.seleccion.datos = false;
    l_.opciones.seleccion.todas_las_pilas = false;
  }

  Opciones Leer() {
    if (argumentos_.empty()) Mal("Falta el comando");
    LeerOrden(argumentos_.front());
    argumentos_ = argumentos_.subspan(1);
    while (!argumentos_.empty() && !Listo()) LeerUno();
    if (!Listo()) Comprobar();
    return std::move(l_.opciones);
  }

 private:
  bool Listo() const { return l_.opciones.ayuda || l_.opciones.version; }

  void LeerOrden(std::string_view nombre) {
    l_.opciones.ayuda = EsAyuda(nombre);
    l_.opciones.version = nombre == "--version";
    if (Listo()) return;
    for (const DescripcionOrden& orden : Ordenes()) {
      if (orden.nombre == nombre) l_.opciones.orden = orden.orden;
    }
    if (!l_.opciones.orden) Mal("No conoce el comando \"" + std::string(nombre) + "\"");
    orden_ = &De(*l_.opciones.orden);
  }

  void LeerUno() {
    const std::string_view argumento = Tomar();
    if (EsAyuda(argumento)) {
      l_.opciones.ayuda = true;
    } else if (argumento == "--" && !solo_operandos_) {
      solo_operandos_ = true;
    } else if (argumento.starts_with('-') && argumento.size() > 1 && !solo_operandos_) {
      LeerOpcion(argumento);
    } else {
      LeerOperando(argumento);
    }
  }

  std::string_view Tomar() {
    const std::string_view argumento = argumentos_.front();
    argumentos_ = argumentos_.subspan(1);
    return argumento;
  }

  void LeerOperando(std::string_view operando) {
    auto& archivos = l_.opciones.archivos;
    if (operando.empty()) Mal("El nombre del archivo está vacío");
    if (archivos.size() == orden_->mayor)
      Mal("\"" + std::string(operando) + "\" está de más en " + std::string(orden_->nombre));
    archivos.emplace_back(operando);
  }

  // "--opcion valor" and "--opcion=valor".
  void LeerOpcion(std::string_view argumento) {
    const std::size_t corte = argumento.find('=');
    const std::string_view nombre = argumento.substr(0, corte);
    const DescripcionOpcion& opcion = Buscar(nombre);
    const auto repetida = std::find(vistas_.begin(), vistas_.end(), &opcion);
    if (repetida != vistas_.end()) Mal(std::string(nombre) + " está dos veces");
    vistas_.push_back(&opcion);
    if (opcion.valor.empty()) {
      if (corte != nombre.npos) Mal(std::string(nombre) + " no lleva valor");
      return opcion.leer(l_, {});
    }
    const bool aparte = corte == argumento.npos;
    if (aparte && argumentos_.empty()) Mal("Falta el valor de " + std::string(nombre));
    const std::string_view valor = aparte ? Tomar() : argumento.substr(corte + 1);
    if (valor.empty()) Mal("Falta el valor de " + std::string(nombre));
    opcion.leer(l_, valor);
  }

  const DescripcionOpcion& Buscar(std::string_view nombre) const {
    bool conocida = false;
    for (const DescripcionOpcion& opcion : OpcionesConocidas()) {
      if (opcion.nombre != nombre) continue;
      conocida = true;
      if ((opcion.clases & orden_->clases) != 0) return opcion;
    }
    Mal(conocida ? std::string(orden_->nombre) + " no lleva la opción " + std::string(nombre)
                 : "No conoce la opción \"" + std::string(nombre) + "\"");
  }

  // What the options don't say by themselves: what is lacking, and what goes together.
  void Comprobar() {
    if ((orden_->clases & clase::kEnlace) != 0) ComprobarEnlace();
    if (orden_->mayor > 0 && l_.opciones.archivos.empty())
      Mal("Falta el archivo que lee " + std::string(orden_->nombre));
    if (l_.opciones.pendientes && (l_.con_fechas || l_.opciones.cartucho))
      Mal("--pendientes no va con fechas ni con --cartucho");
    if (l_.opciones.hasta < l_.opciones.desde)
      Mal(!l_.con_hasta  ? "Falta --hasta: sin ella se lee hasta hoy, y --desde es posterior"
          : l_.con_desde ? "--hasta es anterior a --desde"
                         : "Falta --desde: sin ella se lee desde hoy, y --hasta es anterior");
    if (l_.opciones.continuar && l_.opciones.destino.archivo.empty())
      Mal("--continuar quiere en --archivo el archivo que sigue");
    ComprobarFormato();
    CompletarSeleccion();
  }

  void ComprobarEnlace() const {
    const PedidoEnlace& enlace = l_.opciones.enlace;
    const EntradaEnlace& entrada = enlace.entrada;
    const bool serie = l_.con_puerto || l_.con_velocidad || entrada.telefono;
    if (!enlace.estacion.empty()) {
      const bool ademas =
          serie || entrada.por_ip || enlace.simulada || l_.con_identificador || !entrada.comandos.empty();
      if (ademas) Mal("--estacion ya dice cómo se llega: no va con otras opciones del enlace");
      return;
    }
    if (!enlace.libro.empty()) Mal("--libro va con --estacion");
    if (entrada.por_ip && serie) Mal("--ip no va con --puerto, --velocidad ni --telefono");
    if (!entrada.por_ip && !l_.con_puerto && !enlace.simulada)
      Mal("Falta cómo se llega a la estación: --estacion, --puerto, --ip o --simulada");
    if (enlace.simulada && !enlace.dispositivo.empty()) Mal("--simulada no va con un dispositivo en --puerto");
    if (!entrada.telefono && !entrada.comandos.empty()) Mal("--comandos va con --telefono");
  }

  void ComprobarFormato() {
    Destino& destino = l_.opciones.destino;
    if ((orden_->clases & clase::kSalida) == 0) return;
    if (EsDeConfiguracion(destino.archivo)) ComprobarConfiguracion();
    if (!destino.formato) destino.formato = FormatoDe(destino.archivo);
    if (!destino.formato) destino.formato = Formato::kCsv;
    if (l_.con_csv && destino.formato != Formato::kCsv) Mal("--separador, --decimal y --marca van con --salida csv");
  }

  // Whoever opens such a file later takes it for a configuration.
  void ComprobarConfiguracion() {
    Destino& destino = l_.opciones.destino;
    const std::string nombre = destino.archivo.filename().string();
    if (l_.opciones.orden != Orden::kConfiguracion)
      Mal(nombre + " sería una configuración: " + std::string(orden_->nombre) + " no guarda ninguna");
    if (destino.formato.value_or(Formato::kXml) != Formato::kXml)
      Mal(nombre + " sería una configuración, y sólo se la vuelve a abrir si está en xml");
    destino.formato = Formato::kXml;
  }

  void CompletarSeleccion() {
    SeleccionFlash& seleccion = l_.opciones.seleccion;
    if (seleccion.datos || seleccion.cola || seleccion.eventos) return;
    seleccion.datos = seleccion.todas_las_pilas = seleccion.cola = seleccion.eventos = true;
  }

  std::span<const std::string_view> argumentos_;
  Lectura l_;
  const DescripcionOrden* orden_ = nullptr;
  std::vector<const DescripcionOpcion*> vistas_;
  bool solo_operandos_ = false;
};

// --- Help ------------------------------------------------------------------------------------------------------------

// "  --opcion VALOR   what it is", its further lines below the first.
std::string RenglonDe(const std::string& que, std::string_view texto) {
  std::string renglon = "  " + que;
  const std::size_t ancho = Largo(que);
  renglon += std::string(ancho < kAnchoOpcion ? kAnchoOpcion - ancho : 1, ' ');
  return renglon + Reemplazar(texto, "\n", "\n" + std::string(kAnchoOpcion + 2, ' ')) + "\n";
}

std::string RenglonDe(const DescripcionOpcion& opcion) {
  const std::string valor = opcion.valor.empty() ? "" : " " + std::string(opcion.valor);
  return RenglonDe(std::string(opcion.nombre) + valor, opcion.texto);
}

std::string OpcionesDe(unsigned clases, std::string_view titulo) {
  std::string texto;
  for (const DescripcionOpcion& opcion : OpcionesConocidas()) {
    if ((opcion.clases & clases) != 0) texto += RenglonDe(opcion);
  }
  return texto.empty() ? texto : "\n" + std::string(titulo) + "\n" + texto;
}

std::string AyudaDe(const DescripcionOrden& orden) {
  const bool lee = (orden.clases & clase::kEnlace) != 0;
  std::string texto = "Uso: " + std::string(kPrograma) + " " + std::string(orden.nombre);
  if (!orden.operandos.empty()) texto += " " + std::string(orden.operandos);
  texto += lee ? " ENLACE [opciones]\n\n" : " [opciones]\n\n";
  texto += orden.texto;
  if (lee) texto += OpcionesDe(clase::kEnlace, "Cómo se llega a la estación:");
  constexpr unsigned kDeSalida = clase::kSalida | clase::kArchivo;
  texto += OpcionesDe(orden.clases & ~(clase::kEnlace | kDeSalida), "Opciones:");
  texto += OpcionesDe(orden.clases & kDeSalida, "Adónde va:");
  return texto;
}

constexpr std::string_view kCodigos = R"(
Termina con 0 si hizo lo pedido, 1 si no hay datos, 2 si los argumentos están mal, 3 si no se pudo abrir el enlace, 4 si
la estación no contesta o se niega, 5 si no se pudo leer o escribir un archivo; lo que pasó va en un renglón por la salida
de errores. Sólo lee: no le cambia nada a la estación, y no lee ni escribe los ajustes del programa.
)";

std::string AyudaGeneral() {
  std::string texto = "Uso: " + std::string(kPrograma) + " COMANDO [opciones]\n\n" +
                      "Lee una estación de telemetría hidrometeorológica sin preguntar nada.\n\nComandos:\n";
  for (const DescripcionOrden& orden : Ordenes()) texto += RenglonDe(std::string(orden.nombre), orden.resumen);
  texto += "\n" + RenglonDe("COMANDO --ayuda", "las opciones de un comando");
  texto += RenglonDe("--ayuda", "muestra esto") + RenglonDe("--version", "muestra la versión");
  texto += kCodigos;
  return texto;
}

}  // namespace

Opciones LeerOpciones(std::span<const std::string_view> argumentos, const FechaHora& hoy) {
  return Lector(argumentos, hoy).Leer();
}

std::string Ayuda(std::optional<Orden> orden) {
  return orden ? AyudaDe(De(*orden)) : AyudaGeneral();
}

std::optional<Formato> FormatoDe(const std::filesystem::path& archivo) {
  const std::string nombre = Minusculas(archivo.string());
  for (const NombreFormato& uno : kFormatos) {
    if (nombre.ends_with(uno.final)) return uno.formato;
  }
  return std::nullopt;
}

}  // namespace utr::consola
