#pragma once

#include <QColor>
#include <QIdentityProxyModel>
#include <QPointer>

class FlexGrid;

// The grid as a view reads it: the grid's plain font names, sizes and
// colour values become the fonts and brushes of Qt's roles, fixed cells get
// the grey of a header, and the first fixed row becomes the horizontal
// header (so it stays in place while the rows scroll).
class FlexGridStyle : public QIdentityProxyModel
{
    Q_OBJECT
public:
    static constexpr int kTwipsPerPixel = 15;

    FlexGridStyle(FlexGrid &grid, QObject *parent);

    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // A colour value of the original platform (0x00BBGGRR).
    static QColor FromVbColor(int color);
    static QColor FixedBackground() { return QColor(0xE4, 0xE7, 0xEB); }
    static QColor HeaderBackground() { return QColor(0xD9, 0xDD, 0xE3); }

private:
    // The form may go before its window: then the view shows nothing.
    QPointer<FlexGrid> m_grid;
};
