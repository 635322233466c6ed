#include "data/SettingsFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace {

bool IsBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

bool IsCommentMark(QChar c)
{
    return c == QLatin1Char(';') || c == QLatin1Char('#');
}

// A comment mark counts only at the line start or after a blank, so that
// "Provider=SQLite;Data Source=x" stays one value.
bool StartsComment(const QString &line, qsizetype at)
{
    return IsCommentMark(line.at(at)) && (at == 0 || IsBlank(line.at(at - 1)));
}

// True when nothing but blanks and perhaps a comment follows `from`.
bool OnlyCommentFrom(const QString &line, qsizetype from)
{
    qsizetype i = from;
    while (i < line.size() && IsBlank(line.at(i)))
        ++i;
    return i == line.size() || StartsComment(line, i);
}

QString TrimBlanksRight(const QString &text)
{
    qsizetype end = text.size();
    while (end > 0 && IsBlank(text.at(end - 1)))
        --end;
    return text.left(end);
}

QString LineNumber(int line)
{
    return QString::number(line);
}

SettingsFileError Malformed(int line, const QString &text)
{
    return SettingsFileError(QStringLiteral("La línea %1 no es una sección «[nombre]», un comentario ni una línea "
                                            "«clave=valor»: «%2». Corríjala o bórrela.")
                                 .arg(LineNumber(line), text),
                             line);
}

// A present but empty value is "" rather than a null QString, so Value()
// tells it from an absent key.
QString NonNull(const QString &text)
{
    return text.isNull() ? QString::fromLatin1("") : text;
}

// The value after "=" (from `start`), or throws for a quoted value left
// open or followed by more text.
QString ReadValue(const QString &line, qsizetype start, const QString &key, int lineNumber)
{
    qsizetype i = start;
    while (i < line.size() && IsBlank(line.at(i)))
        ++i;
    if (i < line.size() && line.at(i) == QLatin1Char('"')) {
        QString value;
        for (++i; i < line.size(); ++i) {
            const QChar c = line.at(i);
            if (c == QLatin1Char('"')) {
                if (!OnlyCommentFrom(line, i + 1))
                    throw SettingsFileError(QStringLiteral("En la línea %1 hay texto tras la comilla que cierra el "
                                                           "valor de «%2». Ponga todo el valor entre las comillas.")
                                                .arg(LineNumber(lineNumber), key),
                                            lineNumber);
                return NonNull(value);
            }
            if (c == QLatin1Char('\\') && i + 1 < line.size()
                && (line.at(i + 1) == QLatin1Char('"') || line.at(i + 1) == QLatin1Char('\\')))
                ++i;
            value += line.at(i);
        }
        throw SettingsFileError(QStringLiteral("En la línea %1 falta la comilla que cierra el valor de «%2». "
                                               "Añádala al final del valor.")
                                    .arg(LineNumber(lineNumber), key),
                                lineNumber);
    }
    qsizetype end = i;
    while (end < line.size() && !StartsComment(line, end))
        ++end;
    return NonNull(TrimBlanksRight(line.mid(i, end - i)));
}

void CheckName(const QString &name, const char *what)
{
    const bool bad = name.contains(QLatin1Char('\n')) || name.contains(QLatin1Char('\r'))
                     || (!name.isEmpty() && (IsBlank(name.front()) || IsBlank(name.back())));
    if (bad)
        throw std::invalid_argument(std::string(what) + " cannot be written: " + name.toStdString());
}

} // namespace

SettingsFileError::SettingsFileError(const QString &message, int line)
    : std::runtime_error(message.toStdString()), m_message(message), m_line(line)
{
}

SettingsFile SettingsFile::Read(const QString &path)
{
    QFile file(path);
    if (!QFileInfo::exists(path))
        throw SettingsFileError(QStringLiteral("No se encuentra el fichero «") + path + QStringLiteral("»."));
    if (!file.open(QIODevice::ReadOnly))
        throw SettingsFileError(QStringLiteral("No se puede leer el fichero «") + path + QStringLiteral("»: ")
                                + file.errorString());
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(file.readAll());
    if (decoder.hasError())
        throw SettingsFileError(QStringLiteral("El fichero «") + path
                                + QStringLiteral("» no está en UTF-8. Guárdelo con esa codificación."));
    try {
        return Parse(text);
    } catch (const SettingsFileError &error) {
        throw SettingsFileError(QStringLiteral("Fichero «") + path + QStringLiteral("». ") + error.Message(), error.Line());
    }
}

