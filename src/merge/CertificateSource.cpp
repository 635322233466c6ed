#include "merge/CertificateSource.h"

#include "data/Connection.h"
#include "data/ConnectionString.h"
#include "data/DatabaseError.h"
#include "merge/MergeError.h"

#include <QFileInfo>

namespace {

QString Text(const QVariant &value)
{
    return value.isNull() ? QString() : value.toString().trimmed();
}

// A database message inside a sentence of ours, without its own full stop.
QString Clause(const QString &message)
{
    return message.endsWith(QLatin1Char('.')) ? message.chopped(1) : message;
}

QString GenerateFirst()
{
    return QStringLiteral("Genere correctamente el modelo 182 antes de imprimir los certificados.");
}

} // namespace

const QStringList CertificateSource::kAddedFields = {QStringLiteral("Entidad"), QStringLiteral("NIFEntidad"),
                                                     QStringLiteral("Ejercicio"), QStringLiteral("Fecha")};

CertificateSource::CertificateSource(Connection &declaration, Clock clock)
    : m_declaration(declaration), m_clock(std::move(clock))
{
}

QString CertificateSource::ConnectionStringFor(const QString &cartaDonantesPath)
{
    ConnectionString text;
    text.SetValue(QStringLiteral("Provider"), QStringLiteral("Microsoft.Jet.OLEDB.4.0"));
    text.SetValue(QStringLiteral("Data Source"), cartaDonantesPath);
    text.SetValue(QStringLiteral("Mode"), QStringLiteral("Read"));
    return text.ToString();
}

CertificateData CertificateSource::Read(const QString &cartaDonantesPath) const
{
    if (!QFileInfo::exists(Connection::ResolvePath(cartaDonantesPath, QString())))
        throw MergeError(QStringLiteral("No existe la base de datos de los certificados «") + cartaDonantesPath
                         + QStringLiteral("». ") + GenerateFirst());
    CertificateData data;
    try {
        Connection letters;
        letters.Open(ConnectionStringFor(cartaDonantesPath));
        Recordset rows = letters.Execute(QStringLiteral("SELECT * FROM CartaDonantes"));
        letters.Close();
        data.fieldNames = rows.FieldNames();
        for (; !rows.Eof(); rows.MoveNext()) {
            MergeRecord record;
            for (int i = 0; i < rows.FieldCount(); ++i)
                record.insert(data.fieldNames.at(i), Text(rows.Fields(i)));
            data.records << record;
        }
    } catch (const DatabaseError &error) {
        throw MergeError(QStringLiteral("No se pudieron leer los donantes de «") + cartaDonantesPath + QStringLiteral("»: ")
                         + Clause(error.Detail().isEmpty() ? error.Message() : error.Detail()) + QStringLiteral(". ")
                         + GenerateFirst());
    }

    MergeRecord added = ReadDeclarant();
    added.insert(QStringLiteral("Fecha"), SpanishLongDate(m_clock()));
    data.fieldNames << kAddedFields;
    for (MergeRecord &record : data.records)
        for (auto field = added.cbegin(); field != added.cend(); ++field)
            record.insert(field.key(), field.value());
    return data;
}

MergeRecord CertificateSource::ReadDeclarant() const
{
    const bool wasOpen = m_declaration.State() == Connection::adStateOpen;
    Recordset rows;
    try {
        if (!wasOpen)
            m_declaration.Open();
        rows = m_declaration.Execute(
            QStringLiteral("SELECT nombre, nif, ejercicio FROM Declarantes ORDER BY IDDeclarante DESC"));
        if (!wasOpen)
            m_declaration.Close();
    } catch (const DatabaseError &error) {
        if (!wasOpen && m_declaration.State() == Connection::adStateOpen)
            m_declaration.Close();
        throw MergeError(QStringLiteral("No se pudo leer el declarante del modelo 182: ")
                         + Clause(error.Detail().isEmpty() ? error.Message() : error.Detail()) + QStringLiteral(". ")
                         + GenerateFirst());
    }
    if (rows.Eof())
        throw MergeError(QStringLiteral("No hay ningún declarante en la base de datos del modelo 182. ") + GenerateFirst());
    MergeRecord declarant;
    declarant.insert(QStringLiteral("Entidad"), Text(rows.Fields(QStringLiteral("nombre"))));
    declarant.insert(QStringLiteral("NIFEntidad"), Text(rows.Fields(QStringLiteral("nif"))));
    declarant.insert(QStringLiteral("Ejercicio"), Text(rows.Fields(QStringLiteral("ejercicio"))));
    return declarant;
}
