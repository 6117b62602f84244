#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>

#include "ocupantes_tty.h"
#include "platform/puertos.h"
#include "puertos_tty.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// How far above a line's own directory its adapter may tell its name.
constexpr int niveles = 5;

std::string renglon(const fs::path& fichero) {
  std::ifstream entrada(fichero);
  std::string texto;
  std::getline(entrada, texto);
  return texto;
}

std::string nombre_del_aparato(const fs::path& linea) {
  std::error_code error;
  fs::path donde = fs::canonical(linea / "device", error);
  for (int i = 0; i < niveles && !error; ++i, donde = donde.parent_path()) {
    const std::string producto = renglon(donde / "product"), fabricante = renglon(donde / "manufacturer");
    if (producto.empty()) continue;
    return fabricante.empty() ? producto : std::string(producto).append(" (").append(fabricante).append(")");
  }
  return {};
}

/// The kernel keeps lines ready behind which there is no circuit.
bool hay_circuito(const fs::path& linea) {
  return renglon(linea / "type") != "0";
}

fs::path ruta_estable(const fs::path& raiz, const fs::path& dispositivo) {
  std::error_code error;
  for (fs::directory_iterator uno(raiz / "dev/serial/by-id", error), fin; !error && uno != fin; uno.increment(error)) {
    std::error_code suelto;
    if (fs::equivalent(uno->path(), dispositivo, suelto)) return uno->path();
  }
  return dispositivo;
}

std::string lo_que_hay(const fs::path& ruta, const std::vector<std::string>& programas) {
  const auto placa = [](const std::string& p) { return p.starts_with("puente "); };
  if (std::ranges::any_of(programas, placa)) return "\nPlaca simulada";
  const std::string nombre = nombre_del_aparato("/sys/class/tty" / ruta.filename());
  return nombre.empty() ? "" : "\n" + nombre;
}

std::string estado(const fs::path& ruta, std::vector<std::string> programas) {
  if (::access(ruta.c_str(), R_OK | W_OK) != 0) return "\nNo se puede abrir: " + explicar_apertura(ruta, errno);
  std::erase_if(programas, [](const std::string& p) { return p.starts_with("puente "); });
  if (programas.empty()) return "\nLibre";
  return "\nLo tiene abierto " + programas.front();
}

std::string fracaso(const fs::path& enlace, const std::error_code& error) {
  return "no se puede cambiar el enlace " + enlace.native() + ": " + error.message();
}

/// Only links are ever replaced or taken away.
std::string comprobar_enlace(const fs::path& enlace) {
  std::error_code error;
  const fs::file_status que = fs::symlink_status(enlace, error);
  if (!fs::exists(que) || fs::is_symlink(que)) return {};
  return enlace.native() + " existe y no es un enlace";
}

}  // namespace

std::vector<aparato> aparatos(const fs::path& raiz) {
  std::vector<aparato> todos;
  std::error_code error;
  for (fs::directory_iterator uno(raiz / "sys/class/tty", error), fin; !error && uno != fin; uno.increment(error)) {
    std::error_code falta;
    const fs::path linea = uno->path(), dispositivo = raiz / "dev" / linea.filename();
    const bool hay = fs::exists(linea / "device", falta) && fs::exists(dispositivo, falta) && hay_circuito(linea);
    if (hay) todos.push_back({dispositivo, ruta_estable(raiz, dispositivo), nombre_del_aparato(linea)});
  }
  std::ranges::sort(todos, {}, &aparato::dispositivo);
  return todos;
}

std::string describir_puerto(const fs::path& directorio, int numero) {
  const std::string nombre = "COM" + std::to_string(numero) + ": ";
  const fs::path ruta = dispositivo_puerto(directorio, numero);
  if (ruta.empty()) return nombre + explicar_falta(directorio, numero);
  const std::vector<std::string> programas = programas_con(ruta);
  return nombre + ruta.native() + lo_que_hay(ruta, programas) + estado(ruta, programas);
}

bool tiene_enlace(const fs::path& directorio, int numero) {
  std::error_code error;
  return fs::is_symlink(enlace_de(directorio, numero), error);
}

std::string enlazar_puerto(const fs::path& directorio, int numero, const fs::path& destino) {
  const fs::path enlace = enlace_de(directorio, numero);
  if (std::string falta = comprobar_enlace(enlace); !falta.empty()) return falta;
  std::error_code error;
  fs::create_directories(enlace.parent_path(), error);
  fs::path provisional = enlace;
  provisional += "." + std::to_string(::getpid()) + ".tmp";
  fs::create_symlink(destino, provisional, error);
  if (error) return fracaso(enlace, error);
  fs::rename(provisional, enlace, error);
  if (!error) return {};
  std::error_code resto;
  fs::remove(provisional, resto);
  return fracaso(enlace, error);
}

std::string quitar_enlace(const fs::path& directorio, int numero) {
  const fs::path enlace = enlace_de(directorio, numero);
  if (std::string falta = comprobar_enlace(enlace); !falta.empty()) return falta;
  std::error_code error;
  fs::remove(enlace, error);
  return error ? fracaso(enlace, error) : std::string();
}

}  // namespace morvane
