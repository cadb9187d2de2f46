#include "widgets/Apariencia.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "widgets/Recuerdos.h"

namespace utr {
namespace {

constexpr const char* kGrupo = "apariencia";
constexpr const char* kTema = "tema";
constexpr const char* kTexto = "texto";

// The names under which themes are kept.
constexpr std::pair<Tema, const char*> kNombres[] = {
    {Tema::kClaro, "claro"}, {Tema::kOscuro, "oscuro"}, {Tema::kExteriores, "exteriores"}};

std::optional<Tema> TemaGuardado() {
  const QString guardado = Recuerdos(kGrupo).Texto(kTema);
  for (const auto& [tema, nombre] : kNombres) {
    if (guardado == QLatin1String(nombre)) return tema;
  }
  return {};
}

bool SeOfrece(int porciento) {
  return std::find(kTamanosTexto.begin(), kTamanosTexto.end(), porciento) != kTamanosTexto.end();
}

}  // namespace

Apariencia::Apariencia()
    : del_equipo_(QApplication::palette()), letra_del_equipo_(QApplication::font()), elegido_(TemaGuardado()) {
  const int guardado = Recuerdos(kGrupo).Entero(kTexto, tamano_, kTamanosTexto.front(), kTamanosTexto.back());
  if (SeOfrece(guardado)) tamano_ = guardado;
  Aplicar();
}

void Apariencia::Elegir(std::optional<Tema> tema) {
  elegido_ = tema;
  Recuerdos recuerdos(kGrupo);
  const auto nombre = std::find_if(std::begin(kNombres), std::end(kNombres),
                                   [&](const auto& uno) { return tema && uno.first == *tema; });
  nombre == std::end(kNombres) ? recuerdos.Olvidar(kTema) : recuerdos.Guardar(kTema, QLatin1String(nombre->second));
  Aplicar();
}

void Apariencia::FijarTamanoTexto(int porciento) {
  if (!SeOfrece(porciento)) return;
  tamano_ = porciento;
  Recuerdos(kGrupo).Guardar(kTexto, porciento);
  Aplicar();
}

void Apariencia::Aplicar() const {
  QFont letra = letra_del_equipo_;
  if (letra.pointSizeF() > 0) {
    letra.setPointSizeF(letra.pointSizeF() * tamano_ / 100);
  } else {
    letra.setPixelSize(letra.pixelSize() * tamano_ / 100);
  }
  QApplication::setFont(letra);
  AplicarTema(elegido_.value_or(TemaDe(del_equipo_)));  // its icons are as large as the letters
}

}  // namespace utr
