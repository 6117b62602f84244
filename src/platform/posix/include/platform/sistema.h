#pragma once

#include "platform/anfitrion_posix.h"

namespace morvane {

/// The host of the system that this is built for, made from nothing.
using anfitrion_del_sistema = anfitrion_posix;

}  // namespace morvane
