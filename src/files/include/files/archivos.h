#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace morvane {

/// A text file held open for writing. Each line goes to the host at once, so that a crash loses none. While it is open
/// no other program of this kind can open it for writing. Closed by its destructor. Not open after construction or
/// after being moved from; then `linea` does nothing.
class fichero {
 public:
  fichero() = default;
  /// Takes over what the host has opened: a file descriptor, or a handle of Windows as a number.
  explicit fichero(std::intptr_t abierto) : descriptor_(abierto) {}
  fichero(fichero&& otro) noexcept;
  fichero& operator=(fichero&& otro) noexcept;
  ~fichero();

  bool abierto() const { return descriptor_ != cerrado; }
  /// Writes `texto` and CR LF at the end of the file. After False (no room, input/output error) none of it stands
  /// there.
  bool linea(std::string_view texto);
  void cerrar();

 private:
  static constexpr std::intptr_t cerrado = -1;

  std::intptr_t descriptor_ = cerrado;
  /// The line being written; kept to spare an allocation for each.
  std::string renglon_;
};

/// Outcome of a file operation: 0, or the number that <cerrno> has for the error, on every host.
using error_archivo = int;

/// The files of the system. A name of the system's own uses backslashes: one that begins with the application's
/// directory lies there, and a drive such as C:\ is the folder `unidades/c/` there, unless the host has drives itself.
/// Every function below takes such a name, in UTF-8. A name is found whatever the case of its last part. The contents
/// are bytes, never translated.
class archivos {
 public:
  enum class modo { leer, escribir, anadir };

  /// `directorio`: the application's directory, in the host's form, which must exist.
  explicit archivos(std::filesystem::path directorio);

  /// The application's directory in the system's form, with a closing backslash.
  const std::string& ruta_aplicacion() const { return ruta_aplicacion_; }
  const std::filesystem::path& directorio() const { return directorio_; }
  /// The host's path of a system name. A name outside of both roots is taken as the host's own.
  std::filesystem::path anfitrion(std::string_view nombre) const;

  /// Directory search: the last part of `nombre` as it stands on the disk, or an empty text if there is no such file.
  std::string Dir(std::string_view nombre) const;
  /// The whole of a file of up to `limite` bytes; nothing if it is missing, no regular file, unreadable or larger.
  std::optional<std::string> leer(std::string_view nombre, std::size_t limite = 1 << 20) const;
  /// Replaces the file by `contenido`: after 0 it holds the new content, after an error the old one, whole. A crash in
  /// the middle leaves one or the other. Only where the very last step fails, bringing the folder to the disk, does the
  /// new content stand there after an error. What crashed programs have left on the way is cleared off the folder.
  error_archivo guardar(std::string_view nombre, std::string_view contenido) const;
  /// Adds `texto` behind what the file holds, in one write, on a line of its own; a missing file is made. After an
  /// error the file is as long as it was.
  error_archivo anadir_linea(std::string_view nombre, std::string_view texto) const;
  /// Runs `trabajo`, which reads, changes and writes files in the folder of `nombre`, while no other program of this
  /// kind does so. Waits for `paciencia` at most: the turn of a program that hangs is not respected.
  void por_turno(std::string_view nombre, const std::function<void()>& trabajo,
                 std::chrono::milliseconds paciencia = std::chrono::seconds(2)) const;
  /// Opens a file for writing; `escribir` empties or creates it, `anadir` and `leer` need one that exists. EBUSY if
  /// another program holds it open for writing. Writing stays in the folder of `nombre`: ELOOP for a symbolic link (of
  /// POSIX), EMLINK for a file that has other names too. What is refused is left alone.
  error_archivo abrir(std::string_view nombre, modo como, fichero& destino) const;

 private:
  std::filesystem::path encontrar(std::string_view nombre) const;

  std::filesystem::path directorio_;
  std::string ruta_aplicacion_;
};

}  // namespace morvane
