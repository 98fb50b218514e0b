// SPDX-License-Identifier: MIT
// Rows under headings, as wide as their contents or as the terminal.
#pragma once

#include "cli/command/output.h"

#include <optional>
#include <string>
#include <vector>

namespace zel::cli {

class Table {
public:
    enum class Side { Left, Right };
    struct Column {
        std::string heading;
        Side side = Side::Left;
        std::size_t width = 0; // at least
    };

    explicit Table(std::vector<Column> columns);

    // As many cells as there are columns.
    void add(std::vector<std::string> row);

    // Shortens the widest column, with an ellipsis, where the terminal is narrower than the table.
    void print(Output& output) const;

    // Its lines for a terminal of so many columns; nothing: of any width.
    std::vector<std::string> lines(std::optional<std::size_t> terminal) const;

private:
    std::vector<std::size_t> widths(std::optional<std::size_t> terminal) const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_; // the headings first
};

} // namespace zel::cli
