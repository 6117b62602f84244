#include "serial/puertos.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "ocupantes_tty.h"
#include "puertos_tty.h"
#include "renglon.h"
#include "serial/adaptador.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// The kernel keeps lines ready behind which there is no circuit.
bool hay_circuito(const fs::path& linea) {
  return renglon(linea / "type") != "0";
}

/// The standard library compares no devices.
bool son_el_mismo(const fs::path& uno, const fs::path& otro) {
  struct stat a {
  }, b{};
  return ::stat(uno.c_str(), &a) == 0 && ::stat(otro.c_str(), &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

fs::path ruta_estable(const fs::path& raiz, const fs::path& dispositivo) {
  std::error_code error;
  for (fs::directory_iterator uno(raiz / "dev/serial/by-id", error), fin; !error && uno != fin; uno.increment(error)) {
    if (son_el_mismo(uno->path(), dispositivo)) return uno->path();
  }
  return dispositivo;
}

bool es_placa(const std::string& programa) {
  return programa.starts_with("puente ");
}

std::optional<causa_puerto> fracaso(int numero, const fs::path& enlace, const std::error_code& error) {
  return causa_puerto{
      .cual = causa_puerto::clase::enlace_fijo, .puerto = numero, .enlace = enlace, .error = error.value()};
}

/// Only links are ever replaced or taken away.
std::optional<causa_puerto> comprobar_enlace(int numero, const fs::path& enlace) {
  std::error_code error;
  const fs::file_status que = fs::symlink_status(enlace, error);
  if (!fs::exists(que) || fs::is_symlink(que)) return std::nullopt;
  return causa_puerto{.cual = causa_puerto::clase::no_es_enlace, .puerto = numero, .enlace = enlace};
}

}  // namespace

std::vector<aparato> aparatos(const fs::path& raiz) {
  std::vector<aparato> todos;
  std::error_code error;
  for (fs::directory_iterator uno(raiz / "sys/class/tty", error), fin; !error && uno != fin; uno.increment(error)) {
    std::error_code falta;
    const fs::path linea = uno->path(), dispositivo = raiz / "dev" / linea.filename();
    const bool hay = fs::exists(linea / "device", falta) && fs::exists(dispositivo, falta) && hay_circuito(linea);
    if (!hay) continue;
    const adaptador cual = adaptador_de(dispositivo, raiz);
    todos.push_back({dispositivo, ruta_estable(raiz, dispositivo), cual.nombre(), cual.conductor});
  }
  std::ranges::sort(todos, {}, &aparato::dispositivo);
  return todos;
}

descripcion_puerto describir_puerto(const fs::path& directorio, int numero) {
  descripcion_puerto puerto{.numero = numero, .dispositivo = dispositivo_puerto(directorio, numero)};
  const fs::path& ruta = puerto.dispositivo;
  if (ruta.empty()) {
    puerto.falta = causa_de_falta(directorio, numero);
    return puerto;
  }
  std::vector<std::string> programas = programas_con(ruta);
  puerto.placa_simulada = std::erase_if(programas, es_placa) > 0;
  const adaptador cual = adaptador_de(ruta);
  puerto.nombre = cual.nombre();
  puerto.conductor = cual.conductor;
  puerto.quien = programas.empty() ? "" : programas.front();
  if (::access(ruta.c_str(), R_OK | W_OK) != 0) puerto.cerrado = causa_de_apertura(ruta, errno);
  return puerto;
}

bool tiene_enlace(const fs::path& directorio, int numero) {
  std::error_code error;
  return fs::is_symlink(enlace_de(directorio, numero), error);
}

std::optional<causa_puerto> enlazar_puerto(const fs::path& directorio, int numero, const fs::path& destino) {
  const fs::path enlace = enlace_de(directorio, numero);
  if (auto falta = comprobar_enlace(numero, enlace)) return falta;
  std::error_code error;
  fs::create_directories(enlace.parent_path(), error);
  fs::path provisional = enlace;
  provisional += "." + std::to_string(::getpid()) + ".tmp";
  fs::create_symlink(destino, provisional, error);
  if (error) return fracaso(numero, enlace, error);
  fs::rename(provisional, enlace, error);
  if (!error) return std::nullopt;
  std::error_code resto;
  fs::remove(provisional, resto);
  return fracaso(numero, enlace, error);
}

std::optional<causa_puerto> quitar_enlace(const fs::path& directorio, int numero) {
  const fs::path enlace = enlace_de(directorio, numero);
  if (auto falta = comprobar_enlace(numero, enlace)) return falta;
  std::error_code error;
  fs::remove(enlace, error);
  return error ? fracaso(numero, enlace, error) : std::nullopt;
}

}  // namespace morvane
