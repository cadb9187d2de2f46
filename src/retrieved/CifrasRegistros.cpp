#include "retrieved/CifrasRegistros.h"

#include <algorithm>
#include <optional>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/CanalesUTR.h"
#include "retrieved/series/CanalDeSerie.h"
#include "retrieved/series/Momentos.h"
#include "retrieved/series/NumerosDeColumna.h"
#include "retrieved/series/TextoSerie.h"

namespace utr {
namespace {

std::string Cuantos(std::size_t cuantos, const char* uno, const char* varios) {
  return std::to_string(cuantos) + ' ' + (cuantos == 1 ? uno : varios);
}

void AgregarSiHay(std::vector<std::string>& partes, std::size_t cuantos, const char* uno, const char* varios) {
  if (cuantos > 0) partes.push_back(Cuantos(cuantos, uno, varios));
}

std::string TextoSpan(const std::optional<std::int64_t>& primero, const std::optional<std::int64_t>& ultimo) {
  if (!primero || !ultimo) return "Sin fechas";
  return "Primero: " + TextoMomento(*primero) + ", último: " + TextoMomento(*ultimo);
}

std::string CifrasDeEventos(const Tabla& tabla) {
  std::vector<std::int64_t> momentos = MomentosDe(tabla);
  std::erase(momentos, kSinMomento);
  const auto [primero, ultimo] = std::minmax_element(momentos.begin(), momentos.end());
  const bool hay = !momentos.empty();
  return TextoSpan(hay ? std::optional(*primero) : std::nullopt, hay ? std::optional(*ultimo) : std::nullopt) + "; " +
         Cuantos(tabla.RecordCount(), "evento", "eventos");
}

std::optional<double> MinutosDe(const Tabla* configuracion, const std::string& canal) {
  const std::int16_t numero = NumeroDeNombre(Recortar(canal));
  if (configuracion == nullptr || numero == 0) return std::nullopt;
  return LeerCanalDeSerie(*configuracion, numero).minutos;
}

void Sumar(CifrasSerie& todas, const CifrasSerie& una) {
  todas.registros += una.registros;
  todas.sin_fecha += una.sin_fecha;
  todas.sin_valor += una.sin_valor;
  todas.no_validados += una.no_validados;
  todas.faltan += una.faltan;
  todas.huecos += una.huecos;
  todas.retrocesos += una.retrocesos;
  if (una.primero) todas.primero = std::min(todas.primero.value_or(*una.primero), *una.primero);
  if (una.ultimo) todas.ultimo = std::max(todas.ultimo.value_or(*una.ultimo), *una.ultimo);
}

std::string TextoCuentas(const CifrasSerie& cifras) {
  std::vector<std::string> partes{Cuantos(cifras.registros, "registro", "registros")};
  AgregarSiHay(partes, cifras.sin_valor, "sin valor", "sin valor");
  AgregarSiHay(partes, cifras.no_validados, "sin validar", "sin validar");
  AgregarSiHay(partes, cifras.sin_fecha, "sin fecha", "sin fecha");
  if (cifras.faltan > 0) partes.push_back("faltan " + std::to_string(cifras.faltan));
  AgregarSiHay(partes, cifras.huecos, "hueco", "huecos");
  if (cifras.retrocesos > 0) partes.push_back("el reloj retrocedió " + Cuantos(cifras.retrocesos, "vez", "veces"));
  return Unir(partes, ", ");
}

std::string ConUnidad(double valor, const std::string& unidad) {
  const std::string_view palabra = Recortar(unidad);
  return FormatoFijo(valor) + (palabra.empty() || palabra == "-" ? "" : ' ' + std::string(palabra));
}

std::string TextoValores(const Serie& serie) {
  const CifrasSerie& cifras = serie.Cifras();
  std::vector<std::string> partes;
  // A direction has neither: north is at both ends.
  if (cifras.minimo && !serie.EsDireccion()) partes.push_back("mínimo " + TextoValor(*cifras.minimo, serie.Unidad()));
  if (cifras.maximo && !serie.EsDireccion()) partes.push_back("máximo " + TextoValor(*cifras.maximo, serie.Unidad()));
  if (cifras.media)
    partes.push_back((serie.EsDireccion() ? "dirección media " : "media ") + ConUnidad(*cifras.media, serie.Unidad()));
  // Without a unit they are counts, and no rain.
  const std::string_view unidad = Recortar(serie.Unidad());
  const bool en_unidades = !unidad.empty() && unidad != "-";
  if (cifras.lluvia)
    partes.push_back((en_unidades ? "lluvia total " : "suma ") + ConUnidad(*cifras.lluvia, serie.Unidad()));
  return partes.empty() ? "" : "; " + Unir(partes, ", ");
}

std::string CifrasDeDatos(const SeriesDeTabla& series, bool a_intervalos) {
  CifrasSerie todas;
  for (const auto& serie : series) Sumar(todas, serie->Cifras());
  if (!a_intervalos) todas.faltan = todas.huecos = 0;
  const std::string texto = TextoSpan(todas.primero, todas.ultimo) + "; " + TextoCuentas(todas);
  return texto + (series.size() == 1 ? TextoValores(*series[0]) : "; " + Cuantos(series.size(), "canal", "canales"));
}

bool Tiene(const Tabla& tabla, const char* campo) {
  return tabla.BuscarCampo(campo) >= 0;
}

}  // namespace

SeriesDeTabla SeriesDe(const Tabla& tabla, const Tabla* configuracion, bool a_intervalos) {
  SeriesDeTabla series;
  for (const std::string& canal : CanalesDeTabla(tabla)) {
    const OpcionesSerie opciones{canal, MinutosDe(configuracion, canal), a_intervalos};
    series.push_back(std::make_shared<const Serie>(tabla, opciones));
  }
  return series;
}

std::string TextoCifras(const Tabla& tabla, const SeriesDeTabla& series, bool a_intervalos) {
  if (tabla.RecordCount() == 0 || !Tiene(tabla, "Fecha")) return {};
  if (Tiene(tabla, "Codigo")) return CifrasDeEventos(tabla);
  if (!Tiene(tabla, "Canal") || !Tiene(tabla, "Valor") || !Tiene(tabla, "Validacion")) return {};
  return CifrasDeDatos(series, a_intervalos);
}

// A file may hold its numbers as numbers.
MarcasRegistros::MarcasRegistros(const Tabla& tabla) {
  if (!Tiene(tabla, "Valor") || !Tiene(tabla, "Validacion")) return;
  const auto marcar_si = [](MarcaRegistro marca, const auto& es) {
    return [marca, es](std::string_view texto) { return es(texto) ? marca : MarcaRegistro::kNinguna; };
  };
  const auto sin_valor = [](std::string_view texto) { return !EsNumerico(texto); };
  const auto sin_validar = [](std::string_view texto) { return EsNumerico(texto) && Val(texto) == 0; };
  const ColumnaLeida<MarcaRegistro> valores(tabla, tabla.IndiceCampo("Valor"),
                                            marcar_si(MarcaRegistro::kSinValor, sin_valor), MarcaRegistro::kSinValor);
  const ColumnaLeida<MarcaRegistro> validaciones(tabla, tabla.IndiceCampo("Validacion"),
                                                 marcar_si(MarcaRegistro::kSinValidar, sin_validar),
                                                 MarcaRegistro::kNinguna);
  marcas_ = valores.Todas();
  for (std::size_t fila = 0; fila < marcas_.size(); ++fila) {
    if (marcas_[fila] == MarcaRegistro::kNinguna) marcas_[fila] = validaciones.De(fila);
  }
}

}  // namespace utr
