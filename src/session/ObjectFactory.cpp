#include "session/ObjectFactory.h"

#include <QMap>

namespace {

QMap<QString, ObjectFactory::Maker> &Makers()
{
    static QMap<QString, ObjectFactory::Maker> makers;
    return makers;
}

// Programmatic identifiers are not case-sensitive.
QString Key(const QString &progId)
{
    return progId.trimmed().toLower();
}

} // namespace

namespace ObjectFactory {

void Register(const QString &progId, Maker maker)
{
    Makers().insert(Key(progId), std::move(maker));
}

bool IsRegistered(const QString &progId)
{
    return Makers().contains(Key(progId));
}

std::shared_ptr<ComObject> CreateObject(const QString &progId)
{
    auto it = Makers().constFind(Key(progId));
    if (it == Makers().constEnd() || !it.value())
        throw ComponentError(QStringLiteral("No se puede crear el componente «%1»: no está instalado.").arg(progId));
    return it.value()();
}

} // namespace ObjectFactory
