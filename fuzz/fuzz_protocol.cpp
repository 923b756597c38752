// SPDX-License-Identifier: MIT
// A session of the driving protocol whose commands are chosen by the input's bytes, held against a second machine: the
// same commands give the same answers, N ticks are N times a tick, and neither a question nor a refused command changes
// anything.
#include "fuzz/random_programs.h"
#include "fuzz/user.h"

#include "core/controls.h"
#include "core/host_commands.h"
#include "protocols/drive.h"

#include <iterator>
#include <string>

using namespace quillon;

namespace {

/// Carried out on both.
constexpr const char* COMMANDS[] = {
    "run",
    "stop",
    "command",
    "page 0",
    "page 1",
    "exe",
    "exe",
    "wait 5",
    "enter 5",
    "enter A=1",
    "enter RUN",
    "enter GOTO 50",
    "enter PRINT A;B$",
    "type 7",
    "type PRINT",
    "key 41",
    "key 00",
    "press 36",
    "release 36",
    "press 55",
    "release 55",
    "press 13",
    "release 13",
    "press 27",
    "release 27",
    "repeat 65",
    "release 65",
    "altpress 120",
    "hold shift",
    "unhold shift",
    "hold ctrl",
    "unhold ctrl",
    "soft down 1 3",
    "soft down 3 13",
    "soft up",
    "click left 20 40",
    "click double 60 40",
    "click right 9 9",
    "clipboard 12",
    "set wait_print_sc 1",
    "set wait_print_sc 30",
    "set angle_unit 1",
    "set run_page 1",
    "set random_seed 9",
    "set set_f_digits 2",
};

struct NumberedCommand {
    const char* name;
    int lowest;
    int count;
};

/// The same, with any number.
constexpr NumberedCommand NUMBERED_COMMANDS[] = {
    {"host ", HOST_COMMAND_FIRST, HOST_COMMAND_COUNT},
    {"press ", 0, 256},
    {"release ", 0, 256},
    {"repeat ", 0, 256},
    {"altpress ", 0, 256},
};

/// Carried out on the first machine only.
constexpr const char* WITHOUT_EFFECT[] = {
    "lcd",        "vars",          "sound",
    "clipboard",  "# remark",      "",
    "tock",       "tick -1",       "tick x",
    "press 256",  "set pie 1",     "set angle_unit 99",
    "page 10",    "soft down 4 0", "click middle 1 1",
    "hold hyper", "key 4",         "key XX",
    "state 1",    "run now",       "exe 3",
    "quit later", "wait",          "catalogue",
    "load",       "host 39999",
};

std::string answer_of(DriveSession& session, const std::string& line) {
    return drive_line(session, line).value_or(std::string());
}

/// What can be asked without emptying a log.
std::string answers_to_all_questions(DriveSession& session) {
    std::string answers;
    for (const char* question : {"lcd", "vars", "sound", "clipboard", "state"})
        answers += answer_of(session, question) + "\n";
    return answers;
}

void tick_both(DriveSession& whole, DriveSession& single, int count) {
    answer_of(whole, "tick " + std::to_string(count));
    for (int i = 0; i < count; ++i)
        answer_of(single, "tick");
}

template <std::size_t Size>
const char* any_of(const char* const (&lines)[Size], fuzz::Choices& choices) {
    return lines[choices.below(static_cast<int>(Size))];
}

std::string any_numbered(fuzz::Choices& choices) {
    const NumberedCommand& command = NUMBERED_COMMANDS[choices.below(std::size(NUMBERED_COMMANDS))];
    return command.name + std::to_string(command.lowest + choices.below(command.count));
}

void do_both(DriveSession& a, DriveSession& b, const std::string& line) {
    fuzz::require(answer_of(a, line) == answer_of(b, line), "the same command gives two answers");
}

void do_one_thing(DriveSession& a, DriveSession& b, fuzz::Choices& choices) {
    switch (choices.below(8)) {
    case 0:
    case 1: return tick_both(a, b, choices.below(8));
    case 2: answer_of(a, any_of(WITHOUT_EFFECT, choices)); return;
    case 3: return do_both(a, b, any_numbered(choices));
    default: return do_both(a, b, any_of(COMMANDS, choices));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int THINGS_MAX = 60;
    fuzz::Choices choices(1, fuzz::as_text(data, size));
    fuzz::RandomProgram random([&choices](int count) { return choices.below(count); });
    const std::string listing = random.listing();
    DriveSession a;
    DriveSession b;
    for (DriveSession* drive : {&a, &b}) {
        load_listing_text(drive->simulator->machine, listing);
        drive->session->as_left.reset(); // the session takes the record as it is found
    }
    for (int i = 0; i < THINGS_MAX; ++i) {
        do_one_thing(a, b, choices);
        if (i % 8 == 7)
            fuzz::require(answers_to_all_questions(a) == answers_to_all_questions(b), "two machines disagree");
    }
    return 0;
}
