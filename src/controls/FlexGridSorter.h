#pragma once

#include <QString>
#include <vector>

class FlexGrid;

// The grid's generic ascending order over a range of columns: empty texts
// first, then numbers by value, then texts in Spanish order ignoring case
// ("Álvarez" next to "Alonso", "Ñ" after "N"). Keeping numbers and texts in
// separate groups makes the order a true ordering, so the stable sort is
// well defined whatever the cells hold.
class FlexGridSorter
{
public:
    FlexGridSorter(const FlexGrid &grid, int firstCol, int lastCol);

    // The new order of every row as old row numbers: the fixed rows first
    // and in place, then the others sorted; equal rows keep their order.
    std::vector<int> Order() const;

    // A number as the grid reads one: "." or "," as decimal mark.
    static bool IsNumber(const QString &text, double *value = nullptr);

private:
    const FlexGrid &m_grid;
    int m_firstCol;
    int m_lastCol;
};
