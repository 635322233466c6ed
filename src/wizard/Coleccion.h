#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <memory>
#include <stdexcept>

// A key that a collection does not hold (or holds already): an error the
// caller may catch, as the original platform's collections raise one.
class CollectionKeyError : public std::runtime_error
{
public:
    CollectionKeyError(const QString &message, const QString &key) : std::runtime_error(message.toStdString()), m_key(key) {}
    QString Key() const { return m_key; }

private:
    QString m_key;
};

// An ordered collection of shared records keyed by text (ids written as
// decimal text). Iteration follows insertion order; keys ignore case, as on
// the original platform.
template <typename T> class Coleccion
{
public:
    using Ptr = std::shared_ptr<T>;

    void Add(Ptr item, const QString &key)
    {
        if (Contains(key))
            throw CollectionKeyError(QStringLiteral("La clave «") + key + QStringLiteral("» ya existe en la colección."),
                                     key);
        m_index.insert(Folded(key), int(m_entries.size()));
        m_entries.append({key, std::move(item)});
    }
    Ptr Item(const QString &key) const
    {
        const int index = IndexOf(key);
        if (index < 0)
            throw CollectionKeyError(QStringLiteral("La clave «") + key + QStringLiteral("» no existe en la colección."),
                                     key);
        return m_entries.at(index).item;
    }
    Ptr Find(const QString &key) const
    {
        const int index = IndexOf(key);
        return index < 0 ? nullptr : m_entries.at(index).item;
    }
    bool Contains(const QString &key) const { return IndexOf(key) >= 0; }
    void Remove(const QString &key)
    {
        const int index = IndexOf(key);
        if (index < 0)
            throw CollectionKeyError(QStringLiteral("La clave «") + key + QStringLiteral("» no existe en la colección."),
                                     key);
        m_entries.removeAt(index);
        Reindex();
    }
    int Count() const { return int(m_entries.size()); }
    bool IsEmpty() const { return m_entries.isEmpty(); }
    void Clear()
    {
        m_entries.clear();
        m_index.clear();
    }
    QStringList Keys() const
    {
        QStringList keys;
        for (const auto &entry : m_entries)
            keys << entry.key;
        return keys;
    }
    // The records in insertion order (a copy: safe to change the
    // collection while walking it).
    QList<Ptr> Items() const
    {
        QList<Ptr> items;
        for (const auto &entry : m_entries)
            items << entry.item;
        return items;
    }

private:
    struct Entry
    {
        QString key;
        Ptr item;
    };
    // Keys ignore case: the index holds them folded.
    static QString Folded(const QString &key) { return key.toCaseFolded(); }
    int IndexOf(const QString &key) const { return m_index.value(Folded(key), -1); }
    void Reindex()
    {
        m_index.clear();
        for (int i = 0; i < m_entries.size(); ++i)
            m_index.insert(Folded(m_entries.at(i).key), i);
    }

    QList<Entry> m_entries;
    QHash<QString, int> m_index;
};

// Collection keys are ids written as decimal text.
inline QString KeyOf(qlonglong id)
{
    return QString::number(id);
}
