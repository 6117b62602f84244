#include "archivo_flash.h"

#include <fcntl.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "descriptor.h"

namespace fs = std::filesystem;

namespace puente {

namespace {

void escribir_entero(const fs::path& ruta, std::span<const std::uint8_t> datos, const std::string& que) {
  const descriptor d(logrado(open(ruta.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666), que));
  while (!datos.empty()) {
    const ssize_t n = write(*d, datos.data(), datos.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) fallar(que);
    datos = datos.subspan(static_cast<std::size_t>(n));
  }
  logrado(fsync(*d), que);
}

}  // namespace

bool cargar_flash(const fs::path& ruta, std::span<std::uint8_t> flash) {
  std::error_code error;
  const fs::file_status estado = fs::status(ruta, error);
  if (estado.type() == fs::file_type::not_found) return false;
  if (error || !fs::is_regular_file(estado) || fs::file_size(ruta) != flash.size()) {
    throw std::runtime_error(ruta.string() + " no es un fichero de " + std::to_string(flash.size()) + " bytes");
  }
  std::ifstream entrada(ruta, std::ios::binary);
  std::string datos(flash.size(), '\0');
  if (!entrada.read(datos.data(), static_cast<std::streamsize>(datos.size()))) {
    throw std::runtime_error("no se puede leer " + ruta.string());
  }
  std::copy(datos.begin(), datos.end(), flash.begin());
  return true;
}

void guardar_flash(const fs::path& ruta, std::span<const std::uint8_t> flash) {
  const std::string que = "no se puede guardar la flash en " + ruta.string();
  // Through a link the file behind it is replaced, and the link stays.
  const fs::path fichero = fs::weakly_canonical(fs::absolute(ruta));
  const fs::path provisional = fichero.string() + "." + std::to_string(getpid()) + ".tmp";
  try {
    escribir_entero(provisional, flash, que);
    logrado(rename(provisional.c_str(), fichero.c_str()), que);
  } catch (...) {
    unlink(provisional.c_str());
    throw;
  }
  const descriptor directorio(logrado(open(fichero.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), que));
  logrado(fsync(*directorio), que);
}

}  // namespace puente
