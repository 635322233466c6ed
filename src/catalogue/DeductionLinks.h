#pragma once

#include "session/cConstCol.h"
#include "wizard/Coleccion.h"

#include <QLocale>
#include <QString>

// A percentage held in single precision, as the platform shows it: seven
// significant digits, the locale's decimal separator, no "%" (12.5 is
// "12,5" in Spanish; 13.3 stays "13,3" although the float is not exact).
QString PercentageText(float valor, const QLocale &locale);

// The links of one kind (communities or donation types to percentages)
// while the catalogue window edits them: every link read from the database
// in state NoModificado, links added here NUEVO, links removed here
// Eliminado until accepted. `Owner` is the record's community or type id.
template <typename T, qint16 T::*Owner> class DeductionLinks
{
public:
    using Ptr = std::shared_ptr<T>;
    enum class Added { Nuevo, Restored, AlreadyThere };

    // A link read from the database (a pair stored twice is kept once).
    void Load(qint16 owner, qint16 deduccion, float valor)
    {
        if (!Find(owner, deduccion))
            m_links.Add(Make(owner, deduccion, valor, cConstCol().NoModificado()), Key(owner, deduccion));
    }

    // Adds the pair: a removed link comes back unchanged, a new one is
    // added at the end; a pair already linked is left alone.
    Added Add(qint16 owner, qint16 deduccion, float valor)
    {
        if (const Ptr link = Find(owner, deduccion)) {
            if (link->Estado != cConstCol().Eliminado())
                return Added::AlreadyThere;
            link->Estado = cConstCol().NoModificado();
            return Added::Restored;
        }
        m_links.Add(Make(owner, deduccion, valor, cConstCol().NUEVO()), Key(owner, deduccion));
        return Added::Nuevo;
    }

    // Removes a listed link: one added here is forgotten, a stored one
    // marked to be deleted.
    void Remove(const Ptr &link)
    {
        if (link->Estado == cConstCol().NUEVO())
            m_links.Remove(Key(link.get()->*Owner, link->IDDeduccion));
        else
            link->Estado = cConstCol().Eliminado();
    }

    Ptr Find(qint16 owner, qint16 deduccion) const { return m_links.Find(Key(owner, deduccion)); }

    // The links of `owner` that are not removed, in collection order.
    QList<Ptr> Listed(qint16 owner) const
    {
        QList<Ptr> listed;
        for (const Ptr &link : m_links.Items())
            if (link.get()->*Owner == owner && link->Estado != cConstCol().Eliminado())
                listed << link;
        return listed;
    }

    const Coleccion<T> &Items() const { return m_links; }

private:
    static QString Key(qint16 owner, qint16 deduccion) { return KeyOf(owner) + QLatin1Char('|') + KeyOf(deduccion); }
    static Ptr Make(qint16 owner, qint16 deduccion, float valor, quint8 estado)
    {
        auto link = std::make_shared<T>();
        link.get()->*Owner = owner;
        link->IDDeduccion = deduccion;
        link->Valor = valor;
        link->Estado = estado;
        return link;
    }

    Coleccion<T> m_links;
};
