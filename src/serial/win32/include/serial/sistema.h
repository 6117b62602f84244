#pragma once

#include "serial/transporte_win32.h"

namespace morvane {

/// The serial lines of the system that this is built for, made from the program's directory.
using transporte_del_sistema = transporte_win32;

}  // namespace morvane
