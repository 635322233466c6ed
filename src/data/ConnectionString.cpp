#include "data/ConnectionString.h"

namespace {

bool NeedsQuotes(const QString &value)
{
    if (value.isEmpty())
        return false;
    return value.contains(QLatin1Char(';')) || value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\'')
           || value.front().isSpace() || value.back().isSpace();
}

QString Quoted(const QString &value)
{
    QString text = value;
    text.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

ConnectionString::ConnectionString(const QString &text)
{
    // The OLE DB rules ADO follows: attributes are separated by ";", a key
    // ends at its first "=" (so a value may hold "="), blanks around keys
    // and values do not count, empty segments are skipped, and a value may
    // be quoted with " or ' (the quote doubled inside) to hold a ";".
    const int n = text.size();
    int i = 0;
    while (i < n) {
        int keyEnd = i;
        while (keyEnd < n && text[keyEnd] != QLatin1Char('=') && text[keyEnd] != QLatin1Char(';'))
            ++keyEnd;
        const QString key = text.mid(i, keyEnd - i).trimmed();
        if (keyEnd >= n || text[keyEnd] == QLatin1Char(';')) {
            // A segment without "=": a key with no value, or nothing at all.
            if (!key.isEmpty())
                SetValue(key, QString());
            i = keyEnd + 1;
            continue;
        }
        int v = keyEnd + 1;
        while (v < n && text[v] == QLatin1Char(' '))
            ++v;
        QString value;
        if (v < n && (text[v] == QLatin1Char('"') || text[v] == QLatin1Char('\''))) {
            const QChar quote = text[v];
            int p = v + 1;
            bool closed = false;
            while (p < n) {
                if (text[p] == quote) {
                    if (p + 1 < n && text[p + 1] == quote) {
                        value.append(quote);
                        p += 2;
                        continue;
                    }
                    closed = true;
                    ++p;
                    break;
                }
                value.append(text[p]);
                ++p;
            }
            if (!closed) {
                // An unbalanced quote: take the rest of the segment literally.
                int end = text.indexOf(QLatin1Char(';'), v);
                if (end < 0)
                    end = n;
                value = text.mid(v, end - v).trimmed();
                p = end;
            }
            int end = text.indexOf(QLatin1Char(';'), p);
            i = end < 0 ? n : end + 1;
        } else {
            int end = text.indexOf(QLatin1Char(';'), v);
            if (end < 0)
                end = n;
            value = text.mid(v, end - v).trimmed();
            i = end + 1;
        }
        if (!key.isEmpty())
            SetValue(key, value);
    }
}

bool ConnectionString::Contains(const QString &key) const
{
    const QString wanted = key.trimmed();
    for (const auto &pair : m_pairs) {
        if (pair.first.compare(wanted, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QString ConnectionString::Value(const QString &key) const
{
    const QString wanted = key.trimmed();
    for (const auto &pair : m_pairs) {
        if (pair.first.compare(wanted, Qt::CaseInsensitive) == 0)
            return pair.second;
    }
    return QString();
}

void ConnectionString::SetValue(const QString &key, const QString &value)
{
    const QString wanted = key.trimmed();
    for (auto &pair : m_pairs) {
        if (pair.first.compare(wanted, Qt::CaseInsensitive) == 0) {
            pair.second = value;
            return;
        }
    }
    m_pairs.append(qMakePair(wanted, value));
}

QString ConnectionString::ToString() const
{
    QStringList parts;
    parts.reserve(m_pairs.size());
    for (const auto &pair : m_pairs) {
        const QString value = NeedsQuotes(pair.second) ? Quoted(pair.second) : pair.second;
        parts.append(pair.first + QLatin1Char('=') + value);
    }
    return parts.join(QLatin1Char(';'));
}
