#include "data/NestedJoins.h"

#include "data/JetDialect.h"
#include "util/TextRoutines.h"

#include <QList>
#include <QSet>
#include <QStringList>
#include <optional>

namespace JetDialect {

namespace {

struct Token
{
    enum Kind { Word, Quoted, Bracketed, Punct };
    Kind kind;
    qsizetype begin;
    qsizetype end;
};

bool IsWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

// Words, quoted texts, bracketed names and single marks; nothing when the
// statement holds a comment or an unclosed quote (left as written).
std::optional<QList<Token>> Tokenise(const QString &sql)
{
    QList<Token> tokens;
    const qsizetype n = sql.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = sql.at(i);
        if (c.isSpace()) {
            ++i;
        } else if (IsWordChar(c)) {
            qsizetype j = i;
            while (j < n && IsWordChar(sql.at(j)))
                ++j;
            tokens.append({Token::Word, i, j});
            i = j;
        } else if (OpensQuoted(c)) {
            const qsizetype end = QuotedEnd(sql, i);
            if (end < 0)
                return std::nullopt;
            tokens.append({c == QLatin1Char('[') ? Token::Bracketed : Token::Quoted, i, end});
            i = end;
        } else {
            if ((c == QLatin1Char('-') || c == QLatin1Char('/')) && i + 1 < n
                && sql.at(i + 1) == (c == QLatin1Char('-') ? QLatin1Char('-') : QLatin1Char('*')))
                return std::nullopt;
            tokens.append({Token::Punct, i, i + 1});
            ++i;
        }
    }
    return tokens;
}

// One table of a flat join chain, with how it joins the ones before it.
struct Entry
{
    QString join;                                  // "INNER JOIN" or "LEFT JOIN"; empty for the first table
    QString source;                                // the table (and alias) as written
    QSet<QString> names;                           // the table name and alias, folded, to match qualifiers
    QString condition;                             // as written
    QList<std::pair<QString, QString>> equalities; // the qualifiers each equality ties
};

using Chain = QList<Entry>;

class Parser
{
public:
    Parser(const QString &sql, QList<Token> tokens) : m_sql(sql), m_tokens(std::move(tokens)) {}

    // The flat FROM clause, or nothing when it cannot be proved the same.
    std::optional<std::pair<qsizetype, qsizetype>> FromClause(QString &flat)
    {
        if (m_tokens.isEmpty() || !Is(0, "SELECT"))
            return std::nullopt;
        qsizetype from = -1, depth = 0;
        for (qsizetype i = 0; i < m_tokens.size(); ++i) {
            depth += Depth(i);
            if (depth == 0 && Is(i, "FROM")) {
                from = i;
                break;
            }
        }
        if (from < 0)
            return std::nullopt;
        m_end = m_tokens.size();
        depth = 0;
        for (qsizetype i = from + 1; i < m_tokens.size(); ++i) {
            depth += Depth(i);
            if (depth == 0
                && (Is(i, "WHERE") || Is(i, "GROUP") || Is(i, "ORDER") || Is(i, "HAVING") || Is(i, "UNION") || Is(i, "LIMIT")
                    || IsMark(i, ';'))) {
                m_end = i;
                break;
            }
        }
        m_pos = from + 1;
        bool nested = false;
        const auto chain = ParseChain(nested);
        if (!chain || !nested || m_pos != m_end)
            return std::nullopt;
        flat = chain->first().source;
        for (qsizetype e = 1; e < chain->size(); ++e) {
            const Entry &entry = chain->at(e);
            flat += QLatin1Char(' ') + entry.join + QLatin1Char(' ') + entry.source + QStringLiteral(" ON ")
                    + entry.condition;
        }
        return std::make_pair(m_tokens.at(from + 1).begin, m_tokens.at(m_end - 1).end);
    }

private:
    bool Is(qsizetype i, const char *word) const
    {
        return i < m_tokens.size() && m_tokens.at(i).kind == Token::Word
               && Text(i).compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    }
    bool IsMark(qsizetype i, char mark) const
    {
        return i < m_tokens.size() && m_tokens.at(i).kind == Token::Punct && m_sql.at(m_tokens.at(i).begin) == mark;
    }
    int Depth(qsizetype i) const { return IsMark(i, '(') ? 1 : IsMark(i, ')') ? -1 : 0; }
    QStringView Text(qsizetype i) const
    {
        return QStringView(m_sql).mid(m_tokens.at(i).begin, m_tokens.at(i).end - m_tokens.at(i).begin);
    }
    QString Span(qsizetype first, qsizetype last) const
    {
        return m_sql.mid(m_tokens.at(first).begin, m_tokens.at(last).end - m_tokens.at(first).begin);
    }
    bool IsReserved(qsizetype i) const
    {
        for (const char *word :
             {"SELECT", "ON",    "INNER", "LEFT",   "RIGHT", "FULL",  "CROSS", "OUTER", "JOIN", "NATURAL", "USING",
              "WHERE",  "GROUP", "ORDER", "HAVING", "UNION", "LIMIT", "AS",    "AND",   "OR",   "NOT"})
            if (Is(i, word))
                return true;
        return false;
    }
    bool IsName(qsizetype i) const
    {
        return i < m_end && (m_tokens.at(i).kind == Token::Bracketed || m_tokens.at(i).kind == Token::Word)
               && !IsReserved(i);
    }
    QString Folded(qsizetype i) const
    {
        QStringView text = Text(i);
        if (m_tokens.at(i).kind == Token::Bracketed)
            text = text.mid(1, text.size() - 2);
        return text.toString().toCaseFolded();
    }

