#include "DemoIcon.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

bool WriteDemoIcon(const QString &path)
{
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    // A blue tile with a white sheet and a green tick: "a declaration, done".
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x1f, 0x5f, 0xa8));
    p.drawRoundedRect(QRectF(2, 2, 60, 60), 10, 10);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(16, 10, 30, 42));
    p.setPen(QPen(QColor(0x9a, 0xb3, 0xd1), 2));
    for (int y = 18; y <= 34; y += 6)
        p.drawLine(QPointF(21, y), QPointF(41, y));
    QPainterPath tick;
    tick.moveTo(28, 44);
    tick.lineTo(36, 52);
    tick.lineTo(54, 30);
    p.setPen(QPen(QColor(0x2e, 0xa0, 0x43), 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(tick);
    p.end();
    QDir().mkpath(QFileInfo(path).absolutePath());
    return image.save(path, "ICO") || image.save(path, "PNG");
}
