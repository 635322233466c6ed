#include "session/cCentroApi.h"

#include "controls/ControlBase.h"
#include "controls/Form.h"

void cCentroApi::Register(ObjectFactory &factory, bool desarrollo)
{
    factory.Register(QString::fromLatin1(ProgId), [desarrollo] { return std::make_shared<cCentroApi>(desarrollo); });
}

void cCentroApi::marcar_Obligatorios(Form &form)
{
    for (ControlBase *control : form.MandatoryControls())
        control->SetMandatory(true);
}

int cCentroApi::VerificarEuros(int keyAscii, const QString &text, const QLocale &locale) const
{
    constexpr int kBackspace = 8;
    if (keyAscii == kBackspace)
        return keyAscii;
    const QChar decimal = locale.decimalPoint().at(0);
    const qsizetype separatorAt = text.indexOf(decimal);
    if (keyAscii == ',' || keyAscii == '.') {
        if (separatorAt >= 0)
            return 0;
        return decimal.unicode();
    }
    if (keyAscii >= '0' && keyAscii <= '9') {
        if (separatorAt >= 0 && text.size() - separatorAt - 1 >= 2)
            return 0;
        return keyAscii;
    }
    return 0;
}
