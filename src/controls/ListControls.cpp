#include "controls/ListControls.h"

#include <stdexcept>

ListControl::ListControl(Form *owner, const QString &name) : ControlBase(owner, name)
{
}

void ListControl::AddItem(const QString &text)
{
    AddItem(text, ListCount());
}

void ListControl::AddItem(const QString &text, int index)
{
    if (index < 0 || index > ListCount())
        throw std::out_of_range("AddItem: índice fuera de la lista");
    beginInsertRows(QModelIndex(), index, index);
    m_items.insert(index, Item{text, 0});
    endInsertRows();
    m_newIndex = index;
    if (m_listIndex >= index) {
        ++m_listIndex;
        Q_EMIT ListIndexChanged(m_listIndex);
    }
}

void ListControl::RemoveItem(int index)
{
    if (index < 0 || index >= ListCount())
        throw std::out_of_range("RemoveItem: índice fuera de la lista");
    beginRemoveRows(QModelIndex(), index, index);
    m_items.removeAt(index);
    endRemoveRows();
    m_newIndex = -1;
    if (m_listIndex == index)
        m_listIndex = -1;
    else if (m_listIndex > index)
        --m_listIndex;
    else
        return;
    Q_EMIT ListIndexChanged(m_listIndex);
}

void ListControl::Clear()
{
    beginResetModel();
    m_items.clear();
    endResetModel();
    m_newIndex = -1;
    m_listIndex = -1;
    Q_EMIT ListIndexChanged(m_listIndex);
}

QString ListControl::List(int index) const
{
    return index >= 0 && index < ListCount() ? m_items.at(index).text : QString();
}

qlonglong ListControl::ItemData(int index) const
{
    if (index < 0 || index >= ListCount())
        throw std::out_of_range("ItemData: índice fuera de la lista");
    return m_items.at(index).data;
}

void ListControl::SetItemData(int index, qlonglong data)
{
    if (index < 0 || index >= ListCount())
        throw std::out_of_range("ItemData: índice fuera de la lista");
    m_items[index].data = data;
    Q_EMIT dataChanged(this->index(index), this->index(index), {ItemDataRole});
}

void ListControl::SetListIndex(int index)
{
    if (index < -1 || index >= ListCount())
        throw std::out_of_range("ListIndex: valor no válido");
    if (index == m_listIndex)
        return;
    m_listIndex = index;
    Q_EMIT ListIndexChanged(m_listIndex);
    Fire(Click);
}

void ListControl::UserClick(int index)
{
    if (index < 0 || index >= ListCount())
        return;
    if (index != m_listIndex) {
        m_listIndex = index;
        Q_EMIT ListIndexChanged(m_listIndex);
    }
    Fire(Click);
}

QString ListControl::Text() const
{
    return List(m_listIndex);
}

QStringList ListControl::Texts() const
{
    QStringList texts;
    for (const Item &item : m_items)
        texts << item.text;
    return texts;
}

int ListControl::IndexOfItemData(qlonglong data) const
{
    for (int i = 0; i < ListCount(); ++i)
        if (m_items.at(i).data == data)
            return i;
    return -1;
}

int ListControl::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ListCount();
}

QVariant ListControl::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= ListCount())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return m_items.at(index.row()).text;
    if (role == ItemDataRole)
        return m_items.at(index.row()).data;
    return {};
}

void ListBox::DoubleClick(int index)
{
    if (index < 0 || index >= ListCount())
        return;
    // The first press of a double click has already clicked the entry; only
    // an entry not yet highlighted is clicked here.
    if (index != ListIndex())
        UserClick(index);
    Fire(DblClick);
}

void ListBox::FitHorizontalExtent()
{
    QString longest;
    for (const QString &text : Texts())
        if (text.size() > longest.size())
            longest = text;
    m_extentText = longest + QStringLiteral("    ");
    NotifyChanged();
}
