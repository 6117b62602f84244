#include <algorithm>

#include "files/texto.h"
#include "frases.h"
#include "frases/frases.h"
#include "ordenes.h"
#include "platform/rutas.h"
#include "serial/adaptador.h"
#include "serial/puertos.h"

namespace morvane::console {

namespace {

constexpr int ultimo_puerto = 9;

json en_json(const descripcion_puerto& p) {
  json j = {{"puerto", "COM" + std::to_string(p.numero)}, {"dispositivo", texto_de(p.dispositivo)}};
  if (!p.falta) j["adaptador"] = adaptador_en_json(adaptador_de(p.dispositivo));
  j["placa_simulada"] = p.placa_simulada;
  j["quien"] = p.quien.value_or("");
  const auto& causa = p.falta ? p.falta : p.cerrado;
  j["se_puede_abrir"] = !causa && p.quien.value_or("").empty();
  j["falta"] = causa ? frase_sin_puerto(*causa) : "";
  return j;
}

std::string en_palabras(const descripcion_puerto& p) {
  std::string t = frase(p), junto;
  const std::string serie = p.falta ? "" : adaptador_de(p.dispositivo).serie;
  for (const char c : t) junto += c == '\n' ? std::string("; ") : std::string(1, c);
  return serie.empty() ? junto : junto + "; número de serie " + serie;
}

/// Numbers without a device behind them say nothing, but for those that somebody has linked.
std::vector<descripcion_puerto> puertos_de(const std::filesystem::path& carpeta) {
  std::vector<descripcion_puerto> todos;
  for (int n = 0; n <= ultimo_puerto; ++n) {
    descripcion_puerto p = describir_puerto(carpeta, n);
    if (!p.falta || tiene_enlace(carpeta, n)) todos.push_back(std::move(p));
  }
  return todos;
}

/// Devices that no number leads to.
std::vector<aparato> sueltos(const std::vector<descripcion_puerto>& puertos) {
  std::vector<aparato> todos = aparatos();
  std::erase_if(todos, [&](const aparato& a) {
    return std::ranges::any_of(puertos, [&](const auto& p) {
      // Where ports are the system's own they are what leads to a device, and not the device.
      return p.dispositivo == a.dispositivo || a.dispositivo.filename() == "COM" + std::to_string(p.numero);
    });
  });
  return todos;
}

}  // namespace

cierre hacer_puertos(const llamada& ll) {
  const auto puertos = puertos_de(carpeta_de(ll));
  cierre c;
  json& lista = c.datos["puertos"] = json::array();
  for (const descripcion_puerto& p : puertos) {
    lista.push_back(en_json(p));
    c.detalle.push_back(en_palabras(p));
  }
  for (const aparato& a : sueltos(puertos)) {
    const std::string nombre = texto_de(a.dispositivo);
    lista.push_back({{"puerto", nombre}, {"dispositivo", nombre}, {"estable", texto_de(a.estable)}});
    lista.back()["adaptador"] = adaptador_en_json(adaptador_de(a.dispositivo));
    c.detalle.push_back(nombre + (a.nombre.empty() ? "" : "; " + a.nombre) +
                        (a.conductor.empty() ? "" : "; conductor " + a.conductor) + "; ningún COM lleva a él");
  }
  const std::size_t n = c.detalle.size();
  c.texto = n == 0 ? "No hay ningún puerto." : n == 1 ? "Hay 1 puerto." : "Hay " + std::to_string(n) + " puertos.";
  ofrecer_lo_que_falta(c);
  return c;
}

}  // namespace morvane::console
