#pragma once

#include "data/Connection.h"
#include "session/ProgramSettings.h"

#include <QMap>
#include <QString>
#include <memory>
#include <stdexcept>
#include <variant>

// A session property that is missing or holds a value of the wrong kind:
// what the host's late-bound read would raise.
class SessionError : public std::runtime_error
{
public:
    explicit SessionError(const QString &message);
    QString Message() const { return m_message; }

private:
    QString m_message;
};

// The host's session object: named values the add-in reads by their exact,
// case-sensitive names ("IDCentro", "idCursoEscolar", "conexionlocalCENTRO").
// A value is a text, a whole number, a Boolean, a shared connection or a
// reference to the session itself. Reads convert as the host's
// late-bound properties would, and throw SessionError when they cannot.
class SesionHost : public std::enable_shared_from_this<SesionHost>
{
public:
    struct SelfReference
    {
    };
    using Value = std::variant<QString, qlonglong, bool, ConnectionPtr, SelfReference>;

    void Set(const QString &name, Value value);
    // Overloads so that a literal lands in the right kind of value.
    void Set(const QString &name, const char *text) { Set(name, Value(QString::fromUtf8(text))); }
    void Set(const QString &name, const QString &text) { Set(name, Value(text)); }
    void Set(const QString &name, int number) { Set(name, Value(qlonglong(number))); }
    void Set(const QString &name, qlonglong number) { Set(name, Value(number)); }
    void Set(const QString &name, bool flag) { Set(name, Value(flag)); }
    void Set(const QString &name, ConnectionPtr connection) { Set(name, Value(std::move(connection))); }
    bool Has(const QString &name) const { return m_values.contains(name); }
    QStringList Names() const { return m_values.keys(); }

    QString Text(const QString &name) const;
    qlonglong Integer(const QString &name) const; // whole number, half to even
    bool Boolean(const QString &name) const;
    ConnectionPtr ConnectionValue(const QString &name) const;
    std::shared_ptr<SesionHost> Session(const QString &name) const;

    // What the host stand-in hands over besides the host's own properties:
    // this program's settings (defaults when the host gives none).
    void SetProgramSettings(const ProgramSettings &settings) { m_program = settings; }
    const ProgramSettings &Program() const { return m_program; }

private:
    const Value &Get(const QString &name) const;

    QMap<QString, Value> m_values;
    ProgramSettings m_program;
};

using SesionHostPtr = std::shared_ptr<SesionHost>;
