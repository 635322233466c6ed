#include "LayerCheck.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <ostream>

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

INSTANTIATE_TEST_SUITE_P(
    Table, LayerArrows,
    testing::Values(
        // allowed arrows, one per row of the table, and the same folder
        ArrowCase{"data/A.cpp", "#include \"util/Text.h\"", false},
        ArrowCase{"controls/A.cpp", "#include \"util/Text.h\"", false},
        ArrowCase{"session/A.cpp", "#include \"controls/Form.h\"", false},
        ArrowCase{"wizard/A.cpp", "#include \"session/Ctx.h\"", false},
        ArrowCase{"catalogue/A.cpp", "#include \"wizard/Step.h\"", false},
        ArrowCase{"generator/A.cpp", "#include \"data/Db.h\"", false},
        ArrowCase{"merge/A.cpp", "#include \"util/Text.h\"", false},
        ArrowCase{"gui/A.cpp", "#include \"catalogue/List.h\"", false},
        ArrowCase{"app/A.cpp", "#include \"session/Ctx.h\"", false},
        ArrowCase{"addin/A.cpp", "#include \"gui/View.h\"", false}, ArrowCase{"wizard/A.cpp", "#include \"Step.h\"", false},
        ArrowCase{"util/A.cpp", "#include \"util/Text.h\"", false},
        // not include lines, or not ours
        ArrowCase{"util/A.cpp", "// #include \"data/Db.h\"", false},
        ArrowCase{"util/A.cpp", "/* #include \"data/Db.h\" */", false},
        ArrowCase{"gui/A.cpp", "#include \"ui_frmSelCursos.h\"", false},
        ArrowCase{"data/A.cpp", "#include <sqlite3.h>", false}, ArrowCase{"data/A.cpp", "#include <QString>", false},
        // forbidden arrows
        ArrowCase{"util/A.cpp", "#include \"data/Db.h\"", true}, ArrowCase{"data/A.cpp", "#include \"session/Ctx.h\"", true},
        ArrowCase{"controls/A.cpp", "#include \"session/Ctx.h\"", true},
        ArrowCase{"controls/A.h", "  #  include \"data/Db.h\"", true},
        ArrowCase{"controls/A.cpp", "#include \"../session/Ctx.h\"", true},
        ArrowCase{"controls/A.cpp", "#include <session/Ctx.h>", true},
        ArrowCase{"session/A.cpp", "#include \"wizard/Step.h\"", true},
        ArrowCase{"wizard/A.cpp", "#include \"gui/View.h\"", true},
        ArrowCase{"generator/A.cpp", "#include \"merge/Merge.h\"", true},
        ArrowCase{"merge/A.cpp", "#include \"session/Ctx.h\"", true},
        ArrowCase{"gui/A.cpp", "#include \"session/Ctx.h\"", true}, ArrowCase{"gui/A.cpp", "#include \"util/Text.h\"", true},
        ArrowCase{"report/A.cpp", "#include \"data/Db.h\"", true},
        // Qt Widgets outside the window folders
        ArrowCase{"gui/A.cpp", "#include <QDialog>", false}, ArrowCase{"app/A.cpp", "#include <QApplication>", false},
        ArrowCase{"addin/A.cpp", "#include <QtWidgets/QWidget>", false},
        ArrowCase{"wizard/A.cpp", "#include <QMessageBox>", true},
        ArrowCase{"controls/A.h", "#include <QtWidgets/QWidget>", true},
        ArrowCase{"session/A.cpp", "#include <QtWidgets>", true}, ArrowCase{"data/A.cpp", "#include <qwidget.h>", true}));

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
