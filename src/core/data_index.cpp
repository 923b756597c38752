// Building the DATA index.
#include "core/data_index.h"

#include "core/charset.h"
#include "core/errors.h"
#include "core/listing.h"
#include "core/scanner.h"

namespace quillon {
namespace {

constexpr char ESCAPE_KEY = 27;

bool ends_line(char c) { return c == '\0' || c == '\n' || c == '\r' || c == ESCAPE_KEY; }

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

/// Between quotes; the closing one is passed. Kept blanks and commas are the point of them.
BoundedText<63> read_quoted_item(const char*& p) {
    BoundedText<63> item;
    ++p;
    while (*p != '"' && !ends_line(*p))
        item.push_back(static_cast<char>(read_char(p)));
    p += *p == '"' ? 1 : 0;
    return item;
}

/// Up to the next "," or ":", without the blanks at its end.
BoundedText<63> read_plain_item(const char*& p) {
    BoundedText<63> item;
    std::size_t length = 0; // up to the last character that is no blank
    while (*p != ',' && *p != ':' && !ends_line(*p)) {
        const bool blank = *p == ' ' || *p == '\t';
        item.push_back(static_cast<char>(read_char(p)));
        length = blank ? length : item.size();
    }
    item.shorten(length);
    return item;
}

/// Stores the items of one DATA statement and returns the text position behind it.
const char* parse_data_line(IndexBuilder& builder, const char* text) {
    const char* p = text;
    for (;;) {
        p = skip_blanks(p);
        if (ends_line(*p) || *p == ':')
            break;
        const BoundedText<63> item = *p == '"' ? read_quoted_item(p) : read_plain_item(p);
        DataItem* entry = add_entry(builder, DataItem::ITEM);
        if (entry == nullptr)
            return p;
        entry->text = item;
        p = skip_blanks(p);
        if (ends_line(*p) || *p == ':')
            break;
        if (*p != ',') {
            compose_system_message(builder.m, MESSAGE_DATA_SEPARATOR);
            builder.failed = true;
            return p;
        }
        ++p;
    }
    return *p == ':' ? p + 1 : p;
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
