// Typing faster than the machine ticks: every key through the queue and simulator_tick, at the prompt of INPUT, on the
// command line and with KEY$, in both input modes. The test makes the ticks, so "between two ticks" is what it says.
#include "shell/commands.h"
#include "tests/support/scripts.h"

#include "core/errors.h"
#include "keys/key_map.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

constexpr int BACKSPACE = 8, ENTER = 13, HOME = VIRTUAL_KEY_HOME, LEFT = 37, NUMPAD_1 = 97, NUMPAD_STAR = 106;
constexpr Modifiers PLAIN{}, SHIFT{.shift = true}, CTRL{.ctrl = true}, ALT{.alt = true};

/// Somebody at a keyboard. The modifiers of each event are those of its moment, as a window sends them.
struct Typist : TestMachine {
    explicit Typist(int ascii_mode = 1) { m.ascii_mode = ascii_mode; }

    void down(int key, Modifiers modifiers = PLAIN, bool auto_repeat = false) {
        push_key_event(simulator->keys, {.kind = modifiers.alt ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN,
                                         .key = key,
                                         .auto_repeat = auto_repeat,
                                         .modifiers = modifiers});
    }
    void up(int key) { push_key_event(simulator->keys, {.kind = KeyEvent::Kind::UP, .key = key}); }
    void tap(int key, Modifiers modifiers = PLAIN) {
        down(key, modifiers);
        up(key);
    }
    /// Taps the keys of main letters and digits; "\n" is Enter, "=" the shifted key that types it.
    void tap_all(std::string_view keys) {
        for (const char key : keys)
            tap(key == '\n' ? ENTER : key == '=' ? 189 : key, key == '=' ? SHIFT : PLAIN);
    }
    /// Ticks until everything has been fed, and a few more.
    void settle() {
        for (int i = 0; i < 2000 && !simulator->keys.events.empty(); ++i)
            tick();
        tick(4);
        EXPECT_TRUE(simulator->keys.events.empty());
        EXPECT_TRUE(m.key_string.empty()) << "every key is up again";
    }
    void enter_command_mode() {
        run_host_command(*simulator, COMMAND_LINE);
        exe();
        ASSERT_EQ(m.run_state, STATE_COMMAND);
    }
    [[nodiscard]] std::string entry() const { return std::string(m.entry_line.text); }
    [[nodiscard]] double number(char letter) const {
        return m.variables[static_cast<std::size_t>(letter - 'A')].number;
    }
    [[nodiscard]] std::string text(char letter) const {
        return std::string(m.variables[static_cast<std::size_t>(letter - 'A')].text);
    }
};

struct Key {
    int key;
    Modifiers modifiers;
};

TEST(KeyQueue, LosesNothingOfWhatIsTypedBetweenTwoTicks) {
    struct Row {
        const char* what;
        int ascii_mode;
        std::vector<Key> keys;
        const char* entry;
    };
    const Row rows[] = {
        {"equal letters", 1, {{'A', PLAIN}, {'A', PLAIN}, {'A', PLAIN}}, "AAA"},
        {"a letter and its small one", 1, {{'A', PLAIN}, {'A', SHIFT}, {'A', PLAIN}, {'A', SHIFT}}, "AaAa"},
        {"two keys that type the same", 1, {{'1', PLAIN}, {NUMPAD_1, PLAIN}, {'1', PLAIN}}, "111"},
        {"the same, shifted", 1, {{190, SHIFT}, {NUMPAD_STAR, SHIFT}, {190, SHIFT}}, ">>>"},
        {"a key without a text between", 1, {{'A', PLAIN}, {'0', SHIFT}, {'A', PLAIN}}, "AA"},
        {"the cursor", 1, {{'A', PLAIN}, {'B', PLAIN}, {LEFT, PLAIN}, {LEFT, PLAIN}, {'C', PLAIN}}, "CB"},
        {"backspace", 1, {{'A', PLAIN}, {'B', PLAIN}, {BACKSPACE, PLAIN}, {BACKSPACE, PLAIN}, {'C', PLAIN}}, "C"},
        {"the clear key", 1, {{'A', PLAIN}, {HOME, PLAIN}, {HOME, PLAIN}, {'B', PLAIN}}, "B"},
        {"equal keywords", 0, {{'A', SHIFT}, {'A', SHIFT}}, "GOSUB GOSUB "},
        {"all levels of a key",
         0,
         {{'A', PLAIN}, {'A', SHIFT}, {'A', CTRL}, {'A', {.shift = true, .ctrl = true}}, {'A', ALT}, {'A', PLAIN}},
         "AGOSUB a\x88SIN A"},
        {"Ctrl with Alt is plain", 0, {{'A', {.ctrl = true, .alt = true}}, {'A', SHIFT}}, "AGOSUB "},
        {"a blank by two keys", 0, {{32, PLAIN}, {188, PLAIN}, {'A', PLAIN}}, "  A"},
        {"pi by two keys", 0, {{119, PLAIN}, {191, SHIFT}, {119, PLAIN}}, "\x87\x87\x87"},
    };
    for (const Row& row : rows) {
        for (const bool input : {false, true}) {
            SCOPED_TRACE(std::string(row.what) + (input ? ", at the prompt of INPUT" : ", on the command line"));
            Typist t(row.ascii_mode);
            t.start("INPUT A$");
            t.tick(2);
            if (!input)
                t.enter_command_mode();
            for (const Key& key : row.keys)
                t.tap(key.key, key.modifiers);
            t.settle();
            EXPECT_EQ(t.entry(), row.entry);
            EXPECT_EQ(t.m.run_state, input ? STATE_INPUT : STATE_COMMAND);
        }
    }
}

