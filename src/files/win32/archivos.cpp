#include "files/archivos.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include "abrir.h"
#include "platform/rutas.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t por_lectura = std::size_t{16} * 1024;

/// What the host's search takes as a pattern, or what no name can hold.
constexpr std::string_view vedados("*?\"<>|\0", 7);

bool tiene_otro_nombre(HANDLE archivo) {
  BY_HANDLE_FILE_INFORMATION que{};
  return ::GetFileInformationByHandle(archivo, &que) != 0 && que.nNumberOfLinks > 1;
}

}  // namespace

archivos::archivos(fs::path directorio) : directorio_(std::move(directorio)), ruta_aplicacion_(texto_de(directorio_)) {
  std::ranges::replace(ruta_aplicacion_, '/', '\\');
  if (!ruta_aplicacion_.ends_with('\\')) ruta_aplicacion_ += '\\';
}

/// The host has drives and backslashes of its own, and does not look at the case.
fs::path archivos::anfitrion(std::string_view nombre) const {
  return ruta_de(nombre);
}

fs::path archivos::encontrar(std::string_view nombre) const {
  return ruta_de(nombre);
}

std::string archivos::Dir(std::string_view nombre) const {
  if (nombre.empty() || nombre.ends_with('\\') || nombre.ends_with('/')) return {};
  if (nombre.find_first_of(vedados) != std::string_view::npos) return {};
  WIN32_FIND_DATAW hallado{};
  const HANDLE busca = ::FindFirstFileW(ruta_larga(encontrar(nombre)).c_str(), &hallado);
  if (busca == INVALID_HANDLE_VALUE) return {};
  ::FindClose(busca);
  if ((hallado.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {};
  return estrecho(hallado.cFileName);
}

std::optional<std::string> archivos::leer(std::string_view nombre, std::size_t limite) const {
  const apertura abierto = abrir_normal(encontrar(nombre), GENERIC_READ, OPEN_EXISTING, true);
  if (abierto.error != 0) return std::nullopt;
  std::string contenido;
  std::vector<char> trozo_leido(por_lectura);
  while (contenido.size() <= limite) {
    DWORD hechos = 0;
    if (::ReadFile(abierto.archivo.numero(), trozo_leido.data(), por_lectura, &hechos, nullptr) == 0)
      return std::nullopt;
    if (hechos == 0) return contenido;
    contenido.append(trozo_leido.data(), hechos);
  }
  return std::nullopt;
}

error_archivo archivos::abrir(std::string_view nombre, modo como, fichero& destino) const {
  destino.cerrar();
  const bool escribe = como != modo::leer;
  const DWORD disposicion = como == modo::escribir ? OPEN_ALWAYS : OPEN_EXISTING;
  apertura abierto = abrir_normal(encontrar(nombre), escribe ? GENERIC_WRITE : GENERIC_READ, disposicion, !escribe);
  if (abierto.error != 0) return abierto.error;
  if (escribe && tiene_otro_nombre(abierto.archivo.numero())) return EMLINK;
  if (como == modo::escribir && !cortar(abierto.archivo.numero(), 0)) return ultimo_error();
  destino = fichero(reinterpret_cast<std::intptr_t>(abierto.archivo.soltar()));
  return 0;
}

}  // namespace morvane
