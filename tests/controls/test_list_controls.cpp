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
    explicit Probe(Ui &ui) : Form(ui, "Probe", "Prueba")
    {
        lst.Click = [this] { ++clicks; };
        lst.DblClick = [this] { ++doubleClicks; };
        chk.Click = [this] { ++checkClicks; };
        cmd.Click = [this] { ++presses; };
        txt.Change = [this] { ++changes; };
    }
    ListBox lst{this, "lst"};
    CheckBox chk{this, "chk", "Casilla"};
    CommandButton cmd{this, "cmd", "Aceptar"};
    TextBox txt{this, "txt"};
    int clicks = 0, doubleClicks = 0, checkClicks = 0, presses = 0, changes = 0;
};

class ControlModels : public ::testing::Test
{
protected:
    TestUi ui;
    Probe form{ui};
};

} // namespace

TEST_F(ControlModels, TheWindowKnowsItsControlsByName)
{
    QStringList names;
    for (ControlBase *control : form.Controls())
        names << control->Name();
    EXPECT_EQ(names, (QStringList{"lst", "chk", "cmd", "txt"}));
    EXPECT_EQ(form.FindControl("chk"), &form.chk);
    EXPECT_EQ(form.FindControl("nada"), nullptr);
}

TEST_F(ControlModels, SettingTheListIndexClicksAddingAndRemovingDoNot)
{
    QSignalSpy inserted(&form.lst, &QAbstractItemModel::rowsInserted);
    for (const char *text : {"a", "b", "c", "d"}) {
        form.lst.AddItem(text);
        form.lst.SetItemData(form.lst.NewIndex(), form.lst.NewIndex() * 10);
    }
    form.lst.AddItem("cero", 0);
    EXPECT_EQ(form.lst.NewIndex(), 0);
    EXPECT_EQ(inserted.count(), 5);
    EXPECT_EQ(form.lst.data(form.lst.index(1), ListControl::ItemDataRole).toLongLong(), 0);
    EXPECT_EQ(form.clicks, 0);

    form.lst.SetListIndex(3);
    form.lst.SetListIndex(3); // unchanged: no second click
    EXPECT_EQ(form.clicks, 1);
    form.lst.UserClick(3); // a person clicking the highlighted entry: a click
    EXPECT_EQ(form.clicks, 2);
    EXPECT_EQ(form.lst.Text(), "c");
    EXPECT_THROW(form.lst.SetListIndex(5), std::out_of_range);

    form.lst.RemoveItem(0); // the highlight stays on the same entry
    EXPECT_EQ(form.lst.ListIndex(), 2);
    form.lst.RemoveItem(2); // the highlighted entry goes: no highlight
    EXPECT_EQ(form.lst.ListIndex(), -1);
    EXPECT_EQ(form.lst.NewIndex(), -1);
    EXPECT_EQ(form.lst.IndexOfItemData(30), 2);
    form.lst.Clear();
    EXPECT_EQ(form.lst.Text(), "");
    EXPECT_EQ(form.clicks, 2);
}

TEST_F(ControlModels, DoubleClicksOnlyCountOnAnEntry)
{
    form.lst.AddItem("a");
    form.lst.DoubleClick(-1);
    form.lst.DoubleClick(1);
    EXPECT_EQ(form.doubleClicks, 0);
    form.lst.DoubleClick(0);
    EXPECT_EQ(form.doubleClicks, 1);
    EXPECT_EQ(form.lst.ListIndex(), 0);
}

TEST_F(ControlModels, CheckBoxesButtonsAndTextBoxesFireTheirEvents)
{
    form.chk.SetValue(1);
    form.chk.SetValue(1);
    form.chk.SetValue(0);
    EXPECT_EQ(form.checkClicks, 2); // only changes click

    form.cmd.Press();
    form.cmd.SetEnabled(false);
    form.cmd.Press();
    EXPECT_EQ(form.presses, 1);

    form.txt.KeyPress = [](int &key) { key = key == 'x' ? 0 : key == '.' ? ',' : key; };
    for (int key : {int('1'), int('x'), int('.'), int('5'), 8, int('0')})
        form.txt.TypeKey(key);
    EXPECT_EQ(form.txt.Text(), "1,0"); // dropped, replaced, backspace
    EXPECT_EQ(form.changes, 5);
}