TEST(KeyQueue, LosesNothingBehindWhatAKeyEnds) {
    struct Row {
        const char* program; ///< nullptr: the command line
        int ticks;
        const char* before; ///< typed and settled first
    };
    const Row rows[] = {
        {nullptr, 0, ""},         {nullptr, 0, "BEEP\n"},                      // its tone is waited for
        {nullptr, 0, "7\n"},                                                   // behind READY, and behind a result
        {"A=1/0", 2, "\x24"},     {"END", 2, "\x24"},     {"STOP", 2, "\x24"}, // 0x24 is the clear key
        {"PRINT 1", 2, "\n\x24"},
    };
    for (const Row& row : rows) {
        for (const bool settled : {true, false}) {
            SCOPED_TRACE(std::string(row.program != nullptr ? row.program : "command") + row.before);
            Typist t;
            t.start(row.program != nullptr ? row.program : "END");
            t.tick(row.ticks);
            if (row.program == nullptr)
                run_host_command(*t.simulator, COMMAND_LINE);
            t.tap_all(row.before);
            if (settled)
                t.settle();
            t.tap_all("112\n");
            t.settle();
            EXPECT_EQ(t.visible(), "112         ");
        }
    }
}

TEST(KeyQueue, TakesEnterBehindWhatWasTyped) {
    for (const bool settled : {true, false}) {
        SCOPED_TRACE(settled);
        Typist t;
        t.start("INPUT A,B$,C$\nEND");
        t.tick(2);
        for (const char* line : {"77\n", "X7\n", "7\n"}) { // equal keys on both sides of Enter
            t.tap_all(line);
            if (settled)
                t.settle();
        }
        t.settle();
        EXPECT_EQ(std::to_string(t.number('A')) + t.text('B') + t.text('C'), "77.000000X77");
        t.enter_command_mode();
        t.tap_all("A=3\nB=44\n"); // the second line is typed before the first one has run
        t.settle();
        EXPECT_EQ(t.number('A') + t.number('B'), 47);
    }
    Typist held;
    held.start("PRINT 1,2,3,4,5");
    held.wait();
    held.down(ENTER);
    for (int i = 0; i < 10; ++i) {
        held.down(ENTER, PLAIN, true);
        held.tick();
    }
    EXPECT_EQ(held.visible(), " 2          ") << "held down it is one";
    held.up(ENTER);
    held.tap(ENTER);
    held.settle();
    EXPECT_EQ(held.visible(), " 3          ");
}

TEST(KeyQueue, TakesModifiersOfTheMomentNotOfTheTick) {
    for (const bool shift_first : {true, false}) {
        Typist t;
        t.enter_command_mode();
        t.tap('A', shift_first ? SHIFT : PLAIN);
        t.simulator->modifiers = shift_first ? PLAIN : SHIFT; // released early, or pressed for the next letter
        t.tap('B', shift_first ? PLAIN : SHIFT);
        t.settle();
        EXPECT_EQ(t.entry(), shift_first ? "aB" : "Ab");
        EXPECT_EQ(t.m.shift_flag, shift_first ? 0 : 1) << "without a key those of now are shown";
    }
    Typist t;
    t.simulator->modifiers = {.shift = true, .ctrl = true, .alt = true};
    t.tick();
    EXPECT_EQ(t.m.shift_flag + t.m.ctrl_flag + t.m.alt_flag, 3);
    t.simulator->modifiers = {};
    t.m.soft_shift_latch = 1;
    t.tick();
    EXPECT_EQ(t.m.shift_flag * 100 + t.m.ctrl_flag * 10 + t.m.alt_flag, 100) << "a latch counts as a key";
}

