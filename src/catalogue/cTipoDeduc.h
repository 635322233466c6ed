#pragma once

#include <QtGlobal>

// A percentage allowed for a donation type, as the catalogue window edits
// it: the link's two keys, the percentage and the link's state (cConstCol).
class cTipoDeduc
{
public:
    qint16 IDTipoDonativo = 0;
    qint16 IDDeduccion = 0;
    float Valor = 0;
    quint8 Estado = 0;
};
