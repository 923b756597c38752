// SPDX-License-Identifier: MIT
// Snapshots and dumps.
#include "files/file_services.h"

#include "core/errors.h"
#include "files/host_disk.h"
#include "files/places.h"
#include "shell/saved_values.h"
#include "shell/simulator.h"
#include "shell/snapshot.h"

#include <cstdio>
#include <vector>

namespace quillon {
namespace {

constexpr MessageId MESSAGE_NO_SNAPSHOT_NAME{"SNAPSHOT", 0};
constexpr MessageId MESSAGE_SNAPSHOT_FAILED{"SNAPSHOT", 1};
constexpr MessageId NOTE_SNAPSHOT{"SNAPSHOT", 2};
constexpr MessageId MESSAGE_DUMP_FAILED{"DUMP", 0};
constexpr MessageId NOTE_DUMP{"DUMP", 1};

std::string text_of(const Simulator& s, MessageId message) {
    return lookup_message(s.machine.around->catalogue, message.section, message.number);
}

void warn(const Simulator& s, const std::string& text) {
    s.machine.around->host.show_message(text, MessageIcon::WARNING);
}

void snapshot(const Simulator& s) {
    const std::string folder = desktop_folder(read_environment());
    std::string path;
    switch (take_snapshot(s.lcd.canvas, folder, path)) {
    case NewFile::WRITTEN: return s.window.note(text_of(s, NOTE_SNAPSHOT) + " " + path);
    case NewFile::NO_FREE_NAME: return warn(s, text_of(s, MESSAGE_NO_SNAPSHOT_NAME));
    default: warn(s, text_of(s, MESSAGE_SNAPSHOT_FAILED) + "\r\n" + folder);
    }
}

/// The first name, and those that a number makes of it.
std::vector<std::string> dump_names(const std::string& first) {
    constexpr int NUMBERS = 256;
    std::vector<std::string> names{first};
    for (int n = 1; n < NUMBERS; ++n) {
        char end[32];
        std::snprintf(end, sizeof end, "_%03d.bin", n);
        names.push_back(first.substr(0, first.size() - 4) + end);
    }
    return names;
}

void dump(const Simulator& s) {
    const ValuesImage image = values_image(s.machine);
    std::string path = absolute_path("debug.bin");
    if (write_new_file(dump_names(path), {reinterpret_cast<const char*>(image.data()), image.size()}, &path) ==
        NewFile::WRITTEN)
        s.window.note(text_of(s, NOTE_DUMP) + " " + path);
    else
        warn(s, text_of(s, MESSAGE_DUMP_FAILED) + "\r\n" + path);
}

} // namespace

NewFile take_snapshot(const Canvas& canvas, const std::string& folder, std::string& path) {
    constexpr int NUMBERS = 256;
    std::vector<std::string> names;
    for (int n = 0; n < NUMBERS; ++n) {
        char name[32];
        std::snprintf(name, sizeof name, "/qzsnap_%03d.bmp", n);
        names.push_back(folder + name);
    }
    return write_new_file(names, snapshot_bitmap(canvas), &path);
}

void use_file_services(Simulator& s) {
    s.around.host.take_snapshot = [&s] { snapshot(s); };
    s.around.host.write_dump = [&s] { dump(s); };
}

} // namespace quillon
