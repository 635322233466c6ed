#include "controls/FlexGridSorter.h"

#include "controls/FlexGrid.h"

#include <QCollator>
#include <QCollatorSortKey>
#include <QLocale>
#include <algorithm>
#include <numeric>
#include <optional>

namespace {

// What one cell contributes to a row's place.
struct CellKey
{
    int group = 0; // 0 empty, 1 number, 2 text
    double number = 0;
    std::optional<QCollatorSortKey> text;

    int Compare(const CellKey &other) const
    {
        if (group != other.group)
            return group < other.group ? -1 : 1;
        if (group == 1 && number != other.number)
            return number < other.number ? -1 : 1;
        if (group == 2)
            return text->compare(*other.text);
        return 0;
    }
};

} // namespace

FlexGridSorter::FlexGridSorter(const FlexGrid &grid, int firstCol, int lastCol)
    : m_grid(grid), m_firstCol(firstCol), m_lastCol(lastCol)
{
}

bool FlexGridSorter::IsNumber(const QString &text, double *value)
{
    QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return false;
    trimmed.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double number = QLocale::c().toDouble(trimmed, &ok);
    if (ok && value)
        *value = number;
    return ok;
}

std::vector<int> FlexGridSorter::Order() const
{
    QCollator collator{QLocale(QLocale::Spanish, QLocale::Spain)};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const int rows = m_grid.Rows();
    const int fixed = m_grid.FixedRows();
    const int width = m_lastCol - m_firstCol + 1;

    // Keys are worked out once per cell, not once per comparison.
    std::vector<CellKey> keys(size_t(std::max(0, rows - fixed) * width));
    for (int row = fixed; row < rows; ++row)
        for (int col = m_firstCol; col <= m_lastCol; ++col) {
            CellKey &key = keys[size_t((row - fixed) * width + col - m_firstCol)];
            const QString text = m_grid.TextMatrix(row, col);
            if (text.trimmed().isEmpty())
                key.group = 0;
            else if (IsNumber(text, &key.number))
                key.group = 1;
            else {
                key.group = 2;
                key.text = collator.sortKey(text);
            }
        }

    std::vector<int> order(static_cast<size_t>(rows));
    std::iota(order.begin(), order.end(), 0);
    const auto less = [&](int a, int b) {
        for (int c = 0; c < width; ++c) {
            const int result = keys[size_t((a - fixed) * width + c)].Compare(keys[size_t((b - fixed) * width + c)]);
            if (result != 0)
                return result < 0;
        }
        return false;
    };
    std::stable_sort(order.begin() + std::min(fixed, rows), order.end(), less);
    return order;
}
