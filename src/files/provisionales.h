#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The files in which new contents stand until they take the place of the old ones.
namespace morvane {

/// Name of the `intento`-th such file of the process `pid`.
std::string nombre_provisional(std::int32_t pid, unsigned intento);
/// The process that the file `nombre` belongs to, if it is such a file.
std::optional<std::int32_t> dueno_del_provisional(std::string_view nombre);
/// Seconds that such a file has to be old before somebody else takes it away: a process may also run out of sight, in
/// another container or on another machine.
inline constexpr std::int64_t edad_para_barrer = 3600;

}  // namespace morvane