TEST(KeyQueue, FeedsOneKeyATickAndTypesAHeldOneOnce) {
    Typist t;
    t.enter_command_mode();
    t.tap_all("AB");
    t.down('C');
    for (const char* entry : {"A", "AB", "ABC", "ABC", "ABC"}) {
        t.tick();
        EXPECT_EQ(t.entry(), entry);
    }
    EXPECT_EQ(t.m.key_string.view(), "C") << "held still";
    for (int i = 0; i < 20; ++i) {
        t.down('C', PLAIN, true);
        t.tick();
    }
    t.down('D'); // while C is held
    t.up('D');
    t.tick(3);
    for (int i = 0; i < 20; ++i)
        t.down('C', PLAIN, true); // repeats between two ticks
    t.up('C');
    t.tap('C');
    t.settle();
    EXPECT_EQ(t.entry().substr(0, 4), "ABCD");
    EXPECT_EQ(t.entry().back(), 'C');
    EXPECT_LE(t.entry().size(), 6U) << "the repeats of one hold are one key";
}

TEST(KeyQueue, ShowsKeysToKeyInTheirTurn) {
    std::string reader = "A$=\"\"\n";
    for (int i = 0; i < 12; ++i)
        reader += "A$=A$+KEY$\n";
    struct Row {
        std::vector<Key> taps;
        const char* seen; ///< each as often as there are ticks
    };
    const Row rows[] = {
        {{{'A', PLAIN}, {'B', PLAIN}, {'B', PLAIN}, {'A', PLAIN}}, "ABA"},
        {{{'A', SHIFT}, {'A', PLAIN}, {LEFT, PLAIN}, {190, SHIFT}}, "aA>"}, // control keys are nothing to it
        {{{'Z', PLAIN}}, "Z"},
    };
    for (const Row& row : rows) {
        Typist t;
        t.start(reader + "END");
        t.tick();
        for (const Key& key : row.taps)
            t.tap(key.key, key.modifiers);
        t.tick(12);
        std::string seen = t.text('A');
        seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
        EXPECT_EQ(seen, row.seen);
        EXPECT_LE(t.text('A').size(), 2 * row.taps.size()) << "a tap is over with the tick behind it";
    }
}

TEST(KeyQueue, StaysSmallInAStorm) {
    Typist t;
    t.enter_command_mode();
    const auto expect_small = [&t] {
        ASSERT_LE(t.simulator->keys.events.size(), 1000U);
        ASSERT_LE(t.simulator->keys.down_keys.size(), 512U);
    };
    for (int i = 0; i < 50'000; ++i) {
        t.tap('A' + i % 26);
        expect_small();
    }
    t.settle();
    EXPECT_EQ(t.entry().substr(0, 26), "ABCDEFGHIJKLMNOPQRSTUVWXYZ") << "what had room is typed in order";
    for (int i = 0; i < 50'000; ++i) {
        const int key = i % 512 == ENTER ? 'A' : i % 512; // any code, most of them never released
        t.down(key, i % 7 == 0 ? ALT : PLAIN, i % 3 == 0);
        if (i % 50 == 0)
            t.tick();
        expect_small();
    }
    release_all_keys(t.simulator->keys);
    t.settle();
    for (int key = 0; key < 600; ++key)
        EXPECT_FALSE(is_key_down(t.simulator->keys, key)) << key;
    t.enter_command_mode(); // the storm had function keys
    t.tap_all("OK");
    t.settle();
    EXPECT_EQ(t.entry(), "OK");
}

TEST(KeyQueue, LetsAllKeysComeUpWithTheFocus) {
    Typist t;
    t.start("INPUT A$");
    t.wait();
    t.tap_all("11");
    t.down('2');
    t.down('3');
    release_all_keys(t.simulator->keys);
    t.settle();
    EXPECT_EQ(t.entry(), "1123") << "what was typed before the loss counts";
    EXPECT_FALSE(is_key_down(t.simulator->keys, '2') || is_key_down(t.simulator->keys, '3'));
    t.tap('3'); // and it may go down anew
    t.settle();
    EXPECT_EQ(t.entry(), "11233");
}

} // namespace
} // namespace quillon::testing
