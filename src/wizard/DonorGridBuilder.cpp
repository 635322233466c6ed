#include "wizard/DonorGridBuilder.h"

#include "data/Connection.h"
#include "data/DonorQuery.h"
#include "data/SqlStatement.h"
#include "session/WizardRun.h"
#include "util/TextRoutines.h"
#include "util/VbFormat.h"
#include "wizard/DonorGridLayout.h"
#include "wizard/DonorText.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmSelCursos.h"

using namespace DonorGridLayout;

namespace {

QString Text(const Recordset &rs, const char *field)
{
    const QVariant value = rs.Fields(QLatin1String(field));
    return value.isNull() ? QString() : value.toString();
}

QString Text(const Recordset &rs, int field)
{
    const QVariant value = rs.Fields(field);
    return value.isNull() ? QString() : value.toString();
}

bool Flag(const QVariant &value)
{
    return !value.isNull() && value.toDouble() != 0;
}

QString Money(double value, const QLocale &locale)
{
    return FormatNumber(value, QStringLiteral("0.00"), locale);
}

// A saved amount as the database gives it ("12,5" or 12.5), read as a number.
double SavedAmount(const QVariant &pago)
{
    QString text = pago.toString();
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return ReadNumber(text, QLocale::c()).value_or(0.0);
}

} // namespace

// Where the donor query's fields are, found once per activity rather than by
// name for each of its thousands of rows.
struct DonorColumns
{
    explicit DonorColumns(const Recordset &rs)
    {
        for (int m = 1; m <= 12; ++m)
            dato[size_t(m)] = rs.FieldIndex(QStringLiteral("dato") + QString::number(m));
        const auto at = [&rs](const char *name) { return rs.FieldIndex(QLatin1String(name)); };
        precio = at("PrecioEuros");
        idAlumno = at("IDAlumno");
        idMiembro = at("IDMiembroFamilia");
        apellidoAlumno1 = at("Apellido_1");
        apellidoAlumno2 = at("Apellido_2");
        nombreAlumno = at("Nombre");
        apellidoPagador1 = at("Apellido1");
        apellidoPagador2 = at("Apellido2");
        nombrePagador = at("Nombre1");
        dni = at("DNI");
        codFamilia = at("codFamilia");
        direccion = at("direccion");
        poblacion = at("poblacion");
        codigoPostal = at("codigopostal");
        provincia = at("descripcion");
    }

    std::array<int, 13> dato{};
    int precio, idAlumno, idMiembro;
    int apellidoAlumno1, apellidoAlumno2, nombreAlumno;
    int apellidoPagador1, apellidoPagador2, nombrePagador;
    int dni, codFamilia, direccion, poblacion, codigoPostal, provincia;
};

DonorGridBuilder::DonorGridBuilder(frmActividadAlumno &form) : m_form(form), m_cargarDatos(form.Cursos().blnCargarDatos)
{
}

void DonorGridBuilder::Build()
{
    StartGrid();
    FlexGrid &grid = m_form.msgMod182;
    try {
        // With saved work, every row looks up its saved payer and amounts:
        // one read transaction spares each look-up taking the file's lock.
        Connection::Transaction snapshot(m_form.Run().ConexionCentro(), m_cargarDatos);
        const auto cursos = m_form.Cursos().colCursosEscolares.Items();
        m_form.pbCursos.SetMax(qMax(1, int(cursos.size())));
        int n = 0;
        for (const auto &curso : cursos) {
            ConnectionPtr bd = m_form.Run().NewConnection();
            bd->Open(curso->conBD);
            AddYear(*curso, *bd);
            bd->Close();
            Progress(m_form.pbCursos, m_form.lblCursos, ++n);
        }
        if (m_cargarDatos)
            PlaceKeptPayments();
        snapshot.Commit();
    } catch (...) {
        // The grid stays usable and painted; the error reaches the person.
        m_form.fraAlumnos.SetVisible(false);
        grid.SetRedraw(true);
        throw;
    }
    Finish();
}

