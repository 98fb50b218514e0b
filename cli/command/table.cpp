// SPDX-License-Identifier: MIT
// Widths of columns and the lines that they make.
#include "cli/command/table.h"

#include "cli/command/terminal.h"

#include <algorithm>
#include <numeric>

namespace zel::cli {

namespace {

constexpr std::size_t kBetween = 2;
constexpr std::size_t kNarrowest = 4;
constexpr std::string_view kEllipsis = "…"; // one column

std::string fitted(const std::string& text, std::size_t width) {
    return text.size() <= width ? text : text.substr(0, width - 1).append(kEllipsis);
}

std::string padded(const std::string& text, std::size_t width, Table::Side side) {
    const std::string room(width - std::min(width, text.size()), ' ');
    const std::string cell = fitted(text, width);
    return side == Table::Side::Left ? cell + room : room + cell;
}

} // namespace

Table::Table(std::vector<Column> columns) : columns_(std::move(columns)) {
    std::vector<std::string>& headings = rows_.emplace_back();
    for (const Column& column : columns_)
        headings.push_back(column.heading);
}

void Table::add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }

std::vector<std::size_t> Table::widths(std::optional<std::size_t> terminal) const {
    std::vector<std::size_t> widths;
    for (std::size_t at = 0; at < columns_.size(); ++at) {
        widths.push_back(columns_[at].width);
        for (const auto& row : rows_)
            widths.back() = std::max(widths.back(), row[at].size());
    }
    const std::size_t between = kBetween * (columns_.size() - 1);
    const std::size_t whole = std::accumulate(widths.begin(), widths.end(), between);
    if (!terminal || whole <= *terminal)
        return widths;
    std::size_t& widest = *std::max_element(widths.begin(), widths.end());
    const std::size_t excess = whole - *terminal;
    widest = widest > excess + kNarrowest ? widest - excess : std::min(widest, kNarrowest);
    return widths;
}

// No blanks behind the last cell.
std::vector<std::string> Table::lines(std::optional<std::size_t> terminal) const {
    const std::vector<std::size_t> wide = widths(terminal);
    std::vector<std::string> lines;
    for (const auto& row : rows_) {
        std::string line;
        for (std::size_t at = 0; at < row.size(); ++at)
            line += (at == 0 ? "" : std::string(kBetween, ' ')) +
                    padded(row[at], wide[at], columns_[at].side);
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(line);
    }
    return lines;
}

void Table::print(Output& output) const {
    for (const std::string& line : lines(output.columns()))
        output.line(line);
}

} // namespace zel::cli
