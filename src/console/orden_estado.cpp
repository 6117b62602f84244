#include "files/texto.h"
#include "ordenes.h"

namespace morvane::console {

namespace {

struct bit_de_estado {
  bool (job::estado_chip::*puesto)() const;
  std::string_view clave, si, no;
};

constexpr std::array bits = {
    bit_de_estado{&job::estado_chip::ocupado, "ocupado", "ocupado", "desocupado"},
    bit_de_estado{&job::estado_chip::permiso, "permiso", "con permiso de escritura", "sin permiso de escritura"},
    bit_de_estado{&job::estado_chip::configurado, "configurado", "configurado", "sin configurar"},
    bit_de_estado{&job::estado_chip::borrado_fallido, "borrado_fallido", "la última escritura ha fallado", ""},
    bit_de_estado{&job::estado_chip::protegido, "protegido", "protegido contra la lectura", "sin proteger"},
};

std::string en_palabras(const job::estado_chip& e) {
  std::string t = "La placa responde; estado " + hex(e.valor, 2) + ": ";
  std::string_view separa;
  for (const bit_de_estado& b : bits) {
    const std::string_view que = (e.*b.puesto)() ? b.si : b.no;
    if (que.empty()) continue;
    t.append(separa).append(que);
    separa = ", ";
  }
  return t + ".";
}

}  // namespace

cierre hacer_estado(const llamada& ll) {
  const trabajo_hecho t = con_placa(ll, [](const job::puesto& p) { return job::ver_estado(p); });
  cierre c = cierre_de(ll, t, t.r.fin.bien() && t.r.estado ? en_palabras(*t.r.estado) : "");
  if (t.r.estado) {
    c.datos["estado"] = t.r.estado->valor;
    for (const bit_de_estado& b : bits) c.datos[std::string(b.clave)] = ((*t.r.estado).*b.puesto)();
  }
  return c;
}

}  // namespace morvane::console
