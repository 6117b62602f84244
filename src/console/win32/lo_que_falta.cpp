#include "ordenes.h"

namespace morvane::console {

void ofrecer_lo_que_falta(cierre& /*c*/) {}

}  // namespace morvane::console