void DonorGridBuilder::StartGrid()
{
    FlexGrid &grid = m_form.msgMod182;
    grid.Clear();
    grid.SetRows(0);
    grid.SetCols(0);
    grid.SetRedraw(false);
    grid.SetRows(2);
    grid.SetCols(kFirstAmount);
    grid.SetFixedCols(2);
    grid.SetFixedRows(1);
    grid.SetRowHeightMin(285);
    grid.SetRows(1);
    grid.SetTextMatrix(0, kAlumno, QStringLiteral("Alumno"));
    grid.SetTextMatrix(0, kPagador, QStringLiteral("Miembro Familia Pagador"));
    grid.SetTextMatrix(0, kDni, QStringLiteral("DNI"));
    grid.SetTextMatrix(0, kMostrar, QStringLiteral("Mostrar"));
    const int widths[] = {0, 2400, 2355, 1000, 660};
    for (int c = 0; c < kFirstAmount; ++c)
        grid.SetColWidth(c, widths[c]);
    m_form.dblTotal = 0;
    m_form.colAlumnos.Clear();
    m_form.colDatosCobro.clear();
    m_form.lngUltimoCurso = 0;
    m_rowByKey.clear();
    m_rowByIds.clear();
    m_form.fraAlumnos.SetVisible(true);
}

void DonorGridBuilder::AddYear(const cCursoEscolar &curso, Connection &bd)
{
    if (curso.idCursoEscolar > m_form.lngUltimoCurso) {
        m_form.declarante = ReadDeclarante(bd);
        m_form.lngUltimoCurso = curso.idCursoEscolar;
    }
    const auto actividades = curso.colActividades.Items();
    m_form.pbActividades.SetValue(0);
    m_form.pbActividades.SetMax(qMax(1, int(actividades.size())));
    int n = 0;
    for (const auto &actividad : actividades) {
        AddActivity(curso, *actividad, bd);
        Progress(m_form.pbActividades, m_form.lblActividades, ++n);
    }
}

void DonorGridBuilder::AddActivity(const cCursoEscolar &curso, const cActividad &actividad, Connection &bd)
{
    std::array<bool, 13> meses{};
    for (int m = 1; m <= 12; ++m)
        meses[size_t(m)] = actividad.MesesPago.mid(m - 1, 1) == QLatin1String("1");

    Recordset rs = bd.Execute(DonorQuery(actividad.idActividad));
    FlexGrid &grid = m_form.msgMod182;
    const int col = grid.Cols();
    grid.SetCols(col + 1);
    grid.SetTextMatrix(0, col, curso.Nombre + kHeaderSeparator + actividad.Nombre);

    m_form.pbAlumnos.SetValue(0);
    m_form.pbAlumnos.SetMax(qMax(1, rs.RecordCount()));
    int n = 0;
    const DonorColumns columns(rs);
    for (; !rs.Eof(); rs.MoveNext()) {
        AddEnrolment(curso, actividad, col, meses, columns, rs);
        Progress(m_form.pbAlumnos, m_form.lblAlumnos, ++n);
    }
    rs.Close();
    if (m_cargarDatos)
        PlaceSavedAmounts(curso, actividad, col);
}

