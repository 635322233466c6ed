#pragma once
#include "WizardFixture.h"
#include "controls/Form.h"
#include "gui/QtUi.h"
#include <QtWidgets>
#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <tuple>

// The one application of the test program, on the offscreen platform, whose
// notes about not raising or sizing windows are not the program's.
struct QtApplicationEnvironment : ::testing::Environment
{
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        static QtMessageHandler standard = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext &at, const QString &note) {
                if (!note.startsWith("This plugin does not support") && standard)
                    standard(type, at, note);
            });
        static int argc = 1;
        static char name[] = "test_gui", *argv[] = {name, nullptr};
        app = std::make_unique<QApplication>(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
    }
    void TearDown() override { app.reset(); }
    std::unique_ptr<QApplication> app;
};
inline ::testing::Environment *const kQtApplication = ::testing::AddGlobalTestEnvironment(new QtApplicationEnvironment);

// What a person sees: the entries of a list or drop-down list; the text of a
// label, button or check box, or a frame's title.
template <typename View> QStringList Rows(const View &view)
{
    QStringList rows;
    for (int row = 0; view.model() && row < view.model()->rowCount(); ++row)
        rows << view.model()->index(row, 0).data().toString();
    return rows;
}
inline int RowOf(const QStringList &rows, const QString &text)
{
    return rows.contains(text) ? rows.indexOf(text) : throw std::runtime_error(("no entry «" + text + "»").toStdString());
}
inline QString ShownText(const QWidget &w)
{
    return w.property(qobject_cast<const QGroupBox *>(&w) ? "title" : "text").toString();
}

// A person's doings as real input events: a (double) click on a point of a
// list or on an entry, a key, a drop-down entry reached with the arrow keys.
inline void ClickAt(QAbstractItemView &view, const QPoint &point, bool twice = false)
{
    using E = QEvent;
    for (E::Type type :
         twice ? QList{E::MouseButtonPress, E::MouseButtonRelease, E::MouseButtonDblClick, E::MouseButtonRelease}
               : QList{E::MouseButtonPress, E::MouseButtonRelease}) {
        const Qt::MouseButtons held = type == E::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, point, view.viewport()->mapToGlobal(point), Qt::LeftButton, held, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    }
}
inline void ClickRow(QAbstractItemView &view, const QString &text, bool twice = false)
{
    const QModelIndex index = view.model()->index(RowOf(Rows(view), text), 0);
    view.scrollTo(index);
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
}

// Windows shown through the Qt front end. Message boxes never block: a
// scripted presenter records them and answers "Aceptar".
class GuiTest : public ::testing::Test
{
protected:
    struct Shown
    {
        QString title, text;
        QMessageBox::Icon icon;
        QWidget *parent;
    };
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        qtUi.SetMessagePresenter([this](QMessageBox &box) {
            messages << Shown{box.windowTitle(), box.text(), box.icon(), box.parentWidget()};
            return int(vbOK);
        });
    }
    void TearDown() override
    {
        for (int before = -1; qtUi.Stack().Top() && qtUi.Stack().Count() != before; qtUi.Unload(*qtUi.Stack().Top()))
            before = qtUi.Stack().Count();
        Flush();
    }
    static void Flush()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    QWidget *TopView() const { return qtUi.TopView(); }
    template <typename W = QWidget> W &Widget(const QString &name) const // in the top window
    {
        if (W *widget = TopView() ? TopView()->findChild<W *>(name) : nullptr)
            return *widget;
        throw std::runtime_error(("no widget " + name + " in the top window").toStdString());
    }
    void Click(const QString &button) const { Widget<QPushButton>(button).click(); }
    QStringList ListRows(const QString &list) const { return Rows(Widget<QListView>(list)); }
    QStringList Texts(QStringList names) const
    {
        std::transform(names.begin(), names.end(), names.begin(),
                       [this](const QString &name) { return ShownText(Widget(name)); });
        return names;
    }
    QStringList OpenViewTitles() const // bottom first
    {
        QStringList titles;
        for (Form *form : qtUi.Stack().Forms())
            titles << (qtUi.ViewOf(*form) ? qtUi.ViewOf(*form)->windowTitle() : "(no view)");
        return titles;
    }
    void ExpectOnlyMessage(const QString &text, QMessageBox::Icon icon, QWidget *parent) const
    {
        ASSERT_EQ(messages.size(), 1) << "expected only «" << text.toStdString() << "»";
        EXPECT_EQ(std::tuple(messages[0].title, messages[0].text, messages[0].icon, messages[0].parent),
                  std::tuple(QString("Vendelar"), text, icon, parent));
    }
    QTemporaryDir dir;
    QtUi qtUi{"Vendelar"};
    QList<Shown> messages;
};
