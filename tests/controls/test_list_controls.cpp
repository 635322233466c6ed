#include "TestUi.h"
#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListControls.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

// A window with one control of each kind, counting the events it gets.
class Probe : public Form
{
public:
    explicit Probe(Ui &ui) : Form(ui, QStringLiteral("Probe"), QStringLiteral("Prueba"))
    {
        lst.Click = [this] { ++listClicks; };
        lst.DblClick = [this] { ++doubleClicks; };
        cbo.Click = [this] { ++comboClicks; };
        chk.Click = [this] { ++checkClicks; };
        cmd.Click = [this] { ++presses; };
        txt.Change = [this] { ++changes; };
    }
    ListBox lst{this, QStringLiteral("lst")};
    ComboBox cbo{this, QStringLiteral("cbo")};
    CheckBox chk{this, QStringLiteral("chk"), QStringLiteral("Casilla")};
    CommandButton cmd{this, QStringLiteral("cmd"), QStringLiteral("Aceptar")};
    TextBox txt{this, QStringLiteral("txt")};
    ProgressBar bar{this, QStringLiteral("bar")};
    int listClicks = 0, doubleClicks = 0, comboClicks = 0, checkClicks = 0, presses = 0, changes = 0;
};

class ControlModels : public ::testing::Test
{
protected:
    TestUi ui;
    Probe form{ui};
};

} // namespace

TEST_F(ControlModels, TheWindowKnowsItsControlsByNameInOrder)
{
    QStringList names;
    for (ControlBase *control : form.Controls())
        names << control->Name();
    EXPECT_EQ(names, (QStringList{QStringLiteral("lst"), QStringLiteral("cbo"), QStringLiteral("chk"),
                                  QStringLiteral("cmd"), QStringLiteral("txt"), QStringLiteral("bar")}));
    EXPECT_EQ(form.FindControl(QStringLiteral("chk")), &form.chk);
    EXPECT_EQ(form.FindControl(QStringLiteral("nada")), nullptr);
}

TEST_F(ControlModels, AddingEntriesDoesNotClickSettingTheIndexDoes)
{
    form.lst.AddItem(QStringLiteral("uno"));
    form.lst.SetItemData(form.lst.NewIndex(), 10);
    form.lst.AddItem(QStringLiteral("dos"));
    form.lst.SetItemData(form.lst.NewIndex(), 20);
    form.lst.AddItem(QStringLiteral("cero"), 0);
    EXPECT_EQ(form.lst.NewIndex(), 0);
    EXPECT_EQ(form.lst.Texts(), (QStringList{QStringLiteral("cero"), QStringLiteral("uno"), QStringLiteral("dos")}));
    EXPECT_EQ(form.listClicks, 0);

    form.lst.SetListIndex(2);
    EXPECT_EQ(form.listClicks, 1);
    EXPECT_EQ(form.lst.Text(), QStringLiteral("dos"));
    EXPECT_EQ(form.lst.ItemData(2), 20);
    form.lst.SetListIndex(2); // unchanged: no click
    EXPECT_EQ(form.listClicks, 1);
    form.lst.UserClick(2);    // a person clicking the same entry: a click
    EXPECT_EQ(form.listClicks, 2);
    EXPECT_THROW(form.lst.SetListIndex(3), std::out_of_range);
    EXPECT_EQ(form.lst.IndexOfItemData(10), 1);
    EXPECT_EQ(form.lst.IndexOfItemData(99), -1);
}

TEST_F(ControlModels, RemovingEntriesKeepsTheHighlightOnTheSameEntry)
{
    for (const char *text : {"a", "b", "c", "d"})
        form.lst.AddItem(QString::fromLatin1(text));
    form.lst.SetListIndex(2);
    form.lst.RemoveItem(0);
    EXPECT_EQ(form.lst.ListIndex(), 1);
    EXPECT_EQ(form.lst.Text(), QStringLiteral("c"));
    form.lst.RemoveItem(1);
    EXPECT_EQ(form.lst.ListIndex(), -1);
    EXPECT_EQ(form.lst.NewIndex(), -1);
    form.lst.SetListIndex(0);
    form.lst.Clear();
    EXPECT_EQ(form.lst.ListCount(), 0);
    EXPECT_EQ(form.lst.ListIndex(), -1);
    EXPECT_EQ(form.lst.Text(), QString());
}

TEST_F(ControlModels, DoubleClicksOnlyCountOnAnEntry)
{
    form.lst.AddItem(QStringLiteral("a"));
    form.lst.DoubleClick(-1);
    form.lst.DoubleClick(1);
    EXPECT_EQ(form.doubleClicks, 0);
    form.lst.DoubleClick(0);
    EXPECT_EQ(form.doubleClicks, 1);
    EXPECT_EQ(form.lst.ListIndex(), 0);
}

TEST_F(ControlModels, TheListIsAnItemModelAViewCanShow)
{
    QSignalSpy inserted(&form.cbo, &QAbstractItemModel::rowsInserted);
    QSignalSpy index(&form.cbo, &ListControl::ListIndexChanged);
    form.cbo.AddItem(QStringLiteral("Andalucía"));
    form.cbo.SetItemData(0, 1);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(form.cbo.rowCount(), 1);
    EXPECT_EQ(form.cbo.data(form.cbo.index(0), Qt::DisplayRole).toString(), QStringLiteral("Andalucía"));
    EXPECT_EQ(form.cbo.data(form.cbo.index(0), ListControl::ItemDataRole).toLongLong(), 1);
    form.cbo.SetListIndex(0);
    EXPECT_EQ(index.count(), 1);
    EXPECT_EQ(form.comboClicks, 1);
}

TEST_F(ControlModels, CheckBoxValueClicksWhenItChanges)
{
    form.chk.SetValue(1);
    form.chk.SetValue(1);
    EXPECT_EQ(form.checkClicks, 1);
    form.chk.SetValue(0);
    EXPECT_EQ(form.checkClicks, 2);
}

TEST_F(ControlModels, ADisabledButtonIgnoresPresses)
{
    form.cmd.Press();
    form.cmd.SetEnabled(false);
    form.cmd.Press();
    EXPECT_EQ(form.presses, 1);
}

TEST_F(ControlModels, TypedKeysPassThroughKeyPress)
{
    form.txt.KeyPress = [](int &key) {
        if (key == 'x')
            key = 0;               // dropped
        else if (key == '.')
            key = ',';             // replaced
    };
    for (int key : {int('1'), int('x'), int('.'), int('5'), 8, int('0')})
        form.txt.TypeKey(key);
    EXPECT_EQ(form.txt.Text(), QStringLiteral("1,0"));
    EXPECT_EQ(form.changes, 5);
}

TEST_F(ControlModels, ProgressStaysWithinItsRange)
{
    form.bar.SetMax(10);
    form.bar.SetValue(12);
    EXPECT_EQ(form.bar.Value(), 10);
    form.bar.SetValue(-3);
    EXPECT_EQ(form.bar.Value(), 0);
}
