#pragma once

#include "shell/frm_principal.h"

/// The commands of the user on the chip. Each is a bracket of its own: open the port, "A", the work, "D", close the
/// port. Each reports to the user itself and leaves the port closed and the reception in the character mode.
namespace morvane {

/// True if a program is loaded; otherwise the user is told to load one.
bool hay_programa(frm_principal& f);

/// Erase the whole flash; erase it and write the image.
void men_borrar_t_Click(frm_principal& f);
void men_prog_t_Click(frm_principal& f);

/// The three verifications: is the flash erased, does it hold the image by the sums of its blocks, and, in an entry
/// that is never shown, byte by byte.
void men_verific_t_Click(frm_principal& f);
void mn_verifi_t_f_Click(frm_principal& f);
void men_verifi_t_Click(frm_principal& f);

/// Write the protection word, from an entry that is never shown; start the processor anew.
void men_proteger_f_Click(frm_principal& f);
void men_reset_Click(frm_principal& f);

/// Reads what this run of the program has programmed; with nothing programmed it offers a range instead.
void men_leer_ft_Click(frm_principal& f);

/// Shows the panel in which a range is typed.
void men_leer_fr_Click(frm_principal& f);

/// What the panel's boxes, as they stand, will have read.
struct lectura_prevista {
  /// For the user: "Se leerá 000000–00001F", or why nothing will be.
  std::string texto;
  /// A text is not all hexadecimal digits, so that only the front of it counts, or something else is not as it looks.
  bool dudosa = false;
};
lectura_prevista prever_lectura(std::string_view desde, std::string_view hasta);

/// Reads the range of the panel, after correcting it as the panel's boxes then show. An empty box stops it silently.
void btn_leer_Click(frm_principal& f);

/// True while a load runs, in which case the user has been told to wait: what it fills is what the commands work on.
bool rechazada_por_carga(frm_principal& f);

/// Ends the program at once, without a question.
void men_salir_Click(frm_principal& f);

}  // namespace morvane
