#pragma once

#include <QMap>
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

// Stands in for creation by programmatic identifier: each wizard run has
// one, with the components of that run registered under their identifiers
// (identifiers ignore case); creating an unknown one throws.
class ObjectFactory
{
public:
    using Maker = std::function<std::shared_ptr<ComObject>()>;

    void Register(const QString &progId, Maker maker);
    bool IsRegistered(const QString &progId) const;
    std::shared_ptr<ComObject> CreateObject(const QString &progId) const;

    template <typename T> std::shared_ptr<T> CreateObjectAs(const QString &progId) const
    {
        auto object = std::dynamic_pointer_cast<T>(CreateObject(progId));
        if (!object)
            throw ComponentError(QStringLiteral("El componente «") + progId
                                 + QStringLiteral("» no ofrece la interfaz esperada."));
        return object;
    }

private:
    QMap<QString, Maker> m_makers;
};
