// SPDX-License-Identifier: MIT
// The machine for tests.
#include "tests/support/test_machine.h"

#include "core/charset.h"
#include "core/controls.h"
#include "files/host_disk.h"
#include "shell/commands.h"

#include <sstream>

namespace quillon::testing {
namespace {

/// Sections that the machine asks for, numbers 0-9; those of SYSTEM go up to 80.
constexpr const char* SECTIONS =
    "INI FILES ABS ACS ASN ATN BEEP BEEPS COS CSR CUR DEG DMS EOX EOY EXP FACT FOR FRAC GLOAD GOSUB GOTO HEX HYPACS "
    "HYPASN HYPATN HYPCOS HYPSIN HYPTAN IF INPUT INT LEN LN LOG MID MODE NCR NEXT NPR ON POL PRINT READ REC "
    "RESTORE RETURN RND RUN SET SGN SIN SQRT STR TAN VAL";

} // namespace

MessageCatalogue naming_catalogue() {
    MessageCatalogue catalogue;
    std::istringstream sections(SECTIONS);
    for (std::string section = "SYSTEM"; sections; sections >> section) {
        for (int number = 0; number <= (section == "SYSTEM" ? 80 : 9); ++number)
            catalogue.sections[section][number] = section + " " + std::to_string(number) + "\x01";
    }
    return catalogue;
}

std::string numbered_listing(std::string_view text) {
    std::string listing = "[P0]\n";
    std::istringstream lines{std::string(text)};
    int number = 10;
    for (std::string line; std::getline(lines, line); number += 10) {
        const bool plain = !line.empty() && !is_digit(line[0]) && line[0] != '[';
        listing += (plain ? std::to_string(number) + " " : "") + line + "\n";
    }
    return listing;
}

TestMachine::TestMachine() : simulator(std::make_unique<Simulator>()), m(simulator->machine) {
    simulator->disk = host_disk();
    simulator->around.catalogue = naming_catalogue();
    simulator->around.host.show_message = [this](const std::string& text, MessageIcon) { messages.push_back(text); };
}

bool TestMachine::load(std::string_view listing) {
    return load_listing_text(m, std::string(listing)) == LoadResult::LOADED;
}

void TestMachine::start(std::string_view lines) {
    load(numbered_listing(lines));
    run_host_command(*simulator, COMMAND_RUN);
}

void TestMachine::tick(int count) {
    for (int i = 0; i < count; ++i)
        simulator_tick(*simulator);
}

void TestMachine::exe() {
    m.keys.enter_request = true;
    tick();
}

int TestMachine::wait(int most) {
    int ticks = 0;
    for (; ticks < most && !waits_for_person(m) && !failed(m); ++ticks)
        tick();
    return ticks;
}

std::vector<std::string> TestMachine::run_through(int most) {
    std::vector<std::string> lines;
    for (int i = 0; i < most; ++i) {
        m.keys.enter_request = true;
        tick();
        if (failed(m) || m.run.run_state == STATE_PRINT_WAIT)
            lines.push_back(display().substr(0, static_cast<std::size_t>(m.screen.display_cursor)));
        if (failed(m) || (m.run.run_state != STATE_RUN && m.run.run_state != STATE_PRINT_WAIT))
            break;
    }
    return lines;
}

std::string TestMachine::display() const {
    const std::string_view line(m.screen.display_line.data(), DISPLAY_LINE_SIZE);
    return escaped(line.substr(0, line.find_last_not_of(' ') + 1));
}

std::string TestMachine::visible() const {
    return escaped({m.screen.display_line.data() + m.screen.display_offset, DISPLAY_WIDTH});
}

std::string TestMachine::detail_id() const {
    const std::string_view text = m.error.error_detail;
    return std::string(text.substr(0, std::min(text.find('\x01'), text.size())));
}

std::string TestMachine::detail() const {
    std::string_view text = m.error.error_detail;
    text.remove_prefix(std::min(text.find('\x01') + 1, text.size()));
    return std::string(text.substr(0, text.find("\r\n\r\n")));
}

const Variable& cell(const TestMachine& t, char letter) {
    return t.m.variables[static_cast<std::size_t>(letter - 'A')];
}

std::string escaped(std::string_view text) {
    std::string out(text.size() * 3 + 1, '\0');
    return escape_text(text, out.data(), out.size());
}

} // namespace quillon::testing
