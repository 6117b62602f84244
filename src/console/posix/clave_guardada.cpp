#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "clave_texto.h"
#include "platform/descriptor.h"

namespace morvane::console {

namespace fs = std::filesystem;

namespace {

constexpr mode_t de_otros = S_IRWXG | S_IRWXO;

std::variant<clave, fallo_clave> leer(const fs::path& ruta) {
  const apertura a = abrir_normal(ruta, O_RDONLY);
  if (a.error != 0) return fallo_clave{fallo_clave::clase::leer, ruta, causa_de_lectura(a.error)};
  struct stat que {};
  if (::fstat(a.fd.numero(), &que) != 0) return fallo_clave{fallo_clave::clase::leer, ruta, causa_de_lectura(errno)};
  if (que.st_uid != ::geteuid()) return fallo_clave{fallo_clave::clase::ajena, ruta};
  if ((que.st_mode & de_otros) != 0) return fallo_clave{fallo_clave::clase::abierta, ruta};
  std::array<char, clave_maxima> texto{};
  const long largo = leer_bytes(a.fd.numero(), texto.data(), texto.size());
  if (largo < 0) return fallo_clave{fallo_clave::clase::leer, ruta, causa_de_lectura(errno)};
  const auto hallada = clave_en({texto.data(), static_cast<std::size_t>(largo)});
  sodium_memzero(texto.data(), texto.size());
  if (!hallada) return fallo_clave{fallo_clave::clase::danada, ruta};
  return *hallada;
}

/// A file beside the key's place, whole and on the disk; 0, or the number of the error.
int escribir_aparte(const fs::path& provisional, std::string_view contenido) {
  descriptor fd(::open(provisional.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
  if (!fd.abierto()) return errno;
  if (const int error = escribir_todo(fd.numero(), contenido)) return error;
  if (const int error = sincronizar(fd.numero())) return error;
  return fd.cerrar();
}

/// Puts a new key at `ruta` unless there is one already, whoever has made it. 0, or the number of the error.
int crear(const fs::path& ruta) {
  std::error_code error;
  fs::create_directories(ruta.parent_path().parent_path(), error);
  if (::mkdir(ruta.parent_path().c_str(), S_IRWXU) != 0 && errno != EEXIST) return errno;
  semilla s{};
  randombytes_buf(s.data(), s.size());
  fs::path provisional = ruta;
  provisional += "." + std::to_string(::getpid()) + ".tmp";
  int fallo = escribir_aparte(provisional, contenido_de(s));
  // Unlike a renaming this never takes the place of what is there.
  if (fallo == 0 && ::link(provisional.c_str(), ruta.c_str()) != 0 && errno != EEXIST) fallo = errno;
  ::unlink(provisional.c_str());
  return fallo;
}

}  // namespace

std::variant<clave, fallo_clave> clave_guardada(const fs::path& carpeta) {
  if (carpeta.empty() || sodium_init() < 0) return fallo_clave{};
  const fs::path ruta = carpeta / fichero_de_clave;
  struct stat que {};
  if (::lstat(ruta.c_str(), &que) != 0 && errno == ENOENT) {
    if (const int error = crear(ruta))
      return fallo_clave{fallo_clave::clase::escribir, ruta, causa_de_escritura(error)};
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
