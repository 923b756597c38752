// Snapshots and dumps.
#include "shell/file_services.h"

#include "core/errors.h"
#include "shell/places.h"
#include "shell/safe_write.h"
#include "shell/saved_values.h"
#include "shell/simulator.h"
#include "shell/snapshot.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_NO_SNAPSHOT_NAME{"SNAPSHOT", 0};

void snapshot(Simulator& s) {
    if (take_snapshot(s.lcd.canvas, desktop_folder(read_environment())))
        return;
    const MessageCatalogue& catalogue = s.machine.catalogue;
    s.machine.host.show_message(
        lookup_message(catalogue, MESSAGE_NO_SNAPSHOT_NAME.section, MESSAGE_NO_SNAPSHOT_NAME.number),
        MessageIcon::WARNING);
}

void dump(const Machine& m) {
    const ValuesImage image = values_image(m);
    static_cast<void>(safe_write("debug.bin", {reinterpret_cast<const char*>(image.data()), image.size()}));
}

} // namespace

void use_file_services(Simulator& s) {
    s.machine.host.take_snapshot = [&s] { snapshot(s); };
    s.machine.host.write_dump = [&s] { dump(s.machine); };
}

} // namespace quillon
