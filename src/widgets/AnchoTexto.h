#pragma once

#include <QFontMetrics>
#include <QHash>
#include <array>
#include <string_view>

namespace utr {

// Widths of many short texts in one font. A text is as wide as its characters together: without shaping, which costs a
// thousand times as much, and never less than what is drawn but for a pixel of rounding.
class AnchoTexto {
 public:
  explicit AnchoTexto(const QFontMetrics& medidas);

  // Pixels of a UTF-8 text, rounded up.
  int operator()(std::string_view texto) const;

 private:
  double DeCaracter(char32_t caracter) const;

  QFontMetricsF medidas_;
  std::array<double, 128> ascii_{};
  mutable QHash<char32_t, double> otros_;
};

}  // namespace utr
