#include "LayerCheck.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <ostream>
#include <string>

inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace {

// A few Widgets headers, enough for the planted trees.
const QSet<QString> kWidgetHeaders{"QWidget", "QDialog", "QMessageBox", "QApplication", "qwidget.h"};

// A throw-away source tree: every file gets two lines before the given one,
// so a violation must name line 3.
class Tree
{
public:
    Tree() { EXPECT_TRUE(m_dir.isValid()); }
    void add(const QString &file, const QString &thirdLine = QString())
    {
        const QString path = m_dir.filePath(file);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(("// " + file + "\n#pragma once\n" + thirdLine + "\nint x;\n").toUtf8());
    }
    QString root() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

struct ArrowCase
{
    const char *file;
    const char *line;
    bool violates;
};

class LayerArrows : public testing::TestWithParam<ArrowCase>
{
};

TEST_P(LayerArrows, AreReportedWithFileAndLineOnlyWhenTheTableForbidsThem)
{
    const ArrowCase c = GetParam();
    SCOPED_TRACE(std::string(c.file) + ": " + c.line);
    Tree tree;
    for (const char *header : {"util/Text.h", "data/Db.h", "controls/Form.h", "session/Ctx.h", "wizard/Step.h",
                               "catalogue/List.h", "generator/Gen.h", "merge/Merge.h", "gui/View.h", "app/Host.h"})
        tree.add(header);
    tree.add(c.file, c.line);

    const QList<LayerViolation> violations = checkLayers(tree.root(), kWidgetHeaders);

    if (!c.violates) {
        EXPECT_TRUE(violations.isEmpty()) << describe(violations).toStdString();
        return;
    }
    ASSERT_EQ(violations.size(), 1) << describe(violations).toStdString();
    EXPECT_EQ(violations[0].file, QString(c.file));
    EXPECT_EQ(violations[0].line, 3);
    EXPECT_TRUE(describe(violations).startsWith(QString(c.file) + ":3: ")) << describe(violations).toStdString();
}

const ArrowCase kArrowCases[] = {
    // allowed arrows, one per row of the table, and the same folder
    {"data/A.cpp", "#include \"util/Text.h\"", false},
    {"controls/A.cpp", "#include \"util/Text.h\"", false},
    {"session/A.cpp", "#include \"controls/Form.h\"", false},
    {"wizard/A.cpp", "#include \"session/Ctx.h\"", false},
    {"catalogue/A.cpp", "#include \"wizard/Step.h\"", false},
    {"generator/A.cpp", "#include \"data/Db.h\"", false},
    {"merge/A.cpp", "#include \"util/Text.h\"", false},
    {"gui/A.cpp", "#include \"catalogue/List.h\"", false},
    {"app/A.cpp", "#include \"session/Ctx.h\"", false},
    {"addin/A.cpp", "#include \"gui/View.h\"", false},
    {"wizard/A.cpp", "#include \"Step.h\"", false},
    {"util/A.cpp", "#include \"util/Text.h\"", false},
    // not include lines, or not ours
    {"util/A.cpp", "// #include \"data/Db.h\"", false},
    {"util/A.cpp", "/* #include \"data/Db.h\" */", false},
    {"gui/A.cpp", "#include \"ui_frmSelCursos.h\"", false},
    {"data/A.cpp", "#include <sqlite3.h>", false},
    {"data/A.cpp", "#include <QString>", false},
    // forbidden arrows
    {"util/A.cpp", "#include \"data/Db.h\"", true},
    {"data/A.cpp", "#include \"session/Ctx.h\"", true},
    {"controls/A.cpp", "#include \"session/Ctx.h\"", true},
    {"controls/A.h", "  #  include \"data/Db.h\"", true},
    {"controls/A.cpp", "#include \"../session/Ctx.h\"", true},
    {"controls/A.cpp", "#include <session/Ctx.h>", true},
    {"session/A.cpp", "#include \"wizard/Step.h\"", true},
    {"wizard/A.cpp", "#include \"gui/View.h\"", true},
    {"generator/A.cpp", "#include \"merge/Merge.h\"", true},
    {"merge/A.cpp", "#include \"session/Ctx.h\"", true},
    {"gui/A.cpp", "#include \"session/Ctx.h\"", true},
    {"gui/A.cpp", "#include \"util/Text.h\"", true},
    {"report/A.cpp", "#include \"data/Db.h\"", true},
    // Qt Widgets outside the window folders
    {"gui/A.cpp", "#include <QDialog>", false},
    {"app/A.cpp", "#include <QApplication>", false},
    {"addin/A.cpp", "#include <QtWidgets/QWidget>", false},
    {"wizard/A.cpp", "#include <QMessageBox>", true},
    {"controls/A.h", "#include <QtWidgets/QWidget>", true},
    {"session/A.cpp", "#include <QtWidgets>", true},
    {"data/A.cpp", "#include <qwidget.h>", true},
    {"wizard/A.cpp", "#include \"ui_frmSelCursos.h\"", true},
};

INSTANTIATE_TEST_SUITE_P(Table, LayerArrows, testing::ValuesIn(kArrowCases));

TEST(LayerCheck, ReportsEveryViolationOfATreeInFileOrder)
{
    Tree tree;
    tree.add("util/Text.h");
    tree.add("data/Db.h", "#include \"util/Text.h\"");
    tree.add("wizard/Step.cpp", "#include <QDialog>");
    tree.add("controls/Form.cpp", "#include \"data/Db.h\"");

    const QList<LayerViolation> violations = checkLayers(tree.root(), kWidgetHeaders);

    EXPECT_EQ(describe(violations),
              "controls/Form.cpp:3: controls may not include from data (\"data/Db.h\"); it may include from: util\n"
              "wizard/Step.cpp:3: wizard may not include the Qt Widgets header <QDialog>; only gui, addin and app "
              "may");
}

TEST(LayerCheck, QtWidgetsHeadersAreReadFromTheInstalledModule)
{
    const QSet<QString> headers = headerNamesIn(M182_QT_WIDGETS_INCLUDE_DIR);
    for (const char *widgets : {"QWidget", "QDialog", "QApplication", "QMessageBox", "QTableView", "QPushButton"})
        EXPECT_TRUE(headers.contains(widgets)) << widgets;
    for (const char *notWidgets : {"QString", "QSqlDatabase", "QAction", "QFont", "QObject"})
        EXPECT_FALSE(headers.contains(notWidgets)) << notWidgets;
}

// The project's own sources keep the layers.
TEST(LayerCheck, SourceTreeKeepsTheLayers)
{
    ASSERT_TRUE(QFileInfo(QString(M182_SOURCE_DIR) + "/util").isDir()) << M182_SOURCE_DIR;
    const QList<LayerViolation> violations = checkLayers(M182_SOURCE_DIR, headerNamesIn(M182_QT_WIDGETS_INCLUDE_DIR));
    EXPECT_TRUE(violations.isEmpty()) << describe(violations).toStdString();
}

} // namespace
