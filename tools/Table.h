#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/Terminal.h"

namespace quorvane::tool {

/// Rows of text in aligned columns, with the columns' names above them. A column in which nothing stands is left out.
class Table {
public:
    struct Column {
        std::string name;
        /// Texts that are longer are cut.
        std::size_t widest = 40;
        bool isRightAligned = false;
    };

    explicit Table(std::vector<Column> theColumns) : columns(std::move(theColumns)) {}

    /// As many texts as there are columns; control characters are replaced.
    void add(std::vector<std::string> row);

    /// Prints the table, indented by some blanks.
    void print(Terminal& terminal, std::size_t indent) const;

private:
    [[nodiscard]] std::string text(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) const;

    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;
};

} // namespace quorvane::tool
