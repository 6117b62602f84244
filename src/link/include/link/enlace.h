#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "files/ajustes.h"
#include "files/archivos.h"
#include "link/hechos.h"
#include "platform/plataforma.h"
#include "serial/causa_puerto.h"
#include "serial/mscomm.h"

namespace morvane {

/// The settings of "SETTINGS.TXT", as texts. Empty until `leer_ajustes` has filled them.
struct ajustes : campos_ajustes {
  /// The application's directory with a closing backslash.
  std::string ruta_aplicacion;
};

/// How the running operation has been cut short. All of it starts anew when a command opens the port.
struct operacion_en_curso {
  /// The operation is broken off: nothing is sent any more, waits return at once, nothing is judged.
  bool interrumpida = false;
  /// Why, as long as it is.
  rotura por = rotura::ninguna;
  /// A wait was given up without a reply of its own, so nothing may be said of the chip.
  bool sin_respuesta = false;
  /// The device has vanished; what comes back under its name may be another one.
  bool perdida = false;
  /// "A" was answered after the operation was broken off, so that the chip can still be closed with "D".
  bool cierre_permitido = false;
  /// Boxes and RESET signals that the reception has shown in this operation.
  int cajas_recepcion = 0;
  int resets = 0;
};

/// What has come for the command sent last. A new send begins a new one.
struct envio_en_curso {
  /// An STX has come.
  bool trama_empezada = false;
  /// A status reply, and not 0xFF, has come, so the bits are of now.
  bool estado_reciente = false;
  /// Characters that had been received when the command went out.
  std::uint64_t recibidos_antes = 0;
};

/// A wait that is running.
struct espera_en_curso {
  /// The watchdog is on guard.
  bool vigilada = false;
  /// Times that it has sent "A" again, and good frames that have come since it began.
  int repetidas = 0, respuestas = 0;
};

/// What counts up, or is kept, over the whole run, for whoever looks from time to time.
struct cuentas_de_linea {
  /// Replies that have come whole, and characters that were sent.
  std::uint64_t respuestas = 0, enviados = 0;
  /// Times that the port was opened, and that it could not be; and which one it was the last time.
  unsigned aperturas = 0, negadas = 0;
  std::string puerto{};
};

/// State of the link to the bridge: what the reception leaves for the flows, the watchdog, the settings, and the
/// platform that it talks through. One thread; the fields change only inside a pass of the event pump or in the
/// routines of this room.
struct enlace {
  /// All three must outlive it. Takes over the events of `serial` and of its own timer.
  enlace(plataforma& plat, archivos& ficheros, MSComm& serial);
  enlace(const enlace&) = delete;
  enlace& operator=(const enlace&) = delete;

  plataforma& plat;
  archivos& ficheros;
  MSComm& control_serie;

  /// First character of the command sent last.
  char ultimo_comando = '\0';
  /// A well-formed reply frame has arrived since the last send.
  bool respuesta_lista = false;
  /// Something has been received since the last send.
  bool datos_listos = false;
  /// The user has abandoned a wait. Cleared by the start of `esperar_con_vigilancia` alone.
  bool tiempo_agotado = false;

  /// What the last read of `Input` gave.
  std::string entrada_serie;
  /// Character mode: all that has come since the last STX. Fixed-length modes: the slice that belongs to the mode.
  std::string respuesta;
  /// First character of the last frame whose checksum was good; '\0' before any.
  char codigo_respuesta = '\0';
  /// Status byte of the last status reply, and its bits, each 0 or 1.
  std::uint8_t registro_estado = 0;
  std::uint8_t bit_wip = 0, bit_wen = 0, bit_config = 0, bit_wef = 0, bit_fs = 0;
  /// Answer of the last message box as digits: "1" OK, "2" Cancel, "6" Yes, "7" No.
  std::string resultado_msgbox;

  /// The watchdog, 1000 ms.
  Timer spera_resp;

  ajustes valores;
  /// Since the last send.
  envio_en_curso envio;
  /// The innermost wait; null when none is running.
  espera_en_curso* espera = nullptr;
  /// Since a command has opened the port.
  operacion_en_curso operacion;
  /// Times the user has asked to close the program while a command runs. From 1 on no new group, block or poll starts.
  int peticiones_cierre = 0;
  /// Replies to what was sent before may still come: it was repeated or given up, or noise was taken for replies to it.
  /// While it is up, an "A" lets the line come to rest, and a reply without data does not answer a status or a reading.
  /// Down again once one of these has been answered.
  bool linea_inquieta = false;
  cuentas_de_linea cuentas;

  /// Why the port could not be found or opened last.
  std::optional<causa_puerto> fallo_de_puerto;
  /// Puts into words what a box is about; boxes have no explanation while it is not set.
  std::function<std::string(const hechos&)> explicar;
};

/// Shows a box and notes the answer in `resultado_msgbox`. What `de_que` says stands under its text.
respuesta_caja preguntar(enlace& e, const caja& mensaje, const hechos& de_que = {});

/// True while the flow of the running command may start something new: neither broken off nor asked to close.
inline bool puede_seguir(const enlace& e) {
  return !e.operacion.interrumpida && e.peticiones_cierre == 0;
}

/// Breaks the running operation off. Replies to it may still be under way. The first reason counts.
inline void interrumpir(enlace& e, rotura por) {
  if (!e.operacion.interrumpida) e.operacion.por = por;
  e.operacion.interrumpida = true;
  e.linea_inquieta = true;
}

/// Ends the program at once; unsent output is dropped first.
[[noreturn]] void terminar_programa(enlace& e);

}  // namespace morvane
