#include "generator/cModelo182.h"

#include "generator/Modelo182Writer.h"

#include <QDir>

cModelo182::cModelo182(Modelo182Options options) : m_options(std::move(options))
{
}

Modelo182Result cModelo182::GenerarModelo182(Connection &conexion, bool &generado, bool, const QString &rutaaplicacion,
                                             const QString &, const QString &, qint16, const QVariant &, bool,
                                             const QVariant &, bool, bool, const QVariant &, qint16, const QVariant &,
                                             const QString &, ProgressSink &progreso)
{
    generado = false;
    Modelo182Options options = m_options;
    if (options.reportsFolder.isEmpty() && options.outputFile.isEmpty())
        options.reportsFolder = QDir(rutaaplicacion).filePath(QStringLiteral("Informes"));
    const Modelo182Result result = EscribirModelo182(conexion, options, progreso);
    generado = result.generado;
    return result;
}
