#pragma once

#include "platform/anfitrion_win32.h"
#include "platform/transporte_win32.h"

namespace morvane {

/// The serial lines and the host of the system that this is built for. The lines are made from the program's directory,
/// the host from nothing.
using transporte_del_sistema = transporte_win32;
using anfitrion_del_sistema = anfitrion_win32;

}  // namespace morvane
