#pragma once

#include <QImage>

namespace morvane {

/// All visible windows of the program as they lie on the screen, each under its title.
QImage escena();

}  // namespace morvane
