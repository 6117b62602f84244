#pragma once

#include <filesystem>
#include <string_view>

/// The rule that gives adapters to the user at the machine, lets them answer at once and keeps modem managers away.
namespace morvane::console {

/// As it stands in its file.
std::string_view texto_de_la_regla();

/// True if the host has a rule of that name. `raiz` is the root of its files.
bool regla_instalada(const std::filesystem::path& raiz = "/");

}  // namespace morvane::console
