#include "gui/FlexGridStyle.h"

#include "controls/FlexGrid.h"

#include <QBrush>
#include <QFont>

FlexGridStyle::FlexGridStyle(FlexGrid &grid, QObject *parent) : QIdentityProxyModel(parent), m_grid(&grid)
{
    setSourceModel(&grid);
    // The header shows the first row: a change there is a header change.
    connect(&grid, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
        if (from.row() == 0 && m_grid->FixedRows() > 0)
            Q_EMIT headerDataChanged(Qt::Horizontal, from.column(), to.column());
    });
}

QColor FlexGridStyle::FromVbColor(int color)
{
    return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

QVariant FlexGridStyle::data(const QModelIndex &index, int role) const
{
    const QModelIndex cell = mapToSource(index);
    if (!cell.isValid() || !m_grid)
        return {};
    const bool fixedRow = cell.row() < m_grid->FixedRows();
    switch (role) {
    case Qt::FontRole: {
        const QVariant name = cell.data(FlexGrid::FontNameRole), size = cell.data(FlexGrid::FontSizeRole),
                       bold = cell.data(FlexGrid::FontBoldRole);
        if (!name.isValid() && !size.isValid() && !bold.isValid() && !fixedRow)
            return {};
        QFont font;
        if (name.isValid())
            font.setFamilies({name.toString()});
        if (size.isValid())
            font.setPointSizeF(size.toDouble());
        font.setBold(bold.isValid() ? bold.toBool() : fixedRow);
        return font;
    }
    case Qt::ForegroundRole: {
        const QVariant color = cell.data(FlexGrid::ForeColorRole);
        return color.isValid() ? QVariant(QBrush(FromVbColor(color.toInt()))) : QVariant();
    }
    case Qt::BackgroundRole:
        if (!cell.data(FlexGrid::FixedCellRole).toBool())
            return {};
        return QBrush(fixedRow ? HeaderBackground() : FixedBackground());
    default:
        return cell.data(role);
    }
}

QVariant FlexGridStyle::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!m_grid)
        return {};
    if (orientation != Qt::Horizontal || m_grid->FixedRows() == 0 || section < 0 || section >= m_grid->Cols()
        || m_grid->Rows() == 0)
        return QIdentityProxyModel::headerData(section, orientation, role);
    switch (role) {
    case Qt::DisplayRole:
        return m_grid->TextMatrix(0, section);
    case Qt::FontRole: {
        QFont font;
        font.setBold(true);
        return font;
    }
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    default:
        return {};
    }
}
