#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <stdexcept>

// A component created by its programmatic identifier ("QXApi.cCentroApi").
class ComObject
{
public:
    virtual ~ComObject() = default;
};

class ComponentError : public std::runtime_error
{
public:
    explicit ComponentError(const QString &message) : std::runtime_error(message.toStdString()) {}
};

// Stands in for creation by programmatic identifier: components register a
// maker under their identifier; CreateObject of an unknown one throws.
namespace ObjectFactory {

using Maker = std::function<std::shared_ptr<ComObject>()>;

void Register(const QString &progId, Maker maker);
bool IsRegistered(const QString &progId);
std::shared_ptr<ComObject> CreateObject(const QString &progId);

template <typename T>
std::shared_ptr<T> CreateObjectAs(const QString &progId)
{
    auto object = std::dynamic_pointer_cast<T>(CreateObject(progId));
    if (!object)
        throw ComponentError(QStringLiteral("El componente «%1» no ofrece la interfaz esperada.").arg(progId));
    return object;
}

} // namespace ObjectFactory
