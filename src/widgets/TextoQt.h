#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

namespace utr {

// UTF-8 text of the core as Qt's, and back.
inline QString Q(std::string_view texto) {
  return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}
inline std::string U(const QString& texto) {
  return texto.toStdString();
}
inline std::filesystem::path Ruta(const QString& texto) {
  return std::filesystem::path(texto.toStdU16String());
}

}  // namespace utr
