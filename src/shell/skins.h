// SPDX-License-Identifier: MIT
// Putting skins in place: the default one, and those that a program asks for.
#pragma once

#include <string_view>

namespace quillon {

struct Simulator;

/// Puts the skin with this file name in place, the default one for an empty name; nothing when it is there already. The
/// file lies in the listing's folder, or in the working directory when there is no listing; a name that leads out of
/// the folder is refused. A file that cannot be used is told in a message box, and the default skin takes its place.
/// False when not even that can be had.
bool load_skin(Simulator& s, std::string_view name);

} // namespace quillon
