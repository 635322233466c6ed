#include "AeatArguments.h"

const char *const kAeatUsage =
    "  modelo182 aeat [--session FICHERO | --db Modelo182.mdb] [--out FICHERO] [--justificante NUMERO]\n"
    "                 [--complementaria NUMERO_ANTERIOR | --sustitutiva NUMERO_ANTERIOR]\n"
    "                                  escribe el fichero del modelo 182 para la AEAT con la declaración ya\n"
    "                                  generada (por defecto, la de la instalación de demostración)\n";

bool IsDeclarationId(const QString &text)
{
    if (text.size() != 13 || !text.startsWith(QLatin1String("182")))
        return false;
    for (QChar c : text) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}

namespace {

QString Quoted(const QString &text)
{
    return QStringLiteral("«") + text + QStringLiteral("»");
}

// Options that take a value, each at most once.
bool TakeValue(const QStringList &words, int &i, QString &target, bool &seen, QString &error)
{
    const QString &option = words.at(i);
    if (seen) {
        error = QStringLiteral("La opción ") + option + QStringLiteral(" aparece más de una vez: indíquela solo una.");
        return false;
    }
    if (i + 1 >= words.size() || words.at(i + 1).startsWith(QLatin1String("--"))) {
        error = QStringLiteral("Falta el valor de la opción ") + option + QStringLiteral(".");
        return false;
    }
    seen = true;
    target = words.at(++i);
    return true;
}

} // namespace

bool AeatArguments::CheckIds(const QString &justificanteNuevo, QString &error) const
{
    if (!justificanteNuevo.isEmpty() && !IsDeclarationId(justificanteNuevo)) {
        error = QStringLiteral("El número de justificante ") + Quoted(justificanteNuevo)
                + QStringLiteral(" no es válido: debe tener 13 dígitos y empezar por 182.");
        return false;
    }
    if (tipo == Tipo::Normal)
        return true;
    if (!IsDeclarationId(justificanteAnterior)) {
        error = QStringLiteral("El número de justificante de la declaración anterior ") + Quoted(justificanteAnterior)
                + QStringLiteral(" no es válido: debe tener 13 dígitos y empezar por 182.");
        return false;
    }
    if (justificanteAnterior == justificanteNuevo) {
        error = QStringLiteral("El número de justificante de la declaración anterior es el mismo que el de esta (")
                + Quoted(justificanteNuevo)
                + QStringLiteral("): una declaración complementaria o sustitutiva lleva un número nuevo.");
        return false;
    }
    return true;
}

std::optional<AeatArguments> AeatArguments::Parse(const QStringList &words, const QString &defaultSession, QString &error)
{
    AeatArguments a;
    bool session = false, database = false, out = false, justificante = false;
    bool complementaria = false, sustitutiva = false;
    for (int i = 0; i < words.size(); ++i) {
        const QString &word = words.at(i);
        bool ok = false;
        if (word == QLatin1String("--session"))
            ok = TakeValue(words, i, a.session, session, error);
        else if (word == QLatin1String("--db"))
            ok = TakeValue(words, i, a.database, database, error);
        else if (word == QLatin1String("--out"))
            ok = TakeValue(words, i, a.out, out, error);
        else if (word == QLatin1String("--justificante"))
            ok = TakeValue(words, i, a.justificante, justificante, error);
        else if (word == QLatin1String("--complementaria"))
            ok = TakeValue(words, i, a.justificanteAnterior, complementaria, error);
        else if (word == QLatin1String("--sustitutiva"))
            ok = TakeValue(words, i, a.justificanteAnterior, sustitutiva, error);
        else
            error = QStringLiteral("Opción desconocida: ") + Quoted(word) + QStringLiteral(".");
        if (!ok)
            return std::nullopt;
    }
    if (session && database) {
        error = QStringLiteral("Indique --session o --db, no las dos: la base de datos sale del fichero de sesión "
                               "o se da directamente.");
        return std::nullopt;
    }
    if (complementaria && sustitutiva) {
        error = QStringLiteral("Indique --complementaria o --sustitutiva, no las dos: una declaración no puede ser "
                               "complementaria y sustitutiva a la vez.");
        return std::nullopt;
    }
    a.tipo = complementaria ? Tipo::Complementaria : sustitutiva ? Tipo::Sustitutiva : Tipo::Normal;
    if (!session && !database)
        a.session = defaultSession;
    if (!a.CheckIds(a.justificante, error))
        return std::nullopt;
    return a;
}
