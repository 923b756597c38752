// Building the DATA index.
#include "core/data_index.h"

#include "core/charset.h"
#include "core/errors.h"
#include "core/listing.h"
#include "core/scanner.h"

namespace quillon {
namespace {

constexpr char ESCAPE_KEY = 27;
constexpr std::size_t DATA_TEXT_MAX = 63;

bool ends_line(char c) { return c == '\0' || c == '\n' || c == '\r' || c == ESCAPE_KEY; }

void append(DataText& item, char c, bool& whole) {
    whole = whole && item.size() < DATA_TEXT_MAX;
    item.push_back(c);
}

/// Between quotes; the closing one is passed. Kept blanks and commas are the point of them.
void read_quoted_item(const char*& p, DataText& item, bool& whole) {
    ++p;
    while (*p != '"' && !ends_line(*p))
        append(item, static_cast<char>(read_char(p)), whole);
    p += *p == '"' ? 1 : 0;
}

/// Up to the next "," or ":", without the blanks at its end.
void read_plain_item(const char*& p, DataText& item, bool& whole) {
    std::size_t length = 0; // up to the last character that is no blank
    bool whole_so_far = true;
    while (*p != ',' && *p != ':' && !ends_line(*p)) {
        const bool blank = *p == ' ' || *p == '\t';
        append(item, static_cast<char>(read_char(p)), whole_so_far);
        length = blank ? length : item.size();
        whole = blank ? whole : whole_so_far;
    }
    item.shorten(length);
}

/// The index under construction: how many entries it has.
struct IndexBuilder {
    Machine& m;
    int count = 0;
    bool failed = false;
};

DataItem* add_entry(IndexBuilder& builder, DataItem::Kind kind) {
    if (builder.count == DATA_INDEX_SIZE) {
        compose_system_message(builder.m, MESSAGE_TABLE_FULL, "(MAX:%d)", DATA_INDEX_SIZE);
        builder.failed = true;
        return nullptr;
    }
    DataItem& entry = builder.m.data_index[static_cast<std::size_t>(builder.count++)];
    entry.kind = kind;
    return &entry;
}

void add_numbered_entry(IndexBuilder& builder, DataItem::Kind kind, int number) {
    if (DataItem* entry = add_entry(builder, kind))
        entry->arg = number;
}

/// Stores the items of one DATA statement and returns the text position behind it.
const char* parse_data_line(IndexBuilder& builder, const char* text) {
    const char* p = text;
    DataText item;
    bool whole = true;
    while (read_data_item(p, item, whole)) {
        DataItem* entry = add_entry(builder, DataItem::ITEM);
        if (entry == nullptr)
            return p;
        entry->text = item;
        if (!pass_data_separator(p)) {
            compose_system_message(builder.m, MESSAGE_DATA_SEPARATOR);
            builder.failed = true;
            return p;
        }
    }
    return p;
}

void index_line(IndexBuilder& builder, const ProgramLine& line) {
    const char* p = line.text;
    while (!builder.failed) {
        const Token token = scan_token(p);
        p = token.end;
        if (token.code == TOKEN_END || token.code == TOKEN_REM)
            return;
        if (token.code == TOKEN_DATA) {
            add_numbered_entry(builder, DataItem::LINE, line.number);
            if (!builder.failed)
                p = parse_data_line(builder, p);
        }
    }
}

} // namespace

bool read_data_item(const char*& p, DataText& item, bool& whole) {
    item.clear();
    whole = true;
    p = skip_blanks(p);
    if (ends_line(*p) || *p == ':') {
        p += *p == ':' ? 1 : 0;
        return false;
    }
    if (*p == '"')
        read_quoted_item(p, item, whole);
    else
        read_plain_item(p, item, whole);
    return true;
}

bool pass_data_separator(const char*& p) {
    p = skip_blanks(p);
    if (*p != ',')
        return ends_line(*p) || *p == ':';
    ++p;
    return true;
}

void clear_data_index(Machine& m) {
    for (DataItem& entry : m.data_index)
        entry = DataItem{};
    m.data_pos = 0;
}

bool build_data_index(Machine& m) {
    clear_data_index(m);
    IndexBuilder builder{m};
    for (int n = 0; n < AREA_COUNT && !builder.failed; ++n) {
        const ProgramArea& area = m.areas[static_cast<std::size_t>(n)];
        if (!area.used)
            continue;
        add_numbered_entry(builder, DataItem::AREA, n);
        for (int i = 0; i < area.line_count && !builder.failed; ++i)
            index_line(builder, area.lines[static_cast<std::size_t>(i)]);
    }
    if (!builder.failed)
        add_entry(builder, DataItem::END);
    return !builder.failed;
}

bool ends_area_data(const Machine& m, int index) {
    if (index >= DATA_INDEX_SIZE)
        return true;
    const int kind = m.data_index[static_cast<std::size_t>(index)].kind;
    return kind == DataItem::AREA || kind == DataItem::END;
}

int find_area_data(const Machine& m) {
    for (int i = 0; i < DATA_INDEX_SIZE; ++i) {
        const DataItem& entry = m.data_index[static_cast<std::size_t>(i)];
        if (entry.kind == DataItem::END)
            return -1;
        if (entry.kind == DataItem::AREA && entry.arg == m.cur_area)
            return i;
    }
    return -1;
}

void restore_area_data(Machine& m) {
    const int entry = find_area_data(m);
    if (entry < 0)
        compose_system_message(m, MESSAGE_NO_DATA_INDEX);
    m.data_pos = entry + 1;
}

} // namespace quillon
