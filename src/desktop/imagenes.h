#pragma once

#include <QIcon>
#include <string>

namespace morvane {

/// The image `nombre` of the program, sharp at all sizes that a desktop asks for; an empty icon for an empty name.
QIcon imagen(const std::string& nombre);

}  // namespace morvane
