#include "driver/ArchivosDelControlador.h"

#include <cmath>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/CanalesUTR.h"
#include "driver/TablasEntregadas.h"

namespace utr {

namespace {

constexpr std::string_view kOpcional = "Modificado";

std::string TextoSiEsta(const Tabla& tabla, const char* campo) {
  const int lugar = tabla.BuscarCampo(campo);
  return lugar < 0 ? std::string{} : tabla.Texto(static_cast<std::size_t>(lugar));
}

// The channel by its short code, whichever way the source tells it: records hold the code, present values the number.
std::string CodigoDeCanal(const std::string& canal) {
  const double numero = EsNumerico(canal) ? LeerDoble(canal) : 0;
  const bool tiene_codigo = numero >= kPrimerCanal && numero <= kUltimoCanal && numero == std::floor(numero);
  return tiene_codigo ? NombreCanal(static_cast<std::int16_t>(numero)) : canal;
}

std::string TalCual(const std::string& texto) {
  return texto;
}

struct CampoImp {
  const char* nombre;
  const char* origen;
  std::uint32_t tamano;
  std::string (*leer)(const std::string&) = TalCual;
};
constexpr CampoImp kDatos[] = {{"canal", "Canal", 10, CodigoDeCanal},
                               {"Valor", "Valor", 50},
                               {"Maximo", "Maximo", 50},
                               {"Minimo", "Minimo", 50},
                               {"Validacion", "Validacion", 3}};
constexpr CampoImp kEventos[] = {{"Codigo", "Codigo", 50}, {"Valor1", "Valor1", 50}, {"Valor2", "Valor2", 50}};

// Date and time of a row, as far as it has them.
std::string FechaDeFila(const Tabla& tabla) {
  const std::string fecha = TextoSiEsta(tabla, "Fecha") + " " + TextoSiEsta(tabla, "Hora");
  return std::string{Recortar(fecha)};
}

}  // namespace

TablaPtr LeerIcf(const std::filesystem::path& ruta) {
  auto tabla = std::make_shared<Tabla>();
  tabla->Open(ruta);
  for (const ColumnaCanal& columna : kColumnasDeCanal) {
    if (columna.nombre == kOpcional || tabla->BuscarCampo(columna.nombre) >= 0) continue;
    throw Error(error::kArchivo, "Comunicador",
                "El archivo de configuración no tiene la columna " + std::string{columna.nombre});
  }
  return tabla;
}

bool EscribirImp(Tabla& tabla, const std::filesystem::path& ruta, int tipo) {
  if (tipo != 0 && tipo != 1) return false;
  const std::span<const CampoImp> campos =
      tipo == 1 ? std::span<const CampoImp>{kDatos} : std::span<const CampoImp>{kEventos};
  Tabla imp;
  imp.Append("Tipo", TipoCampo::kEntero, 4);
  imp.Append("Fecha", TipoCampo::kVarChar, 36);
  for (const CampoImp& campo : campos) imp.Append(campo.nombre, TipoCampo::kVarChar, campo.tamano);
  imp.Open();
  imp.Reservar(tabla.RecordCount());
  for (const TablaPtr filas = ALaVista(tabla); !filas->Eof(); filas->MoveNext()) {
    imp.AddNew();
    imp.Set("Tipo", Valor{std::int64_t{tipo}});
    imp.Set("Fecha", FechaDeFila(*filas));
    for (const CampoImp& campo : campos) imp.Set(campo.nombre, campo.leer(TextoSiEsta(*filas, campo.origen)));
  }
  imp.UpdateBatch();
  imp.GuardarSobre(ruta);
  return true;
}

}  // namespace utr
