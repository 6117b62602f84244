#pragma once

#include <filesystem>
#include <string_view>
#include <utility>

namespace morvane {

/// Owner of a file descriptor, or of none (-1).
class descriptor {
 public:
  descriptor() = default;
  explicit descriptor(int fd) : fd_(fd) {}
  descriptor(descriptor&& otro) noexcept : fd_(otro.soltar()) {}
  descriptor& operator=(descriptor&& otro) noexcept;
  ~descriptor() { cerrar(); }

  int numero() const { return fd_; }
  bool abierto() const { return fd_ >= 0; }
  int soltar() { return std::exchange(fd_, -1); }
  /// 0, or the number of an error that was reported only now. Closed in any case.
  int cerrar();

 private:
  int fd_ = -1;
};

/// What opening gave: a descriptor and 0, or none and the number of the error.
struct apertura {
  descriptor fd;
  int error = 0;
};

/// Opens a regular file with `banderas` as for open(2), never anything else: a folder gives EISDIR, a pipe, a device or
/// a socket ENODEV, at once and without being touched. A name with a NUL in it names no file.
apertura abrir_normal(const std::filesystem::path& ruta, int banderas);

/// Takes the lock of an open file or folder, at once or not at all. False if another program of this kind has it; where
/// the file system knows no locks, everybody has them.
bool bloquear(int fd);

/// Writes all of `datos`. 0, or the number of the error, after which a part may have been written.
int escribir_todo(int fd, std::string_view datos);

/// Waits until all that was written to a file or folder is on the disk. 0, or the number of the error: EINVAL or
/// ENOTSUP where the file system keeps it so by itself.
int sincronizar(int fd);

/// As read(2), taking up again when a signal comes between.
long leer_bytes(int fd, char* destino, std::size_t cuantos);

}  // namespace morvane
