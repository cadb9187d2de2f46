#include "widgets/AnchoTexto.h"

#include <QString>
#include <cmath>

namespace utr {

AnchoTexto::AnchoTexto(const QFontMetrics& medidas) : medidas_(medidas) {
  for (std::size_t i = 0; i < ascii_.size(); ++i) ascii_[i] = medidas_.horizontalAdvance(QChar(static_cast<ushort>(i)));
}

int AnchoTexto::operator()(std::string_view texto) const {
  double ancho = 0;
  for (std::size_t i = 0; i < texto.size(); ++i) {
    const auto byte = static_cast<unsigned char>(texto[i]);
    if (byte < 0x80) {
      ancho += ascii_[byte];
      continue;
    }
    std::size_t largo = 1;
    while (i + largo < texto.size() && (static_cast<unsigned char>(texto[i + largo]) & 0xC0) == 0x80) ++largo;
    const auto caracteres = QString::fromUtf8(texto.data() + i, static_cast<qsizetype>(largo)).toUcs4();
    for (const char32_t caracter : caracteres) ancho += DeCaracter(caracter);
    i += largo - 1;
  }
  return static_cast<int>(std::ceil(ancho));
}

double AnchoTexto::DeCaracter(char32_t caracter) const {
  const auto visto = otros_.constFind(caracter);
  if (visto != otros_.constEnd()) return *visto;
  const double ancho = medidas_.horizontalAdvance(QString::fromUcs4(&caracter, 1));
  otros_.insert(caracter, ancho);
  return ancho;
}

}  // namespace utr
