// Which folder of src/ may include from which, checked over the include lines
// of a source tree: the arrows between layers, and Qt Widgets kept to the
// folders that show windows.
#pragma once

#include <QList>
#include <QSet>
#include <QString>

struct LayerViolation
{
    QString file;   // relative to the checked root, e.g. "controls/FormSetup.cpp"
    int line = 0;   // 1-based
    QString reason; // what is wrong, naming the included file
};

// "controls/FormSetup.cpp:6: <reason>", one violation a line.
QString describe(const QList<LayerViolation> &violations);

// The file names of a folder (a Qt module's include folder lists one header
// per class: QWidget, QDialog, qwidget.h ...).
QSet<QString> headerNamesIn(const QString &folder);

// Every include line of every source file under `root` (each first-level
// folder of it is a layer) that breaks the layer table or includes a Qt
// Widgets header (one of `widgetHeaders`, or anything under QtWidgets/)
// outside the folders allowed to.
QList<LayerViolation> checkLayers(const QString &root, const QSet<QString> &widgetHeaders);
