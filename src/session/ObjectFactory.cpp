#include "session/ObjectFactory.h"

namespace {

// Programmatic identifiers are not case-sensitive.
QString Key(const QString &progId)
{
    return progId.trimmed().toLower();
}

} // namespace

void ObjectFactory::Register(const QString &progId, Maker maker)
{
    m_makers.insert(Key(progId), std::move(maker));
}

bool ObjectFactory::IsRegistered(const QString &progId) const
{
    return m_makers.contains(Key(progId));
}

std::shared_ptr<ComObject> ObjectFactory::CreateObject(const QString &progId) const
{
    auto it = m_makers.constFind(Key(progId));
    if (it == m_makers.constEnd() || !it.value())
        throw ComponentError(QStringLiteral("No se puede crear el componente «") + progId
                             + QStringLiteral("»: no está instalado."));
    return it.value()();
}