SettingsFile SettingsFile::Parse(const QString &text)
{
    SettingsFile result;
    SettingsSection *current = nullptr;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int n = 0; n < lines.size(); ++n) {
        QString line = lines.at(n);
        const int lineNumber = n + 1;
        if (n == 0 && line.startsWith(QChar(0xFEFF)))
            line.remove(0, 1);
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        qsizetype start = 0;
        while (start < line.size() && IsBlank(line.at(start)))
            ++start;
        if (start == line.size() || IsCommentMark(line.at(start)))
            continue;
        if (line.at(start) == QLatin1Char('[')) {
            const qsizetype close = line.indexOf(QLatin1Char(']'), start);
            if (close < 0 || !OnlyCommentFrom(line, close + 1))
                throw Malformed(lineNumber, line);
            current = &result.SectionNamed(line.mid(start + 1, close - start - 1).trimmed());
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='), start);
        const QString key = equals < 0 ? QString() : TrimBlanksRight(line.mid(start, equals - start));
        if (key.isEmpty())
            throw Malformed(lineNumber, line);
        if (!current)
            current = &result.SectionNamed(QString());
        current->entries.append({key, ReadValue(line, equals + 1, key, lineNumber)});
    }
    return result;
}

SettingsSection &SettingsFile::SectionNamed(const QString &name)
{
    for (SettingsSection &section : m_sections)
        if (section.name == name)
            return section;
    m_sections.append({name, {}});
    return m_sections.last();
}

void SettingsFile::Add(const QString &section, const QString &key, const QString &value)
{
    CheckName(section, "section");
    if (section.contains(QLatin1Char(']')))
        throw std::invalid_argument("section cannot be written: " + section.toStdString());
    CheckName(key, "key");
    if (key.isEmpty() || key.contains(QLatin1Char('=')) || key.front() == QLatin1Char('[') || IsCommentMark(key.front()))
        throw std::invalid_argument("key cannot be written: " + key.toStdString());
    if (value.contains(QLatin1Char('\n')) || value.contains(QLatin1Char('\r')))
        throw SettingsFileError(QStringLiteral("El valor de «") + key
                                + QStringLiteral("» tiene un salto de línea, que el fichero de configuración no "
                                                 "puede guardar. Escríbalo en una sola línea."));
    SectionNamed(section).entries.append({key, NonNull(value)});
}

QString SettingsFile::Encode(const QString &value)
{
    bool quote = !value.isEmpty() && (IsBlank(value.front()) || IsBlank(value.back()) || value.front() == QLatin1Char('"'));
    for (qsizetype i = 1; i < value.size() && !quote; ++i)
        quote = IsBlank(value.at(i - 1)) && IsCommentMark(value.at(i));
    if (!quote)
        return value;
    QString quoted = QStringLiteral("\"");
    for (QChar c : value) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        quoted += c;
    }
    return quoted + QLatin1Char('"');
}

QString SettingsFile::Text() const
{
    // Keys outside any section must come before the first header.
    QList<const SettingsSection *> ordered;
    for (const SettingsSection &section : m_sections)
        if (section.name.isEmpty())
            ordered.prepend(&section);
        else
            ordered.append(&section);
    QString text;
    for (const SettingsSection *section : ordered) {
        if (!text.isEmpty())
            text += QLatin1Char('\n');
        if (!section->name.isEmpty())
            text += QLatin1Char('[') + section->name + QStringLiteral("]\n");
        for (const SettingsEntry &entry : section->entries)
            text += entry.key + QLatin1Char('=') + Encode(entry.value) + QLatin1Char('\n');
    }
    return text;
}

void SettingsFile::Write(const QString &path) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(Text().toUtf8()) < 0 || !file.commit())
        throw SettingsFileError(QStringLiteral("No se puede escribir el fichero «") + path + QStringLiteral("»: ")
                                + file.errorString());
}

const SettingsSection *SettingsFile::Section(const QString &name) const
{
    for (const SettingsSection &section : m_sections)
        if (section.name == name)
            return &section;
    return nullptr;
}

QString SettingsFile::Value(const QString &section, const QString &key) const
{
    const SettingsSection *found = Section(section);
    if (!found)
        return QString();
    for (qsizetype i = found->entries.size() - 1; i >= 0; --i)
        if (found->entries.at(i).key == key)
            return found->entries.at(i).value;
    return QString();
}
