#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace morvane {

/// The host's path of a name in UTF-8, and the other way round. Where a host's names are bytes they come through as
/// they are; where they are UTF-16, what is no UTF-8 becomes U+FFFD, which stands in the name of no file.
std::filesystem::path ruta_de(std::string_view nombre);
std::string texto_de(const std::filesystem::path& ruta);

/// The host's path of the path part of a file URL, its percent signs taken out already.
std::filesystem::path ruta_de_url(std::string_view parte);

}  // namespace morvane
