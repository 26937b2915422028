// SPDX-License-Identifier: MIT
#include "desktop/grid/ColumnWidths.h"

#include <QHeaderView>
#include <QStyle>
#include <QTableView>

#include <algorithm>

namespace vellumo {

namespace {

constexpr int cellsInAll = 6000; // how many texts are measured at most
constexpr int fewestRows = 12;
constexpr int mostRows = 120;
constexpr int longestText = 60;       // characters that are measured of a cell
constexpr int narrowestInLetters = 5; // limits of a column, in widths of "x"
constexpr int widestInLetters = 44;

// Row `i` of a sample of `sampleCount` rows: the first ones, which the user sees first, and the rest spread evenly.
int sampleRow(int i, int sampleCount, int rowCount)
{
    const auto first = sampleCount / 2;
    if (sampleCount >= rowCount || i < first) return i;
    const auto spread = static_cast<long long>(rowCount - 1 - first);
    return first + static_cast<int>(spread * (i - first) / std::max(1, sampleCount - first - 1));
}

int widestCell(const QTableView& view, int column, int sampleCount)
{
    const auto* model = view.model();
    const auto metrics = view.fontMetrics();
    const auto iconWidth = view.iconSize().width();
    int widest = 0;
    for (int i = 0; i < sampleCount; ++i) {
        const auto index = model->index(sampleRow(i, sampleCount, model->rowCount()), column);
        const auto text = index.data(Qt::DisplayRole).toString().left(longestText);
        const auto hasIcon = index.data(Qt::DecorationRole).isValid();
        widest = std::max(widest, metrics.horizontalAdvance(text) + (hasIcon ? iconWidth + 4 : 0));
    }
    return widest;
}

} // namespace

void fitColumnWidths(QTableView& view)
{
    const auto* model = view.model();
    const int columnCount = model->columnCount();
    if (columnCount == 0) return;
    const int sampleCount = std::min(model->rowCount(), std::clamp(cellsInAll / columnCount, fewestRows, mostRows));
    const int letter = view.fontMetrics().horizontalAdvance(QLatin1Char('x'));
    // What the style draws around a text.
    const int margins = 2 * (view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view) + 4);
    for (int column = 0; column < columnCount; ++column) {
        const auto title = view.horizontalHeader()->sectionSizeHint(column);
        const auto wanted = std::max(title, widestCell(view, column, sampleCount) + margins);
        view.setColumnWidth(column, std::clamp(wanted, narrowestInLetters * letter, widestInLetters * letter));
    }
}

} // namespace vellumo
