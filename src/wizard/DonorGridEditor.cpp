#include "wizard/DonorGridEditor.h"

#include "session/WizardRun.h"
#include "session/cCentroApi.h"
#include "util/VbFormat.h"
#include "wizard/DonorGridLayout.h"
#include "wizard/DonorText.h"
#include "wizard/frmActividadAlumno.h"

using namespace DonorGridLayout;

namespace {

// A cell read as the window reads amounts: "0" put in front, so that an
// empty cell is 0.
std::optional<double> ReadAmount(const QString &text, const QLocale &locale)
{
    return ReadNumber(QStringLiteral("0") + text.trimmed(), locale);
}

// In a sum, a cell that is not a number counts as nothing.
double CellAmount(const QString &text, const QLocale &locale)
{
    return ReadAmount(text, locale).value_or(0.0);
}

QString NamePart(const QString &text)
{
    return text.trimmed().replace(QStringLiteral("ª"), QStringLiteral(".")).toUpper();
}

} // namespace

void DonorGridEditor::Click()
{
    FlexGrid &grid = m_form.msgMod182;
    const int col = grid.Col();
    const int row = grid.Row();
    if (row <= 0)
        return;
    if (col == kMostrar)
        ToggleMark(row);
    else if (col > kAlumno)
        OpenEditBox(row, col);
}

void DonorGridEditor::ToggleMark(int row)
{
    FlexGrid &grid = m_form.msgMod182;
    const QLocale &locale = m_form.Run().Locale();
    grid.SetRow(row);
    grid.SetCol(kMostrar);
    double suma = 0;
    for (int c = kFirstAmount; c < grid.Cols(); ++c)
        suma += CellAmount(grid.TextMatrix(row, c), locale);
    grid.SetCellFontName(row, kMostrar, kMarkFont);
    grid.SetCellFontSize(row, kMostrar, kMarkFontSize);
    grid.SetCellAlignment(row, kMostrar, flexAlignCenterCenter);
    if (grid.TextMatrix(row, kMostrar) == kNoDeclarado) {
        grid.SetCellForeColor(row, kMostrar, kGreen);
        grid.SetTextMatrix(row, kMostrar, kDeclarado);
        m_form.dblTotal += suma;
    } else {
        grid.SetCellForeColor(row, kMostrar, kRed);
        grid.SetTextMatrix(row, kMostrar, kNoDeclarado);
        m_form.dblTotal -= suma;
    }
    m_form.MostrarTotal();
}

void DonorGridEditor::OpenEditBox(int row, int col)
{
    FlexGrid &grid = m_form.msgMod182;
    TextBox &box = m_form.txtValor;
    box.SetMaxLength(col == kPagador ? 70 : col == kDni ? 20 : 10);
    box.SetText(grid.TextMatrix(row, col));
    grid.SetRowSel(row);
    grid.SetColSel(col);
    m_row = row;
    m_col = col;
    box.SetVisible(true);
}

void DonorGridEditor::KeyPress(int &keyAscii)
{
    if (m_form.msgMod182.Col() <= kDni)
        return;
    auto api = m_form.Run().Componentes().CreateObjectAs<cCentroApi>(QString::fromLatin1(cCentroApi::ProgId));
    keyAscii = api->VerificarEuros(keyAscii, m_form.txtValor.Text(), m_form.Run().Locale());
}

void DonorGridEditor::Commit()
{
    if (m_row < 0 || m_col < 0 || !m_form.txtValor.Visible())
        return;
    FlexGrid &grid = m_form.msgMod182;
    const QString nuevo = m_form.txtValor.Text();
    const QString anterior = grid.TextMatrix(m_row, m_col);
    const QLocale &locale = m_form.Run().Locale();
    if (m_col < kMostrar) {
        if (nuevo != anterior && m_col == kPagador) {
            if (auto alumno = m_form.colAlumnos.Find(grid.TextMatrix(m_row, kKey))) {
                const qsizetype comma = nuevo.indexOf(QLatin1Char(','));
                const QString surnames = comma < 0 ? nuevo : nuevo.left(comma);
                alumno->Nom_MFP = comma < 0 ? QString() : NamePart(nuevo.mid(comma + 1));
                const qsizetype blank = surnames.trimmed().indexOf(QLatin1Char(' '));
                alumno->AP1_MFP = NamePart(blank < 0 ? surnames : surnames.trimmed().left(blank));
                alumno->AP2_MFP = blank < 0 ? QString() : NamePart(surnames.trimmed().mid(blank + 1));
            }
        }
        grid.SetTextMatrix(m_row, m_col, nuevo);
    } else {
        const std::optional<double> leido = ReadAmount(nuevo, locale);
        if (!leido) {
            m_form.txtValor.SetVisible(false);
            m_row = m_col = -1;
            return m_form.Refuse(QStringLiteral("El importe «") + nuevo
                                 + QStringLiteral("» no es un número. Escriba una cantidad en euros, por ejemplo 12,50."));
        }
        const double antes = CellAmount(anterior, locale);
        const double despues = *leido;
        if (despues != antes)
            m_form.dblTotal += despues - antes;
        grid.SetTextMatrix(m_row, m_col, nuevo.isEmpty() ? nuevo : FormatNumber(despues, QStringLiteral("0.00"), locale));
    }
    m_form.MostrarTotal();
    m_form.txtValor.SetVisible(false);
    m_row = m_col = -1;
}
