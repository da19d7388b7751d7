#include "tools/Table.h"

#include <algorithm>
#include <utility>

#include "tools/Text.h"

namespace quorvane::tool {

void Table::add(std::vector<std::string> row) {
    row.resize(columns.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = clipped(printable(row[i]), columns[i].widest);
    }
    rows.push_back(std::move(row));
}

void Table::print(Terminal& terminal, std::size_t indent) const {
    std::vector<std::size_t> widths(columns.size(), 0);
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], width(row[i]));
        }
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        names.push_back(columns[i].name);
        if (widths[i] > 0) {
            widths[i] = std::max(widths[i], width(columns[i].name));
        }
    }
    const std::string margin(indent, ' ');
    terminal.line(margin + terminal.painted(text(names, widths), Paint::faint));
    for (const auto& row : rows) {
        terminal.line(margin + text(row, widths));
    }
}

std::string Table::text(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) const {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (widths[i] == 0) {
            continue;
        }
        const std::string blanks(widths[i] - width(row[i]), ' ');
        line += line.empty() ? "" : "  ";
        line += columns[i].isRightAligned ? blanks + row[i] : row[i] + blanks;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace quorvane::tool
