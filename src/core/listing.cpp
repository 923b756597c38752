// Loading listings: reading the file and splitting it into areas and lines. Nothing is tokenised; lines point into the
// text, whose line feeds become NULs.
#include "core/listing.h"

#include "core/charset.h"
#include "core/data_index.h"
#include "core/errors.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace quillon {
namespace {

constexpr char CONTROL_Z = 26; ///< ends a listing

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

enum class ReadResult { READ, CANNOT_READ, TOO_LARGE };

/// Reads to the end of the file, which may be a pipe.
ReadResult read_file(const std::string& path, std::string& text) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr)
        return ReadResult::CANNOT_READ;
    char chunk[65536];
    while (const std::size_t count = std::fread(chunk, 1, sizeof chunk, file.get())) {
        if (text.size() + count > LISTING_SIZE_MAX)
            return ReadResult::TOO_LARGE;
        text.append(chunk, count);
    }
    return std::ferror(file.get()) != 0 ? ReadResult::CANNOT_READ : ReadResult::READ;
}

/// Where the splitting of a listing has come to.
struct Analysis {
    Machine& m;
    char* p;                     ///< the next character
    int line = 1;                ///< its line in the file, from 1
    ProgramArea* area = nullptr; ///< the area that lines go to; null between areas
    int last_number = -1;        ///< number of the line before, in the area
    bool any_area = false;
    bool failed = false;
};

void refuse(Analysis& a, MessageId message) {
    compose_system_message(a.m, message, ":%d LINE", a.line);
    a.failed = true;
}

bool starts_comment(char c) { return c == '#' || c == ';' || c == '\'' || c == ',' || c == '!'; }

void skip_line(Analysis& a) {
    while (*a.p != '\0' && *a.p != '\n')
        ++a.p;
}

/// Blanks and line ends between elements; false at the end of the text.
bool skip_to_element(Analysis& a) {
    for (; *a.p == ' ' || *a.p == '\t' || *a.p == '\r' || *a.p == '\n'; ++a.p)
        a.line += *a.p == '\n' ? 1 : 0;
    return *a.p != '\0';
}

/// "[P", a digit, "]"; the character behind that is not looked at.
void read_header(Analysis& a) {
    if (a.p[0] != '[' || to_upper(a.p[1]) != 'P')
        return refuse(a, MESSAGE_TEXT_OUTSIDE_AREA);
    if (!is_digit(a.p[2]))
        return refuse(a, MESSAGE_BAD_LINE_START);
    if (a.p[3] != ']')
        return refuse(a, MESSAGE_HEADER_NOT_CLOSED);
    ProgramArea& area = a.m.areas[static_cast<std::size_t>(a.p[2] - '0')];
    if (area.used)
        return refuse(a, MESSAGE_AREA_TWICE);
    area.used = true;
    a.area = &area;
    a.any_area = true;
    a.last_number = -1;
    a.p += 4;
    if (*a.p != '\0' && *a.p != '\n')
        ++a.p;
}

/// Ends the line's text: its line feed becomes the NUL that the scanner stops at.
void end_line(Analysis& a) {
    skip_line(a);
    if (*a.p == '\n') {
        *a.p++ = '\0';
        ++a.line;
    }
}

void read_line(Analysis& a) {
    constexpr int NUMBER_LENGTH_MAX = 7;
    const char* begin = a.p;
    int number = 0;
    for (; is_digit(*a.p); ++a.p) {
        if (a.p - begin == NUMBER_LENGTH_MAX) {
            compose_system_message(a.m, MESSAGE_LINE_NUMBER_LENGTH, "(MAX:7):%d LINE", a.line);
            a.failed = true;
            return;
        }
        number = number * 10 + (*a.p - '0');
    }
    if (*a.p != ' ' && *a.p != '\t')
        return refuse(a, MESSAGE_NO_BLANK_AFTER_NUMBER);
    if (number <= a.last_number)
        return refuse(a, MESSAGE_LINE_NUMBER_ORDER);
    if (a.area->line_count == LINES_PER_AREA) {
        compose_system_message(a.m, MESSAGE_TABLE_FULL, "(MAX:%d)", LINES_PER_AREA);
        a.failed = true;
        return;
    }
    a.area->lines[static_cast<std::size_t>(a.area->line_count++)] = {number, a.p};
    a.last_number = number;
    end_line(a);
}

