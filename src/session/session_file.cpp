// SPDX-License-Identifier: MIT
// Session files, line by line. Every line is printable ASCII: other bytes, "%" and "_" are written as "%" and two
// hexadecimal digits.
#include "session/session_file.h"

#include "session/line_reader.h"
#include "session/machine_image.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr std::string_view HEAD = "quillon session 1";
constexpr std::size_t IMAGE_BYTES_PER_LINE = 48;

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const bool plain = c >= ' ' && c <= '~' && c != '%' && c != '_';
        text += plain ? std::string(1, c) : "%" + hexadecimal({&c, 1});
    }
    return text;
}

std::optional<std::string> unescaped(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const std::size_t percent = text.find('%');
        bytes += text.substr(0, percent);
        if (percent == std::string_view::npos)
            break;
        const auto byte = parse_hexadecimal(text.substr(percent + 1, 2), 1, 1);
        if (!byte)
            return std::nullopt;
        bytes += *byte;
        text.remove_prefix(percent + 3);
    }
    return bytes;
}

/// The bytes of a file, a line of them each, after a "|".
void write_content(std::string& text, std::string_view content) {
    while (true) {
        const std::size_t end = content.find('\n');
        text += '|' + escaped(content.substr(0, end)) + '\n';
        if (end == std::string_view::npos)
            return;
        content.remove_prefix(end + 1);
    }
}

void write_entry(std::string& text, const LogEntry& entry) {
    text += "at " + std::to_string(entry.tick) + ' ' + escaped(input_line(entry.input)) + '\n';
    if (entry.input.content)
        write_content(text, *entry.input.content);
}

void write_sight(std::string& text, const Sight& sight) {
    std::string display = escaped(sight.seen.display);
    for (std::size_t at = 0; (at = display.find(' ', at)) != std::string::npos;)
        display.replace(at, 1, "_"); // so that it is one word
    text += "see " + std::to_string(sight.tick) + ' ' + display + ' ' + std::to_string(sight.seen.run_state) + ' ' +
            std::to_string(sight.seen.tone) + ' ' + std::to_string(sight.seen.error_code) + ' ' +
            std::to_string(sight.sum) + '\n';
}

/// Reads a file line by line.
class Parser {
public:
    explicit Parser(std::string_view text) : rest_(text) {}

