#pragma once

#include "platform/anfitrion_posix.h"
#include "platform/transporte_tty.h"

namespace morvane {

/// The serial lines and the host of the system that this is built for. The lines are made from the program's directory,
/// the host from nothing.
using transporte_del_sistema = transporte_tty;
using anfitrion_del_sistema = anfitrion_posix;

}  // namespace morvane