void DonorGridBuilder::AddEnrolment(const cCursoEscolar &curso, const cActividad &actividad, int col,
                                    const std::array<bool, 13> &meses, const DonorColumns &columns, const Recordset &rs)
{
    int contados = 0;
    for (int m = 1; m <= 12; ++m)
        if (meses[size_t(m)] && Flag(rs.Fields(columns.dato[size_t(m)])))
            ++contados;
    const QVariant precio = rs.Fields(columns.precio);
    const double importe = (precio.isNull() ? 0.0 : precio.toDouble()) * contados;

    FlexGrid &grid = m_form.msgMod182;
    const QLocale &locale = m_form.Run().Locale();
    const QString key = RowKey(rs.Fields(columns.idAlumno), rs.Fields(columns.idMiembro));
    const RowKeyParts ids = SplitRowKey(key);
    int row = m_rowByKey.value(key, -1);
    const bool appended = row < 0;
    if (appended)
        row = AppendRow(key, columns, rs);
    grid.SetTextMatrix(row, col, Money(importe, locale));
    m_form.dblTotal += importe;
    double contado = importe;

    if (m_cargarDatos) {
        if (appended)
            LoadSavedPayer(row, ids.idAlumno, ids.idMiembroFamilia);
        m_form.dblTotal -= importe;
        contado = 0;
        Recordset saved = m_form.Run().ConexionCentro().Execute(
            SqlStatement(QStringLiteral("SELECT Pago FROM DatosModelo182 WHERE IDCC="))
                .Integer(curso.idCursoEscolar)
                .Sql(QStringLiteral(" AND IDAct="))
                .Integer(actividad.idActividad)
                .Sql(QStringLiteral(" AND IDAL="))
                .Integer(ids.idAlumno)
                .Sql(QStringLiteral(" AND IDMF="))
                .Integer(ids.idMiembroFamilia));
        if (!saved.Eof()) {
            const double pago = SavedAmount(saved.Fields(QStringLiteral("Pago")));
            grid.SetTextMatrix(row, col, Money(pago, locale));
            m_form.dblTotal += pago;
            contado = pago;
        }
        saved.Close();
        // Only donors marked to be declared count in the total.
        if (grid.TextMatrix(row, kMostrar) == kNoDeclarado)
            m_form.dblTotal -= contado;
    }
}

int DonorGridBuilder::AppendRow(const QString &key, const DonorColumns &columns, const Recordset &rs)
{
    FlexGrid &grid = m_form.msgMod182;
    const int row = grid.Rows();
    grid.SetRows(row + 1);
    grid.SetTextMatrix(row, kKey, key);
    grid.SetTextMatrix(row, kAlumno,
                       GridName(rs.Fields(columns.apellidoAlumno1), rs.Fields(columns.apellidoAlumno2),
                                rs.Fields(columns.nombreAlumno)));
    grid.SetTextMatrix(row, kPagador,
                       GridName(rs.Fields(columns.apellidoPagador1), rs.Fields(columns.apellidoPagador2),
                                rs.Fields(columns.nombrePagador)));
    const QString nif = NormaliseTaxId(Text(rs, columns.dni));
    grid.SetTextMatrix(row, kDni, nif);
    SetMark(row, true);

    auto alumno = std::make_shared<cAlumno>();
    const RowKeyParts ids = SplitRowKey(key);
    alumno->IDAlumno = ids.idAlumno;
    alumno->idMF = ids.idMiembroFamilia;
    alumno->Nom_MFP = Text(rs, columns.nombrePagador);
    alumno->AP1_MFP = Text(rs, columns.apellidoPagador1);
    alumno->AP2_MFP = Text(rs, columns.apellidoPagador2);
    alumno->NIF_MFP = nif;
    alumno->codFamilia = Text(rs, columns.codFamilia);
    alumno->Direccion = Text(rs, columns.direccion);
    alumno->Poblacion = Text(rs, columns.poblacion);
    const QString codigo = Text(rs, columns.codigoPostal).trimmed();
    alumno->CodPos = codigo.isEmpty() ? codigo : FixedWidth(codigo, 5, QStringLiteral("0"));
    alumno->Provincia = Text(rs, columns.provincia);
    if (!m_form.colAlumnos.Contains(key))
        m_form.colAlumnos.Add(alumno, key);

    m_rowByKey.insert(key, row);
    m_rowByIds.insert({ids.idAlumno, ids.idMiembroFamilia}, row);
    return row;
}

void DonorGridBuilder::LoadSavedPayer(int row, qlonglong idAlumno, qlonglong idMiembro)
{
    Recordset rs = m_form.Run().ConexionCentro().Execute(
        SqlStatement(QStringLiteral("SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL="))
            .Integer(idAlumno)
            .Sql(QStringLiteral(" AND IDMF="))
            .Integer(idMiembro));
    if (!rs.Eof()) {
        FlexGrid &grid = m_form.msgMod182;
        grid.SetTextMatrix(row, kPagador,
                           Text(rs, "AP1") + QLatin1Char(' ') + Text(rs, "AP2") + QStringLiteral(", ") + Text(rs, "Nombre"));
        grid.SetTextMatrix(row, kDni, Text(rs, "NIF"));
        SetMark(row, Flag(rs.Fields(QStringLiteral("Mostrar"))));
    }
    rs.Close();
}

