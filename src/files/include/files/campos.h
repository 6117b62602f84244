#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// `texto` without the byte order mark that some editors put in front of a UTF-8 file.
std::string_view sin_marca_utf8(std::string_view texto);

/// Takes the first line off `resto`, without its end: CR LF, CR or LF. Gives an empty text when nothing is left.
std::string_view siguiente_linea(std::string_view& resto);

/// The fields of a line, parted by commas. A field in double quotes ends at its closing quote, or at the end of the
/// line where that is missing, and a comma inside belongs to it; any other field goes up to the next comma, without the
/// blanks around it. A blank line has no field.
std::vector<std::string> campos_entrecomillados(std::string_view linea);

}  // namespace morvane