    std::optional<SessionFile> parse(SessionFault& fault) {
        if (!next_line() || line_ != HEAD) {
            fault = {1, "This is not a session file of this version."};
            return std::nullopt;
        }
        while (problem_.empty() && !ended_ && next_line())
            problem_ = parse_line();
        if (problem_.empty() && !ended_)
            problem_ = "The file has been cut: its last line is missing.";
        ImageFault image_fault{};
        if (problem_.empty() && !file_.image.empty() && !read_moment_image(file_.image, image_fault))
            problem_ = fault_text(image_fault);
        if (problem_.empty())
            return std::move(file_);
        fault = {number_, problem_};
        return std::nullopt;
    }

private:
    bool next_line() {
        if (rest_.empty())
            return false;
        const std::size_t end = rest_.find('\n');
        line_ = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line_.ends_with('\r'))
            line_.remove_suffix(1);
        ++number_;
        return true;
    }

    /// Takes a word off the beginning of the line.
    bool takes(std::string_view word) {
        if (!line_.starts_with(word))
            return false;
        line_.remove_prefix(word.size());
        return true;
    }

    std::string parse_line() {
        if (line_.empty() || line_.front() == '#')
            return {};
        if (takes("start "))
            return parse_start();
        if (takes("image "))
            return parse_image();
        if (takes("every "))
            return parse_every();
        if (takes("at "))
            return parse_entry();
        if (takes("see "))
            return parse_sight();
        if (takes("end "))
            return parse_end();
        return "A line begins with every, start, image, at, see or end.";
    }

    std::string parse_input_text(std::string_view text, Input& input) {
        const auto line = unescaped(text);
        return line ? parse_input(*line, input) : "A % is followed by two hexadecimal digits.";
    }

    std::string parse_start() {
        Input input;
        std::string problem = parse_input_text(line_, input);
        if (problem.empty() && input.verb != InputVerb::SET && input.verb != InputVerb::CELL)
            problem = "A session starts with set and cell.";
        file_.start.push_back(std::move(input));
        return problem;
    }

    std::string parse_every() {
        const auto every = parse_number(line_, 1, static_cast<long long>(SESSION_TICKS_MAX));
        file_.sights_every = static_cast<TickCount>(every.value_or(0));
        return every ? "" : "After every comes a whole number.";
    }

    std::string parse_image() {
        const auto bytes = parse_hexadecimal(line_, 1, 1024);
        if (!bytes)
            return "An image is written in hexadecimal digits.";
        file_.image += *bytes;
        return {};
    }

    /// The tick that a line begins with; it is not before the last one.
    std::optional<TickCount> take_tick() {
        const std::size_t end = line_.find(' ');
        const auto tick = parse_number(line_.substr(0, end), static_cast<long long>(last_tick_), SESSION_TICKS_MAX);
        line_.remove_prefix(end == std::string_view::npos ? line_.size() : end + 1);
        if (tick)
            last_tick_ = static_cast<TickCount>(*tick);
        return tick ? std::optional(last_tick_) : std::nullopt;
    }

    static std::string tick_problem() { return "A tick is a whole number, and not before that of the line above."; }

    std::string parse_entry() {
        const auto tick = take_tick();
        if (!tick)
            return tick_problem();
        LogEntry entry{.tick = *tick};
        std::string problem = parse_input_text(line_, entry.input);
        if (problem.empty() && has_content(entry.input))
            problem = parse_content(entry.input);
        file_.entries.push_back(std::move(entry));
        return problem;
    }

    std::string parse_content(Input& input) {
        std::string content;
        for (bool first = true; rest_.starts_with('|') && next_line(); first = false) {
            const auto bytes = unescaped(line_.substr(1));
            if (!bytes)
                return "A % is followed by two hexadecimal digits.";
            content += (first ? "" : "\n") + *bytes;
        }
        if (content.size() != static_cast<std::size_t>(input.numbers[0]))
            return "The lines of this file do not have the bytes that are announced.";
        input.content = std::make_shared<const std::string>(std::move(content));
        return {};
    }

    std::string parse_sight() {
        const auto tick = take_tick();
        if (!tick)
            return tick_problem();
        return parse_observation(*tick);
    }

    std::string parse_observation(TickCount tick) {
        constexpr long long CODE_MAX = 100'000;
        const std::string padded = " " + std::string(line_);
        LineReader reader(padded);
        std::string word(reader.word());
        std::replace(word.begin(), word.end(), '_', ' ');
        auto display = unescaped(word);
        const auto state = reader.number(0, CODE_MAX);
        const auto tone = reader.number(0, CODE_MAX);
        const auto error = reader.number(-CODE_MAX, 0);
        const auto sum = reader.number(0, UINT32_MAX);
        if (!display || !state || !tone || !error || !sum || !reader.at_end())
            return "After see come a tick, the display, and four whole numbers.";
        file_.sights.push_back(
            {tick,
             {std::move(*display), static_cast<int>(*state), static_cast<int>(*tone), static_cast<int>(*error)},
             static_cast<std::uint32_t>(*sum)});
        return {};
    }

    std::string parse_end() {
        const auto tick = take_tick();
        if (!tick)
            return tick_problem();
        file_.end = *tick;
        ended_ = true;
        return {};
    }

    std::string_view rest_;
    std::string_view line_;
    int number_ = 0;
    TickCount last_tick_ = 0;
    bool ended_ = false;
    std::string problem_;
    SessionFile file_;
};

} // namespace

std::string session_text(const SessionFile& file) {
    std::string text = std::string(HEAD) + '\n';
    if (file.sights_every != 1)
        text += "every " + std::to_string(file.sights_every) + '\n';
    for (const Input& input : file.start)
        text += "start " + escaped(input_line(input)) + '\n';
    for (std::size_t at = 0; at < file.image.size(); at += IMAGE_BYTES_PER_LINE)
        text += "image " + hexadecimal(std::string_view(file.image).substr(at, IMAGE_BYTES_PER_LINE)) + '\n';
    std::size_t sight = 0;
    for (const LogEntry& entry : file.entries) {
        for (; sight < file.sights.size() && file.sights[sight].tick <= entry.tick; ++sight)
            write_sight(text, file.sights[sight]);
        write_entry(text, entry);
    }
    for (; sight < file.sights.size(); ++sight)
        write_sight(text, file.sights[sight]);
    return text + "end " + std::to_string(file.end) + '\n';
}

std::optional<SessionFile> parse_session(std::string_view text, SessionFault& fault) {
    if (text.size() > SESSION_FILE_MAX) {
        fault = {1, "This file is too large for a session."};
        return std::nullopt;
    }
    return Parser(text).parse(fault);
}

} // namespace quillon