void DonorGridBuilder::PlaceSavedAmounts(const cCursoEscolar &curso, const cActividad &actividad, int col)
{
    Recordset rs = m_form.Run().ConexionCentro().Execute(
        QStringLiteral("SELECT * FROM DatosModelo182 WHERE IDCC=") + QString::number(curso.idCursoEscolar)
        + QStringLiteral(" AND IDACT=") + QString::number(actividad.idActividad));
    const QLocale &locale = m_form.Run().Locale();
    for (; !rs.Eof(); rs.MoveNext()) {
        const qlonglong idAl = rs.Fields(QStringLiteral("IDAL")).toLongLong();
        const qlonglong idMF = rs.Fields(QStringLiteral("IDMF")).toLongLong();
        const QVariant pago = rs.Fields(QStringLiteral("Pago"));
        const int row = m_rowByIds.value({idAl, idMF}, -1);
        if (row >= 0) {
            m_form.msgMod182.SetTextMatrix(row, col, Money(SavedAmount(pago), locale));
        } else {
            cDatosCobro cobro;
            cobro.IDCC = curso.idCursoEscolar;
            cobro.IDAct = actividad.idActividad;
            cobro.IDAl = idAl;
            cobro.IDMF = idMF;
            cobro.Pago = QString(pago.toString()).replace(QLatin1Char(','), QLatin1Char('.'));
            m_form.colDatosCobro.append(cobro);
        }
    }
    rs.Close();
}

void DonorGridBuilder::PlaceKeptPayments()
{
    FlexGrid &grid = m_form.msgMod182;
    const QLocale &locale = m_form.Run().Locale();
    for (const cDatosCobro &cobro : std::as_const(m_form.colDatosCobro)) {
        const int row = m_rowByIds.value({cobro.IDAl, cobro.IDMF}, -1);
        if (row < 0)
            continue;
        for (int c = kFirstAmount; c < grid.Cols(); ++c) {
            const auto keys = FindActivityByHeader(m_form.Cursos().colCursosEscolares, grid.TextMatrix(0, c));
            if (keys && keys->idActividad == cobro.IDAct && keys->idCursoEscolar == cobro.IDCC) {
                // Placed without touching the running total, as saved work always was.
                grid.SetTextMatrix(row, c, Money(SavedAmount(cobro.Pago), locale));
                break;
            }
        }
    }
}

void DonorGridBuilder::Finish()
{
    FlexGrid &grid = m_form.msgMod182;
    if (grid.Rows() > 1) {
        grid.SetRow(1);
        grid.SetCol(kPagador);
        grid.SetColSel(kAlumno);
        grid.Sort(kAlumno, kPagador);
    }
    m_form.fraAlumnos.SetVisible(false);
    m_form.MostrarTotal();
    grid.SetRedraw(true);
}

void DonorGridBuilder::SetMark(int row, bool declarado)
{
    FlexGrid &grid = m_form.msgMod182;
    grid.SetCellFontName(row, kMostrar, kMarkFont);
    grid.SetCellFontSize(row, kMostrar, kMarkFontSize);
    grid.SetCellAlignment(row, kMostrar, flexAlignCenterCenter);
    grid.SetCellForeColor(row, kMostrar, declarado ? kGreen : kRed);
    grid.SetTextMatrix(row, kMostrar, declarado ? kDeclarado : kNoDeclarado);
}

void DonorGridBuilder::Progress(ProgressBar &bar, Label &label, int value)
{
    bar.SetValue(value);
    label.SetCaption(QString::number(value) + QLatin1Char('/') + QString::number(bar.Max()));
}
