#pragma once

#include <string>
#include <string_view>

namespace utr {

// What the wizards of the program keep for each user, apart from the settings of the program: values by section and
// key, under the application key "Asistentes".
class AlmacenAsistentes {
 public:
  virtual ~AlmacenAsistentes() = default;

  // The value; empty where there is none.
  virtual std::string Leer(std::string_view seccion, std::string_view clave) const = 0;

  // Keeps the value at once.
  virtual void Guardar(std::string_view seccion, std::string_view clave, std::string_view valor) = 0;
};

// Of the start-up wizard: the introduction is passed over when its key holds kSinIntroduccion.
namespace almacen {
inline constexpr std::string_view kPuestaEnMarcha = "UTRStartUp";
inline constexpr std::string_view kIntroduccion = "IntroductionScreen";
inline constexpr std::string_view kSinIntroduccion = "ShowIntro";
}  // namespace almacen

}  // namespace utr
