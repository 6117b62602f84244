#pragma once

#include <optional>
#include <vector>

#include "job/conversacion.h"
#include "job/diferencias.h"
#include "job/objetivo.h"

namespace morvane::job {

/// The sums that the board gives of the first 1,025 bytes and of all blocks. In a stretch of work without a doubt.
std::optional<firma> pedir_firma(conversacion& c);

/// Where the chip, whose sums are `suya`, differs from `debe`, as far as sums can see: windows that slide from a block
/// in doubt into parts known to be equal narrow it down, and what is left is read. Where windows do not help, the
/// blocks that differ are read. Nothing if the talk has failed.
std::optional<std::vector<diferencia>> localizar(conversacion& c, const objetivo& debe, const firma& suya);

}  // namespace morvane::job
