#include "wizard/ListMoves.h"

#include "controls/ListControls.h"

void MoveSelected(ListControl &from, ListControl &to)
{
    const int index = from.ListIndex();
    if (index < 0)
        return;
    to.AddItem(from.List(index));
    to.SetItemData(to.NewIndex(), from.ItemData(index));
    from.RemoveItem(index);
}

void MoveAll(ListControl &from, ListControl &to)
{
    for (int i = 0; i < from.ListCount(); ++i) {
        to.AddItem(from.List(i));
        to.SetItemData(to.NewIndex(), from.ItemData(i));
    }
    from.Clear();
}
