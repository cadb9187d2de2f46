#include <algorithm>

#include "base/Error.h"
#include "base/Texto.h"
#include "configuration/ListaCanales.h"
#include "console/Sesion.h"
#include "console/TablaOpciones.h"
#include "driver/CanalesUTR.h"
#include "driver/PaginaCero.h"
#include "driver/Textos.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/Lectores.h"
#include "retrieved/Registros.h"
#include "services/Propiedades.h"
#include "session/Respaldos.h"

// The orders that ask the station and bring a table.
namespace utr::consola {

namespace {

constexpr const char* kSinDatos = "No hay datos";

Codigo SinDatos(Sesion& sesion, const std::string& porque = kSinDatos) {
  sesion.Avisar(porque);
  return Codigo::kSinDatos;
}

std::vector<std::string> LineasDesdeHasta(const Opciones& opciones, std::string (*texto)(const FechaHora&)) {
  return {"Desde: " + texto(opciones.desde), "Hasta: " + texto(opciones.hasta)};
}

std::string LineaFecha(const Sesion& sesion) {
  return "Fecha: " + TextoFecha(sesion.ElReloj().Ahora());
}

// A row of one table behind the rows of another of the same fields.
void Agregar(Tabla& destino, Tabla& origen) {
  for (origen.MoveFirst(); !origen.Eof(); origen.MoveNext()) {
    destino.AddNew();
    for (std::size_t campo = 0; campo < origen.FieldCount(); ++campo) destino.Set(campo, origen.Value(campo));
  }
  destino.UpdateBatch();
}

// The entries of the channels to be read, in the order asked for; all where none is named. What the station has no
// history of is told.
std::vector<std::string> EntradasDe(const LectorDatos& lector, Sesion& sesion) {
  std::vector<std::string> todas = lector.CargarCanales();
  const auto& pedidos = sesion.LasOpciones().canales;
  if (todas.empty()) sesion.Avisar("La estación no tiene canales que guarden historia");
  if (pedidos.empty()) return todas;
  std::vector<std::string> elegidas;
  for (const std::int16_t canal : pedidos) {
    const auto entrada =
        std::find_if(todas.begin(), todas.end(), [canal](const auto& una) { return CanalDeEntrada(una) == canal; });
    if (entrada == todas.end()) {
      if (!todas.empty()) sesion.Avisar("El canal " + NombreCanal(canal) + " no guarda historia en esta estación");
      continue;
    }
    elegidas.push_back(*entrada);
  }
  return elegidas;
}

}  // namespace

Codigo LeerDatos(Sesion& sesion) {
  const Opciones& opciones = sesion.LasOpciones();
  sesion.Abrir();
  const TablaPtr configuracion = sesion.LeerConfiguracion();
  if (!configuracion) return Codigo::kSinDatos;
  LectorDatos lector(sesion.Contexto(), configuracion, sesion.AtencionEntreLlamadas());
  const std::vector<std::string> entradas = EntradasDe(lector, sesion);
  if (entradas.empty()) return Codigo::kSinDatos;
  const TablaPtr todos = CrearRegistrosDatos();
  std::string sin_datos;
  for (const std::string& entrada : entradas) {
    ExigirSinInterrumpir();
    sesion.Avance().Texto("Leyendo " + entrada + "...");
    const LectorDatos::Pedido pedido{opciones.desde, opciones.hasta, entrada, !opciones.crudos, opciones.cartucho};
    if (lector.TraerDatos(pedido) == FinLectura::kListado) {
      Agregar(*todos, *lector.Resultado());
    } else {
      sin_datos += (sin_datos.empty() ? "" : ", ") + NombreCanal(CanalDeEntrada(entrada));
    }
  }
  if (todos->RecordCount() == 0) return SinDatos(sesion);
  if (!sin_datos.empty()) sesion.Avisar("Sin datos: " + sin_datos);
  sesion.Entregar(todos, ColumnasDatos(), {"Datos históricos de la UTR", LineasDesdeHasta(opciones, TextoFecha)});
  sesion.Resumir(*todos, configuracion.get());
  return Codigo::kHecho;
}

Codigo LeerEventos(Sesion& sesion) {
  const Opciones& opciones = sesion.LasOpciones();
  sesion.Abrir();
  const TablaPtr configuracion = sesion.LeerConfiguracion();
  if (!configuracion) return Codigo::kSinDatos;
  LectorEventos lector(sesion.Contexto(), configuracion, sesion.AtencionEntreLlamadas(), sesion.Carpeta());
  sesion.Avance().Texto("Leyendo los eventos...");
  const FinLectura fin = opciones.pendientes ? lector.TraerPendientes()
                                             : lector.TraerPorFecha(opciones.desde, opciones.hasta, opciones.cartucho);
  if (fin != FinLectura::kListado) return SinDatos(sesion, "No hay eventos");
  const auto lineas =
      opciones.pendientes ? std::vector{LineaFecha(sesion)} : LineasDesdeHasta(opciones, TextoFechaHora);
  sesion.Entregar(lector.Resultado(), ColumnasEventos(), {"Eventos de la UTR", lineas});
  sesion.Resumir(*lector.Resultado(), configuracion.get());
  return Codigo::kHecho;
}

Codigo Instantaneos(Sesion& sesion) {
  const Opciones& opciones = sesion.LasOpciones();
  sesion.Abrir();
  const TablaPtr configuracion = sesion.LeerConfiguracion();
  if (!configuracion) return Codigo::kSinDatos;
  LectorDatos lector(sesion.Contexto(), configuracion, sesion.AtencionEntreLlamadas());
  sesion.Avance().Texto("Leyendo los valores presentes...");
  if (lector.MostrarInstantaneos(!opciones.crudos, opciones.con_nivel) != FinLectura::kListado) return SinDatos(sesion);
  sesion.Entregar(lector.Resultado(), ColumnasInstantaneos(), {"Datos instantáneos de la UTR", {LineaFecha(sesion)}});
  return Codigo::kHecho;
}

// As text it is the list of channels; a program gets every field as the unit holds it.
Codigo Configuracion(Sesion& sesion) {
  sesion.Abrir();
  const TablaPtr tabla = sesion.LeerConfiguracion();
  if (!tabla) return Codigo::kSinDatos;
  if (sesion.LasOpciones().destino.formato == Formato::kTxt) {
    sesion.Entregar(tabla, TablaDeLista(*tabla, sesion.ElCatalogo()), ColumnasDeCanales(), {"Canales de la UTR", {}});
  } else {
    Columnas columnas;
    for (std::size_t i = 0; i < tabla->FieldCount(); ++i)
      columnas.push_back(
          {.titulo = tabla->Field(i).nombre,
           .campo = tabla->Field(i).nombre,
           .orden = EsColumnaDeCantidad(tabla->Field(i).nombre) ? ClaseOrden::kNumero : ClaseOrden::kTexto});
    sesion.Entregar(tabla, std::move(columnas), {});
  }
  return Codigo::kHecho;
}

namespace {

// Whose backup it is: the one that was called, else the one that the unit says it is, so that those of two stations
// never share a folder.
std::int32_t IdentificadorDelRespaldo(Sesion& sesion) {
  if (sesion.Identificador() != 0) return sesion.Identificador();
  const auto pagina = LeerTextoPagina(sesion.Driver().LeerPagina(pagina0::kNumero, false));
  if (!pagina || pagina->size() < pagina0::kIdentificador + 2)
    throw Error(error::kSinRespuesta, "respaldo", "La estación no dice su identificador: falta --identificador");
  return (*pagina)[pagina0::kIdentificador] + 256 * (*pagina)[pagina0::kIdentificador + 1];
}

}  // namespace

Codigo Respaldo(Sesion& sesion) {
  sesion.Abrir();
  const TablaPtr tabla = sesion.LeerConfiguracion();
  if (!tabla) return Codigo::kSinDatos;
  const std::int32_t identificador = IdentificadorDelRespaldo(sesion);
  sesion.PasarAArchivos();
  ExigirSinInterrumpir();
  // A bag of its own, which has no file: the backup asks it for the identifier.
  Propiedades propiedades{{}};
  propiedades.Escribir(clave::kIdentificador, std::int64_t{identificador}, std::int64_t{0});
  const auto& elegida = sesion.LasOpciones().carpeta;
  Respaldos respaldos(elegida.empty() ? sesion.Carpeta() : elegida, propiedades, sesion.ElReloj(), sesion.Registro());
  const ResultadoRespaldo resultado = respaldos.Guardar(*tabla, MotivoRespaldo::kLectura);
  if (!resultado.Guardado()) throw Error(error::kArchivo, "respaldo", resultado.falla);
  sesion.Decir(resultado.archivo.string());
  return Codigo::kHecho;
}

}  // namespace utr::consola
