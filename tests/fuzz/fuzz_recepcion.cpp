// Noise of any kind against a wait in each mode: it ends, nothing but a good frame counts as a reply, and the port is
// as before.

#include "files/texto.h"
#include "fuzz/mesa.h"
#include "link/corchete.h"
#include "link/envio.h"
#include "link/esperas.h"
#include "serial/tramas.h"

using namespace morvane;
using namespace std::chrono_literals;

namespace {

/// The good frames in a stream of characters, for somebody who misses none of them.
std::vector<std::string> tramas_de(std::string_view flujo) {
  std::vector<std::string> buenas;
  std::string trama;
  for (const char uno : flujo) {
    if (uno == '\x02') {
      trama.clear();
    } else if (uno != '\x03') {
      trama += uno;
    } else if (validar_checksum(trama)) {
      buenas.push_back(trama);
    }
  }
  return buenas;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  if (largo < 3) return 0;
  apoyo::mesa m;
  MSComm serial(m.plat, m.linea);
  enlace e(m.plat, m.ficheros, serial);
  e.valores = {{"57600", "n", "8", "1", "COM1"}, ""};
  corchete c(e);
  apoyo::exigir(c.abierto(), "the port opens");
  // The first three bytes choose mode, wait, pace and answers; the rest comes off the line.
  constexpr int modos[][2] = {{1, 1}, {0, 5}, {15, 15}, {0, 16}, {47, 47}, {0, 47}};
  const int* const modo = modos[datos[0] % 6];
  constexpr respuesta_caja respuestas[] = {vbCancel, vbYes, vbNo, vbNinguna};
  unsigned repetidas = 0;
  for (int i = 0; i < 12; ++i) {
    const respuesta_caja r = i < 4 ? respuestas[datos[1] >> 2 * i & 3] : vbCancel;
    m.plat.responder(r);
    repetidas += r == vbYes;
  }
  const std::string_view flujo(reinterpret_cast<const char*>(datos) + 3, largo - 3);
  m.lejos.poner(flujo, 1ms, std::chrono::milliseconds(datos[2] * datos[2] / 16));

  try {
    std::optional<modo_fijo> fijo;
    if (datos[0] % 6 != 0) fijo.emplace(serial, modo[0], modo[1]);
    enviar_comando(e, "c");
    datos[0] / 6 % 2 != 0 ? esperar_con_vigilancia(e) : esperar_datos(e);
  } catch (const fin_de_programa&) {
    return 0;
  }
  const auto cajas = m.plat.cajas.size();
  apoyo::exigir(cajas <= 4 + 2 * repetidas, "few boxes");
  apoyo::exigir(m.plat.ahora() < 60s + repetidas * 60s, "bounded time");
  apoyo::exigir(e.respuesta_lista || e.datos_listos || e.operacion.interrumpida || e.tiempo_agotado,
                "a wait has an end");
  const auto hay = [tramas = tramas_de(flujo)](auto tal) { return std::ranges::any_of(tramas, tal); };
  const auto reset = [](const std::string& t) { return t[0] != '0' && t.compare(1, 5, "RESET") == 0; };
  const auto estado = [&e](const std::string& t) {
    return t[0] == '0' && valor_hex(t.substr(1, 2)) == e.registro_estado;
  };
  if (repetidas == 0 && !hay(reset) && modo[1] == 1) {
    apoyo::exigir(!e.respuesta_lista || hay([](const auto&) { return true; }), "a reply is a good frame");
    apoyo::exigir(!e.envio.estado_reciente || hay(estado), "a status is a good frame's");
  }
  const bool cortada = e.operacion.interrumpida || e.operacion.sin_respuesta;
  c.terminar();
  apoyo::exigir(m.plat.cajas.size() == cajas + (cortada ? 1 : 0), "one closing box for what was broken off");
  const bool como_siempre = serial.InputLen() == 1 && serial.RThreshold() == 1;
  apoyo::exigir(!serial.PortOpen() && !e.spera_resp.Enabled() && como_siempre, "the port is as before");
  return 0;
}
