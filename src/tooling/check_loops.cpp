// SPDX-License-Identifier: MIT
// Loops: whether a FOR can come before each NEXT, by the ways that the program may take from line to line, and how
// deep the text nests them.
#include "core/machine.h"
#include "tooling/check_listing.h"

#include <algorithm>

namespace quillon {
namespace {

/// More lines than any listing that loads can have; of others the ways are not followed.
constexpr std::size_t LINES_MAX = std::size_t{AREA_COUNT} * LINES_PER_AREA;

/// The ways from line to line. Places that stand for many lines keep the number of ways small: the lines of an area
/// for a computed jump, its first line for one to the area, all that a RETURN may lead back to.
struct Ways {
    std::vector<std::vector<int>> onward;
    std::vector<int> first_line; ///< place of each area's first line
    std::vector<int> any_line;   ///< place that leads to all lines of an area
    int any_area = 0;
    int after_return = 0;
};

int place_of(const Ways& ways, int area, int line) { return ways.first_line[static_cast<std::size_t>(area)] + line; }

void add_way(Ways& ways, int from, int to) { ways.onward[static_cast<std::size_t>(from)].push_back(to); }

int new_place(Ways& ways) {
    ways.onward.emplace_back();
    return static_cast<int>(ways.onward.size()) - 1;
}

/// The lines, each followed by the next one of its area.
void add_lines(Ways& ways, const CheckedListing& listing) {
    for (const CheckedArea& area : listing.areas) {
        const int first = static_cast<int>(ways.onward.size());
        ways.first_line.push_back(first);
        for (const CheckedLine& line : area.lines) {
            const int place = new_place(ways);
            if (line.goes_on && &line != &area.lines.back())
                add_way(ways, place, place + 1);
        }
    }
    ways.any_area = new_place(ways);
    ways.after_return = new_place(ways);
    for (std::size_t area = 0; area < listing.areas.size(); ++area) {
        const int any = new_place(ways);
        ways.any_line.push_back(any);
        add_way(ways, ways.any_area, ways.first_line[area]);
        for (std::size_t line = 0; line < listing.areas[area].lines.size(); ++line)
            add_way(ways, any, ways.first_line[area] + static_cast<int>(line));
    }
}

bool same_loop(const Step& step, const Step& other) {
    return step.area == other.area && (step.value == other.value || step.value == ANY_LOOP || other.value == ANY_LOOP);
}

void add_step_ways(Ways& ways, const CheckedListing& listing, const Step& step) {
    const int place = place_of(ways, step.area, step.line);
    switch (step.kind) {
    case Step::TO_LINE: {
        const auto& lines = listing.areas[static_cast<std::size_t>(step.area)].by_number;
        return add_way(ways, place, place_of(ways, step.area, lines.at(step.value)));
    }
    case Step::TO_AREA: {
        const auto area = static_cast<int>(find_area(listing, step.value) - listing.areas.data());
        return add_way(ways, place, place_of(ways, area, 0));
    }
    case Step::TO_ANY_LINE: return add_way(ways, place, ways.any_line[static_cast<std::size_t>(step.area)]);
    case Step::TO_ANY_AREA: return add_way(ways, place, ways.any_area);
    case Step::RETURN: return add_way(ways, place, ways.after_return);
    case Step::CALL:
        add_way(ways, ways.after_return, place);
        if (step.line + 1 < static_cast<int>(listing.areas[static_cast<std::size_t>(step.area)].lines.size()))
            add_way(ways, ways.after_return, place + 1);
        return;
    default: return;
    }
}

/// A NEXT may lead back to any FOR of its loop, and behind it: that on its own line is no way to come to the line anew.
void add_loop_ways(Ways& ways, const std::vector<Step>& loops) {
    for (const Step& next : loops) {
        if (next.kind != Step::NEXT)
            continue;
        for (const Step& start : loops) {
            if (start.kind == Step::FOR && same_loop(start, next) && start.line != next.line)
                add_way(ways, place_of(ways, next.area, next.line), place_of(ways, start.area, start.line));
        }
    }
}

Ways find_ways(const CheckedListing& listing, const std::vector<Step>& loops) {
    Ways ways;
    add_lines(ways, listing);
    for (const Step& step : listing.steps)
        add_step_ways(ways, listing, step);
    add_loop_ways(ways, loops);
    for (auto& onward : ways.onward) {
        std::sort(onward.begin(), onward.end());
        onward.erase(std::unique(onward.begin(), onward.end()), onward.end());
    }
    return ways;
}

/// The places that can be come to from these.
std::vector<bool> reached_from(const Ways& ways, std::vector<int> waiting) {
    std::vector<bool> reached(ways.onward.size());
    while (!waiting.empty()) {
        const int place = waiting.back();
        waiting.pop_back();
        for (const int to : ways.onward[static_cast<std::size_t>(place)]) {
            if (!reached[static_cast<std::size_t>(to)])
                waiting.push_back(to);
            reached[static_cast<std::size_t>(to)] = true;
        }
    }
    return reached;
}

std::vector<Step> loop_steps(const CheckedListing& listing) {
    std::vector<Step> loops;
    for (const Step& step : listing.steps) {
        if (step.kind == Step::FOR || step.kind == Step::NEXT)
            loops.push_back(step);
    }
    return loops;
}

/// Whether the loop that a NEXT ends may have been opened.
bool may_be_open(const Ways& ways, const std::vector<Step>& loops, const Step& next) {
    std::vector<int> starts;
    for (const Step& start : loops) {
        if (start.kind != Step::FOR || !same_loop(start, next))
            continue;
        if (start.line == next.line && start.at < next.at)
            return true;
        starts.push_back(place_of(ways, start.area, start.line));
    }
    return reached_from(ways, std::move(starts))[static_cast<std::size_t>(place_of(ways, next.area, next.line))];
}

std::string loop_name(const Step& step) {
    return step.value == ANY_LOOP ? "" : std::string(" ") + static_cast<char>('A' + step.value);
}

void check_each_next(CheckedListing& listing, const std::vector<Step>& loops) {
    const Ways ways = find_ways(listing, loops);
    for (const Step& next : loops) {
        if (next.kind == Step::NEXT && !may_be_open(ways, loops, next))
            add_finding(listing, FindingKind::NEXT_WITHOUT_FOR, true, line_of(listing, next.area, next.line), next.at,
                        "no FOR" + loop_name(next) + " can come before this NEXT");
    }
}

// Nesting.

/// Whether each way to a FOR goes through those that are open before it in the text: nothing jumps in between, calls,
/// or depends on an IF.
bool is_certain(const CheckedListing& listing, const Step& outermost, const Step& innermost) {
    return std::none_of(listing.steps.begin(), listing.steps.end(), [&](const Step& step) {
        if (step.kind == Step::TO_ANY_AREA || (step.kind == Step::TO_ANY_LINE && step.area == outermost.area))
            return true;
        if (step.kind == Step::TO_LINE && step.area == outermost.area) {
            const int line = listing.areas[static_cast<std::size_t>(step.area)].by_number.at(step.value);
            return line > outermost.line && line <= innermost.line;
        }
        const bool between = step.area == outermost.area && step.at >= outermost.at && step.at <= innermost.at;
        return between && (step.conditional || step.kind == Step::CALL);
    });
}

void close_loop(std::vector<Step>& open, const Step& next) {
    while (!open.empty() && !same_loop(open.back(), next))
        open.pop_back();
    if (!open.empty())
        open.pop_back();
}

/// Opens a loop; one over a variable that has one already takes its place, and the loops in it are gone.
void open_loop(std::vector<Step>& open, const Step& start) {
    const auto same = std::find_if(open.begin(), open.end(), [&start](const Step& step) {
        return start.value != ANY_LOOP && step.value == start.value;
    });
    open.erase(same, open.end());
    open.push_back(start);
}

void check_nesting(CheckedListing& listing, const std::vector<Step>& loops) {
    std::vector<Step> open;
    for (const Step& step : loops) {
        if (!open.empty() && open.back().area != step.area)
            open.clear();
        if (step.kind == Step::NEXT) {
            close_loop(open, step);
            continue;
        }
        open_loop(open, step);
        if (open.size() <= FOR_DEPTH_MAX)
            continue;
        const bool certain = is_certain(listing, open.front(), open.back());
        add_finding(listing, FindingKind::FOR_TOO_DEEP, certain, line_of(listing, step.area, step.line), step.at,
                    "the fifth FOR within another: the machine keeps four open");
        open.pop_back();
    }
}

void warn_of_unchecked(CheckedListing& listing, const std::vector<Step>& loops) {
    if (loops.empty())
        return;
    const Step& last = loops.back();
    add_finding(listing, FindingKind::LOOPS_NOT_CHECKED, false, line_of(listing, last.area, last.line), last.at,
                "too many loops or jumps up to here: FOR and NEXT are not held against each other");
}

} // namespace

void check_loops(CheckedListing& listing) {
    constexpr std::size_t LOOPS_MAX = 4096;
    std::size_t lines = 0;
    for (const CheckedArea& area : listing.areas)
        lines += area.lines.size();
    const std::vector<Step> loops = loop_steps(listing);
    if (!listing.steps_known || lines > LINES_MAX || loops.size() > LOOPS_MAX)
        return warn_of_unchecked(listing, loops);
    check_each_next(listing, loops);
    check_nesting(listing, loops);
}

} // namespace quillon
