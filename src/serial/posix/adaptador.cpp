#include "serial/adaptador.h"

#include "renglon.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// How far above a line's own directory its adapter may tell its name.
constexpr int niveles = 5;

}  // namespace

std::string adaptador::nombre() const {
  return producto.empty() || fabricante.empty() ? producto : producto + " (" + fabricante + ")";
}

adaptador adaptador_de(const fs::path& dispositivo, const fs::path& raiz) {
  std::error_code error;
  fs::path donde = fs::canonical(raiz / "sys/class/tty" / dispositivo.filename() / "device", error);
  for (int i = 0; i < niveles && !error; ++i, donde = donde.parent_path()) {
    adaptador a{renglon(donde / "manufacturer"), renglon(donde / "product"), renglon(donde / "serial")};
    if (!a.producto.empty()) return a;
  }
  return {};
}

}  // namespace morvane
