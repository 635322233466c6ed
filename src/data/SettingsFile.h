#pragma once

#include <QList>
#include <QString>

#include <stdexcept>

// A settings file that cannot be read or written: the Spanish message says
// where (the line number for a malformed line) and what to do.
class SettingsFileError : public std::runtime_error
{
public:
    explicit SettingsFileError(const QString &message, int line = 0);

    QString Message() const { return m_message; }
    int Line() const { return m_line; } // 0 when the fault is not on one line

private:
    QString m_message;
    int m_line = 0;
};

struct SettingsEntry
{
    QString key;
    QString value;
};

struct SettingsSection
{
    QString name;                 // "" for keys before the first section
    QList<SettingsEntry> entries; // in file order
};

// An INI file read and written by our own rules, so that every value comes
// back exactly as it was written: a connection string keeps its ";", an
// address its commas and blanks, a Windows path its backslashes.
//
// Reading: "[section]" lines and "key=value" lines in UTF-8, LF or CRLF.
// A ";" or "#" starts a comment at the start of a line or after a blank
// (space or tab), never inside a value such as "Provider=SQLite;Data
// Source=x". Blanks after "=" and before a comment or the line end are not
// part of the value. A value starting with a double quote runs to the
// closing quote; inside quotes \" and \\ stand for " and \, every other
// character (";", "#", blanks, other backslashes) is taken as it is.
// Any other line is an error naming its number.
//
// Writing quotes a value only when it would not read back the same
// otherwise, so hand-edited files stay plain.
class SettingsFile
{
public:
    // Throws SettingsFileError when the file is missing, unreadable, not
    // UTF-8 or holds a malformed line.
    static SettingsFile Read(const QString &path);
    static SettingsFile Parse(const QString &text);

    // Appends `key=value` to the section, creating the section at the end
    // when it is new. Throws std::invalid_argument for a key or section
    // name no file could hold, SettingsFileError for a value with a line
    // break (it cannot be written on one line).
    void Add(const QString &section, const QString &key, const QString &value);

    // The file's text: sections in order, a blank line between them, LF.
    QString Text() const;
    // Writes Text() in UTF-8, replacing the file only once all is written.
    void Write(const QString &path) const;

    const QList<SettingsSection> &Sections() const { return m_sections; }
    // The section, or null. Names are compared exactly.
    const SettingsSection *Section(const QString &name) const;
    // The last value the section gives the key; a null QString when absent.
    QString Value(const QString &section, const QString &key) const;

    // How a value is written after "=": quoted only when needed.
    static QString Encode(const QString &value);

private:
    SettingsSection &SectionNamed(const QString &name);

    QList<SettingsSection> m_sections;
};
