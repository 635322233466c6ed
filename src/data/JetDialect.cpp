#include "data/JetDialect.h"

#include "util/TextRoutines.h"
#include "util/VbFormat.h"

#include <QRegularExpression>

namespace JetDialect {

namespace {

QString Unbracket(const QString &name)
{
    QString n = name.trimmed();
    if (n.startsWith(QLatin1Char('[')) && n.endsWith(QLatin1Char(']')))
        n = n.mid(1, n.size() - 2);
    return n;
}

QString Bracket(const QString &name)
{
    return QLatin1Char('[') + name + QLatin1Char(']');
}

bool IsWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

} // namespace

std::optional<CrossDatabaseCopy> ParseCrossDatabaseCopy(const QString &sql)
{
    // Cheap test first: every statement passes here, nearly none is a copy.
    if (!QStringView(sql).trimmed().startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive)
        || !sql.contains(QLatin1Char('[')) || !ContainsAsciiNoCase(sql, QLatin1StringView("INTO")))
        return std::nullopt;
    // The file part is everything between the brackets; Jet does not allow
    // "]" in it, and a ";pwd=" part (the password of an Access file) is
    // dropped: SQLite files have none.
    static const QRegularExpression form(QStringLiteral(
                                             R"(^\s*SELECT\s+(?:\[[^\]]+\]|\w+)\s*\.\s*\*\s+INTO\s+(\[[^\]]+\]|\w+)\s+)"
                                             R"(FROM\s+\[([^\]]+)\]\s*\.\s*(\[[^\]]+\]|\w+))"
                                             R"((?:\s+ORDER\s+BY\s+(.*?))?\s*;?\s*$)"),
                                         QRegularExpression::CaseInsensitiveOption
                                             | QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(sql);
    if (!match.hasMatch())
        return std::nullopt;

    CrossDatabaseCopy copy;
    copy.targetTable = Unbracket(match.captured(1));
    QString file = match.captured(2);
    static const QRegularExpression pwd(QStringLiteral(R"(;\s*pwd\s*=.*$)"), QRegularExpression::CaseInsensitiveOption);
    file.remove(pwd);
    if (file.endsWith(QLatin1Char(';')))
        file.chop(1);
    copy.sourceFile = file.trimmed();
    copy.sourceTable = Unbracket(match.captured(3));
    copy.orderBy = match.captured(4).trimmed();
    if (copy.sourceFile.isEmpty())
        return std::nullopt;
    return copy;
}

QString AttachStatement(const QString &resolvedFile, const QString &alias)
{
    return QStringLiteral("ATTACH DATABASE %1 AS %2").arg(::SqlText(resolvedFile), alias);
}

QString CreateTableAsStatement(const CrossDatabaseCopy &copy, const QString &alias)
{
    QString sql = QStringLiteral("CREATE TABLE %1 AS SELECT * FROM %2.%3")
                      .arg(Bracket(copy.targetTable), alias, Bracket(copy.sourceTable));
    if (!copy.orderBy.isEmpty())
        sql += QStringLiteral(" ORDER BY ") + copy.orderBy;
    return sql;
}

QString SourceDefinitionQuery(const CrossDatabaseCopy &copy, const QString &alias)
{
    return QStringLiteral("SELECT sql FROM ") + alias + QStringLiteral(".sqlite_master WHERE type='table' AND name=")
           + ::SqlText(copy.sourceTable) + QStringLiteral(" COLLATE NOCASE");
}

std::optional<QStringList> CopyWithDefinition(const CrossDatabaseCopy &copy, const QString &alias,
                                              const QString &sourceDefinition)
{
    const qsizetype columns = sourceDefinition.indexOf(QLatin1Char('('));
    if (columns < 0)
        return std::nullopt;
    QString insert = QStringLiteral("INSERT INTO ") + Bracket(copy.targetTable) + QStringLiteral(" SELECT * FROM ") + alias
                     + QLatin1Char('.') + Bracket(copy.sourceTable);
    if (!copy.orderBy.isEmpty())
        insert += QStringLiteral(" ORDER BY ") + copy.orderBy;
    return QStringList{QStringLiteral("CREATE TABLE ") + Bracket(copy.targetTable) + QLatin1Char(' ')
                           + sourceDefinition.mid(columns),
                       insert};
}

QString DetachStatement(const QString &alias)
{
    return QStringLiteral("DETACH DATABASE %1").arg(alias);
}

bool OpensQuoted(QChar c)
{
    return c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('[') || c == QLatin1Char('`');
}

qsizetype QuotedEnd(const QString &sql, qsizetype open)
{
    const QChar close = sql.at(open) == QLatin1Char('[') ? QLatin1Char(']') : sql.at(open);
    const qsizetype n = sql.size();
    for (qsizetype j = open + 1; j < n; ++j) {
        if (sql.at(j) != close)
            continue;
        if (close != QLatin1Char(']') && j + 1 < n && sql.at(j + 1) == close) {
            ++j;
            continue;
        }
        return j + 1;
    }
    return -1;
}

QString ReplaceBooleanLiterals(const QString &sql)
{
    // Cheap test first: nearly no statement has either word.
    if (!ContainsAsciiNoCase(sql, QLatin1StringView("true")) && !ContainsAsciiNoCase(sql, QLatin1StringView("false")))
        return sql;

    QString out;
    out.reserve(sql.size());
    const qsizetype n = sql.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = sql.at(i);
        if (OpensQuoted(c)) {
            // Copy a quoted text or a bracketed name untouched.
            const qsizetype closed = QuotedEnd(sql, i);
            const qsizetype end = closed < 0 ? n : closed;
            out += QStringView(sql).mid(i, end - i);
            i = end;
            continue;
        }
        if (IsWordChar(c)) {
            qsizetype j = i;
            while (j < n && IsWordChar(sql.at(j)))
                ++j;
            const QStringView word = QStringView(sql).mid(i, j - i);
            // A qualified name (T.True) is a column, not a literal.
            const bool qualified = (i > 0 && sql.at(i - 1) == QLatin1Char('.')) || (j < n && sql.at(j) == QLatin1Char('.'));
            if (!qualified && word.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
                out += QLatin1String("-1");
            else if (!qualified && word.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
                out += QLatin1Char('0');
            else
                out += word;
            i = j;
            continue;
        }
        out += c;
        ++i;
    }
    return out;
}

} // namespace JetDialect
