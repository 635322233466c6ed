#pragma once

#include "WizardFixture.h"
#include "controls/Form.h"
#include "gui/QtUi.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <stdexcept>

// The one application of the test program, created before the first test.
struct QtApplicationEnvironment : ::testing::Environment
{
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        // The offscreen platform cannot raise or size windows as a desktop
        // does; its notes about that are not the program's.
        static QtMessageHandler standard = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext &where, const QString &note) {
                if (!(type == QtWarningMsg && note.startsWith("This plugin does not support")) && standard)
                    standard(type, where, note);
            });
        static int argc = 1;
        static char name[] = "test_gui";
        static char *argv[] = {name, nullptr};
        app = std::make_unique<QApplication>(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
    }
    void TearDown() override { app.reset(); }
    std::unique_ptr<QApplication> app;
};
inline ::testing::Environment *const kQtApplication =
    ::testing::AddGlobalTestEnvironment(new QtApplicationEnvironment);

// Failures show texts as texts.
inline void PrintTo(const QString &text, std::ostream *out) { *out << '"' << text.toStdString() << '"'; }

// What a person sees in a list or drop-down list: the texts of its entries.
template <typename View>
QStringList Rows(const View &view)
{
    QStringList rows;
    for (int row = 0; view.model() && row < view.model()->rowCount(); ++row)
        rows << view.model()->index(row, 0).data().toString();
    return rows;
}
inline int RowOf(const QStringList &rows, const QString &text)
{
    if (!rows.contains(text))
        throw std::runtime_error(("no entry «" + text + "»").toStdString());
    return rows.indexOf(text);
}
// The text a label, button or check box shows, or a frame's title.
inline QString ShownText(const QWidget &widget)
{
    return widget.property(qobject_cast<const QGroupBox *>(&widget) ? "title" : "text").toString();
}

// A person's doings, as real input events: a click (or double click) on a
// point of a list or on an entry, a key, an entry of a drop-down list
// reached with the arrow keys.
inline void ClickAt(QAbstractItemView &view, const QPoint &point, bool twice = false)
{
    const auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
        QMouseEvent event(type, point, view.viewport()->mapToGlobal(point), Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    };
    for (int click = 0; click < (twice ? 2 : 1); ++click) {
        send(click ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, Qt::NoButton);
    }
}
inline void ClickRow(QAbstractItemView &view, const QString &text, bool twice = false)
{
    const QModelIndex index = view.model()->index(RowOf(Rows(view), text), 0);
    view.scrollTo(index);
    if (!view.visualRect(index).isValid())
        throw std::runtime_error("the entry is not laid out");
    ClickAt(view, view.visualRect(index).center(), twice);
}
inline void PressKey(QWidget &widget, int key, const QString &text = QString())
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text), release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &press);
    QApplication::sendEvent(&widget, &release);
}
inline void ChooseWithKeys(QComboBox &combo, const QString &text)
{
    const int target = RowOf(Rows(combo), text);
    for (int guard = 0; combo.currentIndex() != target && guard <= combo.count(); ++guard)
        PressKey(combo, combo.currentIndex() < target ? Qt::Key_Down : Qt::Key_Up);
    if (combo.currentIndex() != target)
        throw std::runtime_error("the arrow keys did not reach the entry");
}

// A message box as the scripted presenter saw it.
struct ShownMessage
{
    QString title, text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QStringList buttons; // texts, in order
    QWidget *parent = nullptr;
};

// Windows shown through the Qt front end (offscreen). Message boxes never
// block: a presenter records them and answers vbYes to a box with "Sí",
// vbOK otherwise.
class GuiTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        qtUi.SetMessagePresenter([this](QMessageBox &box) {
            ShownMessage shown{box.windowTitle(), box.text(), box.icon(), {}, box.parentWidget()};
            for (QAbstractButton *button : box.buttons())
                shown.buttons << button->text();
            messages << shown;
            return shown.buttons.contains("Sí") ? int(vbYes) : int(vbOK);
        });
    }
    void TearDown() override
    {
        for (int before = -1; qtUi.Stack().Top() && qtUi.Stack().Count() != before;) {
            before = qtUi.Stack().Count();
            qtUi.Unload(*qtUi.Stack().Top());
        }
        Flush();
    }
    // Lets deferred deletions and posted events run.
    static void Flush()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    QWidget *TopView() const { return qtUi.TopView(); }
    // The widget of this name and type in the top window (throws when absent).
    template <typename W = QWidget>
    W &Widget(const QString &name) const
    {
        if (W *widget = TopView() ? TopView()->findChild<W *>(name) : nullptr)
            return *widget;
        throw std::runtime_error(("no widget " + name + " in the top window").toStdString());
    }
    void Click(const QString &button) const { Widget<QPushButton>(button).click(); }
    QStringList ListRows(const QString &list) const { return Rows(Widget<QListView>(list)); }
    QStringList Texts(const QStringList &widgets) const
    {
        QStringList texts;
        for (const QString &name : widgets)
            texts << ShownText(Widget(name));
        return texts;
    }
    // The titles of the open windows' views, bottom first.
    QStringList OpenViewTitles() const
    {
        QStringList titles;
        for (Form *form : qtUi.Stack().Forms())
            titles << (qtUi.ViewOf(*form) ? qtUi.ViewOf(*form)->windowTitle() : "(no view)");
        return titles;
    }
    void ExpectMessage(int index, const QString &text, QMessageBox::Icon icon, QWidget *parent) const
    {
        ASSERT_GT(messages.size(), index) << "no message «" << text.toStdString() << "»";
        EXPECT_EQ(messages[index].title, "Vendelar");
        EXPECT_EQ(messages[index].text, text);
        EXPECT_EQ(messages[index].icon, icon) << text.toStdString();
        EXPECT_EQ(messages[index].parent, parent) << text.toStdString();
    }

    QTemporaryDir dir;
    QtUi qtUi;
    QList<ShownMessage> messages;
};
