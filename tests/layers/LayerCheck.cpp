#include "LayerCheck.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace {

// The folders each layer may include from (besides itself).
const QHash<QString, QStringList> &allowedArrows()
{
    static const QHash<QString, QStringList> arrows{
        {"util", {}},
        {"data", {"util"}},
        {"controls", {"util"}},
        {"session", {"data", "controls", "util"}},
        {"wizard", {"session", "controls", "data", "util"}},
        {"catalogue", {"wizard", "session", "controls", "data", "util"}},
        {"generator", {"data", "util"}},
        {"merge", {"data", "util"}},
        {"gui", {"wizard", "catalogue", "controls"}},
    };
    return arrows;
}

// Layers that sit on top of everything and may include anything.
bool isUnrestricted(const QString &layer)
{
    return layer == "addin" || layer == "app";
}

bool mayUseWidgets(const QString &layer)
{
    return layer == "gui" || isUnrestricted(layer);
}

QString firstFolderOf(const QString &relativePath)
{
    const qsizetype slash = relativePath.indexOf('/');
    return slash < 0 ? QString() : relativePath.left(slash);
}

// The include lines of one file outside comments: (line number, delimiter, name).
struct IncludeLine
{
    int line;
    QChar delimiter;
    QString name;
};

QList<IncludeLine> includeLinesOf(const QString &path)
{
    static const QRegularExpression include(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    QList<IncludeLine> lines;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return lines;
    bool inBlockComment = false;
    int number = 0;
    while (!file.atEnd()) {
        QString text = QString::fromUtf8(file.readLine());
        ++number;
        if (inBlockComment) {
            const qsizetype end = text.indexOf("*/");
            if (end < 0)
                continue;
            text = text.mid(end + 2);
            inBlockComment = false;
        }
        const QRegularExpressionMatch match = include.match(text);
        if (match.hasMatch())
            lines.append({number, match.captured(1).at(0), match.captured(2).trimmed()});
        const qsizetype open = text.lastIndexOf("/*");
        if (open >= 0 && text.indexOf("*/", open + 2) < 0 && !text.left(open).contains("//"))
            inBlockComment = true;
    }
    return lines;
}

// The layer an include reaches, the way the compiler looks: a quoted one next
// to the including file first, then from the root (the include path of src/).
// Empty when it reaches no layer folder (a generated ui_*.h, a system header).
QString layerReached(const QDir &root, const QString &includingFile, const IncludeLine &include)
{
    const QString &included = include.name;
    if (include.delimiter == '"') {
        const QString besideFile = QDir::cleanPath(QFileInfo(root.filePath(includingFile)).absolutePath() + '/' + included);
        const QString fromBeside = root.relativeFilePath(besideFile);
        if (QFileInfo::exists(besideFile) && !fromBeside.startsWith("../"))
            return firstFolderOf(fromBeside);
    }
    const QString fromRoot = QDir::cleanPath(included);
    const QString folder = firstFolderOf(fromRoot);
    if (!folder.isEmpty() && !folder.startsWith('.') && QFileInfo(root.filePath(folder)).isDir())
        return folder;
    return {};
}

QString arrowProblem(const QString &from, const QString &to, const QString &included)
{
    if (to.isEmpty() || to == from || isUnrestricted(from))
        return {};
    if (!allowedArrows().contains(from))
        return from + " is not a layer of the table, yet it includes \"" + included + "\"";
    const QStringList allowed = allowedArrows().value(from);
    if (allowed.contains(to))
        return {};
    return from + " may not include from " + to + " (\"" + included
           + "\"); it may include from: " + (allowed.isEmpty() ? QString("nothing") : allowed.join(", "));
}

// A Qt Widgets class header, the module header, or a window class that uic
// generates from a .ui file (ui_*.h).
bool isWidgetsHeader(const QString &included, const QSet<QString> &widgetHeaders)
{
    const QString fileName = included.section('/', -1);
    return included == "QtWidgets" || included.startsWith("QtWidgets/") || widgetHeaders.contains(included)
           || (fileName.startsWith("ui_") && fileName.endsWith(".h"));
}

} // namespace

QString describe(const QList<LayerViolation> &violations)
{
    QStringList lines;
    for (const LayerViolation &violation : violations)
        lines << violation.file + ':' + QString::number(violation.line) + ": " + violation.reason;
    return lines.join('\n');
}

QSet<QString> headerNamesIn(const QString &folder)
{
    const QStringList names = QDir(folder).entryList(QDir::Files);
    return QSet<QString>(names.begin(), names.end());
}

QList<LayerViolation> checkLayers(const QString &rootPath, const QSet<QString> &widgetHeaders)
{
    static const QStringList sourcePatterns{"*.h", "*.hpp", "*.cpp", "*.cc", "*.cxx", "*.inl"};
    const QDir root(rootPath);
    QStringList files;
    QDirIterator it(rootPath, sourcePatterns, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << root.relativeFilePath(it.next());
    files.sort(); // a stable report, whatever order the file system lists

    QList<LayerViolation> violations;
    for (const QString &file : files) {
        const QString layer = firstFolderOf(file);
        if (layer.isEmpty())
            continue; // files at the root belong to no layer
        for (const IncludeLine &include : includeLinesOf(root.filePath(file))) {
            QString problem;
            if (isWidgetsHeader(include.name, widgetHeaders)) {
                if (!mayUseWidgets(layer))
                    problem = layer + " may not include the Qt Widgets header <" + include.name
                              + ">; only gui, addin and app may";
            } else {
                problem = arrowProblem(layer, layerReached(root, file, include), include.name);
            }
            if (!problem.isEmpty())
                violations.append({file, include.line, problem});
        }
    }
    return violations;
}
