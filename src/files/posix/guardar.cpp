#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "barrido.h"
#include "files/fichero_entero.h"
#include "platform/descriptor.h"
#include "provisionales.h"

/// Atomic replacement of a file: every step is checked, and up to the renaming the old file is not touched.
namespace morvane {

namespace fs = std::filesystem;

namespace {

constexpr int enlaces_maximos = 40;
constexpr mode_t permisos_nuevos = 0666, permisos = 07777;

/// The file that `ruta` leads to over symbolic links, which need not exist yet; empty if they lead round in a circle.
fs::path seguir_enlaces(fs::path ruta) {
  for (int i = 0; i < enlaces_maximos; ++i) {
    std::error_code sin_enlace;
    const fs::path siguiente = fs::read_symlink(ruta, sin_enlace);
    if (sin_enlace) return ruta;
    ruta = ruta.parent_path() / siguiente;
  }
  return {};
}

/// What stands at the place of the new file.
struct anterior {
  bool existe = false;
  struct stat que {};
  int error = 0;
};

anterior mirar(const fs::path& ruta) {
  anterior viejo;
  if (::stat(ruta.c_str(), &viejo.que) != 0) {
    if (errno != ENOENT) viejo.error = errno;
    return viejo;
  }
  viejo.existe = true;
  if (!S_ISREG(viejo.que.st_mode)) {
    viejo.error = S_ISDIR(viejo.que.st_mode) ? EISDIR : ENODEV;
  } else if (::faccessat(AT_FDCWD, ruta.c_str(), W_OK, AT_EACCESS) != 0) {
    viejo.error = errno;
  }
  return viejo;
}

/// A new file beside another one, which is removed again unless it has taken that one's place.
class provisional {
 public:
  explicit provisional(const fs::path& definitivo, const anterior& viejo);
  provisional(const provisional&) = delete;
  provisional& operator=(const provisional&) = delete;
  ~provisional();

  int error() const { return error_; }
  int llenar(std::string_view contenido);
  int sustituir(const fs::path& definitivo);

 private:
  int heredar(const anterior& viejo) const;

  fs::path ruta_;
  descriptor fd_;
  int error_ = 0;
};

provisional::provisional(const fs::path& definitivo, const anterior& viejo) {
  const mode_t modo = viejo.existe ? viejo.que.st_mode & permisos_nuevos : permisos_nuevos;
  for (unsigned intento = 0; !fd_.abierto(); ++intento) {
    const fs::path ruta = definitivo.parent_path() / nombre_provisional(::getpid(), intento);
    fd_ = descriptor(::open(ruta.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, modo));
    if (fd_.abierto()) {
      ruta_ = ruta;
    } else if (errno != EEXIST) {
      error_ = errno;
      return;
    }
  }
  error_ = heredar(viejo);
}

provisional::~provisional() {
  if (!ruta_.empty()) ::unlink(ruta_.c_str());
}

/// Takes over owner and permissions. Only root can give a file away: for anyone else the old owner is lost.
int provisional::heredar(const anterior& viejo) const {
  if (!viejo.existe) return 0;
  struct stat nuevo {};
  if (::fstat(fd_.numero(), &nuevo) != 0) return errno;
  const bool ajeno = nuevo.st_uid != viejo.que.st_uid || nuevo.st_gid != viejo.que.st_gid;
  if (ajeno && ::fchown(fd_.numero(), viejo.que.st_uid, viejo.que.st_gid) != 0 && errno != EPERM) return errno;
  return ::fchmod(fd_.numero(), viejo.que.st_mode & permisos) == 0 ? 0 : errno;
}

int provisional::llenar(std::string_view contenido) {
  if (const int error = escribir_todo(fd_.numero(), contenido)) return error;
  if (const int error = sincronizar(fd_.numero())) return error;
  return fd_.cerrar();
}

int provisional::sustituir(const fs::path& definitivo) {
  if (std::rename(ruta_.c_str(), definitivo.c_str()) != 0) return errno;
  ruta_.clear();
  return 0;
}

/// Some file systems keep their folders in order by themselves and refuse to be asked.
int sincronizar_carpeta(int fd) {
  const int error = sincronizar(fd);
  return error == EINVAL || error == ENOTSUP ? 0 : error;
}

int reemplazar(const fs::path& definitivo, std::string_view contenido) {
  const anterior viejo = mirar(definitivo);
  if (viejo.error != 0) return viejo.error;
  const fs::path padre = definitivo.parent_path();
  const descriptor carpeta(::open(padre.empty() ? "." : padre.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!carpeta.abierto()) return errno;
  provisional nuevo(definitivo, viejo);
  if (nuevo.error() != 0) return nuevo.error();
  if (const int error = nuevo.llenar(contenido)) return error;
  if (const int error = nuevo.sustituir(definitivo)) return error;
  barrer_provisionales(carpeta.numero());
  return sincronizar_carpeta(carpeta.numero());
}

}  // namespace

error_archivo archivos::guardar(std::string_view nombre, std::string_view contenido) const {
  const fs::path hallado = encontrar(nombre);
  if (hallado.filename().empty() || hallado.native().find('\0') != std::string::npos) return ENOENT;
  return reemplazar_archivo(hallado, contenido);
}

error_archivo reemplazar_archivo(const fs::path& ruta, std::string_view contenido) {
  const fs::path definitivo = seguir_enlaces(ruta);
  if (definitivo.empty()) return ELOOP;
  return reemplazar(definitivo, contenido);
}

}  // namespace morvane
