#pragma once

#include "controls/ControlBase.h"

#include <QAbstractListModel>
#include <QString>
#include <QVariant>
#include <functional>

// The entries of a list box or drop-down list: text plus ItemData, and the
// highlighted entry ListIndex (-1 for none). Setting ListIndex to another
// entry fires Click, as on the original platform; adding or removing
// entries does not. It is a Qt item model, so a view shows it as it is.
class ListControl : public QAbstractListModel, public ControlBase
{
    Q_OBJECT
public:
    static constexpr int ItemDataRole = Qt::UserRole + 1;

    ListControl(Form *owner, const QString &name);

    void AddItem(const QString &text);
    void AddItem(const QString &text, int index);
    void RemoveItem(int index);
    void Clear();

    int ListCount() const { return int(m_items.size()); }
    QString List(int index) const;
    qlonglong ItemData(int index) const;
    void SetItemData(int index, qlonglong data);
    int NewIndex() const { return m_newIndex; }

    int ListIndex() const { return m_listIndex; }
    // Throws std::out_of_range for an index outside -1 .. ListCount()-1.
    void SetListIndex(int index);
    // A person picked the entry (in the view): fires Click even when the
    // entry was already highlighted, as a click does.
    void UserClick(int index);
    // The highlighted entry's text, "" when none.
    QString Text() const;
    QStringList Texts() const;
    int IndexOfItemData(qlonglong data) const;

    std::function<void()> Click;

    // QAbstractListModel
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    void Changed();
    void ListIndexChanged(int index);

protected:
    void NotifyChanged() override { Q_EMIT Changed(); }

private:
    struct Item
    {
        QString text;
        qlonglong data = 0;
    };
    QList<Item> m_items;
    int m_listIndex = -1;
    int m_newIndex = -1;
};

// A list box. A double click on an entry highlights it and fires DblClick;
// on an empty area it does nothing.
class ListBox : public ListControl
{
    Q_OBJECT
public:
    using ListControl::ListControl;

    void DoubleClick(int index);
    std::function<void()> DblClick;

    // The horizontal scroll extent: wide enough for the longest entry plus
    // four blanks (the view measures this text with its font).
    void FitHorizontalExtent();
    QString HorizontalExtentText() const { return m_extentText; }

private:
    QString m_extentText;
};

// A drop-down list (style "dropdown list": no typing).
class ComboBox : public ListControl
{
    Q_OBJECT
public:
    using ListControl::ListControl;
};
