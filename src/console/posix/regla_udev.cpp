#include "regla_udev.h"

#include <algorithm>
#include <array>

namespace morvane::console {

bool regla_instalada(const std::filesystem::path& raiz) {
  constexpr std::array carpetas{"etc/udev/rules.d", "run/udev/rules.d", "usr/local/lib/udev/rules.d",
                                "usr/lib/udev/rules.d", "lib/udev/rules.d"};
  return std::ranges::any_of(carpetas, [&](const char* carpeta) {
    std::error_code error;
    return std::filesystem::exists(raiz / carpeta / "70-morvane.rules", error);
  });
}

}  // namespace morvane::console
