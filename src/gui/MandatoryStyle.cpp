#include "gui/MandatoryStyle.h"

#include <QColor>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPalette>
#include <QString>
#include <QWidget>

// Lists and text boxes get a soft border too; a drop-down list keeps its
// own frame and arrow (a style sheet would replace them), so only its
// colours change.
void ShowMandatory(QWidget &widget, bool mandatory)
{
    if (widget.property("mandatory").toBool() == mandatory)
        return;
    widget.setProperty("mandatory", mandatory);
    const QColor color(QString::fromLatin1(kMandatoryColor));
    if (qobject_cast<QComboBox *>(&widget)) {
        QPalette palette;
        if (mandatory) {
            palette = widget.palette();
            palette.setColor(QPalette::Active, QPalette::Button, color);
            palette.setColor(QPalette::Inactive, QPalette::Button, color);
            palette.setColor(QPalette::Active, QPalette::Base, color);
            palette.setColor(QPalette::Inactive, QPalette::Base, color);
        }
        widget.setPalette(palette);
        return;
    }
    QString style;
    if (!mandatory)
        style = QString();
    else if (qobject_cast<QListView *>(&widget))
        style = QStringLiteral("QListView { background-color: %1; border: 1px solid #D6C98F; }").arg(color.name());
    else if (qobject_cast<QLineEdit *>(&widget))
        style = QStringLiteral("QLineEdit { background-color: %1; border: 1px solid #D6C98F; border-radius: 2px;"
                               " padding: 1px 3px; }")
                    .arg(color.name());
    else
        style = QStringLiteral("%1 { background-color: %2; }")
                    .arg(QString::fromLatin1(widget.metaObject()->className()), color.name());
    widget.setStyleSheet(style);
}
