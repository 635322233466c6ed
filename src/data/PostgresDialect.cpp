#include "data/PostgresDialect.h"

#include "data/JetDialect.h"

#include <QRegularExpression>

namespace PostgresDialect {

namespace {

// The end (one past the closing character) of the quoted text, quoted
// identifier or bracketed name that starts at `start`; a doubled quote
// stays inside. An unclosed one runs to the end.
qsizetype QuotedEnd(const QString &sql, qsizetype start)
{
    const QChar open = sql.at(start);
    const QChar close = open == QLatin1Char('[') ? QLatin1Char(']') : open;
    qsizetype j = start + 1;
    while (j < sql.size()) {
        if (sql.at(j) == close) {
            if (close != QLatin1Char(']') && j + 1 < sql.size() && sql.at(j + 1) == close) {
                j += 2;
                continue;
            }
            return j + 1;
        }
        ++j;
    }
    return sql.size();
}

bool OpensQuote(QChar c)
{
    return c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('[');
}

// The statement with every quoted part and everything inside parentheses
// blanked out, same length: what is left is the statement's own top level,
// where keywords and commas can be searched for safely.
QString TopLevel(const QString &sql)
{
    QString out(sql.size(), QLatin1Char(' '));
    int depth = 0;
    qsizetype i = 0;
    while (i < sql.size()) {
        const QChar c = sql.at(i);
        if (OpensQuote(c)) {
            i = QuotedEnd(sql, i);
            continue;
        }
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')'))
            depth = qMax(0, depth - 1);
        else if (depth == 0)
            out[i] = c;
        ++i;
    }
    return out;
}

QString FoldedAsUnquoted(const QString &name)
{
    QString folded = name;
    for (QChar &c : folded)
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() + ('a' - 'A'));
    return folded;
}

} // namespace

QString QuoteBracketedNames(const QString &sql)
{
    if (!sql.contains(QLatin1Char('[')))
        return sql;
    QString out;
    out.reserve(sql.size());
    qsizetype i = 0;
    while (i < sql.size()) {
        const QChar c = sql.at(i);
        if (!OpensQuote(c)) {
            out += c;
            ++i;
            continue;
        }
        const qsizetype end = QuotedEnd(sql, i);
        if (c == QLatin1Char('[') && end <= sql.size() && sql.at(end - 1) == QLatin1Char(']')) {
            QString name = FoldedAsUnquoted(sql.mid(i + 1, end - i - 2));
            name.replace(QLatin1Char('"'), QStringLiteral("\"\""));
            out += QLatin1Char('"') + name + QLatin1Char('"');
        } else {
            out += QStringView(sql).mid(i, end - i);
        }
        i = end;
    }
    return out;
}

QString OrderNullsAsJet(const QString &sql)
{
    if (!sql.contains(QLatin1String("order"), Qt::CaseInsensitive))
        return sql;
    const QString top = TopLevel(sql);
    static const QRegularExpression orderBy(QStringLiteral(R"(\bORDER\s+BY\b)"), QRegularExpression::CaseInsensitiveOption);
    qsizetype listStart = -1;
    for (auto it = orderBy.globalMatch(top); it.hasNext();)
        listStart = it.next().capturedEnd();
    if (listStart < 0)
        return sql;

    // The list ends at the statement's end, before a closing ";".
    qsizetype listEnd = top.size();
    while (listEnd > listStart && (top.at(listEnd - 1).isSpace() || top.at(listEnd - 1) == QLatin1Char(';')))
        --listEnd;

    static const QRegularExpression placed(QStringLiteral(R"(\bNULLS\s+(FIRST|LAST)\b)"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression descending(QStringLiteral(R"(\bDESC$)"), QRegularExpression::CaseInsensitiveOption);
    QString out = sql.left(listStart);
    qsizetype keyStart = listStart;
    while (keyStart <= listEnd) {
        qsizetype comma = top.indexOf(QLatin1Char(','), keyStart);
        if (comma < 0 || comma > listEnd)
            comma = listEnd;
        // The key without the blanks that follow it.
        qsizetype keyEnd = comma;
        while (keyEnd > keyStart && sql.at(keyEnd - 1).isSpace())
            --keyEnd;
        const QString key = sql.mid(keyStart, keyEnd - keyStart);
        const QString keyTop = top.mid(keyStart, keyEnd - keyStart);
        out += key;
        if (!key.trimmed().isEmpty() && !placed.match(keyTop).hasMatch())
            out += descending.match(keyTop).hasMatch() ? QStringLiteral(" NULLS LAST") : QStringLiteral(" NULLS FIRST");
        out += QStringView(sql).mid(keyEnd, comma - keyEnd);
        if (comma == listEnd)
            break;
        out += QLatin1Char(',');
        keyStart = comma + 1;
    }
    out += QStringView(sql).mid(listEnd);
    return out;
}

QString Adapt(const QString &jetSql)
{
    return OrderNullsAsJet(QuoteBracketedNames(JetDialect::ReplaceBooleanLiterals(jetSql)));
}

} // namespace PostgresDialect
