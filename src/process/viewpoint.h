#pragma once

#include <optional>

/// A place to look from, beside those of the players: what `--from` and `--to` ask for. World coordinates.
struct Viewpoint {
    float from[3] = {};
    float to[3] = {};  ///< another place than `from`
};

/// From where all of the window is to be drawn; without one the players' views are, as ever.
inline std::optional<Viewpoint> theViewpoint;
