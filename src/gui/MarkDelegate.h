#pragma once

#include <QStyledItemDelegate>

// Draws the grid's two marks, "ü" (yes) and "û" (no) in a Wingdings cell,
// as a check mark and a cross in the cell's colour, so they look right on
// machines without that font. The cell's text stays as it is; every other
// cell is drawn as usual.
class MarkDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr char16_t kCheck = u'\u00FC'; // "ü"
    static constexpr char16_t kCross = u'\u00FB'; // "û"

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // Whether a cell holds one of the marks.
    static bool IsMark(const QModelIndex &index);
};
