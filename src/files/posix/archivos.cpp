#include "files/archivos.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <vector>

#include "files/texto.h"
#include "platform/descriptor.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t por_lectura = std::size_t{16} * 1024;

bool tiene_mas_nombres(int fd) {
  struct stat que {};
  return ::fstat(fd, &que) == 0 && que.st_nlink > 1;
}

std::string sustituir(std::string_view texto, char viejo, char nuevo) {
  std::string otro(texto);
  std::replace(otro.begin(), otro.end(), viejo, nuevo);
  return otro;
}

bool es_letra(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool es_unidad(std::string_view nombre) {
  return nombre.size() >= 3 && es_letra(nombre[0]) && nombre[1] == ':' && nombre[2] == '\\';
}

/// The part of a system name behind the root that it begins with, and that root as the host's path.
struct partes {
  fs::path raiz;
  std::string resto;
};

/// The host's path of the drive that `nombre` begins with.
fs::path unidad(const fs::path& directorio, std::string_view nombre) {
  const char letra = static_cast<char>(nombre[0] | 0x20);
  return directorio / "unidades" / std::string(1, letra);
}

partes repartir(const fs::path& directorio, const std::string& ruta_aplicacion, std::string_view nombre) {
  if (nombre.starts_with(ruta_aplicacion)) {
    return {directorio, sustituir(nombre.substr(ruta_aplicacion.size()), '\\', '/')};
  }
  if (es_unidad(nombre)) return {unidad(directorio, nombre), sustituir(nombre.substr(3), '\\', '/')};
  const fs::path propio(nombre);
  return {propio.parent_path(), propio.filename().native()};
}

bool hay(const fs::path& ruta) {
  struct stat que {};
  return ::lstat(ruta.c_str(), &que) == 0;
}

/// The name in `carpeta` that equals `nombre` but for the case; of several the first one in order of bytes.
std::string buscar_sin_caja(const fs::path& carpeta, const std::string& nombre) {
  const std::unique_ptr<DIR, int (*)(DIR*)> lista(::opendir(carpeta.empty() ? "." : carpeta.c_str()), ::closedir);
  if (!lista) return {};
  const std::string buscado = mayusculas(nombre);
  std::string hallado;
  while (const dirent* entrada = ::readdir(lista.get())) {
    const std::string_view este = entrada->d_name;
    if (este.size() != nombre.size() || mayusculas(este) != buscado) continue;
    if (hallado.empty() || este < hallado) hallado = este;
  }
  return hallado;
}

/// `carpeta`/`nombre` as it stands on the disk; as given if there is nothing of that name.
fs::path como_esta(const fs::path& carpeta, const std::string& nombre) {
  fs::path exacto = carpeta / nombre;
  if (hay(exacto)) return exacto;
  const std::string hallado = buscar_sin_caja(carpeta, nombre);
  return hallado.empty() ? exacto : carpeta / hallado;
}

}  // namespace

archivos::archivos(fs::path directorio)
    : directorio_(std::move(directorio)), ruta_aplicacion_(sustituir(directorio_.native(), '/', '\\')) {
  if (!ruta_aplicacion_.ends_with('\\')) ruta_aplicacion_ += '\\';
}

fs::path archivos::anfitrion(std::string_view nombre) const {
  const partes p = repartir(directorio_, ruta_aplicacion_, nombre);
  return p.raiz / fs::path(p.resto).relative_path();
}

fs::path archivos::encontrar(std::string_view nombre) const {
  const partes p = repartir(directorio_, ruta_aplicacion_, nombre);
  fs::path ruta = p.raiz;
  for (const fs::path& parte : fs::path(p.resto).relative_path()) {
    if (!parte.empty()) ruta = como_esta(ruta, parte.native());
  }
  return ruta;
}

std::string archivos::Dir(std::string_view nombre) const {
  if (nombre.empty() || nombre.ends_with('\\') || nombre.ends_with('/')) return {};
  if (nombre.find('\0') != std::string_view::npos) return {};
  const fs::path ruta = encontrar(nombre);
  struct stat que {};
  if (::stat(ruta.c_str(), &que) != 0 || S_ISDIR(que.st_mode)) return {};
  return ruta.filename().native();
}

std::optional<std::string> archivos::leer(std::string_view nombre, std::size_t limite) const {
  const apertura abierto = abrir_normal(encontrar(nombre), O_RDONLY);
  if (abierto.error != 0) return std::nullopt;
  std::string contenido;
  std::vector<char> trozo_leido(por_lectura);
  while (contenido.size() <= limite) {
    const long hechos = leer_bytes(abierto.fd.numero(), trozo_leido.data(), trozo_leido.size());
    if (hechos < 0) return std::nullopt;
    if (hechos == 0) return contenido;
    contenido.append(trozo_leido.data(), static_cast<std::size_t>(hechos));
  }
  return std::nullopt;
}

error_archivo archivos::abrir(std::string_view nombre, modo como, fichero& destino) const {
  destino.cerrar();
  int banderas = O_RDONLY;
  if (como == modo::escribir) banderas = O_WRONLY | O_CREAT | O_NOFOLLOW;
  if (como == modo::anadir) banderas = O_WRONLY | O_APPEND | O_NOFOLLOW;
  apertura abierto = abrir_normal(encontrar(nombre), banderas);
  if (abierto.error != 0) return abierto.error;
  if (como != modo::leer && tiene_mas_nombres(abierto.fd.numero())) return EMLINK;
  if (como != modo::leer && !bloquear(abierto.fd.numero())) return EBUSY;
  if (como == modo::escribir && ::ftruncate(abierto.fd.numero(), 0) != 0) return errno;
  destino = fichero(abierto.fd.soltar());
  return 0;
}

}  // namespace morvane
