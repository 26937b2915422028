// SPDX-License-Identifier: MIT
#include "desktop/grid/ColumnWidths.h"

#include "browser/DataView.h"
#include "desktop/grid/GridModel.h"
#include "model/TAdmMDBTable.h"

#include <QHeaderView>
#include <QStyle>
#include <QTableView>

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::size_t cellsInAll = 6000; // how many texts are measured at most
constexpr std::size_t fewestRows = 12;
constexpr std::size_t mostRows = 120;
constexpr std::size_t longestTextCount = 40; // the widest text is among the longest ones
constexpr int narrowestInLetters = 5;        // limits of a column, in widths of "x"
constexpr int widestInLetters = 44;
constexpr int widestFittedInLetters = 150;

// The first records, which the user sees first, and others spread evenly over the rest.
std::vector<std::uint32_t> sampleOf(std::size_t rowCount, std::size_t columnCount)
{
    const auto count = std::min(rowCount, std::clamp(cellsInAll / columnCount, fewestRows, mostRows));
    const auto first = count < rowCount ? count / 2 : count;
    std::vector<std::uint32_t> records;
    for (std::size_t i = 0; i < count; ++i) {
        const auto spread =
            i < first ? i : first + (rowCount - 1 - first) * (i - first) / std::max<std::size_t>(1, count - first - 1);
        records.push_back(static_cast<std::uint32_t>(spread));
    }
    return records;
}

int widest(const QTableView& view, const DataView& dataView, int column, const std::vector<std::uint32_t>& records)
{
    const auto metrics = view.fontMetrics();
    const auto place = static_cast<std::size_t>(column);
    const int iconWidth = dataView.columns()[place].isImageAndText ? view.iconSize().width() + 4 : 0;
    int width = 0;
    for (const auto record : records)
        width = std::max(width, metrics.horizontalAdvance(cellText(dataView.valueOfRecord(place, record))) + iconWidth);
    return width;
}

int clampedWidth(const QTableView& view, int column, int textWidth, int mostLetters)
{
    const int letter = view.fontMetrics().horizontalAdvance(QLatin1Char('x'));
    // What the style draws around a text.
    const int margins = 2 * (view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view) + 4);
    const auto wanted = std::max(view.horizontalHeader()->sectionSizeHint(column), textWidth + margins);
    return std::clamp(wanted, narrowestInLetters * letter, mostLetters * letter);
}

int sampledWidth(const QTableView& view, const DataView& dataView, int column)
{
    return widest(view, dataView, column, sampleOf(dataView.table()->rows().rowCount(), dataView.columns().size()));
}

} // namespace

int usualColumnWidth(const QTableView& view, const DataView& dataView, int column)
{
    return clampedWidth(view, column, sampledWidth(view, dataView, column), widestInLetters);
}

int fittedColumnWidth(const QTableView& view, const DataView& dataView, int column)
{
    const auto longest = dataView.longestRecords(static_cast<std::size_t>(column), longestTextCount);
    // The sample for what is shown instead of a text, such as null and objects.
    const auto width = std::max(widest(view, dataView, column, longest), sampledWidth(view, dataView, column));
    return clampedWidth(view, column, width, widestFittedInLetters);
}

} // namespace vellumo
