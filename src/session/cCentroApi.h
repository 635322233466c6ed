#pragma once

#include "session/ObjectFactory.h"

#include <QLocale>
#include <QString>

class Form;

// The host's API object ("QXApi.cCentroApi"), implemented locally.
class cCentroApi : public ComObject
{
public:
    static constexpr const char *ProgId = "QXApi.cCentroApi";

    explicit cCentroApi(bool desarrollo = false) : m_desarrollo(desarrollo) {}

    // Makes the object creatable by its programmatic identifier in `factory`,
    // with the run's "desarrollo" setting.
    static void Register(ObjectFactory &factory, bool desarrollo);

    // Marks the controls the window declares mandatory, so its view shows
    // them in the host's mandatory style.
    void marcar_Obligatorios(Form &form);

    // The key filter of amount and percentage boxes: digits, one decimal
    // separator (typed as "," or ".", returned as the locale's), at most two
    // decimals, and the editing keys (backspace) pass; every other key
    // becomes 0. `text` is the box's text before the key, the key goes at
    // its end.
    int VerificarEuros(int keyAscii, const QString &text, const QLocale &locale) const;

    // Whether the host runs in development mode (reports folder choice).
    bool desarrollo() const { return m_desarrollo; }

private:
    bool m_desarrollo;
};