void read_element(Analysis& a) {
    if (starts_comment(*a.p))
        skip_line(a);
    else if (a.area == nullptr || *a.p == '[')
        read_header(a);
    else if (is_digit(*a.p))
        read_line(a);
    else
        refuse(a, MESSAGE_BAD_LINE_START);
}

/// Splits `listing_text` into areas and lines; false on a fault.
bool analyze_listing(Machine& m) {
    Analysis a{m, m.listing_text.data()};
    while (!a.failed && skip_to_element(a))
        read_element(a);
    if (!a.failed && !a.any_area) {
        compose_system_message(m, MESSAGE_NO_LISTING);
        a.failed = true;
    }
    return !a.failed;
}

/// The text that counts: without a byte order mark, up to the first NUL or Ctrl-Z.
void trim_listing(std::string& text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3);
    constexpr const char ENDS[] = {'\0', CONTROL_Z};
    const std::size_t end = text.find_first_of(std::string_view(ENDS, sizeof ENDS));
    if (end != std::string::npos)
        text.erase(end);
}

} // namespace

LoadResult load_listing(Machine& m, const std::string& path) {
    std::string text;
    switch (read_file(path, text)) {
    case ReadResult::CANNOT_READ:
        compose_system_message(m, MESSAGE_CANNOT_OPEN, ":[%s]", path.c_str());
        return LoadResult::UNREADABLE;
    case ReadResult::TOO_LARGE: compose_system_message(m, MESSAGE_OUT_OF_MEMORY); return LoadResult::UNREADABLE;
    case ReadResult::READ: break;
    }
    return load_listing_text(m, std::move(text));
}

LoadResult load_listing_text(Machine& m, std::string text) {
    unload_listing(m);
    trim_listing(text);
    m.listing_text = std::move(text);
    if (!analyze_listing(m) || !build_data_index(m)) {
        unload_listing(m);
        m.error_detail.clear();
        return LoadResult::FAULTY;
    }
    return LoadResult::LOADED;
}

void unload_listing(Machine& m) {
    m.listing_text.clear();
    m.scan_ptr = NO_TEXT;
    m.saved_scan_ptr = NO_TEXT;
    clear_program_areas(m);
    clear_data_index(m);
    reset_machine(m);
}

const char* select_area(Machine& m, int n) {
    const ProgramArea& area = m.areas[static_cast<std::size_t>(n)];
    if (!area.used) {
        raise_error(m, ERROR_RANGE, MESSAGE_NO_SUCH_AREA, "[Page:%d]", n);
        return nullptr;
    }
    m.cur_area = n;
    m.cur_line = 0;
    m.stmt_start = area.lines[0].text;
    return m.stmt_start;
}

char area_mark(const Machine& m, int n) {
    return m.areas[static_cast<std::size_t>(n)].used ? '_' : static_cast<char>('0' + n);
}

bool area_is_empty(const Machine& m, int n) { return m.areas[static_cast<std::size_t>(n)].line_count == 0; }

void advance_line(Machine& m) {
    const ProgramArea& area = m.areas[static_cast<std::size_t>(m.cur_area)];
    if (m.cur_line < area.line_count)
        ++m.cur_line;
    if (m.cur_line < area.line_count)
        m.scan_ptr = area.lines[static_cast<std::size_t>(m.cur_line)].text;
    else
        m.program_ended = 1;
}

int find_line(const Machine& m, int number) {
    const ProgramArea& area = m.areas[static_cast<std::size_t>(m.cur_area)];
    const auto* begin = area.lines.data();
    const auto* end = begin + area.line_count;
    const auto* found =
        std::lower_bound(begin, end, number, [](const ProgramLine& line, int wanted) { return line.number < wanted; });
    return found != end && found->number == number ? static_cast<int>(found - begin) : -1;
}

} // namespace quillon
