#pragma once

#include <QtGlobal>

// The state codes of catalogue links and community records.
class cConstCol
{
public:
    quint8 NoModificado() const { return m_NoModificado; }
    quint8 NUEVO() const { return m_NUEVO; }
    quint8 Modificado() const { return m_Modificado; }
    quint8 Eliminado() const { return m_Eliminado; }

private:
    quint8 m_NoModificado = 0;
    quint8 m_NUEVO = 1;
    quint8 m_Modificado = 2;
    quint8 m_Eliminado = 3;
};
