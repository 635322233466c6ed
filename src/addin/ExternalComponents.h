#pragma once

// The bridge between the donor window and the two external components (the
// declaration generator and the certificate merge): neither knows the
// windows nor the windows them, so whoever starts the add-in (the host's
// entry point, the batch command, the tests) installs these adapters into
// the run's factory, where the window creates them by programmatic id.

#include "wizard/DeclarationComponents.h"

#include "controls/Controls.h"
#include "generator/cModelo182.h"
#include "merge/Certificates.h"
#include "session/WizardRun.h"

namespace ExternalComponents {

// The window's progress bar as the generator reports to it.
class ProgressBarSink final : public ProgressSink
{
public:
    explicit ProgressBarSink(ProgressBar &bar) : m_bar(bar) {}
    void SetMax(int max) override
    {
        m_bar.SetMin(0);
        m_bar.SetMax(qMax(1, max));
    }
    void SetValue(int value) override { m_bar.SetValue(value); }

private:
    ProgressBar &m_bar;
};

class Modelo182Adapter final : public Modelo182Componente
{
public:
    Modelo182Adapter(Modelo182Options options, QLocale locale) : m_generator(std::move(options)), m_locale(std::move(locale))
    {
    }

    GeneracionModelo182 GenerarModelo182(Connection &conexion, bool &generado, bool a3, const QString &rutaaplicacion,
                                         const QString &texto5, const QString &texto6, qint16 a7, const QVariant &omitido8,
                                         bool a9, const QVariant &omitido10, bool a11, bool a12, const QVariant &omitido13,
                                         qint16 a14, const QVariant &omitido15, const QString &vacio,
                                         ProgressBar &progreso) override
    {
        ProgressBarSink sink(progreso);
        const Modelo182Result result = m_generator.GenerarModelo182(conexion, generado, a3, rutaaplicacion, texto5, texto6,
                                                                    a7, omitido8, a9, omitido10, a11, a12, omitido13, a14,
                                                                    omitido15, vacio, sink);
        GeneracionModelo182 out;
        out.generado = result.generado;
        out.declarante = result.declarante;
        out.ejercicio = result.ejercicio;
        out.registrosDonantes = result.registrosDonantes;
        out.totalCentimos = result.totalCentimos;
        out.fichero = result.fichero;
        out.rechazos = result.rechazos;
        out.avisos = result.avisos;
        out.error = result.error;
        out.resumen = result.Resumen(m_locale);
        return out;
    }

private:
    cModelo182 m_generator;
    QLocale m_locale;
};

class CertificadosAdapter final : public CertificadosComponente
{
public:
    QString Combinar(const QString &plantilla, const QString &cartaDonantes, Connection &declaracion,
                     const QDate &hoy) override
    {
        return Certificates::Merge(plantilla, cartaDonantes, declaracion, [hoy] { return hoy; });
    }
    QString DocumentoCombinado(const QString &plantilla) const override { return Certificates::OutputPathFor(plantilla); }
};

// Registers both components with the run's factory; the generator takes
// the run's locale, reports folder and declaration id when it is created.
inline void Install(WizardRun &run)
{
    WizardRun *owner = &run;
    run.Componentes().Register(Modelo182Componente::ProgId, [owner] {
        Modelo182Options options;
        options.locale = owner->Locale();
        options.numeroJustificante = owner->Settings().numeroJustificante;
        const auto session = owner->Configuracion().datossesion();
        if (session) {
            const QString informes = owner->Settings().desarrollo ? QStringLiteral("/QXInformes/Informes .rpt/")
                                                                  : QStringLiteral("/Informes/");
            options.reportsFolder = session->Text(QStringLiteral("rutaaplicacion")) + informes;
        }
        return std::make_shared<Modelo182Adapter>(options, owner->Locale());
    });
    run.Componentes().Register(CertificadosComponente::ProgId, [] { return std::make_shared<CertificadosAdapter>(); });
}

} // namespace ExternalComponents
