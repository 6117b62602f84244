#include "serial/adaptador.h"

#include <charconv>

#include "renglon.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// How far above a line's own directory its adapter may be.
constexpr int niveles = 5;

/// As the maker wrote it, but for the blanks around it.
std::string dicho(const fs::path& fichero) {
  const std::string texto = renglon(fichero);
  const auto primero = texto.find_first_not_of(" \t"), ultimo = texto.find_last_not_of(" \t");
  return primero == std::string::npos ? "" : texto.substr(primero, ultimo - primero + 1);
}

std::optional<int> en_milisegundos(const std::string& texto) {
  int n = 0;
  const auto [fin, error] = std::from_chars(texto.data(), texto.data() + texto.size(), n);
  return error == std::errc{} && n >= 0 ? std::optional(n) : std::nullopt;
}

/// Beyond the adapter itself stands the hub that it is plugged into, which has a name of its own.
bool es_el_adaptador(const fs::path& donde) {
  std::error_code error;
  return fs::exists(donde / "idVendor", error) || fs::exists(donde / "product", error);
}

/// The driver that is bound there; empty for the layer that the kernel puts between a circuit and its lines.
std::string conductor_en(const fs::path& donde) {
  std::error_code error;
  const fs::path cual = fs::read_symlink(donde / "driver", error);
  return cual.string().find("bus/serial-base/") == std::string::npos ? cual.filename().string() : "";
}

void identificar(adaptador& a, const fs::path& donde) {
  a.fabricante = dicho(donde / "manufacturer");
  a.producto = dicho(donde / "product");
  a.serie = dicho(donde / "serial");
  const std::string vendedor = dicho(donde / "idVendor"), modelo = dicho(donde / "idProduct");
  if (!vendedor.empty() && !modelo.empty()) a.identidad = vendedor + ":" + modelo;
}

}  // namespace

adaptador adaptador_de(const fs::path& dispositivo, const fs::path& raiz) {
  std::error_code error;
  fs::path donde = fs::canonical(raiz / "sys/class/tty" / dispositivo.filename() / "device", error);
  if (error) return {};
  adaptador a;
  a.retencion_ms = en_milisegundos(renglon(donde / "latency_timer"));
  for (int i = 0; i < niveles; ++i, donde = donde.parent_path()) {
    if (es_el_adaptador(donde)) {
      identificar(a, donde);
      break;
    }
    if (a.conductor.empty()) a.conductor = conductor_en(donde);
  }
  return a;
}

}  // namespace morvane