    // A join chain up to the closing parenthesis of its level or the end of
    // the clause. `nested` is set when a LEFT JOIN, here or deeper, has a
    // parenthesised right side: the form SQLite materialises.
    std::optional<Chain> ParseChain(bool &nested)
    {
        auto chain = ParseSource(nested);
        while (chain && m_pos < m_end && !IsMark(m_pos, ')')) {
            QString join;
            if (Is(m_pos, "INNER")) {
                join = QStringLiteral("INNER JOIN");
                ++m_pos;
            } else if (Is(m_pos, "LEFT")) {
                join = QStringLiteral("LEFT JOIN");
                ++m_pos;
                if (Is(m_pos, "OUTER"))
                    ++m_pos;
            } else {
                return std::nullopt;
            }
            if (!Is(m_pos, "JOIN"))
                return std::nullopt;
            ++m_pos;
            bool deeper = false;
            const auto right = ParseSource(deeper);
            if (!right || !Is(m_pos, "ON"))
                return std::nullopt;
            ++m_pos;
            Entry condition;
            if (!ParseCondition(condition))
                return std::nullopt;
            if (!Join(*chain, join, *right, condition))
                return std::nullopt;
            nested = nested || deeper || (join == QLatin1String("LEFT JOIN") && right->size() > 1);
        }
        return chain;
    }

    // A table with its alias, or a parenthesised join.
    std::optional<Chain> ParseSource(bool &nested)
    {
        if (IsMark(m_pos, '(')) {
            ++m_pos;
            auto chain = ParseChain(nested);
            if (!chain || !IsMark(m_pos, ')'))
                return std::nullopt;
            ++m_pos;
            return chain;
        }
        if (!IsName(m_pos))
            return std::nullopt;
        Entry entry;
        const qsizetype first = m_pos;
        entry.names.insert(Folded(m_pos));
        ++m_pos;
        if (Is(m_pos, "AS"))
            ++m_pos;
        if (IsName(m_pos)) {
            entry.names.insert(Folded(m_pos));
            ++m_pos;
        }
        entry.source = Span(first, m_pos - 1);
        return Chain{entry};
    }

    // The ON condition's text; false unless it is equalities of qualified
    // columns joined by AND, whose qualifiers it records.
    bool ParseCondition(Entry &into)
    {
        const qsizetype first = m_pos;
        for (;;) {
            QString left, right;
            if (!ParseQualified(left) || !IsMark(m_pos, '='))
                return false;
            ++m_pos;
            if (!ParseQualified(right))
                return false;
            into.equalities.append({left, right});
            if (!Is(m_pos, "AND"))
                break;
            ++m_pos;
        }
        if (m_pos < m_end && !IsMark(m_pos, ')') && !Is(m_pos, "INNER") && !Is(m_pos, "LEFT"))
            return false;
        into.condition = Span(first, m_pos - 1);
        return true;
    }

    bool ParseQualified(QString &qualifier)
    {
        if (!IsName(m_pos) || !IsMark(m_pos + 1, '.') || !IsName(m_pos + 2))
            return false;
        qualifier = Folded(m_pos);
        m_pos += 3;
        return true;
    }

    static QSet<QString> Names(const Chain &chain, qsizetype count)
    {
        QSet<QString> names;
        for (qsizetype i = 0; i < count; ++i)
            names.unite(chain.at(i).names);
        return names;
    }

    static bool Refers(const Entry &condition, const QSet<QString> &allowed)
    {
        for (const auto &[left, right] : condition.equalities)
            if (!allowed.contains(left) || !allowed.contains(right))
                return false;
        return true;
    }

    // True when one equality ties a table of `own` to one of `earlier`: the
    // condition is then false whenever the earlier table's row is missing.
    static bool Ties(const Entry &entry, const QSet<QString> &earlier)
    {
        for (const auto &[left, right] : entry.equalities)
            if ((entry.names.contains(left) && earlier.contains(right))
                || (entry.names.contains(right) && earlier.contains(left)))
                return true;
        return false;
    }

    // Appends `right` to `left`, joined by `join` on `condition`.
    static bool Join(Chain &left, const QString &join, const Chain &right, const Entry &condition)
    {
        QSet<QString> scope = Names(left, left.size());
        scope.unite(right.first().names);
        if (!Refers(condition, scope))
            return false;
        if (join == QLatin1String("LEFT JOIN")) {
            for (qsizetype i = 1; i < right.size(); ++i) {
                if (right.at(i).join != QLatin1String("LEFT JOIN") || !Ties(right.at(i), Names(right, i)))
                    return false;
            }
        }
        Entry first = right.first();
        first.join = join;
        first.condition = condition.condition;
        first.equalities = condition.equalities;
        left.append(first);
        left.append(right.mid(1));
        return true;
    }

    const QString &m_sql;
    QList<Token> m_tokens;
    qsizetype m_pos = 0;
    qsizetype m_end = 0;
};

} // namespace

QString FlattenNestedJoins(const QString &sql)
{
    // Cheap test first: most statements join nothing.
    if (!ContainsAsciiNoCase(sql, QLatin1StringView("JOIN")) || !sql.contains(QLatin1Char('(')))
        return sql;
    auto tokens = Tokenise(sql);
    if (!tokens)
        return sql;
    Parser parser(sql, std::move(*tokens));
    QString flat;
    const auto span = parser.FromClause(flat);
    if (!span)
        return sql;
    return sql.left(span->first) + flat + sql.mid(span->second);
}

} // namespace JetDialect
