#include "merge/FieldInstruction.h"

#include <QStringList>

namespace {

struct Token
{
    QString text;
    bool quoted = false;
};

// Field codes separate words by blanks; double quotes group a text with
// blanks, and a backslash inside quotes escapes the next character.
QList<Token> Tokenize(const QString &instruction)
{
    QList<Token> tokens;
    qsizetype i = 0;
    const qsizetype n = instruction.size();
    while (i < n) {
        if (instruction.at(i).isSpace()) {
            ++i;
            continue;
        }
        Token token;
        if (instruction.at(i) == QLatin1Char('"')) {
            token.quoted = true;
            for (++i; i < n && instruction.at(i) != QLatin1Char('"'); ++i) {
                if (instruction.at(i) == QLatin1Char('\\') && i + 1 < n)
                    ++i;
                token.text += instruction.at(i);
            }
            ++i; // the closing quote
        } else {
            while (i < n && !instruction.at(i).isSpace())
                token.text += instruction.at(i++);
        }
        tokens << token;
    }
    return tokens;
}

bool IsSwitch(const Token &token)
{
    return !token.quoted && token.text.startsWith(QLatin1Char('\\'));
}

QString Capitalised(const QString &text, bool everyWord)
{
    QString result = text.toLower();
    bool atWordStart = true;
    for (QChar &c : result) {
        if (c.isLetter() && atWordStart) {
            c = c.toUpper();
            atWordStart = false;
            if (!everyWord)
                break;
        } else if (c.isSpace()) {
            atWordStart = true;
        }
    }
    return result;
}

} // namespace

std::optional<MergeFieldInstruction> ParseMergeField(const QString &instruction)
{
    const QList<Token> tokens = Tokenize(instruction);
    if (tokens.size() < 2 || tokens.at(0).quoted
        || tokens.at(0).text.compare(QLatin1String("MERGEFIELD"), Qt::CaseInsensitive) != 0 || IsSwitch(tokens.at(1))
        || tokens.at(1).text.isEmpty())
        return std::nullopt;

    MergeFieldInstruction field;
    field.fieldName = tokens.at(1).text;
    for (qsizetype i = 2; i < tokens.size(); ++i) {
        if (!IsSwitch(tokens.at(i)))
            continue;
        const QString name = tokens.at(i).text.toLower();
        const bool hasArgument = i + 1 < tokens.size() && !IsSwitch(tokens.at(i + 1));
        if (!hasArgument)
            continue;
        const QString argument = tokens.at(++i).text;
        if (name == QLatin1String("\\b"))
            field.textBefore = argument;
        else if (name == QLatin1String("\\f"))
            field.textAfter = argument;
        else if (name == QLatin1String("\\*")) {
            const QString format = argument.toLower();
            if (format == QLatin1String("upper") || format == QLatin1String("lower") || format == QLatin1String("caps")
                || format == QLatin1String("firstcap"))
                field.caseFormat = format;
        }
    }
    return field;
}

QString MergeFieldInstruction::Render(const QString &value) const
{
    if (value.isEmpty())
        return QString();
    QString text = value;
    if (caseFormat == QLatin1String("upper"))
        text = text.toUpper();
    else if (caseFormat == QLatin1String("lower"))
        text = text.toLower();
    else if (caseFormat == QLatin1String("caps"))
        text = Capitalised(text, true);
    else if (caseFormat == QLatin1String("firstcap"))
        text = Capitalised(text, false);
    return textBefore + text + textAfter;
}
