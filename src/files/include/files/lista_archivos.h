#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// The file with the list of firmware files, in the application's directory: one quoted path a line, the oldest first.
constexpr std::string_view nombre_lista = "MENU.TXT";
/// Paths that are read of it at most.
constexpr std::size_t lista_maxima = 12;

/// True for a path that a line of the list can hold. One that is no UTF-8 would be another when it is read.
bool cabe_en_lista(std::string_view ruta);

/// The paths in the text of such a file. A line with an odd quote is what a crash or a full disk has left of one; what
/// can be the name of no file, or could not be written back, is no entry either.
std::vector<std::string> rutas_de_lista(std::string_view texto);

}  // namespace morvane
