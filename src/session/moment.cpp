// SPDX-License-Identifier: MIT
// Taking and restoring moments.
#include "session/moment.h"

#include "shell/simulator.h"

namespace quillon {

bool operator==(const Moment& a, const Moment& b) {
    return a.machine == b.machine && a.keys == b.keys && a.modifiers == b.modifiers && a.exe_held == b.exe_held &&
           a.tone_plays == b.tone_plays && a.skin->name == b.skin->name;
}

Moment take_moment(const Simulator& s, bool tone_plays, const std::shared_ptr<const SkinInPlace>& known) {
    Moment moment{.machine = s.machine, .keys = s.keys, .modifiers = s.modifiers, .skin = known, .listing_path = {}};
    moment.exe_held = s.exe_held;
    moment.tone_plays = tone_plays;
    moment.listing_path = s.preferences.last_file;
    moment.listing_was_read = s.listing_was_read;
    if (!known || known->name != s.skin_name)
        moment.skin = std::make_shared<const SkinInPlace>(SkinInPlace{s.skin_name, s.lcd.skin});
    return moment;
}

void restore_moment(Simulator& s, const Moment& moment) {
    const SurroundingsReference around = s.machine.around;
    s.machine = moment.machine;
    s.machine.around = around;
    s.keys = moment.keys;
    s.modifiers = moment.modifiers;
    s.exe_held = moment.exe_held;
    s.preferences.last_file = moment.listing_path;
    s.listing_was_read = moment.listing_was_read;
    if (s.skin_name != moment.skin->name && !moment.skin->picture.pixels.empty()) {
        s.skin_name = moment.skin->name;
        show_skin(s.lcd, moment.skin->picture);
    }
    render_lcd(s.lcd, s.machine);
}

} // namespace quillon
