#include "retrieved/Lectores.h"

#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Canales.h"
#include "retrieved/Eventos.h"
#include "retrieved/Instantaneos.h"
#include "retrieved/Registros.h"

namespace utr {

namespace {

constexpr std::int64_t kLecturaFresca = 9000;  // milliseconds
constexpr std::int16_t kPausaInstantaneos = 3;

bool TieneHistoria(const Tabla& canal) {
  return CanalHabilitado(LeerFlags(canal.Texto("Flags"))) && GuardaHistoria(LeerTipo(canal.Texto("Tipo")));
}

std::string EntradaDeCanal(const Tabla& fila, Catalogo& catalogo) {
  const std::int16_t canal = LeerEntero16(fila.Texto("Canal"));
  const std::string parametro = fila.Texto("Parametro");
  const std::string tipo = fila.Texto("Tipo");
  // The id 0 is that of "(ninguno)": such a channel is told by its own kind.
  return NombreCanal(canal) + "_" +
         (Val(parametro) == 0 ? DescripcionTipo(tipo, canal)
                              : catalogo.DescripcionParametro(parametro, Entero16(Val(tipo))));
}

bool AlReves(const FechaHora& desde, const FechaHora& hasta) {
  return DiasDesde1970(hasta) < DiasDesde1970(desde);
}

}  // namespace

LectorRegistros::LectorRegistros(const ContextoRegistros& contexto, TablaPtr configuracion, Atender atender)
    : contexto_(contexto), configuracion_(std::move(configuracion)), atender_(std::move(atender)) {}

// Builders hand out new tables, so what they built is the private copy.
FinLectura LectorRegistros::Guardar(TablaPtr armada) {
  resultado_ = std::move(armada);
  if (!resultado_ || resultado_->RecordCount() == 0) return FinLectura::kSinDatos;
  resultado_->MoveFirst();
  return FinLectura::kListado;
}

void LectorRegistros::Soltar() {
  resultado_.reset();
}

void LectorRegistros::LlamarEventos() const {
  if (atender_) atender_();
}

std::vector<std::string> LectorDatos::CargarCanales() const {
  std::vector<std::string> entradas;
  if (!configuracion_) return entradas;
  // A scaling that failed leaves the table on one channel.
  for (configuracion_->Filter(""); !configuracion_->Eof(); configuracion_->MoveNext()) {
    if (TieneHistoria(*configuracion_)) entradas.push_back(EntradaDeCanal(*configuracion_, contexto_.catalogo));
  }
  configuracion_->Filter("");
  return entradas;
}

FinLectura LectorDatos::TraerDatos(const Pedido& pedido) {
  Soltar();
  if (AlReves(pedido.desde, pedido.hasta)) return FinLectura::kFechasAlReves;
  const std::int16_t canal = CanalDeEntrada(pedido.canal);
  if (canal == 0) return FinLectura::kSinDatos;
  LlamarEventos();
  const std::string desde = TextoFecha(pedido.desde);
  const std::string hasta = TextoFecha(pedido.hasta);
  // The unit counts channels from 0 here.
  const auto canal_utr = static_cast<std::int16_t>(canal - 1);
  const TablaPtr leida = pedido.cartucho ? contexto_.comunicador.LeerDatosCartucho(desde, hasta, canal_utr)
                                         : contexto_.comunicador.LeerDatos(desde, hasta, canal_utr);
  return Guardar(ArmarRegistrosDatos(leida, pedido.escalados ? configuracion_.get() : nullptr, contexto_));
}

FinLectura LectorDatos::MostrarInstantaneos(bool escalados, bool con_nivel_referencia) {
  Soltar();
  const TablaPtr leida = LeerInstantaneos();
  ultima_lectura_ = contexto_.reloj.Milisegundos();
  if (!leida || leida->RecordCount() == 0 || !configuracion_) return FinLectura::kSinDatos;
  return Guardar(PresentacionDatosInstantaneos(*leida, *configuracion_, escalados, con_nivel_referencia, contexto_));
}

// A unit at rest answers the first time with values of its last round: only the second answer is fresh.
TablaPtr LectorDatos::LeerInstantaneos() {
  LlamarEventos();
  const bool fresca = ultima_lectura_ && contexto_.reloj.Milisegundos() - *ultima_lectura_ < kLecturaFresca;
  TablaPtr leida = contexto_.comunicador.LeerInstantaneos();
  if (fresca) return leida;
  LlamarEventos();
  contexto_.comunicador.Pausa(kPausaInstantaneos);
  LlamarEventos();
  return contexto_.comunicador.LeerInstantaneos();
}

std::int16_t CanalDeEntrada(std::string_view entrada) {
  return NumeroDeNombre(entrada.substr(0, entrada.find('_')));
}

LectorEventos::LectorEventos(const ContextoRegistros& contexto, TablaPtr configuracion, Atender atender,
                             const std::filesystem::path& carpeta)
    : LectorRegistros(contexto, std::move(configuracion), std::move(atender)), descripciones_(CargarEventos(carpeta)) {}

FinLectura LectorEventos::TraerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) {
  Soltar();
  if (hasta < desde) return FinLectura::kFechasAlReves;
  LlamarEventos();
  const std::string inicio = TextoFechaHora(desde);
  const std::string fin = TextoFechaHora(hasta);
  const TablaPtr leida = cartucho ? contexto_.comunicador.LeerEventosCartucho(inicio, fin)
                                  : contexto_.comunicador.LeerEventos(inicio, fin);
  // Without channels events keep neither names nor values.
  Tabla* descripciones = configuracion_ ? descripciones_.get() : nullptr;
  return Guardar(ArmarRegistrosEventos(leida, configuracion_.get(), descripciones));
}

FinLectura LectorEventos::TraerPendientes() {
  Soltar();
  LlamarEventos();
  const TablaPtr leida = contexto_.comunicador.LeerEventos("", "");
  if (configuracion_ && descripciones_)
    return Guardar(ArmarEventosPendientes(leida, configuracion_.get(), descripciones_.get(), contexto_));
  return Guardar(ArmarRegistrosEventos(leida, configuracion_.get(), nullptr));
}

FinLectura LectorCola::TraerPorDia(const FechaHora& desde, const FechaHora& hasta, bool cartucho) {
  if (AlReves(desde, hasta)) return FinLectura::kFechasAlReves;
  por_dia_ = true;
  Soltar();
  LlamarEventos();
  const std::string inicio = TextoFecha(desde);
  const std::string fin = TextoFecha(hasta);
  const TablaPtr leida =
      cartucho ? contexto_.comunicador.LeerColaTxCartucho(inicio, fin) : contexto_.comunicador.LeerColaTx(inicio, fin);
  return Guardar(ArmarRegistrosCola(leida, configuracion_.get(), contexto_));
}

FinLectura LectorCola::TraerPendientes() {
  por_dia_ = false;
  Soltar();
  LlamarEventos();
  return Guardar(ArmarRegistrosCola(contexto_.comunicador.LeerColaTx("", ""), configuracion_.get(), contexto_));
}

}  // namespace utr
