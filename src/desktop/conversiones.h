#pragma once

#include <QFileInfo>
#include <QString>
#include <filesystem>
#include <string>

namespace morvane {

/// Texts and paths of the rooms below as Qt has them, and the way back for what a dialog has given.
inline QString qt(const std::string& texto) {
  return QString::fromStdString(texto);
}
inline QString qt(const std::filesystem::path& ruta) {
  return QFileInfo(ruta).filePath();
}
inline std::filesystem::path ruta_qt(const QString& nombre) {
  return QFileInfo(nombre).filesystemFilePath().make_preferred();
}

}  // namespace morvane
