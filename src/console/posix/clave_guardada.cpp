#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "console/clave.h"
#include "platform/descriptor.h"

/// The file of the key: a line that says what it is, the seed and the public half.
namespace morvane::console {

namespace fs = std::filesystem;

namespace {

using semilla = std::array<std::uint8_t, 32>;

constexpr std::string_view primera_linea = "morvane, clave de firma 1\n";
constexpr std::size_t cifras = 64;
constexpr const char* nombre = "firma.clave";
constexpr mode_t de_otros = S_IRWXG | S_IRWXO;

std::string contenido_de(const semilla& s) {
  std::array<char, cifras + 1> texto{};
  sodium_bin2hex(texto.data(), texto.size(), s.data(), s.size());
  return std::string(primera_linea) + texto.data() + "\n" + clave(s).publica() + "\n";
}

/// Only what comes out the same when it is written again is a whole key.
std::optional<clave> clave_en(std::string_view contenido) {
  semilla s{};
  if (contenido.size() < primera_linea.size() + cifras) return std::nullopt;
  const std::string_view texto = contenido.substr(primera_linea.size(), cifras);
  std::size_t largo = 0;
  if (sodium_hex2bin(s.data(), s.size(), texto.data(), texto.size(), nullptr, &largo, nullptr) != 0)
    return std::nullopt;
  if (largo != s.size() || contenido_de(s) != contenido) return std::nullopt;
  return clave(s);
}

std::variant<clave, fallo_clave> leer(const fs::path& ruta) {
  const apertura a = abrir_normal(ruta, O_RDONLY);
  if (a.error != 0) return fallo_clave{fallo_clave::clase::leer, ruta, causa_de_lectura(a.error)};
  struct stat que {};
  if (::fstat(a.fd.numero(), &que) != 0) return fallo_clave{fallo_clave::clase::leer, ruta, causa_de_lectura(errno)};
  if (que.st_uid != ::geteuid()) return fallo_clave{fallo_clave::clase::ajena, ruta};
  if ((que.st_mode & de_otros) != 0) return fallo_clave{fallo_clave::clase::abierta, ruta};
  std::array<char, 512> texto{};
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
  const fs::path ruta = carpeta / nombre;
  struct stat que {};
  if (::lstat(ruta.c_str(), &que) != 0 && errno == ENOENT) {
    if (const int error = crear(ruta))
      return fallo_clave{fallo_clave::clase::escribir, ruta, causa_de_escritura(error)};
  }
  return leer(ruta);
}

std::optional<clave> clave_que_hay(const fs::path& carpeta) {
  if (carpeta.empty()) return std::nullopt;
  const auto hallada = leer(carpeta / nombre);
  const auto* buena = std::get_if<clave>(&hallada);
  return buena == nullptr ? std::nullopt : std::optional(*buena);
}

}  // namespace morvane::console
