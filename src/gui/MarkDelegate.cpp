#include "gui/MarkDelegate.h"

#include "controls/FlexGrid.h"

#include <QApplication>
#include <QBrush>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

bool MarkDelegate::IsMark(const QModelIndex &index)
{
    const QString text = index.data(Qt::DisplayRole).toString();
    return text.size() == 1 && (text.at(0) == QChar(kCheck) || text.at(0) == QChar(kCross))
           && index.data(FlexGrid::FontNameRole).toString().compare(QLatin1String("Wingdings"), Qt::CaseInsensitive) == 0;
}

void MarkDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (!IsMark(index)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    // The cell's background, selection and focus as usual, without its text.
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    const QWidget *widget = option.widget;
    QStyle *style = widget ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);

    const bool check = index.data(Qt::DisplayRole).toString().at(0) == QChar(kCheck);
    const QVariant brush = index.data(Qt::ForegroundRole);
    QColor color = brush.isValid() ? brush.value<QBrush>().color() : (check ? QColor(Qt::green) : QColor(Qt::red));
    // The platform's pure green is hard to read on white; a shade darker is not.
    color = color.darker(125);

    const qreal side = qMin(cell.rect.width(), cell.rect.height()) * 0.62;
    if (side < 4)
        return;
    const QRectF box(cell.rect.center().x() - side / 2 + 0.5, cell.rect.center().y() - side / 2 + 0.5, side, side);
    const auto at = [&box](qreal x, qreal y) { return QPointF(box.left() + x * box.width(), box.top() + y * box.height()); };
    QPainterPath mark;
    if (check) {
        mark.moveTo(at(0.12, 0.55));
        mark.lineTo(at(0.40, 0.82));
        mark.lineTo(at(0.90, 0.20));
    } else {
        mark.moveTo(at(0.18, 0.18));
        mark.lineTo(at(0.82, 0.82));
        mark.moveTo(at(0.82, 0.18));
        mark.lineTo(at(0.18, 0.82));
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color, qMax(2.0, side * 0.16), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(mark);
    painter->restore();
}
