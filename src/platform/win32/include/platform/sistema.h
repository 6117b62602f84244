#pragma once

#include "platform/anfitrion_win32.h"

namespace morvane {

/// The host of the system that this is built for, made from nothing.
using anfitrion_del_sistema = anfitrion_win32;

}  // namespace morvane
