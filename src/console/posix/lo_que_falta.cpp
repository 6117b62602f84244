#include <algorithm>
#include <sstream>

#include "ordenes.h"
#include "regla_udev.h"

namespace morvane::console {

namespace {

bool es_usb(const json& puerto) {
  return puerto.contains("adaptador") && !puerto["adaptador"]["identidad"].get_ref<const std::string&>().empty();
}

}  // namespace

// To those who have an adapter and not the rule for it. The rule can be taken from the lines as they stand.
void ofrecer_lo_que_falta(cierre& c) {
  const bool instalada = regla_instalada();
  c.datos["regla_udev"] = {{"instalada", instalada}, {"texto", texto_de_la_regla()}};
  if (instalada || std::ranges::none_of(c.datos["puertos"], es_usb)) return;
  c.detalle.emplace_back(
      "Para abrirlos sin más permisos y sin esperas falta esta regla, en "
      "/etc/udev/rules.d/70-morvane.rules:");
  std::istringstream renglones{std::string(texto_de_la_regla())};
  for (std::string uno; std::getline(renglones, uno);) c.detalle.push_back("    " + uno);
}

}  // namespace morvane::console
