#include <sodium.h>
#include <windows.h>

#include "clave_texto.h"
#include "files/archivos.h"
#include "platform/manejador.h"
#include "platform/rutas.h"

// The folder lies in the user's profile, which is closed to all others by itself.
namespace morvane::console {

namespace fs = std::filesystem;

namespace {

std::variant<clave, fallo_clave> leer(const fs::path& ruta) {
  const archivos ficheros(ruta.parent_path());
  causa_archivo porque;
  auto texto = ficheros.leer(texto_de(ruta), clave_maxima);
  if (!texto) return fallo_clave{fallo_clave::clase::leer, ruta, porque};
  const auto hallada = clave_en(*texto);
  sodium_memzero(texto->data(), texto->size());
  if (!hallada) return fallo_clave{fallo_clave::clase::danada, ruta};
  return *hallada;
}

/// Puts a new key at `ruta` unless there is one already, whoever has made it. 0, or the number of the error.
int crear(const fs::path& ruta) {
  std::error_code error;
  fs::create_directories(ruta.parent_path(), error);
  semilla s{};
  randombytes_buf(s.data(), s.size());
  fs::path provisional = ruta;
  provisional += "." + std::to_string(::GetCurrentProcessId()) + ".tmp";
  const int fallo = archivos(ruta.parent_path()).guardar(texto_de(provisional), contenido_de(s));
  if (fallo != 0) return fallo;
  // Not over what is there.
  const bool puesta =
      ::MoveFileExW(ruta_larga(provisional).c_str(), ruta_larga(ruta).c_str(), MOVEFILE_WRITE_THROUGH) != 0;
  const DWORD motivo = puesta ? ERROR_SUCCESS : ::GetLastError();
  if (!puesta) fs::remove(provisional, error);
  return puesta || motivo == ERROR_ALREADY_EXISTS || motivo == ERROR_FILE_EXISTS ? 0 : error_de(motivo);
}

}  // namespace

std::variant<clave, fallo_clave> clave_guardada(const fs::path& carpeta) {
  if (carpeta.empty() || sodium_init() < 0) return fallo_clave{};
  const fs::path ruta = carpeta / fichero_de_clave;
  std::error_code error;
  if (!fs::exists(ruta, error)) {
    if (const int fallo = crear(ruta))
      return fallo_clave{fallo_clave::clase::escribir, ruta, causa_de_escritura(fallo)};
  }
  return leer(ruta);
}

std::optional<clave> clave_que_hay(const fs::path& carpeta) {
  if (carpeta.empty()) return std::nullopt;
  const auto hallada = leer(carpeta / fichero_de_clave);
  const auto* buena = std::get_if<clave>(&hallada);
  return buena == nullptr ? std::nullopt : std::optional(*buena);
}

}  // namespace morvane::console
