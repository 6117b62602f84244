#pragma once

#include <string_view>

#include "link/enlace.h"

/// The waits. Each pumps events until its flag is up or the user has given up, so any handler of the program may run
/// inside. None looks at the user's stop. While the operation is broken off they return at once.
///
/// No wait lasts for ever. After 5 s of silence (10 s for "C"), after 15 s of characters that are not what it waits
/// for, and when a buffer ran full of them, the user is asked whether to go on, as by the watchdog. Yes goes on if the
/// reply has come meanwhile; otherwise the chip is opened anew and the operation is broken off, as by Cancel. No ends
/// the program. In a fixed-length mode a whole frame that is too short for the mode is shown to the reception instead
/// of asking. A device that vanishes breaks the operation off at once.
namespace morvane {

/// Waits for a good frame under the watchdog: after a second without a character the user is asked, and again each
/// second after Yes, which sends "A" whatever the wait was for. Cancel leaves `tiempo_agotado` up.
void esperar_con_vigilancia(enlace& e);

/// Waits for a good frame, which then stands in `respuesta`.
void esperar_respuesta(enlace& e);

/// Waits until something has come, without a look at what it is: in the character mode whatever stood in the buffer up
/// to its last ETX, so that a reply is whole; in a fixed-length mode as many characters as that mode has.
void esperar_datos(enlace& e);

/// The same, pumping back to back.
void esperar_datos_rapido(enlace& e);

/// The tick of the watchdog.
void spera_resp_Timer(enlace& e);

/// One exchange in the character mode: sends `comando` and waits with `esperar_datos`. False if the flow must not go
/// on: the operation is broken off, or the program is asked to close. Then nothing may be judged or shown.
bool paso(enlace& e, std::string_view comando);

/// Breaks the operation off if a RESET has come since `antes`, an earlier value of `operacion.resets`: the chip has
/// started anew, and what follows says nothing of what was under way. Closing it with "D" stays allowed.
bool interrumpir_tras_reset(enlace& e, int antes);

/// Holds the reception in a fixed-length mode and puts the character mode back on every way out. What had come in
/// before is dropped, since every character counts in such a mode.
class modo_fijo {
 public:
  modo_fijo(MSComm& serial, int input_len, int r_threshold);
  ~modo_fijo();
  modo_fijo(const modo_fijo&) = delete;
  modo_fijo& operator=(const modo_fijo&) = delete;

 private:
  MSComm& serial_;
};

/// Puts the reception in the character mode.
void modo_caracter(MSComm& serial);

}  // namespace morvane
