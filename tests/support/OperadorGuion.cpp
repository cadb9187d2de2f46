#include "support/OperadorGuion.h"

#include <gtest/gtest.h>

namespace utr {
namespace {

// The answer of somebody who closes a box that should not be there.
Respuesta Cierre(Botones botones) {
  switch (botones) {
    case Botones::kAceptar:
    case Botones::kAceptarOpcion:
      return Respuesta::kAceptar;
    case Botones::kAceptarCancelar:
    case Botones::kOpciones:
      return Respuesta::kCancelar;
    case Botones::kSiNo:
      break;
  }
  return Respuesta::kCerrado;
}

}  // namespace

OperadorGuion::~OperadorGuion() {
  Comprobar();
}

void OperadorGuion::Espera(std::string texto, Respuesta respuesta) {
  Paso paso;
  paso.mensaje.texto = std::move(texto);
  paso.respuesta = respuesta;
  guion_.push_back(std::move(paso));
}

void OperadorGuion::Espera(Mensaje mensaje, Respuesta respuesta) {
  Paso paso;
  paso.mensaje = std::move(mensaje);
  paso.entero = true;
  paso.respuesta = respuesta;
  guion_.push_back(std::move(paso));
}

void OperadorGuion::EsperaParte(std::string parte, Respuesta respuesta) {
  Espera(std::move(parte), respuesta);
  guion_.back().parte = true;
}

void OperadorGuion::EsperaAbrir(std::string titulo, std::optional<std::filesystem::path> ruta) {
  Paso paso;
  paso.clase = Clase::kAbrir;
  paso.mensaje.texto = std::move(titulo);
  paso.ruta = std::move(ruta);
  guion_.push_back(std::move(paso));
}

void OperadorGuion::EsperaGuardar(std::string titulo, std::optional<std::filesystem::path> ruta) {
  EsperaAbrir(std::move(titulo), std::move(ruta));
  guion_.back().clase = Clase::kGuardar;
}

void OperadorGuion::EsperaImpresora(std::string titulo, std::optional<EleccionImpresora> eleccion) {
  Paso paso;
  paso.clase = Clase::kImpresora;
  paso.mensaje.texto = std::move(titulo);
  paso.eleccion = std::move(eleccion);
  guion_.push_back(std::move(paso));
}

void OperadorGuion::Comprobar() {
  for (const Paso& paso : guion_) ADD_FAILURE() << "never asked: \"" << paso.mensaje.texto << '"';
  guion_.clear();
}

Respuesta OperadorGuion::Mostrar(const Mensaje& mensaje) {
  mensajes.push_back(mensaje);
  const std::optional<Paso> paso = Tomar(Clase::kMensaje, mensaje.texto);
  if (!paso) return Cierre(mensaje.botones);
  if (paso->entero) {
    EXPECT_EQ(mensaje.titulo, paso->mensaje.titulo) << mensaje.texto;
    EXPECT_EQ(mensaje.icono, paso->mensaje.icono) << mensaje.texto;
    EXPECT_EQ(mensaje.botones, paso->mensaje.botones) << mensaje.texto;
    EXPECT_EQ(mensaje.opciones, paso->mensaje.opciones) << mensaje.texto;
    EXPECT_EQ(DefectoDe(mensaje), DefectoDe(paso->mensaje)) << mensaje.texto;
    EXPECT_EQ(mensaje.detalle, paso->mensaje.detalle) << mensaje.texto;
  }
  return paso->respuesta;
}

std::optional<std::filesystem::path> OperadorGuion::ElegirAbrir(const PedidoArchivo& pedido) {
  return Elegir(Clase::kAbrir, pedido);
}

std::optional<std::filesystem::path> OperadorGuion::ElegirGuardar(const PedidoArchivo& pedido) {
  return Elegir(Clase::kGuardar, pedido);
}

std::optional<EleccionImpresora> OperadorGuion::ElegirImpresora(std::string_view titulo, const EleccionImpresora&) {
  impresoras.emplace_back(titulo);
  const std::optional<Paso> paso = Tomar(Clase::kImpresora, impresoras.back());
  return paso ? paso->eleccion : std::nullopt;
}

void OperadorGuion::PunteroOcupado(bool activo) {
  ocupado += activo ? 1 : -1;
  if (activo) ++relojes_vistos;
  EXPECT_GE(ocupado, 0) << "an hourglass taken off that nobody brought";
}

std::optional<std::filesystem::path> OperadorGuion::Elegir(Clase clase, const PedidoArchivo& pedido) {
  pedidos.push_back(pedido);
  const std::optional<Paso> paso = Tomar(clase, pedido.titulo);
  return paso ? paso->ruta : std::nullopt;
}

std::optional<OperadorGuion::Paso> OperadorGuion::Tomar(Clase clase, const std::string& texto) {
  if (al_preguntar) al_preguntar();
  if (guion_.empty()) {
    ADD_FAILURE() << "unexpected question: \"" << texto << '"';
    return std::nullopt;
  }
  Paso paso = std::move(guion_.front());
  guion_.pop_front();
  const bool es = paso.parte ? texto.find(paso.mensaje.texto) != std::string::npos : texto == paso.mensaje.texto;
  if (paso.clase != clase || !es) {
    ADD_FAILURE() << "expected \"" << paso.mensaje.texto << "\", asked \"" << texto << '"';
    return std::nullopt;
  }
  return paso;
}

}  // namespace utr
