#include "link/esperas.h"

#include <atomic>
#include <limits>

#include "link/envio.h"

namespace morvane {

namespace {

using bandera = bool enlace::*;

/// Silence after which an unguarded wait asks, and the same for the command that goes over the whole flash.
constexpr milisegundos silencio_normal{5'000};
constexpr milisegundos silencio_bloque{10'000};
/// How long a wait puts up with characters that are not what it waits for.
constexpr milisegundos charla{15'000};
/// Quiet time after which a line that was left restless counts as at rest, and the same for one on which only an "A"
/// was repeated: what comes later is known by its shape.
constexpr milisegundos reposo{1'500};
constexpr milisegundos reposo_tras_repetir{500};

const caja& pregunta_sin_respuesta() {
  static const caja pregunta{"Atención error de comunicación",
                             "No hay respuesta del Dispositivo, verifique la conexión con el puerto.\r\n"
                             "Desea intentar conectarse?, si pulsa No, se saldrá del sistema",
                             botones::SiNoCancelar, icono::critico};
  return pregunta;
}

/// Noise that filled the whole buffer is no reply, though it was delivered like one.
bool cumplida(const enlace& e, bandera b) {
  return e.*b && (e.respuesta_lista || !e.control_serie.desbordado());
}

bool terminada(const enlace& e, bandera b) {
  return cumplida(e, b) || e.operacion.interrumpida;
}

bool vigilada(const enlace& e) {
  return e.espera != nullptr && e.espera->vigilada;
}

void pasada(enlace& e) {
  e.plat.DoEvents();
  if (e.control_serie.perdido()) {
    e.operacion.perdida = true;
    interrumpir(e, rotura::perdida);
  }
  if (e.peticiones_cierre < 2) return;
  e.tiempo_agotado = true;
  if (!vigilada(e)) interrumpir(e, rotura::cierre);
}

/// Takes all that still comes until `esperadas` replies have come since the wait began, or the line has been quiet for
/// `calma`. A line that does not come to rest breaks the operation off.
void recoger(enlace& e, int esperadas, milisegundos calma) {
  reloj quietud(e.plat, calma);
  reloj limite(e.plat, charla + calma);
  quietud.arrancar();
  limite.arrancar();
  for (std::uint64_t vistos = e.control_serie.recibidos(); !quietud.vencido();) {
    if (e.espera->respuestas >= esperadas || !puede_seguir(e)) return;
    if (limite.vencido()) return interrumpir(e, rotura::ajena);
    pasada(e);
    if (vistos != e.control_serie.recibidos()) quietud.arrancar();
    vistos = e.control_serie.recibidos();
  }
}

/// After a repeated "A", and in the first bracket on a line that was left restless, more replies may be under way than
/// the one that has come. Takes those that come at once; a board that was mended sends no others, and those of a board
/// that is slow are told apart from the replies to later commands.
void asentar_linea(enlace& e) {
  const bool nuevo_comienzo = e.linea_inquieta && e.ultimo_comando == 'A';
  const int esperadas = e.espera->repetidas + 1;
  if (!nuevo_comienzo && esperadas == 1) return;
  if (nuevo_comienzo) {
    // Older ones may come too, so that counting does not tell which is which.
    recoger(e, std::numeric_limits<int>::max(), reposo);
  } else {
    recoger(e, esperadas, reposo_tras_repetir);
  }
  if (e.espera->respuestas < esperadas) e.linea_inquieta = true;
}

void reabrir_chip(enlace& e) {
  modo_caracter(e.control_serie);
  e.control_serie.descartar_entrada();
  enviar_comando(e, "A");
  esperar_con_vigilancia(e);
  e.operacion.cierre_permitido = e.respuesta_lista;
  interrumpir(e, e.tiempo_agotado ? rotura::abandonada : rotura::reanudada);
}

void preguntar_por_silencio(enlace& e, bandera b) {
  MSComm& serial = e.control_serie;
  if (serial.RThreshold() != 1 && serial.trama_entera()) {
    modo_caracter(serial);
    serial.entregar();
    return interrumpir(e, rotura::ajena);
  }
  const respuesta_caja respuesta = preguntar(e, pregunta_sin_respuesta(), {.que = asunto::sin_respuesta});
  if (respuesta == vbNo) terminar_programa(e);
  if (respuesta != vbYes) return interrumpir(e, rotura::abandonada);
  pasada(e);
  if (!terminada(e, b)) reabrir_chip(e);
}

/// Sees to it that a wait does not last for ever.
class vigia {
 public:
  vigia(enlace& e, bandera b)
      : e_(e),
        bandera_(b),
        silencio_(e.plat, e.ultimo_comando == 'C' ? silencio_bloque : silencio_normal),
        charla_(e.plat, charla),
        vistos_(e.control_serie.recibidos()) {
    silencio_.arrancar();
    charla_.arrancar();
    e_.espera = &esta_;
  }
  ~vigia() { e_.espera = la_de_fuera_; }
  vigia(const vigia&) = delete;
  vigia& operator=(const vigia&) = delete;

  /// One pass of the pump, and the question if it is time for it.
  void pasar() {
    pasada(e_);
    if (terminada(e_, bandera_)) return;
    const bool nuevos = vistos_ != e_.control_serie.recibidos();
    vistos_ = e_.control_serie.recibidos();
    if (nuevos) {
      silencio_.arrancar();
      algo_ = true;
    }
    // While the watchdog runs, it does the asking; and who has given up is not asked again.
    if (e_.spera_resp.Enabled() || e_.tiempo_agotado) return;
    const bool callada = !nuevos && silencio_.vencido();
    const bool habladora = algo_ && charla_.vencido();
    if (callada || habladora || e_.control_serie.desbordado()) preguntar_por_silencio(e_, bandera_);
  }

  bool fin() const { return terminada(e_, bandera_); }

 private:
  enlace& e_;
  espera_en_curso esta_;
  espera_en_curso* const la_de_fuera_ = e_.espera;
  const bandera bandera_;
  reloj silencio_, charla_;
  std::uint64_t vistos_;
  bool algo_ = false;
};

/// Keeps the watchdog on guard over the innermost wait.
class guardia {
 public:
  explicit guardia(enlace& e) : e_(e) {
    e_.espera->vigilada = true;
    e_.spera_resp.Enabled(true);
  }
  ~guardia() {
    e_.espera->vigilada = false;
    e_.spera_resp.Enabled(false);
  }
  guardia(const guardia&) = delete;
  guardia& operator=(const guardia&) = delete;

 private:
  enlace& e_;
};

/// The gap between two passes of the waits that are in no hurry.
void contar_en_vacio() {
  for (int i = 0; i < 10; ++i) std::atomic_signal_fence(std::memory_order_seq_cst);
}

void nada() {}

template <class Pausa>
void esperar(enlace& e, bandera b, Pausa pausa) {
  if (e.operacion.interrumpida) return;
  vigia v(e, b);
  v.pasar();
  while (!v.fin()) {
    pausa();
    v.pasar();
    if (e.tiempo_agotado) break;
  }
  if (!v.fin()) e.operacion.sin_respuesta = e.linea_inquieta = true;
  // What a RESET has armed has been answered.
  if (v.fin()) e.spera_resp.Enabled(false);
  if (v.fin()) asentar_linea(e);
}

}  // namespace

void esperar_respuesta(enlace& e) {
  esperar(e, &enlace::respuesta_lista, contar_en_vacio);
}

void esperar_datos(enlace& e) {
  esperar(e, &enlace::datos_listos, contar_en_vacio);
}

void esperar_datos_rapido(enlace& e) {
  esperar(e, &enlace::datos_listos, nada);
}

void esperar_con_vigilancia(enlace& e) {
  if (e.operacion.interrumpida) return;
  e.tiempo_agotado = false;
  vigia v(e, &enlace::respuesta_lista);
  {
    const guardia de_la_espera(e);
    do v.pasar();
    while (!v.fin() && !e.tiempo_agotado);
  }
  if (!v.fin()) e.linea_inquieta = true;
  if (v.fin()) asentar_linea(e);
}

void spera_resp_Timer(enlace& e) {
  const bool algo = e.datos_listos || e.control_serie.recibidos() != e.envio.recibidos_antes;
  if (algo || !e.control_serie.PortOpen()) return e.spera_resp.Enabled(false);
  switch (preguntar(e, pregunta_sin_respuesta(), {.que = asunto::sin_respuesta})) {
    case vbYes:
      // What has come meanwhile stays: it is the answer of a slow board.
      if (e.espera != nullptr) ++e.espera->repetidas;
      enviar_comando(e, "A");
      break;
    case vbNo:
      terminar_programa(e);
    default:
      e.tiempo_agotado = true;
      e.spera_resp.Enabled(false);
      if (!vigilada(e)) interrumpir(e, rotura::abandonada);
      break;
  }
}

bool paso(enlace& e, std::string_view comando) {
  if (!puede_seguir(e)) return false;
  enviar_comando(e, comando);
  esperar_datos(e);
  return puede_seguir(e);
}

bool interrumpir_tras_reset(enlace& e, int antes) {
  if (e.operacion.resets == antes) return false;
  interrumpir(e, rotura::reset);
  e.operacion.cierre_permitido = true;
  return true;
}

void modo_caracter(MSComm& serial) {
  serial.InputLen(1);
  serial.RThreshold(1);
}

modo_fijo::modo_fijo(MSComm& serial, int input_len, int r_threshold) : serial_(serial) {
  serial_.descartar_entrada();
  serial_.InputLen(input_len);
  serial_.RThreshold(r_threshold);
}

modo_fijo::~modo_fijo() {
  modo_caracter(serial_);
}

}  // namespace morvane
