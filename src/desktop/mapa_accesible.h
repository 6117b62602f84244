#pragma once

namespace morvane {

/// Lets assistive technology see each map: what it shows as a whole, and the cell of its cursor as its value. May be
/// called more than once.
void hacer_mapas_accesibles();

}  // namespace morvane
