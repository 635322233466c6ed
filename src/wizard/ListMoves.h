#pragma once

class ListControl;

// Moving entries between an "available" and a "selected" list, shared by
// the steps that pick years, activities and months. Moved entries keep their
// ItemData and go to the end of the target list.

// Moves the highlighted entry of `from`; with none highlighted, nothing.
void MoveSelected(ListControl &from, ListControl &to);
// Moves every entry of `from`, in list order, then empties it.
void MoveAll(ListControl &from, ListControl &to);
