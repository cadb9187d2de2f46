#include "retrieved/Instantaneos.h"

#include <string>
#include <vector>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Canales.h"
#include "retrieved/Escalado.h"

namespace utr {

namespace {

std::string UnirTrama(Tabla& lectura) {
  std::vector<std::string> valores;
  const std::size_t campo = lectura.IndiceCampo("Valor");
  for (lectura.Filter(""); !lectura.Eof(); lectura.MoveNext()) valores.push_back(lectura.Texto(campo));
  lectura.MoveFirst();
  return Unir(valores, "/");
}

TablaPtr CrearTabla() {
  static constexpr std::pair<const char*, std::uint32_t> kCampos[] = {
      {"Fecha", 20}, {"Hora", 15}, {"Canal", 10}, {"Valor", 50}, {"Descripcion", 50}, {"Unidad", 50}};
  auto tabla = std::make_shared<Tabla>();
  for (const auto& [nombre, tamano] : kCampos) tabla->Append(nombre, TipoCampo::kVarChar, tamano);
  tabla->Open();
  return tabla;
}

void AgregarFila(Tabla& resultado, Tabla& lectura, Tabla& configuracion, bool escalados, bool con_nivel_referencia,
                 const ContextoRegistros& contexto) {
  const FechaHora ahora = contexto.reloj.Ahora();
  const std::string canal = configuracion.Texto("Canal");
  resultado.AddNew();
  resultado.Set("Fecha", TextoFecha(ahora));
  resultado.Set("Hora", TextoHora(ahora));
  resultado.Set("Canal", canal);
  resultado.Set("Descripcion", contexto.catalogo.DescripcionParametro(configuracion.Texto("Parametro"),
                                                                      Entero16(Val(configuracion.Texto("Tipo")))));
  resultado.Set("Unidad", contexto.catalogo.DescripcionUnidad(configuracion.Texto("Unidad")));
  const std::int32_t crudo = ValorInstantaneo(lectura, LeerEntero16(canal));
  resultado.Set("Valor", escalados ? EscalarValorInstantaneo(TextoPlano(crudo), canal, &configuracion,
                                                             con_nivel_referencia, contexto)
                                   : TextoGeneral(crudo));
  resultado.UpdateBatch();
}

TablaPtr Presentar(Tabla& lectura, Tabla& configuracion, bool escalados, bool con_nivel_referencia,
                   const ContextoRegistros& contexto) {
  TablaPtr resultado = CrearTabla();
  // A scaling that failed leaves the table on one channel.
  for (configuracion.Filter(""); !configuracion.Eof(); configuracion.MoveNext()) {
    if (CanalHabilitado(LeerFlags(configuracion.Texto("Flags"))))
      AgregarFila(*resultado, lectura, configuracion, escalados, con_nivel_referencia, contexto);
  }
  lectura.MoveFirst();
  configuracion.MoveFirst();
  resultado->MoveFirst();
  return resultado;
}

}  // namespace

std::int32_t ValorInstantaneo(Tabla& lectura, std::int16_t canal) {
  const std::string trama = UnirTrama(lectura);
  const auto lugar = LugarEnTrama(canal);
  if (!lugar) return 0;
  const auto valores = Separar(trama, '/');
  if (*lugar >= valores.size())
    throw Error(error::kSubindice, "ValorInstantaneo",
                "La lectura instantánea no llega hasta el canal " + NombreCanal(canal));
  return LeerEntero32(valores[*lugar]);
}

TablaPtr PresentacionDatosInstantaneos(Tabla& lectura, Tabla& configuracion, bool escalados, bool con_nivel_referencia,
                                       const ContextoRegistros& contexto) {
  constexpr const char* kModulo = "modRTU";
  constexpr const char* kProcedimiento = "PresentacionDatosInstantaneos";
  try {
    return Presentar(lectura, configuracion, escalados, con_nivel_referencia, contexto);
  } catch (...) {
    const Error error = ErrorActual();
    contexto.registro.RegistrarError(error, kModulo, kProcedimiento);
    throw Error(error.Numero(), std::string(kProcedimiento) + " " + kModulo, error.Descripcion());
  }
}

}  // namespace utr
