// Noise of any kind against a wait in each mode: it ends, and nothing but a good frame counts as a reply.

#include <cstdlib>

#include "apoyo/carpeta.h"
#include "apoyo/guion.h"
#include "link/enlace.h"
#include "link/esperas.h"
#include "link/puerto.h"
#include "link/tramas.h"
#include "platform/gemelo.h"

using namespace morvane;
using namespace std::chrono_literals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  if (largo < 2) return 0;
  static apoyo::carpeta dir;
  gemelo plat;
  apoyo::guion lejos;
  plat.vigilar(lejos);
  transporte_memoria linea(plat, lejos);
  MSComm serial(plat, linea);
  archivos propios(dir.ruta());
  enlace e(plat, propios, serial);
  e.valores = {"57600", "n", "8", "1", "COM1", ""};
  if (!abrir_puerto(e)) std::abort();
  // The first two bytes choose mode, pace and answers; the rest comes off the line.
  constexpr int modos[][2] = {{1, 1}, {0, 5}, {15, 15}, {0, 16}, {47, 47}, {0, 47}};
  const int* modo = modos[datos[0] % 6];
  serial.InputLen(modo[0]);
  serial.RThreshold(modo[1]);
  for (int i = 0; i < 8; ++i) plat.responder((datos[1] >> i & 1) != 0 ? vbYes : vbCancel);
  for (int i = 0; i < 40; ++i) plat.responder(vbCancel);
  lejos.poner({reinterpret_cast<const char*>(datos) + 2, largo - 2}, 1ms, std::chrono::milliseconds(datos[0] / 6 * 40));
  enviar_comando(e, "c");
  datos[1] % 2 == 0 ? esperar_datos(e) : esperar_con_vigilancia(e);
  if (plat.cajas.size() > 48 || e.respuesta.size() > 4096) std::abort();
  if (e.respuesta_lista && !validar_checksum(e.respuesta) && modo[1] == 1 && !e.corte.interrumpida) {
    // Characters behind the frame may have been added, but a frame there was.
    if (e.codigo_respuesta == '\0') std::abort();
  }
  cerrar_puerto(e);
  return 0;
}
