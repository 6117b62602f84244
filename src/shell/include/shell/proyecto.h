#pragma once

#include <string>
#include <string_view>

#include "shell/frm_principal.h"

namespace morvane {

/// Lets the user choose a firmware file, beginning in the folder of the last one, and loads it. Refused with a box
/// while a command or a load runs.
void abrir_proyecto(frm_principal& f);

/// The same from where the dialog has given a path: the user has chosen `ruta`, in the host's form, already, so that no
/// question is left.
void abrir_soltado(frm_principal& f, const std::string& ruta);

/// True for a path with the extension of a kind of file that can be loaded.
bool es_firmware(std::string_view ruta);

/// These kinds as the `Filter` of an open dialog.
std::string filtro_de_firmware();

/// The folder, in the host's form, of the last file that was opened, or else of the newest one of the history that is
/// still there. Empty if there is none.
std::string carpeta_de_partida(const frm_principal& f);

/// Wipes the image, shows the path and loads `ruta_archivo` with the loader of its extension, which comes in upper
/// case. With an unknown extension nothing more happens.
void cargar_proyecto(frm_principal& f, std::string_view extension);

/// Puts a shortened path into the first panel of the status bar: its first three characters, "...", and its tail.
void mostrar_ruta(frm_principal& f, std::string_view ruta);

/// True if a command or a load runs; the user has then been told to wait for its end.
bool rechazada_por_orden(frm_principal& f);

/// Position, from 1, at which the shown tail of a path of `largo` characters begins: 1 below `maximo` characters, else
/// its distance from `visible`, and 1 where that is 0.
std::size_t inicio_de_cola(std::size_t largo, std::size_t maximo, std::size_t visible);

/// The first three characters of a path, "...", and `cola` characters from position `inicio`.
std::string ruta_abreviada(std::string_view ruta, std::size_t inicio, std::size_t cola);

/// The last three characters of a path without surrounding blanks, in upper case.
std::string extension_de(std::string_view ruta);

}  // namespace morvane
