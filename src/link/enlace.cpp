#include "link/enlace.h"

#include <cstdlib>

#include "link/esperas.h"
#include "link/recepcion.h"

namespace morvane {

namespace {

constexpr milisegundos intervalo_vigilancia{1000};

}  // namespace

enlace::enlace(plataforma& plataforma_, archivos& ficheros_, MSComm& serial)
    : plat(plataforma_), ficheros(ficheros_), control_serie(serial), spera_resp(plataforma_, intervalo_vigilancia) {
  control_serie.OnComm = [this] { serial_OnComm(*this); };
  spera_resp.OnTimer = [this] { spera_resp_Timer(*this); };
}

respuesta_caja preguntar(enlace& e, const caja& mensaje, const hechos& de_que) {
  const respuesta_caja respuesta = e.plat.MsgBox(mensaje, e.explicar ? e.explicar(de_que) : std::string());
  e.resultado_msgbox = std::to_string(respuesta);
  return respuesta;
}

void terminar_programa(enlace& e) {
  e.control_serie.descartar_salida();
  e.plat.terminar();
  std::abort();  // Not reached; the compiler does not see that a virtual function never returns.
}

}  // namespace morvane
